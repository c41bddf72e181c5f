// The scalar functions of NUMBER in SQL: NULL, kinds of arguments, errors; models, and zones, that are kept.

#include "sqlite_session.h"

using namespace dv::test;

// A result, or how an error message ends. Table r has the rows i = 1 to 200001.
constexpr const char *_edges[][2] = {
    {"dv_round(1, NULL)", "NULL"},
    {"dv_cmp(NULL, x'')", "NULL"},
    {"dv_cast_number(1, 99, NULL)", "NULL"},
    {"dv_text(dv_cast_number(0, 38, 127))", "0"},
    {"dv_text(dv_cast_number(0, 38, -127))", "0"},
    {"dv_text(dv_round(to_number('-9.99E125'), -127))", "0"},
    {"dv_text(dv_round(9, -126))", "0"},
    {"dv_round(to_number('-6E125'), -126)", "(dv-5068)"},
    {"to_number('')", "(dv-5074)"},
    {"to_number('1' || char(0) || '2')", "argument 1 has a NUL inside its text"},
    {"to_number(-9e999)", "argument 1 is an infinite REAL where NUMBER is finite"},
    {"dv_cast_number(1234.5, 5, 2)", "(dv-5111)"},
    {"dv_cast_number(1, 39, 2)", "error: dv_cast_number: the precision 39 does not lie in 1..38"},
    {"dv_round(1.5, 1.0)", "error: dv_round: argument 2 is REAL where INTEGER is expected"},
    {"dv_neg(x'')", "holds no value: it is empty"},
    {"dv_neg(x'01fff0')", "holds no value: a NUMBER digit is out of range"},  // the marker of an infinity
    {"dv_neg(x'01c1948181818181818181818181818181818181818a')", "a NUMBER has at most 38 digits"},
    {"dv_sum(9e999)", "dv_sum: argument 1 is an infinite REAL where NUMBER is finite"},
    {"dv_text(dv_avg(to_number('-9.9999999999999999E125'))) FROM r", "-9.9999999999999999E+125"},
    {"dv_text(dv_sum(CASE i % 2 WHEN 0 THEN 1e100 ELSE -1e100 END)) FROM r", "-1E+100"},
    {"dv_text(dv_sum(to_number(CASE i % 2 WHEN 0 THEN '-9E125' ELSE '9E125' END))) FROM r", "9E+125"},
    {"dv_sum(to_number('9E125')) FROM r", "(dv-5068)"},
    {"dv_sum(to_number(column1)) FROM (VALUES ('1.5E-130'), ('-1E-130'))", "(dv-5069)"},
};

TEST(SqlNumberFunctions, EdgesGiveAValueOrSayWhatIsWrong) {
    sqlite_session session;
    const std::string rows = "WITH RECURSIVE r(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM r LIMIT 200001) ";
    for (const auto &[call, want] : _edges) {
        const std::string got = session.value(rows + "SELECT " + call);
        EXPECT_TRUE(got == want || (got.starts_with("error: ") && got.ends_with(want)))
            << call << " gives " << got;
    }
}

// By a constant and by a column: two sites of a function, with zones beside the models.
TEST(SqlKept, ServesTheTextThatItWasMadeOf) {
    sqlite_session session;
    const std::vector<row_t> got = session.rows(
        "SELECT to_char(12.5, 'FM0000'), to_char(12.5, column1), dv_text(to_number('1,2', column1, ',.')), "
        "dv_text(at_time_zone(to_timestamp_tz('2024-07-01T00:00:00Z'), column2)) "
        "FROM (VALUES ('FM99.00', 'Asia/Seoul'), (NULL, NULL), ('FM99.00', '-03:30'), ('S9.9', 'UTC'))");
    const std::vector<row_t> want = {
        {"0013", "12.50", "1.2", "2024-07-01 09:00:00.000000000 Asia/Seoul KST"},
        {"0013", "NULL", "NULL", "NULL"},
        {"0013", "12.50", "1.2", "2024-06-30 20:30:00.000000000 -03:30"},
        {"0013", "####", "1.2", "2024-07-01 00:00:00.000000000 UTC UTC"},
    };
    EXPECT_EQ(got, want);
}

TEST(SqlKept, OfAParameterIsMadeAnewWhenTheStatementIsExecutedAgain) {
    sqlite_session session;
    sqlite3_stmt *statement = nullptr;
    ASSERT_EQ(sqlite3_prepare_v2(session.db(), "SELECT to_char(12.5, ?1)", -1, &statement, nullptr),
              SQLITE_OK);
    constexpr const char *calls[][2] = {
        {"FM99.0", "12.5"}, {"S99", "+13"}, {"9Z", nullptr}, {"FM99.0", "12.5"}};
    for (const auto &[model, want] : calls) {
        sqlite3_bind_text(statement, 1, model, -1, SQLITE_STATIC);
        EXPECT_EQ(sqlite3_step(statement), want != nullptr ? SQLITE_ROW : SQLITE_ERROR) << model;
        const auto *text = reinterpret_cast<const char *>(sqlite3_column_text(statement, 0));
        EXPECT_STREQ(text, want) << model;
        sqlite3_reset(statement);
    }
    sqlite3_finalize(statement);
}
