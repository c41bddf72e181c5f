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

// Does the magnitude of the kept part grow by one unit?
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
            report_unknown_rmode();
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

// round_coef at the 38th decimal digit in the default mode: half a unit is added, and what is dropped
// cleared. The carry seldom leaves the last word.
inline void round_half_up_to_precision(long_coef &coef, int &exponent, bool cuts_inside_pair) {
    constexpr int place_shift = 56 - 8 * (PRECISION_CUT_PLACE % 8);
    uint64_t carry = 0;
    const uint64_t sum =
        add_digit_words(coef.word[2], uint64_t{cuts_inside_pair ? 5u : 50u} << place_shift, carry);
    const uint64_t pair = sum >> place_shift & 0xFF;
    const uint64_t kept = cuts_inside_pair ? pair - pair % 10 : 0;
    coef.word[2] = (sum & leading_digits_mask(PRECISION_CUT_PLACE, 16)) | kept << place_shift;
    if (carry == 0) return;
    coef.word[1] = add_digit_words(coef.word[1], 0, carry);
    coef.word[0] = add_digit_words(coef.word[0], 0, carry);
    coef_push_carry(coef, carry);
    exponent += static_cast<int>(carry);
}

// Cuts an arithmetic result to 38 significant decimal digits in the current mode and checks the range that a
// carry may have left.
inline void round_to_precision(long_coef &coef, int &exponent, bool negative, bool rest_beyond) {
    const bool cuts_inside_pair = coef.word[0] < uint64_t{10} << 56;  // the first pair is one decimal digit
    const int rmode = current_rmode();
    if (rmode == NUMBER_RMODE_HALF_UP) {
        round_half_up_to_precision(coef, exponent, cuts_inside_pair);
    } else {
        round_coef(coef, exponent, negative, {PRECISION_CUT_PLACE, cuts_inside_pair}, rest_beyond, rmode);
    }
    if (exponent > NUMBER_EXPONENT_MAX) raise_rounding_overflow();
}

}  // namespace dv::impl

#endif  // DV_NUMBER_ROUND_H
