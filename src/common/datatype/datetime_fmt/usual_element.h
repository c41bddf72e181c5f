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

inline bool put_year(write_cursor_t &cursor, const dv_date_t &date) {  // BC both numbers are above 99
    return put_pairs(cursor, date.century - uint32_t{DATE_YEAR_EXCESS},
                     date.year - uint32_t{DATE_YEAR_EXCESS});
}

inline bool put_usual_field(write_cursor_t &cursor, const dv_date_t &date,
                            const dt_fmt_token_info_t &element) {
    if (!is_plain_number(element)) return false;
    switch (element.id) {
        case DT_FMT_TOKEN_YYYY:
            return put_year(cursor, date);
        case DT_FMT_TOKEN_MM:
            return put_pairs(cursor, date.month);
        case DT_FMT_TOKEN_DD:
            return put_pairs(cursor, date.day);
        default:
            return false;
    }
}

inline bool put_usual_field(write_cursor_t &cursor, const dv_time_t &time,
                            const dt_fmt_token_info_t &element) {
    if (!is_plain_number(element)) return false;
    switch (element.id) {
        case DT_FMT_TOKEN_HH24:
            return put_pairs(cursor, time.hour);
        case DT_FMT_TOKEN_MI:
            return put_pairs(cursor, time.minute);
        case DT_FMT_TOKEN_SS:
            return put_pairs(cursor, time.second);
        default:
            return false;
    }
}

inline bool put_character(write_cursor_t &cursor, const dt_fmt_token_info_t &element) {
    const std::string_view text = text_of(element);
    if (text.size() != 1 || cursor.at >= cursor.end) return false;
    *cursor.at++ = text.front();
    return true;
}

// ---- reading ----

// As write_cursor_t.
struct read_cursor_t {
    const char *text;
    int at, length;
    dt_fmt_unit_t update_flag;
};
inline read_cursor_t cursor_of(const dt_fmt_parse_ctx_t &ctx) {
    return {ctx.str, ctx.str_idx, ctx.str_len, ctx.update_flag};
}
inline void keep_cursor(dt_fmt_parse_ctx_t &ctx, const read_cursor_t &cursor) {
    ctx.str_idx = cursor.at;
    ctx.update_flag = cursor.update_flag;
}

// What a walk asks of a model again and again.
struct elements_t {
    const dt_fmt_token_info_t *end;
    bool has_zone;
};

// The number that the next two characters of the text are; above 99 when they are not two digits.
inline uint32_t pair_at(const read_cursor_t &cursor, int skipped = 0) {
    const int at = cursor.at + skipped;
    if (at + 2 > cursor.length) return UINT32_MAX;
    const auto tens = static_cast<uint32_t>(cursor.text[at] - '0'),
               ones = static_cast<uint32_t>(cursor.text[at + 1] - '0');
    return tens <= 9 && ones <= 9 ? tens * 10 + ones : UINT32_MAX;
}

// Two digits of a field in its range.
inline bool take_pair(read_cursor_t &cursor, uint8_t &field, uint32_t lowest, uint32_t highest,
                      dt_fmt_unit_e unit) {
    const uint32_t number = pair_at(cursor);
    if (number < lowest || number > highest) return false;
    field = static_cast<uint8_t>(number);
    cursor.at += 2;
    cursor.update_flag |= unit;
    return true;
}

// Four digits. Behind the name of an era the year may be one BC.
inline bool take_year(read_cursor_t &cursor, dv_date_t &date) {
    const uint32_t century = pair_at(cursor), year = pair_at(cursor, 2);
    if (century > 99 || year > 99 || century + year == 0) return false;
    if ((cursor.update_flag & DT_FMT_UNIT_BC) != 0) return false;
    date_set_century_day(date, static_cast<int>(century), static_cast<int>(year), date.month, date.day);
    cursor.at += 4;
    cursor.update_flag |= DT_FMT_UNIT_YEAR;
    return true;
}

inline bool take_usual_field(read_cursor_t &cursor, dv_date_t &date, int32_t id) {
    switch (id) {
        case DT_FMT_TOKEN_YYYY:
            return take_year(cursor, date);
        case DT_FMT_TOKEN_MM:
            return take_pair(cursor, date.month, 1, MONTHS_PER_YEAR, DT_FMT_UNIT_MONTH);
        case DT_FMT_TOKEN_DD:
            return take_pair(cursor, date.day, 1, 31, DT_FMT_UNIT_DAY);
        default:
            return false;
    }
}

inline bool take_usual_field(read_cursor_t &cursor, dv_time_t &time, int32_t id) {
    switch (id) {
        case DT_FMT_TOKEN_HH24:
            return take_pair(cursor, time.hour, 0, HOURS_PER_DAY - 1, DT_FMT_UNIT_HH24);
        case DT_FMT_TOKEN_MI:
            return take_pair(cursor, time.minute, 0, MINUTES_PER_HOUR - 1, DT_FMT_UNIT_MINUTE);
        case DT_FMT_TOKEN_SS:
            return take_pair(cursor, time.second, 0, SEC_PER_MINUTE - 1, DT_FMT_UNIT_SECOND);
        default:
            return false;
    }
}

// The character itself, with a field behind it that is no fraction. A blank stands for any white space and
// the punctuation behind that: a digit or a letter must follow it.
inline bool take_character(read_cursor_t &cursor, const elements_t &elements,
                           const dt_fmt_token_info_t &element) {
    const std::string_view text = text_of(element);
    if (text.size() != 1 || cursor.at + 2 > cursor.length || cursor.text[cursor.at] != text[0]) return false;
    const dt_fmt_token_info_t &next = *(&element + 1);
    if (elements.has_zone || &next == elements.end) return false;
    if (next.type > DT_FMT_TYPE_TIME || next.id == DT_FMT_TOKEN_FF) return false;
    const char behind = cursor.text[cursor.at + 1];
    if (is_white_space(text[0]) && (is_white_space(behind) || is_punc(behind))) return false;
    ++cursor.at;
    return true;
}
static_assert(DT_FMT_TYPE_DATE == 0 && DT_FMT_TYPE_TIME == 1);

}  // namespace dv::impl

#endif  // DV_USUAL_ELEMENT_H
