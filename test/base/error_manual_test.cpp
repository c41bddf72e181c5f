// docs/error-codes.md against the catalogue of messages and the header with the names: a row for each code
// and no other. What its examples say that they raise, they raise in dvsqlite_test and examples_cpp.

#include <gtest/gtest.h>

#include <fstream>
#include <map>
#include <regex>
#include <set>

#include "dvtypes/base.h"
#include "project_file.h"

using namespace dv::test;

namespace {

// A chapter of the page.
struct area_t {
    std::map<int, std::string> messages{};  // by code
    std::map<int, std::string> names{};
    std::set<int> raised{};  // by its examples: "(dv-5074)", "dvtypes:-5072"
};

std::map<std::string, area_t> manual_() {
    const std::regex row(R"(\| (-\d+) \| `(\w+)` \| ([^|]+) \| [^|]+\. \| [^|]+\. \|)"),
        raised(R"(\bdv(?:types:)?(-\d+))");
    std::map<std::string, area_t> areas;
    std::ifstream file(project_file("docs/error-codes.md"));
    std::string area;
    for (std::string line; std::getline(file, line);) {
        if (line.starts_with("## ")) area = line.substr(3);
        if (area.empty()) continue;
        std::smatch found;
        if (std::regex_match(line, found, row)) {
            const bool is_new = areas[area].messages.emplace(std::stoi(found[1]), found[3]).second;
            areas[area].names.emplace(std::stoi(found[1]), found[2]);
            EXPECT_TRUE(is_new) << line;
        } else if (std::regex_search(line, found, raised)) {
            areas[area].raised.insert(std::stoi(found[1]));
        }
    }
    return areas;
}

TEST(ErrorManual, HasTheCodesOfTheCatalogueWithTheirMessages) {
    std::map<int, std::string> manual, catalogue;
    for (const auto &[area, table] : manual_()) {
        for (const auto &[code, message] : table.messages)
            EXPECT_TRUE(manual.emplace(code, message).second) << code << " is in " << area << " and before";
    }
    for (int code = -20'000; code <= 0; ++code) {  // more than all codes
        if (const char *text = dv_error_text(code); text != nullptr) catalogue[code] = text;
    }
    EXPECT_EQ(manual, catalogue);
}

TEST(ErrorManual, NamesTheCodesAsTheHeaderDoes) {
    std::map<int, std::string> manual, header;
    for (const auto &[area, table] : manual_()) manual.insert(table.names.begin(), table.names.end());
    const std::regex enumerator(R"( *(DV_ERR_\w+) = (-\d+),.*)");
    std::ifstream file(project_file("src/include/dvtypes/error_code.h"));
    for (std::string line; std::getline(file, line);) {
        std::smatch found;
        if (std::regex_match(line, found, enumerator)) header.emplace(std::stoi(found[2]), found[1]);
    }
    EXPECT_EQ(manual, header);
}

TEST(ErrorManual, ShowsEachCodeOfAnAreaRaised) {
    for (const auto &[area, table] : manual_()) {
        std::set<int> codes;
        for (const auto &[code, message] : table.messages) codes.insert(code);
        for (const int by_the_system : {DV_ERR_NO_MEMORY, DV_ERR_CHARSET_UNUSABLE})
            codes.erase(by_the_system);
        EXPECT_EQ(table.raised, codes) << area;
    }
}

}  // namespace
