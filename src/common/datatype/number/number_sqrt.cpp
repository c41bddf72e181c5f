// Square root.
//
// A value is 0.d1 d2 ... x 100^E. With E made even by a leading zero digit, the root of the fraction is a
// fraction again whose first digit is not 0, and the root's exponent is E / 2. Limb by limb of base 10^16 the
// root is developed to three limbs and a remainder: the first limb from the machine's square root, each other
// one by division by twice the first limb. That divisor is short of the true one, so a second term is taken
// back from the quotient; the remainder makes it exact. (The scheme of Zimmermann, Karatsuba Square Root,
// 1999, with a division by the top limb alone.)
//
// The root counts to the 64th digit behind the point of sqrt(x / 10^(16 k)), for the smallest k that makes it
// a fraction: 57 to 64 significant digits, cut. That is what is rounded; what lies behind is not seen.
//
// number_ui_sqrt is the same by hand for any number of limbs of base 10^8, with an estimate by square root.
// For the sixteen limbs that would be needed here it takes three and a half times as long.

#include "number_limb.h"
#include "number_round.h"

using namespace dv::impl;

namespace {

__extension__ using int128_t = __int128;

// The operand is root^2 + remainder, remainder <= 2 * root.
struct root_t {
    limbs_t root;
    uint128_t remainder;      // without its last limb: at most 2 * 10^32
    uint64_t remainder_last;  // limb
};

// floor(v), or one more where v is just below that; |v| < 4000.
constexpr int64_t floor_or_above_(double v) { return static_cast<int64_t>(v + 1e-9 + 4096) - 4096; }

// Where the root begins.
struct first_limb_t {
    uint64_t root;          // at most sqrt(a0 a1), and above sqrt(a0 a1) - 11
    uint64_t rest;          // a0 a1 - root^2, below 2^60
    double inverse_double;  // 1 / (2 * root)
};

// Three roundings of the operand and one of the root are an error of 2.5 x 2^-53, of a root below 2^54 at
// most 5 units.
first_limb_t first_limb_(uint64_t a0, uint64_t a1) {
    constexpr auto base = static_cast<double>(LIMB_BASE);
    const double estimate = __builtin_sqrt(static_cast<double>(a0) * base + static_cast<double>(a1));
    const uint64_t root = static_cast<uint64_t>(estimate) - 5;
    return {root, a0 * LIMB_BASE + a1 - root * root, 0.5 / estimate};
}

struct next_limb_t {
    uint64_t limb;
    int64_t rest;  // value - limb * 2 * first.root, within 2^62 of 0
};

// The limb that follows: (value - second_term(quotient)) / (2 * first.root), where quotient is that without
// the second term, at most 2000 larger. Never too small, one too large only by a hair.
template <typename F>
next_limb_t next_limb_(uint128_t value, const first_limb_t &first, F second_term) {
    const uint64_t divisor = 2 * first.root;
    const quotient_t step =
        divide_128_by_64(static_cast<uint64_t>(value >> 64), static_cast<uint64_t>(value), divisor);
    const double rest = static_cast<double>(step.remainder) - second_term(static_cast<double>(step.quotient));
    const auto change = static_cast<uint64_t>(floor_or_above_(rest * first.inverse_double));  // -2000..1
    return {step.quotient + change, static_cast<int64_t>(step.remainder - change * divisor)};
}

// The root of the integer a0 a1 a2 0 0 0, 10^12 <= a0. Records with bytes that are no digits give limbs of up
// to 2.6 * 10^16; every bound here holds for limbs below 2^55, but the root's may then reach the base.
root_t square_root_(const limbs_t &a) {
    constexpr int128_t base = LIMB_BASE;
    constexpr double inverse_base = 1 / static_cast<double>(LIMB_BASE);
    const first_limb_t first = first_limb_(a.limb[0], a.limb[1]);
    const uint128_t high = uint128_t{first.root} * LIMB_BASE;

    const next_limb_t second = next_limb_(uint128_t{first.rest} * LIMB_BASE + a.limb[2], first,
                                          [](double quotient) { return quotient * quotient * inverse_base; });
    uint128_t root = high + second.limb;  // the second limb holds what the first is short of: up to 11 bases
    int128_t rest = second.rest * base - static_cast<int128_t>(uint128_t{second.limb} * second.limb);
    while (rest < 0) rest += static_cast<int128_t>(2 * --root + 1);
    const auto r1 = static_cast<uint64_t>(root - high);
    const limbs_t upper = {{first.root + r1 / LIMB_BASE, r1 % LIMB_BASE, 0}};
    if (rest == 0) return {upper, 0, 0};

    const double twice_r1 = 2 * static_cast<double>(r1) * inverse_base;
    const next_limb_t third = next_limb_(static_cast<uint128_t>(rest), first,
                                         [twice_r1](double quotient) { return quotient * twice_r1; });
    uint64_t r2 = third.limb;
    const limb_quotient_t square = divide_by_limb_base(uint128_t{r2} * r2);
    const bool borrows = square.remainder != 0;
    rest = third.rest * base - static_cast<int128_t>(uint128_t{2 * r1} * r2) -
           static_cast<int128_t>(square.quotient + (borrows ? 1 : 0));
    uint64_t rest_last = borrows ? LIMB_BASE - square.remainder : 0;
    while (rest < 0) {
        rest_last += 2 * --r2 + 1;
        rest += static_cast<int128_t>(2 * root + rest_last / LIMB_BASE);
        rest_last %= LIMB_BASE;
    }
    return {{{upper.limb[0], upper.limb[1], r2}}, static_cast<uint128_t>(rest), rest_last};
}

// Is any of the next `digits` (10, 12, 14, 16) decimal digits of the root not 0? They are all 0 when
// root + 10^-digits is too large, that is, when remainder * 10^digits <= 2 * root.
bool any_digit_behind_(const root_t &x, int digits) {
    constexpr uint64_t units[] = {10'000'000'000, 1'000'000'000'000, 100'000'000'000'000, LIMB_BASE};
    const auto &r = x.root.limb;
    // 3 * 10^22 is above 2 * 10^32 / 10^10 and, times 10^16, below 2^128.
    if (x.remainder >= uint128_t{3'000'000} * LIMB_BASE) return true;
    const uint64_t unit = units[(digits - 10) / 2];
    const uint128_t twice_top = 2 * (uint128_t{r[0]} * LIMB_BASE + r[1]) + 2 * r[2] / LIMB_BASE;
    const limb_quotient_t last = divide_by_limb_base(uint128_t{x.remainder_last} * unit);
    const uint128_t scaled = x.remainder * unit + last.quotient;
    return scaled > twice_top || (scaled == twice_top && last.remainder > 2 * r[2] % LIMB_BASE);
}

}  // namespace

extern "C" void number_sqrt(number_t *x) {
    if (!DV_ASSERT(number_is_valid_ptr(x)) && !given(x)) return;
    if (number_is_zero(*x)) return;
    const number_head_t head = read_head(*x);
    if (head.sign != 0) raise(DV_ERR_NUMBER_DOMAIN);
    long_coef coef = load_coef<3>(*x, head);
    int exponent = head.exponent;
    if (coef_digit(coef, 0) == 0) [[unlikely]] {  // no record that this library writes
        if (coef_is_zero(coef)) return store_zero(*x);
        exponent -= coef_normalize(coef);
    }
    coef_shift_right(coef, exponent & 1);
    exponent = (exponent + 1) >> 1;

    const root_t root = square_root_(to_limbs(coef));
    const auto &limb = root.root.limb;
    if ((limb[1] | limb[2]) == 0 && root.remainder == 0) {
        return store_coef(*x, /*negative=*/false, exponent, short_coef{{digits_from_limb(limb[0])}});
    }
    long_coef digits = {{digits_from_limb(limb[0]), digits_from_limb(limb[1]), digits_from_limb(limb[2])}};
    const bool rest_beyond = any_digit_behind_(root, 16 - 2 * (-exponent & 3));
    round_to_precision(digits, exponent, /*negative=*/false, rest_beyond);
    store_coef(*x, /*negative=*/false, exponent, digits);
}

namespace {

constexpr uint32_t _small_base = 100'000'000;  // limbs of number_ui_sqrt

// The next limb of a root of which sp[0..count) is known: t of (2 * s * base + t) * t <= rest, where rest
// ends with limb xp[end - 1] and s is not 0 unless count is. Never too small; one too large where the true
// value is within 1e-6 of it.
uint32_t estimate_root_limb_(const uint32_t *sp, int count, const uint32_t *xp, int end) {
    // The top four limbs of each side are more than a double holds. Both are counted in units of `unit`.
    const int left_out = count > 2 ? count - 2 : 0;
    double root = 0;
    for (int i = 0; i < count && i <= 2; ++i) root = root * _small_base + sp[i];
    if (count <= 2) root *= _small_base;
    double rest = 0;
    for (int i = end - count - 3; i < end - left_out; ++i) rest = rest * _small_base + (i >= 0 ? xp[i] : 0);
    double unit = 1;
    for (int i = 0; i < left_out; ++i) unit *= _small_base;  // may become infinite, as its root's share is 0
    const double divisor = root + __builtin_sqrt(root * root + rest / unit);
    const double limb = divisor > 0 ? rest / divisor + 1e-6 : 0;
    return limb < _small_base ? static_cast<uint32_t>(limb) : _small_base - 1;
}

// Takes (2 * s * base + t) * t from the rest; returns what its top limb lacks, 0 or less.
int64_t subtract_square_part_(const uint32_t *sp, int count, uint32_t t, uint32_t *xp, int end) {
    uint64_t carry = 0;
    for (int i = 0; i <= count; ++i) {
        const uint64_t factor = i == 0 ? t : 2 * uint64_t{sp[count - i]};
        const uint64_t product = factor * t + carry;  // below 2 * 10^16 + 2 * 10^8
        const auto low = static_cast<uint32_t>(product % _small_base);
        uint32_t &limb = xp[end - 1 - i];
        const bool borrows = limb < low;
        limb += (borrows ? _small_base : 0) - low;
        carry = product / _small_base + (borrows ? 1 : 0);
    }
    return -static_cast<int64_t>(carry);
}

// Gives back what one too much in the last limb of the root has taken: 2 * s + 1 for the lessened root s.
int64_t add_back_(const uint32_t *sp, int count, uint32_t *xp, int end) {
    uint64_t carry = 1;
    for (int i = 0; i < count; ++i) {
        uint32_t &limb = xp[end - 1 - i];
        carry += 2 * uint64_t{sp[count - 1 - i]} + limb;
        limb = static_cast<uint32_t>(carry % _small_base);
        carry /= _small_base;
    }
    return static_cast<int64_t>(carry);
}

}  // namespace

extern "C" void number_ui_sqrt(uint32_t *sp, uint32_t *xp, int n) {
    if (!DV_ASSERT(sp != NULL && xp != NULL) || n <= 0) return;
    for (int i = 0; i < n; ++i) xp[i] %= _small_base;

    int end = n % 2 != 0 ? 1 : 2;  // limbs of the operand that the known part of the root has used
    while (end <= n && xp[end - 1] == 0 &&
           (end == 1 || xp[end - 2] == 0)) {  // so that the root's first is not 0
        *sp++ = 0;
        xp += end;
        n -= end;
        end = 2;
    }
    for (int count = 0; end <= n; ++count, end += 2) {
        sp[count] = estimate_root_limb_(sp, count, xp, end);
        // The limbs in front of those that are subtracted from: the rest was at most twice the root.
        const int above = end - count - 2;
        int64_t top = above >= 0 ? xp[above] : 0;
        if (above > 0) top += int64_t{xp[above - 1]} * _small_base;
        top += subtract_square_part_(sp, count, sp[count], xp, end);
        while (top < 0) {
            --sp[count];
            top += add_back_(sp, count + 1, xp, end);
        }
        if (above > 0) xp[above - 1] = 0;
        if (above >= 0) xp[above] = static_cast<uint32_t>(top);
    }
}
