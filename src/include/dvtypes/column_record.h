// dvtypes/column_record.h: columns, the values of many rows side by side, and what all operations on them
// share.
//
// The operations themselves are in the headers that dvtypes/column.h lists. Each does to every row what the
// function for one value does to one, with the same bytes as the result, and reads and writes each byte once.
//
// A column describes memory of the caller; nothing is copied, kept or allocated. Its values lie
//   - by stride: row i at values + i * stride. The distance may be larger than the value, so that a column
//     can be a member of an array of structs. With the stride 0 every row has the same value: a constant;
//   - by offsets: row i is the bytes [offsets[i], offsets[i + 1]) of values. So lie texts and, less their
//     size byte, NUMBERs. This is the layout of variable-length values in the Arrow columnar format.
// All values but texts, NUMBERs and bytes lie by stride. Which rows have a value tells a validity bitmap, as
// there: least significant bit first, 1 for a value.
//
// Rows without a value. A row of a result has a value where every operand has one and the operation did not
// fail; a result that has a bitmap gets it written. The bytes of a row without a value mean nothing and may
// be overwritten, but for NUMBER records, which become NULL values (size 0), and results by offsets, which
// become empty. A NUMBER record that is a NULL value is a row without a value, too, whatever the bitmap says.
//
// Failures. A row that fails has no value in the result, and changes no other row. What failed is told in a
// dv_column_faults_t; without one, or where it says so, the first failing row raises what the function for
// one value raises, and the rows behind it are left undone.
//
// In place. A result may be one of the operands: the same values, stride and bitmap. Any other overlap of the
// result with an operand, or of two results, gives unspecified bytes.
//
// Hostile columns. Of offsets and bytes nothing is believed: a row whose offsets run backwards or leave the
// `size` bytes of values fails with -5120. That the arrays themselves have the lengths that count, stride and
// size tell is up to the caller.
//
// A NULL pointer, columns of different counts, and one by offsets where it cannot be, are reported by an
// assertion; the call then does nothing.
// All functions may be called from any thread, on columns that no other thread is writing.

#ifndef DVTYPES_COLUMN_RECORD_H
#define DVTYPES_COLUMN_RECORD_H

#include "dvtypes/base.h"

#ifdef __cplusplus
extern "C" {
#endif

typedef struct dv_column_s {
    int64_t count;     // rows, 0 or more
    void *values;      // of operands only read
    int64_t stride;    // by stride: bytes from one row's value to the next's
    int32_t *offsets;  // NULL: by stride; else count + 1 offsets into values
    int64_t size;      // by offsets: bytes at values, of a result the room there; texts by stride: bytes of a
                       // row's text, which a NUL may end earlier; else not used
    uint8_t *validity;  // NULL: every row has a value; else the bit first_bit + i tells for row i
    int64_t first_bit;  // 0 or more
} dv_column_t;

// What failed in an operation. The members of the first part are the caller's choice.
typedef struct dv_column_faults_s {
    int32_t
        *codes;  // NULL, or for each row its error code, 0 for one that did not fail: written for every row
    uint8_t *rows;  // NULL, or a bitmap of the rows that failed, from bit 0 on: written for every row
    int raises;     // 1: the first failing row raises, with `count`, `first` and `code` filled in

    int64_t count;  // how many rows failed
    int64_t first;  // the first of them, -1 for none
    int code;       // its error code, 0 for none
} dv_column_faults_t;

// ---------------------------------------------------------------------------------------------------------
// Levels
// ---------------------------------------------------------------------------------------------------------

// The instructions that operations on columns use. Results are the same bytes at every level.
typedef enum dv_vector_level_e {
    DV_VECTOR_PLAIN = 0,   // none beyond the language: every machine
    DV_VECTOR_SSE2 = 1,    // every x86-64
    DV_VECTOR_AVX2 = 2,    // AVX2, BMI1, BMI2, LZCNT, POPCNT
    DV_VECTOR_AVX512 = 3,  // AVX-512 F, CD, BW, DQ, VL, IFMA, VBMI, VBMI2
    DV_VECTOR_LEVELS = 4
} dv_vector_level_e;

// The level in use: at first the highest that this machine has.
DV_EXPORT dv_vector_level_e dv_vector_level(void);

// Sets the level for all threads, for tests and measurements; one that the machine lacks becomes the highest
// that it has. Returns the level in use then.
DV_EXPORT dv_vector_level_e dv_vector_set_level(dv_vector_level_e level);

// ---------------------------------------------------------------------------------------------------------
// Bitmaps
// ---------------------------------------------------------------------------------------------------------

// How the value of a row stands to another one, where columns are compared: one bit each for below, equal and
// above.
typedef enum dv_column_relation_e {
    DV_COLUMN_LT = 1,  // below
    DV_COLUMN_EQ = 2,
    DV_COLUMN_LE = 3,
    DV_COLUMN_GT = 4,  // above
    DV_COLUMN_NE = 5,
    DV_COLUMN_GE = 6
} dv_column_relation_e;

// How many rows of a column have a value. Bytes of values are not read, so that NUMBER records that are NULL
// values count as values.
DV_EXPORT int64_t dv_column_count_valid(const dv_column_t *column);

// Writes a bitmap of the rows that have a value, from bit 0 on: (count + 7) / 8 bytes, of which the last bits
// behind the rows become 0. It may be the column's own.
DV_EXPORT void dv_column_copy_validity(const dv_column_t *column, uint8_t *bitmap);

#ifdef __cplusplus
}  // extern "C"
#endif

#endif  // DVTYPES_COLUMN_RECORD_H
