// Products into totals; variance and standard deviation of exact sums.
//
// The numerator n * squares - sum^2 is an integer, so that nothing cancels. It is scaled until the quotient
// has twice the digits of a NUMBER, whose integer part, and the integer part of whose square root, are then
// rounded: half up looks at one digit behind the last, and no digit of these is rounded before.

#include "../error.h"
#include "../number/number_internal.h"
#include "total.h"

using namespace dv::impl;

namespace {

constexpr uint64_t _step = POWERS_OF_100[POWERS_OF_100_COUNT - 1];
constexpr int _step_digits = POWERS_OF_100_COUNT - 1;

int64_t add_product_(number_total_t &total, const number_t &x, const number_t &y, bool subtracts) {
    if (x.size == 0 || y.size == 0 || add_product_in_place(total, x, y, subtracts)) return 0;
    exact_t product = product_of(exact_of(x), exact_of(y));
    if (subtracts) negate(product);
    return add_to_total(total, product, subtracts ? -1 : 1);
}

// ---------------------------------------------------------------------------------------------------------
// Variance
// ---------------------------------------------------------------------------------------------------------

// What 2^63 NUMBERs come to on their grid, or some more bits: its square, and n times the sum of squares,
// have no more limbs than an integer can have.
constexpr int _weight_min = NUMBER_EXPONENT_MIN - NUMBER_DIGITS_MAX;
constexpr int _sum_bits_max = 63 + (NUMBER_EXPONENT_MAX - _weight_min) * 6644 / 1000 + 3;
static_assert(2 * _sum_bits_max < 64 * (EXACT_LIMBS_MAX - 1));
static_assert(EXACT_BITS_MAX + 64 < 64 * (EXACT_LIMBS_MAX - 1));

bool is_of_numbers_(const exact_t &sum) {
    return sum.weight >= _weight_min &&
           bits_of(sum) + (sum.weight - _weight_min) * 6644 / 1000 <= _sum_bits_max;
}

// n * squares - sum^2; below 0 where there are no such terms.
exact_t numerator_(const number_total_t &sum, const number_total_t &squares) {
    const exact_t none = exact_of(int128_t{-1}, 0);
    exact_t s = exact_of(sum), numerator = exact_of(squares);
    raise_weight(s);
    raise_weight(numerator);
    if (sum.count != squares.count || sum.count < 0 || !is_of_numbers_(s)) return none;
    multiply(numerator, static_cast<uint64_t>(sum.count));
    exact_t square = product_of(s, s);
    negate(square);
    add(numerator, square);
    trim(numerator);
    return numerator;
}

// The integer part of numerator / (n * (n - is_sample)) in units so small that it has 96 digits or more.
exact_t quotient_of_(exact_t numerator, int64_t n, bool is_sample) {
    constexpr int enough_limbs = 8;  // 2^(7 * 64 - 2 * 63) is above 10^96
    while (numerator.size < enough_limbs) {
        multiply(numerator, _step);
        numerator.weight -= _step_digits;
    }
    divide(numerator, static_cast<uint64_t>(n));
    divide(numerator, static_cast<uint64_t>(is_sample ? n - 1 : n));
    return numerator;
}

// ---------------------------------------------------------------------------------------------------------
// Square root
// ---------------------------------------------------------------------------------------------------------

double approximately_(const exact_t &x) {
    double value = static_cast<double>(static_cast<int64_t>(x.limb[x.size - 1]));
    for (int i = x.size - 2; i >= 0; --i) value = value * 0x1p64 + static_cast<double>(x.limb[i]);
    return value;
}

// square - root^2
exact_t rest_of_(const exact_t &square, const exact_t &root) {
    exact_t rest = square, taken = product_of(root, root);
    negate(taken);
    add_limbs(rest, taken.limb, taken.size);
    trim(rest);
    return rest;
}

void add_integer_(exact_t &x, int64_t integer) {
    const exact_t term = exact_of(int128_t{integer}, 0);
    add_limbs(x, term.limb, term.size);
    trim(x);
}

// The integer part of the root of an integer of 79 to 98 digits, of weight 0: that of the nearest NUMBER, and
// what its 38 digits are short of, which is below 10^12.
exact_t root_of_integer_(const exact_t &square) {
    number_t estimate;
    round_to_number(square, estimate);
    number_sqrt(&estimate);
    exact_t root = exact_of(estimate);
    lower_weight(root, 0);
    trim(root);
    add_integer_(root,
                 static_cast<int64_t>(approximately_(rest_of_(square, root)) / (2 * approximately_(root))));
    while (is_negative(rest_of_(square, root))) add_integer_(root, -1);
    for (;;) {
        exact_t next = root;
        add_integer_(next, 1);
        if (is_negative(rest_of_(square, next))) return root;
        root = next;
    }
}

// The digits of the root of a number of 96 digits or more, cut behind the 40th or a later one.
exact_t root_of_(exact_t square) {
    constexpr int enough_limbs =
        5;  // 2^(5 * 64 - 1) / 100^9 is above 10^78, 100 * 2^(5 * 64 - 1) below 10^99
    while (square.size > enough_limbs) {
        divide(square, _step);
        square.weight += _step_digits;
    }
    if (square.weight % 2 != 0) {
        multiply(square, 100);
        --square.weight;
    }
    const int weight = square.weight / 2;
    square.weight = 0;
    exact_t root = root_of_integer_(square);
    root.weight = weight;
    return root;
}

}  // namespace

extern "C" int64_t number_total_add_product(number_total_t *total, const number_t *x, const number_t *y) {
    if (!DV_ASSERT(total != NULL)) return 0;
    if (!DV_ASSERT(number_is_valid_ptr(x)) && !given(x)) return 0;
    if (!DV_ASSERT(number_is_valid_ptr(y)) && !given(y)) return 0;
    return add_product_(*total, *x, *y, /*subtracts=*/false);
}

extern "C" int64_t number_total_sub_product(number_total_t *total, const number_t *x, const number_t *y) {
    if (!DV_ASSERT(total != NULL)) return 0;
    if (!DV_ASSERT(number_is_valid_ptr(x)) && !given(x)) return 0;
    if (!DV_ASSERT(number_is_valid_ptr(y)) && !given(y)) return 0;
    return add_product_(*total, *x, *y, /*subtracts=*/true);
}

extern "C" uint8_t number_total_has_squares(const number_total_t *sum, const number_total_t *squares) {
    if (!DV_ASSERT(sum != NULL) || !DV_ASSERT(squares != NULL)) return 0;
    return is_negative(numerator_(*sum, *squares)) ? 0 : 1;
}

extern "C" void number_total_variance(const number_total_t *sum, const number_total_t *squares,
                                      uint8_t is_sample, number_t *x) {
    if (!DV_ASSERT(sum != NULL) || !DV_ASSERT(squares != NULL) || !DV_ASSERT(number_is_nonnull_ptr(x)))
        return;
    const exact_t numerator = numerator_(*sum, *squares);
    if (is_negative(numerator)) raise(DV_ERR_TOTAL_BYTES);
    if (sum->count <= (is_sample != 0 ? 1 : 0)) return number_assign(x, _number_null);
    if (is_zero(numerator)) return store_zero(*x);
    round_to_number(quotient_of_(numerator, sum->count, is_sample != 0), *x);
}

extern "C" void number_total_deviation(const number_total_t *sum, const number_total_t *squares,
                                       uint8_t is_sample, number_t *x) {
    if (!DV_ASSERT(sum != NULL) || !DV_ASSERT(squares != NULL) || !DV_ASSERT(number_is_nonnull_ptr(x)))
        return;
    const exact_t numerator = numerator_(*sum, *squares);
    if (is_negative(numerator)) raise(DV_ERR_TOTAL_BYTES);
    if (sum->count <= (is_sample != 0 ? 1 : 0)) return number_assign(x, _number_null);
    if (is_zero(numerator)) return store_zero(*x);
    round_to_number(root_of_(quotient_of_(numerator, sum->count, is_sample != 0)), *x);
}
