// Power and exponential: squaring and repeated square roots.
//
// The exponent is a binary number: its integer part is read from the highest bit down, squaring the result
// and multiplying by the base (Knuth, The Art of Computer Programming, vol. 2, 4.6.3); behind the point the
// n-th bit stands for the n-th repeated square root of the base. Every square, product, root and quotient is
// a NUMBER operation with its own rounding to 38 digits, and 160 bits behind the point count; so the steps
// fix every digit of the result, and what is left out here is only what cannot change it. Roots that have
// come close to 1, which is half of them, need no more than a shift.

#include "binary_integer.h"
#include "number_product.h"

using namespace dv::impl;

namespace {

constexpr int _fraction_pairs_max = 24;  // leading zero pairs; 100^-25 x 2^160 is below 1

// |y| in binary.
struct exponent_t {
    binary_integer_t integer;
    uint32_t fraction[5];  // most significant first
    bool has_fraction;     // even where all its bits are 0
};

// The integer part of 0.d1 d2 ... x 100^weight, weight above 0; only digits in front of the point are not 0.
void read_integer_(binary_integer_t &integer, long_coef coef, int weight) {
    constexpr int pairs = 3 * COEF_WORD_DIGITS;
    if (weight <= COEF_WORD_DIGITS) {
        integer.word[0] = limb_from_digits(coef.word[0] >> (8 * (COEF_WORD_DIGITS - weight)));
        return;
    }
    if (weight < pairs) coef_shift_right(coef, pairs - weight);
    for (const uint64_t limb : to_limbs(coef).limb) integer.multiply_add(LIMB_BASE, limb);
    for (int i = pairs; i < weight; ++i) integer.multiply_add(100, 0);
}

// The fraction 0.d1 d2 ... x 100^-zeros, zeros in 0..24.
void read_fraction_(uint32_t (&bits)[5], const long_coef &coef, int zeros) {
    coef_t<6> wide{};
    for (int i = 0; i < 3; ++i) wide.word[i + zeros / COEF_WORD_DIGITS] = coef.word[i];
    coef_shift_within_word(wide, zeros % COEF_WORD_DIGITS);
    uint64_t limb[6];
    for (int i = 0; i < 6; ++i) limb[i] = limb_from_digits(wide.word[i]);
    for (uint32_t &word : bits) {  // what 2^32 times the fraction has in front of the point
        uint64_t carry = 0;
        for (int i = 5; i >= 0; --i) {
            const limb_quotient_t product = divide_by_limb_base((uint128_t{limb[i]} << 32) + carry);
            limb[i] = product.remainder;
            carry = product.quotient;
        }
        word = static_cast<uint32_t>(carry);
    }
}

exponent_t read_exponent_(const number_t &y) {
    exponent_t result{};
    const number_head_t head = read_head(y);
    long_coef integer = load_coef<3>(y, head);
    long_coef fraction = integer;
    coef_keep(integer, head.exponent);
    for (int i = 0; i < 3; ++i) fraction.word[i] -= integer.word[i];
    if (!coef_is_zero(integer)) read_integer_(result.integer, integer, head.exponent);
    result.has_fraction = !coef_is_zero(fraction);
    if (!result.has_fraction) return result;
    const int zeros = head.exponent > 0 ? coef_normalize(fraction) - head.exponent : -head.exponent;
    if (zeros <= _fraction_pairs_max) read_fraction_(result.fraction, fraction, zeros);
    return result;
}

// Count of bits up to the last that is 1.
int fraction_length_(const uint32_t (&bits)[5]) {
    for (int i = 4; i >= 0; --i) {
        if (bits[i] != 0) return 32 * (i + 1) - std::countr_zero(bits[i]);
    }
    return 0;
}

bool is_one_(const number_t &x) {
    return x.size == _number_one->size && memcmp(&x, _number_one, _number_one->size + size_t{1}) == 0;
}

// result, which is 1, becomes base^n, n not 0.
void raise_record_to_integer_(number_t &result, const number_t &base, const binary_integer_t &n) {
    number_mul(&result, &base);
    for (int bit = n.highest_bit() - 1; bit >= 0; --bit) {
        number_sqr(&result);
        if (n.bit(bit)) number_mul(&result, &base);
    }
}

// The same for any n, without a record between the steps.
void raise_to_integer_(number_t &result, const number_t &base, const binary_integer_t &n) {
    const int highest = n.highest_bit();
    if (highest < 0) return;
    product_t factor;
    if (!read_product(factor, base)) [[unlikely]]
        return raise_record_to_integer_(result, base, n);
    product_t product = factor;
    for (int bit = highest - 1; bit >= 0; --bit) {
        multiply_product(product, product_t{product});
        if (n.bit(bit)) multiply_product(product, factor);
    }
    store_product(result, product);
}

// A root that has come close to 1: 1 + distance x 10^-37, or 1 - distance x 10^-38; distance <= 10^18.
struct near_one_t {
    uint64_t distance;
    bool is_above;
};

constexpr uint64_t _near_one_max = 1'000'000'000'000'000'000;
constexpr uint64_t _one_word = uint64_t{1} << 56;  // digits of 1.00000000000000
constexpr uint64_t _nines_word = in_each_byte(99);

// False: it is not that close.
bool read_near_one_(const number_t &x, near_one_t &near) {
    const number_head_t head = read_head(x);
    const long_coef coef = load_coef<3>(x, head);
    const uint64_t middle = limb_from_digits(coef.word[1]);
    const uint64_t last = limb_from_digits(coef.word[2]);
    if (head.exponent == 1 && coef.word[0] == _one_word && middle < _near_one_max / 10'000'000 &&
        last % 1'000'000'000 == 0) {
        near = {middle * 10'000'000 + last / 1'000'000'000, true};
        return true;
    }
    if (head.exponent == 0 && coef.word[0] == _nines_word &&
        middle >= LIMB_BASE - _near_one_max / 1'000'000 && middle < LIMB_BASE && last % 10'000'000'000 == 0) {
        near = {(LIMB_BASE - middle) * 1'000'000 - last / 10'000'000'000, false};
        return true;
    }
    return false;
}

number_t near_one_record_(const near_one_t &near) {
    constexpr uint64_t tail = 1'000'000;  // below 1, the digits behind the second word: three pairs
    const uint64_t middle =
        near.is_above ? near.distance / 10'000'000 : LIMB_BASE - (near.distance + tail - 1) / tail;
    const uint64_t last = near.is_above ? near.distance % 10'000'000 * 1'000'000'000
                                        : (tail - near.distance % tail) % tail * 10'000'000'000;
    const uint64_t first = near.is_above || near.distance == 0 ? _one_word : _nines_word;
    number_t record;
    if (near.distance == 0) {
        number_copy(record, *_number_one);
    } else {
        store_coef(record, /*negative=*/false, near.is_above ? 1 : 0,
                   long_coef{{first, digits_from_limb(middle), digits_from_limb(last)}});
    }
    return record;
}

// The square root as number_sqrt rounds it. sqrt(1 + d) is short of 1 + d / 2 by d^2 / 8 and less, of
// sqrt(1 - d) likewise: by less than 0.02 units of the 38th digit. So what is dropped is 0.98 units and more
// where distance is even, one unit being borrowed, or 0.48 and more, below a half, where it is odd.
void near_one_root_(near_one_t &near) {
    const cut_digits_t cut = {/*last_kept_is_odd=*/false, near.distance % 2 != 0 ? 4 : 9, /*rest=*/true};
    const uint64_t away = rounds_away(current_rmode(), /*negative=*/false, cut) ? 1 : 0;
    near.distance = near.is_above ? (near.distance - 1) / 2 + away : (near.distance + 2) / 2 - away;
}

bool bit_at_(const uint32_t (&fraction)[5], int bit) {
    return (fraction[bit / 32] >> (31 - bit % 32) & 1) != 0;
}

// Multiplies by base^fraction. Roots behind the last bit that is 1 would not be used, and once the root is 1
// neither it nor its products change.
void multiply_by_roots_(number_t &result, number_t root, const uint32_t (&fraction)[5]) {
    const int length = fraction_length_(fraction);
    int bit = 0;
    near_one_t near{};
    for (; bit < length && !read_near_one_(root, near); ++bit) {
        number_sqrt(&root);
        if (bit_at_(fraction, bit)) number_mul(&result, &root);
    }
    for (; bit < length && near.distance != 0; ++bit) {
        near_one_root_(near);
        if (!bit_at_(fraction, bit)) continue;
        root = near_one_record_(near);
        number_mul(&result, &root);
    }
}

}  // namespace

extern "C" void number_pow(number_t *x, const number_t *y) {
    if (!DV_ASSERT(number_is_valid_ptr(x) && number_is_valid_ptr(y)) && !given(x, y)) return;
    if (is_one_(*y)) return;
    const bool has_negative_power = !number_is_zero(*y) && number_is_negative(*y);
    if (number_is_zero(*x)) {
        if (has_negative_power) raise(ERR_NUMBER_DOMAIN);
        return;
    }
    const exponent_t exponent = read_exponent_(*y);
    if (number_is_negative(*x) && exponent.has_fraction) raise(ERR_NUMBER_DOMAIN);

    number_t result;
    number_copy(result, *_number_one);
    raise_to_integer_(result, *x, exponent.integer);
    multiply_by_roots_(result, *x, exponent.fraction);
    if (has_negative_power) {
        number_t inverse;
        number_copy(inverse, *_number_one);
        number_div(&inverse, &result);
        number_copy(*x, inverse);
    } else {
        number_copy(*x, result);
    }
}

extern "C" void number_exp(number_t *x) {
    if (!DV_ASSERT(number_is_valid_ptr(x)) && !given(x)) return;
    number_t result;
    number_copy(result, *_number_e);
    number_pow(&result, x);
    number_copy(*x, result);
}
