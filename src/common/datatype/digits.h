// Decimal digits two and eight at a time, and text words: up to eight characters in an integer, the first one
// lowest.

#ifndef DV_DATATYPE_DIGITS_H
#define DV_DATATYPE_DIGITS_H

#include <array>

#include "bytes.h"

namespace dv::impl {

// "00" to "99".
inline constexpr auto DIGIT_PAIRS = [] {
    std::array<char, 200> pairs{};
    for (size_t i = 0; i < 100; ++i) {
        pairs[2 * i] = static_cast<char>('0' + i / 10);
        pairs[2 * i + 1] = static_cast<char>('0' + i % 10);
    }
    return pairs;
}();

// The first sizeof(Word) characters at an address.
template <typename Word>
uint64_t load_text(const char *from) {
    Word word;
    memcpy(&word, from, sizeof word);
    return std::endian::native == std::endian::little ? word : swap_bytes(word);
}

// Stores the first sizeof(Word) characters of a text word.
template <typename Word>
void store_text(char *to, uint64_t text) {
    auto word = static_cast<Word>(text);
    if (std::endian::native != std::endian::little) word = swap_bytes(word);
    memcpy(to, &word, sizeof word);
}

// The two digits of a number below 100, as a text word.
inline uint64_t digit_pair(uint32_t number) { return load_text<uint16_t>(&DIGIT_PAIRS[size_t{2} * number]); }

// The eight digits of a number below 10^8, as a text word. Halves of 4, 2 and 1 digits are parted side by
// side, the higher one in the lower bits; quotients by reciprocals that are exact in their ranges: 10486 /
// 2^20 below 43699, 103 / 2^10 below 179.
constexpr uint64_t eight_digits(uint32_t number) {
    const uint64_t fours = number / 10'000 | uint64_t{number % 10'000} << 32;
    const uint64_t hundreds = (fours * 10'486 >> 20) & 0x0000'007F'0000'007F;
    const uint64_t pairs = hundreds | (fours - 100 * hundreds) << 16;
    const uint64_t tens = (pairs * 103 >> 10) & 0x000F'000F'000F'000F;
    return (tens | (pairs - 10 * tens) << 8) + 0x3030'3030'3030'3030;
}
static_assert(eight_digits(12'345'678) == 0x3837'3635'3433'3231 &&
              eight_digits(99'999'999) == 0x3939'3939'3939'3939);

// The number that eight digits are, given as their values (0..9), the first one lowest.
constexpr uint32_t number_of_digits(uint64_t digits) {
    const uint64_t pairs = (digits * 10 + (digits >> 8)) & 0x00FF'00FF'00FF'00FF;
    const uint64_t fours = (pairs * 100 + (pairs >> 16)) & 0x0000'FFFF'0000'FFFF;
    return static_cast<uint32_t>(fours * 10'000 + (fours >> 32));
}
static_assert(number_of_digits(0x0807'0605'0403'0201) == 12'345'678 &&
              number_of_digits(0x0909'0909'0909'0909) == 99'999'999);

}  // namespace dv::impl

#endif  // DV_DATATYPE_DIGITS_H
