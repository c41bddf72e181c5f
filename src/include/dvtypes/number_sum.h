// dvtypes/number_sum.h: exact sums of NUMBERs.
//
// A sum is kept on the grid on which every NUMBER lies, so that no addition rounds: no order of the terms
// changes a sum, what was added can be taken out again, sums of parts merge into the sum of the whole, and
// the result alone is rounded, once.
//
// Functions allocate nothing and may be called from any thread on sums that no other thread is writing. A
// NULL pointer is reported by an assertion ("sum != NULL", "other != NULL", "number_is_valid_ptr(x)"); the
// call then does nothing.

#ifndef DVTYPES_NUMBER_SUM_H
#define DVTYPES_NUMBER_SUM_H

#include "dvtypes/number.h"

#ifdef __cplusplus
extern "C" {
#endif

enum { NUMBER_SUM_LIMBS = 38 };  // 37 hold every digit of a NUMBER, the last takes the carries

// All bytes 0 is the empty sum. What else the members hold is the library's: a sum may be copied, and holds
// for one build of the library, not for a disk.
typedef struct number_sum_s {
    int64_t limbs[NUMBER_SUM_LIMBS];
    int64_t changes;
} number_sum_t;

// sum += x, sum -= x. A NULL value changes nothing. x may be any record of at most 22 bytes behind its size;
// one whose bytes are no digits adds an unspecified number.
DV_EXPORT void number_sum_add(number_sum_t *sum, const number_t *x);
DV_EXPORT void number_sum_sub(number_sum_t *sum, const number_t *x);

// sum += other, where each was made by these functions. The two may be the same.
DV_EXPORT void number_sum_merge(number_sum_t *sum, const number_sum_t *other);

// x = sum / divisor, rounded half up to 38 digits: exact to the last digit that the rounding looks at. With
// the divisor 1 it is the sum, with the count of the terms their average.
//
//   divisor  1 or more; asserts "divisor > 0", and x is then left as it is
//
// Raises  -5068, -5069  the result is beyond the range of NUMBER
DV_EXPORT void number_sum_quotient(const number_sum_t *sum, int64_t divisor, number_t *x);

#ifdef __cplusplus
}  // extern "C"
#endif

#endif  // DVTYPES_NUMBER_SUM_H
