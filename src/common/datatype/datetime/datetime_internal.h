// What the DATE and TIME area offers to itself across files and to other areas, beyond the public header.
//
// Those who read or write many fields of a record do it directly (date.month, date_year, date_set_calendar,
// ... of datetime_layout.h, unchecked) and check with check_unit and the like; calendar.h has the calendar in
// plain integers.

#ifndef DV_DATETIME_INTERNAL_H
#define DV_DATETIME_INTERNAL_H

#include <bit>

#include "../error.h"
#include "calendar.h"
#include "datetime_layout.h"

namespace dv::impl {

// ---- arguments: false, after the assertion, for NULL ----

inline bool is_given(const dv_date_t *date) { return DV_ASSERT(date != NULL); }
inline bool is_given(const dv_time_t *time) { return DV_ASSERT(time != NULL); }
inline bool is_given(const dv_timestamp_t *ts) { return DV_ASSERT(ts != NULL); }
inline bool is_given(const dv_ts_tz_t *ts_tz) { return DV_ASSERT(ts_tz != NULL); }
inline bool is_given(const dv_ts_ltz_t *ts_ltz) { return DV_ASSERT(ts_ltz != NULL); }

// ---- checks ----

// One row per field, in the order of the bits DT_FMT_UNIT_YEAR to DT_FMT_UNIT_FSEC.
struct unit_range_t {
    const char *word;  // in messages
    int shown_lowest;  // in messages
    int lowest, highest;
    bool has_zero;
};
// clang-format off
inline constexpr unit_range_t UNIT_RANGES[] = {
    {"year",              -4713, DV_YEAR_MIN, DV_YEAR_MAX,        false},
    {"month",                 1,           1, MONTHS_PER_YEAR,    false},
    {"day",                   1,           1, 31,                 false},
    {"hour",                  0,           0, HOURS_PER_DAY - 1,    true},
    {"minute",                0,           0, MINUTES_PER_HOUR - 1, true},
    {"second",                0,           0, SEC_PER_MINUTE - 1,   true},
    {"fractional second",     0,           0, NSEC_PER_SEC - 1,     true},
};
// clang-format on
static_assert(1 << (std::size(UNIT_RANGES) - 1) == DT_FMT_UNIT_FSEC);

constexpr bool has_range(dt_fmt_unit_t unit) {  // exactly one of those bits
    return unit > 0 && unit <= DT_FMT_UNIT_FSEC && (unit & (unit - 1)) == 0;
}
constexpr const unit_range_t &range_of(dt_fmt_unit_t unit) {  // has_range(unit)
    return UNIT_RANGES[std::countr_zero(static_cast<uint32_t>(unit))];
}
constexpr bool is_in_range(const unit_range_t &range, int value) {
    return value >= range.lowest && value <= range.highest && (value != 0 || range.has_zero);
}

// dv_dt_check_validity_of_unit, inline for a unit that is a constant.
inline void check_unit(dt_fmt_unit_e unit, int value) {
    if (is_in_range(range_of(unit), value)) return;
    dv_dt_check_validity_of_unit(unit, value);
    __builtin_unreachable();  // it has raised; so no caller saves registers for it
}

inline void check_calendar(int year, int month, int day) {
    check_unit(DT_FMT_UNIT_YEAR, year);
    check_unit(DT_FMT_UNIT_MONTH, month);
    check_unit(DT_FMT_UNIT_DAY, day);
}
inline void check_clock(int hour, int minute, int second) {
    check_unit(DT_FMT_UNIT_HOUR, hour);
    check_unit(DT_FMT_UNIT_MINUTE, minute);
    check_unit(DT_FMT_UNIT_SECOND, second);
}

// Are all fields in their ranges, and the day in its month and after the reform? Nearly always, and told in a
// third of the time of the checks (benchmarks trunc/month and read/day_first).
inline bool is_plain_date(const calendar_day_t &day, int hour, int minute, int second) {
    constexpr int of_every_month = 28;
    return day.year > GREGORIAN_YEAR && day.year <= DV_YEAR_MAX && is_month(day.month) && day.day >= 1 &&
           (day.day <= of_every_month || day.day <= month_length(day.year, day.month)) &&
           hour < HOURS_PER_DAY && minute < MINUTES_PER_HOUR && second < SEC_PER_MINUTE;
}

// dv_date_is_valid.
inline void check_date(dv_date_t &date) {
    const calendar_day_t day = {date_year(date), date.month, date.day};
    if (!is_plain_date(day, date.hour, date.minute, date.second)) dv_date_is_valid(&date);
}

// ---- the present, by the host's dv_getlocaltime ----

struct local_time_t {
    int year, month, day, hour, minute, second, microsecond;
};

inline local_time_t local_time() {
    local_time_t now{};
    dv_getlocaltime(&now.year, &now.month, &now.day, &now.hour, &now.minute, &now.second, &now.microsecond);
    return now;
}

// ---- day numbers; fields of any bytes ----

constexpr calendar_day_t date_calendar_day(const dv_date_t &date) {
    return {date_year(date), date.month, date.day};
}
constexpr int date_month_length(const dv_date_t &date) { return month_length(date_year(date), date.month); }
constexpr bool date_is_last_of_month(const dv_date_t &date) { return date.day == date_month_length(date); }

// Days are rarely older than the reform; those that are go out of line.
int early_date_day_number(const dv_date_t &date);            // up to 1582; year 0 is an assertion
void date_set_julian_day(dv_date_t &date, uint32_t number);  // 0..DV_JULIAN_DAY_GREGORIAN - 1

inline int date_day_number(const dv_date_t &date) {
    const int year = date_year(date);
    if (year <= GREGORIAN_YEAR) [[unlikely]]
        return early_date_day_number(date);
    return gregorian_day_number(year, date.month, date.day);
}

// Of a number that was signed, too: a negative one is far above.
constexpr bool is_day_number(uint64_t number) { return number <= DV_JULIAN_DAY_MAX; }

inline void date_set_day_number(dv_date_t &date, uint32_t number) {  // is_day_number(number)
    if (number < DV_JULIAN_DAY_GREGORIAN) [[unlikely]]
        return date_set_julian_day(date, number);
    date_set_packed_day(date, gregorian_day(number));
}

// Adds whole days. Raises -5114 as dv_date_add_day, the date unchanged.
void date_add_days(dv_date_t &date, int64_t days);

// Cuts a fraction to fprec digits (trimmed_fraction). Raises `negative` for one of 2^31 and above, which is
// no int.
void time_trim_fraction(dv_time_t &time, int fprec, const error_at &negative);

// Seconds since midnight.
constexpr int date_second_of_day(const dv_date_t &date) {
    return date.hour * SEC_PER_HOUR + date.minute * SEC_PER_MINUTE + date.second;
}

}  // namespace dv::impl

#endif  // DV_DATETIME_INTERNAL_H
