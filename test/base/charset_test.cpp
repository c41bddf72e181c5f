// Character sets against libc: iconv, towlower, towupper, iswalnum; output limits, hostile bytes.

#include <gtest/gtest.h>
#include <iconv.h>
#include <locale.h>
#include <wctype.h>

#include <algorithm>
#include <random>
#include <string>
#include <thread>

#include "raise.h"

namespace {

using dv::test::raise_of;

using bytes_t = std::string;

constexpr const char *_iconv_names[DVSTR_CHARSET_MAX] = {
    "ANSI_X3.4-1968", "EUC-KR",     "UHC",    "UTF-8",  "CP932",  "EUC-JP", "CP950",
    "CP936",          "ISO-8859-1", "CP1252", "CP1251", "KOI8-R", "CP1258",
};

const locale_t _locale = newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);

bytes_t pair_(unsigned long unit) { return {static_cast<char>(unit >> 8), static_cast<char>(unit)}; }

std::string show_(int set, const bytes_t &s) { return _charset_info[set].name + testing::PrintToString(s); }

// A whole text by a converter opened for it alone; "?" when any part is not convertible.
bytes_t by_iconv_(const char *to, const char *from, bytes_t src) {
    const iconv_t converter = iconv_open(to, from);
    bytes_t dst(src.size() * 4 + 8, '\0');
    char *in = src.data();
    char *out = dst.data();
    size_t in_left = src.size();
    size_t out_left = dst.size();
    const bool is_good = iconv(converter, &in, &in_left, &out, &out_left) == 0 && in_left == 0 &&
                         iconv(converter, nullptr, nullptr, &out, &out_left) == 0;
    EXPECT_EQ(iconv_close(converter), 0) << from << " to " << to;
    return is_good ? dst.substr(0, dst.size() - out_left) : "?";
}

enum direction_e { LOWER, UPPER, INITCAP, FROM_UCS2, TO_UCS2 };

int call_(int set, direction_e direction, const bytes_t &src, char *dst, int room) {
    const charset_info_t &cs = _charset_info[set];
    const int size = static_cast<int>(src.size());
    if (direction == TO_UCS2)
        return cs.to_ucs2(&cs, src.data(), size, reinterpret_cast<uint8_t *>(dst), room);
    if (direction == FROM_UCS2)
        return cs.from_ucs2(&cs, reinterpret_cast<const uint8_t *>(src.data()), size, dst, room);
    return cs.to_case(&cs, static_cast<dvstr_case_e>(direction), src.data(), size, dst, room);
}

// The output, among bytes that must stay as they are.
bytes_t run_(int set, direction_e direction, const bytes_t &src, size_t room = 128) {
    bytes_t buffer(room + 16, 'Z');
    const auto written = static_cast<size_t>(call_(set, direction, src, &buffer[8], static_cast<int>(room)));
    bytes_t output = buffer.substr(8, std::min(written, room));
    buffer.replace(8, output.size(), output.size(), 'Z');
    EXPECT_EQ(buffer, bytes_t(room + 16, 'Z')) << written << " bytes of " << show_(set, src);
    return output;
}

void expect_iconv_(int set, unsigned unit) {
    const bytes_t bytes = run_(set, FROM_UCS2, pair_(unit));
    ASSERT_EQ(bytes, by_iconv_(_iconv_names[set], "UCS-2BE", pair_(unit))) << show_(set, pair_(unit));
    ASSERT_LE(bytes.size(), static_cast<size_t>(_charset_info[set].max_char_len));
    for (const bytes_t &text : {bytes, pair_(unit)}) {
        const bytes_t want = by_iconv_("UCS-2BE", _iconv_names[set], text);
        const bytes_t got = run_(set, TO_UCS2, text);
        const bool has_fault = got.find(pair_('?')) != bytes_t::npos;
        ASSERT_TRUE(got == want || (want == "?" && has_fault)) << show_(set, text) << show_(set, got);
    }
}

struct unit_range {
    wint_t first, last;
};

template <size_t N>
bool is_in_(const unit_range (&ranges)[N], wint_t unit) {
    return std::any_of(ranges, ranges + N, [=](auto &r) { return unit >= r.first && unit <= r.last; });
}

// Cased letters that no legacy set has (phonetic ones, scripts): they stay as they are.
constexpr unit_range _without_case[] = {
    {0x180, 0x1CC},   {0x1DD, 0x1DD},   {0x1F1, 0x1F3},   {0x1F6, 0x1F7},   {0x220, 0x220},
    {0x23B, 0x345},   {0x530, 0x1DFF},  {0x1F00, 0x1FFF}, {0x2132, 0x2132}, {0x214E, 0x214E},
    {0x2183, 0x2184}, {0x2C00, 0x2DFF}, {0xA640, 0xABFF},
};

// A character whose other case is longer or not in the set stays as it is, too; so do everywhere a few
// letters.
void expect_case_(int set, wint_t unit) {
    const bool may_be_kept = set == DVSTR_CHARSET_UTF8 && is_in_(_without_case, unit);
    if (unit == 0x192 || unit == 0x251 || unit == 0x261 || (unit == 0x3F3 && set != DVSTR_CHARSET_UTF8))
        return;
    const bytes_t text = run_(set, FROM_UCS2, pair_(unit));
    for (const direction_e to : {LOWER, UPPER}) {
        const wint_t mapped = to == LOWER ? towlower_l(unit, _locale) : towupper_l(unit, _locale);
        const bytes_t other = run_(set, FROM_UCS2, pair_(mapped));
        const bool is_kept = text == "?" || other == "?" || other.size() > text.size();
        const bytes_t got = run_(set, to, text);
        ASSERT_TRUE(got == (is_kept ? text : other) || (may_be_kept && got == text)) << show_(set, text);
    }
}

// Words are of letters and digits; modifiers and letterlike symbols are none, and in blocks of scripts every
// unit is taken for a letter.
void expect_word_(wint_t unit) {
    constexpr unit_range _symbols[] = {{0x2C6, 0x2EE}, {0x2102, 0x214E}, {0x2E2F, 0x2E2F}, {0x3021, 0x303C}};
    const bool is_greek_symbol = unit >= 0x370 && unit < 0x483 && iswpunct_l(unit, _locale) != 0;
    const bool is_of_script = (unit >= 0x300 && unit < 0x2000 && !is_greek_symbol) || unit >= 0x2C00;
    const bytes_t text = run_(DVSTR_CHARSET_UTF8, FROM_UCS2, pair_(unit)) + "A";
    const bool is_word = run_(DVSTR_CHARSET_UTF8, INITCAP, text).back() == 'a';
    if (iswalnum_l(unit, _locale) != 0) {
        ASSERT_TRUE(is_word || is_in_(_symbols, unit)) << unit;
    } else {
        ASSERT_TRUE(!is_word || is_of_script) << unit;
    }
}

TEST(Charset, WordsAreOfLettersAndDigits) {
    for (unsigned unit = 1; unit < 0x10000 && !HasFailure(); ++unit) expect_word_(unit);
}

// Units and pairs of bytes alike, while another thread meets the same empty tables.
TEST(Charset, EveryCharacterAgreesWithTheCLibrary) {
    const auto check_every = [](int step) {
        for (int i = 0; i < DVSTR_CHARSET_MAX * 0x10000 && !testing::Test::HasFailure(); i += step) {
            if (!dv_charset_is_usable(i / 0x10000)) continue;
            expect_iconv_(i / 0x10000, static_cast<unsigned>(i % 0x10000));
            expect_case_(i / 0x10000, static_cast<unsigned>(i % 0x10000));
        }
    };
    const std::jthread other(check_every, 64);
    check_every(1);
}

// At every output size the result is the longest run of whole characters that fits. Results that are a text
// decode as far as they go; a broken text may read differently when it is cut.
void expect_whole_characters_(int set, direction_e direction, const bytes_t &src, bool is_text) {
    const bytes_t whole = run_(set, direction, src);
    const bytes_t units = run_(set, TO_UCS2, whole);
    const size_t longest = direction == TO_UCS2 ? 2 : static_cast<size_t>(_charset_info[set].max_char_len);
    for (size_t size = 0; size <= whole.size(); ++size) {
        const bytes_t part = run_(set, direction, src, size);
        ASSERT_EQ(part, whole.substr(0, part.size())) << show_(set, src);
        ASSERT_GT(part.size() + (size < whole.size() ? longest : 1), size) << show_(set, src);
        ASSERT_TRUE(!is_text || units.starts_with(run_(set, TO_UCS2, part))) << show_(set, part);
    }
}

TEST(Charset, OutputLimitNeverSplitsACharacter) {
    std::mt19937 random(4);
    for (int i = 0; i < DVSTR_CHARSET_MAX * 200; ++i) {
        const int set = i % DVSTR_CHARSET_MAX;
        if (!dv_charset_is_usable(set)) continue;
        bytes_t units;
        while (units.size() < 40) units += pair_(random() % (0x100U << random() % 9));
        const bytes_t text = run_(set, FROM_UCS2, units);
        bytes_t hostile = text;
        for (char &byte : hostile) byte = random() % 4 != 0 ? byte : static_cast<char>(random());
        bytes_t in_place = hostile;
        const int written = call_(set, UPPER, in_place, in_place.data(), static_cast<int>(hostile.size()));
        EXPECT_EQ(in_place.substr(0, static_cast<size_t>(written)), run_(set, UPPER, hostile));
        expect_whole_characters_(set, FROM_UCS2, units, /*is_text=*/true);
        for (const direction_e direction : {LOWER, UPPER, INITCAP, TO_UCS2}) {
            expect_whole_characters_(set, direction, text, /*is_text=*/direction != TO_UCS2);
            expect_whole_characters_(set, direction, hostile, /*is_text=*/false);
        }
    }
}

TEST(Charset, FaultsBecomeQuestionMarksAndWordsBeginWithCapitals) {
    const std::tuple<int, direction_e, bytes_t, bytes_t> cases[] = {
        {DVSTR_CHARSET_UTF8, TO_UCS2, "\xC0\xAFz\xED\xA0\x80", "??z???"},  // overlong, surrogate
        {DVSTR_CHARSET_UTF8, TO_UCS2, "\xF0\x9F\x98\x80\xF0\x9F\x98z\xE2\x82", "??z?"},  // > U+FFFF, cut
        {DVSTR_CHARSET_EUCKR, TO_UCS2, "\xB0z\xC9\xA1z", "?z?z"},  // no trail byte, unassigned pair
        {DVSTR_CHARSET_EUCJP, TO_UCS2, "\x8F\xB0z", "?z"},         // cut triple
        {DVSTR_CHARSET_UTF8, INITCAP, "2ND o'CLOCK-yz\xFFyz", "2nd O'Clock-Yz\xFFYz"},
        {DVSTR_CHARSET_EUCKR, INITCAP, "\xB0\xA1Y yZ", "\xB0\xA1y Yz"},  // hangul are letters
        {DVSTR_CHARSET_SJIS, TO_UCS2, "\x5C\x7E", "\\~"},
        {DVSTR_CHARSET_SJIS, FROM_UCS2, pair_(0xA5) + pair_(0x203E), "\x5C\x7E"},
    };
    for (const auto &[set, direction, text, want] : cases) {
        if (!dv_charset_is_usable(set)) continue;
        const bytes_t got = run_(set, direction, text);
        EXPECT_EQ(direction == TO_UCS2 ? run_(DVSTR_CHARSET_ASCII, FROM_UCS2, got) : got, want)
            << show_(set, text);
    }
}

bool has_converter_(const char *to, const char *from) {
    const iconv_t none = reinterpret_cast<iconv_t>(-1);  // NOLINT(performance-no-int-to-ptr)
    const iconv_t converter = iconv_open(to, from);
    return converter != none && iconv_close(converter) == 0;
}

// The code raised by a conversion of one character outside ASCII behind "a", and the set that it names.
std::pair<int, bytes_t> error_of_(int set, direction_e direction) {
    const bytes_t text = direction == FROM_UCS2 ? pair_('a') + pair_(0xC0) : "a\xC0";
    char dst[16];
    dv_error_t error{};
    const int code = raise_of([&] { call_(set, direction, text, dst, sizeof dst); }, &error);
    return {code, error.args[0]};
}

// Every set is usable on most machines, two on those without the modules of iconv: the test charset_missing
// of CTest is such a one.
TEST(Charset, ASetWithoutConverterIsUsableForAsciiAlone) {
    const char *const path = getenv("GCONV_PATH");
    const bool is_missing = path != nullptr && bytes_t(path).ends_with("without_converters");
    int usable = 0;
    for (int set = 0; set < DVSTR_CHARSET_MAX; ++set) {
        const char *const name = _iconv_names[set];
        const bool is_usable = has_converter_(name, "UCS-2BE") && has_converter_("UCS-2BE", name);
        EXPECT_EQ(dv_charset_is_usable(set) != 0, is_usable) << name;
        usable += is_usable;
        EXPECT_EQ(run_(set, TO_UCS2, "a~"), pair_('a') + pair_('~')) << name;
        EXPECT_EQ(run_(set, FROM_UCS2, pair_('a') + pair_('~')), "a~") << name;
        EXPECT_EQ(run_(set, UPPER, "a~"), "A~") << name;
        for (const direction_e direction : {LOWER, UPPER, INITCAP, FROM_UCS2, TO_UCS2}) {
            const auto want =
                is_usable ? std::pair(0, bytes_t()) : std::pair<int, bytes_t>(-2, _charset_info[set].name);
            EXPECT_EQ(error_of_(set, direction), want) << name << " " << direction;
        }
    }
    EXPECT_EQ(usable, is_missing ? 2 : DVSTR_CHARSET_MAX);
    EXPECT_EQ(dv_charset_is_usable(-1) + dv_charset_is_usable(DVSTR_CHARSET_MAX), 0);
}

}  // namespace
