// Functions over values of every type: what a value is made of, and the library's version.

#include <bit>
#include <cstring>

#include "../common/datatype/bytes.h"
#include "sql_function.h"

using namespace dv::impl;

namespace {

struct byte_range {
    const uint8_t *bytes;
    int length;
};

// The bytes that dump shows: of a library value those behind its tag; of an INTEGER or REAL its eight bytes,
// most significant first, written into `store`; of a text its UTF-8.
byte_range bytes_of_(const sql_value &value, sqlite3_value *raw, uint8_t (&store)[8]) {
    switch (value.kind) {
        case SQL_KIND_NULL:
            return {nullptr, 0};
        case SQL_KIND_INTEGER:
            store_be64(store, static_cast<uint64_t>(value.integer));
            return {store, 8};
        case SQL_KIND_REAL:
            store_be64(store, std::bit_cast<uint64_t>(value.real));
            return {store, 8};
        default:
            break;
    }
    const auto *bytes = static_cast<const uint8_t *>(sqlite3_value_blob(raw));
    const int tag_size = sql_type_of(value.kind) != nullptr ? 1 : 0;
    return {bytes + tag_size, sqlite3_value_bytes(raw) - tag_size};
}

void append_bytes_(sqlite3_str *text, byte_range range) {
    constexpr char digits[] = "0123456789abcdef";
    for (int i = 0; i < range.length; ++i) {
        const char hex[] = {i == 0 ? '=' : ':', digits[range.bytes[i] >> 4], digits[range.bytes[i] & 15]};
        sqlite3_str_append(text, hex, sizeof hex);
    }
}

// type=1 length=2 bytes=c1:81
void dump_(sql_call &call) {
    const sql_value &value = call.args[0];
    uint8_t store[8];
    const byte_range range = bytes_of_(value, call.raw[0], store);

    sqlite3_str *text = sqlite3_str_new(sqlite3_context_db_handle(call.context));
    if (sql_type_of(value.kind) != nullptr) {
        sqlite3_str_appendf(text, "type=%d", value.kind);
    } else {
        sqlite3_str_appendf(text, "type=%s", sql_kind_name(value.kind));
    }
    sqlite3_str_appendf(text, " length=%d", range.length);
    if (range.length > 0) sqlite3_str_appendall(text, " bytes");
    append_bytes_(text, range);

    const int fault = sqlite3_str_errcode(text);  // no memory, or longer than the connection allows
    char *finished = sqlite3_str_finish(text);
    if (fault != SQLITE_OK || finished == nullptr) {
        sqlite3_free(finished);
        return sqlite3_result_error_code(call.context, fault != SQLITE_OK ? fault : SQLITE_NOMEM);
    }
    sqlite3_result_text(call.context, finished, -1, sqlite3_free);
}

void version_(sql_call &call) {
    sql_return(call.context, sql_text_value(DV_VERSION, static_cast<int>(strlen(DV_VERSION))));
}

constexpr sql_function _functions[] = {
    {"dv_version", {}, version_},  // first, so that a connection that has any function has this one
    {"dump", {SQL_KIND_ANY}, dump_},
};

}  // namespace

constinit const sql_function_table dv::impl::general_functions = _functions;
