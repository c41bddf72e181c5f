// Modulo and remainder: x - q * |y|, where q is x / |y| rounded to an integer.
//
// In general that is a division, a rounding, a multiplication and a subtraction, each with its own rounding
// to 38 digits. Operands that lie within one limb when aligned are integers below 10^16 of one unit, and
// there the four steps are exact: q has at most 16 digits in front of the point, and what is behind it is a
// multiple of 1 / |y| > 10^-16, so the division's rounding at the 38th digit neither reaches the integer nor
// makes or breaks a tie. So an integer division gives the same bytes.

#include <algorithm>

#include "number_limb.h"
#include "number_round.h"

using namespace dv::impl;

namespace {

void subtract_multiple_(number_t &x, const number_t &y, int rmode) {
    number_t divisor;
    number_copy(divisor, y);
    number_abs(&divisor);
    number_t multiple;
    number_copy(multiple, x);
    number_div(&multiple, &divisor);
    number_round_at(multiple, 0, rmode);
    number_mul(&multiple, &divisor);
    number_sub(&x, &multiple);
}

// The magnitude of a record as a multiple of 100^weight, where weight is not above its last digit's and all
// its digits lie within a limb above it.
uint64_t limb_above_(const number_t &x, const number_head_t &head, int weight) {
    return limb_from_digits(load_coef<1>(x, head).word[0] >>
                            (8 * (COEF_WORD_DIGITS + weight - head.exponent)));
}

// Weight of the last digit, as a power of 100.
int lowest_weight_(const number_head_t &head) { return head.exponent - head.count; }

// What the quotient drops, as a rounding sees it.
cut_digits_t dropped_part_(uint64_t quotient, uint64_t remainder, uint64_t divisor) {
    const uint64_t twice = 2 * remainder;  // below 2 * 10^16
    return {quotient % 2 != 0, twice >= divisor ? 5 : 0, remainder != 0 && twice != divisor};
}

// x - q * |y| in one limb; false: the operands do not fit into one, or a step may leave the range of NUMBER.
bool subtract_multiple_in_limb_(number_t &x, const number_t &y, int rmode) {
    const number_head_t x_head = read_head(x);
    const number_head_t y_head = read_head(y);
    const int weight = std::min(lowest_weight_(x_head), lowest_weight_(y_head));
    const int top = std::max(x_head.exponent, y_head.exponent);
    if (top - weight > COEF_WORD_DIGITS || x_head.count < 1 || y_head.count < 1) return false;
    if (weight < NUMBER_EXPONENT_MIN || top >= NUMBER_EXPONENT_MAX) return false;
    const uint64_t dividend = limb_above_(x, x_head, weight);
    const uint64_t divisor = limb_above_(y, y_head, weight);
    if (divisor == 0) return false;

    const uint64_t quotient = dividend / divisor;
    const uint64_t remainder = dividend % divisor;
    const bool negative = x_head.sign != 0;
    const bool away = rounds_away(rmode, negative, dropped_part_(quotient, remainder, divisor));
    store_limb(x, negative != away, away ? divisor - remainder : remainder, weight);
    return true;
}

}  // namespace

extern "C" void number_mod(number_t *x, const number_t *y) {
    if (!DV_ASSERT(number_is_valid_ptr(x) && number_is_valid_ptr(y)) && !given(x, y)) return;
    if (number_is_zero(*y) || subtract_multiple_in_limb_(*x, *y, NUMBER_RMODE_TRUNC)) return;
    subtract_multiple_(*x, *y, NUMBER_RMODE_TRUNC);
}

extern "C" void number_rem(number_t *x, const number_t *y) {
    if (!DV_ASSERT(number_is_valid_ptr(x) && number_is_valid_ptr(y)) && !given(x, y)) return;
    if (number_is_zero(*y)) raise(DV_ERR_NUMBER_DIVISION_BY_ZERO);
    if (subtract_multiple_in_limb_(*x, *y, current_rmode())) return;
    subtract_multiple_(*x, *y, current_rmode());
}
