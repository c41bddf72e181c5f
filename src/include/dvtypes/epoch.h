// dvtypes/epoch.h: datetimes as counts since 1970-01-01 00:00:00.
//
// A count is of seconds, milliseconds, microseconds or nanoseconds in 64 bits, or of days in 32; negative
// before 1970. Days have 86400 seconds: leap seconds are not counted. A DATE and a TIMESTAMP have no zone;
// taken as UTC their count is POSIX time. The zoned types have UTC in their first twelve bytes, so that
// their member `utc` is given to the functions of TIMESTAMP.
//
// Days are matched, not names: the ground of both sides is the Julian Day Number, that of 1970-01-01 being
// 2440588. A count of another system that calls all days by the Gregorian calendar, as the Arrow format and
// std::chrono do, is the same day here, but before 1582-10-15 it has its Julian name:
//
//   day         here            in the Gregorian calendar throughout
//   -141427     1582-10-15      1582-10-15
//   -141428     1582-10-04      1582-10-14
//   -719162     0001-01-03      0001-01-01
//   -2440588    -4713-01-01     4714 BC, November 24: the first day that has a record
//   2932896     9999-12-31      9999-12-31: the last
//
// Before 1 AD day numbers have other leap days than dv_date_is_valid accepts (dvtypes/datetime.h): their
// February 29 is given and counted here all the same, as in DATE arithmetic.
//
// ```c
// dv_timestamp_t ts;
// dv_timestamp_from_epoch(&ts, 1709211900500, DV_EPOCH_MILLISECOND);   // 2024-02-29 13:05:00.500000000
// printf("%lld\n", (long long)dv_timestamp_to_epoch(&ts, DV_EPOCH_SECOND));         // 1709211900
// printf("%d\n", (int)dv_date_to_epoch_day((const dv_date_t *)&ts));                // 19782
// ```
//
// All functions may be called from any thread on records that no other thread is writing; a NULL pointer
// asserts ("date != NULL", "ts != NULL") and nothing else happens; 0 is returned.

#ifndef DVTYPES_EPOCH_H
#define DVTYPES_EPOCH_H

#include "dvtypes/timestamp_record.h"

#ifdef __cplusplus
extern "C" {
#endif

// What is counted; permanent, and in the order of the Arrow format's TimeUnit.
typedef enum dv_epoch_unit_e {
    DV_EPOCH_SECOND = 0,
    DV_EPOCH_MILLISECOND = 1,
    DV_EPOCH_MICROSECOND = 2,
    DV_EPOCH_NANOSECOND = 3,
    DV_EPOCH_UNITS = 4
} dv_epoch_unit_e;
typedef int32_t dv_epoch_unit_t;

// The count of a value. What the unit is too coarse for is cut off toward the past.
//
// Raises  -5114  a field out of range, a day that the calendar does not have, a date before -4713-01-01; in
//                nanoseconds a value before 1677-09-21 00:12:43.145224192 or after 2262-04-11
//                23:47:16.854775807
//         -5006  no such unit
// Days that the calendar does not have are those from 1582-10-05 to 1582-10-14 too, and a February 29 BC that
// has no Julian Day Number of its own.
DV_EXPORT int64_t dv_date_to_epoch(const dv_date_t *date, dv_epoch_unit_t unit);
DV_EXPORT int64_t dv_timestamp_to_epoch(const dv_timestamp_t *ts, dv_epoch_unit_t unit);

// The value of a count. What a DATE is too coarse for is cut off toward the past.
// Raises  -5114  before -4713-01-01 or after 9999-12-31; the record is then unchanged     -5006  no such unit
DV_EXPORT void dv_date_from_epoch(dv_date_t *date, int64_t count, dv_epoch_unit_t unit);
DV_EXPORT void dv_timestamp_from_epoch(dv_timestamp_t *ts, int64_t count, dv_epoch_unit_t unit);

// The same in days; the time of day takes no part, and of a value that is made is midnight.
DV_EXPORT int32_t dv_date_to_epoch_day(const dv_date_t *date);
DV_EXPORT void dv_date_from_epoch_day(dv_date_t *date, int32_t days);

#ifdef __cplusplus
}  // extern "C"
#endif

#endif  // DVTYPES_EPOCH_H
