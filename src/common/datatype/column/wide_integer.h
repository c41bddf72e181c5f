// Unsigned integers of 256 bits: products of two decimals, and decimals scaled up, before they are rounded.

#ifndef DV_COLUMN_WIDE_INTEGER_H
#define DV_COLUMN_WIDE_INTEGER_H

#include "../number/number_limb.h"

namespace dv::impl {

__extension__ using int128_t = __int128;

inline constexpr int DECIMAL_DIGITS_MAX = 38;  // of which every number fits 127 bits

// 10^0 to 10^38.
inline constexpr auto DECIMAL_UNITS = [] {
    std::array<uint128_t, DECIMAL_DIGITS_MAX + 1> powers{};
    uint128_t power = 1;
    for (uint128_t &p : powers) {
        p = power;
        power *= 10;  // of the last one not used
    }
    return powers;
}();
constexpr uint128_t ten_to(int64_t exponent) { return DECIMAL_UNITS[static_cast<size_t>(exponent)]; }

struct wide_t {
    uint128_t high, low;

    static constexpr int DIGITS_MAX = 78;  // 2^256 is 1.2E77
    constexpr bool is_zero() const { return (high | low) == 0; }
    constexpr bool operator==(const wide_t &) const = default;
    constexpr bool operator<(const wide_t &y) const { return high != y.high ? high < y.high : low < y.low; }
};

constexpr wide_t operator+(const wide_t &x, const wide_t &y) {
    const uint128_t low = x.low + y.low;
    return {x.high + y.high + (low < x.low ? 1 : 0), low};
}

constexpr wide_t operator-(const wide_t &x, const wide_t &y) {
    return {x.high - y.high - (x.low < y.low ? 1 : 0), x.low - y.low};
}

// By halves of 64 bits. The middle sum holds three numbers below 2^64 and cannot overflow.
constexpr wide_t multiply_wide(uint128_t x, uint128_t y) {
    const auto x0 = static_cast<uint64_t>(x), x1 = static_cast<uint64_t>(x >> 64);
    const auto y0 = static_cast<uint64_t>(y), y1 = static_cast<uint64_t>(y >> 64);
    const uint128_t low = uint128_t{x0} * y0, cross = uint128_t{x0} * y1, other = uint128_t{x1} * y0;
    const uint128_t middle = (low >> 64) + static_cast<uint64_t>(cross) + static_cast<uint64_t>(other);
    return {uint128_t{x1} * y1 + (cross >> 64) + (other >> 64) + (middle >> 64),
            middle << 64 | static_cast<uint64_t>(low)};
}

struct wide_quotient_t {
    wide_t quotient;
    uint64_t remainder;
};

inline wide_quotient_t divide_wide(const wide_t &x, uint64_t divisor) {
    uint64_t words[4] = {static_cast<uint64_t>(x.high >> 64), static_cast<uint64_t>(x.high),
                         static_cast<uint64_t>(x.low >> 64), static_cast<uint64_t>(x.low)};
    uint64_t remainder = 0;
    for (uint64_t &word : words) {
        const quotient_t step = divide_128_by_64(remainder, word, divisor);
        word = step.quotient;
        remainder = step.remainder;
    }
    return {{uint128_t{words[0]} << 64 | words[1], uint128_t{words[2]} << 64 | words[3]}, remainder};
}

// x / 10^digits cut to an integer, and whether something other than 0 is cut off.
struct cut_wide_t {
    wide_t kept;
    bool is_exact;
};
inline cut_wide_t cut_digits(const wide_t &x, int64_t digits) {
    constexpr int64_t step_max = 18;
    if (digits >= wide_t::DIGITS_MAX) return {{0, 0}, x.is_zero()};
    cut_wide_t cut = {x, true};
    for (; digits > 0; digits -= step_max) {
        const int64_t step = digits < step_max ? digits : step_max;
        const wide_quotient_t rest = divide_wide(cut.kept, static_cast<uint64_t>(ten_to(step)));
        cut = {rest.quotient, cut.is_exact && rest.remainder == 0};
    }
    return cut;
}

// x / 10^digits rounded half up: of what is cut off its first digit decides.
inline wide_t round_digits(const wide_t &x, int64_t digits) {
    if (digits <= 0) return x;
    const wide_t kept_and_next = cut_digits(x, digits - 1).kept;
    return divide_wide(kept_and_next + wide_t{0, 5}, 10).quotient;
}

}  // namespace dv::impl

#endif  // DV_COLUMN_WIDE_INTEGER_H
