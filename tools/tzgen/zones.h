// All regions with their histories, as the tables hold them.

#ifndef TZGEN_ZONES_H
#define TZGEN_ZONES_H

#include <filesystem>
#include <string>
#include <vector>

#include "dvtypes/timezone.h"
#include "timeline.h"
#include "zone_links.h"

namespace tzgen {

struct zone_t {
    std::string name;
    timeline_t timeline;
    std::vector<tz_info_t> history;
    size_t same_as;  // the first region with this history
};

// From the files of a compiled source, in the order of the names, by links where it has other names.
// Throws std::runtime_error: a missing or unusable file, a history that breaks an invariant of the table.
std::vector<zone_t> read_zones(const std::filesystem::path &compiled, const zone_links_t &links,
                               const std::vector<std::string> &names);

}  // namespace tzgen

#endif  // TZGEN_ZONES_H
