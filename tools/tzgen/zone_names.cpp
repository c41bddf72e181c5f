// Names of regions. Their numbers are stored in values and never change, so the list is the project's own;
// the tz database renames, merges and drops names.

#include "zone_names.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <stdexcept>

#include "dvtypes/timezone.h"

namespace tzgen {

namespace {

struct dropped_t {
    std::string_view name, successor;
};

// As the tz project itself last linked them.
constexpr dropped_t _dropped[] = {
    {"Asia/Riyadh87", "Asia/Riyadh"},    {"Asia/Riyadh88", "Asia/Riyadh"},
    {"Asia/Riyadh89", "Asia/Riyadh"},    {"Canada/East-Saskatchewan", "Canada/Saskatchewan"},
    {"Mideast/Riyadh87", "Asia/Riyadh"}, {"Mideast/Riyadh88", "Asia/Riyadh"},
    {"Mideast/Riyadh89", "Asia/Riyadh"}, {"US/Pacific-New", "America/Los_Angeles"},
};

bool is_digit_(char c) { return c >= '0' && c <= '9'; }

using targets_t = std::map<std::string, std::string>;

// Links may stand for links.
std::string zone_of_(const targets_t &targets, std::string name) {
    for (auto link = targets.find(name); link != targets.end(); link = targets.find(name))
        name = link->second;
    return name;
}

}  // namespace

std::string lower_case(std::string_view name) {
    std::string result(name);
    for (char &c : result) c = static_cast<char>(c >= 'A' && c <= 'Z' ? c + ('a' - 'A') : c);
    return result;
}

std::vector<std::string> read_zone_names(const std::filesystem::path &path) {
    std::ifstream file(path);
    std::vector<std::string> names;
    for (std::string line; std::getline(file, line);) names.push_back(line);
    const bool is_sorted = std::is_sorted(names.begin(), names.end(), [](const auto &a, const auto &b) {
        return lower_case(a) < lower_case(b);
    });
    if (names.size() != TZ_ID_MAX || !is_sorted) throw std::runtime_error("not the list of regions");
    return names;
}

std::string_view successor_of(std::string_view name) {
    const auto *const row = std::find_if(std::begin(_dropped), std::end(_dropped),
                                         [&](const dropped_t &dropped) { return dropped.name == name; });
    return row == std::end(_dropped) ? name : row->successor;
}

// A new name stands for the region that it links to, or for the one that links to it: when a region is
// renamed, the old name becomes the link. Of several links to a new name all but one are regions merged into
// it; the one with the lowest number is taken.
std::map<std::string, int> find_aliases(const source_t &source, const std::vector<std::string> &names) {
    std::map<std::string, int> number_of;
    for (size_t i = 0; i < names.size(); ++i) number_of.emplace(names[i], static_cast<int>(i));
    targets_t targets(source.links.begin(), source.links.end());

    std::map<std::string, int> region_of_zone;
    for (const std::string &name : names) {
        const std::string zone = zone_of_(targets, name);
        const auto region = number_of.find(zone);
        region_of_zone.emplace(zone, (region == number_of.end() ? number_of.find(name) : region)->second);
    }
    std::map<std::string, int> aliases;
    for (const auto &[link, target] : source.links) {
        for (const std::string &name : {link, target}) {
            const auto region = region_of_zone.find(zone_of_(targets, name));
            if (number_of.contains(name) || region == region_of_zone.end()) continue;
            aliases.emplace(lower_case(name), region->second);
        }
    }
    return aliases;
}

namespace {

// Separators turn into '_'; the signs of "Etc/GMT+5" and "Etc/GMT-5", which would turn into the same, into
// words.
std::string c_name_(std::string_view name) {
    std::string result;
    for (size_t i = 0; i < name.size(); ++i) {
        const bool is_sign =
            (name[i] == '+' || name[i] == '-') && i + 1 < name.size() && is_digit_(name[i + 1]);
        if (is_sign) {
            result += name[i] == '+' ? "_plus_" : "_minus_";
        } else {
            result += name[i] == '/' || name[i] == '-' ? '_' : name[i];
        }
    }
    return lower_case(result);
}

}  // namespace

std::string array_name(std::string_view name) { return c_name_(name) + "_infos_"; }

std::string id_name(std::string_view name) {
    std::string id = "TZ_ID_" + c_name_(name);
    for (char &c : id) c = static_cast<char>(c >= 'a' && c <= 'z' ? c - ('a' - 'A') : c);
    return id;
}

}  // namespace tzgen
