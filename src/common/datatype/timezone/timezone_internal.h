// What the time zone area shares across its files and offers to other areas.

#ifndef DV_TIMEZONE_INTERNAL_H
#define DV_TIMEZONE_INTERNAL_H

#include <string_view>

#include "../datetime/datetime_internal.h"
#include "timezone_layout.h"

namespace dv::impl {

// False, after the assertion, for NULL.
inline bool is_given_tz(const timezone_t *tz) { return DV_ASSERT(tz != NULL); }

// The error code of a UTC offset that is out of range, 0 for one that is not.
//
//   hour  with its sign     minute  without, not negative     sign  of the offset, 1 or -1
int offset_error(int hour, int minute, int sign);

// Reads a zone as timezone_parse does, from behind the leading blanks. Returns 0 or the code of its error;
// *tz is then as it was.
int read_zone(timezone_t &tz, std::string_view text);

// The region with this name in any letter case, without blanks behind it; an empty name is that of Etc/UTC.
// NULL: there is none, or the name is too long.
const tz_region_t *find_region(std::string_view name);

// The entry in force at a time in UTC.
const tz_info_t &info_at(const tz_region_t &region, const dv_date_t &utc);

// Does the abbreviation of the period in force tell that a local time in a region has the offset in `tz`? Not
// where both meanings of a local time have it, nor where clocks of another offset than the stored one showed
// the time.
bool abbreviation_tells_offset(const timezone_t &tz, const dv_date_t &local, const char *abbrev);

// The region of a zone; NULL, after the assertion, for a zone that is none.
const tz_region_t *region_of(const timezone_t &tz);

}  // namespace dv::impl

#endif  // DV_TIMEZONE_INTERNAL_H
