// Time zone operations but for histories: shifting by the offset, texts, the host's zone.

#include <gtest/gtest.h>

#include <unistd.h>

#include <ctime>

#include "datetime_support.h"
#include "dvtypes/timezone.h"

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

std::string_view sample_bytes_(int id) {
    return {reinterpret_cast<const char *>(sample_tab_[id].stms), sizeof sample_tab_[id].stms};
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

TEST(TimezoneText, IsAnOffsetOrARegionOrRefused) {
    constexpr std::pair<const char *, const char *> cases[] = {{"+09:00", "9:0 of 581"},
                                                               {" -05:30 ", "-5:30 of 581"},
                                                               {"9", "9:0 of 581"},
                                                               {"+ 9 : 30", "9:30 of 581"},
                                                               {"-12:59", "-12:59 of 581"},
                                                               {"+14:00", "14:0 of 581"},
                                                               {"-0:30", "0:30 of 581"},
                                                               {"+14:01", "-5099"},
                                                               {"-13:00", "-5098"},
                                                               {"+99999999999", "-5098"},
                                                               {"+9:60", "-5099"},
                                                               {"+9:00x", "-5103"},
                                                               {"+", "-5103"},
                                                               {"+9:", "-5103"},
                                                               {"asia/SEOUL", "0:0 of 301"},
                                                               {"\tEtc/UTC  ", "0:0 of 412"},
                                                               {"   ", "0:0 of 412"},
                                                               {"Mars/Base", "-5104"},
                                                               {"", "-5104"}};
    for (const auto &[text, want] : cases) {
        timezone_t tz = zone_(7, 7, 7);
        const std::string_view given = text;
        const int code = raise_of([&] { timezone_parse(&tz, given.data(), static_cast<int>(given.size())); });
        EXPECT_EQ(code != 0 ? std::to_string(code) : describe_(tz), want) << text;
    }
    timezone_t tz;
    const std::string name = "Etc/UTC" + std::string(57, ' ');
    EXPECT_EQ(raise_of([&] { timezone_parse(&tz, name.data(), 64); }), 0);
    const std::string longer = name + " ";
    EXPECT_EQ(raise_of([&] { timezone_parse(&tz, longer.data(), 65); }), -5104);
}

// Of any two bytes as printf does it, into a buffer of any size; regions as the table has them.
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
    const timezone_t seoul = zone_(301);
    timezone_get_zone_name(&seoul, text, sizeof text);
    EXPECT_STREQ(text, "Asia/Seoul");
    timezone_get_zone_name(&seoul, text, 0);
    EXPECT_STREQ(text, "Asia/Seoul");
}

// Every value is stored or refused; a number that is no zone's is reported and stored.
TEST(TimezoneField, IsStoredWithinItsRange) {
    constexpr struct {
        tz_field_t field;
        int lowest, highest, code;
    } fields[] = {{TZ_FLD_UTC_HOUR, -12, 14, -5098},
                  {TZ_FLD_UTC_MIN, 0, 59, -5099},
                  {TZ_FLD_UTC_SEC, 0, 59, -5100},
                  {TZ_FLD_ZONE_ID, 0, 65535, 0}};
    const assertion_watch watch;
    for (const auto &[field, lowest, highest, code] : fields) {
        for (int value = -300; value < 70'000; ++value) {
            timezone_t tz = zone_(7, 7, 7);
            const bool is_in_range = value >= lowest && value <= highest;
            ASSERT_EQ(raise_of([&] { timezone_set_field(&tz, field, value); }), is_in_range ? 0 : code)
                << value;
            for (const auto &other : fields) {
                const bool is_changed = other.field == field && (is_in_range || code == 0);
                const int old = other.field == TZ_FLD_UTC_SEC ? 0 : 7;
                ASSERT_EQ(timezone_get_field(&tz, other.field),
                          is_changed ? value & (code == 0 ? 65535 : -1) : old)
                    << value << " into " << field << ": field " << other.field;
            }
        }
    }
    EXPECT_EQ(watch.count(), 70'300u - 582);
    timezone_t tz = zone_(7);
    EXPECT_EQ(raise_of([&] { timezone_set_field(&tz, 4, 0); }), -5006);
    EXPECT_EQ(raise_of([&] { timezone_get_field(&tz, -1); }), -5006);
}

// The host's zone under TZ: every region's present offset, and what is no region.
TEST(TimezoneDefault, FollowsTheEnvironment) {
    const char *const before = getenv("TZ");
    const std::string kept = before != nullptr ? before : "";
    const auto under = [](const std::string &value) {
        setenv("TZ", value.c_str(), 1);
        tzset();
        timezone_t tz;
        timezone_get_system_default(&tz);
        return tz;
    };
    for (int id = 0; id < TZ_ID_MAX; ++id) {
        if (access((std::string("/usr/share/zoneinfo/") + region_tab_[id].canon_name).c_str(), R_OK) != 0)
            continue;
        const timezone_t tz = under(region_tab_[id].canon_name),
                         colon = under(std::string(":") + region_tab_[id].canon_name);
        const time_t now = time(nullptr);
        struct tm local;
        localtime_r(&now, &local);
        const long minutes = local.tm_gmtoff / 60;
        EXPECT_EQ(std::memcmp(&tz, &colon, sizeof tz), 0);
        EXPECT_EQ(describe_(tz),
                  std::to_string(minutes / 60) + ":" + std::to_string(std::abs(minutes % 60)) + " of 581")
            << region_tab_[id].canon_name;
    }
    EXPECT_EQ(describe_(under("europe/kyiv ")), describe_(under(":Europe/Kiev")));
    EXPECT_EQ(describe_(under("KST-9")), "9:0 of 581");
    EXPECT_EQ(describe_(under("EST5")), "-5:0 of 581");
    EXPECT_EQ(describe_(under(":Nowhere/Zone")), "0:0 of 581");
    EXPECT_EQ(describe_(under("abc")), "0:0 of 581");
    before != nullptr ? setenv("TZ", kept.c_str(), 1) : unsetenv("TZ");
    tzset();
}

// Without TZ it is found by samples: the first region with the same ones.
TEST(TimezoneDefault, IsFoundBySamples) {
    const char *const before = getenv("TZ");
    const std::string kept = before != nullptr ? before : "";
    for (int id = 0; id < TZ_ID_MAX; id += 23) {
        setenv("TZ", region_tab_[id].canon_name, 1);
        const int found = zonesmpl_search_default();
        EXPECT_LE(found, id);
        EXPECT_EQ(sample_bytes_(found), sample_bytes_(id))
            << region_tab_[id].canon_name << " found as " << region_tab_[found].canon_name;
    }
    before != nullptr ? setenv("TZ", kept.c_str(), 1) : unsetenv("TZ");
    tzset();
}
