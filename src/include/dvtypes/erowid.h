// dvtypes/erowid.h: the extended rowid, the text form of a row identifier.
//
// 18 characters without a terminator: four numbers in base 64, the most significant digit first.
//
//   characters   0..5    segment  6 digits          6..8    relative file  3 digits
//                9..14   block    6 digits          15..17  row            3 digits
//
//   AAAAABAACAAAAADAAE    segment 1, file 2, block 3, row 4
//
// Functions allocate nothing and may be called from any thread on records that no other thread is writing. A
// NULL pointer is reported by an assertion ("erowid != NULL", "rowid != NULL", "sgmt != NULL", ...); the call
// then does nothing.
//
// Codes raised:  -5080  a character that is no digit
//                -5081  the segment is above 4294967295      -5082  the file is above 65535
//                -5083  the block is above 4294967295        -5084  the row is above 65535
// The digits of a field are met from the right, so a character that is no digit is reported before a number
// that is too large.

#ifndef DVTYPES_EROWID_H
#define DVTYPES_EROWID_H

#include "dvtypes/base.h"
#include "dvtypes/rowid.h"

#ifdef __cplusplus
extern "C" {
#endif

typedef struct erowid_s {
    char text[18];
} erowid_t;

// The digits of value 0..63: A to Z, a to z, 0 to 9, "+" and "/"; NUL ended.
extern DV_EXPORT_DATA const char erowid_encoding[64 + 1];

// Writes the 18 characters. Every value fits.
DV_EXPORT void erowid_new(erowid_t *erowid, uint32_t sgmt, uint16_t file, uint32_t block, uint16_t row);

// Reads all four numbers.
// Raises  -5080, -5082, -5084, and -5081 for the segment and for the block. Segment and block are read side
//         by side from the right, and then file and row: what is wrong with the first two is reported first.
// On a raise *rowid holds zeros and the numbers that are right.
DV_EXPORT void erowid_get_rowid(const erowid_t *erowid, rowid_t *rowid);

// Read one number, whatever the other fields hold.
// Raise  -5080, and -5081, -5082, -5083, -5084 in this order; the number is then not written
DV_EXPORT void erowid_get_sgmt(const erowid_t *erowid, uint32_t *sgmt);
DV_EXPORT void erowid_get_file(const erowid_t *erowid, uint16_t *file);
DV_EXPORT void erowid_get_block(const erowid_t *erowid, uint32_t *block);
DV_EXPORT void erowid_get_row(const erowid_t *erowid, uint16_t *row);

#ifdef __cplusplus
}  // extern "C"
#endif

#endif  // DVTYPES_EROWID_H
