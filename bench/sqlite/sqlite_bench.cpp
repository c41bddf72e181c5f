// The SQLite extension over a million rows beside what SQLite has itself: operation/case/library.
//
// A table per form holds the same values: amounts of 2 to 8 digits, a quarter of them negative, as NUMBER,
// REAL, INTEGER of hundredths and text; seconds of 1900 to 2049 as DATE, text and INTEGER, each indexed. They
// are shuffled, from a fixed seed. A case is one statement, prepared once; its per_op is the time of a row of
// the table, for range scans of a row found. What a case computes is checked by a second statement before the
// clock starts; the program ends with 1 when it is wrong.
//
// decimal_sum is a function of the sqlite3 shell, not of the library: where the shell has it, it runs there
// over a copy of the database, and its time is the one that the shell tells.
//
// DV_BENCH_ROWS sets another number of rows.

#include <benchmark/benchmark.h>
#include <sqlite3.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <random>
#include <stdexcept>
#include <string>

#include "gauged.h"

namespace {

bool _any_wrong = false;

long row_count_() {
    const char *rows = std::getenv("DV_BENCH_ROWS");
    const long count = rows != nullptr ? std::atol(rows) : 0;
    return count > 0 ? count : 1'000'000;
}

// ---------------------------------------------------------------------------------------------------------
// The database
// ---------------------------------------------------------------------------------------------------------

class statement_t {
  public:
    statement_t(sqlite3 *db, const std::string &sql) {
        if (sqlite3_prepare_v2(db, sql.c_str(), -1, &statement_, nullptr) != SQLITE_OK)
            throw std::runtime_error(sqlite3_errmsg(db) + (": " + sql));
    }
    ~statement_t() { sqlite3_finalize(statement_); }
    statement_t(const statement_t &) = delete;
    statement_t &operator=(const statement_t &) = delete;

    void bind(int position, int64_t value) { sqlite3_bind_int64(statement_, position, value); }

    // Runs the statement; the integer of its only row, 0 without one.
    int64_t run() {
        const int step = sqlite3_step(statement_);
        const int64_t result = step == SQLITE_ROW ? sqlite3_column_int64(statement_, 0) : 0;
        if (sqlite3_reset(statement_) != SQLITE_OK)
            throw std::runtime_error(sqlite3_errmsg(sqlite3_db_handle(statement_)));
        return result;
    }

  private:
    sqlite3_stmt *statement_ = nullptr;
};

class database_t {
  public:
    database_t() {
        sqlite3_open(":memory:", &db_);
        sqlite3_db_config(db_, SQLITE_DBCONFIG_ENABLE_LOAD_EXTENSION, 1, nullptr);
        if (sqlite3_load_extension(db_, DV_SQLITE_EXTENSION, nullptr, nullptr) != SQLITE_OK)
            throw std::runtime_error(sqlite3_errmsg(db_));
        fill_();
    }
    ~database_t() { sqlite3_close(db_); }
    database_t(const database_t &) = delete;
    database_t &operator=(const database_t &) = delete;

    sqlite3 *handle() { return db_; }
    int64_t run(const std::string &sql) { return statement_t(db_, sql).run(); }

  private:
    void fill_() {
        run("BEGIN");
        draw_();
        run("CREATE TABLE amount_text AS SELECT format('%s%d.%02d', CASE WHEN v < 0 THEN '-' ELSE '' END, "
            "abs(v) / 100, abs(v) % 100) AS v FROM amount_integer");
        run("CREATE TABLE amount_real AS SELECT v / 100.0 AS v FROM amount_integer");
        run("CREATE TABLE amount_number AS SELECT to_number(v) AS v FROM amount_text");
        run("CREATE TABLE time_text AS SELECT datetime(v, 'unixepoch') AS v FROM time_integer");
        run("CREATE TABLE time_date AS SELECT to_date(v) AS v FROM time_text");
        for (const char *form : {"integer", "text", "date"})
            run(std::string("CREATE INDEX by_").append(form) + " ON time_" + form + "(v)");
        run("COMMIT");
    }

    void draw_() {
        constexpr int64_t first_second = -25567 * 86400LL, last_second = 29219 * 86400LL - 1;
        run("CREATE TABLE amount_integer(v INTEGER)");
        run("CREATE TABLE time_integer(v INTEGER)");
        statement_t put_amount(db_, "INSERT INTO amount_integer VALUES (?)"),
            put_time(db_, "INSERT INTO time_integer VALUES (?)");
        std::mt19937_64 random(1);
        const auto pick = [&](int64_t low, int64_t high) {
            return std::uniform_int_distribution<int64_t>(low, high)(random);
        };
        for (long i = row_count_(); i > 0; --i) {
            int64_t hundredths = pick(1, 9);
            for (int64_t digits = pick(1, 7); digits > 0; --digits) hundredths = hundredths * 10 + pick(0, 9);
            put_amount.bind(1, pick(0, 3) == 0 ? -hundredths : hundredths);
            put_amount.run();
            put_time.bind(1, pick(first_second, last_second));
            put_time.run();
        }
    }

    sqlite3 *db_ = nullptr;
};

database_t &database_() {
    static database_t database;
    return database;
}

// ---------------------------------------------------------------------------------------------------------
// Cases
// ---------------------------------------------------------------------------------------------------------

struct case_t {
    const char *name;
    std::string sql;
    std::string check;  // gives 1
};

// What each row of a table becomes, counted, so that SQLite computes it and gives one row.
std::string counted_(const std::string &expression, const std::string &table) {
    return "SELECT count(" + expression + ") FROM " + table;
}

// Do two tables hold, row by row, values of which something is true?
std::string all_(const std::string &condition) {
    return "SELECT count(*) = (SELECT count(*) FROM time_text) FROM time_text t JOIN time_date d "
           "ON d.rowid = t.rowid JOIN time_integer i ON i.rowid = t.rowid WHERE " +
           condition;
}

// A hundredth of the years, in the middle.
constexpr const char *_range[] = {"1974-01-01 00:00:00", "1975-07-02 11:59:59"};
std::string in_range_(const std::string &form, const std::string &read) {
    const auto bound = [&](int i) { return read + "('" + _range[i] + "')"; };
    return "SELECT count(*) FROM time_" + form + " WHERE v BETWEEN " + bound(0) + " AND " + bound(1);
}
std::string same_count_(const std::string &form, const std::string &read) {
    return "SELECT (" + in_range_(form, read) + ") = sum(v BETWEEN unixepoch('" + _range[0] +
           "') AND unixepoch('" + _range[1] + "')) FROM time_integer";
}

const case_t _row_cases[] = {
    {"scan/date/sqlite", counted_("v", "time_date"), "SELECT 1"},
    {"sum/amounts/dvtypes", "SELECT dv_sum(v) FROM amount_number",
     "SELECT dv_text(dv_mul(dv_sum(v), 100)) = (SELECT '' || sum(v) FROM amount_integer) FROM amount_number"},
    {"sum/amounts/sqlite_integer", "SELECT sum(v) FROM amount_integer", "SELECT 1"},
    {"sum/amounts/sqlite_real", "SELECT sum(v) FROM amount_real",
     "SELECT abs(sum(v) - (SELECT sum(v) FROM amount_integer) / 100.0) < 1 FROM amount_real"},
    {"to_char/iso_date/dvtypes", counted_("to_char(v, 'YYYY-MM-DD')", "time_date"),
     all_("to_char(d.v, 'YYYY-MM-DD') = substr(t.v, 1, 10)")},
    {"to_char/iso_date/sqlite_strftime", counted_("strftime('%Y-%m-%d', v)", "time_text"),
     all_("strftime('%Y-%m-%d', t.v) = substr(t.v, 1, 10)")},
    {"to_char/day_first/dvtypes", counted_("to_char(v, 'DD.MM.YYYY HH24:MI')", "time_date"),
     all_("to_char(d.v, 'DD.MM.YYYY HH24:MI') = strftime('%d.%m.%Y %H:%M', t.v)")},
    {"to_char/day_first/sqlite_strftime", counted_("strftime('%d.%m.%Y %H:%M', v)", "time_text"),
     all_("strftime('%d.%m.%Y %H:%M', i.v, 'unixepoch') = strftime('%d.%m.%Y %H:%M', t.v)")},
    {"to_date/iso/dvtypes", counted_("to_date(v, 'YYYY-MM-DD HH24:MI:SS')", "time_text"),
     all_("to_date(t.v, 'YYYY-MM-DD HH24:MI:SS') = d.v AND dv_text(d.v) = t.v")},
    {"to_date/iso/dvtypes_default", counted_("to_date(v)", "time_text"), all_("to_date(t.v) = d.v")},
    {"to_date/iso/sqlite_date", counted_("date(v)", "time_text"), all_("date(t.v) = substr(t.v, 1, 10)")},
    {"to_date/iso/sqlite_julianday", counted_("julianday(v)", "time_text"),
     all_("abs(julianday(t.v) - 2440587.5 - i.v / 86400.0) < 1e-6")},
};

const case_t _range_cases[] = {
    {"range_scan/one_in_a_hundred/dvtypes", in_range_("date", "to_date"), same_count_("date", "to_date")},
    {"range_scan/one_in_a_hundred/sqlite_text", in_range_("text", ""), same_count_("text", "")},
    {"range_scan/one_in_a_hundred/sqlite_integer", in_range_("integer", "unixepoch"),
     same_count_("integer", "unixepoch")},
};

// ---------------------------------------------------------------------------------------------------------
// Runs
// ---------------------------------------------------------------------------------------------------------

void count_rows_(benchmark::State &state, int64_t rows) {
    using benchmark::Counter;
    const auto count = static_cast<double>(rows);
    state.counters["rows_per_s"] = Counter(count, Counter::kIsIterationInvariantRate);
    state.counters["per_op"] = Counter(count, Counter::kIsIterationInvariantRate | Counter::kInvert);
}

void report_wrong_(benchmark::State &state, const std::string &what) {
    _any_wrong = true;
    state.SkipWithError(("wrong answer: " + what).c_str());
}

void run_(benchmark::State &state, const case_t &of, bool finds_rows) {
    try {
        if (database_().run(of.check) != 1) return report_wrong_(state, of.check);
        statement_t statement(database_().handle(), of.sql);
        const int64_t found = statement.run();
        for (auto _ : dv::bench::gauged(state)) benchmark::DoNotOptimize(statement.run());
        count_rows_(state, finds_rows ? found : row_count_());
    } catch (const std::runtime_error &error) {
        report_wrong_(state, error.what());
    }
}

// ---------------------------------------------------------------------------------------------------------
// The shell
// ---------------------------------------------------------------------------------------------------------

// What a shell prints for a statement and, in seconds, the processor time that it tells.
struct shell_answer_t {
    std::string text;
    double seconds = 0;
};
shell_answer_t ask_shell_(const std::string &database, const std::string &sql) {
    const std::string command = "sqlite3 '" + database + "' 2>&1 <<'END'\n.timer on\n" + sql + ";\nEND\n";
    FILE *pipe = popen(command.c_str(), "r");
    shell_answer_t answer;
    char line[256];
    double real = 0, user = 0, system = 0;
    while (pipe != nullptr && fgets(line, sizeof line, pipe) != nullptr) {
        if (sscanf(line, "Run Time: real %lf user %lf sys %lf", &real, &user, &system) != 3)
            answer.text += line;
    }
    if (pipe != nullptr) pclose(pipe);
    answer.seconds = user + system;
    return answer;
}

constexpr const char *_decimal_sum = "SELECT replace(decimal_sum(v), '.', '') FROM amount_text";

void run_in_shell_(benchmark::State &state) {
    try {
        const std::string file = "/tmp/dv_sqlite_bench_" + std::to_string(getpid()) + ".db";
        database_().run("VACUUM INTO '" + file + "'");
        const std::string want = std::to_string(database_().run("SELECT sum(v) FROM amount_integer")) + '\n';
        if (const auto got = ask_shell_(file, _decimal_sum).text; got != want) report_wrong_(state, got);
        for (auto _ : dv::bench::gauged(state)) {
            state.SetIterationTime(ask_shell_(file, _decimal_sum).seconds);
        }
        unlink(file.c_str());
        count_rows_(state, row_count_());
    } catch (const std::runtime_error &error) {
        report_wrong_(state, error.what());
    }
}

}  // namespace

int main(int argc, char **argv) {
    if (ask_shell_(":memory:", "SELECT decimal_sum('1')").text == "1\n")
        benchmark::RegisterBenchmark("sum/amounts/shell_decimal_sum", run_in_shell_)
            ->UseManualTime()
            ->Iterations(3);
    for (const case_t &c : _row_cases)
        benchmark::RegisterBenchmark(c.name, [&](auto &state) { run_(state, c, /*finds_rows=*/false); });
    for (const case_t &c : _range_cases)
        benchmark::RegisterBenchmark(c.name, [&](auto &state) { run_(state, c, /*finds_rows=*/true); });
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return _any_wrong ? 1 : 0;
}
