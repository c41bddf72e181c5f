// type.hpp: lookups in the type catalogue.

#include <gtest/gtest.h>

#include <dvtypes/dvtypes.hpp>

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

// A stored value has a byte of length in front of its record, but for the NUMBER, which begins with it.
TEST(CppTypeCatalogue, KnowsTheTypeOfEachValueClass) {
    const auto expect = []<typename Value>(const Value &, const char *name) {
        EXPECT_STREQ(dv::type_name(dv::type_of<Value>), name);
        constexpr int lengths = std::same_as<Value, dv::number> ? 0 : 1;
        EXPECT_EQ(dv::type_size(dv::type_of<Value>), int{sizeof(typename Value::record_type)} + lengths)
            << name;
    };
    expect(dv::number(), "NUMBER");
    expect(dv::date(), "DATE");
    expect(dv::time_of_day(), "TIME");
    expect(dv::timestamp(), "TIMESTAMP");
    expect(dv::timestamp_tz(), "TIMESTAMP WITH TIME ZONE");
    expect(dv::timestamp_ltz(), "TIMESTAMP WITH LOCAL TIME ZONE");
    expect(dv::interval_ym(), "INTERVAL YEAR TO MONTH");
    expect(dv::interval_ds(), "INTERVAL DAY TO SECOND");
    expect(dv::rowid(), "ROWID");
    EXPECT_EQ(dv::type_of<dv::zone>, DV_TYPE_INVALID);
}

}  // namespace
