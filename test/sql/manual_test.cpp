// docs/sql.md and docs/sql-functions.md against the catalogue: their tables of functions have every call and
// no other, each with its results.

#include <gtest/gtest.h>

#include <fstream>
#include <map>
#include <regex>
#include <set>

#include "project_file.h"
#include "sql_reference.h"

using namespace dv::impl;
using namespace dv::test;

namespace {

using results_t = std::set<std::string>;            // names of kinds
using manual_t = std::map<std::string, results_t>;  // by call: "dv_round(v, places)"

std::vector<std::string> pieces_(const std::string &text, const std::string &separators) {
    const std::regex separator(separators);
    return {std::sregex_token_iterator(text.begin(), text.end(), separator, -1), {}};
}

// What a word of the column of results stands for.
results_t kinds_of_(const std::string &word) {
    if (word == "integer") return {"INTEGER"};
    if (word == "text") return {"TEXT"};
    if (word == "interval") return {"INTERVAL YEAR TO MONTH", "INTERVAL DAY TO SECOND"};
    return {word};
}

manual_t manual_() {
    std::ifstream file(project_file("docs/sql.md"));
    manual_t manual;
    bool is_of_functions = false;
    for (std::string line; std::getline(file, line);) {
        if (!line.starts_with("|")) is_of_functions = false;
        if (line.starts_with("| function |")) is_of_functions = true;
        if (!is_of_functions || !line.starts_with("| `")) continue;
        const std::vector<std::string> cells = pieces_(line, " *\\| *");  // an empty one in front
        const std::regex call("`([a-z_]+\\([a-z_, ]*\\))`");
        for (auto it = std::sregex_iterator(cells[1].begin(), cells[1].end(), call);
             it != std::sregex_iterator(); ++it) {
            for (const std::string &word : pieces_(cells[3], ", | or "))
                manual[(*it)[1]].merge(kinds_of_(word));
        }
    }
    return manual;
}

manual_t catalogue_() {
    manual_t rows;
    const auto add = [&](const sql_signature &signature) -> results_t & {
        results_t &results =
            rows[std::string(signature.name) + "(" + std::string(signature.param_names) + ")"];
        results.insert(sql_kind_name(signature.result));
        return results;
    };
    sql_for_each(catalogue.functions, [&](const sql_function &row) {
        results_t &results = add(row.signature);
        if (row.other_result != SQL_KIND_NONE) results.insert(sql_kind_name(row.other_result));
    });
    sql_for_each(catalogue.aggregates, [&](const sql_aggregate &row) { add(row.signature); });
    return rows;
}

TEST(SqlManual, HasTheCallsOfTheCatalogueWithTheirResults) {
    const manual_t manual = manual_(), rows = catalogue_();
    for (const auto &[call, results] : rows) {
        EXPECT_TRUE(manual.contains(call)) << call << " is not in docs/sql.md";
        if (manual.contains(call)) {
            EXPECT_EQ(manual.at(call), results) << call;
        }
    }
    for (const auto &[call, results] : manual)
        EXPECT_TRUE(rows.contains(call)) << call << " of docs/sql.md is not in the catalogue";
}

std::string text_of_(const char *path) {
    std::ifstream file(project_file(path));
    return {std::istreambuf_iterator<char>(file), {}};
}

TEST(SqlManual, HasTheListThatSqlreferencePrints) {
    EXPECT_EQ(text_of_("docs/sql-functions.md"), sql_reference());
}

TEST(SqlManual, NamesTheTablesAndWhatDependsOnMoreThanArguments) {
    const std::string text = text_of_("docs/sql.md");
    for (const sql_table *table : catalogue.tables) {
        EXPECT_NE(text.find("`" + std::string(table->signature.name)), text.npos) << table->signature.name;
        for (const sql_column &column : table->columns)
            EXPECT_NE(text.find("`" + std::string(column.name) + "`"), text.npos) << column.name;
    }
    const size_t begin = text.find("All but `"), end = text.find(" are deterministic");
    ASSERT_TRUE(begin < end && end != text.npos);
    std::set<std::string> named, stable;
    const std::string list = text.substr(begin, end - begin);
    const std::regex call("`([a-z_]+\\([a-z_, ]*\\))`");
    for (auto it = std::sregex_iterator(list.begin(), list.end(), call); it != std::sregex_iterator(); ++it)
        named.insert((*it)[1]);
    sql_for_each(catalogue.functions, [&](const sql_function &row) {
        const sql_signature &s = row.signature;
        if (row.volatility != SQL_IMMUTABLE)
            stable.insert(std::string(s.name) + "(" + std::string(s.param_names) + ")");
    });
    EXPECT_EQ(named, stable);
}

}  // namespace
