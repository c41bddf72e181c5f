// The interchange byte format: the record's own shape with other digit bytes.
//
//                      record     interchange
//   positive digit d   128 + d    d + 1          [1, 100]
//   negative digit d   128 - d    101 - d        [2, 101]
//   terminator         0xF0       102
//
// Bytes outside their range are asserted and mapped all the same, modulo 256.

#include <algorithm>

#include "../error.h"
#include "number_layout.h"

using namespace dv::impl;

namespace {

constexpr uint8_t _positive_shift = 127;  // record byte less interchange byte
constexpr uint8_t _negative_shift = 27;
constexpr uint8_t _terminator = 102;

uint8_t shifted_(int byte) { return static_cast<uint8_t>(byte); }

}  // namespace

// The assertions' texts are a contract; they name bytes as byte i of the record, so x->coef[i - 2].
extern "C" void number_to_oracle_format(const number_t *x, uint8_t *y) {
    if (!DV_ASSERT(number_is_valid_ptr(x) && number_is_nonnull_ptr(y)) && !given(x, y)) return;
    const int size = std::min<int>(x->size, NUMBER_SIZE_MAX);
    y[0] = x->size;
    y[1] = x->signexp;
    if (size == 0) return;
    if (!number_is_negative(*x)) {
        for (int i = 2; i <= size; ++i) {
            DV_ASSERT(x->coef[i - 2] >= 128 && x->coef[i - 2] <= 227);
            y[i] = shifted_(x->coef[i - 2] - _positive_shift);
        }
        return;
    }
    int i = 2;
    for (; i < size; ++i) {
        DV_ASSERT(x->coef[i - 2] >= 29 && x->coef[i - 2] <= 128);
        y[i] = shifted_(x->coef[i - 2] - _negative_shift);
    }
    if (i > size) return;  // a sign and nothing behind it
    DV_ASSERT(x->coef[i - 2] == NUMBER_TOP);
    y[i] = _terminator;
}

extern "C" void number_from_oracle_format(number_t *x, const uint8_t *y) {
    if (!DV_ASSERT(number_is_nonnull_ptr(x) && number_is_nonnull_ptr(y))) return;
    x->size = y[0];
    x->signexp = y[1];
    if (y[0] == 0) return;
    if (!number_is_negative(*x)) {
        const int size = std::min<int>(y[0], NUMBER_SIZE_MAX);
        for (int i = 2; i <= size; ++i) {
            DV_ASSERT(y[i] >= 1 && y[i] <= 100);
            x->coef[i - 2] = shifted_(y[i] + _positive_shift);
        }
        return;
    }
    int i = 2;
    for (const int size = std::min<int>(y[0], NUMBER_SIZE_MAX - 1); i <= size; ++i) {
        DV_ASSERT(y[i] >= 2 && y[i] <= 101);
        x->coef[i - 2] = shifted_(y[i] + _negative_shift);
    }
    DV_ASSERT(y[i] == 102);
    x->coef[i - 2] = NUMBER_TOP;
}
