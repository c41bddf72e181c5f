// Where the rows of a column lie.

#ifndef DV_COLUMN_LAYOUT_H
#define DV_COLUMN_LAYOUT_H

#include "../error.h"
#include "column_bits.h"

namespace dv::impl {

// Whether there are columns to work on, all of the same count.
inline bool are_columns(const dv_column_t *first, const auto *...others) {
    return given(first, others...) && first->count >= 0 && ((first->count == others->count) && ...);
}

inline void *value_at(const dv_column_t &column, int64_t row) {
    return static_cast<char *>(column.values) + row * column.stride;
}

// Row i of a column by stride.
template <typename T>
T &value_at(const dv_column_t &column, int64_t row) {
    return *static_cast<T *>(value_at(column, row));
}

struct row_bytes_t {
    const char *begin;
    int64_t size;
};

// Whether a row by offsets lies within the column.
inline bool has_bytes(const dv_column_t &column, int64_t row) {
    const int32_t begin = column.offsets[row], end = column.offsets[row + 1];
    return begin >= 0 && begin <= end && end <= column.size;
}

// The bytes of a row by offsets; raises when they are not within the column.
inline row_bytes_t bytes_by_offsets(const dv_column_t &column, int64_t row) {
    if (!has_bytes(column, row)) raise(ERR_COLUMN_OFFSETS);
    const int32_t begin = column.offsets[row];
    return {static_cast<const char *>(column.values) + begin, column.offsets[row + 1] - begin};
}

// The text of a row, in either layout; by stride it ends at `size` bytes or at a NUL.
inline row_bytes_t text_at(const dv_column_t &column, int64_t row) {
    if (column.offsets != nullptr) return bytes_by_offsets(column, row);
    const auto *const text = static_cast<const char *>(value_at(column, row));
    const auto room = static_cast<size_t>(column.size < 0 ? 0 : column.size);
    return {text, static_cast<int64_t>(strnlen(text, room))};
}

// The rows of a result by offsets, appended in their order. Rows that have no value become empty when the
// rows of their block are done (column_run.h), so where the next row begins is kept here.
struct appended_rows_t {
    const dv_column_t *column;
    int64_t end = 0;

    // Room for a row of `size` bytes; raises when there is none.
    char *append(int64_t row, int64_t size) {
        const int64_t next = end + size;
        if (next > column->size || next > INT32_MAX) raise(ERR_TEXT_BUFFER_SIZE);
        char *const place = static_cast<char *>(column->values) + end;
        end = next;
        column->offsets[row + 1] = static_cast<int32_t>(next);
        return place;
    }
    void append_none(int64_t row) const { column->offsets[row + 1] = column->offsets[row]; }
};

}  // namespace dv::impl

#endif  // DV_COLUMN_LAYOUT_H
