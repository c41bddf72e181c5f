// tzgen: makes the library's time zone tables of a tz database.
//
//   tzgen SOURCE FOLDER         writes the tables (output.h) into a folder that exists
//   tzgen SOURCE FOLDER --list  prints every entry of every region, and counts: a text to compare releases by
//
// SOURCE is a file in zic's input language, such as tzdata.zi. zic compiles it into FOLDER/compiled.

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <string_view>

#include "output.h"
#include "source.h"
#include "zone_names.h"
#include "zones.h"

using namespace tzgen;

namespace {

void print_date_(const dv_date_t &date) {
    const int year = (date.century - 100) * 100 + (date.year - 100);
    std::printf(" %d-%02d-%02d %02d:%02d:%02d", year, date.month, date.day, date.hour, date.minute,
                date.second);
}

// "Asia/Seoul 0 +9:00:00 1988-10-08 14:00:00 1988-10-08 23:00:00 KST"
void print_entry_(const zone_t &zone, size_t i) {
    const tz_info_t &entry = zone.history[i];
    const bool is_negative = entry.utc_hour < 0 || entry.utc_min < 0 || entry.utc_sec < 0;
    std::printf("%s %zu %c%d:%02d:%02d", zone.name.c_str(), i, is_negative ? '-' : '+',
                std::abs(entry.utc_hour), std::abs(entry.utc_min), std::abs(entry.utc_sec));
    print_date_(entry.normal);
    print_date_(entry.local);
    std::printf(" %s\n", entry.abbrev);
}

void print_list_(const std::vector<zone_t> &zones) {
    size_t entries = 0, largest = 0;
    for (const zone_t &zone : zones) {
        const size_t count = zone.history.size();
        std::printf("%s: %zu\n", zone.name.c_str(), count);
        for (size_t i = 0; i < count; ++i) print_entry_(zone, i);
        entries += count;
        largest = std::max(largest, count);
    }
    std::printf("%zu regions, %zu entries, largest %zu\n", zones.size(), entries, largest);
}

void run_(const std::filesystem::path &source_path, const std::filesystem::path &folder, bool is_list) {
    const std::vector<std::string> names = read_zone_names(TZGEN_ZONE_NAMES);
    const zone_links_t links = read_zone_links(TZGEN_ZONE_LINKS);
    const source_t source = read_source(source_path);
    compile_source(source_path, TZGEN_ZIC, folder / "compiled");
    const std::vector<zone_t> zones = read_zones(folder / "compiled", links, names);
    if (is_list) {
        print_list_(zones);
    } else {
        write_tables(folder, source, zones, find_aliases(folder / "compiled", links, zones));
    }
}

}  // namespace

int main(int argc, char **argv) {
    const bool is_list = argc == 4 && std::string_view(argv[3]) == "--list";
    if (argc != 3 && !is_list) {
        std::fputs("usage: tzgen SOURCE FOLDER [--list]\n", stderr);
        return 2;
    }
    try {
        run_(argv[1], argv[2], is_list);
    } catch (const std::exception &error) {
        std::fprintf(stderr, "tzgen: %s\n", error.what());
        return 1;
    }
    return 0;
}
