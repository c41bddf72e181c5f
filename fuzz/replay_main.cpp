// Runs a fuzzer over files and folders of files, without libFuzzer: for compilers that lack it, and to replay
// a finding under a debugger.

#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

#include "fuzz_input.h"

namespace {

void replay_(const std::filesystem::path &file) {
    std::ifstream stream(file, std::ios::binary);
    const std::vector<char> bytes((std::istreambuf_iterator<char>(stream)), std::istreambuf_iterator<char>());
    std::fprintf(stderr, "%s: %zu bytes\n", file.c_str(), bytes.size());
    LLVMFuzzerTestOneInput(reinterpret_cast<const uint8_t *>(bytes.data()), bytes.size());
}

}  // namespace

int main(int argc, char **argv) {
    for (int i = 1; i < argc; ++i) {
        if (!std::filesystem::is_directory(argv[i])) {
            replay_(argv[i]);
            continue;
        }
        for (const auto &entry : std::filesystem::directory_iterator(argv[i])) replay_(entry.path());
    }
    return 0;
}
