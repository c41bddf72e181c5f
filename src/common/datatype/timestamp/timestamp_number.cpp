// TIMESTAMP as a number: seconds since the beginning of Julian Day 0, as double and as NUMBER.
//
// Numbers are made of day numbers in the calendar of DATE, Julian before 1582-10-15. Numbers are taken apart
// in the Gregorian calendar alone: Fliegel and Van Flandern, A machine algorithm for processing calendar
// dates, Communications of the ACM 11 (1968), with divisions that truncate toward zero. Whole seconds have 64
// bits, with which no step overflows, and every field that comes out is checked before it is stored.

#include <algorithm>
#include <climits>
#include <cmath>

#include "../datetime/datetime_internal.h"
#include "dvtypes/timestamp.h"

using namespace dv::impl;

namespace {

constexpr int64_t seconds_since_day_0_(const dv_date_t &date, int day_number) {
    return int64_t{day_number} * SEC_PER_DAY + date_second_of_day(date);
}

struct gregorian_t {
    int64_t year, month, day;
};

// jd: +-2^63 / 86400. Products stay below 2^50.
constexpr gregorian_t gregorian_(int64_t jd) {
    int64_t a = jd + 68569;
    const int64_t n = 4 * a / 146097;  // centuries
    a -= (146097 * n + 3) / 4;
    const int64_t i = 4000 * (a + 1) / 1461001;  // years of the century
    a -= 1461 * i / 4 - 31;
    const int64_t j = 80 * a / 2447;
    const int64_t l = j / 11;
    return {100 * (n - 49) + i + l, j + 2 - 12 * l, a - 2447 * j / 80};
}
static_assert(gregorian_(2451545).year == 2000 && gregorian_(2451545).month == 1 &&
              gregorian_(2451545).day == 1);

int narrowed_(int64_t value) { return static_cast<int>(std::clamp<int64_t>(value, INT_MIN, INT_MAX)); }

// Raises -5114 for the first field out of range; *ts is then unchanged.
void set_seconds_(dv_timestamp_t &ts, int64_t seconds, int nanoseconds) {
    const gregorian_t d = gregorian_(seconds / SEC_PER_DAY);
    const auto second_of_day = static_cast<int>(seconds % SEC_PER_DAY);
    const int hour = second_of_day / SEC_PER_HOUR;
    const int minute = second_of_day % SEC_PER_HOUR / SEC_PER_MINUTE;
    const int second = second_of_day % SEC_PER_MINUTE;
    const int year = narrowed_(d.year), month = narrowed_(d.month), day = narrowed_(d.day);
    check_calendar(year, month, day);
    check_clock(hour, minute, second);
    check_unit(DT_FMT_UNIT_FSEC, nanoseconds);
    date_set_calendar(date_part(ts), year, month, day);
    date_set_clock(date_part(ts), hour, minute, second);
    time_set_nanoseconds(time_part(ts), static_cast<uint32_t>(nanoseconds));
}

}  // namespace

extern "C" {

double dv_timestamp_to_double(const dv_timestamp_t *ts) {
    if (!DV_ASSERT(ts != NULL)) return 0;
    constexpr double fsec_factor = 1e-9;
    const double fraction =
        time_nanoseconds(time_part(*ts)) * fsec_factor;  // a statement of its own: never fused with the sum
    return dv_date_to_double(&date_part(*ts)) + fraction;
}

void dv_timestamp_to_number(const dv_timestamp_t *ts, number_t *num) {
    if (!DV_ASSERT(ts != NULL) || !DV_ASSERT(number_is_nonnull_ptr(num))) return;
    const dv_date_t &date = date_part(*ts);
    number_from_int64(num, seconds_since_day_0_(date, date_day_number(date)));
    const uint32_t nanoseconds = time_nanoseconds(time_part(*ts));
    if (nanoseconds == 0) return;
    number_t fraction;
    number_from_uint32(&fraction, nanoseconds);
    number_div(&fraction, n1000000000);  // exact
    number_add(num, &fraction);
}

// What does not fit 64 bits, and NaN, becomes a day far out of range.
void dv_timestamp_from_double(double from, dv_timestamp_t *ts) {
    if (!DV_ASSERT(ts != NULL)) return;
    const bool is_int64 = from >= -0x1p63 && from < 0x1p63;
    const int64_t seconds = is_int64 ? static_cast<int64_t>(from) : INT64_MIN;
    const double fraction = is_int64 ? from - static_cast<double>(seconds) : 0;  // exact, within +-1
    set_seconds_(*ts, seconds, static_cast<int>(fraction * NSEC_PER_SEC));
}

void dv_timestamp_from_number(const number_t *num, dv_timestamp_t *ts) {
    if (!DV_ASSERT(number_is_valid_ptr(num)) || !DV_ASSERT(ts != NULL)) return;
    int64_t seconds = 0;
    int32_t nanoseconds = 0;
    number_to_int64(num, &seconds);
    number_t fraction, whole;
    number_from_int64(&whole, seconds);
    fraction = *num;
    number_sub(&fraction, &whole);
    number_mul(&fraction, n1000000000);
    number_to_int32(&fraction, &nanoseconds);
    set_seconds_(*ts, seconds, nanoseconds);
}

}  // extern "C"
