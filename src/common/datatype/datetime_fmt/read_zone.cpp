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

// Hours and minutes each fit; +14:30 does not. The sign is that of the hours.
void check_offset_(const timezone_t &tz) {
    const int error = offset_error(tz_hour(tz), tz.utc_min, tz_hour(tz) < 0 ? -1 : 1);
    if (error != 0) raise(error);
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
    if (number.digit_count == 0) raise_field_text(ctx, field, ERR_FIELD_TEXT);
    if (is_exact(ctx) && number.digit_count != width_of_(ctx)) raise(ERR_EXACT_WIDTH);
    const int hour = number.is_negative ? -number.value : number.value;
    if (hour < TZ_HOUR_MIN || hour > TZ_HOUR_MAX)
        raise(ERR_FIELD_RANGE, field, hour, TZ_HOUR_MIN, TZ_HOUR_MAX);
    ctx.str_idx = number.end;
    store_offset_(ctx, tz, hour, tz.utc_min);
}

void parse_tz_minute_(dt_fmt_parse_ctx_t &ctx, timezone_t &tz) {
    constexpr const char *field = "timezone minute";
    const int minute = take_number(ctx, field, width_of_(ctx), ERR_FIELD_TEXT, ERR_EXACT_WIDTH);
    if (minute >= MINUTES_PER_HOUR) raise(ERR_FIELD_RANGE, field, minute, 0, MINUTES_PER_HOUR - 1);
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

// "KST", "EDT", "+0530".
std::string_view abbreviation_at_(const dt_fmt_parse_ctx_t &ctx) {
    std::string_view text = rest_of(ctx);
    const bool has_sign = text.starts_with('+') || text.starts_with('-');
    if (has_sign) text.remove_prefix(1);
    const auto belongs = [=](char c) { return is_digit(c) || (!has_sign && is_letter(c)); };
    const std::string_view name = leading_(text, belongs);
    return {name.data() - has_sign, name.size() + has_sign};
}

// The abbreviation as the tables have it; NULL when no region has it.
const char *find_abbreviation_(std::string_view name) {
    for (const tz_abbreviation_t &known : ZONE_ABBREVIATIONS) {
        if (equals_ignoring_case(known.text, name)) return known.text;
    }
    return NULL;
}

// Raises -5096 when the text gave a region that never had the abbreviation that it gave.
void check_abbreviation_(const dt_fmt_parse_ctx_t &ctx, const timezone_t &tz, const char *element) {
    constexpr int both = DT_FMT_UNIT_TZR | DT_FMT_UNIT_TZD;
    if ((ctx.update_flag & both) != both || tz_is_offset(tz)) return;
    const tz_region_t &region = *region_of(tz);
    const auto has = [&](const tz_info_t &info) { return strcmp(info.abbrev, ctx.tz_abbr) == 0; };
    if (std::none_of(region.infos, region.infos + region.info_cnt, has))
        raise(ERR_ZONE_NAME_CONFLICT, element);
}

void parse_tz_abbr_(dt_fmt_parse_ctx_t &ctx, const timezone_t &tz) {
    const std::string_view name = abbreviation_at_(ctx);
    const char *abbreviation = find_abbreviation_(name);
    if (abbreviation == NULL) raise_field_text(ctx, "timezone abbreviation", ERR_FIELD_TEXT);
    memcpy(ctx.tz_abbr, abbreviation, TZ_ABBREV_TEXT_SIZE);
    ctx.str_idx += static_cast<int32_t>(name.size());
    ctx.update_flag |= DT_FMT_UNIT_TZD;
    check_abbreviation_(ctx, tz, "TZD");
}

// A region or an offset, up to the first blank.
void parse_tz_region_(dt_fmt_parse_ctx_t &ctx, timezone_t &tz) {
    const std::string_view text = leading_(rest_of(ctx), [](char c) { return !is_white_space(c); });
    const int error = text.empty() ? ERR_ZONE_TEXT : read_zone(tz, text);
    if (error == ERR_ZONE_TEXT) raise_field_text(ctx, "timezone region", ERR_FIELD_TEXT);
    if (error != 0) raise(error);
    ctx.str_idx += static_cast<int32_t>(text.size());
    ctx.update_flag |= DT_FMT_UNIT_TZR;
    check_abbreviation_(ctx, tz, "TZR");
}

}  // namespace

extern "C" void dt_fmt_parse_tz(dt_fmt_parse_ctx_t *parse_ctx, timezone_t *tz) {
    if (!is_given(parse_ctx) || !is_given_tz(tz)) return;
    if (!is_exact(*parse_ctx)) skip_white_space(*parse_ctx);
    switch (parse_ctx->cur_token_info->id) {
        case DT_FMT_TOKEN_TZH:
            return parse_tz_hour_(*parse_ctx, *tz);
        case DT_FMT_TOKEN_TZM:
            return parse_tz_minute_(*parse_ctx, *tz);
        case DT_FMT_TOKEN_TZR:
            return parse_tz_region_(*parse_ctx, *tz);
        case DT_FMT_TOKEN_TZD:
            return parse_tz_abbr_(*parse_ctx, *tz);
        default:
            raise(ERR_ZONE_ELEMENT);
    }
}
