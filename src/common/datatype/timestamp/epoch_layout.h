// Counts since 1970-01-01: the units, and where the counting begins.

#ifndef DV_EPOCH_LAYOUT_H
#define DV_EPOCH_LAYOUT_H

#include "../datetime/calendar.h"
#include "dvtypes/epoch.h"

namespace dv::impl {

inline constexpr int JDN_EPOCH = 2440588;  // of 1970-01-01
static_assert(day_number({1970, 1, 1}) == JDN_EPOCH);

inline constexpr int EPOCH_DAY_FIRST = -JDN_EPOCH, EPOCH_DAY_LAST = DV_JULIAN_DAY_MAX - JDN_EPOCH;

// By dv_epoch_unit_e.
inline constexpr int32_t UNITS_PER_SEC[] = {1, 1'000, 1'000'000, NSEC_PER_SEC};
static_assert(std::size(UNITS_PER_SEC) == DV_EPOCH_UNITS);

constexpr bool is_epoch_unit(dv_epoch_unit_t unit) { return unit >= 0 && unit < DV_EPOCH_UNITS; }

}  // namespace dv::impl

#endif  // DV_EPOCH_LAYOUT_H
