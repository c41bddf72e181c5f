// Time zone operations: offsets and local times against the stated scan over every region, texts, the host's
// zone.

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

// The entry in force in UTC, by the scan from the newest on.
const tz_info_t &scan_utc_(const tz_region_t &region, const dv_date_t &utc) {
    for (int i = 0; i < region.info_cnt; ++i) {
        if (dv_date_compare(&region.infos[i].normal, &utc) <= 0) return region.infos[i];
    }
    return region.infos[region.info_cnt - 1];
}

// The same for a local time; a code for one that is refused.
struct scanned_t {
    int code;
    const tz_info_t *info;
};
scanned_t scan_local_(const tz_region_t &region, const dv_date_t &local, const char *abbrev) {
    if (region.info_cnt == 1) return {0, region.infos};
    const auto is = [&](const tz_info_t &info) { return std::strcmp(info.abbrev, abbrev) == 0; };
    for (int i = 0; i < region.info_cnt; i += 2) {
        const tz_info_t &n = region.infos[i], &p = region.infos[i + 1];
        const bool is_from_n = dv_date_compare(&local, &n.local) >= 0,
                   is_to_p = dv_date_compare(&local, &p.local) <= 0;
        if (is_from_n && is_to_p) {
            if (*abbrev == '\0' || is(n)) return {0, &n};
            return is(p) ? scanned_t{0, &p} : scanned_t{-5109, nullptr};
        }
        if (is_from_n) return *abbrev == '\0' || is(n) ? scanned_t{0, &n} : scanned_t{-5109, nullptr};
        if (!is_to_p) return {-5110, nullptr};
    }
    return {0, &region.infos[region.info_cnt - 1]};
}

void expect_utc_scan_(int id, const dv_date_t &date) {
    const tz_region_t &region = region_tab_[id];
    const tz_info_t &want = scan_utc_(region, date);
    timezone_t tz = zone_(id), out{};
    timezone_adjust(&tz, &date);
    ASSERT_EQ(tz.utc_hour - 100, want.utc_hour) << region.canon_name << ' ' << describe(date);
    ASSERT_EQ(tz.utc_min, std::abs(want.utc_min)) << region.canon_name << ' ' << describe(date);
    dv_date_t east = date, shifted = date;
    timezone_localize(&tz, &east, &out);
    timezone_shift_to_east(&tz, &shifted);
    ASSERT_TRUE(east == shifted && std::memcmp(&out, &tz, sizeof tz) == 0) << region.canon_name;
    char abbrev[16];
    timezone_get_zone_abbr(&tz, &date, abbrev, sizeof abbrev);
    ASSERT_STREQ(abbrev, want.abbrev);
}

void expect_local_scan_(int id, const dv_date_t &date, const char *abbrev) {
    const tz_region_t &region = region_tab_[id];
    const scanned_t want = scan_local_(region, date, abbrev);
    timezone_t tz = zone_(id);
    dv_date_t utc = date;
    const int code = raise_of([&] { timezone_normalize(&tz, &utc, abbrev); });
    ASSERT_EQ(code, want.code) << region.canon_name << ' ' << describe(date) << abbrev;
    if (code != 0) return;
    ASSERT_EQ(tz.utc_hour - 100, want.info->utc_hour) << region.canon_name << ' ' << describe(date) << abbrev;
    timezone_shift_to_east(&tz, &utc);
    ASSERT_EQ(utc, date) << region.canon_name;
}

void expect_scan_(int id, const dv_date_t &date) {
    expect_utc_scan_(id, date);
    for (const char *abbrev : {"", scan_utc_(region_tab_[id], date).abbrev, "XXX"})
        expect_local_scan_(id, date, abbrev);
}

std::string_view sample_bytes_(int id) {
    return {reinterpret_cast<const char *>(sample_tab_[id].stms), sizeof sample_tab_[id].stms};
}

}  // namespace

// At, one second before and one second behind every entry of every region, in UTC and in local time.
TEST(TimezoneHistory, IsFoundAsByTheScanFromTheNewest) {
    for (int id = 0; id < TZ_ID_MAX; ++id) {
        const tz_region_t &region = region_tab_[id];
        if (region.info_cnt == 1) continue;
        for (int i = 0; i < region.info_cnt && !testing::Test::HasFatalFailure(); i += 2) {
            for (const int seconds : {-1, 0, 1}) {
                expect_scan_(id, moved_(region.infos[i].normal, seconds));
                expect_scan_(id, moved_(region.infos[i].local, seconds));
                expect_scan_(id, moved_(region.infos[i + 1].local, seconds));
            }
        }
        expect_scan_(id, make_date(1, 1, 1));
        expect_scan_(id, make_date(9999, 1, 1));
    }
}

TEST(TimezoneHistory, RefusesZonesThatAreNone) {
    const assertion_watch watch;
    for (const int id : {580, 582, 65535}) {
        timezone_t tz = zone_(id);
        dv_date_t date = make_date(2024, 2, 29);
        char buf[TZ_NAME_TEXT_SIZE];
        timezone_normalize(&tz, &date, nullptr);
        timezone_localize(&tz, &date, nullptr);
        timezone_adjust(&tz, &date);
        timezone_get_zone_abbr(&tz, &date, buf, sizeof buf);
        timezone_get_zone_name(&tz, buf, sizeof buf);
        EXPECT_EQ(date, make_date(2024, 2, 29));
        EXPECT_STREQ(buf, "");
    }
    EXPECT_EQ(watch.count(), 15u);
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
    for (const auto &[zone, text] :
         {std::pair(zone_(581, 9), "+09:00"), std::pair(zone_(581, -5, 30), "-05:30"),
          std::pair(zone_(581, 0, 30), "+00:30"), std::pair(zone_(301), "Asia/Seoul")}) {
        char buf[TZ_NAME_TEXT_SIZE];
        timezone_get_zone_name(&zone, buf, sizeof buf);
        EXPECT_STREQ(buf, text);
    }
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
