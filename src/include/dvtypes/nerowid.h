// dvtypes/nerowid.h: 64-bit row numbers and their text form.
//
// 11 characters without a terminator: the number in base 64, the most significant digit first, with the
// digits of erowid_encoding. 1 is AAAAAAAAAAB, 18446744073709551615 is P//////////.

#ifndef DVTYPES_NEROWID_H
#define DVTYPES_NEROWID_H

#include "dvtypes/base.h"

#ifdef __cplusplus
extern "C" {
#endif

typedef uint64_t nrowid_t;

typedef struct nerowid_s {
    char text[11];
} nerowid_t;

// Writes the 11 characters. Safe from any thread; a NULL pointer is asserted ("erowid != NULL").
DV_EXPORT void nerowid_new(nerowid_t *erowid, nrowid_t rowid);

// Adds the number to *rowid, which the caller sets to 0 first. Safe from any thread; NULL pointers are
// asserted ("erowid != NULL", "rowid != NULL") and nothing is done.
// Raises  -5080  a character that is no digit; or the number, or the sum, is above 18446744073709551615.
//                *rowid is unchanged
DV_EXPORT void nerowid_get_rowid(const nerowid_t *erowid, nrowid_t *rowid);

#ifdef __cplusplus
}  // extern "C"
#endif

#endif  // DVTYPES_NEROWID_H
