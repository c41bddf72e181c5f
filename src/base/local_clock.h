// Local time from UTC seconds, at the price of an addition for nearly every call.
//
// libc's localtime_r takes the zone lock and searches the zone's rules each time. This clock asks it once per
// window of at most a minute and keeps the offset: a window ends at the next UTC minute, or at the change of
// the offset when there is one before that, which is found by halving. Fields come from integer arithmetic.
// The offset is taken from the fields that localtime_r gives, not from tm_gmtoff, so that zones that count
// leap seconds come out right too: there the offset shrinks by one at each leap second.

#ifndef DV_BASE_LOCAL_CLOCK_H
#define DV_BASE_LOCAL_CLOCK_H

#include <algorithm>
#include <cstdint>
#include <ctime>

namespace dv::impl {

struct local_fields_t {
    int year, month, day, hour, minute, second;
    bool operator==(const local_fields_t &) const = default;
};

inline constexpr int64_t SEC_PER_MINUTE = 60;
inline constexpr int64_t SEC_PER_HOUR = 60 * SEC_PER_MINUTE;
inline constexpr int64_t SEC_PER_DAY = 24 * SEC_PER_HOUR;

constexpr int64_t floor_div(int64_t x, int64_t divisor) { return x / divisor - (x % divisor < 0 ? 1 : 0); }

// Days from 1970-01-01, proleptic Gregorian calendar. Years are counted from March, so that the leap day is
// the last of its year and month lengths from March on follow (153 * m + 2) / 5.
constexpr int64_t days_from_civil(int64_t year, int month, int day) {
    const int64_t march_year = year - (month <= 2 ? 1 : 0);
    const int64_t month_from_march = (month + 9) % 12;  // [0, 11]
    const int64_t day_of_year = (153 * month_from_march + 2) / 5 + day - 1;
    const int64_t leap_days =
        floor_div(march_year, 4) - floor_div(march_year, 100) + floor_div(march_year, 400);
    constexpr int64_t epoch = 719468;  // 0000-03-01 to 1970-01-01
    return march_year * 365 + leap_days + day_of_year - epoch;
}

constexpr local_fields_t fields_from_seconds(int64_t seconds) {  // since 1970-01-01 00:00:00, same clock
    constexpr int64_t days_per_cycle = 146097;                   // 400 years
    const int64_t day_number = floor_div(seconds, SEC_PER_DAY);
    const int second_of_day = static_cast<int>(seconds - day_number * SEC_PER_DAY);  // [0, 86399]

    const int64_t cycle = floor_div(day_number + 719468, days_per_cycle);
    const int64_t day = day_number + 719468 - cycle * days_per_cycle;                       // [0, 146096]
    const int64_t year = (day - day / 1460 + day / 36524 - day / 146096) / 365;             // [0, 399]
    const int day_of_year = static_cast<int>(day - (year * 365 + year / 4 - year / 100));   // [0, 365]
    const int month_from_march = (5 * day_of_year + 2) / 153;                               // [0, 11]
    const int month = month_from_march < 10 ? month_from_march + 3 : month_from_march - 9;  // [1, 12]

    return {static_cast<int>(cycle * 400 + year + (month <= 2 ? 1 : 0)),
            month,
            day_of_year - (153 * month_from_march + 2) / 5 + 1,
            second_of_day / 3600,
            second_of_day / 60 % 60,
            second_of_day % 60};
}

static_assert(days_from_civil(1970, 1, 1) == 0 && days_from_civil(2000, 2, 29) == 11016);
static_assert(fields_from_seconds(-1) == local_fields_t{1969, 12, 31, 23, 59, 59});

// What tells that tzset() has put another zone in force. libc sets these from any thread.
struct zone_identity_t {
    const char *name, *daylight_name;
    long seconds_west;
    int has_daylight;
    bool operator==(const zone_identity_t &) const = default;

    static zone_identity_t current() {
        return {__atomic_load_n(&tzname[0], __ATOMIC_RELAXED), __atomic_load_n(&tzname[1], __ATOMIC_RELAXED),
                __atomic_load_n(&timezone, __ATOMIC_RELAXED), __atomic_load_n(&daylight, __ATOMIC_RELAXED)};
    }
};

// One per thread; a plain record, empty when zero.
class local_clock_t {
  public:
    local_fields_t fields_at(int64_t utc) {
        const zone_identity_t zone = zone_identity_t::current();
        if (utc < window_begin_ || utc >= window_end_ || zone != zone_) refresh_(utc, zone);
        return fields_from_seconds(utc + offset_);
    }

  private:
    void refresh_(int64_t utc, const zone_identity_t &zone) {
        offset_ = offset_at_(utc);
        window_begin_ = utc;
        window_end_ = (floor_div(utc, SEC_PER_MINUTE) + 1) * SEC_PER_MINUTE;
        if (offset_at_(window_end_) != offset_) window_end_ = end_of_offset_(utc, window_end_);
        zone_ = zone;
        // Another zone came into force meanwhile, perhaps between two of the questions: ask again next time.
        if (zone_identity_t::current() != zone) window_end_ = window_begin_;
    }

    // The first second in (same, other] whose offset is not that of same; other's differs.
    int64_t end_of_offset_(int64_t same, int64_t other) const {
        while (other - same > 1) {
            const int64_t middle = same + (other - same) / 2;
            (offset_at_(middle) == offset_ ? same : other) = middle;
        }
        return other;
    }

    static int64_t offset_at_(int64_t utc) {
        const time_t time = static_cast<time_t>(utc);
        struct tm local;
        if (localtime_r(&time, &local) == nullptr) return 0;
        const int64_t day = days_from_civil(int64_t{local.tm_year} + 1900, local.tm_mon + 1, local.tm_mday);
        const int second = std::min(local.tm_sec, 59);
        return day * SEC_PER_DAY + local.tm_hour * SEC_PER_HOUR + local.tm_min * SEC_PER_MINUTE + second -
               utc;
    }

    int64_t window_begin_ = 0;
    int64_t window_end_ = 0;  // first second that the offset does not stand for
    int64_t offset_ = 0;      // seconds from UTC to local time
    zone_identity_t zone_ = {};
};

}  // namespace dv::impl

#endif  // DV_BASE_LOCAL_CLOCK_H
