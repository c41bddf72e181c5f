// Names of every language, kind, letter case and character set against libc's iconv;
// days by their names.

#include <gtest/gtest.h>
#include <iconv.h>

#include "dvtypes/datetime_fmt.h"
#include "number_support.h"

namespace {

struct kind_t {
    char *(*get)(dt_fmt_parse_ctx_t *, int, int);
    const nls_date_lang_val_t *const *lists;
    int lists_per_language, count;
};
constexpr kind_t _kinds[] = {
    {nls_date_lang_get_std_day, std_day_tab_, 3, 7},
    {nls_date_lang_get_abb_day, abb_day_tab_, 3, 7},
    {nls_date_lang_get_std_month, std_month_tab_, 3, 12},
    {nls_date_lang_get_abb_month, abb_month_tab_, 3, 12},
    {nls_date_lang_get_std_adbc, std_adbc_tab_, 3, 4},
    {nls_date_lang_get_std_ampm, std_ampm_tab_, 3, 4},
    {nls_date_lang_get_rom_month, rm_month_tab_, 0, 12},
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
int found_(const std::string &name, int lang, int set) {
    const dv::test::guarded text(name.size(), name.data());
    int day = 0, size = static_cast<int>(name.size());
    const auto find = [&] { day = dt_fmt_get_day_idx_of_week(text.text(), size, lang, set); };
    return dv::test::raise_of(find) + day;
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

}  // namespace
