// The words that messages list against what the library takes, and names of regions that are near.

#include <gtest/gtest.h>

#include <algorithm>

#include "dvtypes/datetime_fmt.h"
#include "dvtypes/number_fmt.h"
#include "raise.h"
#include "sql_region.h"
#include "sql_words.h"

using namespace dv::impl;
using namespace dv::test;

namespace {

bool is_element_(const std::string &word) {
    dt_fmt_ctx_t model{};
    const int code = raise_of([&] {
        dt_fmt_ctx_set(_system_allocator, &model, word.data(), static_cast<int>(word.size()), DV_TYPE_TS_TZ,
                       /*is_from_str=*/0, DVSTR_CHARSET_UTF8);
    });
    const bool is_one = code == 0 && model.token_cnt <= 1;  // FM and FX are none of their own
    dt_fmt_ctx_reset(_system_allocator, &model);
    return is_one;
}

bool is_unit_(const std::string &word) {
    dv_date_t date{};
    dv_date_from_unit_values(&date, 2024, 2, 29, 0, 0, 0);
    return raise_of([&] { dv_date_trunc(&date, word.data(), static_cast<int>(word.size())); }) == 0;
}

// Each is one, there are as many elements as the library has, and the units are those that truncation takes.
TEST(SqlExplain, ListsTheElementsAndUnitsThatThereAre) {
    EXPECT_EQ(std::size(SQL_MODEL_ELEMENTS), DT_FMT_TOKEN_FX + 1u);
    for (const char *word : SQL_MODEL_ELEMENTS) {
        EXPECT_TRUE(is_element_(word)) << word;
        const bool is_listed = std::ranges::count(SQL_UNITS, std::string_view(word)) == 1;
        EXPECT_EQ(is_unit_(word), is_listed) << word;
    }
    for (const char *unit : SQL_UNITS)
        EXPECT_EQ(std::ranges::count(SQL_MODEL_ELEMENTS, std::string_view(unit)), 1) << unit;
    for (const char *word : SQL_NUMBER_MODEL_ELEMENTS) {
        const std::string name = word, model = name.substr(name.rfind(' ') + 1);
        const bool is_alone = model != "$" && model != "C" && model != "L" && model != "U" && model != "S" &&
                              model != "MI" && model != "PR" && model != "EEEE" && model != "FM";
        const std::string whole = is_alone ? model : model == "$" ? "$9" : "9" + model;
        const std::string in_front = "FM9";
        const std::string &text = model == "FM" ? in_front : whole;
        EXPECT_EQ(raise_of([&] { number_format_check(text.data(), static_cast<int>(text.size())); }), 0)
            << text;
    }
}

std::string near_(const char *text) {
    sql_text_list list;
    sql_append_near_regions(list, text);
    return list.text();
}

// With one letter changed, left out or put in, each region's name is near to it.
TEST(SqlExplain, NamesRegionsThatAreNear) {
    for (const tz_region_t &region : region_tab_) {
        const std::string name = region.canon_name;
        if (name.size() < 8) continue;
        std::string changed = name, shorter = name, longer = name;
        changed[name.size() - 2] = '_';
        shorter.erase(name.size() - 2, 1);
        longer.insert(name.size() - 2, 1, 'x');
        for (const std::string &other : {changed, shorter, longer}) {
            if (zonetab_search_region(other.c_str()) != nullptr) continue;
            EXPECT_NE(near_(("at 2024 " + other).c_str()).find("Near to it is "), std::string::npos) << other;
        }
    }
    EXPECT_EQ(near_("Mars/Base"), "");
    EXPECT_EQ(near_("Seul"), " Near to it is Asia/Seoul.");
    EXPECT_EQ(near_(""), "");
    EXPECT_EQ(near_(std::string(500, 'a').c_str()), "");
}

}  // namespace
