// What the readers of format elements share.

#include "fmt_read.h"

#include <algorithm>

#include "../message_text.h"
#include "../nls/nls_internal.h"

using namespace dv::impl;

namespace {

// How many characters at the beginning of a name are ASCII, and whether the text begins with them in any
// letter case. All character sets have ASCII, so that most names need no conversion.
struct ascii_part_t {
    int length;
    bool matches;
};
ascii_part_t compare_ascii_part_(std::string_view text, const nls_date_lang_val_t &name) {
    int i = 0;
    for (; 2 * i < name.len; ++i) {
        const uint16_t unit = load_be16(name.val + 2 * i);
        if (unit >= 0x80) break;
        const auto at = static_cast<size_t>(i);
        if (at >= text.size() || to_lower(text[at]) != to_lower(static_cast<char>(unit))) return {i, false};
    }
    return {i, true};
}

// How many bytes at the beginning of a text are a name, in any letter case; 0: none.
int nls_prefix_length_(std::string_view text, const nls_date_lang_val_t &name, dvstr_charset_t charset) {
    const ascii_part_t ascii = compare_ascii_part_(text, name);
    if (!ascii.matches) return 0;
    if (2 * ascii.length == name.len) return ascii.length;
    char stored[NLS_NAME_BYTES_MAX];
    const int length = nls_name(stored, NLS_NAME_BYTES_MAX, name, charset);
    if (length == 0 || text.size() < static_cast<size_t>(length)) return 0;
    if (memcmp(text.data(), stored, static_cast<size_t>(length)) == 0) return length;

    const charset_info_t &info = _charset_info[charset];
    char given_lower[NLS_NAME_BYTES_MAX], stored_lower[NLS_NAME_BYTES_MAX];
    const int given_size =
        info.to_case(&info, DVSTR_CASE_LOWER, text.data(), length, given_lower, NLS_NAME_BYTES_MAX);
    const int stored_size =
        info.to_case(&info, DVSTR_CASE_LOWER, stored, length, stored_lower, NLS_NAME_BYTES_MAX);
    const bool is_equal =
        given_size == stored_size && memcmp(given_lower, stored_lower, static_cast<size_t>(given_size)) == 0;
    return is_equal ? length : 0;
}

// Can a text with this first byte begin with a name? No, where the name begins with another ASCII character.
bool may_begin_(const nls_date_lang_val_t &name, char first) {
    const uint16_t unit = load_be16(name.val);
    return unit >= 0x80 || to_lower(static_cast<char>(unit)) == to_lower(first);
}

// The lists of the context's language by letter case; nullptr, after the assertion, when there is none.
const nls_date_lang_val_t *const *cases_of_(const dt_fmt_parse_ctx_t &ctx,
                                            const nls_date_lang_val_t *const *lists) {
    const auto *const cases = nls_cases(lists, ctx.fmt_ctx->nls_date_ctx.lang);
    if (cases == nullptr) assert_failed("dv_nls_date_lang_is_valid (lang)");
    return cases;
}

int match_in_cases_(std::string_view text, const nls_date_lang_val_t *const *cases, int idx,
                    dvstr_charset_t charset) {
    const int length = nls_prefix_length_(text, cases[DT_FMT_CASE_UPPER][idx], charset);
    return length > 0 ? length : nls_prefix_length_(text, cases[DT_FMT_CASE_LOWER][idx], charset);
}

// The text that is not read yet, without its first bytes.
std::string_view behind_(const dt_fmt_parse_ctx_t &ctx, int skipped) {
    std::string_view text = rest_of(ctx);
    text.remove_prefix(static_cast<size_t>(skipped));
    return text;
}

std::string_view whole_of_(const dt_fmt_parse_ctx_t &ctx) {
    if (ctx.org_str[0] != '\0') return {ctx.org_str, sizeof ctx.org_str};
    return {ctx.str, static_cast<size_t>(std::max(ctx.str_len, 0))};
}

}  // namespace

void dv::impl::raise_field_text(const dt_fmt_parse_ctx_t &ctx, const char *field, const char *text,
                                error_at where) {
    const message_text whole(whole_of_(ctx));
    raise(where, field, text, whole.text);
}

void dv::impl::raise_field_text(const dt_fmt_parse_ctx_t &ctx, const char *field, error_at where) {
    const message_text here(rest_of(ctx));
    raise_field_text(ctx, field, here.text, where);
}

void dv::impl::skip_and_check_punc_token_(dt_fmt_parse_ctx_t &ctx) {
    if (!is_exact(ctx)) skip_white_space(ctx);
    if (ctx.str_idx != 0 || ctx.cur_token_info->id == DT_FMT_TOKEN_SYYYY) return;
    if (rest_of(ctx).starts_with('-')) raise_field_text(ctx, "year", SIGNED_YEAR_NOTE, DV_ERR_FIELD_TEXT);
}

int dv::impl::check_omitted_time_token_(const dt_fmt_parse_ctx_t &ctx, int token_idx) {
    if (ctx.cur_token_info->type == DT_FMT_TYPE_DATE) raise(DV_ERR_TEXT_ENDED);
    const dt_fmt_token_info_t *const elements = ctx.fmt_ctx->token_infos;
    for (int i = token_idx + 1; i < ctx.fmt_ctx->token_cnt; ++i) {
        if (elements[i].type == DT_FMT_TYPE_DATE) raise(DV_ERR_TEXT_ENDED);
    }
    return std::max(token_idx, ctx.fmt_ctx->token_cnt - 1);
}

number_field_t dv::impl::find_number(const dt_fmt_parse_ctx_t &ctx, int width) {
    int at = ctx.str_idx;
    const auto next_is = [&](auto holds) { return at < ctx.str_len && holds(ctx.str[at]); };
    number_field_t number{};
    if (next_is([](char c) { return c == '+' || c == '-'; })) number.is_negative = ctx.str[at++] == '-';
    while (next_is(is_blank)) ++at;
    for (; number.digit_count < width && next_is(is_digit); ++number.digit_count) {
        number.value = number.value * 10 + (ctx.str[at++] - '0');
    }
    number.end = at;
    return number;
}

int dv::impl::take_number(dt_fmt_parse_ctx_t &ctx, const char *field, int width, const error_at &missing,
                          const error_at &wrong_width) {
    const number_field_t number = find_number(ctx, width);
    if (number.digit_count == 0 || number.is_negative) raise_field_text(ctx, field, missing);
    if (is_exact(ctx) && number.digit_count != width) raise(wrong_width);
    ctx.str_idx = number.end;
    return number.value;
}

int dv::impl::match_name(const dt_fmt_parse_ctx_t &ctx, const nls_date_lang_val_t *const *lists, int idx,
                         int skipped) {
    const nls_date_lang_val_t *const *const cases = cases_of_(ctx, lists);
    return cases == nullptr ? 0 : match_in_cases_(behind_(ctx, skipped), cases, idx, ctx.fmt_ctx->charset);
}

name_match_t dv::impl::match_last_name(const dt_fmt_parse_ctx_t &ctx, const nls_date_lang_val_t *const *lists,
                                       int count, int skipped) {
    const nls_date_lang_val_t *const *const cases = cases_of_(ctx, lists);
    const std::string_view text = behind_(ctx, skipped);
    if (cases == nullptr || text.empty()) return {};
    const char first = text.front();
    for (int idx = count - 1; idx >= 0; --idx) {
        const bool may_match = may_begin_(cases[DT_FMT_CASE_UPPER][idx], first) ||
                               may_begin_(cases[DT_FMT_CASE_LOWER][idx], first);
        if (!may_match) continue;
        const int length = match_in_cases_(text, cases, idx, ctx.fmt_ctx->charset);
        if (length > 0) return {idx, length};
    }
    return {};
}
