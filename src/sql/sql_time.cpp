// TIME in SQL: its bytes, which are the record, and its functions.

#include "dvtypes/iso.h"
#include "sql_datetime.h"
#include "sql_try.h"

using namespace dv::impl;

namespace {

void make_(sql_call &call) {
    int field[4] = {};
    if (!sql_get_ints(call, 0, {field, static_cast<size_t>(call.argc)})) return;
    sql_value value{};
    value.kind = SQL_KIND_TIME;
    value.time = {};
    dv_time_from_unit_values(&value.time, field[0], field[1], field[2], field[3]);
    sql_return(call, value);
}

void from_text_(sql_call &call) {
    const sql_text &text = call.args[0].text;
    sql_value value{};
    value.kind = SQL_KIND_TIME;
    dv_time_from_iso(&value.time, text.bytes, text.length);
    sql_return(call, value);
}

// HH:MI:SS.NNNNNNNNN
void to_text_(sql_call &call) {
    sql_return_room(call, call.room + dv_time_to_iso(&call.args[0].time, call.room, SQL_ROOM_SIZE));
}

constexpr sql_kind _time = SQL_KIND_TIME;
constexpr sql_kind _integer = SQL_KIND_INTEGER;
constexpr sql_kind _text = SQL_KIND_TEXT;

constexpr sql_function _rows[] = {
    {{"dv_time", {_integer, _integer, _integer}, "h, mi, s", _time, "a time of day"}, make_},
    {{"dv_time",
      {_integer, _integer, _integer, _integer},
      "h, mi, s, ns",
      _time,
      "a time of day with nanoseconds"},
     make_},
    {{"to_time", {_text}, "v", _time, "reads a text of ISO 8601, such as dv_text writes"}, from_text_},
    {{"to_time", {_time}, "v", _time, "the value itself"}, sql_return_argument},
    {{"dv_text", {_time}, "v", _text, "as text that to_time reads back"}, to_text_},
    {{"to_char", {_time}, "v", _text, "as text that to_time reads back"}, to_text_},
    {{"dv_cmp", {_time, _time}, "a, b", _integer, "-1, 0 or 1 as a is before, at or after b"},
     sql_compare_records<&sql_value::time, dv_time_compare>},
};
constexpr auto _functions = sql_with_tries<_rows>();

}  // namespace

constinit const sql_type dv::impl::time_type = {
    SQL_KIND_TIME,
    "TIME",
    "to_time",
    sql_decode_record<&sql_value::time, dv_time_get_fault>,
    sql_encode_record<&sql_value::time>,
};

constinit const sql_function_table dv::impl::time_functions = _functions;
