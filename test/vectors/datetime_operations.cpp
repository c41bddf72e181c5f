// DATE, TIME, TIMESTAMP and intervals, without models.

#include <cstdlib>

#include "vector_bind.h"

using namespace dv::test;

namespace {

int order_(int order) { return (order > 0) - (order < 0); }

// The inline forms, beside the functions.
int date_cmp_(const dv_date_t *x, const dv_date_t *y) { return order_(dv_date_cmp(x, y)); }
int timestamp_cmp_(const dv_timestamp_t *x, const dv_timestamp_t *y) {
    return order_(dv_timestamp_cmp(x, y));
}
int day_second_cmp_(const dv_itv_dts_t *x, const dv_itv_dts_t *y) { return order_(dv_itv_dts_cmp(x, y)); }

// Seconds since 1970, TZ.
void from_epoch_(vector_call &call) {
    const int64_t seconds = call.integer();
    const vector_text zone = call.ended_text();
    setenv("TZ", zone.data, 1);
    tzset();
    dv_date_t date{};
    call.run([&] { dv_date_from_epoch_time(seconds, &date); });
    call.put_bytes(&date, sizeof date);
    unsetenv("TZ");
    tzset();
}

// Interval, precisions, size of the buffer.
void year_month_text_(vector_call &call) {
    const dv_itv_ytm_t *const itv = call.record<dv_itv_ytm_t>();
    const auto precision = static_cast<int>(call.integer());
    const auto size = static_cast<int>(call.integer_or(DV_ITV_YTM_TEXT_SIZE));
    char *const text = static_cast<char *>(call.memory(300));
    conv_status_t status = 0;
    if (!call.run([&] { status = dv_itv_ytm_to_str(itv, text, precision, size); })) return;
    call.put_text(text);
    call.put(status);
}

void day_second_text_(vector_call &call) {
    const dv_itv_dts_t *const itv = call.record<dv_itv_dts_t>();
    const auto precision = static_cast<int>(call.integer()), fraction = static_cast<int>(call.integer());
    const auto size = static_cast<int>(call.integer_or(DV_ITV_DTS_TEXT_SIZE));
    char *const text = static_cast<char *>(call.memory(64));
    conv_status_t status = 0;
    if (!call.run([&] { status = dv_itv_dts_to_str(itv, text, precision, fraction, size); })) return;
    call.put_text(text);
    call.put(status);
}

void constant_(vector_call &call) {
    const std::string_view name = call.word();
    if (name == "null_dv_date") call.put_bytes(&null_dv_date, sizeof null_dv_date);
    if (name == "max_dv_date") call.put_bytes(&max_dv_date, sizeof max_dv_date);
    if (name == "null_dv_time") call.put_bytes(&null_dv_time, sizeof null_dv_time);
    if (name == "null_dv_timestamp") call.put_bytes(&null_dv_timestamp, sizeof null_dv_timestamp);
    if (name == "null_dv_ts_tz") call.put_bytes(&null_dv_ts_tz, sizeof null_dv_ts_tz);
    if (name == "null_dv_ts_ltz") call.put_bytes(&null_dv_ts_ltz, sizeof null_dv_ts_ltz);
}

void qualifier_(vector_call &call) {
    const dv_itv_fmt_t &row = _itv_fmt[static_cast<size_t>(call.integer()) % DV_ITV_QUALIFIER_MAX];
    for (int i = 0; i < row.size; ++i) call.put(row.token[i]);
}

void print_format_(vector_call &call) { call.put_text(_itv_print_fmt[call.integer() % DV_ITV_PRINT_FMTS]); }

}  // namespace

void dv::test::add_datetime_operations(vector_operations &all) {
    all.add_in_place<
        dt_fmt_get_days_of_mon, dv_dt_check_validity_of_unit, dv_date_get_field, dv_date_set_field,
        dv_date_is_valid, dv_date_to_julian_day, dv_date_from_julian_day, dv_date_to_double, dv_date_add_day,
        dv_date_add_field, dv_date_add_month, dv_date_sub, dv_date_months_between, dv_date_get_next_day,
        dv_date_add_itv_ytm, dv_date_sub_itv_ytm, dv_date_add_itv_dts, dv_date_sub_itv_dts, dv_date_compare,
        dv_date_trunc, dv_date_round, dt_fmt_trunc_or_round, dt_fmt_get_day_idx_of_week, dv_time_get_field,
        dv_time_set_field, dv_time_is_valid, dv_time_compare, dv_time_to_double, dv_time_trim_fsec,
        dv_timestamp_get_field, dv_timestamp_set_field, dv_timestamp_compare, dv_timestamp_trim_fsec,
        dv_timestamp_to_double, dv_timestamp_add_itv_dts, dv_timestamp_sub_itv_dts,
        dv_timestamp_check_literal, dv_itv_ytm_set_field, dv_itv_ytm_get_field, dv_itv_ytm_get_total_month,
        dv_itv_ytm_set_total_month, dv_itv_ytm_add_year, dv_itv_ytm_add_month, dv_itv_ytm_add_itv_ytm,
        dv_itv_ytm_sub_itv_ytm, dv_itv_ytm_mul, dv_itv_ytm_div, dv_itv_ytm_compare,
        dv_itv_ytm_check_leading_prec, dv_itv_dts_set_field, dv_itv_dts_get_field, dv_itv_dts_get_total_sec,
        dv_itv_dts_set_total_sec, dv_itv_dts_add_sec, dv_itv_dts_add_min, dv_itv_dts_add_hour,
        dv_itv_dts_add_day, dv_itv_dts_add_fsec, dv_itv_dts_add_itv_dts, dv_itv_dts_sub_itv_dts,
        dv_itv_dts_mul, dv_itv_dts_div, dv_itv_dts_compare, dv_itv_dts_check_leading_prec,
        dv_itv_dts_trim_fsec>();
    all.add_into<dv_date_init, dv_date_assign, dv_date_current, dv_date_from_unit_values,
                 dv_date_from_timestamp, dv_date_from_ts_tz, dv_date_from_ts_ltz, dv_date_from_time,
                 dv_time_from_unit_values, dv_time_from_timestamp, dv_time_from_ts_tz, dv_time_from_ts_ltz,
                 dv_time_from_date, dv_time_current, dv_timestamp_from_unit_values, dv_timestamp_from_date,
                 dv_timestamp_from_ts_tz, dv_timestamp_from_ts_ltz, dv_timestamp_current,
                 dv_timestamp_sub_timestamp_into_itv_dts, dv_timestamp_sub_timestamp_into_itv_ytm,
                 dv_itv_ytm_from_str, dv_itv_dts_from_str>();
    all.add_into_second<dv_date_get_last_date, dv_timestamp_to_number, dv_timestamp_from_double,
                        dv_timestamp_from_number>();
    all.add("dv_date_from_epoch_time", from_epoch_);
    all.add("dv_date_cmp", in_place<date_cmp_>);
    all.add("dv_timestamp_cmp", in_place<timestamp_cmp_>);
    all.add("datetime_constant", constant_);
    all.add("_itv_fmt", qualifier_);
    all.add("_itv_print_fmt", print_format_);
    all.add("dv_itv_ytm_to_str", year_month_text_);
    all.add("dv_itv_dts_cmp", in_place<day_second_cmp_>);
    all.add("dv_itv_dts_to_str", day_second_text_);
}
