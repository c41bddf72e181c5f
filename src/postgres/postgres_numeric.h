// NUMBER and the server's numeric: both are decimal digits, in base 100 and 10,000.

#ifndef DV_POSTGRES_NUMERIC_H
#define DV_POSTGRES_NUMERIC_H

#include "postgres_value.h"

namespace dv::impl {

// Exact, with the fewest digits behind the point.
Datum postgres_numeric_of(const number_t &number);

// The NUMBER that the text of a numeric is read as: of more than 38 digits the first 38. An error (22003) for
// NaN, the infinities and what lies outside of NUMBER's range.
void postgres_number_of_numeric(number_t &number, Datum numeric);

}  // namespace dv::impl

#endif  // DV_POSTGRES_NUMERIC_H
