// The hash by which the library finds a region's name (timezone/zone_name_hash.h).

#ifndef TZGEN_NAME_SLOTS_H
#define TZGEN_NAME_SLOTS_H

#include <cstdint>
#include <vector>

#include "zones.h"

namespace tzgen {

struct name_slots_t {
    std::vector<uint16_t> shifts, slots;
};

// Throws std::runtime_error: a name is too long, or names find no slots.
name_slots_t make_name_slots(const std::vector<zone_t> &zones);

}  // namespace tzgen

#endif  // TZGEN_NAME_SLOTS_H
