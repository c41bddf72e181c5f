// The type catalogue against records and names, and lookups by any code.

#include <gtest/gtest.h>

#include <dvtypes/dvtypes.hpp>
#include <sstream>

#include "dvtypes/datetime.h"
#include "dvtypes/rowid.h"
#include "dvtypes/timestamp.h"

TEST(TypeCatalogue, StoresARecordBehindALengthByte) {
    int sizes[DV_TYPE_MAX_PSM] = {0, sizeof(number_t)};  // a NUMBER has that byte itself
    sizes[DV_TYPE_DATE] = sizes[DV_TYPE_TIME] = sizes[DV_TYPE_BIN_DOUBLE] = sizeof(dv_date_t) + 1;
    sizes[DV_TYPE_TIMESTAMP] = sizes[DV_TYPE_TS_LTZ] = sizeof(dv_timestamp_t) + 1;
    sizes[DV_TYPE_TS_TZ] = sizeof(dv_ts_tz_t) + 1;
    sizes[DV_TYPE_ITV_YTM] = sizeof(dv_itv_ytm_t) + 1;
    sizes[DV_TYPE_ITV_DTS] = sizes[DV_TYPE_ROWID] = sizeof(rowid_t) + 1;
    sizes[DV_TYPE_BIN_FLOAT] = sizes[DV_TYPE_BIN_INT] = sizeof(float) + 1;
    EXPECT_TRUE(std::equal(sizes, std::end(sizes), _dv_type_fixed_size));
}

TEST(TypeCatalogue, PutsTypesIntoTheCategoriesOfTheirNames) {
    std::istringstream names(
        "NUMBER|BIN_|_INT$ CHAR|CLOB|LONG$ RAW|BLOB|BFILE DATE|TIME|TS_ ITV LONG LOB|BFILE "
        "E_VAR|E_RAW|RECORD|TABLE|TBL|OBJECT CHAR|E_RAW LOB|LONG E_N[CV]");
    int category = 1;
    for (std::string name; names >> name; category *= 2) {
        const testing::Matcher<std::string> is_named = testing::ContainsRegex(name);
        for (int type = 0; type < DV_TYPE_MAX_PSM; ++type)
            EXPECT_EQ((_dv_type_info[type] & category) != 0, is_named.Matches(_dv_type_str[type]))
                << _dv_type_str[type] << " " << name;
    }
}

TEST(TypeLookup, TakesAnyCode) {
    EXPECT_EQ(dv::type_to_compare(DV_TYPE_DATE, DV_TYPE_TS_TZ), DV_TYPE_TS_TZ);
    EXPECT_FALSE(dv::type_converts(DV_TYPE_NUMBER, DV_TYPE_BIN_FLOAT));  // past the table of SQL types
    for (const int code : {-1, INT32_MIN, int{DV_TYPE_INVALID}, INT32_MAX}) {
        EXPECT_FALSE(*dv::type_name(code) || dv::type_size(code) || dv::type_is(code, DV_TYPE_INFO_LOB));
        EXPECT_EQ(dv::type_to_compare(DV_TYPE_CHAR, code), DV_TYPE_INVALID);
    }
}
