// Floating-point numbers in and out.
//
// In: the digits that printf's scientific format prints, 8, 16 or 20 of them by type, taken from the exact
// binary value; a float keeps 7 of its 8, an exact half going down. Or as few as read back as the double.
// Out: the first nine base-100 digits as an integer, scaled by a power of 100 with 64 significant bits, which
// is more than double and less than some machines' long double has. The powers are those that repeated
// multiplication gives, so that results do not depend on how they are computed.

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

#include "../error.h"
#include "binary_to_decimal.h"
#include "extended_float.h"
#include "number_round.h"
#include "vector_digits.h"

using namespace dv::impl;

namespace {

enum class rounding_t { as_printed, then_half_down_by_one_digit, to_shortest };

// How a type is read into a NUMBER.
struct reading_t {
    int digits;
    rounding_t rounding;
};
constexpr reading_t _float_reading = {8, rounding_t::then_half_down_by_one_digit};
constexpr reading_t _double_reading = {16, rounding_t::as_printed};
constexpr reading_t _shortest_reading = {DOUBLE_DIGITS_MAX, rounding_t::to_shortest};
constexpr reading_t _long_double_reading = {20, rounding_t::as_printed};

constexpr int _decimal_exponent_max = 2 * NUMBER_EXPONENT_MAX - 1;    // 125
constexpr int _decimal_exponent_min = 2 * (NUMBER_EXPONENT_MIN - 1);  // -130

// A finite positive value as an integer times a power of two; exact.
binary_float_t take_apart_(double v) {
    constexpr int fraction_bits = std::numeric_limits<double>::digits - 1;
    constexpr uint64_t hidden_bit = uint64_t{1} << fraction_bits;
    constexpr int lowest_exponent =
        std::numeric_limits<double>::min_exponent - std::numeric_limits<double>::digits;
    const auto bits = std::bit_cast<uint64_t>(v);
    const uint64_t fraction = bits & (hidden_bit - 1);
    const int biased = static_cast<int>(bits >> fraction_bits);
    if (biased == 0) return {fraction, lowest_exponent};  // subnormal
    return {fraction | hidden_bit, biased - 1 + lowest_exponent};
}

binary_float_t take_apart_(long double v) {
    constexpr int significand_bits = std::numeric_limits<long double>::digits;
    int exponent = 0;
    const long double fraction = std::frexp(v, &exponent);
    return {static_cast<uint128_t>(std::ldexp(fraction, significand_bits)), exponent - significand_bits};
}

// Raises as the text reader would on what printf prints.
[[noreturn]] void raise_as_text_(dv_error_code_e code) {
    raise(error_at(code, __FILE__, __LINE__, "number_from_str"));
}

// The digits of a finite positive value; raises when they lie outside the range of NUMBER.
decimal_float_t digits_of_(binary_float_t value, const reading_t &reading) {
    // Far outside, by powers of two: 10^-132 > 2^-440, 10^127 < 2^424.
    const int power = bit_length(value.significand) - 1 + value.exponent;
    if (power >= 424) raise_as_text_(DV_ERR_NUMBER_OVERFLOW);
    if (power < -440) raise_as_text_(DV_ERR_NUMBER_UNDERFLOW);
    const decimal_float_t decimal = reading.rounding == rounding_t::to_shortest
                                        ? round_to_shortest(value)
                                        : round_to_decimal(value, reading.digits);
    const int decimal_exponent = decimal.exponent + reading.digits - 1;
    if (decimal_exponent > _decimal_exponent_max) raise_as_text_(DV_ERR_NUMBER_OVERFLOW);
    if (decimal_exponent < _decimal_exponent_min) raise_as_text_(DV_ERR_NUMBER_UNDERFLOW);
    return decimal;
}

template <typename Float>  // double or long double
void from_floating_(number_t *x, Float v, const reading_t &reading) {
    if (!DV_ASSERT(number_is_nonnull_ptr(x))) return;
    if (v == 0) return store_zero(*x);
    if (!std::isfinite(v)) raise_as_text_(DV_ERR_NUMBER_TEXT);
    decimal_float_t decimal = digits_of_(take_apart_(std::fabs(v)), reading);
    if (reading.rounding == rounding_t::then_half_down_by_one_digit) {
        const bool away = decimal.significand % 10 > 5;
        decimal = {decimal.significand / 10 + (away ? 1 : 0), decimal.exponent + 1};
    }
    store_decimal(*x, std::signbit(v), decimal.significand, decimal.exponent);
}

#if DV_HAS_VECTOR_BYTES

// Stores significand x 10^exponent; the significand has 16 digits. They begin with a whole base-100 digit, or
// with half of one and end with a ninth.
void store_16_digits_(number_t &x, uint64_t sign, decimal16_t decimal) {
    const uint64_t is_odd = static_cast<uint64_t>(decimal.exponent) & 1;
    const uint64_t tenth = decimal.significand / 10;
    const uint64_t last = (decimal.significand - tenth * 10) * 10 * is_odd;
    const uint64_t digits = digit_bytes_from_limb(is_odd != 0 ? tenth : decimal.significand);
    const int count =
        last != 0 ? COEF_WORD_DIGITS + 1 : COEF_WORD_DIGITS - trailing_zero_bytes(swap_bytes(digits));
    x.size = size_of(sign, count);
    x.signexp = signexp_of(sign, COEF_WORD_DIGITS + ((decimal.exponent + 1) >> 1));
    const bytes16_t signs = _mm_set1_epi64x(static_cast<int64_t>(sign));
    store_vector(x.coef, record_bytes(join_halves(digits, last), signs, count));
}

// Well within the range of NUMBER, above 10^-119 and below 10^125: no 0, infinity or NaN.
bool is_well_in_range_(uint64_t bits) {
    constexpr int power_min = -395, power_max = 414;
    const int power = static_cast<int>(bits >> 52 & 0x7FF) - 1023;
    return power >= power_min && power <= power_max;
}

// A number well in range, rounded without doubt (bench/number, from_double); false: any other.
bool store_double_(number_t &x, double v) {
    const auto bits = std::bit_cast<uint64_t>(v);
    if (!is_well_in_range_(bits)) return false;
    const int power = static_cast<int>(bits >> 52 & 0x7FF) - 1023;
    const decimal16_t decimal = round_to_16_digits(bits << 11 | uint64_t{1} << 63, power - 63);
    if (decimal.significand == 0) return false;
    store_16_digits_(x, 0 - (bits >> 63), decimal);
    return true;
}

// A number well in range; false: any other.
bool store_shortest_(number_t &x, double v) {
    const auto bits = std::bit_cast<uint64_t>(v);
    if (!is_well_in_range_(bits)) return false;
    const decimal_float_t decimal = round_to_shortest(take_apart_(std::fabs(v)));
    const auto significand = static_cast<uint64_t>(decimal.significand);
    if (significand % 10 != 0) {
        store_decimal(x, std::signbit(v), significand, decimal.exponent);
    } else {
        store_16_digits_(x, 0 - (bits >> 63), {significand / 10, decimal.exponent + 1});
    }
    return true;
}

#else

bool store_double_(number_t &, double) { return false; }
bool store_shortest_(number_t &, double) { return false; }

#endif

// ---- out ----

constexpr int _digits_taken_max = 9;
constexpr int _power_max = NUMBER_EXPONENT_MAX + 1 + NUMBER_DIGITS_MAX;

// 100^n as repeated multiplication gives it, rounded from 100^14 on.
constexpr auto _power_of_100 = [] {
    std::array<extended_float, _power_max> table{};
    extended_float power(1);
    for (extended_float &entry : table) {
        entry = power;
        power = power * extended_float(100);
    }
    return table;
}();

// Outside the bounds of float, by exponent and the first two digits: three bytes of the record.
bool exceeds_float_(const number_t &x) {
    constexpr int compared_bytes = 3;
    const auto beyond = [&](int row) {
        number_t bound{};
        memcpy(&bound, &_number_limit[row], NUMBER_ROW_SIZE);
        number_t head{};
        memcpy(&head, &x, std::min<size_t>(x.size + size_t{1}, 1 + compared_bytes));
        return memcmp(&head.signexp, &bound.signexp, compared_bytes);
    };
    return beyond(2 * NUMBER_TYPE_FLOAT) < 0 || beyond(2 * NUMBER_TYPE_FLOAT + 1) > 0;
}

long double to_long_double_(const number_t &x) {
    const int taken = std::min(number_digit_count(x), _digits_taken_max);
    if (taken == 0) return 0;
    const long_coef coef = load_coef<3>(x);
    const uint64_t integer =
        taken <= COEF_WORD_DIGITS
            ? limb_from_digits(coef.word[0] >> (8 * (COEF_WORD_DIGITS - taken)))
            : limb_from_digits(coef.word[0]) * 100 + static_cast<uint64_t>(coef_digit(coef, 8));
    const int power = number_exponent(x) - taken;  // [-73, 62]
    const auto unscaled = static_cast<extended_float>(integer);
    const auto magnitude =
        static_cast<long double>(power < 0 ? unscaled / _power_of_100[static_cast<size_t>(-power)]
                                           : unscaled * _power_of_100[static_cast<size_t>(power)]);
    return number_is_negative(x) ? -magnitude : magnitude;
}

// What is no valid record, or has no place to go to. Apart, so that the way of others has no registers to
// save.
template <typename Float>
[[gnu::cold, gnu::noinline]] void convert_unsound_(const number_t *x, Float *y) {
    if (!DV_ASSERT(number_is_valid_ptr(x) && number_is_nonnull_ptr(y)) && !given(x, y)) return;
    *y = static_cast<Float>(to_long_double_(*x));
}

template <typename Float>  // double or long double
void to_floating_(const number_t *x, Float *y) {
    if (!number_is_valid_ptr(x) || y == nullptr) return convert_unsound_(x, y);
    *y = static_cast<Float>(to_long_double_(*x));
}

}  // namespace

extern "C" {

const int _float_covers_number = 0;
const int _double_covers_number = 1;
const int _long_double_covers_number = 1;

void number_from_float(number_t *x, float v) { from_floating_(x, double{v}, _float_reading); }
void number_from_double(number_t *x, double v) {
    if (x == nullptr || !store_double_(*x, v)) from_floating_(x, v, _double_reading);
}
void number_from_double_shortest(number_t *x, double v) {
    if (x == nullptr || !store_shortest_(*x, v)) from_floating_(x, v, _shortest_reading);
}
void number_from_long_double(number_t *x, long double v) { from_floating_(x, v, _long_double_reading); }

void number_to_float(const number_t *x, float *y) {
    if (!DV_ASSERT(number_is_valid_ptr(x) && number_is_nonnull_ptr(y)) && !given(x, y)) return;
    if (exceeds_float_(*x)) raise(DV_ERR_NUMBER_TARGET_RANGE);
    *y = static_cast<float>(to_long_double_(*x));
}

void number_to_double(const number_t *x, double *y) { to_floating_(x, y); }
void number_to_long_double(const number_t *x, long double *y) { to_floating_(x, y); }

}  // extern "C"
