// What the files of the zoned timestamps share.

#ifndef DV_ZONED_INTERNAL_H
#define DV_ZONED_INTERNAL_H

#include "../timezone/timezone_internal.h"
#include "dvtypes/timestamp_tz.h"
#include "timestamp_layout.h"

namespace dv::impl {

inline bool is_given_sess_tz(const timezone_t *sess_tz) {  // false, after the assertion, for NULL
    DV_ASSERT(sess_tz != NULL);
    return sess_tz != NULL;
}

}  // namespace dv::impl

#endif  // DV_ZONED_INTERNAL_H
