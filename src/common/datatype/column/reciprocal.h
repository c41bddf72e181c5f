// Division of a bounded integer by a constant, as a product and a shift: for vectors, which have no division.

#ifndef DV_COLUMN_RECIPROCAL_H
#define DV_COLUMN_RECIPROCAL_H

#include <cstdint>

namespace dv::impl {

struct reciprocal_t {
    uint32_t factor;
    int shift;
};

// x / divisor is x * factor >> shift for x up to `most`. The factor is 2^shift / divisor rounded up; what
// that is too much, times x, must stay below 2^shift.
constexpr reciprocal_t reciprocal_of(uint64_t divisor, uint64_t most) {
    int shift = 0;
    for (;; ++shift) {
        const uint64_t power = uint64_t{1} << shift;
        const uint64_t factor = (power + divisor - 1) / divisor;
        if (most * (factor * divisor - power) < power) return {static_cast<uint32_t>(factor), shift};
    }
}
static_assert(reciprocal_of(10, 99).factor == 103 && reciprocal_of(10, 99).shift == 10);

}  // namespace dv::impl

#endif  // DV_COLUMN_RECIPROCAL_H
