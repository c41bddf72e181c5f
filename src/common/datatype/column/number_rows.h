// NUMBERs of the rows of columns, in either layout.

#ifndef DV_COLUMN_NUMBER_ROWS_H
#define DV_COLUMN_NUMBER_ROWS_H

#include "../number/number_layout.h"
#include "column_run.h"

namespace dv::impl {

// The record of a row; one by offsets is put together in `buffer`. NULL: the row has no value. Raises when a
// row by offsets is none. Of a record by stride all 23 bytes can be read.
inline const number_t *number_at(const dv_column_t &column, int64_t row, number_t &buffer) {
    if (column.offsets == nullptr) {
        const auto &x = value_at<const number_t>(column, row);
        return x.size == 0 ? nullptr : &x;
    }
    const row_bytes_t bytes = bytes_by_offsets(column, row);
    if (bytes.size > NUMBER_SIZE_MAX) raise(ERR_COLUMN_OFFSETS);
    if (bytes.size == 0) return nullptr;
    buffer = number_t{};
    buffer.size = static_cast<uint8_t>(bytes.size);
    memcpy(&buffer.signexp, bytes.begin, static_cast<size_t>(bytes.size));
    return &buffer;
}

// The NUMBERs of a result. A row's value is made in its place, which is that of the column by stride and a
// buffer by offsets, and then kept.
struct number_result_t {
    appended_rows_t appended;

    explicit number_result_t(const dv_column_t *column) : appended{column} {}
    const dv_column_t &column() const { return *appended.column; }

    number_t &place_of(int64_t row, number_t &buffer) const {
        return column().offsets == nullptr ? value_at<number_t>(column(), row) : buffer;
    }
    // Raises when a result by offsets has no room.
    void keep(int64_t row, const number_t &place) {
        if (column().offsets != nullptr) memcpy(appended.append(row, place.size), &place.signexp, place.size);
    }

    void store_none(int64_t row) const {
        if (column().offsets == nullptr) {
            value_at<number_t>(column(), row).size = 0;
        } else {
            appended.append_none(row);
        }
    }
};

// An operation on one column of NUMBERs: `Change` is a plain struct that changes a record in place, and may
// raise.
template <typename Change>
struct number_change_t {
    const dv_column_t *operand[1];
    dv_column_t *result;
    Change change;
    number_result_t values{result};

    uint64_t block(int64_t /*row*/, int /*count*/, const uint64_t &valid) const { return valid; }

    bool row(int64_t row) {
        number_t x_buffer, buffer;
        const number_t *const x = number_at(*operand[0], row, x_buffer);
        if (x == nullptr) return false;
        number_t &value = values.place_of(row, buffer);
        value = *x;
        change(value);
        values.keep(row, value);
        return true;
    }

    void no_value(int64_t row) const { values.store_none(row); }
};

template <typename Change>
void change_numbers(const dv_column_t *x, dv_column_t *result, dv_column_faults_t *faults, Change change) {
    number_change_t<Change> operation = {{x}, result, change};
    column_run(operation, result->count, faults);
}

}  // namespace dv::impl

#endif  // DV_COLUMN_NUMBER_ROWS_H
