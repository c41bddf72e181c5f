// Square roots by their squares in exact integers; roots, powers and exponentials against the twin that takes
// every step, in every rounding mode.

#include <gtest/gtest.h>

#include <span>

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

// Operands beside squares: of short roots (exact results), of roots of 38 digits (results that are nearly so)
// and of 39 and 40 (results beside a tie).
number_t beside_square_(number_source &source) {
    decimal_t root = decode(source.with_digits(source.pick(1, 38), source.pick(-46, 61)));
    if (source.pick(0, 1) != 0) root = {root.digits * 100 + 5 * source.pick(0, 19), root.exponent - 2};
    const decimal_t square = twin_mul(root, root, source.pick(0, 1));
    const int last_digit = top_position(square) - NUMBER_PRECISION_MAX + 1;
    return encode(twin_add(square, {source.pick(-2, 2), last_digit}, 0));
}

TEST(NumberSqrt, AgreesWithTheTwinInEveryMode) {
    number_source source(62);
    for (long round = scaled(400'000); round > 0; --round) {
        number_t x = source.pick(0, 2) == 0 ? source.any() : beside_square_(source);
        ASSERT_EQ(arithmetic_fault(_sqrt, x, x, source.pick(0, 6)), "");
    }
}

using whole_t = boost::multiprecision::cpp_int;

whole_t whole_(std::span<const uint32_t> limbs) {
    whole_t value = 0;
    for (const uint32_t limb : limbs) value = value * 100'000'000 + limb;
    return value;
}

// Limbs in zeros, nines and noise; half of them below a square, where estimates of limbs are one too large.
TEST(NumberUiSqrt, GivesTheIntegerRootAndTheRemainder) {
    number_source source(64);
    for (long round = scaled(100'000); round > 0; --round) {
        constexpr uint32_t guard = 0x5A5A5A5A;  // in front of the operand
        const auto size = static_cast<size_t>(source.pick(1, 40));
        std::vector<uint32_t> memory(1 + size, guard), root((size + 1) / 2);
        const std::span x(memory.data() + 1, size);
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
        ASSERT_EQ(memory[0], guard);
        ASSERT_TRUE(whole_(root) == sqrt(operand) && whole_(x) == operand - whole_(root) * whole_(root))
            << operand;
    }
}

// Roots are developed in binary words: bases whose root ends with a word of all zeros or all ones, nearly.
number_t beside_word_of_root_(number_source &source) {
    const int exponent = -NUMBER_PRECISION_MAX + source.pick(0, 1);
    const big_t unit = pow(big_t(10), static_cast<unsigned>(-exponent)) * (exponent % 2 == 0 ? 1 : 16);
    const big_t word = big_t(1) << 64;
    const big_t root = (sqrt(pow(big_t(10), 37) * (10 + source.bits() % 90) / 10 * unit) / word) * word;
    return encode({(root + source.pick(-9, 9)) * root / unit, exponent});
}

// Bases near 1, whose roots soon arrive at 1 or at its neighbour, of moderate size, and any; mostly positive.
number_t base_(number_source &source) {
    number_t x =
        source.pick(0, 1) != 0 ? source.with_digits(source.pick(1, 38), source.pick(-4, 4)) : source.any();
    const decimal_t distance{source.pick(-99, 99), -source.pick(2, 39)};
    if (source.pick(0, 2) == 0) x = encode(twin_add({1, 0}, distance, NUMBER_RMODE_TRUNC));
    if (source.pick(0, 9) == 0) x = beside_square_(source);
    if (source.pick(0, 9) == 0) x = beside_word_of_root_(source);
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

// The last product is below the end of the range, and rounded to it.
TEST(NumberPower, OverflowsByRounding) {
    const number_t base = encode(twin_read("6.3095734448019324943436013662234386466e100"));
    const number_t exponent = encode(twin_read("1.25"));
    ASSERT_EQ(arithmetic_fault(_pow, base, exponent, NUMBER_RMODE_HALF_UP), "");
    ASSERT_EQ(ours(base, [&](number_t *x) { number_pow(x, &exponent); }).code, -5068);
}

}  // namespace
