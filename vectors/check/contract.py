"""Which functions find which error, and the conditions of assertions: names that are part of the contract."""

_ERRORS = '''
-3005 _number_to_str_fmt_rn dv_date_to_iso dv_time_to_iso dv_timestamp_to_iso dv_ts_tz_to_iso number_to_str
    number_to_str_fmt
-3006 number_fmt_parse number_from_str_fmt
-5005 dv_date_add_month
-5006 dv_date_add_field dv_date_get_field dv_date_set_field dv_time_get_field dv_time_set_field
    dv_timestamp_get_field dv_timestamp_set_field timezone_get_field timezone_set_field
-5007 dv_date_from_str dv_date_to_str dv_time_from_str dv_time_to_str dv_timestamp_from_str dv_timestamp_to_str
    dv_ts_tz_from_str dv_ts_tz_to_str
    dv_date_from_str_as_of dv_timestamp_from_str_as_of dv_ts_tz_from_str_as_of
-5008 dv_itv_dts_trim_fsec
-5009 _dv_itv_dts_parse_value _dv_itv_ytm_parse_value
-5010 dt_parse_check_input_trailing_space dv_itv_dts_from_str dv_itv_ytm_from_str
-5011 dt_fmt_ctx_set dt_fmt_parse_date dt_fmt_write_date dv_date_from_str dv_date_to_str dv_time_from_str
    dv_time_to_str dv_timestamp_from_str dv_timestamp_to_str
-5012 dt_fmt_ctx_set dt_fmt_parse_time dt_fmt_write_time
-5013 dt_fmt_parse_date dt_fmt_parse_time dt_fmt_parse_tz
-5014 dt_fmt_parse_token dt_fmt_trunc_or_round dv_date_round dv_date_trunc parse_dt_fmt_
-5024 dt_fmt_check_ddd
-5025 dt_fmt_check_ddd
-5026 check_duplicated_token_
-5027 check_duplicated_token_
-5028 check_duplicated_token_
-5039 check_duplicated_token_
-5040 check_duplicated_token_
-5041 dv_time_from_str dv_time_to_str dv_time_trim_fsec dv_time_write_num_val_ dv_timestamp_from_str
    dv_timestamp_to_str dv_timestamp_trim_fsec dv_ts_tz_from_str dv_ts_tz_to_str parse_fsec_ parse_fsec_prec_
    dv_timestamp_from_str_as_of dv_ts_tz_from_str_as_of
-5042 dt_fmt_parse_punc_token parse_radix_
-5045 check_omitted_time_token_
-5048 dt_parse_check_fmt_trailing_space
-5049 dt_parse_check_fmt_trailing_space
-5054 dv_date_write_num_val_
-5056 _dv_itv_dts_parse_value _dv_itv_ytm_parse_value dv_itv_dts_from_str dv_itv_ytm_from_str
-5057 dv_itv_dts_to_str
-5059 _dv_itv_ytm_parse_value dv_itv_dts_from_str dv_itv_ytm_from_str
-5060 _dv_itv_ytm_parse_value
-5061 _dv_itv_dts_parse_value
-5062 _dv_itv_dts_parse_value
-5063 _dv_itv_dts_parse_value
-5064 dv_itv_dts_check_leading_prec dv_itv_ytm_check_leading_prec
-5065 dv_itv_dts_div dv_itv_ytm_div
-5067 number_to_str
-5068 number_add number_div number_from_str number_from_str_nt number_mul number_round_at_withmode
-5069 number_div number_from_str number_mul number_remove_head_zero
-5070 number_div number_rem
-5072 number_to_float number_to_int16 number_to_int32 number_to_int64 number_to_int8 number_to_uint16
    number_to_uint32 number_to_uint64 number_to_uint8
-5073 number_pow number_sqrt
-5074 number_from_str number_from_str_fmt
-5075 number_fmt_parse number_to_str
-5080 erowid_get_block erowid_get_file erowid_get_row erowid_get_rowid erowid_get_sgmt nerowid_get_rowid
-5081 erowid_get_rowid erowid_get_sgmt
-5082 erowid_get_file erowid_get_rowid
-5083 erowid_get_block
-5084 erowid_get_row erowid_get_rowid
-5087 dv_itv_dts_set_total_sec
-5088 parse_dd_ parse_ddd_ parse_fsec_ parse_hour_ parse_minute_ parse_mm_ parse_second_ parse_second_of_day_ parse_tz_hour_
    parse_tz_minute_ parse_yyyy_
-5089 dt_fmt_parse_punc_token
-5091 dt_fmt_parse_tz dv_tz_write_num_val_ dv_tz_write_str_val_
-5096 check_duplicated_token_ parse_tz_abbr_
-5097 check_duplicated_token_
-5098 dv_ts_tz_from_iso timezone_parse timezone_set_field
-5099 dv_ts_tz_from_iso timezone_parse timezone_set_field
-5100 timezone_set_field
-5103 timezone_parse
-5104 dv_ts_tz_from_iso dv_ts_tz_to_iso timezone_parse
-5109 find_local_tzinfo_ find_overlapped_zone_
-5110 dv_ts_tz_from_iso find_local_tzinfo_
-5111 number_force_prec_scale
-5112 check_duplicated_token_
-5113 dt_fmt_check_ddd dt_fmt_get_day_idx_of_week dv_date_from_iso dv_time_from_iso dv_timestamp_from_iso
    dv_ts_tz_from_iso parse_ad_bc_ parse_am_pm_ parse_dd_ parse_ddd_ parse_fsec_
    parse_hour_ parse_minute_ parse_month_ parse_second_ parse_second_of_day_ parse_tz_abbr_ parse_tz_hour_
    parse_tz_minute_ parse_tz_region_ parse_yyyy_ skip_and_check_punc_token_
-5114 dv_date_add_day dv_date_is_valid dv_dt_check_validity_of_unit dv_time_trim_fsec dv_timestamp_trim_fsec
    parse_hour_ parse_second_of_day_ parse_tz_hour_ parse_tz_minute_
-11035 dt_fmt_ctx_set_user_nls dv_nls_parse
'''
_ASSERTIONS = '''
0
date != NULL
date1 != NULL
date2 != NULL
day_name != NULL
dts != NULL
dts1 != NULL
dts2 != NULL
dv_nls_date_lang_is_valid (lang)
false
fmt != NULL
fmt != NULL && pr != NULL
idx < 12
idx < 4
idx < 7
idx >= 0
int_val > 0
itv != NULL
month <= 12
month >= 1
name != NULL
number_is_nonnull_ptr(x)
number_is_nonnull_ptr(x) && number_is_nonnull_ptr(str)
number_is_valid_ptr(x)
number_is_valid_ptr(x) && number_is_valid_ptr(y)
parse_ctx->ddd > 0
result != NULL
sess_tz != NULL
str != NULL
time != NULL
ts != NULL
ts_ltz != NULL
ts_tz != NULL
value >= 0 && value <= TZ_ID_OFFSET
x->coef[i - 2] == NUMBER_TOP
x->coef[i - 2] >= 128 && x->coef[i - 2] <= 227
x->coef[i - 2] >= 29 && x->coef[i - 2] <= 128
y[i] == 102
y[i] >= 1 && y[i] <= 100
y[i] >= 2 && y[i] <= 101
year != 0
ytm != NULL
ytm1 != NULL && ytm2 != NULL
zone_id < TZ_ID_MAX
'''
RAISED_BY = {}
for _word in _ERRORS.split():
    if _word.startswith('-'):
        _functions = RAISED_BY.setdefault(int(_word), set())
    else:
        _functions.add(_word)
CONDITIONS = set(_ASSERTIONS.strip().splitlines())


def check(case):
    """Raises ValueError where a name is not one that the contract has."""
    if case.error and case.error[1] not in RAISED_BY.get(case.error[0], ()):
        raise ValueError(f'{case.error[1]} does not raise {case.error[0]}')
    for condition in case.assertions:
        if condition.decode() not in CONDITIONS:
            raise ValueError(f'no such assertion: {condition.decode()}')
