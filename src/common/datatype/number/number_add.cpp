// Addition and subtraction on the digit bytes, negation, absolute value.
//
// The operand with the larger exponent leads; the other one's digits are moved right by the difference of the
// exponents, so that equal places stand under each other, and the words are added or subtracted as they are.
// Operands that together span at most seven base-100 digits take one word, which leaves room for a carry;
// all others three. Only the latter can exceed 38 digits.

#include <utility>

#include "number_round.h"

using namespace dv::impl;

namespace {

constexpr int _exponent_gap_max = 19;  // beyond it the operand with the smaller exponent is ignored

// The exponent after `places` leading zero digits were dropped.
int number_remove_head_zero(int exponent, int places) {
    if (exponent - places < NUMBER_EXPONENT_MIN) raise(ERR_NUMBER_UNDERFLOW);
    return exponent - places;
}

struct operand_t {
    const number_t *record;
    number_head_t head;
    uint64_t sign;  // in the operation: that of the record, or its opposite
};

// x = leading + other, by the signs in their heads; `gap` is the difference of their exponents, 0 or more.
template <int Words>
void combine_(number_t &x, const operand_t &leading, const operand_t &other, int gap) {
    coef_t<Words> a = load_coef<Words>(*leading.record, leading.head);
    coef_t<Words> b = load_coef<Words>(*other.record, other.head);
    coef_shift_right(b, gap);
    if constexpr (Words == 3) coef_keep(b, NUMBER_DIGITS_MAX);

    const uint64_t subtracts = leading.sign ^ other.sign;
    uint64_t sign = leading.sign;
    coef_complement_if(subtracts, b);
    uint64_t carry = coef_add(a, b, subtracts & 1);
    if (carry < (subtracts & 1)) {  // other was the larger one: a is its complement
        coef_complement_if(~uint64_t{0}, a);
        coef_add(a, coef_t<Words>{}, 1);
        sign = ~sign;
    }
    carry &= ~subtracts;
    coef_push_carry(a, carry);
    if constexpr (Words == 3) coef_keep(a, NUMBER_DIGITS_MAX);
    if (coef_is_zero(a)) return store_zero(x);

    int exponent = leading.head.exponent + static_cast<int>(carry);
    if (exponent > NUMBER_EXPONENT_MAX)
        raise(error_at(ERR_NUMBER_OVERFLOW, __FILE__, __LINE__, "number_add"));
    exponent = number_remove_head_zero(exponent, coef_normalize(a));
    if constexpr (Words == 3) {
        if (may_exceed_precision(a, /*rest_beyond=*/false)) {
            round_to_precision(a, exponent, /*negative=*/sign != 0, /*rest_beyond=*/false);
        }
    }
    store_coef(x, sign, exponent, a);
}

// x = x + y, where the sign of y is changed if `flip` is all ones.
void add_signed_(number_t &x, const number_t &y, uint64_t flip) {
    const number_head_t x_head = read_head(x);
    const number_head_t y_head = read_head(y);
    operand_t leading = {&x, x_head, x_head.sign};
    operand_t other = {&y, y_head, y_head.sign ^ flip};
    if (number_is_zero(y)) return;
    int gap = leading.head.exponent - other.head.exponent;
    if (number_is_zero(x)) gap = -_exponent_gap_max - 1;
    if (gap < 0) {
        std::swap(leading, other);
        gap = -gap;
    }
    if (gap > _exponent_gap_max) {
        return store_coef(x, leading.sign, leading.head.exponent,
                          load_coef<3>(*leading.record, leading.head));
    }
    if (other.head.count + gap < COEF_WORD_DIGITS && leading.head.count < COEF_WORD_DIGITS) {
        combine_<1>(x, leading, other, gap);
    } else {
        combine_<3>(x, leading, other, gap);
    }
}

}  // namespace

extern "C" void number_add(number_t *x, const number_t *y) {
    DV_ASSERT(number_is_valid_ptr(x) && number_is_valid_ptr(y));
    add_signed_(*x, *y, /*flip=*/0);
}

extern "C" void number_sub(number_t *x, const number_t *y) {
    DV_ASSERT(number_is_valid_ptr(x) && number_is_valid_ptr(y));
    add_signed_(*x, *y, /*flip=*/~uint64_t{0});
}

extern "C" void number_add_with_mode(number_t *x, const number_t *y, uchar is_add) {
    is_add != 0 ? number_add(x, y) : number_sub(x, y);
}

extern "C" void number_negate(number_t *x) {
    DV_ASSERT(number_is_valid_ptr(x));
    mirror_digits(*x);
}

extern "C" void number_abs(number_t *x) {
    DV_ASSERT(number_is_valid_ptr(x));
    if (number_is_negative(*x)) mirror_digits(*x);
}
