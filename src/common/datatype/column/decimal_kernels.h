// Kernels over decimals of 64 bits side by side, and over the words of wider ones.

#ifndef DV_COLUMN_DECIMAL_KERNELS_H
#define DV_COLUMN_DECIMAL_KERNELS_H

#include "vector_level.h"
#include "wide_integer.h"

namespace dv::impl {

// Sums of the words with even and with odd index, each word changed by its bias first.
struct word_sums_t {
    uint128_t even, odd;
};

// The largest count that a kernel sums: sums of upper halves stay below 2^64.
inline constexpr int64_t WORD_SUM_MAX = int64_t{1} << 30;

struct decimal_kernels_t {
    // Bit i % 64 of word i / 64: value i, an int64_t, is within [low, low + width], as unsigned differences;
    // or is not, where flip is all ones.
    void (*within)(const char *values, int64_t count, uint64_t low, uint64_t width, uint64_t flip,
                   uint64_t *bits);
    // The same of two columns: x < y, or x == y.
    void (*less)(const char *x, const char *y, int64_t count, uint64_t flip, uint64_t *bits);
    void (*equal)(const char *x, const char *y, int64_t count, uint64_t flip, uint64_t *bits);
    // Sums of an even count of words; a bias is exclusive-ored to each of them.
    word_sums_t (*sum)(const char *words, int64_t count, uint64_t even_bias, uint64_t odd_bias);
    // The sum of those of 64 `blocks` values for which a bit is set, each changed by the bias first.
    uint128_t (*sum_valid)(const char *values, const uint64_t *valid, int64_t blocks, uint64_t bias);
    // z = x + y and x - y of 64 rows, y being one value where its step is 0. Returns the rows that were not
    // done because a magnitude may be above the limit.
    uint64_t (*add)(const char *x, const char *y, int64_t y_step, char *z, int64_t limit);
    uint64_t (*subtract)(const char *x, const char *y, int64_t y_step, char *z, int64_t limit);
};

// The kernels of the level in use.
const decimal_kernels_t &decimal_kernels();

}  // namespace dv::impl

#endif  // DV_COLUMN_DECIMAL_KERNELS_H
