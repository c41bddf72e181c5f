// Reading every region, and what must hold of a history before it is written.

#include "zones.h"

#include <cstring>
#include <map>
#include <stdexcept>

#include "records.h"

namespace tzgen {

namespace {

int compare_(const dv_date_t &a, const dv_date_t &b) { return std::memcmp(&a, &b, sizeof a); }

// Pairs, newest first, and ever shorter ago in neither row.
void check_(const std::vector<tz_info_t> &history) {
    const size_t count = history.size();
    bool is_good = count == 1 || count % 2 == 0;
    for (size_t i = 1; i < count; ++i) {
        is_good = is_good && compare_(history[i - 1].normal, history[i].normal) > 0;
    }
    if (!is_good) throw std::runtime_error("a history that is not pairs in descending order");
}

std::string bytes_(const std::vector<tz_info_t> &history) {
    return {reinterpret_cast<const char *>(history.data()), history.size() * sizeof history[0]};
}

zone_t read_zone_(const std::filesystem::path &compiled, const zone_links_t &links, const std::string &name) {
    zone_t zone{name, {}, {}, 0};
    zone.timeline = read_timeline(file_of(compiled, links, name));
    zone.history = make_history(zone.timeline);
    check_(zone.history);
    return zone;
}

}  // namespace

std::vector<zone_t> read_zones(const std::filesystem::path &compiled, const zone_links_t &links,
                               const std::vector<std::string> &names) {
    std::vector<zone_t> zones;
    std::map<std::string, size_t> first_with;
    for (const std::string &name : names) {
        try {
            zones.push_back(read_zone_(compiled, links, name));
        } catch (const std::exception &error) {
            throw std::runtime_error(name + ": " + error.what());
        }
        zones.back().same_as =
            first_with.emplace(bytes_(zones.back().history), zones.size() - 1).first->second;
    }
    return zones;
}

}  // namespace tzgen
