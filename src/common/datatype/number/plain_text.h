// Reading plain numeric text: digits with at most one point among them and nothing else, up to 38 of them.
//
//   characters   1 2 3 . 4 5 6      an odd number of integer digits moves to the right, behind a zero;
//   digits       0 1 2 3 4 5 6      of an even one, the digits behind the point move to the left;
//   pairs        01 23 45 60        so pairs begin at even distances from the point
//
// Sixteen characters at a time are checked, moved and paired in vectors. Nothing branches on the length of a
// text, its sign, or the place of its point, beyond a choice among four ranges of lengths (bench/number,
// from_str). Anything else in a text, and more digits, is left to the general reader; so is every text on
// machines without vectors.

#ifndef DV_NUMBER_PLAIN_TEXT_H
#define DV_NUMBER_PLAIN_TEXT_H

#include <algorithm>

#include "vector_digits.h"

namespace dv::impl {

#if DV_HAS_VECTOR_BYTES

// ---- characters: a text from its beginning, zero bytes past its end ----

inline uint64_t load_native64(const char *p) {
    uint64_t word;
    memcpy(&word, p, sizeof word);
    return word;
}
inline uint64_t load_native32(const char *p) {
    uint32_t word;
    memcpy(&word, p, sizeof word);
    return word;
}

// Of 4..12 characters, by loads that overlap: amounts, whose lengths no branch tells apart.
inline bytes16_t load_amount(const char *text, unsigned length) {
    const unsigned second = std::min(length - 4, 4u);
    const unsigned past_end = 4 * (12 - length);  // half the bits of what is not behind the eighth character
    const uint64_t low = load_native32(text) | load_native32(text + second) << (8 * second);
    return join_halves(low, load_native32(text + length - 4) >> past_end >> past_end);
}

// Of 1..15 characters.
inline bytes16_t load_short_text(const char *text, unsigned length) {
    if (length >= 8) {
        const unsigned past_end = 4 * (16 - length);
        return join_halves(load_native64(text), load_native64(text + length - 8) >> past_end >> past_end);
    }
    if (length >= 4) return load_amount(text, length);
    const auto at = [text](unsigned i) { return uint64_t{static_cast<uint8_t>(text[i])} << (8 * i); };
    return join_halves(at(0) | at(length / 2) | at(length - 1), 0);
}

// Eight characters from `at` on, of a text of at least 8.
inline uint64_t characters_from(const char *text, unsigned length, unsigned at) {
    const unsigned begin = std::min(at, length - 8);
    // Half the bits of what is not wanted, or all of them: a branch could not tell which lengths reach so
    // far.
    const unsigned before = std::min(4 * (at - begin), 32u);
    return load_native64(text + begin) >> before >> before;
}

// ---- digits ----

// Turns characters into digits, and all else into 0; gives a bit for each digit and one for each point.
inline unsigned take_digits(bytes16_t &text, unsigned &points) {
    const bytes16_t values = _mm_sub_epi8(text, _mm_set1_epi8('0'));
    const bytes16_t is_digit = _mm_cmpeq_epi8(_mm_min_epu8(values, _mm_set1_epi8(9)), values);
    points = top_bits_of(_mm_cmpeq_epi8(text, _mm_set1_epi8('.')));
    text = _mm_and_si128(values, is_digit);
    return top_bits_of(is_digit);
}

// Bits of a text from its first character on: which are digits, points, and a sign to be passed over.
struct classes_t {
    uint64_t digits;
    uint64_t points;
    uint64_t sign;
};

// The place of the point, or of the end where there is none; false if there is anything else than digits and
// one point.
inline bool find_point(const classes_t &classes, unsigned length, uint64_t &place) {
    const uint64_t point = classes.points & (0 - classes.points);
    const uint64_t end = (classes.digits | classes.sign | point) + 1;
    if (end >> length == 0) return false;
    place = static_cast<unsigned>(std::countr_zero(point | end));
    return true;
}

// Eight pairs, each in a lane of 16 bits: tens in its lower byte, units in its upper one. What overflows are
// the units times 2560.
inline bytes16_t pair_up(bytes16_t digits) { return _mm_srli_epi16(multiply_lanes(digits, 10 * 256 + 1), 8); }

// ---- up to 15 characters with the sign: one vector ----

// By the place of the point: the bytes that come from the place before, from their own, and from that behind.
struct moves_t {
    alignas(VECTOR_SIZE) uint8_t from_before[VECTOR_SIZE];
    uint8_t from_same[VECTOR_SIZE];
    uint8_t from_behind[VECTOR_SIZE];
    uint8_t unused[VECTOR_SIZE];  // 64 bytes a row: found by a shift
};
inline constexpr auto MOVES = [] {
    std::array<moves_t, VECTOR_SIZE> rows{};
    for (size_t point = 0; point < rows.size(); ++point) {
        for (size_t i = 0; i < VECTOR_SIZE; ++i) {
            const bool is_integer = i < point + point % 2;
            moves_t &row = rows[point];
            auto &moved = point % 2 != 0 ? row.from_before : row.from_behind;
            const bool moves = is_integer == (point % 2 != 0);
            (moves ? moved : row.from_same)[i] = 0xFF;
        }
    }
    return rows;
}();

inline bytes16_t align_digits(bytes16_t digits, uint64_t point) {
    const moves_t &row = MOVES[point];
    const bytes16_t before = _mm_and_si128(_mm_slli_si128(digits, 1), load_vector(row.from_before));
    const bytes16_t same = _mm_and_si128(digits, load_vector(row.from_same));
    const bytes16_t behind = _mm_and_si128(_mm_srli_si128(digits, 1), load_vector(row.from_behind));
    return _mm_or_si128(_mm_or_si128(before, same), behind);
}

// The digits as base-100 digits in the order of memory; those in front of the point end with that of number
// (point + 1) / 2.
inline uint64_t aligned_pairs(bytes16_t digits, uint64_t point) {
    const bytes16_t pairs = pair_up(align_digits(digits, point));
    return static_cast<uint64_t>(_mm_cvtsi128_si64(_mm_packus_epi16(pairs, pairs)));
}

// `digits` are the characters of the text. A minus sign is passed over as a leading zero.
inline bool read_short_text(number_t &x, const char *text, unsigned length, bytes16_t digits) {
    const uint64_t is_negative = text[0] == '-' ? 1 : 0;
    unsigned points;
    const unsigned are_digits = take_digits(digits, points);
    const classes_t classes = {are_digits, points, is_negative};
    uint64_t point;
    if (!find_point(classes, length, point)) return false;

    const uint64_t pairs = aligned_pairs(digits, point);
    if (pairs == 0) {
        if (are_digits == 0) return false;
        store_zero(x);
        return true;
    }
    store_digits(x, 0 - is_negative, pairs, static_cast<int>((point + 1) / 2));
    return true;
}

// ---- 16 to 39 characters behind a minus sign: three vectors, the last of them half empty ----

struct long_digits_t {
    bytes16_t part[3];
};

inline void align_digits(long_digits_t &digits, uint64_t point) {
    auto &part = digits.part;
    const bytes16_t zero = _mm_setzero_si128();
    const bytes16_t is_odd = in_front_of(point % 2 * VECTOR_SIZE);
    part[2] = select(is_odd, move_right(part[2], part[1]), part[2]);
    part[1] = select(is_odd, move_right(part[1], part[0]), part[1]);
    part[0] = select(is_odd, move_right(part[0], zero), part[0]);
    const uint64_t border = point + point % 2;
    part[0] = select(in_front_of(border, 0), part[0], move_left(part[0], part[1]));
    part[1] = select(in_front_of(border, 1), part[1], move_left(part[1], part[2]));
    part[2] = select(in_front_of(border, 2), part[2], move_left(part[2], zero));
}

// False also for leading zeros.
inline bool read_long_text(number_t &x, const char *text, unsigned length) {
    const uint64_t is_negative = text[0] == '-' ? 1 : 0;
    text += is_negative;
    length -= static_cast<unsigned>(is_negative);
    if (length < VECTOR_SIZE) return false;
    long_digits_t digits = {
        {load_vector(text), join_halves(characters_from(text, length, 16), characters_from(text, length, 24)),
         join_halves(characters_from(text, length, 32), 0)}};
    unsigned point_bits[3];
    const uint64_t are_digits = uint64_t{take_digits(digits.part[0], point_bits[0])} |
                                uint64_t{take_digits(digits.part[1], point_bits[1])} << 16 |
                                uint64_t{take_digits(digits.part[2], point_bits[2])} << 32;
    const uint64_t points = point_bits[0] | uint64_t{point_bits[1]} << 16 | uint64_t{point_bits[2]} << 32;
    const classes_t classes = {are_digits, points, /*sign=*/0};
    uint64_t point;
    if (!find_point(classes, length, point) || length - (points != 0 ? 1 : 0) > NUMBER_PRECISION_MAX)
        return false;

    align_digits(digits, point);
    const bytes16_t zero = _mm_setzero_si128();
    const bytes16_t first = _mm_packus_epi16(pair_up(digits.part[0]), pair_up(digits.part[1]));
    const bytes16_t last = _mm_packus_epi16(pair_up(digits.part[2]), zero);
    const unsigned zeros = top_bits_of(_mm_cmpeq_epi8(first, zero)) | top_bits_of(_mm_cmpeq_epi8(last, zero))
                                                                          << 16;
    if ((zeros & 1) != 0) return false;  // leading zeros

    const int count = 32 - std::countl_zero(~zeros);
    const uint64_t sign = 0 - is_negative;
    x.size = size_of(sign, count);
    x.signexp = signexp_of(sign, static_cast<int>((point + 1) / 2));
    store_record_digits(x, sign, first, last, count);
    return true;
}

// Reads a text of any length but 16 characters and more; false: it is not plain, and nothing is stored.
inline bool read_short_plain_text(number_t &x, const char *text, size_t length) {
    const auto size = static_cast<unsigned>(length);
    if (length - 4 <= 12 - 4) return read_short_text(x, text, size, load_amount(text, size));
    return length - 1 < VECTOR_SIZE - 1 && read_short_text(x, text, size, load_short_text(text, size));
}

// The same of any other.
inline bool read_long_plain_text(number_t &x, const char *text, size_t length) {
    constexpr size_t length_max = 1 + NUMBER_PRECISION_MAX + 1;  // sign and point
    if (length < VECTOR_SIZE || length > length_max) return false;
    return read_long_text(x, text, static_cast<unsigned>(length));
}

// Whether a text of 1 to 15 characters has one that stands in no number, as most texts that are refused do:
// found without a branch on its place.
inline bool has_foreign_character(const char *text, size_t length) {
    if (length - 1 >= VECTOR_SIZE - 1) return false;
    const auto size = static_cast<unsigned>(length);
    const bytes16_t characters = load_short_text(text, size);
    const auto are = [](bytes16_t v, char c) { return _mm_cmpeq_epi8(v, _mm_set1_epi8(c)); };
    bytes16_t digits = characters;
    unsigned points;
    const unsigned known = take_digits(digits, points) | points;
    const bytes16_t signs = _mm_or_si128(are(characters, '+'), are(characters, '-'));
    const bytes16_t exponents = are(_mm_or_si128(characters, _mm_set1_epi8(' ')), 'e');
    const bytes16_t others = _mm_or_si128(_mm_or_si128(signs, exponents), are(characters, ' '));
    return ((known | top_bits_of(others)) + 1) >> size == 0;
}

#else

inline bool read_short_plain_text(number_t &, const char *, size_t) { return false; }
inline bool read_long_plain_text(number_t &, const char *, size_t) { return false; }
inline bool has_foreign_character(const char *, size_t) { return false; }

#endif

}  // namespace dv::impl

#endif  // DV_NUMBER_PLAIN_TEXT_H
