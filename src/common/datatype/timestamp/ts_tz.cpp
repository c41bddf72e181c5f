// TIMESTAMP WITH TIME ZONE: an instant in UTC, and the zone in which it was given.
//
// Values are made of local times, which the zone turns into UTC, and are shown in that zone again. Arithmetic
// works on UTC; a region's offset is then looked up anew for the new instant.

#include <cstring>

#include "../timezone/timezone_internal.h"
#include "dvtypes/timestamp_tz.h"
#include "timestamp_layout.h"

using namespace dv::impl;

namespace {

// Local time of the session, in place, becomes the instant.
void normalize_(dv_ts_tz_t &ts_tz, const timezone_t &sess_tz) {
    ts_tz.tz = sess_tz;
    timezone_normalize(&ts_tz.tz, &date_part(ts_tz.utc), NULL);
}

void adjust_(dv_ts_tz_t &ts_tz) { timezone_adjust(&ts_tz.tz, &date_part(ts_tz.utc)); }

}  // namespace

extern "C" {

const dv_ts_tz_t null_dv_ts_tz = {};

void dv_ts_tz_from_unit_values(dv_ts_tz_t *ts_tz, int year, int month, int day, int hour, int min, int second,
                               int fsec, const timezone_t *sess_tz) {
    if (!DV_ASSERT(ts_tz != NULL) || !DV_ASSERT(sess_tz != NULL)) return;
    const struct {
        dt_fmt_unit_e unit;
        int value;
    } fields[] = {{DT_FMT_UNIT_YEAR, year}, {DT_FMT_UNIT_MONTH, month}, {DT_FMT_UNIT_DAY, day},
                  {DT_FMT_UNIT_HOUR, hour}, {DT_FMT_UNIT_MINUTE, min},  {DT_FMT_UNIT_SECOND, second}};
    dv_date_t &date = date_part(ts_tz->utc);
    for (const auto &field : fields) {
        dv_date_set_field(&date, field.unit, field.value, /*check_valid_input=*/1, /*check_valid_result=*/1);
    }
    date.dummy = 0;
    dv_time_set_field(&time_part(ts_tz->utc), DT_FMT_UNIT_FSEC, fsec, /*check_valid_input=*/1,
                      /*check_valid_result=*/1);
    normalize_(*ts_tz, *sess_tz);
}

void dv_ts_tz_from_date(dv_ts_tz_t *ts_tz, const dv_date_t *date, const timezone_t *sess_tz) {
    if (!DV_ASSERT(ts_tz != NULL) || !DV_ASSERT(date != NULL) || !DV_ASSERT(sess_tz != NULL)) return;
    memmove(&ts_tz->utc, date, sizeof *date);
    time_set_nanoseconds(time_part(ts_tz->utc), 0);
    normalize_(*ts_tz, *sess_tz);
}

void dv_ts_tz_from_timestamp(dv_ts_tz_t *ts_tz, const dv_timestamp_t *ts, const timezone_t *sess_tz) {
    if (!DV_ASSERT(ts_tz != NULL) || !DV_ASSERT(ts != NULL) || !DV_ASSERT(sess_tz != NULL)) return;
    ts_tz->utc = *ts;
    normalize_(*ts_tz, *sess_tz);
}

void dv_ts_tz_from_ts_ltz(dv_ts_tz_t *ts_tz, const dv_ts_ltz_t *ts_ltz, const timezone_t *sess_tz) {
    if (!DV_ASSERT(ts_tz != NULL) || !DV_ASSERT(ts_ltz != NULL) || !DV_ASSERT(sess_tz != NULL)) return;
    ts_tz->utc = ts_ltz->utc;
    ts_tz->tz = *sess_tz;
    adjust_(*ts_tz);
}

int dv_ts_tz_compare(const dv_ts_tz_t *ts_tz1, const dv_ts_tz_t *ts_tz2) {
    return timestamp_order(ts_tz1 != NULL ? &ts_tz1->utc : NULL, ts_tz2 != NULL ? &ts_tz2->utc : NULL);
}

void dv_ts_tz_current(dv_ts_tz_t *ts_tz, const timezone_t *sess_tz) {
    if (!DV_ASSERT(ts_tz != NULL) || !DV_ASSERT(sess_tz != NULL)) return;
    dv_timestamp_current(&ts_tz->utc);
    normalize_(*ts_tz, *sess_tz);
}

void dv_ts_tz_trim_fsec(dv_ts_tz_t *ts_tz, int fprec) {
    if (DV_ASSERT(ts_tz != NULL)) dv_timestamp_trim_fsec(&ts_tz->utc, fprec);
}

double dv_ts_tz_to_double(const dv_ts_tz_t *ts_tz) {
    if (!DV_ASSERT(ts_tz != NULL)) return 0;
    dv_timestamp_t local;
    dv_timestamp_from_ts_tz(&local, ts_tz);
    return dv_timestamp_to_double(&local);
}

void dv_ts_tz_to_number(const dv_ts_tz_t *ts_tz, number_t *num) {
    if (!DV_ASSERT(ts_tz != NULL) || !DV_ASSERT(number_is_nonnull_ptr(num))) return;
    dv_timestamp_t local;
    dv_timestamp_from_ts_tz(&local, ts_tz);
    dv_timestamp_to_number(&local, num);
}

void dv_ts_tz_from_double(double from, dv_ts_tz_t *ts_tz, const timezone_t *sess_tz) {
    if (!DV_ASSERT(ts_tz != NULL) || !DV_ASSERT(sess_tz != NULL)) return;
    dv_timestamp_t local;
    dv_timestamp_from_double(from, &local);
    dv_ts_tz_from_timestamp(ts_tz, &local, sess_tz);
}

void dv_ts_tz_from_number(const number_t *num, dv_ts_tz_t *ts_tz, const timezone_t *sess_tz) {
    if (!DV_ASSERT(number_is_valid_ptr(num)) || !DV_ASSERT(ts_tz != NULL) || !DV_ASSERT(sess_tz != NULL))
        return;
    dv_timestamp_t local;
    dv_timestamp_from_number(num, &local);
    dv_ts_tz_from_timestamp(ts_tz, &local, sess_tz);
}

void dv_ts_tz_add_itv_ytm(dv_ts_tz_t *ts_tz, const dv_itv_ytm_t *ytm) {
    if (!DV_ASSERT(ts_tz != NULL) || !DV_ASSERT(ytm != NULL)) return;
    dv_date_add_itv_ytm(&date_part(ts_tz->utc), ytm);
    adjust_(*ts_tz);
}

void dv_ts_tz_sub_itv_ytm(dv_ts_tz_t *ts_tz, const dv_itv_ytm_t *ytm) {
    if (!DV_ASSERT(ts_tz != NULL) || !DV_ASSERT(ytm != NULL)) return;
    dv_date_sub_itv_ytm(&date_part(ts_tz->utc), ytm);
    adjust_(*ts_tz);
}

void dv_ts_tz_add_itv_dts(dv_ts_tz_t *ts_tz, const dv_itv_dts_t *dts) {
    if (!DV_ASSERT(ts_tz != NULL) || !DV_ASSERT(dts != NULL)) return;
    dv_timestamp_add_itv_dts(&ts_tz->utc, dts);
    adjust_(*ts_tz);
}

void dv_ts_tz_sub_itv_dts(dv_ts_tz_t *ts_tz, const dv_itv_dts_t *dts) {
    if (!DV_ASSERT(ts_tz != NULL) || !DV_ASSERT(dts != NULL)) return;
    dv_timestamp_sub_itv_dts(&ts_tz->utc, dts);
    adjust_(*ts_tz);
}

void dv_ts_tz_sub_ts_tz_into_itv_ytm(dv_itv_ytm_t *dest, const dv_ts_tz_t *left, const dv_ts_tz_t *right) {
    if (!DV_ASSERT(left != NULL) || !DV_ASSERT(right != NULL)) return;
    dv_timestamp_sub_timestamp_into_itv_ytm(dest, &left->utc, &right->utc);
}

void dv_ts_tz_sub_ts_tz_into_itv_dts(dv_itv_dts_t *dest, const dv_ts_tz_t *left, const dv_ts_tz_t *right) {
    if (!DV_ASSERT(left != NULL) || !DV_ASSERT(right != NULL)) return;
    dv_timestamp_sub_timestamp_into_itv_dts(dest, &left->utc, &right->utc);
}

}  // extern "C"
