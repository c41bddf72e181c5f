// Error records and the message catalogue, over any way of unwinding; the system allocator's raise.

#include <gtest/gtest.h>

#include <cstring>
#include <set>
#include <string>

#include "dvtypes/base.h"
#include "raise.h"

namespace {

using dv::test::raise_of;

template <typename... Args>
dv_error_t error_of_(int code, Args... args) {
    dv_error_t error;
    const int raised =
        raise_of([=] { dv_err_and_jmp("number_add.cpp", 42, "number_add", 0, 0, code, args...); }, &error);
    EXPECT_EQ(raised, code);
    return error;
}

TEST(Error, RecordHoldsPlaceArgumentsAndMessage) {
    const dv_error_t error = error_of_(-5114, "timezone hour", 15, -12, 14);
    EXPECT_STREQ(error.file, "number_add.cpp");
    EXPECT_STREQ(error.function, "number_add");
    EXPECT_EQ(error.line, 42);
    ASSERT_EQ(error.arg_count, 4);
    EXPECT_STREQ(error.args[0], "timezone hour");
    EXPECT_STREQ(error.args[1], "15");
    EXPECT_STREQ(error.args[2], "-12");
    EXPECT_STREQ(error.args[3], "14");
    EXPECT_STREQ(error.message,
                 "The value 15 of the field \"timezone hour\" is out of range: -12 to 14 is accepted.");
}

TEST(Error, EmptyRemarkLeavesNoPunctuation) {
    EXPECT_STREQ(error_of_(-5113, "month", "Foo", "Inconsistent with NLS_DATE_LANGUAGE").message,
                 "Invalid month: \"Foo\" (Inconsistent with NLS_DATE_LANGUAGE).");
    EXPECT_STREQ(error_of_(-5113, "month", "Foo", "").message, "Invalid month: \"Foo\".");
}

TEST(Error, ArgumentsAreDataNotPlaceholders) {
    EXPECT_STREQ(error_of_(-5113, "day", "{3} ({1}) %s%n", "").message, "Invalid day: \"{3} ({1}) %s%n\".");
}

TEST(Error, OverlongTextsAreCutBetweenCharacters) {
    const std::string ascii(1000, 'x');
    EXPECT_EQ(error_of_(-5112, ascii.c_str()).args[0], std::string(DV_ERROR_TEXT_MAX - 1, 'x'));

    std::string hangul;  // three bytes each: 63 bytes hold 21 characters, one byte shifted only 20
    for (int i = 0; i < 50; ++i) hangul += "\xEA\xB0\x80";
    EXPECT_EQ(std::strlen(error_of_(-5112, hangul.c_str()).args[0]), 63U);
    const std::string shifted = hangul.substr(0, 60).insert(0, 1, 'x');
    EXPECT_EQ(error_of_(-5112, (shifted + hangul).c_str()).args[0], shifted);
}

TEST(Error, NullTextAndUnknownCodeAreHarmless) {
    EXPECT_STREQ(error_of_(-5112, static_cast<const char *>(nullptr)).args[0], "(null)");
    const dv_error_t error = error_of_(-1234);
    EXPECT_STREQ(error.message, "Unknown error -1234.");
    EXPECT_EQ(error.arg_count, 0);
    EXPECT_EQ(dv_error_text(-1234), nullptr);
}

TEST(Error, RethrowKeepsTheWholeRecord) {
    const dv_error_t first = error_of_(-5111, "1234.50", 5, 2);
    dv_error_t second;
    EXPECT_EQ(raise_of([&] { dv_rethrow(&first); }, &second), -5111);
    EXPECT_EQ(std::memcmp(&first, &second, sizeof first), 0);
}

TEST(Error, ProtectNestsAndReturnsZeroWithoutRaise) {
    int inner = 0;
    const int outer = raise_of([&] {
        inner = raise_of([] { error_of_(-5070); });
        dv_err_and_jmp("error_test.cpp", 1, "outer", 0, 0, -5069);
    });
    EXPECT_EQ(inner, 0);
    EXPECT_EQ(outer, -5069);
}

TEST(Error, EveryCodeHasASentenceOfItsOwn) {
    std::set<std::string> sentences;
    for (int code = -20000; code < 0; ++code) {
        const char *const text = dv_error_text(code);
        if (text == nullptr) continue;
        SCOPED_TRACE(code);
        EXPECT_EQ(text[std::strlen(text) - 1], '.');
        EXPECT_LT(std::strlen(text) + size_t{4} * DV_ERROR_TEXT_MAX, size_t{DV_ERROR_MESSAGE_MAX});
        EXPECT_TRUE(sentences.insert(text).second) << text;
    }
    EXPECT_EQ(dv_error_text(0), nullptr);
    EXPECT_EQ(dv_error_text(INT32_MIN), nullptr);
    EXPECT_NE(dv_error_text(-11035), nullptr);
    EXPECT_NE(dv_error_text(-3005), nullptr);
}

TEST(ErrorDeathTest, RaiseThatNobodyCatchesAbortsWithMessageAndPlace) {
    EXPECT_DEATH(dv_err_and_jmp("number_div.cpp", 12, "number_div", 0, 0, -5070),
                 "number_div.cpp:12: number_div: error -5070 .*divided by zero");
}

TEST(SystemAllocator, AllocatesAndRaisesWhenThereIsNoMemory) {
    allocator_t *const heap = _system_allocator;
    auto *block = static_cast<uchar *>(heap->calloc(heap, 5, 3, __FILE__, __LINE__));
    ASSERT_NE(block, nullptr);
    EXPECT_EQ(block[14], 0);
    block[14] = 7;
    block = static_cast<uchar *>(heap->realloc(heap, block, 5000, __FILE__, __LINE__));
    ASSERT_NE(block, nullptr);
    EXPECT_EQ(block[14], 7);
    heap->free(heap, block, __FILE__, __LINE__);

    dv_error_t error;
    EXPECT_EQ(raise_of([=] { heap->throw_(heap, "here.cpp", 3); }, &error), DV_ERR_NO_MEMORY);
    EXPECT_STREQ(error.file, "here.cpp");
}

}  // namespace
