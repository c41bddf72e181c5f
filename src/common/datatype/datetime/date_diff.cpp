// Comparing two DATEs: order, days between, months between, the end of a month.
//
// Fractions of days are weighed in single precision, as values that are stored and compared elsewhere have
// been: the factors below are rounded to float and widened, and a part of a month is computed in float.

#include "datetime_internal.h"

using namespace dv::impl;

namespace {

constexpr float _hour_factor = 1.0f / 24;
constexpr float _min_factor = 1.0f / 1440;
constexpr float _sec_factor = 1.0f / 86400;
static_assert(_hour_factor == 0.0416666679084301f && _min_factor == 0.0006944444612599909f &&
              _sec_factor == 1.1574074051168282e-05f);
constexpr double _dpm = 31.0;  // days per month

// Products of floats are exact in double, so that it does not matter whether one is fused with the sum.
double days_(const dv_date_t &date) {
    double sum = date_day_number(date);
    sum += double{static_cast<float>(date.hour)} * double{_hour_factor};
    sum += double{static_cast<float>(date.minute)} * double{_min_factor};
    sum += double{static_cast<float>(date.second)} * double{_sec_factor};
    return sum;
}

// Day and time of day as a part of a month; the products and sums before the division are integers that a
// float holds.
double part_of_month_(const dv_date_t &date) {
    const int weighed = date.hour * 216000 + date.minute * 3600 + date.second;
    const float part_of_day = static_cast<float>(weighed) / 5184000.0f;
    const float day = part_of_day + static_cast<float>(date.day);
    return double{day} / _dpm;
}

bool are_given_(const dv_date_t *date1, const dv_date_t *date2) {
    return DV_ASSERT(date1 != NULL) && DV_ASSERT(date2 != NULL);
}

}  // namespace

extern "C" {

double dv_date_sub(const dv_date_t *date1, const dv_date_t *date2) {
    if (!are_given_(date1, date2)) return 0;
    return days_(*date1) - days_(*date2);
}

double dv_date_months_between(const dv_date_t *date1, const dv_date_t *date2) {
    if (!are_given_(date1, date2)) return 0;
    const int whole = (date_year(*date1) - date_year(*date2)) * MONTHS_PER_YEAR + date1->month - date2->month;
    if (date1->day == date2->day || (date_is_last_of_month(*date1) && date_is_last_of_month(*date2))) {
        return whole;
    }
    return whole + (part_of_month_(*date1) - part_of_month_(*date2));
}

void dv_date_get_last_date(const dv_date_t *date, dv_date_t *result) {
    if (!is_given(date) || !DV_ASSERT(result != NULL)) return;
    dv_date_assign(result, date);
    dv_date_set_field(result, DT_FMT_UNIT_DAY, date_month_length(*result), /*check_valid_input=*/1,
                      /*check_valid_result=*/1);
}

int dv_date_compare(const dv_date_t *date1, const dv_date_t *date2) {
    if (date1 == NULL || date2 == NULL) return (date1 != NULL ? 1 : 0) - (date2 != NULL ? 1 : 0);
    return order_of(date_order_key(*date1), date_order_key(*date2));
}

}  // extern "C"
