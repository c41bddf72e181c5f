// Values between the server and the catalogue.

#include "postgres_value.h"

#include <bit>

#include "sql_datetime.h"

extern "C" {
#include <mb/pg_wchar.h>
#include <utils/memutils.h>
}

using namespace dv::impl;

namespace {

// ---------------------------------------------------------------------------------------------------------
// Memory
// ---------------------------------------------------------------------------------------------------------

// A size that the server would raise for is one that there is no memory for.
bool is_too_large_(size_t size) { return size > MaxAllocHugeSize; }

constexpr int _flags = MCXT_ALLOC_HUGE | MCXT_ALLOC_NO_OOM;

void *malloc_(allocator_t *, size_t size, const char *, int) {
    return is_too_large_(size) ? nullptr : palloc_extended(size, _flags);
}

void *calloc_(allocator_t *, size_t count, size_t size, const char *, int) {
    size_t bytes;
    if (__builtin_mul_overflow(count, size, &bytes) || is_too_large_(bytes)) return nullptr;
    return palloc_extended(bytes, _flags | MCXT_ALLOC_ZERO);
}

// Not repalloc, which raises when there is no memory. The new block is of the old one's context.
void *realloc_(allocator_t *, void *block, size_t size, const char *, int) {
    if (is_too_large_(size)) return nullptr;
    void *larger = MemoryContextAllocExtended(GetMemoryChunkContext(block), size, _flags);
    if (larger == nullptr) return nullptr;
    const size_t room = GetMemoryChunkSpace(block) - sizeof(void *);  // at least; the header counts, too
    memcpy(larger, block, size < room ? size : room);
    pfree(block);
    return larger;
}

void free_(allocator_t *, void *block, const char *, int) {
    if (block != nullptr) pfree(block);
}

void throw_(allocator_t *, const char *file, int line) {
    dv_err_and_jmp(file, line, "throw_", 0, 0, DV_ERR_NO_MEMORY);
}

// ---------------------------------------------------------------------------------------------------------
// Bytes: those in a table were checked on their way in
// ---------------------------------------------------------------------------------------------------------

sql_blob blob_of_(Datum datum) {
    const varlena *bytes = PG_DETOAST_DATUM_PACKED(datum);
    return {reinterpret_cast<const uint8_t *>(VARDATA_ANY(bytes)), static_cast<int>(VARSIZE_ANY_EXHDR(bytes)),
            "a bytea holds none"};
}

// The record of a ROWID is not its bytes.
void take_rowid_(sql_value &value, Datum datum) {
    const auto *bytes = reinterpret_cast<const uint8_t *>(DatumGetPointer(datum));
    const char *fault = rowid_type.decode(value, bytes, postgres_type_of(SQL_KIND_ROWID).length);
    if (fault != nullptr) ereport(ERROR, (errcode(ERRCODE_DATA_CORRUPTED), errmsg("%s", fault)));
}

Datum give_reference_(const sql_value &value) {
    auto *bytes = static_cast<uint8_t *>(palloc(SQL_VALUE_SIZE_MAX));
    sql_type_of(value.kind)->encode(value, bytes);
    return PointerGetDatum(bytes);
}

template <typename Word>
uint64_t load_(const char *from) {
    Word word;
    memcpy(&word, from, sizeof word);
    return word;
}

// Fewer than eight bytes as they stand in memory, with zeros behind.
uint64_t word_of_(const char *from, size_t size) {
    uint64_t word = 0;
    if constexpr (std::endian::native != std::endian::little) {
        memcpy(&word, from, size);
        return word;
    }
    if (size >= 4) return load_<uint32_t>(from) | load_<uint32_t>(from + size - 4) << 8 * (size - 4);
    if (size >= 2) return load_<uint16_t>(from) | load_<uint16_t>(from + size - 2) << 8 * (size - 2);
    return size == 0 ? 0 : load_<uint8_t>(from);
}

// Without a call. The first eight bytes are written as one, and last, so that they can be read as one without
// waiting until they are in memory.
void copy_digits_(uint8_t *to, const char *from, size_t size) {
    constexpr size_t half = sizeof(uint64_t);
    uint64_t first;
    if (size < half) {
        first = word_of_(from, size);
    } else {
        if (size > 2 * half) memcpy(to + half, from + half, half);
        memcpy(to + size - half, from + size - half, half);
        memcpy(&first, from, half);
    }
    memcpy(to, &first, half);
}

// Of the one database that a process of the server has.
bool is_utf8_() {
    static int encoding = -1;
    if (encoding < 0) encoding = GetDatabaseEncoding();
    return encoding == PG_UTF8;
}

// Not compressed and not elsewhere.
const varlena *at_hand_(Datum datum) {
    auto *bytes = reinterpret_cast<varlena *>(DatumGetPointer(datum));
    return VARATT_IS_EXTENDED(bytes) && !VARATT_IS_SHORT(bytes) ? pg_detoast_datum_packed(bytes) : bytes;
}

}  // namespace

constinit allocator_t dv::impl::postgres_memory = {malloc_, calloc_, realloc_, free_, throw_};

void dv::impl::postgres_take_number(number_t &number, Datum datum) {
    const auto *bytes = reinterpret_cast<const varlena *>(DatumGetPointer(datum));
    const bool is_short = VARATT_IS_1B(bytes) && !VARATT_IS_1B_E(bytes);  // as in a table
    if (!is_short) bytes = PG_DETOAST_DATUM_PACKED(datum);
    const size_t size = VARSIZE_ANY_EXHDR(bytes);
    if (size == 0 || size > SQL_VALUE_SIZE_MAX)
        ereport(ERROR, (errcode(ERRCODE_DATA_CORRUPTED), errmsg("a number of %zu bytes", size)));
    number.size = static_cast<uint8_t>(size);
    const char *record = VARDATA_ANY(bytes);
    number.signexp = static_cast<uint8_t>(record[0]);
    copy_digits_(number.coef, record + 1, size - 1);
}

// With the header of one byte that it has in a table.
Datum dv::impl::postgres_give_number(const number_t &number) {
    auto *bytes = static_cast<char *>(palloc(VARHDRSZ_SHORT + SQL_VALUE_SIZE_MAX));
    SET_VARSIZE_SHORT(bytes, VARHDRSZ_SHORT + number.size);
    const auto *record = reinterpret_cast<const uint8_t *>(&number);
    memcpy(bytes + VARHDRSZ_SHORT, record + offsetof(number_t, signexp), SQL_VALUE_SIZE_MAX);  // no call
    return PointerGetDatum(bytes);
}

sql_text dv::impl::postgres_take_text(Datum datum) {
    const varlena *given = at_hand_(datum);
    char *bytes = const_cast<char *>(VARDATA_ANY(given));
    const int length = static_cast<int>(VARSIZE_ANY_EXHDR(given));
    if (length == 0) return {"", 0};
    if (is_utf8_()) return {bytes, length};
    char *converted = pg_server_to_any(bytes, length, PG_UTF8);
    return {converted, converted == bytes ? length : static_cast<int>(strlen(converted))};
}

sql_text dv::impl::postgres_take_cstring(const char *given) {
    const size_t length = strlen(given);
    if (is_utf8_() || length == 0) return {given, static_cast<int>(length)};
    const char *converted = pg_server_to_any(given, static_cast<int>(length), PG_UTF8);
    return {converted, static_cast<int>(strlen(converted))};
}

char *dv::impl::postgres_give_cstring(const sql_text &from) {
    const auto length = static_cast<size_t>(from.length);
    auto *copy = static_cast<char *>(palloc(length + 1));
    memcpy(copy, from.bytes, length);
    copy[length] = '\0';
    return is_utf8_() ? copy : pg_any_to_server(copy, from.length, PG_UTF8);
}

Datum dv::impl::postgres_give_text(const sql_text &from) {
    const char *bytes = from.bytes;
    size_t length = static_cast<size_t>(from.length);
    if (!is_utf8_()) {
        bytes = postgres_give_cstring(from);
        length = strlen(bytes);
    }
    auto *given = static_cast<varlena *>(palloc(VARHDRSZ + length));
    SET_VARSIZE(given, VARHDRSZ + length);
    memcpy(VARDATA(given), bytes, length);
    return PointerGetDatum(given);
}

void dv::impl::postgres_take(sql_value &value, Datum datum, sql_kind kind) {
    value.kind = kind;
    switch (static_cast<int>(kind)) {
        case SQL_KIND_NUMBER:
            postgres_take_number(value.number, datum);
            return;
        case SQL_KIND_DATE:
            value.date = postgres_take_word<dv_date_t>(datum);
            return;
        case SQL_KIND_TIME:
            value.time = postgres_take_word<dv_time_t>(datum);
            return;
        case SQL_KIND_TIMESTAMP:
            value.timestamp = postgres_take_record<dv_timestamp_t>(datum);
            return;
        case SQL_KIND_TS_TZ:
            value.ts_tz = postgres_take_record<dv_ts_tz_t>(datum);
            return;
        case SQL_KIND_INTEGER:
            value.integer = DatumGetInt64(datum);
            return;
        case SQL_KIND_REAL:
            value.real = DatumGetFloat8(datum);
            return;
        case SQL_KIND_TEXT:
            value.text = postgres_take_text(datum);
            return;
        case SQL_KIND_BLOB:
            value.blob = blob_of_(datum);
            return;
        case SQL_KIND_ROWID:
            return take_rowid_(value, datum);
        case POSTGRES_KIND_TS_LTZ:
            value.kind = SQL_KIND_TS_TZ;
            value.ts_tz = {postgres_take_record<dv_timestamp_t>(datum), SQL_UTC};
            return;
        default:
            memcpy(&value.number, DatumGetPointer(datum), static_cast<size_t>(postgres_type_of(kind).length));
            return;
    }
}

Datum dv::impl::postgres_give(const sql_value &value) {
    switch (static_cast<int>(value.kind)) {
        case SQL_KIND_NUMBER:
            return postgres_give_number(value.number);
        case SQL_KIND_DATE:
            return postgres_give_word(value.date);
        case SQL_KIND_TIME:
            return postgres_give_word(value.time);
        case SQL_KIND_TIMESTAMP:
            return postgres_give_record(value.timestamp);
        case SQL_KIND_TS_TZ:
            return postgres_give_record(value.ts_tz);
        case SQL_KIND_INTEGER:
            return Int64GetDatum(value.integer);
        case SQL_KIND_REAL:
            return Float8GetDatum(value.real);
        case SQL_KIND_TEXT:
            return postgres_give_text(value.text);
        default:
            return give_reference_(value);
    }
}
