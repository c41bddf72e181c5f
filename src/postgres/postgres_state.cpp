// Text and bytes of states, and equality, which is that of their bytes.

#include "postgres_state.h"

extern "C" {
#include <common/hashfn.h>
#include <libpq/pqformat.h>
}

using namespace dv::impl;

namespace {

// -1: none.
int nibble_(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    return -1;
}

// Returns how many bytes the digits are; -1 where they are none, or more than `room`.
int bytes_of_(const char *digits, uint8_t *bytes, int room) {
    int size = 0;
    for (; digits[0] != '\0'; digits += 2) {
        const int high = nibble_(digits[0]);
        const int low = high < 0 ? -1 : nibble_(digits[1]);
        if (low < 0 || size == room) return -1;
        bytes[size++] = static_cast<uint8_t>(high << 4 | low);
    }
    return size;
}

Datum read_(const postgres_state_type &type, const uint8_t *bytes, int size) {
    const varlena *state = size > type.bytes_max ? nullptr : type.read(bytes, size);
    if (state == nullptr) {
        ereport(ERROR, (errcode(ERRCODE_INVALID_BINARY_REPRESENTATION),
                        errmsg("invalid bytes for type %s", type.name)));
    }
    return PointerGetDatum(state);
}

bool are_equal_(const postgres_state_type &type, FunctionCallInfo fcinfo) {
    uint8_t a[POSTGRES_STATE_BYTES_MAX], b[POSTGRES_STATE_BYTES_MAX];
    const int size = type.write(PG_GETARG_DATUM(0), a);
    return size == type.write(PG_GETARG_DATUM(1), b) && memcmp(a, b, static_cast<size_t>(size)) == 0;
}

}  // namespace

Datum dv::impl::postgres_state_in(const postgres_state_type &type, FunctionCallInfo fcinfo) {
    const char *digits = PG_GETARG_CSTRING(0);
    uint8_t bytes[POSTGRES_STATE_BYTES_MAX];
    const int size = bytes_of_(digits, bytes, sizeof bytes);
    if (size < 0) {
        ereport(ERROR, (errcode(ERRCODE_INVALID_TEXT_REPRESENTATION),
                        errmsg("invalid input syntax for type %s: \"%s\"", type.name, digits)));
    }
    return read_(type, bytes, size);
}

Datum dv::impl::postgres_state_out(const postgres_state_type &type, FunctionCallInfo fcinfo) {
    uint8_t bytes[POSTGRES_STATE_BYTES_MAX];
    const int size = type.write(PG_GETARG_DATUM(0), bytes);
    auto *digits = static_cast<char *>(palloc(2 * static_cast<size_t>(size) + 1));
    for (int i = 0; i < size; ++i) {
        digits[2 * i] = "0123456789abcdef"[bytes[i] >> 4];
        digits[2 * i + 1] = "0123456789abcdef"[bytes[i] & 0xF];
    }
    digits[2 * size] = '\0';
    PG_RETURN_CSTRING(digits);
}

Datum dv::impl::postgres_state_receive(const postgres_state_type &type, FunctionCallInfo fcinfo) {
    auto *message = reinterpret_cast<StringInfo>(PG_GETARG_POINTER(0));
    const int size = message->len - message->cursor;
    return read_(type, reinterpret_cast<const uint8_t *>(pq_getmsgbytes(message, size)), size);
}

Datum dv::impl::postgres_state_send(const postgres_state_type &type, FunctionCallInfo fcinfo) {
    uint8_t bytes[POSTGRES_STATE_BYTES_MAX];
    const int size = type.write(PG_GETARG_DATUM(0), bytes);
    varlena *sent = postgres_new_state(static_cast<size_t>(size));
    memcpy(VARDATA(sent), bytes, static_cast<size_t>(size));
    PG_RETURN_POINTER(sent);
}

Datum dv::impl::postgres_state_eq(const postgres_state_type &type, FunctionCallInfo fcinfo) {
    PG_RETURN_BOOL(are_equal_(type, fcinfo));
}

Datum dv::impl::postgres_state_ne(const postgres_state_type &type, FunctionCallInfo fcinfo) {
    PG_RETURN_BOOL(!are_equal_(type, fcinfo));
}

Datum dv::impl::postgres_state_hash(const postgres_state_type &type, FunctionCallInfo fcinfo) {
    uint8_t bytes[POSTGRES_STATE_BYTES_MAX];
    return hash_any(bytes, type.write(PG_GETARG_DATUM(0), bytes));
}

Datum dv::impl::postgres_state_hash_extended(const postgres_state_type &type, FunctionCallInfo fcinfo) {
    uint8_t bytes[POSTGRES_STATE_BYTES_MAX];
    const int size = type.write(PG_GETARG_DATUM(0), bytes);
    return hash_any_extended(bytes, size, static_cast<uint64>(PG_GETARG_INT64(1)));
}
