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

TEST(NumberColumn, CalculatesAsTheFunctionsForOneValue) {
    number_source source(20261122);
    const auto rows = static_cast<size_t>(scaled(30'000));
    rows_t x, y;
    for (size_t i = 0; i < rows; ++i) {
        const number_t value = source.any();
        x.push_back(source.pick(0, 20) == 0 ? std::nullopt : row_of(value));
        y.push_back(source.pick(0, 20) == 0 ? std::nullopt : row_of(source.pair_for(value)));
    }
    for (const arithmetic_case &c : _arithmetic) {
        column_case_t columns = {
            {x, y}, {{values_t::number, 0}, {values_t::number, 0}}, {values_t::number, 0}};
        columns.room = static_cast<int64_t>(rows) * 22;
        columns.run = [&](dv_column_t *const *operands, dv_column_t *result, dv_column_faults_t *faults) {
            c.columns(operands[0], operands[1], result, faults);
        };
        columns.single = [&](const std::vector<std::string> &values) {
            const number_t other = number_of(values[1]);
            return number_outcome(number_of(values[0]), [&](number_t *value) { c.single(value, &other); });
        };
        EXPECT_EQ(column_fault(columns), "") << c.name;
    }
}

}  // namespace
}  // namespace dv::test
