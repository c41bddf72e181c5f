// NUMBER and machine numbers: 8 and 16 bits exhaustively, wider types and floats on random and hard values.

#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <charconv>
#include <cmath>
#include <limits>
#include <sstream>

#include "number/extended_float.h"
#include "number_properties.h"

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
outcome_t from_machine_(T v) {
    return ours(number_t{}, [&](number_t *r) { machine_type<T>::from(r, v); });
}

// The lowest or highest value in the limit table.
number_t limit_(int type, bool highest) {
    number_t x{};
    std::memcpy(&x, _number_limit[2 * type + (highest ? 1 : 0)].byte, NUMBER_ROW_SIZE);
    return x;
}

template <typename T>
void expect_round_trip_(T v) {
    const outcome_t x = from_machine_(v);
    ASSERT_EQ(x, (outcome_t{0, encode({big_t(v), 0})}));
    T back = static_cast<T>(~v);
    ASSERT_EQ(raise_of([&] { machine_type<T>::to(&x.value, &back); }), 0) << describe(x);
    ASSERT_EQ(back, v);
}

// Whatever x is: its truncated value is in range or not, for the check and for the conversion.
template <typename T>
void expect_to_integer_(const number_t &x) {
    using limits = std::numeric_limits<T>;
    const decimal_t value = decode(x);
    const decimal_t truncated = twin_round(value, 0, NUMBER_RMODE_TRUNC);
    const bool in_range = compare(truncated, {limits::min(), 0}) >= 0 &&
                          compare(truncated, {limits::max(), 0}) <= 0 &&
                          (limits::is_signed || value.digits >= 0);
    ASSERT_EQ(number_range_check(&x, machine_type<T>::code), in_range) << describe(x);
    T got = 77;
    ASSERT_EQ(raise_of([&] { machine_type<T>::to(&x, &got); }), in_range ? 0 : -5072) << describe(x);
    ASSERT_EQ(compare({big_t(got), 0}, in_range ? truncated : decimal_t{77, 0}), 0) << describe(x);
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
}

// These take a way of their own, through quotients by reciprocals.
TEST(NumberShortInteger, ComesBackAndKeepsItsOrderBelow100Million) {
    constexpr int64_t limit = 100'000'000;
    const int64_t step = std::max<int64_t>(limit / scaled(limit), 1);
    number_t before = *_number_zero, x{};
    for (int64_t v = 1, back = 0; v < limit; v += step) {
        number_from_int64(&x, v);
        number_to_int64(&x, &back);
        ASSERT_EQ(back, v) << describe(x);
        ASSERT_LT(number_cmp(&before, &x), 0) << describe(before) << " " << describe(x);
        before = x;
    }
}

TYPED_TEST(NumberInteger, TakesWhatTruncatesIntoItsRange) {
    using limits = std::numeric_limits<TypeParam>;
    for (const TypeParam bound : {limits::min(), limits::max()}) {
        const decimal_t value{big_t(bound), 0};
        EXPECT_EQ(limit_(machine_type<TypeParam>::code, bound > 0), encode(value));
        for (const number_t &step : nums("0 1 -1 0.1 -0.1 0.9999 -0.9999 0.000000000000000001")) {
            const number_t x = encode(twin_add(value, decode(step), NUMBER_RMODE_HALF_UP));
            ASSERT_NO_FATAL_FAILURE(expect_to_integer_<TypeParam>(x));
        }
    }
    number_source source(41);
    for (long round = scaled(200'000); round > 0; --round) {
        ASSERT_NO_FATAL_FAILURE(expect_to_integer_<TypeParam>(source.any()));
    }
}

// ---- floating types ----

// As printf prints it, then kept to so many digits.
template <typename T>
void expect_from_float_(T v) {
    constexpr bool is_float = std::is_same_v<T, float>;
    constexpr int digits = is_float ? 8 : std::is_same_v<T, double> ? 16 : 20;
    char text[64];
    snprintf(text, sizeof text, "%1.*Le", digits - 1, static_cast<long double>(v));
    const outcome_t want = theirs([&] {
        const decimal_t x = twin_read(text);
        return is_float ? twin_round(x, top_position(x) - 6, NUMBER_RMODE_HALF_DOWN) : x;
    });
    ASSERT_EQ(from_machine_(v), want) << text;
}

template <typename T>
T random_bits_(number_source &source) {
    if constexpr (std::is_same_v<T, float>) return std::bit_cast<float>(static_cast<uint32_t>(source.bits()));
    if constexpr (std::is_same_v<T, double>) return std::bit_cast<double>(source.bits());
    const auto mantissa = static_cast<long double>(static_cast<int64_t>(source.bits()));
    return static_cast<T>(std::ldexp(mantissa, source.pick(-600, 500)));
}

// The nine base-100 digits that count, read by the C library, and float's bound by its first two.
template <typename T>
void expect_to_float_(const number_t &x) {
    const decimal_t value = decode(x);
    const int pair = top_position(value) >> 1;
    const decimal_t kept = twin_round(value, 2 * (pair - 8), NUMBER_RMODE_TRUNC);
    const decimal_t head = twin_round(value, 2 * (pair - 1), NUMBER_RMODE_TRUNC);
    const bool fits = !std::is_same_v<T, float> || compare({abs(head.digits), head.exponent}, {340, 36}) <= 0;
    const number_t lowest = limit_(machine_type<T>::code, /*highest=*/false);
    const number_t highest = limit_(machine_type<T>::code, /*highest=*/true);
    const bool within = number_cmp(&x, &lowest) >= 0 && number_cmp(&x, &highest) <= 0;
    ASSERT_EQ(number_range_check(&x, machine_type<T>::code), within) << describe(x);
    T got = 77;
    ASSERT_EQ(raise_of([&] { machine_type<T>::to(&x, &got); }), fits ? 0 : -5072) << describe(x);
    if (!fits) return;
    // Powers of 100 are accumulated with 64 significant bits: their error shows there, and nowhere else.
    using limits = std::numeric_limits<T>;
    const long double ulps = std::is_same_v<T, long double> ? 64 : 1;
    const long double ulp = std::max<long double>(limits::epsilon(), 0x1p-63L);
    const long double want = std::strtold(scientific_text(kept).c_str(), nullptr);
    const long double error = std::fabs(static_cast<long double>(got) - want);
    if (std::isinf(static_cast<T>(want))) {
        ASSERT_EQ(got, static_cast<T>(want)) << describe(x);
    } else {
        ASSERT_LE(error, ulps * (std::fabs(want) * ulp + limits::denorm_min())) << describe(x);
    }
}

template <typename T>
class NumberFloat : public testing::Test {};
using floats_t = testing::Types<float, double, long double>;
TYPED_TEST_SUITE(NumberFloat, floats_t);

TYPED_TEST(NumberFloat, ComesInAsPrintfPrintsIt) {
    using limits = std::numeric_limits<TypeParam>;
    std::vector<TypeParam> values = {limits::max(), limits::min(), limits::denorm_min(), limits::infinity(),
                                     limits::quiet_NaN()};
    std::istringstream hard(
        "0 1 0.1 1e125 9.999999999999999e125 1e126 1e-130 9.99999999999999e-131 1e-131 123456.75 1234567.5 "
        "1234568.5 99999995 0x1p53 0x1p63 0x1p-24 9.5 1e22 1e23");
    for (std::string text; hard >> text;) {
        values.push_back(static_cast<TypeParam>(std::strtold(text.c_str(), nullptr)));
    }
    for (int n = -131; n <= 126; ++n) {  // numbers on either side of a power of ten, and what rounds to it
        const auto power = static_cast<TypeParam>(std::strtold(("1e" + std::to_string(n)).c_str(), nullptr));
        values.insert(values.end(), {power, std::nextafter(power, TypeParam(0)),
                                     std::nextafter(power, limits::infinity())});
    }
    for (const TypeParam v : values) {
        ASSERT_NO_FATAL_FAILURE(expect_from_float_(v));
        ASSERT_NO_FATAL_FAILURE(expect_from_float_(-v));
    }
    number_source source(42);
    for (long round = scaled(150'000); round > 0; --round) {
        const auto integer =
            static_cast<TypeParam>(static_cast<int64_t>(source.bits()) >> source.pick(1, 63));
        ASSERT_NO_FATAL_FAILURE(expect_from_float_(random_bits_<TypeParam>(source)));
        ASSERT_NO_FATAL_FAILURE(
            expect_from_float_(std::ldexp(integer, source.pick(-70, 30))));  // short, ties
        ASSERT_NO_FATAL_FAILURE(expect_from_float_(integer / TypeParam(100)));
    }
}

// What std::to_chars writes, and what strtod reads back.
void expect_shortest_(double v) {
    char text[64];
    *std::to_chars(text, text + sizeof text, v, std::chars_format::scientific).ptr = '\0';
    const outcome_t want = theirs([&] { return twin_read(text); });
    const outcome_t got = ours(number_t{}, [&](number_t *r) { number_from_double_shortest(r, v); });
    ASSERT_EQ(got, want) << text;
    if (want.code == 0) {
        ASSERT_EQ(std::strtod(scientific_text(decode(got.value)).c_str(), nullptr), v) << text;
    }
}

TEST(NumberShortest, IsTheShortestDecimalThatReadsBackAsTheDouble) {
    std::istringstream hard(
        "0 85.1 0.1 0.3 5e-324 1e23 9.5e-45 2e22 1000000000000000.25 1000000000000000.75 2251799813685247.75 "
        "4503599627370495.5 9007199254740993 9007199254740995 123456789012345678 5.684341886080802e-14 "
        "9.999999999999999e125 9.9999999999999999e125 1e126 1e-130 9.9999999999999999e-131 "
        "9.99999999999999e-131 "
        "nan inf");
    for (std::string text; hard >> text;) {
        const double v = std::strtod(text.c_str(), nullptr);
        ASSERT_NO_FATAL_FAILURE(expect_shortest_(v));
        ASSERT_NO_FATAL_FAILURE(expect_shortest_(-v));
    }
    for (int n = -440; n <= 425; ++n) {  // below a power of two the doubles lie closer
        const double power = std::ldexp(1.0, n);
        for (const double v : {power, std::nextafter(power, 0.0), std::nextafter(power, 1e300)})
            ASSERT_NO_FATAL_FAILURE(expect_shortest_(v));
    }
    for (int n = -131; n <= 126; ++n) {
        for (int digit = 1; digit <= 9; ++digit) {
            const double v = std::strtod((std::to_string(digit) + "e" + std::to_string(n)).c_str(), nullptr);
            for (const double near : {v, std::nextafter(v, 0.0), std::nextafter(v, 1e300)})
                ASSERT_NO_FATAL_FAILURE(expect_shortest_(near));
        }
    }
    number_source source(45);
    for (long round = scaled(300'000); round > 0; --round) {
        ASSERT_NO_FATAL_FAILURE(expect_shortest_(random_bits_<double>(source)));
        const auto integer = static_cast<double>(static_cast<int64_t>(source.bits()) >> source.pick(0, 63));
        ASSERT_NO_FATAL_FAILURE(expect_shortest_(std::ldexp(integer, source.pick(-70, 30))));
        ASSERT_NO_FATAL_FAILURE(expect_shortest_(integer / 100));
    }
}

TEST(NumberShortest, IsTheLiteralOfUpToFifteenDigits) {
    number_source source(46);
    for (long round = scaled(200'000); round > 0; --round) {
        const auto digits = static_cast<int64_t>(source.bits() % 1'000'000'000'000'000);
        const std::string text = std::to_string(digits) + "e" + std::to_string(source.pick(-140, 110));
        const outcome_t got = ours(number_t{}, [&](number_t *r) {
            number_from_double_shortest(r, std::strtod(text.c_str(), nullptr));
        });
        ASSERT_EQ(got, theirs([&] { return twin_read(text.c_str()); })) << text;
    }
}

TYPED_TEST(NumberFloat, GoesOutWithinAFewUnitsOfTheLastPlace) {
    for (const number_t &x : nums("0 1 -1 3.402823E38 3.402823001E38 -3.402823E38 -3.4028231E38 3.4028239E38 "
                                  "3.405E38 3.409999E38 3.41E38 -3.405E38 "
                                  "-3.41E38 1E39 -1E40 9.9E37 1E-45 1E-46 1E-130 1E125 0.1")) {
        ASSERT_NO_FATAL_FAILURE(expect_to_float_<TypeParam>(x));
    }
    number_source source(43);
    for (long round = scaled(200'000); round > 0; --round) {
        ASSERT_NO_FATAL_FAILURE(expect_to_float_<TypeParam>(source.any()));
    }
}

TEST(ExtendedFloat, IsToTheLastBitWhatTheMachineComputesWith64Bits) {
    if (std::numeric_limits<long double>::digits != 64) GTEST_SKIP() << "no long double of 64 bits here";
    using plain_t = dv::impl::plain::extended_float;
    number_source source(44);
    for (long round = scaled(300'000); round > 0; --round) {
        const uint64_t a = source.bits() >> source.pick(0, 63) | 1;
        // Their product is just below a power of two, where rounding carries into a new bit.
        const uint64_t highest = a << std::countl_zero(a);
        const auto below = static_cast<uint64_t>(~dv::impl::uint128_t{0} / 2 / highest);
        for (const uint64_t b :
             {source.bits() | 1, below, ~uint64_t{0}, uint64_t{1} << 63 | 1, uint64_t{3}, a}) {
            const auto real_a = static_cast<long double>(a), real_b = static_cast<long double>(b);
            const plain_t plain_a(a), plain_b(b);
            ASSERT_EQ(static_cast<long double>(plain_a * plain_b), real_a * real_b) << a << " " << b;
            ASSERT_EQ(static_cast<long double>(plain_a / plain_b), real_a / real_b) << a << " " << b;
        }
    }
}

}  // namespace
