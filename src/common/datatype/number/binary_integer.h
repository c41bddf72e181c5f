// Unsigned binary integers that hold any NUMBER's integer part: of exponents of powers, and of hexadecimal
// digits.

#ifndef DV_BINARY_INTEGER_H
#define DV_BINARY_INTEGER_H

#include "number_limb.h"

namespace dv::impl {

struct binary_integer_t {
    static constexpr int WORDS = 7;  // 100^63 < 2^419
    uint64_t word[WORDS];            // the least significant first

    // this = this * factor + addend, modulo 2^448.
    constexpr void multiply_add(uint64_t factor, uint64_t addend) {
        uint128_t carry = addend;
        for (uint64_t &w : word) {
            carry += uint128_t{w} * factor;
            w = static_cast<uint64_t>(carry);
            carry >>= 64;
        }
    }

    constexpr bool bit(int place) const { return (word[place / 64] >> (place % 64) & 1) != 0; }

    constexpr int highest_bit() const {  // -1: none
        for (int i = WORDS - 1; i >= 0; --i) {
            if (word[i] != 0) return 64 * i + 63 - std::countl_zero(word[i]);
        }
        return -1;
    }
};

}  // namespace dv::impl

#endif  // DV_BINARY_INTEGER_H
