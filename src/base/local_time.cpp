// The host's local time: the real-time clock, read through the thread's local clock.

#include <ctime>
#include <type_traits>

#include "dvtypes/base.h"
#include "local_clock.h"

using namespace dv::impl;

namespace {

static_assert(std::is_trivially_destructible_v<local_clock_t>);
constinit thread_local local_clock_t _clock;

}  // namespace

extern "C" void dv_getlocaltime(int *year, int *month, int *day, int *hour, int *minute, int *second,
                                int *usec) {
    struct timespec now;
    clock_gettime(CLOCK_REALTIME, &now);
    const local_fields_t fields = _clock.fields_at(now.tv_sec);
    *year = fields.year;
    *month = fields.month;
    *day = fields.day;
    *hour = fields.hour;
    *minute = fields.minute;
    *second = fields.second;
    *usec = static_cast<int>(now.tv_nsec / 1000);
}
