// Number models: the manual's examples, the properties over generated models, compiled records, bounds.

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

#include "number_model_property.h"
#include "project_file.h"

using namespace dv::test;
using namespace std::string_view_literals;

namespace {

// Every line of the blocks "write" and "read".
TEST(NumberModelManual, ExamplesGiveWhatTheySay) {
    std::ifstream docs(project_file("docs/number-models.md"));
    int examples = 0;
    for (std::string block, line; std::getline(docs, line);) {
        if (line.starts_with("```")) block = line.substr(3);
        std::erase(line, '"');
        const size_t one = line.find(" | "), two = line.find(" | ", one + 1);
        if ((block != "write" && block != "read") || two == line.npos) continue;
        const std::string in = line.substr(0, one), model = line.substr(one + 3, two - one - 3);
        const auto [code, x] = read_under(in, model);
        const std::string value = code != 0 ? error_text(code) : normal_text(decode(x));
        EXPECT_EQ(block == "read" ? value : write_under(num(in), model), line.substr(two + 3)) << line;
        ++examples;
    }
    EXPECT_GE(examples, 150);
}

// The elements of a kind of model in their order, many of them left out and digits repeated.
std::string model_(number_source &source) {
    constexpr const char *kinds[] = {"FM S L $ 9 , 0 9 , 0 . 9 0 EEEE C PR", "FM U 9 G 0 9 G 9 D 9 0 L MI",
                                     "FM C 0 X , X , X X . L S", "FM S C 9 . 9 S"};
    std::istringstream elements(kinds[source.pick(0, 3)]);
    std::string model, element;
    for (const int most = source.pick(0, 3) != 0 ? 3 : 30; elements >> element;) {
        const bool is_digit = element == "9" || element == "0" || element == "X";
        for (int i = is_digit ? source.pick(0, most) : source.pick(0, 3) / 3; i > 0; --i) model += element;
    }
    return model;
}

// Beside the model itself, one with something where it may not stand.
TEST(NumberModel, WritesAndReadsBackOrRefuses) {
    number_source source(60);
    for (long round = scaled(30'000); round > 0; --round) {
        const std::string model = model_(source);
        const number_t amount = source.with_digits(source.pick(1, 12), source.pick(-3, 9));
        for (const number_t &x : {source.any(), amount, *_number_zero}) ASSERT_EQ(model_fault(model, x), "");
        std::string broken = model;
        broken.insert(source.bits() % (model.size() + 1), 1, static_cast<char>(source.pick(1, 255)));
        ASSERT_EQ(model_fault(broken, amount), "");
    }
}

char one_of_(number_source &source, std::string_view set) { return set[source.bits() % set.size()]; }

// Up to 34 of "9", "0", "," and ".": amounts with their separators, or anything.
std::string plain_model_(number_source &source) {
    std::string model = source.pick(0, 1) != 0 ? "" : source.pick(0, 3) != 0 ? "FM" : "fM";
    const int separator = source.pick(2, 5);
    const bool is_amount = source.pick(0, 2) != 0;
    for (int i = source.pick(0, source.pick(0, 3) != 0 ? 12 : 34); i > 0; --i) {
        if (is_amount && i % separator == 0) model += i == separator ? '.' : ',';
        model += one_of_(source, is_amount ? "9999900" : "9999900,,.");
    }
    return model;
}

// A text, at times cut, or with a stray character in it.
std::string disturbed_(number_source &source, std::string text) {
    constexpr std::string_view strays = "0123456789,. -+E$\0\x80"sv;
    if (source.pick(0, 1) != 0) text.erase(0, text.find_first_not_of(' '));
    if (source.pick(0, 3) == 0) text.resize(source.bits() % (text.size() + 1));
    if (source.pick(0, 3) == 0) text.insert(source.bits() % (text.size() + 1), 1, one_of_(source, strays));
    if (source.pick(0, 3) == 0 && !text.empty()) text[source.bits() % text.size()] = one_of_(source, strays);
    return text;
}

// Compiled in a way of their own, too.
void expect_record_of_plain_(const std::string &model) {
    const std::string signed_model = model + "MI";
    number_parse_result_t plain{}, other{};
    const int code = raise_of([&] { number_fmt_parse(model.c_str(), &plain); });
    ASSERT_EQ(raise_of([&] { number_fmt_parse(signed_model.c_str(), &other); }), code) << model;
    ASSERT_EQ(plain.sign_type + (code == 0 ? 1 : 0), other.sign_type) << model;
    ASSERT_EQ(std::memcmp(plain.fmt_dig, other.fmt_dig, sizeof plain.fmt_dig), 0) << model;
    ASSERT_EQ(std::tie(plain.fm_present, plain.currency_type, plain.pos_msd, plain.pos_lsd),
              std::tie(other.fm_present, other.currency_type, other.pos_msd, other.pos_lsd))
        << model;
    ASSERT_EQ(plain.power_to_raise | plain.in_hexadecimal | plain.in_sciform, 0) << model;
}

void expect_reads_as_by_hand_(const std::string &text, const std::string &model) {
    number_parse_result_t pr;
    const int refused = raise_of([&] { number_fmt_parse(model.c_str(), &pr); });
    const outcome_t want = theirs([&] {
        if (refused != 0) throw twin_raise{refused};
        return twin_read_under(text, pr);
    });
    ASSERT_EQ(read_under(text, model), want) << "'" << text << "' under " << model;
}

// Texts that were written, many of them spoilt, and texts of any characters. Plain models are read under in a
// way of their own, from which a sign element, which no reader looks at, bars them.
TEST(NumberModel, ReadsAsByHand) {
    constexpr std::string_view characters = "0112233445566789..,,--$$  EeUSD+\0\xFF"sv;
    number_source source(61);
    for (long round = scaled(100'000); round > 0; --round) {
        const bool is_plain = source.pick(0, 2) != 0;
        const std::string model = is_plain ? plain_model_(source) : model_(source);
        const std::string other = is_plain ? model + "MI" : model;
        if (is_plain) {
            ASSERT_NO_FATAL_FAILURE(expect_record_of_plain_(model));
        }
        const number_t x = source.with_digits(source.pick(1, 12), source.pick(-3, 9));
        std::string texts[] = {disturbed_(source, write_under(x, model)), ""};
        for (int i = source.pick(0, 7); i > 0; --i) texts[1] += one_of_(source, characters);
        for (const std::string &text : texts) {
            ASSERT_NO_FATAL_FAILURE(expect_reads_as_by_hand_(text, model));
            ASSERT_NO_FATAL_FAILURE(expect_reads_as_by_hand_(text, other));
        }
    }
}

TEST(NumberModel, KeepsItsBounds) {
    const std::string nines(257, '9'), longest = "C" + std::string(251, '0') + "EEEE";
    EXPECT_EQ(write_under(num("-1E100"), longest).size(), NUMBER_FMT_TEXT_SIZE - 1);
    EXPECT_EQ(read_under(nines.substr(0, 120), nines.substr(1)).code, 0);
    EXPECT_EQ(write_under(*_number_one, nines, 300), error_text(-5075));
    EXPECT_EQ(raise_of([&] { number_get_length(nines.c_str(), 257); }), -5075);
    EXPECT_EQ(raise_of([&] { number_get_length(nines.c_str(), 256); }), -3005);
    EXPECT_EQ(number_get_length("fM9Fm9", 6) + number_get_length("9", -1) + number_get_length(nullptr, 9), 5);
    EXPECT_EQ(raise_of([&] { number_format_check("TMx", 2); }), 0);
}

// Roman numerals need the room of the longest one.
TEST(NumberModel, WholeTextsKeepToEveryBufferSize) {
    for (const number_t &x :
         nums("0 -1E-130 1E63 -1E63 1E64 3888 0.5 -1.2345678901234567890123456789012345678")) {
        for (const char *model : {"TM", "tm9", "TME", "RN", "FMrn"}) {
            const std::string whole = write_under(x, model);
            const int least = model[0] == 'T' || model[0] == 't' ? length(whole) + 1 : 16;
            for (int size = 0; size <= 70; ++size)
                ASSERT_EQ(write_under(x, model, size), size < least ? error_text(-3005) : whole) << size;
        }
    }
}

TEST(NumberModel, MadeReadyServesItsPurposeAlone) {
    number_fmt_ctx_t none = {}, writing, reading;
    number_fmt_ctx_set(&writing, 3, "990", /*for_parser=*/0);
    number_fmt_ctx_set(&reading, 3, "990", /*for_parser=*/1);
    char text[NUMBER_FMT_TEXT_SIZE] = "?";
    number_t x = num("7");
    const assertion_watch watch;
    for (const number_fmt_ctx_t *made : {&none, &reading})
        EXPECT_EQ(number_to_str_ctx(&x, sizeof text, text, made), 0) << text;
    for (const number_fmt_ctx_t *made : {&none, &writing}) number_from_str_ctx(&x, 1, "5", made);
    EXPECT_EQ(watch.count(), 4);
    EXPECT_EQ(text + normal_text(decode(x)), "?7");
    EXPECT_EQ(raise_of([&] { number_fmt_ctx_set(&reading, 2, "RN", /*for_parser=*/1); }), -3006);
    number_from_str_ctx(&x, 1, "5", &reading);  // as it was
    EXPECT_EQ(normal_text(decode(x)), "5");
}

TEST(RomanNumerals, FollowTheSubtractiveRule) {
    constexpr int weights[] = {1000, 900, 500, 400, 100, 90, 50, 40, 10, 9, 5, 4, 1};
    constexpr const char *letters[] = {"M", "CM", "D", "CD", "C", "XC", "L", "XL", "X", "IX", "V", "IV", "I"};
    for (int n = -1; n <= 10'001; ++n) {
        std::string want = n >= 1 && n <= 3999 ? "" : std::string(15, '#');
        for (int i = 0, rest = n; i < 13; ++i)
            for (; n < 4000 && rest >= weights[i]; rest -= weights[i]) want += letters[i];
        want.insert(0, 15 - want.size(), ' ');
        ASSERT_EQ(write_under(num(std::to_string(n - 1) + ".5"), "RN", 16), want) << n;
    }
}

}  // namespace
