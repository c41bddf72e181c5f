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

struct places_by_stride_t {
    static constexpr bool HAS_SIZES = false;
    const uint8_t *first;
    int64_t stride;

    const uint8_t *operator[](int i) const { return first + i * stride; }
};

struct places_by_offsets_t {
    static constexpr bool HAS_SIZES = true;
    const uint8_t *place[BLOCK_ROWS];
    uint64_t size[BLOCK_ROWS];

    const uint8_t *operator[](int i) const { return place[i]; }
};

inline places_by_stride_t places_by_stride(const dv_column_t &column, int64_t row) {
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
