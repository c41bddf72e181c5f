// Choosing among overloads, checking and converting the arguments, and the text of what is wrong with them.

#include "sql_overload.h"

#include <algorithm>
#include <cmath>
#include <compare>
#include <cstring>

#include "sql_text_list.h"

using namespace dv::impl;

namespace {

// How many arguments a row takes, wherever they stand, and how many up to the first that it does not.
struct fit {
    int taken;
    int leading;
    auto operator<=>(const fit &) const = default;
};

fit fit_of_(const sql_signature &signature, const sql_call &call) {
    fit found{};
    for (int i = 0; i < call.argc; ++i) {
        if (!sql_accepts(signature.params[i], call.args[i].kind)) continue;
        ++found.taken;
        if (found.leading == i) ++found.leading;
    }
    return found;
}

// "; to_yminterval() or to_dsinterval() reads text"
void append_readers_(sql_text_list &text, std::span<const sql_kind> expected) {
    const char *readers[SQL_KINDS_MAX];
    size_t count = 0;
    for (const sql_kind kind : expected) {
        const sql_type *type = sql_type_of(kind);
        if (type != nullptr && type->reader != nullptr) readers[count++] = type->reader;
    }
    if (count == 0) return;
    text.append("; ");
    for (size_t i = 0; i < count; ++i) text.append_item(i, count, readers[i], "()");
    text.append(" reads text");
}

bool is_number_(sql_kind kind) {
    return kind == SQL_KIND_INTEGER || kind == SQL_KIND_REAL || kind == SQL_KIND_NUMBER;
}

// What makes an expected value of one of another kind.
void append_makers_(sql_text_list &text, sql_kind kind, std::span<const sql_kind> expected) {
    const auto expects = [&](sql_kind one) { return std::ranges::count(expected, one) > 0; };
    if (is_number_(kind) && expects(SQL_KIND_ITV_DTS))
        text.append("; numtodsinterval() and numtoyminterval() make intervals of numbers");
    if ((kind == SQL_KIND_DATE || kind == SQL_KIND_TIMESTAMP) && expects(SQL_KIND_TS_TZ))
        text.append("; from_tz() gives a TIMESTAMP its zone");
}

void fail_with_kind_(sql_call &call, int position, std::span<const sql_kind> expected) {
    const sql_value &value = call.args[position];
    if (value.kind == SQL_KIND_BLOB) {
        return sql_fail(call, "argument %d is a BLOB that holds no value: %s", position + 1,
                        value.blob.fault);
    }
    sql_text_list text;
    for (size_t i = 0; i < expected.size(); ++i)
        text.append_item(i, expected.size(), sql_kind_name(expected[i]), "");
    text.append(" is expected");
    if (value.kind == SQL_KIND_TEXT) append_readers_(text, expected);
    append_makers_(text, value.kind, expected);
    const sql_quoted shown = value.kind == SQL_KIND_TEXT ? sql_quote(value.text) : sql_quoted{};
    sql_fail(call, "argument %d is %s%s%s where %s", position + 1, sql_kind_name(value.kind),
             *shown.text == '\0' ? "" : " ", shown.text, text.text());
}

// Why a value will not do for a parameter that takes its kind; NULL when it will.
const char *fault_of_(const sql_value &value, sql_kind param) {
    if (param == SQL_KIND_TEXT && memchr(value.text.bytes, '\0', static_cast<size_t>(value.text.length)))
        return "has a NUL inside its text";
    if (param != SQL_KIND_NUMBER || value.kind != SQL_KIND_REAL || std::isfinite(value.real)) return nullptr;
    return std::isnan(value.real) ? "is a REAL that is no number"
                                  : "is an infinite REAL where NUMBER is finite";
}

}  // namespace

bool dv::impl::sql_is_overload(const sql_signature &x, const sql_signature &y) {
    return strcmp(x.name, y.name) == 0 && sql_param_count(x) == sql_param_count(y);
}

void dv::impl::sql_fail_unresolved(sql_call &call, std::span<const sql_signature *const> rows) {
    fit best{};
    for (const sql_signature *row : rows) best = std::max(best, fit_of_(*row, call));
    sql_kind expected[SQL_KINDS_MAX];
    sql_kind *end = expected;
    for (const sql_signature *row : rows) {
        const sql_kind param = row->params[best.leading];
        const bool is_new = std::find(expected, end, param) == end;
        if (is_new && fit_of_(*row, call) == best) *end++ = param;
    }
    fail_with_kind_(call, best.leading, {expected, end});
}

bool dv::impl::sql_check_value(sql_call &call, int position, sql_kind param) {
    const char *fault = fault_of_(call.args[position], param);
    if (fault == nullptr) return true;
    sql_fail(call, "argument %d %s", position + 1, fault);
    return false;
}

void dv::impl::sql_to_number(sql_value &value) {
    if (value.kind == SQL_KIND_NUMBER) return;
    const sql_value from = value;
    if (from.kind == SQL_KIND_INTEGER) number_from_int64(&value.number, from.integer);
    if (from.kind == SQL_KIND_REAL) number_from_double_shortest(&value.number, from.real);
    value.kind = SQL_KIND_NUMBER;
}
