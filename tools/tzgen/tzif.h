// Compiled zones as zic writes them (TZif, RFC 8536).

#ifndef TZGEN_TZIF_H
#define TZGEN_TZIF_H

#include <filesystem>
#include <string>

#include "timeline.h"

namespace tzgen {

struct tzif_t {
    timeline_t periods;  // as listed: neighbours may be alike
    std::string rule;    // in force after the last period begins; "" if the file has none
};

// Throws std::runtime_error if the file is not a TZif file of version 2 or above.
tzif_t read_tzif(const std::filesystem::path &path);

}  // namespace tzgen

#endif  // TZGEN_TZIF_H
