// Rounding at a position, and precision and scale, against the twin.

#include <gtest/gtest.h>

#include <climits>

#include "number_properties.h"

using namespace dv::test;

namespace {

TEST(NumberRoundReference, AgreesAtEveryPositionInEveryMode) {
    number_source source(20);
    std::vector<int> positions = {INT_MIN, INT_MIN + 1, -1000, 1000, INT_MAX - 1, INT_MAX};
    for (int pos = -180; pos <= 140; ++pos) positions.push_back(pos);
    for (long round = scaled(400); round > 0; --round) {
        const number_t x = source.any();
        for (const int pos : positions) {
            for (int mode = 0; mode <= 6; ++mode) ASSERT_EQ(rounding_fault(x, pos, mode), "");
        }
    }
}

// Around the first and the last digit, where the rules change.
TEST(NumberRoundReference, AgreesNearTheDigits) {
    number_source source(21);
    for (long round = scaled(400'000); round > 0; --round) {
        const number_t x = source.any();
        const int pos = top_position(decode(x)) - source.pick(-3, 40);
        ASSERT_EQ(rounding_fault(x, pos, source.pick(0, 6)), "");
    }
}

TEST(NumberPrecisionReference, ForceAndCheckAgreeForAnyArguments) {
    constexpr int limits[] = {NUMBER_NOT_GIVEN, INT_MIN, -200, -127, -126, 0, 1, 37, 38, 39, 127, INT_MAX};
    number_source source(22);
    const auto near_limit = [&] { return limits[source.pick(0, std::size(limits) - 1)]; };
    for (long round = scaled(200'000); round > 0; --round) {
        const number_t x = source.any();
        const bool extreme = source.pick(0, 9) == 0;
        const int scale = extreme ? near_limit() : source.pick(-3, 42) - top_position(decode(x));
        const int prec = extreme ? near_limit() : source.pick(0, 40);
        ASSERT_EQ(precision_fault(x, prec, scale), "");
    }
}

TEST(NumberPrecision, NamesTheValueAndTheLimitsItBreaks) {
    dv_error_t error;
    number_t x = num("-1234.567");
    EXPECT_EQ(raise_of([&] { number_force_prec_scale(&x, 5, 2); }, &error), -5111);
    EXPECT_STREQ(error.function, "number_force_prec_scale");
    ASSERT_EQ(error.arg_count, 3);
    EXPECT_STREQ(error.args[0], "-1234.57");
    EXPECT_STREQ(error.args[1], "5");
    EXPECT_STREQ(error.args[2], "2");
}

}  // namespace
