// dvtypes/timezone.h: time zone values.

#ifndef DVTYPES_TIMEZONE_H
#define DVTYPES_TIMEZONE_H

#include "dvtypes/base.h"

// A time zone: a region with the UTC offset in force at the value it belongs to, or a fixed UTC offset.
typedef struct timezone_s {
    uint8_t utc_hour;    // hours of the UTC offset + 100: 88..114 for -12..14
    uint8_t utc_min;     // 0..59; the sign is that of the hour
    uint8_t utc_sec;     // 0..59
    uint8_t zone_id[2];  // big-endian: 0..579 regions, 580 no zone given, 581 fixed offset
} timezone_t;

#endif  // DVTYPES_TIMEZONE_H
