// The digit bytes of a record at once: limbs out of them, and the digits of a result into them.
//
// The plain functions go through words (number_layout.h, number_limb.h). In vectors the same steps run over
// all sixteen digits in one register; the bytes need no reversal there, since neighbours are combined by
// weights: 100 and 1, then 10^4 and 1, then 10^8 and 1. Both give the same for any bytes. (Benchmarks
// mul/long and div/long: half the instructions of the words.)

#ifndef DV_NUMBER_DIGITS_H
#define DV_NUMBER_DIGITS_H

#include "vector_digits.h"

namespace dv::impl {

struct two_limbs_t {
    uint64_t first, second;
};

// A record's digits as the fraction 0.first second last; last is below 10^8, for it has four digits.
struct record_limbs_t {
    uint64_t first, second, last;
};

namespace plain {

inline record_limbs_t load_limbs(const number_t &x, const number_head_t &head) {
    const long_coef coef = load_coef<3>(x, head);
    return {limb_from_digits(coef.word[0]), limb_from_digits(coef.word[1]),
            limb_from_digits(coef.word[2] >> 32)};
}

// The digits of a result on their way into a record: two limbs and five digits, the first of these in the top
// byte but three; less their first one, if `skipped` is 1 and not 0. What is left begins with a digit that is
// not 0, and has no more than twenty.
inline void store_result_digits(number_t &x, uint64_t sign, int exponent, two_limbs_t limbs,
                                uint64_t five_digits, int skipped) {
    const uint64_t first = digits_from_limb(limbs.first), second = digits_from_limb(limbs.second);
    const int shift = 8 * skipped;
    const long_coef coef = {{first << shift | second >> 1 >> (63 - shift),
                             second << shift | five_digits >> (40 - shift), five_digits << (24 + shift)}};
    store_coef(x, sign, exponent - skipped, coef);
}

}  // namespace plain

#if DV_HAS_VECTOR_BYTES

namespace vectors {

inline bytes16_t load_4_(const uint8_t *p) {
    int v = 0;
    memcpy(&v, p, sizeof v);
    return _mm_cvtsi32_si128(v);
}

// Digit bytes of four digits each as numbers below 10^8.
inline bytes16_t groups_of_four_(bytes16_t bytes, bytes16_t sign, bytes16_t mask) {
    const bytes16_t digits = _mm_and_si128(
        _mm_sub_epi8(_mm_xor_si128(_mm_xor_si128(bytes, _mm_set1_epi8(-128)), sign), sign), mask);
    // The first of two digits times 100, as the upper half of its product with 100 * 256 (GCC makes shifts
    // and additions of a plain product with 100).
    const bytes16_t hundreds = _mm_mulhi_epu16(_mm_slli_epi16(digits, 8), _mm_set1_epi16(100 << 8));
    const bytes16_t by_2 = _mm_add_epi16(hundreds, _mm_srli_epi16(digits, 8));
    return _mm_madd_epi16(by_2, _mm_set1_epi32(1 << 16 | 10'000));
}

inline record_limbs_t load_limbs(const number_t &x, const number_head_t &head) {
    const unsigned count = static_cast<unsigned>(head.count) % DIGIT_COUNT_MODULUS;
    const bytes16_t sign = _mm_set1_epi64x(static_cast<int64_t>(head.sign));
    const bytes16_t groups = groups_of_four_(load_vector(x.coef), sign, in_front_of(count));
    const bytes16_t last = groups_of_four_(load_4_(x.coef + 16), sign, in_front_of(count, 1));
    const bytes16_t limbs =
        _mm_add_epi64(_mm_mul_epu32(groups, _mm_set1_epi32(100'000'000)), _mm_srli_epi64(groups, 32));
    return {static_cast<uint64_t>(_mm_cvtsi128_si64(limbs)),
            static_cast<uint64_t>(_mm_cvtsi128_si64(_mm_unpackhi_epi64(limbs, limbs))),
            static_cast<uint64_t>(static_cast<uint32_t>(_mm_cvtsi128_si32(last)))};
}

// limb / 10^8 in the low half, limb % 10^8 in the high half.
inline uint64_t halves_(uint64_t limb) {
    const uint64_t high = limb / 100'000'000;
    return high + ((limb - high * 100'000'000) << 32);
}

inline bytes16_t digits_of_(two_limbs_t limbs) {
    const bytes16_t by_8 = join_halves(halves_(limbs.first), halves_(limbs.second));
    // x * 109951163 >> 40 is x / 10^4 for every x below 10^8, x * 5243 >> 19 is x / 100 below 10^4.
    const bytes16_t reciprocal = _mm_set1_epi32(109'951'163);
    const bytes16_t even = _mm_srli_epi64(_mm_mul_epu32(by_8, reciprocal), 40);
    const bytes16_t odd = _mm_srli_epi64(_mm_mul_epu32(_mm_srli_epi64(by_8, 32), reciprocal), 40);
    const bytes16_t upper = _mm_or_si128(even, _mm_slli_epi64(odd, 32));
    const bytes16_t lower = _mm_sub_epi32(by_8, _mm_madd_epi16(upper, _mm_set1_epi32(10'000)));
    const bytes16_t by_4 = _mm_or_si128(upper, _mm_slli_epi32(lower, 16));
    const bytes16_t hundreds = _mm_srli_epi16(_mm_mulhi_epu16(by_4, _mm_set1_epi16(5243)), 3);
    // Hundreds in the low byte, (x - hundreds * 100) in the high one: x * 256 - hundreds * (100 * 256 - 1).
    return _mm_add_epi16(_mm_slli_epi16(by_4, 8), _mm_mullo_epi16(hundreds, _mm_set1_epi16(1 - 25'600)));
}

inline void store_result_digits(number_t &x, uint64_t sign, int exponent, two_limbs_t limbs,
                                uint64_t five_digits, int skipped) {
    const uint64_t rest = swap_bytes(five_digits << 24);
    const auto as_vector = [](uint64_t word) { return _mm_cvtsi64_si128(static_cast<int64_t>(word)); };
    const bytes16_t digits = digits_of_(limbs);
    const bytes16_t is_skipped = in_front_of(static_cast<unsigned>(skipped) * VECTOR_SIZE);
    const bytes16_t first = select(is_skipped, move_left(digits, as_vector(rest)), digits);
    const uint64_t last = rest >> (8 * skipped);
    const unsigned zeros = top_bits_of(_mm_cmpeq_epi8(first, _mm_setzero_si128()));
    const int count = last != 0 ? int{VECTOR_SIZE} + COEF_WORD_DIGITS - leading_zero_bytes(last)
                                : static_cast<int>(std::bit_width(~zeros & 0xFFFF));
    x.size = size_of(sign, count);
    x.signexp = signexp_of(sign, exponent - skipped);
    store_record_digits(x, sign, first, as_vector(last), count);
}

}  // namespace vectors

using vectors::load_limbs;
using vectors::store_result_digits;

#else

using plain::load_limbs;
using plain::store_result_digits;

#endif

inline record_limbs_t load_limbs(const number_t &x) { return load_limbs(x, read_head(x)); }

}  // namespace dv::impl

#endif  // DV_NUMBER_DIGITS_H
