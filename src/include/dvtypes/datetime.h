// dvtypes/datetime.h: DATE and TIME.
//
// DATE is a calendar date with a time of day to the second, TIME a time of day to the nanosecond. Both are
// records of eight bytes, the same in memory, on the wire and on disk, whose unsigned bytewise order is the
// order of the values (the last byte of a DATE is 0 and takes no part).
//
//   2024-02-29 13:05:00   78 7C 02 1D 0D 05 00 00        1 BC-01-01   64 63 01 01 00 00 00 00
//   13:14:15.5            0D 0E 0F 00 1D CD 65 00
//
// Years run from -9999 to 9999 without a year 0; negative years are BC. The calendar is Julian up to
// 1582-10-04 and Gregorian from 1582-10-15; the ten days between do not exist, and a value that names one
// becomes 1582-10-15 when it is checked. Day numbers are Julian Day Numbers: 1582-10-15 is 2299161,
// 9999-12-31 is 5373484, and the day number modulo 7 is the weekday, 0 for Monday.
//
// ```c
// dv_date_t date;
// dv_date_from_unit_values(&date, 2024, 1, 31, 13, 5, 0);
// dv_date_add_month(&date, 1, 0);
// printf("%d-%d\n", date.month, date.day);                         // 2-29
// printf("%d\n", dv_date_to_julian_day(&date));                    // 2460370
// ```
//
// Unless said otherwise every function works in place on its first argument, allocates nothing, takes no lock
// and may be called from any thread on records that no other thread is writing. A NULL pointer is reported by
// an assertion ("date != NULL", "time != NULL", ...); the call then returns (0 where it returns a value). Any
// bytes are a record: one that is not valid gives an unspecified result or a documented error, never a wild
// access.

#ifndef DVTYPES_DATETIME_H
#define DVTYPES_DATETIME_H

#include <time.h>

#include "dvtypes/base.h"
#include "dvtypes/datetime_fmt.h"
#include "dvtypes/datetime_record.h"
#include "dvtypes/datetime_unit.h"
#include "dvtypes/interval.h"
#include "dvtypes/nls.h"
#include "dvtypes/timestamp_record.h"
#include "dvtypes/word.h"

#ifdef __cplusplus
extern "C" {
#endif

enum {
    DV_YEAR_MIN = -9999,
    DV_YEAR_MAX = 9999,
    DV_JULIAN_DAY_MAX = 5373484,       // 9999-12-31
    DV_JULIAN_DAY_GREGORIAN = 2299161  // 1582-10-15
};

extern DV_EXPORT_DATA const dv_date_t null_dv_date;  // all zero: SQL NULL where a DATE must be passed
extern DV_EXPORT_DATA const dv_date_t max_dv_date;   // 9999-12-31 00:00:00
extern DV_EXPORT_DATA const dv_time_t null_dv_time;  // all zero, which is midnight too

// ---------------------------------------------------------------------------------------------------------
// DATE: fields and validity
// ---------------------------------------------------------------------------------------------------------

// Checks one field's value.
//
//   YEAR -9999..9999 but 0    MONTH 1..12    DAY 1..31    HOUR 0..23    MINUTE, SECOND 0..59
//   FSEC 0..999999999
//
// Raises  -5114  out of range; (word, value, lowest, highest), the lowest year given as -4713. The words:
//                "year", "month", "day", "hour", "minute", "second", "fractional second"
// Any other unit asserts "false" and returns.
DV_EXPORT void dv_dt_check_validity_of_unit(dt_fmt_unit_t unit, int value);

// One field: YEAR (signed), MONTH, DAY, HOUR, MINUTE or SECOND.
// Raises  -5006  any other unit
DV_EXPORT int dv_date_get_field(const dv_date_t *date, dt_fmt_unit_t unit);

// Stores one field.
//
//   check_valid_input   1: checks the value as dv_dt_check_validity_of_unit before it is stored
//   check_valid_result  1: checks the record as dv_date_is_valid after it is stored
//
// Raises  -5006  any other unit     -5114  a check failed
DV_EXPORT void dv_date_set_field(dv_date_t *date, dt_fmt_unit_t unit_type, int value, uchar check_valid_input,
                                 uchar check_valid_result);

// Checks the whole record: year, month, day against the length of its month, hour, minute, second. A day from
// 1582-10-05 to 1582-10-14 becomes 1582-10-15.
// Raises  -5114  the first field out of range; for the day ("day", value, 1, length of the month)
DV_EXPORT void dv_date_is_valid(dv_date_t *date);

// What is wrong with the bytes of a record that came from elsewhere, as an English clause ("its month does
// not have its day"); NULL when nothing is: year, month, day of the calendar and time of day are those of a
// DATE. The last byte is not looked at, so that the DATE in a timestamp may be given, too.
DV_EXPORT const char *dv_date_get_fault(const dv_date_t *date);

// The length of a month, 28 to 31; October 1582 counts 31. Leap years: from 1583 by the Gregorian rule, 1 to
// 1582 every fourth, -45 to -9 every third (-45, -42, ... -9), none before. For a month out of range it gives
// 0, after the assertion "month >= 1" or "month <= 12".
DV_EXPORT int dt_fmt_get_days_of_mon(int year, int month);

// ---------------------------------------------------------------------------------------------------------
// DATE: making one
// ---------------------------------------------------------------------------------------------------------

// The value into which text is read: the current local year and month, day 1, 00:00:00.
DV_EXPORT void dv_date_init(dv_date_t *date);

// The current local date and time, by dv_getlocaltime.
DV_EXPORT void dv_date_current(dv_date_t *date);

// Copies eight bytes.
DV_EXPORT void dv_date_assign(dv_date_t *dst, const dv_date_t *src);

// Raises  -5114  a field out of range, or no such date
DV_EXPORT void dv_date_from_unit_values(dv_date_t *date, int year, int month, int day, int hour, int minute,
                                        int second);

// The local date and time of a POSIX time, by the C library. Note the order of the arguments.
// Raises  -5114  the year is out of range (also when the C library cannot tell it: its value is then 0), or
//                the second is a leap second, in zones that count them
DV_EXPORT void dv_date_from_epoch_time(time_t t, dv_date_t *date);

// The DATE bytes of a TIMESTAMP; the fraction is cut off.
DV_EXPORT void dv_date_from_timestamp(dv_date_t *date, const dv_timestamp_t *ts);

// The local DATE of a zoned timestamp: in its own zone, with the offset that it holds, or in the zone of the
// session.
// Raises  -5114  the local time is out of the range of DATE arithmetic
DV_EXPORT void dv_date_from_ts_tz(dv_date_t *date, const dv_ts_tz_t *ts_tz);
DV_EXPORT void dv_date_from_ts_ltz(dv_date_t *date, const dv_ts_ltz_t *ts_ltz, const timezone_t *sess_tz);

// Today's local date, by dv_getlocaltime, at the given time; the fraction is cut off.
DV_EXPORT void dv_date_from_time(dv_date_t *date, const dv_time_t *time);

// ---------------------------------------------------------------------------------------------------------
// DATE: day numbers and numeric views
// ---------------------------------------------------------------------------------------------------------

// The Julian Day Number of the date; the time of day takes no part. Asserts "year != 0".
// Formulas: Meeus, Astronomical Algorithms, 2nd ed., chapter 7, with divisions that truncate toward zero; so
// the numbers of dates before -4717-03-01 are a day above a day count, but for every fourth year. Before 1 AD
// the formulas have other leap years than dt_fmt_get_days_of_mon: 1 BC, 5 BC, 9 BC, ...
DV_EXPORT int dv_date_to_julian_day(const dv_date_t *date);

// Sets year, month and day to those of a Julian Day Number; the time of day is kept. Inverse of the above for
// 0..5373484 (day 0 is stored as the year -4713). For any other number the record gets an unspecified date.
// Raises  -5114  a month or day that the formulas give out of range, for numbers far below 0
DV_EXPORT void dv_date_from_julian_day(dv_date_t *date, int jd);

// Seconds since the beginning of Julian Day 0.
DV_EXPORT double dv_date_to_double(const dv_date_t *date);

// The POSIX time of the date taken as local time, with the daylight-saving flag of this moment, by the C
// library's mktime; -1 when it has none.
DV_EXPORT time_t dv_date_to_system_time(const dv_date_t *date);

// ---------------------------------------------------------------------------------------------------------
// DATE: arithmetic
// ---------------------------------------------------------------------------------------------------------

// Adds days, with a fraction: rounded to the second, half up, measured from the day below.
// -0.25 days from 2001-01-02 00:00:00 is 2001-01-01 18:00:00.
// Raises  -5114  the result lies before day number 0 or after 9999-12-31, or days is infinite or NaN
//                ("year", the current year, -4713, 9999)
DV_EXPORT void dv_date_add_day(dv_date_t *date, double days);

// Adds days, hours, minutes or seconds, with carry (DT_FMT_UNIT_DAY, ..._SECOND). 0 changes nothing, whatever
// the unit.
// Raises  -5006  any other unit     -5114  as dv_date_add_day
DV_EXPORT void dv_date_add_field(dv_date_t *date, dt_fmt_unit_t unit_type, int64_t add_val);

// Adds calendar months; the time of day is kept.
//
//   month        any sign; 0 changes nothing
//   is_from_itv  0: a day that the target month lacks becomes its last day (2001-01-31 + 1 = 2001-02-28)
//                1: such a day is an error (the rule of INTERVAL YEAR TO MONTH)
//
// The last day of a month goes to the last day of the target month: 2001-02-28 + 1 = 2001-03-31. A result
// that falls between 1582-10-04 and 1582-10-15 stays as it is.
// Raises  -5005  the target month is too short and is_from_itv is 1
//         -5114  the result lies in year 0 or outside -9999..9999
// On a raise the year and month may already be changed.
DV_EXPORT void dv_date_add_month(dv_date_t *date, int month, uchar is_from_itv);

// date1 - date2 in days. Hours, minutes and seconds are weighed by 1/24, 1/1440 and 1/86400 as rounded to
// single precision, summed in double in this order.
DV_EXPORT double dv_date_sub(const dv_date_t *date1, const dv_date_t *date2);

// date1 - date2 in months. Whole when the days of the month are equal or both the last, whatever the time of
// day; else with a fraction of a 31-day month: (hour * 216000 + minute * 3600 + second) / 5184000 + day for
// each date in single precision, over 31. (A second weighs 1/5184000 of a day in it, not 1/86400.)
DV_EXPORT double dv_date_months_between(const dv_date_t *date1, const dv_date_t *date2);

// The last day of the month, whatever the day is, with the time of day kept. result may be date.
// Raises  -5114  another field is out of range; for the month it is ("day", 0, 1, 31). result is then written
DV_EXPORT void dv_date_get_last_date(const dv_date_t *date, dv_date_t *result);

// Moves the date 1 to 7 days ahead to a named weekday; the time of day is kept.
//
//   day_name, day_name_len  the full or abbreviated name in the language, in any case, or a number 1
//                           (Sunday) to 7; a length below 1 means up to its NUL
//   charset                 of the name
//
// Raises  -5113  the name is none: ("day_name", name, "Inconsistent with NLS_DATE_LANGUAGE")
//         -5114  the result lies before day number 0 or after 9999-12-31
DV_EXPORT void dv_date_get_next_day(dv_date_t *date, const char *day_name, int day_name_len,
                                    dv_nls_date_lang_t nls_lang, dvstr_charset_t charset);

// Adds or subtracts an interval: its months as dv_date_add_month with is_from_itv 1, its days and seconds as
// dv_date_add_field. The fraction of a second of the interval takes no part. Raises as those do.
DV_EXPORT void dv_date_add_itv_ytm(dv_date_t *date, const dv_itv_ytm_t *ytm);
DV_EXPORT void dv_date_sub_itv_ytm(dv_date_t *date, const dv_itv_ytm_t *ytm);
DV_EXPORT void dv_date_add_itv_dts(dv_date_t *date, const dv_itv_dts_t *dts);
DV_EXPORT void dv_date_sub_itv_dts(dv_date_t *date, const dv_itv_dts_t *dts);

// -1, 0 or 1. NULL pointers are allowed and come first.
DV_EXPORT int dv_date_compare(const dv_date_t *date1, const dv_date_t *date2);

// The same order without a call, for sorting and searching; neither pointer is NULL.
static inline int dv_date_cmp(const dv_date_t *date1, const dv_date_t *date2) {
    const uint64_t key1 = dv_load_word(date1) >> 8, key2 = dv_load_word(date2) >> 8;  // without the dummy
    if (key1 == key2) return 0;
    return key1 < key2 ? -1 : 1;
}

// ---------------------------------------------------------------------------------------------------------
// TIME
// ---------------------------------------------------------------------------------------------------------

// One field: HOUR, MINUTE, SECOND or FSEC (nanoseconds).
// Raises  -5006  any other unit
DV_EXPORT int dv_time_get_field(const dv_time_t *time, dt_fmt_unit_t unit_type);

// Stores one field, with the checks of dv_date_set_field (the second one is dv_time_is_valid).
// Raises  -5006  any other unit     -5114  a check failed
DV_EXPORT void dv_time_set_field(dv_time_t *time, dt_fmt_unit_t unit_type, int value, uchar check_valid_input,
                                 uchar check_valid_result);

// What is wrong with the bytes of a record that came from elsewhere, as an English clause; NULL when nothing
// is: hour, minute, second and fraction are those of a TIME and the byte dummy is 0.
DV_EXPORT const char *dv_time_get_fault(const dv_time_t *time);

// Checks hour, minute and second; the fraction is not looked at.
// Raises  -5114  the first of them out of range
DV_EXPORT void dv_time_is_valid(dv_time_t *time);

// Sets the four fields; the byte dummy is left as it was.
// Raises  -5114  a field out of range
DV_EXPORT void dv_time_from_unit_values(dv_time_t *time, int hour, int minute, int second, int fsec);

// The time of day of a TIMESTAMP. Of the zoned types it is the one in UTC: no zone is applied.
DV_EXPORT void dv_time_from_timestamp(dv_time_t *time, const dv_timestamp_t *ts);
DV_EXPORT void dv_time_from_ts_tz(dv_time_t *time, const dv_ts_tz_t *ts_tz);
DV_EXPORT void dv_time_from_ts_ltz(dv_time_t *time, const dv_ts_ltz_t *ts_ltz);

// The time of day of a DATE; the fraction is 0.
DV_EXPORT void dv_time_from_date(dv_time_t *time, const dv_date_t *date);

// The current local time of day to the microsecond, by dv_getlocaltime.
DV_EXPORT void dv_time_current(dv_time_t *time);

// -1, 0 or 1 by the unsigned order of the eight bytes. NULL pointers are allowed and come first.
DV_EXPORT int dv_time_compare(const dv_time_t *time1, const dv_time_t *time2);

// Seconds since midnight: hour * 3600 + minute * 60 + second + fraction * 1e-9.
DV_EXPORT double dv_time_to_double(const dv_time_t *time);

// Cuts the fraction to fprec digits, counted from its first significant digit: 12345678 ns to 3 is 12300000,
// 5000000 ns to 2 stays. A stored fraction of ten digits is left as it is.
// Raises  -5041  fprec outside 0..9
//         -5114  a stored fraction of 2^31 and above ("fractional second", ...)
DV_EXPORT void dv_time_trim_fsec(dv_time_t *time, int fprec);

// ---------------------------------------------------------------------------------------------------------
// Text, truncation and rounding, under format models
// ---------------------------------------------------------------------------------------------------------
//
// A model is compiled once (dvtypes/datetime_fmt.h) and then serves any number of values and threads. What
// its elements raise when they read or write is listed there. The functions that take a model as text
// (fmt_len 0: up to its NUL) compile it for the one call, in Korean and the character set MSWIN949; they
// allocate by _system_allocator and release what they took on every path, and also raise as dt_fmt_ctx_set
// does.
//
// Reading looks at the first 129 bytes of the text. Writing ends the text with a NUL when the buffer has a
// byte left for it: a text that fills the buffer exactly has none.

enum { DV_DATETIME_TEXT_MAX = 129 };  // bytes of a text that reading looks at

// Reads a DATE. Fields that the model does not have are those of dv_date_init.
//
//   str, str_len  the text; 0 means up to its NUL
//   fmt_ctx       compiled for reading
//
// Raises  -5007  an empty text     -5011  the model has FF     -5010  characters left over
//         -5114  the fields make no valid date                 and what the elements of the model raise
// On a raise the record holds the fields read so far.
DV_EXPORT void dv_date_from_str(dv_date_t *date, const char *str, int str_len, const dt_fmt_ctx_t *fmt_ctx);

// The same without a look at the clock: as_of stands for the present. The year and the month that the model
// does not have are its own, and Y, YY, YYY and RR complete the year from its year.
//
//   as_of  a valid DATE; may be the record that is read
//
// Raises as dv_date_from_str.
// A text, a model and as_of give the same value for ever: what is to be stored in an index is read this way.
DV_EXPORT void dv_date_from_str_as_of(dv_date_t *date, const char *str, int str_len,
                                      const dt_fmt_ctx_t *fmt_ctx, const dv_date_t *as_of);

// dv_date_from_str under a model as text.
DV_EXPORT void dv_date_from_str_DEPRECATED(dv_date_t *date, const char *str, int str_len, const char *fmt,
                                           int fmt_len);

// Writes a DATE; null_dv_date as an empty text.
//
//   str, str_len  output buffer and its bytes
//   fmt_ctx       compiled for writing
//
// Returns CONV_STATUS_WHOLE, or CONV_STATUS_CUT when the buffer was too short; what fits is then in it.
// Raises  -5007  str_len below 1     -5011  the model has FF or a time zone element     -5054  it has J
DV_EXPORT long dv_date_to_str(const dv_date_t *date, char *str, int str_len, const dt_fmt_ctx_t *fmt_ctx);
DV_EXPORT long dv_date_to_str_DEPRECATED(const dv_date_t *date, char *str, int str_len, const char *fmt,
                                         int fmt_len);

// dv_date_current, then dv_date_to_str into buf.
DV_EXPORT void dv_date_current_str(char *buf, int buf_len, const dt_fmt_ctx_t *fmt);
DV_EXPORT void dv_date_current_str_DEPRECATED(char *buf, int buf_len, const char *fmt, int fmt_len);

// The bytes that writing a DATE under the model takes, as dt_fmt_get_predicted_str_len estimates them. Raises
// as dt_fmt_ctx_set.
DV_EXPORT int dv_date_get_length(const char *fmt, int fmt_len);

// Returns when the model compiles for reading a DATE, else raises as dt_fmt_ctx_set. It may still hold
// elements that can only be written (CC, Q, IYYY, WW, IW, W, D, DAY, DY, YEAR): reading under them raises
// -5013.
DV_EXPORT void dv_date_check_format(const char *fmt, int fmt_len);

// Cuts or rounds a date to a unit, in place.
//
//   fmt, fmt_len  one format element, such as "MM" or "Q"; NULL and "" mean "DD"; fmt_len 0: up to its NUL
//
// Raises  -5014  fmt_len below 0, or no unit of truncation     -5114  the date or the result is out of range
DV_EXPORT void dv_date_trunc(dv_date_t *date, const char *fmt, int fmt_len);
DV_EXPORT void dv_date_round(dv_date_t *date, const char *fmt, int fmt_len);

// Reads a TIME; fields that the model does not have are 0.
//
//   str, str_len  the text; a length of 0 is an error here
//   fmt_ctx       compiled for reading
//   fprec         fractional-second precision of the type, at most 9
//
// Raises  -5007  str_len below 1     -5041  fprec above 9     -5011  a DATE or time zone element
//         -5010  characters left over                         and what the elements of the model raise
DV_EXPORT void dv_time_from_str(dv_time_t *time, const char *str, int str_len, const dt_fmt_ctx_t *fmt_ctx,
                                int fprec);
DV_EXPORT void dv_time_from_str_DEPRECATED(dv_time_t *time, const char *str, int str_len, const char *fmt,
                                           int fmt_len, int fprec);

// Writes a TIME. Arguments and result as dv_date_to_str; there is no NULL value.
// Raises  -5007  str_len below 1     -5041  fprec above 9     -5011  a DATE or time zone element
DV_EXPORT conv_status_t dv_time_to_str(const dv_time_t *time, char *str, int str_len,
                                       const dt_fmt_ctx_t *fmt_ctx, int fprec);
DV_EXPORT conv_status_t dv_time_to_str_DEPRECATED(const dv_time_t *time, char *str, int str_len,
                                                  const char *fmt, int fmt_len, int fprec);

// As dv_date_get_length and dv_date_check_format.
DV_EXPORT int dv_time_get_length(const char *fmt, int fmt_len, int fprec);
DV_EXPORT void dv_time_check_format(const char *fmt, int fmt_len);

#ifdef __cplusplus
}  // extern "C"
#endif

#endif  // DVTYPES_DATETIME_H
