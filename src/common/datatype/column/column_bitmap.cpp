// What bitmaps of columns tell.

#include "../error.h"
#include "column_bits.h"

using namespace dv::impl;

extern "C" int64_t dv_column_count_valid(const dv_column_t *column) {
    if (!DV_ASSERT(column != NULL)) return 0;
    int64_t valid = 0;
    for (int64_t row = 0; row < column->count; row += BLOCK_ROWS) {
        const int64_t left = column->count - row;
        valid += std::popcount(valid_rows(*column, row, left < BLOCK_ROWS ? left : int64_t{BLOCK_ROWS}));
    }
    return valid;
}

extern "C" void dv_column_copy_validity(const dv_column_t *column, uint8_t *bitmap) {
    if (!DV_ASSERT(given(column, bitmap))) return;
    for (int64_t row = 0; row < column->count; row += BLOCK_ROWS) {
        const int64_t left = column->count - row;
        const int64_t rows = left < BLOCK_ROWS ? left : int64_t{BLOCK_ROWS};
        store_bits(bitmap, row, (rows + 7) / 8 * 8, valid_rows(*column, row, rows));
    }
}
