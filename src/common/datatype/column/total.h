// Exact sums into totals: what the functions for one total and those for columns share.

#ifndef DV_COLUMN_TOTAL_H
#define DV_COLUMN_TOTAL_H

#include "exact_integer.h"

namespace dv::impl {

// A record as an integer times a power of 100. Any bytes give one: digits are the bytes less their excess,
// and a record has as many as its size byte tells, but no more than twenty.
exact_t exact_of(const number_t &x);

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

// The usual case of add_to_total: a record of up to sixteen digits and a total without memory, whose weight
// is not above that of the last digit. False: nothing is done.
inline bool add_in_place(number_total_t &total, const number_t &x, bool subtracts) {
    constexpr int digits_max = 2 * COEF_WORD_DIGITS;
    constexpr int weight_max = (EXACT_BITS_MAX - 64 * DV_TOTAL_LIMBS) * 10 / 67 + EXACT_WEIGHT_MIN;
    const int count = number_digit_count(x);
    const int shift = count == 0 ? 0 : number_exponent(x) - count - total.weight;
    int64_t terms;
    if (count > digits_max || shift < 0 || shift >= POWERS_OF_100_COUNT || total.attached_room != 0 ||
        total.weight > weight_max || __builtin_add_overflow(total.count, subtracts ? -1 : 1, &terms))
        return false;

    int128_t value = last_digits(x.coef, count);
    if (count > COEF_WORD_DIGITS)
        value += int128_t{last_digits(x.coef, count - COEF_WORD_DIGITS)} * int64_t{LIMB_BASE};
    if (subtracts) value = -value;
    const uint64_t factor = POWERS_OF_100[static_cast<size_t>(shift)];
    const uint128_t low = uint128_t{static_cast<uint64_t>(value)} * factor;
    const int128_t high = (value >> 64) * static_cast<int64_t>(factor) + static_cast<int64_t>(low >> 64);
    const uint64_t term[DV_TOTAL_LIMBS] = {static_cast<uint64_t>(low), static_cast<uint64_t>(high),
                                           static_cast<uint64_t>(high >> 64),
                                           extension_of(static_cast<uint64_t>(high >> 64))};

    uint64_t sum[DV_TOTAL_LIMBS], carry = 0;
    for (int i = 0; i < DV_TOTAL_LIMBS; ++i) carry = add_words(total.limbs.own[i], term[i], carry, sum[i]);
    const uint64_t last = total.limbs.own[DV_TOTAL_LIMBS - 1];
    if (extension_of((sum[DV_TOTAL_LIMBS - 1] ^ last) &
                     (sum[DV_TOTAL_LIMBS - 1] ^ term[DV_TOTAL_LIMBS - 1])) != 0)
        return false;
    memcpy(total.limbs.own, sum, sizeof sum);
    total.count = terms;
    return true;
}

// total += x, total -= x: as add_to_total.
inline int64_t add_record(number_total_t &total, const number_t &x, bool subtracts) {
    if (add_in_place(total, x, subtracts)) [[likely]]
        return 0;
    exact_t term = exact_of(x);
    if (subtracts) negate(term);
    return add_to_total(total, term, subtracts ? -1 : 1);
}

}  // namespace dv::impl

#endif  // DV_COLUMN_TOTAL_H
