// Kernels of sums and of products of short NUMBERs: the steps of number_short.h for four rows at a time.

#include "four_numbers.h"

namespace dv::impl::DV_LEVEL {
namespace {

// Digit bytes as integers with the signs, the last digit in the lowest byte.
inline lanes_t signed_digits(const four_numbers_t &x) {
    const lanes_t unused = bits_behind(x.count);
    const lanes_t excess = in_each_lane(in_each_byte(NUMBER_DIGIT_EXCESS));
    return subtract_lanes(shift_right(x.bytes, unused), shift_right(excess, unused));
}

// Returns the rows done.
template <bool is_add>
uint64_t add_four(const four_numbers_t &x, const four_numbers_t &y, char *first, int64_t stride,
                  uint64_t rows) {
    const lanes_t x_weight = subtract_lanes(x.exponent, x.count);
    const lanes_t y_weight = subtract_lanes(y.exponent, y.count);
    const lanes_t weight = _mm256_min_epi32(x_weight, y_weight);  // with their signs in the upper halves
    const lanes_t top = _mm256_max_epi32(x.exponent, y.exponent);
    lanes_t fault = either(without_digits(x, SHORT_SUM_DIGITS), without_digits(y, SHORT_SUM_DIGITS));
    fault = either(fault, outside(subtract_lanes(top, weight), SHORT_SUM_DIGITS));
    fault = either(fault, unless_ordered(_mm256_set1_epi64x(NUMBER_EXPONENT_MIN - 1), weight));
    fault = either(fault, unless_ordered(top, in_each_lane(NUMBER_EXPONENT_MAX - 1)));
    rows &= rows_without(fault) & are_digits(digits_of(x)) & are_digits(digits_of(y));
    if (rows == 0) return 0;

    const lanes_t a = shift_left(signed_digits(x), times_eight(subtract_lanes(x_weight, weight)));
    const lanes_t b = shift_left(signed_digits(y), times_eight(subtract_lanes(y_weight, weight)));
    const lanes_t sum = is_add ? add_lanes(a, b) : subtract_lanes(a, b);
    const lanes_t sign = signs_of(sum);
    const lanes_t magnitude = subtract_lanes(exclusive_or(sum, sign), sign);
    const lanes_t signs_differ = exclusive_or(x.sign, y.sign), gaps = in_each_lane(CARRY_GAPS);
    const lanes_t with_gaps =
        add_lanes(magnitude, is_add ? second_alone(signs_differ, gaps) : both(signs_differ, gaps));
    const lanes_t has_gap = _mm256_cmpgt_epi8(in_each_lane(0), with_gaps);
    const lanes_t digits =
        subtract_lanes(with_gaps, both(has_gap, _mm256_set1_epi8(static_cast<char>(COEF_CARRY_GAP))));
    store_four(first, stride, rows, sign, add_lanes(weight, in_each_lane(COEF_WORD_DIGITS)), digits);
    return rows;
}

// Up to four digits as two numbers below 10^4, the lower one in the lowest sixteen bits.
inline lanes_t by_ten_thousand(lanes_t digits, lanes_t count) {
    return _mm256_maddubs_epi16(shift_right(digits, bits_behind(count)), _mm256_set1_epi16(100 << 8 | 1));
}

// The product of two such numbers as eight digits.
inline lanes_t product_digits(lanes_t a, lanes_t b) {
    const lanes_t upper = in_each_lane(0xFFFF'0000);
    const lanes_t turned = either(_mm256_slli_epi32(b, 16), _mm256_srli_epi32(b, 16));
    const lanes_t cross = _mm256_madd_epi16(a, turned);  // below 2 * 10^8
    const lanes_t carried = _mm256_srli_epi64(_mm256_mul_epu32(cross, in_each_lane(109'951'163)), 40);
    const lanes_t ten_thousand = in_each_lane(10'000), hundred_million = in_each_lane(100'000'000);
    const lanes_t rest = subtract_lanes(cross, _mm256_mul_epu32(carried, ten_thousand));
    const lanes_t low =
        add_lanes(_mm256_madd_epi16(a, second_alone(upper, b)), _mm256_mul_epu32(rest, ten_thousand));
    const lanes_t carry = second_alone(signs_of(subtract_lanes(low, hundred_million)), in_each_lane(1));
    const lanes_t high = add_lanes(add_lanes(_mm256_madd_epi16(a, both(upper, b)), carried), carry);
    return digits_of_halves(high, subtract_lanes(low, _mm256_mul_epu32(carry, hundred_million)));
}

inline uint64_t multiply_four(const four_numbers_t &x, const four_numbers_t &y, char *first, int64_t stride,
                              uint64_t rows) {
    const lanes_t exponent = add_lanes(x.exponent, y.exponent);
    lanes_t fault = either(without_digits(x, SHORT_FACTOR_DIGITS), without_digits(y, SHORT_FACTOR_DIGITS));
    fault = either(fault, unless_ordered(_mm256_set1_epi64x(NUMBER_EXPONENT_MIN + 1), exponent));
    fault = either(fault, unless_ordered(exponent, in_each_lane(NUMBER_EXPONENT_MAX)));
    const lanes_t x_digits = digits_of(x), y_digits = digits_of(y);
    rows &= rows_without(fault) & are_digits(x_digits) & are_digits(y_digits);
    if (rows == 0) return 0;

    const lanes_t digits =
        product_digits(by_ten_thousand(x_digits, x.count), by_ten_thousand(y_digits, y.count));
    const lanes_t weight = subtract_lanes(subtract_lanes(exponent, x.count), y.count);
    store_four(first, stride, rows, exclusive_or(x.sign, y.sign),
               add_lanes(weight, in_each_lane(COEF_WORD_DIGITS)), digits);
    return rows;
}

using calculate_four_t = uint64_t (*)(const four_numbers_t &x, const four_numbers_t &y, char *first,
                                      int64_t stride, uint64_t rows);

template <calculate_four_t calculate>
uint64_t calculate_by_four(records_t x, records_t y, int count, uint64_t valid, records_t result) {
    uint64_t left = valid;
    for (int i = 0; i + LANES <= count; i += LANES) {
        const uint64_t rows = valid >> i & ALL_ROWS;
        if (rows == 0) continue;
        const uint64_t done = calculate(load_four(x.first + i * x.stride, x.stride),
                                        load_four(y.first + i * y.stride, y.stride),
                                        result.first + i * result.stride, result.stride, rows);
        left &= ~(done << i);
    }
    return left;
}

constexpr number_arithmetic_kernels_t kernels = {
    calculate_by_four<add_four<true>>, calculate_by_four<add_four<false>>, calculate_by_four<multiply_four>};

}  // namespace
}  // namespace dv::impl::DV_LEVEL
