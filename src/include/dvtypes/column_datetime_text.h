// dvtypes/column_datetime_text.h: columns of datetimes to and from columns of texts, under a compiled model
// and as ISO texts without one.
//
// What columns are, how failures are told and which columns may be the same stands in
// dvtypes/column_record.h. Datetimes lie by stride, texts in either layout. A text to be read by stride ends
// at `size` bytes or at a NUL; one that is written gets a NUL where a byte is left for it. By offsets there
// are no NULs. A text that does not fit, its row by stride or what is left of a result by offsets, fails with
// -3005.
//
// Every operation gives what the function for one value gives, and fails with its codes. The texts of
// TIMESTAMP WITH LOCAL TIME ZONE as UTC are those of TIMESTAMP, whose record it has.
//
// ```c
// const char lines[] = "2024-02-29 13:05:002024-03-01";
// int32_t ends[3] = {0, 19, 29};
// dv_timestamp_t ts[2];
// dv_column_t texts = {.count = 2, .values = (void *)lines, .offsets = ends, .size = sizeof lines - 1};
// dv_column_t times = {.count = 2, .values = ts, .stride = sizeof ts[0]};
// dv_timestamp_column_from_iso(&texts, &times, NULL);
// printf("%d-%d %d\n", ts[1].month, ts[1].day, ts[0].hour);           // 3-1 13
// ```

#ifndef DVTYPES_COLUMN_DATETIME_TEXT_H
#define DVTYPES_COLUMN_DATETIME_TEXT_H

#include "dvtypes/column_record.h"
#include "dvtypes/timestamp_tz.h"

#ifdef __cplusplus
extern "C" {
#endif

// ---------------------------------------------------------------------------------------------------------
// ISO texts (dvtypes/iso.h)
// ---------------------------------------------------------------------------------------------------------

// Fail as dv_date_from_iso, dv_timestamp_from_iso, dv_ts_tz_from_iso. An empty text is none: -5113.
DV_EXPORT void dv_date_column_from_iso(const dv_column_t *text, dv_column_t *result,
                                       dv_column_faults_t *faults);
DV_EXPORT void dv_timestamp_column_from_iso(const dv_column_t *text, dv_column_t *result,
                                            dv_column_faults_t *faults);
DV_EXPORT void dv_ts_tz_column_from_iso(const dv_column_t *text, dv_column_t *result,
                                        dv_column_faults_t *faults);

// A record of zeros gives an empty text.
// Fail as dv_date_to_iso, dv_timestamp_to_iso, dv_ts_tz_to_iso, and with -3005 as above.
DV_EXPORT void dv_date_column_to_iso(const dv_column_t *x, dv_column_t *result, dv_column_faults_t *faults);
DV_EXPORT void dv_timestamp_column_to_iso(const dv_column_t *x, dv_column_t *result,
                                          dv_column_faults_t *faults);
DV_EXPORT void dv_ts_tz_column_to_iso(const dv_column_t *x, dv_column_t *result, dv_column_faults_t *faults);

// ---------------------------------------------------------------------------------------------------------
// Under a compiled model (dvtypes/datetime_fmt.h)
// ---------------------------------------------------------------------------------------------------------

// One model, and one session's zone where the type needs it, for all rows.
//
//   fmt_ctx  compiled for reading
//   fprec    fractional-second precision of the type
//   sess_tz  the zone of local times: of a text that names none, of WITH LOCAL TIME ZONE of every one
//   as_of    stands for the present, as in dv_date_from_str_as_of; NULL: the present, the same one for all
//            rows
//
// Fail as dv_date_from_str, dv_timestamp_from_str, dv_ts_tz_from_str, dv_ts_ltz_from_str. An empty text fails
// with -5007.
DV_EXPORT void dv_date_column_from_str(const dv_column_t *text, const dt_fmt_ctx_t *fmt_ctx,
                                       const dv_date_t *as_of, dv_column_t *result,
                                       dv_column_faults_t *faults);
DV_EXPORT void dv_timestamp_column_from_str(const dv_column_t *text, const dt_fmt_ctx_t *fmt_ctx, int fprec,
                                            const dv_date_t *as_of, dv_column_t *result,
                                            dv_column_faults_t *faults);
DV_EXPORT void dv_ts_tz_column_from_str(const dv_column_t *text, const dt_fmt_ctx_t *fmt_ctx, int fprec,
                                        const timezone_t *sess_tz, const dv_date_t *as_of,
                                        dv_column_t *result, dv_column_faults_t *faults);
DV_EXPORT void dv_ts_ltz_column_from_str(const dv_column_t *text, const dt_fmt_ctx_t *fmt_ctx, int fprec,
                                         const timezone_t *sess_tz, const dv_date_t *as_of,
                                         dv_column_t *result, dv_column_faults_t *faults);

// A record of zeros gives an empty text, but of WITH LOCAL TIME ZONE, as dv_ts_ltz_to_str has it. A text ends
// where a literal of the model has a NUL.
//
//   fmt_ctx  compiled for writing
//   fprec    digits of an FF that has none of its own
//   sess_tz  the zone in which values of WITH LOCAL TIME ZONE are shown
//
// Fail as dv_date_to_str, dv_timestamp_to_str, dv_ts_tz_to_str, dv_ts_ltz_to_str, and with -3005 as above.
DV_EXPORT void dv_date_column_to_str(const dv_column_t *x, const dt_fmt_ctx_t *fmt_ctx, dv_column_t *result,
                                     dv_column_faults_t *faults);
DV_EXPORT void dv_timestamp_column_to_str(const dv_column_t *x, const dt_fmt_ctx_t *fmt_ctx, int fprec,
                                          dv_column_t *result, dv_column_faults_t *faults);
DV_EXPORT void dv_ts_tz_column_to_str(const dv_column_t *x, const dt_fmt_ctx_t *fmt_ctx, int fprec,
                                      dv_column_t *result, dv_column_faults_t *faults);
DV_EXPORT void dv_ts_ltz_column_to_str(const dv_column_t *x, const dt_fmt_ctx_t *fmt_ctx, int fprec,
                                       const timezone_t *sess_tz, dv_column_t *result,
                                       dv_column_faults_t *faults);

#ifdef __cplusplus
}  // extern "C"
#endif

#endif  // DVTYPES_COLUMN_DATETIME_TEXT_H
