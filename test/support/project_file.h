// Files of the project that tests read: manuals, frozen vectors.

#ifndef DV_TEST_PROJECT_FILE_H
#define DV_TEST_PROJECT_FILE_H

#include <set>
#include <string>

namespace dv::test {

// The path of a file, named from the project's root: "docs/sql.md".
std::string project_file(const std::string &name);

// Those that a public header ("number.h") declares with a pointer among their arguments.
std::set<std::string> functions_with_pointers(const std::string &header);

}  // namespace dv::test

#endif  // DV_TEST_PROJECT_FILE_H
