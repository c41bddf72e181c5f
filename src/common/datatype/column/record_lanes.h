// Bytes of NUMBER records in lanes of 64 bits, one record a lane, in their order.

#include "int64_lanes.h"

namespace dv::impl::DV_LEVEL {
namespace {

struct two_lanes_t {
    lanes_t lower, upper;
};

// Every other record, of half of LANES, and the lanes of both halves.
#if DV_LANES == 256

template <typename Places>
inline lanes_t every_other_record(const Places &places, int row, int first, int from, __m128i bytes) {
    const __m128i low = load_vector(places.at(row, first) + from);
    const __m128i high = load_vector(places.at(row, first + 2) + from);
    const __m256i records = _mm256_inserti128_si256(_mm256_castsi128_si256(low), high, 1);
    return _mm256_shuffle_epi8(records, _mm256_broadcastsi128_si256(bytes));
}

inline two_lanes_t in_order(lanes_t even, lanes_t odd) {
    return {_mm256_unpacklo_epi64(even, odd), _mm256_unpackhi_epi64(even, odd)};
}

// Eight digits a lane, the first in the lowest byte, of any signs, as two numbers of 32 bits; such numbers
// added; and two of them as one number.
inline lanes_t half_numbers_of(lanes_t digits) {
    const lanes_t by_2 = _mm256_maddubs_epi16(_mm256_set1_epi16(1 << 8 | 100), digits);
    return _mm256_madd_epi16(by_2, _mm256_set1_epi32(1 << 16 | 10'000));
}
inline lanes_t add_halves(lanes_t x, lanes_t y) { return _mm256_add_epi32(x, y); }
inline lanes_t whole_numbers_of(lanes_t by_4) {
    const lanes_t upper = _mm256_mul_epi32(upper_halves(by_4), in_each_lane(1));  // with its sign
    return add_lanes(_mm256_mul_epi32(by_4, in_each_lane(100'000'000)), upper);
}

#else

template <typename Places>
inline lanes_t every_other_record(const Places &places, int row, int first, int from, __m128i bytes) {
    lanes_t records = _mm512_castsi128_si512(load_vector(places.at(row, first) + from));
    records = _mm512_inserti64x2(records, load_vector(places.at(row, first + 2) + from), 1);
    records = _mm512_inserti64x2(records, load_vector(places.at(row, first + 4) + from), 2);
    records = _mm512_inserti64x2(records, load_vector(places.at(row, first + 6) + from), 3);
    return _mm512_shuffle_epi8(records, _mm512_broadcast_i32x4(bytes));
}

inline two_lanes_t in_order(lanes_t even, lanes_t odd) {
    return {_mm512_unpacklo_epi64(even, odd), _mm512_unpackhi_epi64(even, odd)};
}

inline lanes_t half_numbers_of(lanes_t digits) {
    const lanes_t by_2 = _mm512_maddubs_epi16(_mm512_set1_epi16(1 << 8 | 100), digits);
    return _mm512_madd_epi16(by_2, _mm512_set1_epi32(1 << 16 | 10'000));
}
inline lanes_t add_halves(lanes_t x, lanes_t y) { return _mm512_add_epi32(x, y); }
inline lanes_t whole_numbers_of(lanes_t by_4) {
    return add_lanes(_mm512_mul_epi32(by_4, in_each_lane(100'000'000)), _mm512_srai_epi64(by_4, 32));
}

#endif

inline lanes_t numbers_of(lanes_t digits) { return whole_numbers_of(half_numbers_of(digits)); }

// Sixteen bytes of each of LANES records, from the byte `from` on, rearranged: the first eight that `bytes`
// names are in `lower`, the others in `upper`. Records alternate between two vectors on the way, so that the
// lanes come out in their order.
template <typename Places>
inline two_lanes_t load_records(const Places &places, int row, int from, __m128i bytes) {
    return in_order(every_other_record(places, row, 0, from, bytes),
                    every_other_record(places, row, 1, from, bytes));
}

}  // namespace
}  // namespace dv::impl::DV_LEVEL
