// Reading the elements of a date.
//
// A reader finds its field at the cursor, completes it from what the record holds (the caller's defaults,
// fields read before), checks it and stores it. Eras negate the year, whichever of the two comes first.

#include "fmt_read.h"

using namespace dv::impl;

namespace {

bool is_given_(const dt_fmt_parse_ctx_t &ctx, dt_fmt_unit_e field) { return (ctx.update_flag & field) != 0; }

const dt_fmt_token_t &element_of_(int32_t id) { return fmt_tokens_[static_cast<size_t>(id)]; }
int width_of_(int32_t id) { return element_of_(id).input_len; }

// ---------------------------------------------------------------------------------------------------------
// Eras and years
// ---------------------------------------------------------------------------------------------------------

void store_year_(dt_fmt_parse_ctx_t &ctx, dv_date_t &date, int year) {
    check_unit(DT_FMT_UNIT_YEAR, year);
    date_set_year(date, year);
    ctx.update_flag |= DT_FMT_UNIT_YEAR;
}

// The name of BC, plain or dotted, is two behind that of AD. One may begin the other.
void parse_ad_bc_(dt_fmt_parse_ctx_t &ctx, dv_date_t &date, int32_t id) {
    const int ad = id == DT_FMT_TOKEN_AD_P || id == DT_FMT_TOKEN_BC_P ? 1 : 0;
    const int ad_length = match_name(ctx, std_adbc_tab_, ad);
    const int bc_length = match_name(ctx, std_adbc_tab_, ad + 2);
    if (ad_length == 0 && bc_length == 0) raise_field_text(ctx, "ad/bc", DV_ERR_FIELD_TEXT);
    if (ad_length >= bc_length) {
        ctx.str_idx += ad_length;
        ctx.update_flag |= DT_FMT_UNIT_AD;
        return;
    }
    ctx.str_idx += bc_length;
    ctx.update_flag |= DT_FMT_UNIT_BC;
    if (is_given_(ctx, DT_FMT_UNIT_YEAR)) store_year_(ctx, date, -date_year(date));
}

// A year by its last digits, negative behind BC: the first ones are those of the present year, with RR
// turning over at 50 and leaving negative ones as they are.
int complete_year_(int32_t id, int digits, int present) {
    switch (id) {
        case DT_FMT_TOKEN_YYY:
            return present / 1000 * 1000 + digits;
        case DT_FMT_TOKEN_YY:
            return present / 100 * 100 + digits;
        case DT_FMT_TOKEN_Y:
            return present / 10 * 10 + digits;
        case DT_FMT_TOKEN_RR:
            if (digits < 0) return digits;
            return present / 100 * 100 + digits - (digits < 50 ? 0 : 100);
        default:
            return digits;
    }
}

// YY and RR read a whole year where punctuation must follow and the third character of the field is a digit,
// whatever the two before it are: 2024-01-01 under YY-MM-DD, but also 1-06 under RR-HH.
bool is_whole_year_(const dt_fmt_parse_ctx_t &ctx, const dt_fmt_token_t &element) {
    const std::string_view field = rest_of(ctx);
    return element.alt_token1 == DT_FMT_TOKEN_YYYY && ctx.cur_token_info->next_token_is_punc &&
           field.size() > 2 && is_digit(field[2]);
}

void parse_yyyy_(dt_fmt_parse_ctx_t &ctx, dv_date_t &date, int32_t id) {
    const dt_fmt_token_t &element = element_of_(id);
    number_field_t number = find_number(ctx, element.input_len);
    if (number.is_negative && id != DT_FMT_TOKEN_SYYYY) {
        raise_field_text(ctx, "year", SIGNED_YEAR_NOTE, DV_ERR_FIELD_TEXT);
    }
    if (number.digit_count == 0) raise_field_text(ctx, "year", DV_ERR_FIELD_TEXT);
    if (is_exact(ctx) && number.digit_count != element.input_len) raise(DV_ERR_EXACT_WIDTH);
    int year;
    if (is_whole_year_(ctx, element)) {
        number = find_number(ctx, width_of_(element.alt_token1));
        year = number.value;
    } else {
        const bool is_bc = number.is_negative || is_given_(ctx, DT_FMT_UNIT_BC);
        year = complete_year_(id, is_bc ? -number.value : number.value, date_year(date));
    }
    store_year_(ctx, date, year);
    ctx.str_idx = number.end;
}

// Four digits are the whole year, fewer are read as RR.
void parse_rrrr_(dt_fmt_parse_ctx_t &ctx, dv_date_t &date, int32_t id) {
    const dt_fmt_token_t &element = element_of_(id);
    const number_field_t number = find_number(ctx, element.input_len);
    if (number.digit_count != element.input_len || number.is_negative) {
        return parse_yyyy_(ctx, date, is_exact(ctx) ? int16_t{DT_FMT_TOKEN_YYYY} : element.alt_token1);
    }
    store_year_(ctx, date, number.value);
    ctx.str_idx = number.end;
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

// The lists of an element, and of those that are read in its place, full names first; under FX its own.
int find_month_name_(dt_fmt_parse_ctx_t &ctx, int32_t id) {
    if (id == DT_FMT_TOKEN_RM) return conv_month_name_to_idx_(ctx, rm_month_tab_);
    const dt_fmt_token_t &element = element_of_(id);
    const bool is_alone = is_exact(ctx);
    const auto reads = [&](int32_t other) {
        return id == other || (!is_alone && (element.alt_token1 == other || element.alt_token2 == other));
    };
    const int month = reads(DT_FMT_TOKEN_MONTH) ? conv_month_name_to_idx_(ctx, std_month_tab_) : 0;
    if (month != 0 || !reads(DT_FMT_TOKEN_MON)) return month;
    return conv_month_name_to_idx_(ctx, abb_month_tab_);
}

void parse_month_(dt_fmt_parse_ctx_t &ctx, dv_date_t &date, int32_t id) {
    const int month = find_month_name_(ctx, id);
    if (month == 0) raise_field_text(ctx, "month", DV_ERR_FIELD_TEXT);
    store_month_(ctx, date, month);
}

// A number, or a name.
void parse_mm_(dt_fmt_parse_ctx_t &ctx, dv_date_t &date, int32_t id) {
    const number_field_t number = find_number(ctx, width_of_(id));
    if (number.digit_count == 0 || number.is_negative) {
        return parse_month_(ctx, date, is_exact(ctx) ? element_of_(id).alt_token1 : id);
    }
    if (is_exact(ctx) && number.digit_count != width_of_(id)) raise(DV_ERR_EXACT_WIDTH);
    ctx.str_idx = number.end;
    store_month_(ctx, date, number.value);
}

void parse_dd_(dt_fmt_parse_ctx_t &ctx, dv_date_t &date, int32_t id) {
    const int day = take_number(ctx, "day", width_of_(id), DV_ERR_FIELD_TEXT, DV_ERR_EXACT_WIDTH);
    check_unit(DT_FMT_UNIT_DAY, day);
    date.day = static_cast<uint8_t>(day);
    ctx.update_flag |= DT_FMT_UNIT_DAY;
}

constexpr int _days_of_leap_year = 366;

// Month and day follow when all is read (dt_fmt_check_ddd).
void parse_ddd_(dt_fmt_parse_ctx_t &ctx, dv_date_t & /*date*/, int32_t id) {
    const int width = width_of_(id);
    const number_field_t number = find_number(ctx, width);
    const int ddd = take_number(ctx, "day of year", width, DV_ERR_FIELD_TEXT, DV_ERR_EXACT_WIDTH);
    if (ddd < 1 || ddd > _days_of_leap_year) {
        ctx.str_idx = number.end - number.digit_count;  // where the message begins
        raise_field_text(ctx, "day of year", DV_ERR_FIELD_TEXT);
    }
    ctx.ddd = ddd;
    ctx.update_flag |= DT_FMT_UNIT_DDD;
}

// J takes nothing.
void skip_julian_day_(dt_fmt_parse_ctx_t & /*ctx*/, dv_date_t & /*date*/, int32_t /*id*/) {}

using reader_t = void(dt_fmt_parse_ctx_t &ctx, dv_date_t &date, int32_t id);

constexpr auto _readers = [] {
    std::array<reader_t *, FMT_TOKEN_IDS_END> readers{};
    const auto set = [&readers](reader_t *reader, std::initializer_list<dt_fmt_token_id_e> elements) {
        for (const dt_fmt_token_id_e id : elements) readers[id] = reader;
    };
    set(parse_ad_bc_, {DT_FMT_TOKEN_AD, DT_FMT_TOKEN_AD_P, DT_FMT_TOKEN_BC, DT_FMT_TOKEN_BC_P});
    set(parse_yyyy_, {DT_FMT_TOKEN_SYYYY, DT_FMT_TOKEN_YYYY, DT_FMT_TOKEN_YYY, DT_FMT_TOKEN_YY,
                      DT_FMT_TOKEN_Y, DT_FMT_TOKEN_RR});
    set(parse_rrrr_, {DT_FMT_TOKEN_RRRR});
    set(parse_mm_, {DT_FMT_TOKEN_MM});
    set(parse_month_, {DT_FMT_TOKEN_MON, DT_FMT_TOKEN_MONTH, DT_FMT_TOKEN_RM});
    set(parse_dd_, {DT_FMT_TOKEN_DD});
    set(parse_ddd_, {DT_FMT_TOKEN_DDD});
    set(skip_julian_day_, {DT_FMT_TOKEN_J});
    return readers;
}();

static_assert(all_elements(
    [](const dt_fmt_token_t &element) { return element.type == DT_FMT_TYPE_DATE && element.is_input; },
    [](size_t id) { return _readers[id] != nullptr; }));

}  // namespace

// Elements of other types and punctuation have no reader here, which is said when a text is there to be read.
extern "C" void dt_fmt_parse_date(dt_fmt_parse_ctx_t *parse_ctx, dv_date_t *date) {
    if (!has_element(parse_ctx) || !is_given(date)) return;
    const dt_fmt_token_t *element = current_keyword(*parse_ctx);
    if (element != NULL && !element->is_input) raise(DV_ERR_ELEMENT_NOT_READABLE);
    skip_and_check_punc_token_(*parse_ctx);
    if (!has_rest(*parse_ctx)) {
        check_omitted_time_token_(*parse_ctx, /*token_idx=*/-1);
        return;
    }
    const int32_t id = parse_ctx->cur_token_info->id;
    reader_t *const read = element != NULL ? _readers[static_cast<size_t>(id)] : nullptr;
    if (read == nullptr) raise(DV_ERR_MODEL_FOR_DATE);
    read(*parse_ctx, *date, id);
}

extern "C" void dt_fmt_check_ddd(dt_fmt_parse_ctx_t *parse_ctx, dv_date_t *date) {
    if (!is_given(parse_ctx) || !is_given(date) || parse_ctx->ddd == 0) return;
    DV_ASSERT(parse_ctx->ddd > 0);
    const int year = date_year(*date);
    if (parse_ctx->ddd == _days_of_leap_year && !is_leap_year(year)) {
        raise(DV_ERR_FIELD_TEXT, "day of year", "366", "366 for leap year");
    }
    int month = 1, day = parse_ctx->ddd;
    for (; month < MONTHS_PER_YEAR && day > month_length(year, month); ++month)
        day -= month_length(year, month);
    if (is_given_(*parse_ctx, DT_FMT_UNIT_MONTH) && date->month != month) raise(DV_ERR_DAY_OF_YEAR_AND_MONTH);
    if (is_given_(*parse_ctx, DT_FMT_UNIT_DAY) && date->day != day) raise(DV_ERR_DAY_OF_YEAR_AND_DAY);
    date->month = static_cast<uint8_t>(month);
    date->day = static_cast<uint8_t>(day);
}
