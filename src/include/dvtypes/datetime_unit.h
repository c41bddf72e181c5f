// dvtypes/datetime_unit.h: what datetimes, intervals and format models share: field selectors and the result
// of writing text.

#ifndef DVTYPES_DATETIME_UNIT_H
#define DVTYPES_DATETIME_UNIT_H

#include "dvtypes/base.h"

// Fields, one bit each; permanent, since compiled models hold them. The first seven select a field of a
// value; all of them say which fields a format model has, or which a text has given so far.
typedef enum dt_fmt_unit_e {
    DT_FMT_UNIT_NONE = 0,
    DT_FMT_UNIT_YEAR = 0x1,
    DT_FMT_UNIT_MONTH = 0x2,
    DT_FMT_UNIT_DAY = 0x4,
    DT_FMT_UNIT_HOUR = 0x8,
    DT_FMT_UNIT_MINUTE = 0x10,
    DT_FMT_UNIT_SECOND = 0x20,
    DT_FMT_UNIT_FSEC = 0x40,  // fraction of a second, in nanoseconds
    DT_FMT_UNIT_AD = 0x80,
    DT_FMT_UNIT_BC = 0x100,
    DT_FMT_UNIT_AM = 0x200,
    DT_FMT_UNIT_PM = 0x400,
    DT_FMT_UNIT_SYYYY = 0x800,
    DT_FMT_UNIT_HH24 = 0x1000,
    DT_FMT_UNIT_DDD = 0x2000,
    DT_FMT_UNIT_SSSSS = 0x4000,
    DT_FMT_UNIT_FM = 0x8000,
    DT_FMT_UNIT_FX = 0x10000,
    DT_FMT_UNIT_TZR = 0x20000,
    DT_FMT_UNIT_TZD = 0x40000,
    DT_FMT_UNIT_TZH = 0x80000,
    DT_FMT_UNIT_TZM = 0x100000,
    DT_FMT_UNIT_TZS = 0x200000,
    DT_FMT_UNIT_MAX = 0x400000
} dt_fmt_unit_e;

typedef int32_t dt_fmt_unit_t;  // one dt_fmt_unit_e, or several bits of it

// What writing a text came to.
typedef enum conv_status_e {
    CONV_STATUS_WHOLE = 0,  // all of it was written
    CONV_STATUS_CUT = 1     // the output buffer was too short, or had no room at all
} conv_status_e;

typedef int32_t conv_status_t;

#endif  // DVTYPES_DATETIME_UNIT_H
