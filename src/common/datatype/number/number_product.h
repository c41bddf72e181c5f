// A running product between multiplications: limbs instead of a record's bytes.
//
// Every product is rounded to 38 digits in the current mode and checked for the range as number_mul does it;
// so a chain of them gives what the same chain of number_mul gives.

#ifndef DV_NUMBER_PRODUCT_H
#define DV_NUMBER_PRODUCT_H

#include "number_result.h"

namespace dv::impl {

struct product_t {
    uint64_t sign;  // all ones for a negative value, else 0
    int exponent;
    record_limbs_t limbs;  // at most 38 digits, the first pair not 0
};

// From a record that is not zero. False: its first digit is 0 or it has more than 38 digits, which no
// canonical record has.
bool read_product(product_t &product, const number_t &x);

// x *= y; raises -5068 and -5069 as number_mul.
void multiply_product(product_t &x, const product_t &y);

inline void store_product(number_t &x, const product_t &product) {
    const record_limbs_t &limbs = product.limbs;
    store_result(
        x, {product.sign, product.exponent, {{limbs.first, limbs.second, limbs.last * 100'000'000}}, false});
}

}  // namespace dv::impl

#endif  // DV_NUMBER_PRODUCT_H
