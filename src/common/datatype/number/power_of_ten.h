// Powers of ten as 128-bit significands of binary numbers, for conversions between binary and decimal.

#ifndef DV_NUMBER_POWER_OF_TEN_H
#define DV_NUMBER_POWER_OF_TEN_H

#include "number_limb.h"

namespace dv::impl {

inline constexpr int POWER_OF_TEN_MIN = -133;  // 10^-133 < 2^-440
inline constexpr int POWER_OF_TEN_MAX = 152;
inline constexpr int POWER_OF_TEN_EXACT_MAX = 55;  // 5^55 < 2^128: the significands from 0 to here are exact

struct power_of_ten_t {
    uint64_t high;
    uint64_t low;
};
struct power_of_ten_table_t {
    power_of_ten_t significand[POWER_OF_TEN_MAX - POWER_OF_TEN_MIN + 1];
};
extern const power_of_ten_table_t POWERS_OF_TEN;

inline const power_of_ten_t &power_of_ten_words(int n) {
    return POWERS_OF_TEN.significand[n - POWER_OF_TEN_MIN];
}

// 10^n = significand x 2^(exponent), 2^127 <= significand < 2^128, cut and not rounded: too small by less
// than two units where it is not exact.
inline uint128_t power_of_ten_significand(int n) {
    const power_of_ten_t &words = power_of_ten_words(n);
    return uint128_t{words.high} << 64 | words.low;
}

constexpr int power_of_ten_exponent(int n) { return (n * 1741647 >> 19) - 127; }  // floor(log2(10^n)) - 127

}  // namespace dv::impl

#endif  // DV_NUMBER_POWER_OF_TEN_H
