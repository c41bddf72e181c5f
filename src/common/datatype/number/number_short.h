// Sums and products of short operands, in integers of one word; inline, for numbers one by one and for
// columns.

#ifndef DV_NUMBER_SHORT_H
#define DV_NUMBER_SHORT_H

#include <array>

#include "number_limb.h"

namespace dv::impl {

// ---- sums ----

inline constexpr uint64_t CARRY_GAPS = in_each_byte(COEF_CARRY_GAP);

// Bytes with the top bit set carried not, or borrowed: they hold 156 too many. See number_add.cpp.
constexpr uint64_t give_gaps_back(uint64_t sum) {
    return sum - ((sum & COEF_TOP_BITS) >> 7) * COEF_CARRY_GAP;
}

inline constexpr int SHORT_SUM_DIGITS = 7;  // leaves a byte for carry and sign

// The digits of a record, 1..7, as bytes of an integer, which is negative if the record is: digit bytes are
// 128 + d or 128 - d.
inline int64_t signed_digits(const number_t &x, int count) {
    const int unused = 8 * (COEF_WORD_DIGITS - count);
    return static_cast<int64_t>((load_be64(x.coef) >> unused) -
                                (in_each_byte(NUMBER_DIGIT_EXCESS) >> unused));
}

// result = x + y or x - y for operands that span up to seven digits; the result may be one of them. False for
// others, also where the exponents leave a doubt about the range; nothing is stored then.
template <bool is_add>
inline bool add_short(number_t &result, const number_t &x, const number_t &y) {
    const number_head_t x_head = read_head(x);
    const number_head_t y_head = read_head(y);
    const auto is_long = [](int count) { return static_cast<unsigned>(count - 1) >= SHORT_SUM_DIGITS; };
    if (is_long(x_head.count) || is_long(y_head.count)) return false;
    const int x_weight = x_head.exponent - x_head.count;  // of the last digit, as a power of 100
    const int y_weight = y_head.exponent - y_head.count;
    const int weight = x_weight < y_weight ? x_weight : y_weight;
    const int top = x_head.exponent > y_head.exponent ? x_head.exponent : y_head.exponent;
    if (top - weight > SHORT_SUM_DIGITS || weight < NUMBER_EXPONENT_MIN - 1 || top >= NUMBER_EXPONENT_MAX)
        return false;

    const int64_t a = signed_digits(x, x_head.count) << (8 * (x_weight - weight));
    const int64_t b = signed_digits(y, y_head.count) << (8 * (y_weight - weight));
    const int64_t sum = is_add ? a + b : a - b;
    const auto sign = static_cast<uint64_t>(sum >> 63);
    const uint64_t adds = x_head.sign ^ y_head.sign ^ (is_add ? ~uint64_t{0} : 0);
    const uint64_t magnitude = (static_cast<uint64_t>(sum) ^ sign) - sign;
    const uint64_t digits = give_gaps_back(magnitude + (CARRY_GAPS & adds));
    if (digits == 0) {
        store_zero(result);
        return true;
    }
    const int leading_zeros = leading_zero_bytes(digits);
    store_coef(result, sign, weight + COEF_WORD_DIGITS - leading_zeros,
               short_coef{{digits << (8 * leading_zeros)}});
    return true;
}

// ---- products ----

// The sum of exponents is in the range of NUMBER, with and without a leading zero digit of the product.
constexpr bool is_product_in_range(int exponent) {
    return exponent > NUMBER_EXPONENT_MIN && exponent <= NUMBER_EXPONENT_MAX;
}

inline constexpr int SHORT_FACTOR_DIGITS = 4;

// By digit count: what 128 in each digit byte of an integer adds to it.
inline constexpr auto EXCESS_OF_INTEGERS = [] {
    std::array<uint32_t, SHORT_FACTOR_DIGITS + 1> excess{};
    for (size_t i = 1; i < excess.size(); ++i) excess[i] = excess[i - 1] * 100 + NUMBER_DIGIT_EXCESS;
    return excess;
}();

struct two_integers_t {
    int64_t x, y;
};

// The digits of two records of 1..4 digits as integers with the signs. Digit bytes are 128 + d or 128 - d, so
// bytes that are combined as if they were digits give the integer, or its negative, and a constant.
inline two_integers_t read_short_integers(const number_t &x, unsigned x_count, const number_t &y,
                                          unsigned y_count) {
    constexpr uint64_t even_bytes = 0x00FF00FF00FF00FF;
    constexpr uint64_t even_halves = 0x0000FFFF0000FFFF;
    // Each record takes a half, its first digit below the others and zeros below that.
    const uint32_t x_bytes = swap_bytes(load_be32(x.coef)) << (8 * (SHORT_FACTOR_DIGITS - x_count));
    const uint32_t y_bytes = swap_bytes(load_be32(y.coef)) << (8 * (SHORT_FACTOR_DIGITS - y_count));
    const uint64_t bytes = uint64_t{y_bytes} << 32 | x_bytes;
    const uint64_t by_4 = (bytes & even_bytes) * 100 + (bytes >> 8 & even_bytes);      // at most 25'755
    const uint64_t by_8 = (by_4 & even_halves) * 10'000 + (by_4 >> 16 & even_halves);  // below 2^28
    return {static_cast<int64_t>(by_8 & 0xFFFFFFFF) - EXCESS_OF_INTEGERS[x_count],
            static_cast<int64_t>(by_8 >> 32) - EXCESS_OF_INTEGERS[y_count]};
}

// Operands of 1..4 digits: the product of their integers is below 10^16. The result may be one of them. False
// for others, also where the exponents leave a doubt about the range; nothing is stored then.
inline bool multiply_short(number_t &result, const number_t &x, const number_t &y) {
    const number_head_t x_head = read_head(x);
    const number_head_t y_head = read_head(y);
    const int exponent = x_head.exponent + y_head.exponent;
    const auto x_count = static_cast<unsigned>(x_head.count);
    const auto y_count = static_cast<unsigned>(y_head.count);
    if (x_count - 1 >= SHORT_FACTOR_DIGITS || y_count - 1 >= SHORT_FACTOR_DIGITS) return false;
    if (!is_product_in_range(exponent)) return false;
    const two_integers_t integers = read_short_integers(x, x_count, y, y_count);
    const int64_t product = integers.x * integers.y;
    const auto sign = static_cast<uint64_t>(product >> 63);
    store_limb(result, sign, (static_cast<uint64_t>(product) ^ sign) - sign,
               exponent - x_head.count - y_head.count);
    return true;
}

}  // namespace dv::impl

#endif  // DV_NUMBER_SHORT_H
