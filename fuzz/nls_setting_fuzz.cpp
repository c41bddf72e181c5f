// Language settings and linguistic sorts. The input is a text.
//
// Properties: a setting is taken or -11035 raised; a sort writes as the one name that it has, which is read
// as the same sort, by itself and as a setting; a language that is read by itself is read as a setting; what
// is refused leaves its value.

#include "dvtypes/nls.h"
#include "fuzz_input.h"
#include "raise.h"

using namespace dv::fuzz;
using dv::test::raise_of;

namespace {

constexpr const char *_sort_names[] = {"BINARY", "EBCDIC", "GERMAN", "FRENCH", "DUTCH"};
constexpr const char *_strengths[] = {"_AI", "_CI", ""};

union value_t {
    dv_nls_date_lang_t lang;
    dv_nls_date_cal_t cal;
    dv_nls_sort_ctx_t sort;
};

int parse_(std::string_view text, dv_nls_param_t &param, value_t &value) {
    const std::vector<char> characters = ended_block(text);
    return raise_of([&] { dv_nls_parse(characters.data(), &param, &value); });
}

bool is_same_(const dv_nls_sort_ctx_t &x, const dv_nls_sort_ctx_t &y) {
    return x.sort == y.sort && x.extended == y.extended && x.strength == y.strength;
}

void sort_has_one_name_(const dv_nls_sort_ctx_t &sort) {
    require(sort.sort >= 0 && sort.sort < DV_NLS_SORT_MAX && sort.strength >= 0 && sort.strength <= 2,
            "a sort", sort.sort);
    require(sort.extended == 0 || _nls_sort_info[sort.sort].extendable == 1, "a sort that takes X",
            sort.sort);
    const std::string name =
        std::string(sort.extended != 0 ? "X" : "") + _sort_names[sort.sort] + _strengths[sort.strength];
    dv_nls_sort_ctx_t again{};
    require(dv_nls_sort_parse(name.c_str(), &again), name.c_str(), sort.sort);
    require(is_same_(sort, again), name.c_str(), again.sort);
    value_t value{};
    dv_nls_param_t param = -1;
    const int code = parse_("nls_sort = " + name, param, value);
    require(code == 0 && param == DV_NLS_PARAM_SORT && is_same_(value.sort, sort), name.c_str(), code);
}

// Setting and bare value differ in white space and length alone; neither is in a name.
void language_is_a_setting_(std::string_view text, bool is_name, dv_nls_date_lang_t lang) {
    if (!is_name) return;
    value_t value{};
    dv_nls_param_t param = -1;
    const int code =
        parse_("NLS_DATE_LANGUAGE=" + std::string(text.data(), std::strlen(text.data())), param, value);
    require(code == 0 && param == DV_NLS_PARAM_DATE_LANG && value.lang == lang, "the language", lang);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    const std::string_view text(reinterpret_cast<const char *>(data), size);
    const std::vector<char> characters = ended_block(text);

    dv_nls_param_t param = DV_NLS_PARAM_MAX;
    value_t value{};
    const int code = parse_(text, param, value);
    require(code == 0 || code == -11035, "a code of settings", code);
    if (code == 0 && param == DV_NLS_PARAM_SORT) sort_has_one_name_(value.sort);
    if (code == 0 && param == DV_NLS_PARAM_DATE_LANG)
        require(dv_nls_date_lang_is_valid(value.lang) == 1, "a language", value.lang);

    dv_nls_sort_ctx_t sort{};
    if (dv_nls_sort_parse(characters.data(), &sort)) sort_has_one_name_(sort);

    dv_nls_date_lang_t lang = 77;
    const bool is_language = dv_nls_date_lang_parse(characters.data(), &lang);
    require(is_language ? dv_nls_date_lang_is_valid(lang) == 1 : lang == 77, "a language or none", lang);
    language_is_a_setting_({characters.data(), characters.size()}, is_language, lang);
    dv_nls_date_cal_t calendar = 77;
    const bool is_calendar = dv_nls_date_cal_parse(characters.data(), &calendar);
    require(calendar == (is_calendar ? DV_NLS_DATE_CAL_GREGORIAN : 77), "a calendar or none", calendar);
    dv_nls_comp_t comparison = 77;
    const bool is_comparison = dv_nls_comp_parse(characters.data(), &comparison);
    require(is_comparison ? comparison == 0 || comparison == 1 : comparison == 77, "a comparison",
            comparison);
    return 0;
}
