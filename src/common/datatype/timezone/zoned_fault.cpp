// What is wrong with the bytes of a time zone or a timestamp that somebody else wrote.

#include "dvtypes/timestamp_tz.h"
#include "timezone_internal.h"

using namespace dv::impl;

namespace {

constexpr int _region_hours_max = 15;  // the greatest offset of any history, before standard times

bool is_offset_(const timezone_t &tz) {
    const int hour = tz_hour(tz);
    if (tz.utc_min >= MINUTES_PER_HOUR || tz.utc_sec != 0) return false;
    if (!tz_is_offset(tz)) return hour >= -_region_hours_max && hour <= _region_hours_max;
    return hour >= TZ_HOUR_MIN && hour <= TZ_HOUR_MAX - (tz.utc_min > 0 ? 1 : 0);
}

// Has a sound time in UTC a local one? Not beyond the calendar, nor where day numbers count a 29 February
// that a year BC lacks.
bool has_local_time_(const dv_date_t &utc, const timezone_t &tz) {
    constexpr int minutes_per_day = HOURS_PER_DAY * MINUTES_PER_HOUR;
    const int minutes = utc.hour * MINUTES_PER_HOUR + utc.minute + tz_applied_minutes(tz);
    if (minutes >= 0 && minutes < minutes_per_day) return true;
    const int number = date_day_number(utc) + (minutes < 0 ? -1 : 1);
    if (number < 0 || !is_day_number(static_cast<uint64_t>(number))) return false;
    dv_date_t local{};
    date_set_day_number(local, static_cast<uint32_t>(number));
    return local.day <= date_month_length(local);
}

}  // namespace

extern "C" {

const char *timezone_get_fault(const timezone_t *tz) {
    if (!is_given_tz(tz)) return nullptr;
    if (tz_zone(*tz) >= TZ_ID_MAX && !tz_is_offset(*tz)) return "it has no such time zone";
    return is_offset_(*tz) ? nullptr : "its UTC offset is out of range";
}

const char *dv_timestamp_get_fault(const dv_timestamp_t *ts) {
    if (!is_given(ts)) return nullptr;
    if (ts->dummy != 0) return "the eighth byte of a timestamp is not 0";
    if (time_nanoseconds(time_part(*ts)) >= NSEC_PER_SEC) return "its fraction of a second is out of range";
    return dv_date_get_fault(&date_part(*ts));
}

const char *dv_ts_ltz_get_fault(const dv_ts_ltz_t *ts_ltz) {
    return is_given(ts_ltz) ? dv_timestamp_get_fault(&ts_ltz->utc) : nullptr;
}

const char *dv_ts_tz_get_fault(const dv_ts_tz_t *ts_tz) {
    if (!is_given(ts_tz)) return nullptr;
    const char *fault = dv_timestamp_get_fault(&ts_tz->utc);
    if (fault == nullptr) fault = timezone_get_fault(&ts_tz->tz);
    if (fault != nullptr || has_local_time_(date_part(ts_tz->utc), ts_tz->tz)) return fault;
    return "its local time lies outside the calendar";
}

}  // extern "C"
