// Eight NUMBERs in vectors of 512 bits, for the kernels of any source.
//
// What belongs to one record is in one lane of 64 bits, in the order of the rows. Digits stand there as in a
// record: the first in the lowest byte. Records are read and written in pieces of sixteen bytes, which hold
// size, sign, exponent and up to fourteen digit bytes.

namespace dv::impl::DV_LEVEL {
namespace {

using lanes_t = __m512i;
using eight_rows_t = __mmask8;  // a bit for each row

inline lanes_t in_each_lane(uint64_t v) { return _mm512_set1_epi64(static_cast<long long>(v)); }

// Sixteen bytes of each row, in the quarters of two vectors: rows 0, 2, 4, 6, and rows 1, 3, 5, 7.
inline lanes_t load_quarters(const char *first, int64_t distance) {
    const auto load = [=](int i) {
        return _mm_loadu_si128(reinterpret_cast<const __m128i *>(first + i * distance));
    };
    lanes_t quarters = _mm512_castsi128_si512(load(0));
    quarters = _mm512_inserti64x2(quarters, load(1), 1);
    quarters = _mm512_inserti64x2(quarters, load(2), 2);
    return _mm512_inserti64x2(quarters, load(3), 3);
}

inline void store_quarters(char *first, int64_t distance, eight_rows_t rows, lanes_t even, lanes_t odd) {
    const auto store = [=](int row, __m128i bytes) {
        if ((rows >> row & 1) != 0)
            _mm_storeu_si128(reinterpret_cast<__m128i *>(first + row * distance), bytes);
    };
    store(0, _mm512_castsi512_si128(even));
    store(1, _mm512_castsi512_si128(odd));
    store(2, _mm512_extracti64x2_epi64(even, 1));
    store(3, _mm512_extracti64x2_epi64(odd, 1));
    store(4, _mm512_extracti64x2_epi64(even, 2));
    store(5, _mm512_extracti64x2_epi64(odd, 2));
    store(6, _mm512_extracti64x2_epi64(even, 3));
    store(7, _mm512_extracti64x2_epi64(odd, 3));
}

// Eight bytes with their first where the last was.
inline lanes_t turned_around(lanes_t lanes) {
    const lanes_t places =
        _mm512_broadcast_i32x4(_mm_setr_epi8(7, 6, 5, 4, 3, 2, 1, 0, 15, 14, 13, 12, 11, 10, 9, 8));
    return _mm512_shuffle_epi8(lanes, places);
}

// The bits of zero bytes in front of the first byte that is not zero, and behind the last; 64 for zero.
inline lanes_t zero_bits_in_front(lanes_t bytes) {
    return _mm512_and_si512(_mm512_lzcnt_epi64(turned_around(bytes)), in_each_lane(0x78));
}
inline lanes_t zero_bits_behind(lanes_t bytes) {
    return _mm512_and_si512(_mm512_lzcnt_epi64(bytes), in_each_lane(0x78));
}

struct eight_numbers_t {
    eight_rows_t negative;
    lanes_t sign;      // all ones for a negative value, else 0
    lanes_t exponent;  // base-100 exponent
    lanes_t count;     // digits, as the size byte tells
    lanes_t digits;    // the first eight digit bytes, as they are
};

inline eight_numbers_t load_eight(const char *first, int64_t stride) {
    const lanes_t even = load_quarters(first, 2 * stride);
    const lanes_t odd = load_quarters(first + stride, 2 * stride);
    const lanes_t begin = _mm512_unpacklo_epi64(even, odd);
    const lanes_t rest = _mm512_unpackhi_epi64(even, odd);
    const lanes_t byte = in_each_lane(0xFF);
    eight_numbers_t x;
    x.negative = _mm512_testn_epi64_mask(begin, in_each_lane(uint64_t{NUMBER_SIGN_BIT} << 8));
    x.sign = _mm512_movm_epi64(x.negative);
    const lanes_t signexp = _mm512_xor_si512(_mm512_srli_epi64(begin, 8), x.sign);
    x.exponent = _mm512_sub_epi64(_mm512_and_si512(signexp, byte), in_each_lane(NUMBER_SIGNEXP_EXCESS));
    // One byte for sign and exponent, another for the terminator.
    x.count = _mm512_add_epi64(_mm512_sub_epi64(_mm512_and_si512(begin, byte), in_each_lane(1)), x.sign);
    x.digits = _mm512_shrdi_epi64(begin, rest, 16);
    return x;
}

// Whether counts are 1 to `most`.
inline eight_rows_t have_digits(const eight_numbers_t &x, uint64_t most) {
    return _mm512_cmplt_epu64_mask(_mm512_sub_epi64(x.count, in_each_lane(1)), in_each_lane(most));
}

// Up to eight digits out of their bytes, whatever the sign; zeros behind the last. What is no digit becomes a
// byte above 99.
inline lanes_t digits_of_bytes(lanes_t bytes, lanes_t sign, lanes_t count) {
    const lanes_t one = in_each_lane(1);
    const lanes_t is_shown = _mm512_sub_epi64(_mm512_sllv_epi64(one, _mm512_slli_epi64(count, 3)), one);
    const lanes_t excess = in_each_lane(in_each_byte(NUMBER_DIGIT_EXCESS));
    const lanes_t values = _mm512_sub_epi8(_mm512_xor_si512(_mm512_sub_epi8(bytes, excess), sign), sign);
    return _mm512_and_si512(values, is_shown);
}
inline lanes_t digits_of(const eight_numbers_t &x) { return digits_of_bytes(x.digits, x.sign, x.count); }

inline eight_rows_t are_digits(lanes_t digits) {
    const lanes_t above = _mm512_subs_epu8(digits, _mm512_set1_epi8(99));
    return _mm512_testn_epi64_mask(above, above);
}

// Numbers below 10^16 as eight digits.
inline lanes_t digits_of_limbs(lanes_t limbs) {
    // limb / 10^8 = (limb / 2^8) / 5^8 = (limb / 2^8) * reciprocal / 2^70, exactly: the reciprocal is less
    // than 1 too large, and limb / 2^8 below 2^46.
    constexpr uint64_t reciprocal = static_cast<uint64_t>((uint128_t{1} << 70) / 390'625) + 1;
    const lanes_t zero = _mm512_setzero_si512();
    const lanes_t high = _mm512_srli_epi64(
        _mm512_madd52hi_epu64(zero, _mm512_srli_epi64(limbs, 8), in_each_lane(reciprocal)), 70 - 52);
    const lanes_t low = _mm512_sub_epi64(limbs, _mm512_mul_epu32(high, in_each_lane(100'000'000)));
    // As vectors::digits_of_ has it: each half by 10^4, each quarter by 100.
    const lanes_t by_10_000 = in_each_lane(109'951'163);
    const lanes_t even = _mm512_srli_epi64(_mm512_mul_epu32(high, by_10_000), 40);
    const lanes_t odd = _mm512_srli_epi64(_mm512_mul_epu32(low, by_10_000), 40);
    const lanes_t by_8 = _mm512_or_si512(high, _mm512_slli_epi64(low, 32));
    const lanes_t upper = _mm512_or_si512(even, _mm512_slli_epi64(odd, 32));
    const lanes_t lower = _mm512_sub_epi32(by_8, _mm512_madd_epi16(upper, _mm512_set1_epi32(10'000)));
    const lanes_t by_4 = _mm512_or_si512(upper, _mm512_slli_epi32(lower, 16));
    const lanes_t hundreds = _mm512_srli_epi16(_mm512_mulhi_epu16(by_4, _mm512_set1_epi16(5243)), 3);
    return _mm512_add_epi16(_mm512_slli_epi16(by_4, 8),
                            _mm512_mullo_epi16(hundreds, _mm512_set1_epi16(1 - 25'600)));
}

// Size and sign byte of values of so many digits.
inline lanes_t head_of(lanes_t count, lanes_t sign, lanes_t exponent) {
    const lanes_t size = _mm512_sub_epi64(_mm512_add_epi64(count, in_each_lane(1)), sign);
    const lanes_t positive = _mm512_add_epi64(exponent, in_each_lane(NUMBER_SIGNEXP_EXCESS));
    const lanes_t signexp = _mm512_and_si512(_mm512_xor_si512(positive, sign), in_each_lane(0xFF));
    return _mm512_or_si512(size, _mm512_slli_epi64(signexp, 8));
}

// Values 0.digits x 100^exponent. Zeros in front and behind are left out; without digits the value is zero.
inline void store_eight(char *first, int64_t stride, eight_rows_t rows, lanes_t sign, lanes_t exponent,
                        lanes_t digits) {
    const lanes_t in_front = zero_bits_in_front(digits), behind = zero_bits_behind(digits);
    const lanes_t width = _mm512_sub_epi64(_mm512_sub_epi64(in_each_lane(64), in_front), behind);
    const lanes_t excess = in_each_lane(in_each_byte(NUMBER_DIGIT_EXCESS));
    const lanes_t shown = _mm512_srlv_epi64(digits, in_front);
    lanes_t coef = _mm512_add_epi8(_mm512_sub_epi8(_mm512_xor_si512(shown, sign), sign), excess);
    // Behind the last digit; in none of the eight bytes if that is the eighth.
    coef = _mm512_xor_si512(coef, _mm512_sllv_epi64(in_each_lane(DIGIT_ZERO_TO_TERMINATOR), width));
    const lanes_t head = head_of(_mm512_srli_epi64(width, 3), sign,
                                 _mm512_sub_epi64(exponent, _mm512_srli_epi64(in_front, 3)));
    lanes_t begin = _mm512_or_si512(head, _mm512_slli_epi64(coef, 16));
    begin = _mm512_mask_mov_epi64(begin, _mm512_testn_epi64_mask(digits, digits),
                                  in_each_lane(1 | NUMBER_SIGNEXP_ZERO << 8));
    const lanes_t rest =
        _mm512_or_si512(_mm512_srli_epi64(coef, 48), in_each_lane(uint64_t{NUMBER_TOP} << 16));
    const lanes_t even = _mm512_unpacklo_epi64(begin, rest), odd = _mm512_unpackhi_epi64(begin, rest);
    store_quarters(first, stride, rows, even, odd);
}

}  // namespace
}  // namespace dv::impl::DV_LEVEL
