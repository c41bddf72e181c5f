// Eight NUMBERs with all their digits in vectors of 512 bits.
//
// A coefficient is three vectors, a lane for each row: the digits 0 to 7, 8 to 15 and 16 to 23, in each lane
// the first digit in the top byte (number_layout.h).

#include "eight_numbers.h"

namespace dv::impl::DV_LEVEL {
namespace {

struct eight_coefs_t {
    lanes_t word[3];
};

// The digits of eight records; those that are no digits are bytes above 99.
inline eight_coefs_t load_coefs(const eight_numbers_t &x, const char *first, int64_t stride) {
    // The last sixteen bytes of each record: its digits from the sixth on.
    constexpr int end_at = sizeof(number_t) - 16;
    const lanes_t even = load_quarters(first + end_at, 2 * stride);
    const lanes_t odd = load_quarters(first + end_at + stride, 2 * stride);
    const lanes_t middle = _mm512_unpacklo_epi64(even, odd);
    const lanes_t end = _mm512_unpackhi_epi64(even, odd);
    const lanes_t bytes[3] = {x.digits, _mm512_shrdi_epi64(middle, end, 24), _mm512_srli_epi64(end, 24)};
    const lanes_t zero = _mm512_setzero_si512(), eight = in_each_lane(8);
    eight_coefs_t coefs;
    lanes_t count = x.count;
    for (int i = 0; i < 3; ++i) {
        coefs.word[i] = turned_around(digits_of_bytes(bytes[i], x.sign, count));
        count = _mm512_max_epi64(_mm512_sub_epi64(count, eight), zero);
    }
    return coefs;
}

inline eight_rows_t are_digits(const eight_coefs_t &coefs) {
    return are_digits(_mm512_max_epu8(_mm512_max_epu8(coefs.word[0], coefs.word[1]), coefs.word[2]));
}

inline eight_coefs_t select(eight_rows_t rows, const eight_coefs_t &when_set,
                            const eight_coefs_t &when_clear) {
    eight_coefs_t selected;
    for (int i = 0; i < 3; ++i)
        selected.word[i] = _mm512_mask_mov_epi64(when_clear.word[i], rows, when_set.word[i]);
    return selected;
}

// Moves the digits of each row `places` (0..23) to the right; what leaves the last word is dropped.
inline void shift_right(eight_coefs_t &a, lanes_t places) {
    const lanes_t zero = _mm512_setzero_si512();
    const eight_rows_t by_8 = _mm512_test_epi64_mask(places, in_each_lane(8));
    const eight_rows_t by_16 = _mm512_test_epi64_mask(places, in_each_lane(16));
    a = select(by_16, {{zero, zero, a.word[0]}}, a);
    a = select(by_8, {{zero, a.word[0], a.word[1]}}, a);
    const lanes_t bits = _mm512_slli_epi64(_mm512_and_si512(places, in_each_lane(7)), 3);
    a = {{_mm512_srlv_epi64(a.word[0], bits), _mm512_shrdv_epi64(a.word[1], a.word[0], bits),
          _mm512_shrdv_epi64(a.word[2], a.word[1], bits)}};
}

// The same by one place, and to the left by one place, where 0 comes in.
inline eight_coefs_t shifted_right(const eight_coefs_t &a, uint64_t first) {
    return {{_mm512_or_si512(_mm512_srli_epi64(a.word[0], 8), in_each_lane(first << 56)),
             _mm512_shrdi_epi64(a.word[1], a.word[0], 8), _mm512_shrdi_epi64(a.word[2], a.word[1], 8)}};
}
inline eight_coefs_t shifted_left(const eight_coefs_t &a) {
    return {{_mm512_shldi_epi64(a.word[0], a.word[1], 8), _mm512_shldi_epi64(a.word[1], a.word[2], 8),
             _mm512_slli_epi64(a.word[2], 8)}};
}

// a += b + carry, both digits; or a -= b where `subtracts` is set, b being given as its complement to all
// ones and the carry as 1. Returns the carries.
inline eight_rows_t add_coefs(eight_coefs_t &a, const eight_coefs_t &b, eight_rows_t subtracts,
                              eight_rows_t carry) {
    const lanes_t one = in_each_lane(1);
    const lanes_t gaps =
        _mm512_maskz_mov_epi64(static_cast<eight_rows_t>(~subtracts), in_each_lane(CARRY_GAPS));
    for (int i = 2; i >= 0; --i) {
        const lanes_t with_gaps = _mm512_add_epi64(a.word[i], gaps);
        const lanes_t sum = _mm512_add_epi64(with_gaps, b.word[i]);
        const lanes_t carried = _mm512_mask_add_epi64(sum, carry, sum, one);
        carry = _mm512_cmplt_epu64_mask(sum, with_gaps) | _mm512_cmplt_epu64_mask(carried, sum);
        const lanes_t gap =
            _mm512_maskz_set1_epi8(_mm512_movepi8_mask(carried), static_cast<char>(COEF_CARRY_GAP));
        a.word[i] = _mm512_sub_epi64(carried, gap);
    }
    return carry;
}

// 0 - a, in the rows of the mask.
inline void turn_around(eight_coefs_t &a, eight_rows_t rows) {
    const lanes_t nines = in_each_lane(in_each_byte(99)), zero = _mm512_setzero_si512();
    eight_coefs_t negative;
    for (int i = 0; i < 3; ++i) negative.word[i] = _mm512_sub_epi64(nines, a.word[i]);
    add_coefs(negative, {{zero, zero, zero}}, 0, 0xFF);
    a = select(rows, negative, a);
}

// Rounds half up at the 38th decimal digit (round_half_up_to_precision). Returns the rows of which the carry
// goes no further than into the nineteenth digit; the others are spoiled.
inline eight_rows_t round_half_up(eight_coefs_t &a) {
    constexpr unsigned pair_shift = 56 - 8 * (PRECISION_CUT_PLACE % COEF_WORD_DIGITS);
    const lanes_t pair = _mm512_and_si512(_mm512_srli_epi64(a.word[2], pair_shift), in_each_lane(0x7F));
    const eight_rows_t cuts_inside = _mm512_cmplt_epu64_mask(a.word[0], in_each_lane(uint64_t{10} << 56));
    // 100 as a carry: 256. Without its tens a pair is 100 or nothing.
    const lanes_t tens = _mm512_srli_epi64(
        _mm512_mullo_epi32(_mm512_add_epi64(pair, in_each_lane(5)), in_each_lane(6554)), 16);
    const lanes_t kept_inside = _mm512_mullo_epi32(tens, in_each_lane(10));
    const eight_rows_t carries_inside = _mm512_cmpgt_epu64_mask(kept_inside, in_each_lane(99));
    const eight_rows_t carries_above = _mm512_cmpgt_epu64_mask(pair, in_each_lane(49));
    const auto carries =
        static_cast<eight_rows_t>((cuts_inside & carries_inside) | (~cuts_inside & carries_above));
    lanes_t rounded = _mm512_maskz_mov_epi64(cuts_inside, kept_inside);
    rounded = _mm512_mask_mov_epi64(rounded, carries, in_each_lane(256));
    constexpr uint64_t kept_mask = leading_digits_mask(PRECISION_CUT_PLACE, 2 * COEF_WORD_DIGITS);
    a.word[2] = _mm512_add_epi64(_mm512_and_si512(a.word[2], in_each_lane(kept_mask)),
                                 _mm512_slli_epi64(rounded, pair_shift));
    const lanes_t nineteenth =
        _mm512_and_si512(_mm512_srli_epi64(a.word[2], pair_shift + 8), in_each_lane(0xFF));
    return _mm512_cmplt_epu64_mask(nineteenth, in_each_lane(100));
}

// store_coef of each row: the first digit is not 0, and there are no more than twenty.
inline void store_coefs(char *first, int64_t stride, eight_rows_t rows, lanes_t sign, lanes_t exponent,
                        const eight_coefs_t &coefs) {
    const lanes_t excess = in_each_lane(in_each_byte(NUMBER_DIGIT_EXCESS));
    lanes_t digits[3];
    for (int i = 0; i < 3; ++i) digits[i] = turned_around(coefs.word[i]);
    // Digits up to the last that is not 0, in bits.
    lanes_t width = _mm512_sub_epi64(in_each_lane(64), zero_bits_behind(digits[0]));
    for (int i = 1; i < 3; ++i) {
        const eight_rows_t reaches = _mm512_test_epi64_mask(digits[i], digits[i]);
        width = _mm512_mask_sub_epi64(width, reaches, in_each_lane(64 * (static_cast<unsigned>(i) + 1)),
                                      zero_bits_behind(digits[i]));
    }
    lanes_t bytes[3];
    for (int i = 0; i < 3; ++i) {
        bytes[i] = _mm512_add_epi8(_mm512_sub_epi8(_mm512_xor_si512(digits[i], sign), sign), excess);
        const lanes_t place = _mm512_sub_epi64(width, in_each_lane(64 * static_cast<unsigned>(i)));
        bytes[i] =
            _mm512_xor_si512(bytes[i], _mm512_sllv_epi64(in_each_lane(DIGIT_ZERO_TO_TERMINATOR), place));
    }
    const lanes_t head = head_of(_mm512_srli_epi64(width, 3), sign, exponent);
    const lanes_t begin = _mm512_or_si512(head, _mm512_slli_epi64(bytes[0], 16));
    const lanes_t next = _mm512_shrdi_epi64(bytes[0], bytes[1], 48);
    store_quarters(first, stride, rows, _mm512_unpacklo_epi64(begin, next),
                   _mm512_unpackhi_epi64(begin, next));
    // From the sixth digit on, as they were loaded.
    const lanes_t middle = _mm512_shrdi_epi64(bytes[0], bytes[1], 40);
    const lanes_t end = _mm512_shrdi_epi64(bytes[1], bytes[2], 40);
    store_quarters(first + sizeof(number_t) - 16, stride, rows, _mm512_unpacklo_epi64(middle, end),
                   _mm512_unpackhi_epi64(middle, end));
}

}  // namespace
}  // namespace dv::impl::DV_LEVEL
