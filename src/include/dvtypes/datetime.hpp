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

template <typename T>
concept interval = std::same_as<T, interval_ym> || std::same_as<T, interval_ds>;

namespace detail {

// The DATE at the beginning of a record.
inline dv_date_t &date_part(dv_date_t &x) noexcept { return x; }
inline dv_date_t &date_part(dv_timestamp_t &x) noexcept { return reinterpret_cast<dv_date_t &>(x); }

// As SQL: in 64 bits, where the C function would wrap.
inline void add_months(dv_date_t &x, const interval_ym &y) {
    const int64_t months = std::clamp<int64_t>(y.total_months(), -INT_MAX, INT_MAX);
    dv_date_add_month(&x, static_cast<int>(months), /*is_from_itv=*/1);
}
inline void add_seconds(dv_date_t &x, const interval_ds &y) { dv_date_add_itv_dts(&x, &y.record()); }
inline void add_seconds(dv_timestamp_t &x, const interval_ds &y) {
    dv_timestamp_add_itv_dts(&x, &y.record());
}

// What dates and timestamps share: plus and minus an interval. A month that lacks the day throws -5005, and
// what leaves the calendar -5114.
template <typename Derived, typename Record, size_t KeySize = sizeof(Record)>
class basic_datetime : public ordered_value<Derived, Record, KeySize> {
  public:
    struct raising {
        static void add(Record &x, const interval_ym &y) {
            add_months(date_part(x), y);
            dv_date_is_valid(&date_part(x));
        }
        static void add(Record &x, const interval_ds &y) {
            add_seconds(x, y);
            dv_date_is_valid(&date_part(x));
        }
        template <interval Interval>
        static void sub(Record &x, const Interval &y) {
            Derived::raising::add(x, -y);
        }
    };

    template <interval Interval>
    Derived &operator+=(const Interval &y) {
        return this->change([&](Record &x) { Derived::raising::add(x, y); });
    }
    template <interval Interval>
    Derived &operator-=(const Interval &y) {
        return *this += -y;
    }
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

inline interval_ds difference(const dv_timestamp_t &x, const dv_timestamp_t &y) noexcept {
    dv_itv_dts_t difference;
    dv_timestamp_sub_timestamp_into_itv_dts(&difference, &x, &y);
    interval_ds::set_total(difference, interval_ds::total(difference));
    return interval_ds::of_valid(difference);
}

}  // namespace detail

// DATE: a day and a time of day to the second.
class date : public detail::basic_datetime<date, dv_date_t, sizeof(dv_date_t) - 1> {
  public:
    struct raising : basic_datetime::raising {
        static void read(dv_date_t &x, const detail::text_argument &text) {
            dv_date_from_iso(&x, text.data, text.length);
        }
    };

    constexpr date() noexcept : basic_datetime({119, 170, 1, 1, 0, 0, 0, 0}) {}
    date(int year, int month, int day, int hour = 0, int minute = 0, int second = 0) : date() {
        guarded([&] { dv_date_from_unit_values(&record_, year, month, day, hour, minute, second); });
    }
    explicit date(std::string_view text) : date() {
        const detail::text_argument argument(text);
        guarded([&] { raising::read(record_, argument); });
    }
    constexpr explicit date(const dv_date_t &record) noexcept : basic_datetime(record) {}
    static date now() {
        date x;
        guarded([&] { dv_date_current(&x.record_); });
        return x;
    }

    int year() const noexcept { return dv_date_get_field(&record_, DT_FMT_UNIT_YEAR); }
    int month() const noexcept { return record_.month; }
    int day() const noexcept { return record_.day; }
    int hour() const noexcept { return record_.hour; }
    int minute() const noexcept { return record_.minute; }
    int second() const noexcept { return record_.second; }
    int julian_day() const noexcept { return dv_date_to_julian_day(&record_); }

    std::string to_string() const {
        char text[DV_ISO_DATE_SIZE];
        guarded([&] { dv_date_to_iso(&record_, text, sizeof text); });
        return text;
    }

    friend date add_days(date x, double days) {
        return x.change([&](dv_date_t &record) { dv_date_add_day(&record, days); });
    }
    // A day that the target month lacks becomes its last.
    friend date add_months(date x, int months) {
        return x.change([&](dv_date_t &record) { dv_date_add_month(&record, months, /*is_from_itv=*/0); });
    }
    friend date last_day(date x) {
        return x.change([](dv_date_t &record) { dv_date_get_last_date(&record, &record); });
    }
    // To a unit that is a format element, such as "MM" or "Q".
    friend date trunc(date x, const char *unit = "DD") {
        return x.change([&](dv_date_t &record) { dv_date_trunc(&record, unit, 0); });
    }
    friend date round(date x, const char *unit = "DD") {
        return x.change([&](dv_date_t &record) { dv_date_round(&record, unit, 0); });
    }
    // In days, as a double; the operator's interval is exact.
    friend double days_between(const date &x, const date &y) noexcept {
        return dv_date_sub(&x.record_, &y.record_);
    }
    friend double months_between(const date &x, const date &y) noexcept {
        return dv_date_months_between(&x.record_, &y.record_);
    }
};

// TIME: a time of day to the nanosecond.
class time_of_day : public detail::ordered_value<time_of_day, dv_time_t> {
  public:
    struct raising {
        static void read(dv_time_t &x, const detail::text_argument &text) {
            dv_time_from_iso(&x, text.data, text.length);
        }
    };

    constexpr time_of_day() noexcept : ordered_value(dv_time_t{}) {}
    explicit time_of_day(int hour, int minute = 0, int second = 0, int nanosecond = 0) : time_of_day() {
        guarded([&] { dv_time_from_unit_values(&record_, hour, minute, second, nanosecond); });
    }
    explicit time_of_day(std::string_view text) : time_of_day() {
        const detail::text_argument argument(text);
        guarded([&] { raising::read(record_, argument); });
    }
    constexpr explicit time_of_day(const dv_time_t &record) noexcept : ordered_value(record) {}

    int hour() const noexcept { return record_.hour; }
    int minute() const noexcept { return record_.minute; }
    int second() const noexcept { return record_.second; }
    int nanosecond() const noexcept { return dv_time_get_field(&record_, DT_FMT_UNIT_FSEC); }

    std::string to_string() const {
        char text[DV_ISO_TIME_SIZE];
        guarded([&] { dv_time_to_iso(&record_, text, sizeof text); });
        return text;
    }
};

// TIMESTAMP: a day and a time of day to the nanosecond.
class timestamp : public detail::basic_datetime<timestamp, dv_timestamp_t> {
  public:
    struct raising : basic_datetime::raising {
        static void read(dv_timestamp_t &x, const detail::text_argument &text) {
            dv_timestamp_from_iso(&x, text.data, text.length);
        }
    };

    constexpr timestamp() noexcept : basic_datetime({119, 170, 1, 1, 0, 0, 0, 0, {}}) {}
    timestamp(int year, int month, int day, int hour = 0, int minute = 0, int second = 0, int nanosecond = 0)
        : timestamp() {
        guarded([&] {
            dv_timestamp_from_unit_values(&record_, year, month, day, hour, minute, second, nanosecond);
        });
    }
    explicit timestamp(std::string_view text) : timestamp() {
        const detail::text_argument argument(text);
        guarded([&] { raising::read(record_, argument); });
    }
    constexpr explicit timestamp(const dv_timestamp_t &record) noexcept : basic_datetime(record) {}
    timestamp(const dv::date &x) noexcept : timestamp() { detail::date_part(record_) = x.record(); }
    timestamp(const dv::date &day, const time_of_day &time) noexcept : timestamp(day) {
        record_.hour = time.record().hour;
        record_.minute = time.record().minute;
        record_.second = time.record().second;
        std::memcpy(record_.csec, time.record().csec, sizeof record_.csec);
    }
    static timestamp now() {
        timestamp x;
        guarded([&] { dv_timestamp_current(&x.record_); });
        return x;
    }

    // The fraction of the second cut off.
    dv::date date() const noexcept {
        dv_date_t date;
        dv_date_from_timestamp(&date, &record_);
        return dv::date(date);
    }
    time_of_day time() const noexcept {
        dv_time_t time;
        dv_time_from_timestamp(&time, &record_);
        return time_of_day(time);
    }

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

}  // namespace dv

#endif  // DVTYPES_DATETIME_HPP
