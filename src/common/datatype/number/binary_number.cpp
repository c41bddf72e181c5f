// Products and square roots of numbers whose 38 digits are one binary integer.
//
// A product of two integers below 10^38 is divided by 10^37 or 10^38 with a reciprocal, a root is taken of
// digits x 10^37 or x 10^38: both leave 38 digits, and a remainder for the rounding. A root is developed in
// two words of 64 bits: the first from an estimate in floating point, whose error its exact square shows, the
// second by division by twice the first (Zimmermann, Karatsuba Square Root, 1999). Floating point only
// estimates: what it gives is checked in integers.

#include "binary_number.h"

using namespace dv::impl;

namespace {

constexpr uint64_t low_word_(uint128_t x) { return static_cast<uint64_t>(x); }
constexpr uint64_t high_word_(uint128_t x) { return static_cast<uint64_t>(x >> 64); }
constexpr uint128_t join_words_(uint64_t high, uint64_t low) { return uint128_t{high} << 64 | low; }

struct wide_t {
    uint128_t high, low;
};

constexpr wide_t multiply_wide_(uint128_t x, uint128_t y) {
    const uint128_t low = uint128_t{low_word_(x)} * low_word_(y);
    const uint128_t first = uint128_t{low_word_(x)} * high_word_(y) + high_word_(low);
    const uint128_t second = uint128_t{high_word_(x)} * low_word_(y) + low_word_(first);
    return {uint128_t{high_word_(x)} * high_word_(y) + high_word_(first) + high_word_(second),
            join_words_(low_word_(second), low_word_(low))};
}

// Whether x >= y, in numbers: a branch would be as good as one on a coin.
constexpr uint64_t is_at_least_(uint128_t x, uint128_t y) {
    uint64_t difference = 0;
    const uint64_t carry = add_words(low_word_(x), ~low_word_(y), 1, difference);
    return add_words(high_word_(x), ~high_word_(y), carry, difference);
}

// The base-100 exponent of digits x 10^exponent in a record.
constexpr int pair_exponent_(int exponent) { return (exponent + NUMBER_PRECISION_MAX + 1) >> 1; }

constexpr auto _powers_of_ten = [] {
    std::array<uint128_t, NUMBER_PRECISION_MAX> powers{};
    for (int i = 0; i < NUMBER_PRECISION_MAX; ++i) powers[static_cast<size_t>(i)] = ten_to(i);
    return powers;
}();

// A rounding may lift the digits to 10^38.
void settle_carry_(binary_number_t &x) {
    if (x.digits < BINARY_NUMBER_END) [[likely]]
        return;
    x.digits = BINARY_NUMBER_MIN;
    if (pair_exponent_(++x.exponent) > NUMBER_EXPONENT_MAX) raise_rounding_overflow();
}

inline void check_range_(int exponent) {
    const int pairs = pair_exponent_(exponent);
    if (pairs < NUMBER_EXPONENT_MIN || pairs > NUMBER_EXPONENT_MAX) [[unlikely]]
        raise_product_range(pairs);
}

// ---- products ----

constexpr uint128_t power_of_two_by_(int exponent, uint128_t divisor) {  // floor(2^exponent / divisor)
    uint128_t quotient = 0;
    for (uint128_t rest = 1; exponent > 0; --exponent) {
        rest *= 2;
        const bool fits = rest >= divisor;
        quotient = quotient * 2 + (fits ? 1 : 0);
        if (fits) rest -= divisor;
    }
    return quotient;
}

// How products of 76 and of 75 digits are cut. The upper 128 bits of one, which begin `shift` bits further
// down, times the reciprocal are 2^128 times the quotient, and 0.94 units short of it at most: 0.53 for the
// lower bits, 0.41 for the reciprocal's fraction. So the whole quotient is that or one more.
struct product_cut_t {
    uint128_t unit;
    uint128_t reciprocal;  // 2^(256 - shift) / unit
    int shift;
};
constexpr product_cut_t _cuts[] = {{ten_to(38), power_of_two_by_(253, ten_to(38)), 3},
                                   {ten_to(37), power_of_two_by_(250, ten_to(37)), 6}};

// Has a product 75 digits, and not 76? The top word nearly always says so.
inline uint64_t is_short_product_(const wide_t &product) {
    constexpr wide_t end = multiply_wide_(ten_to(38), ten_to(37));
    const uint64_t top = high_word_(product.high);
    if (top != high_word_(end.high)) [[likely]]
        return top < high_word_(end.high) ? 1 : 0;
    return product.high < end.high || (product.high == end.high && product.low < end.low) ? 1 : 0;
}

// Modes other than HALF_UP: from digits that are rounded half up and what the product plus half a unit
// exceeds them by.
[[gnu::noinline, gnu::cold]] uint128_t round_product_(uint128_t digits, uint128_t rest, uint128_t unit,
                                                      bool negative, int rmode) {
    const uint128_t half = unit / 2;
    const bool is_half = rest < half;
    const uint128_t kept = digits - (is_half ? 1 : 0);
    const bool has_rest = rest != (is_half ? 0 : half);
    const cut_digits_t cut = {kept % 2 != 0, is_half ? 5 : 0, has_rest};
    return kept + (rounds_away(rmode, negative, cut) ? 1 : 0);
}

// ---- roots ----

// Near 1 there is a series: x is B + D, B a power of ten, and twice the root 2 B + D - t, where
// t = D^2 / (4 B) x (1 - D / (2 B) + ...). For |D| below 2^82 that is below 2^40, and known within 2^-11; up
// to 10^18 it is between 0 and 0.03.
constexpr uint128_t _near_one_max = uint128_t{1} << 82;
constexpr uint128_t _beside_one_max = 1'000'000'000'000'000'000;

// The floor of twice the root. False: x is not so near to 1, or t may be on either side of an integer.
bool near_one_root_(uint128_t &twice_root, const binary_number_t &x) {
    const bool is_above = x.exponent == BINARY_NUMBER_ONE.exponent;
    if (!is_above && x.exponent != BINARY_NUMBER_ONE.exponent - 1) return false;
    const uint128_t base = is_above ? BINARY_NUMBER_MIN : BINARY_NUMBER_END;
    const uint128_t distance = is_above ? x.digits - base : base - x.digits;
    if (distance >= _near_one_max) return false;
    uint64_t floor_of_t = 0;
    if (distance > _beside_one_max) {
        const double d = static_cast<double>(static_cast<int64_t>(distance >> 19)) * 0x1p19;
        const double quotient = d * (is_above ? 0.5e-37 : 0.5e-38);  // |D| / (2 B)
        const double t = 0.5 * d * quotient * (is_above ? 1 - quotient : 1 + quotient);
        const auto whole = static_cast<int64_t>(t);
        const double fraction = t - static_cast<double>(whole);
        if (fraction < 0x1p-10 || fraction > 1 - 0x1p-10) return false;
        floor_of_t = static_cast<uint64_t>(whole);
    }
    twice_root = base + x.digits - 1 - floor_of_t;
    return true;
}

// The operand of a root is digits x factor, in [2^249, 2^254); the root is 2^shift times the one of 38
// digits.
struct root_scale_t {
    uint128_t factor;
    double estimate_factor;  // factor / 2^128
    int shift;
};
constexpr root_scale_t _root_scales[] = {{ten_to(38), 1e38 * 0x1p-128, 0},  // by the exponent's last bit
                                         {ten_to(37) << 4, 1e37 * 0x1p-124, 2}};

struct root_t {
    uint128_t root;  // the operand is root^2 + rest
    uint128_t rest;
};

// The root of an operand of which the first word's estimate is within 2^-51, 3200 units. False, about once in
// a million: what comes out is not the root, and no division could be made of it.
bool square_root_(root_t &result, const wide_t &operand, double estimate) {
    const auto below = static_cast<uint64_t>(static_cast<int64_t>(estimate) - 3200);
    const uint128_t missing = operand.high - uint128_t{below} * below;  // below 2^77
    const double gap = static_cast<double>(static_cast<int64_t>(missing >> 14)) * (0x1p13 / estimate);
    const auto whole_gap = static_cast<int64_t>(gap - 1e-6);
    const uint64_t first = below + static_cast<uint64_t>(whole_gap);
    const uint64_t rest_of_first = low_word_(operand.high) - first * first;

    // (rest - second^2) / (2 * first); the square, in units of 2^64, from what the gap has behind the point.
    const double fraction = gap - static_cast<double>(whole_gap);
    const auto square_estimate =
        static_cast<uint64_t>(static_cast<int64_t>(fraction * fraction * 0x1p62)) * 4;
    const uint128_t dividend = join_words_(rest_of_first, high_word_(operand.low)) - square_estimate;
    if (high_word_(dividend) >= 2 * first) [[unlikely]]
        return false;
    const quotient_t second = divide_128_by_64(high_word_(dividend), low_word_(dividend), 2 * first);
    const uint64_t rest = second.remainder + square_estimate;
    result.root = join_words_(first, second.quotient);
    result.rest = join_words_(rest, low_word_(operand.low)) - uint128_t{second.quotient} * second.quotient;
    return result.rest <= 2 * result.root;
}

// The floor of twice the root of any x. False: the way above did not find it, or number_sqrt, which looks at
// nineteen digits behind the 38th and a few more, may see nothing behind half a unit: where the root of the
// operand exceeds that by less than 2^68 / (2 * root), 10^-18 of a unit.
bool any_root_(uint128_t &twice_root, binary_root_t &x) {
    const root_scale_t &scale = _root_scales[x.exponent & 1];
    const double estimate = __builtin_sqrt(x.estimate * scale.estimate_factor);
    x.estimate = estimate * (scale.shift == 0 ? 0x1p64 : 0x1p62);
    root_t root;
    if (!square_root_(root, multiply_wide_(x.digits, scale.factor), estimate)) [[unlikely]]
        return false;
    const uint64_t has_half = is_at_least_(root.rest, root.root + 1);
    const uint128_t halves = root.root << 1 | has_half;
    twice_root = halves >> scale.shift;
    const uint128_t beyond_half = root.rest - (root.root & -uint128_t{has_half});
    return twice_root << scale.shift != halves || beyond_half >> 68 != 0;
}

double estimate_of_(uint128_t digits) {
    return static_cast<double>(static_cast<int64_t>(high_word_(digits))) * 0x1p64;
}

// What the other ways leave undecided.
[[gnu::noinline, gnu::cold]] void take_root_of_record_(binary_root_t &x) {
    number_t record;
    store_binary(record, x);
    number_sqrt(&record);
    read_binary(x, record);
    x.estimate = estimate_of_(x.digits);
}

}  // namespace

bool dv::impl::read_binary(binary_number_t &x, const number_t &record) {
    const number_head_t head = read_head(record);
    const record_limbs_t limbs = load_limbs(record, head);
    if (limbs.first < LIMB_BASE / 100 || limbs.first >= LIMB_BASE) return false;
    const bool begins_with_pair = limbs.first >= LIMB_BASE / 10;
    const uint64_t surplus = begins_with_pair ? 100 : 10;  // the record's forty digits by those of x
    const uint128_t upper = uint128_t{limbs.first} * LIMB_BASE + limbs.second;
    x.sign = head.sign;
    x.exponent = 2 * head.exponent - NUMBER_PRECISION_MAX - (begins_with_pair ? 0 : 1);
    x.digits = upper * (100'000'000 / surplus) + limbs.last / surplus;
    return x.digits < BINARY_NUMBER_END && limbs.last % surplus == 0;
}

binary_number_t dv::impl::binary_from_integer(uint64_t sign, uint128_t integer, int exponent) {
    const uint64_t high = high_word_(integer);
    const int width = high != 0 ? 64 + static_cast<int>(std::bit_width(high))
                                : static_cast<int>(std::bit_width(low_word_(integer)));
    // Its digits, or one less: width x log10(2).
    int zeros = NUMBER_PRECISION_MAX - 1 - (width * 1233 >> 12);
    uint128_t digits = integer * _powers_of_ten[static_cast<size_t>(zeros)];
    if (digits < BINARY_NUMBER_MIN) {
        digits *= 10;
        ++zeros;
    }
    check_range_(exponent - zeros);
    return {sign, exponent - zeros, digits};
}

void dv::impl::store_binary(number_t &record, const binary_number_t &x) {
    constexpr uint64_t five_to_22 = 2'384'185'791'015'625;
    const bool begins_with_pair = x.exponent % 2 == 0;
    const uint64_t surplus = begins_with_pair ? 100 : 10;
    // The first limb counts 10^22 or 10^23: an odd factor and a shift.
    const int shift = begins_with_pair ? 22 : 23;
    const uint128_t upper = x.digits >> shift;
    const quotient_t first =
        divide_128_by_64(high_word_(upper), low_word_(upper), begins_with_pair ? five_to_22 : 5 * five_to_22);
    const uint128_t rest = (uint128_t{first.remainder} << shift) + (x.digits - (upper << shift));
    const quotient_t second = divide_128_by_64(high_word_(rest), low_word_(rest), 100'000'000 / surplus);
    const uint64_t last = second.remainder * surplus * 100'000'000;
    store_result(record,
                 {x.sign, pair_exponent_(x.exponent), {{first.quotient, second.quotient, last}}, false});
}

void dv::impl::multiply(binary_number_t &x, const binary_number_t &y) {
    const wide_t product = multiply_wide_(x.digits, y.digits);
    const uint64_t is_short = is_short_product_(product);
    const product_cut_t &cut = _cuts[is_short];
    x.sign ^= y.sign;
    x.exponent += y.exponent + NUMBER_PRECISION_MAX - static_cast<int>(is_short);
    check_range_(x.exponent);

    // With half a unit, so that its whole units are those of the rounded product.
    const uint128_t low = product.low + cut.unit / 2;
    const uint128_t high = product.high + (low < product.low ? 1 : 0);
    const uint128_t upper = high << (cut.shift & 63) | high_word_(low) >> (64 - cut.shift);
    const uint128_t quotient = multiply_wide_(upper, cut.reciprocal).high;
    const uint128_t rest = low - quotient * cut.unit;  // below two units
    const uint64_t is_one_short = is_at_least_(rest, cut.unit);
    x.digits = quotient + is_one_short;
    const int rmode = current_rmode();
    if (rmode != NUMBER_RMODE_HALF_UP) [[unlikely]] {
        const uint128_t beyond = rest - (cut.unit & -uint128_t{is_one_short});
        x.digits = round_product_(x.digits, beyond, cut.unit, x.sign != 0, rmode);
    }
    settle_carry_(x);
}

binary_root_t dv::impl::begin_roots(const binary_number_t &x) { return {x, estimate_of_(x.digits)}; }

void dv::impl::take_root(binary_root_t &x) {
    uint128_t twice_root = 0;
    if (near_one_root_(twice_root, x)) {
        x.estimate = estimate_of_(twice_root >> 1);
    } else if (!any_root_(twice_root, x)) [[unlikely]] {
        return take_root_of_record_(x);
    }
    const int rmode = current_rmode();
    if (rmode == NUMBER_RMODE_HALF_UP) [[likely]] {
        x.digits = (twice_root + 1) >> 1;
    } else {
        const cut_digits_t cut = {(twice_root & 2) != 0, (twice_root & 1) != 0 ? 5 : 0, /*rest=*/true};
        x.digits = (twice_root >> 1) + (rounds_away(rmode, /*negative=*/false, cut) ? 1 : 0);
    }
    x.exponent = (x.exponent - NUMBER_PRECISION_MAX + (x.exponent & 1)) / 2;
    settle_carry_(x);
    if (x.digits == BINARY_NUMBER_MIN) [[unlikely]]
        x.estimate = estimate_of_(x.digits);  // a carry may have moved the point
}
