// The process environment.

#include <cstdlib>

#include "dvtypes/base.h"

extern "C" char *dv_getenv(const char *name) { return std::getenv(name); }
