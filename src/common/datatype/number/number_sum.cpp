// Exact sums on the grid of all NUMBERs.
//
// A NUMBER lies on a grid: its base-100 digits have weights from 100^-84 (twentieth digit of the smallest
// exponent) to 100^62. The sum is a fixed-point integer on that grid, of 38 signed limbs in base 10^8, four
// base-100 digits each, least significant first. A limb may have any sign and leave its base until carries
// are taken.
//
// "Place" is the index of a base-100 digit on the grid: place p has the weight 100^(p - 84), and digit p % 4
// of limb p / 4 holds it. A change moves a limb by less than 10^8 and carries are taken every 2^16 changes,
// of a merged sum at most 2^17, so no limb comes near 2^63.

#include "dvtypes/number_sum.h"

#include "../error.h"
#include "number_internal.h"
#include "number_limb.h"

using namespace dv::impl;

namespace {

constexpr int _limb_digits = 4;  // base-100 digits
constexpr int64_t _limb_base = 100'000'000;
constexpr int64_t _digit_weight[_limb_digits] = {1, 100, 10'000, 1'000'000};
constexpr int64_t _changes_before_carry = 1 << 16;

constexpr int _lowest_weight = NUMBER_EXPONENT_MIN - NUMBER_DIGITS_MAX;  // -84, as a power of 100
constexpr int _places = NUMBER_EXPONENT_MAX - _lowest_weight;            // 147
static_assert(_places <= (NUMBER_SUM_LIMBS - 1) * _limb_digits);

// Not inline: most changes need none.
[[gnu::noinline]] void take_carries_(int64_t *limbs) {
    for (int i = 0; i < NUMBER_SUM_LIMBS - 1; ++i) {
        const int64_t carry = limbs[i] / _limb_base;
        limbs[i] -= carry * _limb_base;
        limbs[i + 1] += carry;
    }
}

void count_changes_(number_sum_t &sum, int64_t count) {
    sum.changes += count;
    if (sum.changes < _changes_before_carry) return;
    take_carries_(sum.limbs);
    sum.changes = 0;
}

// Up to eight digits at once, the first of them at a place of the third limb or above: moved to the places of
// the limb's digits, they are those of three limbs.
[[gnu::always_inline]] inline void change_word_(int64_t *limbs, unsigned place, uint64_t digits,
                                                int64_t sign) {
    int64_t *const top = limbs + place / _limb_digits;
    const unsigned behind = 8 * (_limb_digits - 1 - place % _limb_digits);
    const uint64_t upper = half_limbs_from_digits(digits >> behind);
    const uint64_t lower = half_limbs_from_digits(digits << 32 >> behind & UINT32_MAX);
    const auto add = [sign](int64_t &limb, uint64_t value) {
        limb += (static_cast<int64_t>(value) ^ sign) - sign;
    };
    add(top[0], upper >> 32);
    add(top[-1], upper & UINT32_MAX);
    add(top[-2], lower);
}

inline void change_(number_sum_t &sum, const number_t &x, int sign) {
    const number_head_t head = read_head(x);
    const int first = head.exponent - 1 - _lowest_weight;
    if (head.count <= COEF_WORD_DIGITS && first >= 2 * _limb_digits && !number_is_zero(x)) [[likely]] {
        const auto turned = static_cast<int64_t>(head.sign) ^ (sign < 0 ? -1 : 0);
        change_word_(sum.limbs, static_cast<unsigned>(first), load_coef<1>(x, head).word[0], turned);
        return count_changes_(sum, 1);
    }
    const int count = number_digit_count(x);
    int place = first;
    for (int i = 0; i < count; ++i, --place) {
        const int64_t digit = x.coef[i] - NUMBER_DIGIT_EXCESS;  // with the sign of x
        sum.limbs[place / _limb_digits] += sign * digit * _digit_weight[place % _limb_digits];
    }
    count_changes_(sum, 1);
}

struct magnitude {
    bool negative;
    int64_t limbs[NUMBER_SUM_LIMBS];  // 0 <= limb < 10^8; the last one only >= 0
};

// The limb that decides the sign: after carries the limbs below it are worth less than one unit of it.
int64_t top_limb_(const int64_t *limbs) {
    for (int i = NUMBER_SUM_LIMBS - 1; i >= 0; --i) {
        if (limbs[i] != 0) return limbs[i];
    }
    return 0;
}

magnitude magnitude_of_(const number_sum_t &sum) {
    magnitude m{};
    for (int i = 0; i < NUMBER_SUM_LIMBS; ++i) m.limbs[i] = sum.limbs[i];
    take_carries_(m.limbs);
    m.negative = top_limb_(m.limbs) < 0;
    int64_t borrow = 0;
    for (int64_t &limb : m.limbs) {
        limb = (m.negative ? -limb : limb) - borrow;
        borrow = limb < 0 ? 1 : 0;
        limb += borrow * _limb_base;
    }
    return m;
}

// Long division; what remains behind the lowest place is dropped.
void divide_(magnitude &m, int64_t divisor) {
    if (divisor == 1) return;
    unsigned __int128 rest = 0;  // < divisor, so that a step stays below 2^63 * 10^8 + 2^63
    for (int i = NUMBER_SUM_LIMBS - 1; i >= 0; --i) {
        rest = rest * _limb_base + static_cast<uint64_t>(m.limbs[i]);
        m.limbs[i] = static_cast<int64_t>(rest / static_cast<uint64_t>(divisor));
        rest %= static_cast<uint64_t>(divisor);
    }
}

// Place of the first digit that is not 0, -1 for zero.
int top_place_(const magnitude &m) {
    int i = NUMBER_SUM_LIMBS - 1;
    while (i >= 0 && m.limbs[i] == 0) --i;
    if (i < 0) return -1;
    int place = i * _limb_digits;
    for (int64_t rest = m.limbs[i]; rest >= 100; rest /= 100) ++place;
    return place;
}

int digit_(const magnitude &m, int place) {
    return static_cast<int>(m.limbs[place / _limb_digits] / _digit_weight[place % _limb_digits] % 100);
}

}  // namespace

extern "C" void number_sum_add(number_sum_t *sum, const number_t *x) {
    if (!DV_ASSERT(sum != NULL) || (!DV_ASSERT(number_is_valid_ptr(x)) && !given(x))) return;
    change_(*sum, *x, 1);
}

extern "C" void number_sum_sub(number_sum_t *sum, const number_t *x) {
    if (!DV_ASSERT(sum != NULL) || (!DV_ASSERT(number_is_valid_ptr(x)) && !given(x))) return;
    change_(*sum, *x, -1);
}

extern "C" void number_sum_merge(number_sum_t *sum, const number_sum_t *other) {
    if (!DV_ASSERT(sum != NULL) || !DV_ASSERT(other != NULL)) return;
    for (int i = 0; i < NUMBER_SUM_LIMBS; ++i) sum->limbs[i] += other->limbs[i];
    count_changes_(*sum, other->changes + 1);  // what both hold of earlier carries is less than one change
}

extern "C" void number_sum_quotient(const number_sum_t *sum, int64_t divisor, number_t *x) {
    if (!DV_ASSERT(sum != NULL) || !DV_ASSERT(number_is_nonnull_ptr(x)) || !DV_ASSERT(divisor > 0)) return;
    magnitude m = magnitude_of_(*sum);
    divide_(m, divisor);
    const int top = top_place_(m);
    if (top < 0) return store_zero(*x);
    const int exponent = top + 1 + _lowest_weight;
    if (exponent > NUMBER_EXPONENT_MAX) raise(DV_ERR_NUMBER_OVERFLOW);
    if (exponent < NUMBER_EXPONENT_MIN) raise(DV_ERR_NUMBER_UNDERFLOW);

    // Twenty base-100 digits hold 38 decimal digits and the next one, which is all that half up looks at. The
    // smallest exponent has its twentieth digit at place 0, so none is missing.
    long_coef coef{};
    for (int i = 0; i < NUMBER_DIGITS_MAX; ++i) {
        coef.word[i / COEF_WORD_DIGITS] |= static_cast<uint64_t>(digit_(m, top - i))
                                           << (56 - 8 * (i % COEF_WORD_DIGITS));
    }
    store_coef(*x, /*negative=*/false, exponent, coef);
    if (m.negative) number_negate(x);
    number_force_prec_scale(x, NUMBER_PRECISION_MAX, NUMBER_NOT_GIVEN);
}
