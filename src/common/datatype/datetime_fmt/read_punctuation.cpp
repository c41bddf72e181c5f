// Reading punctuation and quoted literals, and leaving out fractions of a second.
//
// Under FX the text must be that of the model. Otherwise any punctuation stands for any other, less of it or
// none will do, and so white space is read by skipping it; two things are looked at: the "." before a
// fraction, and the sign of a UTC offset, which is no punctuation.

#include "fmt_read.h"

using namespace dv::impl;

namespace {

bool is_passed_over_(const dt_fmt_token_info_t &element) {
    return element.type == DT_FMT_TYPE_PUNC || element.type == DT_FMT_TYPE_FM ||
           element.type == DT_FMT_TYPE_FX;
}

bool is_fraction_(const dt_fmt_ctx_t &model, int index) {
    return index < model.token_cnt && model.token_infos[index].id == DT_FMT_TOKEN_FF;
}

bool is_zone_(const dt_fmt_ctx_t &model, int index) {
    return index < model.token_cnt && model.token_infos[index].type == DT_FMT_TYPE_TZ;
}

bool take_text_(dt_fmt_parse_ctx_t &ctx, std::string_view text) {
    if (!rest_of(ctx).starts_with(text)) return false;
    ctx.str_idx += static_cast<int32_t>(text.size());
    return true;
}

// Up to `count` characters of punctuation that are no white space, nor a sign where a sign is to come.
void take_punctuation_(dt_fmt_parse_ctx_t &ctx, size_t count, bool sign_follows) {
    for (const char c : rest_of(ctx)) {
        const bool is_sign = c == '+' || c == '-';
        if (count-- == 0 || !is_punc(c) || is_white_space(c) || (is_sign && sign_follows)) break;
        ++ctx.str_idx;
    }
}

// Is the fraction left out that this punctuation leads to? With a zone behind it, when the text does not go
// on as the model does; else when the text has ended.
bool is_fraction_omitted_(const dt_fmt_parse_ctx_t &ctx, std::string_view punctuation) {
    const std::string_view rest = rest_of(ctx);
    if (ctx.fmt_ctx->has_tz_token) return !rest.starts_with(punctuation.empty() ? '.' : punctuation.front());
    return rest.empty();
}

}  // namespace

int dv::impl::next_element_index(const dt_fmt_ctx_t &model, int from) {
    int i = from + 1;
    while (i < model.token_cnt && is_passed_over_(model.token_infos[i])) ++i;
    return i;
}

bool dv::impl::may_be_zone(const dt_fmt_parse_ctx_t &ctx) {
    const std::string_view rest = rest_of(ctx);
    if (!ctx.fmt_ctx->has_tz_token || rest.empty()) return false;
    const char c = rest.front();
    return c == '+' || c == '-' || is_digit(c) || is_letter(c);
}

void dv::impl::skip_fraction(const dt_fmt_parse_ctx_t &ctx, int &token_idx) {
    const dt_fmt_ctx_t &model = *ctx.fmt_ctx;
    const int fraction = next_element_index(model, token_idx);
    if (!is_fraction_(model, fraction)) return;
    token_idx = fraction;
    while (token_idx + 1 < model.token_cnt && model.token_infos[token_idx + 1].type == DT_FMT_TYPE_PUNC)
        ++token_idx;
}

void dv::impl::dt_fmt_parse_punc_token(dt_fmt_parse_ctx_t &ctx, int &token_idx,
                                       next_element_t &next_element) {
    const std::string_view text = text_of(*ctx.cur_token_info);
    if (is_exact(ctx)) {
        if (!take_text_(ctx, text)) raise(DV_ERR_EXACT_TEXT);
        return;
    }
    if (!has_rest(ctx)) {
        token_idx = check_omitted_time_token_(ctx, token_idx);
        return;
    }
    const bool is_literal = ctx.cur_token_info->id == DT_FMT_TOKEN_DQ;
    if (is_literal && take_text_(ctx, text)) return;  // with the blanks it begins with
    skip_white_space(ctx);
    if (is_literal && take_text_(ctx, text)) return;

    const int next = next_element.behind(*ctx.fmt_ctx, token_idx);
    if (is_fraction_(*ctx.fmt_ctx, next)) {
        if (is_fraction_omitted_(ctx, text)) return skip_fraction(ctx, token_idx);
        if (text == "." && !rest_of(ctx).starts_with('.')) raise(DV_ERR_RADIX);
    }
    take_punctuation_(ctx, text.size(), is_zone_(*ctx.fmt_ctx, next));
}

extern "C" void dt_fmt_parse_punc_token(dt_fmt_parse_ctx_t *parse_ctx, int *token_idx) {
    if (!has_element(parse_ctx) || !DV_ASSERT(token_idx != NULL)) return;
    next_element_t next_element;
    dt_fmt_parse_punc_token(*parse_ctx, *token_idx, next_element);
}
