// Weekdays by name or number.
//
// A typed name equals a stored one when both have the same bytes in one letter case, upper or lower, and the
// same length as typed. Both cases are tried because a character set may have a letter in one of them only
// (GBK has the small a with acute, not the capital), and because some Vietnamese names are other words in
// capitals.

#include <algorithm>
#include <cstring>
#include <string_view>

#include "../error.h"
#include "../nls/nls_internal.h"
#include "dvtypes/datetime_fmt.h"

using namespace dv::impl;

namespace {

constexpr int _days = 7;
constexpr int _no_day = -1;

struct name_case_t {
    dvstr_case_e typed;
    dt_fmt_case_type_e stored;
};
constexpr name_case_t _cases[] = {
    {DVSTR_CASE_UPPER, DT_FMT_CASE_UPPER},
    {DVSTR_CASE_LOWER, DT_FMT_CASE_LOWER},
};

// What was typed, in one letter case. Longer than any name: empty.
struct typed_name_t {
    char text[NLS_NAME_BYTES_MAX];
    int size;
};

typed_name_t in_case_(std::string_view name, dvstr_case_e to, dvstr_charset_t charset) {
    typed_name_t typed;
    typed.size = 0;
    if (name.size() > sizeof typed.text) return typed;
    const auto length = static_cast<int>(name.size());
    const charset_info_t &info = _charset_info[charset];
    const int size = info.to_case(&info, to, name.data(), length, typed.text, sizeof typed.text);
    typed.size = size == length ? size : 0;  // a letter whose other case is shorter is in no name
    return typed;
}

// The first character alone tells most names apart, at a fraction of the cost.
bool is_name_(const typed_name_t &typed, const nls_date_lang_val_t &stored, dvstr_charset_t charset) {
    char text[NLS_NAME_BYTES_MAX];
    const int first_size = nls_name_start(text, sizeof text, stored, 2, charset);
    if (first_size > typed.size || memcmp(text, typed.text, static_cast<size_t>(first_size)) != 0)
        return false;
    const int size = nls_name(text, sizeof text, stored, charset);
    return size == typed.size && memcmp(text, typed.text, static_cast<size_t>(size)) == 0;
}

// The day whose full or abbreviated name was typed, as stored in one letter case.
int find_in_case_(std::string_view name, const name_case_t &in, dv_nls_date_lang_t lang,
                  dvstr_charset_t charset) {
    const typed_name_t typed = in_case_(name, in.typed, charset);
    const auto *const full = nls_cases(std_day_tab_, lang)[in.stored];
    const auto *const abbreviated = nls_cases(abb_day_tab_, lang)[in.stored];
    for (int day = 0; day < _days; ++day) {
        if (is_name_(typed, full[day], charset)) return day;
        if (is_name_(typed, abbreviated[day], charset)) return day;
    }
    return _no_day;
}

int find_name_(std::string_view name, dv_nls_date_lang_t lang, dvstr_charset_t charset) {
    for (const name_case_t &in : _cases) {
        const int day = find_in_case_(name, in, lang, charset);
        if (day != _no_day) return day;
    }
    return _no_day;
}

// 1 is Sunday, 7 Saturday; leading zeros count for nothing.
int find_number_(std::string_view text) {
    if (text.empty() || text.find_first_not_of('0') != text.size() - 1) return _no_day;
    const int number = text.back() - '0';
    return number >= 1 && number <= _days ? (number + 5) % _days : _no_day;
}

}  // namespace

extern "C" int dt_fmt_get_day_idx_of_week(const char *name, int name_len, dv_nls_date_lang_t lang,
                                          dvstr_charset_t charset) {
    if (!DV_ASSERT(name != NULL)) return 0;
    const bool is_language = dv_nls_date_lang_is_valid(lang) != 0;
    if (!is_language) assert_failed("dv_nls_date_lang_is_valid (lang)");

    const std::string_view typed(name, static_cast<size_t>(std::max(name_len, 0)));
    if (is_language && is_charset(charset)) {
        const int named = find_name_(typed, lang, charset);
        const int day = named != _no_day ? named : find_number_(typed);
        if (day != _no_day) return day;
    }
    char shown[DV_ERROR_TEXT_MAX + 1] = {};  // a byte more than a report holds, which cuts between characters
    std::copy_n(typed.data(), std::min(typed.size(), sizeof shown - 1), shown);
    raise(DV_ERR_FIELD_TEXT, "day_name", static_cast<const char *>(shown),
          "Inconsistent with NLS_DATE_LANGUAGE");
}
