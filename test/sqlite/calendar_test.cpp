// Fields of the calendar, epochs, series and sums of intervals against SQLite's own dates and against each
// other.

#include "number_support.h"
#include "sqlite_session.h"

using namespace dv::test;

namespace {

std::string count_(sqlite_session &session, const std::string &rows, const std::string &where) {
    return session.value("SELECT count(*) FROM (" + rows + ") WHERE NOT (" + where + ")");
}

// SQLite has the week by the Thursday in it. Every day of some years, every 97th of all that SQLite knows and
// the calendar is Gregorian in.
TEST(SqlCalendar, FieldsAndEpochsAreThoseOfSqlitesDates) {
    sqlite_session session;
    for (const char *series : {"dv_date(2000, 1, 1), dv_date(2029, 12, 31), 1",
                               "dv_date(1600, 1, 1, 13, 5, 7), dv_date(9999, 12, 28), 97"}) {
        const std::string rows =
            "SELECT d, iso, date(iso, '-3 days', 'weekday 4') AS thursday FROM (SELECT value AS "
            "d, dv_text(value) AS iso FROM dv_series(" +
            std::string(series) + "))";
        for (const char *agreement : {"dv_extract('DOW', d) = 0 + strftime('%w', iso)",
                                      "dv_extract('DOY', d) = 0 + strftime('%j', iso)",
                                      "dv_extract('QUARTER', d) = (strftime('%m', iso) + 2) / 3",
                                      "dv_extract('WEEK', d) = (strftime('%j', thursday) + 6) / 7",
                                      "dv_extract('ISOYEAR', d) = 0 + strftime('%Y', thursday)",
                                      "dv_extract('EPOCH', d) = to_number(strftime('%s', iso))",
                                      "sys_extract_utc(dv_from_epoch(dv_epoch(d))) = to_timestamp(d)"})
            EXPECT_EQ(count_(session, rows, agreement), "0") << series << " " << agreement;
    }
    EXPECT_EQ(session.value("SELECT count(*) FROM dv_series(dv_date(2000, 1, 1), dv_date(2029, 12, 31), 1)"),
              "10958");
}

// And those that to_char writes, in the years BC and around October 1582, too.
TEST(SqlCalendar, FieldsAreThoseOfModels) {
    sqlite_session session;
    const std::string rows =
        "SELECT value AS d FROM dv_series(dv_date(-4713, 1, 1), dv_date(-1, 12, 31), to_yminterval('0-7')) "
        "UNION ALL SELECT value FROM dv_series(dv_date(1, 1, 1), dv_date(1700, 1, 1), 50) "
        "UNION ALL SELECT value FROM dv_series(dv_date(1582, 1, 1), dv_date(1584, 1, 1), 1)";
    EXPECT_EQ(count_(session, rows,
                     "dv_extract('WEEK', d) || '-' || dv_extract('DOY', d) || '-' || (dv_extract('DOW', d) + "
                     "1) || '-' "
                     "|| dv_extract('QUARTER', d) = to_char(d, 'FMIW-DDD-D-Q')"),
              "0");
    EXPECT_EQ(count_(session, rows,
                     "dv_extract('YEAR', d) < 2 OR dv_extract('ISOYEAR', d) = 0 + to_char(d, 'IYYY')"),
              "0");
}

// From, to, step, and what each value is: by its number i, or by the one before, v.
struct series_case {
    const char *first, *last, *step, *next;
    bool is_down;
};
constexpr series_case _series[] = {
    {"-1", "20", "7", "dv_add(-1, dv_mul(i + 1, 7))", false},
    {"-1", "20", "0.3", "dv_add(-1, dv_mul(i + 1, 0.3))", false},
    {"2", "1.5", "-0.07", "dv_add(2, dv_mul(i + 1, -0.07))", true},
    {"1", "2", "1000", "dv_add(v, 1000)", false},
    {"3", "2", "1", "dv_add(v, 1)", false},
    {"0", "1", "to_number('.33333333333333333333333333333333333333')",
     "dv_mul(i + 1, to_number('.33333333333333333333333333333333333333'))", false},
    {"dv_date(2024, 2, 26)", "dv_date(2024, 3, 4)", "2", "dv_add_days(v, 2)", false},
    {"dv_date(2024, 2, 26)", "dv_date(2024, 3, 4)", "0.25", "dv_add_days(v, 0.25)", false},
    {"dv_date(2024, 3, 4)", "dv_date(2024, 2, 26, 1, 0, 0)", "to_dsinterval('-3 1:0:0')",
     "dv_add(v, to_dsinterval('-3 1:0:0'))", true},
    {"dv_timestamp(2024, 2, 26, 1, 0, 0)", "dv_timestamp(2024, 3, 4, 1, 0, 0)",
     "to_dsinterval('0 7:30:0.25')", "dv_add(v, to_dsinterval('0 7:30:0.25'))", false},
    {"to_timestamp_tz('2024-03-09 12:00 America/New_York')",
     "to_timestamp_tz('2024-03-11 12:00 America/New_York')", "to_dsinterval('0 8:0:0')",
     "dv_add(v, to_dsinterval('0 8:0:0'))", false},
    {"dv_date(2023, 10, 31)", "dv_date(2026, 10, 30)", "to_yminterval('0-1')",
     "add_months(dv_date(2023, 10, 31), i + 1)", false},
    {"dv_date(2026, 10, 30)", "dv_date(2023, 10, 31)", "to_yminterval('-1-1')",
     "add_months(dv_date(2026, 10, 30), (i + 1) * -13)", true},
    {"dv_timestamp(2024, 1, 31, 1, 2, 3, 4)", "dv_timestamp(2024, 6, 30, 1, 2, 3, 4)", "to_yminterval('0-1')",
     "add_months(dv_timestamp(2024, 1, 31, 1, 2, 3, 4), i + 1)", false},
    {"to_timestamp_tz('2024-01-31 09:00 Europe/Berlin')", "to_timestamp_tz('2024-06-30 07:00 +00:00')",
     "to_yminterval('0-1')", "add_months(to_timestamp_tz('2024-01-31 09:00 Europe/Berlin'), i + 1)", false},
};

std::string joined_(std::initializer_list<std::string_view> pieces) {
    std::string text;
    for (const std::string_view piece : pieces) text += piece;
    return text;
}

TEST(SqlCalendar, SeriesTakeEveryStep) {
    sqlite_session session;
    for (const auto &[first, last, step, next, is_down] : _series) {
        const std::string values =
            joined_({"SELECT coalesce(group_concat(dv_text(value)), '') FROM dv_series(", first, ", ", last,
                     ", ", step, ")"});
        const std::string within = joined_({", ", last, is_down ? ") >= 0" : ") <= 0"});
        const std::string stepped =
            joined_({"WITH RECURSIVE r(i, v) AS (SELECT 0, ", first, " WHERE dv_cmp(", first, within,
                     " UNION ALL SELECT i + 1, ", next, " FROM r WHERE dv_cmp(", next, within,
                     ") SELECT coalesce(group_concat(dv_text(v)), '') FROM r"});
        EXPECT_EQ(session.value(values), session.value(stepped)) << values;
    }
}

// The sum of the seconds is the seconds of the sum; of the months likewise.
TEST(SqlCalendar, IntervalsSumExactly) {
    sqlite_session session;
    session.rows("CREATE TABLE itv(ds, ym)");
    session.rows(
        "WITH RECURSIVE r(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM r LIMIT " +
        std::to_string(scaled(2'000)) +
        ") INSERT INTO itv SELECT numtodsinterval(dv_mul(i * i % 7919 - 4000, 86399.000000001), 'SECOND'), "
        "numtoyminterval(i * i % 7919 - 4000, 'MONTH') FROM r");
    EXPECT_EQ(session.value("SELECT dv_epoch(dv_sum(ds)) = dv_sum(dv_epoch(ds)) AND dv_epoch(dv_avg(ds)) = "
                            "dv_trunc(dv_avg(dv_epoch(ds)), 9) FROM itv"),
              "1");
    const std::string months = "dv_extract('YEAR', X) * 12 + dv_extract('MONTH', X)";
    const auto of = [&](const std::string &x) {
        std::string text = months;
        for (size_t at; (at = text.find('X')) != text.npos;) text.replace(at, 1, x);
        return text;
    };
    EXPECT_EQ(session.value("SELECT " + of("dv_sum(ym)") + " = sum(" + of("ym") + ") AND " +
                            of("dv_avg(ym)") + " = sum(" + of("ym") + ") / count(*) FROM itv"),
              "1");
}

}  // namespace
