// One compiled element in the hands of a writer or reader.

#ifndef DV_FMT_ELEMENT_H
#define DV_FMT_ELEMENT_H

#include "../datetime/datetime_internal.h"
#include "datetime_fmt_internal.h"

namespace dv::impl {

inline bool is_given(const dt_fmt_parse_ctx_t *parse_ctx) { return DV_ASSERT(parse_ctx != NULL); }

// A context with an element in it: what each writer and reader works on.
inline bool has_element(const dt_fmt_parse_ctx_t *parse_ctx) {
    return is_given(parse_ctx) && DV_ASSERT(parse_ctx->fmt_ctx != NULL) &&
           DV_ASSERT(parse_ctx->cur_token_info != NULL);
}

// The table's row of the current element; NULL for punctuation and for what is no element.
inline const dt_fmt_token_t *current_keyword(const dt_fmt_parse_ctx_t &ctx) {
    const auto id = static_cast<size_t>(ctx.cur_token_info->id);
    return is_element(id) ? &fmt_tokens_[id] : NULL;
}

// The text of a literal or of punctuation, empty for other elements.
inline std::string_view text_of(const dt_fmt_token_info_t &element) {
    if (element.token == nullptr || element.token_len < 0) return {};
    return {element.token, static_cast<size_t>(element.token_len)};
}

// The digits of a fraction: those of the model's FF, else those of the value's type.
inline int fraction_precision(const dt_fmt_token_info_t &element, int fprec) {
    return element.fprec != 0 ? element.fprec : fprec;
}

// Nanoseconds that one of the last digit of a fraction stands for, by its count of digits.
constexpr uint32_t fraction_unit(int digit_count) {
    return static_cast<uint32_t>(decimal_power(FRACTION_DIGITS - digit_count));
}

}  // namespace dv::impl

#endif  // DV_FMT_ELEMENT_H
