// The type catalogue against records and names, and lookups by any code.

#include <gtest/gtest.h>

#include <dvtypes/dvtypes.hpp>
#include <sstream>

#include "dvtypes/datetime.h"
#include "dvtypes/rowid.h"
#include "dvtypes/timestamp.h"

TEST(TypeLookup, TakesAnyCode) {
    EXPECT_EQ(dv::type_to_compare(DV_TYPE_DATE, DV_TYPE_TS_TZ), DV_TYPE_TS_TZ);
    EXPECT_FALSE(dv::type_converts(DV_TYPE_NUMBER, DV_TYPE_BIN_FLOAT));  // past the table of SQL types
    for (const int code : {-1, INT32_MIN, int{DV_TYPE_INVALID}, INT32_MAX}) {
        EXPECT_FALSE(*dv::type_name(code) || dv::type_size(code) || dv::type_is(code, DV_TYPE_INFO_LOB));
        EXPECT_EQ(dv::type_to_compare(DV_TYPE_CHAR, code), DV_TYPE_INVALID);
    }
}
