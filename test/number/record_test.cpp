// Records as bytes: constants, dumps, interchange format, places of raises, hostile bytes.

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <cstring>

#include "dvtypes/number_fmt.h"
#include "number_properties.h"

using namespace dv::test;

namespace {

TEST(NumberConstants, HoldTheirValues) {
    const std::string largest = std::string(38, '9') + "E88";
    const number_t *const rows[] = {_number_posinf,  _number_max, _number_poszero, _number_zero,
                                    _number_negzero, _number_min, _number_neginf,  _number_null,
                                    _number_one,     _number_e};
    const std::string want[] = {"02:ff:f0", hex(num(largest)),
                                "02:80:10", "01:80",
                                "02:7f:f0", hex(num("-" + largest)),
                                "02:00:10", "00",
                                "02:c1:81", hex(num("2.7182818284590452353602874713526624977"))};
    for (size_t i = 0; i < std::size(rows); ++i) {  // one table of 22-byte rows
        EXPECT_EQ(hex(*rows[i]), want[i]);
        EXPECT_EQ(&rows[i]->size - &rows[0]->size, static_cast<ptrdiff_t>(i * NUMBER_ROW_SIZE));
    }
    EXPECT_EQ(hex(*n1000000000), "02:c5:8a");
    EXPECT_EQ(hex(num("-128")), "04:3d:7f:64:f0");  // the twin's own anchor
    EXPECT_TRUE(!_float_covers_number && _double_covers_number && _long_double_covers_number);
}

TEST(NumberAssign, TouchesTheMeaningfulBytesAlone) {
    for (const char *text : {"0", "1", "-128"}) {
        const number_t y = num(text);
        number_t x, want;
        std::memset(&x, '#', sizeof x);
        want = x;
        std::memcpy(&want, &y, y.size + 1u);
        number_assign(&x, &y);
        EXPECT_EQ(std::memcmp(&x, &want, sizeof x), 0) << text;
    }
}

TEST(NumberDump, WritesTheBytesAndKeepsToItsBuffer) {
    for (const number_t &x : {num("0"), num("-128"), *_number_e, number_t{255, 0xC1, {0x81}}}) {
        for (int size = -1; size <= NUMBER_DUMP_SIZE; ++size) {
            const auto room = static_cast<size_t>(std::max(size, 0));
            const guarded buffer(room);
            number_sdump(&x, buffer.text(), size);
            ASSERT_TRUE(buffer.intact()) << hex(x) << " size " << size;
            ASSERT_EQ(room == 0 ? "" : std::string(buffer.text()),
                      hex(x).substr(0, room == 0 ? 0 : room - 1));
        }
    }
    char text[8];
    number_sdump(nullptr, text, sizeof text);
    EXPECT_STREQ(text, "NULL");
    number_sdump(_number_one, nullptr, 8);
}

TEST(NumberDump, PrintsToStandardOutput) {
    testing::internal::CaptureStdout();
    number_dump(_number_one);
    number_dumpln(nullptr);
    number_dumpln_from_int(-128);
    number_println(_number_e);
    number_println_from_str("04:3D:7f:64:F0");
    for (const char *cut : {"", "0", "01:80:8", "01:80:", "01:80:zz"}) number_println_from_str(cut);
    std::fflush(stdout);
    EXPECT_EQ(testing::internal::GetCapturedStdout(),
              "02:c1:81NULL\n04:3d:7f:64:f0\n[2.7182818284590452353602874713526624977]\n[-128]\n[0]\n[0]\n[0]"
              "\n[0]\n[0]\n");
}

TEST(NumberInterchange, MapsTheDigitsOfBothSigns) {
    number_source source(52);
    for (int round = 0; round < 20'000; ++round) {
        const number_t x = round == 0 ? number_t{0, 0x37, {}} : source.any();  // NULL with a stray signexp
        const bool negative = x.size > 1 && (x.signexp & 0x80) == 0;
        uint8_t want[sizeof x] = {x.size, x.signexp};
        for (int i = 2; i <= x.size; ++i) {
            want[i] = static_cast<uint8_t>(x.coef[i - 2] - (negative ? 27 : 127));
        }
        if (negative) want[x.size] = 102;
        uint8_t bytes[sizeof x] = {};
        const assertion_watch watch;
        number_to_oracle_format(&x, bytes);
        ASSERT_EQ(std::memcmp(bytes, want, sizeof x), 0) << describe(x);
        // The reader's length does not count the terminator, and is copied as it stands.
        if (negative) --bytes[0];
        number_t back;
        number_from_oracle_format(&back, bytes);
        ASSERT_EQ(back.size, bytes[0]);
        ASSERT_EQ(std::memcmp(&back.signexp, &x.signexp, std::max<size_t>(x.size, 1)), 0)
            << describe(x) << describe(back);
        ASSERT_EQ(watch.count(), 0u) << describe(x);
    }
}

TEST(NumberInterchange, AssertsBytesThatAreNoDigitsAndGoesOn) {
    const number_t record = {
        4, 0x3E, {28, 129, NUMBER_TOP}};  // outside 29..128, and of 2..101 with all behind
    const assertion_watch watch;
    number_t out{};
    number_to_oracle_format(&record, &out.size);
    EXPECT_EQ(watch.count(), 2u);
    number_from_oracle_format(&out, &record.size);
    EXPECT_EQ(watch.count(), 5u);
}

char _text[NUMBER_NORMAL_TEXT_SIZE];
number_parse_result_t _compiled;
const std::string _nines(257, '9');
const number_t _hundredth = num("0.01");

void subtract_almost_all_(number_t *x) {
    const number_t y = num("1E-129");
    number_sub(x, &y);
}
template <typename T, void (*convert)(const number_t *, T *)>
void convert_(number_t *x) {
    T value;
    convert(x, &value);
}
void write_(number_t *x, int size, const char *model) {
    number_to_str_fmt(x, size, _text, static_cast<int>(std::strlen(model)), model);
}
void read_(number_t *x, const char *text, const char *model) {
    number_from_str_fmt(x, static_cast<int>(std::strlen(text)), text, static_cast<int>(std::strlen(model)),
                        model);
}

TEST(NumberRaise, NamesTheFunctionThatFoundTheFault) {
    struct place_t {
        int code;
        const char *function;
        const char *x;
        void (*call)(number_t *x);
    };
    constexpr place_t places[] = {
        {-3005, "number_to_str", "1", [](number_t *x) { number_to_str(x, 1, _text, nullptr); }},
        {-3005, "number_to_str", "0", [](number_t *x) { number_to_str(x, 5, _text, "S"); }},
        {-3005, "number_to_str_fmt", "1", [](number_t *x) { write_(x, 2, "9"); }},
        {-3005, "number_to_str_fmt", "10", [](number_t *x) { write_(x, 2, "9"); }},
        {-3005, "number_to_str_fmt", "10", [](number_t *x) { write_(x, 2, "TM"); }},
        {-3005, "_number_to_str_fmt_rn", "1", [](number_t *x) { write_(x, 15, "RN"); }},
        {-3006, "number_from_str_fmt", "0", [](number_t *x) { read_(x, "I", "rn"); }},
        {-3006, "number_fmt_parse", "0", [](number_t *x) { read_(x, "1", "B9"); }},
        {-5067, "number_to_str", "1.2345E125", [](number_t *x) { number_to_str(x, 9, _text, nullptr); }},
        {-5068, "number_round_at_withmode", "9", [](number_t *x) { number_round_at_withmode(x, 126, 1); }},
        {-5068, "number_round_at_withmode", "9.9E125",
         [](number_t *x) { number_round_at_withmode(x, 125, 1); }},
        {-5068, "number_from_str", "0", [](number_t *x) { number_from_str(x, 0, "1E200", nullptr); }},
        {-5068, "number_from_str", "0", [](number_t *x) { number_from_double(x, 1e300); }},
        {-5068, "number_from_str_nt", "0",
         [](number_t *x) { number_from_str_nt(x, 0, _nines.c_str(), nullptr); }},
        {-5068, "number_add", "9E125", [](number_t *x) { number_add(x, x); }},
        {-5068, "number_mul", "9E125", [](number_t *x) { number_sqr(x); }},
        {-5068, "number_div", "1E125", [](number_t *x) { number_div(x, &_hundredth); }},
        {-5069, "number_from_str", "0", [](number_t *x) { number_from_str(x, 0, "1E-200", nullptr); }},
        {-5069, "number_mul", "1E-66", [](number_t *x) { number_mul(x, x); }},
        {-5069, "number_remove_head_zero", "1.01E-129", subtract_almost_all_},
        {-5070, "number_div", "1", [](number_t *x) { number_div(x, _number_zero); }},
        {-5070, "number_rem", "1", [](number_t *x) { number_rem(x, _number_zero); }},
        {-5072, "number_to_int8", "128", convert_<int8_t, number_to_int8>},
        {-5072, "number_to_int16", "1E5", convert_<int16_t, number_to_int16>},
        {-5072, "number_to_int32", "-1E10", convert_<int32_t, number_to_int32>},
        {-5072, "number_to_int64", "1E20", convert_<int64_t, number_to_int64>},
        {-5072, "number_to_uint8", "-1", convert_<uint8_t, number_to_uint8>},
        {-5072, "number_to_uint16", "1E5", convert_<uint16_t, number_to_uint16>},
        {-5072, "number_to_uint32", "-0.5", convert_<uint32_t, number_to_uint32>},
        {-5072, "number_to_uint64", "-1", convert_<uint64_t, number_to_uint64>},
        {-5072, "number_to_float", "1E39", convert_<float, number_to_float>},
        {-5073, "number_sqrt", "-1", [](number_t *x) { number_sqrt(x); }},
        {-5073, "number_pow", "0", [](number_t *x) { number_pow(x, _number_min); }},
        {-5073, "number_pow", "-1", [](number_t *x) { number_pow(x, _number_e); }},
        {-5074, "number_from_str", "0", [](number_t *x) { number_from_str_nt(x, 0, "x", nullptr); }},
        {-5074, "number_from_str", "0", [](number_t *x) { number_from_str(x, 0, "1e", nullptr); }},
        {-5074, "number_from_str_fmt", "0", [](number_t *x) { read_(x, "12", "9"); }},
        {-5074, "number_from_str_fmt", "0", [](number_t *x) { read_(x, "12", "$99"); }},
        {-5074, "number_from_str_fmt", "0", [](number_t *x) { read_(x, "12-", "99"); }},
        {-5074, "number_from_str_fmt", "0", [](number_t *x) { read_(x, "+1", "00"); }},
        {-5074, "number_from_str_fmt", "0", [](number_t *x) { read_(x, "1f", "XX"); }},
        {-5074, "number_from_str_fmt", "0", [](number_t *x) { read_(x, "", "TM"); }},
        {-5075, "number_to_str", "1", [](number_t *x) { number_to_str(x, 9, _text, "X"); }},
        {-5075, "number_fmt_parse", "1", [](number_t *x) { write_(x, 9, "99-"); }},
        {-5075, "number_fmt_parse", "1", [](number_t *) { number_fmt_parse("9.9.", &_compiled); }},
        {-5075, "number_fmt_parse", "1", [](number_t *) { number_get_length(_nines.c_str(), 257); }}};
    for (const place_t &place : places) {
        SCOPED_TRACE(testing::Message() << place.function << " " << place.code);
        dv_error_t error;
        number_t x = num(place.x);
        EXPECT_EQ(raise_of([&] { place.call(&x); }, &error), place.code);
        EXPECT_STREQ(error.function, place.function);
        EXPECT_GT(error.line, 0);
        EXPECT_EQ(std::string_view(error.file).substr(0, 7), "number_");
    }
}

TEST(NumberHostile, RecordsNeverLeaveTheirBytes) {
    number_source source(53);
    for (int size = 0; size <= 255; ++size) {
        for (long round = scaled(40); round > 0; --round) {
            hostile_t input;
            source.fill(&input, sizeof input);
            if (source.pick(0, 1) != 0) input.x = source.any();
            if (source.pick(0, 1) != 0) input.y = source.any();
            (source.pick(0, 1) != 0 ? input.x : input.y).size = static_cast<uint8_t>(size);
            ASSERT_EQ(hostile_fault(input), "");
        }
    }
}

}  // namespace
