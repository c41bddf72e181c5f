// dvtypes/column_arrow.h: columns from and to other libraries, through the Arrow C data interface.
//
// An array of that interface is a description (ArrowSchema) and its memory (ArrowArray). Where its layout is
// that of a column of this library, dv_arrow_import describes the same memory as a dv_column_t: values,
// offsets, bitmap, slices too; nothing is copied. dv_arrow_export does the opposite. What an array holds, and
// which operation turns it into records, its dv_arrow_type_t tells:
//
//   format         kind                    values                        to and from records
//   "i" "l" "g"    DV_ARROW_INT32, ...     int32_t, int64_t, double      number_column_from_int32, ...
//   "d:p,s"        DV_ARROW_DECIMAL        128-bit integers              as dv_decimal_column_t, or
//   "d:p,s,64"                             int64_t                       dv_decimal_column_to_number
//   "tdD"          DV_ARROW_DATE32         int32_t days since 1970       dv_date_column_from_epoch_day
//   "tss:" "tsm:"  DV_ARROW_TIMESTAMP      int64_t units since 1970      dv_timestamp_column_from_epoch, of
//   "tsu:" "tsn:"                          UTC if there is a zone        dv_ts_tz_column_from_epoch
//   "u"            DV_ARROW_UTF8           texts by offsets              the functions of texts
//   "z"            DV_ARROW_BINARY         bytes by offsets
//   "w:N"          DV_ARROW_FIXED_BINARY   N bytes by stride
//   "z" or "w:N"   DV_ARROW_RECORD         records of this library: nothing to convert
//
// Records travel with the extension name "dvtypes.number", ".date", ".time", ".timestamp", ".timestamp_tz",
// ".timestamp_ltz", ".interval_ym", ".interval_ds" or ".rowid", as fixed-size binary of the record's bytes;
// NUMBERs by offsets as binary. Libraries that do not know the name see bytes. Of another extension the
// layout counts.
//
// ```c
// #include <dvtypes/column_arrow.h>
//
// int64_t micros[3] = {0, 1709211900500000, -1};
// dv_column_t times = {.count = 3, .values = micros, .stride = sizeof micros[0]};
// dv_arrow_type_t type = {.kind = DV_ARROW_TIMESTAMP, .unit = DV_EPOCH_MICROSECOND, .zone = "Asia/Seoul"};
// dv_arrow_export_t lent = {.name = "at"};
// struct ArrowSchema schema;
// struct ArrowArray array;
// dv_arrow_export(&times, &type, &lent, &schema, &array);
// puts(schema.format);  // tsu:Asia/Seoul
//
// dv_column_t again;
// dv_arrow_import(&schema, &array, &type, &again);
// printf("%d %d\n", (int)again.count, again.values == micros);  // 3 1
// array.release(&array);
// schema.release(&schema);
// ```
//
// Structs that are no array of this library's kinds, or cannot be one, raise -5123 ("the format is not
// supported"): of what the structs say nothing is believed but the addresses, lengths of texts and metadata,
// and the size of the memory that the interface has no field for. Values are not looked at, offsets are by
// the operations. All functions may be called from any thread.

#ifndef DVTYPES_COLUMN_ARROW_H
#define DVTYPES_COLUMN_ARROW_H

#include "dvtypes/column_decimal.h"
#include "dvtypes/column_record.h"
#include "dvtypes/dv_type.h"
#include "dvtypes/epoch.h"

#ifdef __cplusplus
extern "C" {
#endif

// The two structs as the Arrow project defines them for everybody, unless another header has done so.
#ifndef ARROW_C_DATA_INTERFACE
#define ARROW_C_DATA_INTERFACE

#define ARROW_FLAG_DICTIONARY_ORDERED 1
#define ARROW_FLAG_NULLABLE 2
#define ARROW_FLAG_MAP_KEYS_SORTED 4

struct ArrowSchema {
    const char *format;
    const char *name;
    const char *metadata;
    int64_t flags;
    int64_t n_children;
    struct ArrowSchema **children;
    struct ArrowSchema *dictionary;
    void (*release)(struct ArrowSchema *);
    void *private_data;
};

struct ArrowArray {
    int64_t length;
    int64_t null_count;
    int64_t offset;
    int64_t n_buffers;
    int64_t n_children;
    const void **buffers;
    struct ArrowArray **children;
    struct ArrowArray *dictionary;
    void (*release)(struct ArrowArray *);
    void *private_data;
};

#endif  // ARROW_C_DATA_INTERFACE

typedef enum dv_arrow_kind_e {
    DV_ARROW_INT32 = 1,
    DV_ARROW_INT64 = 2,
    DV_ARROW_DOUBLE = 3,
    DV_ARROW_DECIMAL = 4,
    DV_ARROW_DATE32 = 5,
    DV_ARROW_TIMESTAMP = 6,
    DV_ARROW_UTF8 = 7,
    DV_ARROW_BINARY = 8,
    DV_ARROW_FIXED_BINARY = 9,
    DV_ARROW_RECORD = 10
} dv_arrow_kind_e;

// What an array holds. Members that a kind does not name are 0.
typedef struct dv_arrow_type_s {
    dv_arrow_kind_e kind;
    int32_t bytes;  // of a value by stride; 0 by offsets. dv_arrow_export reads it of decimals (8 or 16) and
                    // of fixed-size binary alone
    int32_t precision;     // decimals: 1..18 in 8 bytes, 1..38 in 16
    int32_t scale;         //           -84..127
    dv_epoch_unit_t unit;  // timestamps
    const char *zone;      // timestamps: NULL, or the name of a zone as it stands in the format
    dv_type_t record;      // records: DV_TYPE_NUMBER, DV_TYPE_DATE, ...
} dv_arrow_type_t;

// Describes an array as a column over the same memory, of which it is then the reader alone: the array must
// not be released before, and `values` is not written. type->zone points into the schema.
//
// Raises  -5123  (what is wrong) no such format; released; a dictionary or children; a length, offset, or
//                count of nulls or of buffers that cannot be; a buffer that is missing, or offsets at an odd
//                address
// Asserts "given(schema, array, type, column)".
DV_EXPORT void dv_arrow_import(const struct ArrowSchema *schema, const struct ArrowArray *array,
                               dv_arrow_type_t *type, dv_column_t *column);

// A decimal array as columns of decimals are: of an import with the kind DV_ARROW_DECIMAL.
static inline dv_decimal_column_t dv_arrow_decimals(const dv_column_t *column, const dv_arrow_type_t *type) {
    dv_decimal_column_t decimals;
    decimals.column = *column;
    decimals.bytes = type->bytes;
    decimals.precision = type->precision;
    decimals.scale = type->scale;
    return decimals;
}

// What an export leaves with the caller until both structs are released. The members of the first part are
// the caller's choice.
enum { DV_ARROW_FORMAT_MAX = 128, DV_ARROW_METADATA_MAX = 64 };
typedef struct dv_arrow_export_s {
    const char *name;  // of the field; NULL: ""
    // Called when the reader is done with a struct; each must set its member `release` to NULL, may free what
    // private_data points to, and be called from any thread. NULL: does the former alone.
    void (*release_schema)(struct ArrowSchema *);
    void (*release_array)(struct ArrowArray *);
    void *private_data;  // given to both structs

    char format[DV_ARROW_FORMAT_MAX];
    char metadata[DV_ARROW_METADATA_MAX];
    const void *buffers[3];
} dv_arrow_export_t;

// Fills both structs with a column: its memory, and that of `lent`, must stay until they are released.
// Nothing is copied, and the structs themselves are the caller's.
//
// Raises  -5123  (what is wrong) no such type; values that do not lie side by side, as Arrow has them; a
//                bitmap that does not begin with a byte (dv_column_copy_validity makes one that does); a zone
//                too long
// Asserts "are_columns(column) && given(type, lent, schema, array)": a count of 0 or more.
// On a raise nothing is to be released.
DV_EXPORT void dv_arrow_export(const dv_column_t *column, const dv_arrow_type_t *type,
                               dv_arrow_export_t *lent, struct ArrowSchema *schema, struct ArrowArray *array);

#ifdef __cplusplus
}  // extern "C"
#endif

#endif  // DVTYPES_COLUMN_ARROW_H
