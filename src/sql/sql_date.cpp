// DATE in SQL: its bytes, which are the record, and its functions.
//
// Every DATE that a function returns has been checked as a whole, so what is stored is a day of the calendar:
// a day of the gap in October 1582 has become the 15th, and a 29 February that day numbers count but the
// calendar lacks (years BC) is an error.

#include <algorithm>
#include <climits>

#include "dvtypes/iso.h"
#include "sql_datetime.h"
#include "sql_language.h"

using namespace dv::impl;

namespace {

// ---------------------------------------------------------------------------------------------------------
// Bytes
// ---------------------------------------------------------------------------------------------------------

const char *fault_(const dv_date_t &date) {
    return date.dummy != 0 ? "the last byte of a DATE is 0" : dv_date_get_fault(&date);
}

// ---------------------------------------------------------------------------------------------------------
// Making and writing
// ---------------------------------------------------------------------------------------------------------

void make_(sql_call &call) {
    int field[6] = {};
    if (!sql_get_ints(call, 0, {field, static_cast<size_t>(call.argc)})) return;
    dv_date_t date{};
    dv_date_from_unit_values(&date, field[0], field[1], field[2], field[3], field[4], field[5]);
    sql_return_date(call, date);
}

void current_(sql_call &call) {
    dv_date_t date{};
    dv_date_current(&date);
    sql_return_date(call, date);
}

void to_text_(sql_call &call) {
    sql_return_room(call, call.room + dv_date_to_iso(&call.args[0].date, call.room, SQL_ROOM_SIZE));
}

// ---------------------------------------------------------------------------------------------------------
// Arithmetic
// ---------------------------------------------------------------------------------------------------------

void add_months_(sql_call &call) {
    int months = 0;
    if (!sql_get_ints(call, 1, {&months, 1})) return;
    dv_date_t &date = call.args[0].date;
    dv_date_add_month(&date, months, /*is_from_itv=*/0);
    sql_return_date(call, date);
}

void add_days_(sql_call &call) {
    dv_date_t &date = call.args[0].date;
    double days = 0;
    number_to_double(&call.args[1].number, &days);
    dv_date_add_day(&date, days);
    sql_return_date(call, date);
}

template <double (*Difference)(const dv_date_t *, const dv_date_t *)>
void difference_(sql_call &call) {
    sql_return(call, sql_real(Difference(&call.args[0].date, &call.args[1].date)));
}

void last_day_(sql_call &call) {
    dv_date_t &date = call.args[0].date;
    dv_date_get_last_date(&date, &date);
    sql_return_date(call, date);
}

void add_interval_(dv_date_t &date, const sql_value &interval, int sign) {
    if (interval.kind == SQL_KIND_ITV_YTM) return sql_add_months(date, interval.ytm, sign);
    if (sign > 0) return dv_date_add_itv_dts(&date, &interval.dts);
    dv_date_sub_itv_dts(&date, &interval.dts);
}

// A date and an interval, in either order.
void add_(sql_call &call) {
    const int place = call.args[0].kind == SQL_KIND_DATE ? 0 : 1;
    dv_date_t &date = call.args[place].date;
    add_interval_(date, call.args[1 - place], 1);
    sql_return_date(call, date);
}

void sub_(sql_call &call) {
    dv_date_t &date = call.args[0].date;
    add_interval_(date, call.args[1], -1);
    sql_return_date(call, date);
}

// ---------------------------------------------------------------------------------------------------------
// Named weekdays
// ---------------------------------------------------------------------------------------------------------

void next_named_day_(sql_call &call, dv_nls_date_lang_t language) {
    dv_date_t &date = call.args[0].date;
    const sql_text &name = call.args[1].text;
    dv_date_get_next_day(&date, name.bytes, name.length, language, DVSTR_CHARSET_UTF8);
    sql_return_date(call, date);
}

void next_day_(sql_call &call) { next_named_day_(call, DV_NLS_DATE_LANG_AMERICAN); }

void next_day_in_language_(sql_call &call) {
    if (!sql_check_language(call, 2)) return;
    const dv_nls_date_lang_t language = sql_language_of(call.args[2].text);
    if (!dv_nls_date_lang_is_valid(language)) return sql_fail(call, "argument 3 is no language");
    next_named_day_(call, language);
}

constexpr sql_kind _date = SQL_KIND_DATE;
constexpr sql_kind _integer = SQL_KIND_INTEGER;
constexpr sql_kind _text = SQL_KIND_TEXT;
constexpr sql_kind _ytm = SQL_KIND_ITV_YTM;
constexpr sql_kind _dts = SQL_KIND_ITV_DTS;

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
    {{"dv_cmp", {_date, _date}, "a, b", _integer, "-1, 0 or 1 as a is before, at or after b"},
     sql_compare_records<&sql_value::date, dv_date_compare>},
    {{"add_months",
      {_date, _integer},
      "d, n",
      _date,
      "n months later; from the last day of a month to the last, from a day that the month lacks to its "
      "last"},
     add_months_},
    {{"dv_add_days", {_date, SQL_KIND_NUMBER}, "d, n", _date, "n days later, rounded to the second"},
     add_days_},
    {{"dv_date_diff", {_date, _date}, "a, b", SQL_KIND_REAL, "a - b in days"}, difference_<dv_date_sub>},
    {{"months_between",
      {_date, _date},
      "a, b",
      SQL_KIND_REAL,
      "a - b in months; whole for equal days and for two last days, else with 31sts of a month"},
     difference_<dv_date_months_between>},
    {{"last_day", {_date}, "d", _date, "the last day of the month, at the same time of day"}, last_day_},
    {{"next_day", {_date, _text}, "d, name", _date, "the next weekday of an American name"}, next_day_},
    {{"next_day",
      {_date, _text, _text},
      "d, name, language",
      _date,
      "the next weekday of a name in the language"},
     next_day_in_language_},
    {{"dv_add", {_date, _ytm}, "a, b", _date, "a + b; an error where the month lacks the day"}, add_},
    {{"dv_add", {_date, _dts}, "a, b", _date, "a + b, without the fraction of b's seconds"}, add_},
    {{"dv_add", {_ytm, _date}, "a, b", _date, "a + b; an error where the month lacks the day"}, add_},
    {{"dv_add", {_dts, _date}, "a, b", _date, "a + b, without the fraction of a's seconds"}, add_},
    {{"dv_sub", {_date, _ytm}, "a, b", _date, "a - b; an error where the month lacks the day"}, sub_},
    {{"dv_sub", {_date, _dts}, "a, b", _date, "a - b, without the fraction of b's seconds"}, sub_},
};

}  // namespace

// Months are held to 32 bits, where any date has long left the calendar and the library says so.
void dv::impl::sql_add_months(dv_date_t &date, const dv_itv_ytm_t &interval, int sign) {
    const int64_t months = std::clamp<int64_t>(sql_total_months(interval), -INT_MAX, INT_MAX);
    dv_date_add_month(&date, sign * static_cast<int>(months), /*is_from_itv=*/1);
}

constinit const sql_type dv::impl::date_type = {
    SQL_KIND_DATE,
    "DATE",
    "to_date",
    sql_decode_record<&sql_value::date, fault_>,
    sql_encode_record<&sql_value::date>,
};

constinit const sql_function_table dv::impl::date_functions = _functions;
