// ISO 8601 weeks: they begin on Monday, and week 1 is the one with the year's first Thursday.
//
// Weeks are counted from the lead of week 1 over 1 January and the day of the year, which counts the days
// that October 1582 lacks; so the weeks of that year's end are those of a year of 365 days.

#include "calendar_week.h"

using namespace dv::impl;

namespace {

// The calendar has no year 0.
int year_after_(int year) { return year == -1 ? 1 : year + 1; }
int year_before_(int year) { return year == 1 ? -1 : year - 1; }

int astronomical_(int year) { return year < 0 ? year + 1 : year; }

// Days at the end of December that lie in week 1 of the next year: 1 January on a Monday to Thursday brings
// the days of its week before it along.
int days_in_next_year_(int year) {
    const int lead = iso_week_1_lead(year_after_(year));
    return lead > 0 ? lead : 0;
}

int week_in_year_(const calendar_day_t &d) {
    return (day_of_year(d) + iso_week_1_lead(d.year) + DAYS_PER_WEEK - 1) / DAYS_PER_WEEK;
}

}  // namespace

iso_week_t dv::impl::iso_week_of(const calendar_day_t &d) {
    const int year = astronomical_(d.year);
    if (d.month == 12 && d.day > 31 - days_in_next_year_(d.year)) return {year + 1, 1};
    if (d.month == 1 && d.day + iso_week_1_lead(d.year) < 1) {
        return {year - 1, week_in_year_({year_before_(d.year), 12, 31})};
    }
    return {year, week_in_year_(d)};
}
