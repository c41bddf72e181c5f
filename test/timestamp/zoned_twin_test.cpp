// Zoned timestamps beside plain ones: in UTC they are the same, elsewhere they differ by the offset that the
// C library has for the region.

#include <gtest/gtest.h>

#include <cmath>
#include <ctime>
#include <filesystem>
#include <fstream>

#include "dvtypes/timezone_id.h"
#include "zoned_support.h"

using namespace dv::test;

namespace {

constexpr int64_t _seconds_to_1970 = int64_t{2440588} * 86400;  // from day number 0

// What an operation left, and the code that it raised.
template <typename Record>
struct left_t {
    Record record;
    int code;
    bool operator==(const left_t &other) const {
        return code == other.code && (code != 0 || same_bytes(record, other.record));
    }
};
template <typename Record, typename Fn>
left_t<Record> left_by_(Record record, Fn fn) {
    const int code = raise_of([&] { fn(&record); });
    return {record, code};
}

// The same operation on the three types, the zoned ones in a zone that is UTC. On a raise codes alone count.
template <typename Plain, typename Zoned, typename Local>
void expect_same_(const dv_timestamp_t &ts, const timezone_t &utc, Plain plain, Zoned zoned, Local local) {
    const auto want = left_by_(ts, plain);
    const auto got_zoned = left_by_(dv_ts_tz_t{ts, utc}, zoned);
    const auto got_local = left_by_(dv_ts_ltz_t{ts}, local);
    ASSERT_TRUE((left_t<dv_timestamp_t>{got_zoned.record.utc, got_zoned.code} == want))
        << testing::PrintToString(ts);
    ASSERT_TRUE((left_t<dv_timestamp_t>{got_local.record.utc, got_local.code} == want))
        << testing::PrintToString(ts);
    ASSERT_TRUE(same_bytes(got_zoned.record.tz, utc)) << testing::PrintToString(got_zoned.record);
}

dv_timestamp_t at_(time_t instant, int nanoseconds) {
    tm t{};
    gmtime_r(&instant, &t);
    dv_timestamp_t ts;
    dv_timestamp_from_unit_values(&ts, t.tm_year + 1900, t.tm_mon + 1, t.tm_mday, t.tm_hour, t.tm_min,
                                  t.tm_sec, nanoseconds);
    return ts;
}

number_t seconds_(int64_t whole, int nanoseconds) {
    return num(std::to_string(whole) + std::to_string(nanoseconds + 1'000'000'000).replace(0, 1, "."));
}

bool has_installed_zones_() {
    std::ifstream file("/usr/share/zoneinfo/tzdata.zi");
    std::string line;
    return std::getline(file, line) && line == std::string("# version ") + zonetab_get_version();
}

}  // namespace

TEST(ZonedTwin, IsThePlainTimestampInUtc) {
    number_source source(21);
    for (const char *name : {"+00:00", "Etc/UTC"}) {
        const timezone_t utc = zone_of(name);
        for (long round = scaled(5'000); round > 0 && !testing::Test::HasFatalFailure(); --round) {
            const dv_timestamp_t ts = random_timestamp(source), other = random_timestamp(source);
            const int digits = source.pick(-1, 10);
            expect_same_(
                ts, utc, [&](auto *x) { dv_timestamp_trim_fsec(x, digits); },
                [&](auto *x) { dv_ts_tz_trim_fsec(x, digits); },
                [&](auto *x) { dv_ts_ltz_trim_fsec(x, digits); });
            const double real = std::ldexp(dv_timestamp_to_double(&other), source.pick(0, 3) / 3);
            expect_same_(
                ts, utc, [&](auto *x) { dv_timestamp_from_double(real, x); },
                [&](auto *x) { dv_ts_tz_from_double(real, x, &utc); },
                [&](auto *x) { dv_ts_ltz_from_double(real, x, &utc); });
            number_t number = source.any();
            if (source.pick(0, 7) != 0) dv_timestamp_to_number(&other, &number);
            expect_same_(
                ts, utc, [&](auto *x) { dv_timestamp_from_number(&number, x); },
                [&](auto *x) { dv_ts_tz_from_number(&number, x, &utc); },
                [&](auto *x) { dv_ts_ltz_from_number(&number, x, &utc); });
            expect_same_(
                ts, utc, [&](auto *x) { dv_timestamp_from_date(x, &date_of(other)); },
                [&](auto *x) { dv_ts_tz_from_date(x, &date_of(other), &utc); },
                [&](auto *x) { dv_ts_ltz_from_date(x, &date_of(other), &utc); });
            expect_same_(
                ts, utc, [&](auto *x) { *x = other; },
                [&](auto *x) { dv_ts_tz_from_timestamp(x, &other, &utc); },
                [&](auto *x) { dv_ts_ltz_from_timestamp(x, &other, &utc); });

            const int year = source.pick(-4713, 9999), month = source.pick(0, 13), day = source.pick(0, 32),
                      hour = source.pick(-1, 24), minute = source.pick(-1, 60), second = source.pick(-1, 60),
                      nano = source.pick(-1, 9) * 111'111'111 + source.pick(0, 1);
            const dv_timestamp_t start{120, 100, 1, 1, 0, 0, 0, /*dummy=*/7, {}};
            expect_same_(
                start, utc,
                [&](auto *x) {
                    dv_timestamp_from_unit_values(x, year, month, day, hour, minute, second, nano);
                },
                [&](auto *x) {
                    dv_ts_tz_from_unit_values(x, year, month, day, hour, minute, second, nano, &utc);
                },
                [&](auto *x) {
                    dv_ts_ltz_from_unit_values(x, year, month, day, hour, minute, second, nano, &utc);
                });

            const dv_ts_tz_t zoned{ts, utc}, zoned_other{other, utc};
            const dv_ts_ltz_t local{ts};
            ASSERT_EQ(dv_ts_tz_to_double(&zoned), dv_timestamp_to_double(&ts));
            ASSERT_EQ(dv_ts_ltz_to_double(&local, &utc), dv_timestamp_to_double(&ts));
            number_t want, got;
            dv_timestamp_to_number(&ts, &want);
            dv_ts_tz_to_number(&zoned, &got);
            ASSERT_EQ(got, want);
            dv_ts_ltz_to_number(&local, &got, &utc);
            ASSERT_EQ(got, want);
            dv_itv_ytm_t months, zoned_months;
            dv_timestamp_sub_timestamp_into_itv_ytm(&months, &ts, &other);
            dv_ts_tz_sub_ts_tz_into_itv_ytm(&zoned_months, &zoned, &zoned_other);
            ASSERT_TRUE(same_bytes(months, zoned_months)) << testing::PrintToString(ts);
        }
    }
}

// Local times of a region, all ways, at instants at which records can hold its offset (whole minutes, and
// minus 0:01 to 0:59 alone).
TEST(ZonedTwin, ShowsTheLocalTimeOfTheCLibrary) {
    if (!has_installed_zones_()) GTEST_SKIP() << "the installed zones are of another release";
    number_source source(22);
    const std::string before = getenv("TZ") == nullptr ? ":/etc/localtime" : getenv("TZ");
    for (int id = source.pick(0, 12); id < TZ_ID_MAX && !testing::Test::HasFatalFailure(); id += 13) {
        const char *name = region_tab_[id].canon_name;
        if (!std::filesystem::exists(std::string("/usr/share/zoneinfo/") + name)) continue;
        SCOPED_TRACE(name);
        setenv("TZ", name, /*overwrite=*/1);
        tzset();
        const timezone_t session = zone_of(name);
        for (long round = scaled(200); round > 0; --round) {
            const time_t instant = source.pick(-2'147'000'000, 2'147'000'000);
            const int nanoseconds = source.pick(0, 999'999'999);
            tm t{};
            localtime_r(&instant, &t);
            const auto offset = static_cast<int>(t.tm_gmtoff);
            if (offset % 60 != 0 || (offset > 0 && offset < 3600)) continue;
            const dv_ts_ltz_t local{at_(instant, nanoseconds)};
            const dv_timestamp_t want = at_(timegm(&t), nanoseconds);
            const int64_t want_seconds = timegm(&t) + _seconds_to_1970;

            dv_ts_tz_t zoned, read;
            dv_ts_tz_from_ts_ltz(&zoned, &local, &session);
            ASSERT_EQ(timezone_get_field(&zoned.tz, TZ_FLD_UTC_HOUR), offset / 3600);
            ASSERT_EQ(zoned.tz.utc_min, std::abs(offset / 60 % 60));
            dv_timestamp_t ts, local_ts;
            dv_date_t date, local_date;
            dv_timestamp_from_ts_tz(&ts, &zoned);
            dv_timestamp_from_ts_ltz(&local_ts, &local, &session);
            dv_date_from_ts_tz(&date, &zoned);
            dv_date_from_ts_ltz(&local_date, &local, &session);
            ASSERT_TRUE(same_bytes(ts, want) && same_bytes(local_ts, want)) << instant;
            ASSERT_TRUE(date == date_of(want) && local_date == date_of(want)) << instant;

            number_t number, local_number;
            dv_ts_tz_to_number(&zoned, &number);
            dv_ts_ltz_to_number(&local, &local_number, &session);
            ASSERT_TRUE(number == seconds_(want_seconds, nanoseconds) && local_number == number) << instant;
            const double real = static_cast<double>(want_seconds) + nanoseconds * 1e-9;
            ASSERT_EQ(dv_ts_tz_to_double(&zoned), real) << instant;
            ASSERT_EQ(dv_ts_ltz_to_double(&local, &session), real) << instant;

            // The way back: an instant that has this local time, of two the later one.
            dv_ts_ltz_t back;
            dv_ts_tz_from_number(&number, &read, &session);
            dv_ts_ltz_from_number(&number, &back, &session);
            ASSERT_TRUE(same_bytes(read.utc, back.utc)) << instant;
            ASSERT_GE(dv_ts_ltz_compare(&back, &local), 0) << instant;
            dv_timestamp_from_ts_ltz(&ts, &back, &session);
            ASSERT_TRUE(same_bytes(ts, want)) << instant;
            dv_ts_tz_from_double(static_cast<double>(want_seconds), &read, &session);
            dv_ts_ltz_from_double(static_cast<double>(want_seconds), &back, &session);
            ASSERT_TRUE(same_bytes(read.utc, back.utc)) << instant;
            dv_date_from_ts_ltz(&date, &back, &session);
            ASSERT_EQ(date, date_of(want)) << instant;
        }
    }
    setenv("TZ", before.c_str(), /*overwrite=*/1);
    tzset();
}

// The host's local time is taken for local time of the session; it does not run backwards meanwhile.
TEST(ZonedTwin, TakesTheHostsClockForTheSessions) {
    const timezone_t nine = zone_of("+09:00"), utc = zone_of("UTC");
    const compiled_model out = writing("YYYY-MM-DD HH24:MI:SS.FF TZH", DV_TYPE_TS_TZ),
                         plain = writing("YYYY-MM-DD HH24:MI:SS.FF", DV_TYPE_TIMESTAMP);
    dv_itv_dts_t nine_hours{};
    dv_itv_dts_set_field(&nine_hours, DT_FMT_UNIT_FSEC, 0);
    dv_itv_dts_set_total_sec(&nine_hours, 9 * 3600);
    dv_timestamp_t first, last;
    dv_ts_tz_t zoned, written, plain_written{};
    dv_ts_ltz_t local;
    char text[40], plain_text[40];
    dv_timestamp_current(&first);
    dv_timestamp_current_str(plain_text, sizeof plain_text, &plain.ctx);
    dv_ts_tz_current(&zoned, &nine);
    dv_ts_ltz_current(&local, &nine);
    dv_ts_tz_current_str(text, sizeof text, &out.ctx, &nine);
    dv_timestamp_current(&last);
    dv_ts_tz_from_str_DEPRECATED(&written, text, 0, "YYYY-MM-DD HH24:MI:SS.FF TZH", 0, 6, &utc);
    dv_timestamp_from_str_DEPRECATED(&plain_written.utc, plain_text, 0, "YYYY-MM-DD HH24:MI:SS.FF", 0, 6);
    dv_timestamp_add_itv_dts(&zoned.utc, &nine_hours);
    dv_timestamp_add_itv_dts(&local.utc, &nine_hours);
    dv_timestamp_add_itv_dts(&written.utc, &nine_hours);
    for (const dv_timestamp_t &ts : {zoned.utc, local.utc, written.utc, plain_written.utc}) {
        EXPECT_LE(dv_timestamp_compare(&first, &ts), 0) << testing::PrintToString(ts);
        EXPECT_LE(dv_timestamp_compare(&ts, &last), 0) << testing::PrintToString(ts);
    }
    EXPECT_TRUE(same_bytes(zoned.tz, nine) && same_bytes(written.tz, nine));
    EXPECT_EQ(std::strlen(text), 30u) << text;
    EXPECT_EQ(dv_timestamp_get_field(&first, DT_FMT_UNIT_FSEC) % 1000, 0);
}
