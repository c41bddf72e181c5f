// Columns of decimals compared, into a bitmap.
//
// Beside a constant, a relation is an interval of integers in the units of the column, whatever the scale of
// the constant: x < 2.5 is x <= 2 in units of 1. One subtraction and one unsigned comparison tell whether a
// value is within; "not equal" flips the answer. Columns of one scale are compared as integers, others in 256
// bits.

#include "column_bits.h"
#include "decimal_kernels.h"
#include "decimal_rows.h"

using namespace dv::impl;

namespace {

constexpr int128_t _int128_min = static_cast<int128_t>(uint128_t{1} << 127);
constexpr int128_t _int128_max = ~_int128_min;

// Which relations hold of a and b: a bit of dv_column_relation_e.
template <typename T>
int order_of_(const T &a, const T &b) {
    return a < b ? DV_COLUMN_LT : b < a ? DV_COLUMN_GT : DV_COLUMN_EQ;
}

// ---- a constant ----

// Rows with low <= x <= high; or, flipped, all others.
struct interval_t {
    int128_t low, high;
    bool flips;
};
constexpr interval_t _everything = {_int128_min, _int128_max, false};
constexpr interval_t _nothing = {_int128_min, _int128_max, true};

// A constant in the units of a column: the integer below it or equal to it, and whether it is equal. Beyond
// all integers of 128 bits `beyond` tells on which side.
struct threshold_t {
    int128_t floor;
    bool is_exact;
    int beyond;  // -1, 0, 1
};

threshold_t threshold_of_(int128_t value, int64_t more_digits) {
    const bool negative = value < 0;
    const wide_t magnitude = {0, magnitude_of(value)};
    if (more_digits < 0) {
        const cut_wide_t cut = cut_digits(magnitude, -more_digits);
        const int128_t toward_zero = with_sign(negative, cut.kept.low);
        return {toward_zero - (negative && !cut.is_exact ? 1 : 0), cut.is_exact, 0};
    }
    if (value == 0) return {0, true, 0};
    const wide_t scaled =
        more_digits > DECIMAL_DIGITS_MAX ? wide_t{1, 0} : multiply_wide(magnitude.low, ten_to(more_digits));
    const wide_t limit = {0, magnitude_of(negative ? _int128_min : _int128_max)};
    if (limit < scaled) return {0, false, negative ? -1 : 1};
    return {with_sign(negative, scaled.low), true, 0};
}

interval_t interval_of_(int relation, const threshold_t &threshold) {
    const int order_beyond = threshold.beyond > 0 ? DV_COLUMN_LT : DV_COLUMN_GT;
    if (threshold.beyond != 0) return (relation & order_beyond) != 0 ? _everything : _nothing;
    const int128_t t = threshold.floor;
    if (threshold.is_exact && (relation == DV_COLUMN_EQ || relation == DV_COLUMN_NE))
        return {t, t, relation == DV_COLUMN_NE};
    // What is not exact is equal to nothing.
    const int asked = threshold.is_exact ? relation : relation & ~DV_COLUMN_EQ;
    switch (asked) {
        case DV_COLUMN_LT:
            if (!threshold.is_exact) return {_int128_min, t, false};
            return {t, _int128_max, true};
        case DV_COLUMN_GT:
            return {_int128_min, t, true};
        case DV_COLUMN_LE:
            return {_int128_min, t, false};
        case DV_COLUMN_GE:
            return {t, _int128_max, false};
        case DV_COLUMN_NE:
            return _everything;
        default:
            return _nothing;
    }
}

// The same for integers of 64 bits.
interval_t in_64_bits_(const interval_t &interval) {
    if (interval.high < INT64_MIN || interval.low > INT64_MAX) return {INT64_MIN, INT64_MAX, !interval.flips};
    return {interval.low < INT64_MIN ? INT64_MIN : interval.low,
            interval.high > INT64_MAX ? INT64_MAX : interval.high, interval.flips};
}

// ---- rows ----

// Gives the answers of all rows, sixty-four at a time, to a bitmap.
struct answers_t {
    const dv_decimal_column_t *x, *y;
    uint8_t *rows;

    void store(int64_t row, int64_t count, uint64_t bits) const {
        bits &= valid_rows(x->column, row, count) & valid_rows(y->column, row, count);
        store_bits(rows, row, count, bits);
    }
};

const char *place_of_(const dv_decimal_column_t &x, int64_t row) {
    return static_cast<const char *>(value_at(x.column, row));
}

bool is_side_by_side_(const dv_decimal_column_t &x) {
    return x.bytes == sizeof(int64_t) && x.column.stride == sizeof(int64_t);
}

constexpr int64_t _words_at_once = 64;

// Rows of a kernel, in pieces whose bits lie on the stack.
template <typename Kernel>
void compare_by_kernel_(const answers_t &answers, Kernel kernel) {
    const int64_t count = answers.x->column.count;
    uint64_t bits[_words_at_once];
    for (int64_t begin = 0; begin < count; begin += _words_at_once * BLOCK_ROWS) {
        const int64_t rest = count - begin;
        const int64_t rows = rest < _words_at_once * BLOCK_ROWS ? rest : _words_at_once * BLOCK_ROWS;
        kernel(begin, rows, bits);
        for (int64_t row = 0; row < rows; row += BLOCK_ROWS) {
            const int64_t size = rows - row < BLOCK_ROWS ? rows - row : int64_t{BLOCK_ROWS};
            answers.store(begin + row, size, bits[row / BLOCK_ROWS]);
        }
    }
}

// Rows one by one.
template <typename Test>
void compare_each_(const answers_t &answers, Test test) {
    const int64_t count = answers.x->column.count;
    for (int64_t begin = 0; begin < count; begin += BLOCK_ROWS) {
        const int64_t size = count - begin < BLOCK_ROWS ? count - begin : int64_t{BLOCK_ROWS};
        uint64_t bits = 0;
        for (int64_t i = 0; i < size; ++i) bits |= uint64_t{test(begin + i)} << i;
        answers.store(begin, size, bits);
    }
}

void compare_with_interval_(const answers_t &answers, const interval_t &wide) {
    const dv_decimal_column_t &x = *answers.x;
    const interval_t interval = x.bytes == sizeof(int64_t) ? in_64_bits_(wide) : wide;
    if (is_side_by_side_(x)) {
        const auto low = static_cast<uint64_t>(interval.low);
        const uint64_t width = static_cast<uint64_t>(interval.high) - low;
        const uint64_t flip = interval.flips ? ~uint64_t{0} : 0;
        const decimal_kernels_t &kernels = decimal_kernels();
        return compare_by_kernel_(answers, [&](int64_t row, int64_t count, uint64_t *bits) {
            kernels.within(place_of_(x, row), count, low, width, flip, bits);
        });
    }
    const auto low = static_cast<uint128_t>(interval.low);
    const uint128_t width = static_cast<uint128_t>(interval.high) - low;
    compare_each_(answers, [&](int64_t row) {
        return (static_cast<uint128_t>(load_decimal(x, row)) - low <= width) != interval.flips;
    });
}

// ---- two columns ----

void compare_by_words_(const answers_t &answers, int relation) {
    const bool is_equality = relation == DV_COLUMN_EQ || relation == DV_COLUMN_NE;
    const bool turns = relation == DV_COLUMN_GT || relation == DV_COLUMN_LE;
    const bool flips = relation == DV_COLUMN_NE || relation == DV_COLUMN_LE || relation == DV_COLUMN_GE;
    const auto kernel = is_equality ? decimal_kernels().equal : decimal_kernels().less;
    const dv_decimal_column_t &x = turns ? *answers.y : *answers.x, &y = turns ? *answers.x : *answers.y;
    compare_by_kernel_(answers, [&](int64_t row, int64_t count, uint64_t *bits) {
        kernel(place_of_(x, row), place_of_(y, row), count, flips ? ~uint64_t{0} : 0, bits);
    });
}

// The order of two values of any scales.
int order_across_scales_(const dv_decimal_column_t &x, const dv_decimal_column_t &y, int64_t row) {
    const int128_t b = load_decimal(y, row);
    const threshold_t threshold = threshold_of_(b, int64_t{x.scale} - y.scale);
    if (threshold.beyond != 0) return threshold.beyond > 0 ? DV_COLUMN_LT : DV_COLUMN_GT;
    const int order = order_of_(load_decimal(x, row), threshold.floor);
    return order == DV_COLUMN_EQ && !threshold.is_exact ? int{DV_COLUMN_LT} : order;
}

}  // namespace

extern "C" void dv_decimal_column_compare(const dv_decimal_column_t *x, const dv_decimal_column_t *y,
                                          dv_column_relation_e relation, uint8_t *rows) {
    if (!DV_ASSERT(are_decimals(x, y) && rows != NULL) || !DV_ASSERT(is_relation(relation))) return;
    if (x->column.count == 0) return;
    const answers_t answers = {x, y, rows};
    if (y->column.stride == 0) {
        const threshold_t threshold = threshold_of_(load_decimal(*y, 0), int64_t{x->scale} - y->scale);
        return compare_with_interval_(answers, interval_of_(relation, threshold));
    }
    if (is_side_by_side_(*x) && is_side_by_side_(*y) && x->scale == y->scale)
        return compare_by_words_(answers, relation);
    compare_each_(answers, [&](int64_t row) { return (order_across_scales_(*x, *y, row) & relation) != 0; });
}
