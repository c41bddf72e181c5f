// dvtypes/column_sum.h: exact sums of columns of NUMBER, by groups too, and the small state they are kept in.
//
// A number_total_t is an exact sum with the count of its terms: an integer in binary times a power of 100. No
// addition rounds, so that no order of the terms and no division into parts changes a total; only its sum and
// its average are rounded, once, when they are asked for.
//
// Totals are 48 bytes, and all bytes 0 is the empty one, so that an array of them needs no other preparation.
// They hold 76 decimal digits, from the lowest that a term has to the highest that the sum has: 2^63 terms of
// 38 digits before and behind the point as a column declares them, and of their products as long as these
// have 57 digits. A function that comes to a value outside changes nothing and returns how many bytes of
// memory the total needs beside; number_total_attach gives them to it, and the call is made again. With
// DV_TOTAL_MEMORY_MAX bytes a total holds anything.
//
// ```c
// #include <dvtypes/column_sum.h>
//
// number_t prices[3], amounts[3], sum;
// char text[NUMBER_NORMAL_TEXT_SIZE];
// for (int i = 0; i < 3; ++i) {
//     number_from_double(&prices[i], 12.5 + i);
//     number_from_int32(&amounts[i], 1000 * (i + 1));
// }
// dv_column_t price = {.count = 3, .values = prices, .stride = sizeof(number_t)};
// dv_column_t amount = {.count = 3, .values = amounts, .stride = sizeof(number_t)};
// number_total_t total = {0};
// number_column_sum_products(&price, &amount, NULL, &total, NULL);
// number_total_sum(&total, &sum);
// number_to_str(&sum, sizeof text, text, NULL);
// puts(text);  // 83000
//
// number_t huge, tiny;
// uint64_t memory[DV_TOTAL_MEMORY_MAX / sizeof(uint64_t)];
// number_from_str(&huge, 0, "9E99", NULL);
// number_from_str(&tiny, 0, "1E-99", NULL);
// printf("%d\n", number_total_add(&total, &huge) == 0);  // 0
// number_total_attach(&total, sizeof memory, memory);
// printf("%d\n", number_total_add(&total, &huge) == 0);  // 1
// printf("%d\n", number_total_add(&total, &tiny) == 0);  // 1
// printf("%d\n", (int)total.count);                      // 5
// ```
//
// Functions allocate nothing and may be called from any thread on totals that no other thread is writing. A
// NULL pointer is reported by an assertion ("total != NULL" and the like); the call then does nothing and
// returns 0.

#ifndef DVTYPES_COLUMN_SUM_H
#define DVTYPES_COLUMN_SUM_H

#include "dvtypes/column_record.h"
#include "dvtypes/number.h"

#ifdef __cplusplus
extern "C" {
#endif

enum {
    DV_TOTAL_LIMBS = 4,             // of a total without memory beside it
    DV_TOTAL_MEMORY_MAX = 256,      // bytes that a total can need
    DV_TOTAL_PACKED_MAX = 12 + 256  // bytes of a packed total
};

// What the members behind `count` hold is the library's. A total without attached memory may be copied as it
// is; of one with memory number_total_merge into an empty total makes a copy.
typedef struct number_total_s {
    int64_t count;           // terms added less terms taken out: for reading
    int16_t weight;          // the power of 100 that the integer counts in
    uint16_t attached_room;  // limbs at `attached`; 0: the total's own are in use
    uint32_t zero;
    union {
        uint64_t own[DV_TOTAL_LIMBS];  // two's complement, the least significant limb first
        uint64_t *attached;
    } limbs;
} number_total_t;

// ---------------------------------------------------------------------------------------------------------
// One total
// ---------------------------------------------------------------------------------------------------------

// total += x, total -= x, with the count. A NULL value changes nothing. x may be any record of at most 22
// bytes behind its size; one whose bytes are no digits adds an unspecified number.
//
// Returns 0, or, with the total as it was, the bytes of memory that it needs.
// Raises  -5068  the count is beyond int64_t, or the sum beyond that of 2^90 products of the largest values
DV_EXPORT int64_t number_total_add(number_total_t *total, const number_t *x);
DV_EXPORT int64_t number_total_sub(number_total_t *total, const number_t *x);

// total += x * y, total -= x * y, exactly, with the count; of an x with itself, its square. A NULL value
// changes nothing. Returns and raises as above.
DV_EXPORT int64_t number_total_add_product(number_total_t *total, const number_t *x, const number_t *y);
DV_EXPORT int64_t number_total_sub_product(number_total_t *total, const number_t *x, const number_t *y);

// total += other, with the count. The two may be the same. Returns and raises as above.
DV_EXPORT int64_t number_total_merge(number_total_t *total, const number_total_t *other);

// Moves the digits of a total into memory of the caller, which stays the total's until it is given other
// memory or no longer used.
//
//   size    bytes, as many as the total has now (32 without memory) or more; asserts "size >= room"
//   memory  aligned as uint64_t
//
// Returns the memory that the total had before, NULL for none.
DV_EXPORT void *number_total_attach(number_total_t *total, int64_t size, void *memory);

// x = the sum, and the sum by the count, rounded half up to 38 digits: exact to the last digit that the
// rounding looks at. Where the count is not above 0, x becomes a NULL value.
//
// Raises  -5068, -5069  the result is beyond the range of NUMBER
DV_EXPORT void number_total_sum(const number_total_t *total, number_t *x);
DV_EXPORT void number_total_average(const number_total_t *total, number_t *x);

// x = the variance of n terms, and the standard deviation, which is its square root: of their total and of
// that of their squares, (n * squares - sum^2) / (n * (n - is_sample)), rounded half up to 38 digits. Nothing
// is rounded before that, so terms that differ little lose no digit.
//
//   is_sample  1: of a sample of a population; 0: of all of it
//
// Where n is not above is_sample, x becomes a NULL value.
// Raises  -5121         the totals are not those of the same terms, as number_total_has_squares tells
//         -5068, -5069  the result is beyond the range of NUMBER
DV_EXPORT void number_total_variance(const number_total_t *sum, const number_total_t *squares,
                                     uint8_t is_sample, number_t *x);
DV_EXPORT void number_total_deviation(const number_total_t *sum, const number_total_t *squares,
                                      uint8_t is_sample, number_t *x);

// 1 where `squares` can be the total of the squares of the terms of `sum`, else 0: the counts are the same
// and not below 0, and n * squares is not below sum^2. To be asked of totals that came from elsewhere.
DV_EXPORT uint8_t number_total_has_squares(const number_total_t *sum, const number_total_t *squares);

// ---------------------------------------------------------------------------------------------------------
// Totals that travel
// ---------------------------------------------------------------------------------------------------------

// The bytes of a total for a disk or another machine: the same on all machines, and the same for all totals
// of equal sum and count, however they came about. DV_TOTAL_PACKED_MAX bytes hold any; money takes about 20.
//
//   byte 0     version, 1
//   byte 1     zero
//   byte 2     weight W, a power of 100, with the excess 32768: two bytes, the most significant first
//   byte 4     count: eight bytes, as an integer in two's complement, the most significant first
//   byte 12..  the sum divided by 100^W, likewise, in as few bytes as hold it: none for 0. W is the highest
//              that leaves an integer, 0 for the sum 0
//
// Returns how many bytes there are; where `size` is less, nothing is written.
DV_EXPORT int64_t number_total_pack(const number_total_t *total, int64_t size, uint8_t *bytes);

// The total that was packed, in place of what `total` held; the memory that it has stays with it.
//
// Returns 0, or, with the total as it was, the bytes of memory that it needs.
// Raises  -5121  the bytes are not those of a total, of this version
DV_EXPORT int64_t number_total_unpack(number_total_t *total, int64_t size, const uint8_t *bytes);

// ---------------------------------------------------------------------------------------------------------
// Columns
// ---------------------------------------------------------------------------------------------------------

// total += each x that has a value, and each x * y where both have one, exactly.
//
//   rows    NULL, or a bitmap: bit i tells whether row i is looked at, as number_column_compare writes it
//   faults  rows that fail are left out
//
// Returns 0, or, with the total as it was, the bytes of memory that it needs.
// Fails with -5120  (dvtypes/column_number.h)
// Raises     -5068  as number_total_add does; whatever `faults` says
DV_EXPORT int64_t number_column_sum(const dv_column_t *x, const uint8_t *rows, number_total_t *total,
                                    dv_column_faults_t *faults);
DV_EXPORT int64_t number_column_sum_products(const dv_column_t *x, const dv_column_t *y, const uint8_t *rows,
                                             number_total_t *total, dv_column_faults_t *faults);

// The totals of groups, by number: total i lies at totals + i * stride, as part of a larger record or, with
// the stride sizeof(number_total_t), in an array.
typedef struct number_totals_s {
    int64_t count;
    number_total_t *totals;
    int64_t stride;  // in bytes
} number_totals_t;

// For each row whose x has a value, the total of its group += x. Where a row raises, those before it are in
// their totals, and it and those behind it in none.
//
//   groups  the group of each row; a row whose group is not one of [0, totals->count) is left out
//
// Fails with -5122  the total needs memory, as number_total_add will tell    -5120, -5068  as above
DV_EXPORT void number_column_sum_by_group(const dv_column_t *x, const int32_t *groups,
                                          const number_totals_t *totals, dv_column_faults_t *faults);

#ifdef __cplusplus
}  // extern "C"
#endif

#endif  // DVTYPES_COLUMN_SUM_H
