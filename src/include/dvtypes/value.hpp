// dvtypes/value.hpp: what all values of the C++ layer have in common. Header only; C++20.
//
// A value holds a record that is valid and not NULL: copying it copies the record's bytes. Every type has
//
//   T()                      zero; of datetimes 1970-01-01 00:00:00
//   T(text)                  explicit; reads what to_string writes, and more: see there
//   to_string()              a text that loses nothing: T(x.to_string()) is x, zone included
//   == <=>                   order of the values, which is the order of key()
//   key()                    bytes whose unsigned order is that of the values
//   record()                 the C record
//   T::of_valid(record)      a value of a record that is known to be valid; nothing is checked
//   operator<<, std::hash, std::formatter (format.hpp)      by to_string and key: equal values hash equally
//
// What an operation throws is what the C function behind it raises, as dv::error; then the value is as it
// was. Functions such as trunc and round are found without dv:: and by it. Constants of literal values are
// made when the program starts, those of a default or a record by the compiler.

#ifndef DVTYPES_VALUE_HPP
#define DVTYPES_VALUE_HPP

#include <algorithm>
#include <climits>
#include <compare>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <iosfwd>
#include <span>
#include <string>
#include <string_view>

#include "dvtypes/error.hpp"

namespace dv {

namespace detail {

// A text as the C functions take it: no NULL, and no length of 0, which would stand for "up to the NUL".
struct text_argument {
    explicit text_argument(std::string_view text) noexcept
        : data(text.empty() ? "" : text.data()),
          length(text.empty() ? -1 : static_cast<int>(std::min<size_t>(text.size(), INT_MAX))) {}
    const char *data;
    int length;
};

}  // namespace detail

// What classes are made of: their members are those of the values.
namespace parts {

// A record.
template <typename Derived, typename Record>
class basic_value {
  public:
    // The C record's type.
    using record_type = Record;

    // The C record, for its functions.
    constexpr const Record &record() const noexcept { return record_; }

    // A value of a record that is known to be valid; nothing is checked.
    static Derived of_valid(const Record &record) noexcept {
        Derived x;
        record_of(x) = record;
        return x;
    }

    // The record of a value under construction.
    static Record &record_of(Derived &x) noexcept { return static_cast<basic_value &>(x).record_; }

  protected:
    constexpr explicit basic_value(const Record &record) noexcept : record_(record) {}

    // operation(record) raises or changes the record; all of it happens, or nothing.
    template <typename Operation>
    Derived &change(const Operation &operation) {
        Record changed = record_;
        guarded([&] { operation(changed); });
        record_ = changed;
        return static_cast<Derived &>(*this);
    }

    Record record_;
};

// Compared by the bytes of key(), whose number is fixed.
template <typename Derived, typename Record>
class keyed_value : public basic_value<Derived, Record> {
  public:
    // The order of key(); of timestamp_tz the instant alone.
    friend bool operator==(const Derived &x, const Derived &y) noexcept { return compare(x, y) == 0; }
    friend std::strong_ordering operator<=>(const Derived &x, const Derived &y) noexcept {
        return compare(x, y) <=> 0;
    }

  protected:
    using basic_value<Derived, Record>::basic_value;

  private:
    static int compare(const Derived &x, const Derived &y) noexcept {
        const auto x_key = x.key(), y_key = y.key();
        return std::memcmp(x_key.data(), y_key.data(), x_key.size());
    }
};

// A record whose first KeySize bytes, its key, have in unsigned bytewise order the order of the values.
template <typename Derived, typename Record, size_t KeySize = sizeof(Record)>
class ordered_value : public keyed_value<Derived, Record> {
  public:
    // Bytes whose unsigned order is that of the values; they lie in the value.
    std::span<const uint8_t, KeySize> key() const noexcept {
        return std::span<const uint8_t, KeySize>(reinterpret_cast<const uint8_t *>(&this->record_), KeySize);
    }

  protected:
    using keyed_value<Derived, Record>::keyed_value;
};

}  // namespace parts

// A value of this layer.
template <typename T>
concept value = requires {
    typename T::record_type;
}
&&std::derived_from<T, parts::basic_value<T, typename T::record_type>>;

namespace detail {

// x after operation(its record), which may raise.
template <value T, typename Operation>
T changed(T x, const Operation &operation) {
    guarded([&] { operation(T::record_of(x)); });
    return x;
}

}  // namespace detail

// x.to_string(), found without dv:: as std::to_string of numbers is after a using declaration.
template <value T>
std::string to_string(const T &x) {
    return x.to_string();
}

// Writes to_string().
template <value T>
std::ostream &operator<<(std::ostream &out, const T &x) {
    return out << x.to_string();
}

}  // namespace dv

template <dv::value T>
struct std::hash<T> {
    size_t operator()(const T &x) const noexcept {
        const auto key = x.key();
        return hash<string_view>()({reinterpret_cast<const char *>(key.data()), key.size()});
    }
};

#endif  // DVTYPES_VALUE_HPP
