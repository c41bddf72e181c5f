// dvtypes/nls.h: language settings, and the names of months, days, eras and meridians in seven languages.
//
// Settings are texts of the form NAME = VALUE, such as "NLS_DATE_LANGUAGE = KOREAN". Names and values are
// compared whole, ignoring the case of ASCII letters; there are no abbreviations.
//
// Codes of languages, calendars, sorts, comparisons and settings are permanent: sessions and compiled models
// keep them.
//
// Functions here touch nothing but their arguments and constant tables, and so may run in any thread.

#ifndef DVTYPES_NLS_H
#define DVTYPES_NLS_H

#include <stdbool.h>

#include "dvtypes/base.h"

#ifdef __cplusplus
extern "C" {
#endif

// ---------------------------------------------------------------------------------------------------------
// Settings
// ---------------------------------------------------------------------------------------------------------

// Which setting a text names. dv_nls_parse gives DATE_LANG, DATE_CAL and SORT; the others are the host's.
typedef enum dv_nls_param_e {
    DV_NLS_PARAM_DATE_FORMAT = 0,
    DV_NLS_PARAM_TIME_FORMAT = 1,
    DV_NLS_PARAM_TIMESTAMP_FORMAT = 2,
    DV_NLS_PARAM_DATE_LANG = 3,
    DV_NLS_PARAM_DATE_CAL = 4,
    DV_NLS_PARAM_SORT = 5,
    DV_NLS_PARAM_TS_TZ_FORMAT = 6,
    DV_NLS_PARAM_SDTZ = 7,
    DV_NLS_PARAM_PASSWD_GRACE_EXPIRED = 8,
    DV_NLS_PARAM_MAX = 9
} dv_nls_param_e;
typedef int32_t dv_nls_param_t;

typedef enum dv_nls_date_lang_e {
    DV_NLS_DATE_LANG_AMERICAN = 0,
    DV_NLS_DATE_LANG_KOREAN = 1,
    DV_NLS_DATE_LANG_JAPANESE = 2,
    DV_NLS_DATE_LANG_VIETNAMESE = 3,
    DV_NLS_DATE_LANG_BRAZILIAN_PORTUGUESE = 4,
    DV_NLS_DATE_LANG_TRADITIONAL_CHINESE = 5,
    DV_NLS_DATE_LANG_RUSSIAN = 6,
    DV_NLS_DATE_LANG_INVALID = 7,
    DV_NLS_DATE_LANG_MAX = 7
} dv_nls_date_lang_e;
typedef int32_t dv_nls_date_lang_t;

typedef enum dv_nls_date_cal_e {
    DV_NLS_DATE_CAL_GREGORIAN = 0,
    DV_NLS_DATE_CAL_INVALID = 1,
    DV_NLS_DATE_CAL_MAX = 1
} dv_nls_date_cal_e;
typedef int32_t dv_nls_date_cal_t;

typedef struct dv_nls_date_ctx_s {
    dv_nls_date_lang_t lang;
    dv_nls_date_cal_t cal;
} dv_nls_date_ctx_t;

typedef enum dv_nls_sort_e {
    DV_NLS_SORT_BINARY = 0,
    DV_NLS_SORT_EBCDIC = 1,
    DV_NLS_SORT_GERMAN = 2,
    DV_NLS_SORT_FRENCH = 3,
    DV_NLS_SORT_DUTCH = 4,
    DV_NLS_SORT_INVALID = 5,
    DV_NLS_SORT_MAX = 5
} dv_nls_sort_e;
typedef int32_t dv_nls_sort_t;

typedef enum dv_nls_comp_e {
    DV_NLS_COMP_BINARY = 0,
    DV_NLS_COMP_LINGUISTIC = 1,
    DV_NLS_COMP_INVALID = 2,
    DV_NLS_COMP_MAX = 2
} dv_nls_comp_e;
typedef int32_t dv_nls_comp_t;

// Collation strength, numbered as collators (ICU's UColAttributeValue) number it.
typedef enum dv_nls_strength_e {
    DV_NLS_STRENGTH_PRIMARY = 0,    // ignores accents and case
    DV_NLS_STRENGTH_SECONDARY = 1,  // ignores case
    DV_NLS_STRENGTH_TERTIARY = 2    // compares everything
} dv_nls_strength_e;

// A linguistic sort, such as XGERMAN_CI. 12 bytes.
typedef struct dv_nls_sort_ctx_s {
    dv_nls_sort_t sort;
    uint8_t extended;  // 1: the name had the prefix X
    int32_t strength;  // of dv_nls_strength_e
} dv_nls_sort_ctx_t;

typedef struct dv_nls_sort_info_s {
    char loc_name[5];    // locale of the collator, NUL ended; "--" has none
    uint8_t extendable;  // 1: takes the prefix X
} dv_nls_sort_info_t;

extern DV_EXPORT_DATA const dv_nls_sort_info_t _nls_sort_info[DV_NLS_SORT_MAX];  // by dv_nls_sort_e

enum { DV_NLS_TEXT_MAX = 256 };  // bytes of the longest setting

// 1 for a language, 0 for DV_NLS_DATE_LANG_INVALID and anything else.
static inline int dv_nls_date_lang_is_valid(dv_nls_date_lang_t lang) {
    return lang >= 0 && lang < DV_NLS_DATE_LANG_MAX;
}

// Bare values. str is NUL ended and taken as it is, blanks included. True when it is one of the names, with
// *val set; else false, with *val as it was. Assert "str != NULL", "val != NULL" and then answer false.
//
// date_lang: the names of nls_date_lang_name_tab_. date_cal: GREGORIAN. comp: BINARY, LINGUISTIC.
DV_EXPORT bool dv_nls_date_lang_parse(const char *str, dv_nls_date_lang_t *val);
DV_EXPORT bool dv_nls_date_cal_parse(const char *str, dv_nls_date_cal_t *val);
DV_EXPORT bool dv_nls_comp_parse(const char *str, dv_nls_comp_t *val);

// A sort: [X] BINARY | EBCDIC | GERMAN | FRENCH | DUTCH, then nothing, _CI (ignores case) or _AI (ignores
// case and accents). X is the first character and goes with the three languages only. White space around the
// name and around the suffix is skipped. At most 256 bytes behind the X. False when it is none; *ctx may then
// be partly written. Asserts "str != NULL", "ctx != NULL" and then answers false.
DV_EXPORT bool dv_nls_sort_parse(const char *str, dv_nls_sort_ctx_t *ctx);

// One setting, NAME = VALUE, with white space around both pieces skipped (as the C locale defines it; a
// vertical tab only behind a piece):
//
//   NLS_DATE_LANGUAGE  *param = DV_NLS_PARAM_DATE_LANG, val points to a dv_nls_date_lang_t
//   NLS_CALENDAR       *param = DV_NLS_PARAM_DATE_CAL, val points to a dv_nls_date_cal_t
//   NLS_SORT           *param = DV_NLS_PARAM_SORT, val points to a dv_nls_sort_ctx_t
//
//   str  NUL ended, at most 256 bytes
//   val  storage for the largest of the three, since the name decides
//
// Raises  -11035  more than one "=", a text of 257 bytes or more, an unknown name, a value that the setting
//                 does not have (none at all without "="). *param is set before the value is read, and so
//                 also when the value is refused.
// Asserts "str != NULL", "val != NULL", "param != NULL" and then does nothing.
DV_EXPORT void dv_nls_parse(const char *str, dv_nls_param_t *param, void *val);

// ---------------------------------------------------------------------------------------------------------
// Names
// ---------------------------------------------------------------------------------------------------------

// A name as it is stored: big-endian UCS-2 without a mark or terminator, in every language and case.
enum { NLS_DATE_LANG_VAL_MAX = 64 };
typedef struct nls_date_lang_val_s {
    int32_t len;                         // bytes of val in use, even
    uint8_t val[NLS_DATE_LANG_VAL_MAX];  // the rest is zero
} nls_date_lang_val_t;

// Lists of names by language * 3 + letter case (0 upper, 1 lower, 2 initial capitals). Several slots of a
// language may share a list: not every language has every case, and some have no abbreviations.
//
// Months from January, days from Monday. Eras: AD, A.D., BC, B.C. Meridians: AM, A.M., PM, P.M.
enum { NLS_DATE_LANG_CASES = 3, NLS_DATE_LANG_LISTS = DV_NLS_DATE_LANG_MAX * NLS_DATE_LANG_CASES };
extern DV_EXPORT_DATA const nls_date_lang_val_t *const std_month_tab_[NLS_DATE_LANG_LISTS];  // 12 names each
extern DV_EXPORT_DATA const nls_date_lang_val_t *const abb_month_tab_[NLS_DATE_LANG_LISTS];  // 12
extern DV_EXPORT_DATA const nls_date_lang_val_t *const std_day_tab_[NLS_DATE_LANG_LISTS];    // 7
extern DV_EXPORT_DATA const nls_date_lang_val_t *const abb_day_tab_[NLS_DATE_LANG_LISTS];    // 7
extern DV_EXPORT_DATA const nls_date_lang_val_t *const std_adbc_tab_[NLS_DATE_LANG_LISTS];   // 4
extern DV_EXPORT_DATA const nls_date_lang_val_t *const std_ampm_tab_[NLS_DATE_LANG_LISTS];   // 4
extern DV_EXPORT_DATA const nls_date_lang_val_t *const rm_month_tab_[NLS_DATE_LANG_CASES];   // 12, for all

// By language: its name, and printf formats that pad a name to the column width of its kind. The width counts
// bytes of the session's character set.
extern DV_EXPORT_DATA const char *const nls_date_lang_name_tab_[DV_NLS_DATE_LANG_MAX];
extern DV_EXPORT_DATA const char *const nls_date_lang_std_mon_fmt_tab_[DV_NLS_DATE_LANG_MAX];
extern DV_EXPORT_DATA const char *const nls_date_lang_abb_mon_fmt_tab_[DV_NLS_DATE_LANG_MAX];
extern DV_EXPORT_DATA const char *const nls_date_lang_std_day_fmt_tab_[DV_NLS_DATE_LANG_MAX];
extern DV_EXPORT_DATA const char *const nls_date_lang_abb_day_fmt_tab_[DV_NLS_DATE_LANG_MAX];

// One name in the language and character set of parse_ctx->fmt_ctx, NUL ended, in parse_ctx->tmp_buf; the
// next call on the same context overwrites it. At most 63 bytes, cut on a character boundary; a character
// that the set does not have becomes '?'.
//
//   idx   month 0..11, day 0..6 (0 is Monday), era and meridian 0..3 as in the lists above
//   kase  0 upper, 1 lower, 2 initial capitals (dt_fmt_case_type_e)
//
// Assert "idx >= 0", the upper bound ("idx < 12", "idx < 7" or "idx < 4") and "dv_nls_date_lang_is_valid
// (lang)", then give an empty name for what is out of range, as for a case or character set that does not
// exist. Without a context they assert "parse_ctx != NULL" or "parse_ctx->fmt_ctx != NULL" and give NULL.
typedef struct dt_fmt_parse_ctx_s dt_fmt_parse_ctx_t;  // dvtypes/datetime_fmt.h
DV_EXPORT char *nls_date_lang_get_std_month(dt_fmt_parse_ctx_t *parse_ctx, int idx, int kase);
DV_EXPORT char *nls_date_lang_get_abb_month(dt_fmt_parse_ctx_t *parse_ctx, int idx, int kase);
DV_EXPORT char *nls_date_lang_get_rom_month(dt_fmt_parse_ctx_t *parse_ctx, int idx, int kase);
DV_EXPORT char *nls_date_lang_get_std_day(dt_fmt_parse_ctx_t *parse_ctx, int idx, int kase);
DV_EXPORT char *nls_date_lang_get_abb_day(dt_fmt_parse_ctx_t *parse_ctx, int idx, int kase);
DV_EXPORT char *nls_date_lang_get_std_adbc(dt_fmt_parse_ctx_t *parse_ctx, int idx, int kase);
DV_EXPORT char *nls_date_lang_get_std_ampm(dt_fmt_parse_ctx_t *parse_ctx, int idx, int kase);

#ifdef __cplusplus
}  // extern "C"
#endif

#endif  // DVTYPES_NLS_H
