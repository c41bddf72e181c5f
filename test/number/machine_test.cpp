// NUMBER and machine numbers: 8 and 16 bits exhaustively, wider types and floats on random and hard values.

#include <gtest/gtest.h>

#include <bit>
#include <cfloat>
#include <cmath>
#include <limits>

#include "number_support.h"

using namespace dv::test;

namespace {

template <typename T>
struct machine_type;  // the functions of the library for a machine type

#define DV_MACHINE_TYPE(type, name, code_of)               \
    template <>                                            \
    struct machine_type<type> {                            \
        static constexpr auto from = number_from_##name;   \
        static constexpr auto to = number_to_##name;       \
        static constexpr int code = NUMBER_TYPE_##code_of; \
    }
DV_MACHINE_TYPE(int8_t, int8, INT8);
DV_MACHINE_TYPE(uint8_t, uint8, UINT8);
DV_MACHINE_TYPE(int16_t, int16, INT16);
DV_MACHINE_TYPE(uint16_t, uint16, UINT16);
DV_MACHINE_TYPE(int32_t, int32, INT32);
DV_MACHINE_TYPE(uint32_t, uint32, UINT32);
DV_MACHINE_TYPE(int64_t, int64, INT64);
DV_MACHINE_TYPE(uint64_t, uint64, UINT64);
DV_MACHINE_TYPE(float, float, FLOAT);
DV_MACHINE_TYPE(double, double, DOUBLE);
DV_MACHINE_TYPE(long double, long_double, LONG_DOUBLE);
#undef DV_MACHINE_TYPE

template <typename T>
void expect_round_trip_(T v) {
    const number_t x = ours(number_t{}, [&](number_t *r) { machine_type<T>::from(r, v); }).value;
    ASSERT_EQ(x, num(std::to_string(v)));
    T back = static_cast<T>(~v);
    ASSERT_EQ(raise_of([&] { machine_type<T>::to(&x, &back); }), 0) << v;
    ASSERT_EQ(back, v);
}

// Whatever x is: the range check and the conversion say the same as the twin, and the value is truncated.
template <typename T>
void expect_to_integer_(const number_t &x) {
    const decimal_t value = decode(x);
    const bool in_range = twin_in_range(value, machine_type<T>::code);
    ASSERT_EQ(number_range_check(&x, machine_type<T>::code), in_range) << describe(x);
    T got = 77;
    const int code = raise_of([&] { machine_type<T>::to(&x, &got); });
    ASSERT_EQ(code, in_range ? 0 : -5072) << describe(x) << "type " << machine_type<T>::code;
    if (in_range) {
        ASSERT_EQ(num(std::to_string(got)), encode(twin_round(value, 0, NUMBER_RMODE_TRUNC))) << describe(x);
    } else {
        ASSERT_EQ(got, 77) << "written although it raised";
    }
}

template <typename T>
class NumberInteger : public testing::Test {};
using integers_t = testing::Types<int8_t, uint8_t, int16_t, uint16_t, int32_t, uint32_t, int64_t, uint64_t>;
TYPED_TEST_SUITE(NumberInteger, integers_t);

TYPED_TEST(NumberInteger, GoesInAndOutUnchanged) {
    using limits = std::numeric_limits<TypeParam>;
    if constexpr (sizeof(TypeParam) <= 2) {
        for (int v{limits::min()}; v <= limits::max(); ++v) {
            ASSERT_NO_FATAL_FAILURE(expect_round_trip_(static_cast<TypeParam>(v)));
        }
    }
    number_source source(40);
    for (long round = scaled(100'000); round > 0; --round) {
        const uint64_t noise = source.bits() >> source.pick(0, 63);
        ASSERT_NO_FATAL_FAILURE(expect_round_trip_(static_cast<TypeParam>(noise)));
        ASSERT_NO_FATAL_FAILURE(expect_round_trip_(static_cast<TypeParam>(~noise)));
    }
    uint64_t power = 1;
    for (int i = 0; i < 20; ++i, power *= 10) {
        for (const uint64_t v : {power - 1, power, power + 1, -power, 1 - power}) {
            ASSERT_NO_FATAL_FAILURE(expect_round_trip_(static_cast<TypeParam>(v)));
        }
    }
    ASSERT_NO_FATAL_FAILURE(expect_round_trip_(limits::max()));
    ASSERT_NO_FATAL_FAILURE(expect_round_trip_(limits::min()));
}

TYPED_TEST(NumberInteger, TakesWhatTruncatesIntoItsRange) {
    number_source source(41);
    const std::string bounds[] = {std::to_string(std::numeric_limits<TypeParam>::max()),
                                  std::to_string(std::numeric_limits<TypeParam>::min())};
    for (const std::string &bound : bounds) {
        const decimal_t value = decode(num(bound));
        for (const char *step :
             {"0", "1", "-1", "0.1", "-0.1", "0.9999", "-0.9999", "0.000000000000000001"}) {
            const number_t x = encode(twin_add(value, decode(num(step)), NUMBER_RMODE_HALF_UP));
            ASSERT_NO_FATAL_FAILURE(expect_to_integer_<TypeParam>(x));
        }
    }
    for (const char *text : {"-0.5", "0.5", "-1E-130", "1E-130", "1E125", "-1E125", "1E19", "1E20", "1E18"}) {
        ASSERT_NO_FATAL_FAILURE(expect_to_integer_<TypeParam>(num(text)));
    }
    for (long round = scaled(100'000); round > 0; --round) {
        ASSERT_NO_FATAL_FAILURE(expect_to_integer_<TypeParam>(source.any()));
        ASSERT_NO_FATAL_FAILURE(expect_to_integer_<TypeParam>(source.with_digits(1, 24)));
    }
}

TEST(NumberRangeCheck, KnowsNoOtherTypes) {
    for (const int type : {-1, -2, int{NUMBER_TYPE_MAX}, 1000}) {
        EXPECT_EQ(number_range_check(_number_one, type), 0) << type;
    }
}

// ---------------------------------------------------------------------------------------------------------
// Floating types
// ---------------------------------------------------------------------------------------------------------

template <typename T>
struct float_rule_t;  // how printf prints it, and how many digits are kept
template <>
struct float_rule_t<float> {
    static constexpr const char *format = "%1.7Le";
    static constexpr int digits = 7;
};
template <>
struct float_rule_t<double> {
    static constexpr const char *format = "%1.15Le";
    static constexpr int digits = 18;
};
template <>
struct float_rule_t<long double> {
    static constexpr const char *format = "%1.19Le";
    static constexpr int digits = 21;
};

template <typename T>
void expect_from_float_(T v) {
    char text[64];
    snprintf(text, sizeof text, float_rule_t<T>::format, static_cast<long double>(v));
    const outcome_t want = theirs([&] {
        decimal_t x = twin_read(text);
        if (x.digits == 0) return x;
        return twin_round(x, top_position(x) - float_rule_t<T>::digits + 1, NUMBER_RMODE_HALF_DOWN);
    });
    ASSERT_EQ(ours(number_t{}, [&](number_t *r) { machine_type<T>::from(r, v); }), want) << text;
}

template <typename T>
T random_bits_(number_source &source) {
    if constexpr (std::is_same_v<T, float>) {
        return std::bit_cast<float>(static_cast<uint32_t>(source.bits()));
    } else if constexpr (std::is_same_v<T, double>) {
        return std::bit_cast<double>(source.bits());
    } else {  // any mantissa with its leading bit set, so that it is a number
        const auto mantissa = static_cast<long double>(source.bits() | uint64_t{1} << 63);
        return std::ldexp(source.pick(0, 1) != 0 ? mantissa : -mantissa, source.pick(-600, 500));
    }
}

// |got - want| in units of the last place of want, want being x read by the C library.
template <typename T>
long double error_in_ulps_(T got, const number_t &x) {
    decimal_t kept = decode(x);
    const int top = top_position(kept);
    const int first_digits = (top % 2 == 0) ? 17 : 18;  // 9 base-100 digits
    kept = twin_round(kept, std::max(top - first_digits + 1, -300), NUMBER_RMODE_TRUNC);
    const long double want = strtold(scientific_text(kept).c_str(), nullptr);
    const auto rounded = static_cast<T>(want);
    if (std::isinf(rounded)) return got == rounded ? 0 : INFINITY;
    int exponent = 0;
    std::frexp(rounded, &exponent);
    const int least = std::numeric_limits<T>::min_exponent;
    const long double ulp = std::ldexp(1.0L, std::max(exponent, least) - std::numeric_limits<T>::digits);
    return std::fabs(static_cast<long double>(got) - want) / ulp;
}

// The bound of number_to_float: 3.402823E38 by exponent and first two base-100 digits.
bool float_takes_(const decimal_t &x) {
    if (x.digits == 0 || top_position(x) < 38) return true;
    const decimal_t head = twin_round({false, x.digits, x.exponent}, 36, NUMBER_RMODE_TRUNC);
    return compare(head, {false, 340, 36}) <= 0;
}

template <typename T>
void expect_to_float_(const number_t &x, long double ulps) {
    T got = 77;
    const int code = raise_of([&] { machine_type<T>::to(&x, &got); });
    const bool fits = !std::is_same_v<T, float> || float_takes_(decode(x));
    ASSERT_EQ(code, fits ? 0 : -5072) << describe(x);
    if (!fits) return;
    if (x.size == 1) {
        ASSERT_TRUE(got == 0 && !std::signbit(got));
    } else {
        ASSERT_LE(error_in_ulps_(got, x), ulps) << describe(x) << static_cast<long double>(got);
    }
}

template <typename T>
class NumberFloat : public testing::Test {};
using floats_t = testing::Types<float, double, long double>;
TYPED_TEST_SUITE(NumberFloat, floats_t);

TYPED_TEST(NumberFloat, ComesInAsPrintfPrintsIt) {
    using limits = std::numeric_limits<TypeParam>;
    const TypeParam hard[] = {0,
                              TypeParam(-0.0),
                              1,
                              TypeParam(0.1),
                              TypeParam(0.5),
                              limits::max(),
                              limits::min(),
                              limits::denorm_min(),
                              limits::infinity(),
                              -limits::infinity(),
                              limits::quiet_NaN(),
                              TypeParam(1e125),
                              TypeParam(9.999999999999999e125),
                              TypeParam(1e126),
                              TypeParam(1e-130),
                              TypeParam(9.99999999999999e-131),
                              TypeParam(1e-131),
                              TypeParam(123456.75),
                              TypeParam(1234567.5),
                              TypeParam(1234568.5),
                              TypeParam(99999995),
                              TypeParam(0x1p53),
                              TypeParam(0x1p63),
                              TypeParam(0x1p-24),
                              TypeParam(9.5),
                              TypeParam(1e22),
                              TypeParam(1e23)};
    for (const TypeParam v : hard) {
        ASSERT_NO_FATAL_FAILURE(expect_from_float_(v));
        ASSERT_NO_FATAL_FAILURE(expect_from_float_(-v));
    }
    number_source source(42);
    for (long round = scaled(150'000); round > 0; --round) {
        ASSERT_NO_FATAL_FAILURE(expect_from_float_(random_bits_<TypeParam>(source)));
        const auto near_one =
            static_cast<TypeParam>(static_cast<int64_t>(source.bits()) >> source.pick(1, 63));
        ASSERT_NO_FATAL_FAILURE(
            expect_from_float_(std::ldexp(near_one, source.pick(-70, 30))));  // short, ties
        ASSERT_NO_FATAL_FAILURE(expect_from_float_(near_one / TypeParam(100)));
        ASSERT_NO_FATAL_FAILURE(
            expect_from_float_(std::pow(TypeParam(10), TypeParam(source.pick(-130, 125)))));
    }
}

TYPED_TEST(NumberFloat, GoesOutWithinAFewUnitsOfTheLastPlace) {
    // Powers of 100 are accumulated in long double: its own error shows there, and nowhere else.
    const long double ulps = std::is_same_v<TypeParam, long double> ? 64 : 1;
    for (const char *text : {"0",
                             "1",
                             "-1",
                             "3.402823E38",
                             "3.4028239E38",
                             "3.405E38",
                             "3.409999E38",
                             "3.41E38",
                             "-3.405E38",
                             "-3.41E38",
                             "1E39",
                             "-1E40",
                             "9.9E37",
                             "1E-45",
                             "1E-46",
                             "1E-130",
                             "1E125",
                             "9.9999999999999999999999999999999999999E125",
                             "0.1",
                             "123456789012345678901234567"}) {
        ASSERT_NO_FATAL_FAILURE(expect_to_float_<TypeParam>(num(text), ulps));
    }
    number_source source(43);
    for (long round = scaled(100'000); round > 0; --round) {
        ASSERT_NO_FATAL_FAILURE(expect_to_float_<TypeParam>(source.any(), ulps));
        ASSERT_NO_FATAL_FAILURE(expect_to_float_<TypeParam>(source.with_digits(1, 38), ulps));
    }
}

TYPED_TEST(NumberFloat, RangeCheckComparesTheWholeValue) {
    number_source source(44);
    for (const char *text :
         {"3.402823E38", "-3.402823E38", "3.4028231E38", "-3.4028231E38", "3.40282300001E38"}) {
        const number_t x = num(text);
        EXPECT_EQ(number_range_check(&x, machine_type<TypeParam>::code),
                  twin_in_range(decode(x), machine_type<TypeParam>::code))
            << text;
    }
    for (long round = scaled(50'000); round > 0; --round) {
        const number_t x = source.any();
        ASSERT_EQ(number_range_check(&x, machine_type<TypeParam>::code),
                  twin_in_range(decode(x), machine_type<TypeParam>::code))
            << describe(x);
    }
}

// Few digits survive the way through a float and back.
TEST(NumberDouble, KeepsFifteenDigitsThereAndBack) {
    number_source source(45);
    for (long round = scaled(100'000); round > 0; --round) {
        const number_t x = source.with_digits(1, 15);
        double v = 0;
        number_to_double(&x, &v);
        number_t back;
        number_from_double(&back, v);
        if (x.size > 1) number_round_at_withmode(&back, top_position(decode(x)) - 14, NUMBER_RMODE_HALF_UP);
        ASSERT_EQ(back, x) << v;
    }
}

}  // namespace
