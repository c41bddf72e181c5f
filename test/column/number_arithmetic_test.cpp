#include <gtest/gtest.h>

#include "column_support.h"
#include "dvtypes/column_number.h"

namespace dv::test {
namespace {

using column_function_t = void (*)(const dv_column_t *, const dv_column_t *, dv_column_t *,
                                   dv_column_faults_t *);

struct arithmetic_case {
    const char *name;
    column_function_t columns;
    void (*single)(number_t *x, const number_t *y);
};
constexpr arithmetic_case _arithmetic[] = {
    {"add", number_column_add, number_add}, {"sub", number_column_sub, number_sub},
    {"mul", number_column_mul, number_mul}, {"div", number_column_div, number_div},
    {"mod", number_column_mod, number_mod}, {"rem", number_column_rem, number_rem},
};

struct operands_t {
    rows_t x, y;
};

operands_t random_operands_(uint64_t seed, long count) {
    number_source source(seed);
    operands_t operands;
    for (long i = 0; i < scaled(count); ++i) {
        const number_t value = source.any();
        operands.x.push_back(source.pick(0, 20) == 0 ? std::nullopt : row_of(value));
        operands.y.push_back(source.pick(0, 20) == 0 ? std::nullopt : row_of(source.pair_for(value)));
    }
    return operands;
}

std::string fault_(const arithmetic_case &c, const operands_t &operands) {
    column_case_t columns = {
        {operands.x, operands.y}, {{values_t::number, 0}, {values_t::number, 0}}, {values_t::number, 0}};
    columns.room = static_cast<int64_t>(operands.x.size()) * 22;
    columns.run = [&](dv_column_t *const *given, dv_column_t *result, dv_column_faults_t *faults) {
        c.columns(given[0], given[1], result, faults);
    };
    columns.single = [&](const std::vector<std::string> &values) {
        const number_t other = number_of(values[1]);
        return number_outcome(number_of(values[0]), [&](number_t *value) { c.single(value, &other); });
    };
    return column_fault(columns);
}

TEST(NumberColumn, CalculatesAsTheFunctionsForOneValue) {
    const operands_t operands = random_operands_(20261122, 30'000);
    for (const arithmetic_case &c : _arithmetic) EXPECT_EQ(fault_(c, operands), "") << c.name;
}

// Either operand is hostile, the other one of about its digits.
TEST(NumberColumn, CalculatesWithAnyBytesAsTheFunctionsForOneValue) {
    const assertion_watch quiet;
    number_source source(20261201);
    operands_t left, right;
    left.x = numbers_with_any_byte(source, {1, 3, 7, 8, 20});
    for (size_t i = 0; i < left.x.size(); ++i)
        left.y.push_back(
            row_of(source.with_digits(source.pick(1, i % 4 == 0 ? 38 : 14), source.pick(-3, 12))));
    right = {left.y, left.x};
    for (const arithmetic_case &c : _arithmetic) {
        EXPECT_EQ(fault_(c, left), "") << c.name;
        EXPECT_EQ(fault_(c, right), "") << c.name;
    }
}

TEST(NumberColumn, RoundsResultsInTheModeInForce) {
    const operands_t operands = random_operands_(1, 5'000);
    for (int mode = NUMBER_RMODE_TRUNC; mode <= NUMBER_RMODE_FLOOR; ++mode) {
        const rounding_mode in_force(mode);
        for (const arithmetic_case &c : _arithmetic) EXPECT_EQ(fault_(c, operands), "") << c.name << mode;
    }
}

// The result where the first operand is, the second, or both.
enum place_t { ON_FIRST, ON_SECOND, ON_BOTH };

std::string fault_in_place_(const arithmetic_case &c, const operands_t &operands, place_t place) {
    test_column x(operands.x, {values_t::number, 0}, {false, 0, -1});
    test_column y(operands.y, {values_t::number, 0}, {false, 0, -1});
    test_column &result = place == ON_SECOND ? y : x;
    dv_column_faults_t faults{};
    c.columns(x.get(), place == ON_BOTH ? x.get() : y.get(), result.get(), &faults);
    for (size_t i = 0; i < operands.x.size(); ++i) {
        const row_t &first = operands.x[i], &second = place == ON_BOTH ? first : operands.y[i];
        row_t wanted;
        if (first && second) {
            const number_t other = number_of(*second);
            wanted = number_outcome(number_of(*first), [&](number_t *to) { c.single(to, &other); }).value;
        }
        if (result.row(static_cast<int64_t>(i)) != wanted)
            return std::string(c.name) + " in place " + std::to_string(place) + ", row " + std::to_string(i);
    }
    return "";
}

TEST(NumberColumn, CalculatesInPlace) {
    const operands_t operands = random_operands_(2, 5'000);
    for (each_level levels; levels.next();) {
        for (const arithmetic_case &c : _arithmetic) {
            for (const place_t place : {ON_FIRST, ON_SECOND, ON_BOTH})
                EXPECT_EQ(fault_in_place_(c, operands, place), "") << "level " << dv_vector_level();
        }
    }
}

}  // namespace
}  // namespace dv::test
