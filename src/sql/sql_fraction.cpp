// Precisions of datetimes and intervals. dv_cast_fraction: a fraction of a second rounded to so many digits,
// as a TIMESTAMP(3) holds it; dv_cast_leading: years or days of at most so many, as an INTERVAL DAY(2) TO
// SECOND has them.

#include "sql_column.h"

using namespace dv::impl;

namespace {

// Of either sign, half away from zero; with a carry it is a whole second.
int rounded_(int nanoseconds, int64_t digits) {
    int unit = SQL_NSEC_PER_SEC;
    for (int64_t i = 0; i < digits; ++i) unit /= 10;
    const int half = nanoseconds < 0 ? -(unit / 2) : unit / 2;
    return (nanoseconds + half) / unit * unit;
}

bool is_digits_(sql_call &call) {
    const int64_t digits = call.args[1].integer;
    if (digits >= 0 && digits <= SQL_FRACTION_DIGITS) return true;
    sql_fail(call, "%lld digits do not lie in 0..9", static_cast<long long>(digits));
    return false;
}

// Rounds the seconds of a timestamp, the carry into its date.
void round_(dv_timestamp_t &ts, int64_t digits) {
    const int fraction = rounded_(sql_fraction(sql_time_part(ts)), digits);
    const int carry = fraction / SQL_NSEC_PER_SEC;
    dv_timestamp_set_field(&ts, DT_FMT_UNIT_FSEC, fraction % SQL_NSEC_PER_SEC, 0, 0);
    dv_date_add_field(&sql_date_part(ts), DT_FMT_UNIT_SECOND, carry);
}

void round_(dv_ts_tz_t &ts_tz, int64_t digits) {
    round_(ts_tz.utc, digits);
    timezone_adjust(&ts_tz.tz, &sql_date_part(ts_tz));
}

template <typename Record>
void cast_(sql_call &call) {
    if (!is_digits_(call)) return;
    auto &value = sql_record_of<Record>(call.args[0]);
    round_(value, call.args[1].integer);
    sql_return_datetime(call, value);
}

template <typename Record>
void cast_column_(sql_call &call, const dv_column_t &values, dv_column_t &result) {
    if (!is_digits_(call)) return sql_leave_all_rows(result);
    dv_column_copy_validity(&values, result.validity);
    for (int64_t row = 0; row < result.count; ++row) {
        if (!sql_has_value(result, row)) continue;
        auto *const value = sql_record_at<Record>(result, row);
        *value = *sql_record_at<Record>(values, row);
        round_(*value, call.args[1].integer);
    }
    sql_leave_datetimes_at_ends<Record>(result);
}

void cast_dts_(sql_call &call) {
    if (!is_digits_(call)) return;
    sql_seconds total = sql_total(call.args[0].dts);
    const int fraction = rounded_(total.nanoseconds, call.args[1].integer);
    sql_return_dts(call, sql_seconds{total.whole + fraction / SQL_NSEC_PER_SEC, fraction % SQL_NSEC_PER_SEC});
}

// A time of day that rounds to 24:00 has no such value.
void cast_time_(sql_call &call) {
    if (!is_digits_(call)) return;
    const dv_time_t &time = call.args[0].time;
    const int fraction = rounded_(sql_fraction(time), call.args[1].integer);
    const int second = time.hour * SQL_SEC_PER_HOUR + time.minute * SQL_SEC_PER_MINUTE + time.second +
                       fraction / SQL_NSEC_PER_SEC;
    if (second == SQL_SEC_PER_DAY) return sql_fail(call, "the time of day rounds to 24:00:00");
    sql_value value{};
    value.kind = SQL_KIND_TIME;
    dv_time_from_unit_values(&value.time, second / SQL_SEC_PER_HOUR,
                             second % SQL_SEC_PER_HOUR / SQL_SEC_PER_MINUTE, second % SQL_SEC_PER_MINUTE,
                             fraction % SQL_NSEC_PER_SEC);
    sql_return(call, value);
}

// An interval whose leading field, years or days, is this one.
void cast_leading_(sql_call &call, int64_t leading) {
    if (!is_digits_(call)) return;
    int64_t end = 1;
    for (int64_t i = 0; i < call.args[1].integer; ++i) end *= 10;
    if (leading <= -end || leading >= end) sql_raise(SQL_ERR_ITV_LEADING_PRECISION);
    sql_return_argument(call);
}

void cast_years_(sql_call &call) {
    cast_leading_(call, dv_itv_ytm_get_field(&call.args[0].ytm, DT_FMT_UNIT_YEAR));
}

void cast_days_(sql_call &call) {
    cast_leading_(call, dv_itv_dts_get_field(&call.args[0].dts, DT_FMT_UNIT_DAY));
}

template <sql_kind Kind>
constexpr sql_function leading_row_(void (*body)(sql_call &call)) {
    return {{"dv_cast_leading",
             {Kind, SQL_KIND_INTEGER},
             "v, digits",
             Kind,
             "the interval itself, an error when its years or days have more digits"},
            body};
}

template <sql_kind Kind>
constexpr sql_function row_(void (*body)(sql_call &call)) {
    return {{"dv_cast_fraction",
             {Kind, SQL_KIND_INTEGER},
             "v, digits",
             Kind,
             "the fraction of a second rounded to so many digits, half away from zero"},
            body};
}

constexpr sql_function _functions[] = {
    row_<SQL_KIND_TIME>(cast_time_),
    sql_with_columns(row_<SQL_KIND_TIMESTAMP>(cast_<dv_timestamp_t>), cast_column_<dv_timestamp_t>),
    sql_with_columns(row_<SQL_KIND_TS_TZ>(cast_<dv_ts_tz_t>), cast_column_<dv_ts_tz_t>),
    row_<SQL_KIND_ITV_DTS>(cast_dts_),
    leading_row_<SQL_KIND_ITV_YTM>(cast_years_),
    leading_row_<SQL_KIND_ITV_DTS>(cast_days_),
};

}  // namespace

constinit const sql_function_table dv::impl::fraction_functions = _functions;
