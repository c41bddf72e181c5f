// Adds up the numbers given as arguments, exactly, from C++: sum_cpp 0.1 0.2 0.3 prints 0.6's text, ".6".

#include <dvtypes/dvtypes.hpp>
#include <iostream>
#include <span>

int main(int argc, char **argv) try {
    dv::number sum;
    for (const char *text : std::span(argv, static_cast<size_t>(argc)).subspan(1)) sum += dv::number(text);
    std::cout << sum << '\n';
} catch (const dv::error &error) {
    std::cerr << error.code() << ": " << error.what() << '\n';
    return 1;
}
