// dvtypes/timestamp_tz.h: TIMESTAMP WITH TIME ZONE and TIMESTAMP WITH LOCAL TIME ZONE.
//
// Both are instants in UTC. The first keeps the zone in which it was given, 17 bytes; the second is shown in
// the session's zone, 12 bytes. Their first twelve bytes are a TIMESTAMP (dvtypes/timestamp.h), in UTC.
//
//   2001-02-03 04:05:06 +09:00    78 65 02 02 13 05 06 00 00 00 00 00 | 6D 00 00 02 45
//
// The session's zone is the caller's in every call (dvtypes/timezone.h). Local times become UTC by
// timezone_normalize, which raises -5110 for a time that the region's clocks never showed; one that they
// showed twice has its later meaning. UTC becomes local time by the offset that a WITH TIME ZONE value holds,
// and by timezone_localize for the session.
//
// ```c
// #include <dvtypes/iso.h>
// dv_ts_tz_t call;
// timezone_t paris;
// char text[DV_ISO_TS_TZ_SIZE];
// dv_ts_tz_from_iso(&call, "2026-11-21 09:30 Asia/Seoul", 27);
// timezone_parse(&paris, "Europe/Paris", 12);
// const dv_ts_ltz_t instant = {call.utc};
// dv_ts_tz_from_ts_ltz(&call, &instant, &paris);
// dv_ts_tz_to_iso(&call, text, sizeof text);
// puts(text);                                       // 2026-11-21 01:30:00.000000000 Europe/Paris CET
// ```
//
// Unless said otherwise every function works in place on its first argument, allocates nothing, takes no lock
// and may be called from any thread on records that no other thread is writing. A NULL pointer is reported by
// an assertion ("ts_tz != NULL", "sess_tz != NULL", ...); the call then returns (0 where it returns a value).
// Any bytes are a record: one that is not valid gives an unspecified result or a documented error, never a
// wild access.

#ifndef DVTYPES_TIMESTAMP_TZ_H
#define DVTYPES_TIMESTAMP_TZ_H

#include "dvtypes/timestamp.h"
#include "dvtypes/timezone.h"

#ifdef __cplusplus
extern "C" {
#endif

extern DV_EXPORT_DATA const dv_ts_tz_t null_dv_ts_tz;    // all zero: SQL NULL where one must be passed
extern DV_EXPORT_DATA const dv_ts_ltz_t null_dv_ts_ltz;  // the same

// ---------------------------------------------------------------------------------------------------------
// WITH TIME ZONE: making one
// ---------------------------------------------------------------------------------------------------------

// What is wrong with the bytes of a record that came from elsewhere, as an English clause; NULL when nothing
// is: the time in UTC is that of a TIMESTAMP, the zone one of timezone_get_fault, and the local time lies in
// the calendar.
DV_EXPORT const char *dv_ts_tz_get_fault(const dv_ts_tz_t *ts_tz);
DV_EXPORT const char *dv_ts_ltz_get_fault(const dv_ts_ltz_t *ts_ltz);

// Fields of the session's local time. Each is checked as it is stored, and the record with it, in the order
// of the parameters: give a valid record, such as one that was just read. fsec in nanoseconds.
// Raises  -5114  a field out of range, or no such date so far     -5110  as above
DV_EXPORT void dv_ts_tz_from_unit_values(dv_ts_tz_t *ts_tz, int year, int month, int day, int hour, int min,
                                         int second, int fsec, const timezone_t *sess_tz);

// The session's local time; the fraction of a DATE is 0.
// Raises  -5110  as above     -5114  the instant is out of the range of DATE arithmetic
DV_EXPORT void dv_ts_tz_from_date(dv_ts_tz_t *ts_tz, const dv_date_t *date, const timezone_t *sess_tz);
DV_EXPORT void dv_ts_tz_from_timestamp(dv_ts_tz_t *ts_tz, const dv_timestamp_t *ts,
                                       const timezone_t *sess_tz);

// The same instant in the session's zone.
DV_EXPORT void dv_ts_tz_from_ts_ltz(dv_ts_tz_t *ts_tz, const dv_ts_ltz_t *ts_ltz, const timezone_t *sess_tz);

// The host's present local time (dv_getlocaltime), taken for local time of the session, to the microsecond.
// Raises  as dv_ts_tz_from_timestamp
DV_EXPORT void dv_ts_tz_current(dv_ts_tz_t *ts_tz, const timezone_t *sess_tz);

// -1, 0 or 1 by the instants; zones take no part. NULL pointers are allowed and come first.
DV_EXPORT int dv_ts_tz_compare(const dv_ts_tz_t *ts_tz1, const dv_ts_tz_t *ts_tz2);

// As dv_timestamp_trim_fsec.
DV_EXPORT void dv_ts_tz_trim_fsec(dv_ts_tz_t *ts_tz, int fprec);

// ---------------------------------------------------------------------------------------------------------
// WITH TIME ZONE: numbers and intervals
// ---------------------------------------------------------------------------------------------------------

// As dv_timestamp_to_double and its like, of the local time in the value's own zone; and from a number of
// local time in the session's, which raise as dv_timestamp_from_double, dv_timestamp_from_number and
// dv_ts_tz_from_timestamp.
DV_EXPORT double dv_ts_tz_to_double(const dv_ts_tz_t *ts_tz);
DV_EXPORT void dv_ts_tz_to_number(const dv_ts_tz_t *ts_tz, number_t *num);
DV_EXPORT void dv_ts_tz_from_double(double from, dv_ts_tz_t *ts_tz, const timezone_t *sess_tz);
DV_EXPORT void dv_ts_tz_from_number(const number_t *num, dv_ts_tz_t *ts_tz, const timezone_t *sess_tz);

// Adds or subtracts an interval on the fields in UTC, then gives the zone the offset of the new instant.
// Raises  -5114  as dv_timestamp_add_itv_dts     -5005  months: the target month does not have the day
DV_EXPORT void dv_ts_tz_add_itv_ytm(dv_ts_tz_t *ts_tz, const dv_itv_ytm_t *ytm);
DV_EXPORT void dv_ts_tz_sub_itv_ytm(dv_ts_tz_t *ts_tz, const dv_itv_ytm_t *ytm);
DV_EXPORT void dv_ts_tz_add_itv_dts(dv_ts_tz_t *ts_tz, const dv_itv_dts_t *dts);
DV_EXPORT void dv_ts_tz_sub_itv_dts(dv_ts_tz_t *ts_tz, const dv_itv_dts_t *dts);

// left - right, as dv_timestamp_sub_timestamp_into_itv_ytm and ..._dts do it with the fields in UTC.
DV_EXPORT void dv_ts_tz_sub_ts_tz_into_itv_ytm(dv_itv_ytm_t *dest, const dv_ts_tz_t *left,
                                               const dv_ts_tz_t *right);
DV_EXPORT void dv_ts_tz_sub_ts_tz_into_itv_dts(dv_itv_dts_t *dest, const dv_ts_tz_t *left,
                                               const dv_ts_tz_t *right);

// ---------------------------------------------------------------------------------------------------------
// WITH TIME ZONE: text, as dvtypes/timestamp.h has it for TIMESTAMP
// ---------------------------------------------------------------------------------------------------------

// Reads local time: of the zone that the text names, else of the session. An abbreviation (TZD) chooses the
// meaning of a local time that clocks showed twice, and must be the one in force at any other, where
// timezone_normalize looks at it.
//
//   fmt_ctx  compiled for reading a TIMESTAMP WITH TIME ZONE
//
// Raises  -5109  the abbreviation was not in force     -5110  clocks never showed the time
//         and as dv_timestamp_from_str, and what the zone elements raise
// A day of the year and the validity of the date are looked at after the time has become UTC. On a raise the
// record holds the fields read so far.
DV_EXPORT void dv_ts_tz_from_str(dv_ts_tz_t *ts_tz, const char *str, int str_len, const dt_fmt_ctx_t *fmt_ctx,
                                 int fprec, const timezone_t *sess_tz);

// The same without a look at the clock: as dv_date_from_str_as_of. Raises as dv_ts_tz_from_str.
DV_EXPORT void dv_ts_tz_from_str_as_of(dv_ts_tz_t *ts_tz, const char *str, int str_len,
                                       const dt_fmt_ctx_t *fmt_ctx, int fprec, const timezone_t *sess_tz,
                                       const dv_date_t *as_of);

// dv_ts_tz_from_str under a model as text.
DV_EXPORT void dv_ts_tz_from_str_DEPRECATED(dv_ts_tz_t *ts_tz, const char *str, int str_len, const char *fmt,
                                            int fmt_len, int fprec, const timezone_t *sess_tz);

// Writes the local time in the value's own zone; null_dv_ts_tz as an empty text. Returns and raises as
// dv_timestamp_to_str, and
// Raises  -5114  the local time is out of the range of DATE arithmetic ("year", ...)
DV_EXPORT conv_status_t dv_ts_tz_to_str(const dv_ts_tz_t *ts_tz, char *str, int str_len,
                                        const dt_fmt_ctx_t *fmt_ctx, int fprec);
DV_EXPORT conv_status_t dv_ts_tz_to_str_DEPRECATED(const dv_ts_tz_t *ts_tz, char *str, int str_len,
                                                   const char *fmt, int fmt_len, int fprec);

// dv_ts_tz_current, then dv_ts_tz_to_str into buf with six digits of the fraction.
DV_EXPORT void dv_ts_tz_current_str(char *buf, int buf_len, const dt_fmt_ctx_t *fmt,
                                    const timezone_t *sess_tz);

// As dv_timestamp_get_length and dv_timestamp_check_format.
DV_EXPORT int dv_ts_tz_get_length(const char *fmt, int fmt_len, int fprec);
DV_EXPORT void dv_ts_tz_check_format(const char *fmt, int fmt_len);

// ---------------------------------------------------------------------------------------------------------
// WITH LOCAL TIME ZONE: what is above, in the session's zone
// ---------------------------------------------------------------------------------------------------------

// Each as the dv_ts_tz_ function of its name, with its errors: those of dv_ts_tz_from_unit_values,
// dv_ts_tz_from_timestamp, dv_ts_tz_from_number and dv_ts_tz_trim_fsec. from_unit_values checks against the
// record as it was.
DV_EXPORT void dv_ts_ltz_from_unit_values(dv_ts_ltz_t *ts_ltz, int year, int month, int day, int hour,
                                          int min, int second, int fsec, const timezone_t *sess_tz);
DV_EXPORT void dv_ts_ltz_from_date(dv_ts_ltz_t *ts_ltz, const dv_date_t *date, const timezone_t *sess_tz);
DV_EXPORT void dv_ts_ltz_from_timestamp(dv_ts_ltz_t *ts_ltz, const dv_timestamp_t *ts,
                                        const timezone_t *sess_tz);
DV_EXPORT void dv_ts_ltz_from_ts_tz(dv_ts_ltz_t *ts_ltz, const dv_ts_tz_t *ts_tz);
DV_EXPORT int dv_ts_ltz_compare(const dv_ts_ltz_t *ts_ltz1, const dv_ts_ltz_t *ts_ltz2);
DV_EXPORT void dv_ts_ltz_current(dv_ts_ltz_t *ts_ltz, const timezone_t *sess_tz);
DV_EXPORT void dv_ts_ltz_trim_fsec(dv_ts_ltz_t *ts_ltz, int fprec);
DV_EXPORT double dv_ts_ltz_to_double(const dv_ts_ltz_t *ts_ltz, const timezone_t *sess_tz);
DV_EXPORT void dv_ts_ltz_to_number(const dv_ts_ltz_t *ts_ltz, number_t *num, const timezone_t *sess_tz);
DV_EXPORT void dv_ts_ltz_from_double(double from, dv_ts_ltz_t *ts_ltz, const timezone_t *sess_tz);
DV_EXPORT void dv_ts_ltz_from_number(const number_t *num, dv_ts_ltz_t *ts_ltz, const timezone_t *sess_tz);

// Text of the session's local time, by dv_timestamp_from_str and dv_timestamp_to_str: zone elements raise
// -5011. Reading stores the offset in force in *sess_tz, which no other thread may use meanwhile. The model
// of ..._to_str_DEPRECATED is compiled for TIMESTAMP, so that zone elements raise -5012 there.
DV_EXPORT void dv_ts_ltz_from_str(dv_ts_ltz_t *ts_ltz, const char *str, int str_len, const dt_fmt_ctx_t *fmt,
                                  int fprec, timezone_t *sess_tz);
DV_EXPORT void dv_ts_ltz_from_str_DEPRECATED(dv_ts_ltz_t *ts_ltz, const char *str, int str_len,
                                             const char *fmt, int fmt_len, int fprec, timezone_t *sess_tz);
DV_EXPORT conv_status_t dv_ts_ltz_to_str(const dv_ts_ltz_t *ts_ltz, char *str, int str_len,
                                         const dt_fmt_ctx_t *fmt, int fprec, const timezone_t *sess_tz);
DV_EXPORT conv_status_t dv_ts_ltz_to_str_DEPRECATED(const dv_ts_ltz_t *ts_ltz, char *str, int str_len,
                                                    const char *fmt, int fmt_len, int fprec,
                                                    const timezone_t *sess_tz);

#ifdef __cplusplus
}  // extern "C"
#endif

#endif  // DVTYPES_TIMESTAMP_TZ_H
