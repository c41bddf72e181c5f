// What becomes of an error that nobody catches.

#include <cstdio>
#include <cstdlib>

#include "error_message.h"

using namespace dv::impl;

void dv::impl::error_abort(const dv_error_t &error) {
    std::fprintf(stderr, "%s:%d: %s: error %d raised without a recovery point: %s\n", error.file, error.line,
                 error.function, error.code, error.message);
    std::abort();
}
