// Casts of dates, times, timestamps and intervals from and to the server's own.
//
// They go field by field, so that the text stays the same. The calendars differ: the server's is Gregorian
// throughout, the library's Julian up to 1582-10-04. A day that the other calendar does not have is an error
// (22008), and so is what it does not reach, and infinity. The server counts microseconds: nanoseconds are
// rounded half away from zero.

#include "postgres_value.h"
#include "sql_datetime.h"

extern "C" {
#include <pgtime.h>
#include <utils/date.h>
#include <utils/datetime.h>
#include <utils/fmgrprotos.h>
#include <utils/timestamp.h>
}

using namespace dv::impl;

namespace {

constexpr int _nsec_per_usec = 1000;
constexpr int64 _usec_per_day = USECS_PER_DAY;

// Half away from zero.
int microseconds_(int nanoseconds) {
    const int half = _nsec_per_usec / 2;
    return (nanoseconds + (nanoseconds < 0 ? -half : half)) / _nsec_per_usec;
}

[[noreturn, gnu::cold]] void fail_infinite_(const char *type) {
    ereport(ERROR, (errcode(ERRCODE_DATETIME_VALUE_OUT_OF_RANGE), errmsg("%s has no infinite values", type)));
    pg_unreachable();
}

[[noreturn, gnu::cold]] void fail_range_(const char *type) {
    ereport(ERROR, (errcode(ERRCODE_DATETIME_VALUE_OUT_OF_RANGE), errmsg("%s out of range", type)));
    pg_unreachable();
}

// ---------------------------------------------------------------------------------------------------------
// Days
// ---------------------------------------------------------------------------------------------------------

// A year has the number 0 in the server, which is 1 BC, and -1 in the library.
int year_of_server_(int year) { return year > 0 ? year : year - 1; }
int year_for_server_(int year) { return year > 0 ? year : year + 1; }

struct day {
    int year;  // of the server
    int month, day;
};

[[noreturn, gnu::cold]] void fail_day_(const day &of, const char *calendar) {
    const int year = of.year > 0 ? of.year : 1 - of.year;
    ereport(ERROR, (errcode(ERRCODE_DATETIME_VALUE_OUT_OF_RANGE),
                    errmsg("the calendar of %s does not have %04d-%02d-%02d%s", calendar, year, of.month,
                           of.day, of.year > 0 ? "" : " BC")));
    pg_unreachable();
}

// The day of a record, as one that the server has too.
template <typename Record>
day day_for_server_(const Record &record, const char *calendar) {
    const dv_date_t &date = sql_date_part(record);
    const day of = {year_for_server_(dv_date_get_field(&date, DT_FMT_UNIT_YEAR)), date.month, date.day};
    if (of.day > day_tab[isleap(of.year)][of.month - 1]) fail_day_(of, calendar);
    return of;
}

// Raises -5114 for other days that the library does not have; those left out in October 1582 it would move.
void set_day_(dv_date_t &date, const day &of) {
    const int year = year_of_server_(of.year);
    if (year >= DV_YEAR_MIN && year <= DV_YEAR_MAX && of.day > dt_fmt_get_days_of_mon(year, of.month))
        fail_day_(of, "dv_date");
    dv_date_from_unit_values(&date, year, of.month, of.day, 0, 0, 0);
    if (date.day != of.day) fail_day_(of, "dv_date");
}

// ---------------------------------------------------------------------------------------------------------
// Dates and timestamps
// ---------------------------------------------------------------------------------------------------------

dv_timestamp_t timestamp_of_(Timestamp from, const char *type) {
    if (TIMESTAMP_NOT_FINITE(from)) fail_infinite_(type);
    pg_tm fields = {};
    fsec_t microseconds = 0;
    if (timestamp2tm(from, nullptr, &fields, &microseconds, nullptr, nullptr) != 0) fail_range_("timestamp");
    dv_timestamp_t ts = {};
    set_day_(sql_date_part(ts), {fields.tm_year, fields.tm_mon, fields.tm_mday});
    ts.hour = static_cast<uint8_t>(fields.tm_hour);
    ts.minute = static_cast<uint8_t>(fields.tm_min);
    ts.second = static_cast<uint8_t>(fields.tm_sec);
    dv_timestamp_set_field(&ts, DT_FMT_UNIT_FSEC, microseconds * _nsec_per_usec, 0, 0);
    return ts;
}

dv_date_t date_of_(Timestamp from) {
    const dv_timestamp_t ts = timestamp_of_(from, "dv_date");
    dv_date_t date;
    dv_date_from_timestamp(&date, &ts);
    return date;
}

// A carry of the rounded fraction goes into the seconds, and on.
Timestamp timestamp_for_server_(const dv_timestamp_t &ts) {
    const day of = day_for_server_(ts, "timestamp");
    pg_tm fields = {};
    fields.tm_year = of.year;
    fields.tm_mon = of.month;
    fields.tm_mday = of.day;
    fields.tm_hour = ts.hour;
    fields.tm_min = ts.minute;
    fields.tm_sec = ts.second;
    Timestamp result = 0;
    if (tm2timestamp(&fields, microseconds_(sql_fraction(sql_time_part(ts))), nullptr, &result) != 0)
        fail_range_("timestamp");
    return result;
}

Timestamp timestamp_for_server_(const dv_date_t &date) {
    dv_timestamp_t ts;
    dv_timestamp_from_date(&ts, &date);
    return timestamp_for_server_(ts);
}

dv_timestamp_t timestamp_argument_(FunctionCallInfo fcinfo) {
    return postgres_take_record<dv_timestamp_t>(PG_GETARG_DATUM(0));
}
dv_date_t date_argument_(FunctionCallInfo fcinfo) {
    return postgres_take_word<dv_date_t>(PG_GETARG_DATUM(0));
}

// The session's time zone between an instant and a local time.
Timestamp local_time_(FunctionCallInfo fcinfo) {
    const TimestampTz instant = PG_GETARG_TIMESTAMPTZ(0);
    if (TIMESTAMP_NOT_FINITE(instant)) return instant;
    return DatumGetTimestamp(DirectFunctionCall1(timestamptz_timestamp, TimestampTzGetDatum(instant)));
}
Datum instant_(Timestamp local) {
    return DirectFunctionCall1(timestamp_timestamptz, TimestampGetDatum(local));
}

// ---------------------------------------------------------------------------------------------------------
// Intervals
// ---------------------------------------------------------------------------------------------------------

[[noreturn, gnu::cold]] void fail_interval_(const char *type, const char *parts) {
    ereport(ERROR, (errcode(ERRCODE_INTERVAL_FIELD_OVERFLOW), errmsg("%s has no %s", type, parts)));
    pg_unreachable();
}

Interval *new_interval_() { return static_cast<Interval *>(palloc0(sizeof(Interval))); }

}  // namespace

DV_POSTGRES_FUNCTION(dvpg_date_from_date) {
    const DateADT from = PG_GETARG_DATEADT(0);
    if (DATE_NOT_FINITE(from)) fail_infinite_("dv_date");
    day of = {};
    j2date(from + POSTGRES_EPOCH_JDATE, &of.year, &of.month, &of.day);
    dv_date_t date;
    set_day_(date, of);
    return postgres_give_word(date);
}

DV_POSTGRES_FUNCTION(dvpg_date_to_date) {
    const day of = day_for_server_(date_argument_(fcinfo), "date");
    if (!IS_VALID_JULIAN(of.year, of.month, of.day)) fail_range_("date");
    PG_RETURN_DATEADT(date2j(of.year, of.month, of.day) - POSTGRES_EPOCH_JDATE);
}

DV_POSTGRES_FUNCTION(dvpg_date_from_timestamp) {
    return postgres_give_word(date_of_(PG_GETARG_TIMESTAMP(0)));
}
DV_POSTGRES_FUNCTION(dvpg_date_to_timestamp) {
    PG_RETURN_TIMESTAMP(timestamp_for_server_(date_argument_(fcinfo)));
}
DV_POSTGRES_FUNCTION(dvpg_date_from_timestamptz) { return postgres_give_word(date_of_(local_time_(fcinfo))); }
DV_POSTGRES_FUNCTION(dvpg_date_to_timestamptz) {
    return instant_(timestamp_for_server_(date_argument_(fcinfo)));
}

DV_POSTGRES_FUNCTION(dvpg_timestamp_from_timestamp) {
    return postgres_give_record(timestamp_of_(PG_GETARG_TIMESTAMP(0), "dv_timestamp"));
}
DV_POSTGRES_FUNCTION(dvpg_timestamp_to_timestamp) {
    PG_RETURN_TIMESTAMP(timestamp_for_server_(timestamp_argument_(fcinfo)));
}
DV_POSTGRES_FUNCTION(dvpg_timestamp_from_timestamptz) {
    return postgres_give_record(timestamp_of_(local_time_(fcinfo), "dv_timestamp"));
}
DV_POSTGRES_FUNCTION(dvpg_timestamp_to_timestamptz) {
    return instant_(timestamp_for_server_(timestamp_argument_(fcinfo)));
}
DV_POSTGRES_FUNCTION(dvpg_timestamp_to_date) {
    const day of = day_for_server_(timestamp_argument_(fcinfo), "date");
    if (!IS_VALID_JULIAN(of.year, of.month, of.day)) fail_range_("date");
    PG_RETURN_DATEADT(date2j(of.year, of.month, of.day) - POSTGRES_EPOCH_JDATE);
}

// Instants: in UTC.
DV_POSTGRES_FUNCTION(dvpg_timestamptz_from_timestamptz) {
    return postgres_give_record(
        dv_ts_tz_t{timestamp_of_(PG_GETARG_TIMESTAMPTZ(0), "dv_timestamptz"), SQL_UTC});
}
DV_POSTGRES_FUNCTION(dvpg_timestamptz_to_timestamptz) {
    const auto ts_tz = postgres_take_record<dv_ts_tz_t>(PG_GETARG_DATUM(0));
    PG_RETURN_TIMESTAMPTZ(timestamp_for_server_(ts_tz.utc));
}
DV_POSTGRES_FUNCTION(dvpg_timestampltz_from_timestamptz) {
    return postgres_give_record(timestamp_of_(PG_GETARG_TIMESTAMPTZ(0), "dv_timestampltz"));
}
DV_POSTGRES_FUNCTION(dvpg_timestampltz_to_timestamptz) {
    PG_RETURN_TIMESTAMPTZ(timestamp_for_server_(timestamp_argument_(fcinfo)));
}
DV_POSTGRES_FUNCTION(dvpg_timestampltz_from_dv_timestamptz) {
    return postgres_give_record(postgres_take_record<dv_ts_tz_t>(PG_GETARG_DATUM(0)).utc);
}
DV_POSTGRES_FUNCTION(dvpg_timestampltz_to_dv_timestamptz) {
    return postgres_give_record(dv_ts_tz_t{timestamp_argument_(fcinfo), SQL_UTC});
}

// The end of the day, which the server has as 24:00:00, is none of the library's times.
DV_POSTGRES_FUNCTION(dvpg_time_from_time) {
    const TimeADT from = PG_GETARG_TIMEADT(0);
    if (from >= _usec_per_day) fail_range_("dv_time");
    const auto seconds = static_cast<int>(from / USECS_PER_SEC);
    dv_time_t time = {};
    dv_time_from_unit_values(&time, seconds / SQL_SEC_PER_HOUR, seconds / SQL_SEC_PER_MINUTE % MINS_PER_HOUR,
                             seconds % SQL_SEC_PER_MINUTE,
                             static_cast<int>(from % USECS_PER_SEC) * _nsec_per_usec);
    return postgres_give_word(time);
}
DV_POSTGRES_FUNCTION(dvpg_time_to_time) {
    const auto time = postgres_take_word<dv_time_t>(PG_GETARG_DATUM(0));
    const int seconds = time.hour * SQL_SEC_PER_HOUR + time.minute * SQL_SEC_PER_MINUTE + time.second;
    PG_RETURN_TIMEADT(seconds * USECS_PER_SEC + microseconds_(sql_fraction(time)));
}

DV_POSTGRES_FUNCTION(dvpg_interval_ym_from_interval) {
    const Interval &from = *PG_GETARG_INTERVAL_P(0);
    if (from.day != 0 || from.time != 0) fail_interval_("dv_interval_ym", "days and no time");
    sql_call call;
    sql_begin(call, &postgres_memory);
    sql_return_ytm(call, from.month);
    return postgres_give(call.result);
}
DV_POSTGRES_FUNCTION(dvpg_interval_ym_to_interval) {
    const int64_t total = sql_total_months(postgres_take_record<dv_itv_ytm_t>(PG_GETARG_DATUM(0)));
    Interval *to = new_interval_();
    to->month = static_cast<int32>(total);
    if (to->month != total) fail_range_("interval");
    PG_RETURN_INTERVAL_P(to);
}

DV_POSTGRES_FUNCTION(dvpg_interval_ds_from_interval) {
    const Interval &from = *PG_GETARG_INTERVAL_P(0);
    if (from.month != 0) fail_interval_("dv_interval_ds", "months");
    const int128 microseconds = static_cast<int128>(from.day) * _usec_per_day + from.time;
    sql_call call;
    sql_begin(call, &postgres_memory);
    sql_return_dts(call, sql_seconds{static_cast<int64_t>(microseconds / USECS_PER_SEC),
                                     static_cast<int>(microseconds % USECS_PER_SEC) * _nsec_per_usec});
    return postgres_give(call.result);
}

// Days, and a time of less than a day.
DV_POSTGRES_FUNCTION(dvpg_interval_ds_to_interval) {
    const sql_seconds total = sql_total(postgres_take_record<dv_itv_dts_t>(PG_GETARG_DATUM(0)));
    Interval *to = new_interval_();
    to->day = static_cast<int32>(total.whole / SQL_SEC_PER_DAY);
    to->time = total.whole % SQL_SEC_PER_DAY * USECS_PER_SEC + microseconds_(total.nanoseconds);
    if (to->time == _usec_per_day || to->time == -_usec_per_day) {
        to->day += to->time > 0 ? 1 : -1;
        to->time = 0;
    }
    PG_RETURN_INTERVAL_P(to);
}
