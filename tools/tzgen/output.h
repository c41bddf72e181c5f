// The generated files:
//
//   zone_histories.bin, zone_samples.bin  the records, as in memory
//   zone_year_rows.bin, zone_years.bin    what finds the entry of a time (year_rows.h)
//   zone_first_years.bin
//   zone_name_shifts.bin                  what finds a name (name_slots.h)
//   zone_name_slots.bin
//   zone_data.S                           includes them and names each region's history
//   zone_tables.cpp                       region_tab_, the aliases, the abbreviations, the release
//   include/dvtypes/timezone_id.h         the regions' numbers for users

#ifndef TZGEN_OUTPUT_H
#define TZGEN_OUTPUT_H

#include <filesystem>
#include <map>
#include <string>
#include <vector>

#include "source.h"
#include "zones.h"

namespace tzgen {

// Throws std::runtime_error: two arrays of one name, a file that cannot be written.
void write_tables(const std::filesystem::path &folder, const source_t &source,
                  const std::vector<zone_t> &zones, const std::map<std::string, int> &aliases);

}  // namespace tzgen

#endif  // TZGEN_OUTPUT_H
