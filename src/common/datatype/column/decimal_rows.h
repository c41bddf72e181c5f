// Decimals of the rows of columns: what the area offers to itself about them.
//
// A row in work is an integer of 128 bits, whatever its width. What may need more, in front of the rounding,
// is a magnitude of 256 bits with a sign.

#ifndef DV_COLUMN_DECIMAL_ROWS_H
#define DV_COLUMN_DECIMAL_ROWS_H

#include "column_layout.h"
#include "dvtypes/column_decimal.h"
#include "wide_integer.h"

namespace dv::impl {

constexpr bool is_decimal_scale(int scale) {
    return scale >= DV_DECIMAL_SCALE_MIN && scale <= DV_DECIMAL_SCALE_MAX;
}

constexpr bool is_decimal_type(int bytes, int precision, int scale) {
    const int precision_max = bytes == 8    ? int{DV_DECIMAL64_PRECISION_MAX}
                              : bytes == 16 ? int{DV_DECIMAL128_PRECISION_MAX}
                                            : 0;
    return precision >= 1 && precision <= precision_max && is_decimal_scale(scale);
}

inline bool is_decimal(const dv_decimal_column_t *x) {
    return x != nullptr && x->column.count >= 0 && x->column.offsets == nullptr &&
           is_decimal_type(x->bytes, x->precision, x->scale);
}

// Whether these are decimals, all of the same count.
inline bool are_decimals(const dv_decimal_column_t *first, const auto *...others) {
    return is_decimal(first) && (is_decimal(others) && ...) &&
           ((first->column.count == others->column.count) && ...);
}

// The same of a column of another kind and one of decimals.
inline bool is_decimal_beside(const dv_column_t *other, const dv_decimal_column_t *x) {
    return other != nullptr && is_decimal(x) && other->count == x->column.count;
}

inline int128_t load_decimal(const dv_decimal_column_t &x, int64_t row) {
    const void *const place = value_at(x.column, row);
    if (x.bytes == sizeof(int64_t)) {
        int64_t value;
        memcpy(&value, place, sizeof value);
        return value;
    }
    int128_t value;
    memcpy(&value, place, sizeof value);
    return value;
}

inline void store_decimal_row(const dv_decimal_column_t &x, int64_t row, int128_t value) {
    void *const place = value_at(x.column, row);
    if (x.bytes == sizeof(int64_t)) {
        const auto narrow = static_cast<int64_t>(value);
        memcpy(place, &narrow, sizeof narrow);
    } else {
        memcpy(place, &value, sizeof value);
    }
}

constexpr uint128_t magnitude_of(int128_t value) {
    return value < 0 ? 0 - static_cast<uint128_t>(value) : static_cast<uint128_t>(value);
}
constexpr int128_t with_sign(bool negative, uint128_t magnitude) {
    return static_cast<int128_t>(negative ? 0 - magnitude : magnitude);
}

struct signed_wide_t {
    bool negative;
    wide_t magnitude;
};

// x = value, an integer in units of 10^-scale, cut to 38 digits. Raises -5068 beyond the range of NUMBER.
void cut_to_number(number_t &x, const signed_wide_t &value, int64_t scale);

// Stores a value, an integer in units of 10^-scale, as row of a result, rounded half up to its scale; raises
// -5111 when it has too many digits then.
void store_rounded(const dv_decimal_column_t &result, int64_t row, const signed_wide_t &value, int64_t scale);

// Stores a NUMBER as row of a result; raises -5111 when it has too many digits in front of the point, -5072
// when it has some below the scale.
void store_number(const dv_decimal_column_t &result, int64_t row, const number_t &x);

// Does the rows of a block that have a value, in their order, by try_row(row), which says whether it did.
// Returns the others: where results are appended, all from the first that was not done.
template <typename Try>
uint64_t try_rows(int64_t begin, uint64_t valid, bool appends, Try try_row) {
    uint64_t left = 0;
    for (uint64_t rest = valid; rest != 0; rest &= rest - 1) {
        if (try_row(begin + std::countr_zero(rest))) continue;
        if (appends) return rest;
        left |= rest & (0 - rest);
    }
    return left;
}

}  // namespace dv::impl

#endif  // DV_COLUMN_DECIMAL_ROWS_H
