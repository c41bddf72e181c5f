// What is wrong with the bytes of a DATE or TIME that somebody else wrote.

#include "datetime_internal.h"

using namespace dv::impl;

namespace {

bool is_field_(dt_fmt_unit_e unit, int value) { return is_in_range(range_of(unit), value); }

// Is it the year of a DATE, in the one form of its two bytes?
bool has_year_(const dv_date_t &date) {
    dv_date_t canonical{};
    date_set_year(canonical, date_year(date));
    return is_field_(DT_FMT_UNIT_YEAR, date_year(date)) && canonical.century == date.century;
}

template <typename Record>
bool has_time_of_day_(const Record &x) {
    return is_field_(DT_FMT_UNIT_HOUR, x.hour) && is_field_(DT_FMT_UNIT_MINUTE, x.minute) &&
           is_field_(DT_FMT_UNIT_SECOND, x.second);
}

}  // namespace

extern "C" const char *dv_date_get_fault(const dv_date_t *date) {
    if (!is_given(date)) return nullptr;
    if (!has_year_(*date)) return "it has no year of a DATE";
    if (!is_month(date->month)) return "its month is out of range";
    if (date->day < 1 || date->day > date_month_length(*date)) return "its month does not have its day";
    if (is_in_calendar_gap(date_calendar_day(*date))) return "its day was left out of October 1582";
    return has_time_of_day_(*date) ? nullptr : "its time of day is out of range";
}

extern "C" const char *dv_time_get_fault(const dv_time_t *time) {
    if (!is_given(time)) return nullptr;
    if (time->dummy != 0) return "the fourth byte of a TIME is not 0";
    if (time_nanoseconds(*time) >= NSEC_PER_SEC) return "its fraction of a second is out of range";
    return has_time_of_day_(*time) ? nullptr : "its time of day is out of range";
}
