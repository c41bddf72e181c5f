// Looking up rows of years (zone_years.h): the row of a time, and which of its periods the time belongs to.

#ifndef DV_ZONE_LOOKUP_H
#define DV_ZONE_LOOKUP_H

#include "date_word.h"
#include "zonetab.h"

namespace dv::impl {

// The number of the row in which to look for a time; 0: none. The bytes of the zone's number are loaded one
// by one: a load of both waits for the copy of a zone that was made of four bytes and one.
template <uint16_t zone_year_rows_t::*Kind>
size_t zone_row_number(const timezone_t &zone, uint64_t word) {
    constexpr uint64_t first_year = date_word(119, 100, 0) >> 48;
    static_assert(ZONE_YEAR_FIRST == 1900);
    const uint64_t year = (word >> 48) - first_year;
    const uint8_t page = zone.zone_id[0];
    if (year >= ZONE_YEAR_COUNT || page >= ZONE_ID_PAGES) return 0;
    return ZONE_YEARS[ZONE_FIRST_YEARS[page][zone.zone_id[1]] + year].*Kind;
}

// No branch: the months of random times would make it hard to predict.
inline size_t zone_period_number(const zone_year_t &row, uint64_t in_year) {
    return size_t{in_year < row.begin[0]} + size_t{in_year < row.begin[1]};
}

}  // namespace dv::impl

#endif  // DV_ZONE_LOOKUP_H
