// TIMESTAMP in SQL: its bytes, which are the record, and its functions.
//
// As with DATE, every TIMESTAMP that a function returns is a day of the calendar.

#include "dvtypes/iso.h"
#include "sql_datetime.h"
#include "sql_try.h"

using namespace dv::impl;

namespace {

const char *fault_(const dv_timestamp_t &ts) {
    return ts.dummy != 0 ? "the eighth byte of a TIMESTAMP is 0" : sql_timestamp_fault(ts);
}

void make_(sql_call &call) {
    int field[7] = {};
    if (!sql_get_ints(call, 0, {field, static_cast<size_t>(call.argc)})) return;
    dv_timestamp_t ts{};
    dv_timestamp_from_unit_values(&ts, field[0], field[1], field[2], field[3], field[4], field[5], field[6]);
    sql_return_timestamp(call, ts);
}

void of_date_(sql_call &call) {
    dv_timestamp_t ts{};
    dv_timestamp_from_date(&ts, &call.args[0].date);
    sql_return_timestamp(call, ts);
}

void to_date_(sql_call &call) {
    dv_date_t date{};
    dv_date_from_timestamp(&date, &call.args[0].timestamp);
    sql_return_date(call, date);
}

void to_text_(sql_call &call) {
    sql_return_room(call, call.room + dv_timestamp_to_iso(&call.args[0].timestamp, call.room, SQL_ROOM_SIZE));
}

void add_interval_(dv_timestamp_t &ts, const sql_value &interval, int sign) {
    if (interval.kind == SQL_KIND_ITV_YTM) return sql_add_months(sql_date_part(ts), interval.ytm, sign);
    if (sign > 0) return dv_timestamp_add_itv_dts(&ts, &interval.dts);
    dv_timestamp_sub_itv_dts(&ts, &interval.dts);
}

// A timestamp and an interval, in either order.
void add_(sql_call &call) {
    const int place = call.args[0].kind == SQL_KIND_TIMESTAMP ? 0 : 1;
    dv_timestamp_t &ts = call.args[place].timestamp;
    add_interval_(ts, call.args[1 - place], 1);
    sql_return_timestamp(call, ts);
}

void sub_(sql_call &call) {
    dv_timestamp_t &ts = call.args[0].timestamp;
    add_interval_(ts, call.args[1], -1);
    sql_return_timestamp(call, ts);
}

void difference_(sql_call &call) {
    dv_itv_dts_t difference;
    dv_timestamp_sub_timestamp_into_itv_dts(&difference, &call.args[0].timestamp, &call.args[1].timestamp);
    sql_return_dts(call, difference);
}

// A DATE stands for its second without a fraction.
template <int Sign>
void compare_date_(sql_call &call) {
    const int date_at = Sign > 0 ? 0 : 1;
    dv_timestamp_t date;
    dv_timestamp_from_date(&date, &call.args[date_at].date);
    sql_return(call, sql_integer(Sign * dv_timestamp_compare(&date, &call.args[1 - date_at].timestamp)));
}

constexpr sql_kind _timestamp = SQL_KIND_TIMESTAMP;
constexpr sql_kind _date = SQL_KIND_DATE;
constexpr sql_kind _integer = SQL_KIND_INTEGER;
constexpr sql_kind _text = SQL_KIND_TEXT;
constexpr sql_kind _ytm = SQL_KIND_ITV_YTM;
constexpr sql_kind _dts = SQL_KIND_ITV_DTS;

constexpr sql_function _rows[] = {
    {{"dv_timestamp",
      {_integer, _integer, _integer, _integer, _integer, _integer},
      "y, m, d, h, mi, s",
      _timestamp,
      "a day and a time of day"},
     make_},
    {{"dv_timestamp",
      {_integer, _integer, _integer, _integer, _integer, _integer, _integer},
      "y, m, d, h, mi, s, ns",
      _timestamp,
      "a day and a time of day with nanoseconds"},
     make_},
    {{"to_timestamp", {_date}, "v", _timestamp, "the same day and time of day"}, of_date_},
    {{"to_date", {_timestamp}, "v", _date, "the same day and time of day, without the fraction"}, to_date_},
    {{"dv_text", {_timestamp}, "v", _text, "as text that to_timestamp reads back"}, to_text_},
    {{"to_char", {_timestamp}, "v", _text, "as text that to_timestamp reads back"}, to_text_},
    {{"dv_cmp", {_timestamp, _timestamp}, "a, b", _integer, "-1, 0 or 1 as a is before, at or after b"},
     sql_compare_records<&sql_value::timestamp, dv_timestamp_compare>},
    {{"dv_cmp", {_date, _timestamp}, "a, b", _integer, "-1, 0 or 1 as a is before, at or after b"},
     compare_date_<1>},
    {{"dv_cmp", {_timestamp, _date}, "a, b", _integer, "-1, 0 or 1 as a is before, at or after b"},
     compare_date_<-1>},
    {{"dv_add", {_timestamp, _ytm}, "a, b", _timestamp, "a + b; an error where the month lacks the day"},
     add_},
    {{"dv_add", {_timestamp, _dts}, "a, b", _timestamp, "a + b"}, add_},
    {{"dv_add", {_ytm, _timestamp}, "a, b", _timestamp, "a + b; an error where the month lacks the day"},
     add_},
    {{"dv_add", {_dts, _timestamp}, "a, b", _timestamp, "a + b"}, add_},
    {{"dv_sub", {_timestamp, _ytm}, "a, b", _timestamp, "a - b; an error where the month lacks the day"},
     sub_},
    {{"dv_sub", {_timestamp, _dts}, "a, b", _timestamp, "a - b"}, sub_},
    {{"dv_sub", {_timestamp, _timestamp}, "a, b", _dts, "a - b"}, difference_},
};
constexpr auto _functions = sql_with_tries<_rows>();

}  // namespace

const char *dv::impl::sql_timestamp_fault(const dv_timestamp_t &ts) {
    if (!sql_is_fraction(sql_time_part(ts))) return "its fraction of a second is out of range";
    return dv_date_get_fault(&sql_date_part(ts));
}

constinit const sql_type dv::impl::timestamp_type = {
    SQL_KIND_TIMESTAMP,
    "TIMESTAMP",
    "to_timestamp",
    sql_decode_record<&sql_value::timestamp, fault_>,
    sql_encode_record<&sql_value::timestamp>,
};

constinit const sql_function_table dv::impl::timestamp_functions = _functions;
