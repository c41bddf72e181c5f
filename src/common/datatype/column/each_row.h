// Operations on columns of values of a fixed width, row by row: a function of values becomes an operation.
//
//     each_row<dv_date_t, int32_t>(
//         [](dv_date_t date, int32_t months) {
//             dv_date_add_month(&date, months, 0);
//             return date;
//         },
//         result, faults, dates, months);
//
// A text among the operands is a row_bytes_t, in either layout of texts. The function is a lambda that owns
// nothing; what raises is the function that it calls.

#ifndef DV_COLUMN_EACH_ROW_H
#define DV_COLUMN_EACH_ROW_H

#include <utility>

#include "column_run.h"

namespace dv::impl {

// Values lie at any address.
template <typename T>
T load_row(const dv_column_t &column, int64_t row) {
    if constexpr (std::is_same_v<T, row_bytes_t>) {
        return text_at(column, row);
    } else {
        T value;
        memcpy(&value, value_at(column, row), sizeof value);
        return value;
    }
}

template <typename T>
void store_row(const dv_column_t &column, int64_t row, const T &value) {
    memcpy(value_at(column, row), &value, sizeof value);
}

// What an operation does to a block before its rows are done one by one: nothing.
struct no_kernel_t {
    uint64_t operator()(int64_t /*row*/, int /*count*/, uint64_t valid) const { return valid; }
};

// For kernels: those of a block's rows that are left where `does` tells of each whether it did it.
template <typename Does>
uint64_t rows_left(uint64_t rows, Does does) {
    uint64_t left = rows;
    for (uint64_t rest = rows; rest != 0; rest &= rest - 1) {
        if (does(std::countr_zero(rest))) left ^= rest & (0 - rest);
    }
    return left;
}

template <typename Function, typename Kernel, typename... Operands>
struct each_row_t {
    const dv_column_t *operand[sizeof...(Operands)];
    dv_column_t *result;
    Function function;
    Kernel kernel;  // (row, count, valid): rows that are left; it takes no values away

    uint64_t block(int64_t row, int count, const uint64_t &valid) const { return kernel(row, count, valid); }
    bool row(int64_t row) const {
        row_(row, std::index_sequence_for<Operands...>());
        return true;
    }
    void no_value(int64_t /*row*/) const {}

  private:
    template <size_t... I>
    void row_(int64_t row, std::index_sequence<I...>) const {
        store_row(*result, row, function(load_row<Operands>(*operand[I], row)...));
    }
};

// With a kernel for blocks of rows.
template <typename... Operands, typename Function, typename Kernel>
void each_row_with(Kernel kernel, Function function, dv_column_t *result, dv_column_faults_t *faults,
                   const auto *...columns) {
    each_row_t<Function, Kernel, Operands...> operation = {{columns...}, result, function, kernel};
    column_run(operation, result->count, faults);
}

template <typename... Operands, typename Function>
void each_row(Function function, dv_column_t *result, dv_column_faults_t *faults, const auto *...columns) {
    each_row_with<Operands...>(no_kernel_t(), function, result, faults, columns...);
}

}  // namespace dv::impl

#endif  // DV_COLUMN_EACH_ROW_H
