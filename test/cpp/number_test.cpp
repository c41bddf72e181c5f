// dvtypes.hpp: values, operators and exceptions over the C functions.

#include <gtest/gtest.h>

#include <algorithm>
#include <dvtypes/dvtypes.hpp>
#include <numeric>
#include <random>
#include <sstream>

namespace {

using dv::number;
using namespace dv::literals;

TEST(CppNumber, CalculatesLikeTheFunctionsBehindIt) {
    const number price("1234.50");
    EXPECT_EQ(round(price * 1.19_number, 2), number("1469.06"));
    EXPECT_EQ((price - 1234) + -number("0.5"), number());
    EXPECT_EQ(number(7) % -3, 1);
    EXPECT_EQ(number(1) / 8, number(0.125));
    EXPECT_EQ(abs(number(-5)).to_int64(), 5);
    EXPECT_EQ(number(18446744073709551615u).to_string(), "18446744073709551615");
    EXPECT_EQ(pow(number(2), 10) - sqrt(number(1764)), 982);
    EXPECT_EQ(round(exp(number()), 30), 1);
    EXPECT_EQ(round(number("-2.5"), 0, NUMBER_RMODE_HALF_EVEN), -2);
    EXPECT_EQ(round(number("-2.5")), -3);
    EXPECT_EQ(number(int64_t{INT64_MIN}).to_int64(), INT64_MIN);
    EXPECT_EQ(number("0.1").to_double(), 0.1);
    EXPECT_EQ(number(price.record()), price);
    std::ostringstream out;
    out << number("-1E-3");
    EXPECT_EQ(out.str(), "-.001");
}

TEST(CppNumber, OrdersByValueAndByKey) {
    const number values[] = {number("-1E100"), -2, number("-1.5"), 0, number("1E-130"), 2, number("2.01")};
    for (const number &x : values) {
        for (const number &y : values) {
            const bool by_key = std::ranges::lexicographical_compare(x.key(), y.key());
            EXPECT_EQ(x < y, &x < &y) << x << " " << y;
            EXPECT_EQ(by_key, &x < &y) << x << " " << y;
        }
    }
}

TEST(CppNumber, IntegersOf128BitsConvertExactlyOrThrow) {
    using dv::detail::int128, dv::detail::uint128;
    const int128 ten_to_18 = 1'000'000'000'000'000'000;
    const struct {
        int128 value;
        const char *text;
    } cases[] = {
        {0, "0"},
        {-ten_to_18 - 7, "-1000000000000000007"},
        {ten_to_18 * ten_to_18 * 99 + 3, "99000000000000000000000000000000000003"},
        {ten_to_18 * ten_to_18 * 100 - 1, "99999999999999999999999999999999999999"},
        {-(ten_to_18 * ten_to_18 * 100 + 230), "-100000000000000000000000000000000000230"},
    };
    for (const auto &c : cases) {
        EXPECT_EQ(number(c.value).to_string(), c.text);
        EXPECT_TRUE(number(c.value).to<int128>() == c.value) << c.text;
        EXPECT_TRUE(number(static_cast<uint128>(c.value < 0 ? -c.value : c.value)) == abs(number(c.value)));
    }
    const auto greatest = ~uint128{};  // 39 digits, the last one 5
    EXPECT_THROW(number{greatest}, dv::error);
    EXPECT_THROW(number{static_cast<int128>(greatest >> 1)}, dv::error);
    EXPECT_TRUE(number(greatest - 5).to<uint128>() == greatest - 5);
    EXPECT_THROW(number(greatest - 5).to<int128>(), dv::error);
    EXPECT_THROW(number("3.5E38").to<uint128>(), dv::error);
    EXPECT_THROW(number("-0.5").to<uint128>(), dv::error);
    EXPECT_TRUE(number("-0.5").to<int128>() == 0);
    std::mt19937_64 random(5);
    for (int i = 0; i < 2000; ++i) {
        const auto v = static_cast<int128>(uint128{random()} << 64 | random()) >> (2 + random() % 120);
        EXPECT_TRUE(number(v).to<int128>() == v) << number(v);
    }
}

template <typename T>
concept makes_number = std::constructible_from<number, T>;
static_assert(makes_number<int8_t> && makes_number<unsigned long long> && makes_number<dv::detail::int128>);
static_assert(!makes_number<char> && !makes_number<bool> && !makes_number<char32_t>);
static_assert(std::convertible_to<int64_t, number> && !std::convertible_to<double, number> &&
              !std::convertible_to<const char *, number>);

TEST(CppNumber, FloatingPointIsReadByTheDecimalsOfItsOwnType) {
    EXPECT_EQ(number(0.1f), ".1"_number);
    EXPECT_EQ(number(0.1), ".1"_number);
    EXPECT_EQ(number(0.1L), ".1"_number);
    EXPECT_EQ(number(18446744073709551615.0L), "18446744073709551615"_number);  // no double: 64 bits
    EXPECT_EQ(number(1.0f / 3), ".3333333"_number);
    EXPECT_EQ(number(85.1), "85.09999999999999"_number);
    EXPECT_EQ(number::shortest(85.1), "85.1"_number);
    EXPECT_THROW(number::shortest(std::numeric_limits<double>::infinity()), dv::error);
    EXPECT_EQ(number(2.5).to<float>(), 2.5f);
    EXPECT_EQ(number(-2.5).to<long double>(), -2.5L);
    EXPECT_EQ(number(-2.5).to<int8_t>(), -2);
    EXPECT_THROW(number(128).to<int8_t>(), dv::error);
    EXPECT_THROW(number(-1).to<uint32_t>(), dv::error);
    EXPECT_THROW(number{std::numeric_limits<double>::infinity()}, dv::error);
}

TEST(CppNumber, RoundsToPlacesAsSqlDoes) {
    const struct {
        number value;
        int64_t places;
        number_rmode_e mode;
        const char *text;  // NULL: -5068
    } cases[] = {
        {"1234.567"_number, 2, NUMBER_RMODE_HALF_UP, "1234.57"},
        {"1234.567"_number, -2, NUMBER_RMODE_HALF_UP, "1200"},
        {"1E-130"_number, INT64_MAX, NUMBER_RMODE_HALF_UP, "1E-130"},
        {5, -200, NUMBER_RMODE_HALF_UP, "0"},
        {5, INT64_MIN, NUMBER_RMODE_TRUNC, "0"},
        {-5, -200, NUMBER_RMODE_CEIL, "0"},
        {-5, -200, NUMBER_RMODE_FLOOR, nullptr},
        {5, -127, NUMBER_RMODE_UP, nullptr},
        {"4.9E125"_number, -126, NUMBER_RMODE_HALF_UP, "0"},
        {"-5E125"_number, -126, NUMBER_RMODE_HALF_UP, nullptr},
        {"5E125"_number, -126, NUMBER_RMODE_HALF_EVEN, "0"},
        {"9E125"_number, -127, NUMBER_RMODE_HALF_UP, "0"},
        {0, -500, NUMBER_RMODE_UP, "0"},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.value.to_string() + " to " + std::to_string(c.places));
        if (c.text != nullptr) {
            EXPECT_EQ(round(c.value, c.places, c.mode), number(c.text));
        } else {
            EXPECT_THROW(round(c.value, c.places, c.mode), dv::error);
        }
    }
    EXPECT_EQ(trunc("-2.567"_number, 1), "-2.5"_number);
    EXPECT_EQ(floor("-2.5"_number), -3);
    EXPECT_EQ(ceil("-2.5"_number), -2);
}

TEST(CppNumber, CountsUpAndDown) {
    number counts[5];
    std::iota(std::begin(counts), std::end(counts), number("-1.5"));
    EXPECT_EQ(std::accumulate(std::begin(counts), std::end(counts), number()), "2.5"_number);
    number x = 7;
    EXPECT_EQ(x++, 7);
    EXPECT_EQ(x--, 8);
    EXPECT_EQ(++x, 8);
    EXPECT_EQ(--x, 7);
    EXPECT_EQ(dv::sign(x) + dv::sign(-x) * 10 + dv::sign(number()) * 100, -9);
}

TEST(CppNumberSum, TermsOfAnyOrderAndPartsGiveTheSumRoundedOnce) {
    std::vector<number> terms = {"1E37"_number, "1E-40"_number, "-1E37"_number, "0.3"_number, "0.3"_number};
    std::mt19937 random(4);
    for (int i = 0; i < 20; ++i) {
        std::ranges::shuffle(terms, random);
        dv::number_sum first, rest;
        for (size_t k = 0; k < terms.size(); ++k) (k < 2 ? first : rest) += terms[k];
        first += rest;
        first -= "1E-40"_number;
        EXPECT_EQ(first.value(), "0.6"_number);
        EXPECT_EQ(first.average(4), "0.15"_number);
    }
}

TEST(CppNumber, LimitsAreWhereTheRangeEnds) {
    using limits = std::numeric_limits<number>;
    EXPECT_EQ(limits::max(), number(std::string(38, '9') + std::string(88, '0')));
    EXPECT_EQ(limits::lowest(), -limits::max());
    EXPECT_GT(1 + limits::epsilon(), 1);
    EXPECT_EQ(1 + limits::epsilon() / 10, 1);
    EXPECT_GT(limits::min(), 0);
    EXPECT_THROW(limits::min() / 10, dv::error);
    EXPECT_THROW(limits::max() * 10, dv::error);
    EXPECT_EQ(number("1E" + std::to_string(limits::max_exponent10)) / 10 * 10, "1E125"_number);
    EXPECT_THROW(number("1E" + std::to_string(limits::max_exponent10 + 1)), dv::error);
    EXPECT_EQ(number("1E" + std::to_string(limits::min_exponent10)), limits::min());
    EXPECT_EQ(12.50_number, "12.50"_number);
    EXPECT_EQ(1e-7_number, "0.0000001"_number);
    EXPECT_THROW(0x10_number, dv::error);
}

TEST(CppNumber, ReadsAndWritesUnderModels) {
    const dv::number_reader read("999,999,990.99");
    dv::number_writer write("FM$999,990.00");
    EXPECT_EQ(write(read("1,234.5")), "$1,234.50");
    EXPECT_EQ(write(1234567).find_first_not_of('#'), std::string::npos);
    EXPECT_THROW(read("12x"), dv::error);
    EXPECT_THROW(read(""), dv::error);
    EXPECT_THROW(dv::number_reader("99x"), dv::error);
    EXPECT_THROW(dv::number_reader(std::string(257, '9')), dv::error);
    write = dv::number_writer("RN");
    EXPECT_EQ(write(19), "            XIX");
    EXPECT_EQ(dv::try_parse<number>("12x", read).code(), -5074);
}

TEST(CppError, CarriesCodePlaceAndMessage) {
    const number before("1E125");
    number x = before;
    try {
        x *= 10;
        FAIL() << x;
    } catch (const dv::error &error) {
        EXPECT_EQ(error.code(), -5068);
        EXPECT_STREQ(error.file(), "number_mul.cpp");
        EXPECT_STREQ(error.function(), "number_mul");
        EXPECT_STREQ(error.what(), dv_error_text(-5068));
        EXPECT_EQ(error.argument_count(), 0u);
    }
    EXPECT_EQ(x, before);
    EXPECT_THROW(number(""), dv::error);
    EXPECT_THROW(number("12x"), dv::error);
}

}  // namespace
