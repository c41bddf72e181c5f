// INTERVAL DAY TO SECOND in its plain form, read eight characters at a time:
//
//   text = [sign] digit{1,9} " " HH ":" MI ":" SS [ "." digit{1,9} ]
//
// with no blanks elsewhere and two digits to each field of the clock. That is what the library writes, and
// what most texts are (bench/interval, from_text). Any other text is left to the reader of all texts, right
// or wrong.

#ifndef DV_INTERVAL_PLAIN_TEXT_H
#define DV_INTERVAL_PLAIN_TEXT_H

#include <algorithm>

#include "../ascii.h"
#include "interval_internal.h"

namespace dv::impl {

// The first character is the uppermost byte of a word. Under XOR with a pattern a digit becomes its value and
// a separator 0.
inline constexpr uint64_t ITV_EIGHT_DIGITS = 0x3030303030303030;  // "00000000"
inline constexpr uint64_t ITV_CLOCK = 0x30303A30303A3030;         // "00:00:00"
inline constexpr uint64_t ITV_EIGHT_DIGITS_MAX = 0x0909090909090909;
inline constexpr uint64_t ITV_CLOCK_RANGE = 0x0209000509000509;  // but for 24 to 29 hours

inline uint64_t load_eight(const char *text) { return load_be64(reinterpret_cast<const uint8_t *>(text)); }

// Does no byte exceed that of max? One that is 0x80 or more says so itself, whatever it carries elsewhere.
constexpr bool has_bytes_up_to(uint64_t word, uint64_t max) {
    constexpr uint64_t low_bits = 0x7F7F7F7F7F7F7F7F;
    return (((word + (low_bits - max)) | word) & ~low_bits) == 0;
}

// Neighbours are joined to numbers of two digits, those to four, those to eight.
constexpr int32_t eight_digit_value(uint64_t word) {
    constexpr uint64_t low_8_of_16 = 0x00FF00FF00FF00FF, low_16_of_32 = 0x0000FFFF0000FFFF;
    word = (word >> 8 & low_8_of_16) * 10 + (word & low_8_of_16);
    word = (word >> 16 & low_16_of_32) * 100 + (word & low_16_of_32);
    return static_cast<int32_t>((word >> 32) * 10'000 + (word & UINT32_MAX));
}
static_assert(eight_digit_value(0x0102030405060708) == 12'345'678);

// Seconds of a clock's eight characters under XOR with ITV_CLOCK; -1 for hours above 23.
constexpr int32_t clock_seconds(uint64_t clock) {
    clock += (clock >> 8) * 10;  // no byte exceeds 99
    const auto hours = static_cast<int32_t>(clock >> 48 & 0xFF);
    const auto minutes = static_cast<int32_t>(clock >> 24 & 0xFF);
    const auto seconds = static_cast<int32_t>(clock & 0xFF);
    return hours > 23 ? -1 : hours * SEC_PER_HOUR + minutes * SEC_PER_MINUTE + seconds;
}
static_assert(clock_seconds(0x0203000509000509) == SEC_PER_DAY - 1);

// The fraction behind a clock, point included, as nanoseconds; -1: it is none. `text` ends at `end`, and has
// eight characters in front of it.
inline int32_t plain_fraction(const char *text, const char *end) {
    if (text == end) return 0;
    const int64_t digits = end - text - 1;
    if (*text != '.' || digits < 1 || digits > FRACTION_DIGITS) return -1;
    const int64_t first_digits = std::min<int64_t>(digits, 8);
    // They are loaded with what stands in front of them, which is shifted out.
    const uint64_t word = (load_eight(text + 1 + first_digits - 8) ^ ITV_EIGHT_DIGITS)
                          << (64 - 8 * first_digits);
    const uint8_t ninth = digits == FRACTION_DIGITS ? digit_of(end[-1]) : uint8_t{0};
    if (!has_bytes_up_to(word, ITV_EIGHT_DIGITS_MAX) || ninth > 9) return -1;
    return eight_digit_value(word) * 10 + ninth;
}

// The fields without the sign.
struct plain_dts_t {
    bool is_negative;
    int32_t days;
    int32_t seconds;
    int32_t nsec;
};

// False: it is no plain text, or has more digits of days than prec.
inline bool read_plain_dts(plain_dts_t &fields, const char *text, const char *end, int prec) {
    constexpr int64_t length_min = 1 + 9 + 1;  // sign and days and the blank can be looked at
    if (end - text < length_min) return false;
    fields.is_negative = *text == '-';
    text += int{fields.is_negative} | int{*text == '+'};
    // Not eight at once: texts of one origin have as many digits, and then where the clock stands is
    // foreseen.
    const char *const days_end = text + std::min(prec, 9);
    const char *clock = text;
    for (fields.days = 0; clock < days_end; ++clock) {
        const uint8_t digit = digit_of(*clock);
        if (digit > 9) break;
        fields.days = fields.days * 10 + digit;
    }
    if (clock == text || *clock != ' ') return false;
    ++clock;
    if (end - clock < 8) return false;
    const uint64_t clock_word = load_eight(clock) ^ ITV_CLOCK;
    if (!has_bytes_up_to(clock_word, ITV_CLOCK_RANGE)) return false;
    fields.seconds = clock_seconds(clock_word);
    fields.nsec = plain_fraction(clock + 8, end);
    return (fields.seconds | fields.nsec) >= 0;
}

}  // namespace dv::impl

#endif  // DV_INTERVAL_PLAIN_TEXT_H
