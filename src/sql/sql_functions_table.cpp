// The catalogue as a table in SQL: dv_functions, with a row for each overload of a function.
//
//     SELECT arguments, result, manual FROM dv_functions WHERE name = 'dv_add'

#include <algorithm>
#include <cstring>
#include <iterator>

#include "sql_catalogue.h"

using namespace dv::impl;

namespace {

enum column_e { COLUMN_NAME, COLUMN_USE, COLUMN_ARGUMENTS, COLUMN_RESULT, COLUMN_VOLATILITY, COLUMN_MANUAL };
constexpr sql_column _columns[] = {
    {"name", SQL_KIND_TEXT},   {"use", SQL_KIND_TEXT},        {"arguments", SQL_KIND_TEXT},
    {"result", SQL_KIND_TEXT}, {"volatility", SQL_KIND_TEXT}, {"manual", SQL_KIND_TEXT},
};
static_assert(std::size(_columns) == COLUMN_MANUAL + 1);

// A row of the catalogue, of whatever table.
struct entry {
    const sql_signature *signature;
    const char *use;
    sql_volatility volatility;
    sql_kind other_result;
};

// Calls visit(entry) with all rows.
void for_each_entry_(auto visit) {
    sql_for_each(catalogue.functions, [&](const sql_function &row) {
        visit(entry{&row.signature, "function", row.volatility, row.other_result});
    });
    sql_for_each(catalogue.aggregates, [&](const sql_aggregate &row) {
        visit(entry{&row.signature, "aggregate", SQL_IMMUTABLE, SQL_KIND_NONE});
    });
    for (const sql_table *table : catalogue.tables)
        visit(entry{&table->signature, "table", SQL_STABLE, SQL_KIND_NONE});
}

entry entry_(int64_t number) {
    entry found{};
    for_each_entry_([&](const entry &each) {
        if (number-- == 0) found = each;
    });
    return found;
}

void begin_(sql_call &, sql_rows &walk) {
    for_each_entry_([&](const entry &) { ++walk.rows; });
}

char *put_(char *out, const char *text) { return std::copy_n(text, strlen(text), out); }

// "DATE, INTEGER"
void return_arguments_(sql_call &call, const sql_signature &signature) {
    constexpr int longest_kind = sizeof "TIMESTAMP WITH TIME ZONE, ";
    static_assert(SQL_PARAMS_MAX * longest_kind <= SQL_ROOM_SIZE);
    char *end = call.room;
    for (int i = 0; i < sql_param_count(signature); ++i) {
        if (i > 0) end = put_(end, ", ");
        end = put_(end, sql_kind_name(signature.params[i]));
    }
    sql_return_room(call, end);
}

// "NUMBER or TEXT"; nothing of a table.
void return_result_(sql_call &call, const entry &of) {
    if (of.signature->result == SQL_KIND_NONE) return;
    char *end = put_(call.room, sql_kind_name(of.signature->result));
    if (of.other_result != SQL_KIND_NONE) {
        end = put_(end, " or ");
        end = put_(end, sql_kind_name(of.other_result));
    }
    sql_return_room(call, end);
}

void field_(sql_call &call, const sql_rows &, int64_t row, int column) {
    const entry of = entry_(row);
    switch (column) {
        case COLUMN_NAME:
            return sql_return_text(call, of.signature->name);
        case COLUMN_USE:
            return sql_return_text(call, of.use);
        case COLUMN_ARGUMENTS:
            return return_arguments_(call, *of.signature);
        case COLUMN_RESULT:
            return return_result_(call, of);
        case COLUMN_VOLATILITY:
            return sql_return_text(call, sql_volatility_name(of.volatility));
        default:
            return sql_return_text(call, of.signature->manual);
    }
}

}  // namespace

constinit const sql_table dv::impl::functions_table = {
    {"dv_functions", {}, "", SQL_KIND_NONE, "these functions, aggregates and tables"},
    _columns,
    begin_,
    field_,
};
