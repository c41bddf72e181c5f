// SQL values, whatever the engine: the library's types, and what engines have themselves.
//
// An engine keeps a value of the library as its bytes, with a mark of its own for the type. Their unsigned
// order is the order of the values, so that an engine that compares bytes sorts, searches and groups values
// of one type correctly.
//
// A type is one row (sql_type) that checks and takes apart its bytes, in a file of its own, and is listed in
// sql_value.cpp.

#ifndef DV_SQL_VALUE_H
#define DV_SQL_VALUE_H

#include <cstdint>
#include <type_traits>

#include "dvtypes/datetime.h"
#include "dvtypes/dv_type.h"
#include "dvtypes/interval.h"
#include "dvtypes/number.h"
#include "dvtypes/rowid.h"
#include "dvtypes/timestamp_tz.h"

namespace dv::impl {

// What an SQL value is. The library's types are named by their type codes.
enum sql_kind : uint8_t {
    SQL_KIND_NONE = 0,  // no parameter
    SQL_KIND_NUMBER = DV_TYPE_NUMBER,
    SQL_KIND_DATE = DV_TYPE_DATE,
    SQL_KIND_TIME = DV_TYPE_TIME,
    SQL_KIND_TIMESTAMP = DV_TYPE_TIMESTAMP,
    SQL_KIND_ITV_YTM = DV_TYPE_ITV_YTM,
    SQL_KIND_ITV_DTS = DV_TYPE_ITV_DTS,
    SQL_KIND_ROWID = DV_TYPE_ROWID,
    SQL_KIND_TS_TZ = DV_TYPE_TS_TZ,
    SQL_KIND_NULL = 0xF0,  // what engines have themselves, from here on
    SQL_KIND_INTEGER,      // 64 bits
    SQL_KIND_REAL,         // double
    SQL_KIND_TEXT,
    SQL_KIND_BLOB,  // bytes that hold no value of a library type
    SQL_KIND_ANY    // as a parameter: every value, SQL NULL too
};

inline constexpr int SQL_KINDS_MAX = 16;  // how many kinds there are, at most

struct sql_text {
    const char *bytes;  // UTF-8; a text may hold NULs and need not end in one, but for an empty one
    int length;
};

struct sql_blob {
    const uint8_t *bytes;
    int length;
    const char *fault;  // why the bytes are no value
};

struct sql_value {
    sql_kind kind;
    union {
        int64_t integer;
        double real;
        sql_text text;
        sql_blob blob;
        number_t number;
        dv_date_t date;
        dv_time_t time;
        dv_timestamp_t timestamp;
        dv_ts_tz_t ts_tz;
        dv_itv_ytm_t ytm;
        dv_itv_dts_t dts;
        rowid_t rowid;
    };
};
static_assert(std::is_trivial_v<sql_value>);  // a raise passes over it

inline constexpr int SQL_VALUE_SIZE_MAX = 22;  // bytes of the longest value of a library type, a NUMBER

// A type of the library.
struct sql_type {
    sql_kind kind;
    const char *name;    // as messages call it
    const char *reader;  // function that reads it from text; NULL: there is none

    // Reads a value's bytes. Returns NULL, or what is wrong with them. The bytes are anybody's: nothing that
    // the library would not have written may pass.
    const char *(*decode)(sql_value &value, const uint8_t *bytes, int length);

    // Writes a value's bytes, at most SQL_VALUE_SIZE_MAX; returns how many.
    int (*encode)(const sql_value &value, uint8_t *bytes);
};

extern const sql_type number_type;
extern const sql_type date_type;
extern const sql_type time_type;
extern const sql_type timestamp_type;
extern const sql_type ts_tz_type;
extern const sql_type itv_ytm_type;
extern const sql_type itv_dts_type;
extern const sql_type rowid_type;

// The row of a kind, NULL when it is none of the library's.
const sql_type *sql_type_of(int kind);

// The name of a kind in messages and in the manual: "NUMBER", "TEXT", ...
const char *sql_kind_name(sql_kind kind);

inline sql_value sql_null() {
    sql_value value{};
    value.kind = SQL_KIND_NULL;
    return value;
}

inline sql_value sql_integer(int64_t integer) {
    sql_value value{};
    value.kind = SQL_KIND_INTEGER;
    value.integer = integer;
    return value;
}

inline sql_value sql_real(double real) {
    sql_value value{};
    value.kind = SQL_KIND_REAL;
    value.real = real;
    return value;
}

// bytes may be NULL when the text is empty.
inline sql_value sql_text_value(const char *bytes, int length) {
    sql_value value{};
    value.kind = SQL_KIND_TEXT;
    value.text = {length > 0 ? bytes : "", length};
    return value;
}

// Writes the low `count` bytes of a number, the highest first.
inline void sql_put_big_endian(uint8_t *bytes, uint64_t number, int count) {
    for (int i = count - 1; i >= 0; --i, number >>= 8) bytes[i] = static_cast<uint8_t>(number);
}

inline uint32_t sql_get_big_endian(const uint8_t *bytes, int count) {
    uint32_t number = 0;
    for (int i = 0; i < count; ++i) number = number << 8 | bytes[i];
    return number;
}

}  // namespace dv::impl

#endif  // DV_SQL_VALUE_H
