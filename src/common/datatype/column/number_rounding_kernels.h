// Kernels of signs and of rounding: values of up to eight base-100 digits, the first and last of them not 0.

#include "eight_numbers.h"

namespace dv::impl::DV_LEVEL {
namespace {

inline eight_rows_t are_usual(const eight_numbers_t &x, lanes_t digits) {
    const lanes_t behind = _mm512_slli_epi64(_mm512_sub_epi64(in_each_lane(COEF_WORD_DIGITS), x.count), 3);
    return have_digits(x, COEF_WORD_DIGITS) & are_digits(digits) &
           _mm512_test_epi64_mask(digits, in_each_lane(0xFF)) &
           _mm512_cmpeq_epi64_mask(zero_bits_behind(digits), behind);
}

// Does it for the groups of eight rows: calculate(x, digits, rows, to) returns the rows done.
template <typename Calculate>
inline uint64_t each_eight(records_t from, int count, uint64_t valid, records_t to, Calculate calculate) {
    uint64_t left = valid;
    for (int i = 0; i + 8 <= count; i += 8) {
        const eight_numbers_t x = load_eight(from.first + i * from.stride, from.stride);
        const lanes_t digits = digits_of(x);
        const auto rows = static_cast<eight_rows_t>((valid >> i) & are_usual(x, digits));
        if (rows == 0) continue;
        const eight_rows_t done = calculate(x, digits, rows, to.first + i * to.stride);
        left &= ~(uint64_t{done} << i);
    }
    return left;
}

uint64_t negate(records_t from, int count, uint64_t valid, records_t to) {
    const auto calculate = [to](const eight_numbers_t &x, lanes_t digits, eight_rows_t rows, char *first) {
        const lanes_t sign = _mm512_movm_epi64(static_cast<eight_rows_t>(~x.negative));
        store_eight(first, to.stride, rows, sign, x.exponent, digits);
        return rows;
    };
    return each_eight(from, count, valid, to, calculate);
}

uint64_t make_positive(records_t from, int count, uint64_t valid, records_t to) {
    const auto calculate = [to](const eight_numbers_t &x, lanes_t digits, eight_rows_t rows, char *first) {
        store_eight(first, to.stride, rows, _mm512_setzero_si512(), x.exponent, digits);
        return rows;
    };
    return each_eight(from, count, valid, to, calculate);
}

// Digits cut below the decimal digit of weight 10^pos, the first in the top byte, and what half a unit adds.
// `place` is that of the pair in which the cut is, or in front of which. Carries out of the first digit are
// told.
inline lanes_t round_at(lanes_t digits, lanes_t place, const number_rounding_t &rounding,
                        eight_rows_t &carries) {
    const lanes_t kept_bits = _mm512_slli_epi64(place, 3);
    const lanes_t shift = _mm512_sub_epi64(in_each_lane(56), kept_bits);
    const lanes_t dropped = _mm512_srlv_epi64(_mm512_set1_epi64(-1), kept_bits);
    const lanes_t pair = _mm512_and_si512(_mm512_srlv_epi64(digits, shift), in_each_lane(0xFF));
    const lanes_t tens = _mm512_srli_epi64(_mm512_mul_epu32(pair, in_each_lane(6554)), 16);
    lanes_t kept = _mm512_andnot_si512(dropped, digits);
    lanes_t unit = _mm512_sllv_epi64(in_each_lane(256), shift);  // of the pair in front
    eight_rows_t rounds = _mm512_cmpgt_epu64_mask(tens, in_each_lane(4));
    if (rounding.pos % 2 != 0) {
        const lanes_t ten = in_each_lane(10);
        const lanes_t kept_tens = _mm512_mul_epu32(tens, ten);
        kept = _mm512_or_si512(kept, _mm512_sllv_epi64(kept_tens, shift));
        unit = _mm512_sllv_epi64(ten, shift);
        rounds = _mm512_cmpgt_epu64_mask(_mm512_sub_epi64(pair, kept_tens), in_each_lane(4));
    }
    if (!rounding.half_up) rounds = 0;
    const lanes_t with_gaps = _mm512_add_epi64(kept, in_each_lane(CARRY_GAPS));
    const lanes_t sum = _mm512_mask_add_epi64(with_gaps, rounds, with_gaps, unit);
    carries = _mm512_cmplt_epu64_mask(sum, with_gaps);
    const lanes_t gaps = _mm512_maskz_set1_epi8(_mm512_movepi8_mask(sum), static_cast<char>(COEF_CARRY_GAP));
    return _mm512_sub_epi64(sum, gaps);
}

// Positive values, and negative ones with a terminator behind their digits; not those of eight digits.
inline eight_rows_t are_ended(const eight_numbers_t &x) {
    const lanes_t behind = _mm512_srlv_epi64(x.digits, _mm512_slli_epi64(x.count, 3));
    const lanes_t differing = _mm512_xor_si512(behind, in_each_lane(NUMBER_TOP));
    return static_cast<eight_rows_t>(~x.negative | _mm512_testn_epi64_mask(differing, in_each_lane(0xFF)));
}

inline eight_rows_t round_eight(const eight_numbers_t &x, lanes_t in_memory, eight_rows_t rows, char *first,
                                int64_t stride, const number_rounding_t &rounding) {
    const lanes_t digits = turned_around(in_memory), one = in_each_lane(1);
    const lanes_t last = _mm512_srlv_epi64(in_memory, _mm512_slli_epi64(_mm512_sub_epi64(x.count, one), 3));
    const lanes_t tenth = _mm512_srli_epi64(_mm512_mul_epu32(last, in_each_lane(6554)), 16);
    const eight_rows_t ends_with_zero =
        _mm512_cmpeq_epi64_mask(last, _mm512_mul_epu32(tenth, in_each_lane(10)));
    lanes_t lowest = _mm512_slli_epi64(_mm512_sub_epi64(x.exponent, x.count), 1);
    lowest = _mm512_mask_add_epi64(lowest, ends_with_zero, lowest, one);
    const eight_rows_t stays = _mm512_cmpge_epi64_mask(lowest, _mm512_set1_epi64(rounding.pos));

    // decimal_cut_t
    const lanes_t place =
        _mm512_sub_epi64(x.exponent, _mm512_set1_epi64((rounding.pos >> 1) + (rounding.pos & 1)));
    const eight_rows_t is_inside =
        _mm512_cmplt_epu64_mask(_mm512_sub_epi64(place, one), in_each_lane(COEF_WORD_DIGITS - 1));
    eight_rows_t carries = 0;
    const lanes_t rounded = round_at(digits, place, rounding, carries);
    const lanes_t result = _mm512_mask_mov_epi64(rounded, stays, digits);
    const eight_rows_t is_one_digit = _mm512_cmplt_epu64_mask(result, in_each_lane(uint64_t{10} << 56));
    lanes_t integer_digits = _mm512_slli_epi64(x.exponent, 1);
    integer_digits = _mm512_mask_sub_epi64(integer_digits, is_one_digit, integer_digits, one);
    const eight_rows_t fits =
        _mm512_cmple_epi64_mask(integer_digits, _mm512_set1_epi64(rounding.integer_digits_max));
    rows = static_cast<eight_rows_t>(rows & (stays | (is_inside & ~carries)) & fits & are_ended(x));
    store_eight(first, stride, rows, x.sign, x.exponent, turned_around(result));
    return rows;
}

uint64_t round(records_t from, int count, uint64_t valid, records_t to, const number_rounding_t &rounding) {
    const auto calculate = [&](const eight_numbers_t &x, lanes_t digits, eight_rows_t rows, char *first) {
        return round_eight(x, digits, rows, first, to.stride, rounding);
    };
    return each_eight(from, count, valid, to, calculate);
}

constexpr number_rounding_kernels_t kernels = {negate, make_positive, round};

}  // namespace
}  // namespace dv::impl::DV_LEVEL
