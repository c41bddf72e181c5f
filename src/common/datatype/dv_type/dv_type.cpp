// The types: enumerator, SQL name, stored size and categories, one line each.
//
// The exported columns are plain C arrays, which no C++ function can compute from a table of rows; so the
// lines are a macro, which each array expands to its column. The enumerator's name comes from the enumerator,
// and the order of the lines is checked against the codes.

#include <iterator>

#include "dvtypes/dv_type.h"

namespace {

constexpr int _numeric = DV_TYPE_INFO_NUMERIC;
constexpr int _character = DV_TYPE_INFO_CHARACTER;
constexpr int _binary = DV_TYPE_INFO_BINARY;
constexpr int _datetime = DV_TYPE_INFO_DATETIME;
constexpr int _interval = DV_TYPE_INFO_INTERVAL;
constexpr int _long = DV_TYPE_INFO_LONG;
constexpr int _lob = DV_TYPE_INFO_LOB;
constexpr int _varying = DV_TYPE_INFO_VARYING;
constexpr int _limited = DV_TYPE_INFO_LIMITED;
constexpr int _large = DV_TYPE_INFO_LARGE;
constexpr int _national = DV_TYPE_INFO_NATIONAL;

}  // namespace

// clang-format off
//       enumerator           SQL name                          size categories
#define DV_TYPES(TYPE) \
    TYPE(DV_TYPE_NONE,        "NULL",                             0, 0)                                       \
    TYPE(DV_TYPE_NUMBER,      "NUMBER",                          23, _numeric)                                \
    TYPE(DV_TYPE_CHAR,        "CHAR",                             0, _character | _limited)                   \
    TYPE(DV_TYPE_VARCHAR,     "VARCHAR2",                         0, _character | _varying | _limited)        \
    TYPE(DV_TYPE_RAW,         "RAW",                              0, _binary | _varying | _limited)           \
    TYPE(DV_TYPE_DATE,        "DATE",                             9, _datetime)                               \
    TYPE(DV_TYPE_TIME,        "TIME",                             9, _datetime)                               \
    TYPE(DV_TYPE_TIMESTAMP,   "TIMESTAMP",                       13, _datetime)                               \
    TYPE(DV_TYPE_ITV_YTM,     "INTERVAL YEAR TO MONTH",           6, _interval)                               \
    TYPE(DV_TYPE_ITV_DTS,     "INTERVAL DAY TO SECOND",          13, _interval)                               \
    TYPE(DV_TYPE_LONG,        "LONG",                             0, _character | _long | _large)             \
    TYPE(DV_TYPE_LONG_RAW,    "LONG RAW",                         0, _binary | _long | _large)                \
    TYPE(DV_TYPE_BLOB,        "BLOB",                             0, _binary | _lob | _large)                 \
    TYPE(DV_TYPE_CLOB,        "CLOB",                             0, _character | _lob | _large)              \
    TYPE(DV_TYPE_BFILE,       "BFILE",                            0, _binary | _lob)                          \
    TYPE(DV_TYPE_ROWID,       "ROWID",                           13, 0)                                       \
    TYPE(DV_TYPE_CSR,         "CURSOR",                           0, 0)                                       \
    TYPE(DV_TYPE_UNKNOWN,     "UNKNOWN",                          0, 0)                                       \
    TYPE(DV_TYPE_NCHAR,       "NCHAR",                            0, _character | _limited | _national)       \
    TYPE(DV_TYPE_NVARCHAR,    "NVARCHAR2",                        0, _character | _limited | _national)       \
    TYPE(DV_TYPE_NCLOB,       "NCLOB",                            0, _character | _lob | _large | _national)  \
    TYPE(DV_TYPE_TS_TZ,       "TIMESTAMP WITH TIME ZONE",        18, _datetime)                               \
    TYPE(DV_TYPE_TS_LTZ,      "TIMESTAMP WITH LOCAL TIME ZONE",  13, _datetime)                               \
    TYPE(DV_TYPE_BIN_FLOAT,   "BINARY_FLOAT",                     5, _numeric)                                \
    TYPE(DV_TYPE_BIN_DOUBLE,  "BINARY_DOUBLE",                    9, _numeric)                                \
    TYPE(DV_TYPE_BOOLEAN,     "BOOLEAN",                          0, 0)                                       \
    TYPE(DV_TYPE_PLS_INT,     "PLS_INTEGER",                      0, _numeric)                                \
    TYPE(DV_TYPE_BIN_INT,     "BINARY_INTEGER",                   5, _numeric)                                \
    TYPE(DV_TYPE_RECORD,      "RECORD",                           0, _varying)                                \
    TYPE(DV_TYPE_VARRAY,      "VARRAY",                           0, _varying)                                \
    TYPE(DV_TYPE_TABLE,       "TABLE",                            0, _varying)                                \
    TYPE(DV_TYPE_IDX_BY_TBL,  "",                                 0, _varying)                                \
    TYPE(DV_TYPE_OBJECT,      "OBJECT",                           0, _varying)

#define DV_ENUMERATOR(type, name, size, info) #type,
#define DV_NAME(type, name, size, info) name,
#define DV_SIZE(type, name, size, info) size,
#define DV_INFO(type, name, size, info) info,
#define DV_CODE(type, name, size, info) type,
// clang-format on

constexpr const char *const _dv_type_str[DV_TYPE_MAX_PSM] = {DV_TYPES(DV_ENUMERATOR)};
constexpr const char *const _dv_type_name[DV_TYPE_MAX_PSM] = {DV_TYPES(DV_NAME)};
constexpr int _dv_type_fixed_size[DV_TYPE_MAX_PSM] = {DV_TYPES(DV_SIZE)};
constexpr int _dv_type_info[DV_TYPE_MAX_PSM] = {DV_TYPES(DV_INFO)};

namespace {

constexpr int _codes[] = {DV_TYPES(DV_CODE)};
static_assert(std::size(_codes) == DV_TYPE_MAX_PSM);
static_assert([] {
    for (int position = 0; position < DV_TYPE_MAX_PSM; ++position) {
        if (_codes[position] != position) return false;
    }
    return true;
}());

}  // namespace
