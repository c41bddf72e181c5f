// NULL for any pointer of any function of NUMBER and of its models: an assertion, and nothing else.

#include "null_argument.h"

#include <gtest/gtest.h>

#include <set>

#include "dvtypes/number_fmt.h"
#include "project_file.h"

using namespace dv::test;

namespace {

struct group_t {
    const char *assertion;
    unsigned optional;  // a bit for each argument that may be NULL
    std::vector<null_case_t> functions;
};

// clang-format off
const group_t _groups[] = {
    {"number_is_valid_ptr(x) && number_is_valid_ptr(y)", 0,
     {null_case<number_add>, null_case<number_sub>, null_case<number_add_with_mode>, null_case<number_mul>,
      null_case<number_div>, null_case<number_mod>, null_case<number_rem>, null_case<number_pow>,
      null_case<number_sqr>}},
    {"number_is_valid_ptr(x)", 0,
     {null_case<number_negate>, null_case<number_abs>, null_case<number_sqrt>, null_case<number_exp>,
      null_case<number_round_at_withmode>, null_case<number_check_prec_scale>,
      null_case<number_force_prec_scale>, null_case<number_range_check>}},
    {"number_is_nonnull_ptr(x) && number_is_valid_ptr(y)", 0, {null_case<number_assign>}},
    {"number_is_valid_ptr(x) && number_is_nonnull_ptr(y)", 0,
     {null_case<number_to_int8>, null_case<number_to_int16>, null_case<number_to_int32>,
      null_case<number_to_int64>, null_case<number_to_uint8>, null_case<number_to_uint16>,
      null_case<number_to_uint32>, null_case<number_to_uint64>, null_case<number_to_float>,
      null_case<number_to_double>, null_case<number_to_long_double>, null_case<number_to_oracle_format>}},
    {"number_is_nonnull_ptr(x)", 0,
     {null_case<number_from_int8>, null_case<number_from_int16>, null_case<number_from_int32>,
      null_case<number_from_int64>, null_case<number_from_uint8>, null_case<number_from_uint16>,
      null_case<number_from_uint32>, null_case<number_from_uint64>, null_case<number_from_float>,
      null_case<number_from_double>, null_case<number_from_long_double>, null_case<number_println>}},
    {"number_is_nonnull_ptr(x) && number_is_nonnull_ptr(y)", 0, {null_case<number_from_oracle_format>}},
    {"number_is_nonnull_ptr(x) && number_is_nonnull_ptr(str)", 1 << 3 | 1 << 4,
     {null_case<number_from_str>, null_case<number_from_str_nt>, null_case<number_from_str_fmt>,
      null_case<number_to_str_fmt>, null_case<_number_to_str_fmt_rn>}},
    {"number_is_valid_ptr(x) && number_is_nonnull_ptr(str)", 1 << 3, {null_case<number_to_str>}},
    {"sp != NULL && xp != NULL", 0, {null_case<number_ui_sqrt>}},
    {"fmt != NULL && pr != NULL", 0, {null_case<number_fmt_parse>}},
    {"number_is_nonnull_ptr(dump)", 0, {null_case<number_println_from_str>}}};

// NULL is a documented argument of these: it is dumped, left alone, or the empty model.
const std::set<std::string> _takes_null = {"number_sdump", "number_dump", "number_dumpln",
                                           "number_format_check", "number_get_length"};
// clang-format on

TEST(NumberFunctions, ReportEveryMissingPointerAndTouchNothing) {
    std::set<std::string> declared = functions_with_pointers("number.h");
    declared.merge(functions_with_pointers("number_fmt.h"));
    EXPECT_GT(declared.size(), 50U);
    for (const std::string &name : _takes_null) EXPECT_EQ(declared.erase(name), 1U) << name;
    for (const group_t &group : _groups) {
        for (const null_case_t &function : group.functions) {
            EXPECT_EQ(function.fault(group.assertion, group.optional), "") << function.name;
            EXPECT_EQ(declared.erase(std::string(function.name)), 1U) << function.name;
        }
    }
    EXPECT_EQ(declared, std::set<std::string>()) << "not called here";
}

}  // namespace
