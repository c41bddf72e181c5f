// Columns of machine numbers to and from columns of NUMBER.

#include <cmath>
#include <limits>

#include "../number/number_round.h"
#include "../number/number_short.h"
#include "../number/vector_digits.h"
#include "column_run.h"
#include "dvtypes/column_number.h"
#include "number_rows.h"
#include "record_places.h"

namespace dv::impl {
namespace {

// Each returns the rows of `valid` that are left. It reads and writes no other rows than those of the block.
struct number_machine_kernels_t {
    using kernel_t = uint64_t(records_t from, int count, uint64_t valid, records_t to);
    kernel_t *from_int32, *from_int64, *to_int32, *to_int64;
};

}  // namespace

namespace plain {
namespace {

constexpr number_machine_kernels_t kernels = {};

}  // namespace
}  // namespace plain
}  // namespace dv::impl

#define DV_AVX2_KERNELS "number_machine_avx2_kernels.h"
#define DV_AVX512_KERNELS "number_machine_kernels.h"
#include "kernels_by_level.h"

using namespace dv::impl;

namespace {

using kernel_t = number_machine_kernels_t::kernel_t;

// Machine numbers lie by stride, at any address.
template <typename Machine>
Machine machine_at_(const dv_column_t &column, int64_t row) {
    Machine value;
    memcpy(&value, value_at(column, row), sizeof value);
    return value;
}

records_t machine_block_at_(const dv_column_t &column, int64_t row) {
    return {static_cast<char *>(value_at(column, row)), column.stride};
}

// Whether a machine number surely becomes a NUMBER.
template <typename Machine>
bool is_within_range_(Machine value) {
    if constexpr (std::is_integral_v<Machine>) return true;
    return value == 0 || (std::fabs(value) > 1e-129 && std::fabs(value) < 1e125);
}

// The code of a machine number that is refused whatever its magnitude.
template <typename Machine>
int fault_of_(Machine value) {
    if constexpr (std::is_floating_point_v<Machine>)
        return std::isfinite(value) ? 0 : int{DV_ERR_NUMBER_TEXT};
    return 0;
}

template <typename Machine, void (*convert)(number_t *, Machine)>
struct from_machine_t {
    const dv_column_t *operand[1];
    dv_column_t *result;
    kernel_t *kernel;  // NULL: none
    number_result_t values{result};

    uint64_t block(int64_t row, int count, const uint64_t &valid) {
        number_block_t buffer;
        const records_t from = machine_block_at_(*operand[0], row), to = values.block_at(row, buffer);
        uint64_t left = kernel == nullptr ? valid : kernel(from, count, valid, to);
        for (uint64_t rest = left; rest != 0; rest &= rest - 1) {
            const int i = std::countr_zero(rest);
            const auto value = machine_at_<Machine>(*operand[0], row + i);
            if (!is_within_range_(value)) continue;
            convert(&to[i], value);
            left ^= rest & (0 - rest);
        }
        return values.keep_block(row, valid, left, buffer);
    }

    bool row(int64_t row) {
        number_t buffer;
        number_t &value = values.place_of(row, buffer);
        convert(&value, machine_at_<Machine>(*operand[0], row));
        values.keep(row, value);
        return true;
    }

    bool try_row(int64_t row, int &code) {
        code = fault_of_(machine_at_<Machine>(*operand[0], row));
        return code == 0 && this->row(row);
    }

    void no_value(int64_t row) const { values.store_none(row); }
};

template <typename Machine, void (*convert)(const number_t *, Machine *), number_type_e type>
struct to_machine_t {
    const dv_column_t *operand[1];
    dv_column_t *result;
    kernel_t *kernel;  // NULL: none

    uint64_t block(int64_t row, int count, const uint64_t &valid) const {
        number_block_t buffer;
        const records_t from = records_at(*operand[0], row, count, buffer);
        if (kernel != nullptr) return kernel(from, count, valid, machine_block_at_(*result, row));
        if constexpr (std::is_integral_v<Machine>) return valid;
        uint64_t left = 0;
        for (uint64_t rest = valid; rest != 0; rest &= rest - 1) {
            const int i = std::countr_zero(rest);
            if (number_is_valid_ptr(&from[i]) && from[i].size != 0) {
                convert_(from[i], row + i);  // nothing is too large for a double
            } else {
                left |= rest & (0 - rest);
            }
        }
        return left;
    }

    bool row(int64_t row) const {
        number_t buffer;
        const number_t *const x = number_at(*operand[0], row, buffer);
        if (x != nullptr) convert_(*x, row);
        return x != nullptr;
    }

    bool try_row(int64_t row, int &code) const {
        number_t buffer;
        const number_t *const x = number_at(*operand[0], row, buffer);
        if (x == nullptr) return false;
        const bool is_refused = std::is_integral_v<Machine> && number_range_check(x, type) == 0 &&
                                number_get_fault(x) == nullptr;  // what is no value may be taken all the same
        code = is_refused ? int{DV_ERR_NUMBER_TARGET_RANGE} : 0;
        if (!is_refused) convert_(*x, row);
        return !is_refused;
    }

    void no_value(int64_t /*row*/) const {}

  private:
    void convert_(const number_t &x, int64_t row) const {
        Machine value;
        convert(&x, &value);
        memcpy(value_at(*result, row), &value, sizeof value);
    }
};

using to_int32_t = to_machine_t<int32_t, number_to_int32, NUMBER_TYPE_INT32>;
using to_int64_t = to_machine_t<int64_t, number_to_int64, NUMBER_TYPE_INT64>;
using to_double_t = to_machine_t<double, number_to_double, NUMBER_TYPE_DOUBLE>;

template <typename Operation>
void convert_(const dv_column_t *operand, dv_column_t *result, dv_column_faults_t *faults, kernel_t *kernel) {
    Operation operation = {{operand}, result, kernel};
    column_run(operation, result->count, faults);
}

}  // namespace

extern "C" void number_column_from_int32(const dv_column_t *v, dv_column_t *result,
                                         dv_column_faults_t *faults) {
    if (!DV_ASSERT(are_columns(v, result) && lie_by_stride(v))) return;
    convert_<from_machine_t<int32_t, number_from_int32>>(v, result, faults, kernels_in_use().from_int32);
}

extern "C" void number_column_from_int64(const dv_column_t *v, dv_column_t *result,
                                         dv_column_faults_t *faults) {
    if (!DV_ASSERT(are_columns(v, result) && lie_by_stride(v))) return;
    convert_<from_machine_t<int64_t, number_from_int64>>(v, result, faults, kernels_in_use().from_int64);
}

extern "C" void number_column_from_double(const dv_column_t *v, dv_column_t *result,
                                          dv_column_faults_t *faults) {
    if (!DV_ASSERT(are_columns(v, result) && lie_by_stride(v))) return;
    convert_<from_machine_t<double, number_from_double>>(v, result, faults, nullptr);
}

extern "C" void number_column_to_int32(const dv_column_t *x, dv_column_t *result,
                                       dv_column_faults_t *faults) {
    if (DV_ASSERT(are_columns(x, result) && lie_by_stride(result)))
        convert_<to_int32_t>(x, result, faults, kernels_in_use().to_int32);
}

extern "C" void number_column_to_int64(const dv_column_t *x, dv_column_t *result,
                                       dv_column_faults_t *faults) {
    if (DV_ASSERT(are_columns(x, result) && lie_by_stride(result)))
        convert_<to_int64_t>(x, result, faults, kernels_in_use().to_int64);
}

extern "C" void number_column_to_double(const dv_column_t *x, dv_column_t *result,
                                        dv_column_faults_t *faults) {
    if (DV_ASSERT(are_columns(x, result) && lie_by_stride(result)))
        convert_<to_double_t>(x, result, faults, nullptr);
}
