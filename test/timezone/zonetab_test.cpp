// The time zone tables against the C library, which reads compiled zones and follows their rules itself.

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <set>
#include <sstream>

#include "dvtypes/timezone.h"

namespace {

const std::filesystem::path _zoneinfo = "/usr/share/zoneinfo";

time_t instant_(const dv_date_t &d) {
    tm fields{d.second, d.minute, d.hour, d.day, d.month - 1, d.century * 100 + d.year - 12000,
              0,        0,        0,      0,     ""};
    return timegm(&fields);
}

int offset_(const tz_info_t &entry) { return entry.utc_hour * 3600 + entry.utc_min * 60 + entry.utc_sec; }
std::string text_(const tz_info_t &entry) { return std::to_string(offset_(entry)) + " " + entry.abbrev; }

void expect_local_time_(const tz_info_t &info, time_t at) {
    const tm *local = localtime(&at);
    const std::string want = std::to_string(local->tm_gmtoff) + " " + local->tm_zone;
    ASSERT_EQ(text_(info), want.substr(0, want.find(' ') + 9)) << at;
}

// In order, too: pairs a second apart, newest first, each beginning with what the next newer one ends.
void expect_changes_(const tz_region_t &region) {
    if (region.info_cnt == 1) return expect_local_time_(region.infos[0], 0);
    ASSERT_EQ(region.info_cnt % 2, 0);
    for (int i = 0; i < region.info_cnt; ++i) {
        const tz_info_t &info = region.infos[i], &newer = region.infos[i == 0 ? 0 : i - 1];
        const time_t at = instant_(info.normal), after = instant_(newer.normal) - at;
        expect_local_time_(info, at);
        expect_local_time_(info, i % 2 == 0 ? at + 1 : at - 1);
        ASSERT_EQ(instant_(info.local) - at, offset_(info)) << i;
        ASSERT_TRUE(i % 2 == 1 ? after == 1 : i == 0 || (after > 0 && text_(info) == text_(newer))) << i;
    }
}

void expect_samples_(const tz_region_t &region) {
    for (int j = 0; j < TZ_SAMPLE_COUNT; ++j) {
        const time_t at = 974937600 - j * time_t{7862400};
        const tz_smpl_tm_t &sample = sample_tab_[region.id].stms[j];
        const tm *local = localtime(&at);  // begins with the same nine integers
        ASSERT_TRUE(memcmp(&sample, local, 9 * sizeof(int)) == 0) << j << " " << asctime(local);
        ASSERT_EQ(std::string(local->tm_zone).substr(0, 8), sample.abbrev) << j;
    }
}

TEST(ZoneTables, AgreeWithTheInstalledZonesOfTheirRelease) {
    std::string line, key, target, name;
    std::ifstream file(_zoneinfo / "tzdata.zi");
    std::getline(file, line);
    if (line != std::string("# version ") + zonetab_get_version()) GTEST_SKIP() << "other release: " << line;
    while (std::getline(file, line)) {  // "L target name": a later name is one or the other
        std::istringstream(line) >> key >> target >> name;
        const tz_region_t *a = zonetab_search_region(name.c_str()),
                          *b = zonetab_search_region(target.c_str());
        EXPECT_TRUE(key != "L" || (a != nullptr && b != nullptr && a->infos == b->infos)) << line;
    }
    EXPECT_STREQ(zonetab_search_region("Europe/KYIV")->canon_name, "Europe/Kiev");
    const std::string before = getenv("TZ") == nullptr ? ":/etc/localtime" : getenv("TZ");
    for (const tz_region_t &region : region_tab_) {
        if (!std::filesystem::exists(_zoneinfo / region.canon_name)) continue;
        SCOPED_TRACE(region.canon_name);
        setenv("TZ", region.canon_name, /*overwrite=*/1);
        expect_changes_(region);
        expect_samples_(region);
    }
    setenv("TZ", before.c_str(), /*overwrite=*/1);
    tzset();
}

TEST(ZoneTables, FindEveryNameInAnyLetterCaseAndNothingElse) {
    std::set<std::string> names;
    for (const tz_region_t &region : region_tab_) names.insert(region.lc_name);
    for (const tz_region_t &region : region_tab_) {
        std::string name = region.canon_name;
        EXPECT_EQ(zonetab_search_region(name.c_str()), &region) << name;
        EXPECT_TRUE(&region_tab_[region.id] == &region && sample_tab_[region.id].id == region.id) << name;
        for (char &c : name) {  // the bit of letter case, also where it is another character's
            const bool is_letter = isalpha(c) != 0;
            c ^= 0x20;
            EXPECT_EQ(zonetab_search_region(name.c_str()) == &region, is_letter) << name;
            c ^= 0x20;
        }
        for (size_t i = 0; i < name.size(); i += 2) name[i] = static_cast<char>(toupper(name[i]));
        EXPECT_EQ(zonetab_search_region(name.c_str()), &region) << name;
        name = region.lc_name + std::string("0");
        EXPECT_EQ(zonetab_search_region(name.c_str()) != nullptr, names.contains(name)) << name;
        name.resize(name.size() - 2);
        EXPECT_EQ(zonetab_search_region(name.c_str()) != nullptr, names.contains(name)) << name;
    }
    EXPECT_TRUE(zonetab_search_region("") == &region_tab_[412] &&
                zonetab_search_region(nullptr) == &region_tab_[412]);
    EXPECT_EQ(zonetab_search_region("America/Punta_Arenas"), nullptr);
}

}  // namespace
