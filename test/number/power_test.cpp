// Square roots by their squares in exact integers; roots, powers and exponentials against the twin that takes
// every step, in every rounding mode, and by documented results.

#include <gtest/gtest.h>

#include <dvtypes/dvtypes.hpp>

#include "number_properties.h"

using namespace dv::test;

namespace {

const operation_t &_sqrt = power_operations[0];
const operation_t &_pow = power_operations[1];
const operation_t &_exp = power_operations[2];

// Rounded half up, the root is within half a unit of its 38th digit: its square is beside the operand.
TEST(NumberSqrt, SquaredBracketsTheOperandAtThe38thDigit) {
    number_source source(61);
    for (long round = scaled(1'000'000); round > 0; --round) {
        number_t x = source.any();
        number_abs(&x);
        const outcome_t got = ours(x, number_sqrt);
        ASSERT_EQ(got.code, 0) << describe(x);
        const decimal_t root = decode(got.value);
        const int tenth = top_position(root) - NUMBER_PRECISION_MAX;
        const big_t digits = root.digits * pow(big_t(10), static_cast<unsigned>(root.exponent - tenth));
        if (digits == 0) continue;
        ASSERT_LE(compare({(digits - 5) * (digits - 5), 2 * tenth}, decode(x)), 0)
            << describe(x) << describe(got);
        ASSERT_GT(compare({(digits + 5) * (digits + 5), 2 * tenth}, decode(x)), 0)
            << describe(x) << describe(got);
    }
}

// Besides any, operands beside squares: of short roots (exact results), of roots of 38 digits (results that
// are nearly so) and of 39 and 40 (results beside a tie).
TEST(NumberSqrt, AgreesWithTheTwinInEveryMode) {
    number_source source(62);
    for (long round = scaled(400'000); round > 0; --round) {
        number_t x = source.any();
        if (source.pick(0, 2) != 0) {
            decimal_t root = decode(source.with_digits(source.pick(1, 38), source.pick(-46, 61)));
            if (source.pick(0, 1) != 0)
                root = {root.digits * 100 + 5 * source.pick(0, 19), root.exponent - 2};
            const decimal_t square = twin_mul(root, root, source.pick(0, 1));
            const int last_digit = top_position(square) - NUMBER_PRECISION_MAX + 1;
            x = encode(twin_add(square, {source.pick(-2, 2), last_digit}, 0));
        }
        ASSERT_EQ(arithmetic_fault(_sqrt, x, x, source.pick(0, 6)), "");
    }
}

using whole_t = boost::multiprecision::cpp_int;

whole_t whole_(const std::vector<uint32_t> &limbs) {
    whole_t value = 0;
    for (const uint32_t limb : limbs) value = value * 100'000'000 + limb;
    return value;
}

// Limbs in zeros, nines and noise; half of them below a square, where estimates of limbs are one too large.
TEST(NumberUiSqrt, GivesTheIntegerRootAndTheRemainder) {
    number_source source(64);
    for (long round = scaled(100'000); round > 0; --round) {
        std::vector<uint32_t> x(static_cast<size_t>(source.pick(1, 40))), root((x.size() + 1) / 2);
        const uint32_t limbs[] = {0, 99'999'999, static_cast<uint32_t>(source.pick(0, 99'999'999))};
        for (uint32_t &limb : x) limb = limbs[source.pick(0, 2)];
        if (source.pick(0, 1) != 0) {
            whole_t square = sqrt(whole_(x)) * sqrt(whole_(x));
            if (square != 0) --square;
            for (size_t i = x.size(); i-- > 0; square /= 100'000'000)
                x[i] = static_cast<uint32_t>(square % 100'000'000);
        }
        const whole_t operand = whole_(x);
        number_ui_sqrt(root.data(), x.data(), static_cast<int>(x.size()));
        ASSERT_TRUE(whole_(root) == sqrt(operand) && whole_(x) == operand - whole_(root) * whole_(root))
            << operand;
    }
}

// Bases near 1, whose roots soon arrive at 1 or at its neighbour, of moderate size, and any; mostly positive.
number_t base_(number_source &source) {
    number_t x =
        source.pick(0, 1) != 0 ? source.with_digits(source.pick(1, 38), source.pick(-4, 4)) : source.any();
    const decimal_t distance{source.pick(-99, 99), -source.pick(2, 39)};
    if (source.pick(0, 2) == 0) x = encode(twin_add({1, 0}, distance, NUMBER_RMODE_TRUNC));
    if (source.pick(0, 9) != 0) number_abs(&x);
    return x;
}

TEST(NumberPower, TakesTheStepsOfTheTwinForIntegralExponents) {
    number_source source(71);
    for (long round = scaled(100'000); round > 0; --round) {
        const int top = source.pick(0, source.pick(0, 9) != 0 ? 1 : 125);
        const decimal_t y = twin_round(decode(source.with_digits(source.pick(1, 38), top)), 0, 0);
        ASSERT_EQ(arithmetic_fault(_pow, base_(source), encode(y), source.pick(0, 6)), "");
    }
    // One record as base and exponent.
    ASSERT_EQ(arithmetic_fault(_pow, *_number_e, *_number_e, NUMBER_RMODE_HALF_UP), "");
}

// Roots of powers of ten whose powers in 38 digits, half up, arrive there from below: the carry runs through
// all digits.
TEST(NumberPower, CarriesIntoAPowerOfTenAsTheTwin) {
    constexpr std::pair<const char *, const char *> roots[] = {
        {"5.8780160722749128306661083050365554744", "13"},
        {"1.9619273742801185661201711934082472949", "41"},
        {"9.5585530946852914575108790123055440981", "51"},
        {"1.6842831130116661411107138977171526557", "53"}};
    for (const auto &[root, degree] : roots) {
        number_t power = num(root);
        const number_t n = num(degree);
        number_pow(&power, &n);
        EXPECT_EQ(power.size, 2) << describe(power);
        for (int mode = 0; mode <= 6; ++mode) ASSERT_EQ(arithmetic_fault(_pow, num(root), n, mode), "");
    }
}

// Half of the exponents have a binary fraction that ends: so every count of roots occurs.
TEST(NumberPower, TakesTheStepsOfTheTwinForFractions) {
    number_source source(72);
    for (long round = scaled(2'000); round > 0; --round) {
        const auto bits = static_cast<unsigned>(source.pick(1, 37));
        const decimal_t ending{big_t(source.bits() % (uint64_t{2} << bits)) * pow(big_t(5), bits),
                               -static_cast<int>(bits)};
        const int top = source.pick(source.pick(0, 3) != 0 ? -3 : -60, 1);
        const number_t any = source.with_digits(source.pick(1, 38), top);
        ASSERT_EQ(arithmetic_fault(_pow, base_(source), any, source.pick(0, 6)), "");
        ASSERT_EQ(arithmetic_fault(_pow, base_(source), encode(ending), source.pick(0, 6)), "");
        ASSERT_EQ(arithmetic_fault(_exp, any, any, source.pick(0, 6)), "");
    }
}

TEST(NumberPower, AndRootsGiveTheDocumentedResults) {
    struct example_t {
        const operation_t &operation;
        const char *x;
        const char *y;
        int code;
        const char *want;
    };
    const example_t examples[] = {
        {_sqrt, "4", "0", 0, "2"},        {_sqrt, "0.01", "0", 0, "0.1"},
        {_sqrt, "-1", "0", -5073, "0"},   {_pow, "2", "10", 0, "1024"},
        {_pow, "2", "-1", 0, "0.5"},      {_pow, "4", "0.5", 0, "2"},
        {_pow, "-8", "0.5", -5073, "0"},  {_pow, "-2", "3", 0, "-8"},
        {_pow, "0", "0", 0, "0"},         {_pow, "0", "-1", -5073, "0"},
        {_pow, "5", "0", 0, "1"},         {_pow, "10", "-200", -5068, "0"},
        {_pow, "0.1", "200", -5069, "0"}, {_exp, "0", "0", 0, "1"},
        {_exp, "-300", "0", -5068, "0"},  {_exp, "1", "0", 0, "2.7182818284590452353602874713526624977"}};
    for (const example_t &c : examples) {
        const number_t y = num(c.y);
        const outcome_t want{c.code, c.code == 0 ? num(c.want) : number_t{}};
        EXPECT_EQ(ours(num(c.x), [&](number_t *r) { c.operation.library(r, &y); }), want)
            << c.operation.name << " " << c.x << ", " << c.y;
    }
    EXPECT_EQ(sqrt(dv::number("6.25")) + pow(dv::number(2), -2) + exp(dv::number(0)), dv::number("3.75"));
}

}  // namespace
