// Time zones and zoned timestamps, without models.

#include <cstdlib>
#include <cstring>

#include "vector_bind.h"

using namespace dv::test;

namespace {

void zone_name_(vector_call &call) {
    const timezone_t *const tz = call.record<timezone_t>();
    char *const text = static_cast<char *>(call.memory(TZ_NAME_TEXT_SIZE + 1));
    const auto size = static_cast<int>(call.integer_or(TZ_NAME_TEXT_SIZE));
    if (call.run([&] { timezone_get_zone_name(tz, text, size); })) call.put_text(text);
}

void zone_abbreviation_(vector_call &call) {
    const timezone_t *const tz = call.record<timezone_t>();
    const dv_date_t *const date = call.record<dv_date_t>();
    char *const text = static_cast<char *>(call.memory(TZ_ABBREV_TEXT_SIZE + 1));
    const auto size = static_cast<int>(call.integer_or(TZ_ABBREV_TEXT_SIZE));
    if (call.run([&] { timezone_get_zone_abbr(tz, date, text, size); })) call.put_text(text);
}

void search_(vector_call &call) {
    const vector_text name = call.ended_text();
    const tz_region_t *region = nullptr;
    if (!call.run([&] { region = zonetab_search_region(name.data); }) || region == nullptr) return;
    call.put(region->id);
    call.put_text(region->canon_name);
}

// The zone's number; its names.
void region_(vector_call &call) {
    const tz_region_t &region = region_tab_[static_cast<size_t>(call.integer()) % TZ_ID_MAX];
    call.put_text(region.canon_name);
    call.put_text(region.lc_name);
}

// Zone, instant in UTC: local time, offset, abbreviation; then what comes back from the local time with it.
void region_at_(vector_call &call) {
    timezone_t *const tz = call.record<timezone_t>(), found{}, back = *tz;
    dv_date_t date = *call.record<dv_date_t>();
    char abbreviation[TZ_ABBREV_TEXT_SIZE];
    timezone_get_zone_abbr(tz, &date, abbreviation, sizeof abbreviation);
    if (!call.run([&] { timezone_localize(tz, &date, &found); })) return;
    call.put_bytes(&date, sizeof date);
    call.put_bytes(&found, sizeof found);
    call.put_text(abbreviation);
    if (call.run([&] { timezone_normalize(&back, &date, abbreviation); })) call.put_bytes(&date, sizeof date);
}

// Zone, sample: fields of the local time as struct tm has them, abbreviation.
void sample_(vector_call &call) {
    const auto zone = static_cast<size_t>(call.integer()) % TZ_ID_MAX;
    const tz_smpl_tm_t &tm = sample_tab_[zone].stms[static_cast<size_t>(call.integer()) % TZ_SAMPLE_COUNT];
    const int fields[] = {tm.tm_sec,  tm.tm_min,  tm.tm_hour, tm.tm_mday, tm.tm_mon,
                          tm.tm_year, tm.tm_wday, tm.tm_yday, tm.tm_isdst};
    for (const int field : fields) call.put(field);
    call.put_text(tm.abbrev);
}

// The environment's TZ, null for none.
void system_default_(vector_call &call) {
    const vector_text zone = call.ended_text();
    zone.data != nullptr ? setenv("TZ", zone.data, 1) : unsetenv("TZ");
    timezone_t tz{};
    call.run([&] { timezone_get_system_default(&tz); });
    call.put_bytes(&tz, sizeof tz);
    unsetenv("TZ");
}

}  // namespace

void dv::test::add_zone_operations(vector_operations &all) {
    all.add_into<timezone_init, timezone_parse, dv_ts_tz_from_date, dv_ts_tz_from_timestamp,
                 dv_ts_tz_from_ts_ltz, dv_ts_tz_current, dv_ts_tz_sub_ts_tz_into_itv_ytm,
                 dv_ts_tz_sub_ts_tz_into_itv_dts, dv_ts_ltz_from_date, dv_ts_ltz_from_timestamp,
                 dv_ts_ltz_from_ts_tz, dv_ts_ltz_current>();
    all.add_in_place<timezone_set_field, timezone_get_field, parse_offset_, timezone_shift_to_east,
                     timezone_shift_to_west, timezone_normalize, timezone_adjust, dv_ts_tz_from_unit_values,
                     dv_ts_tz_compare, dv_ts_tz_trim_fsec, dv_ts_tz_to_double, dv_ts_tz_add_itv_ytm,
                     dv_ts_tz_sub_itv_ytm, dv_ts_tz_add_itv_dts, dv_ts_tz_sub_itv_dts,
                     dv_ts_ltz_from_unit_values, dv_ts_ltz_compare, dv_ts_ltz_trim_fsec,
                     dv_ts_ltz_to_double>();
    all.add_into_second<dv_ts_tz_to_number, dv_ts_tz_from_double, dv_ts_tz_from_number, dv_ts_ltz_to_number,
                        dv_ts_ltz_from_double, dv_ts_ltz_from_number>();
    all.add("region_tab_", region_);
    all.add("region_at", region_at_);
    all.add("sample_tab_", sample_);
    all.add("zonetab_search_region", search_);
    all.add("timezone_localize", into<timezone_localize, 2>);
    all.add("timezone_get_zone_name", zone_name_);
    all.add("timezone_get_zone_abbr", zone_abbreviation_);
    all.add("timezone_get_system_default", system_default_);
}
