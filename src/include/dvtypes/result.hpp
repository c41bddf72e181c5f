// dvtypes/result.hpp: what an operation gave, or the code of its error, without an exception. Header only;
// C++20.
//
// ```cpp
// const dv::result<dv::date> day = dv::try_parse<dv::date>("2023-02-29");
// if (!day) std::cout << day.error() << '\n';                      // dvtypes:-5114
// std::cout << day.value_or(dv::date(1900, 1, 1)) << '\n';         // 1900-01-01 00:00:00
// ```
//
// Nothing is thrown and no message is made, so that a text that is refused costs little more than one that is
// read (docs/errors.md). Under a base library that raises by C++ exception, a failure costs an exception, but
// for try_parse<number>. What the error was about, its arguments and its place in the text, is not kept:
// dv::explain does the operation once more and tells (explain.hpp).

#ifndef DVTYPES_RESULT_HPP
#define DVTYPES_RESULT_HPP

#include <cstddef>
#include <string>
#include <system_error>
#include <type_traits>

#include "dvtypes/error.hpp"

namespace dv {

// The library's codes as a category of the standard's: "dvtypes", with the messages of dv_error_text, whose
// causes and remedies are in docs/error-codes.md.
class __attribute__((visibility("default"))) error_category_type final : public std::error_category {
  public:
    // "dvtypes".
    const char *name() const noexcept override { return "dvtypes"; }
    // The sentence of a code; "..." stands for what only dv::error knows: the values in it.
    std::string message(int code) const override {
        return dv_error_text(code) != nullptr ? dv::error(code).what() : "Unknown error";
    }
    // What a code is to programs that know std::errc alone: invalid_argument for a text that has not the form
    // of a number, of a datetime or of a zone (-5074, -5113, -5104), result_out_of_range for a value that its
    // type or field does not hold (-5064, -5068, -5069, -5072, -5111, -5114), argument_out_of_domain for a
    // division by zero and the like (-5065, -5070, -5073), not_enough_memory (-1); each other code is one of
    // its own.
    std::error_condition default_error_condition(int code) const noexcept override {
        switch (code) {
            case DV_ERR_NUMBER_TEXT:
            case DV_ERR_ZONE_TEXT:
            case DV_ERR_FIELD_TEXT:
                return std::make_error_condition(std::errc::invalid_argument);
            case DV_ERR_ITV_LEADING_PRECISION:
            case DV_ERR_NUMBER_OVERFLOW:
            case DV_ERR_NUMBER_UNDERFLOW:
            case DV_ERR_NUMBER_TARGET_RANGE:
            case DV_ERR_NUMBER_PRECISION:
            case DV_ERR_FIELD_RANGE:
                return std::make_error_condition(std::errc::result_out_of_range);
            case DV_ERR_ITV_DIVISION_BY_ZERO:
            case DV_ERR_NUMBER_DIVISION_BY_ZERO:
            case DV_ERR_NUMBER_DOMAIN:
                return std::make_error_condition(std::errc::argument_out_of_domain);
            case DV_ERR_NO_MEMORY:
                return std::make_error_condition(std::errc::not_enough_memory);
            default:
                return {code, *this};
        }
    }
};

// One object in a program and its shared libraries.
__attribute__((visibility("default"))) inline const std::error_category &error_category() noexcept {
    static const error_category_type category;
    return category;
}

// A code of the library as one of the standard's; of 0, success, std::error_code().
inline std::error_code make_error_code(int code) noexcept {
    return code == 0 ? std::error_code() : std::error_code(code, error_category());
}
// The code of an exception.
inline std::error_code make_error_code(const error &caught) noexcept {
    return make_error_code(caught.code());
}

}  // namespace dv

// The names of codes are values of std::error_code: `if (amount.error() == DV_ERR_NUMBER_TEXT)`.
template <>
struct std::is_error_code_enum<dv_error_code_e> : std::true_type {};

inline std::error_code make_error_code(dv_error_code_e code) noexcept {
    return dv::make_error_code(static_cast<int>(code));
}

namespace dv {

// A value or a code; below.
template <typename Value>
class result;

namespace detail {

template <typename Value, typename Operation>
result<Value> attempt_on(const Value &x, const Operation &operation) noexcept;

// Calls body(); 0, or the code that it raised, or threw as dv::error.
template <typename Body>
int code_of(Body &body) {
    try {
        return protect(body, nullptr);
    } catch (const dv::error &caught) {
        return caught.code();
    }
}

}  // namespace detail

// A value, or the code for which there is none. Small and plain: copying it copies its bytes.
template <typename Value>
class [[nodiscard]] result {
    static_assert(std::is_trivially_copyable_v<Value> && std::is_default_constructible_v<Value>);

  public:
    // With a value.
    constexpr result(const Value &value) noexcept : value_(value) {}
    // Without one, for a code of the library.
    static constexpr result failure(int code) noexcept {
        result failed{Value()};
        failed.code_ = code;
        return failed;
    }

    // Is there a value?
    constexpr bool has_value() const noexcept { return code_ == 0; }
    constexpr explicit operator bool() const noexcept { return has_value(); }

    // Only where there is a value; without one it is an unspecified one.
    constexpr const Value &operator*() const noexcept { return value_; }
    constexpr const Value *operator->() const noexcept { return &value_; }
    // The value, or another where there is none.
    constexpr Value value_or(const Value &other) const noexcept { return has_value() ? value_ : other; }

    // The value. Throws dv::error, of the code alone, where there is none; constructors and operators throw
    // it with its values, and dv::explain tells them (explain.hpp).
    const Value &value() const {
        if (!has_value()) throw dv::error(code_);
        return value_;
    }

    // The code for which there is no value; 0 where there is one.
    constexpr int code() const noexcept { return code_; }
    // The same for the standard's functions.
    std::error_code error() const noexcept { return make_error_code(code_); }

  private:
    template <typename V, typename Operation>
    friend result<V> detail::attempt_on(const V &x, const Operation &operation) noexcept;

    Value value_;
    int code_ = 0;
};

// Calls body(), which calls functions of the library, as guarded does; an error is not thrown but returned:
// of a body without a result as std::error_code, else as result. So is a dv::error that body throws, since it
// works on values: that costs an exception.
template <typename Body>
[[nodiscard]] auto attempt(Body &&body) {
    using value_t = std::invoke_result_t<Body &>;
    if constexpr (std::is_void_v<value_t>) {
        return make_error_code(detail::code_of(body));
    } else {
        value_t value{};
        const auto call = [&] { value = body(); };
        const int code = detail::code_of(call);
        return code == 0 ? result<value_t>(value) : result<value_t>::failure(code);
    }
}

}  // namespace dv

#endif  // DVTYPES_RESULT_HPP
