// A NUMBER between the steps of a long calculation: its 38 decimal digits as one binary integer.
//
// Products and square roots of such integers are exact in 256 bits, and rounded to 38 digits in the current
// mode and checked for the range as number_mul and number_sqrt do it; so a chain of them gives what the same
// chain on records gives. (Benchmarks pow_integral and pow_fractional.)

#ifndef DV_BINARY_NUMBER_H
#define DV_BINARY_NUMBER_H

#include "number_result.h"

namespace dv::impl {

struct binary_number_t {
    uint64_t sign;     // all ones for a negative value, else 0
    int exponent;      // the value is digits x 10^exponent
    uint128_t digits;  // at least 10^37, below 10^38
};

constexpr uint128_t ten_to(int exponent) {  // 0..38
    uint128_t power = 1;
    for (; exponent > 0; --exponent) power *= 10;
    return power;
}

inline constexpr uint128_t BINARY_NUMBER_MIN = ten_to(NUMBER_PRECISION_MAX - 1);
inline constexpr uint128_t BINARY_NUMBER_END = ten_to(NUMBER_PRECISION_MAX);
inline constexpr binary_number_t BINARY_NUMBER_ONE = {0, 1 - NUMBER_PRECISION_MAX, BINARY_NUMBER_MIN};

constexpr bool is_one(const binary_number_t &x) {
    return x.exponent == BINARY_NUMBER_ONE.exponent && x.digits == BINARY_NUMBER_MIN && x.sign == 0;
}

// From a record that is not zero. False: its first digit is 0, it has more than 38 digits, or bytes that are
// no digits.
bool read_binary(binary_number_t &x, const number_t &record);

// integer x 10^exponent, integer from 1 to 2^126; raises -5068 and -5069 as number_mul.
binary_number_t binary_from_integer(uint64_t sign, uint128_t integer, int exponent);

void store_binary(number_t &record, const binary_number_t &x);

// x *= y; raises -5068 and -5069 as number_mul.
void multiply(binary_number_t &x, const binary_number_t &y);

// A number on the way from root to root. The estimate of its digits makes a way of its own, ahead of them: a
// root then waits for no square root of the machine.
struct binary_root_t : binary_number_t {
    double estimate;  // within 2^-51 of the digits
};

binary_root_t begin_roots(const binary_number_t &x);

// x, which is positive and not 1, becomes its square root.
void take_root(binary_root_t &x);

}  // namespace dv::impl

#endif  // DV_BINARY_NUMBER_H
