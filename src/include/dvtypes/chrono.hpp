// dvtypes/chrono.hpp: values to and from std::chrono. Header only; C++20.
//
// ```cpp
// using namespace std::chrono;
// const auto day = dv::chrono_cast<dv::date>(2024y / February / 29);
// const auto moment = dv::chrono_cast<dv::timestamp_tz>(sys_seconds(1'700'000'000s));
// std::cout << day << '\n' << moment << '\n';
// // 2024-02-29 00:00:00
// // 2023-11-14 22:13:20.000000000 +00:00
// std::cout << dv::chrono_cast<weekday>(day).iso_encoding() << '\n';          // 4
// std::cout << dv::chrono_cast<milliseconds>(dv::interval_ds("+0 00:01:00.5")).count() << '\n';     // 60500
// ```
//
// chrono_cast<To>(from) goes both ways between
//
//   date, timestamp               local_time of any duration, year_month_day; and to weekday
//   timestamp_tz, timestamp_ltz   sys_time of any duration; a timestamp_tz made of one is shown at +00:00
//   time_of_day                   hh_mm_ss of any duration
//   interval_ds                   durations but months and years; and to hh_mm_ss of any duration
//   interval_ym                   months, years, and multiples of months
//
// Days are matched, not names: the calendar of std::chrono is Gregorian throughout, that of the library
// Julian before 1582-10-15, so that the library's 1582-10-04 is 1582-10-14 there. What a target is too coarse
// for is cut off: of datetimes toward the past, of intervals toward zero.
// Throws -5114 where a datetime has no counterpart: before -4713-01-01 or after 9999-12-31, a day that only
// one of the calendars has, a time of day that is none, or a count that the target's type does not hold;
// -5064 for an interval of more than nine digits of days or years.

#ifndef DVTYPES_CHRONO_HPP
#define DVTYPES_CHRONO_HPP

#include <chrono>

#include "dvtypes/result.hpp"
#include "dvtypes/zoned.hpp"

namespace dv {

namespace detail {

inline constexpr int64_t nanoseconds_per_day = interval_ds::unit_count;
inline constexpr int epoch_julian_day = 2440588;  // 1970-01-01

// ---- durations as counts of nanoseconds in 128 bits

template <typename T>
inline constexpr bool is_duration = false;
template <typename Rep, typename Period>
inline constexpr bool is_duration<std::chrono::duration<Rep, Period>> = true;

template <typename T>
concept duration = is_duration<T>;

// A number of the message for a count that is out of range.
inline int shown(double count) noexcept {
    return !(count < INT_MAX) ? INT_MAX : count < INT_MIN ? INT_MIN : static_cast<int>(count);
}

enum class rounding { toward_past, toward_zero };

// d in nanoseconds. Raises -5114 or -5064 unless it has less than `limit` days.
template <typename Rep, typename Period>
int128 nanoseconds_of(std::chrono::duration<Rep, Period> d, rounding mode, double limit, error_at at) {
    using days_t = std::chrono::duration<int64_t, std::ratio<86400>>;
    using real_days_t = std::chrono::duration<double, std::ratio<86400>>;
    const double about = real_days_t(d).count();
    if (!(about > -limit && about < limit)) {  // nor NaN
        raise(at, "day", shown(about), shown(-limit), shown(limit));
    }
    const auto days = std::chrono::floor<days_t>(d);
    const bool is_up = mode == rounding::toward_zero && about < 0;
    const auto rest = is_up ? std::chrono::ceil<std::chrono::nanoseconds>(d - days)
                            : std::chrono::floor<std::chrono::nanoseconds>(d - days);
    return int128{days.count()} * nanoseconds_per_day + rest.count();
}

constexpr int128 floor_divide(int128 x, int128 y) noexcept { return x / y - (x % y < 0 ? 1 : 0); }

// Raises -5114 where the count does not fit its type.
template <typename Duration>
Duration duration_of_count(int128 count) {
    using rep = typename Duration::rep;
    const auto fitting = static_cast<rep>(count);
    if (fitting != count || (fitting < 0) != (count < 0)) {
        raise(-5114, "count", shown(static_cast<double>(count)),
              shown(static_cast<double>(std::numeric_limits<rep>::min())),
              shown(static_cast<double>(std::numeric_limits<rep>::max())));
    }
    return Duration(fitting);
}

template <typename Duration>
Duration duration_of(int128 nanoseconds, rounding mode) {
    using rep = typename Duration::rep;
    using period = std::ratio_divide<std::nano, typename Duration::period>;
    if constexpr (std::chrono::treat_as_floating_point_v<rep>) {
        const auto real = static_cast<long double>(nanoseconds);
        return std::chrono::duration_cast<Duration>(std::chrono::duration<long double, std::nano>(real));
    } else {
        static_assert(std::is_integral_v<rep>);
        const int128 product = nanoseconds * period::num;
        const bool is_floor = mode == rounding::toward_past;
        const int128 count = is_floor ? floor_divide(product, period::den) : product / period::den;
        return duration_of_count<Duration>(count);
    }
}

// ---- timestamps as nanoseconds since 1970-01-01

inline constexpr double days_limit = 4e6;  // of any datetime, and more

inline void set_days_and_rest(dv_timestamp_t &x, int128 nanoseconds) {
    const int128 days = floor_divide(nanoseconds, nanoseconds_per_day) + epoch_julian_day;
    const auto rest = static_cast<int64_t>(nanoseconds - (days - epoch_julian_day) * nanoseconds_per_day);
    if (days < 0 || days > DV_JULIAN_DAY_MAX)
        raise(-5114, "day", static_cast<int>(days), 0, int{DV_JULIAN_DAY_MAX});
    dv_date_from_julian_day(&date_part(x), static_cast<int>(days));
    const auto seconds = static_cast<int>(rest / interval_ds::per_second);
    x.hour = static_cast<uint8_t>(seconds / 3600);
    x.minute = static_cast<uint8_t>(seconds / 60 % 60);
    x.second = static_cast<uint8_t>(seconds % 60);
    auto fraction = static_cast<uint32_t>(rest % interval_ds::per_second);
    for (int i = 3; i >= 0; --i, fraction >>= 8) x.csec[i] = static_cast<uint8_t>(fraction & 0xFF);
    dv_date_is_valid(&date_part(x));
}

inline int128 nanoseconds_of(const dv_timestamp_t &x) {
    dv_timestamp_t day = x;
    const int julian_day = dv_date_to_julian_day(&date_part(day));
    if (julian_day < 0 || julian_day > DV_JULIAN_DAY_MAX)
        raise(-5114, "day", julian_day, 0, int{DV_JULIAN_DAY_MAX});
    dv_date_from_julian_day(&date_part(day), julian_day);
    if (std::memcmp(&day, &x, sizeof day) != 0)  // a day that day numbers do not have
        raise(-5114, "day", int{x.day}, 1, x.day - 1);
    const int64_t seconds = (x.hour * 60 + x.minute) * 60 + x.second;
    const int64_t fraction = x.csec[0] << 24 | x.csec[1] << 16 | x.csec[2] << 8 | x.csec[3];
    return int128{julian_day - epoch_julian_day} * nanoseconds_per_day + seconds * interval_ds::per_second +
           fraction;
}

// ---- which pairs there are: convert<To, From>::call(from), which raises

template <typename To, typename From>
struct convert;

template <typename To, typename Duration>
requires one_of<To, date, timestamp>
struct convert<To, std::chrono::local_time<Duration>> {
    static To call(const std::chrono::local_time<Duration> &from) {
        timestamp::record_type x = timestamp().record();
        set_days_and_rest(x,
                          nanoseconds_of(from.time_since_epoch(), rounding::toward_past, days_limit, -5114));
        if constexpr (std::same_as<To, date>) {
            return timestamp(x).date();
        } else {
            return timestamp(x);
        }
    }
};

template <typename To, typename Duration>
requires one_of<To, timestamp_tz, timestamp_ltz>
struct convert<To, std::chrono::sys_time<Duration>> {
    static To call(const std::chrono::sys_time<Duration> &from) {
        const std::chrono::local_time<Duration> same(from.time_since_epoch());
        const timestamp utc = convert<timestamp, std::chrono::local_time<Duration>>::call(same);
        if constexpr (std::same_as<To, timestamp_tz>) {
            return timestamp_tz(dv_ts_tz_t{utc.record(), zone().record()});
        } else {
            return timestamp_ltz(dv_ts_ltz_t{utc.record()});
        }
    }
};

template <typename To>
requires one_of<To, date, timestamp>
struct convert<To, std::chrono::year_month_day> {
    static To call(const std::chrono::year_month_day &from) {
        if (!from.ok()) raise(-5114, "day", static_cast<int>(static_cast<unsigned>(from.day())), 1, 31);
        return convert<To, std::chrono::local_days>::call(std::chrono::local_days(from));
    }
};

template <typename Duration>
struct convert<time_of_day, std::chrono::hh_mm_ss<Duration>> {
    static time_of_day call(const std::chrono::hh_mm_ss<Duration> &from) {
        const int128 of_day = nanoseconds_of(from.to_duration(), rounding::toward_past, 2, -5114);
        if (of_day < 0 || of_day >= nanoseconds_per_day)
            raise(-5114, "hour", static_cast<int>(floor_divide(of_day, nanoseconds_per_day / 24)), 0, 23);
        dv_timestamp_t x{};
        set_days_and_rest(x, of_day);
        return timestamp(x).time();
    }
};

// Is the period one of months?
template <typename Duration>
concept month_duration =
    duration<Duration> && std::ratio_divide<typename Duration::period, std::chrono::months::period>::den == 1;

template <duration From>
requires(!month_duration<From>) struct convert<interval_ds, From> {
    static interval_ds call(const From &from) {
        dv_itv_dts_t x;
        interval_ds::raising::store(x, nanoseconds_of(from, rounding::toward_zero, leading_max + 1.0, -5064));
        return interval_ds::of_valid(x);
    }
};

template <month_duration From>
requires std::integral<typename From::rep>
struct convert<interval_ym, From> {
    using months = std::ratio_divide<typename From::period, std::chrono::months::period>;
    static interval_ym call(const From &from) {
        dv_itv_ytm_t x;
        interval_ym::raising::store(x, int128{from.count()} * months::num);
        return interval_ym::of_valid(x);
    }
};

// ---- the other way

template <typename Duration, typename From>
requires one_of<From, date, timestamp>
struct convert<std::chrono::local_time<Duration>, From> {
    static std::chrono::local_time<Duration> call(const From &from) {
        const int128 since_epoch = nanoseconds_of(timestamp(from).record());
        return std::chrono::local_time<Duration>(duration_of<Duration>(since_epoch, rounding::toward_past));
    }
};

template <typename Duration, typename From>
requires one_of<From, timestamp_tz, timestamp_ltz>
struct convert<std::chrono::sys_time<Duration>, From> {
    static std::chrono::sys_time<Duration> call(const From &from) {
        const int128 since_epoch = nanoseconds_of(from.utc().record());
        return std::chrono::sys_time<Duration>(duration_of<Duration>(since_epoch, rounding::toward_past));
    }
};

template <typename From>
requires one_of<From, date, timestamp>
struct convert<std::chrono::year_month_day, From> {
    static std::chrono::year_month_day call(const From &from) {
        return std::chrono::year_month_day(convert<std::chrono::local_days, From>::call(from));
    }
};

template <typename From>
requires one_of<From, date, timestamp>
struct convert<std::chrono::weekday, From> {
    static std::chrono::weekday call(const From &from) {
        return std::chrono::weekday(convert<std::chrono::local_days, From>::call(from));
    }
};

template <typename Duration>
struct convert<std::chrono::hh_mm_ss<Duration>, interval_ds> {
    static std::chrono::hh_mm_ss<Duration> call(const interval_ds &from) {
        const int128 total = interval_ds::total(from.record());
        return std::chrono::hh_mm_ss<Duration>(duration_of<Duration>(total, rounding::toward_zero));
    }
};

template <typename Duration>
struct convert<std::chrono::hh_mm_ss<Duration>, time_of_day> {
    static std::chrono::hh_mm_ss<Duration> call(const time_of_day &from) {
        const int128 of_day = nanoseconds_of(timestamp(date(), from).record());
        return std::chrono::hh_mm_ss<Duration>(duration_of<Duration>(of_day, rounding::toward_past));
    }
};

template <duration To>
requires(!month_duration<To>) struct convert<To, interval_ds> {
    static To call(const interval_ds &from) {
        return duration_of<To>(interval_ds::total(from.record()), rounding::toward_zero);
    }
};

template <month_duration To>
requires std::integral<typename To::rep>
struct convert<To, interval_ym> {
    using months = std::ratio_divide<typename To::period, std::chrono::months::period>;
    static To call(const interval_ym &from) {
        return duration_of_count<To>(interval_ym::total(from.record()) / months::num);
    }
};

template <typename To, typename From>
concept chrono_pair = requires {
    &convert<To, From>::call;
};

}  // namespace detail

// The value of the other library; see above for the pairs and for what is thrown.
template <typename To, typename From>
requires detail::chrono_pair<To, From> To chrono_cast(const From &from) {
    return guarded([&] { return detail::convert<To, From>::call(from); });
}

// The same without an exception.
template <typename To, typename From>
requires detail::chrono_pair<To, From> result<To> try_chrono_cast(const From &from) {
    return attempt([&] { return detail::convert<To, From>::call(from); });
}

namespace detail {

template <duration Duration>
using interval_of = std::conditional_t<month_duration<Duration>, interval_ym, interval_ds>;

// Can an interval be added to it that such a duration is?
template <typename T, typename Duration>
concept moves_by = value<T> && duration<Duration> && chrono_pair<interval_of<Duration>, Duration> &&
    requires(T &x, const interval_of<Duration> &y) {
    x += y;
};

}  // namespace detail

// Later or earlier by a duration, as by the interval that chrono_cast makes of it: t + 36h, and months and
// years as calendars have them. Throw what chrono_cast and the addition throw.
template <typename T, typename Duration>
requires detail::moves_by<T, Duration> T &operator+=(T &x, const Duration &y) {
    return x += chrono_cast<detail::interval_of<Duration>>(y);
}
template <typename T, typename Duration>
requires detail::moves_by<T, Duration> T &operator-=(T &x, const Duration &y) {
    return x -= chrono_cast<detail::interval_of<Duration>>(y);
}
template <typename T, typename Duration>
requires detail::moves_by<T, Duration> T operator+(T x, const Duration &y) { return x += y; }
template <typename T, typename Duration>
requires detail::moves_by<T, Duration> T operator-(T x, const Duration &y) { return x -= y; }

}  // namespace dv

#endif  // DVTYPES_CHRONO_HPP
