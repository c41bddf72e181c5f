// Eight base-100 digits in the order of memory, the first in the lowest byte of a word: made from numbers
// below 10^8 (below 10^16: digit_bytes_from_limb), turned into numbers and stored. What plain text and
// machine integers share, where the machine has vectors of bytes.

#ifndef DV_NUMBER_VECTOR_DIGITS_H
#define DV_NUMBER_VECTOR_DIGITS_H

#include "number_limb.h"

#if DV_HAS_VECTOR_BYTES

namespace dv::impl {

// A number below 10^8 as four digits. Its quotients by 100, 10^4 and 10^6 do not wait for each other. Each is
// right because reciprocal times divisor exceeds the power of two by so little (the error) that the number
// times that stays below the power. A digit is a quotient less 100 times the next: the factors put all four
// together.
constexpr uint32_t short_digits_in_memory(uint64_t number) {
    const uint64_t by_100 = number * 1'374'389'535 >> 37;        // error 28 of 2^37
    const uint64_t by_10_000 = number * 109'951'163 >> 40;       // error 2224 of 2^40
    const uint64_t by_1_000_000 = number * 1'125'899'907 >> 50;  // error 157,376 of 2^50
    return static_cast<uint32_t>((number << 24) - by_100 * ((100 << 24) - (1 << 16)) -
                                 by_10_000 * ((100 << 16) - (1 << 8)) - by_1_000_000 * ((100 << 8) - 1));
}
static_assert(short_digits_in_memory(1'020'304) == 0x04030201);
static_assert(short_digits_in_memory(99'999'999) == 0x63636363);

// Eight bytes as the digits of a number, whatever they are: digits with an excess give a number with an
// excess.
inline int64_t number_in_memory(uint64_t bytes) {
    const bytes16_t by_2 =
        _mm_unpacklo_epi8(_mm_cvtsi64_si128(static_cast<int64_t>(bytes)), _mm_setzero_si128());
    const bytes16_t by_4 = _mm_madd_epi16(by_2, _mm_set1_epi32(1 << 16 | 100));  // at most 255 * 101
    const bytes16_t by_8 = _mm_madd_epi16(_mm_packs_epi32(by_4, by_4), _mm_set1_epi32(1 << 16 | 10'000));
    const int64_t halves = _mm_cvtsi128_si64(by_8);
    return static_cast<int32_t>(halves) * int64_t{100'000'000} + (halves >> 32);
}

constexpr uint8_t signexp_of(uint64_t sign, int exponent) {
    return static_cast<uint8_t>(static_cast<uint64_t>(NUMBER_SIGNEXP_EXCESS + exponent) ^ sign);
}
constexpr uint8_t size_of(uint64_t sign, int digit_count) {
    return static_cast<uint8_t>(1 + digit_count - static_cast<int>(sign));
}

// The bytes of a record for sixteen digits, the part-th sixteen of a value of so many; zeros behind the last
// become terminators. `signs` is all ones for a negative value, else 0.
inline bytes16_t record_bytes(bytes16_t digits, bytes16_t signs, int count, unsigned part = 0) {
    const bytes16_t excess = _mm_set1_epi8(static_cast<char>(NUMBER_DIGIT_EXCESS));
    const bytes16_t bytes = _mm_add_epi8(_mm_sub_epi8(_mm_xor_si128(digits, signs), signs), excess);
    const bytes16_t to_terminator = _mm_set1_epi8(static_cast<char>(DIGIT_ZERO_TO_TERMINATOR));
    const bytes16_t is_digit = in_front_of(static_cast<unsigned>(count), part);
    return _mm_xor_si128(bytes, _mm_andnot_si128(is_digit, to_terminator));
}

// Stores the first sixteen digits and the four behind them.
inline void store_record_digits(number_t &x, uint64_t sign, bytes16_t first, bytes16_t last, int count) {
    const bytes16_t signs = _mm_set1_epi64x(static_cast<int64_t>(sign));
    store_vector(x.coef, record_bytes(first, signs, count));
    const int rest = _mm_cvtsi128_si32(record_bytes(last, signs, count, 1));
    memcpy(x.coef + VECTOR_SIZE, &rest, sizeof rest);
    x.coef[NUMBER_DIGITS_MAX] = NUMBER_TOP;
}

// The bytes of a record for eight digits; `sign` is all ones for a negative value, else 0. No byte borrows.
constexpr uint64_t digit_bytes(uint64_t digits, uint64_t sign) {
    return in_each_byte(NUMBER_DIGIT_EXCESS) + ((digits ^ sign) - sign);
}

// Stores 0.digits x 100^exponent, not all of the digits being 0.
inline void store_digits(number_t &x, uint64_t sign, uint64_t digits, int exponent) {
    const int leading_zeros = trailing_zero_bytes(digits);
    const int count = COEF_WORD_DIGITS - leading_zeros - trailing_zero_bytes(swap_bytes(digits));
    // Behind the last digit; in none of the eight bytes if that is the eighth.
    const uint64_t to_terminator = uint64_t{DIGIT_ZERO_TO_TERMINATOR} << 8 << (8 * (count - 1));
    const uint64_t coef = digit_bytes(digits >> (8 * leading_zeros), sign) ^ to_terminator;
    x.size = size_of(sign, count);
    x.signexp = signexp_of(sign, exponent - leading_zeros);
    memcpy(x.coef, &coef, sizeof coef);
    x.coef[COEF_WORD_DIGITS] = NUMBER_TOP;
}

// The same for a number of up to four digits that is not 0: its sizes are taken in bits, as shifts want them.
inline void store_short_number(number_t &x, uint64_t sign, uint64_t number) {
    constexpr unsigned width = 32, whole_bytes = ~7u;
    const uint32_t digits = short_digits_in_memory(number);
    const unsigned leading = static_cast<unsigned>(std::countr_zero(digits)) & whole_bytes;
    const unsigned trailing = static_cast<unsigned>(std::countr_zero(swap_bytes(digits))) & whole_bytes;
    const unsigned bits = width - leading - trailing;
    const uint64_t to_terminator = uint64_t{DIGIT_ZERO_TO_TERMINATOR} << bits;
    const uint64_t coef = digit_bytes(digits >> leading, sign) ^ to_terminator;
    x.size = size_of(sign, static_cast<int>(bits / 8));
    x.signexp = signexp_of(sign, static_cast<int>((width - leading) / 8));
    memcpy(x.coef, &coef, sizeof coef);
}

}  // namespace dv::impl

#endif  // DV_HAS_VECTOR_BYTES

#endif  // DV_NUMBER_VECTOR_DIGITS_H
