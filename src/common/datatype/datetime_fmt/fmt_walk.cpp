// The walk over a model's elements, for reading and for writing.

#include "fmt_walk.h"

#include "usual_element.h"

using namespace dv::impl;

namespace {

// Does the type have what an element stands for?
template <typename Parts>
bool has_element_(const Parts &value, const dt_fmt_token_info_t &element) {
    switch (element.type) {
        case DT_FMT_TYPE_DATE:
            return value.date != nullptr;
        case DT_FMT_TYPE_TIME:
            return value.time != nullptr && (value.has_fraction || element.id != DT_FMT_TOKEN_FF);
        case DT_FMT_TYPE_TZ:
            return value.zone != nullptr || value.skips_zone;
        default:
            return true;
    }
}

// Must the present give the year or the month? The day of the year gives the month only when all is read,
// behind the shift of a zone, which is that of the date as it is until then.
bool needs_present_(const dt_fmt_ctx_t &model) {
    constexpr auto bit = [](int32_t id) { return uint64_t{1} << (static_cast<uint32_t>(id) % 64); };
    constexpr uint64_t years = bit(DT_FMT_TOKEN_YYYY) | bit(DT_FMT_TOKEN_SYYYY);
    constexpr uint64_t months =
        bit(DT_FMT_TOKEN_MM) | bit(DT_FMT_TOKEN_MON) | bit(DT_FMT_TOKEN_MONTH) | bit(DT_FMT_TOKEN_RM);
    uint64_t ids = 0;
    for (int i = 0; i < fmt_token_count(model); ++i) {
        ids |= bit(model.token_infos[i].id);
        if ((ids & years) != 0 && (ids & months) != 0) return false;
    }
    return true;
}

conv_status_t write_element_(dt_fmt_parse_ctx_t &ctx, const writable_parts_t &value) {
    switch (ctx.cur_token_info->type) {
        case DT_FMT_TYPE_DATE:
            return dt_fmt_write_date(&ctx, value.date);
        case DT_FMT_TYPE_TIME:
            return dt_fmt_write_time(&ctx, value.time, value.fprec);
        case DT_FMT_TYPE_PUNC:
            return dt_fmt_write_punc_token(&ctx);
        case DT_FMT_TYPE_TZ:
            return value.zone != nullptr ? dt_fmt_write_tz(&ctx, value.zone) : CONV_STATUS_WHOLE;
        default:
            return CONV_STATUS_WHOLE;
    }
}

inline bool put_usual_element_(write_cursor_t &cursor, const writable_parts_t &value,
                               const dt_fmt_token_info_t &element) {
    if (element.type == DT_FMT_TYPE_PUNC) return put_character(cursor, element);
    if (element.type == DT_FMT_TYPE_DATE)
        return value.date != nullptr && put_usual_field(cursor, *value.date, element);
    return element.type == DT_FMT_TYPE_TIME && value.time != nullptr &&
           put_usual_field(cursor, *value.time, element);
}

inline bool take_usual_element_(read_cursor_t &cursor, const readable_parts_t &value,
                                const elements_t &elements, const dt_fmt_token_info_t &element) {
    if (element.type == DT_FMT_TYPE_PUNC) return take_character(cursor, elements, element);
    if (element.type == DT_FMT_TYPE_DATE)
        return value.date != nullptr && take_usual_field(cursor, *value.date, element.id);
    return element.type == DT_FMT_TYPE_TIME && value.time != nullptr &&
           take_usual_field(cursor, *value.time, element.id);
}

// The current element, of index i. Returns that, or the index of the last element that it took along.
int read_element_(dt_fmt_parse_ctx_t &ctx, const readable_parts_t &value, int i, next_element_t &next) {
    switch (ctx.cur_token_info->type) {
        case DT_FMT_TYPE_DATE:
            dt_fmt_parse_date(&ctx, value.date);
            break;
        case DT_FMT_TYPE_TIME:
            dt_fmt_parse_time(&ctx, value.time, value.fprec, &i);
            break;
        case DT_FMT_TYPE_PUNC:
            dt_fmt_parse_punc_token(ctx, i, next);
            break;
        case DT_FMT_TYPE_TZ:
            if (value.zone != nullptr) dt_fmt_parse_tz(&ctx, value.zone);
            break;
        default:
            break;
    }
    return i;
}

}  // namespace

// fmt, fmt_len and fmt_idx are of compiling alone.
void dv::impl::begin_writing(dt_fmt_parse_ctx_t &ctx, const dt_fmt_ctx_t &model, char *str, int str_len) {
    ctx.fmt_ctx = &model;
    ctx.cur_token_info = nullptr;
    ctx.str = str;
    ctx.str_len = str_len;
    ctx.str_idx = 0;
    ctx.org_str[0] = '\0';
    ctx.ddd = 0;
    ctx.update_flag = DT_FMT_UNIT_NONE;
    ctx.is_from_str = 0;
    ctx.tz_abbr[0] = '\0';
    ctx.tmp_buf[0] = '\0';
}

void dv::impl::begin_reading(dt_fmt_parse_ctx_t &ctx, const dt_fmt_ctx_t &model, const char *str,
                             int str_len) {
    begin_writing(ctx, model, const_cast<char *>(str), std::min<int>(str_len, DV_DATETIME_TEXT_MAX));
    ctx.is_from_str = 1;
}

void dv::impl::load_date_defaults(dv_date_t &date, const dt_fmt_ctx_t &model, const dv_date_t *as_of) {
    if (as_of != nullptr) {
        date_set_calendar(date, date_year(*as_of), as_of->month, 1);
    } else if (needs_present_(model)) {
        return dv_date_init(&date);
    } else {
        date_set_calendar(date, 1, 1, 1);
    }
    date_set_clock(date, 0, 0, 0);
}

void dv::impl::read_by_model(dt_fmt_parse_ctx_t &ctx, const readable_parts_t &value,
                             const error_at &refused) {
    // Copies, since a field that is stored might be a byte of anything else.
    const readable_parts_t parts = value;
    dt_fmt_token_info_t *const first = ctx.fmt_ctx->token_infos;
    const elements_t elements = {first + fmt_token_count(*ctx.fmt_ctx), ctx.fmt_ctx->has_tz_token != 0};
    read_cursor_t cursor = cursor_of(ctx);
    next_element_t next;
    for (dt_fmt_token_info_t *element = first; element < elements.end; ++element) {
        if (take_usual_element_(cursor, parts, elements, *element)) continue;
        keep_cursor(ctx, cursor);
        if (!has_element_(value, *element)) raise(refused);
        ctx.cur_token_info = element;
        element = first + read_element_(ctx, value, static_cast<int>(element - first), next);
        cursor = cursor_of(ctx);
    }
    keep_cursor(ctx, cursor);
}

void dv::impl::read_local_by_model(const dt_fmt_ctx_t &model, const readable_parts_t &value, const char *str,
                                   int str_len, const dv_date_t *as_of, const error_at &refused) {
    load_date_defaults(*value.date, model, as_of);
    if (value.has_fraction) time_set_nanoseconds(*value.time, 0);
    dt_fmt_parse_ctx_t ctx;
    begin_reading(ctx, model, str, str_len);
    read_by_model(ctx, value, refused);
    if (ctx.ddd != 0) dt_fmt_check_ddd(&ctx, value.date);
    if (has_rest(ctx)) dt_parse_check_input_trailing_space(&ctx);
    check_date(*value.date);  // the time of day too
}

conv_status_t dv::impl::write_by_model(dt_fmt_parse_ctx_t &ctx, const writable_parts_t &value,
                                       const error_at &refused) {
    const writable_parts_t parts = value;  // a copy, as above
    dt_fmt_token_info_t *const first = ctx.fmt_ctx->token_infos;
    const dt_fmt_token_info_t *const end = first + ctx.fmt_ctx->token_cnt;
    write_cursor_t cursor = write_cursor_of(ctx);
    for (dt_fmt_token_info_t *element = first; element < end; ++element) {
        if (put_usual_element_(cursor, parts, *element)) continue;
        keep_cursor(ctx, cursor);
        if (!has_element_(parts, *element)) raise(refused);
        ctx.cur_token_info = element;
        const conv_status_t status = write_element_(ctx, parts);
        if (status != CONV_STATUS_WHOLE) return status;
        cursor = write_cursor_of(ctx);
    }
    keep_cursor(ctx, cursor);
    if (ctx.str_idx < ctx.str_len) ctx.str[ctx.str_idx] = '\0';
    return CONV_STATUS_WHOLE;
}
