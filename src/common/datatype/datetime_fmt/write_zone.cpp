// Writing time zone elements: the stored UTC offset and the zone's name.

#include "../timezone/timezone_layout.h"
#include "dvtypes/timestamp_record.h"
#include "fmt_write.h"

using namespace dv::impl;

namespace {

// Digits come with their sign, as printf's "%+.2d" has it; spelled hours and those in fill mode as other
// numbers.
conv_status_t put_hour_(dt_fmt_parse_ctx_t &ctx, int hour) {
    const dt_fmt_token_info_t &element = *ctx.cur_token_info;
    const bool is_spelled = element.sfx_type != DT_FMT_SUFFIX_NONE && element.sfx_type != DT_FMT_SUFFIX_TH;
    if (hour >= 0 && !is_spelled && !element.is_fill_mode) put_text(ctx, "+");
    if (room_of(ctx) < 1) return CONV_STATUS_CUT;
    return put_number(ctx, hour, MIN_DIGITS[DT_FMT_TOKEN_TZH]);
}

conv_status_t put_region_(dt_fmt_parse_ctx_t &ctx, const timezone_t &tz) {
    char name[TZ_NAME_TEXT_SIZE];
    timezone_get_zone_name(&tz, name, sizeof name);
    return put_text(ctx, name);
}

conv_status_t dv_tz_write_num_val_(dt_fmt_parse_ctx_t &ctx, const timezone_t &tz) {
    switch (ctx.cur_token_info->id) {
        case DT_FMT_TOKEN_TZH:
            return put_hour_(ctx, tz_hour(tz));
        case DT_FMT_TOKEN_TZM:
            return put_number(ctx, tz.utc_min, MIN_DIGITS[DT_FMT_TOKEN_TZM]);
        default:
            raise(DV_ERR_ZONE_ELEMENT);
    }
}

conv_status_t dv_tz_write_str_val_(dt_fmt_parse_ctx_t &ctx, const timezone_t &tz) {
    switch (ctx.cur_token_info->id) {
        case DT_FMT_TOKEN_TZR:
            return put_region_(ctx, tz);
        case DT_FMT_TOKEN_TZD:
            return CONV_STATUS_WHOLE;
        default:
            raise(DV_ERR_ZONE_ELEMENT);
    }
}

// The zone's elements are those two of either kind.
static_assert(all_elements([](const dt_fmt_token_t &element) { return element.type == DT_FMT_TYPE_TZ; },
                           [](size_t id) {
                               return fmt_tokens_[id].is_str_fmt
                                          ? id == DT_FMT_TOKEN_TZR || id == DT_FMT_TOKEN_TZD
                                          : id == DT_FMT_TOKEN_TZH || id == DT_FMT_TOKEN_TZM;
                           }));

}  // namespace

extern "C" conv_status_t dt_fmt_write_tz(dt_fmt_parse_ctx_t *parse_ctx, const dv_ts_tz_t *ts_tz) {
    if (!has_element(parse_ctx) || !is_given(ts_tz)) return CONV_STATUS_WHOLE;
    if (room_of(*parse_ctx) < 1) return CONV_STATUS_CUT;
    const dt_fmt_token_t *element = current_keyword(*parse_ctx);
    const bool is_word = element == NULL || element->is_str_fmt;
    return is_word ? dv_tz_write_str_val_(*parse_ctx, ts_tz->tz)
                   : dv_tz_write_num_val_(*parse_ctx, ts_tz->tz);
}
