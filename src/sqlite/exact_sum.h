// Sums of NUMBERs without rounding: the state of dv_sum and dv_avg.
//
// A NUMBER lies on a grid: its base-100 digits have weights from 100^-84 (twentieth digit of the smallest
// exponent) to 100^62. The sum is kept on that grid as a fixed-point integer of 38 signed limbs in base 10^8,
// four base-100 digits each, so that a sum does not depend on the order of its terms, what was added can be
// taken out again, and nothing is rounded but the result, once.

#ifndef DV_EXACT_SUM_H
#define DV_EXACT_SUM_H

#include "dvtypes/number.h"

namespace dv::impl {

inline constexpr int EXACT_SUM_LIMBS = 38;  // 37 hold every digit of a NUMBER, the last takes the carries

// All 0 is the empty sum. A limb may have any sign and leave its base until carries are taken.
struct exact_sum {
    int64_t limbs[EXACT_SUM_LIMBS];  // least significant first
    int64_t changes;                 // since the last carry
};

// sum += x, sum -= x. x is a canonical record, not a NULL value.
void exact_sum_add(exact_sum &sum, const number_t &x);
void exact_sum_sub(exact_sum &sum, const number_t &x);

// The sum divided by `divisor` (1 or more), rounded half up to 38 digits; the division itself is exact to the
// last digit that the rounding looks at.
// Raises -5068, -5069 when the result is beyond the range of NUMBER.
number_t exact_sum_quotient(const exact_sum &sum, int64_t divisor);

}  // namespace dv::impl

#endif  // DV_EXACT_SUM_H
