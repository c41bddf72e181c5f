// Kernels of text to and from NUMBER: texts of up to sixteen characters, one in a vector.
//
// Reading is that of plain_text.h, with one shuffle for its moves. Writing, a shuffle takes the characters of
// the digits to their places beside the point and a sign.

namespace dv::impl::DV_LEVEL {
namespace {

struct alignas(SHORT_TEXT_SIZE) characters_t {
    uint8_t at[SHORT_TEXT_SIZE];
};

constexpr uint8_t _no_character = 0x80;  // for a shuffle

inline __m128i vector_of(const characters_t &characters) {
    return _mm_load_si128(reinterpret_cast<const __m128i *>(characters.at));
}

// Ones in the first `length` (0..16) bytes.
inline __m128i first_bytes(unsigned length) {
    static constexpr auto ones_and_zeros = [] {
        std::array<uint8_t, 2 * SHORT_TEXT_SIZE> bytes{};
        for (size_t i = 0; i < SHORT_TEXT_SIZE; ++i) bytes[i] = 0xFF;
        return bytes;
    }();
    return load_vector(ones_and_zeros.data() + SHORT_TEXT_SIZE - length);
}

// ---- from text ----

// By the place of the point: where the digits of eight pairs come from.
constexpr auto _digit_sources = [] {
    std::array<characters_t, SHORT_TEXT_SIZE + 1> rows{};
    for (int point = 0; point <= SHORT_TEXT_SIZE; ++point) {
        for (int i = 0; i < SHORT_TEXT_SIZE; ++i) {
            int from = i - point % 2;
            if (from >= point) ++from;
            const bool is_inside = from >= 0 && from < SHORT_TEXT_SIZE;
            rows[static_cast<size_t>(point)].at[i] = is_inside ? static_cast<uint8_t>(from) : _no_character;
        }
    }
    return rows;
}();

// `text` has zero bytes behind its length.
inline bool read_one(number_t &x, __m128i text, unsigned length) {
    const uint64_t is_negative = (_mm_cvtsi128_si32(text) & 0xFF) == '-' ? 1 : 0;
    unsigned points;
    const unsigned are_digits = take_digits(text, points);
    uint64_t point;
    if (!find_point({are_digits, points, is_negative}, length, point)) return false;

    const __m128i moved = _mm_shuffle_epi8(text, vector_of(_digit_sources[point]));
    const __m128i by_2 = _mm_maddubs_epi16(moved, _mm_set1_epi16(1 << 8 | 10));
    const auto pairs = static_cast<uint64_t>(_mm_cvtsi128_si64(_mm_packus_epi16(by_2, by_2)));
    if (pairs != 0) {
        store_digits(x, 0 - is_negative, pairs, static_cast<int>((point + 1) / 2));
        return true;
    }
    if (are_digits != 0) store_zero(x);
    return are_digits != 0;
}

// A text of `length` characters, of which the column has `room` or more from the first on.
inline bool read_characters(number_t &x, const char *text, int64_t length, int64_t room) {
    if (length - 1 >= SHORT_TEXT_SIZE || length < 1) return false;
    const auto size = static_cast<unsigned>(length);
    if (room >= SHORT_TEXT_SIZE)
        return read_one(x, _mm_and_si128(load_vector(text), first_bytes(size)), size);
    return read_one(x, load_short_text(text, size), size);
}

inline bool read_by_offsets(number_t &x, const dv_column_t &column, int64_t row) {
    row_bytes_t text;
    return find_bytes(column, row, text) &&
           read_characters(x, text.begin, text.size, column.size - column.offsets[row]);
}

inline bool read_by_stride(number_t &x, const dv_column_t &column, int64_t row) {
    row_bytes_t text;
    return find_text(column, row, text) && read_characters(x, text.begin, text.size, column.size);
}

uint64_t read_texts(const dv_column_t &text, int64_t row, int /*count*/, uint64_t valid, records_t to) {
    uint64_t left = valid;
    for (uint64_t rest = valid; rest != 0; rest &= rest - 1) {
        const int i = std::countr_zero(rest);
        __builtin_prefetch(reinterpret_cast<const char *>(&to[i]) + FETCH_AHEAD);
        const bool is_read = text.offsets != nullptr ? read_by_offsets(to[i], text, row + i)
                                                     : read_by_stride(to[i], text, row + i);
        if (is_read) left ^= rest & (0 - rest);
    }
    return left;
}

// ---- to text ----

constexpr int _written_digits_max = 7;  // with point and sign sixteen characters

// Where the point stands, whether the tens of the first digit are left out, and whether there is a sign: what
// the characters of the digits are at their places, and what stands beside them.
struct text_places_t {
    characters_t digits, others;
};
constexpr size_t place_number(int point, int from, int is_negative) {
    return (2 * static_cast<size_t>(point) + static_cast<size_t>(from)) * 2 +
           static_cast<size_t>(is_negative);
}
constexpr text_places_t places_of(int point, int from, int is_negative) {
    text_places_t row{};
    for (int i = 0; i < SHORT_TEXT_SIZE; ++i) {
        const int place = i - is_negative;
        const bool is_digit = place >= 0 && place != point;
        const int digit = place + from - (place > point ? 1 : 0);
        const bool is_inside = is_digit && digit < SHORT_TEXT_SIZE;
        row.digits.at[i] = is_inside ? static_cast<uint8_t>(digit) : _no_character;
        row.others.at[i] = place < 0 ? '-' : place == point ? '.' : 0;
    }
    return row;
}
constexpr auto _text_places = [] {
    std::array<text_places_t, place_number(2 * _written_digits_max, 1, 1) + 1> rows{};
    for (int point = 0; point <= 2 * _written_digits_max; ++point) {
        for (const int from : {0, 1}) {
            for (const int is_negative : {0, 1})
                rows[place_number(point, from, is_negative)] = places_of(point, from, is_negative);
        }
    }
    return rows;
}();

// The first eight digits; what is none becomes a byte above 99. Zeros behind `count` of them.
inline __m128i digits_of(const number_t &x, const number_head_t &head) {
    const __m128i bytes = _mm_loadl_epi64(reinterpret_cast<const __m128i *>(x.coef));
    const __m128i sign = _mm_set1_epi8(static_cast<char>(head.sign));
    const __m128i values = _mm_sub_epi8(bytes, _mm_set1_epi8(static_cast<char>(NUMBER_DIGIT_EXCESS)));
    const __m128i digits = _mm_sub_epi8(_mm_xor_si128(values, sign), sign);
    return _mm_and_si128(digits, first_bytes(static_cast<unsigned>(head.count)));
}

// Tens and units of each digit as characters.
inline __m128i characters_of(__m128i digits) {
    const __m128i by_2 = _mm_unpacklo_epi8(digits, _mm_setzero_si128());
    // In 16 bits d * 256 - (d / 10) * (10 * 256 - 1).
    const __m128i tens = _mm_mulhi_epu16(by_2, _mm_set1_epi16(6554));
    const __m128i pairs = _mm_sub_epi16(_mm_slli_epi16(by_2, 8), _mm_mullo_epi16(tens, _mm_set1_epi16(2559)));
    return _mm_add_epi8(pairs, _mm_set1_epi8('0'));
}

// The length; 0: not written.
inline int write_one(const number_t &x, char *to) {
    const number_head_t head = read_head(x);
    if (head.count < 1 || head.count > _written_digits_max || head.exponent < 0 ||
        head.exponent > _written_digits_max)
        return 0;
    const __m128i digits = digits_of(x, head);
    const __m128i above = _mm_subs_epu8(digits, _mm_set1_epi8(99));
    const auto in_memory = static_cast<uint64_t>(_mm_cvtsi128_si64(digits));
    const auto first = static_cast<unsigned>(in_memory & 0xFF);
    if (_mm_testz_si128(above, above) == 0 || first == 0) return 0;

    // The tens of the first digit are left out where they are 0, but behind the point.
    const int from = head.exponent != 0 && first < 10 ? 1 : 0;
    const int point = 2 * head.exponent - from;
    const int is_negative = static_cast<int>(head.sign & 1);
    const auto last = static_cast<uint8_t>(in_memory >> 8 * (head.count - 1));
    int length = 2 * head.count + 1 - from - (last % 10 == 0 ? 1 : 0);
    if (head.count <= head.exponent) length = point;
    length += is_negative;
    const text_places_t &places = _text_places[place_number(point, from, is_negative)];
    const __m128i placed = _mm_shuffle_epi8(characters_of(digits), vector_of(places.digits));
    const __m128i text = _mm_or_si128(placed, vector_of(places.others));
    store_vector(to, _mm_and_si128(text, first_bytes(static_cast<unsigned>(length))));
    return length;
}

uint64_t write_texts(records_t from, int /*count*/, uint64_t valid, short_texts_t &texts) {
    uint64_t left = valid;
    for (uint64_t rest = valid; rest != 0; rest &= rest - 1) {
        const int i = std::countr_zero(rest);
        __builtin_prefetch(reinterpret_cast<const char *>(&from[i]) + FETCH_AHEAD);
        const int length = write_one(from[i], texts.text[i]);
        texts.length[i] = static_cast<uint8_t>(length);
        if (length != 0) left ^= rest & (0 - rest);
    }
    return left;
}

constexpr number_text_kernels_t kernels = {read_texts, write_texts};

}  // namespace
}  // namespace dv::impl::DV_LEVEL
