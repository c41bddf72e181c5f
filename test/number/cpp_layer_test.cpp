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
    EXPECT_EQ(pow(number(2), 10) - sqrt(number(1764)), 982);
    EXPECT_EQ(round(exp(number()), -30), 1);
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

TEST(CppTypeCatalogue, AnswersForAnyCode) {
    for (const dv_type_t none : {-1, int{DV_TYPE_MAX_PSM}, INT32_MAX, INT32_MIN}) {
        EXPECT_FALSE(dv::is_type(none) || *dv::type_name(none) != '\0' || dv::type_size(none) != 0);
        EXPECT_FALSE(dv::type_is(none, DV_TYPE_INFO_NUMERIC) || dv::type_converts(none, DV_TYPE_CHAR) ||
                     dv::type_converts(DV_TYPE_CHAR, none));
        EXPECT_EQ(dv::type_to_compare(DV_TYPE_NUMBER, none), DV_TYPE_INVALID);
    }
    EXPECT_STREQ(dv::type_name(DV_TYPE_NONE), _dv_type_name[0]);
    EXPECT_STREQ(dv::type_name(DV_TYPE_MAX_PSM - 1), "OBJECT");
    EXPECT_EQ(dv::type_size(DV_TYPE_DATE), 9);
    EXPECT_TRUE(dv::type_is(DV_TYPE_NUMBER, DV_TYPE_INFO_NUMERIC) &&
                !dv::type_is(DV_TYPE_DATE, DV_TYPE_INFO_NUMERIC));
    EXPECT_EQ(dv::type_cell(_dv_type_opd_comb_add, DV_TYPE_DATE, DV_TYPE_ITV_YTM), '6');
    EXPECT_TRUE(dv::type_converts(DV_TYPE_NUMBER, DV_TYPE_CHAR) &&
                !dv::type_converts(DV_TYPE_NUMBER, DV_TYPE_DATE));
    EXPECT_EQ(dv::type_to_compare(DV_TYPE_CHAR, DV_TYPE_NUMBER), DV_TYPE_NUMBER);
    EXPECT_EQ(dv::type_to_compare(DV_TYPE_NVARCHAR, DV_TYPE_VARCHAR), DV_TYPE_NVARCHAR);
    EXPECT_EQ(dv::type_to_compare(DV_TYPE_CSR, DV_TYPE_CSR), DV_TYPE_INVALID);
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
