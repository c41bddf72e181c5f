// Vectors of integers of 64 bits, for the kernels of any source (kernels_by_level.h): 128, 256 or 512 bits
// wide. Those of 128 bits have no shifts by lane and no comparison of their own.

namespace dv::impl::DV_LEVEL {
namespace {

#if DV_LANES == 128

using lanes_t = __m128i;

inline lanes_t load_lanes(const void *p) { return _mm_loadu_si128(static_cast<const lanes_t *>(p)); }
inline lanes_t in_each_lane(uint64_t v) { return _mm_set1_epi64x(static_cast<long long>(v)); }
inline lanes_t add_lanes(lanes_t x, lanes_t y) { return _mm_add_epi64(x, y); }
inline lanes_t subtract_lanes(lanes_t x, lanes_t y) { return _mm_sub_epi64(x, y); }
inline lanes_t both(lanes_t x, lanes_t y) { return _mm_and_si128(x, y); }
inline lanes_t either(lanes_t x, lanes_t y) { return _mm_or_si128(x, y); }
inline lanes_t exclusive_or(lanes_t x, lanes_t y) { return _mm_xor_si128(x, y); }
inline lanes_t upper_halves(lanes_t x) { return _mm_srli_epi64(x, 32); }
inline lanes_t second_alone(lanes_t x, lanes_t y) { return _mm_andnot_si128(x, y); }

inline uint64_t top_bits_of(lanes_t x) { return static_cast<unsigned>(_mm_movemask_pd(_mm_castsi128_pd(x))); }
// y - x is negative, where they have one sign; or y alone is.
inline uint64_t are_greater(lanes_t x, lanes_t y) {
    const lanes_t less = second_alone(exclusive_or(x, y), subtract_lanes(y, x));
    return top_bits_of(either(less, second_alone(x, y)));
}
inline uint64_t are_equal(lanes_t x, lanes_t y) {
    const lanes_t halves = _mm_cmpeq_epi32(x, y);
    return top_bits_of(both(halves, _mm_shuffle_epi32(halves, 0xB1)));
}

inline lanes_t keep_lanes(lanes_t x, uint64_t bits) {
    const auto mask = [bits](int lane) { return -static_cast<long long>(bits >> lane & 1); };
    return both(x, _mm_set_epi64x(mask(1), mask(0)));
}

inline void store_lanes_unless(lanes_t where_not, void *p, lanes_t x) {
    const lanes_t is_kept = _mm_shuffle_epi32(_mm_srai_epi32(where_not, 31), 0xF5);
    const lanes_t mixed = either(both(is_kept, load_lanes(p)), second_alone(is_kept, x));
    _mm_storeu_si128(static_cast<lanes_t *>(p), mixed);
}

#elif DV_LANES == 256

using lanes_t = __m256i;

inline lanes_t load_lanes(const void *p) { return _mm256_loadu_si256(static_cast<const lanes_t *>(p)); }
inline lanes_t in_each_lane(uint64_t v) { return _mm256_set1_epi64x(static_cast<long long>(v)); }
inline lanes_t add_lanes(lanes_t x, lanes_t y) { return _mm256_add_epi64(x, y); }
inline lanes_t subtract_lanes(lanes_t x, lanes_t y) { return _mm256_sub_epi64(x, y); }
inline lanes_t both(lanes_t x, lanes_t y) { return _mm256_and_si256(x, y); }
inline lanes_t either(lanes_t x, lanes_t y) { return _mm256_or_si256(x, y); }
inline lanes_t exclusive_or(lanes_t x, lanes_t y) { return _mm256_xor_si256(x, y); }
inline lanes_t upper_halves(lanes_t x) { return _mm256_srli_epi64(x, 32); }

// ~x & y
inline lanes_t second_alone(lanes_t x, lanes_t y) { return _mm256_andnot_si256(x, y); }
// By the bits that each lane of `by` tells; 64 and more, as an unsigned number, leave 0.
inline lanes_t shift_left(lanes_t x, lanes_t by) { return _mm256_sllv_epi64(x, by); }
inline lanes_t shift_right(lanes_t x, lanes_t by) { return _mm256_srlv_epi64(x, by); }
inline lanes_t times_eight(lanes_t x) { return _mm256_slli_epi64(x, 3); }
// All ones in the lanes that are negative.
inline lanes_t signs_of(lanes_t x) { return _mm256_cmpgt_epi64(_mm256_setzero_si256(), x); }
inline void store_lanes(void *p, lanes_t x) { _mm256_storeu_si256(static_cast<lanes_t *>(p), x); }

// 0 in the lanes whose bit is clear.
inline lanes_t keep_lanes(uint64_t bits, lanes_t x) {
    const lanes_t bit = _mm256_setr_epi64x(1, 2, 4, 8);
    return both(x, _mm256_cmpeq_epi64(both(in_each_lane(bits), bit), bit));
}

inline int64_t sum_of_lanes(lanes_t x) {
    const __m128i halves = _mm_add_epi64(_mm256_castsi256_si128(x), _mm256_extracti128_si256(x, 1));
    return _mm_cvtsi128_si64(_mm_add_epi64(halves, _mm_unpackhi_epi64(halves, halves)));
}

// A bit for each lane.
inline uint64_t top_bits_of(lanes_t x) {
    return static_cast<unsigned>(_mm256_movemask_pd(_mm256_castsi256_pd(x)));
}
inline uint64_t are_greater(lanes_t x, lanes_t y) { return top_bits_of(_mm256_cmpgt_epi64(x, y)); }
inline uint64_t are_equal(lanes_t x, lanes_t y) { return top_bits_of(_mm256_cmpeq_epi64(x, y)); }

// The lanes for which one of the lowest bits is set, and 0 for the others.
inline lanes_t keep_lanes(lanes_t x, uint64_t bits) {
    const lanes_t bit_of_lane = _mm256_setr_epi64x(1, 2, 4, 8);
    const lanes_t own_bits = both(in_each_lane(bits), bit_of_lane);
    return both(x, _mm256_cmpeq_epi64(own_bits, bit_of_lane));
}

// Stores the lanes whose sign in `where_not` is clear.
inline void store_lanes_unless(lanes_t where_not, void *p, lanes_t x) {
    const lanes_t is_stored = _mm256_cmpgt_epi64(where_not, _mm256_set1_epi64x(-1));
    _mm256_maskstore_epi64(static_cast<long long *>(p), is_stored, x);
}

#else

using lanes_t = __m512i;

inline lanes_t load_lanes(const void *p) { return _mm512_loadu_si512(p); }
inline lanes_t in_each_lane(uint64_t v) { return _mm512_set1_epi64(static_cast<long long>(v)); }
inline lanes_t add_lanes(lanes_t x, lanes_t y) { return _mm512_add_epi64(x, y); }
inline lanes_t subtract_lanes(lanes_t x, lanes_t y) { return _mm512_sub_epi64(x, y); }
inline lanes_t both(lanes_t x, lanes_t y) { return _mm512_and_si512(x, y); }
inline lanes_t either(lanes_t x, lanes_t y) { return _mm512_or_si512(x, y); }
inline lanes_t exclusive_or(lanes_t x, lanes_t y) { return _mm512_xor_si512(x, y); }
inline lanes_t upper_halves(lanes_t x) { return _mm512_srli_epi64(x, 32); }

inline lanes_t second_alone(lanes_t x, lanes_t y) { return _mm512_andnot_si512(x, y); }
inline lanes_t shift_left(lanes_t x, lanes_t by) { return _mm512_sllv_epi64(x, by); }
inline lanes_t shift_right(lanes_t x, lanes_t by) { return _mm512_srlv_epi64(x, by); }
inline lanes_t times_eight(lanes_t x) { return _mm512_slli_epi64(x, 3); }
inline lanes_t signs_of(lanes_t x) { return _mm512_srai_epi64(x, 63); }
inline void store_lanes(void *p, lanes_t x) { _mm512_storeu_si512(p, x); }

inline lanes_t keep_lanes(uint64_t bits, lanes_t x) {
    return _mm512_maskz_mov_epi64(static_cast<__mmask8>(bits), x);
}

inline int64_t sum_of_lanes(lanes_t x) { return _mm512_reduce_add_epi64(x); }

inline uint64_t top_bits_of(lanes_t x) { return _mm512_movepi64_mask(x); }
inline uint64_t are_greater(lanes_t x, lanes_t y) { return _mm512_cmpgt_epi64_mask(x, y); }
inline uint64_t are_equal(lanes_t x, lanes_t y) { return _mm512_cmpeq_epi64_mask(x, y); }

inline lanes_t keep_lanes(lanes_t x, uint64_t bits) {
    return _mm512_maskz_mov_epi64(static_cast<__mmask8>(bits), x);
}

inline void store_lanes_unless(lanes_t where_not, void *p, lanes_t x) {
    _mm512_mask_storeu_epi64(p, static_cast<__mmask8>(~_mm512_movepi64_mask(where_not)), x);
}

#endif

inline constexpr int LANES = DV_LANES / 64;

}  // namespace
}  // namespace dv::impl::DV_LEVEL
