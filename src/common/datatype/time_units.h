// Units of time as numbers, and the nine decimal digits of a fraction of a second, for every area.

#ifndef DV_DATATYPE_TIME_UNITS_H
#define DV_DATATYPE_TIME_UNITS_H

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>

namespace dv::impl {

inline constexpr int MONTHS_PER_YEAR = 12;
inline constexpr int DAYS_PER_WEEK = 7;
inline constexpr int HOURS_PER_DAY = 24;
inline constexpr int MINUTES_PER_HOUR = 60;
inline constexpr int SEC_PER_MINUTE = 60;
inline constexpr int SEC_PER_HOUR = SEC_PER_MINUTE * MINUTES_PER_HOUR;
inline constexpr int SEC_PER_DAY = SEC_PER_HOUR * HOURS_PER_DAY;
inline constexpr int NSEC_PER_SEC = 1'000'000'000;
inline constexpr int FRACTION_DIGITS = 9;

inline constexpr auto DECIMAL_POWERS = [] {
    std::array<int64_t, 11> powers{1};
    for (size_t i = 1; i < powers.size(); ++i) powers[i] = powers[i - 1] * 10;
    return powers;
}();
static_assert(DECIMAL_POWERS[FRACTION_DIGITS] == NSEC_PER_SEC);

// 10 to the power of `digits`, 0..9.
constexpr int32_t decimal_power(int digits) {
    return static_cast<int32_t>(DECIMAL_POWERS[static_cast<size_t>(digits)]);
}

constexpr uint32_t magnitude_of(int32_t value) {
    return value < 0 ? 0 - static_cast<uint32_t>(value) : static_cast<uint32_t>(value);
}

// Decimal digits of a magnitude; none for 0.
constexpr int digit_count_of(uint32_t magnitude) {
    const int guess = std::bit_width(magnitude) * 1233 >> 12;  // 1233 / 4096 is log10(2): as many or one less
    return guess + (magnitude >= static_cast<uint64_t>(DECIMAL_POWERS[static_cast<size_t>(guess)]) ? 1 : 0);
}

// Keeps the first fprec characters of the nanoseconds' text as "%d" writes it, cut to nine characters, and
// makes the others 0. A value that this leaves alone stays, also where it has more than nine characters.
constexpr int32_t trimmed_fraction(int32_t nsec, int fprec) {
    if (nsec >= NSEC_PER_SEC) return nsec;
    const int sign_length = nsec < 0 ? 1 : 0;
    const int digits = digit_count_of(magnitude_of(nsec));
    const int shown_digits = std::min(digits, FRACTION_DIGITS - sign_length);
    const int zero_digits = shown_digits - std::max(fprec - sign_length, 0);
    if (zero_digits <= 0) return nsec;
    const int32_t shown = nsec / decimal_power(digits - shown_digits), unit = decimal_power(zero_digits);
    return shown % unit == 0 ? nsec : shown - shown % unit;
}

}  // namespace dv::impl

#endif  // DV_DATATYPE_TIME_UNITS_H
