// Months, weekdays, truncation and rounding of DATE and both TIMESTAMPs in SQL: add_months, months_between,
// last_day, next_day, dv_trunc, dv_round.
//
// They work on the local date; the time of day stays, with its fraction, but for truncation and rounding.
// Where clocks are set forward at midnight, the day begins behind the gap.

#include "sql_language.h"
#include "sql_local.h"

using namespace dv::impl;

namespace {

void drop_fraction_(dv_date_t &) {}
void drop_fraction_(dv_timestamp_t &ts) {
    dv_timestamp_set_field(&ts, DT_FMT_UNIT_FSEC, 0, /*check_valid_input=*/0, /*check_valid_result=*/0);
}

// ---------------------------------------------------------------------------------------------------------
// Bodies
// ---------------------------------------------------------------------------------------------------------

template <typename Record>
void add_months_(sql_call &call) {
    int months = 0;
    if (!sql_get_ints(call, 1, {&months, 1})) return;
    Record &record = sql_record_of<Record>(call.args[0]);
    auto &&local = sql_local_of(record);
    dv_date_add_month(&sql_date_part(local), months, /*is_from_itv=*/0);
    sql_put_local(record, local);
    sql_return_datetime(call, record);
}

template <typename Record>
void months_between_(sql_call &call) {
    auto &&x = sql_local_of(sql_record_of<Record>(call.args[0]));
    auto &&y = sql_local_of(sql_record_of<Record>(call.args[1]));
    sql_return(call, sql_real(dv_date_months_between(&sql_date_part(x), &sql_date_part(y))));
}

template <typename Record>
void last_day_(sql_call &call) {
    Record &record = sql_record_of<Record>(call.args[0]);
    auto &&local = sql_local_of(record);
    dv_date_get_last_date(&sql_date_part(local), &sql_date_part(local));
    sql_put_local(record, local);
    sql_return_datetime(call, record);
}

template <typename Record>
void next_named_day_(sql_call &call, dv_nls_date_lang_t language) {
    const sql_text &name = call.args[1].text;
    Record &record = sql_record_of<Record>(call.args[0]);
    auto &&local = sql_local_of(record);
    dv_date_get_next_day(&sql_date_part(local), name.bytes, name.length, language, DVSTR_CHARSET_UTF8);
    sql_put_local(record, local);
    sql_return_datetime(call, record);
}

template <typename Record>
void next_day_(sql_call &call) {
    next_named_day_<Record>(call, DV_NLS_DATE_LANG_AMERICAN);
}

template <typename Record>
void next_day_in_language_(sql_call &call) {
    if (!sql_check_language(call, 2)) return;
    next_named_day_<Record>(call, sql_language_of(call.args[2].text));
}

// To the unit that the second argument names, to the day where there is none.
template <typename Record, void (*Operation)(dv_date_t *, const char *, int)>
void to_unit_(sql_call &call) {
    const sql_text day = {nullptr, 0};
    const sql_text &unit = call.argc > 1 ? call.args[1].text : day;
    Record &record = sql_record_of<Record>(call.args[0]);
    auto &&local = sql_local_of(record);
    Operation(&sql_date_part(local), unit.bytes, unit.length);
    drop_fraction_(local);
    sql_put_local(record, local, SQL_GAP_IS_LEFT);
    sql_return_datetime(call, record);
}

// ---------------------------------------------------------------------------------------------------------
// Rows
// ---------------------------------------------------------------------------------------------------------

constexpr sql_kind _integer = SQL_KIND_INTEGER;
constexpr sql_kind _text = SQL_KIND_TEXT;

template <typename Record, sql_kind Kind = sql_kind_of<Record>>
constexpr sql_function _rows_of[] = {
    {{"add_months",
      {Kind, _integer},
      "d, n",
      Kind,
      "n months later; from the last day of a month to the last, from a day that the month lacks to its "
      "last"},
     add_months_<Record>},
    {{"months_between",
      {Kind, Kind},
      "a, b",
      SQL_KIND_REAL,
      "a - b in months; whole for equal days and for two last days, else with 31sts of a month"},
     months_between_<Record>},
    {{"last_day", {Kind}, "d", Kind, "the last day of the month, at the same time of day"},
     last_day_<Record>},
    {{"next_day", {Kind, _text}, "d, name", Kind, "the next weekday of an American name"}, next_day_<Record>},
    {{"next_day",
      {Kind, _text, _text},
      "d, name, language",
      Kind,
      "the next weekday of a name in the language"},
     next_day_in_language_<Record>},
    {{"dv_trunc", {Kind}, "d", Kind, "the beginning of the day"}, to_unit_<Record, dv_date_trunc>},
    {{"dv_trunc", {Kind, _text}, "d, unit", Kind, "the beginning of the unit"},
     to_unit_<Record, dv_date_trunc>},
    {{"dv_round", {Kind}, "d", Kind, "the nearer beginning of a day"}, to_unit_<Record, dv_date_round>},
    {{"dv_round", {Kind, _text}, "d, unit", Kind, "the nearer beginning of a unit"},
     to_unit_<Record, dv_date_round>},
};
constexpr auto _functions = sql_join<_rows_of<dv_date_t>, _rows_of<dv_timestamp_t>, _rows_of<dv_ts_tz_t>>();

}  // namespace

constinit const sql_function_table dv::impl::calendar_functions = _functions;
