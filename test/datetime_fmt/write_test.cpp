// Dates and times as text: against the C library, in words, and at the end of the buffer.

#include <gtest/gtest.h>

#include <ctime>
#include <map>
#include <sstream>

#include "model_text.h"

using namespace dv::test;

namespace {

constexpr int _epoch = 2440588;  // day number of 1970-01-01

std::string by_c_library_(const char *format, const dv_date_t &date) {
    const int64_t days = dv_date_to_julian_day(&date) - _epoch;
    const time_t time = ((days * 24 + date.hour) * 60 + date.minute) * 60 + date.second;
    struct tm utc;
    gmtime_r(&time, &utc);
    char text[128];
    strftime(text, sizeof text, format, &utc);
    return text;
}

// A number in words as a reader would count it; ordinals by the cardinals that they are made of.
int counted_(std::string words) {
    static const std::map<std::string, int> units = {
        {"ONE", 1},      {"TWO", 2},        {"THREE", 3},     {"FOUR", 4},      {"FIVE", 5},
        {"SIX", 6},      {"SEVEN", 7},      {"EIGHT", 8},     {"NINE", 9},      {"TEN", 10},
        {"ELEVEN", 11},  {"TWELVE", 12},    {"THIRTEEN", 13}, {"FOURTEEN", 14}, {"FIFTEEN", 15},
        {"SIXTEEN", 16}, {"SEVENTEEN", 17}, {"EIGHTEEN", 18}, {"NINETEEN", 19}, {"TWENTY", 20},
        {"THIRTY", 30},  {"FORTY", 40},     {"FIFTY", 50},    {"SIXTY", 60},    {"SEVENTY", 70},
        {"EIGHTY", 80},  {"NINETY", 90}};
    for (char &c : words) c = c == '-' ? ' ' : c;
    std::istringstream in(words);
    int total = 0, group = 0;
    for (std::string word; in >> word;) {
        if (word == "HUNDRED") {
            group *= 100;
        } else if (word == "THOUSAND") {
            total += group * 1000;
            group = 0;
        } else {
            group += units.at(word);
        }
    }
    return total + group;
}

}  // namespace

// Years of four digits behind the reform; the fields of the C locale are those of American models.
TEST(ModelWrite, AgreesWithTheCLibrary) {
    compiled_model names = writing("FMMonth Mon Day Dy");
    set_language(names, "AMERICAN");
    compiled_model numbers = writing("YYYY-MM-DD DDD HH24:MI:SS HH AM IYYY IW");
    set_language(numbers, "AMERICAN");
    number_source source(1);
    for (int day = 2299605; day <= DV_JULIAN_DAY_MAX; day += source.pick(1, 40)) {  // from 1584
        dv_date_t date = random_date(source);
        dv_date_from_julian_day(&date, day);
        ASSERT_EQ(written(numbers, date), by_c_library_("%Y-%m-%d %j %H:%M:%S %I %p %G %V", date))
            << describe(date);
        ASSERT_EQ(written(names, date), by_c_library_("%B %b %A %a", date)) << describe(date);
    }
}

TEST(ModelWrite, SpellsNumbersThatCountBack) {
    const compiled_model seconds = writing("SSSSSSP");
    const compiled_model year = writing("YEAR");
    for (int second = 1; second < 24 * 60 * 60; second += 7) {
        const dv_date_t date = make_date(2024, 1, 1, second / 3600, second / 60 % 60, second % 60);
        ASSERT_EQ(counted_(written(seconds, date)), second);
    }
    for (int y = 1; y <= DV_YEAR_MAX; ++y) {
        const std::string words = written(year, make_date(y, 1, 1));
        // Two numbers below a hundred, or one.
        const size_t century_end = y % 100 < 11 ? 0 : words.rfind(' ') + 1;
        const int century = century_end > 1 ? counted_(words.substr(0, century_end)) * 100 : 0;
        ASSERT_EQ(century + counted_(words.substr(century_end)), y) << words;
    }
}

TEST(ModelWrite, KeepsSpellingsCasesAndPadding) {
    constexpr std::pair<const char *, const char *> cases[] = {
        {"DDTH ddth Ddth FMDDTH", "04TH 04th 04th 4TH"},
        {"DDSPTH DDTHSP ddspth Ddspth", "FOUTH FOUTH fouth fouth"},
        {"MISP HH24SPTH", "ZERO ZEROTH"},
        {"SYEAR|Year|year", " TWENTY TWENTY-FOUR|Twenty Twenty-Four|twenty twenty-four"},
        {"Month|MON|RM|Day|Dy|FMRM", "February |FEB|II  |Sunday   |Sun|II"},
        {"CC SCC Q W WW D IY", "21 21 1 1 05 1 24"},
        {"\"\"\"a\" X,FM-FX.", "a ,-."},
        {"ad A.D. bc B.c.", "ad A.D. ad A.D."}};
    const dv_date_t date = make_date(2024, 2, 4);
    for (const auto &[model, text] : cases) {
        EXPECT_EQ(written(model, date), text) << model;
    }
    EXPECT_EQ(written("SYEAR SYYYY YYYY IYYY", make_date(-44, 3, 15)), "-FORTY-FOUR -0044 0044 -0043");
    EXPECT_EQ(written("YYYY", null_dv_date), "");
    EXPECT_EQ(written("J", date).substr(0, 5), "-5054");
}

// Every length of every buffer gets the beginning of the text, and nothing behind it.
TEST(ModelWrite, StopsAtTheEndOfTheBuffer) {
    const dv_date_t date = make_date(2024, 2, 4, 13, 5, 9);
    for (const char *model :
         {"FMDay, DD Month YYYY HH:MI AM", "YEAR DDSPTH", "SSSSSTH \"literal\" -", "DD", "RM"}) {
        compiled_model compiled = writing(model);
        set_language(compiled, "RUSSIAN");
        const std::string whole = written(compiled, date);
        for (int size = 1; size <= static_cast<int>(whole.size()) + 1; ++size) {
            const guarded buffer(static_cast<size_t>(size));
            const long status = dv_date_to_str(&date, buffer.text(), size, &compiled.ctx);
            const auto room = static_cast<size_t>(size);
            EXPECT_TRUE(buffer.intact()) << model << ' ' << size;
            EXPECT_EQ(status, room < whole.size() ? CONV_STATUS_CUT : CONV_STATUS_WHOLE)
                << model << ' ' << size;
            EXPECT_EQ(std::string(buffer.text(), std::min(room, whole.size())), whole.substr(0, room))
                << model;
            EXPECT_TRUE(room <= whole.size() || buffer.text()[whole.size()] == '\0') << model;
        }
        char none[1];
        EXPECT_EQ(raise_of([&] { dv_date_to_str(&date, none, 0, &compiled.ctx); }), -5007);
    }
}

TEST(ModelWrite, CutsFractions) {
    dv_time_t time;
    dv_time_from_unit_values(&time, 13, 14, 15, 120456789);
    const auto text = [&](const char *model, int fprec) {
        const compiled_model compiled = writing(model, DV_TYPE_TIME);
        return text_or_error(
            [&](char *to, int size) { dv_time_to_str(&time, to, size, &compiled.ctx, fprec); });
    };
    for (int digits = 1; digits <= 9; ++digits) {
        const std::string fraction = std::string("120456789").substr(0, static_cast<size_t>(digits));
        EXPECT_EQ(text(("SSXFF" + std::to_string(digits)).c_str(), 9), "15." + fraction);
        EXPECT_EQ(text("SSXFF", digits), "15." + fraction);
    }
    EXPECT_EQ(text("SSXFF", 0), "15");
    EXPECT_EQ(text("FF", 10).substr(0, 5), "-5041");
}
