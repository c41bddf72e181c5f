// The fields of a DATE: reading, storing, checking.
//
// Ranges of single fields are rows of one table (datetime_internal.h), which serves TIME and timestamps too.
// The whole record is valid when its fields are, and its day exists in its month; the ten days that the
// calendar reform left out are moved to the day after it.

#include "datetime_internal.h"

using namespace dv::impl;

extern "C" {

void dv_dt_check_validity_of_unit(dt_fmt_unit_t unit, int value) {
    if (!has_range(unit)) {
        DV_ASSERT(false);
        return;
    }
    const unit_range_t &range = range_of(unit);
    if (!is_in_range(range, value)) {
        raise(DV_ERR_FIELD_RANGE, range.word, value, range.shown_lowest, range.highest);
    }
}

int dv_date_get_field(const dv_date_t *date, dt_fmt_unit_t unit) {
    if (!is_given(date)) return 0;
    switch (unit) {
        case DT_FMT_UNIT_YEAR:
            return date_year(*date);
        case DT_FMT_UNIT_MONTH:
            return date->month;
        case DT_FMT_UNIT_DAY:
            return date->day;
        case DT_FMT_UNIT_HOUR:
            return date->hour;
        case DT_FMT_UNIT_MINUTE:
            return date->minute;
        case DT_FMT_UNIT_SECOND:
            return date->second;
        default:
            raise(DV_ERR_FIELD_UNSUPPORTED);
    }
}

void dv_date_set_field(dv_date_t *date, dt_fmt_unit_t unit_type, int value, uchar check_valid_input,
                       uchar check_valid_result) {
    if (!is_given(date)) return;
    if (check_valid_input != 0) dv_dt_check_validity_of_unit(unit_type, value);
    const auto byte = static_cast<uint8_t>(value);
    switch (unit_type) {
        case DT_FMT_UNIT_YEAR:
            date_set_year(*date, value);
            break;
        case DT_FMT_UNIT_MONTH:
            date->month = byte;
            break;
        case DT_FMT_UNIT_DAY:
            date->day = byte;
            break;
        case DT_FMT_UNIT_HOUR:
            date->hour = byte;
            break;
        case DT_FMT_UNIT_MINUTE:
            date->minute = byte;
            break;
        case DT_FMT_UNIT_SECOND:
            date->second = byte;
            break;
        default:
            raise(DV_ERR_FIELD_UNSUPPORTED);
    }
    if (check_valid_result != 0) dv_date_is_valid(date);
}

void dv_date_is_valid(dv_date_t *date) {
    if (!is_given(date)) return;
    const calendar_day_t d = date_calendar_day(*date);
    check_unit(DT_FMT_UNIT_YEAR, d.year);
    check_unit(DT_FMT_UNIT_MONTH, d.month);
    const int last_day = month_length(d.year, d.month);
    if (d.day < 1 || d.day > last_day) raise(DV_ERR_FIELD_RANGE, "day", d.day, 1, last_day);
    check_clock(date->hour, date->minute, date->second);
    if (is_in_calendar_gap(d)) date->day = GREGORIAN_DAY;
}

int dt_fmt_get_days_of_mon(int year, int month) {
    DV_ASSERT(month >= 1);
    DV_ASSERT(month <= 12);
    return month_length(year, month);
}

}  // extern "C"
