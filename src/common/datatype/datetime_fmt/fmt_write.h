// What the writers of format elements share: the output, and numbers in it.

#ifndef DV_FMT_WRITE_H
#define DV_FMT_WRITE_H

#include <cstring>
#include <string_view>

#include "fmt_element.h"

namespace dv::impl {

inline int room_of(const dt_fmt_parse_ctx_t &ctx) { return ctx.str_len - ctx.str_idx; }

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

// The least digits of a numeric element: the precision of its template, "%.04d"; 1 for "%d".
constexpr int min_digits(const dt_fmt_token_t &element) {
    int digits = 0;
    for (const char *c = element.write_fmt; *c != '\0'; ++c) {
        if (*c >= '0' && *c <= '9') digits = digits * 10 + (*c - '0');
    }
    return digits > 0 ? digits : 1;
}

}  // namespace dv::impl

#endif  // DV_FMT_WRITE_H
