// One compiled element in the hands of a writer or reader.

#ifndef DV_FMT_ELEMENT_H
#define DV_FMT_ELEMENT_H

#include "../datetime/datetime_internal.h"
#include "datetime_fmt_internal.h"

namespace dv::impl {

inline bool is_given(const dt_fmt_parse_ctx_t *parse_ctx) {
    DV_ASSERT(parse_ctx != NULL);
    return parse_ctx != NULL;
}

// The table's row of the current element; NULL for punctuation and for what is no element.
inline const dt_fmt_token_t *current_keyword(const dt_fmt_parse_ctx_t &ctx) {
    const auto id = static_cast<size_t>(ctx.cur_token_info->id);
    return id < fmt_tokens_.size() ? &fmt_tokens_[id] : NULL;
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

}  // namespace dv::impl

#endif  // DV_FMT_ELEMENT_H
