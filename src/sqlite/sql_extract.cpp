// dv_extract: one field of a DATE, a TIME, a timestamp or an interval.
//
// Results are integers, but the seconds of a TIME, a TIMESTAMP and an INTERVAL DAY TO SECOND, which have a
// fraction: a NUMBER. The fields of an interval have its sign.

#include "sql_datetime.h"

using namespace dv::impl;

namespace {

// The field that the first argument names; DT_FMT_UNIT_NONE when it is none: the call has failed then.
dt_fmt_unit_t field_(const sql_call &call) {
    constexpr sql_word fields[] = {
        {"YEAR", DT_FMT_UNIT_YEAR},
        {"MONTH", DT_FMT_UNIT_MONTH},
        {"DAY", DT_FMT_UNIT_DAY},
        {"HOUR", DT_FMT_UNIT_HOUR},
        {"MINUTE", DT_FMT_UNIT_MINUTE},
        {"SECOND", DT_FMT_UNIT_SECOND},
        {"TIMEZONE_HOUR", DT_FMT_UNIT_TZH},
        {"TIMEZONE_MINUTE", DT_FMT_UNIT_TZM},
        {"TIMEZONE_REGION", DT_FMT_UNIT_TZR},
        {"TIMEZONE_ABBR", DT_FMT_UNIT_TZD},
    };
    return sql_get_word(call, 0, fields);
}

sql_value seconds_(int seconds, int nanoseconds) {
    sql_value value{};
    value.kind = SQL_KIND_NUMBER;
    number_from_int64(&value.number, seconds * int64_t{NSEC_PER_SEC} + nanoseconds);
    number_div(&value.number, n1000000000);
    return value;
}

sql_value of_date_(const sql_value &from, dt_fmt_unit_t unit) {
    return sql_integer(dv_date_get_field(&from.date, unit));
}

sql_value of_time_(const sql_value &from, dt_fmt_unit_t unit) {
    const int field = dv_time_get_field(&from.time, unit);
    if (unit != DT_FMT_UNIT_SECOND) return sql_integer(field);
    return seconds_(field, static_cast<int>(time_nanoseconds(from.time)));
}

sql_value of_timestamp_(const sql_value &from, dt_fmt_unit_t unit) {
    const int field = dv_timestamp_get_field(&from.timestamp, unit);
    if (unit != DT_FMT_UNIT_SECOND) return sql_integer(field);
    return seconds_(field, static_cast<int>(time_nanoseconds(time_part(from.timestamp))));
}

// Of the local time. Minutes have the sign of the hours.
sql_value of_ts_tz_(const sql_value &from, dt_fmt_unit_t unit) {
    const int hour = tz_hour(from.ts_tz.tz), minute = from.ts_tz.tz.utc_min;
    if (unit == DT_FMT_UNIT_TZH) return sql_integer(hour);
    if (unit == DT_FMT_UNIT_TZM) return sql_integer(hour < 0 ? -minute : minute);
    sql_value local{};
    dv_timestamp_from_ts_tz(&local.timestamp, &from.ts_tz);
    return of_timestamp_(local, unit);
}

// Of a region; a fixed offset has neither.
void extract_zone_name_(sql_call &call, dt_fmt_unit_t unit) {
    const dv_ts_tz_t &from = call.args[1].ts_tz;
    if (tz_is_offset(from.tz)) return sqlite3_result_null(call.context);
    char text[TZ_NAME_TEXT_SIZE];
    if (unit == DT_FMT_UNIT_TZR) {
        timezone_get_zone_name(&from.tz, text, sizeof text);
    } else {
        timezone_get_zone_abbr(&from.tz, &date_part(from.utc), text, sizeof text);
    }
    sqlite3_result_text(call.context, text, -1, SQLITE_TRANSIENT);
}

sql_value of_ytm_(const sql_value &from, dt_fmt_unit_t unit) {
    if (unit != DT_FMT_UNIT_YEAR && unit != DT_FMT_UNIT_MONTH) raise(ERR_FIELD_UNSUPPORTED);
    return sql_integer(dv_itv_ytm_get_field(&from.ytm, unit));
}

sql_value of_dts_(const sql_value &from, dt_fmt_unit_t unit) {
    const int second_of_day = dv_itv_dts_get_field(&from.dts, DT_FMT_UNIT_SECOND);
    switch (unit) {
        case DT_FMT_UNIT_DAY:
            return sql_integer(dv_itv_dts_get_field(&from.dts, DT_FMT_UNIT_DAY));
        case DT_FMT_UNIT_HOUR:
            return sql_integer(second_of_day / SEC_PER_HOUR);
        case DT_FMT_UNIT_MINUTE:
            return sql_integer(second_of_day % SEC_PER_HOUR / SEC_PER_MINUTE);
        case DT_FMT_UNIT_SECOND:
            return seconds_(second_of_day % SEC_PER_MINUTE,
                            dv_itv_dts_get_field(&from.dts, DT_FMT_UNIT_FSEC));
        default:
            raise(ERR_FIELD_UNSUPPORTED);
    }
}

template <sql_value (*Extract)(const sql_value &from, dt_fmt_unit_t unit)>
void extract_(sql_call &call) {
    const dt_fmt_unit_t unit = field_(call);
    if (unit != DT_FMT_UNIT_NONE) sql_return(call.context, Extract(call.args[1], unit));
}

void extract_ts_tz_(sql_call &call) {
    const dt_fmt_unit_t unit = field_(call);
    if (unit == DT_FMT_UNIT_TZR || unit == DT_FMT_UNIT_TZD) return extract_zone_name_(call, unit);
    if (unit != DT_FMT_UNIT_NONE) sql_return(call.context, of_ts_tz_(call.args[1], unit));
}

constexpr sql_function _functions[] = {
    {"dv_extract", {SQL_KIND_TEXT, SQL_KIND_DATE}, extract_<of_date_>},
    {"dv_extract", {SQL_KIND_TEXT, SQL_KIND_TIME}, extract_<of_time_>},
    {"dv_extract", {SQL_KIND_TEXT, SQL_KIND_TIMESTAMP}, extract_<of_timestamp_>},
    {"dv_extract", {SQL_KIND_TEXT, SQL_KIND_TS_TZ}, extract_ts_tz_},
    {"dv_extract", {SQL_KIND_TEXT, SQL_KIND_ITV_YTM}, extract_<of_ytm_>},
    {"dv_extract", {SQL_KIND_TEXT, SQL_KIND_ITV_DTS}, extract_<of_dts_>},
};

}  // namespace

constinit const sql_function_table dv::impl::extract_functions = _functions;
