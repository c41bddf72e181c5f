// The history of one zone's clocks: the kinds of local time that were in force, one after the other.

#ifndef TZGEN_TIMELINE_H
#define TZGEN_TIMELINE_H

#include <cstdint>
#include <filesystem>
#include <limits>
#include <string>
#include <vector>

namespace tzgen {

// Seconds since 1970-01-01 00:00:00 UTC, without leap seconds.
using instant_t = int64_t;
inline constexpr instant_t BEGIN_OF_TIME = std::numeric_limits<instant_t>::min();

struct local_time_t {
    int offset;  // seconds east of Greenwich
    bool is_dst;
    std::string abbrev;
    bool operator==(const local_time_t &) const = default;
};

struct period_t {
    instant_t begin;  // until the next period begins
    local_time_t local_time;
    bool operator==(const period_t &) const = default;
};

// By begin, ascending; the first period begins at BEGIN_OF_TIME; neighbours differ.
using timeline_t = std::vector<period_t>;

// Reads a compiled zone and follows its rule, up to and with the last second of 2050 UTC.
// Throws std::runtime_error: a file that is none, or uses what the tables cannot hold.
timeline_t read_timeline(const std::filesystem::path &path);

// The period in force at an instant.
const period_t &period_at(const timeline_t &timeline, instant_t at);

}  // namespace tzgen

#endif  // TZGEN_TIMELINE_H
