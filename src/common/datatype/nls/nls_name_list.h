// Lists of names as the name tables store them, computed at compile time from texts: what the data files are
// written in.

#ifndef DV_NLS_NAME_LIST_H
#define DV_NLS_NAME_LIST_H

#include <cstddef>
#include <string_view>

#include "../bytes.h"
#include "dvtypes/nls.h"

namespace dv::impl {

// A list, used as the pointer to its first name.
template <size_t N>
struct names_t {
    nls_date_lang_val_t list[N];
    constexpr operator const nls_date_lang_val_t *() const { return list; }
};

template <size_t N>
struct cased_names_t {
    names_t<N> upper, lower, initcap;
};

// A text that does not fit is an error of the compiler: it would be stored beyond the array.
constexpr nls_date_lang_val_t name_of(std::u16string_view text) {
    nls_date_lang_val_t name{};
    for (const char16_t unit : text) {
        store_be16(name.val + name.len, unit);
        name.len += 2;
    }
    return name;
}

template <typename... Texts>
constexpr names_t<sizeof...(Texts)> names(const Texts &...texts) {
    return {{name_of(texts)...}};
}

// Capitals of the scripts where small letters follow their capitals by 32: ASCII, Latin-1 and Russian.
constexpr bool is_capital(uint16_t unit) {
    return (unit >= u'A' && unit <= u'Z') || (unit >= 0xC0 && unit <= 0xDE && unit != 0xD7) ||
           (unit >= 0x410 && unit <= 0x42F);
}
constexpr int SMALL_LETTER = 32;

// Makes capitals small: all of them, or those behind another letter.
constexpr nls_date_lang_val_t small_letters(nls_date_lang_val_t name, bool keep_first) {
    bool is_in_word = false;
    for (int i = 0; i < name.len; i += 2) {
        const uint16_t unit = load_be16(name.val + i);
        const bool is_letter = is_capital(unit);
        const bool is_small = is_letter && (is_in_word || !keep_first);
        store_be16(name.val + i, static_cast<uint16_t>(unit + (is_small ? SMALL_LETTER : 0)));
        is_in_word = is_letter;
    }
    return name;
}

// A list of capitals in all three cases.
template <size_t N>
constexpr cased_names_t<N> in_three_cases(const names_t<N> &upper) {
    cased_names_t<N> names{upper, upper, upper};
    for (auto &name : names.lower.list) name = small_letters(name, /*keep_first=*/false);
    for (auto &name : names.initcap.list) name = small_letters(name, /*keep_first=*/true);
    return names;
}

// The width in a format such as "%-16s".
constexpr int width_of(std::string_view format) {
    int width = 0;
    for (const char c : format) {
        if (c >= '0' && c <= '9') width = width * 10 + (c - '0');
    }
    return width;
}

}  // namespace dv::impl

#endif  // DV_NLS_NAME_LIST_H
