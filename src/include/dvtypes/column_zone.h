// dvtypes/column_zone.h: columns of local times to UTC and back, in one zone or in a zone for each row.
//
// What columns are, how failures are told and which columns may be the same stands in
// dvtypes/column_record.h. All columns here lie by stride. `zones` is a column of timezone_t: one zone for
// all rows has the stride 0. Every operation gives what the function for one value gives, and fails with its
// codes. A zone that is none asserts as there, once for each row of it.
//
// ```c
// timezone_t paris;
// dv_timestamp_t ts[2];
// timezone_parse(&paris, "Europe/Paris", 12);
// dv_timestamp_from_unit_values(&ts[0], 2026, 7, 1, 12, 0, 0, 0);
// dv_timestamp_from_unit_values(&ts[1], 2026, 12, 1, 12, 0, 0, 0);
// dv_column_t times = {.count = 2, .values = ts, .stride = sizeof ts[0]};
// dv_column_t zone = {.count = 2, .values = &paris, .stride = 0};
// dv_timestamp_column_from_ts_ltz(&times, &zone, &times, NULL);       // UTC to local, in place
// printf("%d %d\n", ts[0].hour, ts[1].hour);                          // 14 13
// ```

#ifndef DVTYPES_COLUMN_ZONE_H
#define DVTYPES_COLUMN_ZONE_H

#include "dvtypes/column_record.h"
#include "dvtypes/timestamp_tz.h"

#ifdef __cplusplus
extern "C" {
#endif

// UTC to local time: of an instant (TIMESTAMP WITH LOCAL TIME ZONE) in a zone, and of a TIMESTAMP WITH TIME
// ZONE by the offset that it holds.
//
// Fails with -5114  the local time is out of the range of DATE arithmetic
DV_EXPORT void dv_timestamp_column_from_ts_ltz(const dv_column_t *x, const dv_column_t *zones,
                                               dv_column_t *result, dv_column_faults_t *faults);
DV_EXPORT void dv_timestamp_column_from_ts_tz(const dv_column_t *x, dv_column_t *result,
                                              dv_column_faults_t *faults);
DV_EXPORT void dv_date_column_from_ts_ltz(const dv_column_t *x, const dv_column_t *zones, dv_column_t *result,
                                          dv_column_faults_t *faults);
DV_EXPORT void dv_date_column_from_ts_tz(const dv_column_t *x, dv_column_t *result,
                                         dv_column_faults_t *faults);

// Local time to UTC. A time that the zone's clocks showed twice has its later meaning.
//
// Fails with -5110  the clocks never showed the time
//            -5114  the instant is out of the range of DATE arithmetic
DV_EXPORT void dv_ts_ltz_column_from_timestamp(const dv_column_t *x, const dv_column_t *zones,
                                               dv_column_t *result, dv_column_faults_t *faults);
DV_EXPORT void dv_ts_tz_column_from_timestamp(const dv_column_t *x, const dv_column_t *zones,
                                              dv_column_t *result, dv_column_faults_t *faults);
DV_EXPORT void dv_ts_ltz_column_from_date(const dv_column_t *x, const dv_column_t *zones, dv_column_t *result,
                                          dv_column_faults_t *faults);
DV_EXPORT void dv_ts_tz_column_from_date(const dv_column_t *x, const dv_column_t *zones, dv_column_t *result,
                                         dv_column_faults_t *faults);

// The same instants: with a zone and its offset in force, and without.
DV_EXPORT void dv_ts_tz_column_from_ts_ltz(const dv_column_t *x, const dv_column_t *zones,
                                           dv_column_t *result, dv_column_faults_t *faults);
DV_EXPORT void dv_ts_ltz_column_from_ts_tz(const dv_column_t *x, dv_column_t *result,
                                           dv_column_faults_t *faults);

#ifdef __cplusplus
}  // extern "C"
#endif

#endif  // DVTYPES_COLUMN_ZONE_H
