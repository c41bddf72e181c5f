// What the files of the number format models share: models as texts with a length, the whole-text models, and
// the compiler behind number_fmt_parse.

#ifndef DV_NUMBER_FMT_INTERNAL_H
#define DV_NUMBER_FMT_INTERNAL_H

#include <cstring>
#include <string_view>

#include "../ascii.h"
#include "dvtypes/number_fmt.h"

namespace dv::impl {

// The model in fmt: up to fmt_len, or to the first NUL. At most one character more than a model may have, by
// which the compiler sees that it is too long.
inline std::string_view model_of(const char *fmt, int fmt_len) {
    if (fmt == nullptr || fmt_len <= 0) return {};
    const int limit = fmt_len <= NUMBER_FMT_MAX ? fmt_len : NUMBER_FMT_MAX + 1;
    return {fmt, strnlen(fmt, static_cast<size_t>(limit))};
}

// Models that stand for themselves, in any letter case. The compiler knows none of them.
enum class whole_model_e {
    NONE,           // to be compiled
    TM,             // TM, TM9: as short as possible
    TME,            // in scientific form
    ROMAN,          // RN
    ROMAN_UNFILLED  // FMRN, for writing alone
};
whole_model_e whole_model(std::string_view model);

// number_fmt_parse of a model with a length, and raising in its name, pr untouched. Gives the characters of
// fmt_dig.
int compile_model(std::string_view model, number_parse_result_t &pr);

// A model made ready once for many values. It refers to nothing.
struct number_model_t {
    whole_model_e whole;
    bool in_upper;             // the letters of roman numerals
    int elements;              // characters of pr.fmt_dig
    number_parse_result_t pr;  // only of a model that does not stand for itself
};

// Raises what number_to_str_fmt and number_from_str_fmt raise of a model.
void make_number_model(std::string_view text, number_model_t &model);
void make_reading_model(std::string_view text, number_model_t &model);

// number_to_str_fmt and number_from_str_fmt without their roads of plain models (plain_model.h,
// plain_model_writer.h), in whose names they raise; the last with the code of a refused
// text as its result, though under X it still raises what is beyond the range.
void number_to_text_under(const number_t &x, int buf_size, char *str, const number_model_t &model);
void number_from_text_under(number_t &x, std::string_view text, const number_model_t &model);
[[nodiscard]] int number_try_from_text_under(number_t &x, std::string_view text, const number_model_t &model);

}  // namespace dv::impl

#endif  // DV_NUMBER_FMT_INTERNAL_H
