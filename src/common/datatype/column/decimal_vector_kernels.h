// The kernels of decimals in vectors; what each does is told in decimal_kernels.h.

#include "int64_lanes.h"

namespace dv::impl::DV_LEVEL {
namespace {

// A bit for each of 64 rows, from those of the lanes at each place.
template <typename Test>
inline uint64_t bits_of_64(Test test) {
    uint64_t bits = 0;
    for (int i = 0; i < 64; i += LANES) bits |= test(8 * i) << i;
    return bits;
}

// With the lower end of the interval at the lowest number of 64 bits, a signed comparison tells.
void within(const char *values, int64_t count, uint64_t low, uint64_t width, uint64_t flip, uint64_t *bits) {
    const int64_t whole = count & ~int64_t{63};
    const lanes_t base = in_each_lane(low + (uint64_t{1} << 63));
    const lanes_t top = in_each_lane(width ^ uint64_t{1} << 63);
    for (const char *const end = values + 8 * whole; values != end; values += 64 * 8) {
        fetch_ahead(values, 64 * 8);
        const uint64_t above = bits_of_64(
            [=](int place) { return are_greater(subtract_lanes(load_lanes(values + place), base), top); });
        *bits++ = ~above ^ flip;
    }
    plain::within(values, count - whole, low, width, flip, bits);
}

void less(const char *x, const char *y, int64_t count, uint64_t flip, uint64_t *bits) {
    const int64_t whole = count & ~int64_t{63};
    for (const char *const end = x + 8 * whole; x != end; x += 64 * 8, y += 64 * 8) {
        *bits++ = flip ^ bits_of_64([=](int place) {
                      return are_greater(load_lanes(y + place), load_lanes(x + place));
                  });
    }
    plain::less(x, y, count - whole, flip, bits);
}

void equal(const char *x, const char *y, int64_t count, uint64_t flip, uint64_t *bits) {
    const int64_t whole = count & ~int64_t{63};
    for (const char *const end = x + 8 * whole; x != end; x += 64 * 8, y += 64 * 8) {
        *bits++ = flip ^ bits_of_64([=](int place) {
                      return are_equal(load_lanes(x + place), load_lanes(y + place));
                  });
    }
    plain::equal(x, y, count - whole, flip, bits);
}

// What lanes add up to: their sum modulo 2^64, and that of their upper halves. The sum of the lower halves is
// the difference, which is below 2^64.
struct lane_sums_t {
    lanes_t whole, upper;

    void add(lanes_t x) {
        whole = add_lanes(whole, x);
        upper = add_lanes(upper, upper_halves(x));
    }
    void take(word_sums_t &sums) const {
        uint64_t whole_words[LANES], upper_words[LANES];
        memcpy(whole_words, &whole, sizeof whole);
        memcpy(upper_words, &upper, sizeof upper);
        for (int i = 0; i < LANES; ++i) {
            const uint64_t lower = whole_words[i] - (upper_words[i] << 32);
            const uint128_t total = (uint128_t{upper_words[i]} << 32) + lower;
            (i % 2 == 0 ? sums.even : sums.odd) += total;
        }
    }
};

word_sums_t sum(const char *words, int64_t count, uint64_t even_bias, uint64_t odd_bias) {
    constexpr int64_t step = 4 * LANES;
    uint64_t bias_words[LANES];
    for (int i = 0; i < LANES; ++i) bias_words[i] = i % 2 == 0 ? even_bias : odd_bias;
    const lanes_t bias = load_lanes(bias_words);
    lane_sums_t sums[4] = {};
    const int64_t whole = count - count % step;
    for (const char *const end = words + 8 * whole; words != end; words += 8 * step) {
        fetch_ahead(words, 8 * step);
        for (int i = 0; i < 4; ++i) {
            sums[i].add(exclusive_or(load_lanes(words + int64_t{8} * LANES * i), bias));
        }
    }
    word_sums_t total = plain::sum(words, count - whole, even_bias, odd_bias);
    for (const lane_sums_t &s : sums) s.take(total);
    return total;
}

uint128_t sum_valid(const char *values, const uint64_t *valid, int64_t blocks, uint64_t bias) {
    const lanes_t biases = in_each_lane(bias);
    lane_sums_t sums[2] = {};
    for (int64_t block = 0; block < blocks; ++block, values += 64 * 8) {
        fetch_ahead(values, 64 * 8);
        const uint64_t bits = valid[block];
        for (int i = 0; i < 64; i += LANES) {
            const lanes_t value = exclusive_or(load_lanes(values + 8 * i), biases);
            sums[i / LANES % 2].add(keep_lanes(value, bits >> i));
        }
    }
    word_sums_t total = {0, 0};
    for (const lane_sums_t &s : sums) s.take(total);
    return total.even + total.odd;
}

// A lane is left where its sign in `overflow` is set, or that of limit - result or limit + result: neither of
// these wraps around to a sign that is clear.
inline uint64_t store_within(lanes_t result, lanes_t overflow, lanes_t limit, char *z) {
    const lanes_t beyond = either(overflow, either(subtract_lanes(limit, result), add_lanes(limit, result)));
    store_lanes_unless(beyond, z, result);
    return top_bits_of(beyond);
}

template <typename Combine>
inline uint64_t combine(const char *x, const char *y, int64_t y_step, char *z, int64_t limit,
                        Combine combine_lanes) {
    const lanes_t limits = in_each_lane(static_cast<uint64_t>(limit));
    uint64_t constant;
    memcpy(&constant, y, sizeof constant);
    const lanes_t same = in_each_lane(constant);
    return bits_of_64([=](int place) {
        const lanes_t a = load_lanes(x + place);
        const lanes_t b = y_step == 0 ? same : load_lanes(y + place);
        return combine_lanes(a, b, limits, z + place);
    });
}

// A sum is out of range where both operands have another sign than it, a difference where the first has, and
// they differ.
uint64_t add(const char *x, const char *y, int64_t y_step, char *z, int64_t limit) {
    return combine(x, y, y_step, z, limit, [](lanes_t a, lanes_t b, lanes_t limits, char *to) {
        const lanes_t result = add_lanes(a, b);
        return store_within(result, both(exclusive_or(a, result), exclusive_or(b, result)), limits, to);
    });
}

uint64_t subtract(const char *x, const char *y, int64_t y_step, char *z, int64_t limit) {
    return combine(x, y, y_step, z, limit, [](lanes_t a, lanes_t b, lanes_t limits, char *to) {
        const lanes_t result = subtract_lanes(a, b);
        return store_within(result, both(exclusive_or(a, b), exclusive_or(a, result)), limits, to);
    });
}

constexpr decimal_kernels_t kernels = {within, less, equal, sum, sum_valid, add, subtract};

}  // namespace
}  // namespace dv::impl::DV_LEVEL
