// Elements by a second opinion: numbers and weeks counted another way, words spelled anew, lengths.

#include <gtest/gtest.h>

#include "dvtypes/timestamp_tz.h"
#include "model_text.h"

using namespace dv::test;
using namespace std::literals;

namespace {

// ---- English, with this library's ordinals ----

constexpr const char *_units[] = {"",        "ONE",     "TWO",       "THREE",    "FOUR",
                                  "FIVE",    "SIX",     "SEVEN",     "EIGHT",    "NINE",
                                  "TEN",     "ELEVEN",  "TWELVE",    "THIRTEEN", "FOURTEEN",
                                  "FIFTEEN", "SIXTEEN", "SEVENTEEN", "EIGHTEEN", "NINETEEN"};
constexpr const char *_tens[] = {"",      "",      "TWENTY",  "THIRTY", "FORTY",
                                 "FIFTY", "SIXTY", "SEVENTY", "EIGHTY", "NINETY"};

std::string cardinal_(int n) {
    if (n < 20) return _units[n];
    if (n < 100) return _tens[n / 10] + (n % 10 != 0 ? "-"s + _units[n % 10] : ""s);
    const auto [unit, name] = n < 1000        ? std::pair(100, " HUNDRED")
                              : n < 1'000'000 ? std::pair(1000, " THOUSAND")
                                              : std::pair(1'000'000, " MILLION");
    return cardinal_(n / unit) + name + (n % unit != 0 ? " " + cardinal_(n % unit) : "");
}

// The last word of the cardinal becomes an ordinal.
std::string ordinal_(int n) {
    static constexpr std::pair<const char *, const char *> irregular[] = {
        {"ONE", "FIRST"},  {"TWO", "SECOND"},   {"THREE", "THIRD"}, {"FOUR", "FOUTH"},
        {"FIVE", "FIFTH"}, {"EIGHT", "EIGHTH"}, {"NINE", "NINTH"},  {"TWELVE", "TWELFTH"}};
    std::string words = cardinal_(n);
    const size_t last = words.find_last_of(" -") + 1;  // npos + 1 is 0
    for (const auto &[cardinal, ordinal] : irregular) {
        if (words.substr(last) == cardinal) return words.substr(0, last) + ordinal;
    }
    if (words.back() == 'Y') words.back() = 'I';  // TWENTITH
    return words + "TH";
}

const char *suffix_(int n) {
    if (n % 100 / 10 == 1) return "TH";
    constexpr const char *suffixes[] = {"TH", "ST", "ND", "RD"};
    return suffixes[n % 10 < 4 ? n % 10 : 0];
}

std::string written_(const compiled_model &model, const dv_time_t &time) {
    return text_or_error([&](char *text, int size) { dv_time_to_str(&time, text, size, &model.ctx, 9); });
}

dv_time_t fraction_(int nanoseconds) {
    dv_time_t time{};
    dv_time_from_unit_values(&time, 0, 0, 0, nanoseconds);
    return time;
}

}  // namespace

TEST(ModelElement, SpellsNumbersAsEnglishDoes) {
    const compiled_model spelled = writing("FF9SP", DV_TYPE_TIME), ordinal = writing("FF9SPTH", DV_TYPE_TIME),
                         suffixed = writing("FMFF9TH", DV_TYPE_TIME);
    const auto expect = [&](int n) {
        const dv_time_t time = fraction_(n);
        ASSERT_EQ(written_(spelled, time), cardinal_(n));
        ASSERT_EQ(written_(ordinal, time), ordinal_(n));
        ASSERT_EQ(written_(suffixed, time), std::to_string(n) + suffix_(n));
    };
    for (int n = 1; n <= 1200; ++n) expect(n);
    for (int n = 1000; n <= 99'000; n += 1000) expect(n);
    for (int n = 100'000; n <= 999'000'000; n += n) expect(n);
    for (const int n : {1'000'000, 2'000'000, 999'999, 1'000'001, 100'000'000, 999'999'999, 900'000'011})
        expect(n);
    number_source source(1);
    for (int i = 0; i < 2000; ++i) expect(source.pick(1, 999'999'999));
}

// Centuries and what is left of them, but for the first ten years of a century.
TEST(ModelElement, SpellsYearsInHalves) {
    const compiled_model model = writing("YEAR");
    for (int year = 1; year <= DV_YEAR_MAX; ++year) {
        const int rest = year % 100;
        const std::string halves = (year < 100 ? "" : cardinal_(year / 100) + " ") + cardinal_(rest);
        ASSERT_EQ(written(model, make_date(year, 1, 1)), rest < 11 ? cardinal_(year) : halves);
    }
}

// Every day of some years by counters that go with the days; ISO weeks by their Thursday. Left out are
// 1582, whose days of the year count the ten that it lacks, and 1583, which begins in its last week.
TEST(ModelElement, CountsDaysWeeksAndQuarters) {
    const compiled_model model = writing("CC SCC YYYY Q WW W DDD D IYYY IYY IY I IW");
    for (const int year : {1,    2,    4,    100,  101,  399,  1400, 1500, 1501, 1581, 1584,
                           1600, 1900, 1901, 1999, 2000, 2001, 2004, 2024, 9899, 9901, 9999}) {
        dv_date_t date = make_date(year, 1, 1);
        int jdn = dv_date_to_julian_day(&date);
        for (int day_of_year = 1; dv_date_get_field(&date, DT_FMT_UNIT_YEAR) == year; ++day_of_year) {
            dv_date_t thursday = date;
            dv_date_from_julian_day(&thursday, jdn - jdn % 7 + 3);
            const int month = date.month, day = date.day,
                      iso_year = dv_date_get_field(&thursday, DT_FMT_UNIT_YEAR);
            const int iso = iso_year < 0 ? iso_year + 1 : iso_year;  // ISO 8601 has a year 0
            const dv_date_t first = make_date(iso_year, 1, 1);
            const int iso_week = (dv_date_to_julian_day(&thursday) - dv_date_to_julian_day(&first)) / 7 + 1;
            const int century = (year + 99) / 100;
            char want[100];
            std::snprintf(want, sizeof want, "%d %d %04d %d %02d %d %03d %d %04d %03d %02d %d %02d", century,
                          century, year, 1 + (month > 3) + (month > 6) + (month > 9), (day_of_year + 6) / 7,
                          (day + 6) / 7, day_of_year, (jdn + 1) % 7 + 1, iso, iso % 1000, iso % 100, iso % 10,
                          iso_week);
            ASSERT_EQ(written(model, date), want) << describe(date);
            if (year == 9999 && day_of_year == 365) break;
            dv_date_from_julian_day(&date, ++jdn);
        }
    }
}

// But for these, no text is longer than predicted; theirs are as long as documented.
TEST(ModelLength, IsThatOfTheLongestTextButForSome) {
    constexpr std::pair<std::string_view, size_t> longer[] = {{"RM", 4},  {"CC", 3}, {"IYYY", 5},
                                                              {"IYY", 4}, {"IY", 3}, {"I", 2}};
    for (size_t id = 0; id < dv::impl::FMT_TOKEN_IDS_END; ++id) {
        const char *const element = dv::impl::fmt_tokens_[id].token;
        if (!dv::impl::is_keyword(id) || "J"s == element ||
            raise_of([=] { dv_date_check_format(element, 0); }) != 0)
            continue;
        compiled_model model = writing(element);
        set_language(model, "AMERICAN");
        size_t longest = 0;
        for (int year = -9999; year <= 9999; year += year == -1 ? 2 : 1) {
            const dv_date_t date =
                make_date(year, 1 + (year + 9999) % 12, 1 + (year + 9999) % 28, (year + 9999) % 24, 59, 59);
            longest = std::max(longest, written(model, date).size());
        }
        const auto *const found =
            std::ranges::find(longer, element, &std::pair<std::string_view, size_t>::first);
        if (found != std::end(longer))
            EXPECT_EQ(longest, found->second) << element;
        else
            EXPECT_LE(longest, static_cast<size_t>(dv_date_get_length(element, 0))) << element;
    }
}
