// DATEs and TIMESTAMPs out of zoned timestamps: the local time in the value's own zone, or in the session's.
//
// Timestamps are assigned: memmove would be called for their 12 bytes and store two words that overlap, which
// the load of the DATE in them would have to wait for.

#include <cstring>

#include "dvtypes/timestamp.h"
#include "timezone_internal.h"

using namespace dv::impl;

extern "C" {

void dv_date_from_ts_tz(dv_date_t *date, const dv_ts_tz_t *ts_tz) {
    if (!DV_ASSERT(date != NULL) || !DV_ASSERT(ts_tz != NULL)) return;
    const timezone_t zone = ts_tz->tz;
    memmove(date, &date_part(ts_tz->utc), sizeof *date);
    timezone_shift_to_east(&zone, date);
}

void dv_date_from_ts_ltz(dv_date_t *date, const dv_ts_ltz_t *ts_ltz, const timezone_t *sess_tz) {
    if (!DV_ASSERT(date != NULL) || !DV_ASSERT(ts_ltz != NULL) || !DV_ASSERT(sess_tz != NULL)) return;
    memmove(date, &date_part(ts_ltz->utc), sizeof *date);
    timezone_localize(sess_tz, date, NULL);
}

void dv_timestamp_from_ts_tz(dv_timestamp_t *ts, const dv_ts_tz_t *ts_tz) {
    if (!DV_ASSERT(ts != NULL) || !DV_ASSERT(ts_tz != NULL)) return;
    const timezone_t zone = ts_tz->tz;
    *ts = ts_tz->utc;
    timezone_shift_to_east(&zone, &date_part(*ts));
}

void dv_timestamp_from_ts_ltz(dv_timestamp_t *ts, const dv_ts_ltz_t *ts_ltz, const timezone_t *sess_tz) {
    if (!DV_ASSERT(ts != NULL) || !DV_ASSERT(ts_ltz != NULL) || !DV_ASSERT(sess_tz != NULL)) return;
    *ts = ts_ltz->utc;
    timezone_localize(sess_tz, &date_part(*ts), NULL);
}

}  // extern "C"
