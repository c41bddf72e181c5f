// The kernels of decimals, at every level.
//
// The plain kernels stand here, the others in decimal_vector_kernels.h.

#include "decimal_kernels.h"

namespace dv::impl::plain {
namespace {

template <typename Word = uint64_t>
Word word_at(const char *words, int64_t i) {
    Word word;
    memcpy(&word, words + i * int64_t{sizeof word}, sizeof word);
    return word;
}

// Bits of rows, collected into words.
template <typename Test>
void collect_bits(int64_t count, uint64_t flip, uint64_t *bits, Test test) {
    for (int64_t begin = 0; begin < count; begin += 64) {
        const int64_t rows = count - begin < 64 ? count - begin : 64;
        uint64_t found = 0;
        for (int64_t i = 0; i < rows; ++i) found |= uint64_t{test(begin + i)} << i;
        *bits++ = found ^ flip;
    }
}

void within(const char *values, int64_t count, uint64_t low, uint64_t width, uint64_t flip, uint64_t *bits) {
    collect_bits(count, flip, bits, [=](int64_t i) { return word_at(values, i) - low <= width; });
}

void less(const char *x, const char *y, int64_t count, uint64_t flip, uint64_t *bits) {
    collect_bits(count, flip, bits,
                 [=](int64_t i) { return word_at<int64_t>(x, i) < word_at<int64_t>(y, i); });
}

void equal(const char *x, const char *y, int64_t count, uint64_t flip, uint64_t *bits) {
    collect_bits(count, flip, bits, [=](int64_t i) { return word_at(x, i) == word_at(y, i); });
}

word_sums_t sum(const char *words, int64_t count, uint64_t even_bias, uint64_t odd_bias) {
    word_sums_t sums = {0, 0};
    for (int64_t i = 0; i < count; i += 2) {
        sums.even += word_at(words, i) ^ even_bias;
        sums.odd += word_at(words, i + 1) ^ odd_bias;
    }
    return sums;
}

uint128_t sum_valid(const char *values, const uint64_t *valid, int64_t blocks, uint64_t bias) {
    uint128_t sum = 0;
    for (int64_t i = 0; i < 64 * blocks; ++i) {
        const uint64_t is_valid = valid[i / 64] >> (i % 64) & 1;
        sum += (word_at(values, i) ^ bias) & (0 - is_valid);
    }
    return sum;
}

template <typename Overflows>
uint64_t combine(const char *x, const char *y, int64_t y_step, char *z, int64_t limit, Overflows overflows) {
    uint64_t left = 0;
    for (int i = 0; i < 64; ++i, x += 8, y += y_step, z += 8) {
        int64_t result;
        if (overflows(word_at<int64_t>(x, 0), word_at<int64_t>(y, 0), &result) || result > limit ||
            result < -limit) {
            left |= uint64_t{1} << i;
        } else {
            memcpy(z, &result, sizeof result);
        }
    }
    return left;
}

uint64_t add(const char *x, const char *y, int64_t y_step, char *z, int64_t limit) {
    return combine(x, y, y_step, z, limit,
                   [](int64_t a, int64_t b, int64_t *c) { return __builtin_add_overflow(a, b, c); });
}

uint64_t subtract(const char *x, const char *y, int64_t y_step, char *z, int64_t limit) {
    return combine(x, y, y_step, z, limit,
                   [](int64_t a, int64_t b, int64_t *c) { return __builtin_sub_overflow(a, b, c); });
}

constexpr decimal_kernels_t kernels = {within, less, equal, sum, sum_valid, add, subtract};

}  // namespace
}  // namespace dv::impl::plain

#define DV_SSE2_KERNELS "decimal_vector_kernels.h"
#define DV_AVX2_KERNELS "decimal_vector_kernels.h"
#define DV_AVX512_KERNELS "decimal_vector_kernels.h"
#include "kernels_by_level.h"

const dv::impl::decimal_kernels_t &dv::impl::decimal_kernels() { return kernels_in_use(); }
