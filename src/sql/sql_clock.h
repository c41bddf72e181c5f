// The present, as bodies ask for it.

#ifndef DV_SQL_CLOCK_H
#define DV_SQL_CLOCK_H

#include <cstdint>

namespace dv::impl {

struct sql_instant {
    int64_t seconds;     // since 1970-01-01 00:00:00 UTC
    int64_t utc_offset;  // of the local time that dv_getlocaltime gives then, in seconds
};

// The host's clock and zone. An engine with a time of its own, such as that of the statement, puts its own
// function here when it is loaded, which must agree with its dv_getlocaltime.
extern sql_instant (*sql_present)();

}  // namespace dv::impl

#endif  // DV_SQL_CLOCK_H
