// Settings and their values in lists of names, and values as pieces of a longer text.

#ifndef DV_NLS_SETTING_H
#define DV_NLS_SETTING_H

#include <algorithm>
#include <cstring>
#include <string_view>

#include "../ascii.h"
#include "dvtypes/nls.h"

namespace dv::impl {

// A NUL-ended text, of which no more than limit bytes are looked at.
inline std::string_view bounded_text(const char *str, size_t limit) { return {str, strnlen(str, limit)}; }

// Index of the first name that the text equals, -1 when there is none.
template <size_t N>
int find_name(const char *const (&names)[N], std::string_view text) {
    const auto *const found = std::find_if(names, names + N, [&](const char *name) {
        return equals_ignoring_case(bounded_text(name, text.size() + 1), text);
    });
    return found != names + N ? static_cast<int>(found - names) : -1;
}

constexpr bool is_space(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }  // as in the C locale

// Without the white space around it; a vertical tab in front stays, unless there is nothing else.
constexpr std::string_view trimmed(std::string_view text) {
    while (!text.empty() && is_space(text.back())) text.remove_suffix(1);
    while (!text.empty() && is_space(text.front()) && text.front() != '\v') text.remove_prefix(1);
    return text;
}

// The pieces of a text before and behind a delimiter, trimmed.
struct two_pieces_t {
    std::string_view first, second;
    bool has_second;
};
constexpr two_pieces_t split(std::string_view text, char delimiter) {
    const auto size = static_cast<size_t>(std::find(text.begin(), text.end(), delimiter) - text.begin());
    const std::string_view first(text.data(), size);
    if (size == text.size()) return {trimmed(first), {}, false};
    text.remove_prefix(size + 1);
    return {trimmed(first), trimmed(text), true};
}

// dv_nls_sort_parse for a piece of a text.
bool parse_sort(std::string_view text, dv_nls_sort_ctx_t &ctx);

}  // namespace dv::impl

#endif  // DV_NLS_SETTING_H
