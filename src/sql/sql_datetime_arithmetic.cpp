// dv_add, dv_sub and dv_cmp of DATE and both TIMESTAMPs in SQL: with intervals, and with each other.
//
// Intervals are added to a TIMESTAMP WITH TIME ZONE in UTC. Two values of one type differ by instants; values
// of two types, one of them a DATE, by local times.

#include <algorithm>
#include <climits>

#include "sql_datetime.h"

using namespace dv::impl;

namespace {

// ---------------------------------------------------------------------------------------------------------
// Values and intervals
// ---------------------------------------------------------------------------------------------------------

// Adds (sign 1) or subtracts (-1) seconds.
void add_dts_(dv_date_t &date, const dv_itv_dts_t &itv, int sign) {
    sign > 0 ? dv_date_add_itv_dts(&date, &itv) : dv_date_sub_itv_dts(&date, &itv);
}
void add_dts_(dv_timestamp_t &ts, const dv_itv_dts_t &itv, int sign) {
    sign > 0 ? dv_timestamp_add_itv_dts(&ts, &itv) : dv_timestamp_sub_itv_dts(&ts, &itv);
}
void add_dts_(dv_ts_tz_t &ts_tz, const dv_itv_dts_t &itv, int sign) {
    sign > 0 ? dv_ts_tz_add_itv_dts(&ts_tz, &itv) : dv_ts_tz_sub_itv_dts(&ts_tz, &itv);
}

// Adds or subtracts calendar months, an error where the month lacks the day. They are held to 32 bits, where
// any date has long left the calendar and the library says so.
template <typename Record>
void add_ytm_(Record &record, const dv_itv_ytm_t &itv, int sign) {
    const int64_t months = std::clamp<int64_t>(sql_total_months(itv), -INT_MAX, INT_MAX);
    dv_date_t &date = sql_date_part(record);
    dv_date_add_month(&date, sign * static_cast<int>(months), /*is_from_itv=*/1);
    if constexpr (sql_kind_of<Record> == SQL_KIND_TS_TZ) timezone_adjust(&record.tz, &date);
}

template <typename Record>
void return_sum_(sql_call &call, Record &record, const sql_value &interval, int sign) {
    if (interval.kind == SQL_KIND_ITV_YTM) {
        add_ytm_(record, interval.ytm, sign);
    } else {
        add_dts_(record, interval.dts, sign);
    }
    sql_return_datetime(call, record);
}

// A value and an interval, in either order.
template <typename Record>
void add_(sql_call &call) {
    const int place = call.args[0].kind == sql_kind_of<Record> ? 0 : 1;
    return_sum_(call, sql_record_of<Record>(call.args[place]), call.args[1 - place], 1);
}

template <typename Record>
void sub_(sql_call &call) {
    return_sum_(call, sql_record_of<Record>(call.args[0]), call.args[1], -1);
}

// ---------------------------------------------------------------------------------------------------------
// Two values
// ---------------------------------------------------------------------------------------------------------

dv_timestamp_t local_time_(const dv_date_t &date) {
    dv_timestamp_t local;
    dv_timestamp_from_date(&local, &date);
    return local;
}
dv_timestamp_t local_time_(const dv_timestamp_t &ts) { return ts; }
dv_timestamp_t local_time_(const dv_ts_tz_t &ts_tz) {
    dv_timestamp_t local;
    dv_timestamp_from_ts_tz(&local, &ts_tz);
    return local;
}

template <typename X, typename Y>
void compare_(sql_call &call) {
    const dv_timestamp_t x = local_time_(sql_record_of<X>(call.args[0]));
    const dv_timestamp_t y = local_time_(sql_record_of<Y>(call.args[1]));
    sql_return(call, sql_integer(dv_timestamp_compare(&x, &y)));
}

template <typename X, typename Y>
void difference_(sql_call &call) {
    const dv_timestamp_t x = local_time_(sql_record_of<X>(call.args[0]));
    const dv_timestamp_t y = local_time_(sql_record_of<Y>(call.args[1]));
    dv_itv_dts_t difference;
    dv_timestamp_sub_timestamp_into_itv_dts(&difference, &x, &y);
    sql_return_dts(call, difference);
}

void difference_of_instants_(sql_call &call) {
    dv_itv_dts_t difference;
    dv_ts_tz_sub_ts_tz_into_itv_dts(&difference, &call.args[0].ts_tz, &call.args[1].ts_tz);
    sql_return_dts(call, difference);
}

// ---------------------------------------------------------------------------------------------------------
// Rows
// ---------------------------------------------------------------------------------------------------------

constexpr sql_kind _date = SQL_KIND_DATE;
constexpr sql_kind _timestamp = SQL_KIND_TIMESTAMP;
constexpr sql_kind _ts_tz = SQL_KIND_TS_TZ;
constexpr sql_kind _integer = SQL_KIND_INTEGER;
constexpr sql_kind _ytm = SQL_KIND_ITV_YTM;
constexpr sql_kind _dts = SQL_KIND_ITV_DTS;

struct manual_lines {
    const char *add_months, *add_seconds, *seconds_and, *sub_months, *sub_seconds;
};
template <typename Record>
constexpr manual_lines _lines = {"a + b; an error where the month lacks the day", "a + b", "a + b",
                                 "a - b; an error where the month lacks the day", "a - b"};
template <>
constexpr manual_lines _lines<dv_date_t> = {
    "a + b; an error where the month lacks the day", "a + b, without the fraction of b's seconds",
    "a + b, without the fraction of a's seconds", "a - b; an error where the month lacks the day",
    "a - b, without the fraction of b's seconds"};
template <>
constexpr manual_lines _lines<dv_ts_tz_t> = {"a + b in UTC; an error where the month lacks the day", "a + b",
                                             "a + b", "a - b in UTC; an error where the month lacks the day",
                                             "a - b"};

template <typename Record, sql_kind Kind = sql_kind_of<Record>>
constexpr sql_function _sums[] = {
    {{"dv_add", {Kind, _ytm}, "a, b", Kind, _lines<Record>.add_months}, add_<Record>},
    {{"dv_add", {Kind, _dts}, "a, b", Kind, _lines<Record>.add_seconds}, add_<Record>},
    {{"dv_add", {_ytm, Kind}, "a, b", Kind, _lines<Record>.add_months}, add_<Record>},
    {{"dv_add", {_dts, Kind}, "a, b", Kind, _lines<Record>.seconds_and}, add_<Record>},
    {{"dv_sub", {Kind, _ytm}, "a, b", Kind, _lines<Record>.sub_months}, sub_<Record>},
    {{"dv_sub", {Kind, _dts}, "a, b", Kind, _lines<Record>.sub_seconds}, sub_<Record>},
};

constexpr char _order[] = "-1, 0 or 1 as a is before, at or after b";

constexpr sql_function _pairs[] = {
    {{"dv_sub", {_date, _date}, "a, b", _dts, "a - b"}, difference_<dv_date_t, dv_date_t>},
    {{"dv_sub", {_date, _timestamp}, "a, b", _dts, "a - b"}, difference_<dv_date_t, dv_timestamp_t>},
    {{"dv_sub", {_timestamp, _date}, "a, b", _dts, "a - b"}, difference_<dv_timestamp_t, dv_date_t>},
    {{"dv_sub", {_timestamp, _timestamp}, "a, b", _dts, "a - b"},
     difference_<dv_timestamp_t, dv_timestamp_t>},
    {{"dv_sub", {_date, _ts_tz}, "a, b", _dts, "a - the local time of b"},
     difference_<dv_date_t, dv_ts_tz_t>},
    {{"dv_sub", {_ts_tz, _date}, "a, b", _dts, "the local time of a - b"},
     difference_<dv_ts_tz_t, dv_date_t>},
    {{"dv_sub", {_ts_tz, _ts_tz}, "a, b", _dts, "a - b, whatever their zones"}, difference_of_instants_},
    {{"dv_cmp", {_date, _date}, "a, b", _integer, _order},
     sql_compare_records<&sql_value::date, dv_date_compare>},
    {{"dv_cmp", {_timestamp, _timestamp}, "a, b", _integer, _order},
     sql_compare_records<&sql_value::timestamp, dv_timestamp_compare>},
    {{"dv_cmp", {_date, _timestamp}, "a, b", _integer, _order}, compare_<dv_date_t, dv_timestamp_t>},
    {{"dv_cmp", {_timestamp, _date}, "a, b", _integer, _order}, compare_<dv_timestamp_t, dv_date_t>},
    {{"dv_cmp",
      {_ts_tz, _ts_tz},
      "a, b",
      _integer,
      "-1, 0 or 1 as a is before, at or after b, whatever their zones"},
     sql_compare_records<&sql_value::ts_tz, dv_ts_tz_compare>},
    {{"dv_cmp",
      {_date, _ts_tz},
      "a, b",
      _integer,
      "-1, 0 or 1 as a is before, at or after the local time of b"},
     compare_<dv_date_t, dv_ts_tz_t>},
    {{"dv_cmp",
      {_ts_tz, _date},
      "a, b",
      _integer,
      "-1, 0 or 1 as the local time of a is before, at or after b"},
     compare_<dv_ts_tz_t, dv_date_t>},
};
constexpr auto _functions = sql_join<_sums<dv_date_t>, _sums<dv_timestamp_t>, _sums<dv_ts_tz_t>, _pairs>();

}  // namespace

constinit const sql_function_table dv::impl::datetime_arithmetic_functions = _functions;
