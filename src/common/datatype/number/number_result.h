// The way of a result of three limbs into a record: rounding at the 38th digit, done in the last limb.
//
// A result is the fraction 0.first second third x 100^exponent. Its first limb says where its digits begin
// and so where they end: with z leading zeros (0..3) the third limb keeps 6 + z of its sixteen digits. That
// part is cut off by a division by a power of ten, which leaves what the rounding looks at, and written as
// ten digits. A first pair of zeros is shifted out on the way into the record.

#ifndef DV_NUMBER_RESULT_H
#define DV_NUMBER_RESULT_H

#include "number_digits.h"
#include "number_round.h"

namespace dv::impl {

struct result_t {
    uint64_t sign;  // all ones for a negative value, else 0
    int exponent;
    limbs_t limbs;     // each below 10^16
    bool rest_beyond;  // a digit behind the limbs is not 0; only asked for in modes other than HALF_UP
};

// By leading zeros: where the third limb is cut.
struct result_cut_t {
    uint64_t unit;  // of the last kept digit: 10^(10 - zeros)
    uint64_t
        reciprocal;  // 2^(64 + shift) / unit, rounded up: exact quotients of limbs, for 2^shift > unit / 2^10
    int shift;
    uint64_t to_ten_digits;  // 10^(4 - zeros)
};
inline constexpr int RESULT_ZEROS_MAX = 3;
inline constexpr auto RESULT_CUTS = [] {
    std::array<result_cut_t, RESULT_ZEROS_MAX + 1> cuts{};
    uint64_t unit = 10'000'000'000;
    uint64_t factor = 10'000;
    for (auto &cut : cuts) {
        const int shift = static_cast<int>(std::bit_width(unit)) - 1;
        cut = {unit, static_cast<uint64_t>((uint128_t{1} << (64 + shift)) / unit) + 1, shift, factor};
        unit /= 10;
        factor /= 10;
    }
    return cuts;
}();

inline constexpr uint64_t RESULT_FIRST_LIMB_MIN = LIMB_BASE / 10'000;  // at most three leading zeros

// A number below 10^8 as four base-100 digits, one to a byte.
constexpr uint64_t four_digits_from(uint64_t value) {
    const uint64_t upper = value / 10'000;
    const uint64_t pairs = split_in_hundreds(upper << 32 | (value - upper * 10'000));
    return (pairs >> 16 | pairs) & 0xFFFFFFFF;
}

// A result that has more than three leading zeros, or that rounding lifts to a power of ten.
[[gnu::noinline]] inline void store_any_result(number_t &x, const result_t &result) {
    const auto &limb = result.limbs.limb;
    long_coef coef = {{digits_from_limb(limb[0]), digits_from_limb(limb[1]), digits_from_limb(limb[2])}};
    if (coef_is_zero(coef)) return store_zero(x);
    int exponent = result.exponent - coef_normalize(coef);
    round_to_precision(coef, exponent, result.sign != 0, result.rest_beyond);
    store_coef(x, result.sign, exponent, coef);
}

// A result on its way: what its third limb keeps and drops.
struct cut_result_t {
    int zeros;  // in front: [0, 3]
    uint64_t unit, kept, dropped;
};

inline cut_result_t cut_result(const limbs_t &limbs) {
    const uint64_t first = limbs.limb[0];
    const int zeros =
        int{first < LIMB_BASE / 10} + int{first < LIMB_BASE / 100} + int{first < LIMB_BASE / 1000};
    const result_cut_t &cut = RESULT_CUTS[static_cast<size_t>(zeros)];
    const uint64_t kept = static_cast<uint64_t>(uint128_t{limbs.limb[2]} * cut.reciprocal >> 64) >> cut.shift;
    return {zeros, cut.unit, kept, limbs.limb[2] - kept * cut.unit};
}

// What the mode adds to the kept part: 0 or 1. The usual mode comes without a branch on digits, which would
// be as good as a branch on a coin.
inline uint64_t rounding_of(const result_t &result, const cut_result_t &cut, int rmode) {
    const uint64_t half = cut.unit / 2;
    const bool is_half = cut.dropped >= half;
    if (rmode == NUMBER_RMODE_HALF_UP) return uint64_t{is_half};
    const bool rest = result.rest_beyond || cut.dropped != (is_half ? half : 0);
    return uint64_t{rounds_away(rmode, result.sign != 0, {cut.kept % 2 != 0, is_half ? 5 : 0, rest})};
}

// Stores the limbs with the digits that are kept of the third; false: a carry goes further than into the
// second.
inline bool store_cut_result(number_t &x, const result_t &result, const cut_result_t &cut) {
    uint64_t second = result.limbs.limb[1];
    uint64_t tail = cut.kept * RESULT_CUTS[static_cast<size_t>(cut.zeros)].to_ten_digits;
    if (tail >= 10'000'000'000) [[unlikely]] {
        if (++second >= LIMB_BASE) return false;
        tail = 0;
    }
    const int skipped = cut.zeros / 2;
    const uint64_t upper = tail / 100;
    const uint64_t last_digits = four_digits_from(upper) << 8 | (tail - upper * 100);  // five
    store_result_digits(x, result.sign, result.exponent, {result.limbs.limb[0], second}, last_digits,
                        skipped);
    return true;
}

// Stores a result, cut to 38 digits in the current mode; its exponent, less the leading zeros, is in the
// range.
inline void store_result(number_t &x, const result_t &result) {
    if (result.limbs.limb[0] < RESULT_FIRST_LIMB_MIN) [[unlikely]]
        return store_any_result(x, result_t{result});
    cut_result_t cut = cut_result(result.limbs);
    cut.kept += rounding_of(result, cut, current_rmode());
    if (!store_cut_result(x, result, cut)) [[unlikely]]
        store_any_result(x, result_t{result});
}

// For a third limb that may be too small, by less than `uncertainty`: the mode is HALF_UP, and the rounding
// is the same whatever is missing. (Where more than a unit is dropped in truth, the carry is the one that
// rounding makes.)
inline bool is_settled_half_up(const cut_result_t &cut, uint64_t uncertainty) {
    return cut.unit / 2 - cut.dropped - 1 >= uncertainty && current_rmode() == NUMBER_RMODE_HALF_UP;
}

// store_result for such a third limb. False: it is not settled, or the case is rare; nothing is stored, and
// the limbs must be exact.
inline bool store_result_half_up(number_t &x, const result_t &result, uint64_t uncertainty) {
    if (result.limbs.limb[0] < RESULT_FIRST_LIMB_MIN) [[unlikely]]
        return false;
    cut_result_t cut = cut_result(result.limbs);
    if (!is_settled_half_up(cut, uncertainty)) [[unlikely]]
        return false;
    cut.kept += rounding_of(result, cut, NUMBER_RMODE_HALF_UP);
    return store_cut_result(x, result, cut);
}

}  // namespace dv::impl

#endif  // DV_NUMBER_RESULT_H
