// The order of TIMESTAMP records. Their fields are those of the DATE and of the TIME that lie in them
// (../datetime/datetime_layout.h).

#ifndef DV_TIMESTAMP_LAYOUT_H
#define DV_TIMESTAMP_LAYOUT_H

#include "../datetime/datetime_layout.h"
#include "dvtypes/timestamp.h"

namespace dv::impl {

constexpr uint64_t timestamp_leading_bytes(const dv_timestamp_t &ts) {  // all but the fraction
    return load_be64(std::bit_cast<std::array<uint8_t, sizeof ts>>(ts).data());
}

constexpr bool timestamp_is_null(const dv_timestamp_t &ts) {
    return timestamp_leading_bytes(ts) == 0 && load_be32(ts.csec) == 0;
}

// -1, 0 or 1 by all twelve bytes; NULL comes first.
constexpr int timestamp_order(const dv_timestamp_t *ts1, const dv_timestamp_t *ts2) {
    if (ts1 == nullptr || ts2 == nullptr) [[unlikely]]
        return (ts1 != nullptr ? 1 : 0) - (ts2 != nullptr ? 1 : 0);
    const uint64_t leading1 = timestamp_leading_bytes(*ts1), leading2 = timestamp_leading_bytes(*ts2);
    if (leading1 == leading2) return order_of(load_be32(ts1->csec), load_be32(ts2->csec));
    return order_of(leading1, leading2);
}

}  // namespace dv::impl

#endif  // DV_TIMESTAMP_LAYOUT_H
