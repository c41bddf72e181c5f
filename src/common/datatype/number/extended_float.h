// Positive floating-point numbers of 64 significant bits, rounded to nearest even: the same to the last bit
// on every machine. Where long double is such a number, it is used; elsewhere the arithmetic is done in
// integers.

#ifndef DV_NUMBER_EXTENDED_FLOAT_H
#define DV_NUMBER_EXTENDED_FLOAT_H

#include <cmath>

#include "number_limb.h"

namespace dv::impl {

namespace plain {

// significand x 2^exponent, the significand's highest bit set.
class extended_float {
  public:
    constexpr extended_float() = default;
    constexpr explicit extended_float(uint64_t integer)  // not 0
        : significand_(integer << std::countl_zero(integer)), exponent_(-std::countl_zero(integer)) {}

    constexpr extended_float operator*(extended_float by) const {
        const uint128_t product = uint128_t{significand_} * by.significand_;  // [2^126, 2^128)
        const int shift = (product >> 127) != 0 ? 64 : 63;
        const uint128_t unit = uint128_t{1} << shift, rest = product & (unit - 1);
        return {static_cast<uint64_t>(product >> shift), exponent_ + by.exponent_ + shift, rest, unit};
    }

    extended_float operator/(extended_float by) const {
        // Shifted so that the quotient lies in [2^63, 2^64).
        const bool is_below = significand_ < by.significand_;
        const int shift = is_below ? 64 : 63;
        const uint64_t high = is_below ? significand_ : significand_ >> 1;
        const uint64_t low = is_below ? 0 : significand_ << 63;
        const quotient_t parts = divide_128_by_64(high, low, by.significand_);
        return {parts.quotient, exponent_ - by.exponent_ - shift, parts.remainder, by.significand_};
    }

    // Exact wherever long double has 64 bits or more.
    explicit operator long double() const {
        return std::ldexp(static_cast<long double>(significand_), exponent_);
    }

  private:
    // rest / unit of the significand's lowest bit is left over.
    constexpr extended_float(uint64_t significand, int exponent, uint128_t rest, uint128_t unit)
        : significand_(significand), exponent_(exponent) {
        const uint128_t to_next = unit - rest;
        if (rest < to_next || (rest == to_next && (significand & 1) == 0)) return;
        if (++significand_ != 0) return;
        significand_ = uint64_t{1} << 63;
        ++exponent_;
    }

    uint64_t significand_ = 0;
    int exponent_ = 0;
};

}  // namespace plain

#if DV_HAS_EXTENDED_FLOAT
using extended_float = long double;
#else
using extended_float = plain::extended_float;
#endif

}  // namespace dv::impl

#endif  // DV_NUMBER_EXTENDED_FLOAT_H
