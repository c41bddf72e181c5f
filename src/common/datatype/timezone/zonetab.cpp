// Regions by name: hashed; then, for later names, a search by halving in their list. The tables themselves
// are generated (tools/tzgen).

#include "zonetab.h"

#include <algorithm>
#include <cstring>

#include "../ascii.h"
#include "../error.h"
#include "dvtypes/timezone_id.h"

using namespace dv::impl;

namespace {

// The sign tells the order, whatever the locale.
constexpr int compare_(const char *name, const char *lc_name) {
    while (*lc_name != '\0' && to_lower(*name) == *lc_name) {
        ++name;
        ++lc_name;
    }
    return static_cast<unsigned char>(to_lower(*name)) - static_cast<unsigned char>(*lc_name);
}

bool is_name_(const char *text, size_t length, const char *lc_name) {
    for (size_t i = 0; i < length; ++i) {
        if (to_lower(text[i]) != lc_name[i]) return false;
    }
    return lc_name[length] == '\0';
}

// The only region that can have this name.
const tz_region_t *candidate_(const zone_name_words_t &words) {
    const uint64_t hash = zone_name_hash(words);
    return &region_tab_[ZONE_NAME_SLOTS[zone_name_slot(hash, ZONE_NAME_SHIFTS[zone_name_bucket(hash)])]];
}

[[gnu::noinline]] const tz_region_t *if_named_(const tz_region_t *region, const char *name, size_t length) {
    return is_name_(name, length, region->lc_name) ? region : NULL;
}

// Of other lengths; longer names there are none.
[[gnu::noinline]] const tz_region_t *search_short_name_(const char *name, size_t length) {
    if (length == 0 || length >= ZONE_NAME_MIN) return NULL;
    return if_named_(candidate_(short_zone_name_words(name, length)), name, length);
}

const tz_region_t *search_alias_(const char *name) {
    const auto alias = std::lower_bound(
        ZONE_ALIASES.begin(), ZONE_ALIASES.end(), name,
        [](const tz_alias_t &row, const char *wanted) { return compare_(wanted, row.lc_name) > 0; });
    const bool is_found = alias != ZONE_ALIASES.end() && compare_(name, alias->lc_name) == 0;
    return is_found ? &region_tab_[alias->id] : nullptr;
}

}  // namespace

// Most names are written as the table has them; these take four comparisons.
const tz_region_t *dv::impl::search_name(const char *name, size_t length) {
    if (length - ZONE_NAME_MIN > ZONE_NAME_LENGTH_MAX - ZONE_NAME_MIN)
        return search_short_name_(name, length);
    const zone_name_words_t words = zone_name_words(name, length);
    const tz_region_t *const region = candidate_(words);
    const zone_name_words_t wanted = zone_name_words(region->canon_name, length);
    const uint64_t differences = (words.first ^ wanted.first) | (words.second ^ wanted.second) |
                                 (words.before_last ^ wanted.before_last) | (words.last ^ wanted.last);
    const bool is_same = differences == 0 && region->canon_name[length] == '\0';
    return is_same ? region : if_named_(region, name, length);
}

const tz_region_t *zonetab_search_region(const char *region) {
    if (region == nullptr || *region == '\0') return &region_tab_[TZ_ID_ETC_UTC];
    const tz_region_t *const found = search_name(region, strlen(region));
    return found != NULL ? found : search_alias_(region);
}

const char *zonetab_get_version(void) { return ZONE_TABLES_RELEASE; }
