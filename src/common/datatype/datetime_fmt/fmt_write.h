// What the writers of format elements share: the output, and numbers in it.

#ifndef DV_FMT_WRITE_H
#define DV_FMT_WRITE_H

#include <cstring>
#include <string_view>

#include "../digits.h"
#include "fmt_element.h"

namespace dv::impl {

inline int room_of(const dt_fmt_parse_ctx_t &ctx) { return ctx.str_len - ctx.str_idx; }

// How far a walk has written. It keeps that in registers from element to element; in the context each would
// wait for what the last has stored.
struct write_cursor_t {
    char *at, *end;
};
inline write_cursor_t write_cursor_of(const dt_fmt_parse_ctx_t &ctx) {
    return {ctx.str + ctx.str_idx, ctx.str + ctx.str_len};
}
inline void keep_cursor(dt_fmt_parse_ctx_t &ctx, const write_cursor_t &cursor) {
    ctx.str_idx = static_cast<int32_t>(cursor.at - ctx.str);
}

// Puts the two digits of each number at the cursor; nothing when one of them is above 99 or there is not room
// for all. The numbers of most models go this way (bench/datetime_fmt, write).
template <typename... Numbers>
inline bool put_pairs(write_cursor_t &cursor, Numbers... number) {
    if (((number > 99) || ...) || cursor.end - cursor.at < int{2 * sizeof...(number)}) return false;
    ((store_text<uint16_t>(cursor.at, digit_pair(number)), cursor.at += 2), ...);
    return true;
}
template <typename... Numbers>
inline bool put_pairs(dt_fmt_parse_ctx_t &ctx, Numbers... number) {
    write_cursor_t cursor = write_cursor_of(ctx);
    const bool is_put = put_pairs(cursor, number...);
    keep_cursor(ctx, cursor);
    return is_put;
}

// Puts a text at the cursor, cut to the room that is left. room_of(ctx) is above 0.
inline conv_status_t put_text(dt_fmt_parse_ctx_t &ctx, std::string_view text) {
    const auto room = static_cast<size_t>(room_of(ctx));
    const size_t length = std::min(text.size(), room);
    memcpy(ctx.str + ctx.str_idx, text.data(), length);
    ctx.str_idx += static_cast<int32_t>(length);
    return text.size() > room ? CONV_STATUS_CUT : CONV_STATUS_WHOLE;
}

// Writes a number as the current element asks for: in digits, at least min_digits of them unless in fill
// mode, with or without an ordinal suffix, or spelled. room_of(ctx) is above 0, as below.
conv_status_t put_number(dt_fmt_parse_ctx_t &ctx, int value, int min_digits);

// Writes upper-case words in the letter case of the current element.
conv_status_t put_words(dt_fmt_parse_ctx_t &ctx, std::string_view upper_case_words);

// Writes a name of dvtypes/nls.h, followed by blanks up to `width` bytes unless in fill mode.
conv_status_t put_name(dt_fmt_parse_ctx_t &ctx, std::string_view name, int width);

// The least digits of each numeric element: the precision of its template, "%.04d"; 1 for "%d".
inline constexpr auto MIN_DIGITS = [] {
    std::array<uint8_t, FMT_TOKEN_IDS_END> least{};
    for (size_t id = 0; id < least.size(); ++id) {
        for (const char c : std::string_view(fmt_tokens_[id].write_fmt)) {
            if (c > '0' && c <= '9') least[id] = static_cast<uint8_t>(c - '0');
        }
        if (least[id] == 0) least[id] = 1;
    }
    return least;
}();

}  // namespace dv::impl

#endif  // DV_FMT_WRITE_H
