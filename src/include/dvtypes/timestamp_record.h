// dvtypes/timestamp_record.h: the records of TIMESTAMP, TIMESTAMP WITH TIME ZONE and TIMESTAMP WITH LOCAL
// TIME ZONE. Their functions are in dvtypes/timestamp.h and dvtypes/timestamp_tz.h.
//
// The first eight bytes of each are a DATE, bytes 4 to 11 a TIME, as in dvtypes/datetime.h. Unsigned bytewise
// order of the first twelve bytes is the order of the values.

#ifndef DVTYPES_TIMESTAMP_RECORD_H
#define DVTYPES_TIMESTAMP_RECORD_H

#include "dvtypes/base.h"
#include "dvtypes/timezone.h"

// A TIMESTAMP: a DATE and the fraction of a second.
typedef struct dv_timestamp_s {
    uint8_t century;  // year / 100 toward zero, + 100
    uint8_t year;     // the rest, with the sign of the year, + 100
    uint8_t month;    // 1..12
    uint8_t day;      // 1..31
    uint8_t hour;     // 0..23
    uint8_t minute;   // 0..59
    uint8_t second;   // 0..59
    uint8_t dummy;    // 0
    uint8_t csec[4];  // nanoseconds 0..999999999, big-endian
} dv_timestamp_t;

// A TIMESTAMP WITH TIME ZONE.
typedef struct dv_ts_tz_s {
    dv_timestamp_t utc;  // the instant
    timezone_t tz;       // the zone in which it was given
} dv_ts_tz_t;

// A TIMESTAMP WITH LOCAL TIME ZONE.
typedef struct dv_ts_ltz_s {
    dv_timestamp_t utc;  // the instant; shown in the session's zone
} dv_ts_ltz_t;

#endif  // DVTYPES_TIMESTAMP_RECORD_H
