// Vectors of integers of 64 bits, for the kernels of any source; included by them, once a level. DV_LANES is
// the width of a vector in bits, 256 or 512.

namespace dv::impl::DV_LEVEL {
namespace {

#if DV_LANES == 256

using lanes_t = __m256i;

inline lanes_t load_lanes(const void *p) { return _mm256_loadu_si256(static_cast<const lanes_t *>(p)); }
inline lanes_t in_each_lane(uint64_t v) { return _mm256_set1_epi64x(static_cast<long long>(v)); }
inline lanes_t add_lanes(lanes_t x, lanes_t y) { return _mm256_add_epi64(x, y); }
inline lanes_t subtract_lanes(lanes_t x, lanes_t y) { return _mm256_sub_epi64(x, y); }
inline lanes_t both(lanes_t x, lanes_t y) { return _mm256_and_si256(x, y); }
inline lanes_t either(lanes_t x, lanes_t y) { return _mm256_or_si256(x, y); }
inline lanes_t exclusive_or(lanes_t x, lanes_t y) { return _mm256_xor_si256(x, y); }
inline lanes_t upper_halves(lanes_t x) { return _mm256_srli_epi64(x, 32); }

// A bit for each lane.
inline uint64_t top_bits_of(lanes_t x) {
    return static_cast<unsigned>(_mm256_movemask_pd(_mm256_castsi256_pd(x)));
}
inline uint64_t are_greater(lanes_t x, lanes_t y) { return top_bits_of(_mm256_cmpgt_epi64(x, y)); }
inline uint64_t are_equal(lanes_t x, lanes_t y) { return top_bits_of(_mm256_cmpeq_epi64(x, y)); }

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
// The form with a mask: GCC 12 takes the operand that the other one ignores for uninitialised.
inline lanes_t upper_halves(lanes_t x) { return _mm512_maskz_srli_epi64(0xFF, x, 32); }

inline uint64_t top_bits_of(lanes_t x) { return _mm512_movepi64_mask(x); }
inline uint64_t are_greater(lanes_t x, lanes_t y) { return _mm512_cmpgt_epi64_mask(x, y); }
inline uint64_t are_equal(lanes_t x, lanes_t y) { return _mm512_cmpeq_epi64_mask(x, y); }

inline void store_lanes_unless(lanes_t where_not, void *p, lanes_t x) {
    _mm512_mask_storeu_epi64(p, static_cast<__mmask8>(~_mm512_movepi64_mask(where_not)), x);
}

#endif

inline constexpr int LANES = DV_LANES / 64;

}  // namespace
}  // namespace dv::impl::DV_LEVEL
