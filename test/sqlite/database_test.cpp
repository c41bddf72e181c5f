// Whole databases: those of earlier versions, and large ones.

#include "number_support.h"
#include "project_file.h"
#include "sql_readers.h"
#include "sqlite_session.h"

using namespace dv::test;

// What an earlier version stored (scripts/type-database) is the same values today.
TEST(SqlDatabase, OfAnEarlierVersionIsRead) {
    sqlite_session session(project_file("test/sqlite/types_1.db").c_str());
    ASSERT_EQ(session.load(), SQLITE_OK);
    EXPECT_EQ(session.value("PRAGMA integrity_check"), "ok");  // the index by text, too
    const auto rows =
        session.rows("SELECT t, shown, d, dump(v), dv_typeof(v), quote(v) FROM value ORDER BY v");
    EXPECT_EQ(rows.size(), 24u);
    for (const row_t &row : rows) {
        EXPECT_EQ(row[0], row[1]);
        EXPECT_EQ(row[2], row[3]);
        EXPECT_EQ(session.value("SELECT quote(" + sql_readers.at(row[4]) + "('" + row[0] + "'))"), row[5])
            << row[0];
    }
}

// The index by value and the index by a function agree with the table: 20,000 rows, and 50 times as many
// where the rounds of random tests are raised by that factor.
TEST(SqlDatabase, OfManyValuesIsWhole) {
    sqlite_session session;
    session.rows("CREATE TABLE t(id INTEGER PRIMARY KEY, v UNIQUE)");
    session.rows("CREATE INDEX by_text ON t(dv_text(v))");
    session.rows("WITH RECURSIVE r(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM r LIMIT " +
                 std::to_string(scaled(20'000)) + R"()
        INSERT INTO t SELECT i, CASE i % 8
            WHEN 0 THEN dv_div(i, 7919) WHEN 1 THEN dv_neg(dv_power(1.0001, i))
            WHEN 2 THEN dv_add_days(dv_date(1, 1, 1), dv_mul(i, 2.71))
            WHEN 3 THEN dv_time(i / 3600 % 24, i / 60 % 60, i % 60, i)
            WHEN 4 THEN dv_add(dv_timestamp(1, 1, 1, 0, 0, 0), numtodsinterval(dv_mul(i, 62831.853), 'SECOND'))
            WHEN 5 THEN at_time_zone(from_tz(dv_timestamp(1970 + i % 80, 1, 1 + i % 28, 0, 0, i % 60, i), '+00:00'), 'Asia/Seoul')
            WHEN 6 THEN numtodsinterval(dv_mul(i - 10000, 86399.000000001), 'SECOND') ELSE dv_rowid(i, i % 65536, 7, 8) END FROM r)");
    EXPECT_EQ(session.value("PRAGMA integrity_check"), "ok");
    // Numbers by value; the other kinds behind them by their tags.
    const std::string next = "SELECT v, lead(v) OVER (ORDER BY v) AS w FROM t";
    EXPECT_EQ(session.value(
                  "SELECT count(*) FROM (" + next +
                  ") WHERE dv_typeof(v) = dv_typeof(w) AND dv_typeof(v) <> 'ROWID' AND dv_cmp(v, w) >= 0"),
              "0");
}
