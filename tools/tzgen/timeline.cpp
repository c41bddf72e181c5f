// A zone's timeline: what its compiled file lists, then what its rule yields, made canonical.

#include "timeline.h"

#include <algorithm>
#include <chrono>
#include <iterator>
#include <stdexcept>

#include "posix_rule.h"
#include "tzif.h"

namespace tzgen {

namespace {

using namespace std::chrono;

constexpr instant_t _end = sys_seconds{sys_days{year{2051} / 1 / 1}}.time_since_epoch().count();

// Periods of no length and changes that change nothing go.
timeline_t canonical_(const timeline_t &periods) {
    timeline_t result;
    for (size_t i = 0; i < periods.size(); ++i) {
        const bool is_empty = i + 1 < periods.size() && periods[i + 1].begin == periods[i].begin;
        const bool is_change = result.empty() || result.back().local_time != periods[i].local_time;
        if (!is_empty && is_change) result.push_back(periods[i]);
    }
    return result;
}

}  // namespace

timeline_t read_timeline(const std::filesystem::path &path) {
    tzif_t file = read_tzif(path);
    if (!file.rule.empty()) extend_by_rule(file.periods, file.rule, _end);
    std::erase_if(file.periods, [](const period_t &period) { return period.begin >= _end; });
    return canonical_(file.periods);
}

const period_t &period_at(const timeline_t &timeline, instant_t at) {
    const auto after = std::upper_bound(timeline.begin(), timeline.end(), at,
                                        [](instant_t t, const period_t &period) { return t < period.begin; });
    return *std::prev(after);
}

}  // namespace tzgen
