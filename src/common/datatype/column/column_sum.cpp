// Exact sums of columns of NUMBER: into one total, and into the totals of groups.
//
// The rows of a column go into counters first (row_sums.h), which go into the total in the end, so that a
// total is changed by all rows or by none.

#include "column_run.h"
#include "number_rows.h"
#include "row_sums.h"

using namespace dv::impl;

namespace {

// The rows of a block that a bitmap, or NULL, leaves in.
uint64_t wanted_rows_(const uint8_t *rows, int64_t row, int count) {
    return rows == nullptr ? first_rows(count) : load_bits(rows, row, count);
}

// ---------------------------------------------------------------------------------------------------------
// One total
// ---------------------------------------------------------------------------------------------------------

struct sum_t {
    const dv_column_t *operand[1];
    const uint8_t *rows;
    row_sums_t *sums;
    const sum_kernels_t *kernels;
    int64_t terms = 0;
    dv_column_t *result = nullptr;

    uint64_t block(int64_t row, int count, uint64_t &valid) {
        valid &= wanted_rows_(rows, row, count);
        make_room(*sums, count);
        uint64_t left = 0;
        if (operand[0]->offsets == nullptr) {
            valid &= ~kernels->by_stride.add_rows(places_by_stride(*operand[0], row), count, valid, *sums);
        } else {
            places_by_offsets_t places;
            const uint64_t found = find_by_offsets(*operand[0], row, count, valid, places);
            left = valid & ~found;
            valid &= ~kernels->by_offsets.add_rows(places, count, found, *sums);
        }
        terms += std::popcount(valid & ~left);
        return left;
    }

    bool row(int64_t row) {
        number_t buffer;
        const number_t *const x = number_at(*operand[0], row, buffer);
        if (x == nullptr) return false;
        add_row(*sums, *x, x->size);  // there is room for the block
        ++terms;
        return true;
    }
    void no_value(int64_t /*row*/) const {}
};

// The words of a block of a column; returns the rows that are left to the function for one value.
uint64_t read_block_(const sum_kernels_t &kernels, const dv_column_t &column, int64_t row, int count,
                     uint64_t valid, block_words_t &words) {
    if (column.offsets == nullptr) {
        kernels.by_stride.read_words(places_by_stride(column, row), count, valid, words);
        return words.more;
    }
    places_by_offsets_t places;
    const uint64_t found = find_by_offsets(column, row, count, valid, places);
    kernels.by_offsets.read_words(places, count, found, words);
    words.none &= found;
    return words.more | (valid & ~found);
}

struct sum_products_t {
    const dv_column_t *operand[2];
    const uint8_t *rows;
    product_sums_t *sums;
    exact_t *collected;
    const sum_kernels_t *kernels;
    int64_t terms = 0;
    int64_t uncollected = 0;
    dv_column_t *result = nullptr;

    uint64_t block(int64_t row, int count, uint64_t &valid) {
        valid &= wanted_rows_(rows, row, count);
        if (uncollected + count > PRODUCT_ROWS_MAX) collect_all();
        uncollected += count;
        block_words_t x, y;
        uint64_t left = read_block_(*kernels, *operand[0], row, count, valid, x);
        left |= read_block_(*kernels, *operand[1], row, count, valid, y);
        valid &= ~(x.none | y.none);
        for (uint64_t done = valid & ~left; done != 0; done &= done - 1) {
            const int i = std::countr_zero(done);
            sums->word[0][x.exponent[i] + y.exponent[i]] += int128_t{x.word[i]} * y.word[i];
        }
        terms += std::popcount(valid & ~left);
        return left;
    }

    bool row(int64_t row) {
        number_t x_buffer, y_buffer;
        const number_t *const x = number_at(*operand[0], row, x_buffer);
        const number_t *const y = number_at(*operand[1], row, y_buffer);
        if (x == nullptr || y == nullptr) return false;
        add_product(*sums, *x, *y);  // there is room for the block
        ++terms;
        return true;
    }
    void no_value(int64_t /*row*/) const {}

    void collect_all() {
        exact_t sum = collect(sums->word, sums->words, 2 * (NUMBER_EXPONENT_MIN - COEF_WORD_DIGITS));
        add(*collected, sum);
        sums->clear();
        uncollected = 0;
    }
};

// ---------------------------------------------------------------------------------------------------------
// Totals of groups
// ---------------------------------------------------------------------------------------------------------

struct sum_by_group_t {
    const dv_column_t *operand[1];
    const int32_t *groups;
    const number_totals_t *totals;
    dv_column_t *result = nullptr;

    // Stops where a row needs more than the usual: what is behind a row that fails must not be done before
    // it.
    uint64_t block(int64_t row, int count, uint64_t &valid) const {
        if (row == 0) prefetch(0);
        prefetch(row + BLOCK_ROWS);
        for (int i = 0; i < count; ++i) {
            if (!has_group(row + i)) valid &= ~(uint64_t{1} << i);
        }
        if (operand[0]->offsets != nullptr) return valid;
        uint64_t left = valid;
        for (; left != 0; left &= left - 1) {
            const int64_t at = row + std::countr_zero(left);
            const auto &x = value_at<const number_t>(*operand[0], at);
            if (x.size == 0) valid &= ~(left & -left);
            if (x.size != 0 && !add_in_place(*total_of(at), x, /*subtracts=*/false)) break;
        }
        return left;
    }

    bool row(int64_t row) const {
        int code = 0;
        const bool has_value = try_row(row, code);
        if (code != 0) raise(DV_ERR_TOTAL_MEMORY);
        return has_value;
    }

    bool try_row(int64_t row, int &code) const {
        number_t buffer;
        const number_t *const x = number_at(*operand[0], row, buffer);
        if (x == nullptr) return false;
        if (add_record(*total_of(row), *x, /*subtracts=*/false) != 0) code = DV_ERR_TOTAL_MEMORY;
        return code == 0;
    }
    void no_value(int64_t /*row*/) const {}

  private:
    bool has_group(int64_t row) const { return groups[row] >= 0 && groups[row] < totals->count; }
    number_total_t *total_of(int64_t row) const {
        char *const first = reinterpret_cast<char *>(totals->totals);
        return reinterpret_cast<number_total_t *>(first + groups[row] * totals->stride);
    }
    // Totals lie anywhere: those of a block are asked for while the one before it is in work.
    void prefetch(int64_t begin) const {
        const int64_t end = begin + BLOCK_ROWS < operand[0]->count ? begin + BLOCK_ROWS : operand[0]->count;
        for (int64_t row = begin; row < end; ++row) {
            if (has_group(row)) __builtin_prefetch(total_of(row), /*for writing*/ 1);
        }
    }
};

}  // namespace

extern "C" int64_t number_column_sum(const dv_column_t *x, const uint8_t *rows, number_total_t *total,
                                     dv_column_faults_t *faults) {
    if (!DV_ASSERT(are_columns(x)) || !DV_ASSERT(total != NULL)) return 0;
    row_sums_t sums;
    sum_t operation = {{x}, rows, &sums, &sum_kernels()};
    column_run(operation, x->count, faults);
    sweep(sums);
    exact_t sum = collect(sums.swept, sums.words, NUMBER_EXPONENT_MIN - COEF_WORD_DIGITS);
    raise_weight(sum);
    return add_to_total(*total, sum, operation.terms);
}

extern "C" int64_t number_column_sum_products(const dv_column_t *x, const dv_column_t *y, const uint8_t *rows,
                                              number_total_t *total, dv_column_faults_t *faults) {
    if (!DV_ASSERT(are_columns(x, y)) || !DV_ASSERT(total != NULL)) return 0;
    product_sums_t sums;
    exact_t sum = exact_of(int128_t{0}, 0);
    sum_products_t operation = {{x, y}, rows, &sums, &sum, &sum_kernels()};
    column_run(operation, x->count, faults);
    operation.collect_all();
    raise_weight(sum);
    return add_to_total(*total, sum, operation.terms);
}

extern "C" void number_column_sum_by_group(const dv_column_t *x, const int32_t *groups,
                                           const number_totals_t *totals, dv_column_faults_t *faults) {
    if (!DV_ASSERT(are_columns(x)) || !DV_ASSERT(groups != NULL) || !DV_ASSERT(totals != NULL)) return;
    sum_by_group_t operation = {{x}, groups, totals};
    column_run(operation, x->count, faults);
}
