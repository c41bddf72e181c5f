// Multiplication.
//
// Coefficients are fractions 0.d1 d2 ...; as left-aligned limbs of base 10^16 their product is a fraction
// again, of at most 48 digits in six limbs, whose first base-100 digit may be 0 (0.01 x 0.01 = 0.0001). The
// first three limbs become the digits of the result; whether anything is left in the others is all that the
// rounding asks of them. Operands of up to four digits have a shorter road: one product of integers
// (number_short.h).

#include "number_result.h"
#include "number_short.h"

using namespace dv::impl;

namespace {

// Column by column, from the least significant: the sum of a column is below 3 * 10^32 + 3 * 10^16 < 2^109.
// The last limbs are below 10^8 and count as so many 10^8s, so their product is a column's carry as it is.
void multiply_limbs_(const record_limbs_t &a, const record_limbs_t &b, result_t &result) {
    constexpr uint64_t shift = 100'000'000;
    const uint64_t a_third = a.last * shift;
    const uint64_t b_third = b.last * shift;
    const limb_quotient_t e =
        divide_by_limb_base(uint128_t{a_third} * b.second + uint128_t{a.second} * b_third + a.last * b.last);
    const limb_quotient_t d =
        divide_by_limb_base(uint128_t{a_third} * b.first + uint128_t{a.second} * b.second +
                            uint128_t{a.first} * b_third + e.quotient);
    const limb_quotient_t c =
        divide_by_limb_base(uint128_t{a.second} * b.first + uint128_t{a.first} * b.second + d.quotient);
    const limb_quotient_t f = divide_by_limb_base(uint128_t{a.first} * b.first + c.quotient);
    result.limbs = {{f.quotient, f.remainder, c.remainder}};
    result.rest_beyond = (d.remainder | e.remainder) != 0;
}

constexpr uint64_t _upper_limbs_uncertainty = 8;

// What a product keeps, and less than 8 units of the third limb too little: the fourth column is estimated
// from its own terms, 3 * 10^32 at most, and the fifth, whose carry is below 2 * 10^16, is left out.
limbs_t multiply_upper_limbs_(const record_limbs_t &a, const record_limbs_t &b) {
    constexpr uint64_t shift = 100'000'000;
    const uint128_t fourth = uint128_t{a.last * shift} * b.first + uint128_t{a.second} * b.second +
                             uint128_t{a.first} * (b.last * shift);
    const limb_quotient_t third = divide_by_limb_base(
        uint128_t{a.second} * b.first + uint128_t{a.first} * b.second + estimate_limb_quotient(fourth));
    // Apart from the third column's quotient, which is added last, so that the divisions overlap.
    const limb_quotient_t first = divide_by_limb_base(uint128_t{a.first} * b.first);
    const uint64_t second = first.remainder + third.quotient;  // below 3 * 10^16
    const uint64_t carry = uint64_t{second >= LIMB_BASE} + uint64_t{second >= 2 * LIMB_BASE};
    return {{first.quotient + carry, second - carry * LIMB_BASE, third.remainder}};
}

// The range of a product is checked before it is rounded; it has one leading zero digit or none.
void check_product_range_(const result_t &product) {
    const int exponent = product.exponent - (product.limbs.limb[0] < LIMB_BASE / 100 ? 1 : 0);
    if (exponent < NUMBER_EXPONENT_MIN || exponent > NUMBER_EXPONENT_MAX) raise_product_range(exponent);
}

[[gnu::noinline]] void multiply_long_(number_t &x, const number_t &y) {
    const number_head_t x_head = read_head(x);
    const number_head_t y_head = read_head(y);
    const record_limbs_t a = load_limbs(x, x_head);
    const record_limbs_t b = load_limbs(y, y_head);
    result_t product = {x_head.sign ^ y_head.sign, x_head.exponent + y_head.exponent,
                        multiply_upper_limbs_(a, b), false};
    if (is_product_in_range(product.exponent) && store_result_half_up(x, product, _upper_limbs_uncertainty))
        [[likely]]
        return;
    multiply_limbs_(a, b, product);
    check_product_range_(product);
    store_result(x, product);
}

// Zeros, and what is no valid record. Apart, so that the way of others has no registers to save.
[[gnu::cold, gnu::noinline]] void multiply_without_digits_(number_t *x, const number_t *y) {
    if (!DV_ASSERT(number_is_valid_ptr(x) && number_is_valid_ptr(y)) && !given(x, y)) return;
    if (number_is_zero(*x)) return;
    if (number_is_zero(*y)) return store_zero(*x);
    multiply_long_(*x, *y);
}

}  // namespace

void dv::impl::raise_product_range(int exponent) {
    const int code = exponent > NUMBER_EXPONENT_MAX ? DV_ERR_NUMBER_OVERFLOW : DV_ERR_NUMBER_UNDERFLOW;
    raise(error_at(code, __FILE__, __LINE__, "number_mul"));
}

extern "C" void number_mul(number_t *x, const number_t *y) {
    if (!given(x, y)) return multiply_without_digits_(x, y);
    if (multiply_short(*x, *x, *y)) return;
    if (!number_has_digits(*x) || !number_has_digits(*y)) return multiply_without_digits_(x, y);
    multiply_long_(*x, *y);
}

extern "C" void number_sqr(number_t *x) { number_mul(x, x); }
