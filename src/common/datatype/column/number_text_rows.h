// What number_text.cpp and its kernels share.

#ifndef DV_COLUMN_NUMBER_TEXT_ROWS_H
#define DV_COLUMN_NUMBER_TEXT_ROWS_H

#include "number_rows.h"

namespace dv::impl {

// The texts of a block of rows, those of up to sixteen characters; zero bytes behind the end.
inline constexpr int SHORT_TEXT_SIZE = 16;
struct short_texts_t {
    char text[BLOCK_ROWS][SHORT_TEXT_SIZE];
    uint8_t length[BLOCK_ROWS];
};

// Both return the rows of `valid` that are left. They read and write no other rows than those of the block.
struct number_text_kernels_t {
    uint64_t (*read)(const dv_column_t &text, int64_t row, int count, uint64_t valid, records_t to);
    uint64_t (*write)(records_t from, int count, uint64_t valid, short_texts_t &texts);
};

}  // namespace dv::impl

#endif  // DV_COLUMN_NUMBER_TEXT_ROWS_H
