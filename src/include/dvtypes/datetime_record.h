// dvtypes/datetime_record.h: the records of DATE and TIME. Their functions, and what the bytes mean, are in
// dvtypes/datetime.h.

#ifndef DVTYPES_DATETIME_RECORD_H
#define DVTYPES_DATETIME_RECORD_H

#include "dvtypes/base.h"

// A DATE.
typedef struct dv_date_s {
    uint8_t century;  // year / 100 toward zero, + 100
    uint8_t year;     // the rest, with the sign of the year, + 100
    uint8_t month;    // 1..12
    uint8_t day;      // 1..31
    uint8_t hour;     // 0..23
    uint8_t minute;   // 0..59
    uint8_t second;   // 0..59
    uint8_t dummy;    // 0
} dv_date_t;

// A TIME.
typedef struct dv_time_s {
    uint8_t hour;     // 0..23
    uint8_t minute;   // 0..59
    uint8_t second;   // 0..59
    uint8_t dummy;    // 0
    uint8_t csec[4];  // nanoseconds 0..999999999, big-endian
} dv_time_t;

#endif  // DVTYPES_DATETIME_RECORD_H
