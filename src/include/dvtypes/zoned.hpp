// dvtypes/zoned.hpp: time zones, TIMESTAMP WITH TIME ZONE and WITH LOCAL TIME ZONE as C++ values. Header
// only; C++20.
//
// ```cpp
// const dv::timestamp_tz call(dv::timestamp(2026, 11, 21, 9, 30), dv::zone("Asia/Seoul"));
// std::cout << call.at(dv::zone("America/New_York")) << '\n';
// // 2026-11-20 19:30:00.000000000 America/New_York EST
// std::cout << (call == dv::timestamp_tz("2026-11-21 00:30 +00:00")) << '\n';  // 1
// const dv::timestamp dinner(2026, 10, 25, 2, 30);                  // clocks go from 03:00 back to 02:00
// const dv::zone paris("Europe/Paris");
// std::cout << dv::local_times(dinner, paris).count() << '\n';       // 2
// std::cout << dv::timestamp_tz(dinner, paris, dv::meaning::earlier).abbreviation() << '\n';   // CEST
// ```
//
// The present is chrono_cast<timestamp_tz>(std::chrono::system_clock::now()), shown by at(zone) (chrono.hpp).
// Both are instants, compared as such: == and hash know nothing of zones. Texts are those of dvtypes/iso.h,
// with the zone and the abbreviation in force, so that of a local time that clocks showed twice each meaning
// comes back. A text without a zone is of +00:00.

#ifndef DVTYPES_ZONED_HPP
#define DVTYPES_ZONED_HPP

#include <array>

#include "dvtypes/datetime.hpp"
#include "dvtypes/timestamp_tz.h"
#include "dvtypes/timezone.h"

namespace dv {

// A time zone: a region, or a fixed UTC offset. Ordered by region name, then fixed offsets from west to east.
class zone : public parts::keyed_value<zone, timezone_t> {
  public:
    struct raising {
        static void read(timezone_t &x, const detail::text_argument &text) {
            timezone_parse(&x, text.data, text.length);
        }
    };

    // +00:00.
    constexpr zone() noexcept : keyed_value({100, 0, 0, {TZ_ID_OFFSET >> 8, TZ_ID_OFFSET & 0xFF}}) {}
    // "Asia/Seoul", "+09:00": what timezone_parse reads. Blanks alone are Etc/UTC; "Z" is no zone.
    explicit zone(std::string_view text) : zone() {
        const detail::text_argument argument(text);
        guarded([&] { raising::read(record_, argument); });
    }
    // Of a valid record (bytes.hpp checks one).
    constexpr explicit zone(const timezone_t &record) noexcept : keyed_value(record) {}
    // Of the host; not while another thread changes the environment.
    static zone of_host() {
        zone x;
        guarded([&] { timezone_get_system_default(&x.record_); });
        return x;
    }

    // 0..579 for a region, whose entry is region_tab_[number()]; 581 for a fixed offset.
    constexpr int number() const noexcept { return record_.zone_id[0] << 8 | record_.zone_id[1]; }
    // "Europe/Paris", "+09:00".
    std::string name() const {
        char text[TZ_NAME_TEXT_SIZE];
        timezone_get_zone_name(&record_, text, sizeof text);
        return text;
    }
    // name().
    std::string to_string() const { return name(); }

    // Its number, and of a fixed offset the minutes. That of a region is in force at some instant alone.
    constexpr std::array<uint8_t, 4> key() const noexcept {
        const int hour = record_.utc_hour - 100;
        const int minutes = hour * 60 + (hour > 0 ? record_.utc_min : -record_.utc_min);
        const int place = number() == TZ_ID_OFFSET ? minutes + 24 * 60 : 0;
        return {record_.zone_id[0], record_.zone_id[1], static_cast<uint8_t>(place >> 8),
                static_cast<uint8_t>(place & 0xFF)};
    }
};

class timestamp_tz;

// Which of two instants a local time is to be, where its zone's clocks showed it twice or never.
enum class meaning { earlier, later };

// What a local time is on a zone's clocks: shown once; skipped by them, in a gap; or shown twice.
class local_times {
  public:
    // Of any local time in any zone.
    local_times(const timestamp &local, const zone &zone) noexcept : local_(local) {
        timezone_get_local_times(&zone.record(), &detail::date_part(local.record()), &times_);
    }

    // How often clocks showed it: 1, 0 or 2.
    int count() const noexcept { return times_.count; }
    bool is_skipped() const noexcept { return times_.count == 0; }
    bool is_repeated() const noexcept { return times_.count == 2; }

    // What was skipped or shown twice: the local times from begin() on, in front of end(). Both are the local
    // time itself, to the second, where it was shown once.
    timestamp begin() const noexcept { return timestamp(dv::date(times_.begin)); }
    timestamp end() const noexcept { return timestamp(dv::date(times_.end)); }
    // By how much clocks were ahead of those of +00:00 before the change and after it.
    interval_ds offset_before() const { return offset_of(times_.before); }
    interval_ds offset_after() const { return offset_of(times_.after); }

    // The two instants, the same one where it was shown once. Of a time in a gap, which lies n minutes behind
    // its begin and m in front of its end, the one m minutes before the change, and the one n minutes after
    // it. Throw -5114 beyond the calendar.
    timestamp_tz earlier() const;
    timestamp_tz later() const;

  private:
    static interval_ds offset_of(const timezone_t &tz) {
        const int hour = tz.utc_hour - 100;
        return interval_ds(0, hour, hour > 0 ? tz.utc_min : -tz.utc_min);
    }

    timestamp local_;
    tz_local_times_t times_{};
};

// TIMESTAMP WITH LOCAL TIME ZONE: an instant alone, shown in the zone of whoever looks. Its text is that of a
// timestamp_tz at +00:00; one of any zone is read. Months are added where there is a zone: to
// x.local(zone) or x.at(zone).
class timestamp_ltz : public parts::ordered_value<timestamp_ltz, dv_ts_ltz_t> {
  public:
    struct raising {
        static void read(dv_ts_ltz_t &x, const detail::text_argument &text) {
            dv_ts_tz_t zoned;
            dv_ts_tz_from_iso(&zoned, text.data, text.length);
            x.utc = zoned.utc;
        }
        static void make(dv_ts_ltz_t &x, const timestamp &local, const zone &zone) {
            dv_ts_ltz_from_timestamp(&x, &local.record(), &zone.record());
        }
        static void add(dv_ts_ltz_t &x, const interval_ds &y) { timestamp::raising::add(x.utc, y); }
        static void sub(dv_ts_ltz_t &x, const interval_ds &y) { timestamp::raising::add(x.utc, -y); }
    };

    // 1970-01-01 00:00:00 +00:00.
    constexpr timestamp_ltz() noexcept : ordered_value({timestamp().record()}) {}
    // A time on the zone's clocks. Throws -5110 when they never showed it.
    timestamp_ltz(const timestamp &local, const dv::zone &zone) : timestamp_ltz() {
        guarded([&] { raising::make(record_, local, zone); });
    }
    // As a timestamp_tz reads it.
    explicit timestamp_ltz(std::string_view text) : timestamp_ltz() {
        const detail::text_argument argument(text);
        guarded([&] { raising::read(record_, argument); });
    }
    // Of a valid record (bytes.hpp checks one).
    constexpr explicit timestamp_ltz(const dv_ts_ltz_t &record) noexcept : ordered_value(record) {}
    // The same instant.
    explicit timestamp_ltz(const timestamp_tz &x) noexcept;

    // On the clocks of +00:00.
    timestamp utc() const noexcept { return timestamp(record_.utc); }
    // On a zone's clocks. Throws -5114 when that lies outside the calendar.
    timestamp local(const dv::zone &zone) const;
    // The same instant, shown in a zone. Throws -5114 when the local time lies outside the calendar.
    timestamp_tz at(const dv::zone &zone) const;
    // That of at(zone()).
    std::string to_string() const;

    // Later or earlier. Throw -5114 beyond the calendar.
    timestamp_ltz &operator+=(const interval_ds &y) {
        return change([&](dv_ts_ltz_t &x) { raising::add(x, y); });
    }
    timestamp_ltz &operator-=(const interval_ds &y) { return *this += -y; }
    // As the assignments.
    friend timestamp_ltz operator+(timestamp_ltz x, const interval_ds &y) { return x += y; }
    friend timestamp_ltz operator+(const interval_ds &x, timestamp_ltz y) { return y += x; }
    friend timestamp_ltz operator-(timestamp_ltz x, const interval_ds &y) { return x -= y; }
    // The time from y to x, exact.
    friend interval_ds operator-(const timestamp_ltz &x, const timestamp_ltz &y) noexcept {
        return x.utc() - y.utc();
    }
};

// TIMESTAMP WITH TIME ZONE: compared as an instant, shown in its zone. Months are added to its fields in UTC,
// as the database does.
class timestamp_tz : public parts::basic_datetime<timestamp_tz, dv_ts_tz_t, sizeof(dv_timestamp_t)> {
  public:
    struct raising {
        static void read(dv_ts_tz_t &x, const detail::text_argument &text) {
            dv_ts_tz_from_iso(&x, text.data, text.length);
        }
        static void make(dv_ts_tz_t &x, const timestamp &local, const zone &zone) {
            dv_ts_tz_from_timestamp(&x, &local.record(), &zone.record());
        }
        static void make(dv_ts_tz_t &x, const timestamp &local, const zone &zone, meaning wanted) {
            tz_local_times_t times;
            timezone_get_local_times(&zone.record(), &detail::date_part(local.record()), &times);
            const bool is_by_after = (wanted == meaning::earlier) == (times.count == 0);
            x = {local.record(), is_by_after ? times.after : times.before};
            timezone_shift_to_west(&x.tz, &detail::date_part(x.utc));
            adjust(x);
        }
        template <interval Interval>
        static void add(dv_ts_tz_t &x, const Interval &y) {
            timestamp::raising::add(x.utc, y);
            adjust(x);
        }
        template <interval Interval>
        static void sub(dv_ts_tz_t &x, const Interval &y) {
            add(x, -y);
        }
        // Gives the zone its offset at the instant. Raises -5114 when that has no local time there:
        // 9999-12-31 20:00 UTC at +09:00.
        static void adjust(dv_ts_tz_t &x) {
            timezone_adjust(&x.tz, &detail::date_part(x.utc));
            dv_date_t local;
            dv_date_from_ts_tz(&local, &x);
            dv_date_is_valid(&local);
        }
    };

    // 1970-01-01 00:00:00 +00:00.
    constexpr timestamp_tz() noexcept : basic_datetime({timestamp().record(), dv::zone().record()}) {}
    // A time on the zone's clocks; of one that they showed twice, the later meaning. Throws -5110 when they
    // never showed it; local_times and dv::explain (explain.hpp) tell where the gap is.
    timestamp_tz(const timestamp &local, const dv::zone &zone) : timestamp_tz() {
        guarded([&] { raising::make(record_, local, zone); });
    }
    // The earlier or the later meaning of one that they showed twice; of one that they never showed, the
    // instant as far before or after the change (local_times).
    timestamp_tz(const timestamp &local, const dv::zone &zone, meaning wanted) : timestamp_tz() {
        guarded([&] { raising::make(record_, local, zone, wanted); });
    }
    // Of a zone by its text; throw what dv::zone(text) throws, too.
    timestamp_tz(const timestamp &local, std::string_view zone) : timestamp_tz(local, dv::zone(zone)) {}
    timestamp_tz(const timestamp &local, std::string_view zone, meaning wanted)
        : timestamp_tz(local, dv::zone(zone), wanted) {}
    // "2026-11-21 09:30 Asia/Seoul", "2026-11-21T00:30:00Z", "2026-10-25 02:30 Europe/Paris CEST"; throws
    // -5113, -5114, -5104, -5110 and what dv_ts_tz_from_iso raises.
    explicit timestamp_tz(std::string_view text) : timestamp_tz() {
        const detail::text_argument argument(text);
        guarded([&] { raising::read(record_, argument); });
    }
    // Of a valid record (bytes.hpp checks one).
    constexpr explicit timestamp_tz(const dv_ts_tz_t &record) noexcept : basic_datetime(record) {}

    // On the clocks of +00:00.
    timestamp utc() const noexcept { return timestamp(record_.utc); }
    // On the clocks of its zone.
    timestamp local() const {
        dv_timestamp_t local;
        guarded([&] { dv_timestamp_from_ts_tz(&local, &record_); });
        return timestamp(local);
    }
    // Fields of local().
    int year() const { return local().year(); }
    int month() const { return local().month(); }
    int day() const { return local().day(); }
    int hour() const { return local().hour(); }
    int minute() const { return local().minute(); }
    int second() const { return local().second(); }
    int nanosecond() const { return local().nanosecond(); }
    // The zone, as the value keeps it: a region, or a fixed offset.
    dv::zone zone() const noexcept { return dv::zone(record_.tz); }
    // By how much its clocks are ahead of those of +00:00, to the minute.
    interval_ds offset() const { return local() - utc(); }
    // What its clocks are called then, such as "CEST"; empty for a fixed offset.
    std::string abbreviation() const {
        char text[TZ_ABBREV_TEXT_SIZE];
        timezone_get_zone_abbr(&record_.tz, &detail::date_part(record_.utc), text, sizeof text);
        return text;
    }

    // The same instant in another zone. Throws -5114 when its local time there lies outside the calendar.
    timestamp_tz at(const dv::zone &zone) const {
        timestamp_tz there = *this;
        return there.change([&](dv_ts_tz_t &x) {
            x.tz = zone.record();
            raising::adjust(x);
        });
    }

    // "2026-11-21 09:30:00.000000000 Asia/Seoul KST", "2026-11-21 09:30:00.000000000 +09:00".
    std::string to_string() const {
        char text[DV_ISO_TS_TZ_SIZE];
        guarded([&] { dv_ts_tz_to_iso(&record_, text, sizeof text); });
        return text;
    }

    // The time from y to x, exact.
    friend interval_ds operator-(const timestamp_tz &x, const timestamp_tz &y) noexcept {
        return x.utc() - y.utc();
    }
};

inline timestamp_tz local_times::earlier() const {
    return {local_, dv::zone(times_.before), meaning::earlier};
}
inline timestamp_tz local_times::later() const { return {local_, dv::zone(times_.before), meaning::later}; }

inline timestamp_ltz::timestamp_ltz(const timestamp_tz &x) noexcept : ordered_value({x.utc().record()}) {}
inline timestamp_tz timestamp_ltz::at(const dv::zone &zone) const {
    return timestamp_tz::of_valid({record_.utc, dv::zone().record()}).at(zone);
}
inline timestamp timestamp_ltz::local(const dv::zone &zone) const { return at(zone).local(); }
inline std::string timestamp_ltz::to_string() const { return at(dv::zone()).to_string(); }

}  // namespace dv

#endif  // DVTYPES_ZONED_HPP
