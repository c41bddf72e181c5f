// TIMESTAMP WITH LOCAL TIME ZONE: an instant in UTC, made of and shown as local time of the session's zone.

#include "../timezone/timezone_internal.h"
#include "dvtypes/timestamp_tz.h"
#include "timestamp_layout.h"

using namespace dv::impl;

extern "C" {

const dv_ts_ltz_t null_dv_ts_ltz = {};

void dv_ts_ltz_from_unit_values(dv_ts_ltz_t *ts_ltz, int year, int month, int day, int hour, int min,
                                int second, int fsec, const timezone_t *sess_tz) {
    if (!DV_ASSERT(ts_ltz != NULL) || !DV_ASSERT(sess_tz != NULL)) return;
    dv_ts_tz_t zoned = {ts_ltz->utc, *sess_tz};
    dv_ts_tz_from_unit_values(&zoned, year, month, day, hour, min, second, fsec, sess_tz);
    ts_ltz->utc = zoned.utc;
}

void dv_ts_ltz_from_date(dv_ts_ltz_t *ts_ltz, const dv_date_t *date, const timezone_t *sess_tz) {
    if (!DV_ASSERT(ts_ltz != NULL) || !DV_ASSERT(date != NULL) || !DV_ASSERT(sess_tz != NULL)) return;
    dv_ts_tz_t zoned;
    dv_ts_tz_from_date(&zoned, date, sess_tz);
    ts_ltz->utc = zoned.utc;
}

void dv_ts_ltz_from_timestamp(dv_ts_ltz_t *ts_ltz, const dv_timestamp_t *ts, const timezone_t *sess_tz) {
    if (!DV_ASSERT(ts_ltz != NULL) || !DV_ASSERT(ts != NULL) || !DV_ASSERT(sess_tz != NULL)) return;
    dv_ts_tz_t zoned;
    dv_ts_tz_from_timestamp(&zoned, ts, sess_tz);
    ts_ltz->utc = zoned.utc;
}

void dv_ts_ltz_from_ts_tz(dv_ts_ltz_t *ts_ltz, const dv_ts_tz_t *ts_tz) {
    if (DV_ASSERT(ts_ltz != NULL) && DV_ASSERT(ts_tz != NULL)) ts_ltz->utc = ts_tz->utc;
}

int dv_ts_ltz_compare(const dv_ts_ltz_t *ts_ltz1, const dv_ts_ltz_t *ts_ltz2) {
    return timestamp_order(ts_ltz1 != NULL ? &ts_ltz1->utc : NULL, ts_ltz2 != NULL ? &ts_ltz2->utc : NULL);
}

void dv_ts_ltz_current(dv_ts_ltz_t *ts_ltz, const timezone_t *sess_tz) {
    if (!DV_ASSERT(ts_ltz != NULL) || !DV_ASSERT(sess_tz != NULL)) return;
    dv_timestamp_t now;
    dv_timestamp_current(&now);
    dv_ts_ltz_from_timestamp(ts_ltz, &now, sess_tz);
}

void dv_ts_ltz_trim_fsec(dv_ts_ltz_t *ts_ltz, int fprec) {
    if (DV_ASSERT(ts_ltz != NULL)) dv_timestamp_trim_fsec(&ts_ltz->utc, fprec);
}

double dv_ts_ltz_to_double(const dv_ts_ltz_t *ts_ltz, const timezone_t *sess_tz) {
    if (!DV_ASSERT(ts_ltz != NULL) || !DV_ASSERT(sess_tz != NULL)) return 0;
    dv_timestamp_t local;
    dv_timestamp_from_ts_ltz(&local, ts_ltz, sess_tz);
    return dv_timestamp_to_double(&local);
}

void dv_ts_ltz_to_number(const dv_ts_ltz_t *ts_ltz, number_t *num, const timezone_t *sess_tz) {
    if (!DV_ASSERT(ts_ltz != NULL) || !DV_ASSERT(number_is_nonnull_ptr(num)) || !DV_ASSERT(sess_tz != NULL))
        return;
    dv_timestamp_t local;
    dv_timestamp_from_ts_ltz(&local, ts_ltz, sess_tz);
    dv_timestamp_to_number(&local, num);
}

void dv_ts_ltz_from_double(double from, dv_ts_ltz_t *ts_ltz, const timezone_t *sess_tz) {
    if (!DV_ASSERT(ts_ltz != NULL) || !DV_ASSERT(sess_tz != NULL)) return;
    dv_timestamp_t local;
    dv_timestamp_from_double(from, &local);
    dv_ts_ltz_from_timestamp(ts_ltz, &local, sess_tz);
}

void dv_ts_ltz_from_number(const number_t *num, dv_ts_ltz_t *ts_ltz, const timezone_t *sess_tz) {
    if (!DV_ASSERT(number_is_valid_ptr(num)) || !DV_ASSERT(ts_ltz != NULL) || !DV_ASSERT(sess_tz != NULL))
        return;
    dv_timestamp_t local;
    dv_timestamp_from_number(num, &local);
    dv_ts_ltz_from_timestamp(ts_ltz, &local, sess_tz);
}

}  // extern "C"
