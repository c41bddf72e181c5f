// Decimals of at most fifteen digits as text, the numbers and digits of eight rows made at once; texts are
// taken apart and put together one by one, as in decimal_text_kernels.h.

namespace dv::impl::DV_LEVEL {
namespace {

// ---- reading ----

// Sixteen digits for each row of a block.
struct block_digits_t {
    alignas(64) char digits[BLOCK_ROWS][16];
    uint64_t negative = 0;
};

inline __m512i fours_of_digits(const char *digits) {
    const __m512i pairs = _mm512_maddubs_epi16(_mm512_load_si512(digits), _mm512_set1_epi16(1 << 8 | 10));
    return _mm512_madd_epi16(pairs, _mm512_set1_epi32(1 << 16 | 100));
}

// Of eight rows; the two halves come out turn by turn.
inline __m512i numbers_of_digits(const char (*digits)[16]) {
    const __m512i fours = _mm512_packus_epi32(fours_of_digits(digits[0]), fours_of_digits(digits[4]));
    const __m512i eights = _mm512_madd_epi16(fours, _mm512_set1_epi32(1 << 16 | 10'000));
    const __m512i numbers = _mm512_add_epi64(_mm512_mul_epu32(eights, _mm512_set1_epi64(100'000'000)),
                                             _mm512_maskz_srli_epi64(0xFF, eights, 32));
    return _mm512_maskz_permutexvar_epi64(0xFF, _mm512_setr_epi64(0, 2, 4, 6, 1, 3, 5, 7), numbers);
}

// The digits of a text of `length` (1..16) characters; false: it has another form, or digits beyond the
// places. A load under a mask reads no more than these characters.
inline bool take_digits(const char *characters, unsigned length, int scale, __m128i sources, int row,
                        block_digits_t &block) {
    const unsigned all = (1u << length) - 1;
    const __m128i text = _mm_maskz_loadu_epi8(static_cast<__mmask16>(all), characters);
    const __m128i values = _mm_sub_epi8(text, _mm_set1_epi8('0'));
    const unsigned digits = _mm_cmple_epu8_mask(values, _mm_set1_epi8(9));
    const unsigned points = _mm_cmpeq_epi8_mask(text, _mm_set1_epi8('.'));
    const unsigned negative = _mm_cmpeq_epi8_mask(text, _mm_set1_epi8('-')) & 1u;
    const auto point = static_cast<unsigned>(std::countr_zero(points | (all + 1)));
    // At most `scale` digits behind the point, and 16 - scale in front of it.
    const unsigned beyond = point + static_cast<unsigned>(scale) + 1 - length;
    const bool is_plain = ((digits | points | negative) == all) & ((points & (points - 1)) == 0) &
                          (digits != 0) & (beyond <= 17 + negative - length);
    if (!is_plain) return false;
    const __m128i from =
        _mm_adds_epu8(_mm_add_epi8(sources, _mm_set1_epi8(static_cast<char>(point))), _mm_set1_epi8(0x70));
    const __m128i placed = _mm_shuffle_epi8(_mm_maskz_mov_epi8(static_cast<__mmask16>(digits), values), from);
    _mm_store_si128(reinterpret_cast<__m128i *>(block.digits[row]), placed);
    block.negative |= uint64_t{negative} << row;
    return true;
}

// Stores the rows of an eighth of a block.
inline void store_rows(const dv_decimal_column_t &result, int64_t row, unsigned rows, __m512i values) {
    if (result.bytes == sizeof(int64_t) && result.column.stride == sizeof(int64_t)) {
        _mm512_mask_storeu_epi64(value_at(result.column, row), static_cast<__mmask8>(rows), values);
        return;
    }
    int64_t each[8];
    _mm512_storeu_si512(each, values);
    for (; rows != 0; rows &= rows - 1) {
        const int i = std::countr_zero(rows);
        store_decimal_row(result, row + i, each[i]);
    }
}

uint64_t read(const dv_column_t &texts, int64_t begin, uint64_t rows, const text_target_t &target) {
    const auto *const values = static_cast<const char *>(texts.values);
    const int32_t *const offsets = texts.offsets + begin;
    const int64_t size = texts.size;
    const int scale = target.scale;
    const __m128i sources = avx2::sources_of_digits(scale);
    block_digits_t block;
    uint64_t done = 0;
    for (uint64_t rest = rows; rest != 0; rest &= rest - 1) {
        const int i = std::countr_zero(rest);
        const int32_t from = offsets[i], to = offsets[i + 1];
        const auto length = static_cast<uint64_t>(int64_t{to} - from);
        if (from < 0 || to > size || length - 1 >= 16) continue;
        if (take_digits(values + from, static_cast<unsigned>(length), scale, sources, i, block))
            done |= uint64_t{1} << i;
    }
    const __m512i end = _mm512_set1_epi64(target.end);
    for (int group = 0; group < BLOCK_ROWS; group += 8) {
        const auto taken = static_cast<unsigned>(done >> group) & 0xFF;
        if (taken == 0) continue;
        const __m512i magnitudes = numbers_of_digits(&block.digits[group]);
        const unsigned fits = _mm512_mask_cmplt_epu64_mask(static_cast<__mmask8>(taken), magnitudes, end);
        const auto negative = static_cast<__mmask8>(block.negative >> group);
        store_rows(*target.result, begin + group, fits,
                   _mm512_mask_sub_epi64(magnitudes, negative, _mm512_setzero_si512(), magnitudes));
        done &= ~(uint64_t{taken & ~fits} << group);
    }
    return rows & ~done;
}

// ---- writing ----

// Numbers below 10^8, one in each lane, as eight digits, the first in the lowest byte: halves of four digits,
// of two and of one, side by side in lanes of half the width.
inline __m512i eight_digits_each(__m512i numbers) {
    // x * 109951163 >> 40 is x / 10^4 below 10^8, x * 5243 >> 19 is x / 100 below 10^4, x * 6554 >> 16 is x /
    // 10 below 100.
    const __m512i upper =
        _mm512_maskz_srli_epi64(0xFF, _mm512_mul_epu32(numbers, _mm512_set1_epi64(109'951'163)), 40);
    const __m512i lower = _mm512_sub_epi64(numbers, _mm512_mul_epu32(upper, _mm512_set1_epi64(10'000)));
    const __m512i fours = _mm512_or_si512(upper, _mm512_maskz_slli_epi64(0xFF, lower, 32));
    const __m512i hundreds = _mm512_srli_epi16(_mm512_mulhi_epu16(fours, _mm512_set1_epi16(5243)), 3);
    const __m512i rest = _mm512_sub_epi16(fours, _mm512_mullo_epi16(hundreds, _mm512_set1_epi16(100)));
    const __m512i pairs = _mm512_or_si512(hundreds, _mm512_maskz_slli_epi32(0xFFFF, rest, 16));
    const __m512i tens = _mm512_mulhi_epu16(pairs, _mm512_set1_epi16(6554));
    const __m512i units = _mm512_sub_epi16(pairs, _mm512_mullo_epi16(tens, _mm512_set1_epi16(10)));
    const __m512i digits = _mm512_or_si512(tens, _mm512_slli_epi16(units, 8));
    return _mm512_add_epi8(digits, _mm512_set1_epi8('0'));
}

// Eight rows taken apart.
struct eight_texts_t {
    alignas(64) char digits[2][4][16];  // of row i in [i % 2][i / 2]
    alignas(64) int64_t integer[8];     // digits in front of the point
    unsigned negative;                  // a bit for each row

    const char *digits_of(int row) const { return digits[row % 2][row / 2]; }
};

// False: a value has more than fifteen digits.
inline bool take_apart(__m512i values, int scale, eight_texts_t &texts) {
    const __m512i magnitude = _mm512_maskz_abs_epi64(0xFF, values);
    if (_mm512_cmpge_epu64_mask(magnitude, _mm512_set1_epi64(1'000'000'000'000'000)) != 0) return false;

    // The count of digits from that of bits, as for one value.
    const __m512i powers_low = _mm512_setr_epi64(1, 10, 100, 1000, 10'000, 100'000, 1'000'000, 10'000'000);
    const __m512i powers_high =
        _mm512_setr_epi64(100'000'000, 1'000'000'000, 10'000'000'000, 100'000'000'000, 1'000'000'000'000,
                          10'000'000'000'000, 100'000'000'000'000, 1'000'000'000'000'000);
    const __m512i one = _mm512_set1_epi64(1);
    const __m512i zeros = _mm512_maskz_lzcnt_epi64(0xFF, _mm512_or_si512(magnitude, one));
    const __m512i bits = _mm512_sub_epi64(_mm512_set1_epi64(64), zeros);
    const __m512i fewer = _mm512_maskz_srli_epi64(0xFF, _mm512_mul_epu32(bits, _mm512_set1_epi64(1233)), 12);
    const __m512i powers = _mm512_permutex2var_epi64(powers_low, fewer, powers_high);
    const __m512i count =
        _mm512_mask_add_epi64(fewer, _mm512_cmpge_epu64_mask(magnitude, powers), fewer, one);
    const __m512i integer = _mm512_sub_epi64(count, _mm512_set1_epi64(scale));
    _mm512_store_si512(texts.integer, _mm512_maskz_max_epi64(0xFF, integer, one));

    // magnitude / 10^8 is (magnitude / 2^8) / 390625; of a number below 2^42 the reciprocal, which is too
    // large by less than one part in 2^51, gives the quotient.
    constexpr uint64_t reciprocal = static_cast<uint64_t>((uint128_t{1} << 70) / 390'625 + 1);
    const __m512i quotient =
        _mm512_madd52hi_epu64(_mm512_setzero_si512(), _mm512_maskz_srli_epi64(0xFF, magnitude, 8),
                              _mm512_set1_epi64(static_cast<int64_t>(reciprocal)));
    const __m512i high = _mm512_maskz_srli_epi64(0xFF, quotient, 18);
    const __m512i low = _mm512_sub_epi64(magnitude, _mm512_mul_epu32(high, _mm512_set1_epi64(100'000'000)));
    const __m512i first = eight_digits_each(high), last = eight_digits_each(low);
    _mm512_store_si512(texts.digits[0], _mm512_maskz_unpacklo_epi64(0xFF, first, last));
    _mm512_store_si512(texts.digits[1], _mm512_maskz_unpackhi_epi64(0xFF, first, last));
    texts.negative = _mm512_movepi64_mask(values);
    return true;
}

// The rows of an eighth of a block, as a mask.
inline __m512i load_rows(const dv_column_t &column, int64_t row, unsigned rows) {
    if (column.stride == sizeof(int64_t))
        return _mm512_maskz_loadu_epi64(static_cast<__mmask8>(rows), value_at(column, row));
    int64_t values[8] = {};
    for (; rows != 0; rows &= rows - 1) {
        const int i = std::countr_zero(rows);
        memcpy(&values[i], value_at(column, row + i), sizeof values[i]);
    }
    return _mm512_loadu_si512(values);
}

uint64_t write(const dv_decimal_column_t &x, int64_t begin, uint64_t rows, const text_shape_t *shapes,
               appended_rows_t &texts) {
    constexpr int64_t room_of_eight = 8 * 17 + 1;  // fifteen digits, point and sign; the last copy is as long
    const int64_t room = texts.column->size < INT32_MAX ? texts.column->size : int64_t{INT32_MAX};
    const int fraction = x.scale > 0 ? x.scale + 1 : 0;
    auto *const bytes = static_cast<char *>(texts.column->values);
    for (int group = 0; group < BLOCK_ROWS; group += 8) {
        auto eight = static_cast<unsigned>(rows >> group) & 0xFF;
        eight_texts_t parts;
        if (eight == 0) continue;
        if (texts.end + room_of_eight > room ||
            !take_apart(load_rows(x.column, begin + group, eight), x.scale, parts))
            return avx2::write(x, begin, rows, shapes, texts);
        rows &= ~(uint64_t{0xFF} << group);
        int64_t end = texts.end;
        int32_t *const offsets = texts.column->offsets + begin + group + 1;
        for (; eight != 0; eight &= eight - 1) {
            const int i = std::countr_zero(eight);
            const int64_t integer = parts.integer[i];
            const text_shape_t &shape = shapes[integer];
            const __m128i digits = load_vector(parts.digits_of(i));
            const __m128i text =
                _mm_or_si128(_mm_shuffle_epi8(digits, load_vector(shape.source)), load_vector(shape.point));
            bytes[end] = '-';
            end += parts.negative >> i & 1;
            _mm_storeu_si128(reinterpret_cast<__m128i *>(bytes + end), text);
            end += integer + fraction;
            offsets[i] = static_cast<int32_t>(end);
        }
        texts.end = end;
    }
    return 0;
}

constexpr text_kernels_t kernels = {read, write};

}  // namespace
}  // namespace dv::impl::DV_LEVEL
