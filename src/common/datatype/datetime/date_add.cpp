// Adding to a DATE: days with a fraction, fields with carry, calendar months, intervals.
//
// Days go through the day number and keep the time of day. Fields below the day are digits of mixed radix 60,
// 60, 24 that carry into the days. Months keep the day of the month, or the end of the month.

#include <cmath>

#include "datetime_internal.h"

using namespace dv::impl;

namespace {

bool is_given_(const dv_itv_ytm_t *ytm) { return DV_ASSERT(ytm != NULL); }
bool is_given_(const dv_itv_dts_t *dts) { return DV_ASSERT(dts != NULL); }

constexpr int64_t floor_div_(int64_t x, int64_t divisor) { return x / divisor - (x % divisor < 0 ? 1 : 0); }

// Adds n (any) to a field whose values run from 0 to modulus - 1; returns the carry into the next field.
// Cannot overflow: the field gets less than modulus added.
constexpr int64_t add_with_carry_(uint8_t &field, int64_t n, int64_t modulus) {
    const int64_t whole = floor_div_(n, modulus);
    const int64_t rest = n % modulus;
    const int64_t sum = field + (rest < 0 ? rest + modulus : rest);
    field = static_cast<uint8_t>(sum % modulus);
    return whole + sum / modulus;
}

void add_hours_(dv_date_t &date, int64_t n) {
    if (n != 0) date_add_days(date, add_with_carry_(date.hour, n, HOURS_PER_DAY));
}

void add_minutes_(dv_date_t &date, int64_t n) {
    if (n != 0) add_hours_(date, add_with_carry_(date.minute, n, MINUTES_PER_HOUR));
}

void add_seconds_(dv_date_t &date, int64_t n) {
    if (n != 0) add_minutes_(date, add_with_carry_(date.second, n, SEC_PER_MINUTE));
}

struct whole_and_fraction_t {
    int64_t whole;    // floor
    double fraction;  // [0, 1)
};

// Counts that do not fit 64 bits, infinities and NaN become a number of days that is out of range for every
// date. The fraction of a count just below 0 rounds to 1; it is then the largest below 1, which makes the
// same whole day of hours, minutes and seconds: 23, 59 and 60.
whole_and_fraction_t split_days_(double days) {
    constexpr double largest_fraction = 1 - 0x1p-53;
    if (!(days >= -0x1p63 && days < 0x1p63)) [[unlikely]] {
        return {INT64_MIN, 0};
    }
    auto whole = static_cast<int64_t>(days);
    if (static_cast<double>(whole) > days) --whole;
    const double fraction = days - static_cast<double>(whole);
    return {whole, fraction < 1 ? fraction : largest_fraction};
}

// Adds a fraction of a day, to the second, half up. Every product stands in a statement of its own, so that
// no compiler fuses it with the sum behind it and so rounds once instead of twice.
[[gnu::noinline]] void add_fraction_of_day_(dv_date_t &date, double val) {
    DV_ASSERT(val > 0.0f && val < 1.0f);
    const double hours = val * HOURS_PER_DAY;
    const auto whole_hours = static_cast<int>(hours);
    const double minutes = (hours - whole_hours) * MINUTES_PER_HOUR;
    const auto whole_minutes = static_cast<int>(minutes);
    const double seconds = (minutes - whole_minutes) * SEC_PER_MINUTE;
    const double half_above = seconds + 0.5;
    add_seconds_(date, static_cast<int>(half_above));
    add_minutes_(date, whole_minutes);
    add_hours_(date, whole_hours);
}

// The day number, as a 64-bit count that wraps around; out of range then too.
uint64_t day_number_after_(const dv_date_t &date, int64_t days) {
    return static_cast<uint64_t>(date_day_number(date)) + static_cast<uint64_t>(days);
}

// Adds a whole number of days to a date after 1582, as are most; false, the date unchanged, for other dates
// and numbers.
inline bool add_few_days_(dv_date_t &date, double days) {
    constexpr double many_days = 1 << 30;  // so that no sum leaves 32 bits
    if (!(std::fabs(days) <= many_days)) return false;
    const auto whole = static_cast<int>(days);
    const int year = date_year(date);
    if (whole != days || whole == 0 || year <= GREGORIAN_YEAR) return false;
    const int number = gregorian_day_number(year, date.month, date.day) + whole;
    if (number < DV_JULIAN_DAY_GREGORIAN || number > DV_JULIAN_DAY_MAX) return false;
    date_set_packed_day(date, gregorian_day(static_cast<uint32_t>(number)));
    return true;
}

constexpr int _shortest_month = 28;

// n may be the negated total of an interval, which needs more than 32 bits. Raises in the name of
// dv_date_add_month.
void add_months_(dv_date_t &date, int64_t n, bool is_strict) {
    if (n == 0) return;
    const calendar_day_t old = date_calendar_day(date);
    const int64_t months = old.month + n - 1;  // from January of the old year
    const int64_t years = floor_div_(months, MONTHS_PER_YEAR);
    const auto month = static_cast<int>(months - years * MONTHS_PER_YEAR) + 1;
    const auto year = static_cast<int>(old.year + years);
    check_unit(DT_FMT_UNIT_YEAR, year);
    date_set_calendar(date, year, month, old.day);
    if (old.day < _shortest_month) return;  // in every month, and the last day of none
    const bool was_last_day = old.day == month_length(old.year, old.month);
    const int last_day = month_length(year, month);
    if (!was_last_day && old.day <= last_day) return;
    if (is_strict && old.day > last_day) {
        raise(error_at(DV_ERR_MONTH_LACKS_DAY, __FILE__, __LINE__, "dv_date_add_month"));
    }
    date.day = static_cast<uint8_t>(last_day);
}

}  // namespace

void dv::impl::date_add_days(dv_date_t &date, int64_t days) {
    if (days == 0) return;
    const uint64_t number = day_number_after_(date, days);
    if (is_day_number(number)) return date_set_day_number(date, static_cast<uint32_t>(number));
    dv_date_add_day(&date, static_cast<double>(days));  // raises
}

extern "C" {

void dv_date_add_day(dv_date_t *date, double days) {
    if (!is_given(date) || add_few_days_(*date, days) || days == 0) return;
    const auto [whole, fraction] = split_days_(days);
    const uint64_t number = day_number_after_(*date, whole);
    if (!is_day_number(number)) {
        const unit_range_t &range = range_of(DT_FMT_UNIT_YEAR);
        raise(DV_ERR_FIELD_RANGE, range.word, date_year(*date), range.shown_lowest, range.highest);
    }
    date_set_day_number(*date, static_cast<uint32_t>(number));
    if (fraction != 0) add_fraction_of_day_(*date, fraction);
}

void dv_date_add_field(dv_date_t *date, dt_fmt_unit_t unit_type, int64_t add_val) {
    if (!is_given(date) || add_val == 0) return;
    switch (unit_type) {
        case DT_FMT_UNIT_DAY:
            return date_add_days(*date, add_val);
        case DT_FMT_UNIT_HOUR:
            return add_hours_(*date, add_val);
        case DT_FMT_UNIT_MINUTE:
            return add_minutes_(*date, add_val);
        case DT_FMT_UNIT_SECOND:
            return add_seconds_(*date, add_val);
        default:
            raise(DV_ERR_FIELD_UNSUPPORTED);
    }
}

void dv_date_add_month(dv_date_t *date, int month, uchar is_from_itv) {
    if (!is_given(date)) return;
    add_months_(*date, month, is_from_itv != 0);
}

void dv_date_add_itv_ytm(dv_date_t *date, const dv_itv_ytm_t *ytm) {
    if (!is_given(date) || !is_given_(ytm)) return;
    add_months_(*date, dv_itv_ytm_get_total_month(ytm), /*is_strict=*/true);
}

void dv_date_sub_itv_ytm(dv_date_t *date, const dv_itv_ytm_t *ytm) {
    if (!is_given(date) || !is_given_(ytm)) return;
    add_months_(*date, -dv_itv_ytm_get_total_month(ytm), /*is_strict=*/true);
}

void dv_date_add_itv_dts(dv_date_t *date, const dv_itv_dts_t *dts) {
    if (!is_given(date) || !is_given_(dts)) return;
    add_seconds_(*date, dv_itv_dts_get_total_sec(dts));
}

void dv_date_sub_itv_dts(dv_date_t *date, const dv_itv_dts_t *dts) {
    if (!is_given(date) || !is_given_(dts)) return;
    add_seconds_(*date, -dv_itv_dts_get_total_sec(dts));
}

}  // extern "C"
