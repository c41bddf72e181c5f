// Writing punctuation and quoted literals.

#include "fmt_write.h"

using namespace dv::impl;

extern "C" conv_status_t dt_fmt_write_punc_token(dt_fmt_parse_ctx_t *parse_ctx) {
    if (!has_element(parse_ctx)) return CONV_STATUS_WHOLE;
    if (room_of(*parse_ctx) < 1) return CONV_STATUS_CUT;
    const std::string_view text = text_of(*parse_ctx->cur_token_info);
    return text.empty() ? CONV_STATUS_WHOLE : put_text(*parse_ctx, text);
}
