// What the NUMBER area offers to itself across files and to other areas, beyond the public header: three
// functions, and the layout of records for those who read or build digits themselves.

#ifndef DV_NUMBER_INTERNAL_H
#define DV_NUMBER_INTERNAL_H

#include "number_layout.h"

namespace dv::impl {

// number_round_at_withmode for any 64-bit position. A NULL value and zero stay.
void number_round_at(number_t &x, int64_t pos, int rmode);

// Copies a record's meaningful bytes, never more than 23 whatever its size byte says.
void number_copy(number_t &x, const number_t &y);

// The text of a record that is no value but marks an end of the order: "inf" of _number_posinf, "tiny" of
// _number_poszero, and the same with "-". NULL of any other.
const char *marker_text(const number_t &x);

}  // namespace dv::impl

#endif  // DV_NUMBER_INTERNAL_H
