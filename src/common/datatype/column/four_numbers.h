// Four NUMBERs in vectors of 256 bits, for the kernels of any source: what eight_numbers.h is for eight.
//
// What belongs to one record is in one lane of 64 bits, in the order of the rows. Digits have the first in
// the top byte. Conditions are gathered as lanes that are negative where one does not hold.

#include "record_lanes.h"

namespace dv::impl::DV_LEVEL {
namespace {

inline constexpr uint64_t ALL_ROWS = 15;

struct four_numbers_t {
    lanes_t sign;      // all ones for a negative value, else 0
    lanes_t exponent;  // base-100 exponent
    lanes_t count;     // digits, as the size byte tells
    lanes_t bytes;     // the first eight digit bytes, as they are
};

inline four_numbers_t load_four(const char *first, int64_t stride) {
    const __m128i digits_and_head = _mm_setr_epi8(9, 8, 7, 6, 5, 4, 3, 2, 1, -1, -1, -1, 0, -1, -1, -1);
    const places_by_stride_t places = {reinterpret_cast<const uint8_t *>(first), stride};
    const two_lanes_t loaded = load_records(places, 0, 0, digits_and_head);
    const lanes_t byte = in_each_lane(0xFF);
    const lanes_t signexp = both(loaded.upper, byte);
    four_numbers_t x;
    x.sign = signs_of(subtract_lanes(signexp, in_each_lane(NUMBER_SIGN_BIT)));
    const lanes_t positive = both(exclusive_or(signexp, x.sign), byte);
    x.exponent = subtract_lanes(positive, in_each_lane(NUMBER_SIGNEXP_EXCESS));
    // One byte for sign and exponent, another for the terminator.
    x.count = add_lanes(subtract_lanes(upper_halves(loaded.upper), in_each_lane(1)), x.sign);
    x.bytes = loaded.lower;
    return x;
}

// Negative unless the value is 0 to `most`, or the lower one is not above the upper one.
inline lanes_t outside(lanes_t value, uint64_t most) {
    return either(value, subtract_lanes(in_each_lane(most), value));
}
inline lanes_t unless_ordered(lanes_t lower, lanes_t upper) { return subtract_lanes(upper, lower); }

// Negative unless there are 1 to `most` digits.
inline lanes_t without_digits(const four_numbers_t &x, uint64_t most) {
    return outside(subtract_lanes(x.count, in_each_lane(1)), most - 1);
}

inline uint64_t rows_without(lanes_t fault) { return ~top_bits_of(fault) & ALL_ROWS; }

// The bits behind so many digits.
inline lanes_t bits_behind(lanes_t count) {
    return times_eight(subtract_lanes(in_each_lane(COEF_WORD_DIGITS), count));
}

// The first eight digits, whatever the sign, with zeros behind the last. What is no digit becomes a byte
// above 99.
inline lanes_t digits_of(const four_numbers_t &x) {
    const lanes_t is_behind = shift_right(in_each_lane(~uint64_t{0}), times_eight(x.count));
    const lanes_t excess = in_each_lane(in_each_byte(NUMBER_DIGIT_EXCESS));
    const lanes_t values = _mm256_sub_epi8(exclusive_or(_mm256_sub_epi8(x.bytes, excess), x.sign), x.sign);
    return second_alone(is_behind, values);
}

inline uint64_t are_digits(lanes_t digits) {
    return are_equal(_mm256_subs_epu8(digits, _mm256_set1_epi8(99)), in_each_lane(0));
}

inline lanes_t turned_around(lanes_t lanes) {
    const __m128i places = _mm_setr_epi8(7, 6, 5, 4, 3, 2, 1, 0, 15, 14, 13, 12, 11, 10, 9, 8);
    return _mm256_shuffle_epi8(lanes, _mm256_broadcastsi128_si256(places));
}

// The bits of zero bytes in front of the first byte that is not zero, and behind the last; 64 for zero.
inline lanes_t bits_of_zeros(lanes_t is_zero) {
    return _mm256_sad_epu8(both(is_zero, _mm256_set1_epi8(8)), in_each_lane(0));
}
inline lanes_t zero_bits_in_front(lanes_t bytes) {
    for (const int step : {8, 16, 32}) bytes = either(bytes, _mm256_srli_epi64(bytes, step));
    return bits_of_zeros(_mm256_cmpeq_epi8(bytes, in_each_lane(0)));
}
inline lanes_t zero_bits_behind(lanes_t bytes) {
    for (const int step : {8, 16, 32}) bytes = either(bytes, _mm256_slli_epi64(bytes, step));
    return bits_of_zeros(_mm256_cmpeq_epi8(bytes, in_each_lane(0)));
}

// Two numbers below 10^8 each as eight digits.
inline lanes_t digits_of_halves(lanes_t high, lanes_t low) {
    // As vectors::digits_of_ has it: each half by 10^4, each quarter by 100.
    const lanes_t by_10_000 = in_each_lane(109'951'163);
    const lanes_t even = _mm256_srli_epi64(_mm256_mul_epu32(high, by_10_000), 40);
    const lanes_t odd = _mm256_srli_epi64(_mm256_mul_epu32(low, by_10_000), 40);
    const lanes_t by_8 = either(high, _mm256_slli_epi64(low, 32));
    const lanes_t upper = either(even, _mm256_slli_epi64(odd, 32));
    const lanes_t lower = _mm256_sub_epi32(by_8, _mm256_madd_epi16(upper, _mm256_set1_epi32(10'000)));
    const lanes_t by_4 = either(upper, _mm256_slli_epi32(lower, 16));
    const lanes_t hundreds = _mm256_srli_epi16(_mm256_mulhi_epu16(by_4, _mm256_set1_epi16(5243)), 3);
    const lanes_t units = _mm256_mullo_epi16(hundreds, _mm256_set1_epi16(1 - 25'600));
    return turned_around(_mm256_add_epi16(_mm256_slli_epi16(by_4, 8), units));
}

// Numbers below 10^16 as eight digits.
inline lanes_t digits_of_limbs(lanes_t limbs) {
    // limb / 10^8 = (limb / 2^8) / 5^8, of an integer below 2^46 that a double takes whole. Half a unit more
    // keeps the quotient, which is a multiple of 5^-8, above what it is short of by rounding.
    constexpr uint64_t two_52 = uint64_t{0x433} << 52;  // 2^52 as a double: integers below are its last bits
    const __m256d magic = _mm256_castsi256_pd(in_each_lane(two_52));
    const lanes_t by_256 = _mm256_srli_epi64(limbs, 8);
    const __m256d whole = _mm256_sub_pd(_mm256_castsi256_pd(either(by_256, in_each_lane(two_52))), magic);
    const __m256d quotient =
        _mm256_mul_pd(_mm256_add_pd(whole, _mm256_set1_pd(0.5)), _mm256_set1_pd(1.0 / 390'625));
    const lanes_t high = _mm256_cvtepi32_epi64(_mm256_cvttpd_epi32(quotient));
    return digits_of_halves(high, subtract_lanes(limbs, _mm256_mul_epu32(high, in_each_lane(100'000'000))));
}

inline void store_rows(char *first, int64_t stride, uint64_t rows, lanes_t even, lanes_t odd) {
    const auto store = [=](int row, __m128i bytes) {
        _mm_storeu_si128(reinterpret_cast<__m128i *>(first + row * stride), bytes);
    };
    if ((rows & 1) != 0) store(0, _mm256_castsi256_si128(even));
    if ((rows & 2) != 0) store(1, _mm256_castsi256_si128(odd));
    if ((rows & 4) != 0) store(2, _mm256_extracti128_si256(even, 1));
    if ((rows & 8) != 0) store(3, _mm256_extracti128_si256(odd, 1));
}

// Values 0.digits x 100^exponent. Zeros in front and behind are left out; without digits the value is zero.
inline void store_four(char *first, int64_t stride, uint64_t rows, lanes_t sign, lanes_t exponent,
                       lanes_t digits) {
    const lanes_t in_front = zero_bits_in_front(digits), behind = zero_bits_behind(digits);
    const lanes_t width = subtract_lanes(subtract_lanes(in_each_lane(64), in_front), behind);
    const lanes_t excess = in_each_lane(in_each_byte(NUMBER_DIGIT_EXCESS));
    const lanes_t shown = turned_around(shift_left(digits, in_front));
    lanes_t coef = _mm256_add_epi8(_mm256_sub_epi8(exclusive_or(shown, sign), sign), excess);
    // Behind the last digit; in none of the eight bytes if that is the eighth.
    coef = exclusive_or(coef, shift_left(in_each_lane(DIGIT_ZERO_TO_TERMINATOR), width));
    const lanes_t size = subtract_lanes(add_lanes(_mm256_srli_epi64(width, 3), in_each_lane(1)), sign);
    const lanes_t positive = add_lanes(subtract_lanes(exponent, _mm256_srli_epi64(in_front, 3)),
                                       in_each_lane(NUMBER_SIGNEXP_EXCESS));
    const lanes_t signexp = both(exclusive_or(positive, sign), in_each_lane(0xFF));
    const lanes_t head = either(size, _mm256_slli_epi64(signexp, 8));
    lanes_t begin = either(head, _mm256_slli_epi64(coef, 16));
    begin = _mm256_blendv_epi8(begin, in_each_lane(1 | NUMBER_SIGNEXP_ZERO << 8),
                               _mm256_cmpeq_epi64(digits, in_each_lane(0)));
    const lanes_t rest = either(_mm256_srli_epi64(coef, 48), in_each_lane(uint64_t{NUMBER_TOP} << 16));
    store_rows(first, stride, rows, _mm256_unpacklo_epi64(begin, rest), _mm256_unpackhi_epi64(begin, rest));
}

}  // namespace
}  // namespace dv::impl::DV_LEVEL
