// Columns of machine numbers to and from columns of NUMBER.

#include "dvtypes/column_number.h"
#include "number_rows.h"

using namespace dv::impl;

namespace {

// Machine numbers lie by stride, at any address.
template <typename Machine>
Machine machine_at_(const dv_column_t &column, int64_t row) {
    Machine value;
    memcpy(&value, value_at(column, row), sizeof value);
    return value;
}

template <typename Machine, void (*convert)(number_t *, Machine)>
struct from_machine_t {
    const dv_column_t *operand[1];
    dv_column_t *result;
    number_result_t values{result};

    uint64_t block(int64_t /*row*/, int /*count*/, const uint64_t &valid) const { return valid; }

    bool row(int64_t row) {
        number_t buffer;
        number_t &value = values.place_of(row, buffer);
        convert(&value, machine_at_<Machine>(*operand[0], row));
        values.keep(row, value);
        return true;
    }

    void no_value(int64_t row) const { values.store_none(row); }
};

template <typename Machine, void (*convert)(const number_t *, Machine *)>
struct to_machine_t {
    const dv_column_t *operand[1];
    dv_column_t *result;

    uint64_t block(int64_t /*row*/, int /*count*/, const uint64_t &valid) const { return valid; }

    bool row(int64_t row) const {
        number_t buffer;
        const number_t *const x = number_at(*operand[0], row, buffer);
        if (x == nullptr) return false;
        Machine value;
        convert(x, &value);
        memcpy(value_at(*result, row), &value, sizeof value);
        return true;
    }

    void no_value(int64_t /*row*/) const {}
};

template <typename Operation>
void convert_(const dv_column_t *operand, dv_column_t *result, dv_column_faults_t *faults) {
    Operation operation = {{operand}, result};
    column_run(operation, result->count, faults);
}

}  // namespace

extern "C" void number_column_from_int32(const dv_column_t *v, dv_column_t *result,
                                         dv_column_faults_t *faults) {
    if (DV_ASSERT(are_columns(v, result)))
        convert_<from_machine_t<int32_t, number_from_int32>>(v, result, faults);
}

extern "C" void number_column_from_int64(const dv_column_t *v, dv_column_t *result,
                                         dv_column_faults_t *faults) {
    if (DV_ASSERT(are_columns(v, result)))
        convert_<from_machine_t<int64_t, number_from_int64>>(v, result, faults);
}

extern "C" void number_column_from_double(const dv_column_t *v, dv_column_t *result,
                                          dv_column_faults_t *faults) {
    if (DV_ASSERT(are_columns(v, result)))
        convert_<from_machine_t<double, number_from_double>>(v, result, faults);
}

extern "C" void number_column_to_int32(const dv_column_t *x, dv_column_t *result,
                                       dv_column_faults_t *faults) {
    if (DV_ASSERT(are_columns(x, result)))
        convert_<to_machine_t<int32_t, number_to_int32>>(x, result, faults);
}

extern "C" void number_column_to_int64(const dv_column_t *x, dv_column_t *result,
                                       dv_column_faults_t *faults) {
    if (DV_ASSERT(are_columns(x, result)))
        convert_<to_machine_t<int64_t, number_to_int64>>(x, result, faults);
}

extern "C" void number_column_to_double(const dv_column_t *x, dv_column_t *result,
                                        dv_column_faults_t *faults) {
    if (DV_ASSERT(are_columns(x, result)))
        convert_<to_machine_t<double, number_to_double>>(x, result, faults);
}
