// What the generated tables offer beyond the public header.

#ifndef DV_ZONETAB_H
#define DV_ZONETAB_H

#include <cstddef>
#include <span>

#include "dvtypes/timezone.h"
#include "zone_name_hash.h"
#include "zone_years.h"

namespace dv::impl {

static_assert(sizeof(tz_info_t) == 28 && offsetof(tz_info_t, normal) == 3 &&
              offsetof(tz_info_t, local) == 11);
static_assert(sizeof(tz_region_t) == 152 && offsetof(tz_region_t, lc_name) == 69);
static_assert(offsetof(tz_region_t, info_cnt) == 136 && offsetof(tz_region_t, infos) == 144);
static_assert(sizeof(tz_smpl_tm_t) == 48 && offsetof(tz_smpl_tm_t, abbrev) == 36);
static_assert(sizeof(tz_sample_t) == 23044);

// A later name of a region.
struct tz_alias_t {
    char lc_name[TZ_NAME_TEXT_SIZE];
    tz_id_t id;
};

// An abbreviation that some region's history has.
struct tz_abbreviation_t {
    char text[TZ_ABBREV_TEXT_SIZE];
};

extern const std::span<const tz_alias_t> ZONE_ALIASES;  // by lc_name
extern const std::span<const tz_abbreviation_t> ZONE_ABBREVIATIONS;
extern const char ZONE_TABLES_RELEASE[];

#define DV_HIDDEN [[gnu::visibility("hidden")]]
extern "C" {
DV_HIDDEN extern const tz_info_t ZONE_HISTORIES[];  // of all regions, one behind the other
DV_HIDDEN extern const zone_year_t ZONE_YEAR_ROWS[];
DV_HIDDEN extern const zone_year_rows_t ZONE_YEARS[];                  // ZONE_YEAR_COUNT for each history
DV_HIDDEN extern const uint32_t ZONE_FIRST_YEARS[ZONE_ID_PAGES][256];  // where those of a zone begin
DV_HIDDEN extern const uint16_t ZONE_NAME_SHIFTS[1 << ZONE_NAME_BUCKET_BITS];
DV_HIDDEN extern const uint16_t ZONE_NAME_SLOTS[1 << ZONE_NAME_SLOT_BITS];
}
#undef DV_HIDDEN

// The region of exactly this name, in any letter case; NULL: none.
const tz_region_t *search_name(const char *name, size_t length);

}  // namespace dv::impl

#endif  // DV_ZONETAB_H
