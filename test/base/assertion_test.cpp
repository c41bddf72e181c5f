// Assertions: reporter, count and action belong to the thread.

#include <gtest/gtest.h>

#include <string>
#include <thread>

#include "dvtypes/base.h"

namespace {

std::string _report;

void keep_report_(const char *cond_text, const char *src_file, int line) {
    _report = std::string(src_file) + ":" + std::to_string(line) + ":" + cond_text;
}

void fail_() {
    dv_assert_msg("x != NULL", "number_add.cpp", 8);
    dv_thr_assert_cmd();
}

TEST(Assertion, GoesToTheReporterAndIsCounted) {
    dv_assert_set_reporter(keep_report_);
    const unsigned long before = dv_assert_count();
    fail_();
    dv_assert_set_reporter(nullptr);
    EXPECT_EQ(_report, "number_add.cpp:8:x != NULL");
    EXPECT_EQ(dv_assert_count(), before + 1);
}

TEST(Assertion, GoesToStandardErrorWithoutAReporter) {
    testing::internal::CaptureStderr();
    fail_();
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "number_add.cpp:8: assertion failed: x != NULL\n");
}

TEST(Assertion, StateIsPerThread) {
    const unsigned long before = dv_assert_count();
    unsigned long in_thread = 99;
    dv_assert_set_action(DV_ASSERT_ABORT);
    std::thread([&] {
        dv_thr_assert_cmd();
        dv_thr_assert_cmd();
        in_thread = dv_assert_count();
    }).join();
    dv_assert_set_action(DV_ASSERT_CONTINUE);
    EXPECT_EQ(in_thread, 2U);
    EXPECT_EQ(dv_assert_count(), before);
}

TEST(AssertionDeathTest, AbortsOnRequest) {
    EXPECT_DEATH(
        {
            dv_assert_set_action(DV_ASSERT_ABORT);
            fail_();
        },
        "assertion failed: x != NULL");
}

}  // namespace
