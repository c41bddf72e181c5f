// Bits of keys packed by one instruction (key_bits.cpp), for processors that have it.

namespace dv::impl::DV_LEVEL {
namespace {

uint64_t add_part(const key_part_t &part, const uint8_t *key, size_t width, uint64_t first, int64_t count,
                  item_t *items) {
    uint64_t varying = 0;
    for (int64_t i = 0; i < count; ++i, key += width) {
        const uint64_t word = load_key_word(key + part.at, width);
        varying |= word ^ first;
        items[i] |= _pext_u64(word, part.mask) << part.shift;
    }
    return varying;
}

constexpr key_bits_kernels_t kernels = {add_part};

}  // namespace
}  // namespace dv::impl::DV_LEVEL
