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

// The same of columns of values of a fixed length.
inline bool lie_by_stride(const dv_column_t *first, const auto *...others) {
    return are_columns(first, others...) && first->offsets == nullptr &&
           ((others->offsets == nullptr) && ...);
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

// The bytes of a row by offsets; false: they are not within the column.
inline bool find_bytes(const dv_column_t &column, int64_t row, row_bytes_t &bytes) {
    if (!has_bytes(column, row)) return false;
    const int32_t begin = column.offsets[row];
    bytes = {static_cast<const char *>(column.values) + begin, column.offsets[row + 1] - begin};
    return true;
}

// The same; raises.
inline row_bytes_t bytes_by_offsets(const dv_column_t &column, int64_t row) {
    row_bytes_t bytes;
    if (!find_bytes(column, row, bytes)) raise(DV_ERR_COLUMN_OFFSETS);
    return bytes;
}

// The text of a row, in either layout; by stride it ends at `size` bytes or at a NUL.
inline bool find_text(const dv_column_t &column, int64_t row, row_bytes_t &text) {
    if (column.offsets != nullptr) return find_bytes(column, row, text);
    const auto *const begin = static_cast<const char *>(value_at(column, row));
    const auto room = static_cast<size_t>(column.size < 0 ? 0 : column.size);
    text = {begin, static_cast<int64_t>(strnlen(begin, room))};
    return true;
}

inline row_bytes_t text_at(const dv_column_t &column, int64_t row) {
    row_bytes_t text;
    if (!find_text(column, row, text)) raise(DV_ERR_COLUMN_OFFSETS);
    return text;
}

// The rows of a result by offsets, appended in their order. Rows that have no value become empty when the
// rows of their block are done (column_run.h), so where the next row begins is kept here.
struct appended_rows_t {
    const dv_column_t *column;
    int64_t end = 0;

    bool has_room(int64_t size) const { return end + size <= column->size && end + size <= INT32_MAX; }

    char *next_place() const { return static_cast<char *>(column->values) + end; }

    // Room for a row of `size` bytes; raises when there is none.
    char *append(int64_t row, int64_t size) {
        const int64_t next = end + size;
        if (!has_room(size)) raise(DV_ERR_TEXT_BUFFER_SIZE);
        char *const place = next_place();
        end = next;
        column->offsets[row + 1] = static_cast<int32_t>(next);
        return place;
    }
    void append_none(int64_t row) const { column->offsets[row + 1] = column->offsets[row]; }
};

}  // namespace dv::impl

#endif  // DV_COLUMN_LAYOUT_H
