// DATE values from elsewhere: constants, clocks, single fields, POSIX times, timestamps.
//
// The present comes from the host's dv_getlocaltime, whose fields are stored as they are given.

#include <cstring>
#include <ctime>

#include "datetime_internal.h"

using namespace dv::impl;

namespace {

// tm_year counts from 1900. 0, which is no year, when the sum is no int.
int year_of_(const struct tm &local) {
    int year = 0;
    return __builtin_add_overflow(local.tm_year, 1900, &year) ? 0 : year;
}

}  // namespace

extern "C" {

const dv_date_t null_dv_date = {};
constinit const dv_date_t max_dv_date = [] {
    dv_date_t date{};
    date_set_calendar(date, DV_YEAR_MAX, 12, 31);
    return date;
}();

void dv_date_init(dv_date_t *date) {
    if (!is_given(date)) return;
    const local_time_t now = local_time();
    date_set_calendar(*date, now.year, now.month, 1);
    date_set_clock(*date, 0, 0, 0);
}

void dv_date_current(dv_date_t *date) {
    if (!is_given(date)) return;
    const local_time_t now = local_time();
    date_set_calendar(*date, now.year, now.month, now.day);
    date_set_clock(*date, now.hour, now.minute, now.second);
}

void dv_date_assign(dv_date_t *dst, const dv_date_t *src) {
    if (!DV_ASSERT(dst != NULL) || !DV_ASSERT(src != NULL)) return;
    memmove(dst, src, sizeof *dst);
}

void dv_date_from_unit_values(dv_date_t *date, int year, int month, int day, int hour, int minute,
                              int second) {
    if (!is_given(date)) return;
    check_calendar(year, month, day);
    check_clock(hour, minute, second);
    date_set_calendar(*date, year, month, day);
    date_set_clock(*date, hour, minute, second);
    dv_date_is_valid(date);
}

void dv_date_from_epoch_time(time_t t, dv_date_t *date) {
    if (!is_given(date)) return;
    struct tm local = {};
    const int year = localtime_r(&t, &local) == nullptr ? 0 : year_of_(local);
    check_unit(DT_FMT_UNIT_YEAR, year);
    check_unit(DT_FMT_UNIT_SECOND, local.tm_sec);
    date_set_calendar(*date, year, local.tm_mon + 1, local.tm_mday);
    date_set_clock(*date, local.tm_hour, local.tm_min, local.tm_sec);
}

void dv_date_from_timestamp(dv_date_t *date, const dv_timestamp_t *ts) {
    if (!is_given(date) || !is_given(ts)) return;
    memmove(date, &date_part(*ts), sizeof *date);
}

void dv_date_from_time(dv_date_t *date, const dv_time_t *time) {
    if (!is_given(date) || !is_given(time)) return;
    const dv_time_t clock = *time;  // may lie inside the date
    const local_time_t now = local_time();
    date_set_calendar(*date, now.year, now.month, now.day);
    date_set_clock(*date, clock.hour, clock.minute, clock.second);
}

}  // extern "C"
