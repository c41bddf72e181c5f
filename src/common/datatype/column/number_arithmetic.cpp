// Arithmetic on columns of NUMBER.

#include "../number/number_round.h"
#include "../number/number_short.h"
#include "column_run.h"
#include "dvtypes/column_number.h"
#include "number_rows.h"
#include "record_places.h"

namespace dv::impl {
namespace {

// Each returns the rows of `valid` that are left. It reads and writes no other rows than those of the block.
struct number_arithmetic_kernels_t {
    using kernel_t = uint64_t(records_t x, records_t y, int count, uint64_t valid, records_t result);
    kernel_t *add, *sub, *mul;
};

}  // namespace

namespace plain {
namespace {

using short_t = bool (*)(number_t &result, const number_t &x, const number_t &y);

template <short_t calculate>
uint64_t calculate_block(records_t x, records_t y, int /*count*/, uint64_t valid, records_t result) {
    uint64_t left = valid;
    for (uint64_t rest = valid; rest != 0; rest &= rest - 1) {
        const int i = std::countr_zero(rest);
        if (calculate(result[i], x[i], y[i])) left ^= rest & (0 - rest);
    }
    return left;
}

constexpr number_arithmetic_kernels_t kernels = {
    calculate_block<add_short<true>>, calculate_block<add_short<false>>, calculate_block<multiply_short>};

}  // namespace
}  // namespace plain
}  // namespace dv::impl

#define DV_AVX2_KERNELS "number_arithmetic_avx2_kernels.h"
#define DV_AVX512_KERNELS "number_arithmetic_kernels.h"
#include "kernels_by_level.h"

using namespace dv::impl;

namespace {

// After a block of which a kernel did nothing: rows are likely to be of one sort.
constexpr int _skipped_blocks = 15;

using number_function_t = void (*)(number_t *x, const number_t *y);
using kernel_t = number_arithmetic_kernels_t::kernel_t;

template <number_function_t function>
struct arithmetic_t {
    const dv_column_t *operand[2];
    dv_column_t *result;
    kernel_t *kernel;  // NULL: none
    number_result_t values{result};
    int blocks_to_skip = 0;

    uint64_t block(int64_t row, int count, const uint64_t &valid) {
        if (kernel == nullptr || --blocks_to_skip >= 0) return valid;
        number_block_t x_buffer, y_buffer, buffer;
        const records_t x = records_at(*operand[0], row, count, x_buffer);
        const records_t y = records_at(*operand[1], row, count, y_buffer);
        const uint64_t left = kernel(x, y, count, valid, values.block_at(row, buffer));
        blocks_to_skip = left == valid ? _skipped_blocks : 0;
        return values.keep_block(row, valid, left, buffer);
    }

    bool row(int64_t row) {
        number_t x_buffer, y_buffer, buffer;
        const number_t *const x = number_at(*operand[0], row, x_buffer);
        const number_t *y = number_at(*operand[1], row, y_buffer);
        if (x == nullptr || y == nullptr) return false;
        number_t &value = values.place_of(row, buffer);
        if (&value == y && x != y) y = &(y_buffer = *y);  // x goes where y is
        value = *x;
        function(&value, y);
        values.keep(row, value);
        return true;
    }

    void no_value(int64_t row) const { values.store_none(row); }
};

template <number_function_t function>
void calculate_(const dv_column_t *x, const dv_column_t *y, dv_column_t *result, dv_column_faults_t *faults,
                kernel_t *kernel = nullptr) {
    arithmetic_t<function> operation = {{x, y}, result, kernel};
    column_run(operation, result->count, faults);
}

}  // namespace

extern "C" void number_column_add(const dv_column_t *x, const dv_column_t *y, dv_column_t *result,
                                  dv_column_faults_t *faults) {
    if (DV_ASSERT(are_columns(x, y, result)))
        calculate_<number_add>(x, y, result, faults, kernels_in_use().add);
}

extern "C" void number_column_sub(const dv_column_t *x, const dv_column_t *y, dv_column_t *result,
                                  dv_column_faults_t *faults) {
    if (DV_ASSERT(are_columns(x, y, result)))
        calculate_<number_sub>(x, y, result, faults, kernels_in_use().sub);
}

extern "C" void number_column_mul(const dv_column_t *x, const dv_column_t *y, dv_column_t *result,
                                  dv_column_faults_t *faults) {
    if (DV_ASSERT(are_columns(x, y, result)))
        calculate_<number_mul>(x, y, result, faults, kernels_in_use().mul);
}

extern "C" void number_column_div(const dv_column_t *x, const dv_column_t *y, dv_column_t *result,
                                  dv_column_faults_t *faults) {
    if (DV_ASSERT(are_columns(x, y, result))) calculate_<number_div>(x, y, result, faults);
}

extern "C" void number_column_mod(const dv_column_t *x, const dv_column_t *y, dv_column_t *result,
                                  dv_column_faults_t *faults) {
    if (DV_ASSERT(are_columns(x, y, result))) calculate_<number_mod>(x, y, result, faults);
}

extern "C" void number_column_rem(const dv_column_t *x, const dv_column_t *y, dv_column_t *result,
                                  dv_column_faults_t *faults) {
    if (DV_ASSERT(are_columns(x, y, result))) calculate_<number_rem>(x, y, result, faults);
}
