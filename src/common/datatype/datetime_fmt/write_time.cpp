// Writing the elements of a time of day.

#include "fmt_write.h"

using namespace dv::impl;

namespace {

conv_status_t dv_time_write_str_val_(dt_fmt_parse_ctx_t &ctx, const dv_time_t &time, int fprec) {
    const int meridian = time.hour < 12 ? 0 : 2;
    const int32_t kase = ctx.cur_token_info->case_type;
    switch (ctx.cur_token_info->id) {
        case DT_FMT_TOKEN_AM:
        case DT_FMT_TOKEN_PM:
            return put_text(ctx, nls_date_lang_get_std_ampm(&ctx, meridian, kase));
        case DT_FMT_TOKEN_AM_P:
        case DT_FMT_TOKEN_PM_P:
            return put_text(ctx, nls_date_lang_get_std_ampm(&ctx, meridian + 1, kase));
        case DT_FMT_TOKEN_X:
            return put_text(ctx, fprec != 0 ? "." : "");
        default:
            raise(ERR_MODEL_FOR_TIME);
    }
}

int hour_of_12_(int hour) {
    if (hour == 0) return 12;
    return hour > 12 ? hour - 12 : hour;
}

// The first digits of the fraction, nothing with a precision of 0.
conv_status_t put_fraction_(dt_fmt_parse_ctx_t &ctx, const dv_time_t &time, int fprec) {
    static constexpr uint32_t unit[] = {1'000'000'000, 100'000'000, 10'000'000, 1'000'000, 100'000,
                                        10'000,        1'000,       100,        10,        1};
    if (fprec < 1) return CONV_STATUS_WHOLE;
    return put_number(ctx, static_cast<int>(time_nanoseconds(time) / unit[fprec]), fprec);
}

conv_status_t dv_time_write_num_val_(dt_fmt_parse_ctx_t &ctx, const dv_time_t &time, int fprec) {
    const int32_t id = ctx.cur_token_info->id;
    const auto put = [&](int value) { return put_number(ctx, value, MIN_DIGITS[static_cast<size_t>(id)]); };
    switch (id) {
        case DT_FMT_TOKEN_HH:
        case DT_FMT_TOKEN_HH12:
            return put(hour_of_12_(time.hour));
        case DT_FMT_TOKEN_HH24:
            return put(time.hour);
        case DT_FMT_TOKEN_MI:
            return put(time.minute);
        case DT_FMT_TOKEN_SS:
            return put(time.second);
        case DT_FMT_TOKEN_SSSSS:
            return put(time.hour * SEC_PER_HOUR + time.minute * SEC_PER_MINUTE + time.second);
        case DT_FMT_TOKEN_FF: {
            const int precision = fraction_precision(*ctx.cur_token_info, fprec);
            if (precision > FRACTION_DIGITS) raise(ERR_FRACTION_PRECISION);
            return put_fraction_(ctx, time, precision);
        }
        default:
            raise(ERR_MODEL_FOR_TIME);
    }
}

}  // namespace

extern "C" conv_status_t dt_fmt_write_time(dt_fmt_parse_ctx_t *parse_ctx, const dv_time_t *time, int fprec) {
    if (!is_given(parse_ctx) || !is_given(time)) return CONV_STATUS_WHOLE;
    if (room_of(*parse_ctx) < 1) return CONV_STATUS_CUT;
    const dt_fmt_token_t *element = current_keyword(*parse_ctx);
    if (element == NULL || element->type != DT_FMT_TYPE_TIME) raise(ERR_MODEL_FOR_TIME);
    if (element->is_str_fmt) return dv_time_write_str_val_(*parse_ctx, *time, fprec);
    return dv_time_write_num_val_(*parse_ctx, *time, fprec);
}
