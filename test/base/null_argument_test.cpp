// NULL for any pointer of any function of the public headers: an assertion, and nothing else.

#include "null_argument.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <set>

#include "dvtypes/column.h"
#include "dvtypes/epoch.h"
#include "dvtypes/erowid.h"
#include "dvtypes/iso.h"
#include "dvtypes/nerowid.h"
#include "dvtypes/number_fmt.h"
#include "dvtypes/number_sum.h"
#include "dvtypes/timestamp_tz.h"
#include "project_file.h"

using namespace dv::test;

namespace {

struct null_group_t {
    const char *assertions;  // of the pointers that must be given, in their order
    unsigned optional;       // a bit for each argument that may be NULL
    std::vector<null_case_t> functions;
};

// clang-format off
const null_group_t _groups[] = {
    // NUMBER and its models
    {"number_is_valid_ptr(x) && number_is_valid_ptr(y)", 0,
     null_cases<number_add, number_sub, number_add_with_mode, number_mul, number_div, number_mod, number_rem,
                number_pow, number_sqr>()},
    {"number_is_valid_ptr(x)", 0,
     null_cases<number_negate, number_abs, number_sqrt, number_exp, number_round_at_withmode,
                number_check_prec_scale, number_force_prec_scale, number_range_check>()},
    {"number_is_nonnull_ptr(x) && number_is_valid_ptr(y)", 0, null_cases<number_assign>()},
    {"number_is_valid_ptr(x) && number_is_nonnull_ptr(y)", 0,
     null_cases<number_to_int8, number_to_int16, number_to_int32, number_to_int64, number_to_uint8,
                number_to_uint16, number_to_uint32, number_to_uint64, number_to_float, number_to_double,
                number_to_long_double, number_to_oracle_format>()},
    {"number_is_nonnull_ptr(x)", 0,
     null_cases<number_from_int8, number_from_int16, number_from_int32, number_from_int64, number_from_uint8,
                number_from_uint16, number_from_uint32, number_from_uint64, number_from_float,
                number_from_double, number_from_double_shortest, number_from_long_double, number_println>()},
    {"number_is_nonnull_ptr(x) && number_is_nonnull_ptr(y)", 0, null_cases<number_from_oracle_format>()},
    {"number_is_nonnull_ptr(x) && number_is_nonnull_ptr(str)", 1 << 3 | 1 << 4,
     null_cases<number_from_str, number_try_from_str, number_from_str_nt, number_from_str_fmt, number_to_str_fmt,
                _number_to_str_fmt_rn>()},
    {"number_is_valid_ptr(x) && number_is_nonnull_ptr(str)", 1 << 3, null_cases<number_to_str>()},
    {"sp != NULL && xp != NULL", 0, null_cases<number_ui_sqrt>()},
    {"number_is_nonnull_ptr(x)", 0, null_cases<number_get_fault>()},
    {"sum != NULL; number_is_valid_ptr(x)", 0, null_cases<number_sum_add, number_sum_sub>()},
    {"sum != NULL; other != NULL", 0, null_cases<number_sum_merge>()},
    {"sum != NULL; number_is_nonnull_ptr(x)", 0, null_cases<number_sum_quotient>()},
    {"fmt != NULL && pr != NULL", 0, null_cases<number_fmt_parse>()},
    {"number_is_nonnull_ptr(dump)", 0, null_cases<number_println_from_str>()},
    // DATE, TIME, intervals, rowids, languages
    {"date != NULL", 0,
     null_cases<dv_date_get_field, dv_date_set_field, dv_date_is_valid, dv_date_init, dv_date_current,
                dv_date_from_unit_values, dv_date_from_epoch_time, dv_date_to_julian_day,
                dv_date_from_julian_day, dv_date_to_double, dv_date_to_system_time, dv_date_add_day,
                dv_date_add_field, dv_date_add_month, dv_date_get_fault>()},
    {"date != NULL", 1 << 1, null_cases<dv_date_trunc, dv_date_round>()},
    {"dst != NULL; src != NULL", 0, null_cases<dv_date_assign>()},
    {"date != NULL; ts != NULL", 0, null_cases<dv_date_from_timestamp>()},
    {"date != NULL; ts_tz != NULL", 0, null_cases<dv_date_from_ts_tz>()},
    {"date != NULL; ts_ltz != NULL; sess_tz != NULL", 0, null_cases<dv_date_from_ts_ltz>()},
    {"date != NULL; time != NULL", 0, null_cases<dv_date_from_time>()},
    {"date1 != NULL; date2 != NULL", 0, null_cases<dv_date_sub, dv_date_months_between>()},
    {"date != NULL; result != NULL", 0, null_cases<dv_date_get_last_date>()},
    {"date != NULL; day_name != NULL", 0, null_cases<dv_date_get_next_day>()},
    {"date != NULL; ytm != NULL", 0, null_cases<dv_date_add_itv_ytm, dv_date_sub_itv_ytm>()},
    {"date != NULL; dts != NULL", 0, null_cases<dv_date_add_itv_dts, dv_date_sub_itv_dts>()},
    {"date != NULL; str != NULL", 0, null_cases<dv_date_from_iso>()},
    {"date != NULL; buf != NULL", 0, null_cases<dv_date_to_iso>()},
    {"time != NULL; str != NULL", 0, null_cases<dv_time_from_iso>()},
    {"time != NULL; buf != NULL", 0, null_cases<dv_time_to_iso>()},
    {"ts != NULL; str != NULL", 0, null_cases<dv_timestamp_from_iso>()},
    {"ts != NULL; buf != NULL", 0, null_cases<dv_timestamp_to_iso>()},
    {"ts_tz != NULL; str != NULL", 0, null_cases<dv_ts_tz_from_iso>()},
    {"ts_tz != NULL; buf != NULL", 0, null_cases<dv_ts_tz_to_iso>()},
    {"date != NULL; str != NULL; fmt_ctx != NULL", 0, null_cases<dv_date_from_str, dv_date_to_str>()},
    {"date != NULL; str != NULL; fmt_ctx != NULL; as_of != NULL", 0, null_cases<dv_date_from_str_as_of>()},
    {"date != NULL; str != NULL; fmt != NULL", 0,
     null_cases<dv_date_from_str_DEPRECATED, dv_date_to_str_DEPRECATED>()},
    {"buf != NULL; fmt != NULL", 0, null_cases<dv_date_current_str, dv_date_current_str_DEPRECATED>()},
    {"fmt != NULL", 0,
     null_cases<dv_date_get_length, dv_date_check_format, dv_time_get_length, dv_time_check_format>()},
    {"time != NULL", 0,
     null_cases<dv_time_get_field, dv_time_set_field, dv_time_is_valid, dv_time_from_unit_values,
                dv_time_current, dv_time_to_double, dv_time_trim_fsec, dv_time_get_fault>()},
    {"time != NULL; ts != NULL", 0, null_cases<dv_time_from_timestamp>()},
    {"time != NULL; ts_tz != NULL", 0, null_cases<dv_time_from_ts_tz>()},
    {"time != NULL; ts_ltz != NULL", 0, null_cases<dv_time_from_ts_ltz>()},
    {"time != NULL; date != NULL", 0, null_cases<dv_time_from_date>()},
    {"time != NULL; str != NULL; fmt_ctx != NULL", 0, null_cases<dv_time_from_str, dv_time_to_str>()},
    {"time != NULL; str != NULL; fmt != NULL", 0,
     null_cases<dv_time_from_str_DEPRECATED, dv_time_to_str_DEPRECATED>()},
    {"itv != NULL", 0,
     null_cases<dv_itv_ytm_set_field, dv_itv_ytm_get_field, dv_itv_ytm_get_total_month,
                dv_itv_ytm_set_total_month, dv_itv_ytm_add_year, dv_itv_ytm_add_month,
                dv_itv_ytm_check_leading_prec, dv_itv_dts_set_field, dv_itv_dts_get_field, dv_itv_dts_add_sec,
                dv_itv_dts_add_min, dv_itv_dts_add_hour, dv_itv_dts_add_day, dv_itv_dts_add_fsec,
                dv_itv_dts_check_leading_prec, dv_itv_dts_trim_fsec, dv_itv_ytm_get_fault, dv_itv_dts_get_fault>()},
    {"ytm != NULL", 0, null_cases<dv_itv_ytm_mul, dv_itv_ytm_div>()},
    {"dts != NULL", 0, null_cases<dv_itv_dts_get_total_sec, dv_itv_dts_set_total_sec>()},
    {"ytm1 != NULL && ytm2 != NULL", 0, null_cases<dv_itv_ytm_add_itv_ytm, dv_itv_ytm_sub_itv_ytm>()},
    {"dts1 != NULL; dts2 != NULL", 0, null_cases<dv_itv_dts_add_itv_dts, dv_itv_dts_sub_itv_dts>()},
    {"dts != NULL; number_is_valid_ptr(dd)", 0, null_cases<dv_itv_dts_mul, dv_itv_dts_div>()},
    {"itv != NULL; str != NULL", 0,
     null_cases<dv_itv_ytm_to_str, dv_itv_ytm_from_str, dv_itv_dts_to_str, dv_itv_dts_from_str>()},
    {"erowid != NULL", 0, null_cases<erowid_new, nerowid_new>()},
    {"erowid != NULL; rowid != NULL", 0, null_cases<erowid_get_rowid, nerowid_get_rowid>()},
    {"erowid != NULL; sgmt != NULL", 0, null_cases<erowid_get_sgmt>()},
    {"erowid != NULL; file != NULL", 0, null_cases<erowid_get_file>()},
    {"erowid != NULL; block != NULL", 0, null_cases<erowid_get_block>()},
    {"erowid != NULL; row != NULL", 0, null_cases<erowid_get_row>()},
    {"str != NULL; val != NULL", 0,
     null_cases<dv_nls_date_lang_parse, dv_nls_date_cal_parse, dv_nls_comp_parse>()},
    {"str != NULL; ctx != NULL", 0, null_cases<dv_nls_sort_parse>()},
    {"str != NULL; param != NULL; val != NULL", 0, null_cases<dv_nls_parse>()},
    {"parse_ctx != NULL", 0,
     null_cases<nls_date_lang_get_std_month, nls_date_lang_get_abb_month, nls_date_lang_get_rom_month,
                nls_date_lang_get_std_day, nls_date_lang_get_abb_day, nls_date_lang_get_std_adbc,
                nls_date_lang_get_std_ampm>()},
    // timestamps
    {"ts != NULL", 0,
     null_cases<dv_timestamp_get_field, dv_timestamp_set_field, dv_timestamp_get_fault, dv_timestamp_from_unit_values,
                dv_timestamp_current, dv_timestamp_trim_fsec, dv_timestamp_to_double,
                dv_timestamp_from_double>()},
    {"ts != NULL; date != NULL", 0, null_cases<dv_timestamp_from_date>()},
    {"ts != NULL; ts_tz != NULL", 0, null_cases<dv_timestamp_from_ts_tz>()},
    {"ts != NULL; ts_ltz != NULL; sess_tz != NULL", 0, null_cases<dv_timestamp_from_ts_ltz>()},
    {"ts != NULL; number_is_nonnull_ptr(num)", 0, null_cases<dv_timestamp_to_number>()},
    {"number_is_valid_ptr(num); ts != NULL", 0, null_cases<dv_timestamp_from_number>()},
    {"ts != NULL; dts != NULL", 0, null_cases<dv_timestamp_add_itv_dts, dv_timestamp_sub_itv_dts>()},
    {"dest != NULL; left != NULL; right != NULL", 0,
     null_cases<dv_timestamp_sub_timestamp_into_itv_dts, dv_timestamp_sub_timestamp_into_itv_ytm,
                dv_ts_tz_sub_ts_tz_into_itv_ytm, dv_ts_tz_sub_ts_tz_into_itv_dts>()},
    {"ts != NULL; str != NULL; fmt_ctx != NULL", 0, null_cases<dv_timestamp_from_str, dv_timestamp_to_str>()},
    {"ts != NULL; str != NULL; fmt_ctx != NULL; as_of != NULL", 0, null_cases<dv_timestamp_from_str_as_of>()},
    {"ts != NULL; str != NULL; fmt != NULL", 0,
     null_cases<dv_timestamp_from_str_DEPRECATED, dv_timestamp_to_str_DEPRECATED>()},
    {"buf != NULL; fmt != NULL", 0, null_cases<dv_timestamp_current_str>()},
    {"fmt != NULL", 0,
     null_cases<dv_timestamp_get_length, dv_timestamp_check_format, dv_ts_tz_get_length,
                dv_ts_tz_check_format>()},
    {"ts_tz != NULL; sess_tz != NULL", 0,
     null_cases<dv_ts_tz_from_unit_values, dv_ts_tz_current, dv_ts_tz_from_double>()},
    {"ts_tz != NULL; date != NULL; sess_tz != NULL", 0, null_cases<dv_ts_tz_from_date>()},
    {"ts_tz != NULL; ts != NULL; sess_tz != NULL", 0, null_cases<dv_ts_tz_from_timestamp>()},
    {"ts_tz != NULL; ts_ltz != NULL; sess_tz != NULL", 0, null_cases<dv_ts_tz_from_ts_ltz>()},
    {"ts_tz != NULL", 0, null_cases<dv_ts_tz_trim_fsec, dv_ts_tz_to_double, dv_ts_tz_get_fault>()},
    {"ts_ltz != NULL", 0, null_cases<dv_ts_ltz_get_fault>()},
    {"ts_tz != NULL; number_is_nonnull_ptr(num)", 0, null_cases<dv_ts_tz_to_number>()},
    {"number_is_valid_ptr(num); ts_tz != NULL; sess_tz != NULL", 0, null_cases<dv_ts_tz_from_number>()},
    {"ts_tz != NULL; ytm != NULL", 0, null_cases<dv_ts_tz_add_itv_ytm, dv_ts_tz_sub_itv_ytm>()},
    {"ts_tz != NULL; dts != NULL", 0, null_cases<dv_ts_tz_add_itv_dts, dv_ts_tz_sub_itv_dts>()},
    {"ts_tz != NULL; str != NULL; fmt_ctx != NULL; sess_tz != NULL", 0, null_cases<dv_ts_tz_from_str>()},
    {"ts_tz != NULL; str != NULL; fmt_ctx != NULL; sess_tz != NULL; as_of != NULL", 0,
     null_cases<dv_ts_tz_from_str_as_of>()},
    {"ts_tz != NULL; str != NULL; fmt != NULL; sess_tz != NULL", 0, null_cases<dv_ts_tz_from_str_DEPRECATED>()},
    {"ts_tz != NULL; str != NULL; fmt_ctx != NULL", 0, null_cases<dv_ts_tz_to_str>()},
    {"ts_tz != NULL; str != NULL; fmt != NULL", 0, null_cases<dv_ts_tz_to_str_DEPRECATED>()},
    {"buf != NULL; fmt != NULL; sess_tz != NULL", 0, null_cases<dv_ts_tz_current_str>()},
    {"ts_ltz != NULL; sess_tz != NULL", 0,
     null_cases<dv_ts_ltz_from_unit_values, dv_ts_ltz_current, dv_ts_ltz_to_double, dv_ts_ltz_from_double>()},
    {"ts_ltz != NULL; date != NULL; sess_tz != NULL", 0, null_cases<dv_ts_ltz_from_date>()},
    {"ts_ltz != NULL; ts != NULL; sess_tz != NULL", 0, null_cases<dv_ts_ltz_from_timestamp>()},
    {"ts_ltz != NULL; ts_tz != NULL", 0, null_cases<dv_ts_ltz_from_ts_tz>()},
    {"ts_ltz != NULL", 0, null_cases<dv_ts_ltz_trim_fsec>()},
    {"ts_ltz != NULL; number_is_nonnull_ptr(num); sess_tz != NULL", 0, null_cases<dv_ts_ltz_to_number>()},
    {"number_is_valid_ptr(num); ts_ltz != NULL; sess_tz != NULL", 0, null_cases<dv_ts_ltz_from_number>()},
    {"ts_ltz != NULL; str != NULL; fmt != NULL; sess_tz != NULL", 0,
     null_cases<dv_ts_ltz_from_str, dv_ts_ltz_from_str_DEPRECATED, dv_ts_ltz_to_str,
                dv_ts_ltz_to_str_DEPRECATED>()},
    // time zones
    {"tz != NULL", 0,
     null_cases<timezone_init, timezone_set_field, timezone_get_field, timezone_get_system_default, timezone_get_fault>()},
    {"tz != NULL", 1 << 1, null_cases<timezone_parse>()},
    {"local_tz != NULL; date != NULL", 0,
     null_cases<timezone_shift_to_east, timezone_shift_to_west, timezone_adjust>()},
    {"local_tz != NULL; date != NULL", 1 << 2, null_cases<timezone_normalize>()},
    {"sess_tz != NULL; date != NULL", 1 << 2, null_cases<timezone_localize>()},
    {"local_tz != NULL; buf != NULL", 0, null_cases<timezone_get_zone_name>()},
    {"local_tz != NULL; date != NULL; buf != NULL", 0, null_cases<timezone_get_zone_abbr>()},
    {"region != NULL; utc != NULL", 0, null_cases<zonetab_get_info>()},
    // datetime models
    {"alloc != NULL; fmt_ctx != NULL; fmt != NULL", 0, null_cases<dt_fmt_ctx_set>()},
    {"fmt_ctx != NULL", 1 << 0 | 1 << 2, null_cases<dt_fmt_ctx_set_user_nls>()},
    {"alloc != NULL; fmt_ctx != NULL", 0, null_cases<dt_fmt_ctx_reset>()},
    {"fmt_ctx != NULL", 0, null_cases<dt_fmt_get_predicted_str_len, dt_fmt_ctx_get_serialize_size>()},
    {"fmt_ctx != NULL; buf != NULL", 0, null_cases<dt_fmt_ctx_serialize>()},
    {"parse_ctx != NULL", 1 << 1 | 1 << 2 | 1 << 4, null_cases<dt_parse_ctx_init>()},
    {"alloc != NULL; parse_ctx != NULL", 0, null_cases<dt_fmt_parse_token>()},
    {"parse_ctx != NULL; date != NULL", 0,
     null_cases<dt_fmt_write_date, dt_fmt_parse_date, dt_fmt_check_ddd>()},
    {"parse_ctx != NULL; time != NULL", 0, null_cases<dt_fmt_write_time>()},
    {"parse_ctx != NULL; time != NULL; token_idx != NULL", 0, null_cases<dt_fmt_parse_time>()},
    {"parse_ctx != NULL; ts_tz != NULL", 0, null_cases<dt_fmt_write_tz>()},
    {"parse_ctx != NULL; tz != NULL", 0, null_cases<dt_fmt_parse_tz>()},
    {"parse_ctx != NULL; token_idx != NULL", 0, null_cases<dt_fmt_parse_punc_token>()},
    {"parse_ctx != NULL", 0,
     null_cases<dt_fmt_write_punc_token, dt_parse_check_input_trailing_space,
                dt_parse_check_fmt_trailing_space, dt_fmt_check_ansi_date, dt_fmt_check_ansi_time,
                dt_fmt_check_ansi_punc>()},
    {"date != NULL; fmt != NULL", 0, null_cases<dt_fmt_trunc_or_round>()},
    {"name != NULL", 0, null_cases<dt_fmt_get_day_idx_of_week>()},
    // Columns of datetimes
    {"lie_by_stride(x, result)", 1 << 3,
     null_cases<dv_date_column_get_field, dv_timestamp_column_get_field, dv_date_column_to_epoch,
                dv_timestamp_column_to_epoch>()},
    {"lie_by_stride(x, result)", 1 << 1 | 1 << 4,
     null_cases<dv_date_column_trunc, dv_date_column_round>()},
    {"lie_by_stride(x, y, result)", 1 << 3,
     null_cases<dv_date_column_add_month, dv_timestamp_column_add_month, dv_date_column_add_day,
                dv_date_column_add_itv_ytm, dv_date_column_sub_itv_ytm, dv_date_column_add_itv_dts,
                dv_date_column_sub_itv_dts, dv_timestamp_column_add_itv_ytm,
                dv_timestamp_column_sub_itv_ytm, dv_timestamp_column_add_itv_dts,
                dv_timestamp_column_sub_itv_dts, dv_ts_tz_column_add_itv_ytm, dv_ts_tz_column_sub_itv_ytm,
                dv_ts_tz_column_add_itv_dts, dv_ts_tz_column_sub_itv_dts, dv_date_column_sub_days,
                dv_date_column_sub, dv_date_column_months_between, dv_date_column_sub_into_itv_dts,
                dv_timestamp_column_sub_into_itv_dts, dv_timestamp_column_sub_into_itv_ytm>()},
    {"lie_by_stride(x, y, result)", 1 << 4,
     null_cases<dv_date_column_add_field, dv_timestamp_column_add_field>()},
    {"are_columns(text, result) && lie_by_stride(result)", 1 << 2,
     null_cases<dv_date_column_from_iso, dv_timestamp_column_from_iso, dv_ts_tz_column_from_iso>()},
    {"are_columns(x, result) && lie_by_stride(x)", 1 << 2,
     null_cases<dv_date_column_to_iso, dv_timestamp_column_to_iso, dv_ts_tz_column_to_iso>()},
    {"lie_by_stride(x, result)", 1 << 2,
     null_cases<dv_date_column_to_epoch_day, dv_timestamp_column_from_ts_tz, dv_date_column_from_ts_tz,
                dv_ts_ltz_column_from_ts_tz>()},
    {"are_columns(text, result) && lie_by_stride(result); fmt_ctx != NULL; are_columns(text, result) && lie_by_stride(result)", 1 << 2 | 1 << 4,
     null_cases<dv_date_column_from_str>()},
    {"are_columns(text, result) && lie_by_stride(result); fmt_ctx != NULL; are_columns(text, result) && lie_by_stride(result)", 1 << 3 | 1 << 5,
     null_cases<dv_timestamp_column_from_str>()},
    {"are_columns(text, result) && lie_by_stride(result); fmt_ctx != NULL; sess_tz != NULL; are_columns(text, result) && lie_by_stride(result)", 1 << 4 | 1 << 6,
     null_cases<dv_ts_tz_column_from_str, dv_ts_ltz_column_from_str>()},
    {"are_columns(x, result) && lie_by_stride(x); fmt_ctx != NULL; are_columns(x, result) && lie_by_stride(x)", 1 << 3,
     null_cases<dv_date_column_to_str>()},
    {"are_columns(x, result) && lie_by_stride(x); fmt_ctx != NULL; are_columns(x, result) && lie_by_stride(x)", 1 << 4,
     null_cases<dv_timestamp_column_to_str, dv_ts_tz_column_to_str>()},
    {"are_columns(x, result) && lie_by_stride(x); fmt_ctx != NULL; sess_tz != NULL; are_columns(x, result) && lie_by_stride(x)", 1 << 5,
     null_cases<dv_ts_ltz_column_to_str>()},
    {"lie_by_stride(counts, result)", 1 << 3,
     null_cases<dv_date_column_from_epoch, dv_timestamp_column_from_epoch>()},
    {"lie_by_stride(counts, zones, result)", 1 << 4, null_cases<dv_ts_tz_column_from_epoch>()},
    {"lie_by_stride(days, result)", 1 << 2, null_cases<dv_date_column_from_epoch_day>()},
    {"lie_by_stride(x, zones, result)", 1 << 3,
     null_cases<dv_timestamp_column_from_ts_ltz, dv_date_column_from_ts_ltz,
                dv_ts_ltz_column_from_timestamp, dv_ts_tz_column_from_timestamp, dv_ts_ltz_column_from_date,
                dv_ts_tz_column_from_date, dv_ts_tz_column_from_ts_ltz>()},
    {"date != NULL", 0,
     null_cases<dv_date_to_epoch, dv_date_from_epoch, dv_date_to_epoch_day, dv_date_from_epoch_day>()},
    {"ts != NULL", 0,
     null_cases<dv_timestamp_to_epoch, dv_timestamp_from_epoch>()},
    // Columns
    {"column != NULL", 0, null_cases<dv_column_count_valid>()},
    {"is_key_part(part)", 0, null_cases<dv_key_size>()},
    {"is_key_part(part); keys != NULL", 1 << 3, null_cases<dv_column_write_keys>()},
    {"given(keys, rows, scratch)", 0, null_cases<dv_sort_keys>()},
    {"are_columns(x, y); are_columns(x, y); rows != NULL", 1 << 4, null_cases<number_column_compare>()},
    {"are_columns(x)", 1 << 1 | 1 << 2, null_cases<number_column_min, number_column_max>()},
    {"are_columns(x); total != NULL", 1 << 1 | 1 << 3, null_cases<number_column_sum>()},
    {"are_columns(x, y); are_columns(x, y); total != NULL", 1 << 2 | 1 << 4,
     null_cases<number_column_sum_products>()},
    {"are_columns(x); groups != NULL; totals != NULL", 1 << 3, null_cases<number_column_sum_by_group>()},
    {"total != NULL; number_is_valid_ptr(x)", 0, null_cases<number_total_add, number_total_sub>()},
    {"total != NULL; other != NULL", 0, null_cases<number_total_merge>()},
    {"total != NULL; memory != NULL", 0, null_cases<number_total_attach>()},
    {"total != NULL; number_is_nonnull_ptr(x)", 0, null_cases<number_total_sum, number_total_average>()},
    {"total != NULL; bytes != NULL", 0, null_cases<number_total_pack, number_total_unpack>()},
    {"are_columns(x, y, result)", 1 << 3,
     null_cases<number_column_add, number_column_sub, number_column_mul, number_column_div, number_column_mod,
                number_column_rem>()},
    {"are_columns(x, result)", 1 << 2,
     null_cases<number_column_negate, number_column_abs, number_column_to_text>()},
    {"are_columns(x, result) && lie_by_stride(result)", 1 << 2,
     null_cases<number_column_to_int32, number_column_to_int64, number_column_to_double>()},
    {"are_columns(x, result)", 1 << 4,
     null_cases<number_column_round_to_places, number_column_force_prec_scale>()},
    {"are_columns(x, result)", 1 << 2 | 1 << 4, null_cases<number_column_to_text_fmt>()},
    {"are_columns(text, result)", 1 << 2, null_cases<number_column_from_text>()},
    {"are_columns(text, result)", 1 << 2 | 1 << 4, null_cases<number_column_from_text_fmt>()},
    {"are_columns(v, result) && lie_by_stride(v)", 1 << 2,
     null_cases<number_column_from_int32, number_column_from_int64, number_column_from_double>()},
    {"are_decimals(x, y, result)", 1 << 3,
     null_cases<dv_decimal_column_add, dv_decimal_column_sub, dv_decimal_column_mul>()},
    {"are_decimals(x, result)", 1 << 2, null_cases<dv_decimal_column_rescale>()},
    {"are_decimals(x, y) && rows != NULL", 0, null_cases<dv_decimal_column_compare>()},
    {"is_decimal_beside(x, result)", 1 << 2, null_cases<dv_decimal_column_from_number>()},
    {"is_decimal_beside(result, x)", 1 << 2, null_cases<dv_decimal_column_to_number>()},
    {"is_decimal_beside(text, result)", 1 << 2, null_cases<dv_decimal_column_from_text>()},
    {"is_decimal_beside(text, x)", 1 << 2, null_cases<dv_decimal_column_to_text>()},
    {"is_decimal(x) && sum != NULL", 0, null_cases<dv_decimal_column_sum>()},
    {"sum != NULL && other != NULL", 0, null_cases<dv_decimal_sum_merge>()},
    {"sum != NULL && x != NULL", 0, null_cases<dv_decimal_sum_quotient>()},
    {"sum != NULL && bytes != NULL", 0, null_cases<dv_decimal_sum_pack>()},
    {"sum != NULL && scale != NULL && bytes != NULL", 0, null_cases<dv_decimal_sum_unpack>()},
    {"given(column, bitmap)", 0, null_cases<dv_column_copy_validity>()},
    {"given(schema, array, type, column)", 0, null_cases<dv_arrow_import>()},
    {"are_columns(column) && given(type, lent, schema, array)", 0, null_cases<dv_arrow_export>()}};
// clang-format on

// NULL has a meaning for these: it is dumped, comes first, or is an empty model, text or name. And one
// returns an error where the others return 0.
const std::set<std::string> _takes_null = {"number_sdump",
                                           "number_dump",
                                           "number_dumpln",
                                           "number_format_check",
                                           "number_get_length",
                                           "dv_date_compare",
                                           "dv_time_compare",
                                           "dv_itv_ytm_compare",
                                           "dv_itv_dts_compare",
                                           "dv_timestamp_compare",
                                           "dv_ts_tz_compare",
                                           "dv_ts_ltz_compare",
                                           "dv_timestamp_check_literal",
                                           "zonetab_search_region",
                                           "parse_offset_"};

// base.h excepted: its functions are the host's.
std::set<std::string> declared_functions_() {
    std::set<std::string> names;
    for (const auto &entry : std::filesystem::directory_iterator(project_file("src/include/dvtypes"))) {
        const std::string header = entry.path().filename();
        if (header.ends_with(".h") && header != "base.h") names.merge(functions_with_pointers(header));
    }
    return names;
}

}  // namespace

TEST(NullArgument, IsReportedAndNothingElseHappensInEveryFunction) {
    std::set<std::string> missing = declared_functions_();
    EXPECT_GT(missing.size(), 200U);
    for (const std::string &name : _takes_null) EXPECT_EQ(missing.erase(name), 1U) << name;
    for (const null_group_t &group : _groups) {
        for (const null_case_t &function : group.functions) {
            EXPECT_EQ(function.fault(group.assertions, group.optional), "") << function.name;
            EXPECT_EQ(missing.erase(std::string(function.name)), 1U) << function.name;
        }
    }
    EXPECT_EQ(missing, std::set<std::string>()) << "not called here";
}
