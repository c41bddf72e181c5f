// TIMESTAMP WITH TIME ZONE in SQL: its bytes, which are the record, and its functions.
//
// The bytes sort by instant, then by zone: values of one instant in two zones differ, though dv_cmp calls
// them equal. Of a region the offset in force is stored with the value, so that a later release of the tz
// database does not make stored values unreadable.

#include <algorithm>
#include <cstdlib>
#include <ctime>
#include <string_view>

#include "dvtypes/iso.h"
#include "sql_clock.h"
#include "sql_datetime.h"
#include "sql_try.h"

using namespace dv::impl;

namespace {

// ---------------------------------------------------------------------------------------------------------
// Text
// ---------------------------------------------------------------------------------------------------------

void to_text_(sql_call &call) {
    static_assert(DV_ISO_TS_TZ_SIZE <= SQL_ROOM_SIZE);
    sql_return_room(call, call.room + dv_ts_tz_to_iso(&call.args[0].ts_tz, call.room, SQL_ROOM_SIZE));
}

// ---------------------------------------------------------------------------------------------------------
// Zones
// ---------------------------------------------------------------------------------------------------------

constexpr int _zone_at = 1;

void make_zone_(sql_call &call, void *object) {
    *static_cast<timezone_t *>(object) = sql_zone_of(call.args[_zone_at].text);
}

constexpr sql_keeper _zone_keeper = {_zone_at,          sizeof(timezone_t),  make_zone_,
                                     sql_always_serves, sql_release_nothing, /*is_of_model=*/false};

// The zone that the call names, as its text alone makes it.
const timezone_t &zone_(const sql_call &call) { return *static_cast<timezone_t *>(call.kept); }

void from_tz_(sql_call &call) {
    dv_ts_tz_t ts_tz;
    dv_ts_tz_from_timestamp(&ts_tz, &call.args[0].timestamp, &zone_(call));
    sql_return_datetime(call, ts_tz);
}

void at_time_zone_(sql_call &call) {
    dv_ts_tz_t &ts_tz = call.args[0].ts_tz;
    ts_tz.tz = zone_(call);
    timezone_adjust(&ts_tz.tz, &sql_date_part(ts_tz.utc));
    sql_return_datetime(call, ts_tz);
}

void to_utc_(sql_call &call) { sql_return_datetime(call, call.args[0].ts_tz.utc); }

void to_local_timestamp_(sql_call &call) {
    dv_timestamp_from_ts_tz(&call.result.timestamp, &call.args[0].ts_tz);
    sql_return_datetime_in_place<dv_timestamp_t>(call);
}

void to_local_date_(sql_call &call) {
    dv_date_from_ts_tz(&call.result.date, &call.args[0].ts_tz);
    sql_return_datetime_in_place<dv_date_t>(call);
}

void return_offset_(sql_call &call, const dv_date_t &utc) {
    const timezone_t zone = sql_zone_of(call.args[0].text);
    const int number = sql_zone_number(zone);
    if (number < TZ_ID_MAX) return sql_return_utc_offset(call, *zonetab_get_info(&region_tab_[number], &utc));
    sql_return_room(call, sql_put_utc_offset(call.room, zone));
}

void offset_now_(sql_call &call) { return_offset_(call, sql_utc_now()); }
void offset_at_(sql_call &call) { return_offset_(call, sql_date_part(call.args[1].ts_tz.utc)); }

// The host's present UTC offset, in whole minutes.
timezone_t host_offset_() {
    const auto minutes = static_cast<int>(sql_present().utc_offset / SQL_SEC_PER_MINUTE);
    timezone_t zone = SQL_UTC;
    zone.utc_hour = static_cast<uint8_t>(SQL_UTC_HOUR + minutes / 60);
    zone.utc_min = static_cast<uint8_t>(std::abs(minutes % 60));
    return zone;
}

void current_(sql_call &call) {
    const timezone_t zone = host_offset_();
    dv_ts_tz_t now;
    dv_ts_tz_current(&now, &zone);
    sql_return_datetime(call, now);
}

constexpr sql_kind _ts_tz = SQL_KIND_TS_TZ;
constexpr sql_kind _timestamp = SQL_KIND_TIMESTAMP;
constexpr sql_kind _text = SQL_KIND_TEXT;

constexpr sql_function _rows[] = {
    {{"from_tz", {_timestamp, _text}, "t, zone", _ts_tz, "the local time of a zone as an instant"},
     from_tz_,
     SQL_IMMUTABLE,
     &_zone_keeper},
    {{"at_time_zone", {_ts_tz, _text}, "v, zone", _ts_tz, "the same instant in another zone"},
     at_time_zone_,
     SQL_IMMUTABLE,
     &_zone_keeper},
    {{"sys_extract_utc", {_ts_tz}, "v", _timestamp, "the instant in UTC"}, to_utc_},
    {{"tz_offset", {_text}, "zone", _text, "the UTC offset of a zone now"}, offset_now_, SQL_STABLE},
    {{"tz_offset", {_text, _ts_tz}, "zone, at", _text, "the UTC offset of a zone at an instant"}, offset_at_},
    {{"systimestamp", {}, "", _ts_tz, "local date and time with the host's UTC offset"},
     current_,
     SQL_STABLE},
    {{"to_timestamp", {_ts_tz}, "v", _timestamp, "the local date and time"}, to_local_timestamp_},
    {{"to_date", {_ts_tz}, "v", SQL_KIND_DATE, "the local date and time, without the fraction"},
     to_local_date_},
    {{"dv_text", {_ts_tz}, "v", _text, "as text that to_timestamp_tz reads back"}, to_text_},
    {{"to_char", {_ts_tz}, "v", _text, "as text that to_timestamp_tz reads back"}, to_text_},
};
constexpr auto _functions = sql_with_tries<_rows>();

}  // namespace

// Minutes have the sign of the hours, and that of 0 is minus: "+00:30" would become -00:30.
timezone_t dv::impl::sql_zone_of(const sql_text &text) {
    timezone_t zone;
    timezone_parse(&zone, text.bytes, text.length);
    const std::string_view given(text.bytes, static_cast<size_t>(text.length));
    const bool is_held = timezone_get_field(&zone, TZ_FLD_UTC_HOUR) != 0 || zone.utc_min == 0;
    if (!is_held && sql_zone_number(zone) == TZ_ID_OFFSET && given.find('-') == given.npos)
        sql_raise(SQL_ERR_ZONE_MINUTE, "sql_ts_tz.cpp", __LINE__, "timezone_parse");
    return zone;
}

void dv::impl::sql_check_local_time(const dv_ts_tz_t &ts_tz) {
    dv_date_t local;
    dv_date_from_ts_tz(&local, &ts_tz);
    dv_date_is_valid(&local);
}

dv_date_t dv::impl::sql_utc_now() {
    const time_t now = sql_present().seconds;
    tm utc{};
    gmtime_r(&now, &utc);
    dv_date_t date{};
    dv_date_from_unit_values(&date, utc.tm_year + 1900, utc.tm_mon + 1, utc.tm_mday, utc.tm_hour, utc.tm_min,
                             std::min(utc.tm_sec, SQL_SEC_PER_MINUTE - 1));
    return date;
}

constinit const sql_type dv::impl::ts_tz_type = {
    SQL_KIND_TS_TZ,
    "TIMESTAMP WITH TIME ZONE",
    "to_timestamp_tz",
    sql_decode_record<&sql_value::ts_tz, dv_ts_tz_get_fault>,
    sql_encode_record<&sql_value::ts_tz>,
};

constinit const sql_function_table dv::impl::ts_tz_functions = _functions;
