// dvtypes/column_number.h: operations on columns of NUMBER.
//
// What columns are, how failures are told and which columns may be the same stands in
// dvtypes/column_record.h. A column of NUMBERs lies by stride as number_t, or by offsets as the bytes of
// records behind their size byte, signexp first: an empty row is then a NULL value, and one of more than 22
// bytes fails with -5120.
//
// Every operation gives the record that the function for one value gives, and fails with its codes; a result
// by offsets that has no room left fails with -3005. Records whose bytes are no NUMBER give unspecified
// values.

#ifndef DVTYPES_COLUMN_NUMBER_H
#define DVTYPES_COLUMN_NUMBER_H

#include "dvtypes/column_record.h"
#include "dvtypes/number.h"

#ifdef __cplusplus
extern "C" {
#endif

// ---------------------------------------------------------------------------------------------------------
// Arithmetic
// ---------------------------------------------------------------------------------------------------------

// result = x + y, x - y, x * y, x / y, and the remainders of number_mod and number_rem, row by row; a
// constant is a column of stride 0.
//
// Fails with -5068, -5069  the result is beyond the range of NUMBER    -5070  division by zero
DV_EXPORT void number_column_add(const dv_column_t *x, const dv_column_t *y, dv_column_t *result,
                                 dv_column_faults_t *faults);
DV_EXPORT void number_column_sub(const dv_column_t *x, const dv_column_t *y, dv_column_t *result,
                                 dv_column_faults_t *faults);
DV_EXPORT void number_column_mul(const dv_column_t *x, const dv_column_t *y, dv_column_t *result,
                                 dv_column_faults_t *faults);
DV_EXPORT void number_column_div(const dv_column_t *x, const dv_column_t *y, dv_column_t *result,
                                 dv_column_faults_t *faults);
DV_EXPORT void number_column_mod(const dv_column_t *x, const dv_column_t *y, dv_column_t *result,
                                 dv_column_faults_t *faults);
DV_EXPORT void number_column_rem(const dv_column_t *x, const dv_column_t *y, dv_column_t *result,
                                 dv_column_faults_t *faults);

#ifdef __cplusplus
}  // extern "C"
#endif

#endif  // DVTYPES_COLUMN_NUMBER_H
