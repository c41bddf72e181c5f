// The codes that the library raises, and the one way in which it raises them and asserts.

#ifndef DV_DATATYPE_ERROR_H
#define DV_DATATYPE_ERROR_H

#include "dvtypes/base.h"

namespace dv::impl {

// Named by condition; the message of each code is in the base library's catalogue.
enum error_code : int {
    ERR_TEXT_BUFFER_SIZE = -3005,       // the text does not fit the output buffer
    ERR_NUMBER_TEXT_SHORTENED = -5067,  // written rounded, in scientific form
    ERR_NUMBER_OVERFLOW = -5068,        // base-100 exponent minus one above 62
    ERR_NUMBER_UNDERFLOW = -5069,       // base-100 exponent minus one below -65
    ERR_NUMBER_DIVISION_BY_ZERO = -5070,
    ERR_NUMBER_TARGET_RANGE = -5072,  // outside the range of the machine type
    ERR_NUMBER_TEXT = -5074,          // the text is no number
    ERR_NUMBER_FORMAT = -5075,        // unknown number format
    ERR_NUMBER_PRECISION = -5111,     // (value as text, precision, scale)
};

// An error code that knows where it was written down.
struct error_at {
    int code;
    const char *file;
    int line;
    const char *function;
    constexpr error_at(int error, const char *path = __builtin_FILE(), int at_line = __builtin_LINE(),
                       const char *in_function = __builtin_FUNCTION())
        : code(error), file(path), line(at_line), function(in_function) {}
};

constexpr const char *base_name(const char *path) {
    const char *name = path;
    for (const char *p = path; *p != '\0'; ++p) {
        if (*p == '/') name = p + 1;
    }
    return name;
}

// Raises; the arguments are those of the code's message, in order (texts as const char *, numbers as int).
template <typename... Args>
[[noreturn, gnu::cold, gnu::noinline]] void raise(error_at at, Args... args) {
    dv_err_and_jmp(base_name(at.file), at.line, at.function, 0, 0, at.code, args...);
}

// Reports a broken invariant; the caller goes on as if it had held, unless the host's action ends the
// process.
[[gnu::cold, gnu::noinline]] inline void assert_failed(const char *condition,
                                                       const char *path = __builtin_FILE(),
                                                       int line = __builtin_LINE()) {
    dv_assert_msg(condition, base_name(path), line);
    dv_thr_assert_cmd();
}

}  // namespace dv::impl

// The only macro: it needs the condition's text, which is a contract with the host ("date != NULL").
#define DV_ASSERT(cond) ((cond) ? void() : ::dv::impl::assert_failed(#cond))

#endif  // DV_DATATYPE_ERROR_H
