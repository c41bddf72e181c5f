// Characters: digits, letters and their case, blanks, for every area of the library.
//
// All is ASCII, whatever the locale: a byte of 0x80 or more belongs to no class and keeps its value. Letters
// of other character sets change case by their set (dvtypes/base.h, to_case).

#ifndef DV_DATATYPE_ASCII_H
#define DV_DATATYPE_ASCII_H

#include <algorithm>
#include <string_view>

#include "bytes.h"

namespace dv::impl {

inline constexpr int ASCII_CASE_STEP = 'a' - 'A';

constexpr uint8_t digit_of(char c) { return static_cast<uint8_t>(c - '0'); }  // above 9: no digit
constexpr bool is_digit(char c) { return digit_of(c) <= 9; }

constexpr int hex_digit_of(char c) {  // in upper case; -1: none
    if (is_digit(c)) return digit_of(c);
    return c >= 'A' && c <= 'F' ? c - 'A' + 10 : -1;
}

constexpr bool is_upper(char c) { return c >= 'A' && c <= 'Z'; }
constexpr bool is_lower(char c) { return c >= 'a' && c <= 'z'; }
constexpr bool is_letter(char c) { return is_lower(static_cast<char>(c | ASCII_CASE_STEP)); }
constexpr char to_upper(char c) { return is_lower(c) ? static_cast<char>(c - ASCII_CASE_STEP) : c; }
constexpr char to_lower(char c) { return is_upper(c) ? static_cast<char>(c + ASCII_CASE_STEP) : c; }

constexpr bool is_blank(char c) { return c == ' ' || c == '\t'; }

// What may stand around the fields of dates and intervals: one look into a word of bits.
constexpr bool is_white_space(char c) {
    constexpr uint64_t members = 1ull << '\t' | 1ull << '\n' | 1ull << '\r' | 1ull << ' ' | 1ull << '\0';
    const auto code = static_cast<uint8_t>(c);
    return code <= ' ' && (members >> code & 1) != 0;
}

// The same length, and the same characters but for the case of letters.
constexpr bool equals_ignoring_case(std::string_view x, std::string_view y) {
    return std::equal(x.begin(), x.end(), y.begin(), y.end(),
                      [](char a, char b) { return to_upper(a) == to_upper(b); });
}

// Eight bytes with letters in upper case, all at once.
constexpr uint64_t upper_case(uint64_t word) {
    const uint64_t low_bits = word & in_each_byte(0x7F);
    const uint64_t from_a = low_bits + in_each_byte(0x80 - 'a');  // sets the top bit of bytes >= 'a'
    const uint64_t beyond_z = low_bits + in_each_byte(0x7F - 'z');
    const uint64_t letters = (from_a & ~beyond_z & ~word) & in_each_byte(0x80);
    return word ^ letters >> 2;  // 0x80 >> 2 is what upper and lower case differ in
}
static_assert(upper_case(0x60'61'7A'7B'E1'FA'41'00) == 0x60'41'5A'7B'E1'FA'41'00);

}  // namespace dv::impl

#endif  // DV_DATATYPE_ASCII_H
