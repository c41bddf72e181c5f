// Raises and assertions, over any way of unwinding: records and their messages, reports, aborts.

#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <thread>

#include "raise.h"

namespace {

using dv::test::raise_of;

// What is caught of a raise that was caught and raised again.
template <typename... Args>
dv_error_t error_of_(int code, Args... args) {
    dv_error_t first;
    dv_error_t second;
    const auto rethrow = [&] {
        raise_of([=] { dv_err_and_jmp("add.cpp", 42, "add", 0, 0, code, args...); }, &first);
        dv_rethrow(&first);
    };
    EXPECT_EQ(raise_of(rethrow, &second), code);
    EXPECT_EQ(std::memcmp(&first, &second, sizeof first), 0);
    return second;
}

TEST(Error, RecordHoldsPlaceAndMessage) {
    const std::pair<dv_error_t, std::string> cases[] = {
        {error_of_(-5114, "hour", 15, -12, 14),
         "The value 15 of the field \"hour\" is out of range: -12 to 14 is accepted."},
        {error_of_(-5113, "day", "{3} %s", "no"), "Invalid day: \"{3} %s\" (no)."},
        {error_of_(-5113, "day", "Foo", ""), "Invalid day: \"Foo\"."},
        {error_of_(-5113, "day", static_cast<const char *>(nullptr), ""), "Invalid day: \"(null)\"."},
        {error_of_(-1234), "Unknown error -1234."},
    };
    for (const auto &[error, message] : cases) {
        EXPECT_EQ(error.file + std::to_string(error.line) + error.function + ": " + error.message,
                  "add.cpp42add: " + message);
    }
}

TEST(Error, OverlongTextsAreCutBetweenCharacters) {
    std::string text = "x";
    while (text.size() < 150) text += "\xEA\xB0\x80";
    EXPECT_EQ(error_of_(-5112, text.c_str()).args[0], text.substr(0, 1 + 20 * 3));  // 63 bytes hold no more
    const std::string no_text(150, '\x80');  // bytes that continue nothing
    EXPECT_EQ(error_of_(-5112, no_text.c_str()).args[0], no_text.substr(0, 63));
}

std::string _report;

void fail_() {
    dv_assert_msg("x != NULL", "add.cpp", 8);
    dv_thr_assert_cmd();
}

TEST(Assertion, IsReportedAndCountedByTheSettingsOfItsThread) {
    const unsigned long before = dv_assert_count();
    dv_assert_set_action(DV_ASSERT_ABORT);
    dv_assert_set_reporter([](const char *cond, const char *, int) { _report += cond; });
    std::thread(fail_).join();
    dv_assert_set_action(DV_ASSERT_CONTINUE);
    fail_();
    dv_assert_set_reporter(nullptr);
    EXPECT_EQ(_report, "x != NULL");
    EXPECT_EQ(dv_assert_count(), before + 1);
}

TEST(ErrorDeathTest, WhatNobodyHandlesAbortsWithMessageAndPlace) {
    EXPECT_DEATH(dv_err_and_jmp("div.cpp", 12, "div", 0, 0, -5070), "div.cpp:12: div: error -5070 .*by zero");
    EXPECT_DEATH((dv_assert_set_action(DV_ASSERT_ABORT), fail_()), "add.cpp:8: assertion failed: x != NULL");
}

}  // namespace
