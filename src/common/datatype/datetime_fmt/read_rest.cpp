// What is checked when all elements are read: the rest of the text, the rest of the model.

#include "fmt_read.h"

using namespace dv::impl;

extern "C" void dt_parse_check_input_trailing_space(dt_fmt_parse_ctx_t *parse_ctx) {
    if (!is_given(parse_ctx)) return;
    skip_white_space(*parse_ctx);
    if (has_rest(*parse_ctx)) raise(DV_ERR_TRAILING_TEXT);
}

extern "C" void dt_parse_check_fmt_trailing_space(dt_fmt_parse_ctx_t *parse_ctx, uchar is_truncate) {
    if (!is_given(parse_ctx)) return;
    for (int i = parse_ctx->fmt_idx; i < parse_ctx->fmt_len; ++i) {
        if (!is_white_space(parse_ctx->fmt[i]))
            raise(is_truncate ? DV_ERR_UNIT_LEFT_OVER : DV_ERR_MODEL_LEFT_OVER);
    }
}
