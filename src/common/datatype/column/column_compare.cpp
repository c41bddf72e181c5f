// Comparison of columns of NUMBER, and their least and greatest values.
//
// Keys decide about most rows, a block of them at once (record_keys.h); number_cmp about the others.

#include "dvtypes/column_compare.h"

#include "record_keys.h"

using namespace dv::impl;

namespace {

struct compare_t {
    const dv_column_t *operand[2];
    dv_column_relation_e relation;
    uint8_t *rows;
    const key_kernels_t *kernels;
    bool has_constant;  // whose keys are in y_keys
    record_keys_t x_keys, y_keys;
    dv_column_t *result = nullptr;

    uint64_t block(int64_t row, int count, uint64_t &valid) {
        uint64_t left = load_keys(*kernels, *operand[0], row, count, valid, x_keys);
        if (!has_constant) left |= load_keys(*kernels, *operand[1], row, count, valid, y_keys);
        const key_order_t order = kernels->compare(x_keys, y_keys);
        valid &= left | ~order.none;
        left |= order.open;
        store_bits(rows, row, count, related_rows(relation, order.below, order.equal, valid & ~left));
        return left;
    }

    bool row(int64_t row) const {
        number_t x_buffer, y_buffer;
        const number_t *const x = number_at(*operand[0], row, x_buffer);
        const number_t *const y = number_at(*operand[1], row, y_buffer);
        if (x == nullptr || y == nullptr) return false;
        const int order = number_cmp(x, y);
        store_bits(rows, row, 1, related_rows(relation, uint64_t{order < 0}, uint64_t{order == 0}, 1));
        return true;
    }
    void no_value(int64_t /*row*/) const {}
};

// ---------------------------------------------------------------------------------------------------------
// Least and greatest
// ---------------------------------------------------------------------------------------------------------

struct extreme_t {
    const dv_column_t *operand[1];
    const uint8_t *rows;
    bool is_greatest;
    const key_kernels_t *kernels;
    record_keys_t keys, best_keys;
    int64_t best_row = -1;
    int64_t keys_row = -1;  // whose keys are in best_keys
    number_t best = {};
    dv_column_t *result = nullptr;

    uint64_t block(int64_t row, int count, uint64_t &valid) {
        if (rows != nullptr) valid &= load_bits(rows, row, count);
        const uint64_t left = load_keys(*kernels, *operand[0], row, count, valid, keys);
        if (best_row < 0) return valid;
        if (keys_row != best_row) fill_keys(best, best_keys);
        keys_row = best_row;
        const key_order_t order = kernels->compare(keys, best_keys);
        valid &= left | ~order.none;
        const uint64_t beyond = is_greatest ? ~(order.below | order.equal | order.open) : order.below;
        return left | beyond | order.open;
    }

    bool row(int64_t row) {
        number_t buffer;
        const number_t *const x = number_at(*operand[0], row, buffer);
        if (x == nullptr) return false;
        if (best_row >= 0 && (is_greatest ? number_cmp(&best, x) : number_cmp(x, &best)) >= 0) return true;
        best_row = row;
        best = *x;
        return true;
    }
    void no_value(int64_t /*row*/) const {}
};

int64_t extreme_row_(const dv_column_t *x, const uint8_t *rows, bool is_greatest,
                     dv_column_faults_t *faults) {
    extreme_t operation = {{x}, rows, is_greatest, &key_kernels(), {}, {}};
    column_run(operation, x->count, faults);
    return operation.best_row;
}

}  // namespace

extern "C" void number_column_compare(const dv_column_t *x, const dv_column_t *y,
                                      dv_column_relation_e relation, uint8_t *rows,
                                      dv_column_faults_t *faults) {
    if (!DV_ASSERT(are_columns(x, y)) || !DV_ASSERT(rows != NULL) || !DV_ASSERT(is_relation(relation)))
        return;
    const bool has_constant = y->offsets == nullptr && y->stride == 0 && y->count > 0;
    compare_t operation = {{x, y}, relation, rows, &key_kernels(), has_constant, {}, {}};
    if (has_constant) fill_keys(value_at<const number_t>(*y, 0), operation.y_keys);
    column_run(operation, x->count, faults);
}

extern "C" int64_t number_column_min(const dv_column_t *x, const uint8_t *rows, dv_column_faults_t *faults) {
    return DV_ASSERT(are_columns(x)) ? extreme_row_(x, rows, /*is_greatest=*/false, faults) : 0;
}

extern "C" int64_t number_column_max(const dv_column_t *x, const uint8_t *rows, dv_column_faults_t *faults) {
    return DV_ASSERT(are_columns(x)) ? extreme_row_(x, rows, /*is_greatest=*/true, faults) : 0;
}
