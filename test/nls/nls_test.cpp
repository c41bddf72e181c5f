// Settings and their values; names of every language, kind, letter case and character set against libc's
// iconv; days by their names.

#include <gtest/gtest.h>
#include <iconv.h>

#include "dvtypes/datetime_fmt.h"
#include "number_support.h"

namespace {

// The parameter, 9 when it was not set, and the value or, of a text that is refused, "!".
std::string parsed_(const std::string &text) {
    dv_nls_param_t param = DV_NLS_PARAM_MAX;
    dv_nls_sort_ctx_t value{};
    const int code = dv::test::raise_of([&] { dv_nls_parse(text.c_str(), &param, &value); });
    const int shown = value.sort + value.extended * 10 + value.strength * 100;
    return std::to_string(param) + (code == -11035 ? "!" : " " + std::to_string(shown));
}

TEST(NlsSetting, IsTakenWholeAndARefusedValueKeepsItsName) {
    const std::pair<std::string, std::string> cases[] = {
        // clang-format off
        {"nls_sort = xgerman_ai", "5 12"}, {"NLS_SORT=BINARY_CI", "5 100"}, {"NLS_SORT= X Dutch", "5 214"},
        {"NLS_SORT= french _ ci", "5 103"}, {"NLS_SORT=EBCDIC", "5 201"}, {"NLS_SORT=XEBCDIC", "5!"},
        {"NLS_SORT=DUTCH_CI_AI", "5!"}, {"NLS_SORT=DUTCH_", "5!"}, {"NLS_SORT=X", "5!"}, {"NLS_SORT", "5!"},
        {"NLS_SORT=DUTCH" + std::string(242, ' '), "5 204"}, {"NLS_SORT=DUTCH" + std::string(243, ' '), "9!"},
        {"\f\r\n\tnls_Calendar \v=\n gregorian\v\f", "4 0"}, {"\vNLS_CALENDAR=GREGORIAN", "9!"},
        {"NLS_DATE_LANGUAGE =  brazilian portuguese", "3 4"}, {"NLS_DATE_LANGUAGE=AMERICA", "3!"},
        {"NLS_DATE_LANGUAGE=KOREAN=X", "9!"}, {"NLS_DATE_FORMAT=YYYY", "9!"}, {" \v ", "9!"},
        // clang-format on
    };
    for (const auto &[text, want] : cases) EXPECT_EQ(parsed_(text), want) << testing::PrintToString(text);
}

TEST(NlsSetting, BareValuesAreNotTrimmed) {
    int32_t value = -1;
    const dv::test::assertion_watch watch;
    for (auto *parse : {dv_nls_date_lang_parse, dv_nls_date_cal_parse, dv_nls_comp_parse}) {
        EXPECT_FALSE(parse("GREGORIAN ", &value) || parse("BINAR", &value) || parse(nullptr, &value));
        EXPECT_TRUE(parse("russian", &value) || parse("linguistiC", &value) || parse("Gregorian", &value));
    }
    EXPECT_TRUE(value == DV_NLS_COMP_LINGUISTIC && watch.count() == 3) << value;
    dv_nls_sort_ctx_t sort;
    const std::string text = "XDUTCH" + std::string(251, ' ');
    EXPECT_TRUE(dv_nls_sort_parse(text.c_str(), &sort) && !dv_nls_sort_parse((text + " ").c_str(), &sort));
}

struct kind_t {
    char *(*get)(dt_fmt_parse_ctx_t *, int, int);
    const nls_date_lang_val_t *const *lists;
    int lists_per_language, count;
    const char *shared;  // by slot: the case whose list it has, or "f": the list of the row before
};
constexpr kind_t _kinds[] = {
    {nls_date_lang_get_std_day, std_day_tab_, 3, 7, "uliuuuuuuuliuliuuuuli"},
    {nls_date_lang_get_abb_day, abb_day_tab_, 3, 7, "uliuuuuuuuliulifffuli"},
    {nls_date_lang_get_std_month, std_month_tab_, 3, 12, "uliuuuuuuuliuliuuuuli"},
    {nls_date_lang_get_abb_month, abb_month_tab_, 3, 12, "uliffffffuliulifffuli"},
    {nls_date_lang_get_std_adbc, std_adbc_tab_, 3, 4, "uliuuuuuuuuiuluuuuuli"},
    {nls_date_lang_get_std_ampm, std_ampm_tab_, 3, 4, "uliuuuuuuuliuliuuuuli"},
    {nls_date_lang_get_rom_month, rm_month_tab_, 0, 12, "uliuliuliuliuliuliuli"},
};
constexpr const char *_iconv_names[DVSTR_CHARSET_MAX] = {
    "ANSI_X3.4-1968", "EUC-KR",     "UHC",    "UTF-8",  "CP932",  "EUC-JP", "CP950",
    "CP936",          "ISO-8859-1", "CP1252", "CP1251", "KOI8-R", "CP1258",
};

// A stored name, each character by a converter opened for it alone, "?" when the set does not have it.
std::string encoded_(int set, nls_date_lang_val_t name) {
    std::string text;
    for (int i = 0; i < name.len; i += 2) {
        char dst[8], *in = reinterpret_cast<char *>(name.val + i), *out = dst;
        size_t in_left = 2, out_left = sizeof dst;
        const iconv_t converter = iconv_open(_iconv_names[set], "UCS-2BE");
        const bool is_in = iconv(converter, &in, &in_left, &out, &out_left) == 0;
        text += iconv_close(converter) == 0 && is_in ? std::string(dst, out) : "?";
    }
    return text;
}

// What a fetch leaves in a scratch buffer of bytes 'Z', up to the last byte that it changed.
std::string fetched_(const kind_t &kind, int lang, int set, int idx, int kase) {
    const dt_fmt_ctx_t fmt_ctx = {0, nullptr, 0, set, {0, 0}, {lang, 0}};
    dt_fmt_parse_ctx_t parse_ctx;
    memset(&parse_ctx, 'Z', sizeof parse_ctx);
    parse_ctx.fmt_ctx = &fmt_ctx;
    const std::string bytes(kind.get(&parse_ctx, idx, kase), sizeof parse_ctx.tmp_buf);
    return bytes.substr(0, bytes.find_last_not_of('Z') + 1);
}

// The weekday, or the code raised. No NUL stands behind the text.
int found_(const std::string &name, int lang, int set, dv_error_t *error = nullptr) {
    const dv::test::guarded text(name.size(), name.data());
    int day = 0, size = static_cast<int>(name.size());
    const auto find = [&] { day = dt_fmt_get_day_idx_of_week(text.text(), size, lang, set); };
    return dv::test::raise_of(find, error) + day;
}

// In any case. Names with letters that the set lacks may be equal, and the first is found.
void expect_found_(std::string name, int lang, int set, int day, bool is_whole) {
    for (const auto to : {DVSTR_CASE_LOWER, DVSTR_CASE_UPPER, DVSTR_CASE_INITCAP}) {
        const int size = static_cast<int>(name.size());
        _charset_info[set].to_case(&_charset_info[set], to, name.data(), size, name.data(), size);
        const int found = found_(name, lang, set);
        ASSERT_TRUE(found >= 0 && (is_whole ? found == day : found <= day)) << name << " " << found;
    }
}

void expect_name_(const kind_t &kind, int i) {
    const int lang = i / kind.count / 3, kase = i / kind.count % 3, idx = i % kind.count;
    const nls_date_lang_val_t *const *const lists = kind.lists + lang * kind.lists_per_language;
    const bool is_full = &kind != _kinds && lists[kase] == (&kind)[-1].lists[lang * 3 + kase];
    const char slot = is_full ? 'f' : "uli"[std::find(lists, lists + kase, lists[kase]) - lists];
    ASSERT_EQ(slot, kind.shared[lang * 3 + kase]) << lang << kase;
    const auto faults = std::ranges::count(encoded_(DVSTR_CHARSET_UTF8, lists[kase][idx]), '?');
    for (int set = 0; set < DVSTR_CHARSET_MAX; ++set) {
        if (!dv_charset_is_usable(set)) continue;
        const std::string want = encoded_(set, lists[kase][idx]);
        ASSERT_EQ(fetched_(kind, lang, set, idx, kase), want + '\0') << _iconv_names[set];
        if (kind.count == 7) expect_found_(want, lang, set, idx, std::ranges::count(want, '?') == faults);
    }
}

TEST(NlsName, IsTheStoredTextInEveryCharacterSetAndFound) {
    for (const kind_t &kind : _kinds) {
        for (int i = 0; i < NLS_DATE_LANG_LISTS * kind.count; ++i) expect_name_(kind, i);
    }
}

TEST(NlsName, WhatIsOutOfRangeIsEmpty) {
    for (const int bad : {INT32_MIN, -1, 13, INT32_MAX}) {
        const dv::test::assertion_watch watch;
        for (const kind_t &kind : _kinds) {
            EXPECT_EQ(fetched_(kind, bad, 3, 0, 0) + fetched_(kind, 1, bad, 0, 0), std::string(2, '\0'));
            EXPECT_EQ(fetched_(kind, 1, 3, bad, 0) + fetched_(kind, 1, 3, 0, bad), std::string(2, '\0'));
        }
        EXPECT_EQ(watch.count(), 2 * std::size(_kinds)) << bad;
    }
}

TEST(DayName, OfNoDayIsRaisedWithItsText) {
    const dv::test::assertion_watch watch;
    dv_error_t error;
    for (const std::string name : {"", "0", "8", "1 ", "11", "MOND\xFF", "MONDAYS", "\xC5\xBFUNDAY"}) {
        ASSERT_EQ(found_(name + std::string(name == "8" ? 99 : 0, 'X'), 0, 3, &error), -5113) << name;
        EXPECT_EQ(error.args[1], name + std::string(name == "8" ? 62 : 0, 'X'));
        EXPECT_EQ(error.args[0] + std::string(error.args[2]), "day_nameInconsistent with NLS_DATE_LANGUAGE");
    }
    for (int day = 1; day <= 7; ++day) EXPECT_EQ(found_(std::to_string(day), 1, 3), (day + 5) % 7);
    for (const int bad : {-1, 13}) EXPECT_EQ(found_("1", bad, 3) + found_("1", 0, bad), -5113 * 2);
    EXPECT_EQ(watch.count(), 2U);
}

}  // namespace
