// Names of regions. Their numbers are stored in values and never change, so the list is the project's own;
// the tz database renames, merges and drops names (zone_links.h).

#include "zone_names.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <stdexcept>

#include "dvtypes/timezone.h"

namespace tzgen {

namespace {

bool is_digit_(char c) { return c >= '0' && c <= '9'; }

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
