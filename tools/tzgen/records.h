// Timelines as the library's records (dvtypes/timezone.h).

#ifndef TZGEN_RECORDS_H
#define TZGEN_RECORDS_H

#include <vector>

#include "dvtypes/timezone.h"
#include "timeline.h"

namespace tzgen {

// The history: a pair for each change, newest first, or one entry for a zone without changes.
// Throws std::runtime_error: an instant before the Gregorian calendar.
std::vector<tz_info_t> make_history(const timeline_t &timeline);

// The local times of a zone at the samples' instants.
tz_sample_t make_sample(tz_id_t id, const timeline_t &timeline);

}  // namespace tzgen

#endif  // TZGEN_RECORDS_H
