// Values that nobody would store, in every argument of every function that a connection has got by loading.

#include <random>
#include <set>

#include "sqlite_session.h"

using namespace dv::test;

namespace {

struct sql_name {
    std::string name;
    int arity;
};

// Functions, windowed ones too, that are there with the extension and not without: a new one is among them.
std::vector<sql_name> functions_(sqlite_session &session) {
    const std::string list = "SELECT DISTINCT name, narg FROM pragma_function_list";
    sqlite_session without(":memory:");
    std::set<row_t> known;
    for (const row_t &row : without.rows(list)) known.insert(row);
    std::vector<sql_name> names;
    for (const row_t &row : session.rows(list)) {
        if (row[0].ends_with("_text_view")) continue;  // no schema may hold a call
        if (!known.contains(row)) names.push_back({row[0], std::stoi(row[1])});
    }
    return names;
}

// Right values of every kind, from which the hostile ones are made too.
constexpr const char *_values[] = {
    "NULL",
    "0",
    "-9223372036854775808",
    "1.5",
    "-9e999",
    "''",
    "'YYYY-MM-DD'",
    "'MONTH'",
    "'+09:00'",
    "'2024-02-29 13:05:00'",
    "'1-6'",
    "'Asia/Seoul'",
    "'a' || char(0)",
    "printf('%.400c', 'Y')",
    "x''",
    "zeroblob(23)",
    "CAST(x'FFFE80' AS TEXT)",
    "to_number('-1.2E-100')",
    "dv_date(-4713, 1, 1)",
    "dv_date(9999, 12, 31)",
    "dv_time(23, 59, 59, 999999999)",
    "dv_timestamp(1582, 10, 4, 23, 59, 59, 1)",
    "to_timestamp_tz('9999-12-31 20:00:00 -03:00')",
    "to_timestamp_tz('2024-11-03 01:30:00 America/New_York EST')",
    "to_yminterval('999999999-11')",
    "to_dsinterval('-999999999 23:59:59.999999999')",
    "dv_rowid(1, 2, 3, 4)",
};

// One of the values, or its bytes with some changed, lost or put in.
std::string argument_(const std::vector<std::string> &quoted, std::mt19937_64 &random) {
    std::string value = quoted[random() % quoted.size()];
    if (!value.starts_with("X'") || value.size() < 5 || random() % 4 == 0) return value;
    const size_t place = 2 + random() % (value.size() - 3) / 2 * 2;
    switch (random() % 4) {
        case 0:
            return value.erase(place, 2);
        case 1:
            return value.insert(place, "FF");
        case 2:  // another type's tag
            return value.replace(2, 2, quoted.back(), 2, 2);
        default:
            value[place + random() % 2] = "0123456789ABCDEF"[random() % 16];
            return value;
    }
}

// A row of table t.
std::string row_(const std::vector<std::string> &quoted, std::mt19937_64 &random) {
    std::string row = "(" + argument_(quoted, random);
    for (int i = 1; i < 7; ++i) row.append(", ").append(argument_(quoted, random));
    return row + ")";
}

// The function of the first columns of table t.
std::string call_of_(const sql_name &function) {
    std::string columns;
    for (int i = 0; i < function.arity; ++i) columns.append(i == 0 ? "a" : ", a").append(std::to_string(i));
    return function.name + "(" + columns + ")";
}

// The functions that a schema may store the results of.
bool is_fixed_(const sql_name &function) {
    const bool is_clock = function.name == "tz_offset" && function.arity == 1;
    const bool is_aggregate = function.name == "dv_sum" || function.name == "dv_avg";
    return !is_clock && !is_aggregate && (function.arity > 0 || !function.name.starts_with("sys"));
}

// Places of a schema for a call with the arguments in table t, or in the row of table stored: a view, a
// trigger, a generated column, an index.
void make_schema_(sqlite_session &session, const std::string &call, bool is_fixed) {
    session.rows("CREATE TABLE t(a0, a1, a2, a3, a4, a5, a6)");
    session.rows("CREATE TABLE event(v)");
    session.rows("CREATE TABLE result(v)");
    session.rows("CREATE VIEW view AS SELECT " + call + " AS v FROM t");
    session.rows("CREATE TRIGGER trigger_ AFTER INSERT ON event BEGIN INSERT INTO result SELECT " + call +
                 " FROM t; END");
    session.rows("CREATE TABLE stored(a0, a1, a2, a3, a4, a5, a6, v AS (" + (is_fixed ? call : "1") +
                 ") STORED)");
    session.rows("CREATE INDEX stored_by_call ON stored(" + (is_fixed ? call : "a0") + ", v)");
}

}  // namespace

// A value or an error of the function's own, the same wherever the call stands in a schema that is not
// trusted; and the database stays whole.
TEST(SqlHostile, ArgumentsGiveAValueOrAnErrorWhereverTheyStand) {
    std::vector<std::string> quoted;
    std::mt19937_64 random(14);
    long values = 0, errors = 0;
    sqlite_session first;
    for (const std::string value : _values) {
        const std::string blob = first.value("SELECT quote(" + value + ")");
        quoted.push_back(blob.starts_with("X'") ? blob : value);
    }
    const auto functions = functions_(first);
    EXPECT_GT(functions.size(), 70u);
    for (const sql_name &function : functions) {
        sqlite_session session;
        session.rows("PRAGMA trusted_schema = OFF");
        sqlite3_db_config(session.db(), SQLITE_DBCONFIG_DEFENSIVE, 1, nullptr);
        const std::string call = call_of_(function);
        const bool is_fixed = is_fixed_(function);
        make_schema_(session, call, is_fixed);
        for (int round = 0; round < 30 * (function.arity + 1); ++round) {
            const std::string row = row_(quoted, random);
            session.rows("INSERT INTO t VALUES " + row);
            const std::string got = session.value("SELECT quote(v) FROM view");
            const bool is_error = got.starts_with("error: ");
            const bool names_column = function.name.starts_with("dv_column_");
            const std::string begin = "error: " + (names_column ? "column \"" : function.name + ": ");
            EXPECT_TRUE(!is_error || got.starts_with(begin)) << call << row << got;
            const std::string triggered = session.value("INSERT INTO event VALUES (1)");
            const std::string stored = session.value("INSERT INTO stored VALUES " + row);
            EXPECT_EQ(triggered, is_error ? got : "no row") << call << row;
            EXPECT_EQ(stored, is_error && is_fixed ? got : "no row") << call << row;
            session.rows("DELETE FROM t");
            ++(is_error ? errors : values);
        }
        EXPECT_EQ(session.value("PRAGMA integrity_check"), "ok") << call;
        EXPECT_EQ(session.value("SELECT count(*) FROM stored NOT INDEXED WHERE v IS NOT " +
                                (is_fixed ? call : "1")),
                  "0");
    }
    EXPECT_TRUE(values > 500 && errors > 2000) << values << " " << errors;
}
