// The way of an operation over its rows: in blocks of sixty-four, of which a kernel does what it can at once,
// and the function for one value the rest; rows without a value, failures and bitmaps are looked after here.
//
// An operation is a plain struct with
//
//     const dv_column_t *operand[...];
//     dv_column_t *result;  // NULL: none
//
//     // Rows [row, row + count): does those of `valid` that it can without raising, takes out of `valid`
//     // what turns out to have no value, and returns what is left.
//     uint64_t block(int64_t row, int count, uint64_t &valid);
//
//     // One row, as the function for one value; false: it has no value. May raise.
//     bool row(int64_t row);
//
//     // Optional, in place of row() where no raise is asked for: the same, but a value that is refused gives
//     // false and its code.
//     bool try_row(int64_t row, int &code);
//
//     // For every row of the result that has no value.
//     void no_value(int64_t row);
//
// Rows are called in their order, and no_value for a row of a block after all rows of the block: what is
// appended by offsets is in its place.
//
// A row that raises comes back to column_run through dv_protect, once for all rows as long as none does. The
// run's position lives in column_run_t, which a raise leaves as it was. A raise costs some hundred rows'
// work: where refused values are usual, as in texts, try_row spares it.

#ifndef DV_COLUMN_RUN_H
#define DV_COLUMN_RUN_H

#include <concepts>
#include <type_traits>

#include "column_layout.h"

namespace dv::impl {

struct column_progress_t {
    int64_t count;   // rows of all columns
    int64_t begin;   // the block in work: its first row,
    int64_t size;    // its rows,
    uint64_t left;   // those that are still to be done one by one,
    uint64_t valid;  // and those that have a value, as far as is known
    uint64_t failed;
    int64_t row;  // in work
    dv_column_faults_t *faults;
    bool raises;  // the first row that fails
};

template <typename Operation>
struct column_run_t {
    Operation *operation;
    column_progress_t at;
};

// Clears what the faults tell.
inline void begin_faults(dv_column_faults_t *faults) {
    if (faults == nullptr) return;
    faults->count = 0;
    faults->first = -1;
    faults->code = 0;
}

inline uint64_t bit_in_block(const column_progress_t &at) { return uint64_t{1} << (at.row - at.begin); }

inline void take_value_away(column_progress_t &at) { at.valid &= ~bit_in_block(at); }

inline void note_fault(column_progress_t &at, int code) {
    take_value_away(at);
    at.failed |= bit_in_block(at);
    dv_column_faults_t *const faults = at.faults;
    if (faults == nullptr) return;
    if (faults->count++ == 0) {
        faults->first = at.row;
        faults->code = code;
    }
    if (faults->codes != nullptr) faults->codes[at.row] = code;
}

// Stores what is known of a block that is done.
template <typename Operation>
void end_block(Operation &operation, const column_progress_t &at) {
    for (uint64_t none = ~at.valid & first_rows(at.size); none != 0; none &= none - 1) {
        operation.no_value(at.begin + std::countr_zero(none));
    }
    if (operation.result != nullptr && operation.result->validity != nullptr) {
        store_bits(operation.result->validity, operation.result->first_bit + at.begin, at.size, at.valid);
    }
    if (at.faults != nullptr && at.faults->rows != nullptr) {
        store_bits(at.faults->rows, at.begin, at.size, at.failed);
    }
}

template <typename Operation>
void begin_block(Operation &operation, column_progress_t &at) {
    at.size = at.count - at.begin < BLOCK_ROWS ? at.count - at.begin : int64_t{BLOCK_ROWS};
    at.valid = first_rows(at.size);
    for (const dv_column_t *operand : operation.operand) at.valid &= valid_rows(*operand, at.begin, at.size);
    at.failed = 0;
    if (at.faults != nullptr && at.faults->codes != nullptr) {
        memset(at.faults->codes + at.begin, 0, static_cast<size_t>(at.size) * sizeof(int32_t));
    }
    const uint64_t left = operation.block(at.begin, static_cast<int>(at.size), at.valid);
    at.left = at.valid & left;
}

template <typename Operation>
concept tries_rows = requires(Operation &operation, int64_t row, int &code) {
    { operation.try_row(row, code) } -> std::same_as<bool>;
};

template <typename Operation>
void do_row_(Operation &operation, column_progress_t &at) {
    if constexpr (tries_rows<Operation>) {
        if (!at.raises) {
            int code = 0;
            if (!operation.try_row(at.row, code)) take_value_away(at);
            if (code != 0) note_fault(at, code);
            return;
        }
    }
    if (!operation.row(at.row)) take_value_away(at);
}

template <typename Operation>
void run_rows_(void *arg) {
    auto &run = *static_cast<column_run_t<Operation> *>(arg);
    for (;;) {
        while (run.at.left != 0) {
            run.at.row = run.at.begin + std::countr_zero(run.at.left);
            run.at.left &= run.at.left - 1;  // first: a row that raises is not done again
            do_row_(*run.operation, run.at);
        }
        if (run.at.size != 0) end_block(*run.operation, run.at);
        run.at.begin += run.at.size;
        run.at.size = 0;
        if (run.at.begin >= run.at.count) return;
        begin_block(*run.operation, run.at);
    }
}

// Does an operation on all its rows.
template <typename Operation>
void column_run(Operation &operation, int64_t count, dv_column_faults_t *faults) {
    static_assert(std::is_trivially_destructible_v<Operation>);
    const bool raises = faults == nullptr || faults->raises != 0;
    column_run_t<Operation> run = {&operation, {count, 0, 0, 0, 0, 0, 0, faults, raises}};
    begin_faults(faults);
    if (operation.result != nullptr && operation.result->offsets != nullptr) operation.result->offsets[0] = 0;
    dv_error_t error;
    for (;;) {
        const int code = dv_protect(run_rows_<Operation>, &run, raises ? &error : nullptr);
        if (code == 0) return;
        note_fault(run.at, code);
        if (raises) dv_rethrow(&error);
    }
}

}  // namespace dv::impl

#endif  // DV_COLUMN_RUN_H
