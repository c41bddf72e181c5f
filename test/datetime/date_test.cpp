// DATE and TIME: fields, arithmetic, differences, clocks, and records of any bytes under every operation.

#include <dlfcn.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>

#include "../datetime_fmt/model_text.h"
#include "dvtypes/timestamp_tz.h"

using namespace dv::test;

namespace {

const int *_pinned = nullptr;  // the seven fields of the local time

int64_t seconds_(const dv_date_t &date) { return static_cast<int64_t>(dv_date_to_double(&date)); }

// Bytes are a DATE when they are those that the library makes of their own fields.
TEST(DateFault, IsFoundInAllButTheRecordsOfDates) {
    std::mt19937_64 random(3);
    long sound = 0;
    for (long i = scaled(500'000); i > 0; --i) {
        const auto byte = [&](int low, int high) {
            return static_cast<uint8_t>(low + static_cast<int>(random() % static_cast<unsigned>(high - low)));
        };
        dv_date_t date = {byte(0, 203), byte(0, 203), byte(0, 15), byte(0, 34),
                          byte(0, 26),  byte(0, 62),  byte(0, 62), 0};
        if (random() % 64 == 0) date = {115, 182, 10, byte(1, 32), 0, 0, 0, 0};  // October 1582
        dv_date_t made{};
        const int year = (date.century - 100) * 100 + date.year - 100;
        const int code = raise_of([&] {
            dv_date_from_unit_values(&made, year, date.month, date.day, date.hour, date.minute, date.second);
        });
        ASSERT_EQ(dv_date_get_fault(&date) == nullptr, code == 0 && made == date) << describe(date);
        sound += code == 0 && made == date ? 1 : 0;
    }
    EXPECT_GT(sound, scaled(20'000));
}

TEST(TimeFault, IsFoundInAllButTheRecordsOfTimes) {
    std::mt19937_64 random(3);
    long sound = 0;
    for (long i = scaled(200'000); i > 0; --i) {
        const auto byte = [&](unsigned limit) { return static_cast<uint8_t>(random() % limit); };
        dv_time_t time = {
            byte(26), byte(62), byte(62), static_cast<uint8_t>(byte(8) / 7), {byte(64), byte(255), 0, 0}};
        dv_time_t made{};
        const int fraction = time.csec[0] << 24 | time.csec[1] << 16;
        const int code =
            raise_of([&] { dv_time_from_unit_values(&made, time.hour, time.minute, time.second, fraction); });
        const bool is_made = code == 0 && memcmp(&made, &time, sizeof time) == 0;
        ASSERT_EQ(dv_time_get_fault(&time) == nullptr, is_made) << testing::PrintToString(time);
        sound += is_made ? 1 : 0;
    }
    EXPECT_GT(sound, scaled(20'000));
}

// Counts of every unit and intervals are one arithmetic on seconds since day number 0, and go back again.
TEST(DateAdd, IsArithmeticOnSeconds) {
    constexpr int units[] = {DT_FMT_UNIT_SECOND, DT_FMT_UNIT_MINUTE, DT_FMT_UNIT_HOUR, DT_FMT_UNIT_DAY};
    constexpr int64_t weights[] = {1, 60, 3600, 86400, 1, 1};
    number_source source(2);
    for (long round = scaled(200'000); round > 0; --round) {
        const dv_date_t date = random_date(source);
        const int way = source.pick(0, 5);
        const int64_t n = (static_cast<int64_t>(source.bits()) >> source.pick(24, 62)) / weights[way];
        const int64_t end = seconds_(date) + n * weights[way];
        const auto add = [&](dv_date_t &to, int64_t count) {
            if (way == 4) return dv_date_add_day(&to, static_cast<double>(count) / 86400);
            dv_itv_dts_t itv = {{0x40}, {0x40}, {0x7F, 1, 2, 3}};  // a fraction, which takes no part
            dv_itv_dts_add_sec(&itv, std::abs(count));
            if (way == 5) return (count < 0 ? dv_date_sub_itv_dts : dv_date_add_itv_dts)(&to, &itv);
            dv_date_add_field(&to, units[way], count);
        };
        dv_date_t sum = date;
        const bool is_day = end >= 0 && end / 86400 <= DV_JULIAN_DAY_MAX;
        ASSERT_EQ(raise_of([&] { add(sum, n); }), is_day ? 0 : -5114) << describe(date) << " + " << n;
        if (!is_day) continue;
        ASSERT_EQ(seconds_(sum), end) << describe(date) << " + " << n << " by " << way;
        add(sum, -n);
        ASSERT_EQ(sum, date) << n << " by " << way;
    }
}

TEST(DateAddDay, CountsWholeDays) {
    constexpr int marks[] = {0, DV_JULIAN_DAY_GREGORIAN, 2299239 /* 1583-01-01 */, DV_JULIAN_DAY_MAX};
    number_source source(9);
    for (long round = scaled(200'000); round > 0; --round) {
        const auto pick = [&] {
            if (source.pick(0, 1) == 0) return source.pick(0, DV_JULIAN_DAY_MAX);
            return marks[source.pick(0, 3)] + source.pick(-3, 3);
        };
        const int from = std::clamp(pick(), 0, int{DV_JULIAN_DAY_MAX}), to = pick();
        dv_date_t date = make_date(1, 1, 1, 1, 2, 3), want = date;
        dv_date_from_julian_day(&date, from);
        const bool is_day = to >= 0 && to <= DV_JULIAN_DAY_MAX;
        dv_date_from_julian_day(&want, is_day ? to : from);
        ASSERT_EQ(raise_of([&] { dv_date_add_day(&date, to - from); }), is_day ? 0 : -5114)
            << from << " to " << to;
        ASSERT_EQ(date, want) << from << " to " << to;
    }
}

// By each of the functions that add months: plain, strict, and as an interval added or subtracted.
enum class month_sum_e { PLAIN, STRICT, ADDED, SUBTRACTED };

int add_months_(dv_date_t &date, int n, month_sum_e how) {
    dv_itv_ytm_t itv;
    dv_itv_ytm_set_total_month(&itv, how == month_sum_e::SUBTRACTED ? -n : n);
    return raise_of([&] {
        if (how == month_sum_e::ADDED) return dv_date_add_itv_ytm(&date, &itv);
        if (how == month_sum_e::SUBTRACTED) return dv_date_sub_itv_ytm(&date, &itv);
        dv_date_add_month(&date, n, how == month_sum_e::STRICT ? 1 : 0);
    });
}

TEST(DateAddMonth, CountsMonthsAndKeepsTheEndOfTheMonth) {
    number_source source(3);
    for (long round = scaled(200'000); round > 0; --round) {
        const dv_date_t date = random_date(source);
        const int n = (static_cast<int32_t>(source.bits()) >> source.pick(0, 28)) | 1;
        const int old_year = dv_date_get_field(&date, DT_FMT_UNIT_YEAR);
        const double months = 12.0 * old_year + date.month - 1 + n;
        const auto year = static_cast<int>(std::floor(months / 12));
        const auto month = static_cast<int>(months - 12.0 * year) + 1;
        const int length = dt_fmt_get_days_of_mon(year, month);
        const bool was_last = date.day == dt_fmt_get_days_of_mon(old_year, date.month);
        const int day = was_last ? length : std::min<int>(date.day, length);
        const auto how = static_cast<month_sum_e>(source.pick(0, 3));
        const int day_code = how != month_sum_e::PLAIN && date.day > length ? -5005 : 0;
        const int want = year == 0 || std::abs(year) > 9999 ? -5114 : day_code;
        dv_date_t sum = date;
        const int code = add_months_(sum, n, how);
        ASSERT_EQ(code, want) << describe(date) << " + " << n;
        // A strict sum that lacks its day has the month already.
        const int stored = code == -5005 ? date.day : day;
        const dv_date_t moved = make_date(year, month, stored, date.hour, date.minute, date.second);
        ASSERT_EQ(sum, code == -5114 ? date : moved) << describe(date) << " + " << n;
    }
}

// The manual's sums, every step in the precision that it gives.
TEST(DateDifference, IsWeighedInSinglePrecision) {
    constexpr double hour = 0.0416666679084301f, minute = 0.0006944444612599909f,
                     second = 1.1574074051168282e-05f;
    const auto days = [](const dv_date_t &d) {
        return dv_date_to_julian_day(&d) + d.hour * hour + d.minute * minute + d.second * second;
    };
    const auto part = [](const dv_date_t &d) {
        const float time = static_cast<float>(d.hour) * 216000.0f + static_cast<float>(d.minute) * 3600.0f;
        return static_cast<double>((time + d.second) / 5184000.0f + d.day) / 31.0;
    };
    number_source source(4);
    for (long round = scaled(100'000); round > 0; --round) {
        dv_date_t x = random_date(source), y = random_date(source);
        ASSERT_EQ(dv_date_sub(&x, &y), days(x) - days(y)) << describe(x) << " - " << describe(y);
        x.day = static_cast<uint8_t>(1 + x.day % 27);  // not the last of a month
        const int whole = (x.century * 100 + x.year - y.century * 100 - y.year) * 12 + x.month - y.month;
        const double want = whole + (x.day == y.day ? 0 : part(x) - part(y));
        ASSERT_EQ(dv_date_months_between(&x, &y), want) << describe(x) << " - " << describe(y);
    }
}

// Reads a text by the clock at one time, and as of that time by a clock that shows another: nothing differs.
template <auto Read, auto ReadAsOf, typename Record, typename... More>
void expect_clock_is_not_asked_(const char *model, const char *text, const int (&now)[7],
                                const More &...more) {
    constexpr int elsewhen[] = {1812, 9, 14, 1, 2, 3, 4};
    const compiled_model compiled = reading(model, DV_TYPE_TS_TZ);
    const dv_date_t as_of = make_date(now[0], now[1], now[2], now[3], now[4], now[5]);
    Record by_clock{}, by_argument{};
    _pinned = now;
    const int code = raise_of([&] { Read(&by_clock, text, 0, &compiled.ctx, more...); });
    _pinned = elsewhen;
    EXPECT_EQ(raise_of([&] { ReadAsOf(&by_argument, text, 0, &compiled.ctx, more..., &as_of); }), code);
    _pinned = nullptr;
    EXPECT_EQ(memcmp(&by_clock, &by_argument, sizeof by_clock), 0) << model << " " << text << " " << now[0];
}

TEST(Clock, IsNotAskedWhereTheTimeOfReadingIsAnArgument) {
    if (DV_TEST_SHARED == 0) GTEST_SKIP() << "a static library binds the clock for good";
    constexpr const char *texts[][2] = {
        {"YY-MM", "99-03"},         {"RR-MM-DD", "50-12-31"}, {"Y", "7"},       {"YYY DD", "999 29"},
        {"HH24:MI", "23:59"},       {"MM-DD", "02-29"},       {"YYYY", "1999"}, {"DDD", "366"},
        {"YYYY-MM-DD", "2024-2-3"}, {"BC YY", "BC 24"},       {"DD", "31"},
    };
    constexpr int times[][7] = {{2024, 2, 29, 13, 14, 15, 500001}, {1999, 12, 31, 23, 59, 59, 0}};
    const timezone_t zone = {109, 0, 0, {TZ_ID_OFFSET >> 8, TZ_ID_OFFSET & 0xFF}};
    for (const auto &[model, text] : texts) {
        for (const auto &now : times) {
            expect_clock_is_not_asked_<dv_date_from_str, dv_date_from_str_as_of, dv_date_t>(model, text, now);
            expect_clock_is_not_asked_<dv_timestamp_from_str, dv_timestamp_from_str_as_of, dv_timestamp_t>(
                model, text, now, 9);
            expect_clock_is_not_asked_<dv_ts_tz_from_str, dv_ts_tz_from_str_as_of, dv_ts_tz_t>(model, text,
                                                                                               now, 9, &zone);
        }
    }
}

// In zones that never change their offset, behind the reform: C counts by the Gregorian calendar alone.
TEST(DateFromEpochTime, IsTheLocalClockAndGoesBack) {
    const char *const before = getenv("TZ");
    const std::string kept = before != nullptr ? before : "";
    number_source source(5);
    const struct {
        const char *name;
        int offset;  // seconds
    } zones[] = {{"UTC0", 0}, {"EAST-9", 32400}, {"WEST4:30", -16200}};
    for (const auto &zone : zones) {
        setenv("TZ", zone.name, 1);
        tzset();
        for (int round = 0; round < 1000; ++round) {
            const dv_date_t date = random_date(source);
            if (dv_date_to_julian_day(&date) < DV_JULIAN_DAY_GREGORIAN) continue;
            const time_t t = seconds_(date) - 2440588 * time_t{86400} - zone.offset;
            dv_date_t local;
            memset(&local, 0xFF, sizeof local);
            dv_date_from_epoch_time(t, &local);
            ASSERT_EQ(local, date) << zone.name << " " << t;
            ASSERT_EQ(dv_date_to_system_time(&date), t) << zone.name;
        }
        dv_date_t date;
        EXPECT_EQ(raise_of([&] { dv_date_from_epoch_time(253402300800 - zone.offset, &date); }),
                  -5114);  // 10000
        EXPECT_EQ(raise_of([&] { dv_date_from_epoch_time(INT64_MAX, &date); }), -5114);
    }
    before != nullptr ? setenv("TZ", kept.c_str(), 1) : unsetenv("TZ");
    tzset();
}

// Nothing but the documented raises, nothing beside the record, and of a timestamp its own bytes.
TEST(Date, OfAnyBytesIsHandledByEveryOperation) {
    constexpr void (*operations[])(dv_date_t *, dv_time_t *, int64_t) = {
        [](dv_date_t *d, dv_time_t *, int64_t n) { dv_date_set_field(d, 1 << (n & 7), 99, 0, 1); },
        [](dv_date_t *d, dv_time_t *, int64_t n) { dv_date_add_day(d, std::bit_cast<double>(n)); },
        [](dv_date_t *d, dv_time_t *, int64_t n) { dv_date_add_field(d, 1 << (n & 7), n); },
        [](dv_date_t *d, dv_time_t *, int64_t n) { dv_date_add_month(d, static_cast<int>(n), n & 1); },
        [](dv_date_t *d, dv_time_t *, int64_t) { dv_date_months_between(d, &max_dv_date); },
        [](dv_date_t *d, dv_time_t *, int64_t) { dv_date_get_last_date(d, d); },
        [](dv_date_t *d, dv_time_t *, int64_t) { dv_date_get_next_day(d, "7", 1, 0, 0); },
        [](dv_date_t *d, dv_time_t *, int64_t) { dv_date_to_system_time(d); },
        [](dv_date_t *, dv_time_t *t, int64_t n) { dv_time_trim_fsec(t, n & 7); },
    };
    number_source source(7);
    const assertion_watch watch;
    for (long round = scaled(500'000); round > 0; --round) {
        dv_ts_tz_t noise;
        source.fill(&noise, sizeof noise);
        const guarded date(8), time(8);
        auto *const d = reinterpret_cast<dv_date_t *>(date.text());
        auto *const t = reinterpret_cast<dv_time_t *>(time.text());
        dv_date_from_timestamp(d, &noise.utc);
        dv_time_from_ts_tz(t, &noise);
        ASSERT_TRUE(std::memcmp(d, &noise, 8) == 0 && std::memcmp(t, &noise.utc.hour, 8) == 0)
            << describe(*d);
        const int64_t n = static_cast<int64_t>(source.bits()) >> source.pick(0, 63);
        const auto i = static_cast<size_t>(source.pick(0, std::size(operations) - 1));
        const int code = raise_of([&] { operations[i](d, t, n); });
        ASSERT_TRUE(code == 0 || code == -5114 || code == -5005 || code == -5006) << code;
        ASSERT_TRUE(date.intact() && time.intact()) << i << " " << describe(*d) << " " << n;
    }
}

}  // namespace

// Takes the place of the host's clock, which the library never binds itself; forwards to it unless pinned.
#if DV_TEST_SHARED
extern "C" void dv_getlocaltime(int *year, int *month, int *day, int *hour, int *minute, int *second,
                                int *usec) {
    const auto real = reinterpret_cast<decltype(&dv_getlocaltime)>(dlsym(RTLD_NEXT, "dv_getlocaltime"));
    if (_pinned == nullptr) return real(year, month, day, hour, minute, second, usec);
    int *const fields[] = {year, month, day, hour, minute, second, usec};
    for (size_t i = 0; i < std::size(fields); ++i) *fields[i] = _pinned[i];
}
#endif
