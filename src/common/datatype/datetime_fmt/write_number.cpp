// Numbers under format elements: 04, 4, 04TH, FOUR, FOUTH, in the letter case of the element.
//
// The digits are those of printf's "%.*d". Numbers and their words are ASCII, whatever the character set, so
// their letter case is changed here.

#include <cstdlib>

#include "fmt_write.h"
#include "spell_number.h"

using namespace dv::impl;

namespace {

constexpr int _digits_max = 10;                  // of a 32-bit number
constexpr int _text_size = 1 + _digits_max + 2;  // sign, digits, suffix

struct digits_t {
    char text[_text_size];
    int begin = _text_size;  // of what was written, which ends with the array
    void push(char c) { text[--begin] = c; }
    std::string_view view() const { return {text + begin, static_cast<size_t>(_text_size - begin)}; }
};

void push_number_(digits_t &digits, int value, int min_digits) {
    uint32_t rest = value < 0 ? 0 - static_cast<uint32_t>(value) : static_cast<uint32_t>(value);
    for (int i = 0; rest != 0 || i < min_digits; ++i, rest /= 10) {
        digits.push(static_cast<char>('0' + rest % 10));
    }
    if (value < 0) digits.push('-');
}

// 11TH to 19TH, else by the last digit. Negative numbers go by that alone: -11ST.
std::string_view ordinal_suffix_(int value) {
    constexpr std::string_view suffixes[] = {"TH", "ST", "ND", "RD"};
    const int rest = value % 100, last = std::abs(value % 10);
    return suffixes[(rest >= 11 && rest <= 19) || last > 3 ? 0 : last];
}

conv_status_t put_with_suffix_(dt_fmt_parse_ctx_t &ctx, int value, int min_digits) {
    digits_t digits;
    const std::string_view suffix = ordinal_suffix_(value);
    const bool is_small = ctx.cur_token_info->case_type != DT_FMT_CASE_UPPER;
    for (size_t i = suffix.size(); i-- > 0;) digits.push(is_small ? to_lower(suffix[i]) : suffix[i]);
    push_number_(digits, value, min_digits);
    return put_text(ctx, digits.view());
}

// As many digits as are asked for, where these are two or four.
bool put_two_or_four_(dt_fmt_parse_ctx_t &ctx, int value, int min_digits) {
    const auto number = static_cast<uint32_t>(value);
    if (min_digits == 2) return put_pairs(ctx, number);
    return min_digits == 4 && put_pairs(ctx, number / 100, number % 100);
}

conv_status_t put_plain_(dt_fmt_parse_ctx_t &ctx, int value, int min_digits) {
    if (put_two_or_four_(ctx, value, min_digits)) return CONV_STATUS_WHOLE;
    digits_t digits;
    push_number_(digits, value, min_digits);
    return put_text(ctx, digits.view());
}

// In lower case unless the element is in upper case; INIT makes no capitals of numbers.
conv_status_t put_spelled_(dt_fmt_parse_ctx_t &ctx, int value, bool is_ordinal) {
    char words[SPELLED_TEXT_SIZE];
    const int length = spell_number(words, value, is_ordinal);
    if (ctx.cur_token_info->case_type != DT_FMT_CASE_UPPER) {
        std::for_each(words, words + length, [](char &c) { c = to_lower(c); });
    }
    return put_text(ctx, {words, static_cast<size_t>(length)});
}

}  // namespace

conv_status_t dv::impl::put_number(dt_fmt_parse_ctx_t &ctx, int value, int min_digits) {
    const dt_fmt_token_info_t &element = *ctx.cur_token_info;
    const int digits = element.is_fill_mode ? 1 : std::min(min_digits, _digits_max);
    switch (element.sfx_type) {
        case DT_FMT_SUFFIX_TH:
            return put_with_suffix_(ctx, value, digits);
        case DT_FMT_SUFFIX_SP:
            return put_spelled_(ctx, value, /*is_ordinal=*/false);
        case DT_FMT_SUFFIX_SPTH:
        case DT_FMT_SUFFIX_THSP:
            return put_spelled_(ctx, value, /*is_ordinal=*/true);
        default:
            assert_failed("false");
            [[fallthrough]];
        case DT_FMT_SUFFIX_NONE:
            return put_plain_(ctx, value, digits);
    }
}

conv_status_t dv::impl::put_words(dt_fmt_parse_ctx_t &ctx, std::string_view upper_case_words) {
    const int32_t case_type = ctx.cur_token_info->case_type;
    const int32_t begin = ctx.str_idx;
    const conv_status_t status = put_text(ctx, upper_case_words);
    if (case_type == DT_FMT_CASE_UPPER) return status;
    bool is_inside = false;  // a word
    for (char *c = ctx.str + begin; c != ctx.str + ctx.str_idx; ++c) {
        const bool is_capital = is_upper(*c);
        if (is_capital && (is_inside || case_type == DT_FMT_CASE_LOWER)) *c = to_lower(*c);
        is_inside = is_capital;
    }
    return status;
}

conv_status_t dv::impl::put_name(dt_fmt_parse_ctx_t &ctx, std::string_view name, int width) {
    char padded[DT_FMT_TMP_BUF_SIZE];
    const auto column = static_cast<size_t>(ctx.cur_token_info->is_fill_mode ? 0 : width);
    if (name.size() >= column) return put_text(ctx, name);
    memset(padded, ' ', column);
    memcpy(padded, name.data(), name.size());
    return put_text(ctx, {padded, column});
}
