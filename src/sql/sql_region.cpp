// Names of regions in texts. What is near is told by the edit distance of Levenshtein: the fewest letters to
// be put in, left out or changed.

#include "sql_region.h"

#include <algorithm>
#include <cstring>

using namespace dv::impl;

namespace {

bool is_letter_(char c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z'); }

bool is_of_name_(char c) {
    return is_letter_(c) || (c >= '0' && c <= '9') || c == '/' || c == '_' || c == '+' || c == '-';
}

// Takes the next word, which begins with a letter, off a text; empty where there is none.
std::string_view take_word_(std::string_view &text) {
    while (!text.empty() && !is_letter_(text.front())) text.remove_prefix(1);
    const size_t length = static_cast<size_t>(std::ranges::find_if_not(text, is_of_name_) - text.begin());
    const std::string_view word(text.data(), length);
    text.remove_prefix(length);
    return word;
}

std::string_view longest_word_(std::string_view text) {
    std::string_view longest;
    while (!text.empty()) {
        const std::string_view word = take_word_(text);
        if (word.size() > longest.size()) longest = word;
    }
    return longest;
}

std::string_view city_(std::string_view name) {
    name.remove_prefix(name.rfind('/') + 1);  // npos + 1 is 0
    return name;
}

// The edit distance of two names of at most TZ_NAME_MAX characters, or any number above `most` where it is
// that.
size_t distance_(std::string_view x, std::string_view y, size_t most) {
    if (std::max(x.size(), y.size()) - std::min(x.size(), y.size()) > most) return most + 1;
    size_t row[TZ_NAME_MAX + 1];  // from the part of x so far to each beginning of y
    for (size_t j = 0; j <= y.size(); ++j) row[j] = j;
    for (size_t i = 1; i <= x.size(); ++i) {
        size_t diagonal = row[0];
        row[0] = i;
        for (size_t j = 1; j <= y.size(); ++j) {
            const size_t changed = diagonal + (x[i - 1] == y[j - 1] ? 0 : 1);
            diagonal = row[j];
            row[j] = std::min({changed, row[j] + 1, row[j - 1] + 1});
        }
    }
    return row[y.size()];
}

// How far from a word still is near, in letters.
size_t limit_(std::string_view word) { return 1 + word.size() / 8; }

// How far a region's name is from a word, or its city from the word's, where that is less; `most` + 1 where
// neither is near.
size_t distance_of_region_(const tz_region_t &region, std::string_view word, size_t most) {
    const std::string_view name = region.lc_name;
    const size_t city_most = std::min(most, limit_(city_(word)));
    const size_t distance = distance_(word, name, most);
    const size_t city_distance = distance_(city_(word), city_(name), city_most);
    return std::min({distance, city_distance > city_most ? most + 1 : city_distance, most + 1});
}

struct near_regions {
    static constexpr size_t shown = 3;
    size_t distance;
    size_t count;
    const char *names[shown];
};

near_regions near_regions_(std::string_view word) {
    near_regions found{limit_(word), 0, {}};
    for (int id = 0; id < TZ_ID_MAX; ++id) {
        const size_t distance = distance_of_region_(region_tab_[id], word, found.distance);
        if (distance > found.distance) continue;
        if (distance < found.distance) found = {distance, 0, {}};
        if (found.count < near_regions::shown) found.names[found.count++] = region_tab_[id].canon_name;
    }
    return found;
}

}  // namespace

named_region dv::impl::sql_find_region(std::string_view text) {
    while (!text.empty()) {
        const std::string_view word = take_word_(text);
        char name[TZ_NAME_TEXT_SIZE];
        if (word.empty() || word.size() > TZ_NAME_MAX) continue;
        *std::ranges::copy(word, name).out = '\0';
        const tz_region_t *region = zonetab_search_region(name);
        if (region != nullptr) return {region, word};
    }
    return {nullptr, {}};
}

bool dv::impl::sql_append_near_regions(sql_text_list &list, std::string_view text) {
    constexpr size_t shortest = 3;
    const std::string_view word = longest_word_(text);
    if (word.size() < shortest || word.size() > TZ_NAME_MAX) return false;
    char lower[TZ_NAME_MAX];
    std::ranges::transform(
        word, lower, [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
    const near_regions found = near_regions_({lower, word.size()});
    if (found.count == 0) return false;
    list.append(" Near to it is ");
    for (size_t i = 0; i < found.count; ++i) list.append_item(i, found.count, found.names[i], "");
    list.append(".");
    return true;
}
