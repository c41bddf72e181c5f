// Coefficients as numbers: limbs of base 10^16, one for each word of eight base-100 digits.
//
// Digits are combined pairwise within the word (100s, then 10^4s, then 10^8s) and taken apart the same way,
// so a limb costs three multiplications in either direction and no table. Products of two limbs fit 128 bits;
// division by the base is a multiplication by its reciprocal.

#ifndef DV_NUMBER_LIMB_H
#define DV_NUMBER_LIMB_H

#include "number_coef.h"
#include "vector_bytes.h"

namespace dv::impl {

__extension__ using uint128_t = unsigned __int128;

inline constexpr uint64_t LIMB_BASE = 10'000'000'000'000'000;  // 10^16

// Eight base-100 digits as a number below 10^16.
constexpr uint64_t half_limbs_from_digits(uint64_t digits) {
    constexpr uint64_t even_bytes = 0x00FF00FF00FF00FF;
    constexpr uint64_t even_halves = 0x0000FFFF0000FFFF;
    const uint64_t by_4 = (digits >> 8 & even_bytes) * 100 + (digits & even_bytes);  // below 10^4
    return (by_4 >> 16 & even_halves) * 10'000 + (by_4 & even_halves);
}

constexpr uint64_t limb_from_digits(uint64_t digits) {
    const uint64_t by_8 = half_limbs_from_digits(digits);
    return (by_8 >> 32) * 100'000'000 + (by_8 & 0xFFFFFFFF);
}

// Numbers below 10^4 in the even 16-bit halves, as two base-100 digits each.
constexpr uint64_t split_in_hundreds(uint64_t halves) {
    // x * 5243 >> 19 is x / 100 for every x below 43698; products stay below 2^27.
    const uint64_t hundreds = (halves * 5243 >> 19) & 0x0000007F0000007F;
    return hundreds << 8 | (halves - hundreds * 100);
}

namespace plain {

constexpr uint64_t digit_bytes_from_limb(uint64_t limb) {
    const uint64_t high = limb / 100'000'000;
    const uint64_t low = limb % 100'000'000;
    const uint64_t upper = (high / 10'000) << 32 | low / 10'000;
    const uint64_t lower = (high % 10'000) << 32 | low % 10'000;
    return swap_bytes(split_in_hundreds(upper) << 16 | split_in_hundreds(lower));
}

}  // namespace plain

#if DV_HAS_VECTOR_BYTES

namespace vectors {

// The same steps with both halves of the limb in one register: half the instructions.
inline uint64_t digit_bytes_from_limb(uint64_t limb) {
    const uint64_t high = limb / 100'000'000;
    const bytes16_t by_8 = join_halves(high, limb - high * 100'000'000);
    // x * 109951163 >> 40 is x / 10^4 for every x below 10^8, x * 5243 >> 19 is x / 100 below 10^4.
    const bytes16_t upper = _mm_srli_epi64(_mm_mul_epu32(by_8, _mm_set1_epi32(109'951'163)), 40);
    const bytes16_t lower = _mm_sub_epi32(by_8, _mm_madd_epi16(upper, _mm_set1_epi32(10'000)));
    const bytes16_t by_4 = _mm_or_si128(upper, _mm_slli_epi32(lower, 16));
    const bytes16_t hundreds = _mm_srli_epi16(_mm_mulhi_epu16(by_4, _mm_set1_epi16(5243)), 3);
    // Hundreds in the low byte, x - hundreds * 100 in the high one: x * 256 - hundreds * (100 * 256 - 1).
    const bytes16_t digits =
        _mm_add_epi16(_mm_slli_epi16(by_4, 8), _mm_mullo_epi16(hundreds, _mm_set1_epi16(1 - 25'600)));
    return static_cast<uint64_t>(_mm_cvtsi128_si64(_mm_shuffle_epi32(digits, _MM_SHUFFLE(3, 1, 2, 0))));
}

}  // namespace vectors

#endif

// A number below 10^16 as eight base-100 digits in the order of a record: the first is the lowest byte.
constexpr uint64_t digit_bytes_from_limb(uint64_t limb) {
#if DV_HAS_VECTOR_BYTES
    if (!std::is_constant_evaluated()) return vectors::digit_bytes_from_limb(limb);
#endif
    return plain::digit_bytes_from_limb(limb);
}

// The same in the order of a coefficient: the first is the top byte.
constexpr uint64_t digits_from_limb(uint64_t limb) { return swap_bytes(digit_bytes_from_limb(limb)); }

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

// value / 10^16 for values below 2^109, such as three products of limbs and a carry; or one less: the
// quotient from the bits of value above bit 52 is short by less than 2^52 / 10^16 + 2^57 / 2^64 < 1.
constexpr uint64_t estimate_limb_quotient(uint128_t value) {
    constexpr uint64_t reciprocal = static_cast<uint64_t>((uint128_t{1} << 116) / LIMB_BASE);
    return static_cast<uint64_t>(uint128_t{static_cast<uint64_t>(value >> 52)} * reciprocal >> 64);
}

constexpr limb_quotient_t divide_by_limb_base(uint128_t value) {
    const uint64_t quotient = estimate_limb_quotient(value);
    const uint64_t remainder = static_cast<uint64_t>(value) - quotient * LIMB_BASE;
    const uint64_t is_short = remainder >= LIMB_BASE ? 1 : 0;  // as likely as not, so no branch
    return {quotient + is_short, remainder - (LIMB_BASE & -is_short)};
}

// Stores limb x 100^weight with a sign, all ones for a negative value, else 0; the limb is below 10^16, and
// the caller knows the value to be within the range of NUMBER. Digits stay in the order of a record all the
// way.
constexpr void store_limb(number_t &x, uint64_t sign, uint64_t limb, int weight) {
    if (limb == 0) return store_zero(x);
    const uint64_t all_digits = digit_bytes_from_limb(limb);
    const int leading_zeros = trailing_zero_bytes(all_digits);
    const uint64_t digits = all_digits >> (8 * leading_zeros);
    const int last = COEF_WORD_DIGITS - 1 - leading_zero_bytes(digits);
    // Behind the last digit; in none of the eight bytes if that is the eighth.
    const uint64_t to_terminator = uint64_t{DIGIT_ZERO_TO_TERMINATOR} << 8 << (8 * last);
    const uint64_t excess = in_each_byte(NUMBER_DIGIT_EXCESS) - sign;
    x.size = static_cast<uint8_t>(2 + last + static_cast<int>(sign & 1));
    x.signexp = static_cast<uint8_t>((NUMBER_SIGNEXP_EXCESS + COEF_WORD_DIGITS - leading_zeros + weight) ^
                                     static_cast<int>(sign & 0xFF));
    store_be64(x.coef, swap_bytes(((digits ^ sign) + excess) ^ to_terminator));
    x.coef[COEF_WORD_DIGITS] = NUMBER_TOP;  // the terminator behind eight digits, else past the record
}

constexpr void store_limb(number_t &x, bool negative, uint64_t limb, int weight) {
    store_limb(x, sign_mask(negative), limb, weight);
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
#if DV_HAS_X86_64
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
