// dvtypes/rowid.h: the row identifier, which locates a row physically.
//
// A plain record in the machine's byte order; erowid.h has its text form.

#ifndef DVTYPES_ROWID_H
#define DVTYPES_ROWID_H

#include <stdbool.h>

#include "dvtypes/base.h"

#ifdef __cplusplus
extern "C" {
#endif

// A row identifier, in the machine's byte order.
typedef struct rowid_s {
    uint32_t sgmt;   // segment number
    uint32_t block;  // block number
    uint16_t file;   // relative file number
    uint16_t row;    // row slot within the block
} rowid_t;

// True when all four numbers are equal. Safe from any thread.
DV_EXPORT bool rowid_equals(rowid_t a, rowid_t b);

// For diagnosis: prints "Sgmt No : 1, Rel File No : 2, Blk No : 3, Row No : 4" and a newline to standard
// output. Segments and blocks from 2147483648 on print as the negative int of the same bits.
DV_EXPORT void rowid_print(rowid_t rowid);

#ifdef __cplusplus
}  // extern "C"
#endif

#endif  // DVTYPES_ROWID_H
