// Arithmetic against the long-hand twin: random and adversarial operands, all rounding modes, over two
// million checks in a plain run (DV_TEST_ROUNDS multiplies). Records and raised codes must both agree.

#include <gtest/gtest.h>

#include "number_properties.h"

using namespace dv::test;

namespace {

class NumberReference : public testing::TestWithParam<operation_t> {};

TEST_P(NumberReference, AgreesInEveryModeOnRandomOperands) {
    number_source source(1);
    for (long round = scaled(350'000); round > 0; --round) {
        const number_t x = source.any();
        const number_t y = source.pair_for(x);
        const number_t &right = source.pick(0, 19) == 0 ? x : y;  // now and then one record as both
        ASSERT_EQ(arithmetic_fault(GetParam(), x, right, source.pick(0, 6)), "");
    }
}

// What is not random enough above: both ends of the range and the smallest steps, each against each.
TEST_P(NumberReference, AgreesInEveryModeOnEdgeOperands) {
    const std::vector<number_t> edges = nums(
        "0 1 -2 3 5 7 -9 10 11 50 99 100 -101 0.5 0.05 0.99 1E-38 1E-39 -1E-40 99999999 100000000 100000001 "
        "1.0000000000000000000000000000000000001 9.9999999999999999999999999999999999999 "
        "99.999999999999999999999999999999999999 1E125 -9E125 1E124 "
        "-9.9999999999999999999999999999999999999E125 "
        "9.9999999999999999999999999999999999999E125 9.9999999999999999999999999999999999999E-130 "
        "1E-130 -2E-130 1.5E-130 1.5E-129 1E63 1E62 3.3E-65 1E-65 1E-66 5E87 -4.99E87 49999999 50000000 "
        "33333333333333333333333333333333333333 49999999999999999999999999999999999999.5E-1 "
        "-50000000000000000000000000000000000000 1.00000000000000000001E-65 9.9999999999999999999E-66 "
        "9999999999999999 10000000000000001");
    for (const number_t &x : edges) {
        for (const number_t &y : edges) {
            for (int mode = 0; mode <= 6; ++mode) ASSERT_EQ(arithmetic_fault(GetParam(), x, y, mode), "");
        }
    }
}

// x * (10^k / x) and its neighbours: the carry of a product that is rounded up may run through all its
// digits.
TEST(NumberArithmetic, CarriesProductsIntoPowersOfTen) {
    number_source source(3);
    for (long round = scaled(30'000); round > 0; --round) {
        const int top = source.pick(0, 3) != 0 ? source.pick(-60, 60) : source.pick(124, 126);
        const decimal_t x = decode(source.with_digits(source.pick(1, 38), top / 2 + source.pick(-9, 9)));
        decimal_t y = twin_div({1, 0}, x, NUMBER_RMODE_TRUNC);
        y.exponent += top;
        const decimal_t unit{source.pick(-3, 3), top_position(y) - NUMBER_PRECISION_MAX + 1};
        const decimal_t near = twin_add(y, unit, NUMBER_RMODE_TRUNC);
        ASSERT_EQ(arithmetic_fault(operations[2], encode(x), encode(near), source.pick(0, 6)), "");
    }
}

INSTANTIATE_TEST_SUITE_P(Operations, NumberReference, testing::ValuesIn(operations),
                         [](const auto &param) { return param.param.name; });

}  // namespace
