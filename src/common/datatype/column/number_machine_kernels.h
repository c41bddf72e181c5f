// Kernels of machine integers to and from NUMBER: integers of up to sixteen decimal digits, and values of up
// to eight base-100 digits in front of the point.

#include "eight_long_numbers.h"

namespace dv::impl::DV_LEVEL {
namespace {

template <typename Int>
lanes_t load_integers(const char *first, int64_t stride) {
    Int values[8];
    if (stride == sizeof(Int)) {
        memcpy(values, first, sizeof values);
    } else {
        for (int i = 0; i < 8; ++i) memcpy(&values[i], first + i * stride, sizeof(Int));
    }
    if constexpr (sizeof(Int) == sizeof(int64_t)) return _mm512_loadu_si512(values);
    return _mm512_cvtepi32_epi64(_mm256_loadu_si256(reinterpret_cast<const __m256i *>(values)));
}

template <typename Int>
void store_integers(char *first, int64_t stride, eight_rows_t rows, lanes_t lanes) {
    int64_t values[8];
    _mm512_storeu_si512(values, lanes);
    for (int i = 0; i < 8; ++i) {
        const Int value = static_cast<Int>(values[i]);
        if ((rows >> i & 1) != 0) memcpy(first + i * stride, &value, sizeof value);
    }
}

// Magnitudes from 10^16 on: one or two digits in front of eight.
inline void store_long_integers(char *first, int64_t stride, eight_rows_t rows, lanes_t sign,
                                lanes_t magnitude) {
    // magnitude / 10^16 = (magnitude / 2^16) / 5^16; exact, as in digits_of_limbs.
    constexpr uint64_t reciprocal = static_cast<uint64_t>((uint128_t{1} << 88) / 152'587'890'625) + 1;
    const lanes_t high =
        _mm512_srli_epi64(_mm512_madd52hi_epu64(_mm512_setzero_si512(), _mm512_srli_epi64(magnitude, 16),
                                                in_each_lane(reciprocal)),
                          88 - 52);
    const lanes_t low = _mm512_sub_epi64(magnitude, _mm512_mullo_epi64(high, in_each_lane(LIMB_BASE)));
    const lanes_t tens = _mm512_srli_epi64(_mm512_mul_epu32(high, in_each_lane(5243)), 19);  // high / 100
    const lanes_t units = _mm512_sub_epi64(high, _mm512_mul_epu32(tens, in_each_lane(100)));
    const eight_rows_t has_tens = _mm512_test_epi64_mask(tens, tens);
    const lanes_t both = _mm512_or_si512(_mm512_slli_epi64(tens, 56), _mm512_slli_epi64(units, 48));
    const lanes_t head = _mm512_mask_mov_epi64(_mm512_slli_epi64(units, 56), has_tens, both);
    const lanes_t count = _mm512_mask_mov_epi64(in_each_lane(1), has_tens, in_each_lane(2));
    const lanes_t bits = _mm512_slli_epi64(count, 3);
    const lanes_t digits = turned_around(digits_of_limbs(low));
    const eight_coefs_t coefs = {{_mm512_or_si512(head, _mm512_srlv_epi64(digits, bits)),
                                  _mm512_sllv_epi64(digits, _mm512_sub_epi64(in_each_lane(64), bits)),
                                  _mm512_setzero_si512()}};
    store_coefs(first, stride, rows, sign, _mm512_add_epi64(count, in_each_lane(COEF_WORD_DIGITS)), coefs);
}

template <typename Int>
uint64_t from_integers(records_t from, int count, uint64_t valid, records_t to) {
    uint64_t left = valid;
    for (int i = 0; i + 8 <= count; i += 8) {
        const lanes_t values = load_integers<Int>(from.first + i * from.stride, from.stride);
        const lanes_t sign = _mm512_srai_epi64(values, 63), magnitude = _mm512_abs_epi64(values);
        const auto rows = static_cast<eight_rows_t>(valid >> i);
        const eight_rows_t are_short = _mm512_cmplt_epu64_mask(magnitude, in_each_lane(LIMB_BASE));
        char *const first = to.first + i * to.stride;
        store_eight(first, to.stride, rows & are_short, sign, in_each_lane(COEF_WORD_DIGITS),
                    digits_of_limbs(magnitude));
        if (are_short != 0xFF)
            store_long_integers(first, to.stride, static_cast<eight_rows_t>(rows & ~are_short), sign,
                                magnitude);
        left &= ~(uint64_t{rows} << i);
    }
    return left;
}

// Eight digits as a number below 10^16.
inline lanes_t limbs_of_digits(lanes_t digits) {
    const lanes_t by_2 = _mm512_maddubs_epi16(digits, _mm512_set1_epi16(1 << 8 | 100));
    const lanes_t by_4 = _mm512_madd_epi16(by_2, _mm512_set1_epi32(1 << 16 | 10'000));
    return _mm512_add_epi64(_mm512_mul_epu32(by_4, in_each_lane(100'000'000)), _mm512_srli_epi64(by_4, 32));
}

template <typename Int>
uint64_t to_integers(records_t from, int count, uint64_t valid, records_t to) {
    const lanes_t lowest = _mm512_set1_epi64(std::numeric_limits<Int>::min());
    const lanes_t highest = _mm512_set1_epi64(std::numeric_limits<Int>::max());
    uint64_t left = valid;
    for (int i = 0; i + 8 <= count; i += 8) {
        const eight_numbers_t x = load_eight(from.first + i * from.stride, from.stride);
        auto rows =
            static_cast<eight_rows_t>((valid >> i) & have_digits(x, NUMBER_DIGITS_MAX) &
                                      _mm512_cmple_epi64_mask(x.exponent, in_each_lane(COEF_WORD_DIGITS)));
        if (rows == 0) continue;
        const lanes_t digits = digits_of(x);
        // What stands behind the point, and all of a value below 1, is shifted out.
        const lanes_t behind = _mm512_slli_epi64(_mm512_sub_epi64(in_each_lane(8), x.exponent), 3);
        const lanes_t magnitude = limbs_of_digits(_mm512_sllv_epi64(digits, behind));
        const lanes_t value = _mm512_sub_epi64(_mm512_xor_si512(magnitude, x.sign), x.sign);
        rows = static_cast<eight_rows_t>(rows & are_digits(digits) & _mm512_cmpge_epi64_mask(value, lowest) &
                                         _mm512_cmple_epi64_mask(value, highest));
        store_integers<Int>(to.first + i * to.stride, to.stride, rows, value);
        left &= ~(uint64_t{rows} << i);
    }
    return left;
}

constexpr number_machine_kernels_t kernels = {from_integers<int32_t>, from_integers<int64_t>,
                                              to_integers<int32_t>, to_integers<int64_t>};

}  // namespace
}  // namespace dv::impl::DV_LEVEL
