// The host's clock, by the C library.

#include "sql_clock.h"

#include <ctime>

namespace {

dv::impl::sql_instant host_instant_() {
    const time_t now = time(nullptr);
    tm local{};
    localtime_r(&now, &local);
    return {now, local.tm_gmtoff};
}

}  // namespace

constinit decltype(dv::impl::sql_present) dv::impl::sql_present = host_instant_;
