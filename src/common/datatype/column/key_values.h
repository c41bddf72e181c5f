// The bytes of values of a fixed length in keys, whose unsigned order is that of the values, and the way
// back.
//
// Records have such a form already. Machine numbers become big-endian with the sign turned, a double that is
// negative complemented.
//
// Each type of values is a struct of its own with
//
//     using value_t = ...;                            // as columns and callers have it
//     static constexpr int key_bytes = ...;           // of a value in a key
//     static void write(uint8_t *key, const void *value);
//     static void read(value_t &value, const uint8_t *key);
//     static const char *fault(const value_t &value);  // what is wrong with a value that was read, or NULL

#ifndef DV_COLUMN_KEY_VALUES_H
#define DV_COLUMN_KEY_VALUES_H

#include <array>
#include <bit>

#include "../bytes.h"
#include "../error.h"
#include "../number/number_limb.h"
#include "../timezone/timezone_layout.h"
#include "dvtypes/column_key.h"
#include "dvtypes/datetime.h"
#include "dvtypes/interval.h"
#include "dvtypes/rowid.h"
#include "dvtypes/timestamp.h"
#include "dvtypes/timestamp_tz.h"

namespace dv::impl {

inline bool has_key_type(const dv_key_part_t *part) {
    return given(part) && part->type >= 0 && part->type < DV_KEY_TYPES;
}

// A record whose first bytes are its key.
template <typename Record, const char *(*get_fault)(const Record *), int size = sizeof(Record)>
struct record_key_t {
    using value_t = Record;
    static constexpr int key_bytes = size;
    static void write(uint8_t *key, const void *value) { memcpy(key, value, size); }
    static void read(Record &value, const uint8_t *key) {
        value = {};
        memcpy(&value, key, size);
    }
    static const char *fault(const Record &value) { return get_fault(&value); }
};

using date_key_t = record_key_t<dv_date_t, dv_date_get_fault, offsetof(dv_date_t, dummy)>;
using timestamp_key_t = record_key_t<dv_timestamp_t, dv_timestamp_get_fault>;
using ts_ltz_key_t = record_key_t<dv_ts_ltz_t, dv_ts_ltz_get_fault>;
using itv_ytm_key_t = record_key_t<dv_itv_ytm_t, dv_itv_ytm_get_fault>;
using itv_dts_key_t = record_key_t<dv_itv_dts_t, dv_itv_dts_get_fault>;

struct time_key_t : record_key_t<dv_time_t, dv_time_get_fault> {
    static void write(uint8_t *key, const void *value) {
        memcpy(key, value, sizeof(dv_time_t));
        key[offsetof(dv_time_t, dummy)] = 0;
    }
};

// The instant alone; read back, it is in UTC.
struct ts_tz_key_t : record_key_t<dv_ts_tz_t, dv_ts_tz_get_fault, sizeof(dv_timestamp_t)> {
    static void read(dv_ts_tz_t &value, const uint8_t *key) {
        memcpy(&value.utc, key, sizeof value.utc);
        tz_set_offset(value.tz, 0, 0);
        tz_set_zone(value.tz, TZ_ID_OFFSET);
    }
};

// Values of which every bit pattern is one.
template <typename Value>
struct any_value_t {
    using value_t = Value;
    static const char *fault(const Value & /*value*/) { return nullptr; }
};

struct rowid_key_t : any_value_t<rowid_t> {
    static constexpr int key_bytes = 12;
    static void write(uint8_t *key, const void *value) {
        rowid_t rowid;
        memcpy(&rowid, value, sizeof rowid);
        store_be32(key, rowid.sgmt);
        store_be16(key + 4, rowid.file);
        store_be32(key + 6, rowid.block);
        store_be16(key + 10, rowid.row);
    }
    static void read(rowid_t &value, const uint8_t *key) {
        value = {load_be32(key), load_be32(key + 6), load_be16(key + 4), load_be16(key + 10)};
    }
};

template <typename Unsigned>
struct integer_key_t : any_value_t<Unsigned> {
    static constexpr int key_bytes = sizeof(Unsigned);
    static constexpr Unsigned sign = Unsigned{1} << (8 * sizeof(Unsigned) - 1);
    static void write(uint8_t *key, const void *value) {
        Unsigned bits;
        memcpy(&bits, value, sizeof bits);
        store_be(key, bits ^ sign);
    }
    static void read(Unsigned &value, const uint8_t *key) { value = load_be<Unsigned>(key) ^ sign; }
};

struct int128_key_t : any_value_t<uint128_t> {
    static constexpr int key_bytes = sizeof(uint128_t);
    static constexpr uint64_t sign = uint64_t{1} << 63;
    static void write(uint8_t *key, const void *value) {
        uint128_t bits;
        memcpy(&bits, value, sizeof bits);
        store_be64(key, static_cast<uint64_t>(bits >> 64) ^ sign);
        store_be64(key + 8, static_cast<uint64_t>(bits));
    }
    static void read(uint128_t &value, const uint8_t *key) {
        value = uint128_t{load_be64(key) ^ sign} << 64 | load_be64(key + 8);
    }
};

struct double_key_t {
    using value_t = double;
    static constexpr int key_bytes = sizeof(double);
    static constexpr uint64_t sign = uint64_t{1} << 63;
    static void write(uint8_t *key, const void *value) {
        double number;
        memcpy(&number, value, sizeof number);
        uint64_t bits = std::bit_cast<uint64_t>(number + 0.0);  // -0 + 0 is 0
        if (number != number) bits = ~sign;
        store_be64(key, (bits & sign) != 0 ? ~bits : bits | sign);
    }
    static void read(double &value, const uint8_t *key) {
        const uint64_t bits = load_be64(key);
        value = std::bit_cast<double>((bits & sign) != 0 ? bits ^ sign : ~bits);
    }
    static const char *fault(const double &value) {
        const auto bits = std::bit_cast<uint64_t>(value);
        if (bits == sign) return "-0 is 0 in a key";
        return value != value && bits != ~sign ? "a NaN has one form in a key" : nullptr;
    }
};

// A row for each type of key, by dv_key_type_e: those of NUMBER and of bytes are given, `fixed` makes that of
// a value of fixed length from its struct.
template <typename Row, typename Fixed>
constexpr std::array<Row, DV_KEY_TYPES> key_types(Row number, Row bytes, Fixed fixed) {
    return {number,
            fixed(date_key_t{}),
            fixed(time_key_t{}),
            fixed(timestamp_key_t{}),
            fixed(ts_tz_key_t{}),
            fixed(ts_ltz_key_t{}),
            fixed(itv_ytm_key_t{}),
            fixed(itv_dts_key_t{}),
            fixed(rowid_key_t{}),
            fixed(integer_key_t<uint32_t>{}),
            fixed(integer_key_t<uint64_t>{}),
            fixed(int128_key_t{}),
            fixed(double_key_t{}),
            bytes};
}

}  // namespace dv::impl

#endif  // DV_COLUMN_KEY_VALUES_H
