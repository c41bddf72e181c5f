#include <gtest/gtest.h>

#include "decimal_support.h"

namespace dv::test {
namespace {

using arithmetic_function_t = void (*)(const dv_decimal_column_t *, const dv_decimal_column_t *,
                                       dv_decimal_column_t *, dv_column_faults_t *);

struct arithmetic_case {
    const char *name;
    arithmetic_function_t columns;
    decimal_type_t x, y, result;
};
constexpr arithmetic_case _arithmetic[] = {
    {"add, one scale", dv_decimal_column_add, {8, 18, 2}, {8, 18, 2}, {8, 18, 2}},
    {"add, small precision", dv_decimal_column_add, {8, 18, 0}, {8, 18, 0}, {8, 5, 0}},
    {"add, two scales", dv_decimal_column_add, {8, 18, 2}, {8, 18, 7}, {8, 18, 7}},
    {"add, larger scale", dv_decimal_column_add, {8, 18, 0}, {8, 18, 0}, {8, 18, 3}},
    {"add, two widths", dv_decimal_column_add, {8, 18, 2}, {16, 38, 2}, {16, 38, 2}},
    {"add, scales far apart", dv_decimal_column_add, {16, 38, -40}, {16, 38, 20}, {16, 38, 20}},
    {"add, scales 38 apart", dv_decimal_column_add, {16, 38, 0}, {16, 38, 38}, {16, 38, 38}},
    {"subtract, one scale", dv_decimal_column_sub, {8, 18, 2}, {8, 18, 2}, {8, 18, 2}},
    {"subtract, 128 bits", dv_decimal_column_sub, {16, 38, 4}, {16, 38, 2}, {16, 38, 5}},
    {"subtract into 64 bits", dv_decimal_column_sub, {16, 38, 4}, {16, 38, 4}, {8, 18, 4}},
    {"multiply, exact", dv_decimal_column_mul, {8, 9, 2}, {8, 9, 3}, {8, 18, 5}},
    {"multiply, rounded", dv_decimal_column_mul, {8, 18, 2}, {8, 18, 3}, {8, 18, 2}},
    {"multiply, rounded far", dv_decimal_column_mul, {8, 18, 9}, {8, 18, 9}, {8, 18, -8}},
    {"multiply, larger scale", dv_decimal_column_mul, {8, 18, 0}, {8, 18, 0}, {8, 18, 4}},
    {"multiply, 128 bits", dv_decimal_column_mul, {16, 38, 20}, {16, 38, 18}, {16, 38, 10}},
    {"multiply, two widths", dv_decimal_column_mul, {8, 18, 2}, {16, 38, 10}, {16, 38, 12}},
    {"multiply, no digit kept", dv_decimal_column_mul, {16, 38, 60}, {16, 38, 60}, {16, 38, 42}},
    {"multiply, beyond NUMBER", dv_decimal_column_mul, {16, 38, -60}, {16, 38, -60}, {16, 38, -84}},
};

row_outcome_t calculated_(const arithmetic_case &c, int128 x, int128 y) {
    if (c.columns == dv_decimal_column_mul)
        return stored_decimal(c.result, big_of(x) * big_of(y), c.x.scale + c.y.scale);
    const int scale = std::max(c.x.scale, c.y.scale);
    const big_t left = big_of(x) * big_power_of_ten(scale - c.x.scale),
                right = big_of(y) * big_power_of_ten(scale - c.y.scale);
    return stored_decimal(
        c.result, c.columns == dv_decimal_column_add ? big_t(left + right) : big_t(left - right), scale);
}

TEST(DecimalColumn, CalculatesExactlyAndRoundsOnce) {
    decimal_source source(20261122);
    for (const arithmetic_case &c : _arithmetic) {
        const long rows = scaled(1500);
        column_case_t columns = {{source.rows(c.x, rows), source.rows(c.y, rows)},
                                 {kind_of(c.x), kind_of(c.y)},
                                 kind_of(c.result)};
        columns.run = [&](dv_column_t *const *operands, dv_column_t *result, dv_column_faults_t *faults) {
            const dv_decimal_column_t x = decimals(*operands[0], c.x), y = decimals(*operands[1], c.y);
            dv_decimal_column_t z = decimals(*result, c.result);
            c.columns(&x, &y, &z, faults);
        };
        columns.single = [&](const std::vector<std::string> &values) {
            return calculated_(c, decimal_value(values[0]), decimal_value(values[1]));
        };
        EXPECT_EQ(column_fault(columns), "") << c.name;
    }
}

// Kernels take 64 rows side by side, and constants; what fails there must still have its operands.
TEST(DecimalColumn, AddsInPlaceAndConstants) {
    decimal_source source(7);
    constexpr decimal_type_t type = {8, 18, 2};
    for (each_level levels; levels.next();) {
        for (const auto function : {dv_decimal_column_add, dv_decimal_column_sub, dv_decimal_column_mul}) {
            std::vector<int64_t> x(1000), before;
            for (int64_t &value : x) value = static_cast<int64_t>(source.any(type));
            before = x;
            int64_t y = static_cast<int64_t>(source.any(type) >> 2);
            dv_column_t column = {static_cast<int64_t>(x.size()), x.data(), 8, nullptr, 0, nullptr, 0};
            dv_decimal_column_t operand = decimals(column, type), constant = operand;
            constant.column.values = &y;
            constant.column.stride = 0;
            std::vector<int32_t> codes(x.size());
            dv_column_faults_t faults = {codes.data(), nullptr, 0, 0, 0, 0};
            function(&operand, &constant, &operand, &faults);
            const arithmetic_case c = {"", function, type, type, type};
            for (size_t i = 0; i < x.size(); ++i) {
                const row_outcome_t want = calculated_(c, before[i], y);
                ASSERT_EQ(codes[i], want.code) << before[i] << " and " << y;
                if (want.code == 0) {
                    ASSERT_EQ(x[i], decimal_value(*want.value)) << before[i] << " and " << y;
                }
            }
        }
    }
}

constexpr struct {
    decimal_type_t from, to;
} _rescales[] = {
    {{8, 18, 4}, {8, 18, 2}},     {{8, 18, 2}, {8, 18, 4}},     {{16, 38, 10}, {8, 18, 2}},
    {{16, 38, 38}, {16, 38, 0}},  {{8, 18, 2}, {16, 38, 20}},   {{16, 38, 0}, {16, 38, 38}},
    {{16, 38, 127}, {8, 3, -84}}, {{16, 38, -84}, {8, 3, 127}}, {{8, 18, 2}, {8, 4, 2}},
};

TEST(DecimalColumn, RescalesHalfUp) {
    decimal_source source(3);
    for (const auto &c : _rescales) {
        column_case_t columns = {{source.rows(c.from, scaled(2000))}, {kind_of(c.from)}, kind_of(c.to)};
        columns.run = [&](dv_column_t *const *operands, dv_column_t *result, dv_column_faults_t *faults) {
            const dv_decimal_column_t x = decimals(*operands[0], c.from);
            dv_decimal_column_t z = decimals(*result, c.to);
            dv_decimal_column_rescale(&x, &z, faults);
        };
        columns.single = [&](const std::vector<std::string> &values) {
            return stored_decimal(c.to, big_of(decimal_value(values[0])), c.from.scale);
        };
        EXPECT_EQ(column_fault(columns), "") << c.from.scale << " to " << c.to.scale;
    }
}

TEST(DecimalColumn, RefusesOtherTypes) {
    int64_t value = 1, kept = 1;
    constexpr decimal_type_t odd[] = {{4, 9, 0},   {8, 0, 0},    {8, 19, 0},
                                      {16, 39, 0}, {8, 18, -85}, {16, 38, 128}};
    for (const decimal_type_t &type : odd) {
        const assertion_watch watch;
        dv_decimal_column_t x = decimals({1, &value, 8, nullptr, 0, nullptr, 0}, type);
        dv_decimal_column_add(&x, &x, &x, nullptr);
        EXPECT_EQ(watch.count(), 1u);
        EXPECT_EQ(value, kept);
    }
    const assertion_watch watch;
    const dv_decimal_column_t x = decimals({1, &value, 8, nullptr, 0, nullptr, 0}, {8, 18, 2});
    dv_decimal_column_t cents = x;
    cents.scale = 1;
    dv_decimal_column_add(&x, &x, &cents, nullptr);
    uint8_t bit = 0;
    dv_decimal_column_compare(&x, &x, static_cast<dv_column_relation_e>(7), &bit);
    EXPECT_EQ(watch.count(), 2u);
    EXPECT_EQ(value, kept);
}

}  // namespace
}  // namespace dv::test
