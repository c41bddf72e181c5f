// Time zones from text: UTC offsets and names of regions.

#include <cstring>

#include "../ascii.h"
#include "timezone_internal.h"
#include "zonetab.h"

using namespace dv::impl;

namespace {

template <typename Test>
void skip_(std::string_view &text, Test test) {
    while (!text.empty() && test(text.front())) text.remove_prefix(1);
}

bool take_(std::string_view &text, char c) {
    if (text.empty() || text.front() != c) return false;
    text.remove_prefix(1);
    return true;
}

// A run of digits with the blanks around it, of any length: what no offset has is given as _too_large. -1:
// none.
constexpr int _too_large = 1000;
int take_number_(std::string_view &text) {
    skip_(text, is_blank);
    if (text.empty() || !is_digit(text.front())) return -1;
    int number = 0;
    for (; !text.empty() && is_digit(text.front()); text.remove_prefix(1)) {
        number = number * 10 + digit_of(text.front());
        if (number > _too_large) number = _too_large;
    }
    skip_(text, is_blank);
    return number;
}

bool is_offset_(std::string_view text) {
    return !text.empty() && (is_digit(text.front()) || text.front() == '+' || text.front() == '-');
}

// Without blanks behind it, and as a text that ends with a NUL, which may be one in the name.
[[gnu::noinline]] const tz_region_t *find_other_name_(std::string_view name) {
    char text[TZ_NAME_TEXT_SIZE];
    while (!name.empty() && is_blank(name.back())) name.remove_suffix(1);
    if (!name.empty()) memcpy(text, name.data(), name.size());
    text[name.size()] = '\0';
    return zonetab_search_region(text);
}

}  // namespace

// -12:59:59 to +14:00:00 in whole minutes.
int dv::impl::offset_error(int hour, int minute, int sign) {
    constexpr int lowest = TZ_HOUR_MIN * MINUTES_PER_HOUR - 59, highest = TZ_HOUR_MAX * MINUTES_PER_HOUR;
    if (hour < TZ_HOUR_MIN || hour > TZ_HOUR_MAX) return DV_ERR_ZONE_HOUR;
    const int minutes = hour * MINUTES_PER_HOUR + sign * minute;
    const bool is_allowed = minute < MINUTES_PER_HOUR && minutes >= lowest && minutes <= highest;
    return is_allowed ? 0 : DV_ERR_ZONE_MINUTE;
}

int dv::impl::read_zone(timezone_t &tz, std::string_view text) {
    if (is_offset_(text))
        return parse_offset_(&tz, text.data(), static_cast<int>(text.size()), /*for_parser=*/1);
    const tz_region_t *region = find_region(text);
    if (region == NULL) return DV_ERR_ZONE_TEXT;
    tz_set_offset(tz, 0, 0);
    tz_set_zone(tz, region->id);
    return 0;
}

const tz_region_t *dv::impl::find_region(std::string_view name) {
    if (name.size() > TZ_NAME_MAX) return NULL;
    const tz_region_t *region = search_name(name.data(), name.size());
    return region != NULL ? region : find_other_name_(name);
}

extern "C" int parse_offset_(timezone_t *tz, const char *str, int str_len, uchar for_parser) {
    if (!DV_ASSERT(tz != NULL)) return DV_ERR_ZONE_OFFSET;
    std::string_view text(str, str != NULL && str_len > 0 ? static_cast<size_t>(str_len) : 0);
    skip_(text, is_letter);
    skip_(text, is_blank);
    const bool has_minus = take_(text, '-');
    if (!has_minus) take_(text, '+');
    const int sign = has_minus == (for_parser != 0) ? -1 : 1;

    const int hours = take_number_(text);
    const int minutes = take_(text, ':') ? take_number_(text) : 0;
    if (hours < 0 || minutes < 0 || (for_parser != 0 && !text.empty())) return DV_ERR_ZONE_OFFSET;
    const int error = offset_error(hours * sign, minutes, sign);
    if (error != 0) return error;
    tz_set_offset(*tz, hours * sign, minutes);
    tz_set_zone(*tz, TZ_ID_OFFSET);
    return 0;
}

extern "C" void timezone_parse(timezone_t *tz, const char *str, int str_len) {
    if (!DV_ASSERT(tz != NULL)) return;
    if (str == NULL || str_len < 1 || *str == '\0') raise(DV_ERR_ZONE_TEXT);
    std::string_view text(str, static_cast<size_t>(str_len));
    skip_(text, is_blank);
    const int error = read_zone(*tz, text);
    if (error != 0) raise(error);
}
