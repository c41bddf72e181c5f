// The regions' names: numbers and C names.

#ifndef TZGEN_ZONE_NAMES_H
#define TZGEN_ZONE_NAMES_H

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace tzgen {

// The names in the order of their numbers, one a line.
// Throws std::runtime_error unless there are TZ_ID_MAX, sorted by their lower-case forms.
std::vector<std::string> read_zone_names(const std::filesystem::path &path);

// ASCII.
std::string lower_case(std::string_view name);

// The name of a region's history array: "america_port_au_prince_infos_", "etc_gmt_plus_5_infos_".
std::string array_name(std::string_view name);

// The name of a region's number: "TZ_ID_AMERICA_PORT_AU_PRINCE", "TZ_ID_ETC_GMT_PLUS_5".
std::string id_name(std::string_view name);

}  // namespace tzgen

#endif  // TZGEN_ZONE_NAMES_H
