// dvtypes/datetime.hpp: datetimes and intervals as C++ values. Header only; C++20.
//
//   const dv::reader<dv::date> read("DD Mon YYYY", "NLS_DATE_LANGUAGE = AMERICAN");
//   const dv::writer<dv::date> write("YYYY-MM-DD");
//   dv::date due = read("21 Nov 2026") + dv::interval_ym(0, 3);
//   std::cout << write(due);                                         // 2027-02-21
//
//   const dv::timestamp_tz seoul(dv::timestamp(2026, 11, 21, 9, 30), dv::zone("Asia/Seoul"));
//   std::cout << seoul.at(dv::zone("America/New_York"));             // 2026-11-20 19:30:00.000000000 ...
//
// Values hold valid records that are not NULL. What an operation throws is what the function behind it raises
// (dvtypes/datetime.h, timestamp.h, timestamp_tz.h, interval.h, timezone.h), as dv::error. Compiled models
// may be used by any number of threads.

#ifndef DVTYPES_DATETIME_HPP
#define DVTYPES_DATETIME_HPP

#include <compare>
#include <concepts>
#include <cstring>
#include <ostream>
#include <span>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

#include "dvtypes/datetime.h"
#include "dvtypes/datetime_fmt.h"
#include "dvtypes/dv_type.h"
#include "dvtypes/error.hpp"
#include "dvtypes/interval.h"
#include "dvtypes/timestamp.h"
#include "dvtypes/timestamp_tz.h"
#include "dvtypes/timezone.h"

namespace dv {

// A record; the unsigned bytewise order of its first KeySize bytes is the order of the values.
template <typename Record, size_t KeySize = sizeof(Record)>
class ordered_record {
  public:
    const Record &record() const noexcept { return record_; }
    std::span<const uint8_t, KeySize> key() const noexcept {
        return std::span<const uint8_t, KeySize>(reinterpret_cast<const uint8_t *>(&record_), KeySize);
    }

    friend bool operator==(const ordered_record &x, const ordered_record &y) noexcept {
        return std::memcmp(&x.record_, &y.record_, KeySize) == 0;
    }
    friend std::strong_ordering operator<=>(const ordered_record &x, const ordered_record &y) noexcept {
        return std::memcmp(&x.record_, &y.record_, KeySize) <=> 0;
    }

  protected:
    ordered_record() noexcept = default;
    explicit ordered_record(const Record &record) noexcept : record_(record) {}

    Record record_{};
};

namespace detail {

// A text as the C functions take it: no NULL, and no length of 0, which would stand for "up to the NUL".
struct text_argument {
    explicit text_argument(std::string_view text) noexcept
        : data(text.empty() ? "" : text.data()), length(text.empty() ? -1 : static_cast<int>(text.size())) {}
    const char *data;
    int length;
};

}  // namespace detail

// ---------------------------------------------------------------------------------------------------------
// Intervals
// ---------------------------------------------------------------------------------------------------------

// INTERVAL YEAR TO MONTH. The text is that of the qualifier YEAR TO MONTH: "+01-02".
class interval_ym : public ordered_record<dv_itv_ytm_t> {
  public:
    explicit interval_ym(int years = 0, int months = 0) noexcept {
        dv_itv_ytm_set_total_month(&record_, int64_t{years} * 12 + months);
    }
    explicit interval_ym(const dv_itv_ytm_t &record) noexcept : ordered_record(record) {}
    // Leading precision 9.
    explicit interval_ym(std::string_view text) {
        const detail::text_argument argument(text);
        guarded(
            [&] { dv_itv_ytm_from_str(&record_, argument.data, argument.length, DV_ITV_YEAR_TO_MONTH, 9); });
    }

    int years() const noexcept { return dv_itv_ytm_get_field(&record_, DT_FMT_UNIT_YEAR); }
    int months() const noexcept { return dv_itv_ytm_get_field(&record_, DT_FMT_UNIT_MONTH); }

    interval_ym &operator+=(const interval_ym &y) noexcept {
        dv_itv_ytm_add_itv_ytm(&record_, &y.record_);
        return *this;
    }
    interval_ym &operator-=(const interval_ym &y) noexcept {
        dv_itv_ytm_sub_itv_ytm(&record_, &y.record_);
        return *this;
    }
    interval_ym &operator*=(double factor) noexcept {
        dv_itv_ytm_mul(&record_, factor);
        return *this;
    }
    friend interval_ym operator+(interval_ym x, const interval_ym &y) noexcept { return x += y; }
    friend interval_ym operator-(interval_ym x, const interval_ym &y) noexcept { return x -= y; }
    friend interval_ym operator*(interval_ym x, double factor) noexcept { return x *= factor; }
    friend interval_ym operator-(const interval_ym &x) noexcept { return interval_ym() - x; }

    std::string to_string() const {
        char text[DV_ITV_YTM_TEXT_SIZE];
        dv_itv_ytm_to_str(&record_, text, 2, sizeof text);
        return text;
    }
    friend std::ostream &operator<<(std::ostream &out, const interval_ym &x) { return out << x.to_string(); }
};

// INTERVAL DAY TO SECOND, with days, seconds and nanoseconds of one sign. The text is that of the qualifier
// DAY TO SECOND: "+01 02:03:04.500000000".
class interval_ds : public ordered_record<dv_itv_dts_t> {
  public:
    explicit interval_ds(int days = 0, int hours = 0, int minutes = 0, int seconds = 0,
                         int nanoseconds = 0) noexcept {
        set(((int64_t{days} * 24 + hours) * 60 + minutes) * 60 + seconds, nanoseconds);
    }
    explicit interval_ds(const dv_itv_dts_t &record) noexcept : ordered_record(record) { normalize(); }
    // Leading precision 9.
    explicit interval_ds(std::string_view text) {
        const detail::text_argument argument(text);
        guarded([&] {
            dv_itv_dts_from_str(&record_, argument.data, argument.length, DV_ITV_DAY_TO_SECOND, 9, 9);
        });
    }

    int days() const noexcept { return dv_itv_dts_get_field(&record_, DT_FMT_UNIT_DAY); }
    int seconds() const noexcept { return dv_itv_dts_get_field(&record_, DT_FMT_UNIT_SECOND); }  // of the day
    int nanoseconds() const noexcept { return dv_itv_dts_get_field(&record_, DT_FMT_UNIT_FSEC); }

    interval_ds &operator+=(const interval_ds &y) noexcept {
        dv_itv_dts_add_itv_dts(&record_, &y.record_);
        return normalize();
    }
    interval_ds &operator-=(const interval_ds &y) noexcept {
        dv_itv_dts_sub_itv_dts(&record_, &y.record_);
        return normalize();
    }
    friend interval_ds operator+(interval_ds x, const interval_ds &y) noexcept { return x += y; }
    friend interval_ds operator-(interval_ds x, const interval_ds &y) noexcept { return x -= y; }
    friend interval_ds operator-(const interval_ds &x) noexcept { return interval_ds() - x; }

    std::string to_string() const {
        char text[DV_ITV_DTS_TEXT_SIZE];
        guarded([&] { dv_itv_dts_to_str(&record_, text, 2, 9, sizeof text); });
        return text;
    }
    friend std::ostream &operator<<(std::ostream &out, const interval_ds &x) { return out << x.to_string(); }

  private:
    // Sums leave carries in the seconds, and rests of the other sign in the nanoseconds.
    interval_ds &normalize() noexcept {
        set(dv_itv_dts_get_total_sec(&record_), nanoseconds());
        return *this;
    }
    void set(int64_t seconds, int nanoseconds) noexcept {
        constexpr int billion = 1'000'000'000, day = 86'400;
        seconds += nanoseconds / billion;
        nanoseconds %= billion;
        if (seconds > 0 && nanoseconds < 0) --seconds, nanoseconds += billion;
        if (seconds < 0 && nanoseconds > 0) ++seconds, nanoseconds -= billion;
        dv_itv_dts_set_field(&record_, DT_FMT_UNIT_DAY, static_cast<int>(seconds / day));
        dv_itv_dts_set_field(&record_, DT_FMT_UNIT_SECOND, static_cast<int>(seconds % day));
        dv_itv_dts_set_field(&record_, DT_FMT_UNIT_FSEC, nanoseconds);
    }
};

// ---------------------------------------------------------------------------------------------------------
// Datetimes
// ---------------------------------------------------------------------------------------------------------

template <typename T>
concept interval = std::same_as<T, interval_ym> || std::same_as<T, interval_ds>;

namespace detail {

inline dv_date_t *date_part(dv_timestamp_t &x) noexcept { return reinterpret_cast<dv_date_t *>(&x); }

inline void add(dv_date_t &x, const interval_ym &y) { dv_date_add_itv_ytm(&x, &y.record()); }
inline void add(dv_date_t &x, const interval_ds &y) { dv_date_add_itv_dts(&x, &y.record()); }
inline void add(dv_timestamp_t &x, const interval_ym &y) { dv_date_add_itv_ytm(date_part(x), &y.record()); }
inline void add(dv_timestamp_t &x, const interval_ds &y) { dv_timestamp_add_itv_dts(&x, &y.record()); }

// Raises -5114 when the value's own zone has no such local time: 9999-12-31 20:00 UTC at +09:00.
inline void check_local_time(const dv_ts_tz_t &x) {
    dv_date_t local;
    dv_date_from_ts_tz(&local, &x);
    dv_date_is_valid(&local);
}
inline void add(dv_ts_tz_t &x, const interval_ym &y) {
    dv_ts_tz_add_itv_ytm(&x, &y.record());
    check_local_time(x);
}
inline void add(dv_ts_tz_t &x, const interval_ds &y) {
    dv_ts_tz_add_itv_dts(&x, &y.record());
    check_local_time(x);
}

}  // namespace detail

// What dates and timestamps share: plus and minus an interval. A month that lacks the day throws -5005; the
// value is then as it was.
template <typename Value, typename Record, size_t KeySize = sizeof(Record)>
class datetime : public ordered_record<Record, KeySize> {
  public:
    template <interval Interval>
    Value &operator+=(const Interval &y) {
        Record sum = this->record_;
        guarded([&] { detail::add(sum, y); });
        this->record_ = sum;
        return static_cast<Value &>(*this);
    }
    template <interval Interval>
    Value &operator-=(const Interval &y) {
        return *this += -y;
    }
    template <interval Interval>
    friend Value operator+(Value x, const Interval &y) {
        return x += y;
    }
    template <interval Interval>
    friend Value operator-(Value x, const Interval &y) {
        return x -= y;
    }

  protected:
    using ordered_record<Record, KeySize>::ordered_record;
};

// DATE.
class date : public datetime<date, dv_date_t> {
  public:
    date(int year, int month, int day, int hour = 0, int minute = 0, int second = 0) {
        guarded([&] { dv_date_from_unit_values(&record_, year, month, day, hour, minute, second); });
    }
    explicit date(const dv_date_t &record) noexcept : datetime(record) {}
    static date now() {
        dv_date_t record;
        guarded([&] { dv_date_current(&record); });
        return date(record);
    }

    int year() const noexcept { return dv_date_get_field(&record_, DT_FMT_UNIT_YEAR); }
    int month() const noexcept { return record_.month; }
    int day() const noexcept { return record_.day; }
    int hour() const noexcept { return record_.hour; }
    int minute() const noexcept { return record_.minute; }
    int second() const noexcept { return record_.second; }
    int julian_day() const noexcept { return dv_date_to_julian_day(&record_); }

    friend date add_days(date x, double days) {
        guarded([&] { dv_date_add_day(&x.record_, days); });
        return x;
    }
    // A day that the target month lacks becomes its last.
    friend date add_months(date x, int months) {
        guarded([&] { dv_date_add_month(&x.record_, months, /*is_from_itv=*/0); });
        return x;
    }
    friend date last_day(date x) {
        guarded([&] { dv_date_get_last_date(&x.record_, &x.record_); });
        return x;
    }
    // To a unit that is a format element, such as "MM" or "Q".
    friend date trunc(date x, const char *unit = "DD") {
        guarded([&] { dv_date_trunc(&x.record_, unit, 0); });
        return x;
    }
    friend date round(date x, const char *unit = "DD") {
        guarded([&] { dv_date_round(&x.record_, unit, 0); });
        return x;
    }
    friend double days_between(const date &x, const date &y) noexcept {
        return dv_date_sub(&x.record_, &y.record_);
    }
    friend double months_between(const date &x, const date &y) noexcept {
        return dv_date_months_between(&x.record_, &y.record_);
    }
};

// TIME.
class time_of_day : public ordered_record<dv_time_t> {
  public:
    explicit time_of_day(int hour = 0, int minute = 0, int second = 0, int nanosecond = 0) {
        guarded([&] { dv_time_from_unit_values(&record_, hour, minute, second, nanosecond); });
    }
    explicit time_of_day(const dv_time_t &record) noexcept : ordered_record(record) {}

    int hour() const noexcept { return record_.hour; }
    int minute() const noexcept { return record_.minute; }
    int second() const noexcept { return record_.second; }
    int nanosecond() const noexcept { return dv_time_get_field(&record_, DT_FMT_UNIT_FSEC); }
};

// TIMESTAMP.
class timestamp : public datetime<timestamp, dv_timestamp_t> {
  public:
    timestamp(int year, int month, int day, int hour = 0, int minute = 0, int second = 0,
              int nanosecond = 0) {
        guarded([&] {
            dv_timestamp_from_unit_values(&record_, year, month, day, hour, minute, second, nanosecond);
        });
    }
    explicit timestamp(const dv_timestamp_t &record) noexcept : datetime(record) {}
    timestamp(const dv::date &x) noexcept { std::memcpy(&record_, &x.record(), sizeof x.record()); }
    static timestamp now() {
        dv_timestamp_t record;
        guarded([&] { dv_timestamp_current(&record); });
        return timestamp(record);
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

    friend interval_ds operator-(const timestamp &x, const timestamp &y) {
        dv_itv_dts_t difference;
        guarded([&] { dv_timestamp_sub_timestamp_into_itv_dts(&difference, &x.record_, &y.record_); });
        return interval_ds(difference);
    }
};

// A time zone: a region, or a fixed UTC offset.
class zone {
  public:
    // "Asia/Seoul", "+09:00": what timezone_parse reads.
    explicit zone(std::string_view text) {
        guarded([&] { timezone_parse(&record_, text.data(), static_cast<int>(text.size())); });
    }
    explicit zone(const timezone_t &record) noexcept : record_(record) {}
    // Of the host; not while another thread changes the environment.
    static zone of_host() {
        timezone_t record;
        guarded([&] { timezone_get_system_default(&record); });
        return zone(record);
    }

    std::string name() const {
        char text[TZ_NAME_TEXT_SIZE];
        timezone_get_zone_name(&record_, text, sizeof text);
        return text;
    }
    const timezone_t &record() const noexcept { return record_; }

  private:
    timezone_t record_;
};

// TIMESTAMP WITH TIME ZONE: compared as an instant, shown in its zone.
class timestamp_tz : public datetime<timestamp_tz, dv_ts_tz_t, sizeof(dv_timestamp_t)> {
  public:
    // A time on the zone's clocks. Throws -5110 when they never showed it.
    timestamp_tz(const timestamp &local, const dv::zone &zone) {
        guarded([&] { dv_ts_tz_from_timestamp(&record_, &local.record(), &zone.record()); });
    }
    explicit timestamp_tz(const dv_ts_tz_t &record) noexcept : datetime(record) {}

    timestamp utc() const noexcept { return timestamp(record_.utc); }
    timestamp local() const {
        dv_timestamp_t local;
        guarded([&] { dv_timestamp_from_ts_tz(&local, &record_); });
        return timestamp(local);
    }
    dv::zone zone() const noexcept { return dv::zone(record_.tz); }

    // The same instant in another zone. Throws -5114 when its local time there lies outside the calendar.
    timestamp_tz at(const dv::zone &zone) const {
        const dv_ts_ltz_t instant = {record_.utc};
        dv_ts_tz_t there;
        guarded([&] {
            dv_ts_tz_from_ts_ltz(&there, &instant, &zone.record());
            detail::check_local_time(there);
        });
        return timestamp_tz(there);
    }

    friend interval_ds operator-(const timestamp_tz &x, const timestamp_tz &y) { return x.utc() - y.utc(); }
};

// ---------------------------------------------------------------------------------------------------------
// Text under format models
// ---------------------------------------------------------------------------------------------------------

namespace detail {

// A compiled model.
class model {
  public:
    // Throws what dt_fmt_ctx_set and dt_fmt_ctx_set_user_nls raise.
    model(std::string_view text, std::string_view nls, dv_type_t type, bool is_from_str) {
        const text_argument argument(text);
        try {
            guarded([&] {
                dt_fmt_ctx_set(_system_allocator, &ctx_, argument.data, argument.length, type,
                               is_from_str ? 1 : 0, DVSTR_CHARSET_UTF8);
                dt_fmt_ctx_set_user_nls(_system_allocator, &ctx_, nls.data(), static_cast<int>(nls.size()));
            });
        } catch (const error &) {
            dt_fmt_ctx_reset(_system_allocator, &ctx_);
            throw;
        }
    }
    ~model() { dt_fmt_ctx_reset(_system_allocator, &ctx_); }
    model(const model &) = delete;
    model &operator=(const model &) = delete;

    const dt_fmt_ctx_t *get() const noexcept { return &ctx_; }

  private:
    dt_fmt_ctx_t ctx_{};
};

constexpr int fsec_digits = 9;

// ---- per type: its code, the model of operator<<, and its functions

template <typename Value>
struct text_of;

template <>
struct text_of<date> {
    static constexpr dv_type_t type = DV_TYPE_DATE;
    static constexpr const char *plain_model = "YYYY-MM-DD HH24:MI:SS";
    static void read(dv_date_t &x, const text_argument &text, const dt_fmt_ctx_t *model) {
        dv_date_from_str(&x, text.data, text.length, model);
    }
    static bool write(const dv_date_t &x, std::span<char> text, const dt_fmt_ctx_t *model) {
        return dv_date_to_str(&x, text.data(), static_cast<int>(text.size()), model) == CONV_STATUS_WHOLE;
    }
};

template <>
struct text_of<time_of_day> {
    static constexpr dv_type_t type = DV_TYPE_TIME;
    static constexpr const char *plain_model = "HH24:MI:SS.FF9";
    static void read(dv_time_t &x, const text_argument &text, const dt_fmt_ctx_t *model) {
        dv_time_from_str(&x, text.data, text.length, model, fsec_digits);
    }
    static bool write(const dv_time_t &x, std::span<char> text, const dt_fmt_ctx_t *model) {
        return dv_time_to_str(&x, text.data(), static_cast<int>(text.size()), model, fsec_digits) ==
               CONV_STATUS_WHOLE;
    }
};

template <>
struct text_of<timestamp> {
    static constexpr dv_type_t type = DV_TYPE_TIMESTAMP;
    static constexpr const char *plain_model = "YYYY-MM-DD HH24:MI:SS.FF9";
    static void read(dv_timestamp_t &x, const text_argument &text, const dt_fmt_ctx_t *model) {
        dv_timestamp_from_str(&x, text.data, text.length, model, fsec_digits);
    }
    static bool write(const dv_timestamp_t &x, std::span<char> text, const dt_fmt_ctx_t *model) {
        return dv_timestamp_to_str(&x, text.data(), static_cast<int>(text.size()), model, fsec_digits) ==
               CONV_STATUS_WHOLE;
    }
};

template <>
struct text_of<timestamp_tz> {
    static constexpr dv_type_t type = DV_TYPE_TS_TZ;
    static constexpr const char *plain_model = "YYYY-MM-DD HH24:MI:SS.FF9 TZR";
    static void read(dv_ts_tz_t &x, const text_argument &text, const dt_fmt_ctx_t *model) {
        const timezone_t utc = {100, 0, 0, {TZ_ID_OFFSET >> 8, TZ_ID_OFFSET & 0xFF}};
        dv_ts_tz_from_str(&x, text.data, text.length, model, fsec_digits, &utc);
    }
    static bool write(const dv_ts_tz_t &x, std::span<char> text, const dt_fmt_ctx_t *model) {
        return dv_ts_tz_to_str(&x, text.data(), static_cast<int>(text.size()), model, fsec_digits) ==
               CONV_STATUS_WHOLE;
    }
};

}  // namespace detail

// A model compiled for reading. Texts are UTF-8, in Korean unless a setting is given; one without a zone is
// of +00:00.
template <typename Value>
class reader {
  public:
    explicit reader(std::string_view model, std::string_view nls = {})
        : model_(model, nls, detail::text_of<Value>::type, /*is_from_str=*/true) {}

    Value operator()(std::string_view text) const {
        std::remove_cvref_t<decltype(std::declval<Value>().record())> record{};
        const detail::text_argument argument(text);
        guarded([&] { detail::text_of<Value>::read(record, argument, model_.get()); });
        return Value(record);
    }

  private:
    detail::model model_;
};

// A model compiled for writing.
template <typename Value>
class writer {
  public:
    explicit writer(std::string_view model, std::string_view nls = {})
        : model_(model, nls, detail::text_of<Value>::type, /*is_from_str=*/false) {}

    std::string operator()(const Value &x) const {
        const int predicted = dt_fmt_get_predicted_str_len(model_.get(), detail::fsec_digits);
        for (size_t size = static_cast<size_t>(predicted) + 2;; size *= 2) {
            std::string text(size, '\0');
            const bool is_whole =
                guarded([&] { return detail::text_of<Value>::write(x.record(), text, model_.get()); });
            // A text that fills the buffer may be a cut one.
            const size_t length = text.find('\0');
            if (!is_whole || length == text.npos) continue;
            text.resize(length);
            return text;
        }
    }

  private:
    detail::model model_;
};

// Years before Christ without their era.
template <typename Value>
requires requires { detail::text_of<Value>::plain_model; }
std::ostream &operator<<(std::ostream &out, const Value &x) {
    static const writer<Value> write(detail::text_of<Value>::plain_model);
    return out << write(x);
}

}  // namespace dv

#endif  // DVTYPES_DATETIME_HPP
