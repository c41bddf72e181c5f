// dvtypes/column_decimal.h: columns of decimals in 64 or 128 bits, and operations on them.
//
// What columns are, how failures are told and which columns may be the same stands in
// dvtypes/column_record.h. A decimal is an integer, int64_t or one of 128 bits in the machine's byte order,
// that counts units of 10^-scale: 1250 with the scale 2 is 12.50. This is the layout of decimal64 and
// decimal128 in the Arrow columnar format. Columns of decimals lie by stride, aligned or not; their operands
// may be of both widths.
//
// Nothing is rounded but where it says so, and then half up, once. Of operands the precision is not looked
// at: every integer that their width holds is a value. A result has no more digits than its precision, or the
// row fails:
//
//   -5111  more digits in front of the point than precision - scale (value, precision, scale); -5068 where
//   the
//          value is beyond the range of NUMBER, too
//
// A column that lies by offsets, has another width than 8 or 16 bytes, or a precision or scale outside the
// ranges below, is reported by an assertion ("are_decimals(x, y, result)" and the like); the call then does
// nothing.
//
// ```c
// #include <dvtypes/column_decimal.h>
//
// int64_t prices[] = {1250, 399, -5};  // 12.50, 3.99, -0.05
// int64_t rate[] = {107};              // 1.07, the same for every row
// int64_t results[3];
// dv_decimal_column_t price = {{.count = 3, .values = prices, .stride = 8}, 8, 10, 2};
// dv_decimal_column_t factor = {{.count = 3, .values = rate, .stride = 0}, 8, 3, 2};
// dv_decimal_column_t result = {{.count = 3, .values = results, .stride = 8}, 8, 12, 2};
// dv_decimal_column_mul(&price, &factor, &result, NULL);  // rounded to two decimal places
// printf("%" PRId64 " %" PRId64 " %" PRId64 "\n", results[0], results[1], results[2]);  // 1338 427 -5
//
// dv_decimal_sum_t sum = {0};
// number_t total;
// char text[NUMBER_NORMAL_TEXT_SIZE];
// dv_decimal_column_sum(&result, &sum);
// dv_decimal_sum_quotient(&sum, result.scale, 1, &total);
// number_to_str(&total, sizeof text, text, NULL);
// puts(text);  // 17.6
// ```

#ifndef DVTYPES_COLUMN_DECIMAL_H
#define DVTYPES_COLUMN_DECIMAL_H

#include "dvtypes/column_record.h"
#include "dvtypes/number.h"

#ifdef __cplusplus
extern "C" {
#endif

enum {
    DV_DECIMAL64_PRECISION_MAX = 18,
    DV_DECIMAL128_PRECISION_MAX = 38,
    DV_DECIMAL_SCALE_MIN = -84,
    DV_DECIMAL_SCALE_MAX = 127
};

typedef struct dv_decimal_column_s {
    dv_column_t column;  // by stride
    int bytes;           // of a value: 8 or 16
    int precision;       // decimal digits: 1..18 or 1..38
    int scale;           // of them behind the point: -84..127
} dv_decimal_column_t;

// ---------------------------------------------------------------------------------------------------------
// NUMBER
// ---------------------------------------------------------------------------------------------------------

// Each NUMBER as a decimal of the same value.
//
// Fails with -5072  the value has digits below 10^-scale    -5120  (dvtypes/column_number.h)
DV_EXPORT void dv_decimal_column_from_number(const dv_column_t *x, dv_decimal_column_t *result,
                                             dv_column_faults_t *faults);

// Each decimal as the NUMBER of the same value.
//
// Fails with -5072  39 digits that do not end in 0, of which no NUMBER holds all    -3005  no room by offsets
DV_EXPORT void dv_decimal_column_to_number(const dv_decimal_column_t *x, dv_column_t *result,
                                           dv_column_faults_t *faults);

// ---------------------------------------------------------------------------------------------------------
// Text
// ---------------------------------------------------------------------------------------------------------

// Reads each text as number_from_str does, and rounds it half up to the scale, as number_force_prec_scale.
//
// Fails with -5074, -5068, -5069  as number_from_str does    -5120  offsets
DV_EXPORT void dv_decimal_column_from_text(const dv_column_t *text, dv_decimal_column_t *result,
                                           dv_column_faults_t *faults);

// Writes each decimal with as many digits behind the point as its scale says, and at least one in front:
// "12.50", "-0.05", "7". A negative scale gives zeros: 12 with the scale -2 is "1200". A text by stride ends
// with a NUL where the row has room for one.
//
// Fails with -3005  no room for the text
DV_EXPORT void dv_decimal_column_to_text(const dv_decimal_column_t *x, dv_column_t *text,
                                         dv_column_faults_t *faults);

// Longest texts, without a NUL: 39 digits, sign and point; with a scale above 38 and below 0.
enum { DV_DECIMAL64_TEXT_MAX = 21, DV_DECIMAL128_TEXT_MAX = 41, DV_DECIMAL_TEXT_MAX = 130 };

// ---------------------------------------------------------------------------------------------------------
// Arithmetic
// ---------------------------------------------------------------------------------------------------------

// result = x + y, x - y, row by row. The scale of the result must be that of SQL, the larger one of x and y,
// or larger; else the assertion "has_scale_of_sum(x, y, result)", and nothing is done.
DV_EXPORT void dv_decimal_column_add(const dv_decimal_column_t *x, const dv_decimal_column_t *y,
                                     dv_decimal_column_t *result, dv_column_faults_t *faults);
DV_EXPORT void dv_decimal_column_sub(const dv_decimal_column_t *x, const dv_decimal_column_t *y,
                                     dv_decimal_column_t *result, dv_column_faults_t *faults);

// result = x * y. With the scale of SQL, the sum of both, or a larger one, it is exact; with a smaller one it
// is rounded to that.
DV_EXPORT void dv_decimal_column_mul(const dv_decimal_column_t *x, const dv_decimal_column_t *y,
                                     dv_decimal_column_t *result, dv_column_faults_t *faults);

// result = x with another width, precision and scale, rounded where the scale is smaller.
DV_EXPORT void dv_decimal_column_rescale(const dv_decimal_column_t *x, dv_decimal_column_t *result,
                                         dv_column_faults_t *faults);

// ---------------------------------------------------------------------------------------------------------
// Order
// ---------------------------------------------------------------------------------------------------------

// Sets bit i of the bitmap where both have a value in row i, and that of x stands in the relation to that of
// y; clears it where not. Values are compared, whatever widths and scales they have. Bits behind the last row
// stay. A relation that is none is reported by the assertion "is_relation(relation)".
//
//   rows  (count + 7) / 8 bytes
DV_EXPORT void dv_decimal_column_compare(const dv_decimal_column_t *x, const dv_decimal_column_t *y,
                                         dv_column_relation_e relation, uint8_t *rows);

// ---------------------------------------------------------------------------------------------------------
// Sum
// ---------------------------------------------------------------------------------------------------------

// An exact sum of decimals that all have one scale, which the caller remembers. All bytes 0 is the empty sum.
// It holds 2^63 values at least, and may be copied.
typedef struct dv_decimal_sum_s {
    uint64_t words[3];  // an integer of 192 bits in two's complement, the least significant word first
    int64_t count;      // of the values
} dv_decimal_sum_t;

// Adds all values of a column to a sum. Never fails.
DV_EXPORT void dv_decimal_column_sum(const dv_decimal_column_t *x, dv_decimal_sum_t *sum);

// sum += other. The two may be the same.
DV_EXPORT void dv_decimal_sum_merge(dv_decimal_sum_t *sum, const dv_decimal_sum_t *other);

// x = sum / divisor as a NUMBER, rounded half up to 38 digits: with the divisor 1 the sum, with the count the
// average.
//
//   scale    of the values, -84..127; asserts "is_decimal_scale(scale)"
//   divisor  1 or more; asserts "divisor > 0"
//
// Raises  -5068, -5069  the result is beyond the range of NUMBER
DV_EXPORT void dv_decimal_sum_quotient(const dv_decimal_sum_t *sum, int scale, int64_t divisor, number_t *x);

// Bytes of a packed sum, at most.
enum { DV_DECIMAL_SUM_PACKED_MAX = 11 + 24 };

// The bytes of a sum for a disk or another machine: the same on all machines, and the same for all equal sums
// of equal count and scale.
//
//   byte 0     version, 1
//   byte 1     1: a sum of decimals (bytes of number_total_pack have 0)
//   byte 2     scale, -84..127, in two's complement
//   byte 3     count: eight bytes, the most significant first
//   byte 11..  the integer in two's complement, likewise, in as few bytes as hold it: none for 0
//
//   scale  of the values; asserts "is_decimal_scale(scale)"
//   size   of `bytes`; DV_DECIMAL_SUM_PACKED_MAX bytes hold any sum
//
// Returns how many bytes there are; where `size` is less, nothing is written.
DV_EXPORT int64_t dv_decimal_sum_pack(const dv_decimal_sum_t *sum, int scale, int64_t size, uint8_t *bytes);

// The sum that was packed, and its scale.
//
// Raises  -5121  the bytes are not those of such a sum, of this version: none of `count` values of 128 bits;
//                the sum and the scale are then as they were
DV_EXPORT void dv_decimal_sum_unpack(dv_decimal_sum_t *sum, int *scale, int64_t size, const uint8_t *bytes);

#ifdef __cplusplus
}  // extern "C"
#endif

#endif  // DVTYPES_COLUMN_DECIMAL_H
