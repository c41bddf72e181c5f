// The test-only twin of the default base library's recovery: raises by C++ exception.
//
// Built in its place with DV_THROWING_BASE, so that the suite proves that the library is right under both
// ways of unwinding. Only dv_protect catches here: the recovery points of DV_TRY cannot, and are ignored.

#include <cstdarg>

#include "error_message.h"

using namespace dv::impl;

namespace {

struct raised_t {
    dv_error_t error;
};

thread_local int _protect_depth = 0;

[[noreturn]] void throw_(const dv_error_t &error) {
    if (_protect_depth == 0) error_abort(error);
    throw raised_t{error};
}

}  // namespace

extern "C" {

void dv_recovery_push(dv_recovery_t *) {}

void dv_recovery_pop(dv_recovery_t *) {}

void dv_err_and_jmp(const char *src_file, int line, const char *func_name, int, int, int code, ...) {
    dv_error_t error;
    va_list args;
    va_start(args, code);
    error_fill(error, src_file, line, func_name, code, args);
    va_end(args);
    throw_(error);
}

void dv_rethrow(const dv_error_t *error) { throw_(*error); }

int dv_protect(void (*body)(void *arg), void *arg, dv_error_t *error) {
    ++_protect_depth;
    int code = 0;
    try {
        body(arg);
    } catch (const raised_t &raised) {
        code = raised.error.code;
        if (error != nullptr) *error = raised.error;
    }
    --_protect_depth;
    return code;
}

}  // extern "C"
