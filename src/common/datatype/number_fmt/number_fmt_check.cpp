// A model on its own: is it one, and how wide is its text?

#include <algorithm>
#include <cstring>

#include "../error.h"
#include "number_fmt_internal.h"

using namespace dv::impl;

namespace {

// "FM" in any letter case.
bool is_fm_(std::string_view text) {
    return text.size() >= 2 && to_upper(text[0]) == 'F' && to_upper(text[1]) == 'M';
}

}  // namespace

extern "C" void number_format_check(const char *fmt, int fmt_len) {
    const std::string_view model = model_of(fmt, fmt_len);
    const whole_model_e whole = whole_model(model);
    if (whole != whole_model_e::NONE && whole != whole_model_e::ROMAN_UNFILLED) return;
    number_parse_result_t pr;
    compile_model(model, pr);
}

extern "C" int number_get_length(const char *fmt, int fmt_len) {
    std::string_view rest = model_of(fmt, fmt_len);
    if (rest.size() > NUMBER_FMT_MAX)
        raise(error_at(DV_ERR_NUMBER_FORMAT, __FILE__, __LINE__, "number_fmt_parse"));
    char unfilled[NUMBER_FMT_MAX];
    int length = 0;
    while (!rest.empty()) {
        const bool drops = is_fm_(rest);
        if (!drops) unfilled[length++] = rest[0];
        rest.remove_prefix(drops ? 2 : 1);
    }
    char text[NUMBER_FMT_MAX + 1];
    number_to_str_fmt(_number_zero, sizeof text, text, length, unfilled);
    return static_cast<int>(strlen(text));
}
