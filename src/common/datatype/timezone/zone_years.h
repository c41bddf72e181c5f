// Histories by year: the rows that tzgen makes so that the offset in force is found fast. tzgen and the
// library share this file.
//
// Of each history and year there are two rows, one for times in UTC and one for local times: at most two
// changes of the offset, and the offsets behind, between and before them. Few rows differ, because they leave
// out the year; ZONE_YEARS has their numbers. A row is one line of the cache. What a row cannot tell is
// looked up in the history: years with more changes, local times that clocks showed twice or never, other
// years.

#ifndef DV_ZONE_YEARS_H
#define DV_ZONE_YEARS_H

#include "../bytes.h"
#include "dvtypes/timezone.h"

namespace dv::impl {

// Times are words: a DATE's bytes as one integer, the century highest.
inline constexpr int WORD_DAY_AT = 32, WORD_HOUR_AT = 24, WORD_MINUTE_AT = 16;

// What is left of a word without its year; compared as times of one year.
constexpr uint64_t word_in_year(uint64_t word) { return word << 16; }

// An offset that is added to a word: days, hours and minutes as bytes. With the hour goes 232, with the
// minute 196, so that a sum of 24 or 60 carries by itself and leaves the rest; what did not carry has bit 7
// set, and gets the 232 or 196 subtracted.
inline constexpr int HOUR_CARRY = 256 - 24, MINUTE_CARRY = 256 - 60;

constexpr int32_t clock_shift(int minutes) {  // less than a day either way
    const int days = minutes < 0 ? -1 : 0, of_day = minutes - days * 24 * 60;
    return days * 0x10000 + (of_day / 60 + HOUR_CARRY) * 0x100 + of_day % 60 + MINUTE_CARRY;
}

struct zone_period_t {
    int32_t shift;      // a clock_shift, of the row's kind of time to the other
    uint8_t offset[2];  // hour and minute as a zone record has them
    uint8_t unused[2];
};

struct alignas(64) zone_year_t {
    uint64_t begin[2];         // times of the year: the last change, and the one before
    uint64_t plain[3];         // from here on a time of the period has one meaning
    zone_period_t periods[3];  // from begin[0], from begin[1], from the year's beginning
};
static_assert(sizeof(zone_year_t) == 64);

// Numbers of rows; 0 is a row whose times have no one meaning.
struct zone_year_rows_t {
    uint16_t utc, local;
};

// Years by the two bytes of a year, less those of the first; some between are no years.
inline constexpr int ZONE_YEAR_FIRST = 1900, ZONE_YEAR_LAST = 2050;
constexpr int zone_year_index(int year) {
    const auto bytes = [](int y) { return (y / 100 + 100) * 256 + (y % 100 + 100); };
    return bytes(year) - bytes(ZONE_YEAR_FIRST);
}
static_assert(zone_year_index(1999) == 99 && zone_year_index(2000) == 256);
inline constexpr int ZONE_YEAR_COUNT = zone_year_index(ZONE_YEAR_LAST) + 1;

// Values of the first byte of a zone's number that regions have. Numbers that are no region's have years
// without rows.
inline constexpr int ZONE_ID_PAGES = (TZ_ID_MAX - 1) / 256 + 1;

}  // namespace dv::impl

#endif  // DV_ZONE_YEARS_H
