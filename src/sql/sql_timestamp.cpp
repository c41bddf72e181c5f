// TIMESTAMP in SQL: its bytes, which are the record, and its functions.
//
// As with DATE, every TIMESTAMP that a function returns is a day of the calendar.

#include "dvtypes/iso.h"
#include "sql_datetime.h"
#include "sql_try.h"

using namespace dv::impl;

namespace {

void make_(sql_call &call) {
    int field[7] = {};
    if (!sql_get_ints(call, 0, {field, static_cast<size_t>(call.argc)})) return;
    dv_timestamp_t ts{};
    dv_timestamp_from_unit_values(&ts, field[0], field[1], field[2], field[3], field[4], field[5], field[6]);
    sql_return_datetime(call, ts);
}

void of_date_(sql_call &call) {
    dv_timestamp_t ts{};
    dv_timestamp_from_date(&ts, &call.args[0].date);
    sql_return_datetime(call, ts);
}

void to_date_(sql_call &call) {
    dv_date_t date{};
    dv_date_from_timestamp(&date, &call.args[0].timestamp);
    sql_return_datetime(call, date);
}

void to_text_(sql_call &call) {
    sql_return_room(call, call.room + dv_timestamp_to_iso(&call.args[0].timestamp, call.room, SQL_ROOM_SIZE));
}

constexpr sql_kind _timestamp = SQL_KIND_TIMESTAMP;
constexpr sql_kind _date = SQL_KIND_DATE;
constexpr sql_kind _integer = SQL_KIND_INTEGER;
constexpr sql_kind _text = SQL_KIND_TEXT;

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
};
constexpr auto _functions = sql_with_tries<_rows>();

}  // namespace

constinit const sql_type dv::impl::timestamp_type = {
    SQL_KIND_TIMESTAMP,
    "TIMESTAMP",
    "to_timestamp",
    sql_decode_record<&sql_value::timestamp, dv_timestamp_get_fault>,
    sql_encode_record<&sql_value::timestamp>,
};

constinit const sql_function_table dv::impl::timestamp_functions = _functions;
