// Kernels of text to and from NUMBER.
//
// Up to sixteen characters of a text are in a quarter of a vector; eight texts are two vectors, the even rows
// and the odd ones. Reading, a shuffle takes out the point and puts a 0 in front of an odd number of integer
// digits, by which pairs begin at even distances from the point:
//
//   characters   - 1 2 . 5 0        the sign counts as a zero
//   moved      0 0 1 2 5 0
//   pairs       00  12  50
//
// Writing, a shuffle takes the characters of the pairs to their places beside the point and a sign.

#include "eight_numbers.h"

namespace dv::impl::DV_LEVEL {
namespace {

// ---- from text ----

struct eight_texts_t {
    lanes_t even, odd;  // quarters; zero bytes behind the end
    __m128i length;     // eight lanes of 16 bits: 0..16
    eight_rows_t rows;  // that are so short
};

inline __m128i load_characters(const char *text, uint32_t mask) {
    return _mm_maskz_loadu_epi8(static_cast<__mmask16>(mask), text);
}

inline lanes_t join_quarters(__m128i a, __m128i b, __m128i c, __m128i d) {
    lanes_t quarters = _mm512_inserti64x2(_mm512_castsi128_si512(a), b, 1);
    quarters = _mm512_inserti64x2(quarters, c, 2);
    return _mm512_inserti64x2(quarters, d, 3);
}

inline __m256i ones_up_to(__m256i lengths) {
    const __m256i one = _mm256_set1_epi32(1);
    return _mm256_sub_epi32(_mm256_sllv_epi32(one, lengths), one);
}

inline eight_texts_t load_texts_by_offsets(const dv_column_t &column, int64_t row) {
    const int32_t *const offsets = column.offsets + row;
    const __m256i begins = _mm256_loadu_si256(reinterpret_cast<const __m256i *>(offsets));
    const __m256i ends = _mm256_loadu_si256(reinterpret_cast<const __m256i *>(offsets + 1));
    const __m256i lengths = _mm256_sub_epi32(ends, begins);
    const auto size = static_cast<int>(column.size < INT32_MAX ? column.size : int64_t{INT32_MAX});
    const __mmask8 is_within = _mm256_cmple_epi32_mask(ends, _mm256_set1_epi32(size)) &
                               _mm256_cmpge_epi32_mask(begins, _mm256_setzero_si256()) &
                               _mm256_cmpge_epi32_mask(ends, begins) &  // or the length may have overflown
                               _mm256_cmple_epu32_mask(lengths, _mm256_set1_epi32(16));
    if (is_within == 0) return {_mm512_setzero_si512(), _mm512_setzero_si512(), _mm_setzero_si128(), 0};
    const __m256i read = _mm256_maskz_mov_epi32(is_within, lengths);
    alignas(32) int32_t begin[8];
    alignas(32) uint32_t mask[8];
    _mm256_store_si256(reinterpret_cast<__m256i *>(begin), _mm256_maskz_mov_epi32(is_within, begins));
    _mm256_store_si256(reinterpret_cast<__m256i *>(mask), ones_up_to(read));
    const char *const values = static_cast<const char *>(column.values);
    const auto load = [&](int i) { return load_characters(values + begin[i], mask[i]); };
    return {join_quarters(load(0), load(2), load(4), load(6)),
            join_quarters(load(1), load(3), load(5), load(7)), _mm256_cvtepi32_epi16(read), is_within};
}

// A text that may have more than sixteen characters is not read.
inline eight_texts_t load_texts_by_stride(const dv_column_t &column, int64_t row) {
    const int64_t size = column.size < 0 ? 0 : column.size;
    const auto room = static_cast<uint32_t>(first_rows(size < 16 ? size : 16));
    const uint32_t end = size <= 16 ? 1u << size : 0;  // of a text without a NUL
    __m128i texts[8];
    alignas(16) uint16_t length[8];
    unsigned rows = 0;
    for (int i = 0; i < 8; ++i) {
        const __m128i text = load_characters(static_cast<const char *>(value_at(column, row + i)), room);
        const uint32_t ends =
            _mm_mask_cmpeq_epi8_mask(static_cast<__mmask16>(room), text, _mm_setzero_si128()) | end;
        const uint32_t shown = (ends & (0 - ends)) - 1;  // all, if there is no end
        texts[i] = _mm_maskz_mov_epi8(static_cast<__mmask16>(shown), text);
        length[i] = static_cast<uint16_t>(_mm_popcnt_u32(shown));
        rows |= (ends != 0 ? 1u : 0u) << i;
    }
    return {join_quarters(texts[0], texts[2], texts[4], texts[6]),
            join_quarters(texts[1], texts[3], texts[5], texts[7]),
            _mm_load_si128(reinterpret_cast<const __m128i *>(length)), static_cast<eight_rows_t>(rows)};
}

// The bits of eight rows, sixteen each, in the order of the rows.
inline __m128i join_bits(uint64_t even, uint64_t odd) {
    const auto as_vector = [](uint64_t word) { return _mm_cvtsi64_si128(static_cast<long long>(word)); };
    return _mm_unpacklo_epi16(as_vector(even), as_vector(odd));
}

// A byte of each lane of the even rows, or of the odd ones, in all sixteen bytes of their quarters.
inline lanes_t spread_even(lanes_t lanes, int byte) {
    return _mm512_shuffle_epi8(lanes, _mm512_set1_epi8(static_cast<char>(byte)));
}
inline lanes_t spread_odd(lanes_t lanes, int byte) { return spread_even(lanes, byte + 8); }

inline lanes_t places_in_quarters() {
    return _mm512_broadcast_i32x4(_mm_setr_epi8(0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15));
}

// Eight pairs in each quarter, a lane of 16 bits for each. `points` has the place of the point in every byte.
inline lanes_t pair_up_quarters(lanes_t digits, lanes_t points) {
    const lanes_t one = _mm512_set1_epi8(1);
    lanes_t from = _mm512_sub_epi8(places_in_quarters(), _mm512_and_si512(points, one));
    from = _mm512_mask_add_epi8(from, _mm512_cmpge_epi8_mask(from, points), from, one);
    const __mmask64 is_inside = _mm512_cmplt_epu8_mask(from, _mm512_set1_epi8(16));
    const lanes_t moved = _mm512_maskz_shuffle_epi8(is_inside, digits, from);
    return _mm512_maddubs_epi16(moved, _mm512_set1_epi16(1 << 8 | 10));
}

inline eight_rows_t read_eight(const eight_texts_t &texts, char *first, int64_t stride, eight_rows_t rows) {
    rows &= texts.rows;
    if (rows == 0) return 0;
    const lanes_t zero_digit = _mm512_set1_epi8('0'), nine = _mm512_set1_epi8(9);
    const lanes_t point = _mm512_set1_epi8('.'), minus = _mm512_set1_epi8('-');
    constexpr uint64_t first_bits = 0x0001'0001'0001'0001;
    const lanes_t even_values = _mm512_sub_epi8(texts.even, zero_digit);
    const lanes_t odd_values = _mm512_sub_epi8(texts.odd, zero_digit);
    const __mmask64 even_digits = _mm512_cmple_epu8_mask(even_values, nine);
    const __mmask64 odd_digits = _mm512_cmple_epu8_mask(odd_values, nine);
    const __m128i digits = join_bits(even_digits, odd_digits);
    const __m128i points =
        join_bits(_mm512_cmpeq_epi8_mask(texts.even, point), _mm512_cmpeq_epi8_mask(texts.odd, point));
    const __m128i signs = join_bits(_mm512_mask_cmpeq_epi8_mask(first_bits, texts.even, minus),
                                    _mm512_mask_cmpeq_epi8_mask(first_bits, texts.odd, minus));

    const __m128i one = _mm_set1_epi16(1);
    const __m128i ends = _mm_sllv_epi16(one, texts.length);  // 0 behind sixteen characters
    const __m128i known = _mm_or_si128(_mm_or_si128(digits, points), signs);
    rows = static_cast<eight_rows_t>(rows & _mm_cmpeq_epi16_mask(known, _mm_sub_epi16(ends, one)) &
                                     _mm_test_epi16_mask(digits, digits) &
                                     _mm_testn_epi16_mask(points, _mm_sub_epi16(points, one)));
    if (rows == 0) return 0;

    const __m256i wide_ends = _mm256_sllv_epi32(_mm256_set1_epi32(1), _mm256_cvtepu16_epi32(texts.length));
    const __m256i stops = _mm256_or_si256(_mm256_cvtepu16_epi32(points), wide_ends);
    const __m256i first_stop = _mm256_and_si256(stops, _mm256_sub_epi32(_mm256_setzero_si256(), stops));
    const lanes_t place =
        _mm512_cvtepu32_epi64(_mm256_sub_epi32(_mm256_set1_epi32(31), _mm256_lzcnt_epi32(first_stop)));
    const lanes_t even =
        pair_up_quarters(_mm512_maskz_mov_epi8(even_digits, even_values), spread_even(place, 0));
    const lanes_t odd = pair_up_quarters(_mm512_maskz_mov_epi8(odd_digits, odd_values), spread_odd(place, 0));
    const lanes_t exponent = _mm512_srli_epi64(_mm512_add_epi64(place, in_each_lane(1)), 1);
    const lanes_t sign = _mm512_movm_epi64(_mm_test_epi16_mask(signs, signs));
    store_eight(first, stride, rows, sign, exponent, _mm512_packus_epi16(even, odd));
    return rows;
}

uint64_t read_texts(const dv_column_t &text, int64_t row, int count, uint64_t valid, records_t to) {
    uint64_t done = 0;
    for (int i = 0; i + 8 <= count; i += 8) {
        const auto rows = static_cast<eight_rows_t>(valid >> i);
        if (rows == 0) continue;
        const eight_texts_t texts = text.offsets != nullptr ? load_texts_by_offsets(text, row + i)
                                                            : load_texts_by_stride(text, row + i);
        done |= uint64_t{read_eight(texts, to.first + i * to.stride, to.stride, rows)} << i;
    }
    return valid & ~done;
}

// ---- to text ----

inline constexpr uint64_t WRITTEN_DIGITS_MAX = 7;  // with point and sign sixteen characters

// What the places of a text depend on, a byte of each lane.
enum place_byte_t { BYTE_SIGN, BYTE_FROM, BYTE_POINT, BYTE_LENGTH };

// Pairs of digits as characters at their places.
inline lanes_t write_quarters(lanes_t quarters, lanes_t sign_places, lanes_t from_places, lanes_t points,
                              lanes_t lengths) {
    // Tens and units of a digit d in 16 bits: d * 256 - (d / 10) * (10 * 256 - 1).
    const lanes_t by_2 = quarters;
    const lanes_t tens = _mm512_mulhi_epu16(by_2, _mm512_set1_epi16(6554));
    const lanes_t pairs =
        _mm512_sub_epi16(_mm512_slli_epi16(by_2, 8), _mm512_mullo_epi16(tens, _mm512_set1_epi16(2559)));
    const lanes_t characters = _mm512_add_epi8(pairs, _mm512_set1_epi8('0'));
    const lanes_t one = _mm512_set1_epi8(1);
    const lanes_t place = _mm512_sub_epi8(places_in_quarters(), sign_places);  // behind the sign
    lanes_t from = _mm512_add_epi8(place, from_places);
    from = _mm512_mask_sub_epi8(from, _mm512_cmpgt_epi8_mask(place, points), from, one);
    lanes_t text = _mm512_shuffle_epi8(characters, from);
    text = _mm512_mask_mov_epi8(text, _mm512_cmpeq_epi8_mask(place, points), _mm512_set1_epi8('.'));
    text = _mm512_mask_mov_epi8(text, _mm512_movepi8_mask(place), _mm512_set1_epi8('-'));
    return _mm512_maskz_mov_epi8(_mm512_cmplt_epi8_mask(places_in_quarters(), lengths), text);
}

inline eight_rows_t write_eight(const char *first, int64_t stride, short_texts_t &texts, int at) {
    const eight_numbers_t x = load_eight(first, stride);
    eight_rows_t rows = have_digits(x, WRITTEN_DIGITS_MAX) &
                        _mm512_cmple_epu64_mask(x.exponent, in_each_lane(WRITTEN_DIGITS_MAX));
    if (rows == 0) return 0;
    const lanes_t byte = in_each_lane(0xFF), one = in_each_lane(1);
    const lanes_t digits = digits_of(x);
    const lanes_t first_digit = _mm512_and_si512(digits, byte);
    const lanes_t last_at = _mm512_slli_epi64(_mm512_sub_epi64(x.count, one), 3);
    const lanes_t last = _mm512_and_si512(_mm512_srlv_epi64(digits, last_at), byte);
    rows = rows & are_digits(digits) & _mm512_test_epi64_mask(first_digit, first_digit);

    // The tens of the first digit are left out where they are 0, but behind the point.
    const eight_rows_t has_integer = _mm512_test_epi64_mask(x.exponent, x.exponent);
    const eight_rows_t skips = has_integer & _mm512_cmplt_epu64_mask(first_digit, in_each_lane(10));
    const lanes_t from = _mm512_maskz_mov_epi64(skips, one);
    const lanes_t point = _mm512_sub_epi64(_mm512_add_epi64(x.exponent, x.exponent), from);
    const lanes_t tenth = _mm512_srli_epi64(_mm512_mullo_epi32(last, in_each_lane(6554)), 16);
    const eight_rows_t ends_with_zero =
        _mm512_cmpeq_epi64_mask(last, _mm512_mullo_epi32(tenth, in_each_lane(10)));
    // Characters with all digits and the point, less what is left out.
    lanes_t length = _mm512_sub_epi64(_mm512_add_epi64(_mm512_add_epi64(x.count, x.count), one), from);
    length = _mm512_mask_sub_epi64(length, ends_with_zero, length, one);
    length = _mm512_mask_mov_epi64(length, _mm512_cmple_epi64_mask(x.count, x.exponent), point);
    length = _mm512_sub_epi64(length, x.sign);
    const lanes_t sign = _mm512_and_si512(x.sign, one);

    const lanes_t places = _mm512_or_si512(_mm512_or_si512(sign, _mm512_slli_epi64(from, 8 * BYTE_FROM)),
                                           _mm512_or_si512(_mm512_slli_epi64(point, 8 * BYTE_POINT),
                                                           _mm512_slli_epi64(length, 8 * BYTE_LENGTH)));
    const lanes_t zero = _mm512_setzero_si512();
    const lanes_t even = write_quarters(_mm512_unpacklo_epi8(digits, zero), spread_even(places, BYTE_SIGN),
                                        spread_even(places, BYTE_FROM), spread_even(places, BYTE_POINT),
                                        spread_even(places, BYTE_LENGTH));
    const lanes_t odd = write_quarters(_mm512_unpackhi_epi8(digits, zero), spread_odd(places, BYTE_SIGN),
                                       spread_odd(places, BYTE_FROM), spread_odd(places, BYTE_POINT),
                                       spread_odd(places, BYTE_LENGTH));
    store_quarters(texts.text[at], SHORT_TEXT_SIZE, rows, even, odd);
    const __m128i lengths = _mm512_cvtepi64_epi8(_mm512_maskz_mov_epi64(rows, length));
    _mm_storel_epi64(reinterpret_cast<__m128i *>(texts.length + at), lengths);
    return rows;
}

uint64_t write_texts(records_t from, int count, uint64_t valid, short_texts_t &texts) {
    uint64_t done = 0;
    for (int i = 0; i + 8 <= count; i += 8)
        done |= uint64_t{write_eight(from.first + i * from.stride, from.stride, texts, i)} << i;
    return valid & ~done;
}

constexpr number_text_kernels_t kernels = {read_texts, write_texts};

}  // namespace
}  // namespace dv::impl::DV_LEVEL
