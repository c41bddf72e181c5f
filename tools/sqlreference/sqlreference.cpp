// sqlreference: walks the catalogue of SQL functions and prints docs/sql-functions.md.

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

#include "sql_catalogue.h"

using namespace dv::impl;

namespace {

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
void print_(const char *title, const char *result, std::vector<line_t> lines) {
    std::ranges::stable_sort(lines, {}, &line_t::name);
    printf("\n## %s\n\n| call | %s | |\n|---|---|---|\n", title, result);
    for (const line_t &line : lines)
        printf("| %s | %s | %s |\n", line.call.c_str(), line.result.c_str(), line.note);
}

}  // namespace

int main() {
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
    printf(
        "# The SQL functions, one by one\n\n"
        "Made by `sqlreference` from the rows of [src/sql](../src/sql/README.md); what holds for all of "
        "them, and\n"
        "examples, are in [sql.md](sql.md). Where a NUMBER is taken, so are INTEGER and finite REAL. A "
        "result is\n"
        "immutable, which means that it depends on the arguments alone, where nothing else is said; one that "
        "is\n"
        "stable depends on the clock and the host's zone, too.\n");
    print_("Functions", "result", functions);
    print_("Aggregates and window functions", "result", aggregates);
    print_("Tables", "columns", tables);
    return 0;
}
