// Numbers that are kept in data files and pass between machines, as they have been since the first of them:
// type codes, fields, qualifiers, languages, sorts, settings. The compiler is the test; nothing runs.

#include <cstdint>

#include "dvtypes/dv_type.h"
#include "dvtypes/interval.h"
#include "dvtypes/nls.h"

namespace {

template <auto... Codes>
constexpr bool count_from_zero_() {
    int next = 0;
    return ((static_cast<int>(Codes) == next++) && ...);
}

template <auto... Bits>
constexpr bool are_bits_from_one_() {
    int next = 1;
    return ((static_cast<int>(Bits) == next && (next *= 2) != 0) && ...);
}

static_assert(
    count_from_zero_<DV_TYPE_NONE, DV_TYPE_NUMBER, DV_TYPE_CHAR, DV_TYPE_VARCHAR, DV_TYPE_RAW, DV_TYPE_DATE,
                     DV_TYPE_TIME, DV_TYPE_TIMESTAMP, DV_TYPE_ITV_YTM, DV_TYPE_ITV_DTS, DV_TYPE_LONG,
                     DV_TYPE_LONG_RAW, DV_TYPE_BLOB, DV_TYPE_CLOB, DV_TYPE_BFILE, DV_TYPE_ROWID, DV_TYPE_CSR,
                     DV_TYPE_UNKNOWN, DV_TYPE_NCHAR, DV_TYPE_NVARCHAR, DV_TYPE_NCLOB, DV_TYPE_TS_TZ,
                     DV_TYPE_TS_LTZ, DV_TYPE_BIN_FLOAT, DV_TYPE_BIN_DOUBLE, DV_TYPE_BOOLEAN, DV_TYPE_PLS_INT,
                     DV_TYPE_BIN_INT, DV_TYPE_RECORD, DV_TYPE_VARRAY, DV_TYPE_TABLE, DV_TYPE_IDX_BY_TBL,
                     DV_TYPE_OBJECT, DV_TYPE_INVALID>());
static_assert(DV_TYPE_MAX == 23 && DV_TYPE_MAX_PSM_PRIM == 28 && DV_TYPE_MAX_PSM == 33);
static_assert(are_bits_from_one_<DV_TYPE_INFO_NUMERIC, DV_TYPE_INFO_CHARACTER, DV_TYPE_INFO_BINARY,
                                 DV_TYPE_INFO_DATETIME, DV_TYPE_INFO_INTERVAL, DV_TYPE_INFO_LONG,
                                 DV_TYPE_INFO_LOB, DV_TYPE_INFO_VARYING, DV_TYPE_INFO_LIMITED,
                                 DV_TYPE_INFO_LARGE, DV_TYPE_INFO_NATIONAL>());

static_assert(are_bits_from_one_<DT_FMT_UNIT_YEAR, DT_FMT_UNIT_MONTH, DT_FMT_UNIT_DAY, DT_FMT_UNIT_HOUR,
                                 DT_FMT_UNIT_MINUTE, DT_FMT_UNIT_SECOND, DT_FMT_UNIT_FSEC, DT_FMT_UNIT_AD,
                                 DT_FMT_UNIT_BC, DT_FMT_UNIT_AM, DT_FMT_UNIT_PM, DT_FMT_UNIT_SYYYY,
                                 DT_FMT_UNIT_HH24, DT_FMT_UNIT_DDD, DT_FMT_UNIT_SSSSS, DT_FMT_UNIT_FM,
                                 DT_FMT_UNIT_FX, DT_FMT_UNIT_TZR, DT_FMT_UNIT_TZD, DT_FMT_UNIT_TZH,
                                 DT_FMT_UNIT_TZM, DT_FMT_UNIT_TZS, DT_FMT_UNIT_MAX>());
static_assert(DT_FMT_UNIT_NONE == 0 && CONV_STATUS_WHOLE == 0 && CONV_STATUS_CUT == 1);

static_assert(
    count_from_zero_<DV_ITV_TOKEN_YYT, DV_ITV_TOKEN_MMT, DV_ITV_TOKEN_DDT, DV_ITV_TOKEN_HHT, DV_ITV_TOKEN_MIT,
                     DV_ITV_TOKEN_SST, DV_ITV_TOKEN_MM, DV_ITV_TOKEN_HH, DV_ITV_TOKEN_MI, DV_ITV_TOKEN_SS,
                     DV_ITV_TOKEN_FF, DV_ITV_TOKEN_PUNC_SPACE, DV_ITV_TOKEN_PUNC_COLON, DV_ITV_TOKEN_PUNC_END,
                     DV_ITV_TOKEN_PUNC_HYPHON, DV_ITV_TOKEN_MAX>());
static_assert(count_from_zero_<DV_ITV_YEAR_TO_MONTH, DV_ITV_YEAR, DV_ITV_MONTH, DV_ITV_DAY,
                               DV_ITV_DAY_TO_HOUR, DV_ITV_DAY_TO_MINUTE, DV_ITV_DAY_TO_SECOND, DV_ITV_HOUR,
                               DV_ITV_HOUR_TO_MINUTE, DV_ITV_HOUR_TO_SECOND, DV_ITV_MINUTE,
                               DV_ITV_MINUTE_TO_SECOND, DV_ITV_SECOND, DV_ITV_QUALIFIER_MAX>());

static_assert(count_from_zero_<DV_NLS_DATE_LANG_AMERICAN, DV_NLS_DATE_LANG_KOREAN, DV_NLS_DATE_LANG_JAPANESE,
                               DV_NLS_DATE_LANG_VIETNAMESE, DV_NLS_DATE_LANG_BRAZILIAN_PORTUGUESE,
                               DV_NLS_DATE_LANG_TRADITIONAL_CHINESE, DV_NLS_DATE_LANG_RUSSIAN,
                               DV_NLS_DATE_LANG_INVALID>());
static_assert(count_from_zero_<DV_NLS_PARAM_DATE_FORMAT, DV_NLS_PARAM_TIME_FORMAT,
                               DV_NLS_PARAM_TIMESTAMP_FORMAT, DV_NLS_PARAM_DATE_LANG, DV_NLS_PARAM_DATE_CAL,
                               DV_NLS_PARAM_SORT, DV_NLS_PARAM_TS_TZ_FORMAT, DV_NLS_PARAM_SDTZ,
                               DV_NLS_PARAM_PASSWD_GRACE_EXPIRED, DV_NLS_PARAM_MAX>());
static_assert(count_from_zero_<DV_NLS_SORT_BINARY, DV_NLS_SORT_EBCDIC, DV_NLS_SORT_GERMAN, DV_NLS_SORT_FRENCH,
                               DV_NLS_SORT_DUTCH, DV_NLS_SORT_INVALID>());
static_assert(
    count_from_zero_<DV_NLS_STRENGTH_PRIMARY, DV_NLS_STRENGTH_SECONDARY, DV_NLS_STRENGTH_TERTIARY>());
static_assert(count_from_zero_<DV_NLS_DATE_CAL_GREGORIAN, DV_NLS_DATE_CAL_INVALID>() &&
              count_from_zero_<DV_NLS_COMP_BINARY, DV_NLS_COMP_LINGUISTIC, DV_NLS_COMP_INVALID>());
static_assert(DV_NLS_DATE_LANG_MAX == 7 && DV_NLS_SORT_MAX == 5 && DV_NLS_DATE_CAL_MAX == 1 &&
              DV_NLS_COMP_MAX == 2);

}  // namespace
