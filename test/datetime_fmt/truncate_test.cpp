// TRUNC and ROUND: every unit against its steps, taken one after the other with the operations of DATE, over
// records of any fields.

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <string>

#include "model_text.h"

using namespace dv::test;

namespace {

using fields_t = std::array<int, 6>;  // year to second

fields_t fields_(const dv_date_t &d) {
    return {dv_date_get_field(&d, DT_FMT_UNIT_YEAR), d.month, d.day, d.hour, d.minute, d.second};
}

void build_(dv_date_t &date, int year, int month = 1, int day = 1, int hour = 0, int minute = 0) {
    dv_date_from_unit_values(&date, year == 0 ? 1 : year, month, day, hour, minute, 0);
}

void move_(dv_date_t &date, int days) { dv_date_add_day(&date, days); }

void clear_time_(dv_date_t &date) { date.hour = date.minute = date.second = 0; }

int weekday_(const dv_date_t &date) {  // 0 is Monday
    return ((dv_date_to_julian_day(&date) % 7) + 7) % 7;
}

// A step for each unit: fields are those of the date before, up says that it is rounded.
using step_t = void (*)(dv_date_t &date, const fields_t &fields, bool up);

void century_(dv_date_t &date, const fields_t &f, bool up) {
    const int c = f[0] / 100 * 100;
    if (f[0] > 0) return build_(date, up && f[0] - c > 50 ? c + 101 : c + 1);
    build_(date, up && -f[0] % 100 <= 50 ? (c == 0 ? 1 : c) : c - 100);
}
void year_(dv_date_t &date, const fields_t &f, bool up) { build_(date, f[0] + (up && f[1] > 6 ? 1 : 0)); }
void iso_year_(dv_date_t &date, const fields_t &f, bool up) {
    year_(date, f, up);
    const int past = weekday_(date);
    move_(date, past <= 3 ? -past : 7 - past);  // the week of 1 January is week 1 when it has the Thursday
    clear_time_(date);
}
void month_(dv_date_t &date, const fields_t &f, bool up) {
    if (!up || f[2] < 16) return build_(date, f[0], f[1]);
    build_(date, f[1] == 12 ? f[0] + 1 : f[0], f[1] == 12 ? 1 : f[1] + 1);
}
void quarter_(dv_date_t &date, const fields_t &f, bool up) {
    if (!up) return build_(date, f[0], f[1] <= 3 ? 1 : f[1] <= 6 ? 4 : f[1] <= 9 ? 7 : 10);
    constexpr int before_16th[] = {1, 1, 4, 4, 4, 7, 7, 7, 10, 10, 10, 13},
                  from_16th[] = {1, 4, 4, 4, 7, 7, 7, 10, 10, 10, 13, 13};
    const int month = (f[2] < 16 ? before_16th : from_16th)[f[1] - 1];
    build_(date, month == 13 ? f[0] + 1 : f[0], month == 13 ? 1 : month);
}
void week_of_year_(dv_date_t &date, const fields_t &f, bool up) {
    int n = f[0] == 1582 && f[1] == 10 && f[2] > 4 && f[2] < 15 ? 15 : f[2];
    for (int month = 1; month < f[1]; ++month) n += dt_fmt_get_days_of_mon(f[0], month);
    const int past = (n - 1) % 7;
    move_(date, up && past > 3 ? 7 - past : -past);
    clear_time_(date);
}
void week_of_month_(dv_date_t &date, const fields_t &f, bool up) {
    build_(date, f[0], f[1], 1 + (f[2] - 1) / 7 * 7);
    if (up && (f[2] - 1) % 7 > 3) move_(date, 7);
}
void monday_(dv_date_t &date, const fields_t &, bool up) {
    const int past = weekday_(date);
    move_(date, up && past > 3 ? 7 - past : -past);
    clear_time_(date);
}
void sunday_(dv_date_t &date, const fields_t &f, bool up) {
    const int w = (weekday_(date) + 1) % 7;
    move_(date, !up || w < 3 || (w == 3 && f[3] < 12) ? -w : 7 - w);
    const fields_t moved = fields_(date);
    build_(date, moved[0], moved[1], moved[2]);
}
void day_(dv_date_t &date, const fields_t &f, bool up) {
    build_(date, f[0], f[1], f[2]);
    if (up && f[3] >= 12) move_(date, 1);
}
void hour_(dv_date_t &date, const fields_t &f, bool up) {
    build_(date, f[0], f[1], f[2], f[3]);
    if (up && f[4] >= 30) dv_date_add_field(&date, DT_FMT_UNIT_HOUR, 1);
}
void minute_(dv_date_t &date, const fields_t &f, bool up) {
    build_(date, f[0], f[1], f[2], f[3], f[4]);
    if (up && f[5] >= 30) dv_date_add_field(&date, DT_FMT_UNIT_MINUTE, 1);
}

struct unit_t {
    const char *name;
    step_t step;
};
constexpr unit_t _units[] = {
    {"CC", century_},  {"scc", century_}, {"IYYY", iso_year_}, {"iyy", iso_year_},    {"IY", iso_year_},
    {"I", iso_year_},  {"YEAR", year_},   {"Syear", year_},    {"SYYYY", year_},      {"yyyy", year_},
    {"YYY", year_},    {"YY", year_},     {"Y", year_},        {"MM", month_},        {"Mon", month_},
    {"MONTH", month_}, {"rm", month_},    {"D", sunday_},      {"DAY", sunday_},      {"Dy", sunday_},
    {"DD", day_},      {"DDD", day_},     {"J", day_},         {"WW", week_of_year_}, {"W", week_of_month_},
    {"Q", quarter_},   {"IW", monday_},   {"HH", hour_},       {"HH12", hour_},       {"hh24", hour_},
    {"MI", minute_},
};

// Any field out of its range at times, and often one at which something turns; never in the year 0.
dv_date_t any_record_(number_source &source) {
    const auto pick = [&](std::initializer_list<int> turns, int low, int high) {
        const int i = source.pick(0, static_cast<int>(turns.size()));
        return i == 0 ? source.pick(low, high) : turns.begin()[i - 1];
    };
    int year = pick({-1, 1, -4712, -4713, -5000, 1582, 1582, 1582, 2024, 9999}, DV_YEAR_MIN, DV_YEAR_MAX);
    if (source.pick(0, 3) == 0) year = year / 100 * 100 + pick({-50, -51, 50, 51, -49, 49}, -99, 99);
    const bool is_reform = year == 1582 && source.pick(0, 3) != 0;
    const int wrong = source.pick(0, 40);  // the field that may be out of range
    const auto within = [&](int field, int value, int low, int high) {
        return wrong == field ? value : std::clamp(value, low, high);
    };
    year = year == 0 ? -1 : std::clamp(year, int{DV_YEAR_MIN}, int{DV_YEAR_MAX});
    const int month = is_reform ? 10 : within(0, source.pick(0, 13), 1, 12);
    const int last_day = month >= 1 && month <= 12 ? dt_fmt_get_days_of_mon(year, month) : 28;
    const int day = is_reform ? source.pick(1, 20) : pick({15, 16, 29, 30, 31}, 0, 40);
    return make_date(year, month, within(1, day, 1, last_day), within(2, pick({11, 12, 24}, 0, 30), 0, 23),
                     within(3, pick({29, 30, 60}, 0, 70), 0, 59),
                     within(4, pick({29, 30, 60}, 0, 70), 0, 59));
}

}  // namespace

TEST(DateTruncate, FollowsTheStepsOfItsUnitForAnyRecord) {
    number_source source(3);
    for (long round = scaled(300'000); round > 0; --round) {
        dv_date_t date = any_record_(source);
        const unit_t &unit = _units[source.pick(0, std::size(_units) - 1)];
        if (unit.step == quarter_) date.month = std::clamp<uint8_t>(date.month, 1, 12);
        const bool up = source.pick(0, 1) != 0;
        dv_date_t got = date, want = date;
        const int code = raise_of([&] { (up ? dv_date_round : dv_date_trunc)(&got, unit.name, 0); });
        const int want_code = raise_of([&] { unit.step(want, fields_(date), up); });
        ASSERT_EQ(code, want_code) << unit.name << (up ? " up " : " ") << describe(date);
        if (code != 0) continue;
        ASSERT_EQ(got, want) << unit.name << (up ? " up " : " ") << describe(date);
    }
}

// A unit is a whole name in any letter case: what differs from all of them in a character, or is longer or
// shorter, is none.
TEST(DateTruncate, KnowsAUnitByItsWholeName) {
    const auto is_same = [](std::string_view text, std::string_view name) {
        return std::ranges::equal(
            text, name, {}, [](char c) { return std::toupper(c); }, [](char c) { return std::toupper(c); });
    };
    number_source source(4);
    for (long round = scaled(100'000); round > 0; --round) {
        std::string text = _units[source.pick(0, std::size(_units) - 1)].name;
        const auto i = static_cast<size_t>(source.pick(0, static_cast<int>(text.size()) - 1));
        const int change = source.pick(0, 3);
        if (change == 0) text[i] = static_cast<char>(text[i] ^ 1 << source.pick(0, 6));
        if (change == 1) text.insert(i, 1, "YMDHI124"[source.pick(0, 8)]);  // or a NUL
        if (change == 2 && text.size() > 1) text.erase(i, 1);
        if (change == 3) text += std::string(static_cast<size_t>(source.pick(0, 9)), text[i]);
        const bool is_unit =
            std::ranges::any_of(_units, [&](const auto &u) { return is_same(text, u.name); });
        dv_date_t date = make_date(2024, 5, 17);
        const int code = raise_of([&] {
            dt_fmt_trunc_or_round(&date, text.data(), static_cast<int>(text.size()), /*is_trunc=*/1);
        });
        ASSERT_EQ(code, is_unit ? 0 : -5014) << testing::PrintToString(text);
    }
}
