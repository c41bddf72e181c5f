// Days of the year, weeks and quarters: what the writer of a date and its truncation count alike.

#ifndef DV_CALENDAR_WEEK_H
#define DV_CALENDAR_WEEK_H

#include "../datetime/datetime_internal.h"

namespace dv::impl {

// 1..366. The ten days that October 1582 lacks are counted, and stand for the 15th where a record has one.
constexpr int day_of_year(const calendar_day_t &d) {
    int days = is_in_calendar_gap(d) ? GREGORIAN_DAY : d.day;
    for (int month = 1; month < d.month; ++month) days += month_length(d.year, month);
    return days;
}

// How far ISO week 1 of a year reaches beyond 1 January: it begins so many days before (0..3) or, negative,
// after it (-3..-1), on the Monday of the week that has the year's first Thursday.
constexpr int iso_week_1_lead(int year) {
    const int first = weekday(day_number({year, 1, 1}));  // 0 is Monday
    return first <= 3 ? first : first - DAYS_PER_WEEK;
}

// The week of ISO 8601, and the year that it belongs to, counted astronomically (1 BC is 0, 2 BC is -1).
struct iso_week_t {
    int year;
    int week;  // 1..53
};

iso_week_t iso_week_of(const calendar_day_t &d);

}  // namespace dv::impl

#endif  // DV_CALENDAR_WEEK_H
