// DATE as text, truncated and rounded: the entry points that hand their work to format models.

#include <cstring>

#include "../datetime_fmt/fmt_walk.h"
#include "../datetime_fmt/iso_text.h"
#include "../datetime_fmt/temporary_model.h"

using namespace dv::impl;

namespace {

// The readers and writers of time elements touch hour, minute and second alone, which lie in a DATE as in a
// TIME.
dv_time_t *clock_of_(dv_date_t &date) { return reinterpret_cast<dv_time_t *>(&date.hour); }
const dv_time_t *clock_of_(const dv_date_t &date) { return reinterpret_cast<const dv_time_t *>(&date.hour); }

bool is_null_(const dv_date_t &date) { return memcmp(&date, &null_dv_date, sizeof date) == 0; }

model_text_t reading_(const char *fmt, int fmt_len) { return {fmt, fmt_len, DV_TYPE_DATE, true}; }
model_text_t writing_(const char *fmt, int fmt_len) { return {fmt, fmt_len, DV_TYPE_DATE, false}; }

}  // namespace

extern "C" void dv_date_from_str(dv_date_t *date, const char *str, int str_len, const dt_fmt_ctx_t *fmt_ctx) {
    if (!is_given(date) || !is_given_str(str) || !is_given(fmt_ctx)) return;
    const int length = str_len != 0 ? str_len : text_length(str);
    if (length < 1) raise(DV_ERR_TEXT_LENGTH);
    const readable_parts_t parts = {date, clock_of_(*date), /*has_fraction=*/false, /*skips_zone=*/true, 0};
    if (read_iso_text(*fmt_ctx, parts, str, length)) return;
    read_local_by_model(*fmt_ctx, parts, str, length, /*as_of=*/NULL, DV_ERR_MODEL_FOR_DATE);
}

extern "C" void dv_date_from_str_as_of(dv_date_t *date, const char *str, int str_len,
                                       const dt_fmt_ctx_t *fmt_ctx, const dv_date_t *as_of) {
    if (!is_given(date) || !is_given_str(str) || !is_given(fmt_ctx) || !is_given_as_of(as_of)) return;
    const int length = str_len != 0 ? str_len : text_length(str);
    if (length < 1) raise(DV_ERR_TEXT_LENGTH);
    const readable_parts_t parts = {date, clock_of_(*date), /*has_fraction=*/false, /*skips_zone=*/true, 0};
    if (read_iso_text(*fmt_ctx, parts, str, length)) return;
    read_local_by_model(*fmt_ctx, parts, str, length, as_of, DV_ERR_MODEL_FOR_DATE);
}

extern "C" long dv_date_to_str(const dv_date_t *date, char *str, int str_len, const dt_fmt_ctx_t *fmt_ctx) {
    if (!is_given(date) || !is_given_str(str) || !is_given(fmt_ctx)) return CONV_STATUS_WHOLE;
    if (str_len < 1) raise(DV_ERR_TEXT_LENGTH);
    if (is_null_(*date)) {
        *str = '\0';
        return CONV_STATUS_WHOLE;
    }
    const writable_parts_t parts = {date, clock_of_(*date), /*has_fraction=*/false, /*skips_zone=*/false, 0};
    if (write_iso_text(*fmt_ctx, parts, str, str_len)) return CONV_STATUS_WHOLE;
    dt_fmt_parse_ctx_t ctx;
    begin_writing(ctx, *fmt_ctx, str, str_len);
    return write_by_model(ctx, parts, DV_ERR_MODEL_FOR_DATE);
}

extern "C" void dv_date_from_str_DEPRECATED(dv_date_t *date, const char *str, int str_len, const char *fmt,
                                            int fmt_len) {
    if (!is_given(date) || !is_given_str(str) || !is_given_fmt(fmt)) return;
    with_model(reading_(fmt, fmt_len),
               [=](const dt_fmt_ctx_t &model) { dv_date_from_str(date, str, str_len, &model); });
}

extern "C" long dv_date_to_str_DEPRECATED(const dv_date_t *date, char *str, int str_len, const char *fmt,
                                          int fmt_len) {
    if (!is_given(date) || !is_given_str(str) || !is_given_fmt(fmt)) return CONV_STATUS_WHOLE;
    long status = CONV_STATUS_WHOLE;
    with_model(writing_(fmt, fmt_len), [=, &status](const dt_fmt_ctx_t &model) {
        status = dv_date_to_str(date, str, str_len, &model);
    });
    return status;
}

extern "C" void dv_date_current_str(char *buf, int buf_len, const dt_fmt_ctx_t *fmt) {
    if (!DV_ASSERT(buf != NULL) || !DV_ASSERT(fmt != NULL)) return;
    dv_date_t now;
    dv_date_current(&now);
    dv_date_to_str(&now, buf, buf_len, fmt);
}

extern "C" void dv_date_current_str_DEPRECATED(char *buf, int buf_len, const char *fmt, int fmt_len) {
    if (!DV_ASSERT(buf != NULL) || !DV_ASSERT(fmt != NULL)) return;
    dv_date_t now;
    dv_date_current(&now);
    dv_date_to_str_DEPRECATED(&now, buf, buf_len, fmt, fmt_len);
}

extern "C" int dv_date_get_length(const char *fmt, int fmt_len) {
    if (!is_given_fmt(fmt)) return 0;
    return predicted_length(writing_(fmt, fmt_len), 0);
}

extern "C" void dv_date_check_format(const char *fmt, int fmt_len) {
    if (is_given_fmt(fmt)) check_model(reading_(fmt, fmt_len));
}

extern "C" void dv_date_trunc(dv_date_t *date, const char *fmt, int fmt_len) {
    if (fmt_len < 0) raise(DV_ERR_MODEL_ELEMENT);
    const std::string_view unit = unit_text(fmt, fmt_len);
    dt_fmt_trunc_or_round(date, unit.data(), static_cast<int>(unit.size()), /*is_trunc=*/1);
}

extern "C" void dv_date_round(dv_date_t *date, const char *fmt, int fmt_len) {
    if (fmt_len < 0) raise(DV_ERR_MODEL_ELEMENT);
    const std::string_view unit = unit_text(fmt, fmt_len);
    dt_fmt_trunc_or_round(date, unit.data(), static_cast<int>(unit.size()), /*is_trunc=*/0);
}
