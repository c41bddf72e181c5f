// What every SQL function does with its arguments: which kinds a parameter takes, how they are converted, and
// the text of the SQL error when that fails.

#include "sql_function.h"

using namespace dv::impl;

namespace {

// Makes a text, which is released here, the error of the call. NULL: there was no memory for it.
void fail_(sqlite3_context *context, char *text) {
    if (text == nullptr) return sqlite3_result_error_nomem(context);
    sqlite3_result_error(context, text, -1);
    sqlite3_free(text);
}

}  // namespace

bool dv::impl::sql_accepts(sql_kind param, sql_kind kind) {
    if (param == SQL_KIND_ANY || param == kind) return true;
    return param == SQL_KIND_NUMBER && (kind == SQL_KIND_INTEGER || kind == SQL_KIND_REAL);
}

void dv::impl::sql_convert(sql_value &value, sql_kind param) {
    if (param != SQL_KIND_NUMBER || value.kind == SQL_KIND_NUMBER) return;
    const sql_value from = value;
    value.kind = SQL_KIND_NUMBER;
    if (from.kind == SQL_KIND_INTEGER) {
        number_from_int64(&value.number, from.integer);
    } else {
        number_from_double(&value.number, from.real);
    }
}

void dv::impl::sql_fail_with_text(const sql_call &call, const char *text) {
    fail_(call.context, sqlite3_mprintf("%s: %s", call.function->name, text));
}

void dv::impl::sql_fail_with_raise(sqlite3_context *context, const char *function, const dv_error_t &error) {
    fail_(context, sqlite3_mprintf("%s: %s (dv%d)", function, error.message, error.code));
}

void dv::impl::sql_fail_with_kind(sqlite3_context *context, const char *function, int position,
                                  const sql_value &value, std::span<const sql_kind> expected) {
    sqlite3_str *text = sqlite3_str_new(sqlite3_context_db_handle(context));
    sqlite3_str_appendf(text, "%s: argument %d is ", function, position + 1);
    if (value.kind == SQL_KIND_BLOB) {
        sqlite3_str_appendf(text, "a BLOB that holds no value: %s", value.fault);
        return fail_(context, sqlite3_str_finish(text));
    }
    sqlite3_str_appendf(text, "%s where ", sql_kind_name(value.kind));
    const char *separator = "";
    for (const sql_kind kind : expected) {
        sqlite3_str_appendf(text, "%s%s", separator, sql_kind_name(kind));
        separator = " or ";
    }
    sqlite3_str_appendall(text, " is expected");
    const sql_type *type = sql_type_of(expected[0]);
    if (value.kind == SQL_KIND_TEXT && type != nullptr)
        sqlite3_str_appendf(text, "; %s() reads text", type->reader);
    fail_(context, sqlite3_str_finish(text));
}
