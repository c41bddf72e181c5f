// Languages as arguments.

#include "sql_language.h"

#include <cstring>

using namespace dv::impl;

namespace {

constexpr char _setting_name[] = "NLS_DATE_LANGUAGE=";
constexpr int _setting_name_length = sizeof _setting_name - 1;

bool is_setting_(const sql_text &text) {
    return memchr(text.bytes, '=', static_cast<size_t>(text.length)) != nullptr;
}

}  // namespace

bool dv::impl::sql_check_language(sql_call &call, int position) {
    const sql_text &text = call.args[position].text;
    if (text.length <= DV_NLS_TEXT_MAX - (is_setting_(text) ? 0 : _setting_name_length)) return true;
    sql_fail(call, "argument %d is longer than a setting, which has at most %d bytes", position + 1,
             DV_NLS_TEXT_MAX);
    return false;
}

sql_setting dv::impl::sql_language_setting(const sql_text &text) {
    sql_setting setting;
    char *end = setting.text;
    if (!is_setting_(text)) {
        memcpy(end, _setting_name, _setting_name_length);
        end += _setting_name_length;
    }
    memcpy(end, text.bytes, static_cast<size_t>(text.length));
    end[text.length] = '\0';
    return setting;
}

dv_nls_date_lang_t dv::impl::sql_language_of(const sql_text &text) {
    union {
        dv_nls_date_lang_t language;
        dv_nls_date_cal_t calendar;
        dv_nls_sort_ctx_t sort;
    } value;
    dv_nls_param_t param = DV_NLS_PARAM_MAX;
    dv_nls_parse(sql_language_setting(text).text, &param, &value);
    if (param != DV_NLS_PARAM_DATE_LANG) sql_raise(SQL_ERR_NLS_SETTING);
    return value.language;
}
