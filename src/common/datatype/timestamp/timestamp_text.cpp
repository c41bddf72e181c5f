// TIMESTAMP as text: the entry points that hand their work to format models, and the form of ANSI literals.

#include <span>

#include "../datetime_fmt/fmt_read.h"
#include "../datetime_fmt/fmt_walk.h"
#include "../datetime_fmt/iso_text.h"
#include "../datetime_fmt/temporary_model.h"
#include "timestamp_layout.h"

using namespace dv::impl;

namespace {

model_text_t reading_(const char *fmt, int fmt_len) { return {fmt, fmt_len, DV_TYPE_TIMESTAMP, true}; }
model_text_t writing_(const char *fmt, int fmt_len) { return {fmt, fmt_len, DV_TYPE_TIMESTAMP, false}; }

// The form of a literal, YYYY-MM-DD HH24:MI:SS.FF9: these fields, with punctuation between them. The checks
// of literals look at no more of a compiled model, so there is none.
constexpr int32_t _literal_dates[] = {DT_FMT_TOKEN_YYYY, DT_FMT_TOKEN_MM, DT_FMT_TOKEN_DD};
constexpr int32_t _literal_times[] = {DT_FMT_TOKEN_HH24, DT_FMT_TOKEN_MI, DT_FMT_TOKEN_SS, DT_FMT_TOKEN_FF};

// Moves behind the fields, each with the punctuation behind it, if the text has them all.
bool take_fields_(dt_fmt_parse_ctx_t &ctx, std::span<const int32_t> fields,
                  uchar (*check)(dt_fmt_parse_ctx_t *)) {
    for (const int32_t field : fields) {
        ctx.cur_token_info->id = field;
        if (check(&ctx) == 0) return false;
        if (field == DT_FMT_TOKEN_FF) break;
        ctx.cur_token_info->id = DT_FMT_TOKEN_PUNC;
        dt_fmt_check_ansi_punc(&ctx);
    }
    return true;
}

}  // namespace

extern "C" void dv_timestamp_from_str(dv_timestamp_t *ts, const char *str, int str_len,
                                      const dt_fmt_ctx_t *fmt_ctx, int fprec) {
    if (!DV_ASSERT(ts != NULL) || !DV_ASSERT(str != NULL) || !DV_ASSERT(fmt_ctx != NULL)) return;
    const int length = str_len != 0 ? str_len : text_length(str);
    if (length < 1) raise(DV_ERR_TEXT_LENGTH);
    if (fprec > FRACTION_DIGITS) raise(DV_ERR_FRACTION_PRECISION);
    const readable_parts_t parts = {&date_part(*ts), &time_part(*ts), /*has_fraction=*/true,
                                    /*skips_zone=*/false, fprec};
    if (read_iso_text(*fmt_ctx, parts, str, length)) return;
    read_local_by_model(*fmt_ctx, parts, str, length, /*as_of=*/NULL, DV_ERR_MODEL_FOR_DATE);
}

extern "C" void dv_timestamp_from_str_as_of(dv_timestamp_t *ts, const char *str, int str_len,
                                            const dt_fmt_ctx_t *fmt_ctx, int fprec, const dv_date_t *as_of) {
    if (!DV_ASSERT(ts != NULL) || !DV_ASSERT(str != NULL) || !DV_ASSERT(fmt_ctx != NULL) ||
        !DV_ASSERT(as_of != NULL))
        return;
    const int length = str_len != 0 ? str_len : text_length(str);
    if (length < 1) raise(DV_ERR_TEXT_LENGTH);
    if (fprec > FRACTION_DIGITS) raise(DV_ERR_FRACTION_PRECISION);
    const readable_parts_t parts = {&date_part(*ts), &time_part(*ts), /*has_fraction=*/true,
                                    /*skips_zone=*/false, fprec};
    if (read_iso_text(*fmt_ctx, parts, str, length)) return;
    read_local_by_model(*fmt_ctx, parts, str, length, as_of, DV_ERR_MODEL_FOR_DATE);
}

extern "C" conv_status_t dv_timestamp_to_str(const dv_timestamp_t *ts, char *str, int str_len,
                                             const dt_fmt_ctx_t *fmt_ctx, int fprec) {
    if (!DV_ASSERT(ts != NULL) || !DV_ASSERT(str != NULL) || !DV_ASSERT(fmt_ctx != NULL))
        return CONV_STATUS_WHOLE;
    if (str_len < 1) raise(DV_ERR_TEXT_LENGTH);
    if (fprec > FRACTION_DIGITS) raise(DV_ERR_FRACTION_PRECISION);
    if (timestamp_is_null(*ts)) {
        *str = '\0';
        return CONV_STATUS_WHOLE;
    }
    const writable_parts_t parts = {&date_part(*ts), &time_part(*ts), /*has_fraction=*/true,
                                    /*skips_zone=*/false, fprec};
    if (write_iso_text(*fmt_ctx, parts, str, str_len)) return CONV_STATUS_WHOLE;
    dt_fmt_parse_ctx_t ctx;
    begin_writing(ctx, *fmt_ctx, str, str_len);
    return write_by_model(ctx, parts, DV_ERR_MODEL_FOR_DATE);
}

extern "C" void dv_timestamp_from_str_DEPRECATED(dv_timestamp_t *ts, const char *str, int str_len,
                                                 const char *fmt, int fmt_len, int fprec) {
    if (!DV_ASSERT(ts != NULL) || !DV_ASSERT(str != NULL) || !DV_ASSERT(fmt != NULL)) return;
    with_model(reading_(fmt, fmt_len),
               [=](const dt_fmt_ctx_t &model) { dv_timestamp_from_str(ts, str, str_len, &model, fprec); });
}

extern "C" conv_status_t dv_timestamp_to_str_DEPRECATED(const dv_timestamp_t *ts, char *str, int str_len,
                                                        const char *fmt, int fmt_len, int fprec) {
    if (!DV_ASSERT(ts != NULL) || !DV_ASSERT(str != NULL) || !DV_ASSERT(fmt != NULL))
        return CONV_STATUS_WHOLE;
    conv_status_t status = CONV_STATUS_WHOLE;
    with_model(writing_(fmt, fmt_len), [=, &status](const dt_fmt_ctx_t &model) {
        status = dv_timestamp_to_str(ts, str, str_len, &model, fprec);
    });
    return status;
}

extern "C" void dv_timestamp_current_str(char *buf, int buf_len, const dt_fmt_ctx_t *fmt) {
    if (!DV_ASSERT(buf != NULL) || !DV_ASSERT(fmt != NULL)) return;
    dv_timestamp_t now;
    dv_timestamp_current(&now);
    dv_timestamp_to_str(&now, buf, buf_len, fmt, /*fprec=*/6);
}

extern "C" int dv_timestamp_get_length(const char *fmt, int fmt_len, int fprec) {
    if (!DV_ASSERT(fmt != NULL)) return 0;
    return predicted_length(writing_(fmt, fmt_len), fprec);
}

extern "C" void dv_timestamp_check_format(const char *fmt, int fmt_len) {
    if (DV_ASSERT(fmt != NULL)) check_model(reading_(fmt, fmt_len));
}

// Digits and punctuation are the same bytes in every character set.
extern "C" uchar dv_timestamp_check_literal(dvstr_charset_t, const char *str, int str_len) {
    if (str == NULL || str_len == 0) return 1;
    if (str_len < 0) return 0;
    dt_fmt_parse_ctx_t ctx;
    const dt_fmt_ctx_t model{};
    dt_fmt_token_info_t element{};
    begin_reading(ctx, model, str, str_len);
    ctx.cur_token_info = &element;
    if (!take_fields_(ctx, _literal_dates, dt_fmt_check_ansi_date) ||
        !take_fields_(ctx, _literal_times, dt_fmt_check_ansi_time))
        return 0;
    skip_white_space(ctx);
    return has_rest(ctx) ? 0 : 1;
}
