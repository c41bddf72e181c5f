// dvtypes/column_datetime.h: arithmetic on columns of DATE, TIMESTAMP and TIMESTAMP WITH TIME ZONE.
//
// What columns are, how failures are told and which columns may be the same stands in
// dvtypes/column_record.h. All columns here lie by stride; a record lies at any address. A constant is a
// column of stride 0.
//
// Records begin alike: the first eight bytes of each type are a DATE, the first twelve of the zoned types a
// TIMESTAMP, in UTC. So columns of a longer type are operands where a shorter one is asked for: truncating,
// comparing and extracting are those of DATE for a TIMESTAMP too, and what is said of TIMESTAMP holds for
// WITH LOCAL TIME ZONE, whose record is the same. A result has the bytes of its own type only.
//
// Every operation gives what the function for one value gives, and fails with its codes. Records whose bytes
// are no value give unspecified values or a code, the same ones as there.
//
// ```c
// dv_date_t days[2];
// int32_t months[2] = {1, -1}, year[2];
// dv_date_from_unit_values(&days[0], 2024, 1, 31, 0, 0, 0);
// dv_date_from_unit_values(&days[1], 2024, 1, 1, 0, 0, 0);
// dv_column_t dates = {.count = 2, .values = days, .stride = sizeof days[0]};
// dv_column_t steps = {.count = 2, .values = months, .stride = sizeof months[0]};
// dv_column_t years = {.count = 2, .values = year, .stride = sizeof year[0]};
// dv_date_column_add_month(&dates, &steps, &dates, NULL);              // 2024-02-29 and 2023-12-01
// dv_date_column_get_field(&dates, DT_FMT_UNIT_YEAR, &years, NULL);
// printf("%d %d\n", year[0], year[1]);                                 // 2024 2023
// ```

#ifndef DVTYPES_COLUMN_DATETIME_H
#define DVTYPES_COLUMN_DATETIME_H

#include "dvtypes/column_record.h"
#include "dvtypes/timestamp_tz.h"

#ifdef __cplusplus
extern "C" {
#endif

// ---------------------------------------------------------------------------------------------------------
// Fields, truncation
// ---------------------------------------------------------------------------------------------------------

// result, int32_t: one field, as dv_date_get_field and dv_timestamp_get_field. Of the zoned types it is that
// of UTC; that of local time is the field of what dvtypes/column_zone.h makes of them.
//
// Fails with -5006  any other unit, in every row
DV_EXPORT void dv_date_column_get_field(const dv_column_t *x, dt_fmt_unit_t unit, dv_column_t *result,
                                        dv_column_faults_t *faults);
DV_EXPORT void dv_timestamp_column_get_field(const dv_column_t *x, dt_fmt_unit_t unit, dv_column_t *result,
                                             dv_column_faults_t *faults);

// result, DATE: cut or rounded to a unit, as dv_date_trunc and dv_date_round.
//
//   x             of TIMESTAMPs their DATEs are read; where the result lies in them, each keeps its fraction
//   of
//                 a second
//   fmt, fmt_len  one format element; NULL and "" mean "DD"; fmt_len 0: up to its NUL. Looked up once
//
// Fails with -5014  no unit of truncation, in every row     -5114  the date or the result is out of range
DV_EXPORT void dv_date_column_trunc(const dv_column_t *x, const char *fmt, int fmt_len, dv_column_t *result,
                                    dv_column_faults_t *faults);
DV_EXPORT void dv_date_column_round(const dv_column_t *x, const char *fmt, int fmt_len, dv_column_t *result,
                                    dv_column_faults_t *faults);

// ---------------------------------------------------------------------------------------------------------
// Adding
// ---------------------------------------------------------------------------------------------------------

// x + y, int32_t: calendar months, a day that the target month lacks becoming its last one, as
// dv_date_add_month with is_from_itv 0. A TIMESTAMP keeps its fraction.
//
// Fails with -5114  the result lies in year 0 or outside -9999..9999
DV_EXPORT void dv_date_column_add_month(const dv_column_t *x, const dv_column_t *y, dv_column_t *result,
                                        dv_column_faults_t *faults);
DV_EXPORT void dv_timestamp_column_add_month(const dv_column_t *x, const dv_column_t *y, dv_column_t *result,
                                             dv_column_faults_t *faults);

// x + y, int64_t, of days, hours, minutes or seconds, as dv_date_add_field; a TIMESTAMP keeps its
// fraction.
//
// Fails with -5006  any other unit     -5114  as dv_date_add_day
DV_EXPORT void dv_date_column_add_field(const dv_column_t *x, dt_fmt_unit_t unit, const dv_column_t *y,
                                        dv_column_t *result, dv_column_faults_t *faults);
DV_EXPORT void dv_timestamp_column_add_field(const dv_column_t *x, dt_fmt_unit_t unit, const dv_column_t *y,
                                             dv_column_t *result, dv_column_faults_t *faults);

// x + y, double, in days, as dv_date_add_day.
//
// Fails with -5114  as that
DV_EXPORT void dv_date_column_add_day(const dv_column_t *x, const dv_column_t *y, dv_column_t *result,
                                      dv_column_faults_t *faults);

// x + y and x - y, y intervals: those of DATE and WITH TIME ZONE as their functions for one value, those
// of TIMESTAMP as dv_timestamp_add_itv_dts and, for months, as those of the DATE in it.
//
// Fails with -5005  months: the target month does not have the day     -5114  the result is out of range
DV_EXPORT void dv_date_column_add_itv_ytm(const dv_column_t *x, const dv_column_t *y, dv_column_t *result,
                                          dv_column_faults_t *faults);
DV_EXPORT void dv_date_column_sub_itv_ytm(const dv_column_t *x, const dv_column_t *y, dv_column_t *result,
                                          dv_column_faults_t *faults);
DV_EXPORT void dv_date_column_add_itv_dts(const dv_column_t *x, const dv_column_t *y, dv_column_t *result,
                                          dv_column_faults_t *faults);
DV_EXPORT void dv_date_column_sub_itv_dts(const dv_column_t *x, const dv_column_t *y, dv_column_t *result,
                                          dv_column_faults_t *faults);
DV_EXPORT void dv_timestamp_column_add_itv_ytm(const dv_column_t *x, const dv_column_t *y,
                                               dv_column_t *result, dv_column_faults_t *faults);
DV_EXPORT void dv_timestamp_column_sub_itv_ytm(const dv_column_t *x, const dv_column_t *y,
                                               dv_column_t *result, dv_column_faults_t *faults);
DV_EXPORT void dv_timestamp_column_add_itv_dts(const dv_column_t *x, const dv_column_t *y,
                                               dv_column_t *result, dv_column_faults_t *faults);
DV_EXPORT void dv_timestamp_column_sub_itv_dts(const dv_column_t *x, const dv_column_t *y,
                                               dv_column_t *result, dv_column_faults_t *faults);
DV_EXPORT void dv_ts_tz_column_add_itv_ytm(const dv_column_t *x, const dv_column_t *y, dv_column_t *result,
                                           dv_column_faults_t *faults);
DV_EXPORT void dv_ts_tz_column_sub_itv_ytm(const dv_column_t *x, const dv_column_t *y, dv_column_t *result,
                                           dv_column_faults_t *faults);
DV_EXPORT void dv_ts_tz_column_add_itv_dts(const dv_column_t *x, const dv_column_t *y, dv_column_t *result,
                                           dv_column_faults_t *faults);
DV_EXPORT void dv_ts_tz_column_sub_itv_dts(const dv_column_t *x, const dv_column_t *y, dv_column_t *result,
                                           dv_column_faults_t *faults);

// ---------------------------------------------------------------------------------------------------------
// Differences
// ---------------------------------------------------------------------------------------------------------

// result, int32_t: the days from one date to another, x - y by their Julian Day Numbers; times of day take no
// part. Fails never.
DV_EXPORT void dv_date_column_sub_days(const dv_column_t *x, const dv_column_t *y, dv_column_t *result,
                                       dv_column_faults_t *faults);

// result, double: x - y in days as dv_date_sub, and in months as dv_date_months_between. Fail never.
DV_EXPORT void dv_date_column_sub(const dv_column_t *x, const dv_column_t *y, dv_column_t *result,
                                  dv_column_faults_t *faults);
DV_EXPORT void dv_date_column_months_between(const dv_column_t *x, const dv_column_t *y, dv_column_t *result,
                                             dv_column_faults_t *faults);

// result, an interval: x - y, of DATE as of TIMESTAMPs without a fraction. Fail never.
DV_EXPORT void dv_date_column_sub_into_itv_dts(const dv_column_t *x, const dv_column_t *y,
                                               dv_column_t *result, dv_column_faults_t *faults);
DV_EXPORT void dv_timestamp_column_sub_into_itv_dts(const dv_column_t *x, const dv_column_t *y,
                                                    dv_column_t *result, dv_column_faults_t *faults);
DV_EXPORT void dv_timestamp_column_sub_into_itv_ytm(const dv_column_t *x, const dv_column_t *y,
                                                    dv_column_t *result, dv_column_faults_t *faults);

#ifdef __cplusplus
}  // extern "C"
#endif

#endif  // DVTYPES_COLUMN_DATETIME_H
