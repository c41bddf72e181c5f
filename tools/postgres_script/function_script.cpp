// Rows of the catalogue as functions, tables and operators of the server.

#include <algorithm>
#include <array>
#include <string>
#include <vector>

#include "script.h"
#include "sql_try.h"

using namespace dv::impl;

namespace {

using kinds = std::array<sql_kind, SQL_PARAMS_MAX>;

struct place {
    int table, row;
};

// What a row that takes any value takes here.
constexpr sql_kind _any_kinds[] = {SQL_KIND_NUMBER,  SQL_KIND_DATE,    SQL_KIND_TIME,    SQL_KIND_TIMESTAMP,
                                   SQL_KIND_TS_TZ,   SQL_KIND_ITV_YTM, SQL_KIND_ITV_DTS, SQL_KIND_ROWID,
                                   SQL_KIND_INTEGER, SQL_KIND_REAL,    SQL_KIND_TEXT,    SQL_KIND_BLOB};

// Calls of the server's own that a plain name would take away: to_date(text, text) is one of its functions,
// and to_timestamp('1') is read as a number of seconds, as long as there is no other of one argument.
struct reserved {
    const char *name;
    int params;
    bool takes_texts;  // alone; otherwise of any kind
};
constexpr reserved _reserved[] = {
    {"to_date", 2, true}, {"to_timestamp", 2, true}, {"to_timestamp", 1, false}, {"to_number", 2, true}};

bool is_reserved_(const std::string &name, const kinds &params, int count) {
    return std::ranges::any_of(_reserved, [&](const reserved &each) {
        return name == each.name && count == each.params &&
               (!each.takes_texts || std::all_of(params.begin(), params.begin() + count,
                                                 [](sql_kind kind) { return kind == SQL_KIND_TEXT; }));
    });
}

// "v number, model text"
std::string params_of_(const sql_signature &signature, const kinds &params) {
    std::string text;
    for (int i = 0; i < sql_param_count(signature); ++i) {
        const std::string name(sql_param_name(signature, i));
        text.append(i == 0 ? "\"" : ", \"").append(name).append("\" ");
        text.append(postgres_type_of(params[static_cast<size_t>(i)]).name);
    }
    return text;
}

std::string symbol_of_(const std::string &name, const kinds &params, int count) {
    std::string symbol = "f_" + name;
    for (int i = 0; i < count; ++i)
        symbol.append("_").append(postgres_type_of(params[static_cast<size_t>(i)]).word);
    return symbol;
}

const char *volatility_(sql_volatility volatility) {
    constexpr const char *words[] = {"IMMUTABLE", "STABLE", "VOLATILE"};
    return words[volatility];
}

// ---------------------------------------------------------------------------------------------------------
// Functions
// ---------------------------------------------------------------------------------------------------------

// Does a row take NUMBERs alone, and give one?
bool is_of_numbers_(const sql_function &row) {
    const sql_signature &signature = row.signature;
    const int count = sql_param_count(signature);
    return signature.result == SQL_KIND_NUMBER && count > 0 && row.keeper == nullptr && !row.is_try &&
           std::all_of(signature.params, signature.params + count,
                       [](sql_kind kind) { return kind == SQL_KIND_NUMBER; });
}

// Texts read or written take four to five times as long as an addition of NUMBERs.
const char *cost_(const sql_function &row, const kinds &params) {
    const bool has_text =
        row.signature.result == SQL_KIND_TEXT || std::ranges::find(params, SQL_KIND_TEXT) != params.end();
    return has_text ? " COST 5" : "";
}

made_function function_(const sql_function &row, place at, const std::string &name, const kinds &params,
                        sql_kind result) {
    const int count = sql_param_count(row.signature);
    std::string body = "static constexpr postgres_function of = {" + std::to_string(at.table) + ", " +
                       std::to_string(at.row) + ", {";
    bool takes_null = false;
    for (int i = 0; i < count; ++i) {
        body += "static_cast<sql_kind>(" + std::to_string(params[static_cast<size_t>(i)]) + "), ";
        takes_null = takes_null || row.signature.params[i] == SQL_KIND_ANY;
    }
    const char *call = row.operation != nullptr ? "postgres_operation"
                       : is_of_numbers_(row)    ? "postgres_call_numbers"
                                                : "postgres_call";
    body += "}, static_cast<sql_kind>(" + std::to_string(result) + ")}; return " + call + "(of, fcinfo);";
    const char *strictness = takes_null ? " CALLED ON NULL INPUT" : " STRICT";
    return {name,
            params_of_(row.signature, params),
            postgres_type_of(result).name,
            symbol_of_(name, params, count),
            body,
            volatility_(row.volatility) + std::string(strictness) + cost_(row, params)};
}

// Conversions from text have a name with "dv_" in front, too.
bool is_conversion_(const std::string &name) {
    return std::ranges::any_of(SQL_TRY_NAMES, [&](const auto &names) { return name == names[0]; });
}

void add_function_(script &to, const sql_function &row, place at, const kinds &params) {
    const std::string name = row.signature.name;
    const int count = sql_param_count(row.signature);
    if (is_conversion_(name)) {
        const made_function made = function_(row, at, "dv_" + name, params, row.signature.result);
        to.add(made);
        if (!is_reserved_(name, params, count)) to.add_alias(made, name);
        return;
    }
    to.add(function_(row, at, name, params, row.signature.result));
    if (row.other_result != SQL_KIND_NONE)
        to.add(function_(row, at, name + "_" + postgres_type_of(row.other_result).word, params,
                         row.other_result));
}

// A literal of digits is an integer, which would be taken for a double precision rather than for a bigint.
void add_for_int_(script &to, const sql_function &row) {
    const std::string name = row.signature.name;
    to.add("CREATE FUNCTION " + name + "(\"v\" integer) RETURNS " +
           postgres_type_of(row.signature.result).name + "\n    IMMUTABLE PARALLEL SAFE RETURN " + name +
           "(\"v\"::bigint)");
}

kinds params_of_(const sql_signature &signature) {
    kinds params{};
    std::copy(std::begin(signature.params), std::end(signature.params), params.begin());
    return params;
}

void add_row_(script &to, const sql_function &row, place at) {
    kinds params = params_of_(row.signature);
    const auto any = std::ranges::find(params, SQL_KIND_ANY);
    if (any == params.end()) return add_function_(to, row, at, params);
    for (const sql_kind kind : _any_kinds) {
        *any = kind;
        add_function_(to, row, at, params);
    }
    add_for_int_(to, row);
}

// ---------------------------------------------------------------------------------------------------------
// Operators: the names of arithmetic are signs
// ---------------------------------------------------------------------------------------------------------

struct operator_sign {
    const char *function;
    const char *sign;
    bool commutes;
};
constexpr operator_sign _signs[] = {
    {"dv_add", "+", true}, {"dv_add_days", "+", true}, {"dv_sub_days", "-", false}, {"dv_sub", "-", false},
    {"dv_mul", "*", true}, {"dv_div", "/", false},     {"dv_mod", "%", false},      {"dv_neg", "-", false},
};

void add_operator_(script &to, const sql_signature &signature) {
    for (const operator_sign &each : _signs) {
        if (signature.name != std::string_view(each.function)) continue;
        const int count = sql_param_count(signature);
        const std::string right = postgres_type_of(signature.params[count - 1]).name;
        std::string statement = std::string("CREATE OPERATOR ") + each.sign + " (";
        if (count == 2)
            statement += std::string("LEFTARG = ") + postgres_type_of(signature.params[0]).name + ", ";
        statement += "RIGHTARG = " + right + ", FUNCTION = " + each.function;
        if (each.commutes) statement += std::string(", COMMUTATOR = ") + each.sign;
        to.add(statement + ")");
    }
}

// ---------------------------------------------------------------------------------------------------------
// Tables
// ---------------------------------------------------------------------------------------------------------

void add_table_(script &to, const sql_table &table, int place) {
    const kinds params = params_of_(table.signature);
    std::string columns;
    for (const sql_column &column : table.columns) {
        columns += columns.empty() ? "" : ", ";
        columns.append("\"").append(column.name).append("\" ").append(postgres_type_of(column.kind).name);
    }
    const std::string name = table.signature.name;
    const std::string symbol = "t_" + symbol_of_(name, params, sql_param_count(table.signature));
    std::string options = "IMMUTABLE STRICT ROWS 500";
    if (sql_param_count(table.signature) > 0) {  // of which the number of rows depends on
        const std::string support = "dv_" + symbol + "_rows";
        to.add(made_function{support, "internal", "internal", symbol + "_rows",
                             "return postgres_count_rows(" + std::to_string(place) + ", fcinfo);",
                             "IMMUTABLE STRICT"});
        options += " SUPPORT " + support;
    }
    to.add(made_function{name, params_of_(table.signature, params), "TABLE (" + columns + ")", symbol,
                         "return postgres_next_row(" + std::to_string(place) + ", fcinfo);", options});
}

}  // namespace

void dv::impl::add_functions(script &to) {
    to.add_comment("functions");
    for (size_t i = 0; i < catalogue.functions.size(); ++i) {
        const sql_function_table &table = *catalogue.functions[i];
        for (size_t j = 0; j < table.size(); ++j)
            add_row_(to, table[j], {static_cast<int>(i), static_cast<int>(j)});
    }
    to.add_comment("operators");
    sql_for_each(catalogue.functions, [&](const sql_function &row) { add_operator_(to, row.signature); });
    to.add_comment("tables");
    for (size_t i = 0; i < catalogue.tables.size(); ++i)
        add_table_(to, *catalogue.tables[i], static_cast<int>(i));
}
