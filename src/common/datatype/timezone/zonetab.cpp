// Regions by name: a search by halving in the table, which is in the order of the names in lower case, then
// in the list of later names. The tables themselves are generated (tools/tzgen).

#include "zonetab.h"

#include <algorithm>

#include "../error.h"

using namespace dv::impl;

namespace {

constexpr tz_id_t _etc_utc = 412;

constexpr int lower_case_(char c) {
    return c >= 'A' && c <= 'Z' ? c + ('a' - 'A') : static_cast<unsigned char>(c);
}

// The sign tells the order, whatever the locale.
constexpr int compare_(const char *name, const char *lc_name) {
    while (*lc_name != '\0' && lower_case_(*name) == static_cast<unsigned char>(*lc_name)) {
        ++name;
        ++lc_name;
    }
    return lower_case_(*name) - static_cast<unsigned char>(*lc_name);
}

const tz_region_t *search_alias_(const char *name) {
    const auto alias = std::lower_bound(
        ZONE_ALIASES.begin(), ZONE_ALIASES.end(), name,
        [](const tz_alias_t &row, const char *wanted) { return compare_(wanted, row.lc_name) > 0; });
    const bool is_found = alias != ZONE_ALIASES.end() && compare_(name, alias->lc_name) == 0;
    return is_found ? &region_tab_[alias->id] : nullptr;
}

}  // namespace

const tz_region_t *zonetab_search_region(const char *region) {
    if (region == nullptr || *region == '\0') return &region_tab_[_etc_utc];
    int low = 0, high = TZ_ID_MAX - 1;
    while (low <= high) {
        const int middle = low + (high - low) / 2;
        DV_ASSERT(middle >= 0 && middle < TZ_ID_MAX);
        const int order = compare_(region, region_tab_[middle].lc_name);
        if (order == 0) return &region_tab_[middle];
        if (order < 0) {
            high = middle - 1;
        } else {
            low = middle + 1;
        }
    }
    return search_alias_(region);
}

const char *zonetab_get_version(void) { return ZONE_TABLES_RELEASE; }
