// Language settings: texts NAME = VALUE, and bare values.
//
// A text is never copied: its pieces are views of it, trimmed, and compared whole with the names that are
// known. Each setting is one row: its name, its number, and the reader of its value.

#include <iterator>

#include "../error.h"
#include "nls_setting.h"

using namespace dv::impl;

namespace {

constexpr const char *_calendar_names[] = {"GREGORIAN"};
static_assert(std::size(_calendar_names) == DV_NLS_DATE_CAL_MAX);

constexpr const char *_comparison_names[] = {"BINARY", "LINGUISTIC"};
static_assert(std::size(_comparison_names) == DV_NLS_COMP_MAX);

// Stores the index of the name that the text equals; leaves *index when there is none.
template <size_t N>
bool parse_name_(const char *const (&names)[N], std::string_view text, int32_t *index) {
    const int found = find_name(names, text);
    if (found >= 0) *index = found;
    return found >= 0;
}

// A value that stands alone; cut, it is longer than any name.
std::string_view bare_value_(const char *str) { return bounded_text(str, DV_NLS_TEXT_MAX); }

bool are_given_(const char *str, const void *val) { return DV_ASSERT(str != NULL) && DV_ASSERT(val != NULL); }

bool parse_language_value_(std::string_view text, void *val) {
    return parse_name_(nls_date_lang_name_tab_, text, static_cast<dv_nls_date_lang_t *>(val));
}

bool parse_calendar_value_(std::string_view text, void *val) {
    return parse_name_(_calendar_names, text, static_cast<dv_nls_date_cal_t *>(val));
}

bool parse_sort_value_(std::string_view text, void *val) {
    return parse_sort(text, *static_cast<dv_nls_sort_ctx_t *>(val));
}

struct setting_t {
    std::string_view name;
    dv_nls_param_e param;
    bool (*parse_value)(std::string_view text, void *val);
};
constexpr setting_t _settings[] = {
    {"NLS_DATE_LANGUAGE", DV_NLS_PARAM_DATE_LANG, parse_language_value_},
    {"NLS_CALENDAR", DV_NLS_PARAM_DATE_CAL, parse_calendar_value_},
    {"NLS_SORT", DV_NLS_PARAM_SORT, parse_sort_value_},
};

const setting_t *find_setting_(std::string_view name) {
    const auto *const found =
        std::find_if(std::begin(_settings), std::end(_settings),
                     [&](const setting_t &setting) { return equals_ignoring_case(setting.name, name); });
    return found != std::end(_settings) ? found : nullptr;
}

}  // namespace

extern "C" {

bool dv_nls_date_lang_parse(const char *str, dv_nls_date_lang_t *val) {
    return are_given_(str, val) && parse_name_(nls_date_lang_name_tab_, bare_value_(str), val);
}

bool dv_nls_date_cal_parse(const char *str, dv_nls_date_cal_t *val) {
    return are_given_(str, val) && parse_name_(_calendar_names, bare_value_(str), val);
}

bool dv_nls_comp_parse(const char *str, dv_nls_comp_t *val) {
    return are_given_(str, val) && parse_name_(_comparison_names, bare_value_(str), val);
}

void dv_nls_parse(const char *str, dv_nls_param_t *param, void *val) {
    if (!are_given_(str, val) || !DV_ASSERT(param != NULL)) return;
    const std::string_view text = bounded_text(str, DV_NLS_TEXT_MAX + 1);
    if (text.size() > DV_NLS_TEXT_MAX || std::count(text.begin(), text.end(), '=') > 1) {
        raise(DV_ERR_NLS_SETTING);
    }
    const two_pieces_t pieces = split(text, '=');
    const setting_t *const setting = find_setting_(pieces.first);
    if (setting == nullptr) raise(DV_ERR_NLS_SETTING);
    *param = setting->param;
    if (!setting->parse_value(pieces.second, val)) raise(DV_ERR_NLS_SETTING);
}

}  // extern "C"
