// Seconds since 1970-01-01 00:00:00 UTC, as a NUMBER with nanoseconds: dv_epoch, dv_from_epoch.
//
// Leap seconds are not counted, as POSIX has it. A DATE and a TIMESTAMP are taken as times in UTC.

#include "sql_datetime.h"

using namespace dv::impl;

namespace {

constexpr dv_timestamp_t _epoch = {119, 170, 1, 1, 0, 0, 0, 0, {0, 0, 0, 0}};

template <typename Record>
void to_epoch_(sql_call &call) {
    sql_return(call, sql_epoch(sql_utc_of(sql_record_of<Record>(call.args[0]))));
}

void total_(sql_call &call) { sql_return(call, sql_number_of(sql_total(call.args[0].dts))); }

// From day number 0 to the end of 9999-12-31. False where the seconds leave that: the call has failed.
bool is_within_(sql_call &call, const number_t &seconds) {
    constexpr int64_t least = -210'866'803'200, end = 253'402'300'800;
    number_t least_number, end_number;
    number_from_int64(&least_number, least);
    number_from_int64(&end_number, end);
    if (number_cmp(&seconds, &least_number) >= 0 && number_cmp(&seconds, &end_number) < 0) return true;
    char text[NUMBER_SCIENTIFIC_TEXT_SIZE];
    number_to_str(&seconds, sizeof text, text, nullptr);
    sql_fail(call, "%s is out of range: seconds from %lld to %lld are accepted", text,
             static_cast<long long>(least), static_cast<long long>(end - 1));
    return false;
}

// Rounded to the nanosecond.
void from_epoch_(sql_call &call) {
    const timezone_t zone = call.argc > 1 ? sql_zone_of(call.args[1].text) : SQL_UTC;
    number_t &seconds = call.args[0].number;
    number_round_at_withmode(&seconds, -SQL_FRACTION_DIGITS, NUMBER_RMODE_HALF_UP);
    if (!is_within_(call, seconds)) return;
    dv_itv_dts_t since_epoch = sql_dts_of({1, 0});
    dv_itv_dts_mul(&since_epoch, &seconds);
    dv_ts_tz_t result = {_epoch, zone};
    dv_timestamp_add_itv_dts(&result.utc, &since_epoch);
    timezone_adjust(&result.tz, &sql_date_part(result));
    sql_return_datetime(call, result);
}

constexpr sql_kind _number = SQL_KIND_NUMBER;

constexpr sql_function _functions[] = {
    {{"dv_epoch", {SQL_KIND_DATE}, "v", _number, "seconds from 1970-01-01 00:00:00 to v, both taken as UTC"},
     to_epoch_<dv_date_t>},
    {{"dv_epoch",
      {SQL_KIND_TIMESTAMP},
      "v",
      _number,
      "seconds from 1970-01-01 00:00:00 to v, both taken as UTC, with the fraction"},
     to_epoch_<dv_timestamp_t>},
    {{"dv_epoch", {SQL_KIND_TS_TZ}, "v", _number, "seconds since 1970-01-01 00:00:00 UTC, with the fraction"},
     to_epoch_<dv_ts_tz_t>},
    {{"dv_epoch", {SQL_KIND_ITV_DTS}, "v", _number, "the seconds of the interval, with the fraction"},
     total_},
    {{"dv_from_epoch",
      {_number},
      "n",
      SQL_KIND_TS_TZ,
      "n seconds after 1970-01-01 00:00:00 UTC, rounded to the nanosecond, at +00:00"},
     from_epoch_},
    {{"dv_from_epoch", {_number, SQL_KIND_TEXT}, "n, zone", SQL_KIND_TS_TZ, "the same in a zone"},
     from_epoch_},
};

}  // namespace

sql_value dv::impl::sql_number_of(const sql_seconds &seconds) {
    sql_value value{};
    value.kind = SQL_KIND_NUMBER;
    if (seconds.whole < SQL_NSEC_PER_SEC && seconds.whole > -SQL_NSEC_PER_SEC) {
        number_from_int64(&value.number, seconds.whole * SQL_NSEC_PER_SEC + seconds.nanoseconds);
        number_div(&value.number, n1000000000);
        return value;
    }
    number_from_int64(&value.number, seconds.nanoseconds);
    number_div(&value.number, n1000000000);
    number_t whole;
    number_from_int64(&whole, seconds.whole);
    number_add(&value.number, &whole);
    return value;
}

sql_value dv::impl::sql_epoch(const dv_timestamp_t &utc) {
    dv_itv_dts_t since_epoch;
    dv_timestamp_sub_timestamp_into_itv_dts(&since_epoch, &utc, &_epoch);
    return sql_number_of(sql_total(since_epoch));
}

constinit const sql_function_table dv::impl::epoch_functions = _functions;
