// The bytes of a time zone record: the only place that knows how fields are stored in it.

#ifndef DV_TIMEZONE_LAYOUT_H
#define DV_TIMEZONE_LAYOUT_H

#include <cstddef>

#include "../bytes.h"
#include "../time_units.h"
#include "dvtypes/timezone.h"

namespace dv::impl {

inline constexpr int TZ_OFFSET_HOUR_EXCESS = 100;
inline constexpr int TZ_HOUR_MIN = -12, TZ_HOUR_MAX = 14;

static_assert(sizeof(timezone_t) == 5 && alignof(timezone_t) == 1 && offsetof(timezone_t, zone_id) == 3);

constexpr int tz_hour(const timezone_t &tz) { return tz.utc_hour - TZ_OFFSET_HOUR_EXCESS; }
constexpr void tz_set_hour(timezone_t &tz, int hour) {
    tz.utc_hour = static_cast<uint8_t>(hour + TZ_OFFSET_HOUR_EXCESS);
}

// Signed minutes of the offset as they are applied: the minute has the sign of the hour, with 0 counted as
// negative.
constexpr int tz_applied_minutes(const timezone_t &tz) {
    const int hour = tz_hour(tz), minute = tz.utc_min;
    return hour * MINUTES_PER_HOUR + (hour > 0 ? minute : -minute);
}

constexpr int tz_zone(const timezone_t &tz) { return load_be16(tz.zone_id); }
constexpr void tz_set_zone(timezone_t &tz, int zone) { store_be16(tz.zone_id, static_cast<uint16_t>(zone)); }

constexpr void tz_set_offset(timezone_t &tz, int hour, int minute) {
    tz_set_hour(tz, hour);
    tz.utc_min = static_cast<uint8_t>(minute);
    tz.utc_sec = 0;
}

constexpr bool tz_is_offset(const timezone_t &tz) { return tz_zone(tz) == TZ_ID_OFFSET; }

}  // namespace dv::impl

#endif  // DV_TIMEZONE_LAYOUT_H
