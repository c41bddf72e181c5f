// Datetimes as counts since 1970-01-01: a day number, seconds of the day and a fraction, each checked before
// it counts.

#include <algorithm>
#include <climits>

#include "../datetime/datetime_internal.h"
#include "epoch_layout.h"

using namespace dv::impl;

namespace {

// Raises in the name of the exported function.
void check_unit_(dv_epoch_unit_t unit, const error_at &no_unit) {
    if (!is_epoch_unit(unit)) raise(no_unit);
}

// The day as a count. The round trip finds the days that the calendar does not have.
int day_of_(const dv_date_t &date, const error_at &no_day) {
    check_calendar(date_year(date), date.month, date.day);
    const int number = date_day_number(date);
    const unit_range_t &years = range_of(DT_FMT_UNIT_YEAR);
    if (number < 0) raise(no_day, years.word, date_year(date), years.shown_lowest, years.highest);
    dv_date_t same = date;
    date_set_day_number(same, static_cast<uint32_t>(number));
    if (memcmp(&same, &date, sizeof same) != 0) {
        raise(no_day, range_of(DT_FMT_UNIT_DAY).word, int{date.day}, 1, date_month_length(date));
    }
    return number - JDN_EPOCH;
}

int64_t second_of_(const dv_date_t &date, const error_at &no_day) {
    const int day = day_of_(date, no_day);
    check_clock(date.hour, date.minute, date.second);
    return int64_t{day} * SEC_PER_DAY + date_second_of_day(date);
}

// Years whose nanoseconds fit are between those shown.
int64_t count_of_(int64_t second, uint32_t nanoseconds, dv_epoch_unit_t unit, int year,
                  const error_at &too_far) {
    const int32_t per_second = UNITS_PER_SEC[unit];
    // From the second nearer to 0, so that the least count is reached without leaving the range.
    const int64_t carry = second < 0 ? 1 : 0;
    const int64_t fraction = nanoseconds / static_cast<uint32_t>(NSEC_PER_SEC / per_second);
    int64_t count = 0;
    if (__builtin_mul_overflow(second + carry, int64_t{per_second}, &count) ||
        __builtin_add_overflow(count, fraction - carry * per_second, &count)) {
        raise(too_far, range_of(DT_FMT_UNIT_YEAR).word, year, 1677, 2262);
    }
    return count;
}

// A count as whole units and what is left over, never negative.
struct floor_t {
    int64_t whole, rest;
};
constexpr floor_t floor_(int64_t count, int64_t divisor) {
    const int64_t rest = count % divisor;
    return rest < 0 ? floor_t{count / divisor - 1, rest + divisor} : floor_t{count / divisor, rest};
}

void set_day_(dv_date_t &date, int64_t days, const error_at &too_far) {
    const auto number = static_cast<uint64_t>(days) + JDN_EPOCH;
    if (!is_day_number(number)) {
        const auto shown = static_cast<int>(std::clamp<int64_t>(days, INT_MIN, INT_MAX));
        raise(too_far, range_of(DT_FMT_UNIT_DAY).word, shown, EPOCH_DAY_FIRST, EPOCH_DAY_LAST);
    }
    date_set_day_number(date, static_cast<uint32_t>(number));
}

// Day and time of day; what is left over as nanoseconds.
uint32_t set_date_(dv_date_t &date, int64_t count, dv_epoch_unit_t unit, const error_at &too_far) {
    const floor_t seconds = floor_(count, UNITS_PER_SEC[unit]);
    const floor_t days = floor_(seconds.whole, SEC_PER_DAY);
    set_day_(date, days.whole, too_far);
    const auto second = static_cast<int>(days.rest);
    date_set_clock(date, second / SEC_PER_HOUR, second / SEC_PER_MINUTE % MINUTES_PER_HOUR,
                   second % SEC_PER_MINUTE);
    return static_cast<uint32_t>(seconds.rest) * static_cast<uint32_t>(NSEC_PER_SEC / UNITS_PER_SEC[unit]);
}

}  // namespace

extern "C" {

int64_t dv_date_to_epoch(const dv_date_t *date, dv_epoch_unit_t unit) {
    if (!is_given(date)) return 0;
    check_unit_(unit, DV_ERR_FIELD_UNSUPPORTED);
    return count_of_(second_of_(*date, DV_ERR_FIELD_RANGE), 0, unit, date_year(*date), DV_ERR_FIELD_RANGE);
}

int64_t dv_timestamp_to_epoch(const dv_timestamp_t *ts, dv_epoch_unit_t unit) {
    if (!is_given(ts)) return 0;
    check_unit_(unit, DV_ERR_FIELD_UNSUPPORTED);
    const dv_date_t &date = date_part(*ts);
    const int64_t second = second_of_(date, DV_ERR_FIELD_RANGE);
    const uint32_t nanoseconds = time_nanoseconds(time_part(*ts));
    check_unit(DT_FMT_UNIT_FSEC, static_cast<int>(std::min<uint32_t>(nanoseconds, INT_MAX)));
    return count_of_(second, nanoseconds, unit, date_year(date), DV_ERR_FIELD_RANGE);
}

void dv_date_from_epoch(dv_date_t *date, int64_t count, dv_epoch_unit_t unit) {
    if (!is_given(date)) return;
    check_unit_(unit, DV_ERR_FIELD_UNSUPPORTED);
    set_date_(*date, count, unit, DV_ERR_FIELD_RANGE);
}

void dv_timestamp_from_epoch(dv_timestamp_t *ts, int64_t count, dv_epoch_unit_t unit) {
    if (!is_given(ts)) return;
    check_unit_(unit, DV_ERR_FIELD_UNSUPPORTED);
    const uint32_t nanoseconds = set_date_(date_part(*ts), count, unit, DV_ERR_FIELD_RANGE);
    time_set_nanoseconds(time_part(*ts), nanoseconds);
}

int32_t dv_date_to_epoch_day(const dv_date_t *date) {
    return is_given(date) ? day_of_(*date, DV_ERR_FIELD_RANGE) : 0;
}

void dv_date_from_epoch_day(dv_date_t *date, int32_t days) {
    if (!is_given(date)) return;
    set_day_(*date, days, DV_ERR_FIELD_RANGE);
    date_set_clock(*date, 0, 0, 0);
}

}  // extern "C"
