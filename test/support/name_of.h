// The name of a function or table, as the sources have it.

#ifndef DV_TEST_NAME_OF_H
#define DV_TEST_NAME_OF_H

#include <string_view>

namespace dv::test {

// "number_add" of "... [with auto function = number_add; ...", as compilers write it.
constexpr std::string_view name_in(std::string_view pretty_function) {
    constexpr std::string_view front = "function = ";
    pretty_function.remove_prefix(pretty_function.find(front) + front.size());
    const std::string_view name = pretty_function.substr(0, pretty_function.find_first_of(";]"));
    return name.substr(name[0] == '&' ? 1 : 0);
}

template <auto function>
constexpr std::string_view name_of() {
    return name_in(__PRETTY_FUNCTION__);
}

template <const auto &function>
constexpr std::string_view name_of_table() {
    return name_in(__PRETTY_FUNCTION__);
}

}  // namespace dv::test

#endif  // DV_TEST_NAME_OF_H
