// dvtypes/packed_key.h: keys of several columns for stores that compare bytes.
//
// A packed key is the parts of a row one behind the other, each no longer than it must be. The unsigned
// bytewise order of such keys (memcmp, and a key before all that begin with it) is the order of the rows:
// each part ascending or descending, NULL first or last. So an ordered key-value store, an LSM tree or a
// sorted file finds rows, ranges and prefixes without knowing what it holds. Parts end by themselves: what
// follows a part never changes its order, all rows with the same first parts lie together, and values are
// read back out of a key. docs/keys.md states the bytes, which are the same on every machine and never
// change, and has recipes.
//
// ```c
// #include <dvtypes/packed_key.h>
// const dv_key_part_t by_name = {.type = DV_KEY_BYTES};
// const dv_key_part_t newest_first = {.type = DV_KEY_INT64, .order = DV_KEY_DESCENDING};
// uint8_t bytes[64];
// dv_key_t key = {bytes, 0, sizeof bytes};
// const int64_t number = 7;
// dv_key_append(&key, &by_name, "Jeju", 4);
// dv_key_append(&key, &newest_first, &number, 0);
// printf("%d\n", (int)key.size);                      // 16
//
// dv_key_rest_t rest = {key.bytes, key.size};
// char name[16];
// int64_t size, found = 0;
// dv_key_take(&rest, &by_name, name, sizeof name, &size);
// printf("%.*s\n", (int)size, name);                  // Jeju
// const char *fault = dv_key_take(&rest, &newest_first, &found, sizeof found, &size);
// printf("%s %d\n", fault == NULL ? "sound" : fault, (int)found);      // sound 7
// ```
//
// A part is described by dv_key_part_t (dvtypes/column_key.h), of which one value needs `type`, `order` and
// `nulls`. DV_KEY_BYTES is any text or bytes, of any length. Of a TIMESTAMP WITH TIME ZONE a key has the
// instant alone, of doubles one NaN and one zero: equal values have equal bytes.
//
// All functions may be called from any thread, on keys that no other thread is writing.

#ifndef DVTYPES_PACKED_KEY_H
#define DVTYPES_PACKED_KEY_H

#include "dvtypes/column_key.h"

#ifdef __cplusplus
extern "C" {
#endif

// A key in memory of the caller.
typedef struct dv_key_s {
    uint8_t *bytes;
    size_t size;  // bytes of the key; 0 for a new one
    size_t room;  // bytes there are
} dv_key_t;

// What of a key is still to be read.
typedef struct dv_key_rest_s {
    const uint8_t *bytes;
    size_t size;
} dv_key_rest_t;

// Bytes of a part at most, but for DV_KEY_BYTES: of those, of n bytes, 2 * n + 3.
enum { DV_KEY_PART_MAX = 24 };

// Appends a value as the next part of a key.
//
//   part   its type, order and nulls; `column` is not looked at
//   value  the record or machine number, valid, at any address; NULL, or a NUMBER of size 0, for SQL NULL
//   size   bytes of a value of DV_KEY_BYTES, which may be 0; else not looked at
//
// A part of DV_KEY_NOT_NULL gets a value.
//
// Asserts "key != NULL", "has_key_type(part)", "may_be_null(*part) || !is_null".
//
// Raises -3005  there is no room: the key is as it was
DV_EXPORT void dv_key_append(dv_key_t *key, const dv_key_part_t *part, const void *value, size_t size);

// Reads the next part of a key and moves `rest` behind it. Any bytes may be given: those that dv_key_append
// never writes are refused, and nothing beyond them is read.
//
//   part   as it was appended
//   value  gets the value: a record (a NUMBER of all 23 bytes), a machine number, or bytes; a TIMESTAMP WITH
//          TIME ZONE with the offset +00:00. Untouched where the value is NULL or something is wrong. NULL:
//          the part is skipped
//   room   bytes at value
//   size   gets the bytes of the value, -1 for SQL NULL
//
// Asserts "rest != NULL", "has_key_type(part)" and "size != NULL".
// Returns NULL, or what is wrong as an English clause; `rest` is then as it was. Where the value has no room,
// *size is what it needs; else it is -1.
DV_EXPORT const char *dv_key_take(dv_key_rest_t *rest, const dv_key_part_t *part, void *value, size_t room,
                                  int64_t *size);

// Makes the first parts of a key the least bytes that lie above all keys that begin with them: the end of a
// scan over a prefix, which begins with the prefix itself. Size 0: nothing lies above them, and the scan ends
// with the store. Needs no room. Asserts "key != NULL".
DV_EXPORT void dv_key_end_of_prefix(dv_key_t *key);

// The range of keys whose next part stands in a relation to a value: column > 12, column IS NULL.
// Rows without a value are in no range but that of EQ to NULL.
//
//   part      as in dv_key_append
//   relation  of dv_column_relation_e: of the part to the value; all six but NE, or 7 for every value. With
//             SQL NULL, EQ (IS NULL) or NE (IS NOT NULL)
//   value     as in dv_key_append
//   size      as in dv_key_append
//   from, to  both hold the parts in front, which are the same in all keys of the range, or nothing. They
//             become its first bytes and those in front of which it ends; a `to` of size 0: it has no end
//
// Returns 1, or 0 where the part has no values on that side of the value (column > the greatest integer);
// from and to are as they were then.
//
// For a value between two others, take `from` of one call and `to` of another: of GE and LE, in descending
// order of LE and GE.
//
// Asserts "has_key_type(part)", "from != NULL", "to != NULL", "is_key_range(*part, relation, is_null)".
//
// Raises -3005  there is no room for the part in one of them: both are as they were
DV_EXPORT int dv_key_range(const dv_key_part_t *part, int relation, const void *value, size_t size,
                           dv_key_t *from, dv_key_t *to);

// Packs the keys of all rows: the parts of each, as dv_key_append writes them.
//
//   parts   `count` parts with their columns. NUMBERs lie by stride or by offsets, and so do DV_KEY_BYTES, by
//           stride `size` bytes each; all others by stride
//   count   1 or more
//   result  by offsets; a row where a part of DV_KEY_NOT_NULL has no value has no key
//
// Asserts "are_packable(parts, count, result)".
//
// Fails with -3005  the result has no room
//            -5120  offsets leave a column
DV_EXPORT void dv_column_pack_keys(const dv_key_part_t *parts, int count, dv_column_t *result,
                                   dv_column_faults_t *faults);

#ifdef __cplusplus
}  // extern "C"
#endif

#endif  // DVTYPES_PACKED_KEY_H
