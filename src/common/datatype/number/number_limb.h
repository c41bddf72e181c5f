// Coefficients as numbers: limbs of base 10^16, one for each word of eight base-100 digits.
//
// Digits are combined pairwise within the word (100s, then 10^4s, then 10^8s) and taken apart the same way,
// so a limb costs three multiplications in either direction and no table. Products of two limbs fit 128 bits;
// division by the base is a multiplication by its reciprocal.

#ifndef DV_NUMBER_LIMB_H
#define DV_NUMBER_LIMB_H

#include "number_coef.h"

namespace dv::impl {

__extension__ using uint128_t = unsigned __int128;

inline constexpr uint64_t LIMB_BASE = 10'000'000'000'000'000;  // 10^16

// Eight base-100 digits as a number below 10^16.
constexpr uint64_t limb_from_digits(uint64_t digits) {
    constexpr uint64_t even_bytes = 0x00FF00FF00FF00FF;
    constexpr uint64_t even_halves = 0x0000FFFF0000FFFF;
    const uint64_t by_4 = (digits >> 8 & even_bytes) * 100 + (digits & even_bytes);    // below 10^4
    const uint64_t by_8 = (by_4 >> 16 & even_halves) * 10'000 + (by_4 & even_halves);  // below 10^8
    return (by_8 >> 32) * 100'000'000 + (by_8 & 0xFFFFFFFF);
}

// Numbers below 10^4 in the even 16-bit halves, as two base-100 digits each.
constexpr uint64_t split_in_hundreds_(uint64_t halves) {
    // x * 5243 >> 19 is x / 100 for every x below 43698; products stay below 2^27.
    const uint64_t hundreds = (halves * 5243 >> 19) & 0x0000007F0000007F;
    return hundreds << 8 | (halves - hundreds * 100);
}

// A number below 10^16 as eight base-100 digits.
constexpr uint64_t digits_from_limb(uint64_t limb) {
    const uint64_t high = limb / 100'000'000;
    const uint64_t low = limb % 100'000'000;
    const uint64_t upper = (high / 10'000) << 32 | low / 10'000;
    const uint64_t lower = (high % 10'000) << 32 | low % 10'000;
    return split_in_hundreds_(upper) << 16 | split_in_hundreds_(lower);
}

static_assert(digits_from_limb(9'999'999'999'999'999) == in_each_byte(99));
static_assert(digits_from_limb(1'020'304'050'607) == 0x0001020304050607);
static_assert(limb_from_digits(0x6301020304050663) == 9'901'020'304'050'699);

// All digits of a coefficient: the fraction 0.limb0 limb1 limb2.
struct limbs_t {
    uint64_t limb[3];
};

constexpr limbs_t to_limbs(const long_coef &coef) {
    return {{limb_from_digits(coef.word[0]), limb_from_digits(coef.word[1]), limb_from_digits(coef.word[2])}};
}

struct limb_quotient_t {
    uint64_t quotient;
    uint64_t remainder;
};

// value / 10^16 for values below 2^109, such as three products of limbs and a carry.
constexpr limb_quotient_t divide_by_limb_base(uint128_t value) {
    // floor(2^116 / 10^16). The quotient estimated from the bits of value above bit 52 is short by less than
    // 2^52 / 10^16 + 2^57 / 2^64 < 1, so one step corrects it.
    constexpr uint64_t reciprocal = static_cast<uint64_t>((uint128_t{1} << 116) / LIMB_BASE);
    const uint64_t high = static_cast<uint64_t>(value >> 52);
    uint64_t quotient = static_cast<uint64_t>(uint128_t{high} * reciprocal >> 64);
    uint64_t remainder = static_cast<uint64_t>(value) - quotient * LIMB_BASE;
    if (remainder >= LIMB_BASE) {
        remainder -= LIMB_BASE;
        ++quotient;
    }
    return {quotient, remainder};
}

// Stores limb x 100^weight, a limb below 10^16; the caller knows the value to be within the range of NUMBER.
constexpr void store_limb(number_t &x, bool negative, uint64_t limb, int weight) {
    if (limb == 0) return store_zero(x);
    short_coef coef = {{digits_from_limb(limb)}};
    const int leading_zeros = coef_normalize(coef);
    store_coef(x, negative, COEF_WORD_DIGITS - leading_zeros + weight, coef);
}

// Stores magnitude x 10^exponent, where magnitude is below 10^31 and the value within the range of NUMBER.
constexpr void store_decimal(number_t &x, bool negative, uint128_t magnitude, int exponent) {
    if ((exponent & 1) != 0) {  // digits pair up at even powers of ten
        magnitude *= 10;
        --exponent;
    }
    const limb_quotient_t limbs = divide_by_limb_base(magnitude);
    if (limbs.quotient == 0) return store_limb(x, negative, limbs.remainder, exponent / 2);
    long_coef coef = {{digits_from_limb(limbs.quotient), digits_from_limb(limbs.remainder), 0}};
    const int leading_zeros = coef_normalize(coef);
    store_coef(x, negative, 2 * COEF_WORD_DIGITS - leading_zeros + exponent / 2, coef);
}

struct quotient_t {
    uint64_t quotient;
    uint64_t remainder;
};

// (high * 2^64 + low) / divisor, where high < divisor, so that the quotient fits.
inline quotient_t divide_128_by_64(uint64_t high, uint64_t low, uint64_t divisor) {
#if defined(__x86_64__)
    uint64_t quotient, remainder;
    __asm__("divq %[divisor]"
            : "=a"(quotient), "=d"(remainder)
            : [divisor] "r"(divisor), "a"(low), "d"(high)
            : "cc");
    return {quotient, remainder};
#else
    const uint128_t value = uint128_t{high} << 64 | low;
    return {static_cast<uint64_t>(value / divisor), static_cast<uint64_t>(value % divisor)};
#endif
}

}  // namespace dv::impl

#endif  // DV_NUMBER_LIMB_H
