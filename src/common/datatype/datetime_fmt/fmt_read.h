// What the readers of format elements share: the cursor over the text, numbers and names at it, and the
// report of a field that is not there.

#ifndef DV_FMT_READ_H
#define DV_FMT_READ_H

#include <string_view>

#include "../ascii.h"
#include "fmt_element.h"

namespace dv::impl {

// The text that is not read yet.
inline std::string_view rest_of(const dt_fmt_parse_ctx_t &ctx) {
    if (ctx.str_idx >= ctx.str_len) return {};
    return {ctx.str + ctx.str_idx, static_cast<size_t>(ctx.str_len - ctx.str_idx)};
}

inline bool has_rest(const dt_fmt_parse_ctx_t &ctx) { return ctx.str_idx < ctx.str_len; }
inline bool is_exact(const dt_fmt_parse_ctx_t &ctx) { return ctx.cur_token_info->is_exact_mode != 0; }

inline void skip_white_space(dt_fmt_parse_ctx_t &ctx) {
    while (has_rest(ctx) && is_white_space(ctx.str[ctx.str_idx])) ++ctx.str_idx;
}

// Two steps of all readers that raise in names of their own, which are part of the contract.
//
// The beginning of every DATE and TIME element: skips what may stand before it, white space unless FX is in
// force, and checks the punctuation there. A "-" at the beginning of the text is the sign of a year, which
// only SYYYY reads: any other element raises -5113.
void skip_and_check_punc_token_(dt_fmt_parse_ctx_t &ctx);

// The text has ended before the current element, which has this index. Raises -5045 when it or a later one is
// a DATE element; else returns the index of the last element, where reading ends with the defaults.
int check_omitted_time_token_(const dt_fmt_parse_ctx_t &ctx, int token_idx);

// The index of the next element behind `from` that is no punctuation, FM or FX; token_cnt when there is none.
int next_element_index(const dt_fmt_ctx_t &model, int from);

// The same for ascending indices of one walk, which looks at each element once.
class next_element_t {
  public:
    int behind(const dt_fmt_ctx_t &model, int from) {
        if (index_ <= from) index_ = next_element_index(model, from);
        return index_;
    }

  private:
    int index_ = 0;
};

// The exported function of this name, in a walk. It bears the name because what it raises does.
void dt_fmt_parse_punc_token(dt_fmt_parse_ctx_t &ctx, int &token_idx, next_element_t &next);

// May the text at the cursor be a time zone? The model has a zone element, and a sign, letter or digit
// follows.
bool may_be_zone(const dt_fmt_parse_ctx_t &ctx);

// Leaves out a fraction of a second: moves token_idx to the next FF and the punctuation behind it. Nothing
// when the next element that is no punctuation is another.
void skip_fraction(const dt_fmt_parse_ctx_t &ctx, int &token_idx);

// A number at the cursor: [sign] blanks digits.
struct number_field_t {
    int value;        // at most nine digits, without the sign
    int digit_count;  // 0: there is no number
    int end;          // index in the text behind it
    bool is_negative;
};
number_field_t find_number(const dt_fmt_parse_ctx_t &ctx, int width);

// The number of an element that takes no "-", and the cursor moved behind it. The two faults are raised at
// the given place: -5113 with the field's name when there is none, -5088 when FX is in force and it has not
// as many digits as the element.
int take_number(dt_fmt_parse_ctx_t &ctx, const char *field, int width, const error_at &missing,
                const error_at &wrong_width);

// Raises -5113 (field, the text at the cursor, the whole text), or with another text in the place of the
// second. The whole text is org_str, or str where nobody has filled that.
[[noreturn]] void raise_field_text(const dt_fmt_parse_ctx_t &ctx, const char *field, error_at where);
[[noreturn]] void raise_field_text(const dt_fmt_parse_ctx_t &ctx, const char *field, const char *text,
                                   error_at where);

inline constexpr const char *SIGNED_YEAR_NOTE = "The signed year is not allowed";

// How many bytes at the cursor, moved on by `skipped`, are name idx of a list in the context's language: the
// name in upper or lower case, read in any letter case. 0: they are not.
//
//   lists  index table of dvtypes/nls.h, by language and case
int match_name(const dt_fmt_parse_ctx_t &ctx, const nls_date_lang_val_t *const *lists, int idx,
               int skipped = 0);

// The last of the first `count` names of a list that the text is one of; length 0: of none.
struct name_match_t {
    int idx, length;
};
name_match_t match_last_name(const dt_fmt_parse_ctx_t &ctx, const nls_date_lang_val_t *const *lists,
                             int count, int skipped);

}  // namespace dv::impl

#endif  // DV_FMT_READ_H
