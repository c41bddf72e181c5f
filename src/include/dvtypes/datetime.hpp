// dvtypes/datetime.hpp: DATE, TIME and TIMESTAMP as C++ values. Header only; C++20.
//
// ```cpp
// const dv::timestamp due("2026-11-29 13:05");
// std::cout << due + dv::interval_ym(0, 1) << '\n';                 // 2026-12-29 13:05:00.000000000
// std::cout << due.date() - dv::date(2026, 1, 1) << '\n';           // +332 13:05:00.000000000
// ```
//
// Texts are those of dvtypes/iso.h: "2024-02-29 13:05:00", "-0044-03-15 00:00:00"; reading also takes shorter
// forms of ISO 8601, such as "2024-02-29". Other forms need a model (model.hpp).

#ifndef DVTYPES_DATETIME_HPP
#define DVTYPES_DATETIME_HPP

#include "dvtypes/datetime.h"
#include "dvtypes/interval.hpp"
#include "dvtypes/iso.h"
#include "dvtypes/timestamp.h"
#include "dvtypes/value.hpp"

namespace dv {

namespace detail {

// The DATE at the beginning of a record.
inline dv_date_t &date_part(dv_date_t &x) noexcept { return x; }
inline dv_date_t &date_part(dv_timestamp_t &x) noexcept { return reinterpret_cast<dv_date_t &>(x); }
inline const dv_date_t &date_part(const dv_date_t &x) noexcept { return x; }
inline const dv_date_t &date_part(const dv_timestamp_t &x) noexcept {
    return reinterpret_cast<const dv_date_t &>(x);
}

// As SQL: in 64 bits, where the C function would wrap.
inline void move(dv_date_t &x, const interval_ym &y) {
    const int64_t months = std::clamp<int64_t>(y.total_months(), -INT_MAX, INT_MAX);
    dv_date_add_month(&x, static_cast<int>(months), /*is_from_itv=*/1);
}
inline void move(dv_date_t &x, const interval_ds &y) { dv_date_add_itv_dts(&x, &y.record()); }
inline void move(dv_timestamp_t &x, const interval_ds &y) { dv_timestamp_add_itv_dts(&x, &y.record()); }

}  // namespace detail

namespace parts {

// What dates and timestamps share: plus and minus an interval. A month that lacks the day throws -5005, and
// what leaves the calendar -5114.
template <typename Derived, typename Record, size_t KeySize = sizeof(Record)>
class basic_datetime : public ordered_value<Derived, Record, KeySize> {
  public:
    struct raising {
        static void add(Record &x, const interval_ym &y) {
            detail::move(detail::date_part(x), y);
            dv_date_is_valid(&detail::date_part(x));
        }
        static void add(Record &x, const interval_ds &y) {
            detail::move(x, y);
            dv_date_is_valid(&detail::date_part(x));
        }
        template <interval Interval>
        static void sub(Record &x, const Interval &y) {
            Derived::raising::add(x, -y);
        }
    };

    // Later or earlier by an interval. Months go to the same day of the target month, and from the last day
    // of a month to the last day of the other (28 February 2026 and a month is 31 March); a month that lacks
    // the day throws -5005. A timestamp_tz is moved by its fields in UTC, whose day may be another than the
    // local one.
    template <interval Interval>
    Derived &operator+=(const Interval &y) {
        return this->change([&](Record &x) { Derived::raising::add(x, y); });
    }
    template <interval Interval>
    Derived &operator-=(const Interval &y) {
        return *this += -y;
    }
    // As the assignments.
    template <interval Interval>
    friend Derived operator+(Derived x, const Interval &y) {
        return x += y;
    }
    template <interval Interval>
    friend Derived operator+(const Interval &x, Derived y) {
        return y += x;
    }
    template <interval Interval>
    friend Derived operator-(Derived x, const Interval &y) {
        return x -= y;
    }

  protected:
    using ordered_value<Derived, Record, KeySize>::ordered_value;
};

// What has a calendar day and a time of day of its own: their fields.
template <typename Derived, typename Record, size_t KeySize = sizeof(Record)>
class local_datetime : public basic_datetime<Derived, Record, KeySize> {
  public:
    // -9999..9999 without 0, 1..12, 1..31.
    int year() const noexcept { return dv_date_get_field(&day_(), DT_FMT_UNIT_YEAR); }
    int month() const noexcept { return this->record_.month; }
    int day() const noexcept { return this->record_.day; }
    // 0..23, 0..59, 0..59.
    int hour() const noexcept { return this->record_.hour; }
    int minute() const noexcept { return this->record_.minute; }
    int second() const noexcept { return this->record_.second; }
    // The Julian Day Number of the day: 2440588 of 1970-01-01. Its remainder by 7 is the weekday, 0 on
    // Mondays.
    int julian_day() const noexcept { return dv_date_to_julian_day(&day_()); }

  protected:
    using basic_datetime<Derived, Record, KeySize>::basic_datetime;

  private:
    const dv_date_t &day_() const noexcept { return detail::date_part(this->record_); }
};

}  // namespace parts

namespace detail {

inline interval_ds difference(const dv_timestamp_t &x, const dv_timestamp_t &y) noexcept {
    dv_itv_dts_t difference;
    dv_timestamp_sub_timestamp_into_itv_dts(&difference, &x, &y);
    interval_ds::set_total(difference, interval_ds::total(difference));
    return interval_ds::of_valid(difference);
}

}  // namespace detail

// DATE: a day and a time of day to the second.
class date : public parts::local_datetime<date, dv_date_t, sizeof(dv_date_t) - 1> {
  public:
    struct raising : basic_datetime::raising {
        static void read(dv_date_t &x, const detail::text_argument &text) {
            dv_date_from_iso(&x, text.data, text.length);
        }
        static void make(dv_date_t &x, int year, int month, int day, int hour = 0, int minute = 0,
                         int second = 0) {
            dv_date_from_unit_values(&x, year, month, day, hour, minute, second);
        }
    };

    // 1970-01-01 00:00:00.
    constexpr date() noexcept : local_datetime({119, 170, 1, 1, 0, 0, 0, 0}) {}
    // Throws -5114 for what is no day or no time of day.
    date(int year, int month, int day, int hour = 0, int minute = 0, int second = 0) : date() {
        guarded([&] { raising::make(record_, year, month, day, hour, minute, second); });
    }
    // "2024-02-29 13:05:00", "2024-02-29", "20240229T1305"; throws -5113, -5114.
    explicit date(std::string_view text) : date() {
        const detail::text_argument argument(text);
        guarded([&] { raising::read(record_, argument); });
    }
    // Of a valid record (bytes.hpp checks one).
    constexpr explicit date(const dv_date_t &record) noexcept : local_datetime(record) {}
    // The present, on the host's clocks (dv_getlocaltime).
    static date now() {
        date x;
        guarded([&] { dv_date_current(&x.record_); });
        return x;
    }

    // "2024-02-29 13:05:00", "-0044-03-15 00:00:00".
    std::string to_string() const {
        char text[DV_ISO_DATE_SIZE];
        guarded([&] { dv_date_to_iso(&record_, text, sizeof text); });
        return text;
    }
};

// TIME: a time of day to the nanosecond.
class time_of_day : public parts::ordered_value<time_of_day, dv_time_t> {
  public:
    struct raising {
        static void read(dv_time_t &x, const detail::text_argument &text) {
            dv_time_from_iso(&x, text.data, text.length);
        }
        static void make(dv_time_t &x, int hour, int minute = 0, int second = 0, int nanosecond = 0) {
            dv_time_from_unit_values(&x, hour, minute, second, nanosecond);
        }
    };

    // Midnight.
    constexpr time_of_day() noexcept : ordered_value(dv_time_t{}) {}
    // Throws -5114 for what is no time of day.
    explicit time_of_day(int hour, int minute = 0, int second = 0, int nanosecond = 0) : time_of_day() {
        guarded([&] { raising::make(record_, hour, minute, second, nanosecond); });
    }
    // "13:05:00.5", "13:05", "130500"; throws -5113, -5114.
    explicit time_of_day(std::string_view text) : time_of_day() {
        const detail::text_argument argument(text);
        guarded([&] { raising::read(record_, argument); });
    }
    // Of a valid record (bytes.hpp checks one).
    constexpr explicit time_of_day(const dv_time_t &record) noexcept : ordered_value(record) {}
    // The present, on the host's clocks (dv_getlocaltime).
    static time_of_day now() {
        time_of_day x;
        guarded([&] { dv_time_current(&x.record_); });
        return x;
    }

    // 0..23, 0..59, 0..59, 0..999999999.
    int hour() const noexcept { return record_.hour; }
    int minute() const noexcept { return record_.minute; }
    int second() const noexcept { return record_.second; }
    int nanosecond() const noexcept { return dv_time_get_field(&record_, DT_FMT_UNIT_FSEC); }

    // "13:05:00.500000000".
    std::string to_string() const {
        char text[DV_ISO_TIME_SIZE];
        guarded([&] { dv_time_to_iso(&record_, text, sizeof text); });
        return text;
    }
};

// TIMESTAMP: a day and a time of day to the nanosecond.
class timestamp : public parts::local_datetime<timestamp, dv_timestamp_t> {
  public:
    struct raising : basic_datetime::raising {
        static void read(dv_timestamp_t &x, const detail::text_argument &text) {
            dv_timestamp_from_iso(&x, text.data, text.length);
        }
        static void make(dv_timestamp_t &x, int year, int month, int day, int hour = 0, int minute = 0,
                         int second = 0, int nanosecond = 0) {
            dv_timestamp_from_unit_values(&x, year, month, day, hour, minute, second, nanosecond);
        }
    };

    // 1970-01-01 00:00:00.
    constexpr timestamp() noexcept : local_datetime({119, 170, 1, 1, 0, 0, 0, 0, {}}) {}
    // Throws -5114 for what is no day or no time of day.
    timestamp(int year, int month, int day, int hour = 0, int minute = 0, int second = 0, int nanosecond = 0)
        : timestamp() {
        guarded([&] { raising::make(record_, year, month, day, hour, minute, second, nanosecond); });
    }
    // "2024-02-29 13:05:00.5", "2024-02-29T13:05", "2024-02-29"; throws -5113, -5114.
    explicit timestamp(std::string_view text) : timestamp() {
        const detail::text_argument argument(text);
        guarded([&] { raising::read(record_, argument); });
    }
    // Of a valid record (bytes.hpp checks one).
    constexpr explicit timestamp(const dv_timestamp_t &record) noexcept : local_datetime(record) {}
    // The same day and time of day. So dates compare with timestamps, and are subtracted from them.
    timestamp(const dv::date &x) noexcept : timestamp() { detail::date_part(record_) = x.record(); }
    // A time of that day, whatever time of day the date has.
    timestamp(const dv::date &day, const time_of_day &time) noexcept : timestamp(day) {
        record_.hour = time.record().hour;
        record_.minute = time.record().minute;
        record_.second = time.record().second;
        std::memcpy(record_.csec, time.record().csec, sizeof record_.csec);
    }
    // The present, on the host's clocks (dv_getlocaltime), to the microsecond.
    static timestamp now() {
        timestamp x;
        guarded([&] { dv_timestamp_current(&x.record_); });
        return x;
    }

    // 0..999999999.
    int nanosecond() const noexcept { return dv_timestamp_get_field(&record_, DT_FMT_UNIT_FSEC); }
    // Day and time of day, the fraction of the second cut off.
    dv::date date() const noexcept {
        dv_date_t date;
        dv_date_from_timestamp(&date, &record_);
        return dv::date(date);
    }
    // The time of day, with its fraction.
    time_of_day time() const noexcept {
        dv_time_t time;
        dv_time_from_timestamp(&time, &record_);
        return time_of_day(time);
    }

    // "2024-02-29 13:05:00.500000000".
    std::string to_string() const {
        char text[DV_ISO_TIMESTAMP_SIZE];
        guarded([&] { dv_timestamp_to_iso(&record_, text, sizeof text); });
        return text;
    }
};

// Exact; a date counts as a timestamp.
inline interval_ds operator-(const timestamp &x, const timestamp &y) noexcept {
    return detail::difference(x.record(), y.record());
}

// A date or a timestamp. What follows is as in SQL; of a timestamp_tz it is that of its local(), put back by
// timestamp_tz(local, zone).
template <typename T>
concept calendar_value = std::same_as<T, date> || std::same_as<T, timestamp>;

namespace detail {

template <calendar_value T>
const dv_date_t &date_part(const T &x) noexcept {
    return date_part(x.record());
}

// To a unit by a function of C, without a fraction of a second.
template <auto Operation, calendar_value T>
T to_unit(const T &x, std::string_view unit) {
    return changed(x, [&](typename T::record_type &record) {
        Operation(&date_part(record), unit.data(), static_cast<int>(std::min<size_t>(unit.size(), INT_MAX)));
        if constexpr (std::same_as<T, timestamp>) std::memset(record.csec, 0, sizeof record.csec);
    });
}

}  // namespace detail

// The beginning of a unit, which is a format element such as "MM", "Q", "IW" or "HH24"
// (docs/datetime-models.md); without one, of the day. Throws -5014 for what is no unit.
template <calendar_value T>
T trunc(const T &x, std::string_view unit = "DD") {
    return detail::to_unit<dv_date_trunc>(x, unit);
}

// The nearer beginning of a unit, the later one of two that are as near. Throws -5014, and -5114 beyond 9999.
template <calendar_value T>
T round(const T &x, std::string_view unit = "DD") {
    return detail::to_unit<dv_date_round>(x, unit);
}

// So many months later, at the same time of day. A day that the target month lacks becomes its last; the last
// day of a month goes to the last. Throws -5114 beyond the calendar.
template <calendar_value T>
T add_months(const T &x, int months) {
    return detail::changed(x, [&](typename T::record_type &record) {
        dv_date_add_month(&detail::date_part(record), months, /*is_from_itv=*/0);
    });
}

// The last day of the month, at the same time of day.
template <calendar_value T>
T last_day(const T &x) {
    return detail::changed(x, [](typename T::record_type &record) {
        dv_date_get_last_date(&detail::date_part(record), &detail::date_part(record));
    });
}

// The day, 1 to 7 days later, that has a name in the language ("Monday", "MON"), at the same time of day.
// Throws -5113 for what is no name.
template <calendar_value T>
T next_day(const T &x, std::string_view name, dv_nls_date_lang_e language = DV_NLS_DATE_LANG_AMERICAN) {
    const detail::text_argument argument(name);
    return detail::changed(x, [&](typename T::record_type &record) {
        dv_date_get_next_day(&detail::date_part(record), argument.data, argument.length, language,
                             DVSTR_CHARSET_UTF8);
    });
}

// x - y in months: whole for equal days of the month and for two last days, else with 31sts of a month
// (dv_date_months_between).
template <calendar_value X, calendar_value Y>
double months_between(const X &x, const Y &y) noexcept {
    return dv_date_months_between(&detail::date_part(x), &detail::date_part(y));
}

// So many days later, rounded to the second.
inline date add_days(const date &x, double days) {
    return detail::changed(x, [&](dv_date_t &record) { dv_date_add_day(&record, days); });
}

// x - y in days, as a double; the interval that the operator gives is exact.
inline double days_between(const date &x, const date &y) noexcept {
    return dv_date_sub(&x.record(), &y.record());
}

}  // namespace dv

#endif  // DVTYPES_DATETIME_HPP
