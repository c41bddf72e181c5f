#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <limits>

#include "column_support.h"
#include "dvtypes/column_number.h"

namespace dv::test {
namespace {

constexpr values_t _numbers = {values_t::number, 0};

template <typename Machine>
constexpr values_t _machine = {values_t::fixed, sizeof(Machine)};

template <typename Machine>
row_t row_of_machine_(Machine value) {
    return std::string(reinterpret_cast<const char *>(&value), sizeof value);
}

template <typename Machine>
Machine machine_of_(const std::string &row) {
    Machine value;
    std::memcpy(&value, row.data(), sizeof value);
    return value;
}

using column_function_t = void (*)(const dv_column_t *, dv_column_t *, dv_column_faults_t *);

template <typename Machine>
std::string fault_of_from_(rows_t rows, column_function_t columns, void (*single)(number_t *, Machine)) {
    column_case_t c = {{std::move(rows)}, {_machine<Machine>}, _numbers};
    c.room = static_cast<int64_t>(c.operands[0].size()) * 22;
    c.run = [=](dv_column_t *const *operands, dv_column_t *result, dv_column_faults_t *faults) {
        columns(operands[0], result, faults);
    };
    c.single = [=](const std::vector<std::string> &values) {
        return number_outcome({}, [&](number_t *x) { single(x, machine_of_<Machine>(values[0])); });
    };
    return column_fault(c);
}

template <typename Machine>
std::string fault_of_to_(const rows_t &rows, column_function_t columns,
                         void (*single)(const number_t *, Machine *)) {
    column_case_t c = {{rows}, {_numbers}, _machine<Machine>};
    c.run = [=](dv_column_t *const *operands, dv_column_t *result, dv_column_faults_t *faults) {
        columns(operands[0], result, faults);
    };
    c.single = [=](const std::vector<std::string> &values) {
        const number_t x = number_of(values[0]);
        Machine value{};
        const int code = raise_of([&] { single(&x, &value); });
        return code != 0 ? row_outcome_t{code, std::nullopt} : row_outcome_t{0, row_of_machine_(value)};
    };
    return column_fault(c);
}

// Of every magnitude, those at powers of ten and of two, and the ends of the range.
template <typename Int>
rows_t integers_() {
    number_source source(20261122);
    rows_t rows;
    for (Int ten = 1; ten <= std::numeric_limits<Int>::max() / 10; ten = static_cast<Int>(ten * 10)) {
        for (const int by : {-1, 0, 1}) {
            rows.push_back(row_of_machine_<Int>(static_cast<Int>(ten + by)));
            rows.push_back(row_of_machine_<Int>(static_cast<Int>(-ten - by)));
        }
    }
    rows.push_back(row_of_machine_(std::numeric_limits<Int>::min()));
    rows.push_back(row_of_machine_(std::numeric_limits<Int>::max()));
    for (long i = 0; i < scaled(100'000); ++i) {
        const auto value = static_cast<Int>(source.bits());
        rows.push_back(row_of_machine_<Int>(static_cast<Int>(value >> source.pick(0, 8 * sizeof(Int) - 1))));
        if (source.pick(0, 30) == 0) rows.push_back(std::nullopt);
    }
    return rows;
}

TEST(NumberColumn, TakesMachineNumbersAsTheFunctionsForOneValue) {
    EXPECT_EQ(fault_of_from_<int32_t>(integers_<int32_t>(), number_column_from_int32, number_from_int32), "");
    EXPECT_EQ(fault_of_from_<int64_t>(integers_<int64_t>(), number_column_from_int64, number_from_int64), "");

    number_source source(3);
    rows_t doubles;
    for (const double value : {0.0, -0.0, 0.1, 1e126, -1e300, 1e-131, std::nan(""), HUGE_VAL})
        doubles.push_back(row_of_machine_(value));
    for (long i = 0; i < scaled(50'000); ++i) {
        const double any = std::bit_cast<double>(source.bits());
        const double amount = source.pick(-10'000'000, 10'000'000) / 100.0;
        doubles.push_back(row_of_machine_(source.pick(0, 1) == 0 ? any : amount));
    }
    EXPECT_EQ(fault_of_from_<double>(std::move(doubles), number_column_from_double, number_from_double), "");
}

TEST(NumberColumn, GivesMachineNumbersAsTheFunctionsForOneValue) {
    number_source source(4);
    rows_t rows;
    for (long i = 0; i < scaled(100'000); ++i) {
        number_t x = source.any();
        if (source.pick(0, 1) == 0)
            number_from_int64(&x, static_cast<int64_t>(source.bits()) >> source.pick(0, 63));
        if (source.pick(0, 3) == 0) x = source.pair_for(x);  // a digit more or less, a fraction
        rows.push_back(source.pick(0, 30) == 0 ? std::nullopt : row_of(x));
    }
    const assertion_watch quiet;
    for (const row_t &row : numbers_with_any_byte(source)) rows.push_back(row);
    EXPECT_EQ(fault_of_to_<int32_t>(rows, number_column_to_int32, number_to_int32), "");
    EXPECT_EQ(fault_of_to_<int64_t>(rows, number_column_to_int64, number_to_int64), "");
    EXPECT_EQ(fault_of_to_<double>(rows, number_column_to_double, number_to_double), "");
}

}  // namespace
}  // namespace dv::test
