// Other names of zones: under which name the tz database has a region's data, and which names stand for one.
//
// Packagers choose between forms of one release: with or without the file of old names, links or copies of
// zones, either name of a pair as the zone. So links are not read from the source: those that the tz project
// made are a table of the project's own, and what a later release adds shows by its data.

#ifndef TZGEN_ZONE_LINKS_H
#define TZGEN_ZONE_LINKS_H

#include <filesystem>
#include <map>
#include <string>
#include <vector>

namespace tzgen {

struct zone_t;

using zone_links_t = std::map<std::string, std::string>;  // by name: what the tz database keeps it under

// Lines "NAME TARGET"; those that begin with "#" are comments.
// Throws std::runtime_error if the file cannot be read, or links lead back to where they began.
zone_links_t read_zone_links(const std::filesystem::path &path);

// The file of a region in a compiled source: its own, else the first that there is of those that its links
// lead to. Throws std::runtime_error, which says what to do, if there is none.
std::filesystem::path file_of(const std::filesystem::path &compiled, const zone_links_t &links,
                              const std::string &name);

// Names that are no region's but stand for one, in lower case, with the region's number: those that links
// join, and those of the compiled source whose whole history is a region's. Of several regions the first.
std::map<std::string, int> find_aliases(const std::filesystem::path &compiled, const zone_links_t &links,
                                        const std::vector<zone_t> &zones);

}  // namespace tzgen

#endif  // TZGEN_ZONE_LINKS_H
