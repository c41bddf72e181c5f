// Kernels of sums and of products of short NUMBERs: the steps of number_short.h and number_add.cpp for eight
// rows at a time.

#include "eight_long_numbers.h"

namespace dv::impl::DV_LEVEL {
namespace {

// Digit bytes as integers with the signs, the last digit in the lowest byte.
inline lanes_t signed_digits(const eight_numbers_t &x) {
    const lanes_t unused = _mm512_slli_epi64(_mm512_sub_epi64(in_each_lane(8), x.count), 3);
    const lanes_t excess = in_each_lane(in_each_byte(NUMBER_DIGIT_EXCESS));
    return _mm512_sub_epi64(_mm512_srlv_epi64(turned_around(x.digits), unused),
                            _mm512_srlv_epi64(excess, unused));
}

template <bool is_add>
eight_rows_t add_eight(const eight_numbers_t &x, const eight_numbers_t &y, char *first, int64_t stride,
                       eight_rows_t rows) {
    const lanes_t x_weight = _mm512_sub_epi64(x.exponent, x.count);
    const lanes_t y_weight = _mm512_sub_epi64(y.exponent, y.count);
    const lanes_t weight = _mm512_min_epi64(x_weight, y_weight);
    const lanes_t top = _mm512_max_epi64(x.exponent, y.exponent);
    const lanes_t lowest = _mm512_set1_epi64(NUMBER_EXPONENT_MIN - 1);
    rows = static_cast<eight_rows_t>(
        rows & have_digits(x, SHORT_SUM_DIGITS) & have_digits(y, SHORT_SUM_DIGITS) &
        are_digits(digits_of(x)) & are_digits(digits_of(y)) &
        _mm512_cmple_epi64_mask(_mm512_sub_epi64(top, weight), in_each_lane(SHORT_SUM_DIGITS)) &
        _mm512_cmpge_epi64_mask(weight, lowest) &
        _mm512_cmplt_epi64_mask(top, in_each_lane(NUMBER_EXPONENT_MAX)));
    if (rows == 0) return 0;

    const lanes_t a =
        _mm512_sllv_epi64(signed_digits(x), _mm512_slli_epi64(_mm512_sub_epi64(x_weight, weight), 3));
    const lanes_t b =
        _mm512_sllv_epi64(signed_digits(y), _mm512_slli_epi64(_mm512_sub_epi64(y_weight, weight), 3));
    const lanes_t sum = is_add ? _mm512_add_epi64(a, b) : _mm512_sub_epi64(a, b);
    const lanes_t sign = _mm512_srai_epi64(sum, 63);
    const auto signs_differ = static_cast<eight_rows_t>(x.negative ^ y.negative);
    const auto adds = static_cast<eight_rows_t>(is_add ? ~signs_differ : signs_differ);
    const lanes_t magnitude = _mm512_abs_epi64(sum);
    const lanes_t with_gaps = _mm512_mask_add_epi64(magnitude, adds, magnitude, in_each_lane(CARRY_GAPS));
    const lanes_t gaps =
        _mm512_maskz_set1_epi8(_mm512_movepi8_mask(with_gaps), static_cast<char>(COEF_CARRY_GAP));
    const lanes_t digits = turned_around(_mm512_sub_epi64(with_gaps, gaps));
    store_eight(first, stride, rows, sign, _mm512_add_epi64(weight, in_each_lane(COEF_WORD_DIGITS)), digits);
    return rows;
}

constexpr uint64_t _exponent_gap_max = 19;

// Sums of any operands but zeros, rounded half up; what number_add.cpp does in combine_. Left are also rows
// whose exponents are far apart, results that begin with two zeros and those near the ends of the range.
template <bool is_add>
eight_rows_t add_eight_long(const eight_numbers_t &x, const eight_coefs_t &x_coefs, const eight_numbers_t &y,
                            const eight_coefs_t &y_coefs, char *first, int64_t stride, eight_rows_t rows) {
    const eight_rows_t y_leads = _mm512_cmpgt_epi64_mask(y.exponent, x.exponent);
    const lanes_t gap = _mm512_abs_epi64(_mm512_sub_epi64(x.exponent, y.exponent));
    rows = static_cast<eight_rows_t>(
        rows & have_digits(x, NUMBER_DIGITS_MAX) & have_digits(y, NUMBER_DIGITS_MAX) & are_digits(x_coefs) &
        are_digits(y_coefs) & _mm512_cmple_epu64_mask(gap, in_each_lane(_exponent_gap_max)));
    if (rows == 0) return 0;

    eight_coefs_t a = select(y_leads, y_coefs, x_coefs), b = select(y_leads, x_coefs, y_coefs);
    shift_right(b, gap);
    const lanes_t kept = in_each_lane(leading_digits_mask(NUMBER_DIGITS_MAX, 2 * COEF_WORD_DIGITS));
    b.word[2] = _mm512_and_si512(b.word[2], kept);
    const auto signs_differ = static_cast<eight_rows_t>(x.negative ^ y.negative);
    const auto subtracts = static_cast<eight_rows_t>(is_add ? signs_differ : ~signs_differ);
    const lanes_t complement = _mm512_movm_epi64(subtracts);
    for (lanes_t &word : b.word) word = _mm512_xor_si512(word, complement);
    const eight_rows_t carry = add_coefs(a, b, subtracts, subtracts);

    const auto y_sign = static_cast<eight_rows_t>(is_add ? y.negative : ~y.negative);
    const auto turned = static_cast<eight_rows_t>(subtracts & ~carry);  // b was the larger one
    if (turned != 0) turn_around(a, turned);
    const auto negative = static_cast<eight_rows_t>(((y_leads & y_sign) | (~y_leads & x.negative)) ^ turned);
    const auto grows = static_cast<eight_rows_t>(carry & ~subtracts);
    a = select(grows, shifted_right(a, 1), a);
    a.word[2] = _mm512_and_si512(a.word[2], kept);
    const eight_rows_t shrinks = _mm512_cmplt_epu64_mask(a.word[0], in_each_lane(uint64_t{1} << 56));
    a = select(shrinks, shifted_left(a), a);
    lanes_t exponent = _mm512_max_epi64(x.exponent, y.exponent);
    const lanes_t one = in_each_lane(1);
    exponent = _mm512_mask_add_epi64(exponent, grows, exponent, one);
    exponent = _mm512_mask_sub_epi64(exponent, shrinks, exponent, one);
    rows = static_cast<eight_rows_t>(
        rows & _mm512_cmpge_epu64_mask(a.word[0], in_each_lane(uint64_t{1} << 56)) & round_half_up(a) &
        _mm512_cmple_epi64_mask(exponent, in_each_lane(NUMBER_EXPONENT_MAX)) &
        _mm512_cmpge_epi64_mask(exponent, _mm512_set1_epi64(NUMBER_EXPONENT_MIN)));
    store_coefs(first, stride, rows, _mm512_movm_epi64(negative), exponent, a);
    return rows;
}

// Up to four digits as a number.
inline lanes_t short_integers(lanes_t digits, lanes_t count) {
    const lanes_t unused = _mm512_slli_epi64(_mm512_sub_epi64(in_each_lane(8), count), 3);
    const lanes_t by_2 =
        _mm512_maddubs_epi16(_mm512_sllv_epi64(digits, unused), _mm512_set1_epi16(1 << 8 | 100));
    return _mm512_srli_epi64(_mm512_madd_epi16(by_2, _mm512_set1_epi32(1 << 16 | 10'000)), 32);
}

inline eight_rows_t multiply_eight(const eight_numbers_t &x, const eight_numbers_t &y, char *first,
                                   int64_t stride, eight_rows_t rows) {
    const lanes_t exponent = _mm512_add_epi64(x.exponent, y.exponent);
    rows = static_cast<eight_rows_t>(
        rows & have_digits(x, SHORT_FACTOR_DIGITS) & have_digits(y, SHORT_FACTOR_DIGITS) &
        _mm512_cmpgt_epi64_mask(exponent, _mm512_set1_epi64(NUMBER_EXPONENT_MIN)) &
        _mm512_cmple_epi64_mask(exponent, in_each_lane(NUMBER_EXPONENT_MAX)));
    if (rows == 0) return 0;
    const lanes_t x_digits = digits_of(x), y_digits = digits_of(y);
    rows = rows & are_digits(x_digits) & are_digits(y_digits);

    const lanes_t product =
        _mm512_mul_epu32(short_integers(x_digits, x.count), short_integers(y_digits, y.count));
    const lanes_t weight = _mm512_sub_epi64(_mm512_sub_epi64(exponent, x.count), y.count);
    store_eight(first, stride, rows, _mm512_xor_si512(x.sign, y.sign),
                _mm512_add_epi64(weight, in_each_lane(COEF_WORD_DIGITS)), digits_of_limbs(product));
    return rows;
}

template <bool is_add>
uint64_t add_block(records_t x, records_t y, int count, uint64_t valid, records_t result) {
    const bool is_half_up = current_rmode() == NUMBER_RMODE_HALF_UP;
    uint64_t left = valid;
    for (int i = 0; i + 8 <= count; i += 8) {
        auto rows = static_cast<eight_rows_t>(valid >> i);
        if (rows == 0) continue;
        const char *const x_first = x.first + i * x.stride, *const y_first = y.first + i * y.stride;
        char *const first = result.first + i * result.stride;
        const eight_numbers_t a = load_eight(x_first, x.stride), b = load_eight(y_first, y.stride);
        // Before anything is stored, which may be where the operands are.
        const eight_coefs_t a_coefs = load_coefs(a, x_first, x.stride);
        const eight_coefs_t b_coefs = load_coefs(b, y_first, y.stride);
        eight_rows_t done = add_eight<is_add>(a, b, first, result.stride, rows);
        rows = static_cast<eight_rows_t>(rows & ~done);
        if (rows != 0 && is_half_up)
            done |= add_eight_long<is_add>(a, a_coefs, b, b_coefs, first, result.stride, rows);
        left &= ~(uint64_t{done} << i);
    }
    return left;
}

uint64_t multiply_block(records_t x, records_t y, int count, uint64_t valid, records_t result) {
    uint64_t left = valid;
    for (int i = 0; i + 8 <= count; i += 8) {
        const eight_rows_t done = multiply_eight(
            load_eight(x.first + i * x.stride, x.stride), load_eight(y.first + i * y.stride, y.stride),
            result.first + i * result.stride, result.stride, static_cast<eight_rows_t>(valid >> i));
        left &= ~(uint64_t{done} << i);
    }
    return left;
}

constexpr number_arithmetic_kernels_t kernels = {add_block<true>, add_block<false>, multiply_block};

}  // namespace
}  // namespace dv::impl::DV_LEVEL
