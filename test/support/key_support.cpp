// See key_support.h.

#include "key_support.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <limits>
#include <tuple>

#include "dvtypes/datetime.h"
#include "dvtypes/interval.h"
#include "dvtypes/rowid.h"
#include "dvtypes/timestamp.h"
#include "dvtypes/timestamp_tz.h"

namespace dv::test {

namespace {

__extension__ using int128_t = __int128;

template <typename T>
T value_(const std::string &bytes) {
    T value;
    std::memcpy(&value, bytes.data(), sizeof value);
    return value;
}

template <typename T>
std::string bytes_(const T &value) {
    return {reinterpret_cast<const char *>(&value), sizeof value};
}

// ---- order ----

template <typename T>
int by_less_(const std::string &x, const std::string &y) {
    return int{value_<T>(y) < value_<T>(x)} - int{value_<T>(x) < value_<T>(y)};
}

template <typename T, int (*compare)(const T *, const T *)>
int by_function_(const std::string &x, const std::string &y) {
    const T left = value_<T>(x), right = value_<T>(y);
    const int order = compare(&left, &right);
    return int{order > 0} - int{order < 0};
}

int by_number_(const std::string &x, const std::string &y) {
    const number_t left = number_of(x), right = number_of(y);
    return std::clamp(number_cmp(&left, &right), -1, 1);
}

int by_double_(const std::string &x, const std::string &y) {
    const auto left = value_<double>(x), right = value_<double>(y);
    if (std::isnan(left) || std::isnan(right)) return int{std::isnan(left)} - int{std::isnan(right)};
    return by_less_<double>(x, y);
}

int by_rowid_(const std::string &x, const std::string &y) {
    const auto fields = [](const std::string &bytes) {
        const auto id = value_<rowid_t>(bytes);
        return std::make_tuple(id.sgmt, id.file, id.block, id.row);
    };
    return int{fields(y) < fields(x)} - int{fields(x) < fields(y)};
}

int by_bytes_(const std::string &x, const std::string &y) { return int{y < x} - int{x < y}; }

// ---- values ----

std::string any_number_(number_source &source) {
    if (source.pick(0, 1) == 0) return *row_of(source.any());
    number_t x;
    number_from_int32(&x, source.pick(-3, 3) * 100 + source.pick(0, 1));
    return *row_of(x);
}

// The fields of a datetime from the century to the second, and the nanoseconds where there is room for them.
void fill_datetime_(number_source &source, uint8_t *bytes, size_t size) {
    constexpr int limits[][2] = {{95, 105}, {95, 105}, {1, 12}, {1, 31}, {0, 23}, {0, 59}, {0, 59}};
    for (size_t i = 0; i < std::size(limits); ++i) {
        const bool is_free = source.pick(0, 2) == 0;
        bytes[i] = static_cast<uint8_t>(is_free ? source.pick(limits[i][0], limits[i][1]) : limits[i][1] - 1);
    }
    if (size > 8 && source.pick(0, 1) == 0) bytes[11] = static_cast<uint8_t>(source.bits());
    if (size > 12) {
        const uint8_t zone[] = {static_cast<uint8_t>(source.pick(99, 101)), 0, 0, 2, 0x45};
        std::copy(std::begin(zone), std::end(zone), bytes + 12);
    }
}

template <typename Record, const char *(*get_fault)(const Record *)>
std::string any_datetime_(number_source &source) {
    Record record{};
    do {
        uint8_t bytes[17] = {};
        constexpr bool is_time = std::is_same_v<Record, dv_time_t>;
        fill_datetime_(source, bytes, is_time ? sizeof(dv_timestamp_t) : sizeof record);
        std::memcpy(&record, bytes + (is_time ? 4 : 0), sizeof record);
    } while (get_fault(&record) != nullptr);
    return bytes_(record);
}

// Fields of 32 bits, and one more byte of INTERVAL YEAR TO MONTH.
template <typename Record, const char *(*get_fault)(const Record *)>
std::string any_interval_(number_source &source) {
    Record record{};
    do {
        uint8_t bytes[sizeof record];
        for (size_t i = 0; i < sizeof record; ++i) {
            const int middle = i % 4 == 0 ? 0x40 : 0;
            bytes[i] = static_cast<uint8_t>(middle + (i % 4 == 3 ? source.pick(0, 2) : 0));
        }
        if (source.pick(0, 1) == 0) bytes[1] = static_cast<uint8_t>(source.bits());
        if (source.pick(0, 1) == 0) {  // below zero: a borrow from the field's first byte
            for (size_t i = 0; i + 4 <= sizeof record; i += 4) {
                bytes[i] = 0x3F;
                bytes[i + 1] = bytes[i + 2] = 0xFF;
            }
        }
        if (sizeof record % 4 == 1) bytes[sizeof record - 1] = static_cast<uint8_t>(source.pick(0, 22));
        std::memcpy(&record, bytes, sizeof record);
    } while (get_fault(&record) != nullptr);
    return bytes_(record);
}

std::string any_rowid_(number_source &source) {
    const auto any = [&] { return static_cast<uint16_t>(source.pick(0, 2) == 0 ? source.bits() : 1); };
    return bytes_(rowid_t{any(), any(), any(), any()});
}

// Small ones, those at the limits, and any.
template <typename Integer>
std::string any_integer_(number_source &source) {
    const int choice = source.pick(0, 3);
    auto value = static_cast<Integer>(source.pick(-2, 2));
    if (choice == 0) source.fill(&value, sizeof value);
    if (choice == 1) value = static_cast<Integer>(Integer{1} << (8 * sizeof value - 2));
    if (choice == 1 && source.pick(0, 1) == 0) value = static_cast<Integer>(value - 1 + value);
    return bytes_(value);
}

std::string any_double_(number_source &source) {
    using limits = std::numeric_limits<double>;
    constexpr double few[] = {0,
                              -0.0,
                              1,
                              -1,
                              1.5,
                              limits::infinity(),
                              -limits::infinity(),
                              limits::quiet_NaN(),
                              limits::denorm_min()};
    double value = few[static_cast<size_t>(source.pick(0, static_cast<int>(std::size(few)) - 1))];
    if (source.pick(0, 2) == 0) source.fill(&value, sizeof value);
    return bytes_(value);
}

std::string any_bytes_(number_source &source) {
    constexpr char few[] = {0, 1, 'a', '\xFE', '\xFF', 0};
    std::string bytes;
    for (int left = source.pick(0, 5); left > 0; --left) bytes += few[source.pick(0, 5)];
    return bytes;
}

constexpr key_type _types[] = {
    {"NUMBER", DV_KEY_NUMBER, 0, by_number_, any_number_},
    {"DATE", DV_KEY_DATE, sizeof(dv_date_t), by_function_<dv_date_t, dv_date_compare>,
     any_datetime_<dv_date_t, dv_date_get_fault>},
    {"TIME", DV_KEY_TIME, sizeof(dv_time_t), by_function_<dv_time_t, dv_time_compare>,
     any_datetime_<dv_time_t, dv_time_get_fault>},
    {"TIMESTAMP", DV_KEY_TIMESTAMP, sizeof(dv_timestamp_t),
     by_function_<dv_timestamp_t, dv_timestamp_compare>,
     any_datetime_<dv_timestamp_t, dv_timestamp_get_fault>},
    {"TS_TZ", DV_KEY_TS_TZ, sizeof(dv_ts_tz_t), by_function_<dv_ts_tz_t, dv_ts_tz_compare>,
     any_datetime_<dv_ts_tz_t, dv_ts_tz_get_fault>},
    {"TS_LTZ", DV_KEY_TS_LTZ, sizeof(dv_ts_ltz_t), by_function_<dv_ts_ltz_t, dv_ts_ltz_compare>,
     any_datetime_<dv_ts_ltz_t, dv_ts_ltz_get_fault>},
    {"ITV_YTM", DV_KEY_ITV_YTM, sizeof(dv_itv_ytm_t), by_function_<dv_itv_ytm_t, dv_itv_ytm_compare>,
     any_interval_<dv_itv_ytm_t, dv_itv_ytm_get_fault>},
    {"ITV_DTS", DV_KEY_ITV_DTS, sizeof(dv_itv_dts_t), by_function_<dv_itv_dts_t, dv_itv_dts_compare>,
     any_interval_<dv_itv_dts_t, dv_itv_dts_get_fault>},
    {"ROWID", DV_KEY_ROWID, sizeof(rowid_t), by_rowid_, any_rowid_},
    {"int32", DV_KEY_INT32, sizeof(int32_t), by_less_<int32_t>, any_integer_<int32_t>},
    {"int64", DV_KEY_INT64, sizeof(int64_t), by_less_<int64_t>, any_integer_<int64_t>},
    {"int128", DV_KEY_INT128, sizeof(int128_t), by_less_<int128_t>, any_integer_<int128_t>},
    {"double", DV_KEY_DOUBLE, sizeof(double), by_double_, any_double_},
    {"bytes", DV_KEY_BYTES, 3, by_bytes_, any_bytes_},
};
static_assert(std::size(_types) == DV_KEY_TYPES);

}  // namespace

std::span<const key_type> key_types() { return _types; }

int key_order(const key_type &type, int order, int nulls, const row_t &x, const row_t &y) {
    if (!x || !y) {
        const int null_order = int{y.has_value()} - int{x.has_value()};  // without a value: behind
        return nulls == DV_KEY_NULLS_LAST ? null_order : -null_order;
    }
    const int ascending = type.order(*x, *y);
    return order == DV_KEY_ASCENDING ? ascending : -ascending;
}

int key_order(const key_parts &parts, const rows_t &x, const rows_t &y) {
    for (size_t i = 0; i < parts.size(); ++i) {
        const dv_key_part_t &part = parts[i];
        const key_type &type = _types[part.type];
        if (const int order = key_order(type, part.order, part.nulls, x[i], y[i]); order != 0) return order;
    }
    return 0;
}

bool is_related(const dv_key_part_t &part, const row_t &found, int relation, const row_t &value) {
    if (!value) return found.has_value() == (relation == DV_COLUMN_NE);
    return found && (relation >> (_types[part.type].order(*found, *value) + 1) & 1) != 0;
}

key_parts any_key_parts(number_source &source, size_t count) {
    key_parts parts(count);
    for (dv_key_part_t &part : parts)
        part = {nullptr, source.pick(0, DV_KEY_TYPES - 1), source.pick(0, 1), source.pick(0, 2)};
    return parts;
}

row_t any_key_value(const dv_key_part_t &part, number_source &source) {
    if (part.nulls != DV_KEY_NOT_NULL && source.pick(0, 7) == 0) return std::nullopt;
    return _types[part.type].any(source);
}

rows_t any_key_row(const key_parts &parts, number_source &source) {
    rows_t row;
    for (const dv_key_part_t &part : parts) row.push_back(any_key_value(part, source));
    return row;
}

std::string record_of_key(const dv_key_part_t &part, const std::string &value) {
    return part.type == DV_KEY_NUMBER ? bytes_(number_of(value)) : value;
}

namespace {

constexpr size_t _room = 512;

// Memory of a key of which the first bytes are given.
struct key_memory {
    explicit key_memory(const std::string &prefix) : bytes(_room), key{} {
        key = {reinterpret_cast<uint8_t *>(bytes.text()), prefix.size(), _room};
        std::copy(prefix.begin(), prefix.end(), bytes.text());
    }
    std::string text() const { return {bytes.text(), key.size}; }

    guarded bytes;
    dv_key_t key;
};

}  // namespace

std::string packed_key(const key_parts &parts, const rows_t &row) {
    key_memory memory("");
    for (size_t i = 0; i < row.size(); ++i) {
        const std::string record = row[i] ? record_of_key(parts[i], *row[i]) : "";
        dv_key_append(&memory.key, &parts[i], row[i] ? record.data() : nullptr, record.size());
    }
    return memory.bytes.intact() ? memory.text() : "bytes beside the key were written";
}

std::optional<key_bounds> key_range(const dv_key_part_t &part, int relation, const row_t &value,
                                    const std::string &prefix) {
    key_memory from(prefix), to(prefix);
    const std::string record = value ? record_of_key(part, *value) : "";
    const char *const given = value ? record.data() : nullptr;
    if (dv_key_range(&part, relation, given, record.size(), &from.key, &to.key) == 0) {
        const bool are_kept = from.text() == prefix && to.text() == prefix;
        return are_kept ? std::nullopt : std::optional(key_bounds{"the prefix has changed", ""});
    }
    return key_bounds{from.text(), to.text()};
}

std::string describe(const key_parts &parts, const rows_t &row) {
    std::string text;
    for (size_t i = 0; i < row.size(); ++i) {
        const dv_key_part_t &part = parts[i];
        ((text += _types[part.type].name) += part.order == DV_KEY_DESCENDING ? " DESC" : "") +=
            part.nulls == DV_KEY_NULLS_LAST ? " NULLS LAST" : "";
        text += row[i] ? " " : " NULL";
        for (const char byte : row[i].value_or("")) {
            char digits[4];
            std::snprintf(digits, sizeof digits, "%02X ", static_cast<uint8_t>(byte));
            text += digits;
        }
        text += "; ";
    }
    return text;
}

}  // namespace dv::test
