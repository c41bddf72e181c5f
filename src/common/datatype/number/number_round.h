// The one rounding decision of the library, and rounding of a coefficient at a decimal digit.

#ifndef DV_NUMBER_ROUND_H
#define DV_NUMBER_ROUND_H

#include "../error.h"
#include "number_coef.h"
#include "number_internal.h"

namespace dv::impl {

// What a cut leaves and what it takes away.
struct cut_digits_t {
    bool last_kept_is_odd;  // false when no digit is kept
    int first_dropped;      // 0..9
    bool rest;              // a digit behind the first dropped one is not 0
};

// Reports a rounding mode outside 0..6.
void report_unknown_rmode();

// Raises -5068 in the name of number_round_at_withmode.
[[noreturn]] void raise_rounding_overflow();

// Raises -5068 or -5069 in the name of number_mul: a product has an exponent outside the range.
[[noreturn]] void raise_product_range(int exponent);

// Does the magnitude of the kept part grow by one unit? Where nothing is dropped no mode is asked.
inline bool rounds_away(int rmode, bool negative, const cut_digits_t &cut) {
    const bool inexact = cut.first_dropped != 0 || cut.rest;
    switch (rmode) {
        case NUMBER_RMODE_HALF_UP:
            return cut.first_dropped >= 5;
        case NUMBER_RMODE_TRUNC:
            return false;
        case NUMBER_RMODE_UP:
            return inexact;
        case NUMBER_RMODE_HALF_DOWN:
            return cut.first_dropped > 5 || (cut.first_dropped == 5 && cut.rest);
        case NUMBER_RMODE_HALF_EVEN:
            return cut.first_dropped > 5 || (cut.first_dropped == 5 && (cut.rest || cut.last_kept_is_odd));
        case NUMBER_RMODE_CEIL:
            return inexact && !negative;
        case NUMBER_RMODE_FLOOR:
            return inexact && negative;
        default:
            if (inexact) report_unknown_rmode();
            return false;
    }
}

// A decimal digit boundary in a coefficient: in front of the digit pair `place`, or between its two digits.
struct decimal_cut_t {
    int64_t place;     // 0 is the most significant pair
    bool inside_pair;  // the tens of the pair are kept
};

// The cut below the decimal digit of weight 10^pos of 0.d1 d2 ... x 100^exponent.
constexpr decimal_cut_t cut_below(int exponent, int64_t pos) {
    const int64_t pair = pos >> 1;  // 100^pair is the weight of the pair that holds the digit
    return {exponent - pair - (pos & 1), (pos & 1) != 0};
}

// Weight, as a power of ten, of the most significant decimal digit of a value that is not zero.
constexpr int decimal_exponent(int exponent, int first_digit) {
    return 2 * (exponent - 1) + (first_digit >= 10 ? 1 : 0);
}

// Weight, as a power of ten, of the least significant decimal digit that is not 0. The coefficient is not
// zero.
constexpr int lowest_decimal_position(int exponent, const long_coef &coef) {
    const int count = coef_digit_count(coef);
    return 2 * (exponent - count) + (coef_digit(coef, count - 1) % 10 == 0 ? 1 : 0);
}

// Is any digit of the coefficient from `place` on not 0?
constexpr bool any_digit_from(const long_coef &coef, int place) {
    uint64_t any = 0;
    for (int i = 0; i < 3; ++i) any |= coef.word[i] & ~leading_digits_mask(place, COEF_WORD_DIGITS * i);
    return any != 0;
}

// Rounds a coefficient at a cut with 0 <= place < 24. `rest_beyond` tells of a value behind the coefficient.
// A carry out of the first digit raises the exponent by one; its range is the caller's to check. The result
// may be zero.
inline void round_coef(long_coef &coef, int &exponent, bool negative, decimal_cut_t at, bool rest_beyond,
                       int rmode) {
    const int place = static_cast<int>(at.place);
    const int pair = coef_digit(coef, place);
    const bool rest = rest_beyond || any_digit_from(coef, place + 1);
    cut_digits_t cut;
    uint64_t unit;  // one unit of the last kept decimal digit, in the pair where it stands
    int unit_place;
    if (at.inside_pair) {
        cut = {(pair / 10) % 2 != 0, pair % 10, rest};
        unit = 10;
        unit_place = place;
    } else {
        cut = {coef_digit(coef, place - 1) % 2 != 0, pair / 10, rest || pair % 10 != 0};
        unit = 1;
        unit_place = place - 1;
    }
    coef_keep(coef, place);
    if (at.inside_pair)
        coef.word[place / 8] |= static_cast<uint64_t>(pair - pair % 10) << (56 - 8 * (place % 8));
    if (!rounds_away(rmode, negative, cut)) return;

    uint64_t carry = 1;
    if (unit_place >= 0) {
        long_coef one{};
        one.word[unit_place / 8] = unit << (56 - 8 * (unit_place % 8));
        carry = coef_add(coef, one);
    }
    coef_push_carry(coef, carry);
    exponent += static_cast<int>(carry);
}

// The current mode. A plain word that any thread may set: read without tearing, ordered with nothing.
inline int current_rmode() { return __atomic_load_n(&_number_roundmode, __ATOMIC_RELAXED); }

inline constexpr int PRECISION_CUT_PLACE = 19;  // 38 decimal digits end behind pair 18, or inside pair 19

// Is there anything from the twentieth base-100 digit on, where the 38th decimal digit may end?
constexpr bool may_exceed_precision(const long_coef &coef, bool rest_beyond) {
    return (coef.word[2] & ~leading_digits_mask(PRECISION_CUT_PLACE, 16)) != 0 || rest_beyond;
}

// By the twentieth digit pair, without and with its tens kept: what is left of it where half a unit and more
// rounds away, and above that, in the next byte, the carry.
inline constexpr auto HALF_UP_LAST_PAIRS = [] {
    std::array<std::array<uint16_t, 128>, 2> rows{};
    for (unsigned pair = 0; pair < 100; ++pair) {
        rows[0][pair] = static_cast<uint16_t>((pair + 50) / 100 << 8);
        const unsigned kept = (pair + 5) / 10 * 10;
        rows[1][pair] = static_cast<uint16_t>(kept / 100 << 8 | kept % 100);
    }
    return rows;
}();

// A coefficient whose nineteenth pair is 100, with that carry where it belongs; it seldom goes that far.
// Taken and given by value, so that callers keep theirs in registers.
struct carried_coef_t {
    long_coef coef;
    uint64_t carry;  // out of the first digit
};
[[gnu::noinline, gnu::cold]] inline carried_coef_t carry_above_last_pair(long_coef coef) {
    constexpr int pair_shift = 64 - 8 * (PRECISION_CUT_PLACE % COEF_WORD_DIGITS);
    coef.word[2] -= uint64_t{1} << pair_shift;
    long_coef unit{};
    unit.word[2] = uint64_t{1} << pair_shift;
    const uint64_t carry = coef_add(coef, unit);
    coef_push_carry(coef, carry);
    return {coef, carry};
}

// round_coef at the 38th decimal digit in the default mode. Lengths of results are hard to predict, so a
// coefficient without anything to drop takes the same way.
inline void round_half_up_to_precision(long_coef &coef, int &exponent, bool cuts_inside_pair) {
    constexpr int pair_shift = 56 - 8 * (PRECISION_CUT_PLACE % COEF_WORD_DIGITS);
    const uint64_t pair = coef.word[2] >> pair_shift & 0x7F;
    const uint64_t rounded = HALF_UP_LAST_PAIRS[cuts_inside_pair ? 1 : 0][pair];
    const uint64_t kept = coef.word[2] & leading_digits_mask(PRECISION_CUT_PLACE, 2 * COEF_WORD_DIGITS);
    coef.word[2] = kept + (rounded << pair_shift);
    if ((coef.word[2] >> (pair_shift + 8) & 0xFF) < 100) [[likely]]
        return;
    const carried_coef_t result = carry_above_last_pair(coef);
    coef = result.coef;
    exponent += static_cast<int>(result.carry);
}

// Cuts an arithmetic result to 38 significant decimal digits in the current mode and checks the range that a
// carry may have left.
inline void round_to_precision(long_coef &coef, int &exponent, bool negative, bool rest_beyond) {
    const bool cuts_inside_pair = coef.word[0] < uint64_t{10} << 56;  // the first pair is one decimal digit
    const int rmode = current_rmode();
    if (rmode == NUMBER_RMODE_HALF_UP) {
        round_half_up_to_precision(coef, exponent, cuts_inside_pair);
    } else if (may_exceed_precision(coef, rest_beyond)) {
        round_coef(coef, exponent, negative, {PRECISION_CUT_PLACE, cuts_inside_pair}, rest_beyond, rmode);
    }
    if (exponent > NUMBER_EXPONENT_MAX) raise_rounding_overflow();
}

}  // namespace dv::impl

#endif  // DV_NUMBER_ROUND_H
