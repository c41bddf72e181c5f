// TIMESTAMP and intervals: adding, subtracting, and the difference of two timestamps as either interval.

#include "../datetime/datetime_internal.h"
#include "../interval/interval_internal.h"
#include "timestamp_layout.h"

using namespace dv::impl;

namespace {

bool are_given_(const void *dest, const void *left, const void *right) {
    return DV_ASSERT(dest != NULL) && DV_ASSERT(left != NULL) && DV_ASSERT(right != NULL);
}

// Adds seconds, then nanoseconds of any sign, which carry into the seconds.
void add_(dv_timestamp_t &ts, int64_t seconds, int64_t nanoseconds) {
    dv_date_add_field(&date_part(ts), DT_FMT_UNIT_SECOND, seconds);
    if (nanoseconds == 0) return;
    const int64_t sum = time_nanoseconds(time_part(ts)) + nanoseconds;  // below 2^34
    const int64_t rest = sum % NSEC_PER_SEC;
    const int64_t fraction = rest < 0 ? rest + NSEC_PER_SEC : rest;
    time_set_nanoseconds(time_part(ts), static_cast<uint32_t>(fraction));
    dv_date_add_field(&date_part(ts), DT_FMT_UNIT_SECOND, (sum - fraction) / NSEC_PER_SEC);
}

// ---- months between ----

int month_count_(const dv_date_t &date) { return date_year(date) * MONTHS_PER_YEAR + date.month; }

// Is the month put back that a day below the earlier value's day took off?
bool is_month_put_back_(int counted_day, int earlier_day, int time_order) {
    constexpr int half_month = 15;
    if (earlier_day <= half_month + 1) return true;
    if (time_order > 0) return counted_day >= earlier_day - half_month;
    return time_order < 0 && counted_day > earlier_day - half_month;
}

// What the days and times of day add to the months between two values: -1, 0 or 1.
int rounding_(const dv_timestamp_t &later, const dv_timestamp_t &earlier) {
    const int time_order = dv_time_compare(&time_part(later), &time_part(earlier));
    const int counted_day = later.day + (time_order < 0 ? 1 : 0);
    if (counted_day >= earlier.day) return later.day - earlier.day >= 15 ? 1 : 0;
    return is_month_put_back_(counted_day, earlier.day, time_order) ? 0 : -1;
}

}  // namespace

extern "C" {

void dv_timestamp_add_itv_dts(dv_timestamp_t *ts, const dv_itv_dts_t *dts) {
    if (!DV_ASSERT(ts != NULL) || !DV_ASSERT(dts != NULL)) return;
    add_(*ts, itv_total_seconds(*dts), itv_nanoseconds(*dts));
}

void dv_timestamp_sub_itv_dts(dv_timestamp_t *ts, const dv_itv_dts_t *dts) {
    if (!DV_ASSERT(ts != NULL) || !DV_ASSERT(dts != NULL)) return;
    add_(*ts, -itv_total_seconds(*dts), -int64_t{itv_nanoseconds(*dts)});
}

void dv_timestamp_sub_timestamp_into_itv_dts(dv_itv_dts_t *dest, const dv_timestamp_t *left,
                                             const dv_timestamp_t *right) {
    if (!are_given_(dest, left, right)) return;
    const dv_date_t &left_date = date_part(*left), &right_date = date_part(*right);
    const int64_t days = date_day_number(left_date) - date_day_number(right_date);
    const int64_t seconds = date_second_of_day(left_date) - date_second_of_day(right_date);
    const int64_t nanoseconds =
        int64_t{time_nanoseconds(time_part(*left))} - time_nanoseconds(time_part(*right));
    itv_set_total_seconds(*dest, days * SEC_PER_DAY + seconds);
    itv_set_nanoseconds(*dest, 0);
    dv_itv_dts_add_fsec(dest, static_cast<double>(nanoseconds));
}

void dv_timestamp_sub_timestamp_into_itv_ytm(dv_itv_ytm_t *dest, const dv_timestamp_t *left,
                                             const dv_timestamp_t *right) {
    if (!are_given_(dest, left, right)) return;
    const bool is_negated = timestamp_order(left, right) < 0;
    const dv_timestamp_t &later = is_negated ? *right : *left, &earlier = is_negated ? *left : *right;
    const int total = month_count_(date_part(later)) - month_count_(date_part(earlier));
    const int years = total / MONTHS_PER_YEAR;
    const int months = total % MONTHS_PER_YEAR + rounding_(later, earlier);  // -1..12, without a carry
    itv_set_years(*dest, is_negated ? -years : years);
    itv_set_months(*dest, is_negated ? -months : months);
}

}  // extern "C"
