// What the files that compile models share, and what writers, readers and truncation may use of it.

#ifndef DV_DATETIME_FMT_INTERNAL_H
#define DV_DATETIME_FMT_INTERNAL_H

#include <climits>
#include <cstring>

#include "../ascii.h"
#include "../error.h"
#include "fmt_token_table.h"

namespace dv::impl {

// The first eight bytes of a text in upper case, the first one highest; zero behind its end. A short text is
// gathered in a register: a copy to memory and back stalls until it is stored.
inline uint64_t upper_case_word(std::string_view text) {
    if (text.size() >= sizeof(uint64_t)) {
        return upper_case(load_be64(reinterpret_cast<const uint8_t *>(text.data())));
    }
    uint64_t word = 0;
    int shift = 64;
    for (const char c : text) word |= uint64_t{static_cast<uint8_t>(c)} << (shift -= 8);
    return upper_case(word);
}

// The element that a text begins with, the longest that fits, as dt_fmt_token_id_e; FMT_TOKEN_NONE when there
// is none. Letter case does not matter.
int find_keyword(std::string_view text);

// Elements that must not follow others in a model for reading.
struct fmt_conflict_t {
    dt_fmt_unit_t unit;   // bits: any of these ...
    dt_fmt_unit_t given;  // ... behind any of these
    dv_error_code_e error;
    const char *field;  // argument of the error, or nullptr
};

// The conflict of a new element's unit with what was given before it, or nullptr.
const fmt_conflict_t *find_conflict(dt_fmt_unit_t unit, dt_fmt_unit_t given);

// Cuts (round false) or rounds a date to a unit.
using truncation_t = void(dv_date_t &date, bool round);

// The rule of a unit that a format element names; nullptr: it names none.
truncation_t *find_truncation(std::string_view unit);

// A unit's text as the functions of DATE take it: NULL and "" mean "DD", the length 0 up to the NUL.
// fmt_len is not negative.
inline std::string_view unit_text(const char *fmt, int fmt_len) {
    if (fmt == NULL || *fmt == '\0') return "DD";
    return {fmt, fmt_len != 0 ? static_cast<size_t>(fmt_len) : strnlen(fmt, INT_MAX)};
}

// Elements of a context of any bytes.
inline int fmt_token_count(const dt_fmt_ctx_t &fmt_ctx) {
    return fmt_ctx.token_infos == nullptr ? 0 : std::max(fmt_ctx.token_cnt, 0);
}

}  // namespace dv::impl

#endif  // DV_DATETIME_FMT_INTERNAL_H
