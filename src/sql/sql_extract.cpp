// dv_extract: one field of a DATE, a TIME, a timestamp or an interval.
//
// A field is given as an INTEGER, but the seconds of a TIME, a TIMESTAMP and an INTERVAL DAY TO SECOND, which
// have a fraction, as a NUMBER; that is the result type of their functions where an engine knows only one.
// The fields of an interval have its sign.

#include "sql_datetime.h"

using namespace dv::impl;

namespace {

// The field that the first argument names; DT_FMT_UNIT_NONE when it is none: the call has failed then.
dt_fmt_unit_t field_(sql_call &call) {
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
    number_from_int64(&value.number, seconds * int64_t{SQL_NSEC_PER_SEC} + nanoseconds);
    number_div(&value.number, n1000000000);
    return value;
}

sql_value of_date_(const sql_value &from, dt_fmt_unit_t unit) {
    return sql_integer(dv_date_get_field(&from.date, unit));
}

sql_value of_time_(const sql_value &from, dt_fmt_unit_t unit) {
    const int field = dv_time_get_field(&from.time, unit);
    if (unit != DT_FMT_UNIT_SECOND) return sql_integer(field);
    return seconds_(field, sql_fraction(from.time));
}

sql_value of_timestamp_(const sql_value &from, dt_fmt_unit_t unit) {
    const int field = dv_timestamp_get_field(&from.timestamp, unit);
    if (unit != DT_FMT_UNIT_SECOND) return sql_integer(field);
    return seconds_(field, sql_fraction(sql_time_part(from.timestamp)));
}

// Of the local time. Minutes have the sign of the hours.
sql_value of_ts_tz_(const sql_value &from, dt_fmt_unit_t unit) {
    const int hour = timezone_get_field(&from.ts_tz.tz, TZ_FLD_UTC_HOUR), minute = from.ts_tz.tz.utc_min;
    if (unit == DT_FMT_UNIT_TZH) return sql_integer(hour);
    if (unit == DT_FMT_UNIT_TZM) return sql_integer(hour < 0 ? -minute : minute);
    sql_value local{};
    dv_timestamp_from_ts_tz(&local.timestamp, &from.ts_tz);
    return of_timestamp_(local, unit);
}

// Of a region; a fixed offset has neither.
void extract_zone_name_(sql_call &call, dt_fmt_unit_t unit) {
    const dv_ts_tz_t &from = call.args[1].ts_tz;
    if (sql_zone_number(from.tz) == TZ_ID_OFFSET) return;
    if (unit == DT_FMT_UNIT_TZR) {
        timezone_get_zone_name(&from.tz, call.room, TZ_NAME_TEXT_SIZE);
    } else {
        timezone_get_zone_abbr(&from.tz, &sql_date_part(from.utc), call.room, TZ_ABBREV_TEXT_SIZE);
    }
    sql_return_text(call, call.room);
}

sql_value of_ytm_(const sql_value &from, dt_fmt_unit_t unit) {
    if (unit != DT_FMT_UNIT_YEAR && unit != DT_FMT_UNIT_MONTH) sql_raise(SQL_ERR_FIELD_UNSUPPORTED);
    return sql_integer(dv_itv_ytm_get_field(&from.ytm, unit));
}

sql_value of_dts_(const sql_value &from, dt_fmt_unit_t unit) {
    const int second_of_day = dv_itv_dts_get_field(&from.dts, DT_FMT_UNIT_SECOND);
    switch (unit) {
        case DT_FMT_UNIT_DAY:
            return sql_integer(dv_itv_dts_get_field(&from.dts, DT_FMT_UNIT_DAY));
        case DT_FMT_UNIT_HOUR:
            return sql_integer(second_of_day / SQL_SEC_PER_HOUR);
        case DT_FMT_UNIT_MINUTE:
            return sql_integer(second_of_day % SQL_SEC_PER_HOUR / SQL_SEC_PER_MINUTE);
        case DT_FMT_UNIT_SECOND:
            return seconds_(second_of_day % SQL_SEC_PER_MINUTE,
                            dv_itv_dts_get_field(&from.dts, DT_FMT_UNIT_FSEC));
        default:
            sql_raise(SQL_ERR_FIELD_UNSUPPORTED);
    }
}

template <sql_value (*Extract)(const sql_value &from, dt_fmt_unit_t unit)>
void extract_(sql_call &call) {
    const dt_fmt_unit_t unit = field_(call);
    if (unit != DT_FMT_UNIT_NONE) sql_return(call, Extract(call.args[1], unit));
}

void extract_ts_tz_(sql_call &call) {
    const dt_fmt_unit_t unit = field_(call);
    if (unit == DT_FMT_UNIT_TZR || unit == DT_FMT_UNIT_TZD) return extract_zone_name_(call, unit);
    if (unit != DT_FMT_UNIT_NONE) sql_return(call, of_ts_tz_(call.args[1], unit));
}

constexpr sql_kind _field = SQL_KIND_TEXT;
constexpr sql_kind _integer = SQL_KIND_INTEGER;
constexpr sql_kind _number = SQL_KIND_NUMBER;

constexpr sql_function _functions[] = {
    {{"dv_extract",
      {_field, SQL_KIND_DATE},
      "field, v",
      _integer,
      "YEAR, MONTH, DAY, HOUR, MINUTE or SECOND"},
     extract_<of_date_>},
    {{"dv_extract", {_field, SQL_KIND_TIME}, "field, v", _number, "HOUR, MINUTE or SECOND with its fraction"},
     extract_<of_time_>},
    {{"dv_extract", {_field, SQL_KIND_TIMESTAMP}, "field, v", _number, "YEAR to SECOND with its fraction"},
     extract_<of_timestamp_>},
    {{"dv_extract",
      {_field, SQL_KIND_TS_TZ},
      "field, v",
      _number,
      "YEAR to SECOND of the local time, TIMEZONE_HOUR or _MINUTE; as text TIMEZONE_REGION or _ABBR"},
     extract_ts_tz_,
     SQL_IMMUTABLE,
     /*keeper=*/nullptr,
     /*other_result=*/SQL_KIND_TEXT},
    {{"dv_extract", {_field, SQL_KIND_ITV_YTM}, "field, v", _integer, "YEAR or MONTH, with the sign"},
     extract_<of_ytm_>},
    {{"dv_extract",
      {_field, SQL_KIND_ITV_DTS},
      "field, v",
      _number,
      "DAY, HOUR, MINUTE or SECOND with its fraction, with the sign"},
     extract_<of_dts_>},
};

}  // namespace

constinit const sql_function_table dv::impl::extract_functions = _functions;
