// Records as bytes: constants, limit rows, dumps, interchange format, places of raises, hostile bytes.

#include <gtest/gtest.h>

#include <cstdio>
#include <limits>

#include "number_support.h"

using namespace dv::test;

namespace {

std::string dump_(const number_t &x) {
    char text[NUMBER_DUMP_SIZE];
    number_sdump(&x, text, sizeof text);
    return text;
}

TEST(NumberConstants, HoldTheirValues) {
    EXPECT_EQ(*_number_zero, num("0"));
    EXPECT_EQ(*_number_one, num("1"));
    EXPECT_EQ(*n1000000000, num("1000000000"));
    EXPECT_EQ(*_number_max, num(std::string(38, '9') + "E88"));
    EXPECT_EQ(*_number_min, num("-" + std::string(38, '9') + "E88"));
    EXPECT_EQ(*_number_e, num("2.71828182845904523536028747135266249775724709"));
    EXPECT_EQ(dump_(*_number_posinf), "02:ff:f0");
    EXPECT_EQ(dump_(*_number_neginf), "02:00:10");
    EXPECT_EQ(dump_(*_number_poszero), "02:80:10");
    EXPECT_EQ(dump_(*_number_negzero), "02:7f:f0");
    EXPECT_EQ(_number_null->size, 0);
    const number_t *const rows[] = {_number_posinf,  _number_max, _number_poszero, _number_zero,
                                    _number_negzero, _number_min, _number_neginf,  _number_null,
                                    _number_one,     _number_e};
    for (size_t i = 0; i < std::size(rows); ++i) {  // one table of 22-byte rows
        EXPECT_EQ(reinterpret_cast<const uint8_t *>(rows[i]) - reinterpret_cast<const uint8_t *>(rows[0]),
                  static_cast<ptrdiff_t>(i * NUMBER_ROW_SIZE));
    }
}

number_t limit_row_(int row) {
    number_t x{};
    std::memcpy(&x, _number_limit[row].byte, NUMBER_ROW_SIZE);
    return x;
}

TEST(NumberLimits, AreTheBoundsOfTheMachineTypes) {
    const auto expect_rows = [](int type, auto lowest, auto highest) {
        EXPECT_EQ(limit_row_(2 * type), num(std::to_string(lowest))) << type;
        EXPECT_EQ(limit_row_(2 * type + 1), num(std::to_string(highest))) << type;
    };
    expect_rows(NUMBER_TYPE_INT8, INT8_MIN, INT8_MAX);
    expect_rows(NUMBER_TYPE_UINT8, 0, UINT8_MAX);
    expect_rows(NUMBER_TYPE_INT16, INT16_MIN, INT16_MAX);
    expect_rows(NUMBER_TYPE_UINT16, 0, UINT16_MAX);
    expect_rows(NUMBER_TYPE_INT32, INT32_MIN, INT32_MAX);
    expect_rows(NUMBER_TYPE_UINT32, 0, UINT32_MAX);
    expect_rows(NUMBER_TYPE_INT64, INT64_MIN, INT64_MAX);
    expect_rows(NUMBER_TYPE_UINT64, 0, UINT64_MAX);

    number_t largest;
    number_from_float(&largest, std::numeric_limits<float>::max());
    EXPECT_EQ(limit_row_(2 * NUMBER_TYPE_FLOAT + 1), largest);
    number_negate(&largest);
    EXPECT_EQ(limit_row_(2 * NUMBER_TYPE_FLOAT), largest);
    for (const int type : {NUMBER_TYPE_DOUBLE, NUMBER_TYPE_LONG_DOUBLE}) {
        EXPECT_EQ(limit_row_(2 * type), *_number_min);
        EXPECT_EQ(limit_row_(2 * type + 1), *_number_max);
    }
    EXPECT_EQ(_float_covers_number, 0);
    EXPECT_EQ(_double_covers_number, 1);
    EXPECT_EQ(_long_double_covers_number, 1);
}

TEST(NumberAssign, CopiesTheMeaningfulBytesAndNoOther) {
    number_source source(50);
    for (int round = 0; round < 2000; ++round) {
        const number_t y = round == 0 ? *_number_null : source.any();
        const number_t before = source.hostile();
        number_t want = before;
        std::memcpy(&want, &y, y.size + 1u);
        number_t x = before;
        number_assign(&x, &y);
        ASSERT_EQ(std::memcmp(&x, &want, sizeof x), 0) << describe(y);
    }
}

TEST(NumberDump, WritesTheBytesAndKeepsToItsBuffer) {
    EXPECT_EQ(dump_(num("-128")), "04:3d:7f:64:f0");
    EXPECT_EQ(dump_(num("1")), "02:c1:81");
    EXPECT_EQ(dump_(num("0")), "01:80");
    for (const char *text : {"0", "-128", "1.2345678901234567890123456789012345678", "-9.5E-120"}) {
        const number_t x = num(text);
        const std::string full = dump_(x);
        for (int size = -1; size <= NUMBER_DUMP_SIZE; ++size) {
            char buffer[NUMBER_DUMP_SIZE + 8];
            std::memset(buffer, '#', sizeof buffer);
            number_sdump(&x, buffer + 4, size);
            const auto room = static_cast<size_t>(std::max(size, 0));
            std::string want(sizeof buffer, '#');
            if (room > 0) {
                const std::string cut = full.substr(0, room - 1);
                want.replace(4, cut.size() + 1, cut + '\0');
            }
            const std::string got(buffer, sizeof buffer);
            ASSERT_EQ(got.substr(0, 4), "####");
            ASSERT_EQ(got.substr(4 + room), std::string(sizeof buffer - 4 - room, '#')) << size;
            if (room > 0) {
                ASSERT_STREQ(buffer + 4, want.c_str() + 4) << size;
            }
        }
    }
    char text[8] = "keep";
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
    std::fflush(stdout);
    EXPECT_EQ(testing::internal::GetCapturedStdout(),
              "02:c1:81NULL\n04:3d:7f:64:f0\n[2.7182818284590452353602874713526624977]\n[-128]\n");
}

TEST(NumberDump, OfAnyTextPrintsWithoutHarm) {
    number_source source(51);
    testing::internal::CaptureStdout();
    for (int round = 0; round < 5000; ++round) {
        char text[80];
        const int length = source.pick(0, 79);
        for (int i = 0; i < length; ++i) text[i] = "0123456789abcdefF:x"[source.pick(0, 18)];
        text[length] = '\0';
        const assertion_watch watch;
        raise_of([&] { number_println_from_str(text); });
    }
    testing::internal::GetCapturedStdout();
}

// ---------------------------------------------------------------------------------------------------------
// Interchange format
// ---------------------------------------------------------------------------------------------------------

TEST(NumberInterchange, MapsTheDigitsOfBothSigns) {
    number_source source(52);
    for (int round = 0; round < 20'000; ++round) {
        const number_t x = source.any();
        const bool negative = x.size > 1 && (x.signexp & 0x80) == 0;
        uint8_t bytes[23] = {};
        const assertion_watch watch;
        number_to_oracle_format(&x, bytes);
        ASSERT_EQ(bytes[0], x.size);
        ASSERT_EQ(bytes[1], x.signexp);
        for (int i = 2; i <= x.size; ++i) {
            const bool terminator = negative && i == x.size;
            const int want = terminator ? 102 : negative ? x.coef[i - 2] - 27 : x.coef[i - 2] - 127;
            ASSERT_EQ(bytes[i], want) << describe(x) << i;
        }
        // The reader's length does not count the terminator, and is copied as it stands.
        if (negative) --bytes[0];
        number_t back = with_stray_bytes(*_number_null, ~uint64_t{0});
        number_from_oracle_format(&back, bytes);
        ASSERT_EQ(back.size, bytes[0]);
        ASSERT_EQ(std::memcmp(&back.signexp, &x.signexp, x.size), 0) << describe(x) << describe(back);
        ASSERT_EQ(watch.count(), 0u) << describe(x);
    }
}

TEST(NumberInterchange, AssertsBytesThatAreNoDigitsAndGoesOn) {
    struct case_t {
        number_t x;
        unsigned long to_count;    // assertions of the writer
        unsigned long from_count;  // of the reader over the same bytes
    };
    const case_t cases[] = {
        {{3, 0xC1, {127, 228}}, 2, 2},       // outside 128..227; outside 1..100
        {{4, 0x3E, {28, 129, 0xF0}}, 2, 3},  // outside 29..128; and the digit at the terminator's place
        {{3, 0x3E, {100, 100}}, 1, 1},       // no terminator
        {{3, 0xC1, {1, 100}}, 2, 0},
    };
    for (const case_t &c : cases) {
        uint8_t bytes[23] = {};
        const assertion_watch to_watch;
        number_to_oracle_format(&c.x, bytes);
        EXPECT_EQ(to_watch.count(), c.to_count) << describe(c.x);
        uint8_t raw[23];
        std::memcpy(raw, &c.x, sizeof raw);
        number_t back{};
        const assertion_watch from_watch;
        number_from_oracle_format(&back, raw);
        EXPECT_EQ(from_watch.count(), c.from_count) << describe(c.x);
    }
}

// ---------------------------------------------------------------------------------------------------------
// Raises and hostile records
// ---------------------------------------------------------------------------------------------------------

char _text[9];
union {
    int8_t int8;
    int64_t int64;
    uint64_t uint64;
    float single;
    long double wide;
} _machine;

struct place_t {
    int code;
    const char *function;
    const char *x;
    void (*call)(number_t *x);
};
constexpr place_t _places[] = {
    {-5070, "number_div", "1", [](number_t *x) { number_div(x, _number_zero); }},
    {-5070, "number_rem", "1", [](number_t *x) { number_rem(x, _number_zero); }},
    {-5068, "number_add", "9E125", [](number_t *x) { number_add(x, x); }},
    {-5068, "number_mul", "1E63", [](number_t *x) { number_mul(x, x); }},
    {-5069, "number_mul", "1E-66", [](number_t *x) { number_mul(x, x); }},
    {-5069, "number_remove_head_zero", "1.01E-129",
     [](number_t *x) {
         const number_t y = num("1E-129");
         number_sub(x, &y);
     }},
    {-5068, "number_round_at_withmode", "9E125", [](number_t *x) { number_round_at_withmode(x, 126, 1); }},
    {-5074, "number_from_str", "0", [](number_t *x) { number_from_str(x, 0, "x", nullptr); }},
    {-5074, "number_from_str", "0", [](number_t *x) { number_from_str_nt(x, 0, "x", nullptr); }},
    {-5068, "number_from_str", "0", [](number_t *x) { number_from_str(x, 0, "1E200", nullptr); }},
    {-5069, "number_from_str", "0", [](number_t *x) { number_from_str(x, 0, "1E-200", nullptr); }},
    {-5075, "number_to_str", "1", [](number_t *x) { number_to_str(x, sizeof _text, _text, "X"); }},
    {-3005, "number_to_str", "1", [](number_t *x) { number_to_str(x, 1, _text, nullptr); }},
    {-5067, "number_to_str", "1.234E125",
     [](number_t *x) { number_to_str(x, sizeof _text, _text, nullptr); }},
    {-5072, "number_to_int8", "128", [](number_t *x) { number_to_int8(x, &_machine.int8); }},
    {-5072, "number_to_uint64", "-1", [](number_t *x) { number_to_uint64(x, &_machine.uint64); }},
    {-5072, "number_to_float", "1E39", [](number_t *x) { number_to_float(x, &_machine.single); }},
};

TEST(NumberRaise, NamesTheFunctionThatFoundTheFault) {
    for (const place_t &place : _places) {
        SCOPED_TRACE(testing::Message() << place.function << " " << place.code);
        dv_error_t error;
        number_t x = num(place.x);
        EXPECT_EQ(raise_of([&] { place.call(&x); }, &error), place.code);
        EXPECT_STREQ(error.function, place.function);
        EXPECT_GT(error.line, 0);
        const std::string file = error.file;
        EXPECT_EQ(file.find('/'), std::string::npos) << file;
        EXPECT_EQ(file.rfind("number", 0), 0u) << file;
    }
}

TEST(NumberAssertion, ReportsRecordsThatAreNotValid) {
    const number_t not_valid = {23 + 1, 0xC1, {129}};
    static std::string last;
    dv_assert_set_reporter([](const char *text, const char *, int) { last = text; });
    char text[NUMBER_NORMAL_TEXT_SIZE];
    const auto expect_text = [](const char *want, auto &&call) {
        last.clear();
        raise_of(call);
        EXPECT_EQ(last, want);
    };
    number_t x = *_number_one;
    expect_text("number_is_valid_ptr(x) && number_is_valid_ptr(y)", [&] { number_mul(&x, &not_valid); });
    expect_text("number_is_valid_ptr(x) && number_is_valid_ptr(y)", [&] { number_div(&x, &not_valid); });
    raise_of([&] { number_to_str(&not_valid, sizeof text, text, nullptr); });
    dv_assert_set_reporter(nullptr);
}

char _long_text[NUMBER_NORMAL_TEXT_SIZE];
uint8_t _bytes[sizeof(number_t)];

// Every operation over any 23 bytes: it returns or raises, and leaves what is beside its record alone.
using hostile_call_t = void(number_t *x, const number_t *y, number_source &source);
constexpr hostile_call_t *_hostile_calls[] = {
    [](number_t *x, const number_t *y, number_source &) { number_add(x, y); },
    [](number_t *x, const number_t *y, number_source &) { number_sub(x, y); },
    [](number_t *x, const number_t *y, number_source &) { number_mul(x, y); },
    [](number_t *x, const number_t *y, number_source &) { number_div(x, y); },
    [](number_t *x, const number_t *y, number_source &) { number_mod(x, y); },
    [](number_t *x, const number_t *y, number_source &) { number_rem(x, y); },
    [](number_t *x, const number_t *y, number_source &) { number_cmp(x, y); },
    [](number_t *x, const number_t *, number_source &) { number_sqr(x); },
    [](number_t *x, const number_t *, number_source &) { number_negate(x); },
    [](number_t *x, const number_t *, number_source &) { number_abs(x); },
    [](number_t *x, const number_t *y, number_source &) { number_assign(x, y); },
    [](number_t *x, const number_t *, number_source &s) {
        number_round_at_withmode(x, s.pick(-200, 200), s.pick(-1, 7));
    },
    [](number_t *x, const number_t *, number_source &s) {
        number_force_prec_scale(x, s.pick(-130, 45), s.pick(-130, 130));
    },
    [](number_t *x, const number_t *, number_source &s) {
        number_check_prec_scale(x, s.pick(-130, 45), s.pick(-130, 130));
    },
    [](number_t *x, const number_t *, number_source &s) {
        number_to_str(x, s.pick(0, sizeof _text), _text, s.pick(0, 1) != 0 ? nullptr : "N");
    },
    [](number_t *x, const number_t *, number_source &) {
        number_to_str(x, sizeof _long_text, _long_text, nullptr);
    },
    [](number_t *x, const number_t *, number_source &) {
        number_to_str(x, sizeof _long_text, _long_text, "S");
    },
    [](number_t *x, const number_t *, number_source &s) {
        number_sdump(x, _long_text, s.pick(0, NUMBER_DUMP_SIZE));
    },
    [](number_t *x, const number_t *, number_source &) { number_to_oracle_format(x, _bytes); },
    [](number_t *x, const number_t *y, number_source &) { number_from_oracle_format(x, &y->size); },
    [](number_t *x, const number_t *, number_source &s) { number_range_check(x, s.pick(-1, 12)); },
    [](number_t *x, const number_t *, number_source &) { number_to_int8(x, &_machine.int8); },
    [](number_t *x, const number_t *, number_source &) { number_to_int64(x, &_machine.int64); },
    [](number_t *x, const number_t *, number_source &) { number_to_uint64(x, &_machine.uint64); },
    [](number_t *x, const number_t *, number_source &) { number_to_float(x, &_machine.single); },
    [](number_t *x, const number_t *, number_source &) { number_to_long_double(x, &_machine.wide); },
};

TEST(NumberHostile, RecordsNeverLeaveTheirBytes) {
    number_source source(53);
    const assertion_watch watch;
    for (int size = 0; size <= 255; ++size) {
        for (long round = scaled(60); round > 0; --round) {
            number_t x_bytes = source.pick(0, 1) != 0 ? source.hostile() : source.any();
            number_t y_bytes = source.pick(0, 1) != 0 ? source.hostile() : source.any();
            (source.pick(0, 1) != 0 ? x_bytes : y_bytes).size = static_cast<uint8_t>(size);
            for (hostile_call_t *call : _hostile_calls) {
                guarded_number x(x_bytes);
                guarded_number y(y_bytes);
                raise_of([&] { call(x.get(), y.get(), source); });
                ASSERT_TRUE(x.intact() && y.intact())
                    << describe(x_bytes) << describe(y_bytes) << "call " << &call - _hostile_calls;
            }
        }
    }
}

}  // namespace
