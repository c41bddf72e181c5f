// Reading the elements of a date.
//
// A reader finds its field at the cursor, completes it from what the record holds (the caller's defaults,
// fields read before), checks it and stores it. Eras negate the year, whichever of the two comes first.

#include "fmt_read.h"

using namespace dv::impl;

namespace {

bool is_given_(const dt_fmt_parse_ctx_t &ctx, dt_fmt_unit_e field) { return (ctx.update_flag & field) != 0; }

int width_of_(int32_t id) { return fmt_tokens_[static_cast<size_t>(id)].input_len; }

// ---------------------------------------------------------------------------------------------------------
// Eras and years
// ---------------------------------------------------------------------------------------------------------

void store_year_(dt_fmt_parse_ctx_t &ctx, dv_date_t &date, int year) {
    check_unit(DT_FMT_UNIT_YEAR, year);
    date_set_year(date, year);
    ctx.update_flag |= DT_FMT_UNIT_YEAR;
}

// ad is the index of the name of AD, plain or dotted; that of BC is two further. One may begin the other.
void parse_ad_bc_(dt_fmt_parse_ctx_t &ctx, dv_date_t &date, int ad) {
    const int ad_length = match_name(ctx, std_adbc_tab_, ad);
    const int bc_length = match_name(ctx, std_adbc_tab_, ad + 2);
    if (ad_length == 0 && bc_length == 0) raise_field_text(ctx, "ad/bc", ERR_FIELD_TEXT);
    if (ad_length >= bc_length) {
        ctx.str_idx += ad_length;
        ctx.update_flag |= DT_FMT_UNIT_AD;
        return;
    }
    ctx.str_idx += bc_length;
    ctx.update_flag |= DT_FMT_UNIT_BC;
    if (is_given_(ctx, DT_FMT_UNIT_YEAR)) store_year_(ctx, date, -date_year(date));
}

// A year by its last digits: the first ones are those of the present year, with RR turning over at 50.
int complete_year_(int32_t id, int digits, int present) {
    switch (id) {
        case DT_FMT_TOKEN_YYY:
            return present / 1000 * 1000 + digits;
        case DT_FMT_TOKEN_YY:
            return present / 100 * 100 + digits;
        case DT_FMT_TOKEN_Y:
            return present / 10 * 10 + digits;
        case DT_FMT_TOKEN_RR:
            return present / 100 * 100 + digits - (digits < 50 ? 0 : 100);
        default:
            return digits;
    }
}

// YY and RR read a whole year where punctuation must follow and a third digit does: 2024-01-01 under
// YY-MM-DD.
bool is_whole_year_(const dt_fmt_parse_ctx_t &ctx, int32_t id, const number_field_t &number) {
    if (id != DT_FMT_TOKEN_YY && id != DT_FMT_TOKEN_RR) return false;
    return ctx.cur_token_info->next_token_is_punc && number.digit_count == width_of_(id) &&
           number.end < ctx.str_len && is_digit(ctx.str[number.end]);
}

void parse_yyyy_(dt_fmt_parse_ctx_t &ctx, dv_date_t &date, int32_t id) {
    const int width = width_of_(id);
    number_field_t number = find_number(ctx, width);
    if (number.is_negative && id != DT_FMT_TOKEN_SYYYY) {
        raise_field_text(ctx, "year", SIGNED_YEAR_NOTE, ERR_FIELD_TEXT);
    }
    if (number.digit_count == 0) raise_field_text(ctx, "year", ERR_FIELD_TEXT);
    if (is_exact(ctx) && number.digit_count != width) raise(ERR_EXACT_WIDTH);
    if (is_whole_year_(ctx, id, number)) {
        number = find_number(ctx, width_of_(DT_FMT_TOKEN_YYYY));
        id = DT_FMT_TOKEN_YYYY;
    }
    const int year = complete_year_(id, number.value, date_year(date));
    const bool is_bc = number.is_negative || is_given_(ctx, DT_FMT_UNIT_BC);
    store_year_(ctx, date, is_bc ? -year : year);
    ctx.str_idx = number.end;
}

// Four digits are the whole year, fewer are read as RR.
void parse_rrrr_(dt_fmt_parse_ctx_t &ctx, dv_date_t &date) {
    const int width = width_of_(DT_FMT_TOKEN_RRRR);
    const bool is_whole = find_number(ctx, width).digit_count == width;
    parse_yyyy_(ctx, date, is_whole || is_exact(ctx) ? DT_FMT_TOKEN_YYYY : DT_FMT_TOKEN_RR);
}

// ---------------------------------------------------------------------------------------------------------
// Months and days
// ---------------------------------------------------------------------------------------------------------

void store_month_(dt_fmt_parse_ctx_t &ctx, dv_date_t &date, int month) {
    check_unit(DT_FMT_UNIT_MONTH, month);
    date.month = static_cast<uint8_t>(month);
    ctx.update_flag |= DT_FMT_UNIT_MONTH;
}

// Reads a name of a list; 1..12, or 0 when there is none. From December down, so that a name is found before
// one that it begins with (XII before XI, X and I).
int conv_month_name_to_idx_(dt_fmt_parse_ctx_t &ctx, const nls_date_lang_val_t *const *lists) {
    int skipped = 0;
    for (const char c : rest_of(ctx)) {
        if (!is_blank(c)) break;
        ++skipped;
    }
    const name_match_t name = match_last_name(ctx, lists, MONTHS_PER_YEAR, skipped);
    if (name.length == 0) return 0;
    ctx.str_idx += skipped + name.length;
    return name.idx + 1;
}

// Without FX, full names and abbreviations stand for each other.
int find_month_name_(dt_fmt_parse_ctx_t &ctx, int32_t id) {
    if (id == DT_FMT_TOKEN_RM) return conv_month_name_to_idx_(ctx, rm_month_tab_);
    if (is_exact(ctx)) {
        return conv_month_name_to_idx_(ctx, id == DT_FMT_TOKEN_MONTH ? std_month_tab_ : abb_month_tab_);
    }
    const int month = conv_month_name_to_idx_(ctx, std_month_tab_);
    return month != 0 ? month : conv_month_name_to_idx_(ctx, abb_month_tab_);
}

void parse_month_(dt_fmt_parse_ctx_t &ctx, dv_date_t &date, int32_t id) {
    const int month = find_month_name_(ctx, id);
    if (month == 0) raise_field_text(ctx, "month", ERR_FIELD_TEXT);
    store_month_(ctx, date, month);
}

// A number, or a name.
void parse_mm_(dt_fmt_parse_ctx_t &ctx, dv_date_t &date) {
    const int width = width_of_(DT_FMT_TOKEN_MM);
    if (find_number(ctx, width).digit_count == 0) return parse_month_(ctx, date, DT_FMT_TOKEN_MM);
    store_month_(ctx, date, take_number(ctx, "month", width, ERR_FIELD_TEXT, ERR_EXACT_WIDTH));
}

void parse_dd_(dt_fmt_parse_ctx_t &ctx, dv_date_t &date) {
    const int day = take_number(ctx, "day", width_of_(DT_FMT_TOKEN_DD), ERR_FIELD_TEXT, ERR_EXACT_WIDTH);
    check_unit(DT_FMT_UNIT_DAY, day);
    date.day = static_cast<uint8_t>(day);
    ctx.update_flag |= DT_FMT_UNIT_DAY;
}

constexpr int _days_of_leap_year = 366;

// Month and day follow when all is read (dt_fmt_check_ddd).
void parse_ddd_(dt_fmt_parse_ctx_t &ctx) {
    const int width = width_of_(DT_FMT_TOKEN_DDD);
    const number_field_t number = find_number(ctx, width);
    const int ddd = take_number(ctx, "day of year", width, ERR_FIELD_TEXT, ERR_EXACT_WIDTH);
    if (ddd < 1 || ddd > _days_of_leap_year) {
        ctx.str_idx = number.end - number.digit_count;  // where the message begins
        raise_field_text(ctx, "day of year", ERR_FIELD_TEXT);
    }
    ctx.ddd = ddd;
    ctx.update_flag |= DT_FMT_UNIT_DDD;
}

void parse_element_(dt_fmt_parse_ctx_t &ctx, dv_date_t &date, int32_t id) {
    switch (id) {
        case DT_FMT_TOKEN_AD:
        case DT_FMT_TOKEN_BC:
            return parse_ad_bc_(ctx, date, 0);
        case DT_FMT_TOKEN_AD_P:
        case DT_FMT_TOKEN_BC_P:
            return parse_ad_bc_(ctx, date, 1);
        case DT_FMT_TOKEN_SYYYY:
        case DT_FMT_TOKEN_YYYY:
        case DT_FMT_TOKEN_YYY:
        case DT_FMT_TOKEN_YY:
        case DT_FMT_TOKEN_Y:
        case DT_FMT_TOKEN_RR:
            return parse_yyyy_(ctx, date, id);
        case DT_FMT_TOKEN_RRRR:
            return parse_rrrr_(ctx, date);
        case DT_FMT_TOKEN_MM:
            return parse_mm_(ctx, date);
        case DT_FMT_TOKEN_MON:
        case DT_FMT_TOKEN_MONTH:
        case DT_FMT_TOKEN_RM:
            return parse_month_(ctx, date, id);
        case DT_FMT_TOKEN_DD:
            return parse_dd_(ctx, date);
        case DT_FMT_TOKEN_DDD:
            return parse_ddd_(ctx);
        default:
            return;  // J takes nothing
    }
}

}  // namespace

extern "C" void dt_fmt_parse_date(dt_fmt_parse_ctx_t *parse_ctx, dv_date_t *date) {
    if (!is_given(parse_ctx) || !is_given(date)) return;
    const dt_fmt_token_t *element = current_keyword(*parse_ctx);
    if (element == NULL || element->type != DT_FMT_TYPE_DATE) raise(ERR_MODEL_FOR_DATE);
    if (!element->is_input) raise(ERR_ELEMENT_NOT_READABLE);
    skip_and_check_punc_token_(*parse_ctx);
    if (!has_rest(*parse_ctx)) raise(ERR_TEXT_ENDED);
    parse_element_(*parse_ctx, *date, parse_ctx->cur_token_info->id);
}

extern "C" void dt_fmt_check_ddd(dt_fmt_parse_ctx_t *parse_ctx, dv_date_t *date) {
    if (!is_given(parse_ctx) || !is_given(date) || parse_ctx->ddd == 0) return;
    DV_ASSERT(parse_ctx->ddd > 0);
    const int year = date_year(*date);
    if (parse_ctx->ddd == _days_of_leap_year && !is_leap_year(year)) {
        raise(ERR_FIELD_TEXT, "day of year", "366", "366 for leap year");
    }
    int month = 1, day = parse_ctx->ddd;
    for (; month < MONTHS_PER_YEAR && day > month_length(year, month); ++month)
        day -= month_length(year, month);
    if (is_given_(*parse_ctx, DT_FMT_UNIT_MONTH) && date->month != month) raise(ERR_DAY_OF_YEAR_AND_MONTH);
    if (is_given_(*parse_ctx, DT_FMT_UNIT_DAY) && date->day != day) raise(ERR_DAY_OF_YEAR_AND_DAY);
    date->month = static_cast<uint8_t>(month);
    date->day = static_cast<uint8_t>(day);
}
