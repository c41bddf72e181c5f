// Decimals of at most fifteen digits as text, a row in one vector of sixteen bytes.
//
// Reading: characters become digits, and one shuffle brings those in front of the point and those behind it
// to their places of the scale; what has no character is zero.
//
//   characters   - 1 2 3 . 4
//   scale 2      0 0 0 0 0 0 0 0 0 0 0 1 2 3 4 0      the sign is a zero, too
//
// Writing is the opposite: sixteen digits from which a shuffle takes those of the text, with a gap for the
// point.

namespace dv::impl::DV_LEVEL {
namespace {

inline __m128i place_in_vector() {
    return _mm_setr_epi8(0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15);
}

// ---- reading ----

// Sixteen bytes from `begin` on, of which `size` belong to the column; false: it has fewer than sixteen.
inline bool load_characters(const char *values, int64_t begin, int64_t size, __m128i &characters) {
    if (begin + 16 <= size) [[likely]] {
        characters = _mm_loadu_si128(reinterpret_cast<const __m128i *>(values + begin));
        return true;
    }
    if (size < 16) return false;
    const auto behind =
        static_cast<char>(begin - (size - 16));  // 1..16: of bytes past the end there are none
    const __m128i last = _mm_loadu_si128(reinterpret_cast<const __m128i *>(values + size - 16));
    const __m128i wanted = _mm_add_epi8(place_in_vector(), _mm_set1_epi8(behind));
    characters = _mm_shuffle_epi8(last, _mm_adds_epu8(wanted, _mm_set1_epi8(0x70)));
    return true;
}

// The number that sixteen digits are.
inline uint64_t number_of_16_digits(__m128i digits) {
    const __m128i pairs = _mm_maddubs_epi16(digits, _mm_set1_epi16(1 << 8 | 10));
    const __m128i fours = _mm_madd_epi16(pairs, _mm_set1_epi32(1 << 16 | 100));
    const __m128i packed = _mm_packus_epi32(fours, fours);
    const __m128i eights = _mm_madd_epi16(packed, _mm_set1_epi32(1 << 16 | 10'000));
    const auto both = static_cast<uint64_t>(_mm_cvtsi128_si64(eights));
    return (both & 0xFFFFFFFF) * 100'000'000 + (both >> 32);
}

// Where the digits of the scale come from, less the place of the point; those behind it come from one
// further.
inline __m128i sources_of_digits(int scale) {
    const __m128i place = place_in_vector();
    const __m128i is_fraction = _mm_cmpgt_epi8(place, _mm_set1_epi8(static_cast<char>(15 - scale)));
    return _mm_sub_epi8(_mm_add_epi8(place, _mm_set1_epi8(static_cast<char>(scale - 16))), is_fraction);
}

// Of `length` (1..16) characters; false: a text of another form, or one whose digits are not all in their
// places.
inline bool read_characters(__m128i text, int length, int scale, __m128i sources, int64_t &value) {
    const __m128i is_text = _mm_cmpgt_epi8(_mm_set1_epi8(static_cast<char>(length)), place_in_vector());
    text = _mm_and_si128(text, is_text);
    const unsigned negative = (_mm_cvtsi128_si32(text) & 0xFF) == '-' ? 1 : 0;
    const __m128i values = _mm_sub_epi8(text, _mm_set1_epi8('0'));
    const __m128i is_digit = _mm_cmpeq_epi8(_mm_min_epu8(values, _mm_set1_epi8(9)), values);
    const auto digits = static_cast<unsigned>(_mm_movemask_epi8(is_digit));
    const auto points = static_cast<unsigned>(_mm_movemask_epi8(_mm_cmpeq_epi8(text, _mm_set1_epi8('.'))));
    const unsigned end = 1u << length;
    const auto point = std::countr_zero(points | end);
    const auto integer = point - static_cast<int>(negative);
    if ((digits | points | negative) != end - 1 || (points & (points - 1)) != 0 || digits == 0 ||
        length - 1 - point > scale || integer > 16 - scale)
        return false;

    // Sources below 0 and above 15 give zeros: their top bits are set when 0x70 is added.
    const __m128i from =
        _mm_adds_epu8(_mm_add_epi8(sources, _mm_set1_epi8(static_cast<char>(point))), _mm_set1_epi8(0x70));
    const uint64_t magnitude = number_of_16_digits(_mm_shuffle_epi8(_mm_and_si128(values, is_digit), from));
    const uint64_t sign = uint64_t{0} - negative;
    value = static_cast<int64_t>((magnitude ^ sign) - sign);
    return true;
}

// What the loops store may be any bytes to the compiler: what they read again and again is theirs.
uint64_t read(const dv_column_t &texts, int64_t begin, uint64_t rows, const text_target_t &target) {
    const auto *const values = static_cast<const char *>(texts.values);
    const int32_t *const offsets = texts.offsets + begin;
    const int64_t size = texts.size, end = target.end;
    const int scale = target.scale;
    const dv_decimal_column_t result = *target.result;
    const __m128i sources = sources_of_digits(scale);
    uint64_t left = 0;
    for (; rows != 0; rows &= rows - 1) {
        const int i = std::countr_zero(rows);
        const int32_t from = offsets[i], to = offsets[i + 1];
        const int64_t length = int64_t{to} - from;
        int64_t value = 0;
        __m128i characters;
        const bool is_read = from >= 0 && length >= 1 && length <= 16 && to <= size &&
                             load_characters(values, from, size, characters) &&
                             read_characters(characters, static_cast<int>(length), scale, sources, value) &&
                             value < end && -value < end;
        if (is_read) {
            store_decimal_row(result, begin + i, value);
        } else {
            left |= rows & (0 - rows);
        }
    }
    return left;
}

// ---- writing ----

uint64_t write(const dv_decimal_column_t &x, int64_t begin, uint64_t rows, const text_shape_t *shapes,
               appended_rows_t &texts) {
    constexpr int64_t text_end = 1'000'000'000'000'000;  // 10^15
    const int64_t room = texts.column->size < INT32_MAX ? texts.column->size : int64_t{INT32_MAX};
    const int scale = x.scale, fraction = scale > 0 ? scale + 1 : 0;
    const dv_column_t values = x.column;
    auto *const bytes = static_cast<char *>(texts.column->values);
    int32_t *const offsets = texts.column->offsets + begin + 1;
    int64_t end = texts.end;
    for (; rows != 0; rows &= rows - 1) {
        const int i = std::countr_zero(rows);
        int64_t value;
        memcpy(&value, value_at(values, begin + i), sizeof value);
        if (value >= text_end || value <= -text_end || end + 17 > room) break;
        const bool negative = value < 0;
        const auto magnitude = static_cast<uint64_t>(negative ? -value : value);
        const int fewer = static_cast<int>(std::bit_width(magnitude | 1)) * 1233 >> 12;
        const int count = fewer + (magnitude >= static_cast<uint64_t>(ten_to(fewer)) ? 1 : 0);
        const int integer = count - scale > 1 ? count - scale : 1;
        const auto pairs = static_cast<int64_t>(digit_bytes_from_limb(magnitude));
        const text_shape_t &shape = shapes[integer];
        const __m128i text =
            _mm_or_si128(_mm_shuffle_epi8(pairs_as_text(_mm_cvtsi64_si128(pairs)), load_vector(shape.source)),
                         load_vector(shape.point));
        bytes[end] = '-';
        end += negative ? 1 : 0;
        _mm_storeu_si128(reinterpret_cast<__m128i *>(bytes + end), text);
        end += integer + fraction;
        offsets[i] = static_cast<int32_t>(end);
    }
    texts.end = end;
    return rows;
}

constexpr text_kernels_t kernels = {read, write};

}  // namespace
}  // namespace dv::impl::DV_LEVEL
