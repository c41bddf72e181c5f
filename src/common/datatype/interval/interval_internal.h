// What the interval area offers to itself across files and to other areas, beyond the public header: fields
// (interval_layout.h), totals, and the leading precision. All of it is unchecked and takes any bytes.

#ifndef DV_INTERVAL_INTERNAL_H
#define DV_INTERVAL_INTERNAL_H

#include "../error.h"
#include "interval_layout.h"

namespace dv::impl {

inline constexpr int ITV_MONTHS_PER_YEAR = 12;
inline constexpr int ITV_SEC_PER_MINUTE = 60;
inline constexpr int ITV_SEC_PER_HOUR = 60 * 60;
inline constexpr int ITV_SEC_PER_DAY = 24 * 60 * 60;
inline constexpr int ITV_NSEC_PER_SEC = 1'000'000'000;
inline constexpr int ITV_FSEC_DIGITS = 9;

// For fields and totals that wrap around instead of overflowing.
constexpr int32_t wrapped_sum(int32_t x, int32_t y) {
    return static_cast<int32_t>(static_cast<uint32_t>(x) + static_cast<uint32_t>(y));
}
constexpr int32_t wrapped_product(int32_t x, int32_t y) {
    return static_cast<int32_t>(static_cast<uint32_t>(x) * static_cast<uint32_t>(y));
}

// ---- totals ----

constexpr int32_t itv_total_months(const dv_itv_ytm_t &itv) {
    return wrapped_sum(wrapped_product(itv_years(itv), ITV_MONTHS_PER_YEAR), itv_months(itv));
}
constexpr void itv_set_total_months(dv_itv_ytm_t &itv, int64_t months) {
    itv_set_years(itv, static_cast<int32_t>(months / ITV_MONTHS_PER_YEAR));
    itv_set_months(itv, static_cast<int32_t>(months % ITV_MONTHS_PER_YEAR));
}

// Without the nanoseconds. Cannot overflow: below 2^48.
constexpr int64_t itv_total_seconds(const dv_itv_dts_t &itv) {
    return int64_t{itv_days(itv)} * ITV_SEC_PER_DAY + itv_seconds(itv);
}
constexpr void itv_set_total_seconds(dv_itv_dts_t &itv, int64_t seconds) {
    itv_set_days(itv, static_cast<int32_t>(seconds / ITV_SEC_PER_DAY));
    itv_set_seconds(itv, static_cast<int32_t>(seconds % ITV_SEC_PER_DAY));
}

// ---- digits ----

inline constexpr auto ITV_POWERS_OF_TEN = [] {
    std::array<int64_t, 11> powers{1};
    for (size_t i = 1; i < powers.size(); ++i) powers[i] = powers[i - 1] * 10;
    return powers;
}();

// Decimal digits of a magnitude; none for 0.
constexpr int itv_digit_count(uint32_t magnitude) {
    const int guess = std::bit_width(magnitude) * 1233 >> 12;  // 1233 / 4096 is log10(2): as many or one less
    return guess +
           (magnitude >= static_cast<uint64_t>(ITV_POWERS_OF_TEN[static_cast<size_t>(guess)]) ? 1 : 0);
}

constexpr uint32_t itv_magnitude(int32_t value) {
    return value < 0 ? 0 - static_cast<uint32_t>(value) : static_cast<uint32_t>(value);
}

// The lowest value of a leading field that has more than prec digits. A negative value counts as one digit,
// so no limit lies below zero, but that for a precision below 1, which nothing meets. Within +-10^10.
constexpr int64_t itv_leading_limit(int prec) {
    if (prec < 1) return -ITV_POWERS_OF_TEN.back();
    const auto digits = static_cast<size_t>(prec);
    return digits < ITV_POWERS_OF_TEN.size() ? ITV_POWERS_OF_TEN[digits] : ITV_POWERS_OF_TEN.back();
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

inline bool is_itv_given(const void *itv) {
    DV_ASSERT(itv != NULL);
    return itv != NULL;
}

}  // namespace dv::impl

#endif  // DV_INTERVAL_INTERNAL_H
