// Comparison, hashing and sorting of the types of fixed length: by their bytes, whose unsigned order is that
// of the values. Values with a zone compare by the instant, which their first bytes are. NUMBER has the
// server's functions for bytea, and postgres_number_sort.cpp.

#ifndef DV_POSTGRES_COMPARE_H
#define DV_POSTGRES_COMPARE_H

#include <algorithm>
#include <bit>

#include "postgres_value.h"

extern "C" {
#include <common/hashfn.h>
#include <utils/sortsupport.h>
}

namespace dv::impl {

// The bytes of a kind that take part.
constexpr int postgres_compared_bytes(sql_kind kind) {
    return kind == SQL_KIND_TS_TZ ? int{sizeof(dv_timestamp_t)} : postgres_type_of(kind).length;
}

// The first eight bytes, or as many as there are, as an unsigned number of their order.
template <sql_kind Kind>
Datum postgres_head(Datum value) {
    constexpr size_t length = std::min(postgres_compared_bytes(Kind), int{sizeof(Datum)});
    Datum head = 0;
    if constexpr (postgres_is_word(Kind)) {
        head = value;
    } else {
        memcpy(&head, DatumGetPointer(value), length);
    }
    if constexpr (std::endian::native == std::endian::little) head = __builtin_bswap64(head);
    return head;
}

// Below 0, 0 or above.
template <sql_kind Kind>
int postgres_order(Datum x, Datum y) {
    if constexpr (postgres_is_word(Kind)) {
        const Datum a = postgres_head<Kind>(x), b = postgres_head<Kind>(y);
        return a < b ? -1 : a > b ? 1 : 0;
    } else {
        return memcmp(DatumGetPointer(x), DatumGetPointer(y), postgres_compared_bytes(Kind));
    }
}

template <sql_kind Kind>
int postgres_order(FunctionCallInfo fcinfo) {
    return postgres_order<Kind>(PG_GETARG_DATUM(0), PG_GETARG_DATUM(1));
}

// DATE and TIMESTAMP, whose first eight bytes are a DATE: Left is the kind of the first.
template <sql_kind Left>
int postgres_mixed_order(FunctionCallInfo fcinfo) {
    constexpr int date_place = Left == SQL_KIND_DATE ? 0 : 1;
    constexpr int sign = Left == SQL_KIND_DATE ? 1 : -1;
    const Datum ts = PG_GETARG_DATUM(1 - date_place);
    const Datum a = postgres_head<SQL_KIND_DATE>(PG_GETARG_DATUM(date_place));
    const Datum b = postgres_head<SQL_KIND_TIMESTAMP>(ts);
    if (a != b) return a < b ? -sign : sign;
    constexpr uint8_t no_fraction[sizeof(dv_timestamp_t::csec)] = {};
    const int order =
        memcmp(DatumGetPointer(ts) + offsetof(dv_timestamp_t, csec), no_fraction, sizeof no_fraction);
    return order == 0 ? 0 : -sign;
}

inline int postgres_order_of_numbers(FunctionCallInfo fcinfo) {
    number_t x, y;
    postgres_take_number(x, PG_GETARG_DATUM(0));
    postgres_take_number(y, PG_GETARG_DATUM(1));
    return number_cmp(&x, &y);
}

// The bytes that are hashed.
template <sql_kind Kind>
const unsigned char *postgres_hashed(const Datum &value) {
    const void *bytes = &value;
    if constexpr (!postgres_is_word(Kind)) bytes = DatumGetPointer(value);
    return static_cast<const unsigned char *>(bytes);
}

template <sql_kind Kind>
Datum postgres_hash(FunctionCallInfo fcinfo) {
    const Datum value = PG_GETARG_DATUM(0);
    return hash_any(postgres_hashed<Kind>(value), postgres_compared_bytes(Kind));
}

template <sql_kind Kind>
Datum postgres_hash_extended(FunctionCallInfo fcinfo) {
    const Datum value = PG_GETARG_DATUM(0);
    return hash_any_extended(postgres_hashed<Kind>(value), postgres_compared_bytes(Kind),
                             static_cast<uint64>(PG_GETARG_INT64(1)));
}

template <sql_kind Kind>
Datum postgres_head_of(Datum value, SortSupport) {
    return postgres_head<Kind>(value);
}

template <sql_kind Kind>
int postgres_sort_order(Datum x, Datum y, SortSupport) {
    return postgres_order<Kind>(x, y);
}

inline bool postgres_never(int, SortSupport) { return false; }

// Sorts by the heads, as words of the server's.
template <sql_kind Kind>
Datum postgres_sort_support(FunctionCallInfo fcinfo) {
    auto *support = reinterpret_cast<SortSupport>(PG_GETARG_POINTER(0));
    support->comparator = postgres_sort_order<Kind>;
    if (support->abbreviate) {
        support->comparator = ssup_datum_unsigned_cmp;
        support->abbrev_converter = postgres_head_of<Kind>;
        support->abbrev_abort = postgres_never;
        support->abbrev_full_comparator = postgres_sort_order<Kind>;
    }
    PG_RETURN_VOID();
}

}  // namespace dv::impl

#endif  // DV_POSTGRES_COMPARE_H
