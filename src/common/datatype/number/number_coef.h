// Arithmetic on coefficients: eight base-100 digits to a 64-bit word, one per byte.
//
// Addition adds 256 - 100 to every digit of one operand first, so that a digit sum of 100 or more carries
// into the next byte just where the decimal carry must go, and the machine's own carry chain does the work
// across bytes and words; the bytes that did not carry give the 156 back. This is packed-decimal addition
// (add 6 to every digit first) in base 100. Subtraction adds the complement to 99 and one.
//
// Signs, digit counts and exponents of operands are hard to predict, so what depends on them is selected by
// masks; branches are for what is rare.

#ifndef DV_NUMBER_COEF_H
#define DV_NUMBER_COEF_H

#include "../machine.h"
#include "number_layout.h"

#if DV_HAS_X86_64
#include "../intrinsics.h"
#endif

namespace dv::impl {

inline constexpr uint64_t COEF_TOP_BITS = in_each_byte(0x80);
inline constexpr uint64_t COEF_CARRY_GAP = 256 - 100;  // what a byte holds more than a base-100 digit

// sum = a + b + carry; returns the carry. Carries are 0 or 1.
constexpr uint64_t add_words(uint64_t a, uint64_t b, uint64_t carry, uint64_t &sum) {
#if DV_HAS_X86_64
    if (!std::is_constant_evaluated()) {
        unsigned long long machine_sum = 0;
        carry = _addcarry_u64(static_cast<unsigned char>(carry), a, b, &machine_sum);
        sum = machine_sum;
        return carry;
    }
#endif
    const bool first = __builtin_add_overflow(a, b, &sum);
    const bool second = __builtin_add_overflow(sum, carry, &sum);
    return static_cast<uint64_t>(first | second);
}

// a + b + carry of one word; carry in and out is 0 or 1.
constexpr uint64_t add_digit_words(uint64_t a, uint64_t b, uint64_t &carry) {
    const uint64_t biased = a + in_each_byte(COEF_CARRY_GAP);  // bytes of at most 255: nothing carries yet
    uint64_t sum = 0;
    carry = add_words(biased, b, carry, sum);
    const uint64_t carried = ((biased & b) | ((biased | b) & ~sum)) & COEF_TOP_BITS;  // out of each byte
    return sum - ((carried ^ COEF_TOP_BITS) >> 7) * COEF_CARRY_GAP;
}

// a += b + carry; returns the carry out of the first digit, 0 or 1.
template <int Words>
constexpr uint64_t coef_add(coef_t<Words> &a, const coef_t<Words> &b, uint64_t carry = 0) {
    for (int i = Words - 1; i >= 0; --i) a.word[i] = add_digit_words(a.word[i], b.word[i], carry);
    return carry;
}

// 99 less every digit where the mask is all ones: adding that and a carry of one subtracts.
template <int Words>
constexpr void coef_complement_if(uint64_t mask, coef_t<Words> &a) {
    for (uint64_t &word : a.word) word = ((word ^ mask) - mask) + (in_each_byte(99) & mask);
}

template <int Words>
constexpr bool coef_is_zero(const coef_t<Words> &a) {
    uint64_t any = 0;
    for (const uint64_t word : a.word) any |= word;
    return any == 0;
}

// Digit at `place` (0 is the most significant), 0 past the end.
template <int Words>
constexpr int coef_digit(const coef_t<Words> &a, int place) {
    if (place < 0 || place >= COEF_WORD_DIGITS * Words) return 0;
    return static_cast<uint8_t>(a.word[place / 8] >> (56 - 8 * (place % 8)));
}

// Moves the digits `places` (0..7) to the right; what leaves the last word is dropped.
template <int Words>
constexpr void coef_shift_within_word(coef_t<Words> &a, int places) {
    const int bits = 8 * places;
    for (int i = Words - 1; i > 0; --i) {
        a.word[i] = a.word[i] >> bits | a.word[i - 1] << 1 << (63 - bits);  // in two steps: bits may be 0
    }
    a.word[0] >>= bits;
}

// The same for 0..7 and for 0..23 places; few are the more likely.
constexpr void coef_shift_right(short_coef &a, int places) { coef_shift_within_word(a, places); }

constexpr void coef_shift_right(long_coef &a, int places) {
    if (places >= COEF_WORD_DIGITS) [[unlikely]] {
        const bool by_16 = places >= 2 * COEF_WORD_DIGITS;
        a = {{0, by_16 ? 0 : a.word[0], by_16 ? a.word[0] : a.word[1]}};
    }
    coef_shift_within_word(a, static_cast<int>(static_cast<unsigned>(places) % COEF_WORD_DIGITS));
}

// Moves the digits to the left until the first is not 0; returns by how many places. a is not zero.
constexpr int coef_normalize(short_coef &a) {
    const int places = leading_zero_bytes(a.word[0]);
    a.word[0] <<= 8 * places;
    return places;
}

constexpr int coef_normalize(long_coef &a) {
    int places = 0;
    for (; places < 16 && a.word[0] == 0; places += 8) a = {{a.word[1], a.word[2], 0}};
    const int rest = leading_zero_bytes(a.word[0]);
    const int bits = 8 * rest;
    a.word[0] = a.word[0] << bits | a.word[1] >> 1 >> (63 - bits);
    a.word[1] = a.word[1] << bits | a.word[2] >> 1 >> (63 - bits);
    a.word[2] <<= bits;
    return places + rest;
}

// Puts a carry of 0 or 1 in front of the first digit; if it is 1, the digits move right and the last is lost.
template <int Words>
constexpr void coef_push_carry(coef_t<Words> &a, uint64_t carry) {
    coef_shift_within_word(a, static_cast<int>(carry));
    a.word[0] |= carry << 56;
}

// Keeps the first `count` digits and makes the others 0.
template <int Words>
constexpr void coef_keep(coef_t<Words> &a, int count) {
    for (int i = 0; i < Words; ++i) a.word[i] &= leading_digits_mask(count, COEF_WORD_DIGITS * i);
}

}  // namespace dv::impl

#endif  // DV_NUMBER_COEF_H
