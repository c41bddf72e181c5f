// dvtypes/timestamp.h: TIMESTAMP, a date and time of day to the nanosecond, without a time zone.
//
// A record of twelve bytes, the same in memory, on the wire and on disk: a DATE, then the fraction of the
// second. Unsigned bytewise order is the order of the values.
//
//   2001-02-03 04:05:06.5    78 65 02 03 04 05 06 00 1D CD 65 00
//
// What dvtypes/datetime.h says of years, of the calendar and of validity holds here too.
//
// Unless said otherwise every function works in place on its first argument, allocates nothing, takes no lock
// and may be called from any thread on records that no other thread is writing. A NULL pointer is reported by
// an assertion ("ts != NULL", "dts != NULL", ...); the call then returns (0 where it returns a value). Any
// bytes are a record: one that is not valid gives an unspecified result or a documented error, never a wild
// access.

#ifndef DVTYPES_TIMESTAMP_H
#define DVTYPES_TIMESTAMP_H

#include "dvtypes/base.h"
#include "dvtypes/datetime.h"
#include "dvtypes/datetime_fmt.h"
#include "dvtypes/interval.h"
#include "dvtypes/number.h"
#include "dvtypes/timestamp_record.h"
#include "dvtypes/word.h"

#ifdef __cplusplus
extern "C" {
#endif

extern DV_EXPORT_DATA const dv_timestamp_t null_dv_timestamp;  // all zero: SQL NULL where one must be passed

// ---------------------------------------------------------------------------------------------------------
// Fields, and making one
// ---------------------------------------------------------------------------------------------------------

// One field: YEAR (signed), MONTH, DAY, HOUR, MINUTE, SECOND or FSEC (nanoseconds).
// Raises  -5006  any other unit
DV_EXPORT int dv_timestamp_get_field(const dv_timestamp_t *ts, dt_fmt_unit_t unit_type);

// Stores one field.
//
//   check_valid_input   1: checks the value as dv_dt_check_validity_of_unit before it is stored
//   check_valid_result  1: checks the record after it is stored: as dv_date_is_valid for YEAR, MONTH and DAY,
//                       as dv_time_is_valid for the others
//
// Raises  -5006  any other unit     -5114  a check failed
DV_EXPORT void dv_timestamp_set_field(dv_timestamp_t *ts, dt_fmt_unit_t unit_type, int value,
                                      uchar check_valid_input, uchar check_valid_result);

// What is wrong with the bytes of a record that came from elsewhere, as an English clause; NULL when nothing
// is: it has the fault of neither its DATE (dv_date_get_fault) nor its fraction, and the byte dummy is 0.
DV_EXPORT const char *dv_timestamp_get_fault(const dv_timestamp_t *ts);

// fsec in nanoseconds.
// Raises  -5114  a field out of range, or no such date
DV_EXPORT void dv_timestamp_from_unit_values(dv_timestamp_t *ts, int year, int month, int day, int hour,
                                             int min, int second, int fsec);

// The fraction is 0. date may lie in *ts.
// Raises  -5114  the time of day is out of range
DV_EXPORT void dv_timestamp_from_date(dv_timestamp_t *ts, const dv_date_t *date);

// The local time of a zoned timestamp: in its own zone, with the offset that it holds, or in the session's
// zone. Raises  -5114  the local time is out of the range of DATE arithmetic
DV_EXPORT void dv_timestamp_from_ts_tz(dv_timestamp_t *ts, const dv_ts_tz_t *ts_tz);
DV_EXPORT void dv_timestamp_from_ts_ltz(dv_timestamp_t *ts, const dv_ts_ltz_t *ts_ltz,
                                        const timezone_t *sess_tz);

// The current local date and time to the microsecond, by dv_getlocaltime.
DV_EXPORT void dv_timestamp_current(dv_timestamp_t *ts);

// -1, 0 or 1 by the unsigned order of the twelve bytes. NULL pointers are allowed and come first.
DV_EXPORT int dv_timestamp_compare(const dv_timestamp_t *ts1, const dv_timestamp_t *ts2);

// The same order without a call, for sorting and searching; neither pointer is NULL.
static inline int dv_timestamp_cmp(const dv_timestamp_t *ts1, const dv_timestamp_t *ts2) {
    return dv_compare_12_bytes(ts1, ts2);
}

// Cuts the fraction to fprec digits, counted from its first significant digit, not from the point:
// .123456789 to 3 is .123, but .000123456 to 3 is .000123, and .05 to 1 stays.
// Raises  -5041  fprec outside 0..9
//         -5114  a stored fraction of 2^31 and above ("fractional second", ...)
DV_EXPORT void dv_timestamp_trim_fsec(dv_timestamp_t *ts, int fprec);

// ---------------------------------------------------------------------------------------------------------
// Numeric views
// ---------------------------------------------------------------------------------------------------------

// Seconds since the beginning of Julian Day 0 with their fraction. The double has some 17 digits, so the last
// digits of the fraction are lost; the NUMBER is exact.
DV_EXPORT double dv_timestamp_to_double(const dv_timestamp_t *ts);
DV_EXPORT void dv_timestamp_to_number(const dv_timestamp_t *ts, number_t *num);

// The way back, but in the Gregorian calendar for every day, with a year 0 that no record can hold. So a
// value from 1582-10-15 on comes back as it was (through a double to 31 microseconds), an older one on
// another day. What is below a nanosecond is cut off. Fliegel and Van Flandern, A machine algorithm for
// processing calendar dates, Communications of the ACM 11 (1968).
//
//   num  a valid NUMBER that is not NULL
//
// Raises  -5114  a field out of range: too early, too late, in the year 0, negative in its time of day, NaN,
//                an infinity; *ts is unchanged
//         -5072  the NUMBER does not fit 64 bits
DV_EXPORT void dv_timestamp_from_double(double from, dv_timestamp_t *ts);
DV_EXPORT void dv_timestamp_from_number(const number_t *num, dv_timestamp_t *ts);

// ---------------------------------------------------------------------------------------------------------
// Arithmetic
// ---------------------------------------------------------------------------------------------------------

// Adds or subtracts an interval, to the nanosecond: its whole seconds first, then its fraction.
// Raises  -5114  the result of either step lies before day number 0 or after 9999-12-31; the second step's
//                leaves the first done
DV_EXPORT void dv_timestamp_add_itv_dts(dv_timestamp_t *ts, const dv_itv_dts_t *dts);
DV_EXPORT void dv_timestamp_sub_itv_dts(dv_timestamp_t *ts, const dv_itv_dts_t *dts);

// left - right in days, seconds and nanoseconds. The value is exact; its fraction is added as
// dv_itv_dts_add_fsec does, so that it has the sign of the seconds unless these come to 0.
DV_EXPORT void dv_timestamp_sub_timestamp_into_itv_dts(dv_itv_dts_t *dest, const dv_timestamp_t *left,
                                                       const dv_timestamp_t *right);

// left - right in months, rounded at about half a month, 15 days; reversed operands give the negated fields.
//
//   2001-03-20 - 2001-02-05   2 months: a month and 15 days
//   2001-03-19 - 2001-02-05   1 month
//
// Counted from the earlier to the later value: the days of the month are compared, a later value whose time
// of day is the earlier one having its day counted one up. Where it is not below the earlier value's, 15 days
// above round up. Where it is below, a month is taken off, and put back when the earlier value's day is at
// most 16, or when less than half a month is missing: at most 15 days with a later time of day, fewer with an
// earlier one, never with the same one. Years and months are stored without a carry between them: the months
// may come to -1 or 12, and their byte is then that count modulo 256.
DV_EXPORT void dv_timestamp_sub_timestamp_into_itv_ytm(dv_itv_ytm_t *dest, const dv_timestamp_t *left,
                                                       const dv_timestamp_t *right);

// ---------------------------------------------------------------------------------------------------------
// Text, under format models (dvtypes/datetime.h has the rules that all types share). A model that was
// compiled for TIMESTAMP has no time zone element: dt_fmt_ctx_set refuses it with -5012. Other types' models
// raise -5011 here.
// ---------------------------------------------------------------------------------------------------------

// Reads a TIMESTAMP. Fields that the model does not have are those of dv_date_init, and the fraction 0.
//
//   str, str_len  the text; 0 means up to its NUL
//   fmt_ctx       compiled for reading
//   fprec         fractional-second precision of the type, at most 9
//
// Raises  -5007  an empty text     -5041  fprec above 9     -5011  the model has a time zone element
//         -5010  characters left over                       -5114  the fields make no valid date
//         and what the elements of the model raise
// On a raise the record holds the fields read so far.
DV_EXPORT void dv_timestamp_from_str(dv_timestamp_t *ts, const char *str, int str_len,
                                     const dt_fmt_ctx_t *fmt_ctx, int fprec);

// The same without a look at the clock: as dv_date_from_str_as_of. Raises as dv_timestamp_from_str.
DV_EXPORT void dv_timestamp_from_str_as_of(dv_timestamp_t *ts, const char *str, int str_len,
                                           const dt_fmt_ctx_t *fmt_ctx, int fprec, const dv_date_t *as_of);

// dv_timestamp_from_str under a model as text.
DV_EXPORT void dv_timestamp_from_str_DEPRECATED(dv_timestamp_t *ts, const char *str, int str_len,
                                                const char *fmt, int fmt_len, int fprec);

// Writes a TIMESTAMP; null_dv_timestamp as an empty text.
//
//   str, str_len  output buffer and its bytes
//   fmt_ctx       compiled for writing
//   fprec         digits of an FF that has none of its own, at most 9
//
// Returns CONV_STATUS_WHOLE, or CONV_STATUS_CUT when the buffer was too short; what fits is then in it.
// Raises  -5007  str_len below 1     -5041  fprec above 9     -5011  the model has a time zone element
//         -5054  it has J
DV_EXPORT conv_status_t dv_timestamp_to_str(const dv_timestamp_t *ts, char *str, int str_len,
                                            const dt_fmt_ctx_t *fmt_ctx, int fprec);
DV_EXPORT conv_status_t dv_timestamp_to_str_DEPRECATED(const dv_timestamp_t *ts, char *str, int str_len,
                                                       const char *fmt, int fmt_len, int fprec);

// dv_timestamp_current, then dv_timestamp_to_str into buf with six digits of the fraction.
DV_EXPORT void dv_timestamp_current_str(char *buf, int buf_len, const dt_fmt_ctx_t *fmt);

// The bytes that writing under the model takes, as dt_fmt_get_predicted_str_len estimates them; and whether
// it can read a TIMESTAMP: returns then. Both raise as dt_fmt_ctx_set.
DV_EXPORT int dv_timestamp_get_length(const char *fmt, int fmt_len, int fprec);
DV_EXPORT void dv_timestamp_check_format(const char *fmt, int fmt_len);

// 1 when a text has the form of an ANSI timestamp literal's body, "2001-02-03 04:05:06.5", else 0. The digits
// of a field may be fewer than its places, and the values are not looked at; the fraction must be there. Only
// the first DV_DATETIME_TEXT_MAX bytes count. NULL and a length of 0 are accepted, a length below 0 is not.
// Raises nothing.
DV_EXPORT uchar dv_timestamp_check_literal(dvstr_charset_t charset, const char *str, int str_len);

#ifdef __cplusplus
}  // extern "C"
#endif

#endif  // DVTYPES_TIMESTAMP_H
