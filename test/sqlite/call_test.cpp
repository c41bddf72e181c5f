// Calls of SQL functions beside those of the manual, what is registered, and why a BLOB is refused.

#include "sqlite_session.h"

using namespace dv::test;

// What gives another text when operands are swapped, an argument is missed, or a function takes its
// neighbour's place.
constexpr const char *_calls[][2] = {
    {"dv_text(dv_sub(dv_timestamp(2001, 3, 30, 1, 2, 3, 4), to_yminterval('0-2')))",
     "2001-01-30 01:02:03.000000004"},
    {"dv_text(dv_sub(dv_date(2024, 3, 30), to_yminterval('0-2')))", "2024-01-30 00:00:00"},
    {"dv_text(dv_add(to_dsinterval('1 0:0:0'), to_timestamp_tz('2024-02-29 13:05:00 +09:00')))",
     "2024-03-01 13:05:00.000000000 +09:00"},
    {"dv_text(dv_add(to_yminterval('1-0'), to_timestamp_tz('2024-02-28 13:05:00 +09:00')))",
     "2025-02-28 13:05:00.000000000 +09:00"},
    {"dv_text(dv_sub(to_timestamp_tz('2024-02-28 13:05:00 +09:00'), to_yminterval('1-1')))",
     "2023-01-28 13:05:00.000000000 +09:00"},
    {"dv_text(dv_div(to_yminterval('-3-1'), 2.5))", "-01-02"},
    {"dv_text(dv_round(dv_date(2024, 2, 29, 12, 0, 0))) || dv_text(dv_round(dv_date(2024, 7, 1), 'YYYY'))",
     "2024-03-01 00:00:002025-01-01 00:00:00"},
    {"dv_text(dv_extract('SECOND', to_timestamp_tz('2024-01-02 12:13:14.25 +01:00')))", "14.25"},
    {"dv_extract('DAY', to_timestamp_tz('2024-01-02 22:13:14 -05:00'))", "2"},
    {"dv_extract('TIMEZONE_HOUR', to_timestamp_tz('2024-01-02 22:13:14 -05:30'))", "-5"},
    {"dv_extract('MONTH', d) || dv_extract('HOUR', d) FROM (SELECT dv_timestamp(2024, 5, 6, 7, 8, 9) AS d)",
     "57"},
    {"dv_extract('MINUTE', d) || dv_extract('SECOND', d) FROM (SELECT dv_date(2024, 5, 6, 7, 8, 9) AS d)",
     "89"},
    // One call, whose model is compiled for one type after the other.
    {"group_concat(to_char(column1, 'HH24:MI:SS'), ' ') FROM (VALUES (dv_date(2024, 1, 2, 3, 4, 5)), "
     "(dv_time(6, 7, 8)),"
     " (dv_timestamp(2024, 1, 2, 9, 10, 11)), (to_timestamp_tz('2024-01-02 12:13:14 +01:00')), (dv_time(23, "
     "59, 0)))",
     "03:04:05 06:07:08 09:10:11 12:13:14 23:59:00"},
    // Longer than predicted.
    {"to_char(dv_date(1777, 1, 1), replace(hex(zeroblob(20)), '00', 'YYYYSP;')) ="
     " replace(hex(zeroblob(20)), '00', 'ONE THOUSAND SEVEN HUNDRED SEVENTY-SEVEN;')",
     "1"},
    {"group_concat(dv_typeof(column1)) FROM (VALUES (NULL), (1), (1.5), ('x'), (x'00'), (to_number(1)), "
     "(dv_date(1, 1, 1)),"
     " (dv_time(1, 1, 1)), (to_dsinterval('1 0:0:0')), (dv_rowid(1, 2, 3, 4)))",
     "NULL,INTEGER,REAL,TEXT,BLOB,NUMBER,DATE,TIME,INTERVAL DAY TO SECOND,ROWID"},
    {"code || enumerator || name || size || info || categories FROM dv_types WHERE code = 3",
     "3DV_TYPE_VARCHARVARCHAR20386character varying limited"},
    {"group_concat(code) FROM dv_types WHERE categories LIKE '%datetime%'", "5,6,7,21,22"},
};

TEST(SqlCall, GivesWhatItIsNamedFor) {
    sqlite_session session;
    for (const auto &[call, want] : _calls)
        EXPECT_EQ(session.value(std::string("SELECT ") + call), want) << call;
}

TEST(SqlCall, FunctionsAreInnocuousAndButForTheClocksDeterministic) {
    sqlite_session session(":memory:");
    session.rows("CREATE TABLE own AS SELECT name FROM pragma_function_list");
    ASSERT_EQ(session.load(), SQLITE_OK);
    const auto without = [&](const std::string &flag) {
        return session.value(
            "SELECT group_concat(f) FROM (SELECT DISTINCT name || narg AS f FROM pragma_function_list "
            "WHERE name NOT IN (SELECT name FROM own) AND NOT flags & " +
            flag + " ORDER BY f)");
    };
    EXPECT_EQ(without("0x200000"), "NULL");                            // SQLITE_INNOCUOUS
    EXPECT_EQ(without("0x800"), "sysdate0,systimestamp0,tz_offset1");  // SQLITE_DETERMINISTIC
}

constexpr const char *_mistakes[][2] = {
    {"dv_extract('HOUR', 'x')",
     "dv_extract: argument 2 is TEXT where DATE, TIME, TIMESTAMP, TIMESTAMP WITH TIME ZONE, INTERVAL YEAR TO "
     "MONTH or INTERVAL DAY TO SECOND is expected; to_date(), to_timestamp(), to_timestamp_tz(), "
     "to_yminterval() or to_dsinterval() reads text"},
    {"dv_add('1', 2)", "dv_add: argument 1 is TEXT where NUMBER is expected; to_number() reads text"},
    {"dv_text('a')",
     "dv_text: argument 1 is TEXT where NUMBER, DATE, TIME, TIMESTAMP, TIMESTAMP WITH TIME ZONE, INTERVAL "
     "YEAR TO MONTH, INTERVAL DAY TO SECOND or ROWID is expected; to_number(), to_date(), to_timestamp(), "
     "to_timestamp_tz(), to_yminterval(), to_dsinterval() or dv_rowid() reads text"},
    {"dv_rowid_sgmt('a')",
     "dv_rowid_sgmt: argument 1 is TEXT where ROWID is expected; dv_rowid() reads text"},
    {"dv_date('1',2,3)", "dv_date: argument 1 is TEXT where INTEGER is expected"},
    {"add_months(dv_date(1,1,1), 9999999999)", "add_months: argument 2 is out of range: 9999999999"},
    {"dv_neg(1e999)", "dv_neg: argument 1 is an infinite REAL where NUMBER is finite"},
    {"dv_cast_number(1, 38, 200)", "dv_cast_number: the scale lies in -127..127"},
    {"dv_cast_number(1, 0)", "dv_cast_number: the precision lies in 1..38"},
    {"from_tz(dv_date(1,1,1), 'UTC')", "from_tz: argument 1 is DATE where TIMESTAMP is expected"},
    {"to_yminterval(1)",
     "to_yminterval: argument 1 is INTEGER where TEXT or INTERVAL YEAR TO MONTH is expected"},
    {"to_date(1)",
     "to_date: argument 1 is INTEGER where TIMESTAMP, TIMESTAMP WITH TIME ZONE, TEXT or DATE is expected"},
    {"to_timestamp_tz(dv_date(1,1,1))",
     "to_timestamp_tz: argument 1 is DATE where TEXT or TIMESTAMP WITH TIME ZONE is expected"},
    {"next_day(1, 'MON')", "next_day: argument 1 is INTEGER where DATE is expected"},
    {"dv_timestamp(2024,1,1,0,0,0,-1)",
     "dv_timestamp: The value -1 of the field \"fractional second\" is out of range: 0 to 999999999 is "
     "accepted. (dv-5114)"},
    {"dv_rowid(-1,0,0,0)", "dv_rowid: argument 1 is out of range: -1"},
    {"dv_rowid(0,0,4294967296,0)", "dv_rowid: argument 3 is out of range: 4294967296"},
    {"dv_rowid(0,0,0,65536)", "dv_rowid: argument 4 is out of range: 65536"},
    {"dv_mul(to_yminterval('1-0'), to_yminterval('1-0'))",
     "dv_mul: argument 2 is INTERVAL YEAR TO MONTH where NUMBER is expected"},
    {"dv_sub(dv_date(1,1,1), dv_date(1,1,1))",
     "dv_sub: argument 2 is DATE where INTERVAL YEAR TO MONTH or INTERVAL DAY TO SECOND is expected"},
    {"dv_avg(dv_date(1,1,1))", "dv_avg: argument 1 is DATE where NUMBER is expected"},
};

TEST(SqlCall, MistakeIsAnErrorThatSaysWhatIsExpected) {
    sqlite_session session;
    for (const auto &[call, message] : _mistakes)
        EXPECT_EQ(session.value(std::string("SELECT ") + call), std::string("error: ") + message) << call;
}

// A stored form, and why it holds no value.
constexpr const char *_refused[][2] = {
    {"", "it is empty"},
    {"00", "its first byte is no type code"},
    {"02", "its first byte is no type code"},
    {"FF", "its first byte is no type code"},
    {"01", "a NUMBER needs its exponent"},
    {"01C2", "a NUMBER needs a digit"},
    {"01C280", "a NUMBER neither begins nor ends with a zero digit"},
    {"01C28180", "a NUMBER neither begins nor ends with a zero digit"},
    {"01C1E5", "a NUMBER digit is out of range"},
    {"013E4566E6", "a negative NUMBER needs its terminator"},
    {"0540", "it does not have the length of its type"},
    {"056464010100000000", "it has no year of a DATE"},
    {"0578640D0100000000", "its month is out of range"},
    {"057864021E00000000", "its month does not have its day"},
    {"0573B60A0500000000", "its day was left out of October 1582"},
    {"057864021D18000000", "its time of day is out of range"},
    {"057864021D173C0000", "its time of day is out of range"},
    {"057864021D17003C00", "its time of day is out of range"},
    {"057864021D17000001", "the last byte of a DATE is 0"},
    {"06173B3B0100000000", "the fourth byte of a TIME is 0"},
    {"06183B3B0000000000", "its time of day is out of range"},
    {"06173B3B003B9ACA00", "its fraction of a second is out of range"},
    {"077864021D173B3B0100000000", "the eighth byte of a TIMESTAMP is 0"},
    {"077864021D173B3B003B9ACA00", "its fraction of a second is out of range"},
    {"157864021D173B3B00000000006D00000300", "it has no such time zone"},
    {"157864021D173B3B00000000006D00010245", "its UTC offset is out of range"},
    {"157864021D173B3B0000000000FF00000245", "its UTC offset is out of range"},
    {"157864021D173B3B00000000007301000245", "its UTC offset is out of range"},  // +15:01
    {"157864021D173B3B01000000006D00000245", "the eighth byte of a TIMESTAMP WITH TIME ZONE is 0"},
    {"157864021D173B3B003B9ACA006D00000245", "its fraction of a second is out of range"},
    {"08C000000000", "it has more than nine digits of years"},
    {"084000000017", "its months are out of range"},
    {"097B9ACA004000000040000000", "it has more than nine digits of days"},
    {"09400000004001518040000000", "its seconds are out of range"},
    {"0940000000400000007B9ACA00", "its nanoseconds are out of range"},
    {"0F02", "a ROWID has 12 bytes"},
};

TEST(SqlCall, BlobThatHoldsNoValueIsRefusedWithTheReason) {
    sqlite_session session;
    for (const auto &[blob, reason] : _refused) {
        const std::string got = session.value(std::string("SELECT dv_text(x'") + blob + "')");
        EXPECT_TRUE(got.starts_with("error: ") && got.ends_with(std::string(": ") + reason))
            << blob << ": " << got;
    }
}
