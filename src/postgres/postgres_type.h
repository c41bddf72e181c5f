// The types of the extension, and how the server has them; the server's headers are not needed.
//
// A NUMBER is a varlena of its bytes from the sign on. DATE and TIME are their eight bytes, as they stand in
// memory, in a Datum. The other types are by reference, as many bytes as their records have.

#ifndef DV_POSTGRES_TYPE_H
#define DV_POSTGRES_TYPE_H

#include "sql_catalogue.h"

namespace dv::impl {

// How the server has values of a kind.
struct postgres_type {
    sql_kind kind;
    const char *name;  // in SQL
    const char *word;  // in names of functions of this module
    int length;        // of a fixed length in bytes; -1 of any
};

// TIMESTAMP WITH LOCAL TIME ZONE, which the catalogue does without.
inline constexpr auto POSTGRES_KIND_TS_LTZ = static_cast<sql_kind>(DV_TYPE_TS_LTZ);

// Every kind of the catalogue and POSTGRES_KIND_TS_LTZ.
inline constexpr postgres_type POSTGRES_TYPES[] = {
    {SQL_KIND_NUMBER, "number", "number", -1},
    {SQL_KIND_DATE, "dv_date", "date", 8},
    {SQL_KIND_TIME, "dv_time", "time", 8},
    {SQL_KIND_TIMESTAMP, "dv_timestamp", "timestamp", 12},
    {SQL_KIND_TS_TZ, "dv_timestamptz", "timestamptz", 17},
    {POSTGRES_KIND_TS_LTZ, "dv_timestampltz", "timestampltz", 12},
    {SQL_KIND_ITV_YTM, "dv_interval_ym", "interval_ym", 5},
    {SQL_KIND_ITV_DTS, "dv_interval_ds", "interval_ds", 12},
    {SQL_KIND_ROWID, "dv_rowid", "rowid", 12},
    {SQL_KIND_INTEGER, "bigint", "bigint", 8},
    {SQL_KIND_REAL, "double precision", "double", 8},
    {SQL_KIND_TEXT, "text", "text", -1},
    {SQL_KIND_BLOB, "bytea", "bytea", -1},
};

constexpr const postgres_type &postgres_type_of(sql_kind kind) {
    for (const postgres_type &type : POSTGRES_TYPES) {
        if (type.kind == kind) return type;
    }
    return POSTGRES_TYPES[0];
}

// The types that the server does not have itself.
constexpr bool postgres_is_of_extension(sql_kind kind) { return kind < SQL_KIND_NULL; }

// The types that are passed by value: eight bytes in the order of memory.
constexpr bool postgres_is_word(sql_kind kind) { return kind == SQL_KIND_DATE || kind == SQL_KIND_TIME; }

// Does a type take numbers in parentheses, as number(10,2) does?
constexpr bool postgres_has_modifier(sql_kind kind) {
    return kind != SQL_KIND_DATE && kind != SQL_KIND_ROWID;
}

}  // namespace dv::impl

#endif  // DV_POSTGRES_TYPE_H
