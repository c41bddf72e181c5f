// dvtypes/datetime_fmt.h: datetime format models, such as YYYY-MM-DD HH24:MI:SS.FF3.
//
// A model is a text of elements (YYYY, MON, TZR, ...), quoted literals ("at") and runs of punctuation. It is
// compiled once into a dt_fmt_ctx_t, for reading or for writing values of one type, and then read only: any
// number of values and threads may use it at once. A compiled context owns memory until dt_fmt_ctx_reset.
//
// ```c
// #include <dvtypes/datetime.h>
// static const char american[] = "NLS_DATE_LANGUAGE = AMERICAN";   // Korean unless told
// dt_fmt_ctx_t reading, writing;
// dv_date_t day;
// char text[64];
// dt_fmt_ctx_set(_system_allocator, &reading, "DD MON YYYY", 0, DV_TYPE_DATE, 1, DVSTR_CHARSET_UTF8);
// dt_fmt_ctx_set_user_nls(NULL, &reading, american, sizeof american - 1);
// dt_fmt_ctx_set(_system_allocator, &writing, "YYYY-MM-DD", 0, DV_TYPE_DATE, 0, DVSTR_CHARSET_UTF8);
// dv_date_from_str(&day, "29 February 2024", 0, &reading);
// dv_date_to_str(&day, text, sizeof text, &writing);
// puts(text);                                                      // 2024-02-29
// dt_fmt_ctx_reset(_system_allocator, &reading);
// dt_fmt_ctx_reset(_system_allocator, &writing);
// ```
//
// Records here have a fixed layout, and the enumerators in them are permanent: those who keep or send a
// flattened context (dt_fmt_ctx_serialize) rely on both. What is added comes behind.
//
// Every function that lacks a pointer asserts ("fmt_ctx != NULL", by the argument's name), touches nothing
// and returns 0; where NULL is accepted it says so.

#ifndef DVTYPES_DATETIME_FMT_H
#define DVTYPES_DATETIME_FMT_H

#include "dvtypes/base.h"
#include "dvtypes/datetime_unit.h"
#include "dvtypes/dv_type.h"
#include "dvtypes/nls.h"

#ifdef __cplusplus
extern "C" {
#endif

// Which writer and reader an element belongs to.
typedef enum dt_fmt_type_e {
    DT_FMT_TYPE_DATE = 0,
    DT_FMT_TYPE_TIME = 1,
    DT_FMT_TYPE_PUNC = 2,  // punctuation and quoted literals
    DT_FMT_TYPE_FM = 3,
    DT_FMT_TYPE_FX = 4,
    DT_FMT_TYPE_TZ = 5
} dt_fmt_type_e;

// Letter case in which a word is written, taken from the case of the element: MONTH, month, Month.
typedef enum dt_fmt_case_type_e {
    DT_FMT_CASE_UPPER = 0,
    DT_FMT_CASE_LOWER = 1,
    DT_FMT_CASE_INIT = 2,
    DT_FMT_CASE_MAX = 3
} dt_fmt_case_type_e;

// Suffix of a number: 4th, four, fourth.
typedef enum dt_fmt_sfx_type_e {
    DT_FMT_SUFFIX_NONE = 0,
    DT_FMT_SUFFIX_TH = 1,
    DT_FMT_SUFFIX_SP = 2,
    DT_FMT_SUFFIX_SPTH = 3,  // what the suffix THSP gives
    DT_FMT_SUFFIX_THSP = 4,  // what the suffix SPTH gives; both spell an ordinal
    DT_FMT_SUFFIX_MAX = 5
} dt_fmt_sfx_type_e;

typedef enum dt_fmt_token_id_e {
    DT_FMT_TOKEN_AD = 0,
    DT_FMT_TOKEN_AD_P = 1,  // A.D.
    DT_FMT_TOKEN_BC = 2,
    DT_FMT_TOKEN_BC_P = 3,
    DT_FMT_TOKEN_CC = 4,
    DT_FMT_TOKEN_SCC = 5,
    DT_FMT_TOKEN_IYYY = 6,
    DT_FMT_TOKEN_IYY = 7,
    DT_FMT_TOKEN_IY = 8,
    DT_FMT_TOKEN_I = 9,
    DT_FMT_TOKEN_YEAR = 10,
    DT_FMT_TOKEN_SYEAR = 11,
    DT_FMT_TOKEN_SYYYY = 12,
    DT_FMT_TOKEN_YYYY = 13,
    DT_FMT_TOKEN_YYY = 14,
    DT_FMT_TOKEN_YY = 15,
    DT_FMT_TOKEN_Y = 16,
    DT_FMT_TOKEN_RR = 17,
    DT_FMT_TOKEN_RRRR = 18,
    DT_FMT_TOKEN_MM = 19,
    DT_FMT_TOKEN_MON = 20,
    DT_FMT_TOKEN_MONTH = 21,
    DT_FMT_TOKEN_RM = 22,
    DT_FMT_TOKEN_D = 23,
    DT_FMT_TOKEN_DAY = 24,
    DT_FMT_TOKEN_DD = 25,
    DT_FMT_TOKEN_DDD = 26,
    DT_FMT_TOKEN_DY = 27,
    DT_FMT_TOKEN_WW = 28,
    DT_FMT_TOKEN_W = 29,
    DT_FMT_TOKEN_Q = 30,
    DT_FMT_TOKEN_IW = 31,
    DT_FMT_TOKEN_J = 32,
    DT_FMT_TOKEN_AM = 33,
    DT_FMT_TOKEN_AM_P = 34,
    DT_FMT_TOKEN_PM = 35,
    DT_FMT_TOKEN_PM_P = 36,
    DT_FMT_TOKEN_HH = 37,
    DT_FMT_TOKEN_HH12 = 38,
    DT_FMT_TOKEN_HH24 = 39,
    DT_FMT_TOKEN_MI = 40,
    DT_FMT_TOKEN_SS = 41,
    DT_FMT_TOKEN_SSSSS = 42,
    DT_FMT_TOKEN_FF = 43,
    DT_FMT_TOKEN_X = 44,
    DT_FMT_TOKEN_TZH = 45,
    DT_FMT_TOKEN_TZM = 46,
    DT_FMT_TOKEN_TZR = 47,
    DT_FMT_TOKEN_TZD = 48,
    DT_FMT_TOKEN_FM = 49,
    DT_FMT_TOKEN_FX = 50,
    DT_FMT_TOKEN_DQ = 51,  // quoted literal
    DT_FMT_TOKEN_SPACE = 52,
    DT_FMT_TOKEN_MAX = 53,  // keeps its number, as all do: an element that is added is 55
    DT_FMT_TOKEN_PUNC = 54  // run of punctuation
} dt_fmt_token_id_e;

// How a month is read.
typedef enum dt_fmt_month_type_e {
    DT_FMT_MON_ABB_NAME = 0,
    DT_FMT_MON_STD_NAME = 1,
    DT_FMT_MON_ROM_NAME = 2
} dt_fmt_month_type_e;

// One compiled element. 40 bytes.
typedef struct dt_fmt_token_info_s {
    int32_t id;                  // of dt_fmt_token_id_e
    int32_t case_type;           // of dt_fmt_case_type_e
    int32_t sfx_type;            // of dt_fmt_sfx_type_e
    uint8_t type;                // of dt_fmt_type_e
    int8_t fprec;                // of FF: the digit behind it, 1..9; else 0
    int32_t token_len;           // width of an element in characters; bytes of a literal or punctuation
    char *token;                 // a literal's or punctuation's text, NUL ended, owned; NULL for elements
    uint8_t is_fill_mode;        // FM was in force behind this element
    uint8_t is_exact_mode;       // FX was
    uint8_t next_token_is_punc;  // the next character of the model is punctuation, "+" or "-"
} dt_fmt_token_info_t;

// A compiled model. 40 bytes. All zero: empty, nothing owned.
typedef struct dt_fmt_ctx_s {
    int32_t token_cnt;
    dt_fmt_token_info_t *token_infos;  // owned
    uint8_t has_tz_token;
    dvstr_charset_t charset;          // of the texts written and read
    dv_nls_date_ctx_t user_date_ctx;  // settings given by dt_fmt_ctx_set_user_nls
    dv_nls_date_ctx_t nls_date_ctx;   // settings in force
} dt_fmt_ctx_t;

enum { DT_FMT_ORG_STR_SIZE = 129, DT_FMT_TZ_ABBR_SIZE = 32, DT_FMT_TMP_BUF_SIZE = 64 };

// The working context of one call that compiles, writes or reads.
struct dt_fmt_parse_ctx_s {
    const dt_fmt_ctx_t *fmt_ctx;
    dt_fmt_token_info_t *cur_token_info;
    char *str;  // the text written or read; reading leaves it as it is
    int32_t str_len;
    int32_t str_idx;
    char org_str[DT_FMT_ORG_STR_SIZE];  // the text that messages show, str when empty; not always NUL ended
    const char *fmt;
    int32_t fmt_len;
    int32_t fmt_idx;
    int32_t ddd;                // day of the year that was read, 0 none
    dt_fmt_unit_t update_flag;  // fields given so far, and FM and FX
    uint8_t is_from_str;
    char tz_abbr[DT_FMT_TZ_ABBR_SIZE];
    char tmp_buf[DT_FMT_TMP_BUF_SIZE];  // a name of dvtypes/nls.h
};

// ---------------------------------------------------------------------------------------------------------
// Compiling
// ---------------------------------------------------------------------------------------------------------

// Compiles a model.
//
//   alloc         gives the memory that the context owns
//   fmt_ctx       overwritten, so a compiled one is reset first. Korean, Gregorian until a setting is applied
//   fmt, fmt_len  the model; 0 means up to its NUL, below 0 is an empty model
//   type          of the values: DV_TYPE_DATE, DV_TYPE_TIME, DV_TYPE_TIMESTAMP; any other takes every element
//   is_from_str   1: for reading: no field may be given twice, there are no suffixes
//                 0: for writing: numbers take the suffixes TH, SP, SPTH, THSP
//   charset       of the texts that will be written and read
//
// Elements are recognised without regard to case; of two that fit, the longer one. An unterminated quote runs
// to the end of the model. FM and FX switch on and, the next time, off.
//
// Raises  -5014  an unknown element, or a suffix behind one that is written as a word, or behind a literal
//         -5011  a DATE model has FF or a time zone element
//         -5012  a TIME model has a date or time zone element, a TIMESTAMP model a time zone element
//         -5041  FF0
//         -5112  a field is given twice ("YEAR", "MONTH", "DAY", "DDD", "AD/BC", "AM/PM", "HOUR", "MINUTE",
//                "SECOND", "fractions of a second", "TZR", "TZD", "TZH", "TZM")
//         -5026, -5027, -5028  SSSSS beside an element for hours, minutes, seconds
//         -5039  SYYYY beside an era     -5040  HH24 beside AM or PM
//         -5096  TZR or TZD behind TZH or TZM ("TZR", "TZD")
//         -5097  TZH or TZM behind TZR or TZD ("TZH", "TZM")
//         what the allocator's throw entry raises
// (-5112 to -5097 for reading only.) On a raise the context holds what was compiled so far: reset it.
//
// Not refused, since models in use have it: SYYYY, HH24 and SSSSS twice; HH, HH12 and SSSSS behind HH24.
DV_EXPORT void dt_fmt_ctx_set(allocator_t *alloc, dt_fmt_ctx_t *fmt_ctx, const char *fmt, int fmt_len,
                              dv_type_t type, uchar is_from_str, dvstr_charset_t charset);

// Applies one setting to a compiled context: NLS_DATE_LANGUAGE = ... or NLS_CALENDAR = ... The settings in
// force become those given so far, so that a calendar that was never given becomes DV_NLS_DATE_CAL_INVALID.
//
//   alloc         not used, and may be NULL
//   nls, nls_len  the setting; cut at 256 bytes and at a NUL. NULL, "" and a length below 1 change nothing
//
// Raises  -11035  no such setting or value
DV_EXPORT void dt_fmt_ctx_set_user_nls(allocator_t *alloc, dt_fmt_ctx_t *fmt_ctx, const char *nls,
                                       int nls_len);

// Releases what a context owns; it is then empty. An all-zero context is accepted.
DV_EXPORT void dt_fmt_ctx_reset(allocator_t *alloc, dt_fmt_ctx_t *fmt_ctx);

// An estimate of the bytes that writing under the model takes, without a NUL; 0 for an empty one. It is what
// the text takes at most, but for these elements, for which it leaves out bytes:
//
//   RM                     taken for 1 byte, writes 4 unless in fill mode
//   CC                     taken for 2, writes 3 from the year 9901 on
//   IYYY IYY IY I          the sign of years BC
//   TZH TZM with TH        the two letters
//   numbers in words (SP)  taken for 12 bytes, whatever they are
//   names                  of months, days, eras and halves of the day, where the language has longer ones
//
//   fprec  fractional-second precision of the values' type, the width of an FF without a digit
DV_EXPORT int dt_fmt_get_predicted_str_len(const dt_fmt_ctx_t *fmt_ctx, int fprec);

// A compiled context as one block: the 40 bytes of dt_fmt_ctx_t, the 40 bytes of each element, then the texts
// of literals and punctuation with their NULs. Integers are in the machine's byte order, and pointers are
// absolute addresses inside the block, so a block that is moved has them rewritten.
//
//   buf       at any address
//   buf_size  at least dt_fmt_ctx_get_serialize_size. Asserts "offset <= buf_size" as the block grows, and
//             stops there: nothing is written beyond
DV_EXPORT int dt_fmt_ctx_get_serialize_size(const dt_fmt_ctx_t *fmt_ctx);
DV_EXPORT void dt_fmt_ctx_serialize(const dt_fmt_ctx_t *fmt_ctx, char *buf, int buf_size);

// Prepares a working context: all zero but what is given here and, for reading, org_str: the first bytes of
// str.
//
//   fmt_ctx, str, fmt  NULL where the calls that follow do not use them
DV_EXPORT void dt_parse_ctx_init(dt_fmt_parse_ctx_t *parse_ctx, const dt_fmt_ctx_t *fmt_ctx, char *str,
                                 int str_len, const char *fmt, int fmt_len, uchar is_from_str);

// Reads one element of parse_ctx->fmt at fmt_idx into *cur_token_info, which is all zero, and moves fmt_idx
// behind it. What dt_fmt_ctx_set is made of. When it raises, the record owns nothing.
DV_EXPORT void dt_fmt_parse_token(allocator_t *alloc, dt_fmt_parse_ctx_t *parse_ctx);

// ---------------------------------------------------------------------------------------------------------
// Writing
// ---------------------------------------------------------------------------------------------------------
//
// The values' to_str functions call one writer per compiled element: parse_ctx is prepared by
// dt_parse_ctx_init over the output buffer, *cur_token_info is the element. A writer puts its text at
// str[str_idx] and moves str_idx behind it. With no room left it returns CONV_STATUS_CUT, even if it would
// have written nothing; a text that is longer than the room is cut to it, with the same result. No NUL is
// written.

typedef struct dv_date_s dv_date_t;    // dvtypes/datetime.h
typedef struct dv_time_s dv_time_t;    // dvtypes/datetime.h
typedef struct dv_ts_tz_s dv_ts_tz_t;  // dvtypes/timestamp.h
typedef struct timezone_s timezone_t;  // dvtypes/timezone.h

// An element of type DATE.
// Raises  -5011  an element of another type, or without a writer     -5054  J
DV_EXPORT conv_status_t dt_fmt_write_date(dt_fmt_parse_ctx_t *parse_ctx, const dv_date_t *date);

// An element of type TIME; fprec is the fractional-second precision of the value's type, 0..9: FF without a
// digit writes so many digits, X a "." unless it is 0. Raises  -5012  an element of another type, or without
// a writer     -5041  a precision above 9
DV_EXPORT conv_status_t dt_fmt_write_time(dt_fmt_parse_ctx_t *parse_ctx, const dv_time_t *time, int fprec);

// An element of type TZ: the record's own zone. TZH has its sign, as +09, unless in fill mode; TZR is a
// region's name or an offset, +09:00; TZD writes nothing.
// Raises  -5091  an element of another type
DV_EXPORT conv_status_t dt_fmt_write_tz(dt_fmt_parse_ctx_t *parse_ctx, const dv_ts_tz_t *ts_tz);

// A quoted literal or punctuation, as it stands in the model.
DV_EXPORT conv_status_t dt_fmt_write_punc_token(dt_fmt_parse_ctx_t *parse_ctx);

// ---------------------------------------------------------------------------------------------------------
// Reading
// ---------------------------------------------------------------------------------------------------------
//
// The values' from_str functions load the record with defaults, prepare parse_ctx over the text and call one
// reader per compiled element, then the checks below. A reader takes its field at str[str_idx], moves str_idx
// behind it, stores the field into the record, checked, and adds its bit to update_flag. Nothing is read past
// str_len.
//
// White space is tab, blank, line feed, carriage return and NUL. Without FX it is skipped before each
// element. The text may end early when only time elements are left; the fields they stand for keep their
// defaults.
//
// Raised by all readers
//         -5013  an element that can only be written           -5045  the text ended before a DATE element
//         -5113  a field is missing or is none: (field, the text at that place, the whole text). The fields:
//                "year", "ad/bc", "month", "day", "day of year", "am/pm", "hour", "minute", "second",
//                "seconds past midnight", "fractional seconds"; and ("year", "The signed year is not
//                allowed", the whole text) for a "-" that only SYYYY may have
//         -5114  a field out of range: (field, value, lowest, highest)
//         -5088  under FX, a number of another width than its element
//         -5011  a DATE reader got another element, and text for it     -5012  a TIME reader did

// An element of type DATE. YY, YYY, Y and RR complete the year from the one in the record. Behind BC the
// number is negated before: "BC 24" under BC YY is 1976 in 2024, under BC RR -24, which RR leaves alone.
// Whole years, as RRRR and, before punctuation, YY and RR read them, are taken as they are. A BC behind a
// year negates it.
DV_EXPORT void dt_fmt_parse_date(dt_fmt_parse_ctx_t *parse_ctx, dv_date_t *date);

// An element of type TIME.
//
//   fprec      fractional-second precision of the value's type
//   token_idx  index of the element in the context; moved on when further elements are left out with it
//
// Raises  -5041  a precision above 9     -5042  the "." before a fraction is missing
DV_EXPORT void dt_fmt_parse_time(dt_fmt_parse_ctx_t *parse_ctx, dv_time_t *time, int fprec, int *token_idx);

// An element of type TZ. TZH and TZM make *tz a fixed offset; TZM alone has the hour that is in it. TZR takes
// a region's name, in any letter case, or an offset as timezone_parse does, up to the first white space. TZD
// takes the longest abbreviation that some region has, in any letter case, and stores it in
// parse_ctx->tz_abbr for timezone_normalize: in the letter case of the region when the text gives one, else
// in that of the text where two differ in nothing else (MEST and MeST).
//
// Raises  -5091  an element of another type
//         -5113  nothing of the kind: ("timezone hour", "timezone minute", "timezone region", "timezone
//                abbreviation")
//         -5096  a region that never had the abbreviation, whichever comes first: ("TZR" or "TZD")
//         -5098, -5099, -5103  TZR: as timezone_parse; -5099 for minutes behind +14 too
//         -5013  an element of another type that can only be written
DV_EXPORT void dt_fmt_parse_tz(dt_fmt_parse_ctx_t *parse_ctx, timezone_t *tz);

// A quoted literal or punctuation. Without FX any punctuation matches any other.
// Raises  -5089  under FX, other text     -5042  the "." before a fraction is missing
DV_EXPORT void dt_fmt_parse_punc_token(dt_fmt_parse_ctx_t *parse_ctx, int *token_idx);

// After the last element: sets month and day from the day of the year, if one was read.
// Raises  -5113  ("day of year", "366", "366 for leap year") in another year
//         -5024  it contradicts the month that was read     -5025  it contradicts the day
DV_EXPORT void dt_fmt_check_ddd(dt_fmt_parse_ctx_t *parse_ctx, dv_date_t *date);

// Raises  -5010  the rest of the text is not white space
DV_EXPORT void dt_parse_check_input_trailing_space(dt_fmt_parse_ctx_t *parse_ctx);

// Raises, when the rest of the model (fmt from fmt_idx on) is not white space
//         -5048  is_truncate is not 0     -5049  it is 0
DV_EXPORT void dt_parse_check_fmt_trailing_space(dt_fmt_parse_ctx_t *parse_ctx, uchar is_truncate);

// Does the text at the current element have the form of an ANSI literal (DATE '2024-02-29')? Each moves
// str_idx behind what it accepts, and raises nothing.
//
//   date, time  blanks, then 1 to the element's width of digits; a sign only for SYYYY. Only the numeric DATE
//               elements, and of the TIME elements HH24, MI, SS and FF
//   punc        one character of punctuation, "+" or "-", if there is one; always 1
DV_EXPORT uchar dt_fmt_check_ansi_date(dt_fmt_parse_ctx_t *parse_ctx);
DV_EXPORT uchar dt_fmt_check_ansi_time(dt_fmt_parse_ctx_t *parse_ctx);
DV_EXPORT uchar dt_fmt_check_ansi_punc(dt_fmt_parse_ctx_t *parse_ctx);

// ---------------------------------------------------------------------------------------------------------
// Truncation and rounding
// ---------------------------------------------------------------------------------------------------------

// Cuts (is_trunc 1) or rounds (0) a date to the unit that one element names, in place.
//
//   fmt, fmt_len  the element, in any letter case; not NUL ended
//
//   CC SCC                         century: 1901, 2001, ... (2000 gives 2001); rounds up from its year 51.
//                                  BC: -400 for -399 to -300, rounds up to -300 from -350 on (-50 to 1 AD)
//   YEAR SYEAR SYYYY YYYY YYY YY Y year; rounds up from July
//   IYYY IYY IY I                  Monday of ISO week 1 of the date's calendar year; rounds up from July
//   Q                              quarter; rounds up from the 16th of its second month
//   MM MON MONTH RM                month; rounds up from the 16th
//   WW                             week that begins on the weekday of 1 January; rounds up from its fifth day
//   W                              the same for the 1st of the month
//   IW                             week that begins on Monday; rounds up from Friday
//   D DAY DY                       week that begins on Sunday; rounds up from Wednesday noon
//   DD DDD J                       day; rounds up from noon
//   HH HH12 HH24                   hour; rounds up from the 30th minute
//   MI                             minute; rounds up from the 30th second
//
// The units below the week, W and D give a checked date: a day from 1582-10-05 to 1582-10-14 becomes the
// 15th. WW, IW, D and the ISO years move by days and so need dates from day number 0 on, as rounding up does.
//
// Raises  -5014  any other element, or text behind it
//         -5114  a field of the date is out of range, or the result is
DV_EXPORT void dt_fmt_trunc_or_round(dv_date_t *date, const char *fmt, int fmt_len, uchar is_trunc);

// ---------------------------------------------------------------------------------------------------------
// Day names
// ---------------------------------------------------------------------------------------------------------

// The weekday, 0 (Monday) to 6, of a full or abbreviated day name, in any letter case, or of a number 1
// (Sunday) to 7.
//
//   name, name_len  in the character set; taken whole, blanks included
//
// Asserts "dv_nls_date_lang_is_valid (lang)".
// Raises  -5113  none of these: ("day_name", name, "Inconsistent with NLS_DATE_LANGUAGE"), as for a language
// or
//                character set that does not exist
DV_EXPORT int dt_fmt_get_day_idx_of_week(const char *name, int name_len, dv_nls_date_lang_t lang,
                                         dvstr_charset_t charset);

#ifdef __cplusplus
}  // extern "C"
#endif

#endif  // DVTYPES_DATETIME_FMT_H
