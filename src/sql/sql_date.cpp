// DATE in SQL: its bytes, which are the record, and its functions.
//
// Every DATE that a function returns has been checked as a whole, so what is stored is a day of the calendar:
// a day of the gap in October 1582 has become the 15th, and a 29 February that day numbers count but the
// calendar lacks (years BC) is an error.

#include "dvtypes/iso.h"
#include "sql_datetime.h"

using namespace dv::impl;

namespace {

// ---------------------------------------------------------------------------------------------------------
// Bytes
// ---------------------------------------------------------------------------------------------------------

const char *fault_(const dv_date_t *date) {
    return date->dummy != 0 ? "the last byte of a DATE is not 0" : dv_date_get_fault(date);
}

// ---------------------------------------------------------------------------------------------------------
// Making and writing
// ---------------------------------------------------------------------------------------------------------

void make_(sql_call &call) {
    int field[6] = {};
    if (!sql_get_ints(call, 0, {field, static_cast<size_t>(call.argc)})) return;
    dv_date_t date{};
    dv_date_from_unit_values(&date, field[0], field[1], field[2], field[3], field[4], field[5]);
    sql_return_datetime(call, date);
}

void current_(sql_call &call) {
    dv_date_t date{};
    dv_date_current(&date);
    sql_return_datetime(call, date);
}

void to_text_(sql_call &call) {
    sql_return_room(call, call.room + dv_date_to_iso(&call.args[0].date, call.room, SQL_ROOM_SIZE));
}

// ---------------------------------------------------------------------------------------------------------
// Arithmetic
// ---------------------------------------------------------------------------------------------------------

// Adds (Sign 1) or subtracts (-1) days.
template <int Sign>
void add_days_(sql_call &call) {
    dv_date_t &date = call.args[0].date;
    double days = 0;
    number_to_double(&call.args[1].number, &days);
    dv_date_add_day(&date, Sign * days);
    sql_return_datetime(call, date);
}

void difference_(sql_call &call) {
    sql_return(call, sql_real(dv_date_sub(&call.args[0].date, &call.args[1].date)));
}

constexpr sql_kind _date = SQL_KIND_DATE;
constexpr sql_kind _integer = SQL_KIND_INTEGER;
constexpr sql_kind _text = SQL_KIND_TEXT;

constexpr sql_function _functions[] = {
    {{"dv_date", {_integer, _integer, _integer}, "y, m, d", _date, "midnight of a day"}, make_},
    {{"dv_date",
      {_integer, _integer, _integer, _integer, _integer, _integer},
      "y, m, d, h, mi, s",
      _date,
      "a day and a time of day"},
     make_},
    {{"sysdate", {}, "", _date, "local date and time"}, current_, SQL_STABLE},
    {{"dv_text", {_date}, "v", _text, "as text that to_date reads back"}, to_text_},
    {{"to_char", {_date}, "v", _text, "as text that to_date reads back"}, to_text_},
    {{"dv_add_days", {_date, SQL_KIND_NUMBER}, "d, n", _date, "n days later, rounded to the second"},
     add_days_<1>},
    {{"dv_sub_days", {_date, SQL_KIND_NUMBER}, "d, n", _date, "n days earlier, rounded to the second"},
     add_days_<-1>},
    {{"dv_date_diff", {_date, _date}, "a, b", SQL_KIND_REAL, "a - b in days"}, difference_},
};

}  // namespace

constinit const sql_type dv::impl::date_type = {
    SQL_KIND_DATE,
    "DATE",
    "to_date",
    sql_decode_record<&sql_value::date, fault_>,
    sql_encode_record<&sql_value::date>,
};

constinit const sql_function_table dv::impl::date_functions = _functions;
