// A DATE as one integer, its eight bytes with the century highest: compared as a time, moved by minutes.
//
// Day, hour and minute are changed where they stand in the word, as long as the clock is in range and the day
// that comes out is one that every such month has; then the word is that of dv_date_add_field, whatever the
// other bytes are. The rest is left to the latter.

#ifndef DV_DATE_WORD_H
#define DV_DATE_WORD_H

#include <algorithm>
#include <array>

#include "../datetime/datetime_internal.h"
#include "zone_years.h"

namespace dv::impl {

inline constexpr int WORD_MONTH_AT = WORD_DAY_AT + 8;

// Of the day before a month: its other bytes are 0.
constexpr uint64_t date_word(int century, int year, int month) {
    const auto at = [](int byte, int index) { return static_cast<uint64_t>(byte) << (56 - 8 * index); };
    return at(century, 0) | at(year, 1) | at(month, 2);
}
constexpr uint64_t date_word(const dv_date_t &date) { return eight_bytes_of(date); }

// Shifted by a clock_shift, for a clock in range.
constexpr uint64_t shifted_clock(uint64_t word, int32_t shift) {
    constexpr uint64_t bit_7 = uint64_t{0x80} << WORD_MINUTE_AT | uint64_t{0x80} << WORD_HOUR_AT,
                       carries = uint64_t{MINUTE_CARRY} << WORD_MINUTE_AT | uint64_t{HOUR_CARRY}
                                                                                << WORD_HOUR_AT;
    const uint64_t sum = word + (static_cast<uint64_t>(int64_t{shift}) << WORD_MINUTE_AT);
    const uint64_t not_carried = sum & bit_7;
    const uint64_t bytes_not_carried = 2 * not_carried - (not_carried >> 7);
    return sum - (bytes_not_carried & carries);
}

// Whether hour and minute are in range: from the end of its range on, a field gets bit 7 by what 128 is more.
constexpr bool has_clock(uint64_t word) {
    constexpr uint32_t bit_7 = 0x80u << WORD_MINUTE_AT | 0x80u << WORD_HOUR_AT,
                       to_bit_7 = (128u - MINUTES_PER_HOUR) << WORD_MINUTE_AT | (128u - HOURS_PER_DAY)
                                                                                    << WORD_HOUR_AT;
    const auto fields = static_cast<uint32_t>(word);
    return (((fields + to_bit_7) | fields) & bit_7) == 0;
}

// By month, days that it has in every year; none for what is no month.
inline constexpr auto CERTAIN_DAYS = [] {
    std::array<uint8_t, 256> days{};
    std::copy_n(MONTH_LENGTHS[0], MONTHS_PER_YEAR, days.begin() + 1);
    return days;
}();

// Whether a shifted word is right; the clock was in range.
constexpr bool has_certain_day(uint64_t shifted, uint8_t month) {
    return static_cast<uint8_t>((shifted >> WORD_DAY_AT) - 1) < CERTAIN_DAYS[month];
}

inline void store_date_word(dv_date_t &date, uint64_t word) { store_be64(&date.century, word); }

// Shifted by a clock_shift, whatever the day. False for a date that is none, or not of 1600 to 9998.
bool shift_date(dv_date_t &date, int32_t shift);

}  // namespace dv::impl

#endif  // DV_DATE_WORD_H
