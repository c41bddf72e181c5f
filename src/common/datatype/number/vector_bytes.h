// Sixteen bytes at once, for NUMBER: what text, digits and limbs share. Only where
// the machine has such vectors (DV_HAS_VECTOR_BYTES); code elsewhere has a plain path.

#ifndef DV_NUMBER_VECTOR_BYTES_H
#define DV_NUMBER_VECTOR_BYTES_H

#include "../machine.h"

#if DV_HAS_VECTOR_BYTES

#include <emmintrin.h>

#include <array>
#include <cstddef>
#include <cstdint>

namespace dv::impl {

using bytes16_t = __m128i;
inline constexpr unsigned VECTOR_SIZE = sizeof(bytes16_t);

inline bytes16_t load_vector(const void *p) { return _mm_loadu_si128(static_cast<const bytes16_t *>(p)); }
inline void store_vector(void *p, bytes16_t v) { _mm_storeu_si128(static_cast<bytes16_t *>(p), v); }

inline bytes16_t join_halves(uint64_t low, uint64_t high) {
    return _mm_unpacklo_epi64(_mm_cvtsi64_si128(static_cast<int64_t>(low)),
                              _mm_cvtsi64_si128(static_cast<int64_t>(high)));
}

// Lanes of 16 bits times a constant, which is kept from the compiler: knowing it, compilers turn the one
// multiplication into four or five shifts and additions.
inline bytes16_t multiply_lanes(bytes16_t lanes, int16_t factor) {
    bytes16_t factors = _mm_set1_epi16(factor);
    __asm__("" : "+x"(factors));
    return _mm_mullo_epi16(lanes, factors);
}

// The top bits of the bytes, the first byte's lowest.
inline unsigned top_bits_of(bytes16_t v) { return static_cast<unsigned>(_mm_movemask_epi8(v)); }

inline bytes16_t select(bytes16_t mask, bytes16_t when_set, bytes16_t when_clear) {
    return _mm_xor_si128(when_clear, _mm_and_si128(mask, _mm_xor_si128(when_set, when_clear)));
}

// With another byte at one place; as it is where the place lies outside.
inline bytes16_t with_byte_at(bytes16_t v, int place, uint8_t byte) {
    const bytes16_t places = _mm_setr_epi8(0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15);
    const bytes16_t is_there = _mm_cmpeq_epi8(places, _mm_set1_epi8(static_cast<char>(place)));
    return select(is_there, _mm_set1_epi8(static_cast<char>(byte)), v);
}

// Bytes moved by one place; the place that falls free is filled from the neighbouring vector.
inline bytes16_t move_right(bytes16_t v, bytes16_t before) {
    return _mm_or_si128(_mm_slli_si128(v, 1), _mm_srli_si128(before, VECTOR_SIZE - 1));
}
inline bytes16_t move_left(bytes16_t v, bytes16_t behind) {
    return _mm_or_si128(_mm_srli_si128(v, 1), _mm_slli_si128(behind, VECTOR_SIZE - 1));
}

// Ones in the bytes of the part-th vector that lie in front of a border (0..48). They are loaded from a row
// of ones and zeros, at a place that the border gives.
inline constexpr unsigned BORDER_MAX = 3 * VECTOR_SIZE;
inline constexpr auto BORDER_ROW = [] {
    std::array<uint8_t, 2 * BORDER_MAX> row{};
    for (size_t i = 0; i < BORDER_MAX; ++i) row[i] = 0xFF;
    return row;
}();
inline bytes16_t in_front_of(uint64_t border, unsigned part = 0) {
    return load_vector(BORDER_ROW.data() + BORDER_MAX - border + VECTOR_SIZE * part);
}

}  // namespace dv::impl

#endif  // DV_HAS_VECTOR_BYTES

#endif  // DV_NUMBER_VECTOR_BYTES_H
