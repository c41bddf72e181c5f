// Who raises what: the code, the function that it names and the arguments of its message, for every fault of
// DATE, TIME, the intervals, rowids and language settings.

#include <gtest/gtest.h>

#include "../datetime_fmt/model_text.h"
#include "dvtypes/erowid.h"
#include "dvtypes/nerowid.h"

using namespace dv::test;

namespace {

const dt_fmt_ctx_t *model_(const char *text, int type, bool is_reading) {
    static std::vector<std::unique_ptr<compiled_model>> models;
    models.push_back(std::make_unique<compiled_model>(text, is_reading, type));
    return &models.back()->ctx;
}
const dt_fmt_ctx_t *const _read_year = model_("YYYY", DV_TYPE_DATE, true),
                          *const _read_fraction = model_("FF", DV_TYPE_TIMESTAMP, true),
                          *const _read_zone = model_("HH24 TZR", DV_TYPE_TS_TZ, true),
                          *const _read_hour = model_("HH24", DV_TYPE_TIME, true),
                          *const _write_year = model_("YYYY", DV_TYPE_DATE, false),
                          *const _write_fraction = model_("FF", DV_TYPE_TIMESTAMP, false),
                          *const _write_zone = model_("TZR", DV_TYPE_TS_TZ, false),
                          *const _write_hour = model_("HH24", DV_TYPE_TIME, false);

dv_date_t _date;
dv_time_t _time;
dv_itv_ytm_t _ytm;
dv_itv_dts_t _dts;
rowid_t _rowid;
nrowid_t _number;
char _text[99];

dv_date_t *date_(int year, int month, int day) { return &(_date = make_date(year, month, day)); }
dv_itv_ytm_t *months_(int months) { return dv_itv_ytm_set_total_month(&_ytm, months), &_ytm; }
dv_itv_dts_t *seconds_(double seconds) { return dv_itv_dts_set_total_sec(&_dts, seconds), &_dts; }
void ytm_(const char *text, int type) { dv_itv_ytm_from_str(&_ytm, text, 0, type, 2); }
void dts_(const char *text, int type) { dv_itv_dts_from_str(&_dts, text, 0, type, 2, 9); }
erowid_t rowid_(std::string_view text) {  // the rest is "A"
    erowid_t form;
    std::fill(std::begin(form.text), std::end(form.text), 'A');
    std::copy(text.begin(), text.end(), form.text);
    return form;
}
const number_t *number_(const char *text) {
    static number_t number;
    return &(number = num(text));
}
void set_(const char *text) {
    dv_nls_param_t param;
    dv_nls_sort_ctx_t value;
    dv_nls_parse(text, &param, &value);
}

struct case_t {
    int code;
    const char *function;
    void (*call)();
    const char *arguments = "";
};
const case_t _cases[] = {
    // clang-format off
    {-5005, "dv_date_add_month", [] { dv_date_add_month(date_(2001, 1, 31), 1, 1); }},
    {-5005, "dv_date_add_month", [] { dv_date_add_itv_ytm(date_(2001, 1, 31), months_(13)); }},
    {-5005, "dv_date_add_month", [] { dv_date_sub_itv_ytm(date_(2001, 3, 31), months_(1)); }},
    {-5006, "dv_date_get_field", [] { dv_date_get_field(&_date, DT_FMT_UNIT_FSEC); }},
    {-5006, "dv_date_set_field", [] { dv_date_set_field(&_date, DT_FMT_UNIT_AD, 1, 0, 0); }},
    {-5006, "dv_date_add_field", [] { dv_date_add_field(&_date, DT_FMT_UNIT_MONTH, 1); }},
    {-5006, "dv_time_get_field", [] { dv_time_get_field(&_time, DT_FMT_UNIT_DAY); }},
    {-5006, "dv_time_set_field", [] { dv_time_set_field(&_time, DT_FMT_UNIT_DAY, 1, 0, 0); }},
    {-5007, "dv_date_from_str", [] { dv_date_from_str(&_date, "", 0, _read_year); }},
    {-5007, "dv_date_from_str", [] { dv_date_from_str(&_date, "2001", -1, _read_year); }},
    {-5007, "dv_date_to_str", [] { dv_date_to_str(&_date, _text, 0, _write_year); }},
    {-5007, "dv_date_to_str", [] { dv_date_current_str(_text, 0, _write_year); }},
    {-5007, "dv_time_from_str", [] { dv_time_from_str(&_time, "12", 0, _read_hour, 10); }},
    {-5007, "dv_time_to_str", [] { dv_time_to_str(&_time, _text, 0, _write_hour, 10); }},
    {-5008, "dv_itv_dts_trim_fsec", [] { dv_itv_dts_trim_fsec(&_dts, 10); }},
    {-5008, "dv_itv_dts_trim_fsec", [] { dv_itv_dts_trim_fsec(&_dts, -1); }},
    {-5009, "_dv_itv_ytm_parse_value", [] { ytm_("1-", DV_ITV_YEAR_TO_MONTH); }},
    {-5009, "_dv_itv_dts_parse_value", [] { dts_("1 ", DV_ITV_DAY_TO_HOUR); }},
    {-5010, "dv_itv_ytm_from_str", [] { ytm_("1 2", DV_ITV_YEAR); }},
    {-5010, "dv_itv_dts_from_str", [] { dts_("1:2", DV_ITV_HOUR); }},
    {-5011, "dv_date_from_str", [] { dv_date_from_str(&_date, "1", 0, _read_fraction); }},
    {-5011, "dv_date_to_str", [] { dv_date_to_str(date_(1, 1, 1), _text, 9, _write_fraction); }},
    {-5011, "dv_date_to_str", [] { dv_date_to_str(date_(1, 1, 1), _text, 9, _write_zone); }},
    {-5011, "dv_time_from_str", [] { dv_time_from_str(&_time, "2001", 4, _read_year, 9); }},
    {-5011, "dv_time_from_str", [] { dv_time_from_str(&_time, "10 UTC", 6, _read_zone, 9); }},
    {-5011, "dv_time_to_str", [] { dv_time_to_str(&_time, _text, 9, _write_year, 9); }},
    {-5011, "dv_time_to_str", [] { dv_time_to_str(&_time, _text, 9, _write_zone, 9); }},
    {-5014, "dv_date_trunc", [] { dv_date_trunc(&_date, "MM", -1); }},
    {-5014, "dv_date_round", [] { dv_date_round(&_date, "MM", -1); }},
    {-5014, "dt_fmt_trunc_or_round", [] { dv_date_trunc(&_date, "MM ", 0); }},
    {-5041, "dv_time_from_str", [] { dv_time_from_str(&_time, "12", 2, _read_hour, 10); }},
    {-5041, "dv_time_to_str", [] { dv_time_to_str(&_time, _text, 9, _write_hour, 10); }},
    {-5041, "dv_time_trim_fsec", [] { dv_time_trim_fsec(&_time, 10); }},
    {-5041, "dv_time_trim_fsec", [] { dv_time_trim_fsec(&_time, -1); }},
    {-5056, "dv_itv_ytm_from_str", [] { ytm_(" \t", DV_ITV_YEAR); }},
    {-5056, "_dv_itv_ytm_parse_value", [] { ytm_("1.2", DV_ITV_YEAR_TO_MONTH); }},
    {-5056, "dv_itv_dts_from_str", [] { dts_("", DV_ITV_DAY); }},
    {-5056, "_dv_itv_dts_parse_value", [] { dts_("+x", DV_ITV_DAY); }},
    {-5057, "dv_itv_dts_to_str", [] { dv_itv_dts_to_str(&_dts, _text, -1, 9, 99); }},
    {-5057, "dv_itv_dts_to_str", [] { dv_itv_dts_to_str(&_dts, _text, 10, 9, 99); }},
    {-5057, "dv_itv_dts_to_str", [] { dv_itv_dts_to_str(&_dts, _text, 2, 0, 99); }},
    {-5057, "dv_itv_dts_to_str", [] { dv_itv_dts_to_str(&_dts, _text, 2, 10, 99); }},
    {-5059, "dv_itv_ytm_from_str", [] { ytm_("1", DV_ITV_QUALIFIER_MAX); }},
    {-5059, "_dv_itv_ytm_parse_value", [] { ytm_("1", DV_ITV_DAY); }},
    {-5059, "dv_itv_dts_from_str", [] { dts_("1", -1); }},
    {-5059, "dv_itv_dts_from_str", [] { dts_("1", DV_ITV_MONTH); }},
    {-5060, "_dv_itv_ytm_parse_value", [] { ytm_("1-12", DV_ITV_YEAR_TO_MONTH); }},
    {-5061, "_dv_itv_dts_parse_value", [] { dts_("1 24", DV_ITV_DAY_TO_HOUR); }},
    {-5062, "_dv_itv_dts_parse_value", [] { dts_("1:60", DV_ITV_HOUR_TO_MINUTE); }},
    {-5063, "_dv_itv_dts_parse_value", [] { dts_("1:60", DV_ITV_MINUTE_TO_SECOND); }},
    {-5064, "dv_itv_ytm_check_leading_prec", [] { dv_itv_ytm_check_leading_prec(months_(120), 1); }},
    {-5064, "dv_itv_ytm_check_leading_prec", [] { dv_itv_ytm_check_leading_prec(months_(-9), 0); }},
    {-5064, "dv_itv_ytm_check_leading_prec", [] { ytm_("1200", DV_ITV_MONTH); }},
    {-5064, "dv_itv_dts_check_leading_prec", [] { dv_itv_dts_check_leading_prec(seconds_(864000), 1); }},
    {-5064, "dv_itv_dts_check_leading_prec", [] { dts_("100 0", DV_ITV_DAY_TO_HOUR); }},
    {-5065, "dv_itv_ytm_div", [] { dv_itv_ytm_div(&_ytm, -0.0); }},
    {-5065, "dv_itv_dts_div", [] { dv_itv_dts_div(&_dts, number_("0")); }},
    {-5080, "erowid_get_rowid", [] { auto form = rowid_("."); erowid_get_rowid(&form, &_rowid); }},
    {-5080, "erowid_get_sgmt", [] { auto form = rowid_("="); erowid_get_sgmt(&form, &_rowid.sgmt); }},
    {-5080, "erowid_get_file", [] { auto form = rowid_("AAAAAA."); erowid_get_file(&form, &_rowid.file); }},
    {-5080, "erowid_get_block", [] { auto form = rowid_("AAAAAAAAA."); erowid_get_block(&form, &_rowid.block); }},
    {-5080, "erowid_get_row", [] { auto form = rowid_("AAAAAAAAAAAAAAAAA."); erowid_get_row(&form, &_rowid.row); }},
    {-5080, "nerowid_get_rowid", [] { const nerowid_t form = {{'Q', '.'}}; nerowid_get_rowid(&form, &_number); }},
    {-5081, "erowid_get_sgmt", [] { auto form = rowid_("E"); erowid_get_sgmt(&form, &_rowid.sgmt); }},
    {-5081, "erowid_get_rowid", [] { auto form = rowid_("AAAAAAAAAE"); erowid_get_rowid(&form, &_rowid); }},
    {-5082, "erowid_get_file", [] { auto form = rowid_("AAAAAAQ"); erowid_get_file(&form, &_rowid.file); }},
    {-5083, "erowid_get_block", [] { auto form = rowid_("AAAAAAAAAE"); erowid_get_block(&form, &_rowid.block); }},
    {-5084, "erowid_get_row", [] { auto form = rowid_("AAAAAAAAAAAAAAAQ"); erowid_get_row(&form, &_rowid.row); }},
    {-5087, "dv_itv_dts_set_total_sec", [] { dv_itv_dts_set_total_sec(&_dts, 0x1p31 * 86400); }},
    {-5087, "dv_itv_dts_set_total_sec", [] { dv_itv_dts_mul(seconds_(86400), number_("1E10")); }},
    {-5113, "dt_fmt_get_day_idx_of_week", [] { dv_date_get_next_day(date_(2001, 1, 1), "MOON", 0, 0, 0); }, "day_name|MOON|Inconsistent with NLS_DATE_LANGUAGE|"},
    {-5114, "dv_dt_check_validity_of_unit", [] { dv_date_set_field(&_date, 1, 0, 1, 0); }, "year|0|-4713|9999|"},
    {-5114, "dv_dt_check_validity_of_unit", [] { dv_date_from_unit_values(&_date, 1, 13, 1, 0, 0, 0); }, "month|13|1|12|"},
    {-5114, "dv_dt_check_validity_of_unit", [] { dv_date_from_unit_values(&_date, 1, 1, 32, 0, 0, 0); }, "day|32|1|31|"},
    {-5114, "dv_dt_check_validity_of_unit", [] { dv_time_from_unit_values(&_time, 24, 0, 0, 0); }, "hour|24|0|23|"},
    {-5114, "dv_dt_check_validity_of_unit", [] { dv_time_from_unit_values(&_time, 0, 60, 0, 0); }, "minute|60|0|59|"},
    {-5114, "dv_dt_check_validity_of_unit", [] { dv_time_from_unit_values(&_time, 0, 0, 60, 0); }, "second|60|0|59|"},
    {-5114, "dv_dt_check_validity_of_unit", [] { dv_time_from_unit_values(&_time, 0, 0, 0, -1); }, "fractional second|-1|0|999999999|"},
    {-5114, "dv_dt_check_validity_of_unit", [] { dv_date_add_month(date_(9999, 12, 1), 1, 0); }, "year|10000|-4713|9999|"},
    {-5114, "dv_date_is_valid", [] { dv_date_is_valid(date_(1900, 2, 29)); }, "day|29|1|28|"},
    {-5114, "dv_date_add_day", [] { dv_date_add_day(date_(9999, 12, 31), 1); }, "year|9999|-4713|9999|"},
    {-5114, "dv_date_add_day", [] { dv_date_add_field(date_(-4713, 1, 1), DT_FMT_UNIT_SECOND, -1); }, "year|-4713|-4713|9999|"},
    {-5114, "dv_time_trim_fsec", [] { _time.csec[0] = _time.csec[1] = _time.csec[2] = _time.csec[3] = 0xFF; dv_time_trim_fsec(&_time, 9); }, "fractional second|-1|0|999999999|"},
    {-11035, "dv_nls_parse", [] { set_("NLS_DATE_LANGUAGE=KOREAN=X"); }},
    {-11035, "dv_nls_parse", [] { set_("NLS_DATE_FORMAT=YYYY"); }},
    {-11035, "dv_nls_parse", [] { set_("NLS_SORT=XBINARY"); }},
    // clang-format on
};

}  // namespace

TEST(ValueErrors, NameTheirFunctionAndTheirArguments) {
    for (const case_t &c : _cases) {
        dv_error_t error = {};
        raise_of(c.call, &error);
        std::string arguments;
        for (int i = 0; i < error.arg_count; ++i) arguments += error.args[i] + std::string("|");
        EXPECT_EQ(error.code, c.code) << "case " << &c - _cases;
        EXPECT_STREQ(error.function, c.function) << c.code << ", case " << &c - _cases;
        EXPECT_EQ(arguments, c.arguments) << c.function;
    }
}
