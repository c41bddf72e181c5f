// dvtypes/column_epoch.h: columns of datetimes to and from counts since 1970-01-01: int64_t of seconds to
// nanoseconds, int32_t of days. These are the timestamp and date32 values of the Arrow format.
//
// What columns are, how failures are told and which columns may be the same stands in
// dvtypes/column_record.h, what a count means, before 1582-10-15 too, in dvtypes/epoch.h. All columns here
// lie by stride. Every operation gives what the function for one value gives, and fails with its codes.
//
// TIMESTAMP WITH LOCAL TIME ZONE has the record of a TIMESTAMP, in UTC, and the functions of that; and those
// of TIMESTAMP read a column of WITH TIME ZONE too, whose records begin with the instant.
//
// ```c
// int64_t arrow[2] = {0, 1709211900500000};
// dv_timestamp_t ts[2];
// dv_column_t counts = {.count = 2, .values = arrow, .stride = sizeof arrow[0]};
// dv_column_t times = {.count = 2, .values = ts, .stride = sizeof ts[0]};
// dv_timestamp_column_from_epoch(&counts, DV_EPOCH_MICROSECOND, &times, NULL);   // the second: 2024-02-29
// dv_timestamp_column_to_epoch(&times, DV_EPOCH_MILLISECOND, &counts, NULL);     // 13:05:00.500000000
// printf("%lld\n", (long long)arrow[1]);                                         // 1709211900500
// ```

#ifndef DVTYPES_COLUMN_EPOCH_H
#define DVTYPES_COLUMN_EPOCH_H

#include "dvtypes/column_record.h"
#include "dvtypes/epoch.h"
#include "dvtypes/timezone.h"

#ifdef __cplusplus
extern "C" {
#endif

// result, int64_t.
// Fails with -5114  as dv_timestamp_to_epoch     -5006  no such unit, in every row
DV_EXPORT void dv_date_column_to_epoch(const dv_column_t *x, dv_epoch_unit_t unit, dv_column_t *result,
                                       dv_column_faults_t *faults);
DV_EXPORT void dv_timestamp_column_to_epoch(const dv_column_t *x, dv_epoch_unit_t unit, dv_column_t *result,
                                            dv_column_faults_t *faults);

// counts, int64_t. That of TIMESTAMP WITH TIME ZONE takes a zone for each value, a column of timezone_t: the
// result has it with the offset in force at the instant.
// Fails with -5114  before -4713-01-01 or after 9999-12-31     -5006  no such unit, in every row
DV_EXPORT void dv_date_column_from_epoch(const dv_column_t *counts, dv_epoch_unit_t unit, dv_column_t *result,
                                         dv_column_faults_t *faults);
DV_EXPORT void dv_timestamp_column_from_epoch(const dv_column_t *counts, dv_epoch_unit_t unit,
                                              dv_column_t *result, dv_column_faults_t *faults);
DV_EXPORT void dv_ts_tz_column_from_epoch(const dv_column_t *counts, const dv_column_t *zones,
                                          dv_epoch_unit_t unit, dv_column_t *result,
                                          dv_column_faults_t *faults);

// DATE to and from days, int32_t.
// Fails with -5114  as dv_date_to_epoch_day and dv_date_from_epoch_day
DV_EXPORT void dv_date_column_to_epoch_day(const dv_column_t *x, dv_column_t *result,
                                           dv_column_faults_t *faults);
DV_EXPORT void dv_date_column_from_epoch_day(const dv_column_t *days, dv_column_t *result,
                                             dv_column_faults_t *faults);

#ifdef __cplusplus
}  // extern "C"
#endif

#endif  // DVTYPES_COLUMN_EPOCH_H
