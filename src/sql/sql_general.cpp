// Functions over values of every type: what a value is made of, and the library's version.

#include <bit>
#include <cstdio>
#include <cstring>

#include "sql_catalogue.h"

using namespace dv::impl;

namespace {

struct byte_range {
    const uint8_t *bytes;
    int length;
};

constexpr int _engine_size = 8;  // of an INTEGER or REAL

// The bytes that dump shows: those of a library value; of an INTEGER or REAL eight, most significant first;
// of a text its UTF-8. All but those of texts and BLOBs are written into `store`.
byte_range bytes_of_(const sql_value &value, uint8_t (&store)[SQL_VALUE_SIZE_MAX]) {
    switch (value.kind) {
        case SQL_KIND_NULL:
            return {store, 0};
        case SQL_KIND_INTEGER:
            sql_put_big_endian(store, static_cast<uint64_t>(value.integer), _engine_size);
            return {store, _engine_size};
        case SQL_KIND_REAL:
            sql_put_big_endian(store, std::bit_cast<uint64_t>(value.real), _engine_size);
            return {store, _engine_size};
        case SQL_KIND_TEXT:
            return {reinterpret_cast<const uint8_t *>(value.text.bytes), value.text.length};
        case SQL_KIND_BLOB:
            return {value.blob.bytes, value.blob.length};
        default:
            return {store, sql_type_of(value.kind)->encode(value, store)};
    }
}

// "=c1:81"
char *put_bytes_(char *out, byte_range range) {
    constexpr char digits[] = "0123456789abcdef";
    for (int i = 0; i < range.length; ++i) {
        *out++ = i == 0 ? '=' : ':';
        *out++ = digits[range.bytes[i] >> 4];
        *out++ = digits[range.bytes[i] & 15];
    }
    return out;
}

constexpr int _head_size = sizeof "type=INTEGER length=2147483647 bytes";

// Room for a dump of so many bytes, in the call or in memory. NULL: it would be too long; the call has
// failed.
char *dump_room_(sql_call &call, int length) {
    const int64_t size = _head_size + int64_t{3} * length;
    if (size <= SQL_ROOM_SIZE) return call.room;
    if (size > INT32_MAX) {
        call.outcome = SQL_TOO_LONG;
        return nullptr;
    }
    call.block = sql_resize(call.memory, nullptr, static_cast<size_t>(size));
    return static_cast<char *>(call.block);
}

// type=1 length=2 bytes=c1:81
void dump_(sql_call &call) {
    const sql_value &value = call.args[0];
    uint8_t store[SQL_VALUE_SIZE_MAX];
    const byte_range range = bytes_of_(value, store);
    char *const text = dump_room_(call, range.length);
    if (text == nullptr) return;

    char type[sizeof "INTEGER"];
    if (sql_type_of(value.kind) != nullptr) {
        snprintf(type, sizeof type, "%d", value.kind);
    } else {
        snprintf(type, sizeof type, "%s", sql_kind_name(value.kind));
    }
    char *end = text + snprintf(text, _head_size, "type=%s length=%d%s", type, range.length,
                                range.length > 0 ? " bytes" : "");
    end = put_bytes_(end, range);
    sql_return(call, sql_text_value(text, static_cast<int>(end - text)));
}

void version_(sql_call &call) { sql_return_text(call, DV_VERSION); }

constexpr sql_function _functions[] = {
    {{"dv_version", {}, "", SQL_KIND_TEXT, "the version of dvtypes"}, version_},
    {{"dump", {SQL_KIND_ANY}, "v", SQL_KIND_TEXT, "what a value is made of: type, length, bytes"}, dump_},
};

}  // namespace

constinit const sql_function_table dv::impl::general_functions = _functions;
