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

// A mode outside 0..6 truncates. It asserts where a digit is decided on: where truncating and rounding up
// differ.
TEST(NumberRoundReference, AnUnknownModeIsReportedWhereItIsAsked) {
    number_source source(23);
    EXPECT_EQ(number_get_roundmode(), NUMBER_RMODE_HALF_UP);
    for (long round = scaled(100'000); round > 0; --round) {
        const number_t x = source.any(), y = source.pair_for(x);
        const int pos = top_position(decode(x)) - source.pick(-3, 40);
        const operation_t &operation =
            operations[static_cast<size_t>(source.pick(0, 3))];  // add, sub, mul, div
        const bool rounds = source.pick(0, 1) != 0;
        const auto in_mode = [&](int mode) {
            return theirs([&] {
                return rounds ? twin_round(decode(x), pos, mode) : operation.twin(decode(x), decode(y), mode);
            });
        };
        const outcome_t want = in_mode(NUMBER_RMODE_TRUNC);
        const rounding_mode unknown(7);
        ASSERT_EQ(number_get_roundmode(), 7);
        const assertion_watch watch;
        const outcome_t got = ours(
            x, [&](number_t *r) { rounds ? number_round_at_withmode(r, pos, 7) : operation.library(r, &y); });
        ASSERT_EQ(got, want) << describe(x) << (rounds ? "round" : operation.name) << describe(y) << pos;
        ASSERT_EQ(watch.count(), in_mode(NUMBER_RMODE_UP) == want ? 0U : 1U)
            << describe(x) << (rounds ? "round" : operation.name) << describe(y) << pos;
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

// A value that an argument cannot hold in full shows its exponent.
TEST(NumberPrecision, NamesTheValueAndTheLimitsItBreaks) {
    const std::string longest = "1" + std::string(62, '0');
    const std::pair<const char *, std::string> cases[] = {
        {"-1234.567", "-1234.57"}, {"1E62", longest}, {"-1E62", "-1E+62"}, {"1.5E100", "1.5E+100"}};
    for (const auto &[value, text] : cases) {
        dv_error_t error;
        number_t x = num(value);
        EXPECT_EQ(raise_of([&] { number_force_prec_scale(&x, 5, 2); }, &error), -5111);
        EXPECT_STREQ(error.function, "number_force_prec_scale");
        ASSERT_EQ(error.arg_count, 3);
        EXPECT_EQ(error.args[0], text);
        EXPECT_STREQ(error.args[1], "5");
        EXPECT_STREQ(error.args[2], "2");
    }
}

}  // namespace
