// Writing plain numeric text: values of up to 16 base-100 digits in front of the point, of any sign and
// count.
//
// Each digit becomes its tens T and its units U, in two vectors. A text is pairs of characters. What they are
// depends on whether the first digit has no tens, so that the text begins with its units, and changes at the
// point, in front of which stand E digits:
//
//   begins with tens     T0 U0   T1 U1   ...   .  TE   UE TE+1   ...
//   begins with units    U0 T1   U1 T2   ...   TE UE   TE+1 UE+1   ...
//
// and the pair of the last units in front of the point ends with it in the second row, too. With X = U in
// front of the point and T behind it, and Y = T in front and the U of the digit before behind it, the first
// row is the pairs of Y and X, the second those of X and the Y that follows.
//
// The point is the Y behind the last digit in front of it. Digits from the 17th on are a piece of their own,
// always behind the point. So nothing branches on sign, lengths and the place of the point (bench/number,
// to_str); nor is anything stored at a place that the digits give, for which the loads of the next call might
// wait: all characters behind the end are NUL.

#ifndef DV_NUMBER_PLAIN_TEXT_WRITER_H
#define DV_NUMBER_PLAIN_TEXT_WRITER_H

#include <algorithm>

#include "vector_digits.h"

namespace dv::impl {

#if DV_HAS_VECTOR_BYTES

// Of digits from 0 to 99, each in a byte: the tens and the units as characters.
struct tens_and_units_t {
    bytes16_t tens;
    bytes16_t units;
};
inline tens_and_units_t tens_and_units(bytes16_t digits) {
    const bytes16_t tenth = _mm_set1_epi16(6554);  // of 2^16: near enough for numbers up to 255 * 100
    const bytes16_t upper_bytes = _mm_set1_epi16(static_cast<int16_t>(0xFF00));
    const bytes16_t lower = _mm_mulhi_epu16(_mm_andnot_si128(upper_bytes, digits), tenth);
    const bytes16_t upper =
        _mm_and_si128(_mm_mulhi_epu16(_mm_and_si128(digits, upper_bytes), tenth), upper_bytes);
    const bytes16_t tens = _mm_or_si128(lower, upper);
    const bytes16_t units = _mm_sub_epi8(digits, multiply_lanes(tens, 10));
    const bytes16_t zero = _mm_set1_epi8('0');
    return {_mm_add_epi8(tens, zero), _mm_add_epi8(units, zero)};
}

// Digit bytes of either sign as digits; `signs` is all ones for a negative value.
inline bytes16_t digits_of_bytes(bytes16_t bytes, bytes16_t signs) {
    const bytes16_t signed_digits =
        _mm_sub_epi8(bytes, _mm_set1_epi8(static_cast<char>(NUMBER_DIGIT_EXCESS)));
    return _mm_sub_epi8(_mm_xor_si128(signed_digits, signs), signs);
}

// The first eight of such digits as pairs of characters.
inline bytes16_t pairs_as_text(bytes16_t digits) {
    const bytes16_t by_2 = _mm_unpacklo_epi8(digits, _mm_setzero_si128());
    const bytes16_t tens = _mm_mulhi_epu16(by_2, _mm_set1_epi16(6554));
    const bytes16_t units = _mm_sub_epi16(by_2, multiply_lanes(tens, 10));
    return _mm_add_epi8(_mm_or_si128(tens, _mm_slli_epi16(units, 8)), _mm_set1_epi8('0'));
}

// What is known of a value before its digits are.
struct plain_head_t {
    size_t count;
    size_t exponent;
    size_t negative;  // 0 or 1
};

inline bytes16_t load_signs(const plain_head_t &head) { return in_front_of(head.negative * VECTOR_SIZE); }

inline bool are_digits(bytes16_t bytes) {
    const bytes16_t above = _mm_subs_epu8(bytes, _mm_set1_epi8(99));
    return top_bits_of(_mm_cmpeq_epi8(above, _mm_setzero_si128())) == 0xFFFF;
}

inline size_t first_of(bytes16_t digits) { return static_cast<uint8_t>(_mm_cvtsi128_si32(digits)); }

// 1 if the first digit has no tens, and they are left out. Without integer digits they are the first zero
// behind the point.
inline size_t skipped_characters(const plain_head_t &head, size_t first_digit) {
    return head.exponent != 0 && first_digit < 10 ? 1 : 0;
}

// The length of the text without the sign.
inline size_t plain_length(const number_t &x, const plain_head_t &head, size_t skipped) {
    const size_t point = 2 * head.exponent - skipped;
    const size_t ends_with_zero = (x.coef[head.count - 1] - NUMBER_DIGIT_EXCESS) % 10 == 0 ? 1 : 0;
    return head.count > head.exponent ? 2 * head.count - skipped + 1 - ends_with_zero : point;
}

// What stands in front of a place, a point there, and what stands behind it, moved up by one.
inline bytes16_t join_at_point(bytes16_t front, bytes16_t behind, size_t place) {
    const bytes16_t is_front = in_front_of(place);
    const bytes16_t is_front_or_point = in_front_of(place + 1);
    const bytes16_t point = _mm_and_si128(_mm_xor_si128(is_front, is_front_or_point), _mm_set1_epi8('.'));
    return _mm_or_si128(_mm_or_si128(_mm_and_si128(is_front, front), point),
                        _mm_andnot_si128(is_front_or_point, behind));
}

// ---- up to seven digits, four of them in front of the point: one vector ----

inline constexpr size_t SHORT_TEXT_DIGITS_MAX = COEF_WORD_DIGITS - 1;
inline constexpr size_t SHORT_TEXT_EXPONENT_MAX = 4;
inline constexpr int SHORT_TEXT_BUFFER_SIZE = 1 + VECTOR_SIZE;  // sign, and characters with point and NUL

inline size_t write_short_text(const number_t &x, const plain_head_t &head, char *str) {
    const bytes16_t bytes = _mm_loadl_epi64(reinterpret_cast<const bytes16_t *>(x.coef));
    const bytes16_t digits = _mm_and_si128(digits_of_bytes(bytes, load_signs(head)), in_front_of(head.count));
    const size_t first_digit = first_of(digits);
    if (!are_digits(digits) || first_digit == 0) return 0;

    const size_t skipped = skipped_characters(head, first_digit);
    const bytes16_t is_skipped = in_front_of(skipped * VECTOR_SIZE);
    const bytes16_t characters = pairs_as_text(digits);
    const bytes16_t front = select(is_skipped, _mm_srli_si128(characters, 1), characters);
    const bytes16_t behind = select(is_skipped, characters, _mm_slli_si128(characters, 1));
    const bytes16_t text = join_at_point(front, behind, 2 * head.exponent - skipped);
    const size_t length = plain_length(x, head, skipped);
    str[0] = '-';
    store_vector(str + head.negative, _mm_and_si128(text, in_front_of(length)));
    return head.negative + length;
}

// ---- up to 15 digits in front of the point: three vectors ----

inline constexpr size_t LONG_TEXT_EXPONENT_MAX = VECTOR_SIZE - 1;
inline constexpr int LONG_TEXT_BUFFER_SIZE = 1 + 3 * VECTOR_SIZE;  // what is written, at most

inline size_t write_long_text(const number_t &x, const plain_head_t &head, char *str) {
    int last_bytes;
    memcpy(&last_bytes, x.coef + VECTOR_SIZE, sizeof last_bytes);
    const bytes16_t signs = load_signs(head);
    const bytes16_t first =
        _mm_and_si128(digits_of_bytes(load_vector(x.coef), signs), in_front_of(head.count, 0));
    const bytes16_t last =
        _mm_and_si128(digits_of_bytes(_mm_cvtsi32_si128(last_bytes), signs), in_front_of(head.count, 1));
    const size_t first_digit = first_of(first);
    if (!are_digits(_mm_max_epu8(first, last)) || first_digit == 0) return 0;

    const size_t skipped = skipped_characters(head, first_digit);
    const auto [tens, units] = tens_and_units(first);
    const bytes16_t is_skipped = in_front_of(skipped * VECTOR_SIZE);
    const bytes16_t x_places = select(in_front_of(head.exponent), units, tens);
    const bytes16_t y_places = join_at_point(tens, _mm_slli_si128(units, 1), head.exponent);
    const bytes16_t last_units = _mm_srli_si128(units, VECTOR_SIZE - 1);  // the Y behind all
    const bytes16_t last_pairs = pairs_as_text(last);
    const bytes16_t even = select(is_skipped, x_places, y_places);
    const bytes16_t odd = select(is_skipped, move_left(y_places, last_units), x_places);
    const bytes16_t tail = select(is_skipped, last_pairs, move_right(last_pairs, units));
    const size_t length = plain_length(x, head, skipped);
    str[0] = '-';
    char *const text = str + head.negative;
    const auto put = [&](unsigned part, bytes16_t characters) {
        store_vector(text + VECTOR_SIZE * part, _mm_and_si128(characters, in_front_of(length, part)));
    };
    put(0, _mm_unpacklo_epi8(even, odd));
    put(1, _mm_unpackhi_epi8(even, odd));
    put(2, tail);
    return head.negative + length;
}

// Writes a value of any record but NULL and zero in normal form, and returns the characters of the text; 0:
// it is not plain, or the buffer has no room for whole vectors, and nothing is written.
inline size_t write_plain_text(const number_t &x, int buf_size, char *str) {
    const number_head_t head = read_head(x);
    if (head.count < 1 || head.count > NUMBER_DIGITS_MAX || head.exponent < 0) return 0;
    const plain_head_t plain = {static_cast<size_t>(head.count), static_cast<size_t>(head.exponent),
                                head.sign & 1};
    // Both at once: of long values either may be the small one.
    const bool is_short =
        std::max(plain.count + SHORT_TEXT_EXPONENT_MAX, plain.exponent + SHORT_TEXT_DIGITS_MAX) <=
        SHORT_TEXT_DIGITS_MAX + SHORT_TEXT_EXPONENT_MAX;
    if (is_short && buf_size >= SHORT_TEXT_BUFFER_SIZE) return write_short_text(x, plain, str);
    if (plain.exponent > LONG_TEXT_EXPONENT_MAX || buf_size < LONG_TEXT_BUFFER_SIZE) return 0;
    return write_long_text(x, plain, str);
}

#else

inline size_t write_plain_text(const number_t &, int, char *) { return 0; }

#endif

}  // namespace dv::impl

#endif  // DV_NUMBER_PLAIN_TEXT_WRITER_H
