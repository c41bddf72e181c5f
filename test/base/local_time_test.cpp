// Local time against localtime_r: each second around every change of the offset, and a change of the zone.

#include <gtest/gtest.h>

#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <optional>
#include <random>
#include <string>

#include "dvtypes/base.h"
#include "local_clock.h"

namespace {

using dv::impl::local_clock_t;
using dv::impl::local_fields_t;

class zone_guard_t {
  public:
    explicit zone_guard_t(const char *zone) {
        if (const char *const before = std::getenv("TZ")) before_ = before;
        set(zone);
    }
    ~zone_guard_t() {
        if (before_) setenv("TZ", before_->c_str(), /*overwrite=*/1);
        if (!before_) unsetenv("TZ");
        tzset();
    }
    zone_guard_t(const zone_guard_t &) = delete;
    zone_guard_t &operator=(const zone_guard_t &) = delete;

    static void set(const char *zone) {
        setenv("TZ", zone, /*overwrite=*/1);
        tzset();
    }

  private:
    std::optional<std::string> before_;
};

struct tm libc_time_(time_t utc) {
    struct tm local = {};
    localtime_r(&utc, &local);
    return local;
}

local_fields_t libc_fields_(time_t utc) {
    const struct tm local = libc_time_(utc);
    return {local.tm_year + 1900, local.tm_mon + 1, local.tm_mday,
            local.tm_hour,        local.tm_min,     std::min(local.tm_sec, 59)};
}

void expect_same_(local_clock_t &clock, time_t utc) {
    const local_fields_t ours = clock.fields_at(utc);
    const local_fields_t libc = libc_fields_(utc);
    ASSERT_EQ(ours, libc) << "at " << utc << ": " << ours.hour << ":" << ours.minute << ":" << ours.second
                          << ", libc " << libc.hour << ":" << libc.minute << ":" << libc.second;
}

// Every second of the hour and two minutes on both sides; clock is read at one of them first.
void expect_same_around_hour_(time_t hour) {
    for (const time_t start : {hour - 120, hour - 77, hour - 1, hour}) {
        local_clock_t clock;
        for (time_t utc = start; utc < hour + 3720; ++utc) expect_same_(clock, utc);
    }
}

constexpr time_t _year_2024 = 1704067200;
constexpr time_t _year_2025 = 1735689600;

struct zone_case {
    const char *zone;
    int changes;  // in 2024
};
constexpr zone_case _zone_cases[] = {
    {"America/New_York", 2},
    {"Australia/Lord_Howe", 2},  // by half an hour
    {"Asia/Kathmandu", 0},       // +05:45
    {"Africa/Casablanca", 2},
    {"XXX3YYY,M3.2.0/02:00:37,M11.1.0/02:00:11", 2},
    {"XXX-5:30:17YYY-5:59:59,M3.2.0/0,M11.1.0/0", 2},
    {"UTC0", 0},
};

TEST(LocalClock, IsExactAroundEveryChangeOfTheOffset) {
    for (const zone_case &c : _zone_cases) {
        SCOPED_TRACE(c.zone);
        const bool is_rule = std::string(c.zone).find_first_of("0123456789") != std::string::npos;
        if (!is_rule && !std::filesystem::exists(std::string("/usr/share/zoneinfo/") + c.zone)) continue;
        const zone_guard_t guard(c.zone);
        int changes = 0;
        for (time_t hour = _year_2024; hour < _year_2025; hour += 3600) {
            if (libc_time_(hour).tm_gmtoff == libc_time_(hour + 3600).tm_gmtoff) continue;
            ++changes;
            expect_same_around_hour_(hour);
        }
        EXPECT_EQ(changes, c.changes);
    }
}

TEST(LocalClock, GivesALeapSecondAs59) {
    if (!std::filesystem::exists("/usr/share/zoneinfo/right/America/New_York")) GTEST_SKIP();
    const zone_guard_t guard("right/America/New_York");
    constexpr time_t leap_second = 1483228800 + 26;  // 2016-12-31 23:59:60 UTC, 26 leap seconds before it
    ASSERT_EQ(libc_time_(leap_second).tm_sec, 60);
    expect_same_around_hour_(leap_second - 1800);
}

TEST(LocalClock, FollowsAClockThatIsSetBackAndForth) {
    const zone_guard_t guard("XXX3YYY,M3.2.0/02:00:37,M11.1.0/02:00:11");
    std::mt19937 random(1);
    local_clock_t clock;
    for (int i = 0; i < 20000; ++i) {
        const bool is_near = i % 2 == 0;
        const auto step = static_cast<time_t>(random() % (is_near ? 180 : 3000000000U));
        expect_same_(clock, (is_near ? _year_2024 : -1000000000) + step);
    }
}

TEST(LocalClock, SeesAChangeOfTheZoneAfterTzset) {
    const zone_guard_t guard("AAA-1");
    local_clock_t clock;
    expect_same_(clock, _year_2024 + 5);
    for (const char *const zone : {"BBB-1", "BBB-2", "BBB5CCC,M3.2.0,M11.1.0", "UTC0"}) {
        SCOPED_TRACE(zone);
        zone_guard_t::set(zone);
        expect_same_(clock, _year_2024 + 6);
    }
}

TEST(LocalTime, LiesBetweenTwoReadingsOfTheClock) {
    const zone_guard_t guard("XXX-5:30:17");
    for (int i = 0; i < 1000; ++i) {
        struct tm now = {};
        int usec = -1;
        const time_t before = time(nullptr);
        dv_getlocaltime(&now.tm_year, &now.tm_mon, &now.tm_mday, &now.tm_hour, &now.tm_min, &now.tm_sec,
                        &usec);
        const time_t after = time(nullptr);
        now.tm_year -= 1900;
        now.tm_mon -= 1;
        const time_t utc = timegm(&now) - (5 * 3600 + 30 * 60 + 17);
        ASSERT_GE(utc, before);
        ASSERT_LE(utc, after + 1);  // time() may lag behind clock_gettime() by a tick
        ASSERT_GE(usec, 0);
        ASSERT_LE(usec, 999999);
    }
}

TEST(Environment, GivesTheValueOrNull) {
    const zone_guard_t guard("UTC0");
    EXPECT_STREQ(dv_getenv("TZ"), "UTC0");
    EXPECT_EQ(dv_getenv("DVTYPES_NO_SUCH_VARIABLE"), nullptr);
}

}  // namespace
