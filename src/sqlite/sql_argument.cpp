// What every SQL function does with its arguments: which kinds a parameter takes, how they are converted, and
// the text of the SQL error when that fails.

#include <climits>
#include <cmath>
#include <cstring>

#include "dvtypes/nls.h"
#include "sql_function.h"

using namespace dv::impl;

namespace {

// Makes a text, which is released here, the error of the call. NULL: there was no memory for it.
void fail_(sqlite3_context *context, char *text) {
    if (text == nullptr) return sqlite3_result_error_nomem(context);
    sqlite3_result_error(context, text, -1);
    sqlite3_free(text);
}

const char *separator_(size_t i, size_t count) { return i == 0 ? "" : i + 1 < count ? ", " : " or "; }

// "; to_yminterval() or to_dsinterval() reads text"
void append_readers_(sqlite3_str *text, std::span<const sql_kind> expected) {
    const char *readers[SQL_KINDS_MAX];
    size_t count = 0;
    for (const sql_kind kind : expected) {
        const sql_type *type = sql_type_of(kind);
        if (type != nullptr && type->reader != nullptr) readers[count++] = type->reader;
    }
    for (size_t i = 0; i < count; ++i)
        sqlite3_str_appendf(text, "%s%s()", i == 0 ? "; " : separator_(i, count), readers[i]);
    if (count > 0) sqlite3_str_appendall(text, " reads text");
}

// Why a value will not do for a parameter that takes its kind; NULL when it will.
const char *fault_of_(const sql_value &value, sql_kind param) {
    if (param == SQL_KIND_TEXT && memchr(value.text.bytes, '\0', static_cast<size_t>(value.text.length)))
        return "has a NUL inside its text";
    if (param != SQL_KIND_NUMBER || value.kind != SQL_KIND_REAL || std::isfinite(value.real)) return nullptr;
    return std::isnan(value.real) ? "is a REAL that is no number"
                                  : "is an infinite REAL where NUMBER is finite";
}

// INTEGER and REAL.
void to_number_(sql_value &value) {
    const sql_value from = value;
    if (from.kind == SQL_KIND_INTEGER) number_from_int64(&value.number, from.integer);
    if (from.kind == SQL_KIND_REAL) number_from_double(&value.number, from.real);
    value.kind = SQL_KIND_NUMBER;
}

}  // namespace

bool dv::impl::sql_accepts(sql_kind param, sql_kind kind) {
    if (param == SQL_KIND_ANY || param == kind) return true;
    return param == SQL_KIND_NUMBER && (kind == SQL_KIND_INTEGER || kind == SQL_KIND_REAL);
}

bool dv::impl::sql_convert(sqlite3_context *context, const char *function, int position, sql_value &value,
                           sql_kind param) {
    const char *fault = fault_of_(value, param);
    if (fault != nullptr) {
        fail_(context, sqlite3_mprintf("%s: argument %d %s", function, position + 1, fault));
        return false;
    }
    if (param == SQL_KIND_NUMBER) to_number_(value);
    return true;
}

bool dv::impl::sql_check_setting(const sql_call &call, int position) {
    const sql_text &text = call.args[position].text;
    const int prefix =
        strchr(text.bytes, '=') == nullptr ? static_cast<int>(strlen(SQL_LANGUAGE_SETTING)) : 0;
    if (text.length <= DV_NLS_TEXT_MAX - prefix) return true;
    fail_(call.context,
          sqlite3_mprintf("%s: argument %d is longer than a setting, which has at most %d bytes",
                          call.function->name, position + 1, DV_NLS_TEXT_MAX));
    return false;
}

void dv::impl::sql_fail_with_text(const sql_call &call, const char *text) {
    fail_(call.context, sqlite3_mprintf("%s: %s", call.function->name, text));
}

void dv::impl::sql_fail_with_raise(sqlite3_context *context, const char *function, const dv_error_t &error) {
    if (error.code == DV_ERR_NO_MEMORY) return sqlite3_result_error_nomem(context);
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
    for (size_t i = 0; i < expected.size(); ++i)
        sqlite3_str_appendf(text, "%s%s", separator_(i, expected.size()), sql_kind_name(expected[i]));
    sqlite3_str_appendall(text, " is expected");
    if (value.kind == SQL_KIND_TEXT) append_readers_(text, expected);
    fail_(context, sqlite3_str_finish(text));
}

bool dv::impl::sql_get_ints(const sql_call &call, int first, std::span<int> ints) {
    for (int i = 0; i < static_cast<int>(ints.size()); ++i) {
        const sqlite3_int64 integer = call.args[first + i].integer;
        if (integer < INT_MIN || integer > INT_MAX) {
            fail_(call.context, sqlite3_mprintf("%s: argument %d is out of range: %lld", call.function->name,
                                                first + i + 1, integer));
            return false;
        }
        ints[static_cast<size_t>(i)] = static_cast<int>(integer);
    }
    return true;
}

int dv::impl::sql_get_word(const sql_call &call, int position, std::span<const sql_word> words) {
    const sql_text &given = call.args[position].text;
    for (const sql_word &word : words) {
        if (strlen(word.text) == static_cast<size_t>(given.length) &&
            sqlite3_strnicmp(word.text, given.bytes, given.length) == 0)
            return word.meaning;
    }
    sqlite3_str *text = sqlite3_str_new(sqlite3_context_db_handle(call.context));
    sqlite3_str_appendf(text, "%s: argument %d is not ", call.function->name, position + 1);
    for (size_t i = 0; i < words.size(); ++i)
        sqlite3_str_appendf(text, "%s%s", separator_(i, words.size()), words[i].text);
    fail_(call.context, sqlite3_str_finish(text));
    return 0;
}
