// The one way in which the library raises errors and asserts.

#ifndef DV_DATATYPE_ERROR_H
#define DV_DATATYPE_ERROR_H

#include <string.h>

#include <type_traits>

#include "dvtypes/base.h"

namespace dv::impl {

constexpr const char *base_name(const char *path) {
    if (!std::is_constant_evaluated()) {  // of a literal the compiler knows the result
        const char *slash = strrchr(path, '/');
        return slash != NULL ? slash + 1 : path;
    }
    const char *name = path;
    for (const char *p = path; *p != '\0'; ++p) {
        if (*p == '/') name = p + 1;
    }
    return name;
}

// An error code that knows where it was written down.
struct error_at {
    int code;
    const char *file;
    int line;
    const char *function;
    constexpr error_at(int error, const char *path = __builtin_FILE(), int at_line = __builtin_LINE(),
                       const char *in_function = __builtin_FUNCTION())
        : code(error), file(base_name(path)), line(at_line), function(in_function) {}
};

// Raises; the arguments are those of the code's message, in order (texts as const char *, numbers as int).
template <typename... Args>
[[noreturn, gnu::cold, gnu::noinline]] void raise(error_at at, Args... args) {
    dv_err_and_jmp(at.file, at.line, at.function, 0, 0, at.code, args...);
}

// Reports a broken invariant, and returns unless the host's action ends the process.
[[gnu::cold, gnu::noinline]] inline void assert_failed(const char *condition,
                                                       const char *path = __builtin_FILE(),
                                                       int line = __builtin_LINE()) {
    dv_assert_msg(condition, base_name(path), line);
    dv_thr_assert_cmd();
}

// Whether there is something to work on: no pointer is NULL.
constexpr bool given(const auto *...pointer) { return ((pointer != nullptr) && ...); }

}  // namespace dv::impl

// Reports a condition that does not hold; true or false as it does. The only macro: it needs the condition's
// text, which is a contract with the host ("date != NULL").
//
// The caller goes on as if the condition had held, but never through NULL: an exported function that lacks a
// pointer returns at once, with a neutral value if it returns one, and touches none of its other operands.
//     if (!DV_ASSERT(date != NULL)) return 0;
//     if (!DV_ASSERT(number_is_valid_ptr(x) && number_is_valid_ptr(y)) && !given(x, y)) return;
// The second form is for conditions that ask for more than a pointer. Both stay off the path of sound calls.
#define DV_ASSERT(cond) ((cond) || (::dv::impl::assert_failed(#cond), false))

#endif  // DV_DATATYPE_ERROR_H
