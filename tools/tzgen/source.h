// The tz database: one file in zic's input language.

#ifndef TZGEN_SOURCE_H
#define TZGEN_SOURCE_H

#include <filesystem>
#include <string>

namespace tzgen {

struct source_t {
    std::string file_name;  // without its folder
    std::string release;    // "2025b"; the file's stem if it does not say
};

source_t read_source(const std::filesystem::path &path);

// Compiles the source with zic, a file per name, into a folder that is made anew.
// Throws std::runtime_error if zic cannot be run or fails.
void compile_source(const std::filesystem::path &path, const std::string &zic,
                    const std::filesystem::path &folder);

}  // namespace tzgen

#endif  // TZGEN_SOURCE_H
