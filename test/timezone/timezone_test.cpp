// Time zone operations but for histories: shifting by the offset, texts, the host's zone.

#include <gtest/gtest.h>

#include <unistd.h>

#include <ctime>

#include "datetime_support.h"
#include "dvtypes/timezone.h"
#include "dvtypes/timezone_id.h"

using namespace dv::test;

namespace {

timezone_t zone_(int id, int hour = 0, int minute = 0) {
    return {static_cast<uint8_t>(hour + 100),
            static_cast<uint8_t>(minute),
            0,
            {static_cast<uint8_t>(id / 256), static_cast<uint8_t>(id % 256)}};
}

std::string describe_(const timezone_t &tz) {
    return std::to_string(timezone_get_field(&tz, TZ_FLD_UTC_HOUR)) + ":" + std::to_string(tz.utc_min) +
           " of " + std::to_string(timezone_get_field(&tz, TZ_FLD_ZONE_ID));
}

dv_date_t moved_(dv_date_t date, int seconds) {
    dv_date_add_field(&date, DT_FMT_UNIT_SECOND, seconds);
    return date;
}

// The environment variable TZ, as it was before when the object goes.
class tz_variable {
  public:
    tz_variable() : before_(getenv("TZ") != nullptr ? getenv("TZ") : ""), was_set_(getenv("TZ") != nullptr) {}
    ~tz_variable() {
        was_set_ ? setenv("TZ", before_.c_str(), 1) : unsetenv("TZ");
        tzset();
    }
    tz_variable(const tz_variable &) = delete;
    tz_variable &operator=(const tz_variable &) = delete;
    void set(const std::string &value) const {
        setenv("TZ", value.c_str(), 1);
        tzset();
    }

  private:
    std::string before_;
    bool was_set_;
};

timezone_t host_zone_() {
    timezone_t tz = zone_(7, 7, 7);
    timezone_get_system_default(&tz);
    return tz;
}

// "-5:30 of 581" for the C library's present offset.
std::string present_offset_() {
    const time_t now = time(nullptr);
    struct tm local;
    localtime_r(&now, &local);
    const long minutes = local.tm_gmtoff / 60;
    return std::to_string(minutes / 60) + ":" + std::to_string(std::abs(minutes % 60)) + " of 581";
}

// How many samples of a region the C library agrees with, from the newest on.
int score_(int id) {
    for (int j = 0; j < TZ_SAMPLE_COUNT; ++j) {
        const time_t at = 974937600 - j * time_t{7862400};
        const tz_smpl_tm_t &sample = sample_tab_[id].stms[j];
        const struct tm *local = localtime(&at);  // begins with the same nine integers
        char abbrev[9];
        if (local == nullptr || std::memcmp(&sample, local, 9 * sizeof(int)) != 0 ||
            strftime(abbrev, sizeof abbrev, "%Z", local) == 0 || std::strcmp(abbrev, sample.abbrev) != 0)
            return j;
    }
    return TZ_SAMPLE_COUNT;
}

}  // namespace

// By every offset, over the ends of days, months and years, as adding minutes does it.
TEST(TimezoneShift, AddsTheMinutesOfTheOffset) {
    constexpr int days[][3] = {{2024, 2, 28},  {2024, 2, 29}, {2023, 2, 28}, {2023, 3, 1},   {2023, 12, 31},
                               {2024, 1, 1},   {2024, 4, 30}, {1582, 10, 4}, {1582, 10, 15}, {1600, 1, 1},
                               {1599, 12, 31}, {-1, 12, 31},  {1, 1, 1},     {2024, 7, 14}};
    for (const auto &[year, month, day] : days) {
        for (int minute = 0; minute < 24 * 60; minute += 7) {
            for (int offset = -12 * 60 - 59; offset <= 14 * 60; offset += 13) {
                const timezone_t tz = zone_(TZ_ID_OFFSET, offset / 60, std::abs(offset % 60));
                const int applied = offset / 60 == 0 ? -std::abs(offset) : offset;
                dv_date_t date, east, west;
                dv_date_from_unit_values(&date, year, month, day, minute / 60, minute % 60, 59);
                east = west = date;
                timezone_shift_to_east(&tz, &east);
                timezone_shift_to_west(&tz, &west);
                ASSERT_EQ(east, moved_(date, applied * 60)) << describe(date) << ' ' << offset;
                ASSERT_EQ(west, moved_(date, -applied * 60)) << describe(date) << ' ' << offset;
            }
        }
    }
}

// Of any two bytes as printf does it, into a buffer of any size.
TEST(TimezoneText, NamesAZone) {
    char text[TZ_NAME_TEXT_SIZE];
    for (int byte = 0; byte < 256; ++byte) {
        for (int minute = 0; minute < 256; ++minute) {
            const timezone_t tz = zone_(TZ_ID_OFFSET, byte - 100, minute);
            char printed[24];
            std::snprintf(printed, sizeof printed, "%+.2d:%.2d", byte - 100, minute);
            for (const int size : {minute % 10, 10}) {
                std::string want = std::string(printed).substr(0, static_cast<size_t>(std::max(size, 1)) - 1);
                if (size > 0) want += '\0';
                want.resize(sizeof text, '#');
                std::memset(text, '#', sizeof text);
                timezone_get_zone_name(&tz, text, size);
                ASSERT_EQ(std::string(text, sizeof text), want) << byte - 100 << ':' << minute << ' ' << size;
            }
        }
    }
}

// Values and files hold them.
static_assert(TZ_FLD_UTC_HOUR == 0 && TZ_FLD_UTC_MIN == 1 && TZ_FLD_UTC_SEC == 2 && TZ_FLD_ZONE_ID == 3);
static_assert(TZ_ID_MAX == 580 && TZ_ID_DEFAULT == 580 && TZ_ID_OFFSET == 581);
static_assert(TZ_ID_AFRICA_ABIDJAN == 0 && TZ_ID_ASIA_SEOUL == 301 && TZ_ID_ETC_UTC == 412 &&
              TZ_ID_ZULU == 579);

// The host's zone under TZ: every region's present offset, and a later name of one.
TEST(TimezoneDefault, FollowsTheEnvironment) {
    const tz_variable variable;
    for (int id = 0; id < TZ_ID_MAX; ++id) {
        const std::string name = region_tab_[id].canon_name;
        if (access(("/usr/share/zoneinfo/" + name).c_str(), R_OK) != 0) continue;
        variable.set(":" + name);
        const std::string colon = describe_(host_zone_());
        variable.set(name);
        EXPECT_EQ(colon, present_offset_()) << name;
        EXPECT_EQ(describe_(host_zone_()), present_offset_()) << name;
    }
    variable.set("Europe/Kiev");
    const std::string kiev = present_offset_();
    for (const char *name : {"europe/kyiv \t", ":EUROPE/Kyiv \t"}) {
        variable.set(name);
        EXPECT_EQ(describe_(host_zone_()), kiev) << name;
    }
}

// Of the region with the longest agreement, the first of several, the C library's zone being a region's, a
// rule that agrees for a while, or nobody's.
TEST(TimezoneDefault, IsFoundBySamples) {
    const tz_variable variable;
    std::vector<std::string> hosts = {"KST-9",        "CET-1CEST", "EST5EDT,M4.1.0,M10.5.0",
                                      "UTC0",         "XYZ3",      "LONGABBREV0",
                                      "<+0330>-3:30", "JST-9",     ""};
    for (int id = 0; id < TZ_ID_MAX; id += 29) hosts.push_back(region_tab_[id].canon_name);
    for (const std::string &host : hosts) {
        setenv("TZ", host.c_str(), 1);  // the search itself brings it into force
        const int found = zonesmpl_search_default();
        int want = 412, best = 0;
        for (int id = 0; id < TZ_ID_MAX; ++id) {
            const int score = score_(id);
            if (score > best) want = id, best = score;
        }
        EXPECT_EQ(found, want) << host << ", " << best << " samples";
    }
    variable.set(":");  // nothing behind it: the C library's own zone
    const int host = zonesmpl_search_default();
    variable.set(region_tab_[host].canon_name);
    const std::string want = present_offset_();
    variable.set(":");
    EXPECT_EQ(describe_(host_zone_()), want);
    unsetenv("TZ");
    EXPECT_EQ(describe_(host_zone_()), "0:0 of " + std::to_string(zonesmpl_search_default()));
}
