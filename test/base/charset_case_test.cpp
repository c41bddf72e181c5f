// Case conversion against the C library's, in every character set.

#include <gtest/gtest.h>
#include <locale.h>
#include <wctype.h>

#include <string>

#include "dvtypes/base.h"

namespace {

std::string convert_(dvstr_charset_e set, dvstr_case_e to, const std::string &text) {
    const charset_info_t &cs = _charset_info[set];
    std::string out(text.size(), '\0');
    const int size = static_cast<int>(text.size());
    out.resize(static_cast<size_t>(cs.to_case(&cs, to, text.data(), size, out.data(), size)));
    return out;
}

std::string bytes_of_(dvstr_charset_e set, wint_t unit) {
    const charset_info_t &cs = _charset_info[set];
    const uint8_t ucs2[2] = {static_cast<uint8_t>(unit >> 8), static_cast<uint8_t>(unit)};
    char out[8];
    return {out, static_cast<size_t>(cs.from_ucs2(&cs, ucs2, 2, out, sizeof out))};
}

// What the contract makes of the C library's mapping: longer or missing characters are no change.
std::string want_(dvstr_charset_e set, const std::string &text, wint_t other) {
    const std::string changed = bytes_of_(set, other);
    return changed == "?" || changed.size() > text.size() ? text : changed;
}

// The letters of other scripts than the tables know, which only UTF-8 holds, stay as they are; a few letters
// of phonetic alphabets, whose capitals no legacy set has, do so everywhere.
bool is_covered_(dvstr_charset_e set, wint_t unit) {
    if (set != DVSTR_CHARSET_UTF8) return unit != 0x192 && unit != 0x251 && unit != 0x261;
    return unit < 0x180 || (unit >= 0x386 && unit < 0x530 && unit != 0x3F3) ||
           (unit >= 0x1E00 && unit < 0x1F00);
}

TEST(CharsetCase, EveryCharacterAgreesWithTheCLibrary) {
    const locale_t locale = newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
    if (locale == nullptr) GTEST_SKIP() << "no UTF-8 locale";
    int changed = 0;
    for (int i = 0; i < DVSTR_CHARSET_MAX; ++i) {
        const auto set = static_cast<dvstr_charset_e>(i);
        for (wint_t unit = 1; unit <= 0xFFFF; ++unit) {
            const std::string text = bytes_of_(set, unit);
            if ((text == "?" && unit != '?') || !is_covered_(set, unit)) continue;
            const std::string lower = want_(set, text, towlower_l(unit, locale));
            const std::string upper = want_(set, text, towupper_l(unit, locale));
            EXPECT_EQ(convert_(set, DVSTR_CASE_LOWER, text), lower)
                << _charset_info[i].name << std::hex << unit;
            EXPECT_EQ(convert_(set, DVSTR_CASE_UPPER, text), upper)
                << _charset_info[i].name << std::hex << unit;
            if (lower != text || upper != text) ++changed;
        }
    }
    EXPECT_GT(changed, 13 * 52);
    freelocale(locale);
}

struct case_case {
    const char *name;
    dvstr_charset_e set;
    dvstr_case_e to;
    const char *text, *want;
};
constexpr case_case _cases[] = {
    {"words start at letters", DVSTR_CHARSET_ASCII, DVSTR_CASE_INITCAP, "the 2ND o'CLOCK-hour",
     "The 2nd O'Clock-Hour"},
    {"faulty bytes end words", DVSTR_CHARSET_UTF8, DVSTR_CASE_INITCAP,
     "ab\xFF"
     "ab",
     "Ab\xFF"
     "Ab"},
    {"Vietnamese, one byte and a mark", DVSTR_CHARSET_MSWIN1258, DVSTR_CASE_UPPER,
     "th\xE1"
     "ng t\xFD",
     "TH\xC1"
     "NG T\xDD"},
    {"composed with its mark", DVSTR_CHARSET_MSWIN1258, DVSTR_CASE_UPPER, "\xE2\xEC", "\xC2\xEC"},
    {"trail byte is an ASCII letter", DVSTR_CHARSET_SJIS, DVSTR_CASE_LOWER,
     "\x83\x41"
     "A",
     "\x83\x41"
     "a"},
    {"full width letter", DVSTR_CHARSET_GBK, DVSTR_CASE_UPPER,
     "\xA3\xE1"
     "a",
     "\xA3\xC1"
     "A"},
    {"no capital in the set", DVSTR_CHARSET_ISO8859_1, DVSTR_CASE_UPPER,
     "\xFF\xB5\xDF"
     "a",
     "\xFF\xB5\xDF"
     "A"},
    {"capital in the set", DVSTR_CHARSET_MSWIN1252, DVSTR_CASE_UPPER, "\xFF", "\x9F"},
    {"hangul carries a word on", DVSTR_CHARSET_EUCKR, DVSTR_CASE_INITCAP,
     "\xB0\xA1"
     "A bC",
     "\xB0\xA1"
     "a Bc"},
};

TEST(CharsetCase, WalksCharactersAndWords) {
    for (const case_case &c : _cases) EXPECT_EQ(convert_(c.set, c.to, c.text), c.want) << c.name;
}

}  // namespace
