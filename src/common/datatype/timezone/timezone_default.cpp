// The zone of the host: from the environment variable TZ, else by comparing the C library's local times with
// those of every region.

#include <cstddef>
#include <cstring>
#include <ctime>

#include "dvtypes/timezone_id.h"
#include "timezone_internal.h"

using namespace dv::impl;

namespace {

constexpr size_t _fields_size = offsetof(tz_smpl_tm_t, abbrev);

// The C library's local time at the instant of a sample; false when it has none, or its abbreviation is
// longer than a sample's.
bool host_sample_(int j, tz_smpl_tm_t &sample) {
    const time_t instant = time_t{TZ_SAMPLE_NEWEST} - time_t{j} * TZ_SAMPLE_STEP;
    struct tm local = {};
    if (localtime_r(&instant, &local) == nullptr) return false;
    sample = {local.tm_sec,  local.tm_min,  local.tm_hour, local.tm_mday,  local.tm_mon,
              local.tm_year, local.tm_wday, local.tm_yday, local.tm_isdst, {}};
    return strftime(sample.abbrev, sizeof sample.abbrev, "%Z", &local) != 0;
}

// The host's samples, each converted when a region is first compared so far.
class host_samples_t {
  public:
    bool agrees(int j, const tz_smpl_tm_t &with) {
        for (; converted_ <= j && !has_ended_; ++converted_) {
            has_ended_ = !host_sample_(converted_, samples_[converted_]);
            if (has_ended_) break;
        }
        if (j >= converted_) return false;
        const tz_smpl_tm_t &ours = samples_[j];
        return memcmp(&ours, &with, _fields_size) == 0 && strcmp(ours.abbrev, with.abbrev) == 0;
    }

  private:
    tz_smpl_tm_t samples_[TZ_SAMPLE_COUNT];
    int converted_ = 0;
    bool has_ended_ = false;
};

int score_(const tz_sample_t &region, host_samples_t &host) {
    int score = 0;
    while (score < TZ_SAMPLE_COUNT && host.agrees(score, region.stms[score])) ++score;
    return score;
}

// The offset that a region has now, as a fixed one.
void store_present_offset_(timezone_t &tz, int zone, dv_date_t now) {
    tz_set_zone(tz, zone);
    timezone_normalize(&tz, &now, NULL);
    tz_set_zone(tz, TZ_ID_OFFSET);
}

// TZ without ":": a region, or an offset. What cannot be read is 0:00:00.
void store_plain_(timezone_t &tz, std::string_view text, const dv_date_t &now) {
    const tz_region_t *region = find_region(text);
    if (region != NULL) return store_present_offset_(tz, region->id, now);
    (void)parse_offset_(&tz, text.data(), static_cast<int>(text.size()), /*for_parser=*/0);
    tz_set_zone(tz, TZ_ID_OFFSET);
}

// TZ behind ":": a region, or the host's own zone.
void store_named_(timezone_t &tz, std::string_view name, const dv_date_t &now) {
    if (name.empty()) return store_present_offset_(tz, zonesmpl_search_default(), now);
    const tz_region_t *region = find_region(name);
    if (region != NULL) return store_present_offset_(tz, region->id, now);
    tz_set_zone(tz, TZ_ID_OFFSET);
}

}  // namespace

extern "C" int32_t zonesmpl_search_default(void) {
    tzset();
    host_samples_t host;
    int32_t candidate_id = TZ_ID_ETC_UTC;
    int best = 0;
    for (int zone = 0; zone < TZ_ID_MAX; ++zone) {
        const int score = score_(sample_tab_[zone], host);
        if (score <= best) continue;
        best = score;
        candidate_id = zone;
    }
    DV_ASSERT(candidate_id < TZ_ID_MAX);
    return candidate_id;
}

extern "C" void timezone_get_system_default(timezone_t *tz) {
    if (!DV_ASSERT(tz != NULL)) return;
    tz_set_offset(*tz, 0, 0);
    const char *const value = dv_getenv("TZ");
    if (value == NULL) return tz_set_zone(*tz, zonesmpl_search_default());
    dv_date_t now;
    dv_date_current(&now);
    if (*value == ':') return store_named_(*tz, value + 1, now);
    store_plain_(*tz, value, now);
}
