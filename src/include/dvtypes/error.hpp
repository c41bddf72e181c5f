// dvtypes/error.hpp: a raise of the library as a C++ exception. Header only; C++20.
//
// ```cpp
// number_t x;
// try {
//     dv::guarded([&] { number_from_str(&x, 0, "12.5.0", nullptr); });
// } catch (const dv::error &error) {
//     std::cout << error.code() << " in " << error.function() << '\n';     // -5074 in number_from_str
// }
// ```
//
// What dv::guarded runs must not own anything: no object with a destructor may be alive in it when a raise
// leaves it. Objects outside of it are safe, and so is what leaves it as a C++ exception. It goes through
// dv_protect, so it works over any base library that has it.

#ifndef DVTYPES_ERROR_HPP
#define DVTYPES_ERROR_HPP

#include <algorithm>
#include <cstring>
#include <exception>
#include <string_view>
#include <type_traits>

#include "dvtypes/base.h"

namespace dv {

// A raise of the library. docs/error-codes.md says of each code what it means and what to do.
class error : public std::exception {
  public:
    // Of a raise that was caught.
    explicit error(const dv_error_t &record) : record_(record) {}
    // Of a code alone: without place and arguments, with the message of dv_error_text; "..." stands for each
    // of its values.
    explicit error(int code) noexcept : record_{} {
        record_.code = code;
        const char *text = dv_error_text(code);
        if (text != nullptr) std::strncpy(record_.message, text, sizeof record_.message - 1);
        for (char *at = record_.message; (at = std::strchr(at, '{')) != nullptr;) std::fill_n(at, 3, '.');
    }

    // Negative; docs/error-codes.md lists all of them.
    int code() const noexcept { return record_.code; }
    // The message, with its values filled in.
    const char *what() const noexcept override { return record_.message; }

    // Where it was raised: the name of the source file alone, its line, the function.
    const char *file() const noexcept { return record_.file; }
    int line() const noexcept { return record_.line; }
    const char *function() const noexcept { return record_.function; }

    // The values that fill the message, as text.
    size_t argument_count() const noexcept { return static_cast<size_t>(record_.arg_count); }
    std::string_view argument(size_t i) const noexcept { return record_.args[i]; }

    // All of it, as C has it: for dv_rethrow.
    const dv_error_t &record() const noexcept { return record_; }

  private:
    dv_error_t record_;
};

namespace detail {

// Takes away the recovery point of the dv_protect that an exception is about to pass through, which would not
// do so itself.
inline void leave_recovery_point() noexcept {
    dv_recovery_t inner;
    inner.outer = nullptr;
    dv_recovery_push(&inner);
    dv_recovery_t *const point = inner.outer;
    dv_recovery_pop(&inner);
    if (point != nullptr) dv_recovery_pop(point);
}

// Calls body(); 0, or the code that it raised. What body throws goes on to the caller.
template <typename Body>
int protect(Body &body, dv_error_t *error) {
    const auto call = [](void *arg) {
        try {
            (*static_cast<Body *>(arg))();
        } catch (...) {
            leave_recovery_point();
            throw;
        }
    };
    return dv_protect(call, const_cast<std::remove_const_t<Body> *>(&body), error);
}

// An error code that knows where it was written down.
struct error_at {
    int code;
    const char *file;
    int line;
    const char *function;
    constexpr error_at(int error, const char *path = __builtin_FILE(), int at_line = __builtin_LINE(),
                       const char *in_function = __builtin_FUNCTION()) noexcept
        : code(error), file(path), line(at_line), function(in_function) {}
};

// Raises an error as the library does: only where a recovery point is set. The values fill its message.
template <typename... Values>
[[noreturn]] void raise(error_at at, Values... values) {
    const char *slash = std::strrchr(at.file, '/');
    dv_err_and_jmp(slash != nullptr ? slash + 1 : at.file, at.line, at.function, 0, 0, at.code, values...);
}

}  // namespace detail

// Calls body(); throws dv::error when it raises. Returns what body returns, which must be trivially copyable.
template <typename Body>
auto guarded(Body &&body) {
    using value_t = std::invoke_result_t<Body &>;
    dv_error_t record;
    if constexpr (std::is_void_v<value_t>) {
        if (detail::protect(body, &record) != 0) throw error(record);
    } else {
        static_assert(std::is_trivially_copyable_v<value_t>);
        value_t value{};
        const auto call = [&] { value = body(); };
        if (detail::protect(call, &record) != 0) throw error(record);
        return value;
    }
}

}  // namespace dv

#endif  // DVTYPES_ERROR_HPP
