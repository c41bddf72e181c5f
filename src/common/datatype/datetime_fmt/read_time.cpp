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

// am is the index of the name of AM, plain or dotted; that of PM is two further. The hour may come before.
void parse_am_pm_(dt_fmt_parse_ctx_t &ctx, dv_time_t &time, int am) {
    const int am_length = match_name(ctx, std_ampm_tab_, am);
    const int pm_length = match_name(ctx, std_ampm_tab_, am + 2);
    if (am_length == 0 && pm_length == 0) raise_field_text(ctx, "am/pm", ERR_FIELD_TEXT);
    const bool is_am = am_length >= pm_length;
    ctx.str_idx += is_am ? am_length : pm_length;
    ctx.update_flag |= is_am ? DT_FMT_UNIT_AM : DT_FMT_UNIT_PM;
    if (is_given_(ctx, DT_FMT_UNIT_HOUR)) time.hour = static_cast<uint8_t>(hour_of_day_(ctx, time.hour));
}

struct hour_form_t {
    int lowest, highest;
    dt_fmt_unit_e unit;
};
constexpr hour_form_t _hour_of_12 = {1, 12, DT_FMT_UNIT_HOUR};
constexpr hour_form_t _hour_of_24 = {0, 23, DT_FMT_UNIT_HH24};

void parse_hour_(dt_fmt_parse_ctx_t &ctx, dv_time_t &time, const hour_form_t &form) {
    const int hour = take_number(ctx, "hour", width_of_(ctx), ERR_FIELD_TEXT, ERR_EXACT_WIDTH);
    if (hour < form.lowest || hour > form.highest) {
        raise(ERR_FIELD_RANGE, "hour", hour, form.lowest, form.highest);
    }
    const bool is_of_12 = form.unit == DT_FMT_UNIT_HOUR;
    time.hour = static_cast<uint8_t>(is_of_12 ? hour_of_day_(ctx, hour) : hour);
    ctx.update_flag |= form.unit;
}

// ---------------------------------------------------------------------------------------------------------
// Minutes, seconds
// ---------------------------------------------------------------------------------------------------------

void parse_minute_(dt_fmt_parse_ctx_t &ctx, dv_time_t &time) {
    const int minute = take_number(ctx, "minute", width_of_(ctx), ERR_FIELD_TEXT, ERR_EXACT_WIDTH);
    check_unit(DT_FMT_UNIT_MINUTE, minute);
    time.minute = static_cast<uint8_t>(minute);
    ctx.update_flag |= DT_FMT_UNIT_MINUTE;
}

void parse_second_(dt_fmt_parse_ctx_t &ctx, dv_time_t &time) {
    const int second = take_number(ctx, "second", width_of_(ctx), ERR_FIELD_TEXT, ERR_EXACT_WIDTH);
    check_unit(DT_FMT_UNIT_SECOND, second);
    time.second = static_cast<uint8_t>(second);
    ctx.update_flag |= DT_FMT_UNIT_SECOND;
}

void parse_second_of_day_(dt_fmt_parse_ctx_t &ctx, dv_time_t &time) {
    constexpr const char *field = "seconds past midnight";
    const int second = take_number(ctx, field, width_of_(ctx), ERR_FIELD_TEXT, ERR_EXACT_WIDTH);
    if (second >= SEC_PER_DAY) raise(ERR_FIELD_RANGE, field, second, 0, SEC_PER_DAY - 1);
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
    if (fraction_precision(*ctx.cur_token_info, fprec) > FRACTION_DIGITS) raise(ERR_FRACTION_PRECISION);
    uint32_t nanoseconds = 0;
    int digit_count = 0;
    for (const char c : rest_of(ctx)) {
        if (!is_digit(c) || digit_count == FRACTION_DIGITS) break;
        nanoseconds = nanoseconds * 10 + static_cast<uint32_t>(c - '0');
        ++digit_count;
    }
    if (digit_count == 0) raise_field_text(ctx, "fractional seconds", ERR_FIELD_TEXT);
    if (is_exact(ctx) && digit_count != FRACTION_DIGITS) raise(ERR_EXACT_WIDTH);
    ctx.str_idx += digit_count;
    for (; digit_count < FRACTION_DIGITS; ++digit_count) nanoseconds *= 10;
    time_set_nanoseconds(time, nanoseconds);
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
        raise(ERR_RADIX);
    }
}

void parse_element_(dt_fmt_parse_ctx_t &ctx, dv_time_t &time, int fprec, int &token_idx) {
    switch (ctx.cur_token_info->id) {
        case DT_FMT_TOKEN_AM:
        case DT_FMT_TOKEN_PM:
            return parse_am_pm_(ctx, time, 0);
        case DT_FMT_TOKEN_AM_P:
        case DT_FMT_TOKEN_PM_P:
            return parse_am_pm_(ctx, time, 1);
        case DT_FMT_TOKEN_HH:
        case DT_FMT_TOKEN_HH12:
            return parse_hour_(ctx, time, _hour_of_12);
        case DT_FMT_TOKEN_HH24:
            return parse_hour_(ctx, time, _hour_of_24);
        case DT_FMT_TOKEN_MI:
            return parse_minute_(ctx, time);
        case DT_FMT_TOKEN_SS:
            return parse_second_(ctx, time);
        case DT_FMT_TOKEN_SSSSS:
            return parse_second_of_day_(ctx, time);
        case DT_FMT_TOKEN_FF:
            return parse_fsec_(ctx, time, fprec);
        default:
            return parse_radix_(ctx, token_idx);
    }
}

}  // namespace

extern "C" void dt_fmt_parse_time(dt_fmt_parse_ctx_t *parse_ctx, dv_time_t *time, int fprec, int *token_idx) {
    if (!is_given(parse_ctx) || !is_given(time)) return;
    const dt_fmt_token_t *element = current_keyword(*parse_ctx);
    if (element == NULL || element->type != DT_FMT_TYPE_TIME) raise(ERR_MODEL_FOR_TIME);
    if (!element->is_input) raise(ERR_ELEMENT_NOT_READABLE);
    skip_and_check_punc_token_(*parse_ctx);
    if (!has_rest(*parse_ctx)) return check_omitted_time_token_(*parse_ctx, *token_idx);
    parse_element_(*parse_ctx, *time, fprec, *token_idx);
}
