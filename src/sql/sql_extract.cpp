// dv_extract: one field of a DATE, a TIME, a timestamp or an interval.
//
// A field is given as an INTEGER, but the seconds of a TIME, a TIMESTAMP and an INTERVAL DAY TO SECOND, which
// have a fraction, and EPOCH, as a NUMBER; that is the result type of their functions where an engine knows
// only one. The fields of an interval have its sign. Weeks and days of the year are those that to_char writes
// under Q, IW, IYYY, DDD and D.

#include "dvtypes/datetime_fmt.h"
#include "sql_datetime.h"

using namespace dv::impl;

namespace {

// Fields beside those of dt_fmt_unit_t.
enum calendar_field : int { QUARTER = DT_FMT_UNIT_MAX, WEEK, ISOYEAR, DOW, DOY, EPOCH };

// The field that the first argument names; 0 when it is none: the call has failed then.
int field_(sql_call &call) {
    constexpr sql_word fields[] = {
        {"YEAR", DT_FMT_UNIT_YEAR},
        {"MONTH", DT_FMT_UNIT_MONTH},
        {"DAY", DT_FMT_UNIT_DAY},
        {"HOUR", DT_FMT_UNIT_HOUR},
        {"MINUTE", DT_FMT_UNIT_MINUTE},
        {"SECOND", DT_FMT_UNIT_SECOND},
        {"QUARTER", QUARTER},
        {"WEEK", WEEK},
        {"ISOYEAR", ISOYEAR},
        {"DOW", DOW},
        {"DOY", DOY},
        {"EPOCH", EPOCH},
        {"TIMEZONE_HOUR", DT_FMT_UNIT_TZH},
        {"TIMEZONE_MINUTE", DT_FMT_UNIT_TZM},
        {"TIMEZONE_REGION", DT_FMT_UNIT_TZR},
        {"TIMEZONE_ABBR", DT_FMT_UNIT_TZD},
    };
    return sql_get_word(call, 0, fields);
}

// ---------------------------------------------------------------------------------------------------------
// Quarters, weeks and days of a year
// ---------------------------------------------------------------------------------------------------------

// The number that a date has under one element of a model.
int written_(const dv_date_t &date, dt_fmt_token_id_e element, int width) {
    dt_fmt_token_info_t info{};
    info.id = element;
    info.type = DT_FMT_TYPE_DATE;
    info.token_len = width;
    dt_fmt_ctx_t model{};
    model.token_cnt = 1;
    model.token_infos = &info;
    model.charset = DVSTR_CHARSET_UTF8;
    model.nls_date_ctx = {DV_NLS_DATE_LANG_AMERICAN, DV_NLS_DATE_CAL_GREGORIAN};
    char text[16] = {};
    dv_date_to_str(&date, text, sizeof text, &model);
    int number = 0;
    for (const char *digit = text; *digit >= '0' && *digit <= '9'; ++digit)
        number = 10 * number + *digit - '0';
    return number;
}

// The year that the week of a date belongs to: the next one at the end of December, the one before at the
// beginning of January. There is no year 0.
int iso_year_(const dv_date_t &date) {
    const int year = dv_date_get_field(&date, DT_FMT_UNIT_YEAR), week = written_(date, DT_FMT_TOKEN_IW, 2);
    const int moved = date.month == 12 && week == 1  ? year + 1
                      : date.month == 1 && week > 50 ? year - 1
                                                     : year;
    return moved != 0 ? moved : year < 0 ? 1 : -1;
}

// A field of the calendar; any other of dt_fmt_unit_t.
int field_of_(const dv_date_t &date, int field) {
    constexpr int months_per_quarter = 3;
    switch (field) {
        case QUARTER:
            return (date.month - 1) / months_per_quarter + 1;
        case WEEK:
            return written_(date, DT_FMT_TOKEN_IW, 2);
        case ISOYEAR:
            return iso_year_(date);
        case DOW:
            return written_(date, DT_FMT_TOKEN_D, 1) - 1;
        case DOY:
            return written_(date, DT_FMT_TOKEN_DDD, 3);
        default:
            return dv_date_get_field(&date, static_cast<dt_fmt_unit_t>(field));
    }
}

// ---------------------------------------------------------------------------------------------------------
// Types
// ---------------------------------------------------------------------------------------------------------

sql_value of_date_(const sql_value &from, int field) {
    if (field != EPOCH) return sql_integer(field_of_(from.date, field));
    dv_timestamp_t ts;
    dv_timestamp_from_date(&ts, &from.date);
    return sql_epoch(ts);
}

sql_value of_time_(const sql_value &from, int field) {
    const int whole = dv_time_get_field(&from.time, static_cast<dt_fmt_unit_t>(field));
    if (field != DT_FMT_UNIT_SECOND) return sql_integer(whole);
    return sql_number_of({whole, sql_fraction(from.time)});
}

sql_value of_timestamp_(const sql_value &from, int field) {
    const dv_timestamp_t &ts = from.timestamp;
    if (field == EPOCH) return sql_epoch(ts);
    const int whole = field_of_(sql_date_part(ts), field);
    if (field != DT_FMT_UNIT_SECOND) return sql_integer(whole);
    return sql_number_of({whole, sql_fraction(sql_time_part(ts))});
}

// Of the local time. Minutes have the sign of the hours.
sql_value of_ts_tz_(const sql_value &from, int field) {
    if (field == EPOCH) return sql_epoch(from.ts_tz.utc);
    const int hour = timezone_get_field(&from.ts_tz.tz, TZ_FLD_UTC_HOUR), minute = from.ts_tz.tz.utc_min;
    if (field == DT_FMT_UNIT_TZH) return sql_integer(hour);
    if (field == DT_FMT_UNIT_TZM) return sql_integer(hour < 0 ? -minute : minute);
    sql_value local{};
    dv_timestamp_from_ts_tz(&local.timestamp, &from.ts_tz);
    return of_timestamp_(local, field);
}

// Of a region; a fixed offset has neither.
void extract_zone_name_(sql_call &call, int field) {
    const dv_ts_tz_t &from = call.args[1].ts_tz;
    if (sql_zone_number(from.tz) == TZ_ID_OFFSET) return;
    if (field == DT_FMT_UNIT_TZR) {
        timezone_get_zone_name(&from.tz, call.room, TZ_NAME_TEXT_SIZE);
    } else {
        timezone_get_zone_abbr(&from.tz, &sql_date_part(from.utc), call.room, TZ_ABBREV_TEXT_SIZE);
    }
    sql_return_text(call, call.room);
}

sql_value of_ytm_(const sql_value &from, int field) {
    if (field != DT_FMT_UNIT_YEAR && field != DT_FMT_UNIT_MONTH) sql_raise(SQL_ERR_FIELD_UNSUPPORTED);
    return sql_integer(dv_itv_ytm_get_field(&from.ytm, static_cast<dt_fmt_unit_t>(field)));
}

sql_value of_dts_(const sql_value &from, int field) {
    const int second_of_day = dv_itv_dts_get_field(&from.dts, DT_FMT_UNIT_SECOND);
    switch (field) {
        case EPOCH:
            return sql_number_of(sql_total(from.dts));
        case DT_FMT_UNIT_DAY:
            return sql_integer(dv_itv_dts_get_field(&from.dts, DT_FMT_UNIT_DAY));
        case DT_FMT_UNIT_HOUR:
            return sql_integer(second_of_day / SQL_SEC_PER_HOUR);
        case DT_FMT_UNIT_MINUTE:
            return sql_integer(second_of_day % SQL_SEC_PER_HOUR / SQL_SEC_PER_MINUTE);
        case DT_FMT_UNIT_SECOND:
            return sql_number_of(
                {second_of_day % SQL_SEC_PER_MINUTE, dv_itv_dts_get_field(&from.dts, DT_FMT_UNIT_FSEC)});
        default:
            sql_raise(SQL_ERR_FIELD_UNSUPPORTED);
    }
}

template <sql_value (*Extract)(const sql_value &from, int field)>
void extract_(sql_call &call) {
    const int field = field_(call);
    if (field != 0) sql_return(call, Extract(call.args[1], field));
}

void extract_ts_tz_(sql_call &call) {
    const int field = field_(call);
    if (field == DT_FMT_UNIT_TZR || field == DT_FMT_UNIT_TZD) return extract_zone_name_(call, field);
    if (field != 0) sql_return(call, of_ts_tz_(call.args[1], field));
}

constexpr sql_kind _field = SQL_KIND_TEXT;
constexpr sql_kind _integer = SQL_KIND_INTEGER;
constexpr sql_kind _number = SQL_KIND_NUMBER;

constexpr sql_function _functions[] = {
    {{"dv_extract",
      {_field, SQL_KIND_DATE},
      "field, v",
      _integer,
      "YEAR to SECOND, QUARTER, WEEK, ISOYEAR, DOW, DOY or EPOCH"},
     extract_<of_date_>},
    {{"dv_extract", {_field, SQL_KIND_TIME}, "field, v", _number, "HOUR, MINUTE or SECOND with its fraction"},
     extract_<of_time_>},
    {{"dv_extract",
      {_field, SQL_KIND_TIMESTAMP},
      "field, v",
      _number,
      "YEAR to SECOND with its fraction, QUARTER, WEEK, ISOYEAR, DOW, DOY or EPOCH"},
     extract_<of_timestamp_>},
    {{"dv_extract",
      {_field, SQL_KIND_TS_TZ},
      "field, v",
      _number,
      "YEAR to DOY of the local time, EPOCH, TIMEZONE_HOUR or _MINUTE; as text TIMEZONE_REGION or _ABBR"},
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
      "DAY, HOUR, MINUTE or SECOND with its fraction, or EPOCH, all seconds; with the sign"},
     extract_<of_dts_>},
};

}  // namespace

constinit const sql_function_table dv::impl::extract_functions = _functions;
