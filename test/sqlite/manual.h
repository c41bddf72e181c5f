// Examples, of the manuals and of files beside the tests: every line "SELECT ...;  -- result".

#ifndef DV_TEST_MANUAL_H
#define DV_TEST_MANUAL_H

#include <fstream>
#include <string>
#include <vector>

#include "project_file.h"

namespace dv::test {

struct example {
    std::string sql, result;
};

inline std::vector<example> examples_of(const std::string &file) {
    std::ifstream manual(project_file(file));
    std::vector<example> examples;
    for (std::string line; std::getline(manual, line);) {
        const size_t comment = line.find(";  -- ");
        if (!line.starts_with("SELECT ") || comment == std::string::npos) continue;
        examples.push_back({line.substr(0, comment), line.substr(comment + 6)});
    }
    return examples;
}

}  // namespace dv::test

#endif  // DV_TEST_MANUAL_H
