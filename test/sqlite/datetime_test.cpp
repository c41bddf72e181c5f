// DATE, TIME and the intervals in SQL: BLOBs that somebody else wrote, order in a table, laws of arithmetic,
// edges, the clock. What each function gives is in the manual's examples.

#include <sys/syscall.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <random>
#include <thread>

#include "sqlite_session.h"

using namespace dv::test;

namespace {

std::atomic<long> _clock_shift = 0;  // seconds by which the process's clock is ahead

}  // namespace

// Takes the place of the C library's, for the extension too.
extern "C" int clock_gettime(clockid_t clock, timespec *now) noexcept {
    const long code = syscall(SYS_clock_gettime, clock, now);
    now->tv_sec += clock == CLOCK_REALTIME ? _clock_shift.load() : 0;
    return static_cast<int>(code);
}

extern "C" time_t time(time_t *) noexcept {
    timespec now{};
    clock_gettime(CLOCK_REALTIME, &now);
    return now.tv_sec;
}

namespace {

// Stored forms with fields at their bounds.
constexpr const char *_blobs[] = {
    "X'057864021D173B3B00'",  // 2000-02-29 23:59:59
    "X'0573B60A0F00000000'",  // 1582-10-15, the day after the gap
    "X'0501010C1F00000000'",  // 9999 BC
    "X'056463011F00000000'",  // 1 BC, beside the year 0
    "X'06173B3B003B9AC9FF'",
    "X'087B9AC9FF16'",
    "X'083FFFFFFF00'",
    "X'097B9AC9FF4001517F7B9AC9FF'",
    "X'09400000003FFFFFFF40000000'",
    "X'077864021D173B3B003B9AC9FF'",
    "X'157864021D173B3B00000000005F1E000245'",
};

bool is_zoned_(const std::string &blob) { return blob[2] == '1'; }

// SQL that makes a value from the fields of a stored form, by its tag: #1 is the byte behind that, in
// hexadecimal.
std::string made_anew_(const std::string &blob) {
    constexpr const char *makers[] = {
        "dv_date(0x#1 * 100 + 0x#2 - 10100, 0x#3, 0x#4, 0x#5, 0x#6, 0x#7)",
        "dv_time(0x#1, 0x#2, 0x#3, 0x#5#6#7#8)",
        "dv_timestamp(0x#1 * 100 + 0x#2 - 10100, 0x#3, 0x#4, 0x#5, 0x#6, 0x#7, 0x#9#A#B#C)",
        "numtoyminterval((0x#1#2#3#4 - 0x40000000) * 12 + 0x#5 - 11, 'MONTH')",
        R"(numtodsinterval(dv_add((0x#1#2#3#4 - 0x40000000) * 86400 + 0x#5#6#7#8 - 0x40000000,
                                  dv_div(0x#9#A#B#C - 0x40000000, 1000000000)), 'SECOND'))",
        R"(at_time_zone(from_tz(dv_timestamp(0x#1 * 100 + 0x#2 - 10100, 0x#3, 0x#4, 0x#5, 0x#6, 0x#7, 0x#9#A#B#C),
                                '+00:00'), printf('%+03d:%02d', 0x#D - 100, 0x#E)))",
    };
    std::string sql = makers[is_zoned_(blob) ? 5 : blob[3] - '5'];
    for (size_t at = sql.find('#'); at != std::string::npos; at = sql.find('#', at))
        sql.replace(at, 2, blob, 2 + 2 * std::stoul(sql.substr(at + 1, 1), nullptr, 16), 2);
    return sql;
}

}  // namespace

TEST(SqlDatetime, BlobIsTakenExactlyWhenItIsTheFormOfAValue) {
    sqlite_session session;
    std::mt19937_64 random(11);
    int taken = 0;
    for (size_t i = 0; i < 20000; ++i) {
        std::string blob = _blobs[i % std::size(_blobs)];
        for (auto changes = random() % 3; changes > 0; --changes)
            blob[4 + random() % (blob.size() - 5 - (is_zoned_(blob) ? 4 : 0))] =
                "0123456789ABCDEF"[random() % 16];
        const std::string anew = session.value("SELECT quote(" + made_anew_(blob) + ")");
        if (random() % 64 == 0) blob.insert(blob.size() - 1, "00");
        const std::string got = session.value("SELECT dv_cmp(v, v) FROM (SELECT " + blob + " AS v)");
        const bool is_refused = got.starts_with("error: dv_cmp: argument 1 is a BLOB that holds no value");
        EXPECT_TRUE(anew == blob ? got == "0" : is_refused)
            << blob << " gives " << got << ", its fields give " << anew;
        taken += anew == blob ? 1 : 0;
    }
    EXPECT_TRUE(taken > 5000 && taken < 15000) << taken;
}

// 2000 rows whose dates d and e, times t, intervals y and s and instants z (e in some zone) rise with the id;
// d begins in 9999 BC, e in 1700 AD; groups of four dates lie within some months. months and nanos are what y
// and s are made of. Every key is a multiple of a step and a pseudo-random part of the step.
constexpr const char *_table = R"(CREATE TABLE t AS WITH RECURSIVE
    row(i) AS (SELECT 0 UNION ALL SELECT i + 1 FROM row LIMIT 2000),
    key(id, seconds, time, months, nanos) AS (SELECT i + 1,
        i / 4 * 1140480000 + i % 4 * (1 + i / 4 * 7919 % 3000000),
        i * 43000000000 + i * i * i * 7919 % 43000000000,
        (i - 1000) * 5000000 + i * i * 7919 % 5000000,
        (i - 1000) * 2000000000000000 + i * i * i * 104729 % 2000000000000000 FROM row)
    SELECT *, at_time_zone(from_tz(to_timestamp(e), '+00:00'), CASE id % 4 WHEN 0 THEN 'America/New_York'
        WHEN 1 THEN 'Asia/Seoul' WHEN 2 THEN '-05:45' ELSE 'Europe/London' END) AS z FROM (
    SELECT id, months, nanos,
        dv_date(seconds / 29030400 - 9999 + (seconds / 29030400 >= 9999), seconds / 2419200 % 12 + 1,
                seconds / 86400 % 28 + 1, seconds / 3600 % 24, seconds / 60 % 60, seconds % 60) AS d,
        dv_time(time / 3600000000000, time / 60000000000 % 60, time / 1000000000 % 60, time % 1000000000) AS t,
        numtoyminterval(months, 'month') AS y,
        numtodsinterval(dv_div(nanos, 1000000000), 'second') AS s,
        dv_add(dv_add_days(dv_date(1700, 1, 1), id * 1423), numtodsinterval(id * 43, 'second')) AS e FROM key))";

// What holds for any two rows.
constexpr const char *_laws[] = {
    "dv_cmp(a.d, b.d) = sign(a.id - b.id) AND dv_cmp(a.t, b.t) = dv_cmp(a.y, b.y)",
    "dv_cmp(a.y, b.y) = sign(a.id - b.id) AND dv_cmp(a.s, b.s) = dv_cmp(a.d, b.d)",
    "to_yminterval(dv_text(a.y)) = a.y AND to_dsinterval(dv_text(a.s)) = a.s",
    "dv_add(a.y, b.y) = numtoyminterval(a.months + b.months, 'MONTH')",
    "dv_add(a.s, b.s) = numtodsinterval(dv_div(a.nanos + b.nanos, 1000000000), 'SECOND')",
    "dv_sub(a.y, b.y) = dv_add(a.y, dv_neg(b.y)) AND dv_sub(a.s, b.s) = dv_add(a.s, dv_neg(b.s))",
    "dv_mul(a.y, 2) = dv_add(a.y, a.y) AND dv_mul(-0.5, a.s) = dv_neg(dv_div(a.s, 2))",
    "dv_extract('YEAR', a.y) * 12 + dv_extract('MONTH', a.y) = a.months",
    R"(dv_add(dv_extract('DAY', a.s) * 86400 + dv_extract('HOUR', a.s) * 3600,
              dv_add(dv_extract('MINUTE', a.s) * 60, dv_extract('SECOND', a.s))) = dv_div(a.nanos, 1000000000))",
    "dv_text(a.e) = datetime('1700-01-01', (a.id * 1423) || ' days', (a.id * 43) || ' seconds')",
    "dv_sub(dv_add(a.e, b.s), b.s) = a.e AND dv_add(b.s, a.e) = dv_add(a.e, b.s)",
    "abs(dv_date_diff(dv_add(a.e, b.s), a.e) - b.nanos / 86400e9) < 1e-4",
    "to_timestamp_tz(dv_text(a.z)) = a.z AND sys_extract_utc(a.z) = to_timestamp(a.e)",
    "dv_cmp(a.z, b.z) = sign(a.id - b.id) AND dv_cmp(at_time_zone(a.z, 'Asia/Tokyo'), a.z) = 0",
    "dv_sub(dv_add(a.z, b.s), b.s) = a.z AND dv_sub(dv_add(a.z, b.s), a.z) = b.s",
    "months_between(add_months(last_day(a.e), b.id), last_day(a.e)) = b.id",
};

TEST(SqlDatetime, OrderAndLawsHoldInAnIndexedTable) {
    sqlite_session session;
    session.rows(_table);
    for (const std::string column : {"d", "t", "y", "s", "z"}) {
        session.rows("DROP INDEX IF EXISTS by_column");
        session.rows("CREATE INDEX by_column ON t(" + column + ")");
        const std::string places = "SELECT id, row_number() OVER (ORDER BY " + column + ") AS place FROM t";
        EXPECT_EQ(session.value("SELECT count(*) FROM (" + places + ") WHERE id <> place"), "0") << column;
    }
    const std::string pairs = "SELECT count(*) FROM t a JOIN t b ON b.id = a.id * 7 % 2000 + 1 WHERE ";
    for (const std::string law : _laws) EXPECT_EQ(session.value(pairs + law), "2000") << law;
}

// Reader, and a model that reads more texts than it does, and the same values.
constexpr const char *_loose_models[][2] = {
    {"to_date", "SYYYY-MM-DD HH24:MI:SS"},
    {"to_timestamp", "SYYYY-MM-DD HH24:MI:SS.FF9"},
    {"to_timestamp_tz", "SYYYY-MM-DD HH24:MI:SS.FF9 TZR TZD"},
};

// One thread's use of a connection of its own, which loads the extension and unloads it.
void expect_strict_reading_(unsigned seed) {
    sqlite_session session;
    std::mt19937 random(seed);
    for (int i = 0; i < 300; ++i) {
        std::string text = i % 3 == 0 ? "-44-03-15" : "2024-02-29 23:59:59.123456789 +09:00";
        text.resize(random() % 4 == 0 ? random() % text.size() : text.size(), ' ');
        if (random() % 2 == 0 && !text.empty()) text[random() % text.size()] = "0129-:. +x"[random() % 10];
        for (const auto &[reader, model] : _loose_models) {
            const std::string call = std::string("SELECT dv_text(") + reader + "('" + text + "'";
            const std::string got = session.value(call + "))");
            const std::string loose = session.value(call + ", '" + model + "'))");
            const bool is_refused = got.starts_with("error: ");
            EXPECT_TRUE(is_refused || loose.starts_with("error: ") || got == loose) << text << " " << got;
            EXPECT_TRUE(!got.ends_with("(dv-5113)") || got.find(text) != got.npos) << text << " " << got;
        }
    }
}

TEST(SqlDatetime, TextsWithoutAModelAreReadAsUnderOneOrRefused) {
    const auto used = sqlite3_memory_used();
    for (unsigned round = 0; round < 2; ++round) {
        std::array<std::jthread, 4> others;
        for (std::jthread &other : others) {
            const auto seed = static_cast<unsigned>(&other - others.data());
            other = std::jthread(expect_strict_reading_, 5 * round + seed);
        }
        expect_strict_reading_(5 * round + 4);
        for (std::jthread &other : others) other.join();
        EXPECT_EQ(sqlite3_memory_used(), used);
    }
}

TEST(SqlDatetime, ClocksAreTheHostsAndServeNoIndex) {
    sqlite_session session;
    EXPECT_EQ(session.value("SELECT datetime('now', 'localtime') <= dv_text(sysdate())"), "1");
    const std::string earlier = session.value("SELECT dv_text(sysdate())"),
                      utc = session.value("SELECT dv_text(to_date(sys_extract_utc(systimestamp())))");
    EXPECT_LE(earlier, session.value("SELECT datetime('now', 'localtime')"));
    EXPECT_LE(utc, session.value("SELECT datetime('now')"));
    EXPECT_LE(session.value("SELECT datetime('now', '-1 second')"), utc);
    for (int month = 0; month < 12; ++month, _clock_shift += 30L * 24 * 60 * 60) {
        EXPECT_EQ(session.value("SELECT tz_offset('America/New_York')"),
                  session.value("SELECT tz_offset('America/New_York', systimestamp())"))
            << month;
    }
    _clock_shift = 0;
    EXPECT_TRUE(session.value("CREATE TABLE t(a, b AS (sysdate()))").starts_with("error: non-determin"));
}

// An index over readings that a clock could have a say in: those by the clock of a month ago would be missed
// today.
TEST(SqlDatetime, ReadingDoesNotChangeWithTheClock) {
    constexpr const char *readings[] = {"to_date(v, 'YY-MM-DD')", "to_timestamp(v, 'RR-MM-DD')",
                                        "to_timestamp_tz(v, 'YYY-MM-DD', 'AMERICAN')",
                                        "to_date(substr(v, 3), 'DD-MI', 'KOREAN', d)",
                                        "to_timestamp(v, 'Y-MM-DD', to_timestamp(d))"};
    sqlite_session session;
    session.rows(
        "CREATE TABLE t AS SELECT column1 AS v, dv_date(1987, 6, 5) AS d FROM (VALUES ('7-12-31'), "
        "('5-1-9'))");
    for (size_t i = 0; i < std::size(readings); ++i)
        session.rows("CREATE INDEX i" + std::to_string(i) + " ON t(" + readings[i] + ")");
    // Nor does a zone move a day of the year into another one, in January as little as in July.
    EXPECT_EQ(
        session.value("SELECT dv_extract('YEAR', to_timestamp_tz('2001-034 04 +09', 'YYYY-DDD HH24 TZH'))"),
        "2001");
    const std::string earlier = session.value("SELECT dv_text(sysdate())");
    _clock_shift = 40L * 365 * 24 * 60 * 60;
    EXPECT_LT(earlier, session.value("SELECT dv_text(add_months(sysdate(), -400))"));
    EXPECT_EQ(session.value("PRAGMA integrity_check"), "ok");
    _clock_shift = 0;
}

// Every change of every region's clocks, one second before it and at it; what is left out changes nothing.
TEST(SqlDatetime, ZoneTransitionsAreWhereTheOffsetOrItsNameChanges) {
    sqlite_session session;
    const auto counts = session.rows(R"(
        SELECT count(*), sum(tz_offset(name, at) = offset_after),
               sum(tz_offset(name, dv_sub(at, to_dsinterval('0 0:0:1'))) = offset_before),
               sum(before <> after), sum(before = previous)
        FROM (SELECT *, lag(after, 1, before) OVER (PARTITION BY name ORDER BY at) AS previous
              FROM (SELECT *, from_tz(utc, '+00:00') AS at, offset_before || abbreviation_before AS before,
                           offset_after || abbreviation_after AS after FROM dv_zones, dv_zone_transitions(name))))")
                            [0];
    EXPECT_GT(std::stoi(counts[0]), 30000);
    for (const std::string &count : counts) EXPECT_EQ(count, counts[0]);
}
