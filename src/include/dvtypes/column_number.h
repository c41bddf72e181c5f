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
//
// Columns of texts and of machine numbers lie as column_record.h says; those of machine numbers always by
// stride, and at any address.
//
// ```c
// char prices[] = "12.50n/a99.95";
// int32_t begins[] = {0, 5, 8, 13};
// number_t values[3];
// int32_t codes[3];
// dv_column_t texts = {3, prices, 0, begins, 13, NULL, 0};
// dv_column_t numbers = {3, values, sizeof *values, NULL, 0, NULL, 0};
// dv_column_faults_t faults = {.codes = codes};
// number_column_from_text(&texts, &numbers, &faults);
// printf("row %d: %d\n", (int)faults.first, codes[1]);              // row 1: -5074
//
// char shown[3][12];
// dv_column_t lines = {3, shown, sizeof *shown, NULL, sizeof *shown, NULL, 0};
// number_column_to_text_fmt(&numbers, 8, "FM990.00", &lines, &faults);
// printf("%s %d %s\n", shown[0], values[1].size, shown[2]);        // 12.50 0 99.95
// ```

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
// Fails with -5068, -5069  the result is beyond the range of NUMBER    -5070  x / 0, and the remainder of
// number_rem by 0; that of number_mod is x
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

// ---------------------------------------------------------------------------------------------------------
// Sign, rounding, precision and scale
// ---------------------------------------------------------------------------------------------------------

// result = -x, |x|.
DV_EXPORT void number_column_negate(const dv_column_t *x, dv_column_t *result, dv_column_faults_t *faults);
DV_EXPORT void number_column_abs(const dv_column_t *x, dv_column_t *result, dv_column_faults_t *faults);

// x rounded to decimal places, as number_round_to_places does; with NUMBER_RMODE_TRUNC truncated.
//
// Fails with -5068  the result leaves the range
DV_EXPORT void number_column_round_to_places(const dv_column_t *x, int64_t places, int rmode,
                                             dv_column_t *result, dv_column_faults_t *faults);

// x made to fit NUMBER(prec, scale), as number_force_prec_scale does.
//
// Fails with -5111  more than prec - scale integer digits remain     -5068  a carry leaves the range
DV_EXPORT void number_column_force_prec_scale(const dv_column_t *x, int prec, int scale, dv_column_t *result,
                                              dv_column_faults_t *faults);

// ---------------------------------------------------------------------------------------------------------
// Text
// ---------------------------------------------------------------------------------------------------------

// Reads texts as number_from_str does. An empty text is none: it fails with -5074.
//
// Fails with -5074  no number     -5068, -5069  beyond the range
DV_EXPORT void number_column_from_text(const dv_column_t *text, dv_column_t *result,
                                       dv_column_faults_t *faults);

// Writes texts as number_to_str does without a format into a buffer for as many characters as `size` says,
// and a NUL behind a text that is shorter; what lies behind the NUL, within `size`, is unspecified. By
// offsets every text is in normal form, without a NUL.
//
// Fails with -3005, -5067, -5068  as number_to_str, by stride
DV_EXPORT void number_column_to_text(const dv_column_t *x, dv_column_t *result, dv_column_faults_t *faults);

// The same under a model (number_fmt.h), which is compiled once; fmt and fmt_len are those of
// number_from_str_fmt and number_to_str_fmt: the length 0 is that of an empty model. Texts have a NUL as
// above.
//
// Raises, whatever `faults` says:  -5075, -3006  no model
// Fails with -5074, -5068, -5069  from text     -3005  to text, by stride: more than `size` characters
DV_EXPORT void number_column_from_text_fmt(const dv_column_t *text, int fmt_len, const char *fmt,
                                           dv_column_t *result, dv_column_faults_t *faults);
DV_EXPORT void number_column_to_text_fmt(const dv_column_t *x, int fmt_len, const char *fmt,
                                         dv_column_t *result, dv_column_faults_t *faults);

// ---------------------------------------------------------------------------------------------------------
// Machine numbers
// ---------------------------------------------------------------------------------------------------------

// v: a column of int32_t, int64_t or double.
//
// Fails with -5074  an infinity or a NaN     -5068, -5069  beyond the range of NUMBER
DV_EXPORT void number_column_from_int32(const dv_column_t *v, dv_column_t *result,
                                        dv_column_faults_t *faults);
DV_EXPORT void number_column_from_int64(const dv_column_t *v, dv_column_t *result,
                                        dv_column_faults_t *faults);
DV_EXPORT void number_column_from_double(const dv_column_t *v, dv_column_t *result,
                                         dv_column_faults_t *faults);

// result: a column of int32_t, int64_t or double, which are converted as number_to_int32 and the others do.
//
// Fails with -5072  outside the range of the type
DV_EXPORT void number_column_to_int32(const dv_column_t *x, dv_column_t *result, dv_column_faults_t *faults);
DV_EXPORT void number_column_to_int64(const dv_column_t *x, dv_column_t *result, dv_column_faults_t *faults);
DV_EXPORT void number_column_to_double(const dv_column_t *x, dv_column_t *result, dv_column_faults_t *faults);

#ifdef __cplusplus
}  // extern "C"
#endif

#endif  // DVTYPES_COLUMN_NUMBER_H
