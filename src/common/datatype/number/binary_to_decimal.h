// A binary floating-point value as decimal digits: correctly rounded to a count of them, what printf's "%.*e"
// prints, or as few as read back as the value.

#ifndef DV_NUMBER_BINARY_TO_DECIMAL_H
#define DV_NUMBER_BINARY_TO_DECIMAL_H

#include "number_limb.h"

namespace dv::impl {

// significand x 2^exponent; the significand is not 0.
struct binary_float_t {
    uint128_t significand;
    int exponent;
};

// significand x 10^exponent.
struct decimal_float_t {
    uint128_t significand;
    int exponent;
};

constexpr int bit_length(uint128_t value) {
    const auto high = static_cast<uint64_t>(value >> 64);
    return high != 0 ? 128 - std::countl_zero(high) : 64 - std::countl_zero(static_cast<uint64_t>(value));
}
static_assert(bit_length(1) == 1 && bit_length(uint128_t{1} << 64) == 65 && bit_length(~uint128_t{0}) == 128);

// Rounds to `digits` significant decimal digits (1..20), an exact half to the even digit; the significand of
// the result has exactly that many. The value lies between 2^-440 and 2^424.
decimal_float_t round_to_decimal(binary_float_t value, int digits);

// The same of significand x 2^exponent with its highest bit set, to 16 digits and by a single multiplication;
// a significand of 0 if that leaves the rounding open.
struct decimal16_t {
    uint64_t significand;
    int exponent;
};
decimal16_t round_to_16_digits(uint64_t significand, int exponent);

// The decimal of the fewest digits that reads back as a double, of several the nearest, of two as near the
// even one. `value` has a significand of 53 bits and lies between 2^-440 and 2^424. The result is written
// with 17 digits, the last of which may be zeros.
inline constexpr int DOUBLE_DIGITS_MAX = 17;
decimal_float_t round_to_shortest(binary_float_t value);

}  // namespace dv::impl

#endif  // DV_NUMBER_BINARY_TO_DECIMAL_H
