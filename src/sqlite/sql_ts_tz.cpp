// TIMESTAMP WITH TIME ZONE in SQL: its stored form, which is the record, and its functions.
//
// The bytes sort by instant, then by zone: values of one instant in two zones differ, though dv_cmp calls
// them equal. Of a region the offset in force is stored with the value, so that a later release of the tz
// database does not make stored values unreadable.

#include <algorithm>
#include <cstring>
#include <ctime>

#include "sql_datetime.h"

using namespace dv::impl;

namespace {

// ---------------------------------------------------------------------------------------------------------
// Stored form
// ---------------------------------------------------------------------------------------------------------

// Local mean times go beyond the offsets of today's zones.
bool is_region_offset_(const timezone_t &tz) {
    constexpr int hours_max = 15;
    return tz_hour(tz) >= -hours_max && tz_hour(tz) <= hours_max && tz.utc_min < MINUTES_PER_HOUR;
}

const char *zone_fault_(const timezone_t &tz) {
    const int zone = tz_zone(tz);
    if (zone >= TZ_ID_MAX && zone != TZ_ID_OFFSET) return "it has no such time zone";
    const bool is_offset = zone < TZ_ID_MAX
                               ? is_region_offset_(tz)
                               : offset_error(tz_hour(tz), tz.utc_min, tz_hour(tz) < 0 ? -1 : 1) == 0;
    return is_offset && tz.utc_sec == 0 ? nullptr : "its UTC offset is out of range";
}

// Local times leave the calendar at its ends, and where day numbers count a 29 February that a year BC lacks.
bool has_local_time_(const dv_ts_tz_t &ts_tz) {
    const int year = date_year(date_part(ts_tz.utc));
    if (year > 1 && year < 9999) return true;
    dv_error_t error;
    const auto check = [](void *arg) { sql_check_local_time(*static_cast<const dv_ts_tz_t *>(arg)); };
    return dv_protect(check, const_cast<dv_ts_tz_t *>(&ts_tz), &error) == 0;
}

const char *fault_(const dv_ts_tz_t &ts_tz) {
    if (ts_tz.utc.dummy != 0) return "the eighth byte of a TIMESTAMP WITH TIME ZONE is 0";
    if (time_nanoseconds(time_part(ts_tz.utc)) >= NSEC_PER_SEC)
        return "its fraction of a second is out of range";
    const char *fault = sql_date_fault(date_part(ts_tz.utc));
    if (fault == nullptr) fault = zone_fault_(ts_tz.tz);
    if (fault == nullptr && !has_local_time_(ts_tz)) fault = "its local time lies outside the calendar";
    return fault;
}

// ---------------------------------------------------------------------------------------------------------
// Text
// ---------------------------------------------------------------------------------------------------------

char *put_text_(char *out, const char *text) { return std::copy_n(text, strlen(text), out); }

// Local time, then the zone: 2024-02-29 13:05:00.000000000 +09:00, or ... Asia/Seoul KST. The abbreviation
// tells the two meanings of an hour apart that clocks showed twice.
void to_text_(sql_call &call) {
    const dv_ts_tz_t &from = call.args[0].ts_tz;
    char text[SQL_TIMESTAMP_TEXT_MAX + 1 + TZ_NAME_TEXT_SIZE + TZ_ABBREV_TEXT_SIZE];
    char zone[TZ_NAME_TEXT_SIZE];
    dv_timestamp_t local;
    dv_timestamp_from_ts_tz(&local, &from);
    char *end = sql_put_timestamp(text, local);
    *end++ = ' ';
    timezone_get_zone_name(&from.tz, zone, sizeof zone);
    end = put_text_(end, zone);
    if (!tz_is_offset(from.tz)) {
        *end++ = ' ';
        timezone_get_zone_abbr(&from.tz, &date_part(from.utc), zone, sizeof zone);
        end = put_text_(end, zone);
    }
    sql_return(call.context, sql_text_value(text, static_cast<int>(end - text)));
}

// ---------------------------------------------------------------------------------------------------------
// Zones
// ---------------------------------------------------------------------------------------------------------

timezone_t zone_of_(const sql_text &text) {
    timezone_t zone;
    timezone_parse(&zone, text.bytes, text.length);
    return zone;
}

void from_tz_(sql_call &call) {
    const timezone_t zone = zone_of_(call.args[1].text);
    dv_ts_tz_t ts_tz;
    dv_ts_tz_from_timestamp(&ts_tz, &call.args[0].timestamp, &zone);
    sql_return_ts_tz(call, ts_tz);
}

void at_time_zone_(sql_call &call) {
    dv_ts_tz_t &ts_tz = call.args[0].ts_tz;
    ts_tz.tz = zone_of_(call.args[1].text);
    timezone_adjust(&ts_tz.tz, &date_part(ts_tz.utc));
    sql_return_ts_tz(call, ts_tz);
}

void to_utc_(sql_call &call) { sql_return_timestamp(call, call.args[0].ts_tz.utc); }

void to_local_timestamp_(sql_call &call) {
    dv_timestamp_t local;
    dv_timestamp_from_ts_tz(&local, &call.args[0].ts_tz);
    sql_return_timestamp(call, local);
}

void to_local_date_(sql_call &call) {
    dv_date_t local;
    dv_date_from_ts_tz(&local, &call.args[0].ts_tz);
    sql_return_date(call, local);
}

void return_offset_(const sql_call &call, const dv_date_t &utc) {
    const timezone_t zone = zone_of_(call.args[0].text);
    if (!tz_is_offset(zone)) return sql_return_utc_offset(call.context, info_at(*region_of(zone), utc));
    char text[TZ_NAME_TEXT_SIZE];
    timezone_get_zone_name(&zone, text, sizeof text);
    sqlite3_result_text(call.context, text, -1, SQLITE_TRANSIENT);
}

void offset_now_(sql_call &call) { return_offset_(call, sql_utc_now()); }
void offset_at_(sql_call &call) { return_offset_(call, date_part(call.args[1].ts_tz.utc)); }

// The host's present UTC offset, in whole minutes.
timezone_t host_offset_() {
    const time_t now = time(nullptr);
    tm local{};
    localtime_r(&now, &local);
    const auto minutes = static_cast<int>(local.tm_gmtoff / SEC_PER_MINUTE);
    timezone_t zone = SQL_UTC;
    tz_set_offset(zone, minutes / MINUTES_PER_HOUR, std::abs(minutes % MINUTES_PER_HOUR));
    return zone;
}

void current_(sql_call &call) {
    const timezone_t zone = host_offset_();
    dv_ts_tz_t now;
    dv_ts_tz_current(&now, &zone);
    sql_return_ts_tz(call, now);
}

// ---------------------------------------------------------------------------------------------------------
// Arithmetic
// ---------------------------------------------------------------------------------------------------------

void add_interval_(dv_ts_tz_t &ts_tz, const sql_value &interval, int sign) {
    if (interval.kind == SQL_KIND_ITV_YTM) {
        sql_add_months(date_part(ts_tz.utc), interval.ytm, sign);
        return timezone_adjust(&ts_tz.tz, &date_part(ts_tz.utc));
    }
    if (sign > 0) return dv_ts_tz_add_itv_dts(&ts_tz, &interval.dts);
    dv_ts_tz_sub_itv_dts(&ts_tz, &interval.dts);
}

void add_(sql_call &call) {
    const int place = call.args[0].kind == SQL_KIND_TS_TZ ? 0 : 1;
    dv_ts_tz_t &ts_tz = call.args[place].ts_tz;
    add_interval_(ts_tz, call.args[1 - place], 1);
    sql_return_ts_tz(call, ts_tz);
}

void sub_(sql_call &call) {
    dv_ts_tz_t &ts_tz = call.args[0].ts_tz;
    add_interval_(ts_tz, call.args[1], -1);
    sql_return_ts_tz(call, ts_tz);
}

void difference_(sql_call &call) {
    dv_itv_dts_t difference;
    dv_ts_tz_sub_ts_tz_into_itv_dts(&difference, &call.args[0].ts_tz, &call.args[1].ts_tz);
    sql_return_dts(call, difference);
}

constexpr sql_kind _ts_tz = SQL_KIND_TS_TZ;
constexpr sql_kind _text = SQL_KIND_TEXT;

constexpr sql_function _functions[] = {
    {"from_tz", {SQL_KIND_TIMESTAMP, _text}, from_tz_},
    {"at_time_zone", {_ts_tz, _text}, at_time_zone_},
    {"sys_extract_utc", {_ts_tz}, to_utc_},
    {"tz_offset", {_text}, offset_now_, SQL_ON_CLOCK},
    {"tz_offset", {_text, _ts_tz}, offset_at_},
    {"systimestamp", {}, current_, SQL_ON_CLOCK},
    {"to_timestamp", {_ts_tz}, to_local_timestamp_},
    {"to_date", {_ts_tz}, to_local_date_},
    {"dv_text", {_ts_tz}, to_text_},
    {"to_char", {_ts_tz}, to_text_},
    {"dv_cmp", {_ts_tz, _ts_tz}, sql_compare_records<&sql_value::ts_tz, dv_ts_tz_compare>},
    {"dv_add", {_ts_tz, SQL_KIND_ITV_YTM}, add_},
    {"dv_add", {_ts_tz, SQL_KIND_ITV_DTS}, add_},
    {"dv_add", {SQL_KIND_ITV_YTM, _ts_tz}, add_},
    {"dv_add", {SQL_KIND_ITV_DTS, _ts_tz}, add_},
    {"dv_sub", {_ts_tz, SQL_KIND_ITV_YTM}, sub_},
    {"dv_sub", {_ts_tz, SQL_KIND_ITV_DTS}, sub_},
    {"dv_sub", {_ts_tz, _ts_tz}, difference_},
};

}  // namespace

void dv::impl::sql_check_local_time(const dv_ts_tz_t &ts_tz) {
    dv_date_t local;
    dv_date_from_ts_tz(&local, &ts_tz);
    dv_date_is_valid(&local);
}

dv_date_t dv::impl::sql_utc_now() {
    const time_t now = time(nullptr);
    tm utc{};
    gmtime_r(&now, &utc);
    dv_date_t date{};
    date_set_calendar(date, utc.tm_year + 1900, utc.tm_mon + 1, utc.tm_mday);
    date_set_clock(date, utc.tm_hour, utc.tm_min, std::min(utc.tm_sec, SEC_PER_MINUTE - 1));
    return date;
}

constinit const sql_type dv::impl::ts_tz_type = {
    SQL_KIND_TS_TZ,
    "TIMESTAMP WITH TIME ZONE",
    "to_timestamp_tz",
    sql_decode_record<&sql_value::ts_tz, fault_>,
    sql_encode_record<&sql_value::ts_tz>,
};

constinit const sql_function_table dv::impl::ts_tz_functions = _functions;
