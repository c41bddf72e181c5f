// dvtypes.hpp: values, operators and exceptions over the C functions.

#include <gtest/gtest.h>

#include <algorithm>
#include <dvtypes/dvtypes.hpp>
#include <sstream>

namespace {

using dv::number;

TEST(CppNumber, CalculatesLikeTheFunctionsBehindIt) {
    const number price("1234.50");
    EXPECT_EQ(round(price * number("1.19"), -2), number("1469.06"));
    EXPECT_EQ((price - 1234) + -number("0.5"), number());
    EXPECT_EQ(number(7) % -3, 1);
    EXPECT_EQ(number(1) / 8, number(0.125));
    EXPECT_EQ(abs(number(-5)).to_int64(), 5);
    EXPECT_EQ(number(18446744073709551615u).to_string(), "18446744073709551615");
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
