// NUMBERs of the rows of columns, in either layout.

#ifndef DV_COLUMN_NUMBER_ROWS_H
#define DV_COLUMN_NUMBER_ROWS_H

#include "../number/number_layout.h"
#include "column_layout.h"

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

// The NUMBERs of a result.
struct number_result_t {
    appended_rows_t appended;

    explicit number_result_t(const dv_column_t *column) : appended{column} {}
    const dv_column_t &column() const { return *appended.column; }

    // Raises when a result by offsets has no room.
    void store(int64_t row, const number_t &x) {
        if (column().offsets == nullptr) {
            value_at<number_t>(column(), row) = x;
        } else {
            memcpy(appended.append(row, x.size), &x.signexp, x.size);
        }
    }
    void store_none(int64_t row) const {
        if (column().offsets == nullptr) {
            value_at<number_t>(column(), row).size = 0;
        } else {
            appended.append_none(row);
        }
    }
};

}  // namespace dv::impl

#endif  // DV_COLUMN_NUMBER_ROWS_H
