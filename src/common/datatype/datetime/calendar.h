// The calendar in integers: leap years, month lengths, Julian Day Numbers both ways, weekdays.
//
// The calendar is Julian up to 1582-10-04 (day number 2299160) and Gregorian from 1582-10-15 on. Years are
// signed without a year 0. Day numbers: Meeus, Astronomical Algorithms, 2nd ed., chapter 7, whose products
// and quotients of decimal fractions (365.25, 30.6001, 36524.25) are taken here as exact quotients of
// integers: none of those fractions comes closer to an integer than 1/146097 without being one, so a double
// truncates to the same integer.
//
// The formulas have a leap day every fourth year all the way down; the leap rule, which month lengths follow,
// only from 1 AD on. So a day number can stand for February 29 of 1 BC, 5 BC, ..., which the leap rule does
// not know, and February 29 of 12 BC, 15 BC, ... has the day number of March 1.

#ifndef DV_DATETIME_CALENDAR_H
#define DV_DATETIME_CALENDAR_H

#include <array>
#include <cstdint>

#include "../time_units.h"
#include "dvtypes/datetime.h"

namespace dv::impl {

inline constexpr int GREGORIAN_YEAR = 1582;  // the year of the reform, in its October, from day 15
inline constexpr int GREGORIAN_MONTH = 10;
inline constexpr int GREGORIAN_DAY = 15;
inline constexpr int LAST_JULIAN_DAY = 4;

struct calendar_day_t {
    int year, month, day;
    bool operator==(const calendar_day_t &) const = default;
};

constexpr bool is_leap_year(int year) {
    if (year > GREGORIAN_YEAR) return (year & (year % 25 != 0 ? 3 : 15)) == 0;  // by 4, not 100, or by 400
    if (year > 0) return year % 4 == 0;
    return year >= -46 && year < -8 && year % 3 == 0;  // as the first leap years were counted, -45 to -9
}

// By is_leap_year and month - 1.
inline constexpr uint8_t MONTH_LENGTHS[2][MONTHS_PER_YEAR] = {
    {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31},
    {31, 29, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31},
};

constexpr bool is_month(int month) { return month >= 1 && month <= MONTHS_PER_YEAR; }

// 0 for a month that is none.
constexpr int month_length(int year, int month) {
    return is_month(month) ? MONTH_LENGTHS[is_leap_year(year) ? 1 : 0][month - 1] : 0;
}

// Between 1582-10-04 and 1582-10-15.
constexpr bool is_in_calendar_gap(const calendar_day_t &d) {
    return d.year == GREGORIAN_YEAR && d.month == GREGORIAN_MONTH && d.day > LAST_JULIAN_DAY &&
           d.day < GREGORIAN_DAY;
}

// Year and month when January and February count as months 13 and 14 of the year before, so that a leap day
// is the last of its year. Months are hard to predict: a mask of all ones or 0 instead of a branch.
constexpr void begin_year_in_march(int &year, int &month) {
    const int is_early = (month - 3) >> 31;
    year += is_early;
    month += is_early & MONTHS_PER_YEAR;
}
constexpr void begin_year_in_january(int &year, int &month) {
    const int is_early = (MONTHS_PER_YEAR - month) >> 31;
    year -= is_early;
    month -= is_early & MONTHS_PER_YEAR;
}

// 306001 * k / 10000, the days of k months of 30.6001 days, for every k that a month in a byte makes.
constexpr uint32_t month_days(uint32_t k) { return 31335 * k >> 10; }
static_assert([] {
    for (uint32_t k = 0; k <= 255 + MONTHS_PER_YEAR + 1; ++k) {
        if (month_days(k) != 306001 * k / 10000) return false;
    }
    return true;
}());

// Of the Gregorian calendar, with a month and day of any bytes. The 4716 years that the formulas go back are
// a multiple of four, so they are a number of days that does not depend on the year.
constexpr int gregorian_day_number(int year, int month, int day) {  // after 1582
    constexpr int from_day_0 = 1461 * 4716 / 4 + 2 - 1524;
    begin_year_in_march(year, month);
    const auto y = static_cast<uint32_t>(year);  // unsigned quotients take fewer steps
    const uint32_t century = y / 100;
    const uint32_t days = 1461 * y / 4 - century + century / 4 + month_days(static_cast<uint32_t>(month + 1));
    return static_cast<int>(days) + day + from_day_0;
}

// Of any fields that bytes can hold; a day in the gap counts as 1582-10-15.
constexpr int day_number(calendar_day_t d) {
    // Orders dates as long as month and day stay below 256.
    constexpr auto rank = [](int y, int m, int day) { return (y * 256 + m) * 256 + day; };
    const int rank_of_d = rank(d.year, d.month, d.day);
    if (rank_of_d <= rank(GREGORIAN_YEAR, GREGORIAN_MONTH, LAST_JULIAN_DAY)) {
        if (d.year < 0) ++d.year;
        begin_year_in_march(d.year, d.month);
        // toward zero below the year -4716 too
        return 1461 * (d.year + 4716) / 4 + 306001 * (d.month + 1) / 10000 + d.day - 1524;
    }
    if (rank_of_d < rank(GREGORIAN_YEAR, GREGORIAN_MONTH, GREGORIAN_DAY)) d.day = GREGORIAN_DAY;
    return gregorian_day_number(d.year, d.month, d.day);
}

// Of any day number, by the formulas; fields are out of range far below 0, and years from 10000 on.
constexpr calendar_day_t calendar_day_of_any(int number) {
    int64_t julian = number;  // the day number with the leap days that Gregorian years leave out put back
    if (number >= DV_JULIAN_DAY_GREGORIAN) {
        const int64_t century = (4 * julian - 7468865) / 146097;
        julian += 1 + century - century / 4;
    }
    const int64_t b = julian + 1524;
    const int64_t year_from_march = (20 * b - 2442) / 7305;
    const int64_t day_of_year = b - 1461 * year_from_march / 4;
    const int64_t e = 10000 * day_of_year / 306001;
    const int64_t month = e < 14 ? e - 1 : e - 13;
    const int64_t year = year_from_march - (month < 3 ? 4715 : 4716);
    const int64_t day = day_of_year - 306001 * e / 10000;
    return {static_cast<int>(year < 1 ? year - 1 : year), static_cast<int>(month), static_cast<int>(day)};
}

// Month (3..14, counted from March) and day of a day of the year that begins in March, 0..365: two
// multiplications instead of the divisions by 30.6001. Constants: Neri and Schneider, Euclidean affine
// functions and their application to calendar algorithms, Software: Practice and Experience 53 (2023).
struct march_day_t {
    uint32_t month, day;
};
constexpr march_day_t march_day(uint32_t day_of_year) {
    const uint32_t scaled = 2141 * day_of_year + 197913;
    return {scaled >> 16, (scaled & 0xFFFF) / 2141 + 1};
}
static_assert([] {
    for (uint32_t i = 0; i < 366; ++i) {
        const uint32_t e = 10000 * (i + 123) / 306001;
        const march_day_t d = march_day(i);
        if (d.month != e - 1 || d.day != i + 123 - 306001 * e / 10000) return false;
    }
    return true;
}());

// A day as four digits of base 256, the century, the year in it, the month and the day: the order of a
// record.
constexpr uint32_t packed_day(uint32_t century, uint32_t year, uint32_t month, uint32_t day) {
    return ((century * 256 + year) * 256 + month) * 256 + day;
}

// The days of the year that begins in March, packed; January and February lie in the year 1. A load instead
// of march_day and the turn of the year halves the time of a Gregorian day (datetime_bench, round trip).
inline constexpr auto PACKED_MARCH_DAYS = [] {
    std::array<uint32_t, 366> days{};
    for (uint32_t i = 0; i < days.size(); ++i) {
        const auto [month, day] = march_day(i);
        days[i] = month > MONTHS_PER_YEAR ? packed_day(0, 1, month - MONTHS_PER_YEAR, day)
                                          : packed_day(0, 0, month, day);
    }
    return days;
}();

// A Gregorian day, packed. Days are counted from March 1 of the year 0 (day number 1721120): with n of them,
// the century is (4 * n + 3) / 146097, the quarters of days left over are those of the century, and its year
// is found the same way. January and February of a year 99 begin the next century.
constexpr uint32_t gregorian_day(uint32_t number) {  // DV_JULIAN_DAY_GREGORIAN..DV_JULIAN_DAY_MAX
    constexpr uint32_t carry = packed_day(1, 0, 0, 0) - packed_day(0, 100, 0, 0);
    const uint32_t quarter_days = 4 * (number - 1721120) + 3;
    const uint32_t of_century = quarter_days % 146097 | 3;
    const uint32_t year = packed_day(quarter_days / 146097, of_century / 1461, 0, 0);
    const uint32_t day = year + PACKED_MARCH_DAYS[of_century % 1461 / 4];
    return (day >> 16 & 255) < 100 ? day : day + carry;
}

// A Julian day: n days from March 1 of the year -4716 (day number -1401), (4 * n + 3) / 1461 years. The
// formulas' (b - 122.1) / 365.25 is (4 * n + 3.6) / 1461, which has the same integer part.
constexpr calendar_day_t julian_day(uint32_t number) {  // 0..DV_JULIAN_DAY_GREGORIAN - 1
    const uint32_t quarter_days = 4 * (number + 1401) + 3;
    const march_day_t d = march_day(quarter_days % 1461 / 4);
    int year = static_cast<int>(quarter_days / 1461) - 4716;
    auto month = static_cast<int>(d.month);
    begin_year_in_january(year, month);
    return {year < 1 ? year - 1 : year, month, static_cast<int>(d.day)};
}

// 0 (Monday) to 6, below day number 0 too.
constexpr int weekday(int number) {
    const int rest = number % DAYS_PER_WEEK;
    return rest < 0 ? rest + DAYS_PER_WEEK : rest;
}

static_assert(weekday(0) == 0 && weekday(-1) == 6 && weekday(-7) == 0);
static_assert(day_number({-4713, 1, 1}) == 0 && julian_day(0) == calendar_day_t{-4713, 1, 1});
static_assert(day_number({1582, 10, 4}) == DV_JULIAN_DAY_GREGORIAN - 1);
static_assert(day_number({1582, 10, 15}) == DV_JULIAN_DAY_GREGORIAN && weekday(DV_JULIAN_DAY_GREGORIAN) == 4);
static_assert(day_number({9999, 12, 31}) == DV_JULIAN_DAY_MAX);

}  // namespace dv::impl

#endif  // DV_DATETIME_CALENDAR_H
