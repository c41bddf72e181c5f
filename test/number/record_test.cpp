// Records as bytes: constants, dumps, interchange format, hostile bytes.

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <cstring>

#include "number_properties.h"

using namespace dv::test;

namespace {

// Rows of 22 bytes, one behind the other.
TEST(NumberConstants, AreOneTable) {
    const number_t *const rows[] = {_number_posinf,  _number_max, _number_poszero, _number_zero,
                                    _number_negzero, _number_min, _number_neginf,  _number_null,
                                    _number_one,     _number_e};
    for (size_t i = 0; i < std::size(rows); ++i)
        EXPECT_EQ(&rows[i]->size - &rows[0]->size, static_cast<ptrdiff_t>(i * NUMBER_ROW_SIZE));
    EXPECT_EQ(_float_covers_number, 0);
    EXPECT_EQ(_double_covers_number, 1);
    EXPECT_EQ(_long_double_covers_number, 1);
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
