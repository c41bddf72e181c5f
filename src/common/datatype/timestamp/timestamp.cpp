// TIMESTAMP: fields, making one, order, the fraction. Each is what DATE does on the first eight bytes of the
// record and TIME on the last eight, which share the hour, minute and second.

#include <cstring>

#include "../datetime/datetime_internal.h"
#include "timestamp_layout.h"

using namespace dv::impl;

extern "C" {

const dv_timestamp_t null_dv_timestamp = {};

int dv_timestamp_get_field(const dv_timestamp_t *ts, dt_fmt_unit_t unit_type) {
    if (!DV_ASSERT(ts != NULL)) return 0;
    switch (unit_type) {
        case DT_FMT_UNIT_YEAR:
        case DT_FMT_UNIT_MONTH:
        case DT_FMT_UNIT_DAY:
            return dv_date_get_field(&date_part(*ts), unit_type);
        case DT_FMT_UNIT_HOUR:
        case DT_FMT_UNIT_MINUTE:
        case DT_FMT_UNIT_SECOND:
        case DT_FMT_UNIT_FSEC:
            return dv_time_get_field(&time_part(*ts), unit_type);
        default:
            raise(DV_ERR_FIELD_UNSUPPORTED);
    }
}

void dv_timestamp_set_field(dv_timestamp_t *ts, dt_fmt_unit_t unit_type, int value, uchar check_valid_input,
                            uchar check_valid_result) {
    if (!DV_ASSERT(ts != NULL)) return;
    switch (unit_type) {
        case DT_FMT_UNIT_YEAR:
        case DT_FMT_UNIT_MONTH:
        case DT_FMT_UNIT_DAY:
            return dv_date_set_field(&date_part(*ts), unit_type, value, check_valid_input,
                                     check_valid_result);
        case DT_FMT_UNIT_HOUR:
        case DT_FMT_UNIT_MINUTE:
        case DT_FMT_UNIT_SECOND:
        case DT_FMT_UNIT_FSEC:
            return dv_time_set_field(&time_part(*ts), unit_type, value, check_valid_input,
                                     check_valid_result);
        default:
            raise(DV_ERR_FIELD_UNSUPPORTED);
    }
}

void dv_timestamp_from_unit_values(dv_timestamp_t *ts, int year, int month, int day, int hour, int min,
                                   int second, int fsec) {
    if (!DV_ASSERT(ts != NULL)) return;
    dv_date_from_unit_values(&date_part(*ts), year, month, day, hour, min, second);
    check_unit(DT_FMT_UNIT_FSEC, fsec);
    time_set_nanoseconds(time_part(*ts), static_cast<uint32_t>(fsec));
}

void dv_timestamp_from_date(dv_timestamp_t *ts, const dv_date_t *date) {
    if (!DV_ASSERT(ts != NULL) || !DV_ASSERT(date != NULL)) return;
    memmove(&date_part(*ts), date, sizeof *date);
    time_set_nanoseconds(time_part(*ts), 0);
    dv_time_is_valid(&time_part(*ts));
}

void dv_timestamp_current(dv_timestamp_t *ts) {
    if (!DV_ASSERT(ts != NULL)) return;
    const local_time_t now = local_time();
    date_set_calendar(date_part(*ts), now.year, now.month, now.day);
    date_set_clock(date_part(*ts), now.hour, now.minute, now.second);
    time_set_nanoseconds(time_part(*ts), static_cast<uint32_t>(now.microsecond) * 1000);
}

int dv_timestamp_compare(const dv_timestamp_t *ts1, const dv_timestamp_t *ts2) {
    return timestamp_order(ts1, ts2);
}

void dv_timestamp_trim_fsec(dv_timestamp_t *ts, int fprec) {
    if (!DV_ASSERT(ts != NULL)) return;
    if (fprec < 0 || fprec > FRACTION_DIGITS) raise(DV_ERR_FRACTION_PRECISION);
    time_trim_fraction(time_part(*ts), fprec, DV_ERR_FIELD_RANGE);
}

}  // extern "C"
