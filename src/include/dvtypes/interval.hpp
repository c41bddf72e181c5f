// dvtypes/interval.hpp: INTERVAL YEAR TO MONTH and INTERVAL DAY TO SECOND as C++ values. Header only; C++20.
//
// ```cpp
// const dv::interval_ds shift("+0 08:30:00");
// std::cout << shift * 5 << '\n';                                   // +01 18:30:00.000000000
// std::cout << -shift / 2 << '\n';                                  // -00 04:15:00.000000000
// std::cout << dv::interval_ym(1, 2) * 1.5 << '\n';                 // +01-09
// ```
//
// As in SQL an interval has at most nine digits of years or days: whatever would have more throws -5064. All
// fields have one sign. Products and quotients are those of NUMBER, cut to a whole month or nanosecond;
// division by zero throws -5065.

#ifndef DVTYPES_INTERVAL_HPP
#define DVTYPES_INTERVAL_HPP

#include "dvtypes/interval.h"
#include "dvtypes/number.hpp"
#include "dvtypes/value.hpp"

namespace dv {

namespace detail {

inline constexpr int leading_digits = 9;
inline constexpr int leading_max = 999'999'999;

// x as the total of an interval whose leading field has so many units, cut toward zero. Raises -5064 where
// that field has more than nine digits.
inline int128 checked_total(int128 x, int64_t units) {
    const int128 leading = x / units;
    if (leading > leading_max || leading < -leading_max) raise(-5064);
    return x;
}

// x * y or x / y as NUMBERs, cut to an integer.
template <auto Operation>
int128 scaled_total(int128 x, const number &y, int64_t units) {
    number_t total, limit;
    from_int128(total, x);
    Operation(&total, &y.record());
    number_round_at_withmode(&total, 0, NUMBER_RMODE_TRUNC);
    from_int128(limit, (int128{leading_max} + 1) * units);
    number_t above = total;
    number_abs(&above);
    if (number_cmp(&above, &limit) >= 0) raise(-5064);
    int128 result = 0;
    to_wide(total, result);
    return result;
}

}  // namespace detail

namespace parts {

// What both intervals can do: all of it on the total of months or nanoseconds, in 128 bits. Derived has
//   unit_count            of the total in the leading field
//   total(record), set_total(record, total)
template <typename Derived, typename Record>
class basic_interval : public ordered_value<Derived, Record> {
  public:
    struct raising {
        static void add(Record &x, const Derived &y) {
            store(x, Derived::total(x) + Derived::total(y.record()));
        }
        static void sub(Record &x, const Derived &y) {
            store(x, Derived::total(x) - Derived::total(y.record()));
        }
        static void mul(Record &x, const number &y) {
            store(x, detail::scaled_total<number_mul>(Derived::total(x), y, Derived::unit_count));
        }
        static void div(Record &x, const number &y) {
            if (y == 0) detail::raise(-5065);
            store(x, detail::scaled_total<number_div>(Derived::total(x), y, Derived::unit_count));
        }
        static void store(Record &x, detail::int128 total) {
            Derived::set_total(x, detail::checked_total(total, Derived::unit_count));
        }
    };

    // Throw -5064; / throws -5065 where y is zero.
    Derived &operator+=(const Derived &y) {
        return this->change([&](Record &x) { raising::add(x, y); });
    }
    Derived &operator-=(const Derived &y) {
        return this->change([&](Record &x) { raising::sub(x, y); });
    }
    Derived &operator*=(const number &y) {
        return this->change([&](Record &x) { raising::mul(x, y); });
    }
    Derived &operator/=(const number &y) {
        return this->change([&](Record &x) { raising::div(x, y); });
    }
    // As the assignments.
    friend Derived operator+(Derived x, const Derived &y) { return x += y; }
    friend Derived operator-(Derived x, const Derived &y) { return x -= y; }
    friend Derived operator*(Derived x, const number &y) { return x *= y; }
    friend Derived operator*(const number &x, Derived y) { return y *= x; }
    friend Derived operator/(Derived x, const number &y) { return x /= y; }
    // By the decimal that the factor shows: number(1.5).
    template <std::floating_point Factor>
    friend Derived operator*(Derived x, Factor y) {
        return x *= number(y);
    }
    template <std::floating_point Factor>
    friend Derived operator*(Factor x, Derived y) {
        return y *= number(x);
    }
    template <std::floating_point Divisor>
    friend Derived operator/(Derived x, Divisor y) {
        return x /= number(y);
    }
    // The sign, kept or turned.
    friend Derived operator+(const Derived &x) noexcept { return x; }
    friend Derived operator-(Derived x) noexcept {
        Derived::set_total(x.record_, -Derived::total(x.record_));
        return x;
    }

  protected:
    using ordered_value<Derived, Record>::ordered_value;

    void assign_total(detail::int128 total) {
        guarded([&] { raising::store(this->record_, total); });
    }
};

}  // namespace parts

// INTERVAL YEAR TO MONTH. The text is that of the qualifier YEAR TO MONTH: "+01-02".
class interval_ym : public parts::basic_interval<interval_ym, dv_itv_ytm_t> {
  public:
    struct raising : basic_interval::raising {
        static void read(dv_itv_ytm_t &x, const detail::text_argument &text) {
            dv_itv_ytm_from_str(&x, text.data, text.length, DV_ITV_YEAR_TO_MONTH, detail::leading_digits);
            store(x, total(x));
        }
    };

    // +00-00.
    constexpr interval_ym() noexcept : basic_interval({{0x40, 0, 0, 0}, 11}) {}
    // The sum of the two, which may differ in sign: interval_ym(1, -2) is ten months.
    explicit interval_ym(int years, int months = 0) : interval_ym() {
        assign_total(detail::int128{years} * unit_count + months);
    }
    // Brings carries, and months of the other sign, into the normal form.
    explicit interval_ym(const dv_itv_ytm_t &record) : interval_ym() { assign_total(total(record)); }
    // "+01-02"; throws -5056, -5064.
    explicit interval_ym(std::string_view text) : interval_ym() {
        const detail::text_argument argument(text);
        guarded([&] { raising::read(record_, argument); });
    }

    // The fields, of one sign; -11..11 months.
    int years() const noexcept { return dv_itv_ytm_get_field(&record_, DT_FMT_UNIT_YEAR); }
    int months() const noexcept { return dv_itv_ytm_get_field(&record_, DT_FMT_UNIT_MONTH); }
    // Years and months in months.
    int64_t total_months() const noexcept { return static_cast<int64_t>(total(record_)); }

    // "+01-02", "-123-00".
    std::string to_string() const {
        char text[DV_ITV_YTM_TEXT_SIZE];
        dv_itv_ytm_to_str(&record_, text, 2, sizeof text);
        return text;
    }

    // For the operators: the total of months.
    static constexpr int64_t unit_count = 12;
    static detail::int128 total(const dv_itv_ytm_t &x) noexcept {
        return detail::int128{dv_itv_ytm_get_field(&x, DT_FMT_UNIT_YEAR)} * unit_count +
               dv_itv_ytm_get_field(&x, DT_FMT_UNIT_MONTH);
    }
    static void set_total(dv_itv_ytm_t &x, detail::int128 months) noexcept {
        dv_itv_ytm_set_total_month(&x, static_cast<int64_t>(months));
    }
};

// INTERVAL DAY TO SECOND. The text is that of the qualifier DAY TO SECOND: "+01 02:03:04.500000000".
class interval_ds : public parts::basic_interval<interval_ds, dv_itv_dts_t> {
  public:
    struct raising : basic_interval::raising {
        static void read(dv_itv_dts_t &x, const detail::text_argument &text) {
            dv_itv_dts_from_str(&x, text.data, text.length, DV_ITV_DAY_TO_SECOND, detail::leading_digits, 9);
            store(x, total(x));
        }
    };

    // +00 00:00:00.
    constexpr interval_ds() noexcept : basic_interval({{0x40, 0, 0, 0}, {0x40, 0, 0, 0}, {0x40, 0, 0, 0}}) {}
    // The sum of all; each may have any size and sign.
    explicit interval_ds(int days, int hours = 0, int minutes = 0, int seconds = 0, int nanoseconds = 0)
        : interval_ds() {
        const int64_t whole = ((int64_t{days} * 24 + hours) * 60 + minutes) * 60 + seconds;
        assign_total(detail::int128{whole} * per_second + nanoseconds);
    }
    // Brings carries, and fields of the other sign, into the normal form.
    explicit interval_ds(const dv_itv_dts_t &record) : interval_ds() { assign_total(total(record)); }
    // "+01 02:03:04.5"; throws -5056, -5064.
    explicit interval_ds(std::string_view text) : interval_ds() {
        const detail::text_argument argument(text);
        guarded([&] { raising::read(record_, argument); });
    }

    // The three fields of the record, of one sign: days, seconds of a day (-86399..86399), nanoseconds of a
    // second. Hours and minutes: chrono_cast<std::chrono::hh_mm_ss<std::chrono::seconds>>(x), or as any
    // duration.
    int days() const noexcept { return dv_itv_dts_get_field(&record_, DT_FMT_UNIT_DAY); }
    int seconds() const noexcept { return dv_itv_dts_get_field(&record_, DT_FMT_UNIT_SECOND); }
    int nanoseconds() const noexcept { return dv_itv_dts_get_field(&record_, DT_FMT_UNIT_FSEC); }
    // All of it in seconds, the fraction cut off.
    int64_t total_seconds() const noexcept { return static_cast<int64_t>(total(record_) / per_second); }

    // "+01 02:03:04.500000000".
    std::string to_string() const {
        char text[DV_ITV_DTS_TEXT_SIZE];
        guarded([&] { dv_itv_dts_to_str(&record_, text, 2, 9, sizeof text); });
        return text;
    }

    // For the operators: the total of nanoseconds.
    static constexpr int64_t per_second = 1'000'000'000;
    static constexpr int64_t unit_count = per_second * 86'400;
    static detail::int128 total(const dv_itv_dts_t &x) noexcept {
        return detail::int128{dv_itv_dts_get_total_sec(&x)} * per_second +
               dv_itv_dts_get_field(&x, DT_FMT_UNIT_FSEC);
    }
    static void set_total(dv_itv_dts_t &x, detail::int128 nanoseconds) noexcept {
        const auto of_day = static_cast<int64_t>(nanoseconds % unit_count);
        dv_itv_dts_set_field(&x, DT_FMT_UNIT_DAY, static_cast<int>(nanoseconds / unit_count));
        dv_itv_dts_set_field(&x, DT_FMT_UNIT_SECOND, static_cast<int>(of_day / per_second));
        dv_itv_dts_set_field(&x, DT_FMT_UNIT_FSEC, static_cast<int>(of_day % per_second));
    }
};

// An interval of either type.
template <typename T>
concept interval = std::same_as<T, interval_ym> || std::same_as<T, interval_ds>;

// |x|.
template <interval Interval>
Interval abs(const Interval &x) noexcept {
    return x < Interval() ? -x : x;
}

}  // namespace dv

#endif  // DVTYPES_INTERVAL_HPP
