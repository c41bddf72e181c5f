// Machine integers in and out, the limit table, and the range check.
//
// A 64-bit magnitude is at most ten base-100 digits: two limbs of eight. Every integer type goes through one
// template over 64-bit values; the bounds come from numeric_limits and are rows of the limit table too.

#include <algorithm>
#include <limits>
#include <utility>

#include "../error.h"
#include "number_limb.h"
#include "vector_digits.h"

using namespace dv::impl;

namespace {

template <typename Int>
constexpr void from_integer_(number_t &x, Int v) {
    const bool negative = v < 0;
    const auto bits = static_cast<uint64_t>(static_cast<int64_t>(v));
    const uint64_t magnitude = negative ? 0 - bits : bits;
    if (magnitude < LIMB_BASE) return store_limb(x, negative, magnitude, 0);
    store_decimal(x, negative, magnitude, 0);
}

template <typename Int>
[[gnu::noinline]] void store_any_integer_(number_t *x, Int v) {
    if (!DV_ASSERT(number_is_nonnull_ptr(x))) return;
    from_integer_(*x, v);
}

#if DV_HAS_VECTOR_BYTES

// A magnitude of more than 16 decimal digits: up to two base-100 digits in front of eight; false if those are
// 0.
inline bool store_long_integer_(number_t &x, uint64_t sign, uint64_t magnitude) {
    const uint64_t high = magnitude / LIMB_BASE;  // below 1845
    const uint64_t rest = digit_bytes_from_limb(magnitude - high * LIMB_BASE);
    if (rest == 0) return false;
    const uint64_t tens = high * 5243 >> 19;  // high / 100, see digit_bytes_from_limb
    const auto has_tens = int{tens != 0};
    const uint64_t head = (tens | (high - tens * 100) << 8) >> (8 - 8 * has_tens);
    const int shift = 8 + 8 * has_tens;
    const bytes16_t digits = join_halves(head | rest << shift, rest >> (64 - shift));
    const int exponent = 1 + has_tens + COEF_WORD_DIGITS;
    const int count = exponent - trailing_zero_bytes(swap_bytes(rest));
    x.size = size_of(sign, count);
    x.signexp = signexp_of(sign, exponent);
    store_vector(x.coef, record_bytes(digits, _mm_set1_epi64x(static_cast<int64_t>(sign)), count));
    return true;
}

// At run time. Nothing branches but on the size of the magnitude (bench/number, from_int64).
template <typename Int>
void store_integer_(number_t *x, Int v) {
    const auto sign = static_cast<uint64_t>(std::is_signed_v<Int> ? static_cast<int64_t>(v) >> 63 : 0);
    const uint64_t magnitude = (static_cast<uint64_t>(static_cast<int64_t>(v)) ^ sign) - sign;
    if (x == nullptr || magnitude == 0) [[unlikely]]
        return store_any_integer_(x, v);
    if (magnitude < 100'000'000) [[likely]]
        return store_short_number(*x, sign, magnitude);
    if (magnitude < LIMB_BASE)
        return store_digits(*x, sign, digit_bytes_from_limb(magnitude), COEF_WORD_DIGITS);
    if (!store_long_integer_(*x, sign, magnitude)) store_any_integer_(x, v);
}

#else

template <typename Int>
void store_integer_(number_t *x, Int v) {
    store_any_integer_(x, v);
}

#endif

// Magnitude of the integer part; anything above 10^20 as 10^20.
constexpr uint128_t truncated_magnitude_(const number_t &x) {
    constexpr uint128_t too_large = uint128_t{10'000'000'000} * 10'000'000'000;
    const int digits = number_exponent(x);  // base-100 digits in front of the point
    if (number_is_zero(x) || digits <= 0) return 0;
    if (digits > 10) return too_large;
    const long_coef coef = load_coef<3>(x);
    if (digits <= COEF_WORD_DIGITS)
        return limb_from_digits(coef.word[0] >> (8 * (COEF_WORD_DIGITS - digits)));
    const int behind = digits - COEF_WORD_DIGITS;
    return uint128_t{limb_from_digits(coef.word[0])} * (behind == 1 ? 100 : 10'000) +
           limb_from_digits(coef.word[1] >> (8 * (COEF_WORD_DIGITS - behind)));
}

// Does the integer part fit? A value below zero never fits an unsigned type, whatever its integer part.
template <typename Int>
constexpr bool in_range_(const number_t &x, uint128_t magnitude) {
    constexpr auto highest = static_cast<uint64_t>(std::numeric_limits<Int>::max());
    if (!number_is_negative(x)) return magnitude <= highest;
    if constexpr (std::numeric_limits<Int>::is_signed) return magnitude <= uint128_t{highest} + 1;
    return number_is_zero(x);
}

template <typename Int>
constexpr bool is_in_range_(const number_t &x) {
    return in_range_<Int>(x, truncated_magnitude_(x));
}

#if DV_HAS_VECTOR_BYTES

// A value that has one to nine digits in front of the point, none of them left out at the end of the record,
// is taken as a whole. Digit bytes are 128 + d or 128 - d: as they are they make up a number, and what is
// left of it without the excess of 128 has the sign of the value.
//
// By signexp, which tells sign and exponent at once: what the digits in front of the point want. No size fits
// a row without digits.
struct whole_row_t {
    uint8_t size_min;    // of a record with all of them
    uint8_t size_count;  // so many sizes from there on are valid
    uint8_t shift;       // of a word, past its digits behind the point
    bool has_ninth;      // a digit that is not in the word
    int64_t excess;      // what 128 in each digit adds up to
};
constexpr int _whole_digits_max = 9;
constexpr auto _whole_rows = [] {
    std::array<whole_row_t, 256> rows{};
    int64_t excess = 0;
    for (int digits = 1; digits <= _whole_digits_max; ++digits) {
        excess = excess * 100 + NUMBER_DIGIT_EXCESS;
        for (const uint64_t sign : {uint64_t{0}, ~uint64_t{0}}) {
            const uint8_t size_min = size_of(sign, digits);
            const int past_word = digits - COEF_WORD_DIGITS;
            rows[signexp_of(sign, digits)] = {size_min, static_cast<uint8_t>(NUMBER_SIZE_MAX + 1 - size_min),
                                              static_cast<uint8_t>(8 * std::max(-past_word, 0)),
                                              past_word > 0, excess};
        }
    }
    return rows;
}();

// False: any other value, or a record that is not valid.
inline bool take_whole_digits_(const number_t &x, int64_t &value) {
    const whole_row_t &row = _whole_rows[x.signexp];
    if (static_cast<uint8_t>(x.size - row.size_min) >= row.size_count) return false;
    uint64_t bytes;
    memcpy(&bytes, x.coef, sizeof bytes);
    value = number_in_memory(bytes << row.shift);
    if (row.has_ninth) [[unlikely]]
        value = value * 100 + x.coef[COEF_WORD_DIGITS];
    value -= row.excess;
    return true;
}

#else

inline bool take_whole_digits_(const number_t &, int64_t &) { return false; }

#endif

// False: outside the range. Then nothing is stored, nor without a pointer.
template <typename Int>
[[gnu::noinline]] bool to_any_integer_(const number_t *x, Int *y) {
    if (!DV_ASSERT(number_is_valid_ptr(x) && number_is_nonnull_ptr(y)) && !given(x, y)) return true;
    const uint128_t magnitude = truncated_magnitude_(*x);
    if (!in_range_<Int>(*x, magnitude)) return false;
    const auto low = static_cast<uint64_t>(magnitude);
    *y = static_cast<Int>(number_is_negative(*x) ? 0 - low : low);
    return true;
}

template <typename Int>
[[nodiscard]] bool to_integer_(const number_t *x, Int *y) {
    int64_t value = 0;
    if (x == nullptr || y == nullptr || !take_whole_digits_(*x, value)) return to_any_integer_(x, y);
    if (!std::in_range<Int>(value)) return false;
    *y = static_cast<Int>(value);
    return true;
}

bool is_within_floating_bounds_(const number_t &x, int type) {
    number_t lowest{}, highest{};
    memcpy(&lowest, _number_limit[2 * type].byte, NUMBER_ROW_SIZE);
    memcpy(&highest, _number_limit[2 * type + 1].byte, NUMBER_ROW_SIZE);
    return number_is_zero(x) || (number_cmp(&x, &lowest) >= 0 && number_cmp(&x, &highest) <= 0);
}

constexpr number_row_t row_of_(const number_t &x) {
    number_row_t row{};
    row.byte[0] = x.size;
    row.byte[1] = x.signexp;
    for (int i = 0; i < x.size - 1; ++i) row.byte[2 + i] = x.coef[i];
    return row;
}

template <typename Int>
constexpr number_row_t row_(Int v) {
    number_t x{};
    from_integer_(x, v);
    return row_of_(x);
}

constexpr number_row_t row_(bool negative, const long_coef &coef, int exponent) {
    number_t x{};
    store_coef(x, negative, exponent, coef);
    return row_of_(x);
}

template <typename Int>
using limits_ = std::numeric_limits<Int>;

// FLT_MAX prints as 3.4028235e+38; at 7 digits the exact half goes down. The wider types exceed NUMBER.
constexpr long_coef _float_max = {{digits_from_limb(3'40'28'23'00'00'00'00), 0, 0}};
constexpr int _float_max_exponent = 20;
constexpr long_coef _largest = {{in_each_byte(99), in_each_byte(99), in_each_byte(99) << (64 - 3 * 8)}};

}  // namespace

extern "C" {

// clang-format off
const number_row_t _number_limit[NUMBER_LIMIT_ROWS] = {
    row_(limits_<int8_t>::min()),   row_(limits_<int8_t>::max()),
    row_(limits_<uint8_t>::min()),  row_(limits_<uint8_t>::max()),
    row_(limits_<int16_t>::min()),  row_(limits_<int16_t>::max()),
    row_(limits_<uint16_t>::min()), row_(limits_<uint16_t>::max()),
    row_(limits_<int32_t>::min()),  row_(limits_<int32_t>::max()),
    row_(limits_<uint32_t>::min()), row_(limits_<uint32_t>::max()),
    row_(limits_<int64_t>::min()),  row_(limits_<int64_t>::max()),
    row_(limits_<uint64_t>::min()), row_(limits_<uint64_t>::max()),
    row_(/*negative=*/true, _float_max, _float_max_exponent), row_(/*negative=*/false, _float_max, _float_max_exponent),
    row_(/*negative=*/true, _largest, NUMBER_EXPONENT_MAX),   row_(/*negative=*/false, _largest, NUMBER_EXPONENT_MAX),
    row_(/*negative=*/true, _largest, NUMBER_EXPONENT_MAX),   row_(/*negative=*/false, _largest, NUMBER_EXPONENT_MAX),
};
// clang-format on

uchar number_range_check(const number_t *x, int type) {
    if (!DV_ASSERT(number_is_valid_ptr(x)) && !given(x)) return 0;
    switch (type) {
        case NUMBER_TYPE_INT8:
            return is_in_range_<int8_t>(*x);
        case NUMBER_TYPE_UINT8:
            return is_in_range_<uint8_t>(*x);
        case NUMBER_TYPE_INT16:
            return is_in_range_<int16_t>(*x);
        case NUMBER_TYPE_UINT16:
            return is_in_range_<uint16_t>(*x);
        case NUMBER_TYPE_INT32:
            return is_in_range_<int32_t>(*x);
        case NUMBER_TYPE_UINT32:
            return is_in_range_<uint32_t>(*x);
        case NUMBER_TYPE_INT64:
            return is_in_range_<int64_t>(*x);
        case NUMBER_TYPE_UINT64:
            return is_in_range_<uint64_t>(*x);
        case NUMBER_TYPE_FLOAT:
        case NUMBER_TYPE_DOUBLE:
        case NUMBER_TYPE_LONG_DOUBLE:
            return is_within_floating_bounds_(*x, type);
        default:
            return 0;
    }
}

void number_from_int8(number_t *x, int8_t v) { store_integer_(x, v); }
void number_from_int16(number_t *x, int16_t v) { store_integer_(x, v); }
void number_from_int32(number_t *x, int32_t v) { store_integer_(x, v); }
void number_from_int64(number_t *x, int64_t v) { store_integer_(x, v); }
void number_from_uint8(number_t *x, uint8_t v) { store_integer_(x, v); }
void number_from_uint16(number_t *x, uint16_t v) { store_integer_(x, v); }
void number_from_uint32(number_t *x, uint32_t v) { store_integer_(x, v); }
void number_from_uint64(number_t *x, uint64_t v) { store_integer_(x, v); }

void number_to_int8(const number_t *x, int8_t *y) {
    if (!to_integer_(x, y)) raise(DV_ERR_NUMBER_TARGET_RANGE);
}
void number_to_int16(const number_t *x, int16_t *y) {
    if (!to_integer_(x, y)) raise(DV_ERR_NUMBER_TARGET_RANGE);
}
void number_to_int32(const number_t *x, int32_t *y) {
    if (!to_integer_(x, y)) raise(DV_ERR_NUMBER_TARGET_RANGE);
}
void number_to_int64(const number_t *x, int64_t *y) {
    if (!to_integer_(x, y)) raise(DV_ERR_NUMBER_TARGET_RANGE);
}
void number_to_uint8(const number_t *x, uint8_t *y) {
    if (!to_integer_(x, y)) raise(DV_ERR_NUMBER_TARGET_RANGE);
}
void number_to_uint16(const number_t *x, uint16_t *y) {
    if (!to_integer_(x, y)) raise(DV_ERR_NUMBER_TARGET_RANGE);
}
void number_to_uint32(const number_t *x, uint32_t *y) {
    if (!to_integer_(x, y)) raise(DV_ERR_NUMBER_TARGET_RANGE);
}
void number_to_uint64(const number_t *x, uint64_t *y) {
    if (!to_integer_(x, y)) raise(DV_ERR_NUMBER_TARGET_RANGE);
}

}  // extern "C"
