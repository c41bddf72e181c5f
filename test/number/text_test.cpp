// NUMBER and text: reading against the twin, every buffer size of the writer against a model of its choice.

#include <gtest/gtest.h>

#include <memory>

#include "number_support.h"

using namespace dv::test;

namespace {

using reader_t = void(number_t *, int, const char *, const char *);

// Reads from a block of exactly that size, so that a sanitizer sees a read behind it.
outcome_t read_(reader_t *reader, std::string_view text, bool with_length) {
    const auto block = std::make_unique<char[]>(text.size() + (with_length ? 0 : 1));
    std::copy(text.begin(), text.end(), block.get());
    const char *const begin = block.get();
    const int length = with_length ? static_cast<int>(text.size()) : 0;
    return ours(number_t{}, [&](number_t *r) { reader(r, length, begin, nullptr); });
}

void expect_reading_(std::string_view text) {
    const outcome_t want = theirs([&] { return twin_read(text); });
    const outcome_t want_nt = theirs([&] { return twin_read_nt(text); });
    ASSERT_EQ(read_(number_from_str, text, false), want) << "'" << text << "'";
    ASSERT_EQ(read_(number_from_str_nt, text, false), want_nt) << "nt '" << text << "'";
    if (text.empty()) return;  // a length of 0 means NUL ended
    ASSERT_EQ(read_(number_from_str, text, true), want) << "'" << text << "'";
    ASSERT_EQ(read_(number_from_str_nt, text, true), want_nt) << "nt '" << text << "'";
}

std::string repeat_(std::string_view piece, int times) {
    std::string text;
    for (int i = 0; i < times; ++i) text += piece;
    return text;
}

struct reading_t {
    std::string text;
    const char *want;  // scientific form, or nullptr with a code
    int code = 0;
};

TEST(NumberFromText, ReadsWhatIsDocumented) {
    const reading_t readings[] = {
        {"  -0012.3400  ", "-1.234E+01"},
        {"0000", "0E+00"},
        {"-0", "0E+00"},
        {"+7", "7E+00"},
        {"1.", "1E+00"},
        {".5", "5E-01"},
        {"0.000e5", "0E+00"},
        {"0E999999999999", "0E+00"},
        {"1e+05", "1E+05"},
        {"00000000000000000000000000000000000000000000000001", "1E+00"},
        {repeat_("1234567890", 4) + "99", "1.2345678901234567890123456789012345678E+41"},
        {repeat_("9", 39), "9.9999999999999999999999999999999999999E+38"},
        {"1" + repeat_("0", 1000) + "E-1000", "1E+00"},
        {"0." + repeat_("0", 999) + "1E1000", "1E+00"},
        {"1E125", "1E+125"},
        {"1E-130", "1E-130"},
        {"1E126", nullptr, -5068},
        {"1E-131", nullptr, -5069},
        {"1E4294967297", nullptr, -5068},
        {"1E-4294967297", nullptr, -5069},
        {"1E18446744073709551617", nullptr, -5068},
        {"1" + repeat_("0", 126), nullptr, -5068},
        {".", nullptr, -5074},
        {"", nullptr, -5074},
        {"   ", nullptr, -5074},
        {"-", nullptr, -5074},
        {"1e", nullptr, -5074},
        {"1e+", nullptr, -5074},
        {"1 2", nullptr, -5074},
        {"- 1", nullptr, -5074},
        {"+-1", nullptr, -5074},
        {"1..2", nullptr, -5074},
        {"1\t", nullptr, -5074},
        {"1,5", nullptr, -5074},
        {"0x10", nullptr, -5074},
        {"nan", nullptr, -5074},
        {"1E126x", nullptr, -5074},
    };
    for (const reading_t &c : readings) {
        SCOPED_TRACE(c.text);
        const outcome_t want{c.code, c.want != nullptr ? num(c.want) : number_t{}};
        EXPECT_EQ(read_(number_from_str, c.text, false), want);
        expect_reading_(c.text);
    }
    for (const char *zero : {"", "-", "+", "   ", "  -", "000"}) {
        EXPECT_EQ(read_(number_from_str_nt, zero, false).value, *_number_zero) << zero;
    }
}

TEST(NumberFromText, AgreesWithTheTwinOnRandomTexts) {
    constexpr std::string_view pieces[] = {" ",  "-",        "+",   ".", "E",   "e",        "E-",
                                           "0",  "00000000", "1",   "5", "9",   "99999999", "12345678",
                                           "30", "125",      "130", "x", "1E4", "0.0"};
    number_source source(30);
    for (long round = scaled(300'000); round > 0; --round) {
        std::string text;
        for (int i = source.pick(0, 12); i > 0; --i) text += pieces[source.pick(0, std::size(pieces) - 1)];
        ASSERT_NO_FATAL_FAILURE(expect_reading_(text));
    }
}

TEST(NumberFromText, AgreesWithTheTwinOnDigitsOfEveryLength) {
    number_source source(31);
    for (long round = scaled(100'000); round > 0; --round) {
        std::string text = source.pick(0, 2) == 0 ? "-" : "";
        const int digits = source.pick(1, source.pick(0, 3) == 0 ? 140 : 45);
        const int point = source.pick(0, 2) == 0 ? source.pick(0, digits) : -1;
        for (int i = 0; i < digits; ++i) {
            if (i == point) text += '.';
            text += static_cast<char>('0' + (source.pick(0, 1) != 0 ? source.pick(0, 9) : 0));
        }
        if (source.pick(0, 2) == 0) text += "E" + std::to_string(source.pick(-180, 130));
        ASSERT_NO_FATAL_FAILURE(expect_reading_(text));
    }
}

// One character that is none of the word-at-a-time digits, at every place of a text of every length.
TEST(NumberFromText, SeesEveryStrayCharacter) {
    for (int length = 1; length <= 45; ++length) {
        for (int at = 0; at < length; ++at) {
            for (const char stray : {'/', ':', 'a', '\x01', '\xB5', '\xFF', ' ', '.', 'E', '-'}) {
                std::string text = repeat_("3", length);
                text[static_cast<size_t>(at)] = stray;
                ASSERT_NO_FATAL_FAILURE(expect_reading_(text));
            }
        }
    }
}

TEST(NumberFromText, TakesVeryLongTexts) {
    const int many = 300'000;
    expect_reading_(repeat_("0", many) + "17");
    expect_reading_("0." + repeat_("0", many) + "17E300005");
    expect_reading_(repeat_("7", many) + "E-299990");
    expect_reading_(repeat_(" ", many) + "-17" + repeat_(" ", many));
    expect_reading_("1E" + repeat_("9", many));
    expect_reading_("1E-" + repeat_("0", many) + "5");
    expect_reading_(repeat_("7", many));
    expect_reading_(repeat_("7", many) + "x");
}

TEST(NumberText, BothFormsReadBackAsTheSameValue) {
    number_source source(32);
    for (long round = scaled(150'000); round > 0; --round) {
        const number_t x = source.any();
        for (const char *format : {"N", "S"}) {
            char text[NUMBER_NORMAL_TEXT_SIZE];
            number_to_str(&x, sizeof text, text, format);
            ASSERT_EQ(text, *format == 'N' ? normal_text(decode(x)) : scientific_text(decode(x)));
            ASSERT_EQ(read_(number_from_str, text, false).value, x) << text;
        }
    }
}

TEST(NumberText, SizesGivenInTheHeaderAreTheLongest) {
    const number_t longest_normal = num("-9.9999999999999999999999999999999999999E-130");
    EXPECT_LE(normal_text(decode(longest_normal)).size() + 1, size_t{NUMBER_NORMAL_TEXT_SIZE});
    EXPECT_LE(scientific_text(decode(longest_normal)).size() + 1, size_t{NUMBER_SCIENTIFIC_TEXT_SIZE});
    EXPECT_LE(scientific_text(decode(*_number_min)).size() + 1, size_t{NUMBER_SCIENTIFIC_TEXT_SIZE});
}

void expect_writing_(const number_t &x, int buf_size, const char *format) {
    constexpr int guard = 8;
    char buffer[NUMBER_NORMAL_TEXT_SIZE + 2 * guard + 8];
    std::memset(buffer, '#', sizeof buffer);
    char *const text = buffer + guard;
    const int code = raise_of([&] { number_to_str(&x, buf_size, text, format); });
    const written_t want = twin_write(decode(x), buf_size, format);
    const auto where = [&] {
        return describe(x) + "size " + std::to_string(buf_size) + " format " + (format ? format : "NULL");
    };
    ASSERT_EQ(code, want.code) << where() << " '" << want.text << "'";
    if (code == 0 || code == -5067) {
        ASSERT_STREQ(text, want.text.c_str()) << where();
    }
    for (const char *p = buffer; p != buffer + sizeof buffer; ++p) {
        const bool inside = p >= text && p < text + std::max(buf_size, 0);
        ASSERT_TRUE(inside || *p == '#') << where() << " at " << p - text;
    }
}

void expect_every_size_(const number_t &x) {
    const int full = static_cast<int>(normal_text(decode(x)).size() + 1);
    for (const char *format : {static_cast<const char *>(nullptr), "N", "n", "S", "s9", "X", ""}) {
        for (int size = -1; size <= std::max(full, 50) + 1; ++size) {
            ASSERT_NO_FATAL_FAILURE(expect_writing_(x, size, format));
        }
    }
}

TEST(NumberToText, KeepsToEveryBufferSize) {
    constexpr const char *hard[] = {"0",
                                    "1",
                                    "-1",
                                    "0.5",
                                    "-0.5",
                                    "0.3",
                                    "-0.3",
                                    "0.05",
                                    "0.95",
                                    "0.96",
                                    "9.5",
                                    "9.96",
                                    "-9.96",
                                    "99.96",
                                    "99999.6",
                                    "9.99E99",
                                    "9.9E99",
                                    "-9.99E99",
                                    "9.99E-100",
                                    "-9.99E-100",
                                    "1E-100",
                                    "1.5E-100",
                                    "9.5E98",
                                    "1E100",
                                    "1.5E100",
                                    "9.9999999999999999999999999999999999999E125",
                                    "1.2003",
                                    "12.0034",
                                    "1200",
                                    "-1200",
                                    "12.34",
                                    "1E-130",
                                    "-1E-130",
                                    "0.000999",
                                    "12345678901234567890123456789012345678",
                                    "9.99E9",
                                    "9.99E-10",
                                    "-9.9999999999999999999999999999999999999E125",
                                    "0.99999999999999999999999999999999999999",
                                    "5E-1",
                                    "9999999999.9999999999999999999999999999",
                                    "4.5E-7",
                                    "-4.5E-7",
                                    "9.5E-99",
                                    "9.5E-100",
                                    "9.5E-101"};
    for (const char *text : hard) ASSERT_NO_FATAL_FAILURE(expect_every_size_(num(text)));
    number_source source(33);
    for (long round = scaled(600); round > 0; --round) {
        ASSERT_NO_FATAL_FAILURE(expect_every_size_(source.any()));
        ASSERT_NO_FATAL_FAILURE(expect_every_size_(source.with_digits(1, 38)));
    }
}

}  // namespace
