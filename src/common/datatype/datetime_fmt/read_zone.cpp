// Reading time zone elements: a UTC offset in hours and minutes, or a zone by name, with the abbreviation in
// force, which tells the two meanings of a local time apart that clocks showed twice.

#include <algorithm>
#include <cstring>

#include "../timezone/timezone_internal.h"
#include "../timezone/zonetab.h"
#include "fmt_read.h"

using namespace dv::impl;

namespace {

int width_of_(const dt_fmt_parse_ctx_t &ctx) { return current_keyword(ctx)->input_len; }

// ---------------------------------------------------------------------------------------------------------
// Offsets
// ---------------------------------------------------------------------------------------------------------

// Hours and minutes each fit; +14:30 does not. The sign is that of the hours. Raised in the name that the
// contract gives the ranges of a zone's fields.
void check_offset_(const timezone_t &tz) {
    const int error = offset_error(tz_hour(tz), tz.utc_min, tz_hour(tz) < 0 ? -1 : 1);
    if (error != 0) raise({error, __FILE__, __LINE__, "timezone_set_field"});
}

void store_offset_(dt_fmt_parse_ctx_t &ctx, timezone_t &tz, int hour, int minute) {
    tz_set_offset(tz, hour, minute);
    tz_set_zone(tz, TZ_ID_OFFSET);
    ctx.update_flag |= ctx.cur_token_info->id == DT_FMT_TOKEN_TZH ? DT_FMT_UNIT_TZH : DT_FMT_UNIT_TZM;
    check_offset_(tz);
}

// The sign does not count in the width.
void parse_tz_hour_(dt_fmt_parse_ctx_t &ctx, timezone_t &tz) {
    constexpr const char *field = "timezone hour";
    const number_field_t number = find_number(ctx, width_of_(ctx));
    if (number.digit_count == 0) raise_field_text(ctx, field, DV_ERR_FIELD_TEXT);
    if (is_exact(ctx) && number.digit_count != width_of_(ctx)) raise(DV_ERR_EXACT_WIDTH);
    const int hour = number.is_negative ? -number.value : number.value;
    if (hour < TZ_HOUR_MIN || hour > TZ_HOUR_MAX)
        raise(DV_ERR_FIELD_RANGE, field, hour, TZ_HOUR_MIN, TZ_HOUR_MAX);
    ctx.str_idx = number.end;
    store_offset_(ctx, tz, hour, tz.utc_min);
}

void parse_tz_minute_(dt_fmt_parse_ctx_t &ctx, timezone_t &tz) {
    constexpr const char *field = "timezone minute";
    const int minute = take_number(ctx, field, width_of_(ctx), DV_ERR_FIELD_TEXT, DV_ERR_EXACT_WIDTH);
    if (minute >= MINUTES_PER_HOUR) raise(DV_ERR_FIELD_RANGE, field, minute, 0, MINUTES_PER_HOUR - 1);
    store_offset_(ctx, tz, tz_hour(tz), minute);
}

// ---------------------------------------------------------------------------------------------------------
// Names
// ---------------------------------------------------------------------------------------------------------

template <typename Test>
std::string_view leading_(std::string_view text, Test belongs) {
    const auto end = std::find_if_not(text.begin(), text.end(), belongs);
    return {text.data(), static_cast<size_t>(end - text.begin())};
}

// May an abbreviation end here? Not within a word or a number, so that EST is none of "ESTX".
bool is_end_of_name_(std::string_view text, size_t length) {
    return length == text.size() || !(is_letter(text[length]) || is_digit(text[length]));
}

bool begins_with_name_(std::string_view text, std::string_view name) {
    return name.size() <= text.size() && equals_ignoring_case(text.substr(0, name.size()), name) &&
           is_end_of_name_(text, name.size());
}

// The longest abbreviation of any region that a text begins with, in any letter case: GMT+5 before GMT. Of
// those that differ in letter case only, as MEST and MeST, the one that is spelled as the text; empty: none.
std::string_view find_abbreviation_(std::string_view text) {
    std::string_view found;
    for (const tz_abbreviation_t &known : ZONE_ABBREVIATIONS) {
        const std::string_view name = known.text;
        if (name.size() < found.size() || !begins_with_name_(text, name)) continue;
        if (name.size() > found.size() || text.starts_with(name)) found = name;
    }
    return found;
}

// The abbreviation of a region's history that equals a name but for letter case, and rather one that equals
// it altogether; NULL: it never had any.
const char *abbreviation_of_(const tz_region_t &region, const char *name) {
    const char *in_other_case = NULL;
    for (int i = 0; i < region.info_cnt; ++i) {
        const char *const abbrev = region.infos[i].abbrev;
        if (strcmp(abbrev, name) == 0) return abbrev;
        if (in_other_case == NULL && equals_ignoring_case(abbrev, name)) in_other_case = abbrev;
    }
    return in_other_case;
}

// Spells the abbreviation as the region does, when the text gave both. -5096 when the region never had it,
// raised as a fault of the abbreviation whichever of the two is read last.
void fit_abbreviation_(dt_fmt_parse_ctx_t &ctx, const timezone_t &tz, const char *element) {
    constexpr int both = DT_FMT_UNIT_TZR | DT_FMT_UNIT_TZD;
    if ((ctx.update_flag & both) != both || tz_is_offset(tz)) return;
    const tz_region_t *const region = region_of(tz);
    if (region == NULL) return;
    const char *const abbreviation = abbreviation_of_(*region, ctx.tz_abbr);
    if (abbreviation == NULL)
        raise({DV_ERR_ZONE_NAME_CONFLICT, __FILE__, __LINE__, "parse_tz_abbr_"}, element);
    memcpy(ctx.tz_abbr, abbreviation, TZ_ABBREV_TEXT_SIZE);
}

void parse_tz_abbr_(dt_fmt_parse_ctx_t &ctx, timezone_t &tz) {
    const std::string_view abbreviation = find_abbreviation_(rest_of(ctx));
    if (abbreviation.empty()) raise_field_text(ctx, "timezone abbreviation", DV_ERR_FIELD_TEXT);
    memcpy(ctx.tz_abbr, abbreviation.data(), TZ_ABBREV_TEXT_SIZE);
    ctx.str_idx += static_cast<int32_t>(abbreviation.size());
    ctx.update_flag |= DT_FMT_UNIT_TZD;
    fit_abbreviation_(ctx, tz, "TZD");
}

// A region or an offset, up to the first blank. Faults of an offset are raised in the name of the function
// that reads offsets everywhere else.
void parse_tz_region_(dt_fmt_parse_ctx_t &ctx, timezone_t &tz) {
    const std::string_view text = leading_(rest_of(ctx), [](char c) { return !is_white_space(c); });
    const int error = text.empty() ? DV_ERR_ZONE_TEXT : read_zone(tz, text);
    if (error == DV_ERR_ZONE_TEXT) raise_field_text(ctx, "timezone region", DV_ERR_FIELD_TEXT);
    if (error != 0) raise({error, __FILE__, __LINE__, "timezone_parse"});
    ctx.str_idx += static_cast<int32_t>(text.size());
    ctx.update_flag |= DT_FMT_UNIT_TZR;
    fit_abbreviation_(ctx, tz, "TZR");
}

using reader_t = void(dt_fmt_parse_ctx_t &ctx, timezone_t &tz);

constexpr auto _readers = [] {
    std::array<reader_t *, FMT_TOKEN_IDS_END> readers{};
    readers[DT_FMT_TOKEN_TZH] = parse_tz_hour_;
    readers[DT_FMT_TOKEN_TZM] = parse_tz_minute_;
    readers[DT_FMT_TOKEN_TZR] = parse_tz_region_;
    readers[DT_FMT_TOKEN_TZD] = parse_tz_abbr_;
    return readers;
}();

static_assert(all_elements(
    [](const dt_fmt_token_t &element) { return element.type == DT_FMT_TYPE_TZ && element.is_input; },
    [](size_t id) { return _readers[id] != nullptr; }));

}  // namespace

extern "C" void dt_fmt_parse_tz(dt_fmt_parse_ctx_t *parse_ctx, timezone_t *tz) {
    if (!has_element(parse_ctx) || !is_given_tz(tz)) return;
    const dt_fmt_token_t *element = current_keyword(*parse_ctx);
    if (element != NULL && !element->is_input) raise(DV_ERR_ELEMENT_NOT_READABLE);
    if (!is_exact(*parse_ctx)) skip_white_space(*parse_ctx);
    const auto id = static_cast<size_t>(parse_ctx->cur_token_info->id);
    reader_t *const read = element != NULL ? _readers[id] : nullptr;
    if (read == nullptr) raise(DV_ERR_ZONE_ELEMENT);
    read(*parse_ctx, *tz);
}
