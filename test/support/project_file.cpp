#include "project_file.h"

std::string dv::test::project_file(const std::string &name) { return DV_SOURCE_DIR "/" + name; }
