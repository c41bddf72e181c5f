// What the SQL forms of DATE, TIME, the timestamps and the intervals share: bytes that are the record itself,
// and pieces of their texts.

#ifndef DV_SQL_DATETIME_H
#define DV_SQL_DATETIME_H

#include <cstring>

#include "sql_catalogue.h"

namespace dv::impl {

inline constexpr int SQL_MONTHS_PER_YEAR = 12;
inline constexpr int SQL_SEC_PER_MINUTE = 60;
inline constexpr int SQL_SEC_PER_HOUR = 60 * SQL_SEC_PER_MINUTE;
inline constexpr int SQL_SEC_PER_DAY = 24 * SQL_SEC_PER_HOUR;
inline constexpr int SQL_NSEC_PER_SEC = 1'000'000'000;
inline constexpr int SQL_FRACTION_DIGITS = 9;  // of a TIME or TIMESTAMP in SQL

// ---------------------------------------------------------------------------------------------------------
// Types whose bytes are their record. Record is its member of sql_value, such as &sql_value::date.
// ---------------------------------------------------------------------------------------------------------

// Fault(record) says what is wrong with any bytes, NULL when nothing is; it may not raise.
template <auto Record, auto Fault>
const char *sql_decode_record(sql_value &value, const uint8_t *bytes, int length) {
    auto &record = value.*Record;
    if (length != static_cast<int>(sizeof record)) return "it does not have the length of its type";
    memcpy(&record, bytes, sizeof record);
    return Fault(&record);
}

template <auto Record>
int sql_encode_record(const sql_value &value, uint8_t *bytes) {
    constexpr int size = sizeof(value.*Record);
    static_assert(size <= SQL_VALUE_SIZE_MAX);
    memcpy(bytes, &(value.*Record), size);
    return size;
}

// The body of a comparison; Compare gives -1, 0 or 1.
template <auto Record, auto Compare>
void sql_compare_records(sql_call &call) {
    sql_return(call, sql_integer(Compare(&(call.args[0].*Record), &(call.args[1].*Record))));
}

// ---------------------------------------------------------------------------------------------------------
// The DATE and the TIME in a timestamp; every member is a byte, so they may be used there
// ---------------------------------------------------------------------------------------------------------

inline dv_date_t &sql_date_part(dv_timestamp_t &ts) { return reinterpret_cast<dv_date_t &>(ts); }
inline const dv_date_t &sql_date_part(const dv_timestamp_t &ts) {
    return reinterpret_cast<const dv_date_t &>(ts);
}
inline const dv_time_t &sql_time_part(const dv_timestamp_t &ts) {
    return reinterpret_cast<const dv_time_t &>(ts.hour);
}
static_assert(sizeof(dv_timestamp_t) == offsetof(dv_timestamp_t, hour) + sizeof(dv_time_t));

// ---------------------------------------------------------------------------------------------------------
// DATE and both TIMESTAMPs: what is written once for the three is a template over the record
// ---------------------------------------------------------------------------------------------------------

template <typename Record>
inline constexpr sql_kind sql_kind_of = SQL_KIND_NONE;
template <>
inline constexpr sql_kind sql_kind_of<dv_date_t> = SQL_KIND_DATE;
template <>
inline constexpr sql_kind sql_kind_of<dv_timestamp_t> = SQL_KIND_TIMESTAMP;
template <>
inline constexpr sql_kind sql_kind_of<dv_ts_tz_t> = SQL_KIND_TS_TZ;

// The record in a value of its kind.
template <typename Record>
Record &sql_record_of(sql_value &value) {
    if constexpr (sql_kind_of<Record> == SQL_KIND_DATE) return value.date;
    if constexpr (sql_kind_of<Record> == SQL_KIND_TIMESTAMP) return value.timestamp;
    if constexpr (sql_kind_of<Record> == SQL_KIND_TS_TZ) return value.ts_tz;
}

// The DATE at the beginning of each, of a TIMESTAMP WITH TIME ZONE in UTC.
inline dv_date_t &sql_date_part(dv_date_t &date) { return date; }
inline const dv_date_t &sql_date_part(const dv_date_t &date) { return date; }
inline dv_date_t &sql_date_part(dv_ts_tz_t &ts_tz) { return sql_date_part(ts_tz.utc); }
inline const dv_date_t &sql_date_part(const dv_ts_tz_t &ts_tz) { return sql_date_part(ts_tz.utc); }

// The time in UTC of each; a DATE and a TIMESTAMP are taken as such.
inline dv_timestamp_t sql_utc_of(const dv_date_t &date) {
    dv_timestamp_t ts;
    dv_timestamp_from_date(&ts, &date);
    return ts;
}
inline dv_timestamp_t sql_utc_of(const dv_timestamp_t &ts) { return ts; }
inline dv_timestamp_t sql_utc_of(const dv_ts_tz_t &ts_tz) { return ts_tz.utc; }

// Raises -5114 when the local time of a TIMESTAMP WITH TIME ZONE is no time of the calendar, and so has no
// text: 9999-12-31 20:00 UTC at +09:00.
void sql_check_local_time(const dv_ts_tz_t &ts_tz);

// Does a record that the library made lie in the years 1600 to 9899 of UTC, behind the days that October 1582
// lacks, and so on a day of the calendar in every zone? A byte tells, which is read as it was written: two at
// once would wait until both are in memory.
template <typename Record>
bool sql_is_inside_calendar(const Record &record) {
    constexpr int first = 116, last = 198;  // centuries with their excess
    const int century = sql_date_part(record).century;
    return century >= first && century <= last;
}

// Makes the record that the library made in the place of the result the result, as a day of the calendar:
// of the days that October 1582 lacks, the 15th. Raises -5114 for a day BC that day numbers know and the
// calendar lacks, and as sql_check_local_time.
template <typename Record>
void sql_return_datetime_in_place(sql_call &call) {
    auto &result = sql_record_of<Record>(call.result);
    if (!sql_is_inside_calendar(result)) {
        dv_date_is_valid(&sql_date_part(result));
        if constexpr (sql_kind_of<Record> == SQL_KIND_TS_TZ) sql_check_local_time(result);
    }
    call.result.kind = sql_kind_of<Record>;
}

template <typename Record>
void sql_return_datetime(sql_call &call, const Record &record) {
    sql_record_of<Record>(call.result) = record;
    sql_return_datetime_in_place<Record>(call);
}

// ---------------------------------------------------------------------------------------------------------
// Zones
// ---------------------------------------------------------------------------------------------------------

// The offset +00:00, in which a text that names no zone is read.
inline constexpr int SQL_UTC_HOUR = 100;  // of the record, which holds hours + 100
inline constexpr timezone_t SQL_UTC = {SQL_UTC_HOUR, 0, 0, {TZ_ID_OFFSET >> 8, TZ_ID_OFFSET & 0xFF}};

// The number of a zone: a region's, or TZ_ID_OFFSET.
inline int sql_zone_number(const timezone_t &tz) { return timezone_get_field(&tz, TZ_FLD_ZONE_ID); }

// Makes the UTC offset of an entry the result: "+09:00", with the sign of the offset; the seconds of local
// mean times are left out.
void sql_return_utc_offset(sql_call &call, const tz_info_t &info);

// The zone that a text names: a region or a UTC offset. Raises as timezone_parse does, and -5099 for an
// offset from +00:01 to +00:59, which no value holds.
timezone_t sql_zone_of(const sql_text &text);

// Writes it; returns the end.
char *sql_put_utc_offset(char *out, const tz_info_t &info);

// Writes the offset of a zone that is no region, with the sign in force: minutes alone are west of Greenwich.
// Returns the end.
char *sql_put_utc_offset(char *out, const timezone_t &zone);

// The present instant.
dv_date_t sql_utc_now();

// ---------------------------------------------------------------------------------------------------------
// Time of day
// ---------------------------------------------------------------------------------------------------------

// Nanoseconds.
inline int sql_fraction(const dv_time_t &time) { return dv_time_get_field(&time, DT_FMT_UNIT_FSEC); }

// Writes a number that is not negative in decimal, with zeros in front; returns the end.
inline char *sql_put_digits(char *out, int number, int digits) {
    for (int i = digits - 1; i >= 0; --i, number /= 10) out[i] = static_cast<char>('0' + number % 10);
    return out + digits;
}

// ---------------------------------------------------------------------------------------------------------
// Intervals
// ---------------------------------------------------------------------------------------------------------

// The library's own total wraps at 32 bits; this one holds for all years.
inline int64_t sql_total_months(const dv_itv_ytm_t &itv) {
    return int64_t{dv_itv_ytm_get_field(&itv, DT_FMT_UNIT_YEAR)} * SQL_MONTHS_PER_YEAR +
           dv_itv_ytm_get_field(&itv, DT_FMT_UNIT_MONTH);
}

// Seconds, and nanoseconds of the same sign.
struct sql_seconds {
    int64_t whole;
    int nanoseconds;
};

// What an INTERVAL DAY TO SECOND comes to, and the record of it, whose days fit 32 bits.
sql_seconds sql_total(const dv_itv_dts_t &itv);
dv_itv_dts_t sql_dts_of(const sql_seconds &seconds);

// Makes so many months, so many seconds, or an interval with fields of any sign and carry the result, in its
// one form. Raises -5064 where it has more than nine digits of years or days.
void sql_return_ytm(sql_call &call, int64_t months);
void sql_return_dts(sql_call &call, const sql_seconds &total);
inline void sql_return_dts(sql_call &call, const dv_itv_dts_t &itv) { sql_return_dts(call, sql_total(itv)); }

// As a NUMBER.
sql_value sql_number_of(const sql_seconds &seconds);

// The seconds since 1970-01-01 00:00:00 of a time in UTC, a NUMBER.
sql_value sql_epoch(const dv_timestamp_t &utc);

}  // namespace dv::impl

#endif  // DV_SQL_DATETIME_H
