#include "zone_links.h"

#include <algorithm>
#include <fstream>
#include <set>
#include <sstream>
#include <stdexcept>

#include "zone_names.h"
#include "zones.h"

namespace tzgen {

namespace {

// The name and those that its links lead to, one after the other.
std::vector<std::string> chain_of_(const zone_links_t &links, const std::string &name) {
    std::vector<std::string> chain{name};
    for (auto link = links.find(name); link != links.end(); link = links.find(link->second)) {
        if (chain.size() > links.size()) throw std::runtime_error("links in a circle: " + name);
        chain.push_back(link->second);
    }
    return chain;
}

std::vector<std::string> names_in_(const std::filesystem::path &compiled) {
    std::vector<std::string> names;
    for (const auto &entry : std::filesystem::recursive_directory_iterator(compiled)) {
        if (!entry.is_directory())
            names.push_back(entry.path().lexically_relative(compiled).generic_string());
    }
    return names;
}

// Names in their own spelling, until all are known.
class aliases_t {
  public:
    explicit aliases_t(const std::vector<zone_t> &zones) : zones_(zones) {
        for (size_t i = 0; i < zones.size(); ++i) number_of_.emplace(zones[i].name, static_cast<int>(i));
    }

    bool knows(const std::string &name) const { return number_of_.contains(name); }

    // Later names of a region: those behind it, until one that stands for another region.
    void add_behind(const std::vector<std::string> &chain) {
        const int number = number_of_.at(chain[0]);
        for (size_t i = 1; i < chain.size() && !knows(chain[i]); ++i) number_of_.emplace(chain[i], number);
    }
    // The first name of a chain, if one behind it is known.
    void add_front(const std::vector<std::string> &chain) {
        const auto known = std::find_if(chain.begin(), chain.end(), [&](auto &name) { return knows(name); });
        if (known != chain.end()) number_of_.emplace(chain[0], number_of_.at(*known));
    }
    // A name with this history, if a region has it.
    void add_same(const std::string &name, const timeline_t &timeline) {
        const auto same = std::find_if(zones_.begin(), zones_.end(),
                                       [&](const zone_t &zone) { return zone.timeline == timeline; });
        if (same != zones_.end()) number_of_.emplace(name, static_cast<int>(same - zones_.begin()));
    }

    // Without the regions' own names.
    std::map<std::string, int> in_lower_case() const {
        std::map<std::string, int> aliases;
        for (const auto &[name, number] : number_of_) {
            if (zones_[static_cast<size_t>(number)].name != name) aliases.emplace(lower_case(name), number);
        }
        return aliases;
    }

  private:
    const std::vector<zone_t> &zones_;
    std::map<std::string, int> number_of_;
};

}  // namespace

zone_links_t read_zone_links(const std::filesystem::path &path) {
    std::ifstream file(path);
    if (!file) throw std::runtime_error("cannot read " + path.string());
    zone_links_t links;
    for (std::string line; std::getline(file, line);) {
        std::string name, target;
        if (!line.starts_with('#') && std::istringstream(line) >> name >> target) links.emplace(name, target);
    }
    for (const auto &[name, target] : links) chain_of_(links, name);
    return links;
}

std::filesystem::path file_of(const std::filesystem::path &compiled, const zone_links_t &links,
                              const std::string &name) {
    for (const std::string &candidate : chain_of_(links, name)) {
        if (std::filesystem::exists(compiled / candidate)) return compiled / candidate;
    }
    throw std::runtime_error(
        "the tz database has no such zone, nor one that tools/tzgen/zone_links.txt knows it by. Build with "
        "another "
        "release (cmake -DDV_TZDATA=FILE), or add the name that it has now to that file: CONTRIBUTING.md, "
        "\"A new "
        "release of the tz database\"");
}

std::map<std::string, int> find_aliases(const std::filesystem::path &compiled, const zone_links_t &links,
                                        const std::vector<zone_t> &zones) {
    aliases_t aliases(zones);
    for (const zone_t &zone : zones) aliases.add_behind(chain_of_(links, zone.name));
    for (const auto &[name, target] : links) aliases.add_front(chain_of_(links, name));
    for (const std::string &name : names_in_(compiled)) {
        if (!aliases.knows(name)) aliases.add_same(name, read_timeline(compiled / name));
    }
    return aliases.in_lower_case();
}

}  // namespace tzgen
