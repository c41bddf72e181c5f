// Raising by longjmp: a stack of recovery points per thread.
//
// The points lie in the frames of those who wait for a raise, linked from the innermost outwards; the thread
// keeps the innermost alone. A raise fills in the innermost point's error record, takes the point off the
// stack (so that a raise in the handler goes outwards) and jumps. The signal mask is neither saved nor
// restored, which keeps a recovery point at a few stores. A point that asks for the code alone is marked in
// its record, where the code goes: most of what a raise costs is the making of the message.

#include <cstdarg>
#include <cstdlib>

#include "error_message.h"

using namespace dv::impl;

namespace {

constexpr int _wants_code_alone = 1;  // as the code of a waiting point; codes are negative

// Eight bytes of the static block of each thread: without a call at each access.
[[gnu::tls_model("initial-exec")]] thread_local dv_recovery_t *_innermost = nullptr;

[[noreturn]] void jump_to_innermost_() {
    dv_recovery_t *const point = _innermost;
    _innermost = point->outer;
    longjmp(point->env, 1);  // not _longjmp, which ThreadSanitizer does not follow
}

}  // namespace

void dv::impl::recovery_forget() { _innermost = nullptr; }

extern "C" {

void dv_recovery_push(dv_recovery_t *recovery) {
    recovery->outer = _innermost;
    recovery->error.code = 0;
    _innermost = recovery;
}

// A point that a raise has jumped to is off the stack already, and so are those inside it.
void dv_recovery_pop(dv_recovery_t *recovery) {
    if (_innermost == recovery) _innermost = recovery->outer;
}

// With a record of its own when nobody catches: the frame above may be all that is left of the stack.
void dv_err_and_jmp(const char *src_file, int line, const char *func_name, int /*reserved1*/,
                    int /*reserved2*/, int code, ...) {
    dv_recovery_t *const point = _innermost;
    if (point != nullptr && point->error.code == _wants_code_alone) {
        point->error.code = code;
        jump_to_innermost_();
    }
    dv_error_t uncaught;
    dv_error_t &error = point != nullptr ? point->error : uncaught;
    va_list args;
    va_start(args, code);
    dv_error_fill(&error, src_file, line, func_name, code, args);
    va_end(args);
    if (point == nullptr) error_abort(error);
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
    if (error == nullptr) point.error.code = _wants_code_alone;
    if (_setjmp(point.env) == 0) {
        body(arg);
        dv_recovery_pop(&point);
        return 0;
    }
    if (error != nullptr) *error = point.error;
    return point.error.code;
}

}  // extern "C"
