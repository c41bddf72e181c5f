// Months, weekdays, truncation and rounding of DATE and both TIMESTAMPs in SQL: add_months, months_between,
// last_day, next_day, dv_trunc, dv_round.
//
// They work on the local date; the time of day stays, with its fraction, but for truncation and rounding. A
// TIMESTAMP WITH TIME ZONE keeps its offset where the zone has it at the result, too.

#include "sql_datetime.h"
#include "sql_language.h"

using namespace dv::impl;

namespace {

// ---------------------------------------------------------------------------------------------------------
// Local times: taken, changed and put back
// ---------------------------------------------------------------------------------------------------------

template <typename Record>
Record &local_of_(Record &record) {
    return record;
}
dv_timestamp_t local_of_(dv_ts_tz_t &ts_tz) {
    dv_timestamp_t local;
    dv_timestamp_from_ts_tz(&local, &ts_tz);
    return local;
}

bool have_one_offset_(const timezone_t &x, const timezone_t &y) {
    return x.utc_hour == y.utc_hour && x.utc_min == y.utc_min;
}

template <typename Record>
void return_local_(sql_call &call, const Record & /*of*/, const Record &local) {
    sql_return_datetime(call, local);
}
// Another offset is the one by which the region's clocks show the local time, the later one where there are
// two. Raises -5110 when they never did.
void return_local_(sql_call &call, const dv_ts_tz_t &of, const dv_timestamp_t &local) {
    dv_ts_tz_t result = {local, of.tz};
    timezone_shift_to_west(&result.tz, &sql_date_part(result));
    timezone_adjust(&result.tz, &sql_date_part(result));
    if (!have_one_offset_(result.tz, of.tz)) dv_ts_tz_from_timestamp(&result, &local, &of.tz);
    sql_return_datetime(call, result);
}

void drop_fraction_(dv_date_t &) {}
void drop_fraction_(dv_timestamp_t &ts) {
    dv_timestamp_set_field(&ts, DT_FMT_UNIT_FSEC, 0, /*check_valid_input=*/0, /*check_overflow=*/0);
}

// ---------------------------------------------------------------------------------------------------------
// Bodies
// ---------------------------------------------------------------------------------------------------------

template <typename Record>
void add_months_(sql_call &call) {
    int months = 0;
    if (!sql_get_ints(call, 1, {&months, 1})) return;
    Record &record = sql_record_of<Record>(call.args[0]);
    auto &&local = local_of_(record);
    dv_date_add_month(&sql_date_part(local), months, /*is_from_itv=*/0);
    return_local_(call, record, local);
}

template <typename Record>
void months_between_(sql_call &call) {
    auto &&x = local_of_(sql_record_of<Record>(call.args[0]));
    auto &&y = local_of_(sql_record_of<Record>(call.args[1]));
    sql_return(call, sql_real(dv_date_months_between(&sql_date_part(x), &sql_date_part(y))));
}

template <typename Record>
void last_day_(sql_call &call) {
    Record &record = sql_record_of<Record>(call.args[0]);
    auto &&local = local_of_(record);
    dv_date_get_last_date(&sql_date_part(local), &sql_date_part(local));
    return_local_(call, record, local);
}

template <typename Record>
void next_named_day_(sql_call &call, dv_nls_date_lang_t language) {
    const sql_text &name = call.args[1].text;
    Record &record = sql_record_of<Record>(call.args[0]);
    auto &&local = local_of_(record);
    dv_date_get_next_day(&sql_date_part(local), name.bytes, name.length, language, DVSTR_CHARSET_UTF8);
    return_local_(call, record, local);
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
    auto &&local = local_of_(record);
    Operation(&sql_date_part(local), unit.bytes, unit.length);
    drop_fraction_(local);
    return_local_(call, record, local);
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
