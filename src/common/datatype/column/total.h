// Exact sums into totals: what the functions for one total and those for columns share.

#ifndef DV_COLUMN_TOTAL_H
#define DV_COLUMN_TOTAL_H

#include "exact_integer.h"

namespace dv::impl {

// A record as an integer times a power of 100. Any bytes give one: digits are the bytes less their excess,
// and a record has as many as its size byte tells, but no more than twenty.
exact_t exact_of(const number_t &x);

// The sum of a total, trimmed.
exact_t exact_of(const number_total_t &total);

// x = a trimmed integer, rounded half up to 38 digits. Raises where that is beyond NUMBER.
void round_to_number(const exact_t &from, number_t &x);

// total += x, where that many terms come in with it; x changes. Returns 0, or, with the total as it was, the
// bytes of memory that it needs. Raises when it is beyond what any total holds.
int64_t add_to_total(number_total_t &total, exact_t &x, int64_t terms);

// By digit count, at most eight: what digit bytes make more than the digits themselves, as the last ones of a
// word and as its first ones.
inline constexpr auto DIGIT_EXCESS_SUMS = [] {
    std::array<int64_t, COEF_WORD_DIGITS + 1> sums{};
    for (size_t i = 1; i < sums.size(); ++i) sums[i] = sums[i - 1] * 100 + NUMBER_DIGIT_EXCESS;
    return sums;
}();
inline constexpr auto LEFT_EXCESS_SUMS = [] {
    auto sums = DIGIT_EXCESS_SUMS;
    for (size_t i = 0; i < sums.size(); ++i) {
        for (size_t j = i; j < COEF_WORD_DIGITS; ++j) sums[i] *= 100;
    }
    return sums;
}();

// The last eight of `count` (0..20) digits, or all of less.
inline int64_t last_digits(const uint8_t *coef, int count) {
    if (count >= COEF_WORD_DIGITS) {
        return static_cast<int64_t>(limb_from_digits(load_be64(coef + count - COEF_WORD_DIGITS))) -
               DIGIT_EXCESS_SUMS[COEF_WORD_DIGITS];
    }
    if (count <= 0) return 0;
    const uint64_t digits = load_be64(coef) >> 8 * (COEF_WORD_DIGITS - count);
    return static_cast<int64_t>(limb_from_digits(digits)) - DIGIT_EXCESS_SUMS[static_cast<size_t>(count)];
}

// Moves the digits of a total without memory to a lower weight; false: it is too far, or they do not fit
// there.
inline bool lower_weight_in_place(number_total_t &total, int weight) {
    const int steps = total.weight - weight;
    if (steps >= POWERS_OF_100_COUNT) return false;
    const uint64_t factor = POWERS_OF_100[static_cast<size_t>(steps)];
    const uint64_t taken_for_sign = extension_of(total.limbs.own[DV_TOTAL_LIMBS - 1]) & factor;
    uint64_t limb[DV_TOTAL_LIMBS], carry = 0;
    for (int i = 0; i < DV_TOTAL_LIMBS; ++i) {
        const uint128_t product = uint128_t{total.limbs.own[i]} * factor + carry;
        limb[i] = static_cast<uint64_t>(product);
        carry = static_cast<uint64_t>(product >> 64);
    }
    if (carry - taken_for_sign != extension_of(limb[DV_TOTAL_LIMBS - 1])) return false;
    memcpy(total.limbs.own, limb, sizeof limb);
    total.weight = static_cast<int16_t>(weight);
    return true;
}

// An integer of 192 bits in two's complement.
struct term_t {
    uint64_t low, middle, high;
};

// Times a factor below 2^63.
inline term_t scaled(int128_t value, uint64_t factor) {
    const uint128_t low = uint128_t{static_cast<uint64_t>(value)} * factor;
    const int128_t high = (value >> 64) * static_cast<int64_t>(factor) + static_cast<int64_t>(low >> 64);
    return {static_cast<uint64_t>(low), static_cast<uint64_t>(high), static_cast<uint64_t>(high >> 64)};
}

// The digits of a record of up to sixteen, times a factor below 2^63.
inline term_t scaled_digits(const number_t &x, int count, uint64_t factor) {
    const int64_t last = last_digits(x.coef, count);
    if (count <= COEF_WORD_DIGITS) {
        const int128_t value = int128_t{last} * static_cast<int64_t>(factor);
        const auto middle = static_cast<uint64_t>(value >> 64);
        return {static_cast<uint64_t>(value), middle, extension_of(middle)};
    }
    return scaled(last + int128_t{last_digits(x.coef, count - COEF_WORD_DIGITS)} * int64_t{LIMB_BASE},
                  factor);
}

// Moves a total without memory to where a term of that weight can be added, after a multiplication by a power
// of 100 that the table has. False: it has memory, or it would not do.
inline bool make_room_in_place(number_total_t &total, int weight) {
    constexpr int weight_max = (EXACT_BITS_MAX - 64 * DV_TOTAL_LIMBS) * 10 / 67 + EXACT_WEIGHT_MIN;
    if (weight - total.weight >= POWERS_OF_100_COUNT || total.attached_room != 0 || total.weight > weight_max)
        return false;
    return weight >= total.weight || lower_weight_in_place(total, weight);
}

// total += term, or -= it, of the total's weight. False: the total is as it was.
inline bool add_term_in_place(number_total_t &total, const term_t &term, bool subtracts) {
    int64_t terms;
    if (__builtin_add_overflow(total.count, subtracts ? -1 : 1, &terms)) return false;
    const uint64_t flip = subtracts ? ~uint64_t{0} : 0;  // -x is ~x + 1
    const uint64_t extension = extension_of(term.high) ^ flip;
    const uint64_t last = total.limbs.own[DV_TOTAL_LIMBS - 1];
    uint64_t *const limb = total.limbs.own;
    uint64_t first, second, third, fourth;  // not an array, which would be copied through memory
    uint64_t carry = add_words(limb[0], term.low ^ flip, flip & 1, first);
    carry = add_words(limb[1], term.middle ^ flip, carry, second);
    carry = add_words(limb[2], term.high ^ flip, carry, third);
    add_words(last, extension, carry, fourth);
    if (extension_of((fourth ^ last) & (fourth ^ extension)) != 0) return false;
    limb[0] = first;
    limb[1] = second;
    limb[2] = third;
    limb[3] = fourth;
    total.count = terms;
    return true;
}

inline uint64_t factor_to(const number_total_t &total, int weight) {
    return POWERS_OF_100[static_cast<size_t>(weight - total.weight)];
}

// The usual case of add_to_total: a record of up to sixteen digits and a total without memory. False: the
// total has the value that it had.
inline bool add_in_place(number_total_t &total, const number_t &x, bool subtracts) {
    const int count = number_digit_count(x);
    const int weight = count == 0 ? total.weight : number_exponent(x) - count;
    if (count > 2 * COEF_WORD_DIGITS || !make_room_in_place(total, weight)) return false;
    return add_term_in_place(total, scaled_digits(x, count, factor_to(total, weight)), subtracts);
}

// The same of x * y, each of up to eight digits.
inline bool add_product_in_place(number_total_t &total, const number_t &x, const number_t &y,
                                 bool subtracts) {
    const int x_count = number_digit_count(x), y_count = number_digit_count(y);
    if (x_count > COEF_WORD_DIGITS || y_count > COEF_WORD_DIGITS) return false;
    const bool is_zero = x_count == 0 || y_count == 0;
    const int weight = is_zero ? total.weight : number_exponent(x) - x_count + number_exponent(y) - y_count;
    if (!make_room_in_place(total, weight)) return false;
    const int128_t product = int128_t{last_digits(x.coef, x_count)} * last_digits(y.coef, y_count);
    return add_term_in_place(total, scaled(product, factor_to(total, weight)), subtracts);
}

// total += x, total -= x: as add_to_total.
[[gnu::noinline]] int64_t add_any_record(number_total_t &total, const number_t &x, bool subtracts);
inline int64_t add_record(number_total_t &total, const number_t &x, bool subtracts) {
    if (add_in_place(total, x, subtracts)) [[likely]]
        return 0;
    return add_any_record(total, x, subtracts);
}

}  // namespace dv::impl

#endif  // DV_COLUMN_TOTAL_H
