// dvtypes/timestamp_record.h: the records of TIMESTAMP, TIMESTAMP WITH TIME ZONE and TIMESTAMP WITH LOCAL
// TIME ZONE. Their functions are in dvtypes/timestamp.h and dvtypes/timestamp_tz.h.
//
// The first eight bytes of each are a DATE, bytes 4 to 11 a TIME, as in dvtypes/datetime.h. Unsigned bytewise
// order of the first twelve bytes is the order of the values.

#ifndef DVTYPES_TIMESTAMP_RECORD_H
#define DVTYPES_TIMESTAMP_RECORD_H

#include "dvtypes/base.h"
#include "dvtypes/timezone.h"

typedef struct dv_timestamp_s {
    uint8_t century;  // as in dv_date_t
    uint8_t year;
    uint8_t month;
    uint8_t day;
    uint8_t hour;
    uint8_t minute;
    uint8_t second;
    uint8_t dummy;    // 0
    uint8_t csec[4];  // nanoseconds 0..999999999, big-endian
} dv_timestamp_t;

typedef struct dv_ts_tz_s {
    dv_timestamp_t utc;  // the instant
    timezone_t tz;       // the zone in which it was given
} dv_ts_tz_t;

typedef struct dv_ts_ltz_s {
    dv_timestamp_t utc;  // the instant; shown in the session's zone
} dv_ts_ltz_t;

#endif  // DVTYPES_TIMESTAMP_RECORD_H
