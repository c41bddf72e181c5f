// Keys of records, and their comparison, by lanes (record_keys.h).

#include "record_lanes.h"

namespace dv::impl::DV_LEVEL {
namespace {

template <typename Places>
void load_keys(const Places &places, int count, record_keys_t &keys) {
    // The eight bytes behind the size, the first on top; the size.
    const __m128i key_and_size = _mm_setr_epi8(8, 7, 6, 5, 4, 3, 2, 1, 0, -1, -1, -1, -1, -1, -1, -1);
    const lanes_t top_bit = in_each_lane(KEY_TOP_BIT);
    int row = 0;
    for (; row + LANES <= count; row += LANES) {
        const two_lanes_t loaded = load_records(places, row, 0, key_and_size);
        lanes_t size = loaded.upper;
        if constexpr (Places::HAS_SIZES) size = load_lanes(places.size + row);
        const lanes_t beyond = shift_right(in_each_lane(~uint64_t{0}), times_eight(size));
        store_lanes(keys.key + row, exclusive_or(second_alone(beyond, loaded.lower), top_bit));
        store_lanes(keys.size + row, size);
    }
    load_keys_from(places, row, count, keys);
}

key_order_t compare_keys(const record_keys_t &x, const record_keys_t &y) {
    key_order_t order = {0, 0, 0, 0};
    const lanes_t none = in_each_lane(0), key_size = in_each_lane(KEY_SIZE);
    for (int row = 0; row < BLOCK_ROWS; row += LANES) {
        const lanes_t x_key = load_lanes(x.key + row), y_key = load_lanes(y.key + row);
        const lanes_t x_size = load_lanes(x.size + row), y_size = load_lanes(y.size + row);
        const uint64_t same = are_equal(x_key, y_key);
        const uint64_t whole = are_equal(x_size, y_size) & ~are_greater(x_size, key_size);
        order.below |= are_greater(y_key, x_key) << row;
        order.equal |= (same & whole) << row;
        order.open |= (same & ~whole) << row;
        order.none |= (are_equal(x_size, none) | are_equal(y_size, none)) << row;
    }
    return order;
}

constexpr key_kernels_t kernels = {load_keys<places_by_stride_t>, load_keys<places_by_offsets_t>,
                                   compare_keys};

}  // namespace
}  // namespace dv::impl::DV_LEVEL
