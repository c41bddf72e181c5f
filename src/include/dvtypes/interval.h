// dvtypes/interval.h: INTERVAL YEAR TO MONTH and INTERVAL DAY TO SECOND.
//
// Both are records of bytes, the same in memory, on the wire and on disk. Every 32-bit field is big-endian
// with 0x40000000 added, and the months of a year-month interval are a byte with 11 added, so that unsigned
// bytewise order is the order of the values, as long as all fields of a value have one sign (or are 0) and
// none is below -1073741824, where the sum wraps around. Operations that go through a total give fields of
// one sign; set_field, add_year, add_day and carries of nanoseconds need not.
//
//   0 years 0 months    40 00 00 00 0B               -1 year -6 months   3F FF FF FF 05
//   0 days 0 s 0 ns     40 00 00 00 40 00 00 00 40 00 00 00
//
// ```c
// dv_itv_dts_t shift;
// char text[DV_ITV_DTS_TEXT_SIZE];
// dv_itv_dts_from_str(&shift, "1 02:03:04.5", 0, DV_ITV_DAY_TO_SECOND, 9, 9);
// dv_itv_dts_mul(&shift, _number_e);
// dv_itv_dts_to_str(&shift, text, 2, 3, sizeof text);
// puts(text);                                                      // +02 22:48:52.702
// ```
//
// Functions work in place on their first argument, allocate nothing, and may be called from any thread on
// records that no other thread is writing. A NULL pointer is reported by an assertion ("itv != NULL", "ytm !=
// NULL", "dts != NULL", "str != NULL", ...); the call then returns (0 where it returns a value). Any bytes
// are a record: results that do not fit a field wrap around at 32 bits, and months at 8.

#ifndef DVTYPES_INTERVAL_H
#define DVTYPES_INTERVAL_H

#include "dvtypes/base.h"
#include "dvtypes/datetime_unit.h"
#include "dvtypes/number.h"
#include "dvtypes/word.h"

#ifdef __cplusplus
extern "C" {
#endif

typedef struct dv_itv_ytm_s {
    uint8_t year[4];  // years + 0x40000000, big-endian
    uint8_t month;    // months + 11: 0..22 for -11..11
} dv_itv_ytm_t;

typedef struct dv_itv_dts_s {
    uint8_t day[4];   // days + 0x40000000, big-endian
    uint8_t sec[4];   // seconds of the day, the same way: -86399..86399
    uint8_t fsec[4];  // nanoseconds, the same way: -999999999..999999999
} dv_itv_dts_t;

// ---------------------------------------------------------------------------------------------------------
// Qualifiers
// ---------------------------------------------------------------------------------------------------------

// What the text of an interval is made of. Codes of tokens and qualifiers are permanent. A leading field
// (..T) is bounded by the leading precision alone.
typedef enum dv_itv_token_e {
    DV_ITV_TOKEN_YYT = 0,
    DV_ITV_TOKEN_MMT = 1,
    DV_ITV_TOKEN_DDT = 2,
    DV_ITV_TOKEN_HHT = 3,
    DV_ITV_TOKEN_MIT = 4,
    DV_ITV_TOKEN_SST = 5,
    DV_ITV_TOKEN_MM = 6,
    DV_ITV_TOKEN_HH = 7,
    DV_ITV_TOKEN_MI = 8,
    DV_ITV_TOKEN_SS = 9,
    DV_ITV_TOKEN_FF = 10,
    DV_ITV_TOKEN_PUNC_SPACE = 11,
    DV_ITV_TOKEN_PUNC_COLON = 12,
    DV_ITV_TOKEN_PUNC_END = 13,  // "."
    DV_ITV_TOKEN_PUNC_HYPHON = 14,
    DV_ITV_TOKEN_MAX = 15
} dv_itv_token_e;

// Qualifiers: the row of _itv_fmt, and the type argument of the from_str functions.
typedef enum dv_itv_qualifier_e {
    DV_ITV_YEAR_TO_MONTH = 0,
    DV_ITV_YEAR = 1,
    DV_ITV_MONTH = 2,
    DV_ITV_DAY = 3,
    DV_ITV_DAY_TO_HOUR = 4,
    DV_ITV_DAY_TO_MINUTE = 5,
    DV_ITV_DAY_TO_SECOND = 6,
    DV_ITV_HOUR = 7,
    DV_ITV_HOUR_TO_MINUTE = 8,
    DV_ITV_HOUR_TO_SECOND = 9,
    DV_ITV_MINUTE = 10,
    DV_ITV_MINUTE_TO_SECOND = 11,
    DV_ITV_SECOND = 12,
    DV_ITV_QUALIFIER_MAX = 13
} dv_itv_qualifier_e;

enum { DV_ITV_FMT_TOKENS = 10 };
typedef struct dv_itv_fmt_s {
    int32_t size;                      // tokens in use
    int32_t token[DV_ITV_FMT_TOKENS];  // of dv_itv_token_e
} dv_itv_fmt_t;

extern DV_EXPORT_DATA const dv_itv_fmt_t _itv_fmt[DV_ITV_QUALIFIER_MAX];  // by dv_itv_qualifier_e

enum { DV_ITV_PRINT_FMTS = 6 };

// The texts that to_str gives, as printf formats. 0 and 1: years and months, not negative and negative
// (years, their minimum digits first). 2 and 3: days to seconds. 4 and 5: with a fraction (its digits before
// it).
extern DV_EXPORT_DATA const char *const _itv_print_fmt[DV_ITV_PRINT_FMTS];

// Bytes that hold the text of any record with its NUL, under a leading precision of up to 10. Of a normal
// value it takes up to 15 and 32: a sign, ten digits, "-00" or " 00:00:00.000000000". Months of any byte have
// three digits; seconds that grew past a day by carries have up to six digits of hours, nanoseconds of any
// bytes ten.
enum { DV_ITV_YTM_TEXT_SIZE = 16, DV_ITV_DTS_TEXT_SIZE = 36 };

// ---------------------------------------------------------------------------------------------------------
// Records that came from elsewhere
// ---------------------------------------------------------------------------------------------------------

// What is wrong with the bytes of a record, as an English clause ("its fields differ in sign"); NULL when
// nothing is: at most nine digits of years or days, months, seconds and nanoseconds below a year, a day and a
// second, all of one sign. Any bytes may be given.
DV_EXPORT const char *dv_itv_ytm_get_fault(const dv_itv_ytm_t *itv);
DV_EXPORT const char *dv_itv_dts_get_fault(const dv_itv_dts_t *itv);

// ---------------------------------------------------------------------------------------------------------
// INTERVAL YEAR TO MONTH
// ---------------------------------------------------------------------------------------------------------

// One field: DT_FMT_UNIT_YEAR or DT_FMT_UNIT_MONTH. Neither range nor sign is checked. Any other unit asserts
// "0"; set then changes nothing and get gives 0.
DV_EXPORT void dv_itv_ytm_set_field(dv_itv_ytm_t *itv, dt_fmt_unit_t unit_type, int value);
DV_EXPORT int dv_itv_ytm_get_field(const dv_itv_ytm_t *itv, dt_fmt_unit_t unit_type);

// years * 12 + months, wrapped at 32 bits.
DV_EXPORT int64_t dv_itv_ytm_get_total_month(const dv_itv_ytm_t *itv);

// years = tm / 12 toward zero, months the rest, with the sign of tm.
DV_EXPORT void dv_itv_ytm_set_total_month(dv_itv_ytm_t *itv, int64_t tm);

// Adds years; the months stay.
DV_EXPORT void dv_itv_ytm_add_year(dv_itv_ytm_t *itv, int value);

// Adds months: the total becomes total + value, so both fields get its sign. +0-06 and -7 give -0-01.
DV_EXPORT void dv_itv_ytm_add_month(dv_itv_ytm_t *itv, int value);

// ytm1 += ytm2, ytm1 -= ytm2, through the totals. The two may be the same record.
DV_EXPORT void dv_itv_ytm_add_itv_ytm(dv_itv_ytm_t *ytm1, const dv_itv_ytm_t *ytm2);
DV_EXPORT void dv_itv_ytm_sub_itv_ytm(dv_itv_ytm_t *ytm1, const dv_itv_ytm_t *ytm2);

// The total times or over a factor, in double, cut toward zero: 1-01 (13 months) * 1.5 = 1-07 (19.5 months).
// A product that does not fit 64 bits gives the nearest that does, NaN 0; 32 bits of it are kept.
// Raises  -5065  division by 0.0 (either sign)
DV_EXPORT void dv_itv_ytm_mul(dv_itv_ytm_t *ytm, double dd);
DV_EXPORT void dv_itv_ytm_div(dv_itv_ytm_t *ytm, double dd);

// -1, 0 or 1 by the unsigned order of the bytes. NULL pointers are allowed and come first.
DV_EXPORT int dv_itv_ytm_compare(const dv_itv_ytm_t *itv1, const dv_itv_ytm_t *itv2);

// Raises  -5064  the years have more decimal digits than prec. Negative years count as one digit.
DV_EXPORT void dv_itv_ytm_check_leading_prec(const dv_itv_ytm_t *itv, int prec);

// Text: sign, years with at least prec digits, "-", months with at least two: +01-02, -00-03.
//
//   str      output; gets at most buf_len bytes with the NUL that always ends it
//   prec     printf's precision: below 0 counts as 1, above 251 as 251; with 0, no years print as nothing
//   buf_len  bytes of str; below 1 nothing is written and the text counts as cut
//
// Returns CONV_STATUS_CUT when the text did not fit and was cut, else CONV_STATUS_WHOLE.
DV_EXPORT conv_status_t dv_itv_ytm_to_str(const dv_itv_ytm_t *itv, char *str, int prec, int buf_len);

// Reads text under a qualifier: blanks, an optional sign, the fields with their separators, blanks. Blanks
// may stand before each field and separator. A field has 1 to 9 digits.
//
//   str, str_len  the text; 0 means up to its NUL; below 0 it counts as empty
//   type          DV_ITV_YEAR_TO_MONTH ("1-6"), DV_ITV_YEAR or DV_ITV_MONTH ("25" is 2 years 1 month)
//   prec          leading precision, as in dv_itv_ytm_check_leading_prec
//
// Raises  -5056  empty or blank text, a missing digit, another separator     -5009  the text ends too early
//         -5059  a qualifier that is none of the three                       -5060  months above 11
//         -5064  the years exceed the leading precision                      -5010  characters left over
// On a raise the record holds the fields read so far.
DV_EXPORT void dv_itv_ytm_from_str(dv_itv_ytm_t *itv, const char *str, int str_len, int type, int prec);

// ---------------------------------------------------------------------------------------------------------
// INTERVAL DAY TO SECOND
// ---------------------------------------------------------------------------------------------------------

// One field: DT_FMT_UNIT_DAY, DT_FMT_UNIT_SECOND (seconds of the day) or DT_FMT_UNIT_FSEC (nanoseconds).
// Ranges are not checked. Any other unit asserts "0"; set then changes nothing and get gives 0.
DV_EXPORT void dv_itv_dts_set_field(dv_itv_dts_t *itv, dt_fmt_unit_t unit_type, int value);
DV_EXPORT int dv_itv_dts_get_field(const dv_itv_dts_t *itv, dt_fmt_unit_t unit_type);

// days * 86400 + seconds; the nanoseconds are left out.
DV_EXPORT int64_t dv_itv_dts_get_total_sec(const dv_itv_dts_t *dts);

// The total of seconds becomes total + value; days = total / 86400 toward zero, seconds the rest. add_min and
// add_hour add value * 60 and value * 3600, a product that wraps at 32 bits. The nanoseconds stay.
DV_EXPORT void dv_itv_dts_add_sec(dv_itv_dts_t *itv, int64_t value);
DV_EXPORT void dv_itv_dts_add_min(dv_itv_dts_t *itv, int value);
DV_EXPORT void dv_itv_dts_add_hour(dv_itv_dts_t *itv, int value);

// Adds days; seconds and nanoseconds stay.
DV_EXPORT void dv_itv_dts_add_day(dv_itv_dts_t *itv, int value);

// Adds nanoseconds. A carry goes into the seconds and stays there, also past a whole day; the days never
// change. Between positive seconds and a negative sum (or the other way round) whole seconds are borrowed, so
// that the sum takes the sign of the seconds; where the seconds are 0 a negative sum stays. NaN counts as 0,
// an infinity as the largest double; a sum that fills more seconds than the field holds wraps.
DV_EXPORT void dv_itv_dts_add_fsec(dv_itv_dts_t *itv, double value);

// days = total_secs / 86400 toward zero, seconds the rest, toward zero. The nanoseconds stay.
// Raises  -5087  the days do not fit 32 bits, or total_secs is NaN; the record is unchanged
DV_EXPORT void dv_itv_dts_set_total_sec(dv_itv_dts_t *dts, double total_secs);

// dts1 += dts2, dts1 -= dts2: the total of seconds first, then the nanoseconds as dv_itv_dts_add_fsec adds
// them. The two may be the same record.
// The value is exact, but the record need not be the normal one of that value: a carry may be left in the
// seconds (+0 23:59:59.9 plus 0.2 s: 86400 s), and a rest of the other sign in the nanoseconds where the
// seconds come to 0 (1 day less 0.5 s).
DV_EXPORT void dv_itv_dts_add_itv_dts(dv_itv_dts_t *dts1, const dv_itv_dts_t *dts2);
DV_EXPORT void dv_itv_dts_sub_itv_dts(dv_itv_dts_t *dts1, const dv_itv_dts_t *dts2);

// Seconds with their fraction, times or over a NUMBER, cut to a whole nanosecond. Asserts
// "number_is_valid_ptr(dd)".
// Raises  -5065  division by zero     -5087  the days of the result do not fit 32 bits
//         -5068, -5069  the product or quotient is out of the range of NUMBER
//         -5070  dd is no valid record, and counts as 0 in the division alone
DV_EXPORT void dv_itv_dts_mul(dv_itv_dts_t *dts, const number_t *dd);
DV_EXPORT void dv_itv_dts_div(dv_itv_dts_t *dts, const number_t *dd);

// -1, 0 or 1 by the unsigned order of the bytes. NULL pointers are allowed and come first.
DV_EXPORT int dv_itv_dts_compare(const dv_itv_dts_t *itv1, const dv_itv_dts_t *itv2);

// The same order without a call, for sorting and searching; neither pointer is NULL.
static inline int dv_itv_dts_cmp(const dv_itv_dts_t *itv1, const dv_itv_dts_t *itv2) {
    return dv_compare_12_bytes(itv1, itv2);
}

// Raises  -5064  the days have more decimal digits than prec. Negative days count as one digit.
DV_EXPORT void dv_itv_dts_check_leading_prec(const dv_itv_dts_t *itv, int prec);

// Cuts the nanoseconds to fprec digits, counted from their first significant digit, the sign counting as one,
// of at most nine characters: 12345678 ns to 3 is 12300000, 5000000 ns to 2 stays, -123456789 ns is -12345678
// first. A stored value above 999999999 is left as it is.
// Raises  -5008  fprec outside 0..9
DV_EXPORT void dv_itv_dts_trim_fsec(dv_itv_dts_t *itv, int fprec);

// Text: sign, days with at least prec digits, " HH:MI:SS.", the fraction cut to fprec digits:
// "+01 02:03:04.500".
//
//   str      output; gets at most buf_len bytes with the NUL that always ends it
//   prec     0..9; with 0, no days print as nothing
//   fprec    1..9
//   buf_len  bytes of str; below 1 nothing is written and the text counts as cut
//
// Returns CONV_STATUS_CUT when the text did not fit and was cut, else CONV_STATUS_WHOLE.
// Raises  -5057  prec or fprec out of range
DV_EXPORT conv_status_t dv_itv_dts_to_str(const dv_itv_dts_t *itv, char *str, int prec, int fprec,
                                          int buf_len);

// Reads text under a qualifier: blanks, an optional sign, the fields with their separators, blanks. Blanks
// may stand before each field and separator. A field has 1 to 9 digits; the fraction and its point may be
// left out. Leading hours, minutes and seconds carry into the days: "24:00" under HOUR TO MINUTE is one day.
// In seconds, leading hours from 596524 and minutes from 35791395 wrap around at 32 bits, as add_hour and
// add_min do.
//
//   str, str_len  the text; 0 means up to its NUL; below 0 it counts as empty
//   type          DV_ITV_DAY .. DV_ITV_SECOND
//   prec          leading precision of the days, as in dv_itv_dts_check_leading_prec
//   fprec         0..9: the fraction is rounded to so many digits, half away from zero; outside counts as the
//                 nearest bound. A negative one that rounds to a second at 0 seconds is kept as -1000000000
//                 nanoseconds: "-0 00:00:00.5" for 0
//
// Raises  -5056  empty or blank text, a missing digit, another separator     -5009  the text ends too early
//         -5059  a qualifier that is none of these                           -5010  characters left over
//         -5061, -5062, -5063  a trailing hour above 23, minute above 59, second above 59
//         -5064  the days exceed the leading precision
// On a raise the record holds the fields read so far.
DV_EXPORT void dv_itv_dts_from_str(dv_itv_dts_t *itv, const char *str, int str_len, int type, int prec,
                                   int fprec);

#ifdef __cplusplus
}  // extern "C"
#endif

#endif  // DVTYPES_INTERVAL_H
