// Does a text have the form of an ANSI literal, such as DATE '2024-02-29' or TIMESTAMP '2024-02-29
// 13:05:00.5'?
//
// Asked element by element under the literal's model; the answers raise nothing and store nothing. A "-"
// before a field is a separator when punctuation precedes it, and a sign for SYYYY alone.

#include "fmt_read.h"

using namespace dv::impl;

namespace {

// Blanks, then 1 to width digits, with a sign before them where it may be.
bool check_ansi_num_field_(dt_fmt_parse_ctx_t &ctx, int width, bool may_be_signed) {
    int at = ctx.str_idx;
    while (at < ctx.str_len && is_blank(ctx.str[at])) ++at;
    if (may_be_signed && at < ctx.str_len && (ctx.str[at] == '+' || ctx.str[at] == '-')) ++at;
    int digit_count = 0;
    for (; digit_count < width && at < ctx.str_len && is_digit(ctx.str[at]); ++at) ++digit_count;
    if (digit_count == 0) return false;
    ctx.str_idx = at;
    return true;
}

// A "-" at the cursor: may it stand there? A separator is taken.
bool check_ansi_punc_rule_(dt_fmt_parse_ctx_t &ctx) {
    if (!rest_of(ctx).starts_with('-') || ctx.cur_token_info->id == DT_FMT_TOKEN_SYYYY) return true;
    if (ctx.str_idx < 1 || !is_punc(ctx.str[ctx.str_idx - 1])) return false;
    ++ctx.str_idx;
    return true;
}

bool check_field_(dt_fmt_parse_ctx_t &ctx, const dt_fmt_token_t &element) {
    return check_ansi_punc_rule_(ctx) &&
           check_ansi_num_field_(ctx, element.input_len, ctx.cur_token_info->id == DT_FMT_TOKEN_SYYYY);
}

bool is_ansi_time_(int32_t id) {
    return id == DT_FMT_TOKEN_HH24 || id == DT_FMT_TOKEN_MI || id == DT_FMT_TOKEN_SS || id == DT_FMT_TOKEN_FF;
}

}  // namespace

extern "C" uchar dt_fmt_check_ansi_date(dt_fmt_parse_ctx_t *parse_ctx) {
    if (!has_element(parse_ctx)) return 0;
    const dt_fmt_token_t *element = current_keyword(*parse_ctx);
    if (element == NULL || element->type != DT_FMT_TYPE_DATE || !element->is_input || element->is_str_fmt)
        return 0;
    return check_field_(*parse_ctx, *element) ? 1 : 0;
}

extern "C" uchar dt_fmt_check_ansi_time(dt_fmt_parse_ctx_t *parse_ctx) {
    if (!has_element(parse_ctx)) return 0;
    const dt_fmt_token_t *element = current_keyword(*parse_ctx);
    if (element == NULL || !is_ansi_time_(parse_ctx->cur_token_info->id)) return 0;
    return check_field_(*parse_ctx, *element) ? 1 : 0;
}

extern "C" uchar dt_fmt_check_ansi_punc(dt_fmt_parse_ctx_t *parse_ctx) {
    if (!has_element(parse_ctx)) return 0;
    const bool is_space = parse_ctx->cur_token_info->id == DT_FMT_TOKEN_SPACE;
    if (!is_space && has_rest(*parse_ctx) && is_punc(parse_ctx->str[parse_ctx->str_idx]))
        ++parse_ctx->str_idx;
    return 1;
}
