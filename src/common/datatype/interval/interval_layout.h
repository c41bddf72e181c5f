// The bytes of interval records: the only place that knows how fields are stored in them.
//
// A field of 32 bits is big-endian with 0x40000000 added, months are a byte with 11 added: whatever is
// negative sorts below zero, and so whole records sort as values. Loads and stores wrap around; every byte
// pattern is a field and every field is some byte pattern.

#ifndef DV_INTERVAL_LAYOUT_H
#define DV_INTERVAL_LAYOUT_H

#include <array>
#include <bit>
#include <cstddef>

#include "../bytes.h"
#include "dvtypes/interval.h"

namespace dv::impl {

inline constexpr uint32_t ITV_EXCESS = 0x40000000;  // on fields of 32 bits
inline constexpr int ITV_MONTH_EXCESS = 11;

static_assert(sizeof(dv_itv_ytm_t) == 5 && alignof(dv_itv_ytm_t) == 1 && offsetof(dv_itv_ytm_t, month) == 4);
static_assert(sizeof(dv_itv_dts_t) == 12 && alignof(dv_itv_dts_t) == 1);
static_assert(offsetof(dv_itv_dts_t, sec) == 4 && offsetof(dv_itv_dts_t, fsec) == 8);

// ---- fields ----

constexpr int32_t load_itv32(const uint8_t *p) { return static_cast<int32_t>(load_be32(p) - ITV_EXCESS); }
constexpr void store_itv32(uint8_t *p, int32_t value) {
    store_be32(p, static_cast<uint32_t>(value) + ITV_EXCESS);
}

constexpr int32_t itv_years(const dv_itv_ytm_t &itv) { return load_itv32(itv.year); }
constexpr int32_t itv_months(const dv_itv_ytm_t &itv) { return itv.month - ITV_MONTH_EXCESS; }  // -11..244
constexpr void itv_set_years(dv_itv_ytm_t &itv, int32_t years) { store_itv32(itv.year, years); }
constexpr void itv_set_months(dv_itv_ytm_t &itv, int32_t months) {
    itv.month = static_cast<uint8_t>(static_cast<uint32_t>(months) + ITV_MONTH_EXCESS);
}

constexpr int32_t itv_days(const dv_itv_dts_t &itv) { return load_itv32(itv.day); }
constexpr int32_t itv_seconds(const dv_itv_dts_t &itv) { return load_itv32(itv.sec); }
constexpr int32_t itv_nanoseconds(const dv_itv_dts_t &itv) { return load_itv32(itv.fsec); }
constexpr void itv_set_days(dv_itv_dts_t &itv, int32_t days) { store_itv32(itv.day, days); }
constexpr void itv_set_seconds(dv_itv_dts_t &itv, int32_t seconds) { store_itv32(itv.sec, seconds); }
constexpr void itv_set_nanoseconds(dv_itv_dts_t &itv, int32_t nsec) { store_itv32(itv.fsec, nsec); }

// ---- order: as unsigned integers, the values in order ----

__extension__ typedef unsigned __int128 itv_order_key_t;

constexpr uint64_t itv_order_key(const dv_itv_ytm_t &itv) {
    return uint64_t{load_be32(itv.year)} << 8 | itv.month;
}
constexpr itv_order_key_t itv_order_key(const dv_itv_dts_t &itv) {
    const auto bytes = std::bit_cast<std::array<uint8_t, sizeof itv>>(itv);
    return itv_order_key_t{load_be64(bytes.data())} << 32 | load_be32(bytes.data() + 8);
}

static_assert([] {
    dv_itv_ytm_t itv{};
    itv_set_years(itv, -1);
    itv_set_months(itv, -6);
    return itv_order_key(itv) == 0x3FFFFFFF05 && itv_years(itv) == -1 && itv_months(itv) == -6;
}());
static_assert([] {
    dv_itv_dts_t itv{};
    itv_set_days(itv, 1);
    itv_set_seconds(itv, 0);
    itv_set_nanoseconds(itv, -1);
    return itv_order_key(itv) == (itv_order_key_t{0x4000000140000000} << 32 | 0x3FFFFFFF) &&
           itv_days(itv) == 1 && itv_seconds(itv) == 0 && itv_nanoseconds(itv) == -1;
}());
static_assert([] {
    for (const int32_t field : {INT32_MIN, -1, 0, 1, INT32_MAX}) {
        uint8_t bytes[4] = {};
        store_itv32(bytes, field);
        if (load_itv32(bytes) != field) return false;
    }
    return true;
}());

}  // namespace dv::impl

#endif  // DV_INTERVAL_LAYOUT_H
