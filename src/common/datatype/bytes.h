// Loads and stores of big-endian integers at any address, and words as eight bytes, for every area of the
// library.
//
// At run time each load and store is one plain load or store and a byte swap. Compilers find that in shifted
// bytes only sometimes (GCC 12 misses it in unrolled callers, which doubled the instructions of an addition),
// so the shifts are for constant expressions alone.

#ifndef DV_DATATYPE_BYTES_H
#define DV_DATATYPE_BYTES_H

#include <bit>
#include <cstdint>
#include <cstring>
#include <type_traits>

namespace dv::impl {

constexpr uint16_t swap_bytes(uint16_t v) { return __builtin_bswap16(v); }
constexpr uint32_t swap_bytes(uint32_t v) { return __builtin_bswap32(v); }
constexpr uint64_t swap_bytes(uint64_t v) { return __builtin_bswap64(v); }

template <typename Word>
constexpr Word load_be(const uint8_t *p) {
    Word v{};
    if (std::is_constant_evaluated()) {
        for (size_t i = 0; i < sizeof v; ++i) v = static_cast<Word>(v << 8 | p[i]);
        return v;
    }
    memcpy(&v, p, sizeof v);
    return std::endian::native == std::endian::little ? swap_bytes(v) : v;
}

template <typename Word>
constexpr void store_be(uint8_t *p, Word v) {
    if (std::is_constant_evaluated()) {
        for (size_t i = sizeof v; i-- > 0; v = static_cast<Word>(v >> 8)) p[i] = static_cast<uint8_t>(v);
        return;
    }
    if (std::endian::native == std::endian::little) v = swap_bytes(v);
    memcpy(p, &v, sizeof v);
}

// The same value in every byte of a word.
constexpr uint64_t in_each_byte(uint8_t value) { return value * 0x0101010101010101u; }

constexpr uint16_t load_be16(const uint8_t *p) { return load_be<uint16_t>(p); }
constexpr uint32_t load_be32(const uint8_t *p) { return load_be<uint32_t>(p); }
constexpr uint64_t load_be64(const uint8_t *p) { return load_be<uint64_t>(p); }

constexpr void store_be16(uint8_t *p, uint16_t v) { store_be(p, v); }
constexpr void store_be32(uint8_t *p, uint32_t v) { store_be(p, v); }
constexpr void store_be64(uint8_t *p, uint64_t v) { store_be(p, v); }

}  // namespace dv::impl

#endif  // DV_DATATYPE_BYTES_H
