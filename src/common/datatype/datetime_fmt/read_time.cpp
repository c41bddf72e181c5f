// Reading the elements of a time of day.
//
// A fraction of a second may be left out at the end of the text, and before a time zone; FF and the
// punctuation behind it are then skipped.

#include "fmt_read.h"

using namespace dv::impl;

namespace {

int width_of_(const dt_fmt_parse_ctx_t &ctx) { return current_keyword(ctx)->input_len; }

bool is_given_(const dt_fmt_parse_ctx_t &ctx, dt_fmt_unit_e field) { return (ctx.update_flag & field) != 0; }

// ---------------------------------------------------------------------------------------------------------
// Hours and meridians
// ---------------------------------------------------------------------------------------------------------

// An hour of 1..12 under the meridian that was read; without one it stays.
int hour_of_day_(const dt_fmt_parse_ctx_t &ctx, int hour) {
    if (is_given_(ctx, DT_FMT_UNIT_PM) && hour < 12) return hour + 12;
    if (is_given_(ctx, DT_FMT_UNIT_AM) && hour == 12) return 0;
    return hour;
}

// The name of PM, plain or dotted, is two behind that of AM. The hour may come before.
void parse_am_pm_(dt_fmt_parse_ctx_t &ctx, dv_time_t &time) {
    const int32_t id = ctx.cur_token_info->id;
    const int am = id == DT_FMT_TOKEN_AM_P || id == DT_FMT_TOKEN_PM_P ? 1 : 0;
    const int am_length = match_name(ctx, std_ampm_tab_, am);
    const int pm_length = match_name(ctx, std_ampm_tab_, am + 2);
    if (am_length == 0 && pm_length == 0) raise_field_text(ctx, "am/pm", DV_ERR_FIELD_TEXT);
    const bool is_am = am_length >= pm_length;
    ctx.str_idx += is_am ? am_length : pm_length;
    ctx.update_flag |= is_am ? DT_FMT_UNIT_AM : DT_FMT_UNIT_PM;
    if (is_given_(ctx, DT_FMT_UNIT_HOUR)) time.hour = static_cast<uint8_t>(hour_of_day_(ctx, time.hour));
}

void parse_hour_(dt_fmt_parse_ctx_t &ctx, dv_time_t &time) {
    const bool is_of_12 = ctx.cur_token_info->id != DT_FMT_TOKEN_HH24;
    const int lowest = is_of_12 ? 1 : 0, highest = is_of_12 ? 12 : 23;
    const int hour = take_number(ctx, "hour", width_of_(ctx), DV_ERR_FIELD_TEXT, DV_ERR_EXACT_WIDTH);
    if (hour < lowest || hour > highest) raise(DV_ERR_FIELD_RANGE, "hour", hour, lowest, highest);
    time.hour = static_cast<uint8_t>(is_of_12 ? hour_of_day_(ctx, hour) : hour);
    ctx.update_flag |= is_of_12 ? DT_FMT_UNIT_HOUR : DT_FMT_UNIT_HH24;
}

// ---------------------------------------------------------------------------------------------------------
// Minutes, seconds
// ---------------------------------------------------------------------------------------------------------

void parse_minute_(dt_fmt_parse_ctx_t &ctx, dv_time_t &time) {
    const int minute = take_number(ctx, "minute", width_of_(ctx), DV_ERR_FIELD_TEXT, DV_ERR_EXACT_WIDTH);
    check_unit(DT_FMT_UNIT_MINUTE, minute);
    time.minute = static_cast<uint8_t>(minute);
    ctx.update_flag |= DT_FMT_UNIT_MINUTE;
}

void parse_second_(dt_fmt_parse_ctx_t &ctx, dv_time_t &time) {
    const int second = take_number(ctx, "second", width_of_(ctx), DV_ERR_FIELD_TEXT, DV_ERR_EXACT_WIDTH);
    check_unit(DT_FMT_UNIT_SECOND, second);
    time.second = static_cast<uint8_t>(second);
    ctx.update_flag |= DT_FMT_UNIT_SECOND;
}

void parse_second_of_day_(dt_fmt_parse_ctx_t &ctx, dv_time_t &time) {
    constexpr const char *field = "seconds past midnight";
    const int second = take_number(ctx, field, width_of_(ctx), DV_ERR_FIELD_TEXT, DV_ERR_EXACT_WIDTH);
    if (second >= SEC_PER_DAY) raise(DV_ERR_FIELD_RANGE, field, second, 0, SEC_PER_DAY - 1);
    time.hour = static_cast<uint8_t>(second / SEC_PER_HOUR);
    time.minute = static_cast<uint8_t>(second % SEC_PER_HOUR / SEC_PER_MINUTE);
    time.second = static_cast<uint8_t>(second % SEC_PER_MINUTE);
    ctx.update_flag |= DT_FMT_UNIT_SSSSS;
}

// ---------------------------------------------------------------------------------------------------------
// Fractions
// ---------------------------------------------------------------------------------------------------------

// Up to nine digits, whatever the precision; no sign, no blanks.
void parse_fsec_(dt_fmt_parse_ctx_t &ctx, dv_time_t &time, int fprec) {
    if (fraction_precision(*ctx.cur_token_info, fprec) > FRACTION_DIGITS) raise(DV_ERR_FRACTION_PRECISION);
    uint32_t nanoseconds = 0;
    int digit_count = 0;
    for (const char c : rest_of(ctx)) {
        if (!is_digit(c) || digit_count == FRACTION_DIGITS) break;
        nanoseconds = nanoseconds * 10 + static_cast<uint32_t>(c - '0');
        ++digit_count;
    }
    if (digit_count == 0) raise_field_text(ctx, "fractional seconds", DV_ERR_FIELD_TEXT);
    if (is_exact(ctx) && digit_count != FRACTION_DIGITS) raise(DV_ERR_EXACT_WIDTH);
    ctx.str_idx += digit_count;
    time_set_nanoseconds(time, nanoseconds * fraction_unit(digit_count));
    ctx.update_flag |= DT_FMT_UNIT_FSEC;
}

// X: the "." itself, or nothing where the fraction is left out.
void parse_radix_(dt_fmt_parse_ctx_t &ctx, int &token_idx) {
    const std::string_view rest = rest_of(ctx);
    if (rest.starts_with('.')) {
        ++ctx.str_idx;
    } else if (rest.empty() || may_be_zone(ctx)) {
        skip_fraction(ctx, token_idx);
    } else {
        raise(DV_ERR_RADIX);
    }
}

using reader_t = void(dt_fmt_parse_ctx_t &ctx, dv_time_t &time);

// FF and X, which look at the type and the model too, aside.
constexpr auto _readers = [] {
    std::array<reader_t *, FMT_TOKEN_IDS_END> readers{};
    const auto set = [&readers](reader_t *reader, std::initializer_list<dt_fmt_token_id_e> elements) {
        for (const dt_fmt_token_id_e id : elements) readers[id] = reader;
    };
    set(parse_am_pm_, {DT_FMT_TOKEN_AM, DT_FMT_TOKEN_AM_P, DT_FMT_TOKEN_PM, DT_FMT_TOKEN_PM_P});
    set(parse_hour_, {DT_FMT_TOKEN_HH, DT_FMT_TOKEN_HH12, DT_FMT_TOKEN_HH24});
    set(parse_minute_, {DT_FMT_TOKEN_MI});
    set(parse_second_, {DT_FMT_TOKEN_SS});
    set(parse_second_of_day_, {DT_FMT_TOKEN_SSSSS});
    return readers;
}();

static_assert(all_elements(
    [](const dt_fmt_token_t &element) { return element.type == DT_FMT_TYPE_TIME && element.is_input; },
    [](size_t id) { return _readers[id] != nullptr || id == DT_FMT_TOKEN_FF || id == DT_FMT_TOKEN_X; }));

}  // namespace

// Elements of other types and punctuation have no reader here, which is said when a text is there to be read.
extern "C" void dt_fmt_parse_time(dt_fmt_parse_ctx_t *parse_ctx, dv_time_t *time, int fprec, int *token_idx) {
    if (!has_element(parse_ctx) || !is_given(time) || !DV_ASSERT(token_idx != NULL)) return;
    const dt_fmt_token_t *element = current_keyword(*parse_ctx);
    if (element != NULL && !element->is_input) raise(DV_ERR_ELEMENT_NOT_READABLE);
    skip_and_check_punc_token_(*parse_ctx);
    if (!has_rest(*parse_ctx)) {
        *token_idx = check_omitted_time_token_(*parse_ctx, *token_idx);
        return;
    }
    const int32_t id = parse_ctx->cur_token_info->id;
    if (id == DT_FMT_TOKEN_FF) return parse_fsec_(*parse_ctx, *time, fprec);
    if (id == DT_FMT_TOKEN_X) return parse_radix_(*parse_ctx, *token_idx);
    reader_t *const read = element != NULL ? _readers[static_cast<size_t>(id)] : nullptr;
    if (read == nullptr) raise(DV_ERR_MODEL_FOR_TIME);
    read(*parse_ctx, *time);
}
