// The test-only twin of the default base library's recovery: raises by C++ exception.
//
// Built in its place with DV_THROWING_BASE, so that the suite proves that the library is right under both
// ways of unwinding. Only dv_protect catches here: the recovery points of DV_TRY cannot, and are ignored.

#include <cstdarg>

#include "error_message.h"

using namespace dv::impl;

namespace {

thread_local int _protect_depth = 0;

// One more dv_protect, until it is left, be it by an exception of the caller's.
struct protection_t {
    protection_t() { ++_protect_depth; }
    ~protection_t() { --_protect_depth; }
};

}  // namespace

extern "C" {

void dv_recovery_push(dv_recovery_t *) {}

void dv_recovery_pop(dv_recovery_t *) {}

void dv_err_and_jmp(const char *src_file, int line, const char *func_name, int, int, int code, ...) {
    dv_error_t error;
    va_list args;
    va_start(args, code);
    dv_error_fill(&error, src_file, line, func_name, code, args);
    va_end(args);
    dv_rethrow(&error);
}

void dv_rethrow(const dv_error_t *error) {
    if (_protect_depth == 0) error_abort(*error);
    throw *error;
}

int dv_protect(void (*body)(void *arg), void *arg, dv_error_t *error) {
    const protection_t protection;
    int code = 0;
    try {
        body(arg);
    } catch (const dv_error_t &raised) {
        code = raised.code;
        if (error != nullptr) *error = raised;
    }
    return code;
}

}  // extern "C"
