// Conversion of a binary floating-point value to a fixed count of decimal digits, correctly rounded, or to as
// few as read back as the value.
//
// m x 2^e x 10^scale is rounded to an integer. The short way multiplies m by the first 128 bits of 10^scale:
// the product is too small by less than two units of m, so the rounding is certain unless the fraction comes
// that close to one half. The long way, for those and for significands of more than 64 bits, writes the value
// as a quotient of two integers and divides in binary, digit by digit.
//
// The decimals that read back as a double are those between the midpoints to its neighbours. They are looked
// for among those of 15, 16 and 17 digits on either side: of 15, whose distance is larger than that of the
// midpoints, no more than one reads back, so that no shorter one is missed. The short way knows value and
// midpoints as far as above; the long way compares whole integers.

#include "binary_to_decimal.h"

#include <array>

#include "power_of_ten.h"

using namespace dv::impl;

namespace {

constexpr int _word_count =
    14;  // 896 bits: 128-bit significand, 10^151 (502 bits) and the quotient's 70 bits

// An unsigned integer, least significant word first.
struct big_t {
    uint64_t word[_word_count];
};

void multiply_(big_t &x, uint64_t factor) {
    uint64_t carry = 0;
    for (uint64_t &word : x.word) {
        const uint128_t product = uint128_t{word} * factor + carry;
        word = static_cast<uint64_t>(product);
        carry = static_cast<uint64_t>(product >> 64);
    }
}

void multiply_by_power_of_ten_(big_t &x, int power) {
    for (; power >= 19; power -= 19) multiply_(x, 10'000'000'000'000'000'000u);
    for (; power > 0; --power) multiply_(x, 10);
}

void shift_left_(big_t &x, int bits) {
    const int words = bits / 64;
    const int rest = bits % 64;
    for (int i = _word_count - 1; i >= 0; --i) {
        const uint64_t high = i >= words ? x.word[i - words] : 0;
        const uint64_t low = i > words ? x.word[i - words - 1] : 0;
        x.word[i] = high << rest | low >> 1 >> (63 - rest);
    }
}

void shift_right_once_(big_t &x) {
    for (int i = 0; i < _word_count; ++i) {
        x.word[i] = x.word[i] >> 1 | (i + 1 < _word_count ? x.word[i + 1] << 63 : 0);
    }
}

// Negative, 0 or positive as x is below, equal to or above y.
int compare_(const big_t &x, const big_t &y) {
    for (int i = _word_count - 1; i >= 0; --i) {
        if (x.word[i] != y.word[i]) return x.word[i] < y.word[i] ? -1 : 1;
    }
    return 0;
}

void subtract_(big_t &x, const big_t &y) {
    bool borrow = false;
    for (int i = 0; i < _word_count; ++i) {
        uint64_t difference = 0;
        const bool first = __builtin_sub_overflow(x.word[i], y.word[i], &difference);
        const bool second = __builtin_sub_overflow(difference, uint64_t{borrow}, &x.word[i]);
        borrow = first | second;
    }
}

constexpr int _quotient_bits = 70;  // 10^21 < 2^70: one digit more than asked for, when the scale is too high

// numerator / denominator rounded to an integer, an exact half to even; the quotient is below 2^70.
uint128_t divide_and_round_(big_t numerator, big_t denominator) {
    shift_left_(denominator, _quotient_bits);
    uint128_t quotient = 0;
    for (int i = 0; i < _quotient_bits; ++i) {
        shift_right_once_(denominator);
        quotient <<= 1;
        if (compare_(numerator, denominator) >= 0) {
            subtract_(numerator, denominator);
            quotient |= 1;
        }
    }
    shift_left_(numerator, 1);
    const int against_half = compare_(numerator, denominator);
    return quotient + (against_half > 0 || (against_half == 0 && (quotient & 1) != 0) ? 1 : 0);
}

big_t big_(uint128_t value) { return {{static_cast<uint64_t>(value), static_cast<uint64_t>(value >> 64)}}; }

// value x 10^scale rounded to an integer, whatever the operands.
uint128_t scale_and_round_exactly_(binary_float_t value, int scale) {
    big_t numerator = big_(value.significand);
    big_t denominator{{1}};
    multiply_by_power_of_ten_(scale >= 0 ? numerator : denominator, scale >= 0 ? scale : -scale);
    shift_left_(value.exponent >= 0 ? numerator : denominator,
                value.exponent >= 0 ? value.exponent : -value.exponent);
    return divide_and_round_(numerator, denominator);
}

// The same for a result of 20 to 70 bits.
uint128_t scale_and_round_(binary_float_t value, int scale) {
    if (value.significand >> 64 != 0) return scale_and_round_exactly_(value, scale);
    const auto significand = static_cast<uint64_t>(value.significand);
    const int normalizing = std::countl_zero(significand);
    const uint64_t normalized = significand << normalizing;
    const uint128_t power = power_of_ten_significand(scale);
    // 192 bits, of which the first `integer_bits` are the result and the others a fraction.
    const uint128_t low = uint128_t{normalized} * static_cast<uint64_t>(power);
    const uint128_t high =
        uint128_t{normalized} * static_cast<uint64_t>(power >> 64) + static_cast<uint64_t>(low >> 64);
    const int integer_bits = 192 + value.exponent - normalizing + power_of_ten_exponent(scale);
    const uint128_t quotient = high >> (128 - integer_bits);
    const uint128_t fraction = high << integer_bits;  // its first 128 - integer_bits bits, the rest 0

    // What the power lacks, two units of 192 bits, and what `fraction` leaves out, 64 of them, add up to less
    // than 2^66 of the 192: below 2^(66 - 192 + 128 + integer_bits) in units of the fraction.
    constexpr uint128_t half = uint128_t{1} << 127;
    const uint128_t uncertainty = uint128_t{4} << integer_bits;
    if (fraction < half - uncertainty) return quotient;
    if (fraction > half) return quotient + 1;
    return scale_and_round_exactly_(value, scale);
}

constexpr int _digits_max = 20;

constexpr auto _powers_of_ten = [] {
    std::array<uint128_t, _digits_max + 1> table{1};
    for (size_t i = 1; i < table.size(); ++i) table[i] = table[i - 1] * 10;
    return table;
}();

// floor(log10(2^power)), exact for |power| < 1650.
constexpr int floor_log10_of_power_of_two_(int power) { return power * 315653 >> 20; }

// The power of ten that gives significand x 2^exponent, with its highest bit set, `digits` digits in front of
// the point. The value lies between 2^power and 2^(power + 1), where there is at most one power of ten. One
// that has the same first 64 bits counts as reached: whatever is closer to it than that rounds to it.
inline int scale_to_digits_(uint64_t significand, int exponent, int digits) {
    const int power = exponent + 63;
    const int lower = floor_log10_of_power_of_two_(power);
    const bool has_power_of_ten = power_of_ten_exponent(lower + 1) + 127 == power;
    const bool is_reached = has_power_of_ten && significand >= power_of_ten_words(lower + 1).high;
    return digits - 1 - lower - int{is_reached};
}

// significand x 10^scale by the first 128 bits of the power: the first 128 bits of 192.
inline uint128_t multiply_by_power_(uint64_t significand, const power_of_ten_t &power) {
    const uint128_t low = uint128_t{significand} * power.low;
    return uint128_t{significand} * power.high + static_cast<uint64_t>(low >> 64);
}

// ---------------------------------------------------------------------------------------------------------
// The shortest decimal
// ---------------------------------------------------------------------------------------------------------

constexpr uint64_t _steps[] = {100, 10, 1};  // of 17 digits: from one decimal of 15, 16 and 17 to the next
constexpr uint128_t _power_of_two = uint128_t{1} << 52;  // whose lower neighbour is half as far

// A double times 10^scale, and how far its midpoints are, in units of 2^-64. What is left out is less than
// two units of each.
struct scaled_t {
    uint128_t value;  // an integer of 17 digits, and a fraction
    uint128_t to_lower, to_upper;

    uint64_t integer() const { return static_cast<uint64_t>(value >> 64); }
};

scaled_t scale_to_17_digits_(uint64_t significand, int exponent, int scale) {
    const power_of_ten_t &power = power_of_ten_words(scale);
    const int integer_bits = 192 + exponent + power_of_ten_exponent(scale);  // 53 to 57
    // Half of the distance to the next double is 2^10 of the significand's 64 bits.
    const uint128_t half_gap = power_of_ten_significand(scale) >> (64 + 54 - integer_bits);
    return {multiply_by_power_(significand, power) >> (64 - integer_bits),
            significand == uint64_t{1} << 63 ? half_gap >> 1 : half_gap, half_gap};
}

enum class found_t { no, yes, unsure };

// The nearer of the two multiples of `step` around the value that reads back as it.
template <uint64_t step>
found_t find_multiple_(const scaled_t &scaled, uint64_t &multiple) {
    const uint64_t behind = scaled.integer() % step;
    const uint128_t down = uint128_t{behind} << 64 | static_cast<uint64_t>(scaled.value);
    const uint128_t up = (uint128_t{step} << 64) - down;
    const bool reads_down = down + 2 <= scaled.to_lower, reads_up = up < scaled.to_upper;
    const bool is_sure =
        (reads_down || down >= scaled.to_lower + 2) && (reads_up || up >= scaled.to_upper + 4);
    const bool is_amid = reads_down && reads_up && up >= down && up - down < 4;
    if (!is_sure || is_amid) return found_t::unsure;
    multiple = scaled.integer() - behind + (reads_up && (!reads_down || up < down) ? step : 0);
    return reads_down || reads_up ? found_t::yes : found_t::no;
}

// Negative, 0 or positive as decimal x 10^-scale is below, equal to or above the value.
int compare_exactly_(uint64_t decimal, int scale, binary_float_t value) {
    big_t left = big_(decimal), right = big_(value.significand);
    multiply_by_power_of_ten_(scale >= 0 ? right : left, scale >= 0 ? scale : -scale);
    shift_left_(value.exponent >= 0 ? right : left, value.exponent >= 0 ? value.exponent : -value.exponent);
    return compare_(left, right);
}

// Midpoints read back as the double with the even significand.
bool reads_back_exactly_(uint64_t decimal, int scale, binary_float_t value) {
    const auto &[significand, exponent] = value;
    const binary_float_t upper = {2 * significand + 1, exponent - 1};
    const binary_float_t lower = significand == _power_of_two
                                     ? binary_float_t{4 * significand - 1, exponent - 2}
                                     : binary_float_t{2 * significand - 1, exponent - 1};
    const int midpoint = (significand & 1) == 0 ? 0 : 1;
    return compare_exactly_(decimal, scale, lower) >= midpoint &&
           compare_exactly_(decimal, scale, upper) <= -midpoint;
}

// `integer` is the value times 10^scale but for a fraction.
uint64_t find_exactly_(uint64_t integer, int scale, binary_float_t value) {
    for (const uint64_t step : _steps) {
        const uint64_t down = integer - integer % step, up = down + step;
        const bool reads_down = reads_back_exactly_(down, scale, value);
        if (!reads_back_exactly_(up, scale, value)) {
            if (reads_down) return down;
            continue;
        }
        if (!reads_down) return up;
        const int against_half = compare_exactly_(down + up, scale, {value.significand, value.exponent + 1});
        if (against_half != 0) return against_half < 0 ? up : down;
        return down / step % 2 == 0 ? down : up;
    }
    __builtin_unreachable();  // one of 17 digits always reads back
}

uint64_t find_shortest_(const scaled_t &scaled, int scale, binary_float_t value) {
    uint64_t multiple = 0;
    found_t found = find_multiple_<_steps[0]>(scaled, multiple);
    if (found == found_t::no) found = find_multiple_<_steps[1]>(scaled, multiple);
    if (found == found_t::no) found = find_multiple_<_steps[2]>(scaled, multiple);
    return found == found_t::yes ? multiple : find_exactly_(scaled.integer(), scale, value);
}

}  // namespace

decimal_float_t dv::impl::round_to_decimal(binary_float_t value, int digits) {
    // The decimal exponent or one less: value lies between 2^power and 2^(power + 1).
    const int power = bit_length(value.significand) - 1 + value.exponent;
    int scale = digits - 1 - floor_log10_of_power_of_two_(power);
    const uint128_t one_digit_more = _powers_of_ten[static_cast<size_t>(digits)];
    uint128_t significand = scale_and_round_(value, scale);
    if (significand >= one_digit_more) significand = scale_and_round_(value, --scale);
    // A carry into a new digit leaves a power of ten, so nothing is lost with the last zero.
    if (significand == one_digit_more) return {significand / 10, 1 - scale};
    return {significand, -scale};
}

decimal16_t dv::impl::round_to_16_digits(uint64_t significand, int exponent) {
    constexpr int digits = 16;
    constexpr uint64_t digits_end = 10'000'000'000'000'000;
    const int scale = scale_to_digits_(significand, exponent, digits);
    const uint128_t high = multiply_by_power_(significand, power_of_ten_words(scale));
    const int integer_bits = 192 + exponent + power_of_ten_exponent(scale);  // 49 to 54: 10^16 < 2^54
    const uint64_t quotient = static_cast<uint64_t>(high >> 64) >> (64 - integer_bits);
    const auto fraction = static_cast<uint64_t>(high >> (64 - integer_bits));
    // Of the fraction, its first 64 bits. What they leave out and what the power lacks is less than two
    // units.
    constexpr uint64_t half = uint64_t{1} << 63;
    if (fraction + 2 - half <= 2) return {0, 0};
    const uint64_t rounded = quotient + (fraction >> 63);
    if (rounded == digits_end) return {digits_end / 10, 1 - scale};
    return {rounded, -scale};
}

decimal_float_t dv::impl::round_to_shortest(binary_float_t value) {
    constexpr int normalizing = 64 - 53;
    const uint64_t significand = static_cast<uint64_t>(value.significand) << normalizing;
    const int exponent = value.exponent - normalizing;
    const int scale = scale_to_digits_(significand, exponent, DOUBLE_DIGITS_MAX);
    const uint64_t found = find_shortest_(scale_to_17_digits_(significand, exponent, scale), scale, value);
    if (found == _powers_of_ten[DOUBLE_DIGITS_MAX]) return {found / 10, 1 - scale};
    return {found, -scale};
}
