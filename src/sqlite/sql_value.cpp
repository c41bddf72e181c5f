// Values between SQLite and the library: the list of types, decoding of arguments, encoding of results.

#include "sql_value.h"

#include <iterator>
#include <span>

using namespace dv::impl;

namespace {

constexpr const sql_type *_types[] = {&number_type, &date_type,    &time_type,    &timestamp_type,
                                      &ts_tz_type,  &itv_ytm_type, &itv_dts_type, &rowid_type};

struct kind_name {
    sql_kind kind;
    const char *name;
};
constexpr kind_name _sqlite_kinds[] = {
    {SQL_KIND_NULL, "NULL"}, {SQL_KIND_INTEGER, "INTEGER"}, {SQL_KIND_REAL, "REAL"},
    {SQL_KIND_TEXT, "TEXT"}, {SQL_KIND_BLOB, "BLOB"},       {SQL_KIND_ANY, "any value"},
};

void decode_blob_(std::span<const uint8_t> blob, sql_value &value) {
    value.kind = SQL_KIND_BLOB;
    value.fault = "it is empty";
    if (blob.empty()) return;
    const sql_type *type = sql_type_of(blob[0]);
    value.fault = "its first byte is no type code";
    if (type == nullptr) return;
    const char *fault = type->decode(value, blob.data() + 1, static_cast<int>(blob.size() - 1));
    if (fault == nullptr) {
        value.kind = type->kind;
    } else {
        value.fault = fault;
    }
}

}  // namespace

const sql_type *dv::impl::sql_type_of(int kind) {
    for (const sql_type *type : _types) {
        if (type->kind == kind) return type;
    }
    return nullptr;
}

const char *dv::impl::sql_kind_name(sql_kind kind) {
    for (const kind_name &row : _sqlite_kinds) {
        if (row.kind == kind) return row.name;
    }
    const sql_type *type = sql_type_of(kind);
    return type != nullptr ? type->name : "nothing";
}

bool dv::impl::sql_decode(sqlite3_value *raw, sql_value &value) {
    value.kind = SQL_KIND_NULL;
    switch (sqlite3_value_type(raw)) {
        case SQLITE_BLOB: {
            const auto *bytes = static_cast<const uint8_t *>(sqlite3_value_blob(raw));
            const auto length = static_cast<size_t>(sqlite3_value_bytes(raw));
            if (bytes == nullptr && length > 0) return false;
            decode_blob_({bytes, length}, value);
            return true;
        }
        case SQLITE_TEXT: {
            const auto *bytes = reinterpret_cast<const char *>(sqlite3_value_text(raw));
            if (bytes == nullptr) return false;
            value = sql_text_value(bytes, sqlite3_value_bytes(raw));
            return true;
        }
        case SQLITE_INTEGER:
            value = sql_integer(sqlite3_value_int64(raw));
            return true;
        case SQLITE_FLOAT:
            value = sql_real(sqlite3_value_double(raw));
            return true;
        default:
            return true;
    }
}

void dv::impl::sql_return(sqlite3_context *context, const sql_value &value) {
    switch (value.kind) {
        case SQL_KIND_NULL:
            return sqlite3_result_null(context);
        case SQL_KIND_INTEGER:
            return sqlite3_result_int64(context, value.integer);
        case SQL_KIND_REAL:
            return sqlite3_result_double(context, value.real);
        case SQL_KIND_TEXT:
            return sqlite3_result_text(context, value.text.bytes, value.text.length, SQLITE_TRANSIENT);
        default:
            break;
    }
    uint8_t stored[SQL_STORED_SIZE_MAX];
    stored[0] = value.kind;
    const int length = sql_type_of(value.kind)->encode(value, stored + 1);
    sqlite3_result_blob(context, stored, length + 1, SQLITE_TRANSIENT);
}
