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
    if (bytes.size > NUMBER_SIZE_MAX) raise(DV_ERR_COLUMN_OFFSETS);
    if (bytes.size == 0) return nullptr;
    buffer = number_t{};
    buffer.size = static_cast<uint8_t>(bytes.size);
    memcpy(&buffer.signexp, bytes.begin, static_cast<size_t>(bytes.size));
    return &buffer;
}

// Records by stride, as kernels read and write them.
struct records_t {
    char *first;
    int64_t stride;

    number_t &operator[](int i) const { return *reinterpret_cast<number_t *>(first + i * stride); }
};

struct number_block_t {
    number_t record[BLOCK_ROWS];
    records_t records() { return {reinterpret_cast<char *>(record), sizeof *record}; }
};

// The records of a block of rows; those by offsets are put together in `buffer`. A row that is none becomes a
// NULL value, which no kernel takes, so that number_at is asked for it.
inline records_t records_at(const dv_column_t &column, int64_t row, int count, number_block_t &buffer) {
    if (column.offsets == nullptr) return {static_cast<char *>(value_at(column, row)), column.stride};
    for (int i = 0; i < count; ++i) {
        number_t &x = buffer.record[i];
        x.size = x.signexp = 0;
        row_bytes_t bytes;
        if (!find_bytes(column, row + i, bytes) || bytes.size == 0 || bytes.size > NUMBER_SIZE_MAX) continue;
        x.size = static_cast<uint8_t>(bytes.size);
        memcpy(&x.signexp, bytes.begin, x.size);
    }
    return buffer.records();
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
    // The bytes of a row by offsets: those of a record, whatever its size byte says.
    static int size_of_row(const number_t &x) { return x.size < NUMBER_SIZE_MAX ? x.size : NUMBER_SIZE_MAX; }

    // Raises when a result by offsets has no room.
    void keep(int64_t row, const number_t &place) {
        if (column().offsets == nullptr) return;
        const int size = size_of_row(place);
        memcpy(appended.append(row, size), &place.signexp, static_cast<size_t>(size));
    }

    // Where a kernel is to make the records of a block, and their keeping: takes the rows that a kernel has
    // left, and returns those that are to be done one by one. By offsets these are all from the first on.
    records_t block_at(int64_t row, number_block_t &buffer) const {
        if (column().offsets != nullptr) return buffer.records();
        return {static_cast<char *>(value_at(column(), row)), column().stride};
    }
    uint64_t keep_block(int64_t row, uint64_t valid, uint64_t left, const number_block_t &buffer) {
        if (column().offsets == nullptr) return left;
        for (uint64_t rest = valid; rest != 0; rest &= rest - 1) {
            const int i = std::countr_zero(rest);
            const number_t &x = buffer.record[i];
            if ((left >> i & 1) != 0 || !appended.has_room(size_of_row(x))) return rest;
            keep(row + i, x);
        }
        return 0;
    }
    void store_none(int64_t row) const {
        if (column().offsets == nullptr) {
            value_at<number_t>(column(), row).size = 0;
        } else {
            appended.append_none(row);
        }
    }
};

// An operation on one column of NUMBERs. `Change` is a plain struct that
//   - changes a record in place, and may raise: void operator()(number_t &value) const;
//   - does so without a raise where it can tell that there is none: bool try_change(number_t &value) const.
//     The record is valid and no NULL value. False: nothing is changed, and the row left to the first;
//   - does what it can of a block, without a raise: uint64_t change_block(records_t from, int count,
//     uint64_t valid, records_t to) const. It returns the rows of `valid` that are left to the others.
template <typename Change>
struct number_change_t {
    const dv_column_t *operand[1];
    dv_column_t *result;
    Change change;
    number_result_t values{result};

    uint64_t block(int64_t row, int count, const uint64_t &valid) {
        number_block_t x_buffer, buffer;
        const records_t x = records_at(*operand[0], row, count, x_buffer);
        const records_t to = values.block_at(row, buffer);
        uint64_t left = 0;
        for (uint64_t rest = change.change_block(x, count, valid, to); rest != 0; rest &= rest - 1) {
            const int i = std::countr_zero(rest);
            const bool is_sound = number_is_valid_ptr(&x[i]) && x[i].size != 0;
            if (is_sound) to[i] = x[i];
            if (!is_sound || !change.try_change(to[i])) left |= rest & (0 - rest);
        }
        return values.keep_block(row, valid, left, buffer);
    }

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
