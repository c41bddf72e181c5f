// Walks the catalogue of SQL functions.

#include "sql_reference.h"

#include <algorithm>
#include <vector>

#include "sql_catalogue.h"

using namespace dv::impl;

namespace {

const std::string _introduction = R"(# The SQL functions, one by one

Made by `sqlreference` from the rows of [src/sql](../src/sql/README.md); what holds for all of them, and
examples, are in [sql.md](sql.md). Where a NUMBER is taken, so are INTEGER and finite REAL. A result is
immutable, which means that it depends on the arguments alone, where nothing else is said; one that is
stable depends on the clock and the host's zone, too.
)";

struct line_t {
    std::string name, call, result;
    const char *note;
};

// `add_months(d DATE, n INTEGER)`
std::string call_of_(const sql_signature &signature) {
    std::string call = signature.name;
    call += '(';
    for (int i = 0; i < sql_param_count(signature); ++i) {
        if (i > 0) call += ", ";
        call.append(sql_param_name(signature, i)).append(" ").append(sql_kind_name(signature.params[i]));
    }
    return "`" + call + ")`";
}

std::string result_of_(const sql_function &row) {
    std::string result = sql_kind_name(row.signature.result);
    if (row.other_result != SQL_KIND_NONE) result.append(" or ").append(sql_kind_name(row.other_result));
    if (row.volatility != SQL_IMMUTABLE) result.append(", ").append(sql_volatility_name(row.volatility));
    return result;
}

// "name TEXT, number INTEGER"
std::string columns_of_(const sql_table &table) {
    std::string columns;
    for (const sql_column &column : table.columns) {
        if (!columns.empty()) columns += ", ";
        columns.append(column.name).append(" ").append(sql_kind_name(column.kind));
    }
    return columns;
}

// By name, overloads in the order of the catalogue.
std::string chapter_(const std::string &title, const std::string &result, std::vector<line_t> lines) {
    std::ranges::stable_sort(lines, {}, &line_t::name);
    std::string text = "\n## " + title + "\n\n| call | " + result + " | |\n|---|---|---|\n";
    for (const line_t &line : lines)
        text += "| " + line.call + " | " + line.result + " | " + line.note + " |\n";
    return text;
}

}  // namespace

std::string dv::impl::sql_reference() {
    std::vector<line_t> functions, aggregates, tables;
    sql_for_each(catalogue.functions, [&](const sql_function &row) {
        const sql_signature &s = row.signature;
        functions.push_back({s.name, call_of_(s), result_of_(row), s.manual});
    });
    sql_for_each(catalogue.aggregates, [&](const sql_aggregate &row) {
        const sql_signature &s = row.signature;
        aggregates.push_back({s.name, call_of_(s), sql_kind_name(s.result), s.manual});
    });
    for (const sql_table *table : catalogue.tables) {
        const sql_signature &s = table->signature;
        tables.push_back({s.name, call_of_(s), columns_of_(*table), s.manual});
    }
    return _introduction + chapter_("Functions", "result", functions) +
           chapter_("Aggregates and window functions", "result", aggregates) +
           chapter_("Tables", "columns", tables);
}
