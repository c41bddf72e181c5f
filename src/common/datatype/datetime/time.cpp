// TIME: fields, checks, conversions that need no zone, order, the fraction.
//
// The ranges of its fields are those of DATE, in the same table (datetime_internal.h).

#include <cstring>

#include "datetime_internal.h"

using namespace dv::impl;

namespace {

void copy_time_part_(dv_time_t &time, const dv_timestamp_t &ts) {
    memmove(&time, &time_part(ts), sizeof time);
}

}  // namespace

void dv::impl::time_trim_fraction(dv_time_t &time, int fprec, const error_at &negative) {
    const auto fraction = static_cast<int32_t>(time_nanoseconds(time));
    const unit_range_t &range = range_of(DT_FMT_UNIT_FSEC);
    if (fraction < 0) raise(negative, range.word, fraction, range.shown_lowest, range.highest);
    time_set_nanoseconds(time, static_cast<uint32_t>(trimmed_fraction(fraction, fprec)));
}

extern "C" {

const dv_time_t null_dv_time = {};

int dv_time_get_field(const dv_time_t *time, dt_fmt_unit_t unit_type) {
    if (!is_given(time)) return 0;
    switch (unit_type) {
        case DT_FMT_UNIT_HOUR:
            return time->hour;
        case DT_FMT_UNIT_MINUTE:
            return time->minute;
        case DT_FMT_UNIT_SECOND:
            return time->second;
        case DT_FMT_UNIT_FSEC:
            return static_cast<int>(time_nanoseconds(*time));
        default:
            raise(DV_ERR_FIELD_UNSUPPORTED);
    }
}

void dv_time_set_field(dv_time_t *time, dt_fmt_unit_t unit_type, int value, uchar check_valid_input,
                       uchar check_valid_result) {
    if (!is_given(time)) return;
    if (check_valid_input != 0) dv_dt_check_validity_of_unit(unit_type, value);
    const auto byte = static_cast<uint8_t>(value);
    switch (unit_type) {
        case DT_FMT_UNIT_HOUR:
            time->hour = byte;
            break;
        case DT_FMT_UNIT_MINUTE:
            time->minute = byte;
            break;
        case DT_FMT_UNIT_SECOND:
            time->second = byte;
            break;
        case DT_FMT_UNIT_FSEC:
            time_set_nanoseconds(*time, static_cast<uint32_t>(value));
            break;
        default:
            raise(DV_ERR_FIELD_UNSUPPORTED);
    }
    if (check_valid_result != 0) dv_time_is_valid(time);
}

void dv_time_is_valid(dv_time_t *time) {
    if (!is_given(time)) return;
    check_clock(time->hour, time->minute, time->second);
}

void dv_time_from_unit_values(dv_time_t *time, int hour, int minute, int second, int fsec) {
    if (!is_given(time)) return;
    check_clock(hour, minute, second);
    check_unit(DT_FMT_UNIT_FSEC, fsec);
    time->hour = static_cast<uint8_t>(hour);
    time->minute = static_cast<uint8_t>(minute);
    time->second = static_cast<uint8_t>(second);
    time_set_nanoseconds(*time, static_cast<uint32_t>(fsec));
}

void dv_time_from_timestamp(dv_time_t *time, const dv_timestamp_t *ts) {
    if (!is_given(time) || !is_given(ts)) return;
    copy_time_part_(*time, *ts);
}

void dv_time_from_ts_tz(dv_time_t *time, const dv_ts_tz_t *ts_tz) {
    if (!is_given(time) || !is_given(ts_tz)) return;
    copy_time_part_(*time, ts_tz->utc);
}

void dv_time_from_ts_ltz(dv_time_t *time, const dv_ts_ltz_t *ts_ltz) {
    if (!is_given(time) || !is_given(ts_ltz)) return;
    copy_time_part_(*time, ts_ltz->utc);
}

void dv_time_from_date(dv_time_t *time, const dv_date_t *date) {
    if (!is_given(time) || !is_given(date)) return;
    *time = {date->hour, date->minute, date->second, date->dummy, {}};
}

void dv_time_current(dv_time_t *time) {
    if (!is_given(time)) return;
    const local_time_t now = local_time();
    *time = {static_cast<uint8_t>(now.hour),
             static_cast<uint8_t>(now.minute),
             static_cast<uint8_t>(now.second),
             0,
             {}};
    time_set_nanoseconds(*time, static_cast<uint32_t>(now.microsecond) * 1000);
}

int dv_time_compare(const dv_time_t *time1, const dv_time_t *time2) {
    if (time1 == NULL || time2 == NULL) return (time1 != NULL ? 1 : 0) - (time2 != NULL ? 1 : 0);
    return order_of(time_order_key(*time1), time_order_key(*time2));
}

double dv_time_to_double(const dv_time_t *time) {
    if (!is_given(time)) return 0;
    const int seconds = time->hour * SEC_PER_HOUR + time->minute * SEC_PER_MINUTE + time->second;
    const double fraction =
        time_nanoseconds(*time) * 1e-9;  // a statement of its own: never fused with the sum
    return seconds + fraction;
}

void dv_time_trim_fsec(dv_time_t *time, int fprec) {
    if (!is_given(time)) return;
    if (fprec < 0 || fprec > FRACTION_DIGITS) raise(DV_ERR_FRACTION_PRECISION);
    time_trim_fraction(*time, fprec, DV_ERR_FIELD_RANGE);
}

}  // extern "C"
