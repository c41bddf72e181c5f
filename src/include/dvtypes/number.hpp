// dvtypes/number.hpp: SQL NUMBER as a C++ value. Header only; C++20.
//
// ```cpp
// using namespace dv::literals;
// const dv::number price("1234.50");
// std::cout << round(price * 1.19_number, 2) << '\n';              // 1469.06
// std::cout << 7 % 3_number << ' ' << (price > 1000) << '\n';      // 1 1
// ```
//
// Exact: 38 significant digits (dvtypes/number.h). Integers become numbers by themselves, floating-point
// numbers only where asked to, since 0.1 has no exact binary form: number(0.1) is the decimal that printf
// shows, .1.

#ifndef DVTYPES_NUMBER_HPP
#define DVTYPES_NUMBER_HPP

#include <limits>
#include <utility>

#include "dvtypes/number.h"
#include "dvtypes/value.hpp"

namespace dv {

namespace detail {

__extension__ typedef __int128 int128;
__extension__ typedef unsigned __int128 uint128;

template <typename T, typename... Others>
concept one_of = (std::same_as<std::remove_cv_t<T>, Others> || ...);

inline constexpr uint64_t ten_to_18 = 1'000'000'000'000'000'000;

// x = x * 10^18 + digits; exact while the result has at most 38 significant digits.
inline void append_18_digits(number_t &x, uint64_t digits) {
    number_t part;
    number_from_uint64(&part, ten_to_18);
    number_mul(&x, &part);
    number_from_uint64(&part, digits);
    number_add(&x, &part);
}

// Raises -5072 for a value of 39 digits that does not end in 0: no NUMBER holds them all.
inline void from_uint128(number_t &x, uint128 v) {
    constexpr uint128 ten_to_38 = uint128{ten_to_18} * ten_to_18 * 100;
    if (v >= ten_to_38 && v % 10 != 0) raise(-5072);
    number_from_uint64(&x, static_cast<uint64_t>(v / ten_to_18 / ten_to_18));
    append_18_digits(x, static_cast<uint64_t>(v / ten_to_18 % ten_to_18));
    append_18_digits(x, static_cast<uint64_t>(v % ten_to_18));
}

inline void from_int128(number_t &x, int128 v) {
    from_uint128(x, v < 0 ? -static_cast<uint128>(v) : static_cast<uint128>(v));
    if (v < 0) number_negate(&x);
}

// Takes the last 18 digits off x, a whole number that is not negative, and returns them.
inline uint64_t take_18_digits(number_t &x) {
    number_t unit, rest = x;
    number_from_uint64(&unit, ten_to_18);
    number_mod(&rest, &unit);
    number_sub(&x, &rest);
    number_div(&x, &unit);
    uint64_t digits = 0;
    number_to_uint64(&rest, &digits);
    return digits;
}

// |x| cut to a whole number. Raises -5072 from 2^128 on.
inline uint128 magnitude(const number_t &x) {
    number_t high{};
    number_assign(&high, &x);
    number_abs(&high);
    number_round_at_withmode(&high, 0, NUMBER_RMODE_TRUNC);
    const uint64_t last = take_18_digits(high), middle = take_18_digits(high);
    uint64_t first = 0;
    number_to_uint64(&high, &first);
    uint128 v = 0;
    if (__builtin_mul_overflow(uint128{ten_to_18} * ten_to_18, first, &v) ||
        __builtin_add_overflow(v, uint128{ten_to_18} * middle + last, &v))
        raise(-5072);
    return v;
}

// Both cut toward zero, and raise -5072 outside their range; below zero nothing is an unsigned number.
inline void to_wide(const number_t &x, uint128 &v) {
    if (number_cmp(&x, _number_zero) < 0) raise(-5072);
    v = magnitude(x);
}
inline void to_wide(const number_t &x, int128 &v) {
    const bool is_negative = number_cmp(&x, _number_zero) < 0;
    const uint128 wide = magnitude(x), max = ~uint128{} >> 1;
    if (wide > max + (is_negative ? 1 : 0)) raise(-5072);
    v = static_cast<int128>(is_negative ? -wide : wide);
}

}  // namespace detail

// Integers of up to 128 bits; neither characters nor truth values.
template <typename T>
concept integer = !detail::one_of<T, bool, char, wchar_t, char8_t, char16_t, char32_t> &&
                  (std::integral<T> || detail::one_of<T, detail::int128, detail::uint128>);

// SQL NUMBER that is not NULL. A plain 23-byte value.
class number : public parts::basic_value<number, number_t> {
  public:
    // What operations do to a record; they raise, so they run under guarded or attempt.
    struct raising {
        static void read(number_t &x, const detail::text_argument &text) {
            number_from_str(&x, text.length, text.data, nullptr);
        }
        static int try_read(number_t &x, const detail::text_argument &text) {  // does not raise
            return number_try_from_str(&x, text.length, text.data);
        }
        static void add(number_t &x, const number &y) { number_add(&x, &y.record_); }
        static void sub(number_t &x, const number &y) { number_sub(&x, &y.record_); }
        static void mul(number_t &x, const number &y) { number_mul(&x, &y.record_); }
        static void div(number_t &x, const number &y) { number_div(&x, &y.record_); }
        static void mod(number_t &x, const number &y) { number_mod(&x, &y.record_); }
    };

    // Zero.
    constexpr number() noexcept : basic_value({1, 0x80, {}}) {}
    // Exact. 128 bits throw -5072 where a value has 39 significant digits.
    template <integer Integer>
    number(Integer v) noexcept(sizeof(Integer) <= sizeof(int64_t)) : number() {
        if constexpr (sizeof(Integer) > sizeof(int64_t)) {
            if constexpr (detail::one_of<Integer, detail::int128>) {
                guarded([&] { detail::from_int128(record_, v); });
            } else {
                guarded([&] { detail::from_uint128(record_, v); });
            }
        } else if constexpr (std::is_signed_v<Integer>) {
            number_from_int64(&record_, v);
        } else {
            number_from_uint64(&record_, v);
        }
    }
    // The decimals of number_from_float, number_from_double and number_from_long_double: of 7, 16 and 20
    // digits. Throw -5068, -5069, and -5074 for an infinity or a NaN.
    explicit number(float v) : number() {
        guarded([&] { number_from_float(&record_, v); });
    }
    explicit number(double v) : number() {
        guarded([&] { number_from_double(&record_, v); });
    }
    explicit number(long double v) : number() {
        guarded([&] { number_from_long_double(&record_, v); });
    }
    // The shortest decimal that reads back as v: of 85.1 it is 85.1. Throws the same.
    static number shortest(double v) {
        number result;
        guarded([&] { number_from_double_shortest(&result.record_, v); });
        return result;
    }
    // Text as number_from_str reads it; throws -5074, -5068, -5069.
    explicit number(std::string_view text) : number() {
        const detail::text_argument argument(text);
        guarded([&] { raising::read(record_, argument); });
    }
    // Of a valid record (bytes.hpp checks one). Only the bytes that mean something are read.
    explicit number(const number_t &record) noexcept : number() { number_assign(&record_, &record); }

    // Results are rounded half up to 38 digits, unless number_set_roundmode says otherwise. Throw -5068,
    // -5069; / throws -5070 where y is zero, and x % 0 is x. A remainder has the sign of x.
    number &operator+=(const number &y) { return apply(raising::add, y); }
    number &operator-=(const number &y) { return apply(raising::sub, y); }
    number &operator*=(const number &y) { return apply(raising::mul, y); }
    number &operator/=(const number &y) { return apply(raising::div, y); }
    number &operator%=(const number &y) { return apply(raising::mod, y); }

    // One more, one less.
    number &operator++() { return *this += 1; }
    number &operator--() { return *this -= 1; }
    number operator++(int) { return std::exchange(*this, *this + 1); }
    number operator--(int) { return std::exchange(*this, *this - 1); }

    // As the assignments. One operand may be an integer.
    friend number operator+(number x, const number &y) { return x += y; }
    friend number operator-(number x, const number &y) { return x -= y; }
    friend number operator*(number x, const number &y) { return x *= y; }
    friend number operator/(number x, const number &y) { return x /= y; }
    friend number operator%(number x, const number &y) { return x %= y; }
    // The sign, kept or turned.
    friend number operator+(const number &x) noexcept { return x; }
    friend number operator-(number x) noexcept {
        number_negate(&x.record_);
        return x;
    }

    // By value. Floating-point numbers are compared by number(y).
    friend bool operator==(const number &x, const number &y) noexcept {
        return number_cmp(&x.record_, &y.record_) == 0;
    }
    friend std::strong_ordering operator<=>(const number &x, const number &y) noexcept {
        return number_cmp(&x.record_, &y.record_) <=> 0;
    }

    // As a machine number. Integers are cut toward zero, and what is outside the type throws -5072;
    // floating-point numbers are within a few units of their last place, as of number_to_double.
    template <typename Machine>
    requires integer<Machine> || std::floating_point<Machine> Machine to()
    const {
        return guarded([&] { return convert<Machine>(); });
    }
    // to<int64_t>() and to<double>().
    int64_t to_int64() const { return to<int64_t>(); }
    double to_double() const { return to<double>(); }

    // Is it none? Only results on columns leave such ones, in rows that failed (column.hpp). It equals no
    // number; operations on it give unspecified ones.
    bool is_null() const noexcept { return record_.size == 0; }

    // The normal (positional) form, in full: ".5", "-1200". "NULL" of one that is_null().
    std::string to_string() const {
        if (is_null()) return "NULL";
        char text[NUMBER_NORMAL_TEXT_SIZE];
        guarded([&] { number_to_str(&record_, sizeof text, text, nullptr); });
        return text;
    }

    // The meaningful bytes from signexp on, whose bytewise order is the order of the values.
    std::span<const uint8_t> key() const noexcept { return {&record_.signexp, record_.size}; }

  private:
    template <typename Machine>
    Machine convert() const {
        Machine v{};
        if constexpr (std::same_as<Machine, float>) {
            number_to_float(&record_, &v);
        } else if constexpr (std::same_as<Machine, double>) {
            number_to_double(&record_, &v);
        } else if constexpr (std::same_as<Machine, long double>) {
            number_to_long_double(&record_, &v);
        } else if constexpr (sizeof(Machine) > sizeof(int64_t)) {
            detail::to_wide(record_, v);
        } else {
            using wide_t = std::conditional_t<std::is_signed_v<Machine>, int64_t, uint64_t>;
            wide_t wide = 0;
            if constexpr (std::is_signed_v<Machine>) {
                number_to_int64(&record_, &wide);
            } else {
                number_to_uint64(&record_, &wide);
            }
            v = static_cast<Machine>(wide);
            if (v != wide) detail::raise(-5072);
        }
        return v;
    }

    number &apply(void (*operation)(number_t &, const number &), const number &y) {
        return change([&](number_t &record) { operation(record, y); });
    }
};

// |x|.
inline number abs(const number &x) noexcept { return x < 0 ? -x : x; }

// To decimal places, as SQL does: round(x, 2) keeps hundredths, round(x, -2) hundreds. trunc cuts toward
// zero.
inline number round(const number &x, int64_t places = 0, number_rmode_e mode = NUMBER_RMODE_HALF_UP) {
    return detail::changed(x, [&](number_t &record) { number_round_to_places(&record, places, mode); });
}
inline number trunc(const number &x, int64_t places = 0) { return round(x, places, NUMBER_RMODE_TRUNC); }

// To a whole number below or above.
inline number floor(const number &x) { return round(x, 0, NUMBER_RMODE_FLOOR); }
inline number ceil(const number &x) { return round(x, 0, NUMBER_RMODE_CEIL); }

// -1, 0 or 1.
inline int sign(const number &x) noexcept {
    const int order = number_cmp(&x.record(), _number_zero);
    return (order > 0 ? 1 : 0) - (order < 0 ? 1 : 0);
}

// To 38 digits. Throw -5073 outside the domain; pow and exp throw -5068 and -5069 where a step leaves the
// range.
inline number sqrt(const number &x) {
    return detail::changed(x, [](number_t &record) { number_sqrt(&record); });
}
inline number exp(const number &x) {
    return detail::changed(x, [](number_t &record) { number_exp(&record); });
}
inline number pow(const number &x, const number &y) {
    return detail::changed(x, [&](number_t &record) { number_pow(&record, &y.record()); });
}

// For using namespace dv::literals.
inline namespace literals {

// "12.50"_number and 12.50_number: the text as it is written, read exactly. Hexadecimal digits and digit
// separators throw -5074.
inline number operator""_number(const char *text, size_t length) { return number({text, length}); }
inline number operator""_number(const char *digits) { return number(std::string_view(digits)); }

}  // namespace literals

}  // namespace dv

// A decimal of 38 digits. min() is the smallest positive value, 10^-130; max() has 38 nines and 88 zeros.
template <>
struct std::numeric_limits<dv::number> {
    static constexpr bool is_specialized = true;
    static constexpr bool is_signed = true;
    static constexpr bool is_integer = false;
    static constexpr bool is_exact = false;
    static constexpr bool is_bounded = true;
    static constexpr bool is_modulo = false;
    static constexpr bool is_iec559 = false;
    static constexpr bool has_infinity = false;
    static constexpr bool has_quiet_NaN = false;
    static constexpr bool has_signaling_NaN = false;
    static constexpr float_denorm_style has_denorm = denorm_absent;
    static constexpr bool has_denorm_loss = false;
    static constexpr float_round_style round_style = round_to_nearest;
    static constexpr bool traps = false;
    static constexpr bool tinyness_before = false;
    static constexpr int radix = 10;
    static constexpr int digits = NUMBER_PRECISION_MAX;
    static constexpr int digits10 = NUMBER_PRECISION_MAX;
    static constexpr int max_digits10 = NUMBER_PRECISION_MAX;
    static constexpr int min_exponent10 = 2 * (NUMBER_EXPONENT_MIN - 1);
    static constexpr int max_exponent10 = 2 * NUMBER_EXPONENT_MAX - 1;
    static constexpr int min_exponent = min_exponent10 + 1;
    static constexpr int max_exponent = max_exponent10 + 1;

    static dv::number min() { return dv::number("1E-130"); }
    static dv::number max() noexcept { return dv::number(*_number_max); }
    static dv::number lowest() noexcept { return dv::number(*_number_min); }
    static dv::number epsilon() { return dv::number("1E-37"); }
    static dv::number round_error() { return dv::number("0.5"); }
    static dv::number infinity() noexcept { return {}; }
    static dv::number quiet_NaN() noexcept { return {}; }
    static dv::number signaling_NaN() noexcept { return {}; }
    static dv::number denorm_min() { return min(); }
};

#endif  // DVTYPES_NUMBER_HPP
