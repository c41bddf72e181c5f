// chrono.hpp: values to and from std::chrono.

#include <gtest/gtest.h>

#include <cmath>
#include <ctime>
#include <dvtypes/dvtypes.hpp>
#include <random>

namespace {

using namespace std::chrono;
using dv::chrono_cast, dv::date, dv::interval_ds, dv::interval_ym, dv::time_of_day, dv::timestamp,
    dv::timestamp_ltz, dv::timestamp_tz;

using thirds = duration<int64_t, std::ratio<1, 3>>;
using picoseconds = duration<int64_t, std::pico>;
using real_seconds = duration<double>;

template <typename Duration>
class CppChrono : public testing::Test {};
using durations = testing::Types<nanoseconds, microseconds, thirds, seconds, duration<int32_t>, hours, days,
                                 duration<uint64_t>, real_seconds>;
TYPED_TEST_SUITE(CppChrono, durations);

// Counts from as far back as the calendar and the type go to as far ahead; of doubles, whole ones.
template <typename Duration>
std::vector<Duration> any_() {
    using rep = typename Duration::rep;
    constexpr double per_day = 86400.0 * Duration::period::den / Duration::period::num;
    constexpr double type_max = static_cast<double>(std::numeric_limits<rep>::max());
    const double most = std::min(2'440'000 * per_day, type_max * 0.9);
    const double least = std::is_signed_v<rep> ? -most : 0;
    std::mt19937_64 random(3);
    std::uniform_real_distribution<double> counts(least, most);
    std::vector<Duration> all(1000);
    for (Duration &any : all) any = Duration(static_cast<rep>(static_cast<int64_t>(counts(random))));
    return all;
}

// A third of a second is no whole number of nanoseconds: it comes back as the third before.
template <typename Duration>
void expect_same_(Duration got, Duration want) {
    if constexpr (std::same_as<Duration, thirds>) {
        EXPECT_TRUE(got == want || (want.count() % 3 != 0 && got == want - thirds(1))) << want.count();
    } else {
        EXPECT_EQ(got.count(), want.count());
    }
}

TYPED_TEST(CppChrono, EveryTimePointComesBack) {
    for (const TypeParam since : any_<TypeParam>()) {
        const sys_time<TypeParam> instant(since);
        const local_time<TypeParam> local(since);
        const auto zoned = chrono_cast<timestamp_tz>(instant);
        expect_same_(chrono_cast<sys_time<TypeParam>>(zoned).time_since_epoch(), since);
        EXPECT_EQ(timestamp_ltz(zoned), chrono_cast<timestamp_ltz>(instant));
        EXPECT_EQ(zoned.utc(), chrono_cast<timestamp>(local));
        expect_same_(chrono_cast<local_time<TypeParam>>(zoned.utc()).time_since_epoch(), since);
        const auto span = chrono_cast<interval_ds>(since);
        if (since >= TypeParam::zero()) {
            EXPECT_EQ(timestamp() + span, zoned.utc());
            expect_same_(chrono_cast<TypeParam>(span), since);
        }
        EXPECT_EQ(chrono_cast<date>(local), zoned.utc().date());
    }
}

TEST(CppChronoCast, IntervalsAreClockTimesOfAnyCountOfHours) {
    const auto past = chrono_cast<hh_mm_ss<milliseconds>>(interval_ds("-1 02:03:04.0059"));
    EXPECT_TRUE(past.is_negative());
    EXPECT_EQ(past.hours(), 26h);
    EXPECT_EQ(past.minutes(), 3min);
    EXPECT_EQ(past.seconds(), 4s);
    EXPECT_EQ(past.subseconds(), 5ms);
    EXPECT_EQ(interval_ds("-1 02:03:04.9").total_seconds(), -(26 * 3600 + 184));
}

// The C library's calendar is the same as ours from 1582-10-15 on.
TEST(CppChronoCast, NamesDaysAsTheCLibraryDoes) {
    for (int64_t day = -141'427; day <= 2'932'896; day += 97) {
        const std::time_t seconds_since = day * 86400 + 3723;
        std::tm want{};
        gmtime_r(&seconds_since, &want);
        const auto got = chrono_cast<date>(local_seconds(seconds(seconds_since)));
        ASSERT_EQ(got, date(want.tm_year + 1900, want.tm_mon + 1, want.tm_mday, 1, 2, 3)) << day;
        ASSERT_EQ(chrono_cast<year_month_day>(got), year_month_day(local_days(days(day))));
        ASSERT_EQ(chrono_cast<weekday>(got).c_encoding(), static_cast<unsigned>(want.tm_wday)) << got;
    }
    EXPECT_EQ(chrono_cast<date>(1582y / October / 14), date(1582, 10, 4));
    EXPECT_EQ(chrono_cast<year_month_day>(date(-4713, 1, 1)), year(-4713) / November / 24);
    EXPECT_EQ(chrono_cast<local_seconds>(date(-4713, 1, 1)), local_days(days(-2440588)));
}

TEST(CppChronoCast, TimesOfDayAndIntervalsKeepTheirFields) {
    const auto time = chrono_cast<time_of_day>(hh_mm_ss(13h + 5min + 7s + 9ns));
    EXPECT_EQ(time, time_of_day(13, 5, 7, 9));
    EXPECT_EQ(chrono_cast<hh_mm_ss<nanoseconds>>(time).to_duration(), 13h + 5min + 7s + 9ns);
    EXPECT_EQ(chrono_cast<hh_mm_ss<minutes>>(time).to_duration(), 13h + 5min);
    EXPECT_EQ(chrono_cast<interval_ds>(-1500ms), interval_ds(0, 0, 0, -1, -500'000'000));
    EXPECT_EQ(chrono_cast<seconds>(interval_ds(0, 0, 0, -1, -500'000'000)), -1s);
    EXPECT_EQ(chrono_cast<interval_ds>(picoseconds(-1999)), interval_ds(0, 0, 0, 0, -1));
    EXPECT_EQ(chrono_cast<picoseconds>(interval_ds(0, 0, 0, 0, -1)), picoseconds(-1000));
    EXPECT_EQ(chrono_cast<interval_ds>(real_seconds(1.5)), interval_ds(0, 0, 0, 1, 500'000'000));
    EXPECT_EQ(chrono_cast<interval_ym>(months(-14)), interval_ym(-1, -2));
    EXPECT_EQ(chrono_cast<interval_ym>(years(3)), interval_ym(3));
    EXPECT_EQ(chrono_cast<months>(interval_ym(-1, -2)), months(-14));
    EXPECT_EQ(chrono_cast<years>(interval_ym(-1, -2)), years(-1));
}

TEST(CppChronoCast, WhatHasNoCounterpartThrows) {
    const struct {
        int code, want;
    } cases[] = {
        {dv::try_chrono_cast<timestamp>(local_seconds(seconds::max())).code(), -5114},
        {dv::try_chrono_cast<timestamp>(local_seconds(seconds::min())).code(), -5114},
        {dv::try_chrono_cast<timestamp>(local_days(days(-2'440'589))).code(), -5114},
        {dv::try_chrono_cast<timestamp>(local_days(days(2'932'897))).code(), -5114},
        {dv::try_chrono_cast<timestamp_tz>(sys_time<hours>(hours::max())).code(), -5114},
        {dv::try_chrono_cast<timestamp_tz>(sys_time<real_seconds>(real_seconds(NAN))).code(), -5114},
        {dv::try_chrono_cast<date>(2023y / February / 29).code(), -5114},
        {dv::try_chrono_cast<date>(year(12000) / 1 / 1).code(), -5114},
        {dv::try_chrono_cast<time_of_day>(hh_mm_ss(24h)).code(), -5114},
        {dv::try_chrono_cast<time_of_day>(hh_mm_ss(-1ns)).code(), -5114},
        {dv::try_chrono_cast<sys_time<nanoseconds>>(timestamp_tz("2262-04-12Z")).code(), -5114},
        {dv::try_chrono_cast<sys_time<nanoseconds>>(timestamp_tz("2262-04-11Z")).code(), 0},
        {dv::try_chrono_cast<sys_time<duration<int32_t>>>(timestamp_tz("2038-01-19T03:14:08Z")).code(),
         -5114},
        {dv::try_chrono_cast<sys_time<duration<int32_t>>>(timestamp_tz("2038-01-19T03:14:07Z")).code(), 0},
        {dv::try_chrono_cast<sys_time<duration<uint64_t>>>(timestamp_tz("1969-12-31T23:59:59Z")).code(),
         -5114},
        {dv::try_chrono_cast<local_seconds>(date(-9999, 1, 1)).code(), -5114},
        {dv::try_chrono_cast<interval_ds>(hours(24'000'000'000)).code(), -5064},
        {dv::try_chrono_cast<interval_ds>(-hours(23'999'999'999)).code(), 0},
        {dv::try_chrono_cast<interval_ym>(duration<int64_t, years::period>(1'000'000'000)).code(), -5064},
        {dv::try_chrono_cast<nanoseconds>(interval_ds(106752)).code(), -5114},
    };
    for (const auto &c : cases) EXPECT_EQ(c.code, c.want) << &c - cases;
    EXPECT_THROW(chrono_cast<date>(2023y / February / 29), dv::error);
}

// A 29 February that years BC lack in one count or the other.
TEST(CppChronoCast, DaysThatOneCalendarLacksThrowAndNoOthersDo) {
    int refused = 0;
    for (int jd = 0; jd < 1'725'000; ++jd) {
        const auto day = dv::try_chrono_cast<date>(local_days(days(jd - 2'440'588)));
        if (!day) {
            ++refused;
            continue;
        }
        ASSERT_EQ(chrono_cast<local_days>(*day).time_since_epoch(), days(jd - 2'440'588)) << *day;
    }
    EXPECT_GT(refused, 0);
    EXPECT_LT(refused, 1200);  // at most one in four years
}

TEST(CppChronoCast, DurationsMoveDatetimes) {
    const timestamp_tz t("2026-01-31 12:00 Asia/Seoul");
    EXPECT_EQ(t + 36h, t + interval_ds(1, 12));
    EXPECT_EQ(t - 1500ms, t - interval_ds(0, 0, 0, 1, 500'000'000));
    EXPECT_EQ(timestamp_ltz(t) + days(2), timestamp_ltz(t + interval_ds(2)));
    EXPECT_EQ(date(2026, 1, 31) + months(2), date(2026, 3, 31));
    date day(2024, 2, 29);
    day += years(4);
    day -= days(1);
    EXPECT_EQ(day, date(2028, 2, 28));
    EXPECT_EQ(interval_ds(1) + 1min, interval_ds(1, 0, 1));
    EXPECT_THROW(date(2026, 1, 31) + months(1), dv::error);
    EXPECT_THROW(date() + hours(24'000'000'000), dv::error);
}

}  // namespace
