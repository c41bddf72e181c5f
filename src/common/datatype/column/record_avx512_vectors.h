// Eight records of datetimes in vectors, for kernels of AVX-512: the first eight bytes of each in 64 bits,
// the fraction of the second in 32.
//
// A row that is not among `rows` is neither read nor written.

namespace dv::impl::DV_LEVEL {

inline __m512i all64(uint64_t value) { return _mm512_set1_epi64(static_cast<int64_t>(value)); }

// fetch_ahead() for rows; of those far apart only the first ones.
inline void fetch_rows_ahead(const char *rows, int64_t count, int64_t stride) {
    constexpr int64_t longest = 256;
    const int64_t size = count * stride;
    fetch_ahead(rows, size < longest ? size : longest);
}

inline __m512i row_offsets(int64_t stride) {
    const __m512i rows = _mm512_setr_epi64(0, 1, 2, 3, 4, 5, 6, 7);
    return _mm512_mullo_epi64(rows, all64(static_cast<uint64_t>(stride)));
}

inline __m512i load_words(const char *from, int64_t stride, __mmask8 rows) {
    if (stride == sizeof(int64_t)) return _mm512_maskz_loadu_epi64(rows, from);
    return _mm512_mask_i64gather_epi64(_mm512_setzero_si512(), rows, row_offsets(stride), from, 1);
}

inline void store_words(char *to, int64_t stride, __mmask8 rows, __m512i x) {
    if (stride == sizeof(int64_t)) return _mm512_mask_storeu_epi64(to, rows, x);
    _mm512_mask_i64scatter_epi64(to, rows, row_offsets(stride), x, 1);
}

inline __m256i load_fractions(const char *from, int64_t stride, __mmask8 rows) {
    return _mm512_mask_i64gather_epi32(_mm256_setzero_si256(), rows, row_offsets(stride),
                                       from + sizeof(dv_date_t), 1);
}

inline void store_fractions(char *to, int64_t stride, __mmask8 rows, __m256i fractions) {
    _mm512_mask_i64scatter_epi32(to + sizeof(dv_date_t), rows, row_offsets(stride), fractions, 1);
}

}  // namespace dv::impl::DV_LEVEL
