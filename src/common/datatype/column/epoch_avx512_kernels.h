// Counts since 1970-01-01, sixteen rows at a time. Only days after the reform of 1582 are done.
//
// A record is three words of 32 bits, each in a vector of its own: the day (century lowest), the clock, the
// nanoseconds. Days and seconds of the day are numbers of 32 bits; counts have 64, in two vectors of eight
// rows. A day has odd * 2^shift units, the odd part below 2^31, so that products of 32 bits do.
// The calendar is that of calendar.h, with products for the quotients.

#include "record_avx512_vectors.h"

namespace dv::impl::DV_LEVEL {
namespace {

inline constexpr int _group = 16;  // rows

inline __m512i all32_(uint32_t value) { return _mm512_set1_epi32(static_cast<int>(value)); }

// Numbers below 2^15 times a factor below 2^15.
inline __m512i short_product_(__m512i x, uint32_t factor) { return _mm512_madd_epi16(x, all32_(factor)); }

// Numbers below 2^16, divided.
template <uint32_t divisor, uint32_t most>
__m512i short_quotient_(__m512i x) {
    constexpr reciprocal_t reciprocal = reciprocal_of(divisor, most);
    constexpr int more = reciprocal.shift < 16 ? 16 - reciprocal.shift : 0;
    static_assert(most < 1 << 16 && reciprocal.factor << more < 1 << 16);
    return _mm512_srli_epi32(_mm512_mulhi_epu16(x, all32_(reciprocal.factor << more)),
                             static_cast<unsigned>(reciprocal.shift + more - 16));
}

// Numbers of 32 bits, divided: those at even and at odd places apart.
template <uint32_t divisor, uint32_t most>
__m512i long_quotient_(__m512i x) {
    constexpr reciprocal_t reciprocal = reciprocal_of(divisor, most);
    static_assert(reciprocal.shift >= 32);
    const __m512i factor = all64(reciprocal.factor);
    const __m512i even = _mm512_mul_epu32(x, factor),
                  odd = _mm512_mul_epu32(_mm512_srli_epi64(x, 32), factor);
    const __m512i upper = _mm512_mask_mov_epi32(_mm512_srli_epi64(even, 32), 0xAAAA, odd);
    return _mm512_srli_epi32(upper, reciprocal.shift - 32);
}

inline __m512i plus_(__m512i x, __mmask16 rows, uint32_t value) {
    return _mm512_mask_add_epi32(x, rows, x, all32_(value));
}

// Big-endian words to numbers, and back.
inline __m512i swapped_(__m512i x) {
    return _mm512_shuffle_epi8(
        x, _mm512_broadcast_i32x4(_mm_setr_epi8(3, 2, 1, 0, 7, 6, 5, 4, 11, 10, 9, 8, 15, 14, 13, 12)));
}

// ---- rows in memory; one that is not among `rows` is neither read nor written ----

struct records_t {
    __m512i day, clock, nanoseconds;
};
struct counts_t {
    __m512i low, high;  // rows 0 to 7, and 8 to 15
};

inline __mmask8 low_(__mmask16 rows) { return static_cast<__mmask8>(rows); }
inline __mmask8 high_(__mmask16 rows) { return static_cast<__mmask8>(rows >> 8); }

// Where words come from in two vectors, and which come from a third.
struct words_t {
    int32_t places[_group];
    __mmask16 of_third;
};

inline __m512i take_(const words_t &words, __m512i first, __m512i second) {
    return _mm512_permutex2var_epi32(first, _mm512_loadu_si512(words.places), second);
}
inline __m512i take_(const words_t &words, __m512i first, __m512i second, __m512i third) {
    return _mm512_mask_permutexvar_epi32(take_(words, first, second), words.of_third,
                                         _mm512_loadu_si512(words.places), third);
}

// The words at even and at odd places of two vectors.
inline constexpr words_t _even = {{0, 2, 4, 6, 8, 10, 12, 14, 16, 18, 20, 22, 24, 26, 28, 30}, 0};
inline constexpr words_t _odd = {{1, 3, 5, 7, 9, 11, 13, 15, 17, 19, 21, 23, 25, 27, 29, 31}, 0};

// Timestamps side by side are three vectors: each word of the records out of them, and each of them.
struct side_by_side_t {
    words_t parts[3], vectors[3];
};
inline constexpr side_by_side_t _side_by_side = [] {
    side_by_side_t found{};
    for (int word = 0; word < 3 * _group; ++word) {
        const int row = word / 3, part = word % 3, vector = word / _group, place = word % _group;
        found.parts[part].places[row] = word % (2 * _group);
        if (vector == 2) found.parts[part].of_third |= static_cast<__mmask16>(1 << row);
        found.vectors[vector].places[place] = part == 1 ? row + _group : row;
        if (part == 2) found.vectors[vector].of_third |= static_cast<__mmask16>(1 << place);
    }
    return found;
}();

inline records_t load_side_by_side_(const char *from) {
    const __m512i a = _mm512_loadu_si512(from), b = _mm512_loadu_si512(from + 64),
                  c = _mm512_loadu_si512(from + 128);
    const auto &parts = _side_by_side.parts;
    return {take_(parts[0], a, b, c), take_(parts[1], a, b, c), swapped_(take_(parts[2], a, b, c))};
}

inline void store_side_by_side_(char *to, const records_t &x) {
    const __m512i fractions = swapped_(x.nanoseconds);
    for (int i = 0; i < 3; ++i)
        _mm512_storeu_si512(to + 64 * i, take_(_side_by_side.vectors[i], x.day, x.clock, fractions));
}

inline counts_t load_counts_(const char *from, int64_t stride, __mmask16 rows) {
    return {load_words(from, stride, low_(rows)), load_words(from + 8 * stride, stride, high_(rows))};
}

inline void store_counts_(char *to, int64_t stride, __mmask16 rows, const counts_t &x) {
    store_words(to, stride, low_(rows), x.low);
    store_words(to + 8 * stride, stride, high_(rows), x.high);
}

template <bool has_fraction>
records_t load_records_(const char *from, int64_t stride, __mmask16 rows) {
    if (has_fraction && stride == sizeof(dv_timestamp_t) && rows == 0xFFFF) return load_side_by_side_(from);
    const counts_t dates = load_counts_(from, stride, rows);
    __m512i fractions = _mm512_setzero_si512();
    if (has_fraction) {
        fractions = _mm512_inserti64x4(_mm512_castsi256_si512(load_fractions(from, stride, low_(rows))),
                                       load_fractions(from + 8 * stride, stride, high_(rows)), 1);
    }
    return {take_(_even, dates.low, dates.high), take_(_odd, dates.low, dates.high), swapped_(fractions)};
}

// The words of two vectors in turn.
inline counts_t zipped_(__m512i x, __m512i y) {
    const __m512i low = _mm512_setr_epi32(0, 16, 1, 17, 2, 18, 3, 19, 4, 20, 5, 21, 6, 22, 7, 23);
    return {_mm512_permutex2var_epi32(x, low, y),
            _mm512_permutex2var_epi32(x, _mm512_add_epi32(low, all32_(8)), y)};
}

template <bool has_fraction>
void store_records_(char *to, int64_t stride, __mmask16 rows, const records_t &x) {
    if (has_fraction && stride == sizeof(dv_timestamp_t) && rows == 0xFFFF) return store_side_by_side_(to, x);
    store_counts_(to, stride, rows, zipped_(x.day, x.clock));
    if (!has_fraction) return;
    const __m512i fractions = swapped_(x.nanoseconds);
    store_fractions(to, stride, low_(rows), _mm512_castsi512_si256(fractions));
    store_fractions(to + 8 * stride, stride, high_(rows), _mm512_extracti64x4_epi64(fractions, 1));
}

// ---- records to counts ----

// By month, 1 to 12.
struct months_t {
    uint32_t lengths[_group], leap_lengths[_group];
    uint32_t days_before[_group];  // in a year that begins in March
    int32_t years_before[_group];  // -1 for the months that belong to such a year that began before
};
inline constexpr months_t _months = [] {
    months_t found{};
    for (uint32_t month = 1; month <= MONTHS_PER_YEAR; ++month) {
        found.lengths[month] = MONTH_LENGTHS[0][month - 1];
        found.leap_lengths[month] = MONTH_LENGTHS[1][month - 1];
        found.days_before[month] = month_days(month + (month < 3 ? MONTHS_PER_YEAR : 0) + 1);
        found.years_before[month] = month < 3 ? -1 : 0;
    }
    return found;
}();

template <typename T>
__m512i entry_of_(const T (&table)[_group], __m512i index) {
    return _mm512_permutexvar_epi32(index, _mm512_loadu_si512(table));
}

// Rows whose bytes are between those of the first and the last record; the dummy is any.
inline __mmask16 in_range_(const records_t &x) {
    const __m512i least_day = all32_(0x01'01'64'73), most_day = all32_(0x1F'0C'C7'C7),
                  most_clock = all32_(0xFF'3B'3B'17);
    const __m512i beyond = _mm512_or_si512(
        _mm512_or_si512(_mm512_subs_epu8(x.day, most_day), _mm512_subs_epu8(least_day, x.day)),
        _mm512_subs_epu8(x.clock, most_clock));
    return _mm512_mask_cmplt_epu32_mask(_mm512_testn_epi32_mask(beyond, beyond), x.nanoseconds,
                                        all32_(NSEC_PER_SEC));
}

// A year is one of leap when its last two digits, or for 00 those of the century, are a multiple of four;
// with the excess of 100 as well.
inline __m512i month_lengths_(__m512i day, __m512i month) {
    const __m512i digits = _mm512_srli_epi32(day, 8);
    const __mmask16 is_whole =
        _mm512_cmpeq_epi32_mask(_mm512_and_si512(digits, all32_(0xFF)), all32_(DATE_YEAR_EXCESS));
    const __mmask16 is_leap =
        _mm512_testn_epi32_mask(_mm512_mask_mov_epi32(digits, is_whole, day), all32_(3));
    return _mm512_mask_permutexvar_epi32(entry_of_(_months.lengths, month), is_leap, month,
                                         _mm512_loadu_si512(_months.leap_lengths));
}

// Days since 1970; those that are none, or none after 1582, are taken out of `rows`.
inline __m512i days_(__m512i date, __mmask16 &rows) {
    constexpr int from_epoch = gregorian_day_number(1600, 3, 1) - (1461 * 1600 / 4 - 16 + 4) -
                               static_cast<int>(month_days(4)) - 1 - JDN_EPOCH;
    const __m512i years = _mm512_maddubs_epi16(date, all32_(0x01'64));  // 100 * century + year
    const __m512i year = _mm512_sub_epi32(years, all32_(DATE_YEAR_EXCESS * (YEARS_PER_CENTURY + 1)));
    const __m512i month = _mm512_and_si512(_mm512_srli_epi32(date, 16), all32_(0xFF));
    const __m512i day = _mm512_srli_epi32(date, 24);
    rows = _mm512_mask_cmple_epu32_mask(rows, day, month_lengths_(date, month));
    rows = _mm512_mask_cmpgt_epi32_mask(rows, year, all32_(GREGORIAN_YEAR));
    const __m512i from_march = _mm512_add_epi32(year, entry_of_(_months.years_before, month));
    const __m512i century = short_quotient_<YEARS_PER_CENTURY, DV_YEAR_MAX>(from_march);
    const __m512i left_out = _mm512_sub_epi32(century, _mm512_srli_epi32(century, 2));
    const __m512i of_years = _mm512_srli_epi32(short_product_(from_march, 1461), 2);
    const __m512i of_year = _mm512_add_epi32(entry_of_(_months.days_before, month), day);
    return _mm512_add_epi32(_mm512_sub_epi32(of_years, left_out),
                            _mm512_add_epi32(of_year, _mm512_set1_epi32(from_epoch)));
}

// 60 * hour + minute and the second, as two numbers of 16 bits, then all as one.
inline __m512i seconds_of_day_(__m512i clock) {
    return _mm512_madd_epi16(_mm512_maddubs_epi16(clock, all32_(0x00'01'01'3C)), all32_(0x0001'003C));
}

inline __m512i eight_counts_(__m256i days, __m256i seconds, __m256i nanoseconds, const epoch_scale_t &scale) {
    const __m512i per_day_odd = all64(scale.per_day_odd), factor = all64(scale.to_units.factor);
    const __m512i per_day_shift = all64(static_cast<uint64_t>(scale.per_day_shift)),
                  to_units_shift = all64(static_cast<uint64_t>(scale.to_units.shift));
    const __m512i of_days =
        _mm512_sllv_epi64(_mm512_mul_epi32(_mm512_cvtepi32_epi64(days), per_day_odd), per_day_shift);
    const __m512i of_seconds = _mm512_mul_epu32(_mm512_cvtepu32_epi64(seconds), all64(scale.per_second));
    const __m512i fraction =
        _mm512_srlv_epi64(_mm512_mul_epu32(_mm512_cvtepu32_epi64(nanoseconds), factor), to_units_shift);
    return _mm512_add_epi64(_mm512_add_epi64(of_days, of_seconds), fraction);
}

// Takes what is left out of `rows`.
inline counts_t counts_of_(const records_t &x, const epoch_scale_t &scale, __mmask16 &rows) {
    rows &= in_range_(x);
    const __m512i days = days_(x.day, rows), seconds = seconds_of_day_(x.clock);
    rows = _mm512_mask_cmple_epu32_mask(rows, _mm512_add_epi32(days, all32_(scale.days_limit)),
                                        all32_(2 * scale.days_limit));
    return {eight_counts_(_mm512_castsi512_si256(days), _mm512_castsi512_si256(seconds),
                          _mm512_castsi512_si256(x.nanoseconds), scale),
            eight_counts_(_mm512_extracti64x4_epi64(days, 1), _mm512_extracti64x4_epi64(seconds, 1),
                          _mm512_extracti64x4_epi64(x.nanoseconds, 1), scale)};
}

template <bool has_fraction>
uint64_t to_epoch(const epoch_block_t &block, const epoch_scale_t &scale, uint64_t rows) {
    uint64_t left = rows;
    for (int i = 0; i < block.count; i += _group) {
        auto done = static_cast<__mmask16>(rows >> i);
        fetch_rows_ahead(block.from + i * block.from_stride, _group, block.from_stride);
        fetch_rows_ahead(block.to + i * block.to_stride, _group, block.to_stride);
        const char *const from = block.from + i * block.from_stride;
        const records_t x = load_records_<has_fraction>(from, block.from_stride, done);
        const counts_t counts = counts_of_(x, scale, done);
        store_counts_(block.to + i * block.to_stride, block.to_stride, done, counts);
        left &= ~(uint64_t{done} << i);
    }
    return left;
}

// ---- counts to records ----

struct parts_t {
    __m512i days, seconds, fraction;  // since 1970, of the day, units of the second
};

// Quotients by doubles. They are exact: half a unit more keeps them off the integers, by more than the error
// of days that have records; other days come out far from those.
inline parts_t eight_parts_(__m512i counts, const epoch_scale_t &scale) {
    const __m512i shift = all64(static_cast<uint64_t>(scale.per_day_shift));
    const __m512d days_per_unit = _mm512_set1_pd(scale.days_per_coarse_unit),
                  seconds_per_unit = _mm512_set1_pd(scale.seconds_per_unit);
    const __m512d about = _mm512_fmadd_pd(_mm512_cvtepi64_pd(_mm512_srav_epi64(counts, shift)), days_per_unit,
                                          _mm512_mul_pd(_mm512_set1_pd(0.5), days_per_unit));
    const __m512i days = _mm512_cvt_roundpd_epi64(about, _MM_FROUND_TO_NEG_INF | _MM_FROUND_NO_EXC);
    const __m512i of_days = _mm512_sllv_epi64(_mm512_mul_epi32(days, all64(scale.per_day_odd)), shift);
    const __m512i of_day = _mm512_sub_epi64(counts, of_days);
    const __m512i seconds = _mm512_cvttpd_epi64(_mm512_fmadd_pd(
        _mm512_cvtepi64_pd(of_day), seconds_per_unit, _mm512_mul_pd(_mm512_set1_pd(0.5), seconds_per_unit)));
    return {days, seconds, _mm512_sub_epi64(of_day, _mm512_mul_epu32(seconds, all64(scale.per_second)))};
}

// The first word of a record, for day numbers from DV_JULIAN_DAY_GREGORIAN on.
inline __m512i calendar_(__m512i number) {
    constexpr uint32_t first = 1721120;
    const __m512i quarters =
        _mm512_add_epi32(_mm512_slli_epi32(_mm512_sub_epi32(number, all32_(first)), 2), all32_(3));
    __m512i century = long_quotient_<146097, 4 * (DV_JULIAN_DAY_MAX - first) + 3>(quarters);
    const __m512i of_century =
        _mm512_or_si512(_mm512_sub_epi32(quarters, _mm512_mullo_epi32(century, all32_(146097))), all32_(3));
    // Half a unit more, as above.
    __m512i year = _mm512_cvttps_epi32(_mm512_fmadd_ps(
        _mm512_cvtepi32_ps(of_century), _mm512_set1_ps(1.0f / 1461), _mm512_set1_ps(0.5f / 1461)));
    const __m512i of_year = _mm512_srli_epi32(_mm512_sub_epi32(of_century, short_product_(year, 1461)), 2);
    const __m512i scaled = _mm512_add_epi32(short_product_(of_year, 2141), all32_(197913));  // march_day
    __m512i month = _mm512_srli_epi32(scaled, 16);
    const __m512i day = short_quotient_<2141, 0xFFFF>(_mm512_and_si512(scaled, all32_(0xFFFF)));  // less 1
    const __mmask16 is_early = _mm512_cmpgt_epi32_mask(month, all32_(MONTHS_PER_YEAR));
    month = _mm512_mask_sub_epi32(month, is_early, month, all32_(MONTHS_PER_YEAR));
    year = plus_(year, is_early, 1);
    const __mmask16 is_next = _mm512_cmpeq_epi32_mask(year, all32_(YEARS_PER_CENTURY));
    year = _mm512_maskz_mov_epi32(static_cast<__mmask16>(~is_next), year);
    century = plus_(century, is_next, 1);
    const __m512i years = _mm512_or_si512(century, _mm512_slli_epi32(year, 8));
    const __m512i days = _mm512_or_si512(_mm512_slli_epi32(month, 16), _mm512_slli_epi32(day, 24));
    return _mm512_add_epi32(_mm512_or_si512(years, days), all32_(0x01'00'64'64));
}

// The second word.
inline __m512i clock_(__m512i second_of_day) {
    const __m512i minutes = short_quotient_<15, SEC_PER_DAY / 4 - 1>(_mm512_srli_epi32(second_of_day, 2));
    const __m512i hour = short_quotient_<MINUTES_PER_HOUR, SEC_PER_DAY / SEC_PER_MINUTE - 1>(minutes);
    const __m512i minute = _mm512_sub_epi32(minutes, short_product_(hour, MINUTES_PER_HOUR));
    const __m512i second = _mm512_sub_epi32(second_of_day, short_product_(minutes, SEC_PER_MINUTE));
    return _mm512_or_si512(hour,
                           _mm512_or_si512(_mm512_slli_epi32(minute, 8), _mm512_slli_epi32(second, 16)));
}

// Takes what is left out of `rows`.
inline records_t records_of_(const counts_t &counts, const epoch_scale_t &scale, __mmask16 &rows) {
    const parts_t low = eight_parts_(counts.low, scale), high = eight_parts_(counts.high, scale);
    const __m512i first = _mm512_set1_epi64(DV_JULIAN_DAY_GREGORIAN - JDN_EPOCH),
                  range = all64(DV_JULIAN_DAY_MAX - DV_JULIAN_DAY_GREGORIAN);
    const __mmask8 low_done = _mm512_cmple_epu64_mask(_mm512_sub_epi64(low.days, first), range);
    const __mmask8 high_done = _mm512_cmple_epu64_mask(_mm512_sub_epi64(high.days, first), range);
    rows &= static_cast<__mmask16>(low_done | high_done << 8);
    const __m512i number = _mm512_add_epi32(take_(_even, low.days, high.days), all32_(JDN_EPOCH));
    const __m512i fraction = take_(_even, low.fraction, high.fraction);
    return {calendar_(number), clock_(take_(_even, low.seconds, high.seconds)),
            _mm512_mullo_epi32(fraction, all32_(scale.nanoseconds))};
}

template <bool has_fraction>
uint64_t from_epoch(const epoch_block_t &block, const epoch_scale_t &scale, uint64_t rows) {
    uint64_t left = rows;
    for (int i = 0; i < block.count; i += _group) {
        auto done = static_cast<__mmask16>(rows >> i);
        fetch_rows_ahead(block.from + i * block.from_stride, _group, block.from_stride);
        fetch_rows_ahead(block.to + i * block.to_stride, _group, block.to_stride);
        const counts_t counts = load_counts_(block.from + i * block.from_stride, block.from_stride, done);
        const records_t x = records_of_(counts, scale, done);
        store_records_<has_fraction>(block.to + i * block.to_stride, block.to_stride, done, x);
        left &= ~(uint64_t{done} << i);
    }
    return left;
}

constexpr epoch_kernels_t kernels = {to_epoch<false>, from_epoch<false>, to_epoch<true>, from_epoch<true>};

}  // namespace
}  // namespace dv::impl::DV_LEVEL
