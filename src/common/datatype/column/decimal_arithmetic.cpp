// Arithmetic on columns of decimals: exact in 256 bits, rounded once.
//
// Sums and differences of decimals of 64 bits and of one scale, side by side, are the kernels'. Products of
// 64 bits are exact in 128.

#include "column_run.h"
#include "decimal_kernels.h"
#include "decimal_rows.h"

using namespace dv::impl;

namespace {

bool is_side_by_side_(const dv_decimal_column_t &x) {
    return x.bytes == sizeof(int64_t) && x.column.stride == sizeof(int64_t);
}

bool is_constant_(const dv_decimal_column_t &x) { return x.bytes == sizeof(int64_t) && x.column.stride == 0; }

const char *place_of_(const dv_decimal_column_t &x, int64_t row) {
    return static_cast<const char *>(value_at(x.column, row));
}

// The operands of an operation of two columns, as column_run wants them.
struct two_decimals_t {
    const dv_column_t *operand[2];
    dv_column_t *result;
    const dv_decimal_column_t *x, *y;
    const dv_decimal_column_t *z;

    two_decimals_t(const dv_decimal_column_t *left, const dv_decimal_column_t *right, dv_decimal_column_t *to)
        : operand{&left->column, &right->column}, result(&to->column), x(left), y(right), z(to) {}

    void no_value(int64_t /*row*/) const {}
};

// ---- sums and differences ----

struct add_t : two_decimals_t {
    int64_t scale;   // the larger one of x and y
    bool negates_y;  // a difference
    uint64_t (*kernel)(const char *x, const char *y, int64_t y_step, char *z, int64_t limit);  // NULL: none

    add_t(const dv_decimal_column_t *left, const dv_decimal_column_t *right, dv_decimal_column_t *to,
          bool subtracts)
        : two_decimals_t(left, right, to),
          scale(left->scale > right->scale ? left->scale : right->scale),
          negates_y(subtracts),
          kernel(nullptr) {
        const bool is_regular = is_side_by_side_(*x) && is_side_by_side_(*z) &&
                                (is_side_by_side_(*y) || is_constant_(*y)) && x->scale == y->scale &&
                                x->scale == z->scale;
        if (is_regular) kernel = subtracts ? decimal_kernels().subtract : decimal_kernels().add;
    }

    uint64_t block(int64_t row, int count, const uint64_t &valid) const {
        if (kernel == nullptr || count != BLOCK_ROWS) return valid;
        const auto limit = static_cast<int64_t>(ten_to(z->precision)) - 1;
        return kernel(place_of_(*x, row), place_of_(*y, row), y->column.stride,
                      static_cast<char *>(value_at(z->column, row)), limit);
    }

    bool row(int64_t row) const {
        const int128_t a = load_decimal(*x, row), b = load_decimal(*y, row);
        const wide_t left = scaled_up_(a, *x, row), right = scaled_up_(b, *y, row);
        const bool a_is_negative = a < 0, b_is_negative = (b < 0) != negates_y;
        if (a_is_negative == b_is_negative) {
            store_rounded(*z, row, {a_is_negative, left + right}, scale);
        } else if (left < right) {
            store_rounded(*z, row, {b_is_negative, right - left}, scale);
        } else {
            store_rounded(*z, row, {a_is_negative, left - right}, scale);
        }
        return true;
    }

  private:
    // |value| in units of 10^-scale. One that this gives more than 38 digits more than it has is too large
    // for the result, whose scale is no smaller, whatever the other operand is.
    wide_t scaled_up_(int128_t value, const dv_decimal_column_t &column, int64_t row) const {
        const wide_t magnitude = {0, magnitude_of(value)};
        const int64_t digits = scale - column.scale;
        if (digits == 0 || value == 0) return magnitude;
        if (digits > DECIMAL_DIGITS_MAX) store_rounded(*z, row, {value < 0, magnitude}, column.scale);
        return multiply_wide(magnitude.low, ten_to(digits));
    }
};

bool has_scale_of_sum(const dv_decimal_column_t *x, const dv_decimal_column_t *y,
                      const dv_decimal_column_t *result) {
    return result->scale >= x->scale && result->scale >= y->scale;
}

// ---- products ----

struct multiply_t : two_decimals_t {
    int64_t scale;  // of the exact product
    int64_t
        digits;    // that are rounded off, where a product of 64 bits needs no more than a division; else -1
    int64_t half;  // of their unit

    multiply_t(const dv_decimal_column_t *left, const dv_decimal_column_t *right, dv_decimal_column_t *to)
        : two_decimals_t(left, right, to), scale(int64_t{left->scale} + right->scale), digits(-1), half(0) {
        const int64_t fewer = scale - to->scale;
        const bool is_narrow =
            x->bytes == sizeof(int64_t) && y->bytes == sizeof(int64_t) && z->bytes == sizeof(int64_t);
        if (!is_narrow || fewer < 0 || fewer > DV_DECIMAL64_PRECISION_MAX) return;
        digits = fewer;
        half = static_cast<int64_t>(ten_to(fewer) / 2);
    }

    // Rows whose product fits 64 bits.
    uint64_t block(int64_t row, int count, const uint64_t &valid) const {
        if (digits < 0) return valid;
        const auto unit = static_cast<int64_t>(ten_to(digits));
        const auto limit = static_cast<int64_t>(ten_to(z->precision));
        uint64_t left = 0;
        for (int i = 0; i < count; ++i) {
            int64_t a, b, product;
            memcpy(&a, place_of_(*x, row + i), sizeof a);
            memcpy(&b, place_of_(*y, row + i), sizeof b);
            bool is_left = __builtin_mul_overflow(a, b, &product);
            if (unit != 1) {
                is_left |= __builtin_add_overflow(product, product < 0 ? -half : half, &product);
                product /= unit;
            }
            is_left |= product >= limit || product <= -limit;
            if (is_left) {
                left |= uint64_t{1} << i;
            } else {
                memcpy(value_at(z->column, row + i), &product, sizeof product);
            }
        }
        return left;
    }

    bool row(int64_t row) const {
        const int128_t a = load_decimal(*x, row), b = load_decimal(*y, row);
        const wide_t product = multiply_wide(magnitude_of(a), magnitude_of(b));
        store_rounded(*z, row, {(a < 0) != (b < 0), product}, scale);
        return true;
    }
};

// ---- another scale ----

struct rescale_t {
    const dv_column_t *operand[1];
    dv_column_t *result;
    const dv_decimal_column_t *x, *z;

    uint64_t block(int64_t /*row*/, int /*count*/, const uint64_t &valid) const { return valid; }
    bool row(int64_t row) const {
        const int128_t a = load_decimal(*x, row);
        store_rounded(*z, row, {a < 0, {0, magnitude_of(a)}}, x->scale);
        return true;
    }
    void no_value(int64_t /*row*/) const {}
};

void add_(const dv_decimal_column_t *x, const dv_decimal_column_t *y, dv_decimal_column_t *result,
          bool subtracts, dv_column_faults_t *faults) {
    add_t operation(x, y, result, subtracts);
    column_run(operation, result->column.count, faults);
}

}  // namespace

extern "C" void dv_decimal_column_add(const dv_decimal_column_t *x, const dv_decimal_column_t *y,
                                      dv_decimal_column_t *result, dv_column_faults_t *faults) {
    if (!DV_ASSERT(are_decimals(x, y, result)) || !DV_ASSERT(has_scale_of_sum(x, y, result))) return;
    add_(x, y, result, /*subtracts=*/false, faults);
}

extern "C" void dv_decimal_column_sub(const dv_decimal_column_t *x, const dv_decimal_column_t *y,
                                      dv_decimal_column_t *result, dv_column_faults_t *faults) {
    if (!DV_ASSERT(are_decimals(x, y, result)) || !DV_ASSERT(has_scale_of_sum(x, y, result))) return;
    add_(x, y, result, /*subtracts=*/true, faults);
}

extern "C" void dv_decimal_column_mul(const dv_decimal_column_t *x, const dv_decimal_column_t *y,
                                      dv_decimal_column_t *result, dv_column_faults_t *faults) {
    if (!DV_ASSERT(are_decimals(x, y, result))) return;
    multiply_t operation(x, y, result);
    column_run(operation, result->column.count, faults);
}

extern "C" void dv_decimal_column_rescale(const dv_decimal_column_t *x, dv_decimal_column_t *result,
                                          dv_column_faults_t *faults) {
    if (!DV_ASSERT(are_decimals(x, result))) return;
    rescale_t operation = {{&x->column}, &result->column, x, result};
    column_run(operation, result->column.count, faults);
}
