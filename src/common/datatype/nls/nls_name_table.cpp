// The names of months, days, eras and meridians in seven languages, and the tables that find them.
//
// Data only. The texts are given by those who store values with them and are never mended: Vietnamese names
// have question marks and odd capitals that belong to them. Letters are composed ones (NFC). Lists whose
// small letters follow from the capitals are given in capitals alone.

#include "nls_internal.h"
#include "nls_name_list.h"

using namespace dv::impl;

namespace {

// clang-format off

// ---- American -------------------------------------------------------------------------------------------

constexpr cased_names_t<12> _american_std_month = in_three_cases(names(
    u"JANUARY", u"FEBRUARY", u"MARCH", u"APRIL", u"MAY", u"JUNE",
    u"JULY", u"AUGUST", u"SEPTEMBER", u"OCTOBER", u"NOVEMBER", u"DECEMBER"));
constexpr cased_names_t<12> _american_abb_month = in_three_cases(names(
    u"JAN", u"FEB", u"MAR", u"APR", u"MAY", u"JUN", u"JUL", u"AUG", u"SEP", u"OCT", u"NOV", u"DEC"));
constexpr cased_names_t<7> _american_std_day = in_three_cases(names(
    u"MONDAY", u"TUESDAY", u"WEDNESDAY", u"THURSDAY", u"FRIDAY", u"SATURDAY", u"SUNDAY"));
constexpr cased_names_t<7> _american_abb_day = in_three_cases(names(
    u"MON", u"TUE", u"WED", u"THU", u"FRI", u"SAT", u"SUN"));
constexpr cased_names_t<4> _american_adbc = in_three_cases(names(u"AD", u"A.D.", u"BC", u"B.C."));
constexpr cased_names_t<4> _american_ampm = in_three_cases(names(u"AM", u"A.M.", u"PM", u"P.M."));

// ---- Korean ---------------------------------------------------------------------------------------------

constexpr names_t<12> _korean_month = names(
    u"1월", u"2월", u"3월", u"4월", u"5월", u"6월", u"7월", u"8월", u"9월", u"10월", u"11월", u"12월");
constexpr names_t<7> _korean_std_day = names(
    u"월요일", u"화요일", u"수요일", u"목요일", u"금요일", u"토요일", u"일요일");
constexpr names_t<7> _korean_abb_day = names(u"월", u"화", u"수", u"목", u"금", u"토", u"일");
constexpr names_t<4> _korean_adbc = names(u"서기", u"서기", u"기원전", u"기원전");
constexpr names_t<4> _korean_ampm = names(u"오전", u"오전", u"오후", u"오후");

// ---- Japanese -------------------------------------------------------------------------------------------

constexpr names_t<12> _japanese_month = names(
    u"1月", u"2月", u"3月", u"4月", u"5月", u"6月", u"7月", u"8月", u"9月", u"10月", u"11月", u"12月");
constexpr names_t<7> _japanese_std_day = names(
    u"月曜日", u"火曜日", u"水曜日", u"木曜日", u"金曜日", u"土曜日", u"日曜日");
constexpr names_t<7> _japanese_abb_day = names(u"月", u"火", u"水", u"木", u"金", u"土", u"日");
constexpr names_t<4> _japanese_adbc = names(u"西暦", u"西暦", u"紀元前", u"紀元前");
constexpr names_t<4> _japanese_ampm = names(u"午前", u"午前", u"午後", u"午後");

// ---- Vietnamese -----------------------------------------------------------------------------------------

constexpr cased_names_t<12> _vietnamese_std_month = {
    names(u"THANG MÔ?T", u"THANG HAI", u"THANG BA", u"THANG TƯ", u"THANG NĂM", u"THANG SAU",
          u"THANG BA?Y", u"THANG TAM", u"THANG CHIN", u"THANG MƯƠ?I", u"THANG MƯƠ?I MÔ?T",
          u"THANG MƯƠ?I HAI"),
    names(u"tháng mô?t", u"tháng hai", u"tháng ba", u"tháng tư", u"tháng năm", u"tháng sáu",
          u"tháng ba?y", u"tháng tám", u"tháng chín", u"tháng mươ?i", u"tháng mươ?i mô?t",
          u"tháng mươ?i hai"),
    names(u"Tháng Mô?T", u"Tháng Hai", u"Tháng Ba", u"Tháng Tư", u"Tháng Năm", u"Tháng Sáu",
          u"Tháng Ba?Y", u"Tháng Tám", u"Tháng Chín", u"Tháng Mươ?I", u"Tháng Mươ?I Mô?T",
          u"Tháng Mươ?I Hai"),
};
constexpr cased_names_t<12> _vietnamese_abb_month = {  // November and December differ from the full names
    names(u"THANG MÔ?T", u"THANG HAI", u"THANG BA", u"THANG TƯ", u"THANG NĂM", u"THANG SAU",
          u"THANG BA?Y", u"THANG TAM", u"THANG CHIN", u"THANG MƯƠ?I", u"THANG MƯƠI MÔT",
          u"THANG MƯƠI HAI"),
    names(u"tháng mô?t", u"tháng hai", u"tháng ba", u"tháng tư", u"tháng năm", u"tháng sáu",
          u"tháng ba?y", u"tháng tám", u"tháng chín", u"tháng mươ?i", u"tháng mười một",
          u"tháng mười hai"),
    _vietnamese_std_month.initcap,
};
constexpr cased_names_t<7> _vietnamese_std_day = {
    names(u"THƯ HAI", u"THƯ BA", u"THƯ TƯ", u"THƯ NĂM", u"THƯ SAU", u"THƯ BAY", u"CHU NHÂT"),
    names(u"thứ hai", u"thứ ba", u"thứ tư", u"thứ năm", u"thứ sáu", u"thứ bảy", u"chủ nhật"),
    names(u"Thứ Hai", u"Thứ Ba", u"Thứ Tư", u"Thứ Năm", u"Thứ Sáu", u"Thứ BảY", u"Chủ NhậT"),
};
constexpr cased_names_t<7> _vietnamese_abb_day = {  // Friday and Saturday differ from the full names
    names(u"THƯ HAI", u"THƯ BA", u"THƯ TƯ", u"THƯ NĂM", u"THƯ ?SAU", u"THƯ ?BAY", u"CHU NHÂT"),
    names(u"thứ hai", u"thứ ba", u"thứ tư", u"thứ năm", u"thư ?sáu", u"thư ?bảy", u"chủ nhật"),
    names(u"Thứ Hai", u"Thứ Ba", u"Thứ Tư", u"Thứ Năm", u"Thư ?Sáu", u"Thư ?BảY", u"Chủ NhậT"),
};
constexpr names_t<4> _vietnamese_adbc_upper = names(u"AD", u"AD", u"BC", u"BC");
constexpr names_t<4> _vietnamese_adbc_initcap = names(u"Ad", u"Ad", u"Bc", u"Bc");
constexpr cased_names_t<4> _vietnamese_ampm = {
    names(u"SANG", u"SANG", u"CHIÊ?U", u"CHIÊ?U"),
    names(u"Sáng", u"Sáng", u"Chiê?u", u"Chiê?u"),
    names(u"Sáng", u"Sáng", u"Chiê?U", u"Chiê?U"),
};

// ---- Brazilian Portuguese -------------------------------------------------------------------------------

constexpr cased_names_t<12> _brazilian_std_month = in_three_cases(names(
    u"JANEIRO", u"FEVEREIRO", u"MARÇO", u"ABRIL", u"MAIO", u"JUNHO",
    u"JULHO", u"AGOSTO", u"SETEMBRO", u"OUTUBRO", u"NOVEMBRO", u"DEZEMBRO"));
constexpr cased_names_t<12> _brazilian_abb_month = in_three_cases(names(
    u"JAN", u"FEV", u"MAR", u"ABR", u"MAI", u"JUN", u"JUL", u"AGO", u"SET", u"OUT", u"NOV", u"DEZ"));
constexpr cased_names_t<7> _brazilian_std_day = in_three_cases(names(
    u"SEGUNDA-FEIRA", u"TERÇA-FEIRA", u"QUARTA-FEIRA", u"QUINTA-FEIRA", u"SEXTA-FEIRA",
    u"SÁBADO", u"DOMINGO"));
constexpr cased_names_t<7> _brazilian_abb_day = in_three_cases(names(
    u"SEG", u"TER", u"QUA", u"QUI", u"SEX", u"SÁB", u"DOM"));
constexpr names_t<4> _brazilian_adbc_upper = names(u"D.C.", u"D.C.", u"A.C.", u"A.C.");
constexpr names_t<4> _brazilian_adbc_lower = names(u"d.C.", u"d.C.", u"a.C.", u"a.C.");
constexpr cased_names_t<4> _brazilian_ampm = in_three_cases(names(u"MANHÃ", u"MANHÃ", u"TARDE", u"TARDE"));

// ---- Traditional Chinese --------------------------------------------------------------------------------

constexpr names_t<12> _chinese_month = names(
    u"1月", u"2月", u"3月", u"4月", u"5月", u"6月", u"7月", u"8月", u"9月", u"10月", u"11月", u"12月");
constexpr names_t<7> _chinese_day = names(
    u"星期一", u"星期二", u"星期三", u"星期四", u"星期五", u"星期六", u"星期日");
constexpr names_t<4> _chinese_adbc = names(u"西元", u"西元", u"西元前", u"西元前");
constexpr names_t<4> _chinese_ampm = names(u"上午", u"上午", u"下午", u"下午");

// ---- Russian --------------------------------------------------------------------------------------------

constexpr cased_names_t<12> _russian_std_month = in_three_cases(names(
    u"ЯНВАРЬ", u"ФЕВРАЛЬ", u"МАРТ", u"АПРЕЛЬ", u"МАЙ", u"ИЮНЬ",
    u"ИЮЛЬ", u"АВГУСТ", u"СЕНТЯБРЬ", u"ОКТЯБРЬ", u"НОЯБРЬ", u"ДЕКАБРЬ"));
constexpr cased_names_t<12> _russian_abb_month = in_three_cases(names(
    u"ЯНВ", u"ФЕВ", u"МАР", u"АПР", u"МАЙ", u"ИЮН", u"ИЮЛ", u"АВГ", u"СЕН", u"ОКТ", u"НОЯ", u"ДЕК"));
constexpr cased_names_t<7> _russian_std_day = in_three_cases(names(
    u"ПОНЕДЕЛЬНИК", u"ВТОРНИК", u"СРЕДА", u"ЧЕТВЕРГ", u"ПЯТНИЦА", u"СУББОТА", u"ВОСКРЕСЕНЬЕ"));
constexpr cased_names_t<7> _russian_abb_day = in_three_cases(names(
    u"ПН", u"ВТ", u"СР", u"ЧТ", u"ПТ", u"СБ", u"ВС"));
constexpr cased_names_t<4> _russian_adbc = in_three_cases(names(u"Н.З.", u"Н.З.", u"ДО Н.З.", u"ДО Н.З."));
constexpr cased_names_t<4> _russian_ampm = in_three_cases(names(u"AM", u"AM", u"PM", u"PM"));

// ---- all languages --------------------------------------------------------------------------------------

constexpr cased_names_t<12> _roman_month = in_three_cases(names(
    u"I", u"II", u"III", u"IV", u"V", u"VI", u"VII", u"VIII", u"IX", u"X", u"XI", u"XII"));

}  // namespace

// ---- index tables: a row per language; columns: upper, lower, initial capitals --------------------------

constexpr const nls_date_lang_val_t *const std_month_tab_[NLS_DATE_LANG_LISTS] = {
    _american_std_month.upper,   _american_std_month.lower,   _american_std_month.initcap,
    _korean_month,               _korean_month,               _korean_month,
    _japanese_month,             _japanese_month,             _japanese_month,
    _vietnamese_std_month.upper, _vietnamese_std_month.lower, _vietnamese_std_month.initcap,
    _brazilian_std_month.upper,  _brazilian_std_month.lower,  _brazilian_std_month.initcap,
    _chinese_month,              _chinese_month,              _chinese_month,
    _russian_std_month.upper,    _russian_std_month.lower,    _russian_std_month.initcap,
};

constexpr const nls_date_lang_val_t *const abb_month_tab_[NLS_DATE_LANG_LISTS] = {
    _american_abb_month.upper,   _american_abb_month.lower,   _american_abb_month.initcap,
    _korean_month,               _korean_month,               _korean_month,
    _japanese_month,             _japanese_month,             _japanese_month,
    _vietnamese_abb_month.upper, _vietnamese_abb_month.lower, _vietnamese_abb_month.initcap,
    _brazilian_abb_month.upper,  _brazilian_abb_month.lower,  _brazilian_abb_month.initcap,
    _chinese_month,              _chinese_month,              _chinese_month,
    _russian_abb_month.upper,    _russian_abb_month.lower,    _russian_abb_month.initcap,
};

constexpr const nls_date_lang_val_t *const std_day_tab_[NLS_DATE_LANG_LISTS] = {
    _american_std_day.upper,     _american_std_day.lower,     _american_std_day.initcap,
    _korean_std_day,             _korean_std_day,             _korean_std_day,
    _japanese_std_day,           _japanese_std_day,           _japanese_std_day,
    _vietnamese_std_day.upper,   _vietnamese_std_day.lower,   _vietnamese_std_day.initcap,
    _brazilian_std_day.upper,    _brazilian_std_day.lower,    _brazilian_std_day.initcap,
    _chinese_day,                _chinese_day,                _chinese_day,
    _russian_std_day.upper,      _russian_std_day.lower,      _russian_std_day.initcap,
};

constexpr const nls_date_lang_val_t *const abb_day_tab_[NLS_DATE_LANG_LISTS] = {
    _american_abb_day.upper,     _american_abb_day.lower,     _american_abb_day.initcap,
    _korean_abb_day,             _korean_abb_day,             _korean_abb_day,
    _japanese_abb_day,           _japanese_abb_day,           _japanese_abb_day,
    _vietnamese_abb_day.upper,   _vietnamese_abb_day.lower,   _vietnamese_abb_day.initcap,
    _brazilian_abb_day.upper,    _brazilian_abb_day.lower,    _brazilian_abb_day.initcap,
    _chinese_day,                _chinese_day,                _chinese_day,
    _russian_abb_day.upper,      _russian_abb_day.lower,      _russian_abb_day.initcap,
};

constexpr const nls_date_lang_val_t *const std_adbc_tab_[NLS_DATE_LANG_LISTS] = {
    _american_adbc.upper,        _american_adbc.lower,        _american_adbc.initcap,
    _korean_adbc,                _korean_adbc,                _korean_adbc,
    _japanese_adbc,              _japanese_adbc,              _japanese_adbc,
    _vietnamese_adbc_upper,      _vietnamese_adbc_upper,      _vietnamese_adbc_initcap,
    _brazilian_adbc_upper,       _brazilian_adbc_lower,       _brazilian_adbc_upper,
    _chinese_adbc,               _chinese_adbc,               _chinese_adbc,
    _russian_adbc.upper,         _russian_adbc.lower,         _russian_adbc.initcap,
};

constexpr const nls_date_lang_val_t *const std_ampm_tab_[NLS_DATE_LANG_LISTS] = {
    _american_ampm.upper,        _american_ampm.lower,        _american_ampm.initcap,
    _korean_ampm,                _korean_ampm,                _korean_ampm,
    _japanese_ampm,              _japanese_ampm,              _japanese_ampm,
    _vietnamese_ampm.upper,      _vietnamese_ampm.lower,      _vietnamese_ampm.initcap,
    _brazilian_ampm.upper,       _brazilian_ampm.lower,       _brazilian_ampm.initcap,
    _chinese_ampm,               _chinese_ampm,               _chinese_ampm,
    _russian_ampm.upper,         _russian_ampm.lower,         _russian_ampm.initcap,
};

constexpr const nls_date_lang_val_t *const rm_month_tab_[NLS_DATE_LANG_CASES] = {
    _roman_month.upper,          _roman_month.lower,          _roman_month.initcap,
};

// ---- languages: columns in the order of dv_nls_date_lang_e ----------------------------------------------

constexpr const char *const nls_date_lang_name_tab_[DV_NLS_DATE_LANG_MAX] = {
    "AMERICAN", "KOREAN", "JAPANESE", "VIETNAMESE", "BRAZILIAN PORTUGUESE", "TRADITIONAL CHINESE", "RUSSIAN",
};

constexpr const char *const nls_date_lang_std_mon_fmt_tab_[DV_NLS_DATE_LANG_MAX] = {
    "%-9s", "%-4s", "%-4s", "%-16s", "%-9s", "%-4s", "%-8s",
};
constexpr const char *const nls_date_lang_abb_mon_fmt_tab_[DV_NLS_DATE_LANG_MAX] = {
    "%-3s", "%-4s", "%-4s", "%-4s", "%-3s", "%-6s", "%-3s",
};
constexpr const char *const nls_date_lang_std_day_fmt_tab_[DV_NLS_DATE_LANG_MAX] = {
    "%-9s", "%-6s", "%-6s", "%-8s", "%-13s", "%-6s", "%-11s",
};
constexpr const char *const nls_date_lang_abb_day_fmt_tab_[DV_NLS_DATE_LANG_MAX] = {
    "%-3s", "%-2s", "%-2s", "%-8s", "%-3s", "%-4s", "%-2s",
};

// clang-format on

namespace {

constexpr nls_pad_widths_t pad_widths_(dv_nls_date_lang_e lang) {
    return {width_of(nls_date_lang_std_mon_fmt_tab_[lang]), width_of(nls_date_lang_abb_mon_fmt_tab_[lang]),
            width_of(nls_date_lang_std_day_fmt_tab_[lang]), width_of(nls_date_lang_abb_day_fmt_tab_[lang])};
}

}  // namespace

constexpr nls_pad_widths_t dv::impl::NLS_PAD_WIDTHS[DV_NLS_DATE_LANG_MAX] = {
    pad_widths_(DV_NLS_DATE_LANG_AMERICAN),
    pad_widths_(DV_NLS_DATE_LANG_KOREAN),
    pad_widths_(DV_NLS_DATE_LANG_JAPANESE),
    pad_widths_(DV_NLS_DATE_LANG_VIETNAMESE),
    pad_widths_(DV_NLS_DATE_LANG_BRAZILIAN_PORTUGUESE),
    pad_widths_(DV_NLS_DATE_LANG_TRADITIONAL_CHINESE),
    pad_widths_(DV_NLS_DATE_LANG_RUSSIAN),
};
