// dvtypes/error.hpp: a raise of the library as a C++ exception. Header only; C++20.
//
// What dv::guarded runs must not own anything: no object with a destructor may be alive in it when a raise
// leaves it. Objects outside of it are safe. It goes through dv_protect, so it works over any base library
// that has it.

#ifndef DVTYPES_ERROR_HPP
#define DVTYPES_ERROR_HPP

#include <exception>
#include <string_view>
#include <type_traits>

#include "dvtypes/base.h"

namespace dv {

// A raise of the library.
class error : public std::exception {
  public:
    explicit error(const dv_error_t &record) : record_(record) {}

    int code() const noexcept { return record_.code; }
    const char *what() const noexcept override { return record_.message; }

    // Where it was raised: the name of the source file alone, the line, the function.
    const char *file() const noexcept { return record_.file; }
    int line() const noexcept { return record_.line; }
    const char *function() const noexcept { return record_.function; }

    // The values that fill the message, as text.
    size_t argument_count() const noexcept { return static_cast<size_t>(record_.arg_count); }
    std::string_view argument(size_t i) const noexcept { return record_.args[i]; }

    const dv_error_t &record() const noexcept { return record_; }

  private:
    dv_error_t record_;
};

// Calls body(); throws dv::error when it raises. Returns what body returns, which must be trivially copyable.
template <typename Body>
auto guarded(Body &&body) {
    using body_t = std::remove_reference_t<Body>;
    using result_t = std::invoke_result_t<body_t &>;
    dv_error_t record;
    if constexpr (std::is_void_v<result_t>) {
        const auto call = [](void *arg) { (*static_cast<body_t *>(arg))(); };
        if (dv_protect(call, &body, &record) != 0) throw error(record);
    } else {
        static_assert(std::is_trivially_copyable_v<result_t>);
        struct call_t {
            body_t &body;
            result_t result;
        } call_with{body, {}};
        const auto call = [](void *arg) {
            auto *with = static_cast<call_t *>(arg);
            with->result = with->body();
        };
        if (dv_protect(call, &call_with, &record) != 0) throw error(record);
        return call_with.result;
    }
}

}  // namespace dv

#endif  // DVTYPES_ERROR_HPP
