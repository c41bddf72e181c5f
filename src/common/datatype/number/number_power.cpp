// Power and exponential: squaring and repeated square roots.
//
// The exponent is a binary number: its integer part is read from the highest bit down, squaring the result
// and multiplying by the base (Knuth, The Art of Computer Programming, vol. 2, 4.6.3); behind the point the
// n-th bit stands for the n-th repeated square root of the base. Every square, product, root and quotient is
// a NUMBER operation with its own rounding to 38 digits, and 160 bits behind the point count; so the steps
// fix every digit of the result, and what is left out here is only what cannot change it. Roots that have
// come close to 1, which is half of them, need no more than a shift.

#include "binary_integer.h"
#include "binary_number.h"

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

bool is_one(const number_t &x) {
    return x.size == _number_one->size && memcmp(&x, _number_one, _number_one->size + size_t{1}) == 0;
}

bool bit_at_(const uint32_t (&fraction)[5], int bit) {
    return (fraction[bit / 32] >> (31 - bit % 32) & 1) != 0;
}

// The same steps on records, which may hold anything.
void multiply(number_t &x, const number_t &y) { number_mul(&x, &y); }
void take_root(number_t &x) { number_sqrt(&x); }

// Goes on from the power of base for the leading bits of an exponent's integer, with the `bits` that follow.
template <typename Value>
void raise_to_integer_(Value &power, const Value &base, const binary_integer_t &n, int bits) {
    while (--bits >= 0) {
        multiply(power, Value{power});
        if (n.bit(bits)) multiply(power, base);
    }
}

// Multiplies by base^fraction; `root` is base. Roots behind the last bit that is 1 would not be used, and
// once the root is 1 neither it nor its products change.
template <typename Value, typename Root>
void multiply_by_roots_(Value &power, Root root, const uint32_t (&fraction)[5]) {
    const int length = fraction_length_(fraction);
    for (int bit = 0; bit < length && !is_one(root); ++bit) {
        take_root(root);
        if (bit_at_(fraction, bit)) multiply(power, root);
    }
}

// The power for the leading bits of n, which is not 0, that a short base has as an exact integer below 2^126:
// it takes them off `bits`.
binary_number_t begin_power_(const number_t &x, const binary_number_t &base, const binary_integer_t &n,
                             int &bits) {
    constexpr int width_max = 126;
    const number_head_t head = read_head(x);
    if (head.count > COEF_WORD_DIGITS) return base;
    const uint64_t integer =
        limb_from_digits(load_coef<1>(x, head).word[0] >> (8 * (COEF_WORD_DIGITS - head.count)));
    const int unit = 2 * (head.exponent - head.count);  // x is integer x 10^unit
    uint64_t sign = head.sign;
    uint128_t power = integer;
    int exponent = unit;
    for (; bits > 0 && power >> 64 == 0 && exponent / 1000 == 0; --bits) {
        const bool is_odd = n.bit(bits - 1);
        const uint64_t factor = is_odd ? integer : 1;
        const auto half = static_cast<uint64_t>(power);
        if (2 * std::bit_width(half) + std::bit_width(factor) > width_max) break;
        power = uint128_t{half} * half * factor;
        exponent = 2 * exponent + (is_odd ? unit : 0);
        sign = is_odd ? head.sign : 0;
    }
    return binary_from_integer(sign, power, exponent);
}

void raise_record_(number_t &power, const number_t &base, const exponent_t &exponent) {
    number_copy(power, *_number_one);
    const int bits = exponent.integer.highest_bit();
    if (bits >= 0) number_mul(&power, &base);
    raise_to_integer_(power, base, exponent.integer, bits);
    number_t root;
    number_copy(root, base);
    multiply_by_roots_(power, root, exponent.fraction);
}

void raise_(number_t &power, const number_t &x, const exponent_t &exponent) {
    binary_number_t base;
    if (!read_binary(base, x)) [[unlikely]]
        return raise_record_(power, x, exponent);
    binary_number_t result = BINARY_NUMBER_ONE;
    int bits = exponent.integer.highest_bit();
    if (bits >= 0) result = begin_power_(x, base, exponent.integer, bits);
    raise_to_integer_(result, base, exponent.integer, bits);
    if (exponent.has_fraction) multiply_by_roots_(result, begin_roots(base), exponent.fraction);
    store_binary(power, result);
}

}  // namespace

extern "C" void number_pow(number_t *x, const number_t *y) {
    if (!DV_ASSERT(number_is_valid_ptr(x) && number_is_valid_ptr(y)) && !given(x, y)) return;
    if (is_one(*y)) return;
    const bool has_negative_power = !number_is_zero(*y) && number_is_negative(*y);
    if (number_is_zero(*x)) {
        if (has_negative_power) raise(DV_ERR_NUMBER_DOMAIN);
        return;
    }
    const exponent_t exponent = read_exponent_(*y);
    if (number_is_negative(*x) && exponent.has_fraction) raise(DV_ERR_NUMBER_DOMAIN);

    number_t result;
    raise_(result, *x, exponent);
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
