// dv_json against SQLite's own reader of JSON.

#include "number_support.h"
#include "sqlite_session.h"

using namespace dv::test;

namespace {

// A value of each kind and form, what SQLite finds in its JSON, and what reads it back ("" where nothing
// does).
struct json_case {
    const char *value, *type, *reader;
};
constexpr json_case _cases[] = {
    {"NULL", "null", ""},
    {"0", "integer", ""},
    {"-9223372036854775807 - 1", "integer", ""},
    {"0.1", "real", ""},
    {"-2.0", "real", ""},
    {"1e300", "real", ""},
    {"5e-324", "real", ""},
    {"1.0 / 3", "real", ""},
    {"''", "text", ""},
    {"'a\"b\\c' || char(10, 9, 1, 31, 127, 233, 128512)", "text", ""},
    {"printf('%5000s', '\"')", "text", ""},
    {"to_number('.5')", "real", ""},
    {"to_number('-.05')", "real", ""},
    {"to_number('1E+100')", "real", ""},
    {"to_number('-1.5E-100')", "real", ""},
    {"to_number('12345678901234567890')", "integer", ""},
    {"to_number(7)", "integer", ""},
    {"dv_date(-44, 3, 15, 11, 30, 0)", "text", "to_date"},
    {"dv_time(13, 5, 0)", "text", "to_time"},
    {"dv_time(13, 5, 0, 120000000)", "text", "to_time"},
    {"dv_timestamp(2024, 2, 29, 10, 20, 30)", "text", "to_timestamp"},
    {"dv_timestamp(2024, 2, 29, 10, 20, 30, 1)", "text", "to_timestamp"},
    {"to_timestamp_tz('2024-02-29 13:05:00.5 -05:30')", "text", "to_timestamp_tz"},
    {"to_timestamp_tz('2024-02-29 13:05 +00:00')", "text", "to_timestamp_tz"},
    {"to_yminterval('-1-6')", "text", "to_yminterval"},
    {"to_dsinterval('-1 2:03:04.5')", "text", "to_dsinterval"},
    {"dv_rowid(4294967295, 1, 2, 3)", "text", "dv_rowid"},
};

TEST(SqlJson, IsAScalarThatReadsBack) {
    sqlite_session session;
    for (const auto &[value, type, reader] : _cases) {
        const std::string json = std::string("dv_json(") + value + ")";
        EXPECT_EQ(session.value("SELECT json_valid(" + json + ")"), "1") << value;
        EXPECT_EQ(session.value("SELECT json_type(" + json + ")"), type) << value;
        // Within JSON it is no string again.
        std::string nested = "SELECT json_object('v', ";
        nested.append(json).append(") = '{\"v\":' || ").append(json).append(" || '}'");
        EXPECT_EQ(session.value(nested), "1") << value;
        const std::string read = "json_extract(" + json + ", '$')";
        if (*reader != '\0') {
            EXPECT_EQ(session.value("SELECT " + std::string(reader) + "(" + read + ") = " + value), "1")
                << value;
        } else if (std::string(value).starts_with("to_number")) {
            // SQLite's two readers of REALs may differ in the last bit.
            EXPECT_EQ(
                session.value("SELECT abs(" + read + " / CAST(dv_text(" + value + ") AS REAL) - 1) < 1e-14"),
                "1")
                << value;
        } else {
            EXPECT_EQ(session.value("SELECT " + read + " IS " + value), "1") << value;
        }
    }
}

// 17:00 of the 28th is 1743181200 seconds after 1970. Neither text nor JSON may lose the sign of minutes
// alone.
TEST(SqlJson, KeepsEveryOffset) {
    sqlite_session session;
    for (int offset = -(12 * 60 + 59); offset <= 14 * 60; ++offset) {
        if (offset > 0 && offset < 60) continue;  // no value holds it
        char zone[16];
        snprintf(zone, sizeof zone, "%c%02d:%02d", offset < 0 ? '-' : '+', std::abs(offset) / 60,
                 std::abs(offset) % 60);
        const std::string value = "to_timestamp_tz('2025-03-28T17:00:00" + std::string(zone) + "')";
        const auto read = [&](const std::string &text) {
            std::string sql = "SELECT dv_text(dv_epoch(to_timestamp_tz(";
            sql.append(text).append("))) FROM (SELECT ").append(value).append(" AS v)");
            return session.value(sql);
        };
        const std::string instant = std::to_string(1'743'181'200LL - 60 * offset);
        EXPECT_EQ(read("v"), instant) << zone;
        EXPECT_EQ(read("dv_text(v)"), instant) << zone;
        EXPECT_EQ(read("dv_json(v) ->> '$'"), instant) << zone;
        EXPECT_EQ(session.value("SELECT tz_offset('" + std::string(zone) + "')"), zone);
    }
}

// All of its digits stand in the JSON: what to_number reads is the number.
TEST(SqlJson, KeepsEveryDigitOfANumber) {
    sqlite_session session;
    session.rows("CREATE TABLE n AS WITH RECURSIVE r(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM r LIMIT " +
                 std::to_string(scaled(2'000)) +
                 ") SELECT dv_mul(dv_div(i - 50, 7919), dv_power(10, i % 230 - 115)) AS v FROM r");
    EXPECT_EQ(
        session.value("SELECT count(*) FROM n WHERE to_number(dv_json(v)) = v AND json_valid(dv_json(v)) AND "
                      "dv_json(v) NOT GLOB '.*' AND dv_json(v) NOT GLOB '-.*'"),
        session.value("SELECT count(*) FROM n"));
}

}  // namespace
