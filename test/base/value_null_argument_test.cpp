// NULL for any pointer of any function of DATE, TIME, the intervals, rowids and languages: an assertion, and
// nothing else.

#include <gtest/gtest.h>

#include <set>

#include "dvtypes/datetime.h"
#include "dvtypes/erowid.h"
#include "dvtypes/nerowid.h"
#include "null_argument.h"
#include "project_file.h"

using namespace dv::test;

namespace {

struct group_t {
    const char *assertions;
    unsigned optional;  // a bit for each argument that may be NULL
    std::vector<null_case_t> functions;
};

// clang-format off
const group_t _groups[] = {
    {"date != NULL", 0,
     {null_case<dv_date_get_field>, null_case<dv_date_set_field>, null_case<dv_date_is_valid>, null_case<dv_date_init>,
      null_case<dv_date_current>, null_case<dv_date_from_unit_values>, null_case<dv_date_from_epoch_time>,
      null_case<dv_date_to_julian_day>, null_case<dv_date_from_julian_day>, null_case<dv_date_to_double>,
      null_case<dv_date_to_system_time>, null_case<dv_date_add_day>, null_case<dv_date_add_field>,
      null_case<dv_date_add_month>}},
    {"date != NULL", 1 << 1, {null_case<dv_date_trunc>, null_case<dv_date_round>}},
    {"dst != NULL; src != NULL", 0, {null_case<dv_date_assign>}},
    {"date != NULL; ts != NULL", 0, {null_case<dv_date_from_timestamp>}},
    {"date != NULL; ts_tz != NULL", 0, {null_case<dv_date_from_ts_tz>}},
    {"date != NULL; ts_ltz != NULL; sess_tz != NULL", 0, {null_case<dv_date_from_ts_ltz>}},
    {"date != NULL; time != NULL", 0, {null_case<dv_date_from_time>}},
    {"date1 != NULL; date2 != NULL", 0, {null_case<dv_date_sub>, null_case<dv_date_months_between>}},
    {"date != NULL; result != NULL", 0, {null_case<dv_date_get_last_date>}},
    {"date != NULL; day_name != NULL", 0, {null_case<dv_date_get_next_day>}},
    {"date != NULL; ytm != NULL", 0, {null_case<dv_date_add_itv_ytm>, null_case<dv_date_sub_itv_ytm>}},
    {"date != NULL; dts != NULL", 0, {null_case<dv_date_add_itv_dts>, null_case<dv_date_sub_itv_dts>}},
    {"date != NULL; str != NULL; fmt_ctx != NULL", 0, {null_case<dv_date_from_str>, null_case<dv_date_to_str>}},
    {"date != NULL; str != NULL; fmt_ctx != NULL; as_of != NULL", 0, {null_case<dv_date_from_str_as_of>}},
    {"date != NULL; str != NULL; fmt != NULL", 0,
     {null_case<dv_date_from_str_DEPRECATED>, null_case<dv_date_to_str_DEPRECATED>}},
    {"buf != NULL; fmt != NULL", 0, {null_case<dv_date_current_str>, null_case<dv_date_current_str_DEPRECATED>}},
    {"fmt != NULL", 0,
     {null_case<dv_date_get_length>, null_case<dv_date_check_format>, null_case<dv_time_get_length>,
      null_case<dv_time_check_format>}},
    {"time != NULL", 0,
     {null_case<dv_time_get_field>, null_case<dv_time_set_field>, null_case<dv_time_is_valid>,
      null_case<dv_time_from_unit_values>, null_case<dv_time_current>, null_case<dv_time_to_double>,
      null_case<dv_time_trim_fsec>}},
    {"time != NULL; ts != NULL", 0, {null_case<dv_time_from_timestamp>}},
    {"time != NULL; ts_tz != NULL", 0, {null_case<dv_time_from_ts_tz>}},
    {"time != NULL; ts_ltz != NULL", 0, {null_case<dv_time_from_ts_ltz>}},
    {"time != NULL; date != NULL", 0, {null_case<dv_time_from_date>}},
    {"time != NULL; str != NULL; fmt_ctx != NULL", 0, {null_case<dv_time_from_str>, null_case<dv_time_to_str>}},
    {"time != NULL; str != NULL; fmt != NULL", 0,
     {null_case<dv_time_from_str_DEPRECATED>, null_case<dv_time_to_str_DEPRECATED>}},
    {"itv != NULL", 0,
     {null_case<dv_itv_ytm_set_field>, null_case<dv_itv_ytm_get_field>, null_case<dv_itv_ytm_get_total_month>,
      null_case<dv_itv_ytm_set_total_month>, null_case<dv_itv_ytm_add_year>, null_case<dv_itv_ytm_add_month>,
      null_case<dv_itv_ytm_check_leading_prec>, null_case<dv_itv_dts_set_field>, null_case<dv_itv_dts_get_field>,
      null_case<dv_itv_dts_add_sec>, null_case<dv_itv_dts_add_min>, null_case<dv_itv_dts_add_hour>,
      null_case<dv_itv_dts_add_day>, null_case<dv_itv_dts_add_fsec>, null_case<dv_itv_dts_check_leading_prec>,
      null_case<dv_itv_dts_trim_fsec>}},
    {"ytm != NULL", 0, {null_case<dv_itv_ytm_mul>, null_case<dv_itv_ytm_div>}},
    {"dts != NULL", 0, {null_case<dv_itv_dts_get_total_sec>, null_case<dv_itv_dts_set_total_sec>}},
    {"ytm1 != NULL && ytm2 != NULL", 0, {null_case<dv_itv_ytm_add_itv_ytm>, null_case<dv_itv_ytm_sub_itv_ytm>}},
    {"dts1 != NULL; dts2 != NULL", 0, {null_case<dv_itv_dts_add_itv_dts>, null_case<dv_itv_dts_sub_itv_dts>}},
    {"dts != NULL; number_is_valid_ptr(dd)", 0, {null_case<dv_itv_dts_mul>, null_case<dv_itv_dts_div>}},
    {"itv != NULL; str != NULL", 0,
     {null_case<dv_itv_ytm_to_str>, null_case<dv_itv_ytm_from_str>, null_case<dv_itv_dts_to_str>,
      null_case<dv_itv_dts_from_str>}},
    {"erowid != NULL", 0, {null_case<erowid_new>, null_case<nerowid_new>}},
    {"erowid != NULL; rowid != NULL", 0, {null_case<erowid_get_rowid>, null_case<nerowid_get_rowid>}},
    {"erowid != NULL; sgmt != NULL", 0, {null_case<erowid_get_sgmt>}},
    {"erowid != NULL; file != NULL", 0, {null_case<erowid_get_file>}},
    {"erowid != NULL; block != NULL", 0, {null_case<erowid_get_block>}},
    {"erowid != NULL; row != NULL", 0, {null_case<erowid_get_row>}},
    {"str != NULL; val != NULL", 0,
     {null_case<dv_nls_date_lang_parse>, null_case<dv_nls_date_cal_parse>, null_case<dv_nls_comp_parse>}},
    {"str != NULL; ctx != NULL", 0, {null_case<dv_nls_sort_parse>}},
    {"str != NULL; param != NULL; val != NULL", 0, {null_case<dv_nls_parse>}},
    {"parse_ctx != NULL", 0,
     {null_case<nls_date_lang_get_std_month>, null_case<nls_date_lang_get_abb_month>,
      null_case<nls_date_lang_get_rom_month>, null_case<nls_date_lang_get_std_day>,
      null_case<nls_date_lang_get_abb_day>, null_case<nls_date_lang_get_std_adbc>,
      null_case<nls_date_lang_get_std_ampm>}}};
// clang-format on

}  // namespace

TEST(ValueFunctions, ReportEveryMissingPointerAndTouchNothing) {
    std::set<std::string> declared;
    for (const char *header : {"datetime.h", "interval.h", "rowid.h", "erowid.h", "nerowid.h", "nls.h"})
        declared.merge(functions_with_pointers(header));
    for (const char *orders :
         {"dv_date_compare", "dv_time_compare", "dv_itv_ytm_compare", "dv_itv_dts_compare"})
        EXPECT_EQ(declared.erase(orders), 1U);  // NULL comes first
    for (const group_t &group : _groups) {
        for (const null_case_t &function : group.functions) {
            EXPECT_EQ(function.fault(group.assertions, group.optional), "") << function.name;
            EXPECT_EQ(declared.erase(std::string(function.name)), 1U) << function.name;
        }
    }
    EXPECT_EQ(declared, std::set<std::string>()) << "not called here";
}
