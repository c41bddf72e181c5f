// dvtypes/bytes.hpp: values as bytes, to store and to send, and back again, checked. Header only; C++20.
//
// ```cpp
// const dv::timestamp_tz call("2026-11-21 09:30 Asia/Seoul");
// const auto sent = dv::to_bytes(call);
// std::cout << sent.size() << ' ' << *dv::from_bytes<dv::timestamp_tz>(sent) << '\n';
// // 17 2026-11-21 09:30:00.000000000 Asia/Seoul KST
// const uint8_t received[8] = {120, 124, 2, 30, 0, 0, 0, 0};       // 2024-02-30
// std::cout << dv::from_bytes<dv::date>(received).has_value() << '\n';                             // 0
// ```
//
// docs/bytes.md describes the bytes: they are the same on machines of either byte order.

#ifndef DVTYPES_BYTES_HPP
#define DVTYPES_BYTES_HPP

#include <optional>

#include "dvtypes/rowid.hpp"
#include "dvtypes/zoned.hpp"

namespace dv {

namespace detail {

inline const char *fault_of(const number_t &x) noexcept { return number_get_fault(&x); }
inline const char *fault_of(const dv_date_t &x) noexcept {
    return x.dummy != 0 ? "the eighth byte of a date is not 0" : dv_date_get_fault(&x);
}
inline const char *fault_of(const dv_time_t &x) noexcept { return dv_time_get_fault(&x); }
inline const char *fault_of(const dv_timestamp_t &x) noexcept { return dv_timestamp_get_fault(&x); }
inline const char *fault_of(const dv_ts_tz_t &x) noexcept { return dv_ts_tz_get_fault(&x); }
inline const char *fault_of(const dv_ts_ltz_t &x) noexcept { return dv_ts_ltz_get_fault(&x); }
inline const char *fault_of(const dv_itv_ytm_t &x) noexcept { return dv_itv_ytm_get_fault(&x); }
inline const char *fault_of(const dv_itv_dts_t &x) noexcept { return dv_itv_dts_get_fault(&x); }
inline const char *fault_of(const timezone_t &x) noexcept { return timezone_get_fault(&x); }

template <typename Record>
size_t size_of(const Record &record) noexcept {
    if constexpr (std::same_as<Record, number_t>) {
        return size_t{record.size} + 1;
    } else {
        return sizeof record;
    }
}

// False when they are not those of a value.
template <typename Record>
bool read_bytes(Record &record, std::span<const uint8_t> bytes) noexcept {
    if (bytes.empty() || bytes.size() > sizeof record) return false;
    std::memcpy(&record, bytes.data(), bytes.size());
    return size_of(record) == bytes.size() && fault_of(record) == nullptr;
}
inline bool read_bytes(rowid_t &record, std::span<const uint8_t> bytes) noexcept {
    if (bytes.size() != 12) return false;
    const auto number = [&](size_t at, size_t size) {
        uint32_t n = 0;
        for (const uint8_t byte : bytes.subspan(at, size)) n = n << 8 | byte;
        return n;
    };
    record = {number(0, 4), number(6, 4), static_cast<uint16_t>(number(4, 2)),
              static_cast<uint16_t>(number(10, 2))};
    return true;
}

}  // namespace detail

// The bytes of a value, which lie in it: 2 to 23 of a number, else those of the record.
template <value T>
std::span<const uint8_t> to_bytes(const T &x) noexcept {
    return {reinterpret_cast<const uint8_t *>(&x.record()), detail::size_of(x.record())};
}
template <value T>
void to_bytes(const T &&x) = delete;  // the bytes would be gone
// Segment, file, block and row, big-endian.
inline std::array<uint8_t, 12> to_bytes(const rowid &x) noexcept { return x.key(); }

// The value that has these bytes; none where they are not those of a value, from the first to the last: equal
// dates have equal bytes. What is wrong with them, the C functions tell: number_get_fault and its like, of
// which dv_date_get_fault takes any last byte.
template <value T>
std::optional<T> from_bytes(std::span<const uint8_t> bytes) noexcept {
    typename T::record_type record{};
    if (!detail::read_bytes(record, bytes)) return std::nullopt;
    return T::of_valid(record);
}

// Appends a value to a key of several columns, such as an index has: keys compare by std::string's <, which
// is that of memcmp, as the rows do column by column. A number, whose length varies, gets a 0 behind it;
// descending columns have all of their bits turned. Keys with NULLs and texts, and what is read out of them,
// are those of key.hpp.
template <value T>
void append_key(std::string &key, const T &x, bool is_descending = false) {
    const size_t begin = key.size();
    const auto bytes = x.key();
    key.append(reinterpret_cast<const char *>(bytes.data()), bytes.size());
    if constexpr (std::same_as<T, number>) key.push_back('\0');
    if (!is_descending) return;
    for (size_t i = begin; i < key.size(); ++i) key[i] = static_cast<char>(~key[i]);
}

}  // namespace dv

#endif  // DVTYPES_BYTES_HPP
