// TRUNC and ROUND: what every unit promises, and the boundaries of each.

#include <gtest/gtest.h>

#include <array>

#include "model_text.h"

using namespace dv::test;

namespace {

dv_date_t truncated_(dv_date_t date, const char *unit) {
    dv_date_trunc(&date, unit, 0);
    return date;
}

dv_date_t rounded_(dv_date_t date, const char *unit) {
    dv_date_round(&date, unit, 0);
    return date;
}

// Units from long to short, with one of another name for each rule; the ISO year is no ladder of its own.
constexpr std::array _units = {"CC", "YYYY", "Q", "MM", "WW", "W", "IW", "D", "DD", "HH24", "MI"};
constexpr std::array _aliases = {"scc", "Syear", "q", "RM", "ww", "w", "iw", "Dy", "J", "hh", "mi"};

// The beginning of the unit behind the one that begins at `start`.
dv_date_t next_start_(const dv_date_t &start, const char *unit) {
    dv_date_t next = start;
    do {
        dv_date_add_field(&next,
                          unit == _units[9] || unit == _units[10] ? DT_FMT_UNIT_MINUTE : DT_FMT_UNIT_DAY, 1);
    } while (truncated_(next, unit) == start);
    return next;
}

}  // namespace

// A start is its own start, lies not behind the date, and keeps the order; rounding gives it or the next one.
TEST(DateTruncate, GivesTheStartOfAUnitAndRoundingOneOfTwo) {
    number_source source(3);
    for (size_t i = 0; i < _units.size(); ++i) {
        const char *const unit = _units[i];
        for (int n = 0; n < 400; ++n) {
            dv_date_t date = random_date(source);
            // Behind the reform, and before the last century's next one.
            dv_date_from_julian_day(&date, source.pick(2299605, 5336960));
            const dv_date_t start = truncated_(date, unit), rounded = rounded_(date, unit);
            EXPECT_EQ(truncated_(date, _aliases[i]), start) << describe(date);
            EXPECT_EQ(truncated_(start, unit), start) << unit << ' ' << describe(date);
            const bool is_turn_of_century = i == 0 && date.year == 100;  // the last year of a century goes up
            EXPECT_EQ(dv_date_compare(&start, &date) <= 0, !is_turn_of_century)
                << unit << ' ' << describe(date);
            if (rounded == start || i == 0) continue;
            EXPECT_EQ(rounded, next_start_(start, unit)) << unit << ' ' << describe(date);
        }
    }
}

TEST(DateTruncate, TurnsAtTheMiddle) {
    constexpr std::tuple<const char *, const char *, const char *> cases[] = {
        // unit, last text that goes down, first that goes up
        {"CC", "2050-12-31 23:59:59", "2051-01-01 00:00:00"},
        {"YY", "2024-06-30 23:59:59", "2024-07-01 00:00:00"},
        {"Q", "2024-02-15 23:59:59", "2024-02-16 00:00:00"},
        {"Q", "2024-11-15 23:59:59", "2024-11-16 00:00:00"},
        {"MM", "2024-12-15 23:59:59", "2024-12-16 00:00:00"},
        {"WW", "2024-01-04 23:59:59", "2024-01-05 00:00:00"},
        {"W", "2024-02-04 23:59:59", "2024-02-05 00:00:00"},
        {"IW", "2024-02-29 23:59:59", "2024-03-01 00:00:00"},
        {"DAY", "2024-02-28 11:59:59", "2024-02-28 12:00:00"},
        {"DD", "2024-02-29 11:59:59", "2024-02-29 12:00:00"},
        {"HH", "2024-02-29 23:29:59", "2024-02-29 23:30:00"},
        {"MI", "2024-02-29 23:59:29", "2024-02-29 23:59:30"}};
    const compiled_model reader = reading("YYYY-MM-DD HH24:MI:SS");
    for (const auto &[unit, down, up] : cases) {
        dv_date_t date{};
        ASSERT_EQ(read(reader, down, date), 0);
        EXPECT_EQ(rounded_(date, unit), truncated_(date, unit)) << unit;
        const dv_date_t start = truncated_(date, unit);
        ASSERT_EQ(read(reader, up, date), 0);
        EXPECT_EQ(truncated_(date, unit), start) << unit;
        const dv_date_t rounded = rounded_(date, unit);
        EXPECT_GT(dv_date_compare(&rounded, &date), 0) << unit;
    }
}

TEST(DateTruncate, KnowsCenturiesBcAndIsoYears) {
    EXPECT_EQ(truncated_(make_date(2000, 5, 5), "CC"), make_date(2001, 1, 1));
    EXPECT_EQ(truncated_(make_date(-250, 5, 5), "CC"), make_date(-300, 1, 1));
    EXPECT_EQ(rounded_(make_date(-250, 5, 5), "CC"), make_date(-200, 1, 1));
    EXPECT_EQ(rounded_(make_date(-251, 5, 5), "CC"), make_date(-300, 1, 1));
    EXPECT_EQ(rounded_(make_date(-1, 12, 5), "YYYY"), make_date(1, 1, 1));
    const compiled_model iso = writing("IW");
    for (int year = 1583; year < 2500; ++year) {
        const dv_date_t start = truncated_(make_date(year, 6, 15), "IYYY");
        dv_date_t sunday = start;
        dv_date_add_day(&sunday, 6);
        EXPECT_EQ(dv_date_to_julian_day(&start) % 7, 0) << year;
        EXPECT_EQ(written(iso, start) + written(iso, sunday), "0101") << year;
        EXPECT_EQ(rounded_(make_date(year, 8, 1), "I"), truncated_(make_date(year + 1, 2, 1), "iyy"));
    }
}

TEST(DateTruncate, RefusesWhatIsNoUnit) {
    dv_date_t date = make_date(2024, 2, 29, 13);
    for (const char *unit :
         {"RR", "RRRR", "AD", "AM", "SS", "SSSSS", "FF", "X", "TZR", "FM", "YYYYX", "MM ", "-", "H"}) {
        EXPECT_EQ(raise_of([&] { dv_date_trunc(&date, unit, 0); }), -5014) << unit;
    }
    EXPECT_EQ(raise_of([&] { dv_date_round(&date, "MM", -1); }), -5014);
    EXPECT_EQ(raise_of([&] { dv_date_trunc(&date, "MM", 2); }), 0);
    for (const char *unit : {"", static_cast<const char *>(nullptr)}) {
        date = make_date(2024, 2, 29, 13);
        dv_date_round(&date, unit, 0);
        EXPECT_EQ(date, make_date(2024, 3, 1));
    }
    date = make_date(9999, 12, 31, 12);
    for (const char *unit : {"CC", "YYYY", "Q", "MM", "DD"}) {
        EXPECT_EQ(raise_of([&] { dv_date_round(&date, unit, 0); }), -5114) << unit;
    }
}
