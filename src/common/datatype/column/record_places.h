// Where the records of a block lie, for kernels that load several at once: the address of each record's size
// byte, of which and the 22 bytes behind it all can be read.
//
// A record by offsets has no size byte. What stands in front of it is loaded in its place, and the size put
// over it; so records are left to the function for one value that have nothing in front of them or less than
// 22 bytes from their first one to the end of the column.

#ifndef DV_COLUMN_RECORD_PLACES_H
#define DV_COLUMN_RECORD_PLACES_H

#include "number_rows.h"

namespace dv::impl {

// Row `row + further` is told in two parts, since by stride the second is the same address for many rows.
struct places_by_stride_t {
    static constexpr bool HAS_SIZES = false;
    const uint8_t *first;
    int64_t stride;

    const uint8_t *at(int row, int further = 0) const { return first + row * stride + further * stride; }
};

struct places_by_offsets_t {
    static constexpr bool HAS_SIZES = true;
    const uint8_t *place[BLOCK_ROWS];
    uint64_t size[BLOCK_ROWS];

    const uint8_t *at(int row, int further = 0) const { return place[row + further]; }
};

// Asks for the bytes of a later block: kernels do so little with a line of the cache that the processor, left
// to itself, asks too late. There may be no memory at that place.
inline void prefetch_later(const void *block, int64_t bytes) {
    constexpr int64_t line = 64, blocks_ahead = 2;
    const auto *const later = static_cast<const uint8_t *>(block) + blocks_ahead * bytes;
    for (int64_t i = 0; i < bytes; i += line) __builtin_prefetch(later + i);
}

inline places_by_stride_t places_by_stride(const dv_column_t &column, int64_t row) {
    if (column.stride <= 64) prefetch_later(value_at(column, row), BLOCK_ROWS * column.stride);
    return {static_cast<const uint8_t *>(value_at(column, row)), column.stride};
}

// What stands in the place of a record that is left: a NULL value.
inline constexpr number_t RECORD_LEFT_OUT = {};

// Returns the rows of `valid` that are found; the others have RECORD_LEFT_OUT.
inline uint64_t find_by_offsets(const dv_column_t &column, int64_t row, int count, uint64_t valid,
                                places_by_offsets_t &places) {
    const int32_t *const offset = column.offsets + row;
    uint64_t found = 0;
    for (int i = 0; i < count; ++i) {
        const int64_t begin = offset[i], size = int64_t{offset[i + 1]} - begin;
        const bool is_found = (valid >> i & 1) != 0 && begin >= 1 && begin + NUMBER_SIZE_MAX <= column.size &&
                              size >= 0 && size <= NUMBER_SIZE_MAX;
        found |= uint64_t{is_found} << i;
        places.place[i] =
            is_found ? static_cast<const uint8_t *>(column.values) + begin - 1 : &RECORD_LEFT_OUT.size;
        places.size[i] = is_found ? static_cast<uint64_t>(size) : 0;
    }
    return found;
}

}  // namespace dv::impl

#endif  // DV_COLUMN_RECORD_PLACES_H
