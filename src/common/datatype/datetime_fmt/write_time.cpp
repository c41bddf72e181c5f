// Writing the elements of a time of day.

#include "fmt_write.h"

using namespace dv::impl;

namespace {

// ---- words ----

using word_writer_t = conv_status_t(dt_fmt_parse_ctx_t &ctx, const dv_time_t &time, int fprec);

conv_status_t put_meridian_(dt_fmt_parse_ctx_t &ctx, const dv_time_t &time, int dotted) {
    const int am = time.hour < 12 ? 0 : 2;
    return put_text(ctx, nls_date_lang_get_std_ampm(&ctx, am + dotted, ctx.cur_token_info->case_type));
}
conv_status_t put_plain_meridian_(dt_fmt_parse_ctx_t &ctx, const dv_time_t &time, int /*fprec*/) {
    return put_meridian_(ctx, time, /*dotted=*/0);
}
conv_status_t put_dotted_meridian_(dt_fmt_parse_ctx_t &ctx, const dv_time_t &time, int /*fprec*/) {
    return put_meridian_(ctx, time, /*dotted=*/1);
}
conv_status_t put_radix_(dt_fmt_parse_ctx_t &ctx, const dv_time_t & /*time*/, int fprec) {
    return put_text(ctx, fprec != 0 ? "." : "");
}

constexpr auto _word_writers = [] {
    std::array<word_writer_t *, FMT_TOKEN_IDS_END> writers{};
    writers[DT_FMT_TOKEN_AM] = writers[DT_FMT_TOKEN_PM] = put_plain_meridian_;
    writers[DT_FMT_TOKEN_AM_P] = writers[DT_FMT_TOKEN_PM_P] = put_dotted_meridian_;
    writers[DT_FMT_TOKEN_X] = put_radix_;
    return writers;
}();

conv_status_t dv_time_write_str_val_(dt_fmt_parse_ctx_t &ctx, const dv_time_t &time, int fprec) {
    word_writer_t *const write = _word_writers[static_cast<size_t>(ctx.cur_token_info->id)];
    if (write == nullptr) raise(DV_ERR_MODEL_FOR_TIME);
    return write(ctx, time, fprec);
}

// ---- numbers ----

int hour_(const dv_time_t &time) { return time.hour; }
int hour_of_12_(const dv_time_t &time) {
    if (time.hour == 0) return 12;
    return time.hour > 12 ? time.hour - 12 : time.hour;
}
int minute_(const dv_time_t &time) { return time.minute; }
int second_(const dv_time_t &time) { return time.second; }
int second_of_day_(const dv_time_t &time) {
    return time.hour * SEC_PER_HOUR + time.minute * SEC_PER_MINUTE + time.second;
}

// What each numeric element but FF counts.
constexpr auto _numbers = [] {
    std::array<int (*)(const dv_time_t &time), FMT_TOKEN_IDS_END> numbers{};
    numbers[DT_FMT_TOKEN_HH] = numbers[DT_FMT_TOKEN_HH12] = hour_of_12_;
    numbers[DT_FMT_TOKEN_HH24] = hour_;
    numbers[DT_FMT_TOKEN_MI] = minute_;
    numbers[DT_FMT_TOKEN_SS] = second_;
    numbers[DT_FMT_TOKEN_SSSSS] = second_of_day_;
    return numbers;
}();

// The first digits of the fraction, nothing with a precision of 0.
conv_status_t put_fraction_(dt_fmt_parse_ctx_t &ctx, const dv_time_t &time, int fprec) {
    if (fprec < 1) return CONV_STATUS_WHOLE;
    const uint32_t digits = time_nanoseconds(time) / fraction_unit(fprec);
    return put_number(ctx, static_cast<int>(digits), fprec);
}

conv_status_t dv_time_write_num_val_(dt_fmt_parse_ctx_t &ctx, const dv_time_t &time, int fprec) {
    const auto id = static_cast<size_t>(ctx.cur_token_info->id);
    if (id == DT_FMT_TOKEN_FF) {
        const int precision = fraction_precision(*ctx.cur_token_info, fprec);
        if (precision > FRACTION_DIGITS) raise(DV_ERR_FRACTION_PRECISION);
        return put_fraction_(ctx, time, precision);
    }
    if (_numbers[id] == nullptr) raise(DV_ERR_MODEL_FOR_TIME);
    return put_number(ctx, _numbers[id](time), MIN_DIGITS[id]);
}

// Every element of a time of day has a writer.
static_assert(all_elements([](const dt_fmt_token_t &element) { return element.type == DT_FMT_TYPE_TIME; },
                           [](size_t id) {
                               if (fmt_tokens_[id].is_str_fmt) return _word_writers[id] != nullptr;
                               return _numbers[id] != nullptr || id == DT_FMT_TOKEN_FF;
                           }));

}  // namespace

extern "C" conv_status_t dt_fmt_write_time(dt_fmt_parse_ctx_t *parse_ctx, const dv_time_t *time, int fprec) {
    if (!has_element(parse_ctx) || !is_given(time)) return CONV_STATUS_WHOLE;
    if (room_of(*parse_ctx) < 1) return CONV_STATUS_CUT;
    const dt_fmt_token_t *element = current_keyword(*parse_ctx);
    if (element == NULL || element->type != DT_FMT_TYPE_TIME) raise(DV_ERR_MODEL_FOR_TIME);
    if (element->is_str_fmt) return dv_time_write_str_val_(*parse_ctx, *time, fprec);
    return dv_time_write_num_val_(*parse_ctx, *time, fprec);
}
