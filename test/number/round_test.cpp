// Rounding at a position, and precision and scale, against the twin.

#include <gtest/gtest.h>

#include <climits>

#include "number_support.h"

using namespace dv::test;

namespace {

void expect_round_(const number_t &x, int pos, int mode) {
    const outcome_t got = ours(x, [&](number_t *r) { number_round_at_withmode(r, pos, mode); });
    const outcome_t want = theirs([&] { return twin_round(decode(x), pos, mode); });
    ASSERT_EQ(got, want) << describe(x) << "pos " << pos << " mode " << mode;
}

TEST(NumberRoundAt, AgreesWithTheTwinAtEveryPositionInEveryMode) {
    number_source source(20);
    for (long round = scaled(400); round > 0; --round) {
        const number_t x = source.any();
        for (int pos = -180; pos <= 140; ++pos) {
            for (const int mode : _all_modes) ASSERT_NO_FATAL_FAILURE(expect_round_(x, pos, mode));
        }
        for (const int pos : {INT_MIN, INT_MIN + 1, -1000, 1000, INT_MAX - 1, INT_MAX}) {
            for (const int mode : _all_modes) ASSERT_NO_FATAL_FAILURE(expect_round_(x, pos, mode));
        }
    }
}

// Around the first and the last digit, where the rules change.
TEST(NumberRoundAt, AgreesWithTheTwinNearTheDigits) {
    number_source source(21);
    for (long round = scaled(400'000); round > 0; --round) {
        const number_t x = source.any();
        if (x.size == 1) continue;
        const int top = top_position(decode(x));
        expect_round_(x, top - source.pick(-3, 40), source.pick(0, 6));
        if (HasFatalFailure()) return;
    }
}

struct round_example_t {
    const char *x;
    int pos;
    int mode;
    const char *want;
};
constexpr round_example_t _round_examples[] = {
    {"2.5", 0, 4, "2"},     {"2.5", 0, 3, "3"},    {"2.51", 0, 2, "3"},   {"2.5", 0, 2, "2"},
    {"0.004", 0, 3, "0"},   {"0.004", 0, 1, "1"},  {"0.004", 0, 5, "1"},  {"0.004", 0, 6, "0"},
    {"-0.004", 0, 6, "-1"}, {"-0.004", 0, 5, "0"}, {"99.6", 0, 3, "100"}, {"6", 1, 3, "10"},
    {"-6", 1, 3, "-10"},    {"5", 1, 4, "0"},      {"15", 1, 4, "20"},    {"0.06", -1, 3, "0.1"},
};

TEST(NumberRoundAt, GivesTheDocumentedResults) {
    for (const auto &c : _round_examples) {
        EXPECT_EQ(ours(num(c.x), [&](number_t *r) { number_round_at_withmode(r, c.pos, c.mode); }),
                  (outcome_t{0, num(c.want)}))
            << c.x << " at " << c.pos << " mode " << c.mode;
    }
    EXPECT_EQ(number_t{}, ours(*_number_null, [](number_t *r) { number_round_at_withmode(r, 3, 1); }).value);
}

TEST(NumberRoundAt, TruncatesInAnUnknownModeUnderAnAssertion) {
    for (const int mode : {7, 255, -1}) {
        const assertion_watch watch;
        EXPECT_EQ(ours(num("2.9"), [&](number_t *r) { number_round_at_withmode(r, 0, mode); }).value,
                  num("2"));
        EXPECT_EQ(watch.count(), 1u) << mode;
        EXPECT_EQ(ours(num("2"), [&](number_t *r) { number_round_at_withmode(r, 0, mode); }).value, num("2"));
    }
}

constexpr int _limits[] = {NUMBER_NOT_GIVEN, INT_MIN, -200, -127, -126, -3, 0, 1, 2, 5, 37, 38, 39, 127,
                           INT_MAX};

TEST(NumberPrecScale, AgreesWithTheTwin) {
    number_source source(22);
    for (long round = scaled(150'000); round > 0; --round) {
        const number_t x = source.any();
        const int top = x.size == 1 ? 0 : top_position(decode(x));
        const bool extreme = source.pick(0, 9) == 0;
        const int scale =
            extreme ? _limits[source.pick(0, std::size(_limits) - 1)] : source.pick(-3, 42) - top;
        const int prec = extreme ? _limits[source.pick(0, std::size(_limits) - 1)] : source.pick(0, 40);
        const outcome_t got = ours(x, [&](number_t *r) { number_force_prec_scale(r, prec, scale); });
        const outcome_t want = theirs([&] { return twin_force(decode(x), prec, scale); });
        ASSERT_EQ(got, want) << describe(x) << "prec " << prec << " scale " << scale;
        if (scale == NUMBER_NOT_GIVEN && prec < 1) continue;  // a bound for nothing
        ASSERT_EQ(number_check_prec_scale(&x, prec, scale), twin_check(decode(x), prec, scale))
            << describe(x) << "prec " << prec << " scale " << scale;
    }
}

// What was forced fits, and forcing it again changes nothing.
TEST(NumberPrecScale, ForceGivesWhatCheckAccepts) {
    number_source source(23);
    for (long round = scaled(50'000); round > 0; --round) {
        const int scale = source.pick(-20, 60);
        const int prec = source.pick(1, 38);
        const outcome_t forced =
            ours(source.any(), [&](number_t *r) { number_force_prec_scale(r, prec, scale); });
        if (forced.code != 0) continue;
        ASSERT_EQ(number_check_prec_scale(&forced.value, prec, scale), 1) << describe(forced.value);
        ASSERT_EQ(ours(forced.value, [&](number_t *r) { number_force_prec_scale(r, prec, scale); }), forced);
    }
}

TEST(NumberPrecScale, NamesTheValueAndTheLimitsItBreaks) {
    EXPECT_EQ(ours(num("123.456"), [](number_t *r) { number_force_prec_scale(r, 5, 2); }).value,
              num("123.46"));
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
