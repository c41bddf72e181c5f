// Raising by longjmp: a stack of recovery points per thread.
//
// The points lie in the frames of those who wait for a raise, linked from the innermost outwards; the thread
// keeps the innermost alone. A raise fills in the innermost point's error record, takes the point off the
// stack (so that a raise in the handler goes outwards) and jumps. The signal mask is neither saved nor
// restored, which keeps a recovery point at a few stores.

#include <cstdarg>
#include <cstdlib>

#include "error_message.h"

using namespace dv::impl;

namespace {

thread_local dv_recovery_t *_innermost = nullptr;

[[noreturn]] void jump_to_innermost_() {
    dv_recovery_t *const point = _innermost;
    _innermost = point->outer;
    longjmp(point->env, 1);  // not _longjmp, which ThreadSanitizer does not follow
}

}  // namespace

extern "C" {

void dv_recovery_push(dv_recovery_t *recovery) {
    recovery->outer = _innermost;
    _innermost = recovery;
}

// A point that a raise has jumped to is off the stack already, and so are those inside it.
void dv_recovery_pop(dv_recovery_t *recovery) {
    if (_innermost == recovery) _innermost = recovery->outer;
}

// With a record of its own when nobody catches: the frame above may be all that is left of the stack.
void dv_err_and_jmp(const char *src_file, int line, const char *func_name, int /*reserved1*/,
                    int /*reserved2*/, int code, ...) {
    dv_error_t uncaught;
    dv_error_t &error = _innermost != nullptr ? _innermost->error : uncaught;
    va_list args;
    va_start(args, code);
    dv_error_fill(&error, src_file, line, func_name, code, args);
    va_end(args);
    if (_innermost == nullptr) error_abort(error);
    jump_to_innermost_();
}

void dv_rethrow(const dv_error_t *error) {
    if (_innermost == nullptr) error_abort(*error);
    _innermost->error = *error;
    jump_to_innermost_();
}

int dv_protect(void (*body)(void *arg), void *arg, dv_error_t *error) {
    dv_recovery_t point;
    dv_recovery_push(&point);
    if (_setjmp(point.env) == 0) {
        body(arg);
        dv_recovery_pop(&point);
        return 0;
    }
    if (error != nullptr) *error = point.error;
    return point.error.code;
}

}  // extern "C"
