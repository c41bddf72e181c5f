// The bytes of DATE and TIME records: the only place that knows how fields are stored in them.
//
// A year is two bytes, century and year of the century, each cut toward zero and with 100 added; so the bytes
// of BC years sort below those of AD years, and whole records sort as values. Month to second are plain
// bytes. A fraction of a second is a big-endian word of nanoseconds. Timestamps begin with the same bytes:
// their first eight are a DATE, and the eight from the hour on are a TIME.

#ifndef DV_DATETIME_LAYOUT_H
#define DV_DATETIME_LAYOUT_H

#include <array>
#include <bit>
#include <cstddef>

#include "../bytes.h"
#include "dvtypes/datetime.h"

namespace dv::impl {

inline constexpr int DATE_YEAR_EXCESS = 100;  // on both bytes of a year
inline constexpr int YEARS_PER_CENTURY = 100;

static_assert(sizeof(dv_date_t) == 8 && alignof(dv_date_t) == 1);
static_assert(offsetof(dv_date_t, year) == 1 && offsetof(dv_date_t, month) == 2);
static_assert(offsetof(dv_date_t, hour) == 4 && offsetof(dv_date_t, dummy) == 7);
static_assert(sizeof(dv_time_t) == 8 && alignof(dv_time_t) == 1);
static_assert(offsetof(dv_time_t, dummy) == 3 && offsetof(dv_time_t, csec) == 4);
static_assert(sizeof(dv_timestamp_t) == 12 && alignof(dv_timestamp_t) == 1);
static_assert(offsetof(dv_timestamp_t, hour) == 4 && offsetof(dv_timestamp_t, csec) == 8);
static_assert(sizeof(dv_ts_tz_t) == 17 && sizeof(dv_ts_ltz_t) == 12);

// ---- fields ----

// -10100..15655, whatever the bytes are.
constexpr int date_year(const dv_date_t &date) {
    constexpr int excess = DATE_YEAR_EXCESS * YEARS_PER_CENTURY + DATE_YEAR_EXCESS;
    return date.century * YEARS_PER_CENTURY + date.year - excess;
}

constexpr void date_set_century_day(dv_date_t &date, int century, int year, int month, int day) {
    date.century = static_cast<uint8_t>(century + DATE_YEAR_EXCESS);
    date.year = static_cast<uint8_t>(year + DATE_YEAR_EXCESS);
    date.month = static_cast<uint8_t>(month);
    date.day = static_cast<uint8_t>(day);
}

// The same bytes at once, from a packed_day of calendar.h.
inline void date_set_packed_day(dv_date_t &date, uint32_t day) {
    constexpr uint32_t excess = (DATE_YEAR_EXCESS * 256 + DATE_YEAR_EXCESS) * 256 * 256;
    store_be32(reinterpret_cast<uint8_t *>(&date), day + excess);
}

// Any year; one outside -9999..9999 is not kept.
constexpr void date_set_calendar(dv_date_t &date, int year, int month, int day) {
    date_set_century_day(date, year / YEARS_PER_CENTURY, year % YEARS_PER_CENTURY, month, day);
}
constexpr void date_set_year(dv_date_t &date, int year) {
    date_set_calendar(date, year, date.month, date.day);
}

constexpr void date_set_clock(dv_date_t &date, int hour, int minute, int second) {
    date.hour = static_cast<uint8_t>(hour);
    date.minute = static_cast<uint8_t>(minute);
    date.second = static_cast<uint8_t>(second);
    date.dummy = 0;
}

constexpr uint32_t time_nanoseconds(const dv_time_t &time) { return load_be32(time.csec); }
constexpr void time_set_nanoseconds(dv_time_t &time, uint32_t nanoseconds) {
    store_be32(time.csec, nanoseconds);
}

// ---- order: as unsigned integers, the values in order ----

template <typename Record>
constexpr uint64_t eight_bytes_of(const Record &record) {
    static_assert(sizeof record == 8);
    return load_be64(std::bit_cast<std::array<uint8_t, 8>>(record).data());
}
constexpr uint64_t date_order_key(const dv_date_t &date) { return eight_bytes_of(date) >> 8; }  // no dummy
constexpr uint64_t time_order_key(const dv_time_t &time) { return eight_bytes_of(time); }

// -1, 0 or 1, without a branch.
constexpr int order_of(uint64_t key1, uint64_t key2) {
    return (key1 >= key2 ? 1 : 0) + (key1 > key2 ? 1 : 0) - 1;
}

// ---- the DATE and the TIME in a timestamp; every member is a byte, so they may be used there ----

inline dv_date_t &date_part(dv_timestamp_t &ts) { return reinterpret_cast<dv_date_t &>(ts); }
inline const dv_date_t &date_part(const dv_timestamp_t &ts) {
    return reinterpret_cast<const dv_date_t &>(ts);
}
inline dv_time_t &time_part(dv_timestamp_t &ts) { return reinterpret_cast<dv_time_t &>(ts.hour); }
inline const dv_time_t &time_part(const dv_timestamp_t &ts) {
    return reinterpret_cast<const dv_time_t &>(ts.hour);
}

static_assert([] {
    uint64_t last_key = 0;
    for (const int year : {-9999, -101, -100, -99, -1, 1, 99, 100, 2024, 9999}) {
        dv_date_t date{};
        date_set_year(date, year);
        const uint64_t key = date_order_key(date);
        if (date_year(date) != year || key <= last_key) return false;
        last_key = key;
    }
    return true;
}());
static_assert([] {
    dv_date_t date{};
    date_set_year(date, -101);
    return date.century == 99 && date.year == 99;
}());
static_assert([] {
    dv_time_t time = {13, 14, 15, 0, {}};
    time_set_nanoseconds(time, 500'000'000);
    return time.csec[0] == 0x1D && time.csec[1] == 0xCD && time.csec[2] == 0x65 && time.csec[3] == 0 &&
           time_nanoseconds(time) == 500'000'000;
}());

}  // namespace dv::impl

#endif  // DV_DATETIME_LAYOUT_H
