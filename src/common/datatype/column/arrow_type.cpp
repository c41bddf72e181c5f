// Types of Arrow arrays, from format strings and to them.
//
//   format    = "i" | "l" | "g" | "u" | "z" | "tdD" | "w:" number | "ts" unit ":" [ zone ]
//             | "d:" number "," number [ "," number ]
//   unit      = "s" | "m" | "u" | "n"
//
// The name of an extension stands in the metadata: a count of pairs, and of each pair key and value with
// their lengths in front, all of them int32_t in the machine's byte order, at any address.

#include "arrow_type.h"

#include <string_view>

#include "../ascii.h"
#include "../error.h"
#include "decimal_rows.h"
#include "dvtypes/interval.h"
#include "dvtypes/rowid.h"
#include "dvtypes/timestamp_record.h"

using namespace dv::impl;

namespace {

constexpr std::string_view _extension_key = "ARROW:extension:name";
constexpr std::string_view _units = "smun";  // by dv_epoch_unit_e

struct plain_format_t {
    std::string_view format;
    dv_arrow_kind_e kind;
    int32_t bytes;
};
constexpr plain_format_t _plain_formats[] = {
    {"i", DV_ARROW_INT32, 4},    {"l", DV_ARROW_INT64, 8}, {"g", DV_ARROW_DOUBLE, 8},
    {"tdD", DV_ARROW_DATE32, 4}, {"u", DV_ARROW_UTF8, 0},  {"z", DV_ARROW_BINARY, 0},
};

struct record_name_t {
    std::string_view name;
    dv_type_t record;
    int32_t bytes;
};
constexpr record_name_t _record_names[] = {
    {"dvtypes.number", DV_TYPE_NUMBER, sizeof(number_t)},
    {"dvtypes.date", DV_TYPE_DATE, sizeof(dv_date_t)},
    {"dvtypes.time", DV_TYPE_TIME, sizeof(dv_time_t)},
    {"dvtypes.timestamp", DV_TYPE_TIMESTAMP, sizeof(dv_timestamp_t)},
    {"dvtypes.timestamp_tz", DV_TYPE_TS_TZ, sizeof(dv_ts_tz_t)},
    {"dvtypes.timestamp_ltz", DV_TYPE_TS_LTZ, sizeof(dv_ts_ltz_t)},
    {"dvtypes.interval_ym", DV_TYPE_ITV_YTM, sizeof(dv_itv_ytm_t)},
    {"dvtypes.interval_ds", DV_TYPE_ITV_DTS, sizeof(dv_itv_dts_t)},
    {"dvtypes.rowid", DV_TYPE_ROWID, sizeof(rowid_t)},
};

const record_name_t *record_of_(dv_type_t type) {
    for (const record_name_t &row : _record_names) {
        if (row.record == type) return &row;
    }
    return nullptr;
}

// ---- reading ----

// "12" or "-12" of at most nine digits, at the front of a text and taken off it.
bool take_number_(std::string_view &text, int32_t &number) {
    const bool negative = text.starts_with('-');
    size_t i = negative ? 1 : 0;
    const size_t first = i;
    number = 0;
    for (; i < text.size() && is_digit(text[i]); ++i) {
        if (i - first == 9) return false;
        number = number * 10 + (text[i] - '0');
    }
    if (i == first) return false;
    if (negative) number = -number;
    text.remove_prefix(i);
    return true;
}

bool take_(std::string_view &text, std::string_view what) {
    if (!text.starts_with(what)) return false;
    text.remove_prefix(what.size());
    return true;
}

bool read_decimal_(std::string_view text, dv_arrow_type_t &type) {
    int32_t bits = 128;
    if (!take_number_(text, type.precision) || !take_(text, ",") || !take_number_(text, type.scale))
        return false;
    if (take_(text, ",") && !take_number_(text, bits)) return false;
    if (!text.empty() || (bits != 64 && bits != 128)) return false;
    type.kind = DV_ARROW_DECIMAL;
    type.bytes = bits / 8;
    return is_decimal_type(type.bytes, type.precision, type.scale);
}

bool read_timestamp_(std::string_view text, dv_arrow_type_t &type) {
    if (text.size() < 2 || text[1] != ':' || _units.find(text[0]) == _units.npos) return false;
    type.kind = DV_ARROW_TIMESTAMP;
    type.bytes = sizeof(int64_t);
    type.unit = static_cast<dv_epoch_unit_t>(_units.find(text[0]));
    type.zone = text.size() > 2 ? text.data() + 2 : nullptr;
    return true;
}

bool read_fixed_(std::string_view text, dv_arrow_type_t &type) {
    type.kind = DV_ARROW_FIXED_BINARY;
    return take_number_(text, type.bytes) && text.empty() && type.bytes > 0;
}

bool read_format_(std::string_view text, dv_arrow_type_t &type) {
    for (const plain_format_t &row : _plain_formats) {
        if (row.format != text) continue;
        type.kind = row.kind;
        type.bytes = row.bytes;
        return true;
    }
    if (take_(text, "d:")) return read_decimal_(text, type);
    if (take_(text, "ts")) return read_timestamp_(text, type);
    return take_(text, "w:") && read_fixed_(text, type);
}

// A text with its length in front; false: the length is none.
bool take_pair_part_(const char *&at, std::string_view &part) {
    int32_t length;
    memcpy(&length, at, sizeof length);
    if (length < 0) return false;
    part = {at + sizeof length, static_cast<size_t>(length)};
    at += sizeof length + part.size();
    return true;
}

// The value of the extension's name, empty where there is none; false: metadata that is none.
bool find_extension_(const char *metadata, std::string_view &name) {
    name = {};
    if (metadata == nullptr) return true;
    int32_t pairs;
    memcpy(&pairs, metadata, sizeof pairs);
    if (pairs < 0) return false;
    const char *at = metadata + sizeof pairs;
    for (; pairs > 0; --pairs) {
        std::string_view key, value;
        if (!take_pair_part_(at, key) || !take_pair_part_(at, value)) return false;
        if (key == _extension_key) name = value;
    }
    return true;
}

// Whether the values of a type can be records of a name.
bool can_hold_(const dv_arrow_type_t &type, const record_name_t &row) {
    if (type.kind == DV_ARROW_BINARY) return row.record == DV_TYPE_NUMBER;
    return type.kind == DV_ARROW_FIXED_BINARY && type.bytes == row.bytes;
}

// ---- writing ----

struct writer_t {
    char *text;
    size_t room;
    size_t length = 0;

    void put(std::string_view part) {
        if (part.size() > room - length) raise(DV_ERR_ARROW, "the name of the zone is too long");
        memcpy(text + length, part.data(), part.size());
        length += part.size();
    }
    void put(int32_t number) {
        char digits[12];
        char *at = digits + sizeof digits;
        uint32_t rest = number < 0 ? 0 - static_cast<uint32_t>(number) : static_cast<uint32_t>(number);
        do {
            *--at = static_cast<char>('0' + rest % 10);
            rest /= 10;
        } while (rest != 0);
        if (number < 0) *--at = '-';
        put({at, static_cast<size_t>(digits + sizeof digits - at)});
    }
    void put_with_length(std::string_view part) {
        const auto size = static_cast<int32_t>(part.size());
        put({reinterpret_cast<const char *>(&size), sizeof size});
        put(part);
    }
};

void write_decimal_(const dv_arrow_type_t &type, writer_t &out) {
    if (!is_decimal_type(type.bytes, type.precision, type.scale)) raise(DV_ERR_ARROW, "no such decimal type");
    out.put("d:");
    out.put(type.precision);
    out.put(",");
    out.put(type.scale);
    if (type.bytes == 8) out.put(",64");
}

void write_timestamp_(const dv_arrow_type_t &type, writer_t &out) {
    if (type.unit < 0 || type.unit >= DV_EPOCH_UNITS) raise(DV_ERR_ARROW, "no such unit");
    out.put("ts");
    out.put({&_units[static_cast<size_t>(type.unit)], 1});
    out.put(":");
    if (type.zone != nullptr) out.put(type.zone);
}

void write_bytes_(int32_t bytes, writer_t &out) {
    if (bytes == 0) return out.put("z");
    out.put("w:");
    out.put(bytes);
}

// Everything but records.
void write_format_(const dv_arrow_type_t &type, writer_t &out) {
    for (const plain_format_t &row : _plain_formats) {
        if (row.kind == type.kind) return out.put(row.format);
    }
    switch (type.kind) {
        case DV_ARROW_DECIMAL:
            return write_decimal_(type, out);
        case DV_ARROW_TIMESTAMP:
            return write_timestamp_(type, out);
        case DV_ARROW_FIXED_BINARY:
            if (type.bytes > 0) return write_bytes_(type.bytes, out);
            [[fallthrough]];
        default:
            raise(DV_ERR_ARROW, "no such type");
    }
}

void write_record_(const dv_arrow_type_t &type, bool is_by_offsets, writer_t &format, writer_t &metadata) {
    const record_name_t *const row = record_of_(type.record);
    if (row == nullptr || (is_by_offsets && type.record != DV_TYPE_NUMBER))
        raise(DV_ERR_ARROW, "no such record");
    write_bytes_(is_by_offsets ? 0 : row->bytes, format);
    constexpr int32_t pairs = 1;
    metadata.put({reinterpret_cast<const char *>(&pairs), sizeof pairs});
    metadata.put_with_length(_extension_key);
    metadata.put_with_length(row->name);
}

}  // namespace

void dv::impl::read_arrow_type(const ArrowSchema &schema, dv_arrow_type_t &type) {
    type = {};
    if (schema.format == nullptr || !read_format_(schema.format, type))
        raise(DV_ERR_ARROW, "the format is not supported");
    std::string_view name;
    if (!find_extension_(schema.metadata, name)) raise(DV_ERR_ARROW, "the metadata is damaged");
    for (const record_name_t &row : _record_names) {
        if (row.name != name) continue;
        if (!can_hold_(type, row)) raise(DV_ERR_ARROW, "the format does not hold such records");
        type.kind = DV_ARROW_RECORD;
        type.record = row.record;
    }
}

void dv::impl::write_arrow_type(const dv_arrow_type_t &type, bool is_by_offsets, dv_arrow_export_t &lent,
                                ArrowSchema &schema) {
    writer_t format = {lent.format, sizeof lent.format - 1};
    writer_t metadata = {lent.metadata, sizeof lent.metadata};
    if (type.kind == DV_ARROW_RECORD) {
        write_record_(type, is_by_offsets, format, metadata);
    } else {
        write_format_(type, format);
    }
    lent.format[format.length] = '\0';
    schema.format = lent.format;
    schema.metadata = metadata.length != 0 ? lent.metadata : nullptr;
}

int32_t dv::impl::arrow_value_bytes(const dv_arrow_type_t &type) {
    for (const plain_format_t &row : _plain_formats) {
        if (row.kind == type.kind) return row.bytes;
    }
    if (type.kind == DV_ARROW_TIMESTAMP) return sizeof(int64_t);
    if (type.kind != DV_ARROW_RECORD) return type.bytes;
    const record_name_t *const row = record_of_(type.record);
    return row != nullptr ? row->bytes : 0;
}
