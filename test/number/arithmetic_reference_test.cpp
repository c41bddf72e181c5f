// Arithmetic against the long-hand twin: random and adversarial operands, all rounding modes, over two
// million checks in a plain run (DV_TEST_ROUNDS multiplies). Records and raised codes must both agree.

#include <gtest/gtest.h>

#include "number_support.h"

using namespace dv::test;

namespace {

using library_t = void(number_t *, const number_t *);
using twin_t = decimal_t(const decimal_t &, const decimal_t &, int);

struct operation_t {
    const char *name;
    library_t *library;
    twin_t *twin;
    long rounds;
};
constexpr operation_t _operations[] = {
    {"add", number_add, twin_add, 450'000}, {"sub", number_sub, twin_sub, 450'000},
    {"mul", number_mul, twin_mul, 450'000}, {"div", number_div, twin_div, 450'000},
    {"mod", number_mod, twin_mod, 300'000}, {"rem", number_rem, twin_rem, 300'000},
};
void PrintTo(const operation_t &operation, std::ostream *out) { *out << operation.name; }

outcome_t library_result_(const operation_t &operation, const number_t &x, const number_t &y) {
    return ours(x, [&](number_t *r) { operation.library(r, &y); });
}

outcome_t twin_result_(const operation_t &operation, const number_t &x, const number_t &y, int mode) {
    return theirs([&] { return operation.twin(decode(x), decode(y), mode); });
}

class NumberArithmetic : public testing::TestWithParam<operation_t> {};

TEST_P(NumberArithmetic, AgreesWithTheTwinInEveryMode) {
    number_source source(1);
    for (long round = scaled(GetParam().rounds); round > 0; --round) {
        const number_t x = source.any();
        const number_t y = source.pair_for(x);
        const int mode = source.pick(0, 6);
        const rounding_mode in_mode(mode);
        ASSERT_EQ(library_result_(GetParam(), x, y), twin_result_(GetParam(), x, y, mode))
            << describe(x) << GetParam().name << " " << describe(y) << " mode " << mode;
    }
}

// What is not random enough above: both ends of the range and the smallest steps, each against each.
TEST_P(NumberArithmetic, AgreesWithTheTwinOnEdgeOperands) {
    constexpr const char *edges[] = {"0",
                                     "1",
                                     "2",
                                     "3",
                                     "5",
                                     "7",
                                     "9",
                                     "10",
                                     "11",
                                     "50",
                                     "99",
                                     "100",
                                     "101",
                                     "0.5",
                                     "0.05",
                                     "0.99",
                                     "1E-38",
                                     "1E-39",
                                     "1E-40",
                                     "99999999",
                                     "100000000",
                                     "100000001",
                                     "1.0000000000000000000000000000000000001",
                                     "9.9999999999999999999999999999999999999",
                                     "99.999999999999999999999999999999999999",
                                     "1E125",
                                     "9E125",
                                     "1E124",
                                     "9.9999999999999999999999999999999999999E125",
                                     "9.9999999999999999999999999999999999999E-130",
                                     "1E-130",
                                     "2E-130",
                                     "1.5E-130",
                                     "1.5E-129",
                                     "1E63",
                                     "1E62",
                                     "3.3E-65",
                                     "1E-65",
                                     "1E-66",
                                     "5E87",
                                     "4.99E87",
                                     "33333333333333333333333333333333333333",
                                     "49999999999999999999999999999999999999.5E-1",
                                     "50000000000000000000000000000000000000",
                                     "1.00000000000000000001E-65",
                                     "9.9999999999999999999E-66",
                                     "49999999",
                                     "50000000",
                                     "9999999999999999",
                                     "10000000000000001"};
    for (const int mode : _all_modes) {
        const rounding_mode in_mode(mode);
        for (const char *left : edges) {
            for (const char *right : edges) {
                for (int signs = 0; signs < 4; ++signs) {
                    const number_t x = num((signs & 1 ? "-" : "") + std::string(left));
                    const number_t y = num((signs & 2 ? "-" : "") + std::string(right));
                    ASSERT_EQ(library_result_(GetParam(), x, y), twin_result_(GetParam(), x, y, mode))
                        << describe(x) << GetParam().name << " " << describe(y) << " mode " << mode;
                }
            }
        }
    }
}

TEST_P(NumberArithmetic, TakesOneRecordAsBothOperands) {
    number_source source(2);
    for (long round = scaled(20'000); round > 0; --round) {
        const number_t x = source.any();
        const outcome_t same = ours(x, [&](number_t *r) { GetParam().library(r, r); });
        ASSERT_EQ(same, twin_result_(GetParam(), x, x, NUMBER_RMODE_HALF_UP))
            << describe(x) << GetParam().name;
    }
}

TEST_P(NumberArithmetic, WritesInsideItsRecordOnlyAndLeavesTheSecondOperand) {
    number_source source(3);
    for (long round = scaled(20'000); round > 0; --round) {
        guarded_number x(source.any());
        const number_t y_before = source.pair_for(*x.get());
        guarded_number y(y_before);
        raise_of([&] { GetParam().library(x.get(), y.get()); });
        ASSERT_TRUE(x.intact() && y.intact()) << GetParam().name << " " << describe(y_before);
        ASSERT_EQ(std::memcmp(y.get(), &y_before, sizeof y_before), 0) << GetParam().name;
        ASSERT_TRUE(number_is_valid_ptr(x.get())) << GetParam().name;
    }
}

INSTANTIATE_TEST_SUITE_P(Operations, NumberArithmetic, testing::ValuesIn(_operations),
                         [](const auto &param) { return param.param.name; });

struct example_t {
    library_t *operation;
    const char *x;
    const char *y;
    int mode;
    const char *want;  // text, or nullptr with a code
    int code;
};
constexpr example_t _examples[] = {
    {number_add, "1", "1E-38", 3, "1", 0},
    {number_add, "1", "1E-38", 1, "1.0000000000000000000000000000000000001", 0},
    {number_add, "1", "1E-40", 1, "1", 0},
    {number_add, "99", "1", 3, "100", 0},
    {number_add, "9.9999999999999999999999999999999999999E125", "1E125", 3, nullptr, -5068},
    {number_sub, "5", "5", 3, "0", 0},
    {number_sub, "-5", "-5", 3, "0", 0},
    {number_sub, "1.0000000000000000000000000000000000001", "1", 3, "1E-37", 0},
    {number_sub, "1.1E-129", "1.09E-129", 3, nullptr, -5069},
    {number_mul, "1E125", "10", 3, nullptr, -5068},
    {number_mul, "1E-130", "1E-10", 3, nullptr, -5069},
    {number_div, "1", "3", 3, "0.33333333333333333333333333333333333333", 0},
    {number_div, "2", "3", 3, "0.66666666666666666666666666666666666667", 0},
    {number_div, "2", "3", 0, "0.66666666666666666666666666666666666666", 0},
    {number_div, "5", "0", 3, nullptr, -5070},
    {number_div, "0", "0", 3, nullptr, -5070},
    {number_mod, "7", "3", 3, "1", 0},
    {number_mod, "-7", "3", 3, "-1", 0},
    {number_mod, "7", "-3", 3, "1", 0},
    {number_mod, "7", "0", 3, "7", 0},
    {number_rem, "7", "3", 3, "1", 0},
    {number_rem, "8", "3", 3, "-1", 0},
    {number_rem, "-7", "3", 3, "-1", 0},
    {number_rem, "7", "0", 3, nullptr, -5070},
};

TEST(NumberArithmeticExamples, GiveTheDocumentedResults) {
    for (const example_t &example : _examples) {
        SCOPED_TRACE(testing::Message() << &example - _examples << ": " << example.x << ", " << example.y);
        const rounding_mode in_mode(example.mode);
        const number_t y = num(example.y);
        const outcome_t got = ours(num(example.x), [&](number_t *r) { example.operation(r, &y); });
        const outcome_t want{example.code, example.want != nullptr ? num(example.want) : number_t{}};
        EXPECT_EQ(got, want);
    }
}

TEST(NumberArithmeticForms, AreTheOperationsTheyStandFor) {
    number_source source(4);
    for (long round = scaled(50'000); round > 0; --round) {
        const number_t x = source.any();
        const number_t y = source.pair_for(x);
        const auto add = ours(x, [&](number_t *r) { number_add(r, &y); });
        const auto sub = ours(x, [&](number_t *r) { number_sub(r, &y); });
        const auto mul = ours(x, [&](number_t *r) { number_mul(r, &x); });
        ASSERT_EQ(ours(x, [&](number_t *r) { number_add_with_mode(r, &y, 1); }), add)
            << describe(x) << describe(y);
        ASSERT_EQ(ours(x, [&](number_t *r) { number_add_with_mode(r, &y, 0); }), sub)
            << describe(x) << describe(y);
        ASSERT_EQ(ours(x, number_sqr), mul) << describe(x);
    }
}

TEST(NumberSign, NegateIsItsOwnInverseAndAbsDropsTheSign) {
    EXPECT_EQ(ours(num("127"), number_negate).value, (number_t{4, 0x3D, {0x7F, 0x65, 0xF0}}));
    number_source source(5);
    for (long round = scaled(100'000); round > 0; --round) {
        const number_t x = source.any();
        decimal_t value = decode(x);
        value.negative = value.digits != 0 && !value.negative;
        const number_t negated = ours(x, number_negate).value;
        ASSERT_EQ(negated, encode(value)) << describe(x);
        ASSERT_EQ(ours(negated, number_negate).value, x);
        value.negative = false;
        ASSERT_EQ(ours(x, number_abs).value, encode(value)) << describe(x);
        ASSERT_EQ(ours(negated, number_abs).value, encode(value)) << describe(x);
    }
}

// A mode outside 0..6 rounds toward zero and says so by an assertion; an exact result needs no mode.
TEST(NumberRoundingMode, OutsideItsRangeTruncatesUnderAnAssertion) {
    for (const int mode : {7, 100, -1}) {
        const rounding_mode in_mode(mode);
        EXPECT_EQ(number_get_roundmode(), mode);
        const number_t three = num("3");
        const assertion_watch watch;
        EXPECT_EQ(ours(num("2"), [&](number_t *r) { number_div(r, &three); }).value,
                  num("0.66666666666666666666666666666666666666"));
        EXPECT_EQ(watch.count(), 1u) << mode;
    }
}

}  // namespace
