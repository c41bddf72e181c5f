// UTC to local time and back by the rows of years (../timezone/zone_years.h), eight times at a time: each is
// a date_word. What rows cannot tell is left, and so are days that not every such month has.

#include "record_avx512_vectors.h"

namespace dv::impl::DV_LEVEL {
namespace {

inline __m512i swapped_words_(__m512i x) {
    return _mm512_shuffle_epi8(
        x, _mm512_broadcast_i32x4(_mm_setr_epi8(7, 6, 5, 4, 3, 2, 1, 0, 15, 14, 13, 12, 11, 10, 9, 8)));
}

// ---- rows in memory ----

struct times_t {
    __m512i words;
    __m256i fractions;  // as they are
};

// Timestamps side by side are twenty-four words of 32 bits: a bit for each of them.
inline uint32_t words_of_(__mmask8 rows) { return _pdep_u32(rows, 0x249249) * 7; }

inline times_t load_side_by_side_(const char *from, uint32_t words) {
    const __m512i low = _mm512_maskz_loadu_epi32(static_cast<__mmask16>(words), from);
    const __m512i high =
        _mm512_castsi256_si512(_mm256_maskz_loadu_epi32(static_cast<__mmask8>(words >> 16), from + 64));
    const __m512i dates = _mm512_setr_epi32(0, 1, 3, 4, 6, 7, 9, 10, 12, 13, 15, 16, 18, 19, 21, 22);
    const __m512i fractions = _mm512_setr_epi32(2, 5, 8, 11, 14, 17, 20, 23, 0, 0, 0, 0, 0, 0, 0, 0);
    return {_mm512_permutex2var_epi32(low, dates, high),
            _mm512_castsi512_si256(_mm512_permutex2var_epi32(low, fractions, high))};
}

inline void store_side_by_side_(char *to, uint32_t words, const times_t &x) {
    const __m512i fractions = _mm512_castsi256_si512(x.fractions);
    const __m512i low = _mm512_setr_epi32(0, 1, 16, 2, 3, 17, 4, 5, 18, 6, 7, 19, 8, 9, 20, 10);
    const __m512i high = _mm512_setr_epi32(11, 21, 12, 13, 22, 14, 15, 23, 0, 0, 0, 0, 0, 0, 0, 0);
    _mm512_mask_storeu_epi32(to, static_cast<__mmask16>(words),
                             _mm512_permutex2var_epi32(x.words, low, fractions));
    _mm256_mask_storeu_epi32(to + 64, static_cast<__mmask8>(words >> 16),
                             _mm512_castsi512_si256(_mm512_permutex2var_epi32(x.words, high, fractions)));
}

inline times_t load_times_(const zone_block_t &block, int row, __mmask8 rows) {
    const char *const from = block.from + row * block.from_stride;
    fetch_rows_ahead(from, 8, block.from_stride);
    times_t x;
    if (block.from_stride == sizeof(dv_timestamp_t)) {
        x = load_side_by_side_(from, words_of_(rows));
    } else {
        x.words = load_words(from, block.from_stride, rows);
        x.fractions = load_fractions(from, block.from_stride, rows);
    }
    x.words = swapped_words_(x.words);
    return x;
}

inline void store_times_(const zone_block_t &block, int row, __mmask8 rows, times_t x) {
    char *const to = block.to + row * block.to_stride;
    fetch_rows_ahead(to, 8, block.to_stride);
    x.words = swapped_words_(x.words);
    if (block.to_stride == sizeof(dv_timestamp_t)) return store_side_by_side_(to, words_of_(rows), x);
    store_words(to, block.to_stride, rows, x.words);
    store_fractions(to, block.to_stride, rows, x.fractions);
}

// ---- the rows of years ----

// Where the years of each time's zone begin. A number above all regions' is that of one that has no rows.
inline __m512i first_years_(const zone_block_t &block, int row, __mmask8 rows) {
    constexpr int after_hour = offsetof(timezone_t, utc_min);  // four bytes, the number last
    const char *const zones = block.zones + row * block.zone_stride + after_hour;
    fetch_rows_ahead(zones, 8, block.zone_stride);
    const __m256i bytes =
        _mm512_mask_i64gather_epi32(_mm256_setzero_si256(), rows, row_offsets(block.zone_stride), zones, 1);
    const __m512i zone = _mm512_cvtepu32_epi64(bytes);
    const __m512i page = _mm512_and_si512(_mm512_srli_epi64(zone, 16), all64(0xFF));
    const __m512i number = _mm512_or_si512(_mm512_slli_epi64(page, 8), _mm512_srli_epi64(zone, 24));
    const __m512i known = _mm512_min_epu64(number, all64(ZONE_ID_PAGES * 256 - 1));
    return _mm512_cvtepu32_epi64(_mm512_i64gather_epi32(known, ZONE_FIRST_YEARS, sizeof(uint32_t)));
}

// Numbers of rows as bytes from the first row. Times of other years are taken out of `rows`.
template <bool is_utc>
__m512i year_rows_(__m512i words, __m512i first_years, __mmask8 &rows) {
    constexpr uint64_t first_year = date_word(119, 100, 0) >> 48;
    static_assert(ZONE_YEAR_FIRST == 1900 && sizeof(zone_year_rows_t) == 4);
    const __m512i year = _mm512_sub_epi64(_mm512_srli_epi64(words, 48), all64(first_year));
    rows = _mm512_mask_cmplt_epu64_mask(rows, year, all64(ZONE_YEAR_COUNT));
    const __m256i both = _mm512_mask_i64gather_epi32(_mm256_setzero_si256(), rows,
                                                     _mm512_add_epi64(first_years, year), ZONE_YEARS, 4);
    const __m256i number =
        is_utc ? _mm256_and_si256(both, _mm256_set1_epi32(0xFFFF)) : _mm256_srli_epi32(both, 16);
    return _mm512_slli_epi64(_mm512_cvtepu32_epi64(number), std::countr_zero(sizeof(zone_year_t)));
}

template <size_t offset>
__m512i member_(__m512i rows) {
    return _mm512_i64gather_epi64(rows, reinterpret_cast<const char *>(ZONE_YEAR_ROWS) + offset, 1);
}

// The shifts of the periods that times belong to. Times that the rows cannot tell are taken out of `rows`. A
// period to which all of eight times belong is kept in `shared`.
template <bool is_utc>
__m512i shifts_(__m512i words, __m512i year_rows, __mmask8 &rows, shared_period_t &shared) {
    const __m512i in_year = _mm512_slli_epi64(words, 16);
    const __mmask8 is_before_last =
        _mm512_cmplt_epu64_mask(in_year, member_<offsetof(zone_year_t, begin)>(year_rows));
    const __mmask8 is_before_both =
        _mm512_cmplt_epu64_mask(in_year, member_<offsetof(zone_year_t, begin) + 8>(year_rows));
    const __m512i one = all64(sizeof(zone_period_t));
    const __m512i number = _mm512_maskz_mov_epi64(is_before_last, one);
    const __m512i period =
        _mm512_add_epi64(_mm512_mask_add_epi64(number, is_before_both, number, one), year_rows);
    if (is_utc) {
        rows = _mm512_mask_cmpneq_epu64_mask(rows, year_rows, _mm512_setzero_si512());  // row 0 tells nothing
    } else {
        static_assert(sizeof(zone_period_t) == sizeof(uint64_t));
        rows = _mm512_mask_cmpge_epu64_mask(rows, in_year, member_<offsetof(zone_year_t, plain)>(period));
    }
    const __m512i found = member_<offsetof(zone_year_t, periods)>(period);
    const __m512i year = _mm512_srli_epi64(words, 48);
    const __mmask8 is_same_year =
        _mm512_mask_cmpeq_epi64_mask(rows, year, _mm512_broadcastq_epi64(_mm512_castsi512_si128(year)));
    if (_mm512_mask_cmpeq_epi64_mask(is_same_year, period,
                                     _mm512_broadcastq_epi64(_mm512_castsi512_si128(period))) == 0xFF) {
        const auto row = static_cast<size_t>(_mm_cvtsi128_si64(_mm512_castsi512_si128(year_rows)));
        const auto word = static_cast<uint64_t>(_mm_cvtsi128_si64(_mm512_castsi512_si128(words)));
        shared = period_of<is_utc>(word, ZONE_YEAR_ROWS[row / sizeof(zone_year_t)]);
    }
    return _mm512_srai_epi64(_mm512_slli_epi64(found, 32), 32);
}

// ---- date_word.h, for eight words ----

inline __mmask8 has_clock_(__m512i words) {
    constexpr uint64_t bit_7 = 0x80u << WORD_MINUTE_AT | 0x80u << WORD_HOUR_AT,
                       to_bit_7 = (128u - MINUTES_PER_HOUR) << WORD_MINUTE_AT | (128u - HOURS_PER_DAY)
                                                                                    << WORD_HOUR_AT;
    const __m512i fields = _mm512_and_si512(words, all64(0xFFFF'FFFF));
    return _mm512_testn_epi64_mask(_mm512_or_si512(_mm512_add_epi64(fields, all64(to_bit_7)), fields),
                                   all64(bit_7));
}

inline __m512i shifted_(__m512i words, __m512i shifts) {
    constexpr uint64_t bit_7 = uint64_t{0x80} << WORD_MINUTE_AT | uint64_t{0x80} << WORD_HOUR_AT,
                       carries = uint64_t{MINUTE_CARRY} << WORD_MINUTE_AT | uint64_t{HOUR_CARRY}
                                                                                << WORD_HOUR_AT;
    const __m512i sum = _mm512_add_epi64(words, _mm512_slli_epi64(shifts, WORD_MINUTE_AT));
    const __m512i not_carried = _mm512_and_si512(sum, all64(bit_7));
    const __m512i bytes =
        _mm512_sub_epi64(_mm512_add_epi64(not_carried, not_carried), _mm512_srli_epi64(not_carried, 7));
    return _mm512_sub_epi64(sum, _mm512_and_si512(bytes, all64(carries)));
}

inline __mmask8 has_certain_day_(__m512i shifted, __m512i words) {
    const __m512i day = _mm512_and_si512(_mm512_srli_epi64(shifted, WORD_DAY_AT), all64(0xFF));
    const __m512i month = _mm512_and_si512(_mm512_srli_epi64(words, WORD_MONTH_AT), all64(0xFF));
    const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i *>(CERTAIN_DAYS.data()));
    const __m512i certain = _mm512_permutexvar_epi32(month, _mm512_cvtepu8_epi32(bytes));
    const __mmask8 is_month = _mm512_cmple_epu64_mask(month, all64(MONTHS_PER_YEAR));
    const __m512i before = _mm512_sub_epi64(day, all64(1));
    // the upper half of each entry is that of month 0: no days
    return _mm512_mask_cmplt_epu64_mask(is_month, before, certain);
}

// Do all rows belong to a period of one zone?
inline bool is_shared_(const shared_period_t &shared, __m512i words, __mmask8 rows) {
    const __m512i from_first = _mm512_sub_epi64(words, all64(shared.first));
    return _mm512_mask_cmplt_epu64_mask(rows, from_first, all64(shared.size)) == rows;
}

template <bool is_utc>
uint64_t convert(const zone_block_t &block, uint64_t rows) {
    const bool has_one_zone = block.zone_stride == 0;
    uint64_t left = rows;
    __m512i first_years = _mm512_setzero_si512();
    if (has_one_zone && rows != 0)
        first_years = _mm512_broadcastq_epi64(_mm512_castsi512_si128(first_years_(block, 0, 1)));
    for (int i = 0; i < block.count; i += 8) {
        auto done = static_cast<__mmask8>(rows >> i);
        times_t x = load_times_(block, i, done);
        done &= has_clock_(x.words);
        __m512i shifts;
        if (has_one_zone && is_shared_(*block.shared, x.words, done)) {
            shifts = _mm512_set1_epi64(block.shared->shift);
        } else {
            if (!has_one_zone) first_years = first_years_(block, i, done);
            const __m512i year_rows = year_rows_<is_utc>(x.words, first_years, done);
            shifts = shifts_<is_utc>(x.words, year_rows, done, *block.shared);
        }
        const __m512i shifted = shifted_(x.words, shifts);
        done &= has_certain_day_(shifted, x.words);
        x.words = shifted;
        store_times_(block, i, done, x);
        left &= ~(uint64_t{done} << i);
    }
    return left;
}

constexpr zone_kernels_t kernels = {convert</*is_utc=*/true>, convert</*is_utc=*/false>};

}  // namespace
}  // namespace dv::impl::DV_LEVEL
