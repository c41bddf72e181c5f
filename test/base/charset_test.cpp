// Character sets against libc's iconv, their output limits, and hostile bytes.

#include <gtest/gtest.h>
#include <iconv.h>

#include <algorithm>
#include <cstring>
#include <random>
#include <string>
#include <thread>
#include <vector>

#include "dvtypes/base.h"

namespace {

using bytes_t = std::string;

struct set_case {
    dvstr_charset_e set;
    const char *iconv_name;
};
constexpr set_case _sets[] = {
    {DVSTR_CHARSET_ASCII, "ANSI_X3.4-1968"}, {DVSTR_CHARSET_EUCKR, "EUC-KR"},
    {DVSTR_CHARSET_MSWIN949, "UHC"},         {DVSTR_CHARSET_UTF8, "UTF-8"},
    {DVSTR_CHARSET_SJIS, "CP932"},           {DVSTR_CHARSET_EUCJP, "EUC-JP"},
    {DVSTR_CHARSET_BIG5, "CP950"},           {DVSTR_CHARSET_GBK, "CP936"},
    {DVSTR_CHARSET_ISO8859_1, "ISO-8859-1"}, {DVSTR_CHARSET_MSWIN1252, "CP1252"},
    {DVSTR_CHARSET_MSWIN1251, "CP1251"},     {DVSTR_CHARSET_KOI8R, "KOI8-R"},
    {DVSTR_CHARSET_MSWIN1258, "CP1258"},
};

bytes_t ucs2_of_(unsigned long unit) {
    return {static_cast<char>(unit >> 8), static_cast<char>(unit & 0xFF)};
}

bytes_t hex_(const bytes_t &bytes) {
    bytes_t text;
    for (const char c : bytes) {
        char digits[4];
        std::snprintf(digits, sizeof digits, "%02x ", static_cast<uchar>(c));
        text += digits;
    }
    return text;
}

// A whole text by a converter opened for it alone; "?" when any part is not convertible.
bytes_t by_iconv_(const char *to, const char *from, bytes_t src) {
    const iconv_t converter = iconv_open(to, from);
    EXPECT_NE(converter, reinterpret_cast<iconv_t>(-1))  // NOLINT(performance-no-int-to-ptr)
        << from << " to " << to;
    bytes_t dst(src.size() * 4 + 8, '\0');
    char *in = src.data();
    char *out = dst.data();
    size_t in_left = src.size();
    size_t out_left = dst.size();
    const bool is_good = iconv(converter, &in, &in_left, &out, &out_left) == 0 && in_left == 0 &&
                         iconv(converter, nullptr, nullptr, &out, &out_left) == 0;
    iconv_close(converter);
    return is_good ? dst.substr(0, dst.size() - out_left) : "?";
}

// Runs one entry of the set with guard bytes around an output of the given size.
enum direction_e { FROM_UCS2, TO_UCS2, LOWER, UPPER, INITCAP };

bytes_t run_(dvstr_charset_e set, direction_e direction, const bytes_t &src, int dst_size) {
    constexpr size_t guard = 8;
    const charset_info_t &cs = _charset_info[set];
    bytes_t buffer(static_cast<size_t>(dst_size) + 2 * guard, '\x5A');
    char *const dst = buffer.data() + guard;
    const int size = static_cast<int>(src.size());
    int written = 0;
    if (direction == FROM_UCS2) {
        written = cs.from_ucs2(&cs, reinterpret_cast<const uint8_t *>(src.data()), size, dst, dst_size);
    } else if (direction == TO_UCS2) {
        written = cs.to_ucs2(&cs, src.data(), size, reinterpret_cast<uint8_t *>(dst), dst_size);
    } else {
        written =
            cs.to_case(&cs, static_cast<dvstr_case_e>(direction - LOWER), src.data(), size, dst, dst_size);
    }
    EXPECT_GE(written, 0);
    EXPECT_LE(written, dst_size);
    const size_t tail = guard + static_cast<size_t>(written);
    EXPECT_EQ(buffer.substr(0, guard), bytes_t(guard, '\x5A'));
    EXPECT_EQ(buffer.substr(tail), bytes_t(buffer.size() - tail, '\x5A')) << cs.name << " " << hex_(src);
    return buffer.substr(guard, static_cast<size_t>(written));
}

bytes_t run_whole_(dvstr_charset_e set, direction_e direction, const bytes_t &src) {
    return run_(set, direction, src, static_cast<int>(src.size()) * 4);
}

bytes_t random_units_(std::mt19937 &random, size_t count) {
    constexpr unsigned starts[] = {0x20,  0x80,   0x100,  0x1E00, 0x300, 0x3B0,
                                   0x410, 0xAC00, 0x4E00, 0xFF00, 0xD800};
    bytes_t text;
    for (size_t i = 0; i < count; ++i)
        text += ucs2_of_(starts[random() % std::size(starts)] + random() % 0x60);
    return text;
}

bytes_t random_bytes_(std::mt19937 &random, size_t count) {
    constexpr uchar nasty[] = {0x41, 0x61, 0x5C, 0x7F, 0x80, 0x81, 0x8E, 0x8F, 0xA0, 0xA1, 0xBF,
                               0xC2, 0xCC, 0xD2, 0xE0, 0xED, 0xF0, 0xF4, 0xFD, 0xFE, 0xFF};
    bytes_t text;
    for (size_t i = 0; i < count; ++i) {
        const unsigned long byte = random() % 2 == 0 ? nasty[random() % std::size(nasty)] : random() % 256;
        text += static_cast<char>(byte);
    }
    return text;
}

TEST(Charset, EveryUnitAgreesWithIconvBothWays) {
    for (const set_case &c : _sets) {
        SCOPED_TRACE(c.iconv_name);
        EXPECT_GE(static_cast<int>(by_iconv_(c.iconv_name, "UCS-2BE", ucs2_of_('A')).size()), 1);
        for (unsigned unit = 0; unit <= 0xFFFF; ++unit) {
            const bytes_t want = by_iconv_(c.iconv_name, "UCS-2BE", ucs2_of_(unit));
            const bytes_t bytes = run_whole_(c.set, FROM_UCS2, ucs2_of_(unit));
            ASSERT_EQ(bytes, want) << std::hex << unit << ": " << hex_(bytes) << "for " << hex_(want);
            ASSERT_LE(bytes.size(), static_cast<size_t>(_charset_info[c.set].max_char_len));
            if (want == "?") continue;
            const bytes_t back = run_whole_(c.set, TO_UCS2, bytes);
            const bytes_t want_back = by_iconv_("UCS-2BE", c.iconv_name, bytes);
            ASSERT_EQ(back, want_back) << std::hex << unit << ": " << hex_(back) << "for " << hex_(want_back);
        }
    }
}

TEST(Charset, EveryPairOfBytesAgreesWithIconv) {
    for (const set_case &c : _sets) {
        SCOPED_TRACE(c.iconv_name);
        for (unsigned pair = 0; pair <= 0xFFFF; ++pair) {
            const bytes_t want = by_iconv_("UCS-2BE", c.iconv_name, ucs2_of_(pair));
            const bytes_t got = run_whole_(c.set, TO_UCS2, ucs2_of_(pair));
            if (want == "?") {
                ASSERT_NE(got.find(bytes_t("\0?", 2)), bytes_t::npos)
                    << std::hex << pair << ": " << hex_(got);
            } else {
                ASSERT_EQ(got, want) << std::hex << pair << ": " << hex_(got) << "for " << hex_(want);
            }
        }
    }
}

TEST(Charset, WholeTextsAgreeWithIconv) {
    std::mt19937 random(2);
    for (const set_case &c : _sets) {
        for (int i = 0; i < 300; ++i) {
            const bytes_t text = run_whole_(c.set, FROM_UCS2, random_units_(random, 40));
            EXPECT_EQ(run_whole_(c.set, TO_UCS2, text), by_iconv_("UCS-2BE", c.iconv_name, text))
                << c.iconv_name << " " << hex_(text);
        }
    }
}

// At every output size the result is the longest run of whole characters that fits.
void expect_whole_characters_(dvstr_charset_e set, direction_e direction, const bytes_t &src) {
    const bytes_t whole = run_whole_(set, direction, src);
    const size_t longest = direction == TO_UCS2 ? 2 : static_cast<size_t>(_charset_info[set].max_char_len);
    size_t last = 0;
    for (size_t size = 0; size <= whole.size(); ++size) {
        const bytes_t part = run_(set, direction, src, static_cast<int>(size));
        ASSERT_EQ(part, whole.substr(0, part.size())) << _charset_info[set].name << " " << hex_(src);
        ASSERT_GE(part.size(), last);
        ASSERT_GT(part.size() + longest, size) << _charset_info[set].name << " " << hex_(src);
        if (direction == FROM_UCS2) {
            const bytes_t units = run_whole_(set, TO_UCS2, part);
            ASSERT_EQ(run_whole_(set, FROM_UCS2, units), part) << "split: " << hex_(part);
        }
        last = part.size();
    }
    EXPECT_EQ(last, whole.size());
}

TEST(Charset, OutputLimitNeverSplitsACharacter) {
    std::mt19937 random(3);
    for (const set_case &c : _sets) {
        for (int i = 0; i < 40; ++i) {
            const bytes_t units = random_units_(random, 20);
            const bytes_t text = run_whole_(c.set, FROM_UCS2, units);
            // Vietnamese letters that iconv composes differently from how it takes them apart do not return.
            const bool is_stable = run_whole_(c.set, FROM_UCS2, run_whole_(c.set, TO_UCS2, text)) == text;
            if (is_stable) expect_whole_characters_(c.set, FROM_UCS2, units);
            for (const direction_e direction : {TO_UCS2, LOWER, UPPER, INITCAP}) {
                expect_whole_characters_(c.set, direction, text);
            }
        }
    }
}

TEST(Charset, HostileBytesKeepEveryBound) {
    std::mt19937 random(4);
    for (const set_case &c : _sets) {
        for (int i = 0; i < 400; ++i) {
            const bytes_t text = random_bytes_(random, random() % 24);
            EXPECT_EQ(run_whole_(c.set, TO_UCS2, text).size() % 2, 0U);
            run_whole_(c.set, FROM_UCS2, text);
            for (const direction_e direction : {LOWER, UPPER, INITCAP}) {
                const bytes_t changed = run_whole_(c.set, direction, text);
                EXPECT_LE(changed.size(), text.size());
                expect_whole_characters_(c.set, direction, text);

                bytes_t in_place = text;
                const charset_info_t &cs = _charset_info[c.set];
                const int size = static_cast<int>(text.size());
                const int written = cs.to_case(&cs, static_cast<dvstr_case_e>(direction - LOWER),
                                               in_place.data(), size, in_place.data(), size);
                EXPECT_EQ(in_place.substr(0, static_cast<size_t>(written)), changed) << cs.name << hex_(text);
            }
        }
    }
}

struct malformed_case {
    dvstr_charset_e set;
    const char *name, *bytes, *want;
};
constexpr malformed_case _malformed_cases[] = {
    {DVSTR_CHARSET_UTF8, "overlong slash",
     "a\xC0\xAF"
     "b",
     "a??b"},
    {DVSTR_CHARSET_UTF8, "surrogate",
     "\xED\xA0\x80"
     "b",
     "???b"},
    {DVSTR_CHARSET_UTF8, "beyond U+FFFF is one character",
     "\xF0\x9F\x98\x80"
     "b",
     "?b"},
    {DVSTR_CHARSET_UTF8, "cut sequence is one fault",
     "\xF0\x9F\x98"
     "b",
     "?b"},
    {DVSTR_CHARSET_UTF8, "cut at the end", "a\xE2\x82", "a?"},
    {DVSTR_CHARSET_EUCKR, "lead byte does not swallow ASCII",
     "\xB0"
     "b",
     "?b"},
    {DVSTR_CHARSET_EUCKR, "unassigned pair is one fault",
     "\xC9\xA1"
     "b",
     "?b"},
    {DVSTR_CHARSET_EUCJP, "cut triple is one fault",
     "\x8F\xB0"
     "b",
     "?b"},
    {DVSTR_CHARSET_ASCII, "byte above 127",
     "a\xE9"
     "b",
     "a?b"},
};

TEST(Charset, MalformedBytesBecomeQuestionMarks) {
    for (const malformed_case &c : _malformed_cases) {
        bytes_t want;
        for (const char *p = c.want; *p != '\0'; ++p) want += ucs2_of_(static_cast<uchar>(*p));
        EXPECT_EQ(run_whole_(c.set, TO_UCS2, c.bytes), want) << _charset_info[c.set].name << ": " << c.name;
    }
}

TEST(Charset, ManyThreadsConvertAtOnce) {
    std::mt19937 random(5);
    const bytes_t units = random_units_(random, 200);
    std::vector<std::vector<bytes_t>> results(8);
    std::vector<std::thread> threads;
    threads.reserve(results.size());
    for (auto &result : results) {
        threads.emplace_back([&] {
            for (const set_case &c : _sets) result.push_back(run_whole_(c.set, FROM_UCS2, units));
        });
    }
    for (std::thread &thread : threads) thread.join();
    for (const auto &result : results) EXPECT_EQ(result, results[0]);
}

}  // namespace
