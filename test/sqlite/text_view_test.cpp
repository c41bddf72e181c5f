// Text views: a script of statements, and what holds for any values.

#include <random>

#include "failing_memory.h"
#include "manual.h"
#include "number_support.h"
#include "sqlite_session.h"

using namespace dv::test;

TEST(SqlTextView, ShowsAndTakesTextWhateverTheTable) {
    sqlite_session session;
    session.rows("PRAGMA trusted_schema = OFF");
    sqlite3_db_config(session.db(), SQLITE_DBCONFIG_DEFENSIVE, 1, nullptr);
    for (const auto &[sql, result, has_result] : examples_of("test/sqlite/text_view.sql")) {
        const std::string got = session.value(sql);
        EXPECT_TRUE(has_result ? got == result : got == "no row") << sql << "\n" << got << "\n" << result;
    }
}

// What a view shows of values of all types, written into another table through its view, gives the same
// bytes.
TEST(SqlTextView, TextsBringValuesOver) {
    sqlite_session session;
    for (const char *name : {"here", "there"}) {
        session.rows(
            std::string("CREATE TABLE ") + name +
            "(n NUMBER, d DATE, t TIME, ts TIMESTAMP, tz \"TIMESTAMP WITH TIME ZONE\", ym \"INTERVAL YEAR TO "
            "MONTH\", ds \"INTERVAL DAY TO SECOND\", r ROWID, x BLOB)");
        session.rows(std::string("SELECT dv_create_text_view('") + name + "')");
    }
    session.rows(
        "WITH RECURSIVE r(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM r LIMIT 200) INSERT INTO here SELECT "
        "dv_div(i, 7919), dv_add_days(dv_date(-4, 1, 1), i * 7000), dv_time(i % 24, i % 60, 7, i), "
        "dv_add(dv_timestamp(1, 1, 1, 0, 0, 0), numtodsinterval(dv_mul(i, 62831.853), 'SECOND')), "
        "at_time_zone(dv_from_epoch(i * 10000000), (SELECT name FROM dv_zones WHERE number = i * 2)), "
        "numtoyminterval(i - 100, 'MONTH'), numtodsinterval(dv_mul(i - 100, 86399.000000001), 'SECOND'), "
        "dv_rowid(i, i, i, i), randomblob(8) FROM r");
    session.rows("INSERT INTO there_text SELECT * FROM here_text");
    EXPECT_EQ(session.value("SELECT count(*) FROM (SELECT * FROM here INTERSECT SELECT * FROM there)"),
              "200");
}

// Changes through a view do to its table what they do to a table of the texts, equal rows among them.
TEST(SqlTextView, ChangesAsManyRowsAsItShows) {
    std::mt19937_64 random(3);
    for (const char *key : {"", ", id INTEGER PRIMARY KEY"}) {
        sqlite_session session;
        session.rows(std::string("CREATE TABLE t(a NUMBER, b TIMESTAMP(0)") + key + ")");
        session.rows(std::string("CREATE TABLE twin(a TEXT, b TEXT") + key + ")");
        session.rows("SELECT dv_create_text_view('t')");
        const auto number = [&] { return "'" + std::to_string(random() % 3) + "'"; };
        const auto time = [&] {
            return "'2024-01-01 00:00:0" + std::to_string(random() % 3) + ".000000000'";
        };
        for (int round = 0; round < scaled(300); ++round) {
            std::string change;
            switch (random() % 5) {
                case 0:
                    change = "UPDATE X SET a = a + 1 WHERE b = " + time();
                    break;
                case 1:
                    change = "UPDATE X SET b = " + time() + " WHERE a >= " + number();
                    break;
                case 2:
                    change = "DELETE FROM X WHERE a > '2' OR (a = " + number() + " AND b = " + time() + ")";
                    break;
                default:
                    change = "INSERT INTO X(a, b) VALUES (" + number() + ", " + time() + "), (NULL, " +
                             time() + ")";
            }
            std::string of_twin = change;
            change.replace(change.find('X'), 1, "t_text");
            of_twin.replace(of_twin.find('X'), 1, "twin");
            session.rows(change);
            session.rows(of_twin);
            ASSERT_EQ(session.rows("SELECT a, b FROM t_text ORDER BY 1, 2"),
                      session.rows("SELECT CAST(a AS TEXT), b FROM twin ORDER BY 1, 2"))
                << round << " " << change;
        }
    }
}

// Whichever allocation fails, all of a view is there or nothing.
TEST(SqlTextView, IsMadeWholeOrNotAtAll) {
    failing_memory memory;
    bool is_done = false;
    for (long n = 0; !is_done; ++n) {
        sqlite_session session;
        session.rows("CREATE TABLE t(a NUMBER(3), b DATE)");
        memory.fail_at(n, /*lasts=*/false);
        const std::string got = session.value("SELECT dv_create_text_view('t', '{\"b\": \"YYYY-MM-DD\"}')");
        is_done = !memory.has_failed();
        memory.fail_at(-1, /*lasts=*/false);
        EXPECT_TRUE(got == "t_text" || got == "error: out of memory") << n << got;
        EXPECT_EQ(session.value("SELECT count(*) FROM sqlite_schema"), got == "t_text" ? "5" : "1") << n;
        EXPECT_EQ(sqlite3_get_autocommit(session.db()), 1) << n;
    }
}

// Whatever an authorizer refuses, or has do nothing: all of a view is there or nothing, and the connection is
// as it was.
TEST(SqlTextView, IsMadeWholeOrNotAtAllWhateverAnAuthorizerSays) {
    struct rule {
        int action, answer, asked;
    };
    constexpr int last_action = SQLITE_RECURSIVE;
    int whole = 0, refused = 0;
    for (const int answer : {SQLITE_DENY, SQLITE_IGNORE}) {
        for (int action = 1; action <= last_action; ++action) {
            if (answer == SQLITE_IGNORE && action == SQLITE_UPDATE) continue;  // SQLite's schema breaks
            sqlite_session session;
            session.rows("CREATE TABLE t(a NUMBER(3), b DATE)");
            rule of = {action, answer, 0};
            sqlite3_set_authorizer(
                session.db(),
                [](void *arg, int asked, const char *, const char *, const char *, const char *) {
                    auto &what = *static_cast<rule *>(arg);
                    if (asked != what.action) return SQLITE_OK;
                    ++what.asked;
                    return what.answer;
                },
                &of);
            const std::string got =
                session.value("SELECT dv_create_text_view('t', '{\"b\": \"YYYY-MM-DD\"}')");
            sqlite3_set_authorizer(session.db(), nullptr, nullptr);
            (got == "t_text" ? whole : refused) += of.asked > 0 ? 1 : 0;
            EXPECT_EQ(session.value("SELECT count(*) FROM sqlite_schema"), got == "t_text" ? "5" : "1")
                << action << " " << answer << " " << got;
            EXPECT_EQ(sqlite3_get_autocommit(session.db()), 1) << action << " " << answer;
            EXPECT_EQ(session.value("SELECT dv_create_text_view('t')"), "t_text") << action << " " << answer;
        }
    }
    EXPECT_GT(whole, 0);
    EXPECT_GT(refused, 10);
}
