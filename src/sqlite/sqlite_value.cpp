// Values between SQLite and the catalogue: tagged BLOBs, results, errors, memory.

#include "sqlite_value.h"

#include <cstring>
#include <span>

#include "sqlite_stored.h"

using namespace dv::impl;

namespace {

// ---------------------------------------------------------------------------------------------------------
// Memory
// ---------------------------------------------------------------------------------------------------------

void *malloc_(allocator_t *, size_t size, const char *, int) { return sqlite3_malloc64(size); }

void *calloc_(allocator_t *, size_t count, size_t size, const char *, int) {
    size_t bytes;
    if (__builtin_mul_overflow(count, size, &bytes)) return nullptr;
    void *block = sqlite3_malloc64(bytes);
    return block != nullptr ? memset(block, 0, bytes) : nullptr;
}

void *realloc_(allocator_t *, void *block, size_t size, const char *, int) {
    return sqlite3_realloc64(block, size);
}

void free_(allocator_t *, void *block, const char *, int) { sqlite3_free(block); }

void throw_(allocator_t *, const char *file, int line) {
    dv_err_and_jmp(file, line, "throw_", 0, 0, DV_ERR_NO_MEMORY);
}

// ---------------------------------------------------------------------------------------------------------
// Values
// ---------------------------------------------------------------------------------------------------------

// NULL when the bytes are a value, which is then stored.
const char *decode_stored_(std::span<const uint8_t> blob, sql_value &value) {
    if (blob.empty()) return "it is empty";
    const sql_type *type = sql_type_of(blob[0]);
    if (type == nullptr) return "its first byte is no type code";
    value.kind = type->kind;
    return type->decode(value, blob.data() + 1, static_cast<int>(blob.size() - 1));
}

void decode_blob_(std::span<const uint8_t> blob, sql_value &value) {
    const char *fault = decode_stored_(blob, value);
    if (fault == nullptr) return;
    value.kind = SQL_KIND_BLOB;
    value.blob = {blob.data(), static_cast<int>(blob.size()), fault};
}

void give_stored_(sqlite3_context *context, const sql_value &value) {
    uint8_t stored[SQLITE_STORED_SIZE_MAX];
    sqlite3_result_blob(context, stored, sqlite_store(value, stored), SQLITE_TRANSIENT);
}

// A text that lies in the call's block is SQLite's from now on.
void give_text_(sqlite3_context *context, sql_call &call) {
    const sql_text &text = call.result.text;
    const bool is_block = call.block != nullptr && text.bytes == call.block;
    sqlite3_result_text(context, text.bytes, text.length, is_block ? sqlite3_free : SQLITE_TRANSIENT);
    if (is_block) call.block = nullptr;
}

void give_(sqlite3_context *context, sql_call &call) {
    switch (call.result.kind) {
        case SQL_KIND_NULL:
            return sqlite3_result_null(context);
        case SQL_KIND_INTEGER:
            return sqlite3_result_int64(context, call.result.integer);
        case SQL_KIND_REAL:
            return sqlite3_result_double(context, call.result.real);
        case SQL_KIND_TEXT:
            return give_text_(context, call);
        default:
            return give_stored_(context, call.result);
    }
}

// Makes a text, which is released here, the error of the call. NULL: there was no memory for it.
void give_error_(sqlite3_context *context, char *text) {
    if (text == nullptr) return sqlite3_result_error_nomem(context);
    sqlite3_result_error(context, text, -1);
    sqlite3_free(text);
}

void release_block_(sql_call &call) {
    if (call.block != nullptr) sqlite3_free(call.block);
}

}  // namespace

constinit allocator_t dv::impl::sqlite_memory = {malloc_, calloc_, realloc_, free_, throw_};

bool dv::impl::sqlite_take_argument(sql_value &value, sqlite3_value *raw) {
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

bool dv::impl::sqlite_take_arguments(sql_call &call, int argc, sqlite3_value **argv) {
    sql_begin(call, &sqlite_memory);
    call.argc = argc;
    for (int i = 0; i < argc; ++i) {
        if (!sqlite_take_argument(call.args[i], argv[i])) return false;
    }
    return true;
}

void dv::impl::sqlite_finish(sqlite3_context *context, const char *function, sql_call &call) {
    switch (call.outcome) {
        case SQL_GIVEN:
            give_(context, call);
            break;
        case SQL_FAILED:
            give_error_(context, sqlite3_mprintf("%s: %s", function, call.failure));
            break;
        case SQL_TOO_LONG:
            sqlite3_result_error_toobig(context);
            break;
    }
    release_block_(call);
}

void dv::impl::sqlite_fail(sqlite3_context *context, const char *function, sql_call &call, int code,
                           const char *message) {
    release_block_(call);
    if (code == DV_ERR_NO_MEMORY) return sqlite3_result_error_nomem(context);
    give_error_(context, sqlite3_mprintf("%s: %s (dv%d)", function, message, code));
}
