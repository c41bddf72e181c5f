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

// The relation row by row, in the layouts that kernels take and in another.
void expect_order_(const decimal_type_t &x_type, const decimal_type_t &y_type, const rows_t &x_rows,
                   const rows_t &y_rows, const shape_t &shape, bool is_constant) {
    test_column x_values(x_rows, kind_of(x_type), shape), y_values(y_rows, kind_of(y_type), shape);
    const dv_decimal_column_t x = decimals(*x_values.get(), x_type);
    dv_decimal_column_t y = decimals(*y_values.get(), y_type);
    if (is_constant) {
        y.column.stride = 0;
        y.column.validity = nullptr;
    }
    const int scale = std::max(x_type.scale, y_type.scale);
    const auto in_units = [&](const row_t &row, const decimal_type_t &type) {
        return big_t(big_of(decimal_value(*row)) * big_power_of_ten(scale - type.scale));
    };
    std::string bits((x_rows.size() + 7) / 8 + 1, '\x5A');
    for (int relation = DV_COLUMN_LT; relation <= DV_COLUMN_GE; ++relation) {
        dv_decimal_column_compare(&x, &y, static_cast<dv_column_relation_e>(relation),
                                  reinterpret_cast<uint8_t *>(bits.data()));
        for (size_t i = 0; i < x_rows.size(); ++i) {
            const row_t &y_row = y_rows[is_constant ? 0 : i];
            bool wanted = false;
            if (x_rows[i] && y_row) {
                const int order = in_units(x_rows[i], x_type).compare(in_units(y_row, y_type));
                wanted = (relation & (order < 0   ? DV_COLUMN_LT
                                      : order > 0 ? DV_COLUMN_GT
                                                  : DV_COLUMN_EQ)) != 0;
            }
            const bool got = (static_cast<uint8_t>(bits[i / 8]) >> i % 8 & 1) != 0;
            ASSERT_EQ(got, wanted) << "row " << i << " relation " << relation << " level "
                                   << dv_vector_level() << " scales " << x_type.scale << " " << y_type.scale;
        }
        for (size_t i = x_rows.size(); i < 8 * bits.size(); ++i) {
            ASSERT_EQ(static_cast<uint8_t>(bits[i / 8]) >> i % 8 & 1, 0x5A >> i % 8 & 1);
        }
    }
}

TEST(DecimalColumn, ComparesValuesOfAnyScales) {
    decimal_source source(15);
    const auto near = [&](const decimal_type_t &type, long count) {
        rows_t rows = source.rows(type, count);
        for (row_t &row : rows) {
            if (source.numbers().pick(0, 2) != 0 && row)
                row = decimal_row(type, source.numbers().pick(-300, 300));
        }
        return rows;
    };
    for (const auto &c : _compared) {
        rows_t x = near(c.x, 700), y = near(c.y, 700);
        for (size_t i = 0; i < x.size(); i += 5) {
            if (c.x.bytes == c.y.bytes) y[i] = x[i];
        }
        if (!y[0]) y[0] = decimal_row(c.y, -250);
        for (each_level levels; levels.next();) {
            for (const shape_t &shape : {shape_t{false, 0, 3}, shape_t{false, 5, 0}}) {
                expect_order_(c.x, c.y, x, y, shape, /*is_constant=*/false);
            }
        }
        for (long constant = 0; constant < scaled(10); ++constant) {
            do {
                y = near(c.y, 1);
            } while (!y[0]);
            y.resize(x.size());
            for (each_level levels; levels.next();) {
                expect_order_(c.x, c.y, x, y, {false, 0, 1}, /*is_constant=*/true);
            }
        }
    }
}

}  // namespace
}  // namespace dv::test
