// tzgen over forms of one tz database: the packagers' choices must not show in the tables.

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <map>
#include <set>
#include <sstream>

#include "dvtypes/timezone.h"

namespace {

std::string content_(const std::filesystem::path &path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

// A source in zic's language: zones by name, each with its lines behind the name; links by name; the rest.
struct tz_source {
    std::string rest;
    std::map<std::string, std::string> zones, links;

    explicit tz_source(const std::filesystem::path &path) {
        std::ifstream file(path);
        std::string *zone = nullptr;
        for (std::string line; std::getline(file, line);) {
            std::istringstream words(line);
            std::string key, first, second;
            words >> key >> first >> second;
            if (key == "L") {
                links[second] = first;
            } else if (key == "Z") {
                zone = &zones[first];
                *zone = line.substr(2 + first.size()) + "\n";
            } else {
                const bool is_of_zone = !line.empty() && line[0] != '#' && line[0] != 'R';
                (is_of_zone ? *zone : rest) += line + "\n";
            }
        }
    }

    std::string text() const {
        std::string text = rest;
        for (const auto &[name, lines] : zones) text.append("Z ").append(name).append(lines);
        for (const auto &[name, target] : links)
            text.append("L ").append(target).append(" ").append(name).append("\n");
        return text;
    }
};

tz_source links_as_copies_(tz_source source) {
    for (const auto &[name, target] : source.links) {
        const auto link = source.links.find(target);
        source.zones[name] = source.zones.at(link == source.links.end() ? target : link->second);
    }
    source.links.clear();
    return source;
}

// A link becomes the zone, and the zone a link to it.
tz_source links_the_other_way_(tz_source source) {
    const auto links = source.links;
    for (const auto &[name, target] : links) {
        if (!source.zones.contains(target)) continue;
        source.zones[name] = source.zones.at(target);
        source.zones.erase(target);
        source.links.erase(name);
        source.links[target] = name;
    }
    return source;
}

// Without those that the project knows.
tz_source without_links_(tz_source source) {
    std::ifstream known(DV_ZONE_LINKS);
    for (std::string name, rest; known >> name && std::getline(known, rest);) source.links.erase(name);
    return source;
}

class Tzgen : public testing::Test {
  protected:
    std::filesystem::path folder_ = testing::TempDir() + "tzgen" + std::to_string(getpid());

    ~Tzgen() override { std::filesystem::remove_all(folder_); }

    // The exit status; the tables and what tzgen said are in the folder of the form.
    int run_(const std::string &form, const std::string &source, const std::string &option = "") const {
        const std::filesystem::path folder = folder_ / form;
        std::filesystem::create_directories(folder);
        std::ofstream(folder / "tzdata.zi") << source;
        return system((DV_TEST_EMULATOR " " DV_TZGEN " " + (folder / "tzdata.zi").string() + " " +
                       folder.string() + " " + option + " >" + (folder / "said").string() + " 2>&1")
                          .c_str());
    }
    std::map<std::string, std::string> tables_(const std::string &form) const {
        std::map<std::string, std::string> tables;
        for (const auto &entry : std::filesystem::recursive_directory_iterator(folder_ / form)) {
            const std::string name = entry.path().lexically_relative(folder_ / form).string();
            if (!entry.is_directory() && name != "tzdata.zi" && name != "said" &&
                !name.starts_with("compiled"))
                tables[name] = content_(entry.path());
        }
        return tables;
    }
    bool finds_(const std::string &form, const std::string &alias, const std::string &number) const {
        const std::string row = "{\"" + alias + "\", " + number + "},";
        return content_(folder_ / form / "zone_tables.cpp").find(row) != std::string::npos;
    }
};

}  // namespace

TEST_F(Tzgen, MakesTheSameTablesOfEveryFormOfARelease) {
    const tz_source source(DV_TZDATA);
    ASSERT_EQ(run_("plain", source.text()), 0) << content_(folder_ / "plain/said");
    const auto plain = tables_("plain");
    ASSERT_GE(plain.size(), 10u);
    for (const auto &[form, text] : {std::pair("copies", links_as_copies_(source).text()),
                                     std::pair("reversed", links_the_other_way_(source).text()),
                                     std::pair("none", without_links_(source).text())}) {
        EXPECT_EQ(run_(form, text), 0) << form << ": " << content_(folder_ / form / "said");
        for (const auto &[name, bytes] : tables_(form))
            EXPECT_TRUE(plain.at(name) == bytes) << form << ' ' << name;
    }
    EXPECT_TRUE(finds_("plain", "europe/kyiv", "434"));  // the new name of Europe/Kiev
    EXPECT_TRUE(
        finds_("plain", "europe/busingen", "471"));  // later than the regions; keeps time with Europe/Zurich
    EXPECT_FALSE(finds_("plain", "america/punta_arenas", ""));
}

TEST_F(Tzgen, NamesTheReleaseOfItsSource) {
    const std::string source = content_(DV_TZDATA);
    if (!source.starts_with("# version ")) GTEST_SKIP() << "no release in " DV_TZDATA;
    EXPECT_STREQ(zonetab_get_version(), source.substr(10, source.find('\n') - 10).c_str());
}

TEST_F(Tzgen, TakesANewNameOfARegionForOneAndRefusesALostRegion) {
    tz_source linked(DV_TZDATA), copied = linked, lost = linked;
    linked.links["Asia/Hanyang"] = "Asia/Seoul";
    copied.zones["Asia/Hanyang"] = copied.zones.at("Asia/Seoul");
    lost.zones.erase("Asia/Dili");
    EXPECT_EQ(run_("linked", linked.text()), 0);
    EXPECT_EQ(run_("copied", copied.text()), 0);
    EXPECT_TRUE(finds_("linked", "asia/hanyang", "301"));
    EXPECT_TRUE(tables_("linked") == tables_("copied"));
    EXPECT_NE(run_("lost", lost.text()), 0);
    const std::string said = content_(folder_ / "lost/said");
    EXPECT_TRUE(said.starts_with("tzgen: Asia/Dili: ") && said.find("-DDV_TZDATA=FILE") != std::string::npos)
        << said;
}

TEST_F(Tzgen, MakesTheHistoriesOf2011OfThatRelease) {
    if (!std::filesystem::exists(DV_TZDATA_2011)) GTEST_SKIP() << "no file " DV_TZDATA_2011;
    ASSERT_EQ(run_("2011", content_(DV_TZDATA_2011), "--list"), 0);
    std::set<std::string> missing = {
        "580 regions, 91902 entries, largest 674",
        "America/New_York: 524",
        "Asia/Seoul: 26",
        "Asia/Seoul 0 +9:00:00 1988-10-08 14:00:00 1988-10-08 23:00:00 KST",
        "Asia/Seoul 1 +10:00:00 1988-10-08 13:59:59 1988-10-08 23:59:59 KDT",
        "Asia/Seoul 2 +10:00:00 1988-05-07 15:00:00 1988-05-08 01:00:00 KDT",
        "Asia/Seoul 3 +9:00:00 1988-05-07 14:59:59 1988-05-07 23:59:59 KST",
        "Asia/Seoul 25 +8:27:52 1889-12-31 15:32:07 1889-12-31 23:59:59 LMT",
    };
    std::istringstream said(content_(folder_ / "2011/said"));
    for (std::string line; std::getline(said, line);) missing.erase(line);
    EXPECT_TRUE(missing.empty()) << testing::PrintToString(missing);
}
