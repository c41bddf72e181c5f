// Addition and subtraction on the digit bytes, negation, absolute value.
//
// Digits are added as the bytes of binary integers. Where magnitudes are added, 256 - 100 is added to every
// byte first: then the machine's own carry goes wherever a decimal carry must, and bytes that did not carry
// are 156 and more. Where they are subtracted, bytes that borrowed are: they took 256 instead of 100. So in
// either case the bytes with the top bit set give 156 back. (Packed-decimal addition, which adds 6 to every
// digit first, in base 100.)
//
// Operands that together span at most seven digits are integers with a sign in one word (number_short.h). For
// all others the one with the larger exponent leads; the other's digits are moved right by the difference of
// the exponents, so that equal places stand under each other in three words. Only the latter can exceed 38
// digits.

#include "number_round.h"
#include "number_short.h"

using namespace dv::impl;

namespace {

constexpr int _exponent_gap_max = 19;  // beyond it the operand with the smaller exponent is ignored

// Drops the leading zero digits of a coefficient that is not zero; the exponent falls by one for each.
void number_remove_head_zero(long_coef &coef, int &exponent) {
    exponent -= coef_normalize(coef);
    if (exponent < NUMBER_EXPONENT_MIN) raise(DV_ERR_NUMBER_UNDERFLOW);
}

// a += b, or a -= b where `subtracts` is all ones. Returns the carry out of the first digit, or when
// subtracting 1 unless b was the larger one.
uint64_t add_or_subtract_(long_coef &a, const long_coef &b, uint64_t subtracts) {
    const uint64_t gaps = CARRY_GAPS & ~subtracts;
    uint64_t carry = subtracts & 1;
    for (int i = 2; i >= 0; --i) carry = add_words(a.word[i] + gaps, b.word[i] ^ subtracts, carry, a.word[i]);
    for (uint64_t &word : a.word) word = give_gaps_back(word);
    return carry;
}

// b - a, where a is what add_or_subtract_ made of a - b.
void turn_around_(long_coef &a) {
    coef_complement_if(~uint64_t{0}, a);
    coef_add(a, long_coef{}, 1);
}

struct operand_t {
    const number_t *record;
    number_head_t head;
    uint64_t sign;  // in the operation: that of the record, or its opposite
};

// x = leading + other; `gap` is the difference of their exponents, 0 or more. Signs are all ones for
// negative.
void combine_(number_t &x, const operand_t &leading, const operand_t &other, int gap) {
    long_coef a = load_coef<3>(*leading.record, leading.head);
    long_coef b = load_coef<3>(*other.record, other.head);
    coef_shift_right(b, gap);
    coef_keep(b, NUMBER_DIGITS_MAX);

    uint64_t sign = leading.sign;
    const uint64_t subtracts = sign ^ other.sign;
    const uint64_t carry = add_or_subtract_(a, b, subtracts);
    int exponent = leading.head.exponent;
    if (((carry ^ subtracts) & 1) != 0) [[unlikely]] {
        if (subtracts != 0) {
            turn_around_(a);
            sign = ~sign;
        } else {
            coef_push_carry(a, 1);
            coef_keep(a, NUMBER_DIGITS_MAX);
            if (++exponent > NUMBER_EXPONENT_MAX)
                raise(error_at(DV_ERR_NUMBER_OVERFLOW, __FILE__, __LINE__, "number_add"));
        }
    }
    if (a.word[0] >> 56 == 0) [[unlikely]] {
        if (coef_is_zero(a)) return store_zero(x);
        number_remove_head_zero(a, exponent);
    }
    round_to_precision(a, exponent, /*negative=*/sign != 0, /*rest_beyond=*/false);
    store_coef(x, sign, exponent, a);
}

// x = x + y, where the sign of y is changed if `flip` is all ones. Which operand leads is hard to predict, so
// it is selected, and its head read once more.
void add_long_(number_t &x, const number_t &y, uint64_t flip) {
    if (number_is_zero(y)) return;
    int gap = read_head(x).exponent - read_head(y).exponent;
    if (number_is_zero(x)) gap = -_exponent_gap_max - 1;
    const uint64_t y_leads = static_cast<uint64_t>(int64_t{gap} >> 63);  // a mask
    const number_t &leading = y_leads != 0 ? y : x;
    const number_t &other = y_leads != 0 ? x : y;
    gap = (gap ^ static_cast<int>(y_leads)) - static_cast<int>(y_leads);
    const number_head_t head = read_head(leading);
    const number_head_t other_head = read_head(other);
    const uint64_t sign = head.sign ^ (flip & y_leads);
    if (gap > _exponent_gap_max) [[unlikely]]
        return store_coef(x, sign, head.exponent, load_coef<3>(leading, head));
    combine_(x, {&leading, head, sign}, {&other, other_head, other_head.sign ^ (flip & ~y_leads)}, gap);
}

// Any operands. The assertion is here, so that the way of short ones has no registers to save.
[[gnu::noinline]] void add_any_(number_t *x, const number_t *y, uint64_t flip) {
    if (!DV_ASSERT(number_is_valid_ptr(x) && number_is_valid_ptr(y)) && !given(x, y)) return;
    add_long_(*x, *y, flip);
}

}  // namespace

extern "C" void number_add(number_t *x, const number_t *y) {
    // A record that is short is a valid one.
    if (x != nullptr && y != nullptr && add_short</*is_add=*/true>(*x, *x, *y)) return;
    add_any_(x, y, /*flip=*/0);
}

extern "C" void number_sub(number_t *x, const number_t *y) {
    if (x != nullptr && y != nullptr && add_short</*is_add=*/false>(*x, *x, *y)) return;
    add_any_(x, y, /*flip=*/~uint64_t{0});
}

extern "C" void number_add_with_mode(number_t *x, const number_t *y, uchar is_add) {
    is_add != 0 ? number_add(x, y) : number_sub(x, y);
}

namespace {

// Zero, a NULL value, and what is no record. Apart, so that the way of others has no registers to save.
[[gnu::cold, gnu::noinline]] void negate_without_digits_(number_t *x) {
    if (!DV_ASSERT(number_is_valid_ptr(x)) && !given(x)) return;
    mirror_digits(*x);
}

}  // namespace

extern "C" void number_negate(number_t *x) {
    if (!given(x) || !number_has_digits(*x)) return negate_without_digits_(x);
    mirror_digits(*x);
}

extern "C" void number_abs(number_t *x) {
    if (!DV_ASSERT(number_is_valid_ptr(x)) && !given(x)) return;
    if (number_is_negative(*x)) mirror_digits(*x);
}
