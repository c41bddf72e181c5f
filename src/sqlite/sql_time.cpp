// TIME in SQL: its stored form, which is the record, and its functions.

#include "sql_datetime.h"

using namespace dv::impl;

namespace {

const char *fault_(const dv_time_t &time) {
    if (time.dummy != 0) return "the fourth byte of a TIME is 0";
    if (time_nanoseconds(time) >= NSEC_PER_SEC) return "its fraction of a second is out of range";
    return sql_time_of_day_fault(time);
}

void make_(sql_call &call) {
    int field[4] = {};
    if (!sql_get_ints(call, 0, {field, static_cast<size_t>(call.argc)})) return;
    sql_value value{};
    value.kind = SQL_KIND_TIME;
    value.time = {};
    dv_time_from_unit_values(&value.time, field[0], field[1], field[2], field[3]);
    sql_return(call.context, value);
}

// HH:MI:SS.NNNNNNNNN
void to_text_(sql_call &call) {
    const dv_time_t &time = call.args[0].time;
    char text[sizeof "23:59:59.999999999"];
    char *end = sql_put_time_of_day(text, time);
    *end++ = '.';
    end = sql_put_digits(end, static_cast<int>(time_nanoseconds(time)), 9);
    sql_return(call.context, sql_text_value(text, static_cast<int>(end - text)));
}

constexpr sql_kind _time = SQL_KIND_TIME;
constexpr sql_kind _integer = SQL_KIND_INTEGER;

constexpr sql_function _functions[] = {
    {"dv_time", {_integer, _integer, _integer}, make_},
    {"dv_time", {_integer, _integer, _integer, _integer}, make_},
    {"dv_text", {_time}, to_text_},
    {"to_char", {_time}, to_text_},
    {"dv_cmp", {_time, _time}, sql_compare_records<&sql_value::time, dv_time_compare>},
};

}  // namespace

constinit const sql_type dv::impl::time_type = {
    SQL_KIND_TIME,
    "TIME",
    /*reader=*/nullptr,
    sql_decode_record<&sql_value::time, fault_>,
    sql_encode_record<&sql_value::time>,
};

constinit const sql_function_table dv::impl::time_functions = _functions;
