// Every element by a second opinion: numbers and weeks counted another way, words spelled anew, lengths and
// columns as they are documented; and what the entry points of all types check first.

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

// By the last digit alone: what is left of the hundreds of a negative number is none of 11 to 19.
TEST(ModelElement, SuffixesNegativeNumbersByTheirLastDigit) {
    constexpr std::pair<int, const char *> years[] = {{-1, "-0001ST"},  {-2, "-0002ND"},  {-3, "-0003RD"},
                                                      {-4, "-0004TH"},  {-11, "-0011ST"}, {-12, "-0012ND"},
                                                      {-13, "-0013RD"}, {-20, "-0020TH"}, {-9919, "-9919TH"},
                                                      {11, "0011TH"},   {112, "0112TH"},  {9921, "9921ST"}};
    for (const auto &[year, text] : years) EXPECT_EQ(written("SYYYYTH", make_date(year, 1, 1)), text);
    EXPECT_EQ(written("syyyyth", make_date(-11, 1, 1)), "-0011st");
    const compiled_model hours = writing("TZHTH TZMTH", DV_TYPE_TS_TZ);
    constexpr std::pair<const char *, const char *> offsets[] = {{"-11:00", "-11ST 00TH"},
                                                                 {"-12:12", "-12ND 12TH"},
                                                                 {"-03:01", "-03RD 01ST"},
                                                                 {"+11:22", "+11TH 22ND"}};
    for (const auto &[offset, text] : offsets) {
        dv_ts_tz_t value{};
        const dv_date_t date = make_date(2024, 1, 1);
        std::memcpy(&value, &date, sizeof date);
        timezone_parse(&value.tz, offset, 6);
        EXPECT_EQ(
            text_or_error([&](char *to, int size) { dv_ts_tz_to_str(&value, to, size, &hours.ctx, 0); }),
            text);
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

// Around the year that the calendar lacks, and in the year of the reform; by hand from the rules.
TEST(ModelElement, CountsWeeksWhereYearsAreIrregular) {
    constexpr std::tuple<int, int, int, const char *> cases[] = {
        {-1, 12, 31, "0000 53 BC"},  // a Friday; 1 January 1 is a Saturday
        {1, 1, 1, "0000 53 AD"},     {1, 1, 2, "0000 53 AD"},      {1, 1, 3, "0001 01 AD"},
        {-1, 1, 1, "0000 01 BC"},  // a Thursday
        {-2, 12, 31, "0000 01 BC"},  {-2, 12, 28, "-0001 52 BC"},  {-44, 3, 15, "-0043 11 BC"},
        {1582, 10, 4, "1582 40 AD"}, {1582, 10, 15, "1582 42 AD"}, {1582, 12, 31, "1582 53 AD"},
        {1583, 1, 1, "1582 53 AD"},  {1583, 1, 3, "1583 01 AD"}};
    for (const auto &[year, month, day, text] : cases)
        EXPECT_EQ(written("IYYY IW AD", make_date(year, month, day)), text);
    EXPECT_EQ(written("IYYY IYY IY I", make_date(-1234, 6, 1)), "-1233 -233 -33 -3");
    EXPECT_EQ(written("CC SCC", make_date(-100, 1, 1)) + written(" CC", make_date(-101, 1, 1)), "1 1 2");
    EXPECT_EQ(written("DDD WW", make_date(1582, 10, 4)) + written("/DDD WW", make_date(1582, 10, 15)),
              "277 40/288 42");
}

// The width of each element as predicted, with and without TH, and those that write more.
TEST(ModelLength, IsThatOfTheLongestTextButForSome) {
    constexpr std::pair<const char *, int> widths[] = {
        {"AD", 2},    {"A.D.", 4}, {"BC", 2}, {"B.C.", 4},  {"CC", 2},     {"SCC", 3},   {"IYYY", 4},
        {"IYY", 3},   {"IY", 2},   {"I", 1},  {"YEAR", 40}, {"SYEAR", 40}, {"SYYYY", 5}, {"YYYY", 4},
        {"YYY", 3},   {"YY", 2},   {"Y", 1},  {"RR", 2},    {"RRRR", 4},   {"MM", 2},    {"MON", 3},
        {"MONTH", 9}, {"RM", 1},   {"D", 1},  {"DAY", 9},   {"DD", 2},     {"DDD", 3},   {"DY", 3},
        {"WW", 2},    {"W", 1},    {"Q", 1},  {"IW", 2},    {"AM", 2},     {"P.M.", 4},  {"HH", 2},
        {"HH12", 2},  {"HH24", 2}, {"MI", 2}, {"SS", 2},    {"SSSSS", 5}};
    constexpr std::pair<std::string_view, size_t> longer[] = {{"RM", 4},  {"CC", 3}, {"IYYY", 5},
                                                              {"IYY", 4}, {"IY", 3}, {"I", 2}};
    for (const auto &[element, width] : widths) {
        compiled_model model = writing(element);
        set_language(model, "AMERICAN");
        ASSERT_EQ(dv_date_get_length(element, 0), width) << element;
        size_t longest = 0;
        for (int year = -9999; year <= 9999; year += year == -1 ? 2 : 1) {
            const dv_date_t date =
                make_date(year, 1 + (year + 9999) % 12, 1 + (year + 9999) % 28, (year + 9999) % 24, 59, 59);
            longest = std::max(longest, written(model, date).size());
        }
        size_t bound = static_cast<size_t>(width);
        for (const auto &[name, size] : longer) {
            if (name != element) continue;
            EXPECT_EQ(longest, size) << element;
            bound = size;
        }
        EXPECT_LE(longest, bound) << element;
    }
    EXPECT_EQ(dv_date_get_length("DDTH MMSP \"at\"", 0), 4 + 1 + 12 + 1 + 2);
    EXPECT_EQ(dv_time_get_length("FF FF3 FFTH SSX", 0, 6), 6 + 1 + 3 + 1 + 8 + 1 + 2 + 1);
    EXPECT_EQ(dv_timestamp_get_length("YYYY-MM-DD HH24:MI:SS.FF", 0, 9), 29);
    EXPECT_EQ(dv_ts_tz_get_length("HH TZH:TZM TZR TZD", 0, 9), 2 + 1 + 3 + 1 + 2 + 1 + 32 + 1 + 0);
    EXPECT_EQ(dv_date_get_length("YYYYMMDD", 4), 4);
    EXPECT_EQ(dv_date_get_length("", -1), 0);
}

// Of the column of each language: MON, MONTH, DAY, DY, in bytes of UTF-8.
TEST(ModelElement, PadsNamesToTheColumnOfTheLanguage) {
    constexpr std::pair<const char *, std::array<int, 4>> languages[] = {
        {"AMERICAN", {3, 9, 9, 3}},
        {"KOREAN", {4, 4, 6, 2}},
        {"JAPANESE", {4, 4, 6, 2}},
        {"VIETNAMESE", {4, 16, 8, 8}},
        {"BRAZILIAN PORTUGUESE", {3, 9, 13, 3}},
        {"TRADITIONAL CHINESE", {6, 4, 6, 4}},
        {"RUSSIAN", {3, 8, 11, 2}}};
    constexpr const char *elements[] = {"MON", "MONTH", "DAY", "DY"};
    constexpr int charsets[] = {DVSTR_CHARSET_UTF8, DVSTR_CHARSET_ASCII, DVSTR_CHARSET_MSWIN949};
    for (const auto &[language, widths] : languages) {
        for (size_t i = 0; i < std::size(elements); ++i) {
            compiled_model padded = writing(elements[i]), plain = writing("FM"s + elements[i]);
            for (const int charset : charsets) {
                set_language(padded, language, charset);
                set_language(plain, language, charset);
                for (int day = 1; day <= 12; ++day) {
                    const dv_date_t date = make_date(2024, day, day);
                    std::string want = written(plain, date);
                    want.resize(std::max(want.size(), static_cast<size_t>(widths[i])), ' ');
                    EXPECT_EQ(written(padded, date), want) << language << elements[i];
                }
            }
        }
    }
}

// Lengths before precisions, each in the name of the entry point; 9 is a precision, and so is less than none.
TEST(ModelEntry, ChecksLengthsAndPrecisionsFirst) {
    const compiled_model read = reading("HH24", DV_TYPE_TIME), write = writing("HH24", DV_TYPE_TIME);
    dv_date_t date = make_date(2024, 1, 1);
    dv_time_t time{};
    dv_timestamp_t ts{};
    dv_ts_tz_t zoned{};
    dv_ts_ltz_t local{};
    std::memcpy(&ts, &date, sizeof date);
    std::memcpy(&zoned, &date, sizeof date);
    std::memcpy(&local, &date, sizeof date);
    timezone_t utc;
    timezone_parse(&utc, "+00:00", 6);
    zoned.tz = utc;
    char text[40] = "12";
    const auto expect = [&](const char *type, bool has_precision, auto from, auto to) {
        const std::string reader = type + "_from_str"s, writer = type + "_to_str"s;
        EXPECT_EQ(raised_by([&] { from(-1, 10); }), "-5007 " + reader);
        EXPECT_EQ(raised_by([&] { to(0, 10); }), "-5007 " + writer);
        EXPECT_EQ(raised_by([&] { to(-1, 9); }), "-5007 " + writer);
        EXPECT_EQ(raised_by([&] { from(2, 10); }), has_precision ? "-5041 " + reader : "0 ");
        EXPECT_EQ(raised_by([&] { to(40, 10); }), has_precision ? "-5041 " + writer : "0 ");
        for (const int fprec : {9, 0, -1}) {
            std::memcpy(text, "12", 3);
            EXPECT_EQ(raised_by([&] { from(2, fprec); }), "0 ") << type;
            EXPECT_EQ(raised_by([&] { to(40, fprec); }), "0 ") << type;
        }
        std::memcpy(text, "12", 3);
    };
    const dt_fmt_ctx_t *const r = &read.ctx, *const w = &write.ctx;
    expect(
        "dv_date", false, [&](int n, int) { dv_date_from_str(&date, text, n, r); },
        [&](int n, int) { dv_date_to_str(&date, text, n, w); });
    expect(
        "dv_time", true, [&](int n, int p) { dv_time_from_str(&time, text, n, r, p); },
        [&](int n, int p) { dv_time_to_str(&time, text, n, w, p); });
    expect(
        "dv_timestamp", true, [&](int n, int p) { dv_timestamp_from_str(&ts, text, n, r, p); },
        [&](int n, int p) { dv_timestamp_to_str(&ts, text, n, w, p); });
    expect(
        "dv_ts_tz", true, [&](int n, int p) { dv_ts_tz_from_str(&zoned, text, n, r, p, &utc); },
        [&](int n, int p) { dv_ts_tz_to_str(&zoned, text, n, w, p); });
    for (const int length : {0, 2}) {  // of a text up to its NUL, but for TIME
        EXPECT_EQ(raised_by([&] { dv_date_from_str(&date, "12", length, r); }), "0 ");
        EXPECT_EQ(raised_by([&] { dv_timestamp_from_str(&ts, "12", length, r, 0); }), "0 ");
        EXPECT_EQ(raised_by([&] { dv_ts_tz_from_str(&zoned, "12", length, r, 0, &utc); }), "0 ");
        EXPECT_EQ(raised_by([&] { dv_time_from_str(&time, "12", length, r, 0); }),
                  length == 0 ? "-5007 dv_time_from_str" : "0 ");
    }
    EXPECT_EQ(raised_by([&] { dv_date_from_str(&date, "", 0, r); }), "-5007 dv_date_from_str");
}

TEST(ModelEntry, ChecksModelsForTheirType) {
    constexpr std::tuple<const char *, int, int, int, int> cases[] = {
        // model                       DATE   TIME   TIMESTAMP  TS_TZ
        {"YYYY-MM-DD HH24:MI:SS", 0, -5012, 0, 0},
        {"HH24:MI:SS", 0, 0, 0, 0},
        {"HH24:MI:SS.FF", -5011, 0, 0, 0},
        {"SSX", 0, 0, 0, 0},
        {"HH24 TZH", -5011, -5012, -5012, 0},
        {"YYYY TZR", -5011, -5012, -5012, 0},
        {"YYYY YYYY", -5112, -5012, -5112, -5112},
        {"DAY IW", 0, -5012, 0, 0},
        {"HH24:MI?x-", 0, 0, 0, 0},
        {"HHZ", -5014, -5014, -5014, -5014},
        {"DDTH", -5014, -5012, -5014, -5014},
        {"FF0", -5041, -5041, -5041, -5041},
    };
    for (const auto &row : cases) {
        const auto [model, date, time, timestamp, zoned] = row;
        EXPECT_EQ(raise_of([m = model] { dv_date_check_format(m, 0); }), date) << model;
        EXPECT_EQ(raise_of([m = model] { dv_time_check_format(m, 0); }), time) << model;
        EXPECT_EQ(raise_of([m = model] { dv_timestamp_check_format(m, 0); }), timestamp) << model;
        EXPECT_EQ(raise_of([m = model] { dv_ts_tz_check_format(m, 0); }), zoned) << model;
    }
}
