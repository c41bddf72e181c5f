// dvtypes/column_key.h: sort keys of rows, and sorting by them.
//
// A key is a row of bytes of one width for all rows, whose unsigned bytewise order (memcmp) is the order of
// the rows: of one column or, part behind part, of several, each ascending or descending, its rows without a
// value first or last. Keys of a merge join, of an index or of a radix sort are compared without knowing what
// they hold.
//
// ```c
// #include <dvtypes/column_key.h>
// int64_t amounts[3] = {30, -7, 12}, rows[3];
// dv_column_t amount = {.count = 3, .values = amounts, .stride = sizeof amounts[0]};
// const dv_key_part_t by = {.column = &amount, .type = DV_KEY_INT64, .order = DV_KEY_DESCENDING};
// uint8_t keys[3 * 9];
// dv_column_write_keys(&by, keys, 9, NULL);
// void *scratch = malloc(dv_sort_scratch_size(3, 9));
// dv_sort_keys(keys, 9, 3, rows, scratch);
// free(scratch);
// printf("%d %d %d\n", (int)rows[0], (int)rows[1], (int)rows[2]);           // 0 2 1
// ```

#ifndef DVTYPES_COLUMN_KEY_H
#define DVTYPES_COLUMN_KEY_H

#include "dvtypes/column_record.h"

#ifdef __cplusplus
extern "C" {
#endif

// What a column's values are. Permanent.
typedef enum dv_key_type_e {
    DV_KEY_NUMBER = 0,     // number_t, or by offsets
    DV_KEY_DATE = 1,       // dv_date_t
    DV_KEY_TIME = 2,       // dv_time_t
    DV_KEY_TIMESTAMP = 3,  // dv_timestamp_t
    DV_KEY_TS_TZ = 4,      // dv_ts_tz_t: the instant alone, as in dv_ts_tz_compare
    DV_KEY_TS_LTZ = 5,     // dv_ts_ltz_t
    DV_KEY_ITV_YTM = 6,    // dv_itv_ytm_t
    DV_KEY_ITV_DTS = 7,    // dv_itv_dts_t
    DV_KEY_ROWID = 8,      // rowid_t: by segment, file, block, row
    DV_KEY_INT32 = 9,      // machine numbers, in the machine's byte order
    DV_KEY_INT64 = 10,
    DV_KEY_INT128 = 11,
    DV_KEY_DOUBLE = 12,  // -0 is 0; every NaN is the same, above infinity
    DV_KEY_BYTES = 13,   // `size` bytes of each row by stride, as they are; in packed keys of any length
    DV_KEY_TYPES = 14
} dv_key_type_e;

typedef enum dv_key_order_e { DV_KEY_ASCENDING = 0, DV_KEY_DESCENDING = 1 } dv_key_order_e;
typedef enum dv_key_nulls_e {
    DV_KEY_NULLS_FIRST = 0,
    DV_KEY_NULLS_LAST = 1,
    DV_KEY_NOT_NULL = 2  // there are none: no byte tells of them in packed keys (dvtypes/packed_key.h)
} dv_key_nulls_e;

// One column of a key. Where rows without a value come is the same in either order.
typedef struct dv_key_part_s {
    const dv_column_t *column;
    int32_t type;   // of dv_key_type_e
    int32_t order;  // of dv_key_order_e
    int32_t nulls;  // of dv_key_nulls_e
} dv_key_part_t;

// Bytes of a part in the key: one that tells whether there is a value, and as many as its type has: NUMBER
// 22, DATE 7, TIME 8, each timestamp and INTERVAL DAY TO SECOND 12, INTERVAL YEAR TO MONTH 5, ROWID 12,
// machine numbers their size, DV_KEY_BYTES the column's `size`. Asserts "is_key_part(part)" (the column is
// not NULL, the type is known, only NUMBERs lie by offsets) and returns 0.
DV_EXPORT size_t dv_key_size(const dv_key_part_t *part);

// Writes a part of the keys of all rows.
//
//   keys   the part's place in the first key; that of row i is i * width bytes behind it. Each row's
//          dv_key_size(part) bytes are written
//   width  bytes of a whole key: the sum of its parts
//
// Fails with -5120  offsets of a NUMBER leave the column: its row counts as one without a value
DV_EXPORT void dv_column_write_keys(const dv_key_part_t *part, void *keys, size_t width,
                                    dv_column_faults_t *faults);

enum { DV_KEY_WIDTH_MAX = 1024 };  // of keys to be sorted

// Bytes of working memory that dv_sort_keys takes.
DV_EXPORT size_t dv_sort_scratch_size(int64_t count, size_t width);

// The order of keys: rows[0] becomes the number of the row with the least key, and so on. Equal keys stay in
// their order. A radix sort over those bits alone in which keys differ: its time grows with the rows, and
// with their count only.
//
// Asserts "width <= DV_KEY_WIDTH_MAX && count >> 40 <= 0".
//
//   keys     count keys of `width` bytes, 1 or more
//   rows     room for count numbers
//   scratch  dv_sort_scratch_size(count, width) bytes, aligned as malloc does
DV_EXPORT void dv_sort_keys(const void *keys, size_t width, int64_t count, int64_t *rows, void *scratch);

#ifdef __cplusplus
}  // extern "C"
#endif

#endif  // DVTYPES_COLUMN_KEY_H
