// SQL statements over every function and table that a connection gets from the extension. The input is an
// expression, what else is done with it, and the rows of the table that it runs over: functions of functions
// of columns, as the connection lists them, and columns of any values.
//
// Properties: what sql_session checks of every statement. An expression gives the same alone over parameters
// as over the rows of a table, and through an index as without; where one fails so does the other. A BLOB is
// a value: it has a text, which reads back as it. BLOBs are in the order of dv_cmp(). A window over some rows
// gives what they give alone.

#include <map>

#include "raise.h"
#include "sql_readers.h"
#include "sql_session.h"

using namespace dv::fuzz;

namespace {

constexpr int _columns = 7, _constants = 2;  // the last columns have one value for all rows
constexpr int _rows_max = 4, _depth_max = 3;
constexpr char _alone[] =
    " FROM (SELECT ?1 AS a0, ?2 AS a1, ?3 AS a2, ?4 AS a3, ?5 AS a4, ?6 AS a5, ?7 AS a6)";
constexpr char _over_rows[] = " FROM (SELECT id, a0, a1, a2, a3, a4, ?6 AS a5, ?7 AS a6 FROM t)";

// Right values of every kind. Inputs name them by their places: a new one stands behind.
constexpr char _values[] = R"(VALUES
    (0), (1), (-1), (9223372036854775807), (-9223372036854775807 - 1), (0.5), (-1e300), (9e999), (''),
    ('1.5E+3'), ('YYYY-MM-DD HH24:MI:SS'), ('DD-MON-RR HH.MI.SSXFF AM'), ('FMDay, ddth Month SYYYY BC'),
    ('HH24:MI'), ('DDD/Y'), ('YYYY-MM-DD HH24:MI:SS.FF TZR TZD'), ('TZH:TZM'), ('FXYYYYDDDSSSSS'), ('FMRN'),
    ('9,990.00'), ('S99V99EEEE'), ('MM'), ('IW'), ('YEAR'), ('MONTH'), ('DAY'), ('HOUR'), ('SECOND'),
    ('TIMEZONE_REGION'), ('TIMEZONE_ABBR'), ('AMERICAN'), ('KOREAN'), ('RUSSIAN'),
    ('NLS_DATE_LANGUAGE=BRAZILIAN PORTUGUESE'), ('Monday'), ('FRI'), ('+09:00'), ('-5'), ('Asia/Seoul'),
    ('America/New_York'), ('Etc/GMT+5'), ('2024-02-29'), ('2024-02-29 13:05:00.5'), ('-0044-03-15 11:30:00'),
    ('2024-11-03 01:30:00 America/New_York EST'), ('29-FEB-24 01.05.07.5 PM'), ('1-6'), ('-1 2:03:04.5'),
    ('AAAAABAACAAAAADAAE'), ('a' || char(0)), (to_number('-1.2E-100')),
    (to_number('99999999999999999999999999999999999999E+88')), (to_number('.5')), (dv_date(-4713, 1, 1)),
    (dv_date(9999, 12, 31, 23, 59, 59)), (dv_date(1582, 10, 4)), (dv_date(2024, 2, 29)),
    (dv_time(23, 59, 59, 999999999)), (dv_timestamp(1582, 10, 15, 0, 0, 0, 1)),
    (dv_timestamp(2024, 1, 31, 1, 2, 3)), (to_timestamp_tz('2024-11-03 01:30:00 America/New_York EST')),
    (to_timestamp_tz('9999-12-31 20:00:00 -03:00')), (to_yminterval('999999999-11')), (to_yminterval('-0-1')),
    (to_dsinterval('-999999999 23:59:59.999999999')), (to_dsinterval('0 0:0:0.5')),
    (dv_rowid(4294967295, 65535, 2, 1)), ('QUARTER'), ('WEEK'), ('ISOYEAR'), ('DOW'), ('DOY'), ('EPOCH'))";

sql_session &session_() {
    static sql_session session;
    return session;
}

// ---------------------------------------------------------------------------------------------------------
// From the input: expressions and values
// ---------------------------------------------------------------------------------------------------------

const std::vector<sql_value_t> &values_() {
    static const std::vector<sql_value_t> values = [] {
        std::vector<sql_value_t> all;
        for (const sql_row_t &row : session_().run(_values).rows) all.push_back(row[0]);
        return all;
    }();
    return values;
}

// The function that a number stands for: that of its name, so that inputs outlive new functions, or of its
// place.
const sql_name_t &function_(const std::vector<sql_name_t> &functions, uint16_t number) {
    for (const sql_name_t &function : functions) {
        unsigned sum = static_cast<unsigned>(function.arity);
        for (const char c : function.name) sum = sum * 31 + static_cast<uint8_t>(c);
        if (sum % 65536 == number) return function;
    }
    return functions[number % functions.size()];
}

struct expression_t {
    std::string text;
    bool is_fixed;
};

expression_t expression_(input_t &input, int depth) {
    const uint8_t choice = depth == _depth_max ? 255 : input.byte();
    if (choice < 128 || depth == 0) return {"a" + std::to_string(choice % _columns), /*is_fixed=*/true};
    const sql_name_t &function = function_(session_().scalars, input.take<uint16_t>());
    expression_t call{function.name + "(", function.is_fixed};
    for (int i = 0; i < function.arity; ++i) {
        const expression_t argument = expression_(input, depth - 1);
        call.text += (i == 0 ? "" : ", ") + argument.text;
        call.is_fixed = call.is_fixed && argument.is_fixed;
    }
    call.text += ")";
    return call;
}

// Bytes behind a type's tag, as many as a value of that type has.
sql_value_t stored_(input_t &input) {
    constexpr struct {
        char tag;
        size_t size;
    } types[] = {{1, 2}, {1, 22}, {5, 8}, {6, 8}, {7, 12}, {21, 17}, {8, 5}, {9, 12}, {15, 12}};
    const auto &type = types[input.byte() % std::size(types)];
    std::string bytes(1, type.tag);
    bytes += input.take(type.size);
    return {SQLITE_BLOB, 0, 0, bytes};
}

// A right value with a byte changed.
sql_value_t changed_(input_t &input) {
    sql_value_t value = values_()[input.byte() % values_().size()];
    const uint8_t place = input.byte(), byte = input.byte();
    if (!value.bytes.empty()) value.bytes[place % value.bytes.size()] = static_cast<char>(byte);
    return value;
}

sql_value_t value_(input_t &input) {
    switch (input.byte() % 8) {
        case 0:
            return {};
        case 1:
            return {SQLITE_INTEGER, input.take<int8_t>()};
        case 2:
            return {SQLITE_INTEGER, input.take<int64_t>()};
        case 3:
            return {SQLITE_FLOAT, 0, input.take<double>()};
        case 4:
            return {SQLITE_TEXT, 0, 0, std::string(input.take(input.byte()))};
        case 5:
            return input.byte() % 4 == 0
                       ? sql_value_t{SQLITE_BLOB, 0, 0, std::string(input.take(input.byte()))}
                       : stored_(input);
        case 6:
            return changed_(input);
        default:
            return values_()[input.byte() % values_().size()];
    }
}

std::vector<sql_row_t> rows_(input_t &input) {
    std::vector<sql_row_t> rows(1 + input.byte() % _rows_max);
    sql_row_t constants(_constants);
    for (sql_value_t &value : constants) value = value_(input);
    for (sql_row_t &row : rows) {
        for (int i = 0; i < _columns - _constants; ++i) row.push_back(value_(input));
        row.insert(row.end(), constants.begin(), constants.end());
    }
    return rows;
}

// ---------------------------------------------------------------------------------------------------------
// Properties
// ---------------------------------------------------------------------------------------------------------

// A statement that is the same for all inputs.
sql_result_t run_kept_(const std::string &sql, const sql_row_t &parameters) {
    static std::map<std::string, sql_statement> kept;
    sql_statement &statement = kept.try_emplace(sql, session_().db(), sql).first->second;
    return session_().run(statement, parameters);
}

void check_value_(const sql_value_t &value, const std::string &sql) {
    if (value.type != SQLITE_BLOB) return;
    const sql_result_t text = run_kept_("SELECT dv_text(?1), dv_typeof(?1)", {value});
    if (text.is_error() || text.rows[0][0].type != SQLITE_TEXT)
        fail("a value", sql, shown(value) + shown(text));
    const auto reader = dv::test::sql_readers.find(text.rows[0][1].bytes);
    if (reader == dv::test::sql_readers.end()) return;
    const sql_result_t again = run_kept_("SELECT " + reader->second + "(?1)", {text.rows[0][0]});
    if (again.is_error() || again.rows[0][0] != value)
        fail("a text that reads back", sql, shown(value) + " " + shown(text) + shown(again));
}

// Each row alone. An error ends the rows.
sql_result_t run_alone_(const expression_t &expression, const std::vector<sql_row_t> &rows) {
    sql_statement statement(session_().db(), "SELECT " + expression.text + _alone);
    sql_result_t all;
    for (const sql_row_t &row : rows) {
        const sql_result_t one = session_().run(statement, row);
        if (one.is_error()) return one;
        check_value_(one.rows[0][0], statement.sql());
        all.rows.push_back(one.rows[0]);
    }
    return all;
}

void require_same_(const sql_result_t &want, const sql_result_t &got, const std::string &sql) {
    const bool are_same = want.is_error() ? want.message == got.message : want == got;
    if (!are_same) fail("the same result", sql, shown(want) + "\nand " + shown(got));
}

void check_rows_(const expression_t &expression, const sql_row_t &constants, const sql_result_t &want) {
    const std::string sql = "SELECT " + expression.text + _over_rows + " ORDER BY id";
    const sql_result_t got = session_().run(sql, constants);
    if (expression.is_fixed) require_same_(want, got, sql);
}

void check_order_(const expression_t &expression, const sql_row_t &constants) {
    const std::string sql = "SELECT " + expression.text + _over_rows + " ORDER BY 1";
    const sql_result_t sorted = session_().run(sql, constants);
    for (size_t i = 1; i < sorted.rows.size(); ++i) {
        const sql_value_t &x = sorted.rows[i - 1][0], &y = sorted.rows[i][0];
        if (x.type != SQLITE_BLOB || y.type != SQLITE_BLOB) continue;
        const sql_result_t order = run_kept_("SELECT dv_cmp(?1, ?2), dv_cmp(?2, ?1)", {x, y});
        if (order.is_error()) continue;  // values of two types, or of one without an order
        const int64_t cmp = order.rows[0][0].integer;
        if (cmp > 0 || order.rows[0][1].integer != -cmp || (x == y && cmp != 0))
            fail("BLOBs in the order of their values", sql, shown(sorted) + shown(order));
    }
}

void check_index_(const expression_t &expression, const sql_result_t &want) {
    if (!expression.is_fixed) return;
    const std::string sql = "CREATE INDEX by_expression ON t(" + expression.text + ", id)";
    const sql_result_t made = session_().run(sql);
    if (made.is_error() != want.is_error())
        fail("an index where there are values", sql, shown(want) + shown(made));
    if (made.is_error()) return;
    const std::string count =
        "SELECT count(*) FROM t INDEXED BY by_expression WHERE " + expression.text + " IS ?1";
    const sql_value_t &value = want.rows[0][0];
    const auto same = std::count(want.rows.begin(), want.rows.end(), want.rows[0]);
    const sql_result_t counted = session_().run(count, {value});
    const sql_result_t checked = run_kept_("PRAGMA integrity_check", {});
    run_kept_("DROP INDEX by_expression", {});
    if (checked.rows[0][0].bytes != "ok") fail("a whole index", sql, shown(checked));
    if (counted.is_error() || counted.rows[0][0].integer != same)
        fail("an index that finds", count, shown(counted));
}

void check_window_(const expression_t &expression, const sql_row_t &constants, input_t &input) {
    const sql_name_t &function = function_(session_().aggregates, input.take<uint16_t>());
    const int before = input.byte() % _rows_max, behind = input.byte() % _rows_max;
    std::string call = function.name + "(";
    for (int i = 0; i < function.arity; ++i) call += (i == 0 ? "" : ", ") + expression.text;
    call += ")";
    const std::string sql = "SELECT " + call + " OVER (ORDER BY id ROWS BETWEEN " + std::to_string(before) +
                            " PRECEDING AND " + std::to_string(behind) + " FOLLOWING)" + _over_rows +
                            " ORDER BY id";
    const sql_result_t windows = session_().run(sql, constants);
    if (windows.is_error() || !expression.is_fixed) return;
    for (size_t i = 0; i < windows.rows.size(); ++i) {
        check_value_(windows.rows[i][0], sql);
        const auto id = static_cast<int>(i) + 1;
        const sql_result_t alone =
            session_().run("SELECT " + call + _over_rows + " WHERE id BETWEEN " +
                               std::to_string(id - before) + " AND " + std::to_string(id + behind),
                           constants);
        if (alone.is_error() || alone.rows[0] != windows.rows[i])
            fail("a window as its rows alone", sql, shown(windows) + "\nand " + shown(alone));
    }
}

void check_table_(const sql_row_t &row, input_t &input) {
    const sql_name_t &table = function_(session_().tables, input.take<uint16_t>());
    std::string sql = "SELECT * FROM " + table.name;
    for (int i = 0; i < table.arity; ++i) sql += (i == 0 ? "(?" : ", ?") + std::to_string(i + 1);
    if (table.arity > 0) sql += ")";
    sql += " LIMIT 1000";  // a series may be endless
    const sql_result_t got = run_kept_(sql, row);
    if (got.rows.empty()) return;
    for (const sql_value_t &value : got.rows[input.byte() % got.rows.size()]) check_value_(value, sql);
}

void fill_table_(const std::vector<sql_row_t> &rows) {
    run_kept_("DELETE FROM t", {});
    for (size_t i = 0; i < rows.size(); ++i) {
        sql_row_t row = rows[i];
        row.push_back({SQLITE_INTEGER, static_cast<int64_t>(i) + 1});
        run_kept_("INSERT INTO t(a0, a1, a2, a3, a4, a5, a6, id) VALUES (?1, ?2, ?3, ?4, ?5, ?6, ?7, ?8)",
                  row);
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    static const dv::test::assertion_watch quiet;
    static const sql_result_t table =
        session_().run("CREATE TABLE t(id INTEGER PRIMARY KEY, a0, a1, a2, a3, a4, a5, a6)");
    input_t input(data, size);
    const uint8_t what = input.byte();
    const expression_t expression = expression_(input, _depth_max);
    const std::vector<sql_row_t> rows = rows_(input);
    const sql_result_t want = run_alone_(expression, rows);
    fill_table_(rows);
    switch (what % 5) {
        case 0:
            check_rows_(expression, rows[0], want);
            break;
        case 1:
            check_order_(expression, rows[0]);
            break;
        case 2:
            check_index_(expression, want);
            break;
        case 3:
            check_window_(expression, rows[0], input);
            break;
        default:
            check_table_(rows[0], input);
    }
    return 0;
}
