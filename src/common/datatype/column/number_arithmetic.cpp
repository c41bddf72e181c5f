// Arithmetic on columns of NUMBER.

#include "column_run.h"
#include "dvtypes/column_number.h"
#include "number_rows.h"

using namespace dv::impl;

namespace {

using number_function_t = void (*)(number_t *x, const number_t *y);

template <number_function_t function>
struct arithmetic_t {
    const dv_column_t *operand[2];
    dv_column_t *result;
    number_result_t values{result};

    uint64_t block(int64_t /*row*/, int /*count*/, const uint64_t &valid) const { return valid; }

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
void calculate_(const dv_column_t *x, const dv_column_t *y, dv_column_t *result, dv_column_faults_t *faults) {
    arithmetic_t<function> operation = {{x, y}, result};
    column_run(operation, result->count, faults);
}

}  // namespace

extern "C" void number_column_add(const dv_column_t *x, const dv_column_t *y, dv_column_t *result,
                                  dv_column_faults_t *faults) {
    if (DV_ASSERT(are_columns(x, y, result))) calculate_<number_add>(x, y, result, faults);
}

extern "C" void number_column_sub(const dv_column_t *x, const dv_column_t *y, dv_column_t *result,
                                  dv_column_faults_t *faults) {
    if (DV_ASSERT(are_columns(x, y, result))) calculate_<number_sub>(x, y, result, faults);
}

extern "C" void number_column_mul(const dv_column_t *x, const dv_column_t *y, dv_column_t *result,
                                  dv_column_faults_t *faults) {
    if (DV_ASSERT(are_columns(x, y, result))) calculate_<number_mul>(x, y, result, faults);
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
