// Local time against localtime_r: each second around every change of the offset, and a change of the zone.

#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>
#include <random>

#include "dvtypes/base.h"
#include "local_clock.h"

namespace {

using namespace dv::impl;

struct tm libc_time_(time_t utc) {
    struct tm local;
    return *localtime_r(&utc, &local);
}

void expect_libc_(const local_fields_t &ours, time_t utc) {
    const struct tm tm = libc_time_(utc);
    const local_fields_t libc = {tm.tm_year + 1900, tm.tm_mon + 1, tm.tm_mday,
                                 tm.tm_hour,        tm.tm_min,     std::min(tm.tm_sec, 59)};
    ASSERT_EQ(ours, libc) << dv_getenv("TZ") << " at " << utc;
}

// The thread's clock, which was last read in another zone, between two readings of the same second.
void expect_now_() {
    const auto now = [] { return std::chrono::system_clock::to_time_t(std::chrono::system_clock::now()); };
    local_fields_t t;
    int usec = -1;
    time_t utc;
    do {
        utc = now();
        dv_getlocaltime(&t.year, &t.month, &t.day, &t.hour, &t.minute, &t.second, &usec);
    } while (now() != utc);
    expect_libc_(t, utc);
    EXPECT_TRUE(usec >= 0 && usec <= 999999) << usec;
}

constexpr time_t _first_hour = 1480550400;  // 2016-12-01, a month before a leap second
constexpr time_t _last_hour = 1514764800;   // 2018-01-01

// The clock is read at nearly every second around the change, now forwards, now backwards, now far away.
TEST(LocalTime, IsExactAroundEveryChangeOfTheOffsetAndAfterTzset) {
    std::mt19937 random(1);
    int changes = 0;
    for (const char *zone : {"XXX-5:30:17YYY-5:59:59,M3.2.0/02:00:37,M11.1.0/02:00:11", "America/New_York",
                             "Australia/Lord_Howe", "right/Europe/Paris", "UTC0"}) {
        setenv("TZ", zone, /*overwrite=*/1);  // UTC where the host does not know it
        tzset();
        expect_now_();
        for (time_t hour = _first_hour; hour < _last_hour; hour += 3600) {
            const struct tm before = libc_time_(hour);
            const struct tm after = libc_time_(hour + 3600);
            if (before.tm_gmtoff == after.tm_gmtoff && before.tm_sec == after.tm_sec) continue;
            ++changes;
            local_clock_t clock;
            for (time_t utc = hour - 120; utc < hour + 3720; utc += static_cast<int>(random() % 16) - 7) {
                expect_libc_(clock.fields_at(utc), utc);
                const time_t far_away = static_cast<time_t>(random()) - 1000000000;
                if (random() % 64 == 0) expect_libc_(clock.fields_at(far_away), far_away);
            }
        }
    }
    EXPECT_GE(changes, 2);
}

}  // namespace
