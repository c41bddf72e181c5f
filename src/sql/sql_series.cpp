// dv_series: numbers, dates or timestamps from one to another by steps, as a table.
//
//     SELECT dv_text(value) FROM dv_series(dv_date(2024, 1, 31), dv_date(2024, 12, 31), to_yminterval('0-1'))
//
// Each value is the first one plus so many times the step, not the one before plus a step: so no rounding
// adds up, and months go back to a late day behind a short month (31 January, 29 February, 31 March).

#include <algorithm>

#include "sql_local.h"

using namespace dv::impl;

namespace {

constexpr int64_t _rows_max = INT64_MAX - 1;

// Fails the call when the step is 0.
bool is_step_(sql_call &call, bool is_zero) {
    if (is_zero) sql_fail(call, "the step, argument 3, is 0");
    return !is_zero;
}

// ---------------------------------------------------------------------------------------------------------
// Numbers
// ---------------------------------------------------------------------------------------------------------

number_t number_at_(const sql_rows &walk, int64_t row) {
    number_t value;
    number_from_int64(&value, row);
    number_mul(&value, &walk.step.number);
    number_add(&value, &walk.from.number);
    return value;
}

// Is a value behind the last one, seen in the direction of the step?
bool is_past_(const number_t &value, const number_t &last, const number_t &step) {
    const int order = number_cmp(&value, &last);
    return number_cmp(&step, _number_zero) > 0 ? order > 0 : order < 0;
}

void begin_numbers_(sql_call &call, sql_rows &walk) {
    const number_t &first = call.args[0].number, &last = call.args[1].number, &step = call.args[2].number;
    if (!is_step_(call, number_cmp(&step, _number_zero) == 0)) return;
    walk.from = call.args[0];
    walk.step = call.args[2];
    if (is_past_(first, last, step)) return;
    number_t steps = last;
    number_sub(&steps, &first);
    number_div(&steps, &step);
    int64_t whole = 0;
    if (number_range_check(&steps, NUMBER_TYPE_INT64) != 0) number_to_int64(&steps, &whole);
    if (number_range_check(&steps, NUMBER_TYPE_INT64) == 0 || whole > _rows_max)
        return sql_fail(call, "the series is too long");
    walk.rows = whole + (is_past_(number_at_(walk, whole), last, step) ? 0 : 1);  // the quotient was rounded
}

void number_(sql_call &call, const sql_rows &walk, int64_t row, int /*column*/) {
    sql_value value{};
    value.kind = SQL_KIND_NUMBER;
    value.number = number_at_(walk, row);
    sql_return(call, value);
}

// ---------------------------------------------------------------------------------------------------------
// Dates and timestamps by seconds
// ---------------------------------------------------------------------------------------------------------

using int128_t = __int128;

int128_t nanoseconds_(const dv_itv_dts_t &itv) {
    const sql_seconds total = sql_total(itv);
    return int128_t{total.whole} * SQL_NSEC_PER_SEC + total.nanoseconds;
}

void set_utc_(dv_date_t &date, const dv_timestamp_t &ts) { dv_date_from_timestamp(&date, &ts); }
void set_utc_(dv_timestamp_t &to, const dv_timestamp_t &ts) { to = ts; }
void set_utc_(dv_ts_tz_t &ts_tz, const dv_timestamp_t &ts) {
    ts_tz.utc = ts;
    timezone_adjust(&ts_tz.tz, &sql_date_part(ts_tz));
}

template <typename Record>
void begin_seconds_(sql_call &call, sql_rows &walk) {
    const dv_timestamp_t first = sql_utc_of(sql_record_of<Record>(call.args[0]));
    const dv_timestamp_t last = sql_utc_of(sql_record_of<Record>(call.args[1]));
    const int128_t step = nanoseconds_(call.args[2].dts);
    if (!is_step_(call, step == 0)) return;
    dv_itv_dts_t span;
    dv_timestamp_sub_timestamp_into_itv_dts(&span, &last, &first);
    const int128_t whole = nanoseconds_(span);
    walk.from = call.args[0];
    walk.step = call.args[2];
    if (whole != 0 && (whole < 0) != (step < 0)) return;
    if (whole / step > _rows_max) return sql_fail(call, "the series is too long");
    walk.rows = static_cast<int64_t>(whole / step) + 1;
}

// A step of so many days.
template <typename Record>
void begin_days_(sql_call &call, sql_rows &walk) {
    dv_itv_dts_t step = sql_dts_of({SQL_SEC_PER_DAY, 0});
    dv_itv_dts_mul(&step, &call.args[2].number);
    call.args[2].kind = SQL_KIND_ITV_DTS;
    call.args[2].dts = step;
    begin_seconds_<Record>(call, walk);
}

template <typename Record>
void at_seconds_(sql_call &call, const sql_rows &walk, int64_t row, int /*column*/) {
    const int128_t passed = nanoseconds_(walk.step.dts) * row;
    const dv_itv_dts_t interval = sql_dts_of(
        {static_cast<int64_t>(passed / SQL_NSEC_PER_SEC), static_cast<int>(passed % SQL_NSEC_PER_SEC)});
    sql_value from = walk.from;
    auto &record = sql_record_of<Record>(from);
    dv_timestamp_t ts = sql_utc_of(record);
    dv_timestamp_add_itv_dts(&ts, &interval);
    set_utc_(record, ts);
    sql_return_datetime(call, record);
}

// ---------------------------------------------------------------------------------------------------------
// Dates and timestamps by months
// ---------------------------------------------------------------------------------------------------------

// As dv_date_add_month counts, which has months of a year 0 that it does not give.
int64_t months_of_(const dv_date_t &date) {
    return int64_t{dv_date_get_field(&date, DT_FMT_UNIT_YEAR)} * SQL_MONTHS_PER_YEAR + date.month;
}

template <typename Record>
Record at_month_(const sql_rows &walk, int64_t row) {
    sql_value from = walk.from;
    Record &record = sql_record_of<Record>(from);
    auto &&local = sql_local_of(record);
    const int64_t months = sql_total_months(walk.step.ytm) * row;
    dv_date_add_month(&sql_date_part(local), static_cast<int>(months), /*is_from_itv=*/0);
    dv_date_is_valid(&sql_date_part(local));
    sql_put_local(record, local);
    return record;
}

int compare_(const dv_date_t &x, const dv_date_t &y) { return dv_date_compare(&x, &y); }
int compare_(const dv_timestamp_t &x, const dv_timestamp_t &y) { return dv_timestamp_compare(&x, &y); }
int compare_(const dv_ts_tz_t &x, const dv_ts_tz_t &y) { return dv_ts_tz_compare(&x, &y); }

// So many steps as calendar months lie between; the last of them may go beyond by days.
template <typename Record>
void begin_months_(sql_call &call, sql_rows &walk) {
    Record &first = sql_record_of<Record>(call.args[0]), &last = sql_record_of<Record>(call.args[1]);
    const int64_t step = sql_total_months(call.args[2].ytm);
    if (!is_step_(call, step == 0)) return;
    auto &&local_first = sql_local_of(first), &&local_last = sql_local_of(last);
    const int64_t months = months_of_(sql_date_part(local_last)) - months_of_(sql_date_part(local_first));
    walk.from = call.args[0];
    walk.step = call.args[2];
    if (months != 0 && (months < 0) != (step < 0)) return;
    const int64_t steps = months / step;
    const int order = compare_(at_month_<Record>(walk, steps), last);
    const bool is_past = step > 0 ? order > 0 : order < 0;
    walk.rows = steps + (is_past ? 0 : 1);
}

template <typename Record>
void at_months_(sql_call &call, const sql_rows &walk, int64_t row, int /*column*/) {
    sql_return_datetime(call, at_month_<Record>(walk, row));
}

// ---------------------------------------------------------------------------------------------------------
// Rows
// ---------------------------------------------------------------------------------------------------------

template <sql_kind Kind>
constexpr sql_column _columns[] = {{"value", Kind}};

template <sql_kind Kind>
constexpr sql_table table_(sql_kind step, const char *manual, decltype(sql_table::begin) begin,
                           decltype(sql_table::field) field) {
    return {{"dv_series", {Kind, Kind, step}, "start, stop, step", SQL_KIND_NONE, manual},
            _columns<Kind>,
            begin,
            field};
}

constexpr sql_kind _number = SQL_KIND_NUMBER;
constexpr sql_kind _date = SQL_KIND_DATE;
constexpr sql_kind _timestamp = SQL_KIND_TIMESTAMP;
constexpr sql_kind _ts_tz = SQL_KIND_TS_TZ;
constexpr sql_kind _ytm = SQL_KIND_ITV_YTM;
constexpr sql_kind _dts = SQL_KIND_ITV_DTS;
constexpr char _line[] = "start, start + step and so on, up to stop; down to it where step is negative";

}  // namespace

constinit const sql_table dv::impl::number_series_table =
    table_<_number>(_number, _line, begin_numbers_, number_);
constinit const sql_table dv::impl::date_day_series_table =
    table_<_date>(_number, "the same, step in days", begin_days_<dv_date_t>, at_seconds_<dv_date_t>);
constinit const sql_table dv::impl::date_series_table =
    table_<_date>(_dts, _line, begin_seconds_<dv_date_t>, at_seconds_<dv_date_t>);
constinit const sql_table dv::impl::date_month_series_table = table_<_date>(
    _ytm, "the same, by months as add_months counts them", begin_months_<dv_date_t>, at_months_<dv_date_t>);
constinit const sql_table dv::impl::timestamp_series_table =
    table_<_timestamp>(_dts, _line, begin_seconds_<dv_timestamp_t>, at_seconds_<dv_timestamp_t>);
constinit const sql_table dv::impl::timestamp_month_series_table =
    table_<_timestamp>(_ytm, "the same, by months as add_months counts them", begin_months_<dv_timestamp_t>,
                       at_months_<dv_timestamp_t>);
constinit const sql_table dv::impl::ts_tz_month_series_table =
    table_<_ts_tz>(_ytm, "the same, by months of local time as add_months counts them",
                   begin_months_<dv_ts_tz_t>, at_months_<dv_ts_tz_t>);
constinit const sql_table dv::impl::ts_tz_series_table = table_<_ts_tz>(
    _dts, "the same, in the zone of start", begin_seconds_<dv_ts_tz_t>, at_seconds_<dv_ts_tz_t>);
