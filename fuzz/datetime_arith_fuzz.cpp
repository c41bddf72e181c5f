// Arithmetic of dates, timestamps and intervals. The input is the bytes of records, of which valid ones are
// made, numbers, and the name of a weekday.
//
// Properties: a result is a valid record or a documented code; days are those of the day number; months come
// back on days that every month has; what is added is the difference; the next named weekday is 1 to 7 days
// ahead.

#include "dvtypes/datetime_fmt.h"
#include "dvtypes/interval.h"
#include "dvtypes/nls.h"
#include "dvtypes/timestamp.h"
#include "fuzz_input.h"
#include "raise.h"

using namespace dv::fuzz;
using dv::test::raise_of;

namespace {

constexpr int _codes[] = {0, -5005, -5065, -5068, -5069, -5070, -5087, -5114};
constexpr int _name_codes[] = {0, -5113, -5114};
constexpr int _last_day_of_all_months = 28;

// Any day from 0001-01-01 to 9999-12-31: before, day numbers have leap years that dates do not have.
dv_timestamp_t take_timestamp_(input_t &input) {
    constexpr uint32_t first = 1'721'424, last = 5'373'484;
    dv_date_t date;
    dv_date_init(&date);
    dv_date_from_julian_day(&date, static_cast<int>(first + input.take<uint32_t>() % (last - first + 1)));
    dv_timestamp_t ts;
    dv_timestamp_from_unit_values(&ts, dv_date_get_field(&date, DT_FMT_UNIT_YEAR), date.month, date.day,
                                  input.byte() % 24, input.byte() % 60, input.byte() % 60,
                                  static_cast<int>(input.take<uint32_t>() % 1'000'000'000));
    return ts;
}

dv_date_t date_of_(const dv_timestamp_t &ts) {
    dv_date_t date;
    dv_date_from_timestamp(&date, &ts);
    return date;
}

// Runs the change; true when there is a result, which is then a date. Before year 1 it may be a day of a leap
// year that dates do not have.
template <typename Change>
bool has_date_(dv_date_t &date, Change change) {
    const int code = raise_of([&] { change(&date); });
    require_one_of(_codes, "a code of arithmetic", code);
    const bool is_ad = dv_date_get_field(&date, DT_FMT_UNIT_YEAR) > 0;
    if (code == 0 && is_ad)
        require(raise_of([&] { dv_date_is_valid(&date); }) == 0, "a valid date", date.day);
    return code == 0;
}

void days_are_day_numbers_(const dv_timestamp_t &ts, int64_t days) {
    dv_date_t date = date_of_(ts);
    const int before = dv_date_to_julian_day(&date);
    if (!has_date_(date, [=](dv_date_t *to) { dv_date_add_field(to, DT_FMT_UNIT_DAY, days); })) return;
    require(dv_date_to_julian_day(&date) - before == days, "as many days", days);
    require(has_date_(date, [=](dv_date_t *to) { dv_date_add_field(to, DT_FMT_UNIT_DAY, -days); }),
            "and back", days);
    const dv_date_t first = date_of_(ts);
    require(dv_date_compare(&date, &first) == 0, "the same date", days);
}

// Days that the calendar left out in October 1582 do not come back.
void months_come_back_(const dv_timestamp_t &ts, int months) {
    dv_date_t date = date_of_(ts);
    const dv_date_t first = date;
    if (!has_date_(date, [=](dv_date_t *to) { dv_date_add_month(to, months, /*is_from_itv=*/0); })) return;
    const bool is_october_1582 = dv_date_get_field(&date, DT_FMT_UNIT_YEAR) == 1582 && date.month == 10;
    if (first.day >= _last_day_of_all_months || is_october_1582) return;
    require(date.day == first.day, "the same day of the month", date.day);
    if (has_date_(date, [=](dv_date_t *to) { dv_date_add_month(to, -months, /*is_from_itv=*/0); }))
        require(dv_date_compare(&date, &first) == 0, "the same date", months);
}

void difference_is_what_was_added_(const dv_timestamp_t &x, const dv_timestamp_t &y) {
    dv_itv_dts_t difference;
    dv_timestamp_sub_timestamp_into_itv_dts(&difference, &x, &y);
    dv_timestamp_t moved = y;
    const int code = raise_of([&] { dv_timestamp_add_itv_dts(&moved, &difference); });
    require(code == 0 && dv_timestamp_compare(&moved, &x) == 0, "y + (x - y) = x", code);
    const int back = raise_of([&] { dv_timestamp_sub_itv_dts(&moved, &difference); });
    require(back == 0 && dv_timestamp_compare(&moved, &y) == 0, "x - (x - y) = y", back);
}

void totals_add_up_(int64_t x_months, int64_t y_months) {
    dv_itv_ytm_t x, y;
    dv_itv_ytm_set_total_month(&x, x_months);
    dv_itv_ytm_set_total_month(&y, y_months);
    require(dv_itv_ytm_get_total_month(&x) == x_months, "the total of months", x_months);
    dv_itv_ytm_add_itv_ytm(&x, &y);
    require(dv_itv_ytm_get_total_month(&x) == x_months + y_months, "the sum of months", y_months);
    dv_itv_ytm_sub_itv_ytm(&x, &y);
    require(dv_itv_ytm_get_total_month(&x) == x_months, "and back", y_months);
}

// Intervals of any bytes: nothing but a documented code.
void hostile_records_(input_t &input) {
    auto x = input.take<dv_itv_dts_t>();
    const auto y = input.take<dv_itv_dts_t>();
    auto months = input.take<dv_itv_ytm_t>();
    auto ts = input.take<dv_timestamp_t>();
    const auto factor = input.take<number_t>();
    const auto ratio = input.take<double>();
    const auto check = [](int code) { require_one_of(_codes, "a code of hostile records", code); };
    check(raise_of([&] { dv_itv_dts_add_itv_dts(&x, &y); }));
    check(raise_of([&] { dv_itv_dts_mul(&x, &factor); }));
    check(raise_of([&] { dv_itv_dts_div(&x, &factor); }));
    check(raise_of([&] { dv_itv_ytm_mul(&months, ratio); }));
    check(raise_of([&] { dv_itv_ytm_div(&months, ratio); }));
    check(raise_of([&] { dv_timestamp_add_itv_dts(&ts, &x); }));
    dv_date_t date = date_of_(ts);
    check(raise_of([&] { dv_date_sub_itv_ytm(&date, &months); }));
    check(raise_of([&] { dv_date_add_day(&date, ratio); }));
}

void next_day_is_in_a_week_(const dv_timestamp_t &ts, std::string_view name, int language, int set) {
    dv_date_t date = date_of_(ts);
    const int before = dv_date_to_julian_day(&date);
    const std::vector<char> text = block(name);
    const auto size = static_cast<int>(name.size());
    const int code = raise_of([&] { dv_date_get_next_day(&date, text.data(), size, language, set); });
    require_one_of(_name_codes, "a code of day names", code);
    if (code != 0) return;
    const int days = dv_date_to_julian_day(&date) - before;
    require(days >= 1 && days <= 7, "a day of the next seven", days);
    const int weekday = dt_fmt_get_day_idx_of_week(text.data(), size, language, set);
    require(dv_date_to_julian_day(&date) % 7 == weekday, "the weekday of its name", weekday);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    const dv::test::assertion_watch quiet;  // records of any bytes make assertions fail
    input_t input(data, size);
    const dv_timestamp_t x = take_timestamp_(input), y = take_timestamp_(input);
    const auto number = input.take<int32_t>();
    days_are_day_numbers_(x, number % 4'000'000);
    months_come_back_(x, number % 150'000);
    difference_is_what_was_added_(x, y);
    totals_add_up_(number / 4, input.take<int32_t>() / 4);
    hostile_records_(input);
    const int language = input.byte() % DV_NLS_DATE_LANG_MAX, set = input.byte() % DVSTR_CHARSET_MAX;
    if (!input.rest().empty()) next_day_is_in_a_week_(x, input.rest(), language, set);
    return 0;
}
