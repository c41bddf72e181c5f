// Examples, of the manuals and of files beside the tests: the statements of an .sql file or of the sql blocks
// of a manual, in their order. A line ends with ";", or with ";  -- " and what the statement gives.

#ifndef DV_TEST_MANUAL_H
#define DV_TEST_MANUAL_H

#include <fstream>
#include <string>
#include <vector>

#include "project_file.h"

namespace dv::test {

struct example {
    std::string sql, result;
    bool has_result;
};

inline std::vector<example> examples_of(const std::string &file) {
    std::ifstream manual(project_file(file));
    bool is_sql = file.ends_with(".sql");
    std::vector<example> examples;
    std::string sql;
    for (std::string line; std::getline(manual, line);) {
        const bool is_fence = line.starts_with("```");
        if (is_fence) is_sql = line == "```sql";
        if (is_fence || !is_sql || (sql.empty() && (line.empty() || line.starts_with("--")))) continue;
        const size_t comment = line.find(";  -- ");
        sql += line.substr(0, comment);
        if (comment != std::string::npos || line.ends_with(';')) {
            const bool has_result = comment != std::string::npos;
            examples.push_back({sql, has_result ? line.substr(comment + 6) : "", has_result});
            sql.clear();
        } else {
            sql += '\n';
        }
    }
    return examples;
}

}  // namespace dv::test

#endif  // DV_TEST_MANUAL_H
