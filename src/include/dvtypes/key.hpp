// dvtypes/key.hpp: keys of several columns for stores that compare bytes. Header only; C++20.
//
// ```cpp
// #include <dvtypes/key.hpp>
// const dv::key_of<std::string, std::optional<dv::number>, int64_t> key(   // town, amount DESC, id
//     {}, DV_KEY_DESCENDING, {});
// const std::string stored = key("Jeju", dv::number("12.50"), 7);
// const auto row = key.read(stored);
// std::cout << std::get<0>(*row) << ' ' << *std::get<1>(*row) << '\n';      // Jeju 12.5
// const dv::key_range range = key.range(DV_COLUMN_GT, dv::number(12), "Jeju");
// std::cout << range.contains(stored) << range.contains(key("Jeju", dv::number(12), 1)) << '\n';     // 10
// ```
//
// Keys compare by std::string's <, which is that of memcmp. docs/keys.md describes the bytes and what to do
// with them.

#ifndef DVTYPES_KEY_HPP
#define DVTYPES_KEY_HPP

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <tuple>
#include <type_traits>
#include <utility>

#include "dvtypes/column.hpp"
#include "dvtypes/packed_key.h"

namespace dv {

// How a column stands in a key. What has no std::optional has no NULL, whatever is said of it.
struct key_column {
    dv_key_order_e order = DV_KEY_ASCENDING;   // the lowest value first
    dv_key_nulls_e nulls = DV_KEY_NULLS_LAST;  // where the rows without a value are, in either order
    // Ascending, NULLs last.
    constexpr key_column() noexcept = default;
    // As it is said to be.
    constexpr key_column(dv_key_order_e direction, dv_key_nulls_e place = DV_KEY_NULLS_LAST) noexcept
        : order(direction), nulls(place) {}
};

// The keys from `from` on and below `to`.
struct key_range {
    std::string from;               // not above any of them
    std::optional<std::string> to;  // none: to the end of the store
    bool is_empty = false;          // no key is in the range, and the others mean nothing

    // Whether a key is one of them.
    bool contains(std::string_view key) const noexcept {
        return !is_empty && from <= key && (!to || key < *to);
    }
};

namespace detail {

// What a key holds of a value of T: its record or the machine number, which is copied, or the bytes of a
// text.
template <typename T>
struct key_value {
    using given = T;
    static constexpr int type = key_type<T>;
    static_assert(type < DV_KEY_BYTES, "dv::key_of: values of this type have no key");
    static const void *data(const T &x) noexcept {
        if constexpr (dv::value<T>) {
            return &x.record();
        } else {
            return &x;
        }
    }
    static size_t size(const T & /*x*/) noexcept { return 0; }
    static size_t room(const T & /*x*/) noexcept { return DV_KEY_PART_MAX; }
};
template <>
struct key_value<std::string> {
    using given = std::string_view;
    static constexpr int type = DV_KEY_BYTES;
    static const void *data(std::string_view x) noexcept { return x.empty() ? "" : x.data(); }
    static size_t size(std::string_view x) noexcept { return x.size(); }
    static size_t room(std::string_view x) noexcept { return 2 * x.size() + 3; }
};

// One column, which may be NULL or not.
template <typename T>
struct key_slot : key_value<T> {
    using given = typename key_value<T>::given;
    static constexpr bool may_be_null = false;
    static const given *find(const given &x) noexcept { return &x; }
};
template <typename T>
struct key_slot<std::optional<T>> : key_value<T> {
    using given = std::optional<typename key_value<T>::given>;
    static constexpr bool may_be_null = true;
    static const typename key_value<T>::given *find(const given &x) noexcept { return x ? &*x : nullptr; }
};

// A part's value as the C functions take it.
template <typename Slot>
struct key_argument {
    explicit key_argument(const typename Slot::given &x) noexcept {
        const auto *const found = Slot::find(x);
        if (found == nullptr) return;
        data = Slot::data(*found);
        size = Slot::size(*found);
        room = Slot::room(*found);
    }
    const void *data = nullptr;
    size_t size = 0, room = DV_KEY_PART_MAX;
};

// The key that a text holds, with so much room behind it.
inline dv_key_t key_in(std::string &text, size_t room) {
    const size_t size = text.size();
    text.resize(size + room);
    return {reinterpret_cast<uint8_t *>(text.data()), size, text.size()};
}

// Where a value's record lies.
template <typename T>
void *record_in(T &x) noexcept {
    if constexpr (dv::value<T>) {
        return &T::record_of(x);
    } else {
        return &x;
    }
}

// Reads the next part of a key; false where it is none.
template <typename T>
bool take_key(dv_key_rest_t &rest, const dv_key_part_t &part, std::optional<T> &x) {
    int64_t size = 0;
    if constexpr (std::is_same_v<T, std::string>) {
        dv_key_rest_t behind = rest;
        if (dv_key_take(&behind, &part, nullptr, 0, &size) != nullptr) return false;
        if (size >= 0) {
            x.emplace(static_cast<size_t>(size), '\0');
            dv_key_take(&rest, &part, x->data(), x->size(), &size);
        }
        rest = behind;
    } else {
        T value{};
        if (dv_key_take(&rest, &part, record_in(value), sizeof value, &size) != nullptr) return false;
        if (size >= 0) x = value;
    }
    return true;
}
template <typename T>
bool take_key(dv_key_rest_t &rest, const dv_key_part_t &part, T &x) {
    std::optional<T> found;
    if (!take_key(rest, part, found)) return false;
    x = std::move(*found);  // a part that has no NULL
    return true;
}

}  // namespace detail

// Keys whose columns are Ts: values of this layer, int32_t, int64_t, __int128, double, std::string (any text
// or bytes), and std::optional of any of them for a column that may be NULL.
template <typename... Ts>
class key_of {
    static_assert(sizeof...(Ts) > 0);
    template <size_t I>
    using slot = detail::key_slot<std::tuple_element_t<I, std::tuple<Ts...>>>;
    template <typename T>
    using column_of = key_column;

  public:
    // All columns ascending, NULLs last.
    constexpr key_of() noexcept : key_of(column_of<Ts>()...) {}
    // As each is said to be.
    constexpr explicit key_of(column_of<Ts>... of_each) noexcept {
        const key_column columns[] = {of_each...};
        constexpr bool may_be_null[] = {detail::key_slot<Ts>::may_be_null...};
        constexpr int types[] = {detail::key_slot<Ts>::type...};
        for (size_t i = 0; i < sizeof...(Ts); ++i) {
            const auto nulls = may_be_null[i] ? columns[i].nulls : DV_KEY_NOT_NULL;
            parts_[i] = {nullptr, types[i], columns[i].order, nulls};
        }
    }

    // The key of a row; of fewer values the beginning of the keys that have them in their first columns.
    template <typename... Us>
    requires(sizeof...(Us) <= sizeof...(Ts)) std::string operator()(const Us &...values) const {
        return packed(std::index_sequence_for<Us...>{}, values...);
    }

    // The values of a key; none where the bytes, from the first to the last, are not those of a row. Of a
    // timestamp_tz the instant, in UTC.
    std::optional<std::tuple<Ts...>> read(std::string_view key) const {
        return read(key, std::index_sequence_for<Ts...>{});
    }

    // The keys that have these values in their first columns.
    template <typename... Us>
    key_range starting_with(const Us &...values) const {
        std::string from = (*this)(values...);
        return {from, end_of(from), false};
    }

    // The keys with the values `front` in their first columns whose next column stands in a relation to a
    // value: DV_COLUMN_LT below it, and so on. NULL is in none of them but EQ to std::nullopt; NE, which is
    // no range of a value, is every value there.
    template <typename U, typename... Us>
    requires(sizeof...(Us) < sizeof...(Ts)) key_range
        range(dv_column_relation_e relation, const U &value, const Us &...front)
    const {
        constexpr size_t column = sizeof...(Us);
        const typename slot<column>::given given(value);
        const detail::key_argument<slot<column>> argument(given);
        std::string from_text = (*this)(front...), to_text = from_text;
        dv_key_t from = detail::key_in(from_text, argument.room), to = detail::key_in(to_text, argument.room);
        if (dv_key_range(&parts_[column], relation, argument.data, argument.size, &from, &to) == 0)
            return {{}, {}, true};
        from_text.resize(from.size);
        to_text.resize(to.size);
        if (to_text.empty()) return {from_text, std::nullopt, false};
        return {from_text, to_text, false};
    }

    // The parts, for the functions of C.
    const std::array<dv_key_part_t, sizeof...(Ts)> &parts() const noexcept { return parts_; }

  private:
    template <size_t... I, typename... Us>
    std::string packed(std::index_sequence<I...>, const Us &...values) const {
        std::string key;
        (append<I>(key, values), ...);
        return key;
    }
    template <size_t I>
    void append(std::string &text, const typename slot<I>::given &x) const {
        const detail::key_argument<slot<I>> argument(x);
        dv_key_t key = detail::key_in(text, argument.room);
        dv_key_append(&key, &parts_[I], argument.data, argument.size);
        text.resize(key.size);
    }
    template <size_t... I>
    std::optional<std::tuple<Ts...>> read(std::string_view key, std::index_sequence<I...>) const {
        dv_key_rest_t rest = {reinterpret_cast<const uint8_t *>(key.data()), key.size()};
        std::tuple<Ts...> row;
        const bool is_key = (detail::take_key(rest, parts_[I], std::get<I>(row)) && ...) && rest.size == 0;
        return is_key ? std::optional(std::move(row)) : std::nullopt;
    }
    static std::optional<std::string> end_of(std::string prefix) {
        dv_key_t key = detail::key_in(prefix, 0);
        dv_key_end_of_prefix(&key);
        prefix.resize(key.size);
        return prefix.empty() ? std::nullopt : std::optional(std::move(prefix));
    }

    std::array<dv_key_part_t, sizeof...(Ts)> parts_{};
};

}  // namespace dv

#endif  // DVTYPES_KEY_HPP
