// The elements of most models, written and read in place: YYYY, MM, DD, HH24, MI and SS as digits, and single
// characters between them. DD/MM/YYYY HH24:MI:SS takes twice as long without (bench/datetime_fmt).
//
// Each function either does all that the element's writer or reader would do, or nothing and returns false:
// suffixes, fill mode, years BC, short buffers, blanks, signs, fewer digits and faults are for those.

#ifndef DV_USUAL_ELEMENT_H
#define DV_USUAL_ELEMENT_H

#include "fmt_read.h"
#include "fmt_write.h"

namespace dv::impl {

// ---- writing ----

inline bool is_plain_number(const dt_fmt_token_info_t &element) {
    return (element.sfx_type | element.is_fill_mode) == DT_FMT_SUFFIX_NONE;
}

inline bool put_year(dt_fmt_parse_ctx_t &ctx, const dv_date_t &date) {  // BC both numbers are above 99
    return put_pairs(ctx, date.century - uint32_t{DATE_YEAR_EXCESS}, date.year - uint32_t{DATE_YEAR_EXCESS});
}

inline bool put_usual_field(dt_fmt_parse_ctx_t &ctx, const dv_date_t &date) {
    if (!is_plain_number(*ctx.cur_token_info)) return false;
    switch (ctx.cur_token_info->id) {
        case DT_FMT_TOKEN_YYYY:
            return put_year(ctx, date);
        case DT_FMT_TOKEN_MM:
            return put_pairs(ctx, date.month);
        case DT_FMT_TOKEN_DD:
            return put_pairs(ctx, date.day);
        default:
            return false;
    }
}

inline bool put_usual_field(dt_fmt_parse_ctx_t &ctx, const dv_time_t &time) {
    if (!is_plain_number(*ctx.cur_token_info)) return false;
    switch (ctx.cur_token_info->id) {
        case DT_FMT_TOKEN_HH24:
            return put_pairs(ctx, time.hour);
        case DT_FMT_TOKEN_MI:
            return put_pairs(ctx, time.minute);
        case DT_FMT_TOKEN_SS:
            return put_pairs(ctx, time.second);
        default:
            return false;
    }
}

inline bool put_character(dt_fmt_parse_ctx_t &ctx) {
    const std::string_view text = text_of(*ctx.cur_token_info);
    if (text.size() != 1 || room_of(ctx) < 1) return false;
    ctx.str[ctx.str_idx++] = text.front();
    return true;
}

// ---- reading ----

// The number that the next two characters of the text are; above 99 when they are not two digits.
inline uint32_t pair_at(const dt_fmt_parse_ctx_t &ctx, int skipped = 0) {
    const int at = ctx.str_idx + skipped;
    if (at + 2 > ctx.str_len) return UINT32_MAX;
    const auto tens = static_cast<uint32_t>(ctx.str[at] - '0'),
               ones = static_cast<uint32_t>(ctx.str[at + 1] - '0');
    return tens <= 9 && ones <= 9 ? tens * 10 + ones : UINT32_MAX;
}

// Two digits of a field in its range.
inline bool take_pair(dt_fmt_parse_ctx_t &ctx, uint8_t &field, uint32_t lowest, uint32_t highest,
                      dt_fmt_unit_e unit) {
    const uint32_t number = pair_at(ctx);
    if (number < lowest || number > highest) return false;
    field = static_cast<uint8_t>(number);
    ctx.str_idx += 2;
    ctx.update_flag |= unit;
    return true;
}

// Four digits. Behind the name of an era the year may be one BC.
inline bool take_year(dt_fmt_parse_ctx_t &ctx, dv_date_t &date) {
    const uint32_t century = pair_at(ctx), year = pair_at(ctx, 2);
    if (century > 99 || year > 99 || century + year == 0) return false;
    if ((ctx.update_flag & DT_FMT_UNIT_BC) != 0) return false;
    date_set_century_day(date, static_cast<int>(century), static_cast<int>(year), date.month, date.day);
    ctx.str_idx += 4;
    ctx.update_flag |= DT_FMT_UNIT_YEAR;
    return true;
}

inline bool take_usual_field(dt_fmt_parse_ctx_t &ctx, dv_date_t &date) {
    switch (ctx.cur_token_info->id) {
        case DT_FMT_TOKEN_YYYY:
            return take_year(ctx, date);
        case DT_FMT_TOKEN_MM:
            return take_pair(ctx, date.month, 1, MONTHS_PER_YEAR, DT_FMT_UNIT_MONTH);
        case DT_FMT_TOKEN_DD:
            return take_pair(ctx, date.day, 1, 31, DT_FMT_UNIT_DAY);
        default:
            return false;
    }
}

inline bool take_usual_field(dt_fmt_parse_ctx_t &ctx, dv_time_t &time) {
    switch (ctx.cur_token_info->id) {
        case DT_FMT_TOKEN_HH24:
            return take_pair(ctx, time.hour, 0, HOURS_PER_DAY - 1, DT_FMT_UNIT_HH24);
        case DT_FMT_TOKEN_MI:
            return take_pair(ctx, time.minute, 0, MINUTES_PER_HOUR - 1, DT_FMT_UNIT_MINUTE);
        case DT_FMT_TOKEN_SS:
            return take_pair(ctx, time.second, 0, SEC_PER_MINUTE - 1, DT_FMT_UNIT_SECOND);
        default:
            return false;
    }
}

// The character itself, with a field behind it that is no fraction. A blank stands for any white space and
// the punctuation behind that: a digit or a letter must follow it.
inline bool take_character(dt_fmt_parse_ctx_t &ctx, int token_idx) {
    const dt_fmt_ctx_t &model = *ctx.fmt_ctx;
    const std::string_view text = text_of(*ctx.cur_token_info), rest = rest_of(ctx);
    if (text.size() != 1 || rest.size() < 2 || rest[0] != text[0]) return false;
    if (model.has_tz_token || token_idx + 1 >= model.token_cnt) return false;
    const dt_fmt_token_info_t &next = model.token_infos[token_idx + 1];
    if (next.type != DT_FMT_TYPE_DATE && next.type != DT_FMT_TYPE_TIME) return false;
    if (next.id == DT_FMT_TOKEN_FF) return false;
    if (is_white_space(rest[0]) && (is_white_space(rest[1]) || is_punc(rest[1]))) return false;
    ++ctx.str_idx;
    return true;
}

}  // namespace dv::impl

#endif  // DV_USUAL_ELEMENT_H
