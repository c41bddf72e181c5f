// DATE as a number: Julian Day Numbers (calendar.h), seconds since day number 0, POSIX times.

#include <ctime>

#include "datetime_internal.h"

using namespace dv::impl;

namespace {

[[gnu::noinline]] void set_any_day_number_(dv_date_t *date, int number) {
    const calendar_day_t d = calendar_day_of_any(number);
    date_set_year(*date, d.year);
    dv_date_set_field(date, DT_FMT_UNIT_MONTH, d.month, /*check_valid_input=*/1, /*check_valid_result=*/0);
    dv_date_set_field(date, DT_FMT_UNIT_DAY, d.day, /*check_valid_input=*/1, /*check_valid_result=*/0);
}

}  // namespace

int dv::impl::early_date_day_number(const dv_date_t &date) {
    const int year = date_year(date);
    DV_ASSERT(year != 0);
    return day_number({year, date.month, date.day});
}

void dv::impl::date_set_julian_day(dv_date_t &date, uint32_t number) {
    const calendar_day_t d = julian_day(number);
    date_set_calendar(date, d.year, d.month, d.day);
}

extern "C" {

int dv_date_to_julian_day(const dv_date_t *date) {
    if (!is_given(date)) return 0;
    return date_day_number(*date);
}

void dv_date_from_julian_day(dv_date_t *date, int jd) {
    if (!is_given(date)) return;
    if (!is_day_number(static_cast<uint64_t>(jd))) return set_any_day_number_(date, jd);
    date_set_day_number(*date, static_cast<uint32_t>(jd));
}

double dv_date_to_double(const dv_date_t *date) {
    if (!is_given(date)) return 0;
    return date_day_number(*date) * double{SEC_PER_DAY} + date_second_of_day(*date);
}

time_t dv_date_to_system_time(const dv_date_t *date) {
    if (!is_given(date)) return 0;
    const time_t now = time(nullptr);
    struct tm local = {};
    if (localtime_r(&now, &local) == nullptr) return -1;
    local.tm_year = date_year(*date) - 1900;
    local.tm_mon = date->month - 1;
    local.tm_mday = date->day;
    local.tm_hour = date->hour;
    local.tm_min = date->minute;
    local.tm_sec = date->second;
    local.tm_wday = 0;
    local.tm_yday = 0;
    return mktime(&local);  // tm_isdst is still that of this moment
}

}  // extern "C"
