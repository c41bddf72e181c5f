// NUMBER and text: reading against the twin, every buffer size of the writer against a model of its choice.

#include <gtest/gtest.h>

#include "number_properties.h"

using namespace dv::test;

namespace {

std::string repeat_(std::string_view piece, int times) {
    std::string text;
    for (int i = 0; i < times; ++i) text += piece;
    return text;
}

TEST(NumberTextReference, AgreesOnTextsOfAnyLength) {
    for (const std::string &text :
         {"0." + repeat_("0", 999) + "1E1000", "1" + repeat_("0", 300'000) + "E-299999",
          repeat_(" ", 300'000) + "-17", "1E-" + repeat_("9", 300'000)})
        EXPECT_EQ(reading_fault(text), "");
}

TEST(NumberTextReference, AgreesOnRandomTexts) {
    constexpr std::string_view pieces[] = {" ", "-", "+",  ".",   "E",   "e", "E-",  "0",   "00000000", "1",
                                           "5", "9", "30", "125", "130", "x", "1E4", "0.0", "12345678"};
    number_source source(30);
    for (long round = scaled(300'000); round > 0; --round) {
        std::string text;
        for (int i = source.pick(0, 12); i > 0; --i) text += pieces[source.pick(0, std::size(pieces) - 1)];
        ASSERT_EQ(reading_fault(text), "");
    }
}

// Long and short runs, a point anywhere or none, an exponent or none, at times a stray character. A text that
// ends in a blank goes to the reader of all texts, the others to that of plain ones first.
TEST(NumberTextReference, AgreesOnDigitsOfEveryLength) {
    number_source source(31);
    for (long round = scaled(150'000); round > 0; --round) {
        const int count = source.pick(1, source.pick(0, 3) == 0 ? 140 : 45);
        std::string text;
        for (int i = 0; i < count; ++i)
            text += static_cast<char>('0' + source.pick(0, 1) * source.pick(0, 9));
        const auto anywhere = static_cast<size_t>(source.pick(0, count - 1));
        if (source.pick(0, 2) == 0) text[anywhere] = '.';
        if (source.pick(0, 2) == 0) text += "E" + std::to_string(source.pick(-180, 130));
        if (source.pick(0, 5) == 0) text[anywhere] = static_cast<char>(source.pick(1, 255));
        if (source.pick(0, 2) == 0) text.insert(0, 1, "-+"[source.pick(0, 3) / 3]);
        ASSERT_EQ(reading_fault(text), "");
        ASSERT_EQ(reading_fault(text + " "), "");
    }
}

// Asked for no form, a plain value takes a way of its own.
TEST(NumberTextReference, BothFormsAreWrittenInFullAndReadBack) {
    number_source source(32);
    for (long round = scaled(150'000); round > 0; --round) {
        const number_t x = source.any();
        for (const char *format : {static_cast<const char *>(nullptr), "N", "S"})
            ASSERT_EQ(writing_fault(x, NUMBER_NORMAL_TEXT_SIZE, format), "");
    }
}

// Bytes that are no digits show as "??", zeros stay where no valid record has them.
TEST(NumberToText, OfAnyBytesIsThatOfTheNormalForm) {
    number_source source(34);
    for (long round = scaled(100'000); round > 0; --round) {
        number_t x;
        for (uint8_t &byte : x.coef) {
            const int digit = 128 + source.pick(-99, 99) / 9;
            byte = static_cast<uint8_t>(source.pick(0, 7) == 0 ? source.pick(0, 255) : digit);
        }
        x.size = static_cast<uint8_t>(source.pick(2, 22));
        x.signexp = static_cast<uint8_t>((0xC0 + source.pick(-3, 18)) ^ (source.pick(0, 1) != 0 ? 0xFF : 0));
        std::string texts[2];
        for (const char *format : {static_cast<const char *>(nullptr), "N"}) {
            char text[NUMBER_NORMAL_TEXT_SIZE];
            number_to_str(&x, sizeof text, text, format);
            texts[format != nullptr ? 1 : 0] = text;
        }
        ASSERT_EQ(texts[0], texts[1]) << describe(x);
    }
}

TEST(NumberTextReference, KeepsToEveryBufferSize) {
    std::vector<number_t> numbers = nums(
        "0 1 -1 0.5 -0.5 0.3 -0.3 0.05 0.95 0.96 9.5 9.96 -9.96 99.96 99999.6 9.99E99 9.9E99 -9.99E99 "
        "9.99E-100 "
        "-9.99E-100 1E-100 1.5E-100 9.5E98 1E100 1.5E100 9.9999999999999999999999999999999999999E125 1.2003 "
        "12.0034 -1200 1E-130 -1E-130 0.000999 12345678901234567890123456789012345678 9.99E9 9.99E-10 "
        "-9.9999999999999999999999999999999999999E125 0.99999999999999999999999999999999999999 -4.5E-7 "
        "9999999999.9999999999999999999999999999 9.5E-99 9.5E-100 9.5E-101");
    number_source source(33);
    for (long round = scaled(1'200); round > 0; --round) {
        numbers.push_back(source.any());
    }
    for (const number_t &x : numbers) {
        for (const char *format : {static_cast<const char *>(nullptr), "N", "n", "S", "s9", "X", ""}) {
            for (int size = -1; size <= NUMBER_NORMAL_TEXT_SIZE; ++size) {
                ASSERT_EQ(writing_fault(x, size, format), "");
            }
        }
    }
}

}  // namespace
