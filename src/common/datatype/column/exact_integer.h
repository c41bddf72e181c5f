// Exact sums in work: integers of any sign, of as many 64-bit limbs as they need, times a power of 100.
//
// NUMBERs lie on the grid from 100^-84 to 100^63, their products on that from 100^-168 to 100^126. On the
// larger grid 2^63 products take EXACT_BITS_MAX bits at most; totals keep below that, so the steps between
// two totals, which are below 2^64 times as much, never need more than EXACT_LIMBS_MAX limbs.

#ifndef DV_COLUMN_EXACT_INTEGER_H
#define DV_COLUMN_EXACT_INTEGER_H

#include "../number/number_limb.h"
#include "dvtypes/column_sum.h"

namespace dv::impl {

__extension__ using int128_t = __int128;

inline constexpr int EXACT_WEIGHT_MIN = 2 * (NUMBER_EXPONENT_MIN - NUMBER_DIGITS_MAX);  // -168
inline constexpr int EXACT_BITS_MAX = 8 * DV_TOTAL_MEMORY_MAX - 1;                      // less the sign
inline constexpr int EXACT_LIMBS_MAX = DV_TOTAL_MEMORY_MAX / int{sizeof(uint64_t)} + 4;

inline constexpr int POWERS_OF_100_COUNT = 10;
inline constexpr auto POWERS_OF_100 = [] {
    std::array<uint64_t, POWERS_OF_100_COUNT> powers{1};
    for (size_t i = 1; i < powers.size(); ++i) powers[i] = powers[i - 1] * 100;
    return powers;
}();

struct exact_t {
    int weight;                      // the integer counts units of 100^weight
    int size;                        // limbs, 1 or more
    uint64_t limb[EXACT_LIMBS_MAX];  // two's complement, the least significant first
};

// All ones behind a negative limb, else 0: what may be put behind the last limb.
constexpr uint64_t extension_of(uint64_t limb) {
    return static_cast<uint64_t>(static_cast<int64_t>(limb) >> 63);
}

inline bool is_negative(const exact_t &x) { return extension_of(x.limb[x.size - 1]) != 0; }

inline exact_t exact_of(int128_t value, int weight) {
    exact_t x;
    x.weight = weight;
    x.size = 2;
    x.limb[0] = static_cast<uint64_t>(value);
    x.limb[1] = static_cast<uint64_t>(value >> 64);
    return x;
}

// Appends the limb that a step put out, where it is not what the last one implies.
inline void append_limb(exact_t &x, uint64_t limb) {
    if (limb != extension_of(x.limb[x.size - 1]) && x.size < EXACT_LIMBS_MAX) x.limb[x.size++] = limb;
}

// Leaves out limbs that the one before them implies.
inline void trim(exact_t &x) {
    while (x.size > 1 && x.limb[x.size - 1] == extension_of(x.limb[x.size - 2])) --x.size;
}

// Of a trimmed one.
inline bool is_zero(const exact_t &x) { return x.size == 1 && x.limb[0] == 0; }

// factor: below 2^63
inline void multiply(exact_t &x, uint64_t factor) {
    const uint64_t taken_for_sign = is_negative(x) ? factor : 0;
    uint64_t carry = 0;
    for (int i = 0; i < x.size; ++i) {
        const uint128_t product = uint128_t{x.limb[i]} * factor + carry;
        x.limb[i] = static_cast<uint64_t>(product);
        carry = static_cast<uint64_t>(product >> 64);
    }
    append_limb(x, carry - taken_for_sign);
}

// x += the limbs of another integer of the same weight.
inline void add_limbs(exact_t &x, const uint64_t *limb, int size) {
    for (; x.size < size; ++x.size) x.limb[x.size] = extension_of(x.limb[x.size - 1]);
    const uint64_t x_extension = extension_of(x.limb[x.size - 1]), extension = extension_of(limb[size - 1]);
    uint64_t carry = 0;
    for (int i = 0; i < x.size; ++i) {
        carry = add_words(x.limb[i], i < size ? limb[i] : extension, carry, x.limb[i]);
    }
    append_limb(x, x_extension + extension + carry);
}

inline void negate(exact_t &x) {
    const uint64_t extension = extension_of(x.limb[x.size - 1]);
    uint64_t carry = 1;
    for (int i = 0; i < x.size; ++i) carry = add_words(~x.limb[i], 0, carry, x.limb[i]);
    append_limb(x, ~extension + carry);
}

// x * y, which has as many limbs as both have in all: at most EXACT_LIMBS_MAX.
inline exact_t product_of(exact_t x, exact_t y) {
    const bool negative = is_negative(x) != is_negative(y);
    if (is_negative(x)) negate(x);
    if (is_negative(y)) negate(y);
    exact_t product = {x.weight + y.weight, x.size + y.size, {}};
    for (int i = 0; i < x.size; ++i) {
        uint64_t carry = 0;
        for (int j = 0; j < y.size; ++j) {
            const uint128_t step = uint128_t{x.limb[i]} * y.limb[j] + product.limb[i + j] + carry;
            product.limb[i + j] = static_cast<uint64_t>(step);
            carry = static_cast<uint64_t>(step >> 64);
        }
        product.limb[i + y.size] = carry;
    }
    if (negative) negate(product);
    trim(product);
    return product;
}

// Of x that is not negative. Returns the remainder.
inline uint64_t divide(exact_t &x, uint64_t divisor) {
    uint64_t remainder = 0;
    for (int i = x.size - 1; i >= 0; --i) {
        const quotient_t step = divide_128_by_64(remainder, x.limb[i], divisor);
        x.limb[i] = step.quotient;
        remainder = step.remainder;
    }
    trim(x);
    return remainder;
}

// The same value in units of a lower weight.
inline void lower_weight(exact_t &x, int weight) {
    while (x.weight > weight) {
        const int most = POWERS_OF_100_COUNT - 1;
        const int step = x.weight - weight < most ? x.weight - weight : most;
        multiply(x, POWERS_OF_100[static_cast<size_t>(step)]);
        x.weight -= step;
    }
}

// x /= divisor where nothing remains, of x that is not negative; else false, and x stays.
inline bool divide_exactly(exact_t &x, uint64_t divisor) {
    uint64_t quotient[EXACT_LIMBS_MAX], remainder = 0;
    for (int i = x.size - 1; i >= 0; --i) {
        const quotient_t step = divide_128_by_64(remainder, x.limb[i], divisor);
        quotient[i] = step.quotient;
        remainder = step.remainder;
    }
    if (remainder != 0) return false;
    memcpy(x.limb, quotient, sizeof quotient[0] * static_cast<size_t>(x.size));
    trim(x);
    return true;
}

// The same value in units of the highest weight, 0 for zero, and trimmed.
inline void raise_weight(exact_t &x) {
    trim(x);
    if (is_zero(x)) x.weight = 0;
    if (is_zero(x)) return;
    const bool negative = is_negative(x);
    if (negative) negate(x);
    for (const int step : {4, 1}) {  // a multiple of 100 is one of 4
        const uint64_t multiple_of = uint64_t{1} << 2 * step;
        while (x.limb[0] % multiple_of == 0 && divide_exactly(x, POWERS_OF_100[static_cast<size_t>(step)])) {
            x.weight += step;
        }
    }
    if (negative) negate(x);
    trim(x);
}

// x += y; both change.
inline void add(exact_t &x, exact_t &y) {
    trim(x);
    trim(y);
    if (is_zero(y)) return;
    if (is_zero(x)) x.weight = y.weight;
    lower_weight(x, y.weight);
    lower_weight(y, x.weight);
    add_limbs(x, y.limb, y.size);
}

// Of a trimmed integer in two's complement, less the sign.
inline int bits_of(const exact_t &x) {
    const uint64_t last = x.limb[x.size - 1];
    return 64 * x.size - std::countl_zero(last ^ extension_of(last));
}

// Whether x has at most EXACT_BITS_MAX bits on the grid of all products: whatever its weight is.
inline bool is_within_totals(const exact_t &x) {
    // As many as it has there, or up to three more: 100 is 2^6.6439.
    const int bits = bits_of(x) + (x.weight - EXACT_WEIGHT_MIN) * 6644 / 1000 + 1;
    if (bits <= EXACT_BITS_MAX || bits > EXACT_BITS_MAX + 3) return bits <= EXACT_BITS_MAX;
    exact_t on_grid = x;
    lower_weight(on_grid, EXACT_WEIGHT_MIN);
    trim(on_grid);
    return bits_of(on_grid) <= EXACT_BITS_MAX;
}

// ---------------------------------------------------------------------------------------------------------
// Bytes: two's complement, the most significant first, in as few bytes as hold the integer, none for 0
// ---------------------------------------------------------------------------------------------------------

inline constexpr int LIMB_SIZE = sizeof(uint64_t);

// Writes the bytes of a trimmed integer; returns how many.
inline int pack_integer(const exact_t &x, uint8_t *bytes) {
    if (is_zero(x)) return 0;
    const int size = bits_of(x) / 8 + 1;
    for (int i = 0; i < size; ++i)
        bytes[size - 1 - i] = static_cast<uint8_t>(x.limb[i / LIMB_SIZE] >> 8 * (i % LIMB_SIZE));
    return size;
}

// The integer of `size` bytes, at most those of EXACT_LIMBS_MAX limbs; trimmed if there are no more than it
// needs.
inline exact_t unpack_integer(const uint8_t *bytes, int size) {
    exact_t x = {0, 1, {}};
    if (size == 0) return x;
    x.size = (size - 1) / LIMB_SIZE + 1;
    x.limb[x.size - 1] = extension_of(uint64_t{bytes[0]} << 56);
    for (int i = 0; i < size; ++i) {
        uint64_t &limb = x.limb[i / LIMB_SIZE];
        const int shift = 8 * (i % LIMB_SIZE);
        limb = (limb & ~(uint64_t{0xFF} << shift)) | uint64_t{bytes[size - 1 - i]} << shift;
    }
    return x;
}

}  // namespace dv::impl

#endif  // DV_COLUMN_EXACT_INTEGER_H
