// Keys of records at each vector level.

#include "record_keys.h"

#include "../number/vector_bytes.h"

namespace dv::impl {

namespace {

// The rows [row, count), one by one, and no value behind them.
template <typename Places>
void load_keys_from(const Places &places, int row, int count, record_keys_t &keys) {
    for (; row < count; ++row) {
        const uint8_t *const record = places.at(row);
        uint64_t size = record[0];
        if constexpr (Places::HAS_SIZES) size = places.size[row];
        keys.size[row] = size;
        keys.key[row] = record_key(load_be64(record + 1), size);
    }
    for (; row < BLOCK_ROWS; ++row) {
        keys.key[row] = 0;
        keys.size[row] = 0;
    }
}

}  // namespace

}  // namespace dv::impl

namespace dv::impl::plain {
namespace {

template <typename Places>
void load_keys(const Places &places, int count, record_keys_t &keys) {
    load_keys_from(places, 0, count, keys);
}

key_order_t compare_keys(const record_keys_t &x, const record_keys_t &y) {
    key_order_t order = {0, 0, 0, 0};
    for (int i = 0; i < BLOCK_ROWS; ++i) {
        const bool same = x.key[i] == y.key[i];
        const bool whole = x.size[i] == y.size[i] && x.size[i] <= KEY_SIZE;
        order.below |= uint64_t{x.key[i] < y.key[i]} << i;
        order.equal |= uint64_t{same && whole} << i;
        order.open |= uint64_t{same && !whole} << i;
        order.none |= uint64_t{x.size[i] == 0 || y.size[i] == 0} << i;
    }
    return order;
}

constexpr key_kernels_t kernels = {load_keys<places_by_stride_t>, load_keys<places_by_offsets_t>,
                                   compare_keys};

}  // namespace
}  // namespace dv::impl::plain

#define DV_AVX2_KERNELS "key_kernels.h"
#define DV_AVX512_KERNELS "key_kernels.h"
#include "kernels_by_level.h"

const dv::impl::key_kernels_t &dv::impl::key_kernels() { return kernels_in_use(); }
