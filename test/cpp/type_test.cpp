// type.hpp: lookups in the type catalogue.

#include <gtest/gtest.h>

#include <dvtypes/type.hpp>

namespace {

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

}  // namespace
