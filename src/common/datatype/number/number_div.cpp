// Division.
//
// Both coefficients are read as 48-digit integers X and Y (fractions 0.d1 d2 ... times 10^48). The quotient
// is floor(X / Y x 10^48) where X < Y, and floor(X / Y x 10^46) with an exponent larger by one where not:
// three limbs of base 10^16 in either case, by long division with one limb to a step; and in the second case
// whether the next two digits are 0. Operands of one limb each need one machine division to a step; longer
// ones are held in binary, where a step estimates its limb from the top 64 bits and corrects it by
// subtraction. What remains after that is not looked at.

#include "number_limb.h"
#include "number_result.h"

using namespace dv::impl;

namespace {

// X is fraction x 100^exponent; its first digit is not 0, as in every canonical record.
struct operand_t {
    limbs_t fraction;
    int exponent;
};

[[gnu::noinline, gnu::cold]] operand_t normalized_(const number_t &x, const number_head_t &head) {
    long_coef coef = load_coef<3>(x, head);
    const int leading_zeros = coef_is_zero(coef) ? 0 : coef_normalize(coef);
    return {to_limbs(coef), head.exponent - leading_zeros};
}

inline operand_t read_operand_(const number_t &x, const number_head_t &head) {
    const record_limbs_t limbs = load_limbs(x, head);
    if (limbs.first < LIMB_BASE / 100) [[unlikely]]
        return normalized_(x, head);
    return {{{limbs.first, limbs.second, limbs.last * 100'000'000}}, head.exponent};
}

// What a quotient is multiplied by so that its first limb has sixteen digits, by X < Y: a table, since no
// branch predicts which it is.
constexpr uint64_t _first_factors[] = {LIMB_BASE / 100, LIMB_BASE};

// Looks the mode up first: in the usual one nothing behind the limbs matters.
bool asks_for_rest_() { return current_rmode() != NUMBER_RMODE_HALF_UP; }

// x / y in three limbs, y not 0, neither is above 2.6 * 10^16 (bytes that are no digits).
void divide_one_limb_(uint64_t x, uint64_t y, result_t &result) {
    const bool is_below_one = x < y;
    uint64_t rest = x;
    uint64_t factor = _first_factors[int{is_below_one}];
    for (uint64_t &limb : result.limbs.limb) {
        const uint128_t value = uint128_t{rest} * factor;  // below y * 2^64
        const quotient_t step =
            divide_128_by_64(static_cast<uint64_t>(value >> 64), static_cast<uint64_t>(value), y);
        limb = step.quotient;
        rest = step.remainder;
        factor = LIMB_BASE;
    }
    result.exponent += int{!is_below_one};
    result.rest_beyond = asks_for_rest_() && !is_below_one && uint128_t{rest} * 100 >= y;
}

// A binary integer, below 2^192: operands, below 2^162, and what remains of them.
struct wide_t {
    uint128_t low;
    uint64_t high;
};

constexpr uint64_t low_word_(uint128_t x) { return static_cast<uint64_t>(x); }
constexpr uint64_t high_word_(uint128_t x) { return static_cast<uint64_t>(x >> 64); }
constexpr uint128_t join_words_(uint64_t high, uint64_t low) { return uint128_t{high} << 64 | low; }

// x * factor, whose top word is above the others.
struct product_t {
    wide_t value;
    uint64_t top;
};
constexpr product_t multiply_(const wide_t &x, uint64_t factor) {
    const uint128_t first = uint128_t{low_word_(x.low)} * factor;
    const uint128_t second = uint128_t{high_word_(x.low)} * factor + high_word_(first);
    const uint128_t third = uint128_t{x.high} * factor + high_word_(second);
    return {{join_words_(low_word_(second), low_word_(first)), low_word_(third)}, high_word_(third)};
}

constexpr wide_t to_binary_(const limbs_t &x) {
    const uint128_t top = uint128_t{x.limb[0]} * LIMB_BASE + x.limb[1];  // below 2^109
    const uint128_t low = uint128_t{low_word_(top)} * LIMB_BASE + x.limb[2];
    const uint128_t high = uint128_t{high_word_(top)} * LIMB_BASE + high_word_(low);
    return {join_words_(low_word_(high), low_word_(low)), high_word_(high)};
}

constexpr bool is_below_(const wide_t &x, const wide_t &y) {
    return x.high != y.high ? x.high < y.high : x.low < y.low;
}

// Modulo 2^192.
constexpr wide_t subtract_(const wide_t &x, const wide_t &y) {
    return {x.low - y.low, x.high - y.high - (x.low < y.low ? 1 : 0)};
}

// Y: 10^46 <= value < 2^162.
struct divisor_t {
    wide_t value;
    int shift;           // [26, 35]; bits from 64 + shift on make 63 bits of the divisor:
    uint64_t estimator;  // those and one unit, so that estimates are never too large
};

divisor_t make_divisor_(const wide_t &y) {
    const int shift = 128 - std::countl_zero(y.high) - 63;
    return {y, shift, (high_word_(y.low) >> shift | y.high << (64 - shift)) + 1};
}

// One limb of the quotient: floor(value / divisor), below 2^55; rest is what remains. The estimate is short
// by less than 1 + 2^55 / 2^62.
uint64_t divide_step_(const product_t &value, const divisor_t &divisor, wide_t &rest) {
    const uint64_t middle = high_word_(value.value.low);
    const uint64_t low = middle >> divisor.shift | value.value.high << (64 - divisor.shift);
    const uint64_t high = value.value.high >> divisor.shift | value.top << (64 - divisor.shift);
    uint64_t quotient = divide_128_by_64(high, low, divisor.estimator).quotient;
    rest = subtract_(value.value, multiply_(divisor.value, quotient).value);
    while (!is_below_(rest, divisor.value)) {
        rest = subtract_(rest, divisor.value);
        ++quotient;
    }
    return quotient;
}

void divide_limbs_(const limbs_t &x, const limbs_t &y, result_t &result) {
    wide_t rest = to_binary_(x);
    const divisor_t divisor = make_divisor_(to_binary_(y));
    const bool is_below_one = is_below_(rest, divisor.value);
    uint64_t factor = _first_factors[int{is_below_one}];
    for (uint64_t &limb : result.limbs.limb) {
        limb = divide_step_(multiply_(rest, factor), divisor, rest);
        factor = LIMB_BASE;
    }
    result.exponent += int{!is_below_one};
    result.rest_beyond =
        asks_for_rest_() && !is_below_one && !is_below_(multiply_(rest, 100).value, divisor.value);
}

}  // namespace

extern "C" void number_div(number_t *x, const number_t *y) {
    if (!DV_ASSERT(number_is_valid_ptr(x) && number_is_valid_ptr(y)) && !given(x, y)) return;
    const number_head_t y_head = read_head(*y);
    const operand_t divisor = read_operand_(*y, y_head);
    if (number_is_zero(*y) || divisor.fraction.limb[0] == 0) raise(DV_ERR_NUMBER_DIVISION_BY_ZERO);
    if (number_is_zero(*x)) return;

    const number_head_t x_head = read_head(*x);
    const operand_t dividend = read_operand_(*x, x_head);
    const auto &x_limb = dividend.fraction.limb;
    const auto &y_limb = divisor.fraction.limb;
    if (x_limb[0] == 0) return store_zero(*x);
    result_t result = {x_head.sign ^ y_head.sign, dividend.exponent - divisor.exponent, {}, false};
    if ((x_limb[1] | x_limb[2] | y_limb[1] | y_limb[2]) == 0) {
        divide_one_limb_(x_limb[0], y_limb[0], result);
    } else {
        divide_limbs_(dividend.fraction, divisor.fraction, result);
    }
    if (result.exponent < NUMBER_EXPONENT_MIN || result.exponent > NUMBER_EXPONENT_MAX)
        raise(result.exponent > 0 ? DV_ERR_NUMBER_OVERFLOW : DV_ERR_NUMBER_UNDERFLOW);
    store_result(*x, result);
}
