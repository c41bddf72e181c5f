// The first bytes of NUMBERs as numbers: where two of these differ, so do the values, in the same direction.

#ifndef DV_COLUMN_RECORD_KEYS_H
#define DV_COLUMN_RECORD_KEYS_H

#include "record_places.h"

namespace dv::impl {

inline constexpr int KEY_SIZE = 8;

inline constexpr uint64_t KEY_TOP_BIT = uint64_t{1} << 63;  // turned around, so that keys have a sign

// signexp in the top byte and the digits behind it, 0 behind the end of the record; less 2^63.
//
// Of two keys that differ the lower one has the lower value: either a byte of both records is the first that
// differs, or the record with the lower key ends where they differ, and the beginning of another one is below
// it (number_cmp).
constexpr int64_t record_key(uint64_t bytes, uint64_t size) {
    const uint64_t key = size >= KEY_SIZE ? bytes : bytes & ~(~uint64_t{0} >> 8 * size);
    return static_cast<int64_t>(key ^ KEY_TOP_BIT);
}

struct record_keys_t {
    int64_t key[BLOCK_ROWS];
    uint64_t size[BLOCK_ROWS];  // 0: no value
};

// Rows by what their keys tell: `below` of x below y, `equal`, and those where the rest of the records
// decides, which are in neither; `none` is where one of the two has no value.
struct key_order_t {
    uint64_t below, equal, open, none;
};

struct key_kernels_t {
    void (*by_stride)(const places_by_stride_t &places, int count, record_keys_t &keys);
    void (*by_offsets)(const places_by_offsets_t &places, int count, record_keys_t &keys);
    key_order_t (*compare)(const record_keys_t &x, const record_keys_t &y);
};

// Those of the level in use.
const key_kernels_t &key_kernels();

// The keys of a block, where `valid` says so; returns the rows whose keys are not there and that are left to
// the function for one value.
inline uint64_t load_keys(const key_kernels_t &kernels, const dv_column_t &column, int64_t row, int count,
                          uint64_t valid, record_keys_t &keys) {
    if (column.offsets == nullptr) {
        kernels.by_stride(places_by_stride(column, row), count, keys);
        return 0;
    }
    places_by_offsets_t places;
    const uint64_t found = find_by_offsets(column, row, count, valid, places);
    kernels.by_offsets(places, count, keys);
    return valid & ~found;
}

// The same key in every row.
inline void fill_keys(const number_t &x, record_keys_t &keys) {
    const int64_t key = record_key(load_be64(&x.signexp), x.size);
    for (int i = 0; i < BLOCK_ROWS; ++i) {
        keys.key[i] = key;
        keys.size[i] = x.size;
    }
}

}  // namespace dv::impl

#endif  // DV_COLUMN_RECORD_KEYS_H
