// Multiplication.
//
// Coefficients are fractions 0.d1 d2 ...; as left-aligned limbs of base 10^16 their product is a fraction
// again, of at most 48 digits in six limbs, whose first base-100 digit may be 0 (0.01 x 0.01 = 0.0001). The
// first three limbs become the digits of the result; whether anything is left in the others is all that the
// rounding asks of them. Operands of up to four digits, and of up to eight, have shorter roads: one product.

#include <algorithm>

#include "number_limb.h"
#include "number_round.h"

using namespace dv::impl;

namespace {

struct product_t {
    long_coef coef;
    bool rest_beyond;  // a digit behind the coefficient is not 0
};

// Column by column, from the least significant: the sum of a column is below 3 * 10^32 + 3 * 10^16 < 2^109.
product_t multiply_limbs_(const limbs_t &x, const limbs_t &y) {
    const auto &a = x.limb;
    const auto &b = y.limb;
    const limb_quotient_t e = divide_by_limb_base(uint128_t{a[2]} * b[2]);
    const limb_quotient_t d =
        divide_by_limb_base(uint128_t{a[2]} * b[1] + uint128_t{a[1]} * b[2] + e.quotient);
    const limb_quotient_t c = divide_by_limb_base(uint128_t{a[2]} * b[0] + uint128_t{a[1]} * b[1] +
                                                  uint128_t{a[0]} * b[2] + d.quotient);
    const limb_quotient_t s =
        divide_by_limb_base(uint128_t{a[1]} * b[0] + uint128_t{a[0]} * b[1] + c.quotient);
    const limb_quotient_t f = divide_by_limb_base(uint128_t{a[0]} * b[0] + s.quotient);
    return {{{digits_from_limb(f.quotient), digits_from_limb(f.remainder), digits_from_limb(s.remainder)}},
            (c.remainder | d.remainder | e.remainder) != 0};
}

// Drops leading zero digits, checks the range, rounds and stores a product 0.d1 d2 ... x 100^exponent.
template <int Words>
void store_product_(number_t &x, bool negative, int exponent, coef_t<Words> coef, bool rest_beyond) {
    if (coef_is_zero(coef)) return store_zero(x);
    exponent -= coef_normalize(coef);
    if (exponent > NUMBER_EXPONENT_MAX)
        raise(error_at(ERR_NUMBER_OVERFLOW, __FILE__, __LINE__, "number_mul"));
    if (exponent < NUMBER_EXPONENT_MIN)
        raise(error_at(ERR_NUMBER_UNDERFLOW, __FILE__, __LINE__, "number_mul"));
    if constexpr (Words == 3) {
        if (may_exceed_precision(coef, rest_beyond))
            round_to_precision(coef, exponent, negative, rest_beyond);
    }
    store_coef(x, negative, exponent, coef);
}

}  // namespace

extern "C" void number_mul(number_t *x, const number_t *y) {
    DV_ASSERT(number_is_valid_ptr(x) && number_is_valid_ptr(y));
    if (number_is_zero(*x)) return;
    if (number_is_zero(*y)) return store_zero(*x);

    const bool negative = number_is_negative(*x) != number_is_negative(*y);
    const int exponent = number_exponent(*x) + number_exponent(*y);
    const int digits = std::max(number_digit_count(*x), number_digit_count(*y));
    if (digits <= COEF_WORD_DIGITS / 2) {
        const uint64_t product = (limb_from_digits(load_coef<1>(*x).word[0] >> 32)) *
                                 (limb_from_digits(load_coef<1>(*y).word[0] >> 32));
        return store_product_(*x, negative, exponent, short_coef{{digits_from_limb(product)}},
                              /*rest_beyond=*/false);
    }
    if (digits <= COEF_WORD_DIGITS) {
        const limb_quotient_t product =
            divide_by_limb_base(uint128_t{limb_from_digits(load_coef<1>(*x).word[0])} *
                                limb_from_digits(load_coef<1>(*y).word[0]));
        const long_coef coef = {{digits_from_limb(product.quotient), digits_from_limb(product.remainder), 0}};
        return store_product_(*x, negative, exponent, coef, /*rest_beyond=*/false);
    }
    const product_t product = multiply_limbs_(to_limbs(load_coef<3>(*x)), to_limbs(load_coef<3>(*y)));
    store_product_(*x, negative, exponent, product.coef, product.rest_beyond);
}

extern "C" void number_sqr(number_t *x) { number_mul(x, x); }
