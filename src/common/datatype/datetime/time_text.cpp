// TIME as text: the entry points that hand their work to format models.

#include "../datetime_fmt/fmt_walk.h"
#include "../datetime_fmt/iso_text.h"
#include "../datetime_fmt/temporary_model.h"

using namespace dv::impl;

namespace {

model_text_t reading_(const char *fmt, int fmt_len) { return {fmt, fmt_len, DV_TYPE_TIME, true}; }
model_text_t writing_(const char *fmt, int fmt_len) { return {fmt, fmt_len, DV_TYPE_TIME, false}; }

}  // namespace

extern "C" void dv_time_from_str(dv_time_t *time, const char *str, int str_len, const dt_fmt_ctx_t *fmt_ctx,
                                 int fprec) {
    if (!is_given(time) || !is_given_str(str) || !is_given(fmt_ctx)) return;
    if (str_len < 1) raise(DV_ERR_TEXT_LENGTH);  // a length of 0 too
    if (fprec > FRACTION_DIGITS) raise(DV_ERR_FRACTION_PRECISION);
    const readable_parts_t parts = {nullptr, time, /*has_fraction=*/true, /*skips_zone=*/false, fprec};
    if (read_iso_text(*fmt_ctx, parts, str, str_len)) return;
    *time = {};
    dt_fmt_parse_ctx_t ctx;
    begin_reading(ctx, *fmt_ctx, str, str_len);
    read_by_model(ctx, parts, DV_ERR_MODEL_FOR_DATE);
    dt_parse_check_input_trailing_space(&ctx);
    dv_time_is_valid(time);
}

extern "C" conv_status_t dv_time_to_str(const dv_time_t *time, char *str, int str_len,
                                        const dt_fmt_ctx_t *fmt_ctx, int fprec) {
    if (!is_given(time) || !is_given_str(str) || !is_given(fmt_ctx)) return CONV_STATUS_WHOLE;
    if (str_len < 1) raise(DV_ERR_TEXT_LENGTH);
    if (fprec > FRACTION_DIGITS) raise(DV_ERR_FRACTION_PRECISION);
    const writable_parts_t parts = {nullptr, time, /*has_fraction=*/true, /*skips_zone=*/false, fprec};
    if (write_iso_text(*fmt_ctx, parts, str, str_len)) return CONV_STATUS_WHOLE;
    dt_fmt_parse_ctx_t ctx;
    begin_writing(ctx, *fmt_ctx, str, str_len);
    return write_by_model(ctx, parts, DV_ERR_MODEL_FOR_DATE);
}

extern "C" void dv_time_from_str_DEPRECATED(dv_time_t *time, const char *str, int str_len, const char *fmt,
                                            int fmt_len, int fprec) {
    if (!is_given(time) || !is_given_str(str) || !is_given_fmt(fmt)) return;
    with_model(reading_(fmt, fmt_len),
               [=](const dt_fmt_ctx_t &model) { dv_time_from_str(time, str, str_len, &model, fprec); });
}

extern "C" conv_status_t dv_time_to_str_DEPRECATED(const dv_time_t *time, char *str, int str_len,
                                                   const char *fmt, int fmt_len, int fprec) {
    if (!is_given(time) || !is_given_str(str) || !is_given_fmt(fmt)) return CONV_STATUS_WHOLE;
    conv_status_t status = CONV_STATUS_WHOLE;
    with_model(writing_(fmt, fmt_len), [=, &status](const dt_fmt_ctx_t &model) {
        status = dv_time_to_str(time, str, str_len, &model, fprec);
    });
    return status;
}

extern "C" int dv_time_get_length(const char *fmt, int fmt_len, int fprec) {
    if (!is_given_fmt(fmt)) return 0;
    return predicted_length(writing_(fmt, fmt_len), fprec);
}

extern "C" void dv_time_check_format(const char *fmt, int fmt_len) {
    if (is_given_fmt(fmt)) check_model(reading_(fmt, fmt_len));
}
