// Files of the project that tests read: manuals, frozen vectors.

#ifndef DV_TEST_PROJECT_FILE_H
#define DV_TEST_PROJECT_FILE_H

#include <string>

namespace dv::test {

// The path of a file, named from the project's root: "docs/sql.md".
std::string project_file(const std::string &name);

}  // namespace dv::test

#endif  // DV_TEST_PROJECT_FILE_H
