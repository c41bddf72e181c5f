// sqlreference: prints docs/sql-functions.md.

#include <cstdio>

#include "sql_reference.h"

int main() { return std::fputs(dv::impl::sql_reference().c_str(), stdout) < 0 ? 1 : 0; }
