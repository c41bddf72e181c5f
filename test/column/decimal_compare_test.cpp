#include <gtest/gtest.h>

#include "decimal_support.h"

namespace dv::test {
namespace {

constexpr struct {
    decimal_type_t x, y;
} _compared[] = {
    {{8, 18, 2}, {8, 18, 2}},    {{8, 18, 2}, {8, 18, 0}},     {{8, 18, 2}, {8, 18, 5}},
    {{8, 18, 0}, {16, 38, 0}},   {{16, 38, 2}, {8, 18, 2}},    {{16, 38, 10}, {16, 38, 10}},
    {{16, 38, 0}, {16, 38, 38}}, {{16, 38, 38}, {16, 38, -1}}, {{8, 18, -84}, {8, 18, 127}},
};

struct operand_t {
    decimal_type_t type;
    rows_t rows;  // one alone: a constant
};

// Which of < = >, that relations consist of, holds; 0: one of the rows has no value.
int order_(const decimal_type_t &x_type, const row_t &x, const decimal_type_t &y_type, const row_t &y) {
    if (!x || !y) return 0;
    const int scale = std::max(x_type.scale, y_type.scale);
    const big_t x_units = big_of(decimal_value(*x)) * big_power_of_ten(scale - x_type.scale);
    const big_t y_units = big_of(decimal_value(*y)) * big_power_of_ten(scale - y_type.scale);
    return x_units < y_units ? DV_COLUMN_LT : x_units > y_units ? DV_COLUMN_GT : DV_COLUMN_EQ;
}

std::vector<int> orders_(const operand_t &x, const operand_t &y) {
    std::vector<int> orders;
    for (size_t i = 0; i < x.rows.size(); ++i) {
        orders.push_back(order_(x.type, x.rows[i], y.type, y.rows[y.rows.size() == 1 ? 0 : i]));
    }
    return orders;
}

// A bit for each row; those behind the last row stay as they were.
void expect_bits_(const std::string &bits, uint8_t before, const std::vector<int> &orders, int relation) {
    for (size_t i = 0; i < 8 * bits.size(); ++i) {
        const bool wanted = i < orders.size() ? (relation & orders[i]) != 0 : (before >> i % 8 & 1) != 0;
        ASSERT_EQ((static_cast<uint8_t>(bits[i / 8]) >> i % 8 & 1) != 0, wanted)
            << "row " << i << " relation " << relation << " level " << dv_vector_level();
    }
}

void expect_relations_(const operand_t &x, const operand_t &y, const shape_t &shape) {
    SCOPED_TRACE("scales " + std::to_string(x.type.scale) + " " + std::to_string(y.type.scale));
    test_column x_values(x.rows, kind_of(x.type), shape), y_values(y.rows, kind_of(y.type), shape);
    const dv_decimal_column_t x_column = decimals(*x_values.get(), x.type);
    dv_decimal_column_t y_column = decimals(*y_values.get(), y.type);
    if (y.rows.size() == 1) {
        y_column.column.count = x_column.column.count;
        y_column.column.stride = 0;
        y_column.column.validity = nullptr;
    }
    const std::vector<int> orders = orders_(x, y);
    for (each_level levels; levels.next();) {
        for (int relation = DV_COLUMN_LT; relation <= DV_COLUMN_GE; ++relation) {
            std::string bits(x.rows.size() / 8 + 2, '\x5A');
            dv_decimal_column_compare(&x_column, &y_column, static_cast<dv_column_relation_e>(relation),
                                      reinterpret_cast<uint8_t *>(bits.data()));
            expect_bits_(bits, 0x5A, orders, relation);
        }
    }
}

// Many are close to 0, so that values of two columns are often close to each other.
row_t value_(decimal_source &source, const decimal_type_t &type) {
    const bool is_close = source.numbers().pick(0, 2) != 0;
    return decimal_row(type, is_close ? source.numbers().pick(-300, 300) : source.any(type));
}

operand_t operand_(decimal_source &source, const decimal_type_t &type) {
    rows_t rows;
    for (int i = 0; i < 700; ++i) {
        rows.push_back(source.numbers().pick(0, 30) == 0 ? std::nullopt : value_(source, type));
    }
    return {type, rows};
}

TEST(DecimalColumn, ComparesValuesOfAnyScales) {
    decimal_source source(15);
    for (const auto &c : _compared) {
        const operand_t x = operand_(source, c.x);
        operand_t y = operand_(source, c.y);
        for (size_t i = 0; c.x.bytes == c.y.bytes && i < x.rows.size(); i += 5) y.rows[i] = x.rows[i];
        expect_relations_(x, y, {false, 0, 3});
        expect_relations_(x, y, {false, 5, 0});
    }
}

TEST(DecimalColumn, ComparesWithAConstantOfAnyScale) {
    decimal_source source(16);
    for (const auto &c : _compared) {
        const operand_t x = operand_(source, c.x);
        for (long round = scaled(10); round > 0; --round) {
            expect_relations_(x, {c.y, {value_(source, c.y)}}, {false, 0, 1});
        }
    }
}

}  // namespace
}  // namespace dv::test
