// Putting local times back.

#include "sql_local.h"

#include "sql_gap.h"

using namespace dv::impl;

namespace {

bool have_one_offset_(const timezone_t &x, const timezone_t &y) {
    return x.utc_hour == y.utc_hour && x.utc_min == y.utc_min;
}

// A local time behind the gap that it lies in.
dv_timestamp_t leave_gap_(const dv_timestamp_t &local, int region) {
    dv_timestamp_t left = local;
    const sql_gap gap = sql_find_gap(region_tab_[region], sql_date_part(local));
    if (gap.is_found) dv_timestamp_from_date(&left, &gap.end);
    return left;
}

}  // namespace

void dv::impl::sql_set_local(dv_ts_tz_t &ts_tz, const dv_timestamp_t &local, sql_gap_rule rule) {
    dv_ts_tz_t kept = {local, ts_tz.tz};
    timezone_shift_to_west(&kept.tz, &sql_date_part(kept));
    timezone_adjust(&kept.tz, &sql_date_part(kept));
    if (!have_one_offset_(kept.tz, ts_tz.tz)) {
        const int zone = sql_zone_number(ts_tz.tz);
        const dv_timestamp_t shown = rule == SQL_GAP_IS_LEFT ? leave_gap_(local, zone) : local;
        dv_ts_tz_from_timestamp(&kept, &shown, &ts_tz.tz);
    }
    ts_tz = kept;
}
