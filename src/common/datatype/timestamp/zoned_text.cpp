// Zoned timestamps as text: the entry points that hand their work to format models.

#include <cstring>

#include "../datetime_fmt/fmt_read.h"
#include "../datetime_fmt/fmt_walk.h"
#include "../datetime_fmt/temporary_model.h"
#include "../timezone/timezone_internal.h"
#include "dvtypes/timestamp_tz.h"
#include "timestamp_layout.h"

using namespace dv::impl;

namespace {

model_text_t reading_(dv_type_t type, const char *fmt, int fmt_len) { return {fmt, fmt_len, type, true}; }
model_text_t writing_(const char *fmt, int fmt_len) { return {fmt, fmt_len, DV_TYPE_TS_TZ, false}; }

bool is_null_(const dv_ts_tz_t &ts_tz) { return memcmp(&ts_tz, &null_dv_ts_tz, sizeof ts_tz) == 0; }

// The local time becomes UTC before its day of the year and its validity are looked at.
void read_(dv_ts_tz_t &ts_tz, const char *str, int length, const dt_fmt_ctx_t &model, int fprec,
           const timezone_t session, const dv_date_t *as_of, const error_at &refused) {
    dv_date_t &date = date_part(ts_tz.utc);
    dv_time_t &time = time_part(ts_tz.utc);
    load_date_defaults(date, model, as_of);
    time_set_nanoseconds(time, 0);
    timezone_init(&ts_tz.tz);
    dt_fmt_parse_ctx_t ctx;
    begin_reading(ctx, model, str, length);
    read_by_model(ctx, {&date, &time, /*has_fraction=*/true, /*skips_zone=*/false, fprec, &ts_tz.tz},
                  refused);
    if (tz_zone(ts_tz.tz) == TZ_ID_DEFAULT) ts_tz.tz = session;
    timezone_normalize(&ts_tz.tz, &date, ctx.tz_abbr);
    dt_fmt_check_ddd(&ctx, &date);
    dt_parse_check_input_trailing_space(&ctx);
    check_date(date);  // the time of day too
}

}  // namespace

// ---------------------------------------------------------------------------------------------------------
// WITH TIME ZONE
// ---------------------------------------------------------------------------------------------------------

extern "C" void dv_ts_tz_from_str(dv_ts_tz_t *ts_tz, const char *str, int str_len,
                                  const dt_fmt_ctx_t *fmt_ctx, int fprec, const timezone_t *sess_tz) {
    if (!DV_ASSERT(ts_tz != NULL) || !DV_ASSERT(str != NULL) || !DV_ASSERT(fmt_ctx != NULL) ||
        !DV_ASSERT(sess_tz != NULL))
        return;
    const int length = str_len != 0 ? str_len : text_length(str);
    if (length < 1) raise(DV_ERR_TEXT_LENGTH);
    if (fprec > FRACTION_DIGITS) raise(DV_ERR_FRACTION_PRECISION);
    read_(*ts_tz, str, length, *fmt_ctx, fprec, *sess_tz, /*as_of=*/NULL, DV_ERR_MODEL_FOR_DATE);
}

extern "C" void dv_ts_tz_from_str_as_of(dv_ts_tz_t *ts_tz, const char *str, int str_len,
                                        const dt_fmt_ctx_t *fmt_ctx, int fprec, const timezone_t *sess_tz,
                                        const dv_date_t *as_of) {
    if (!DV_ASSERT(ts_tz != NULL) || !DV_ASSERT(str != NULL) || !DV_ASSERT(fmt_ctx != NULL) ||
        !DV_ASSERT(sess_tz != NULL) || !DV_ASSERT(as_of != NULL))
        return;
    const int length = str_len != 0 ? str_len : text_length(str);
    if (length < 1) raise(DV_ERR_TEXT_LENGTH);
    if (fprec > FRACTION_DIGITS) raise(DV_ERR_FRACTION_PRECISION);
    read_(*ts_tz, str, length, *fmt_ctx, fprec, *sess_tz, as_of, DV_ERR_MODEL_FOR_DATE);
}

extern "C" conv_status_t dv_ts_tz_to_str(const dv_ts_tz_t *ts_tz, char *str, int str_len,
                                         const dt_fmt_ctx_t *fmt_ctx, int fprec) {
    if (!DV_ASSERT(ts_tz != NULL) || !DV_ASSERT(str != NULL) || !DV_ASSERT(fmt_ctx != NULL))
        return CONV_STATUS_WHOLE;
    if (str_len < 1) raise(DV_ERR_TEXT_LENGTH);
    if (fprec > FRACTION_DIGITS) raise(DV_ERR_FRACTION_PRECISION);
    if (is_null_(*ts_tz)) {
        *str = '\0';
        return CONV_STATUS_WHOLE;
    }
    dv_timestamp_t local;
    dv_timestamp_from_ts_tz(&local, ts_tz);
    dt_fmt_parse_ctx_t ctx;
    begin_writing(ctx, *fmt_ctx, str, str_len);
    return write_by_model(
        ctx,
        {&date_part(local), &time_part(local), /*has_fraction=*/true, /*skips_zone=*/false, fprec, ts_tz},
        DV_ERR_MODEL_FOR_DATE);
}

extern "C" void dv_ts_tz_from_str_DEPRECATED(dv_ts_tz_t *ts_tz, const char *str, int str_len, const char *fmt,
                                             int fmt_len, int fprec, const timezone_t *sess_tz) {
    if (!DV_ASSERT(ts_tz != NULL) || !DV_ASSERT(str != NULL) || !DV_ASSERT(fmt != NULL) ||
        !DV_ASSERT(sess_tz != NULL))
        return;
    with_model(reading_(DV_TYPE_TS_TZ, fmt, fmt_len), [=](const dt_fmt_ctx_t &model) {
        dv_ts_tz_from_str(ts_tz, str, str_len, &model, fprec, sess_tz);
    });
}

extern "C" conv_status_t dv_ts_tz_to_str_DEPRECATED(const dv_ts_tz_t *ts_tz, char *str, int str_len,
                                                    const char *fmt, int fmt_len, int fprec) {
    if (!DV_ASSERT(ts_tz != NULL) || !DV_ASSERT(str != NULL) || !DV_ASSERT(fmt != NULL))
        return CONV_STATUS_WHOLE;
    conv_status_t status = CONV_STATUS_WHOLE;
    with_model(writing_(fmt, fmt_len), [=, &status](const dt_fmt_ctx_t &model) {
        status = dv_ts_tz_to_str(ts_tz, str, str_len, &model, fprec);
    });
    return status;
}

extern "C" void dv_ts_tz_current_str(char *buf, int buf_len, const dt_fmt_ctx_t *fmt,
                                     const timezone_t *sess_tz) {
    if (!DV_ASSERT(buf != NULL) || !DV_ASSERT(fmt != NULL) || !DV_ASSERT(sess_tz != NULL)) return;
    dv_ts_tz_t now;
    dv_ts_tz_current(&now, sess_tz);
    dv_ts_tz_to_str(&now, buf, buf_len, fmt, /*fprec=*/6);
}

extern "C" int dv_ts_tz_get_length(const char *fmt, int fmt_len, int fprec) {
    if (!DV_ASSERT(fmt != NULL)) return 0;
    return predicted_length(writing_(fmt, fmt_len), fprec);
}

extern "C" void dv_ts_tz_check_format(const char *fmt, int fmt_len) {
    if (DV_ASSERT(fmt != NULL)) check_model(reading_(DV_TYPE_TS_TZ, fmt, fmt_len));
}

// ---------------------------------------------------------------------------------------------------------
// WITH LOCAL TIME ZONE
// ---------------------------------------------------------------------------------------------------------

extern "C" void dv_ts_ltz_from_str(dv_ts_ltz_t *ts_ltz, const char *str, int str_len, const dt_fmt_ctx_t *fmt,
                                   int fprec, timezone_t *sess_tz) {
    if (!DV_ASSERT(ts_ltz != NULL) || !DV_ASSERT(str != NULL) || !DV_ASSERT(fmt != NULL) ||
        !DV_ASSERT(sess_tz != NULL))
        return;
    dv_timestamp_from_str(&ts_ltz->utc, str, str_len, fmt, fprec);
    timezone_normalize(sess_tz, &date_part(ts_ltz->utc), NULL);
}

extern "C" conv_status_t dv_ts_ltz_to_str(const dv_ts_ltz_t *ts_ltz, char *str, int str_len,
                                          const dt_fmt_ctx_t *fmt, int fprec, const timezone_t *sess_tz) {
    if (!DV_ASSERT(ts_ltz != NULL) || !DV_ASSERT(str != NULL) || !DV_ASSERT(fmt != NULL) ||
        !DV_ASSERT(sess_tz != NULL))
        return CONV_STATUS_WHOLE;
    dv_timestamp_t local;
    dv_timestamp_from_ts_ltz(&local, ts_ltz, sess_tz);
    return dv_timestamp_to_str(&local, str, str_len, fmt, fprec);
}

extern "C" void dv_ts_ltz_from_str_DEPRECATED(dv_ts_ltz_t *ts_ltz, const char *str, int str_len,
                                              const char *fmt, int fmt_len, int fprec, timezone_t *sess_tz) {
    if (!DV_ASSERT(ts_ltz != NULL) || !DV_ASSERT(str != NULL) || !DV_ASSERT(fmt != NULL) ||
        !DV_ASSERT(sess_tz != NULL))
        return;
    with_model(reading_(DV_TYPE_TS_LTZ, fmt, fmt_len), [=](const dt_fmt_ctx_t &model) {
        dv_ts_ltz_from_str(ts_ltz, str, str_len, &model, fprec, sess_tz);
    });
}

// Its model is one of TIMESTAMP.
extern "C" conv_status_t dv_ts_ltz_to_str_DEPRECATED(const dv_ts_ltz_t *ts_ltz, char *str, int str_len,
                                                     const char *fmt, int fmt_len, int fprec,
                                                     const timezone_t *sess_tz) {
    if (!DV_ASSERT(ts_ltz != NULL) || !DV_ASSERT(str != NULL) || !DV_ASSERT(fmt != NULL) ||
        !DV_ASSERT(sess_tz != NULL))
        return CONV_STATUS_WHOLE;
    dv_timestamp_t local;
    dv_timestamp_from_ts_ltz(&local, ts_ltz, sess_tz);
    return dv_timestamp_to_str_DEPRECATED(&local, str, str_len, fmt, fmt_len, fprec);
}
