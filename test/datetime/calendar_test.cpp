// Every day number both ways and every date, against the formulas in floating point, the calendar walked day
// by day, and the C++ library.

#include <gtest/gtest.h>

#include <chrono>

#include "datetime/calendar.h"
#include "datetime_support.h"

using namespace dv::test;

namespace {

// Meeus, chapter 7, as it stands: in floating point, truncated toward zero.
int formula_number_(int y, int m, int d) {
    const bool is_julian = y < 1582 || (y == 1582 && (m <= 9 || (m == 10 && d < 5)));
    if (is_julian && y < 0) ++y;
    if (!is_julian && y == 1582 && m == 10 && d < 15) d = 15;
    y -= m < 3 ? 1 : 0;
    m += m < 3 ? 12 : 0;
    const int b = is_julian ? 0 : 2 - y / 100 + y / 100 / 4;
    return static_cast<int>(365.25 * (y + 4716)) + static_cast<int>(30.6001 * (m + 1)) + d + b - 1524;
}

int length_(bool is_leap, int month) { return month == 2 ? 28 + is_leap : 30 + (month + month / 8) % 2; }

// Walked is the calendar of the formulas. It is that of the leap rule from 1 AD on; before, every fourth year
// is a leap year in the formulas alone: 1 BC, 5 BC, ...
TEST(DayNumber, FollowsTheFormulasAndTheCalendarForEveryDay) {
    dv_date_t date = make_date(1, 1, 1, 1, 2, 3), before{};
    int y = -4713, m = 1, d = 1;
    for (int number = 0; number <= DV_JULIAN_DAY_MAX; ++number, before = date) {
        dv_date_from_julian_day(&date, number);
        ASSERT_TRUE(date == make_date(y, m, d, 1, 2, 3)) << number << " " << describe(date);
        ASSERT_TRUE(dv_date_to_julian_day(&date) == number && formula_number_(y, m, d) == number) << number;
        ASSERT_TRUE(dv_date_compare(&before, &date) < 0) << number << " " << describe(date);
        ASSERT_TRUE(dv_date_cmp(&before, &date) < 0 && dv_date_cmp(&date, &before) > 0 &&
                    dv_date_cmp(&date, &date) == 0)
            << number << " " << describe(date);
        const std::chrono::sys_days days{std::chrono::days{number - 2440588}};
        const auto weekday = static_cast<int>(std::chrono::weekday{days}.iso_encoding()) - 1;
        ASSERT_EQ(dv::impl::weekday(number), weekday) << number;
        const bool is_civil = days == std::chrono::sys_days{std::chrono::year{y} / m / d};
        ASSERT_TRUE(is_civil || number < DV_JULIAN_DAY_GREGORIAN) << number << " " << describe(date);
        const bool is_leap = y > 1582 ? std::chrono::year{y}.is_leap() : (y < 0 ? y + 1 : y) % 4 == 0;
        d = number + 1 == DV_JULIAN_DAY_GREGORIAN ? 15 : d % length_(is_leap, m) + 1;
        m = d == 1 ? m % 12 + 1 : m;
        if (d == 1 && m == 1) y = y == -1 ? 1 : y + 1;
    }
}

// Beyond the range of dates, too, where the fields may be none.
TEST(DayNumber, GivesTheFieldsOfTheFormulas) {
    const auto expect_formulas = [](int jd) {
        int a = jd;
        if (jd > 2299160) {
            const auto alpha = static_cast<int>((jd - 1867216.25) / 36524.25);
            a = jd + 1 + alpha - alpha / 4;
        }
        const int b = a + 1524, c = static_cast<int>((b - 122.1) / 365.25);
        const int d0 = b - static_cast<int>(365.25 * c), e = static_cast<int>(d0 / 30.6001);
        const int day = d0 - static_cast<int>(30.6001 * e), month = e < 14 ? e - 1 : e - 13;
        const int year = c - (month < 3 ? 4715 : 4716);
        const bool are_fields = month >= 1 && month <= 12 && day >= 1 && day <= 31;
        dv_date_t date{};
        ASSERT_EQ(raise_of([&] { dv_date_from_julian_day(&date, jd); }), are_fields ? 0 : -5114) << jd;
        if (are_fields) {
            ASSERT_EQ(date, make_date(year < 1 ? year - 1 : year, month, day)) << jd;
        }
    };
    for (int i = 1; i < 200'000; ++i) {
        expect_formulas(-i);
        expect_formulas(DV_JULIAN_DAY_MAX + i);
        expect_formulas(DV_JULIAN_DAY_GREGORIAN + i * 11 - 1'100'000);
    }
}

// Records that are no dates too: their years run to 15655, their months and days to 255.
TEST(DayNumber, FollowsTheFormulasForAnyBytes) {
    for (uint32_t bytes = 0; bytes < 1U << 24; ++bytes) {
        const auto century = static_cast<uint8_t>(bytes >> 16), year = static_cast<uint8_t>(bytes >> 8);
        const auto month = static_cast<uint8_t>(bytes), day = static_cast<uint8_t>(bytes * 77 >> 5);
        const dv_date_t date = {century, year, month, day, 0, 0, 0, 0};
        const int y = (century - 100) * 100 + year - 100;
        if (y == 0) continue;  // an assertion
        ASSERT_EQ(dv_date_to_julian_day(&date), formula_number_(y, month, day)) << describe(date);
    }
}

TEST(Date, IsValidWhenItsDayExists) {
    for (int year = DV_YEAR_MIN - 1; year <= DV_YEAR_MAX + 1; ++year) {
        const bool is_julian_leap = year > 0 ? year % 4 == 0 : year >= -45 && year <= -9 && year % 3 == 0;
        const bool is_leap = year < 1583 ? is_julian_leap : std::chrono::year{year}.is_leap();
        for (int i = 0; i < 14 * 33; ++i) {
            const int month = i / 33, day = i % 33, length = length_(is_leap, month);
            const bool is_valid = year % 10000 != 0 && month % 13 != 0 && day > 0 && day <= length;
            dv_date_t date;
            const int code = raise_of([&] { dv_date_from_unit_values(&date, year, month, day, 23, 59, 59); });
            ASSERT_EQ(code, is_valid ? 0 : -5114) << year << "-" << month << "-" << day;
            if (!is_valid) continue;
            const bool is_gap = year == 1582 && month == 10 && day >= 5 && day <= 14;
            ASSERT_TRUE(date == make_date(year, month, is_gap ? 15 : day, 23, 59, 59)) << describe(date);
            ASSERT_EQ(dv_date_to_julian_day(&date), formula_number_(year, month, day)) << describe(date);
            dv_date_get_last_date(&date, &date);
            ASSERT_EQ(date.day, length) << describe(date);
        }
    }
}

}  // namespace
