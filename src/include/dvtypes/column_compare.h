// dvtypes/column_compare.h: comparison, least and greatest value of columns of NUMBER.
//
// Values stand in the order of number_cmp, among them the constants for infinities and tiny values.
//
// ```c
// #include <dvtypes/column_compare.h>
//
// const double values[] = {12.5, -3, 0.75, 99};
// number_t prices[4], limit;
// uint8_t rows[1] = {0};
// for (int i = 0; i < 4; ++i) number_from_double(&prices[i], values[i]);
// number_from_int32(&limit, 1);
// dv_column_t price = {.count = 4, .values = prices, .stride = sizeof(number_t)};
// dv_column_t constant = {.count = 4, .values = &limit, .stride = 0};
// number_column_compare(&price, &constant, DV_COLUMN_GE, rows, NULL);
// printf("%d\n", rows[0]);                                          // 9
// printf("%d\n", (int)number_column_max(&price, NULL, NULL));       // 3
// printf("%d\n", (int)number_column_min(&price, rows, NULL));       // 0
// ```

#ifndef DVTYPES_COLUMN_COMPARE_H
#define DVTYPES_COLUMN_COMPARE_H

#include "dvtypes/column_record.h"
#include "dvtypes/number.h"

#ifdef __cplusplus
extern "C" {
#endif

// Sets bit i of a bitmap where both columns have a value in row i and that of x stands in the relation to
// that of y; clears it where not, or where the row fails. Bits behind the last row stay as they are.
//
//   relation  one of the six; else the assertion "is_relation(relation)", and nothing is done
//   rows      (count + 7) / 8 bytes
//
// Fails with -5120  (dvtypes/column_number.h)
DV_EXPORT void number_column_compare(const dv_column_t *x, const dv_column_t *y,
                                     dv_column_relation_e relation, uint8_t *rows,
                                     dv_column_faults_t *faults);

// The first row that has the least, or the greatest, of all values; -1 where no row has a value.
//
//   rows    NULL, or a bitmap: bit i tells whether row i is looked at
//
// Fails with -5120  as above; rows that fail are left out
DV_EXPORT int64_t number_column_min(const dv_column_t *x, const uint8_t *rows, dv_column_faults_t *faults);
DV_EXPORT int64_t number_column_max(const dv_column_t *x, const uint8_t *rows, dv_column_faults_t *faults);

#ifdef __cplusplus
}  // extern "C"
#endif

#endif  // DVTYPES_COLUMN_COMPARE_H
