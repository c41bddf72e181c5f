// Models that live for one call.

#include <gtest/gtest.h>

#include <thread>

#include "failing_allocator.h"
#include "model_text.h"

using namespace dv::test;

// Short models need no memory of the allocator; long ones give it back, whether they are read, refused or
// broken.
TEST(OneCallModel, LeavesNothingBehind) {
    const std::string padding(3000, '-');
    std::string pieces;
    for (int i = 0; i < 300; ++i) pieces += "\"x\"-";
    for (const std::string &tail : {std::string(), padding, pieces}) {
        failing_allocator allocator;
        const std::string model = "YYYY-MM-DD" + tail;
        const int size = static_cast<int>(model.size());
        dv_date_t date{};
        dv_error_t error;
        EXPECT_EQ(raise_of([&] { dv_date_from_str_DEPRECATED(&date, "2024-02-29", 0, model.data(), size); }),
                  0);
        EXPECT_EQ(date, make_date(2024, 2, 29));
        EXPECT_EQ(
            raise_of([&] { dv_date_from_str_DEPRECATED(&date, "2024-xx", 0, model.data(), size); }, &error),
            -5113);
        EXPECT_STREQ(error.function, "parse_month_");
        EXPECT_STREQ(error.args[2], "2024-xx");
        const std::string broken = model + "?YYYY";
        EXPECT_EQ(raise_of([&] { dv_date_check_format(broken.data(), static_cast<int>(broken.size())); }),
                  -5112);
        EXPECT_GE(dv_date_get_length(model.data(), size), 10);
        char text[8];
        EXPECT_EQ(dv_date_to_str_DEPRECATED(&date, text, sizeof text, model.data(), size), CONV_STATUS_CUT);
        EXPECT_EQ(allocator.blocks(), 0);
        EXPECT_EQ(allocator.given > 0, !tail.empty() && tail != padding) << tail.size();
    }
}

// What a raise leaves is released by the next call, or at the end of the thread.
TEST(OneCallModel, LeavesNothingBehindInAThreadThatEndsAfterARaise) {
    std::string model = "YYYY-MM-DD";
    for (int i = 0; i < 300; ++i) model += "\"x\"-";
    const int size = static_cast<int>(model.size());
    failing_allocator allocator;
    std::thread([&] {
        dv_date_t date{};
        for (int i = 0; i < 3; ++i) {
            EXPECT_EQ(raise_of([&] { dv_date_from_str_DEPRECATED(&date, "2024-xx", 0, model.data(), size); }),
                      -5113);
        }
    }).join();
    EXPECT_GT(allocator.given, 0);
    EXPECT_EQ(allocator.blocks(), 0);
}
