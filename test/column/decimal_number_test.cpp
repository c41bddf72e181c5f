#include <gtest/gtest.h>

#include "decimal_support.h"

namespace dv::test {
namespace {

TEST(DecimalColumn, TakesNumbersExactly) {
    decimal_source source(11);
    for (const decimal_type_t &type : decimal_types) {
        rows_t rows;
        for (long i = 0; i < scaled(3000); ++i) {
            number_t x = source.numbers().any();
            if (source.numbers().pick(0, 3) != 0) {
                x = source.numbers().with_digits(source.numbers().pick(1, 38), source.numbers().pick(-3, 39));
            }
            rows.push_back(source.numbers().pick(0, 20) == 0 ? std::nullopt : row_of(x));
        }
        column_case_t columns = {{rows}, {{values_t::number, 0}}, kind_of(type)};
        columns.run = [&](dv_column_t *const *operands, dv_column_t *result, dv_column_faults_t *faults) {
            dv_decimal_column_t z = decimals(*result, type);
            dv_decimal_column_from_number(operands[0], &z, faults);
        };
        columns.single = [&](const std::vector<std::string> &values) {
            const row_outcome_t outcome = decimal_from_number(type, number_of(values[0]));
            return outcome.code == -5068 ? row_outcome_t{-5111, {}}
                                         : outcome;  // a NUMBER is within its range
        };
        EXPECT_EQ(column_fault(columns), "") << type.bytes << "," << type.precision << "," << type.scale;
    }
}

TEST(DecimalColumn, GivesNumbersExactly) {
    decimal_source source(12);
    for (const decimal_type_t &type : decimal_types) {
        const rows_t rows = source.rows(type, scaled(3000));
        column_case_t columns = {{rows}, {kind_of(type)}, {values_t::number, 0}};
        columns.room = static_cast<int64_t>(rows.size()) * 22;
        columns.run = [&](dv_column_t *const *operands, dv_column_t *result, dv_column_faults_t *faults) {
            const dv_decimal_column_t x = decimals(*operands[0], type);
            dv_decimal_column_to_number(&x, result, faults);
        };
        columns.single = [&](const std::vector<std::string> &values) -> row_outcome_t {
            const big_t value = big_of(decimal_value(values[0]));
            if (abs(value) >= big_power_of_ten(38) && value % 10 != 0) return {-5072, {}};
            return {0, row_of(encode({value, -type.scale}))};
        };
        EXPECT_EQ(column_fault(columns), "") << type.bytes << "," << type.precision << "," << type.scale;
    }
}

}  // namespace
}  // namespace dv::test
