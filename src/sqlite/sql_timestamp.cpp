// TIMESTAMP in SQL: its stored form, which is the record, and its functions.
//
// As with DATE, every TIMESTAMP that a function returns is a day of the calendar.

#include "sql_datetime.h"

using namespace dv::impl;

namespace {

const char *fault_(const dv_timestamp_t &ts) {
    if (ts.dummy != 0) return "the eighth byte of a TIMESTAMP is 0";
    if (time_nanoseconds(time_part(ts)) >= NSEC_PER_SEC) return "its fraction of a second is out of range";
    return sql_date_fault(date_part(ts));
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
    char text[SQL_TIMESTAMP_TEXT_MAX];
    const char *end = sql_put_timestamp(text, call.args[0].timestamp);
    sql_return(call.context, sql_text_value(text, static_cast<int>(end - text)));
}

void add_interval_(dv_timestamp_t &ts, const sql_value &interval, int sign) {
    if (interval.kind == SQL_KIND_ITV_YTM) return sql_add_months(date_part(ts), interval.ytm, sign);
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

constexpr sql_kind _timestamp = SQL_KIND_TIMESTAMP;
constexpr sql_kind _integer = SQL_KIND_INTEGER;

constexpr sql_function _functions[] = {
    {"dv_timestamp", {_integer, _integer, _integer, _integer, _integer, _integer}, make_},
    {"dv_timestamp", {_integer, _integer, _integer, _integer, _integer, _integer, _integer}, make_},
    {"to_timestamp", {SQL_KIND_DATE}, of_date_},
    {"to_date", {_timestamp}, to_date_},
    {"dv_text", {_timestamp}, to_text_},
    {"to_char", {_timestamp}, to_text_},
    {"dv_cmp", {_timestamp, _timestamp}, sql_compare_records<&sql_value::timestamp, dv_timestamp_compare>},
    {"dv_add", {_timestamp, SQL_KIND_ITV_YTM}, add_},
    {"dv_add", {_timestamp, SQL_KIND_ITV_DTS}, add_},
    {"dv_add", {SQL_KIND_ITV_YTM, _timestamp}, add_},
    {"dv_add", {SQL_KIND_ITV_DTS, _timestamp}, add_},
    {"dv_sub", {_timestamp, SQL_KIND_ITV_YTM}, sub_},
    {"dv_sub", {_timestamp, SQL_KIND_ITV_DTS}, sub_},
    {"dv_sub", {_timestamp, _timestamp}, difference_},
};

}  // namespace

char *dv::impl::sql_put_timestamp(char *out, const dv_timestamp_t &ts) {
    out = sql_put_date(out, date_part(ts));
    *out++ = '.';
    return sql_put_digits(out, static_cast<int>(time_nanoseconds(time_part(ts))), 9);
}

constinit const sql_type dv::impl::timestamp_type = {
    SQL_KIND_TIMESTAMP,
    "TIMESTAMP",
    "to_timestamp",
    sql_decode_record<&sql_value::timestamp, fault_>,
    sql_encode_record<&sql_value::timestamp>,
};

constinit const sql_function_table dv::impl::timestamp_functions = _functions;
