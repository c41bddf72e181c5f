// Values on their way between SQLite and the library.
//
// Stored form of a value of the library: a BLOB of one tag byte, the type's code in the type catalogue, and
// the value's bytes, whose unsigned order is the order of the values. So SQLite's own comparison, ORDER BY,
// indexes, MIN and MAX order the values of one type.
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
#include "sqlite_api.h"

namespace dv::impl {

// What an SQL value is. The library's types are named by their type codes, which are their tags.
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
    SQL_KIND_NULL = 0xF0,  // SQLite's own types from here on
    SQL_KIND_INTEGER,
    SQL_KIND_REAL,
    SQL_KIND_TEXT,
    SQL_KIND_BLOB,  // holds no value of a library type
    SQL_KIND_ANY    // as a parameter: every value, SQL NULL too
};

inline constexpr int SQL_KINDS_MAX = 16;  // how many kinds there are, at most

struct sql_text {
    const char *bytes;  // UTF-8, NUL ended
    int length;         // the NUL not counted; a text may hold further NULs
};

struct sql_value {
    sql_kind kind;
    union {
        int64_t integer;
        double real;
        sql_text text;
        const char *fault;  // of a BLOB: why its bytes are no value
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

inline constexpr int SQL_STORED_SIZE_MAX = 23;  // tag and bytes of the longest value, a NUMBER

// A type of the library.
struct sql_type {
    sql_kind kind;
    const char *name;    // as messages call it
    const char *reader;  // SQL function that reads it from text; NULL: there is none

    // Reads the bytes behind the tag. Returns NULL, or what is wrong with them. The bytes are anybody's:
    // nothing that the library would not have written may pass.
    const char *(*decode)(sql_value &value, const uint8_t *bytes, int length);

    // Writes the bytes behind the tag, at most SQL_STORED_SIZE_MAX - 1; returns how many.
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

// The name of a kind in messages: "NUMBER", "TEXT", ...
const char *sql_kind_name(sql_kind kind);

// What SQLite passed. A BLOB that is no value of the library becomes SQL_KIND_BLOB. A text lives as long as
// raw. False: there is no memory for it.
bool sql_decode(sqlite3_value *raw, sql_value &value);

// Makes a value the result of an SQL function; text is copied.
void sql_return(sqlite3_context *context, const sql_value &value);

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

inline sql_value sql_text_value(const char *bytes, int length) {
    sql_value value{};
    value.kind = SQL_KIND_TEXT;
    value.text = {bytes, length};
    return value;
}

}  // namespace dv::impl

#endif  // DV_SQL_VALUE_H
