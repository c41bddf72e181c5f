// The rows of years by which the library finds the offset in force (timezone/zone_years.h).

#ifndef TZGEN_YEAR_ROWS_H
#define TZGEN_YEAR_ROWS_H

#include <cstdint>
#include <vector>

#include "timezone/zone_years.h"
#include "zones.h"

namespace tzgen {

struct year_rows_t {
    std::vector<dv::impl::zone_year_t> rows;
    std::vector<dv::impl::zone_year_rows_t> years;
    std::vector<uint32_t> first_years;  // by number of a zone
};

// Throws std::runtime_error: more rows than there are numbers.
year_rows_t make_year_rows(const std::vector<zone_t> &zones);

}  // namespace tzgen

#endif  // TZGEN_YEAR_ROWS_H
