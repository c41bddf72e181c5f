// Division.
//
// Both coefficients are read as 48-digit integers (fractions 0.d1 d2 ... times 10^48). The quotient is
// floor(X / Y x 10^48): an integer part below 100 and three limbs of base 10^16 behind it, always, by long
// division with one limb to a step. A divisor of one limb needs one machine division to a step; a longer one
// is held in binary, where a step estimates its limb from the top 64 bits and corrects it by subtraction.
// What remains after the last limb is not looked at.

#include "number_limb.h"
#include "number_round.h"

using namespace dv::impl;

namespace {

struct quotient_limbs_t {
    uint64_t integer;  // [0, 99]
    limbs_t fraction;
};

quotient_limbs_t divide_by_one_limb_(const limbs_t &x, uint64_t divisor) {
    quotient_limbs_t result{};
    quotient_t step = {x.limb[0] / divisor, x.limb[0] % divisor};
    result.integer = step.quotient;
    for (int i = 0; i < 3; ++i) {
        const uint64_t next = i < 2 ? x.limb[i + 1] : 0;
        const uint128_t value = uint128_t{step.remainder} * LIMB_BASE + next;  // below divisor * 10^16
        step = divide_128_by_64(static_cast<uint64_t>(value >> 64), static_cast<uint64_t>(value), divisor);
        result.fraction.limb[i] = step.quotient;
    }
    return result;
}

// A 256-bit integer, least significant word first.
struct wide_t {
    uint64_t word[4];
};

constexpr wide_t multiply_add_(const wide_t &x, uint64_t factor, uint64_t addend) {
    wide_t result{};
    uint128_t carry = addend;
    for (int i = 0; i < 4; ++i) {
        carry += uint128_t{x.word[i]} * factor;
        result.word[i] = static_cast<uint64_t>(carry);
        carry >>= 64;
    }
    return result;
}

constexpr wide_t to_binary_(const limbs_t &x) {
    const uint128_t top = uint128_t{x.limb[0]} * LIMB_BASE + x.limb[1];  // below 10^32 < 2^107
    return multiply_add_({{static_cast<uint64_t>(top), static_cast<uint64_t>(top >> 64), 0, 0}}, LIMB_BASE,
                         x.limb[2]);
}

// x -= y; true when y was the larger one, and x is 2^256 too large.
constexpr bool subtract_(wide_t &x, const wide_t &y) {
    uint64_t borrow = 0;
    for (int i = 0; i < 4; ++i) {
        const bool first = __builtin_sub_overflow(x.word[i], y.word[i], &x.word[i]);
        const bool second = __builtin_sub_overflow(x.word[i], borrow, &x.word[i]);
        borrow = static_cast<uint64_t>(first | second);
    }
    return borrow != 0;
}

// A divisor of more than one limb: 10^46 <= value < 10^48, so it has 153 to 160 bits.
struct wide_divisor_t {
    wide_t value;
    int shift;           // [26, 33]; bits from 64 + shift on make 63 bits of the divisor:
    uint64_t estimator;  // those and one unit, so that estimates are never too large
};

// The 128 bits of x from bit 64 + shift on, 0 < shift < 64.
constexpr uint128_t middle_bits_(const wide_t &x, int shift) {
    const uint64_t low = x.word[1] >> shift | x.word[2] << (64 - shift);
    const uint64_t high = x.word[2] >> shift | x.word[3] << (64 - shift);
    return uint128_t{high} << 64 | low;
}

wide_divisor_t make_divisor_(const limbs_t &y) {
    const wide_t value = to_binary_(y);
    const int shift = 128 - std::countl_zero(value.word[2]) - 63;
    return {value, shift, static_cast<uint64_t>(middle_bits_(value, shift)) + 1};
}

// One limb of the quotient: floor(rest / divisor), below 2^54; rest keeps the remainder. The estimate is
// short by less than 1 + 2^54 / 2^62.
uint64_t divide_step_(wide_t &rest, const wide_divisor_t &divisor) {
    const uint128_t top = middle_bits_(rest, divisor.shift);  // below 2^118
    uint64_t quotient =
        divide_128_by_64(static_cast<uint64_t>(top >> 64), static_cast<uint64_t>(top), divisor.estimator)
            .quotient;
    subtract_(rest, multiply_add_(divisor.value, quotient, 0));
    for (wide_t less = rest; !subtract_(less, divisor.value); ++quotient) rest = less;
    return quotient;
}

quotient_limbs_t divide_by_limbs_(const limbs_t &x, const limbs_t &y) {
    const wide_divisor_t divisor = make_divisor_(y);
    wide_t rest = to_binary_(x);
    quotient_limbs_t result{};
    result.integer = divide_step_(rest, divisor);
    for (uint64_t &limb : result.fraction.limb) {
        rest = multiply_add_(rest, LIMB_BASE, 0);  // below 10^64 < 2^213
        limb = divide_step_(rest, divisor);
    }
    return result;
}

// x and y are left-aligned: their first digit is not 0.
quotient_limbs_t divide_limbs_(const limbs_t &x, const limbs_t &y) {
    return (y.limb[1] | y.limb[2]) == 0 ? divide_by_one_limb_(x, y.limb[0]) : divide_by_limbs_(x, y);
}

// The quotient's digits as a coefficient without a leading zero; adds to the exponent what they need.
long_coef quotient_coef_(const quotient_limbs_t &quotient, int &exponent, bool &rest_beyond) {
    const auto &limb = quotient.fraction.limb;
    long_coef coef = {{digits_from_limb(limb[0]), digits_from_limb(limb[1]), digits_from_limb(limb[2])}};
    rest_beyond = false;
    if (quotient.integer != 0) {
        rest_beyond = (coef.word[2] & 0xFF) != 0;
        coef_shift_right(coef, 1);
        coef.word[0] |= quotient.integer << 56;
        ++exponent;
    }
    return coef;
}

// A record's coefficient with its first digit not 0, as every canonical record has it; zero stays zero.
long_coef load_normalized_(const number_t &x, int &exponent) {
    const number_head_t head = read_head(x);
    long_coef coef = load_coef<3>(x, head);
    exponent = head.exponent;
    if (coef_digit(coef, 0) == 0 && !coef_is_zero(coef)) [[unlikely]]
        exponent -= coef_normalize(coef);
    return coef;
}

}  // namespace

extern "C" void number_div(number_t *x, const number_t *y) {
    DV_ASSERT(number_is_valid_ptr(x) && number_is_valid_ptr(y));
    int divisor_exponent = 0;
    const long_coef divisor = load_normalized_(*y, divisor_exponent);
    if (number_is_zero(*y) || coef_is_zero(divisor)) raise(ERR_NUMBER_DIVISION_BY_ZERO);
    if (number_is_zero(*x)) return;

    const bool negative = number_is_negative(*x) != number_is_negative(*y);
    int exponent = 0;
    const long_coef dividend = load_normalized_(*x, exponent);
    exponent -= divisor_exponent;
    bool rest_beyond = false;
    long_coef coef =
        quotient_coef_(divide_limbs_(to_limbs(dividend), to_limbs(divisor)), exponent, rest_beyond);
    if (coef_is_zero(coef)) return store_zero(*x);
    if (exponent > NUMBER_EXPONENT_MAX) raise(ERR_NUMBER_OVERFLOW);
    if (exponent < NUMBER_EXPONENT_MIN) raise(ERR_NUMBER_UNDERFLOW);
    round_to_precision(coef, exponent, negative, rest_beyond);
    store_coef(*x, negative, exponent, coef);
}
