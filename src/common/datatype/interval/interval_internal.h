// What the interval area offers to itself across files and to other areas, beyond the public header: fields
// (interval_layout.h), totals, and the leading precision. All of it is unchecked and takes any bytes.

#ifndef DV_INTERVAL_INTERNAL_H
#define DV_INTERVAL_INTERNAL_H

#include "../error.h"
#include "../time_units.h"
#include "interval_layout.h"

namespace dv::impl {

// For fields and totals that wrap around instead of overflowing.
constexpr int32_t wrapped_sum(int32_t x, int32_t y) {
    return static_cast<int32_t>(static_cast<uint32_t>(x) + static_cast<uint32_t>(y));
}
constexpr int32_t wrapped_product(int32_t x, int32_t y) {
    return static_cast<int32_t>(static_cast<uint32_t>(x) * static_cast<uint32_t>(y));
}

// ---- totals ----

constexpr int32_t itv_total_months(const dv_itv_ytm_t &itv) {
    return wrapped_sum(wrapped_product(itv_years(itv), MONTHS_PER_YEAR), itv_months(itv));
}
constexpr void itv_set_total_months(dv_itv_ytm_t &itv, int64_t months) {
    itv_set_years(itv, static_cast<int32_t>(months / MONTHS_PER_YEAR));
    itv_set_months(itv, static_cast<int32_t>(months % MONTHS_PER_YEAR));
}

// Without the nanoseconds. Cannot overflow: below 2^48.
constexpr int64_t itv_total_seconds(const dv_itv_dts_t &itv) {
    return int64_t{itv_days(itv)} * SEC_PER_DAY + itv_seconds(itv);
}
constexpr void itv_set_total_seconds(dv_itv_dts_t &itv, int64_t seconds) {
    itv_set_days(itv, static_cast<int32_t>(seconds / SEC_PER_DAY));
    itv_set_seconds(itv, static_cast<int32_t>(seconds % SEC_PER_DAY));
}

// ---- leading precision ----

// The lowest value of a leading field that has more than prec digits. A negative value counts as one digit,
// so no limit lies below zero, but that for a precision below 1, which nothing meets. Within +-10^10.
constexpr int64_t itv_leading_limit(int prec) {
    if (prec < 1) return -DECIMAL_POWERS.back();
    const auto digits = static_cast<size_t>(prec);
    return digits < DECIMAL_POWERS.size() ? DECIMAL_POWERS[digits] : DECIMAL_POWERS.back();
}

// ---- order ----

// -1, 0 or 1 by the bytes; NULL comes first.
template <typename Record>
constexpr int itv_compare(const Record *itv1, const Record *itv2) {
    if (itv1 == nullptr || itv2 == nullptr) [[unlikely]]
        return (itv1 != nullptr ? 1 : 0) - (itv2 != nullptr ? 1 : 0);
    const auto key1 = itv_order_key(*itv1), key2 = itv_order_key(*itv2);
    return (key1 > key2 ? 1 : 0) - (key1 < key2 ? 1 : 0);
}

// ---- arguments: false, after the assertion, for NULL ----

inline bool is_itv_given(const void *itv) { return DV_ASSERT(itv != NULL); }

}  // namespace dv::impl

#endif  // DV_INTERVAL_INTERNAL_H
