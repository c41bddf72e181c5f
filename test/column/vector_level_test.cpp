#include <gtest/gtest.h>

#include "dvtypes/column_record.h"

namespace {

// Every level up to that of the machine can be set; a higher one becomes that, what is none the lowest.
TEST(VectorLevel, IsSetAsFarAsTheMachineHasIt) {
    const dv_vector_level_e highest = dv_vector_set_level(DV_VECTOR_AVX512);
    for (int level = DV_VECTOR_PLAIN; level < DV_VECTOR_LEVELS; ++level) {
        const int wanted = level < highest ? level : int{highest};
        EXPECT_EQ(dv_vector_set_level(static_cast<dv_vector_level_e>(level)), wanted);
        EXPECT_EQ(dv_vector_level(), wanted);
    }
#ifdef __x86_64__
    if (highest != DV_VECTOR_PLAIN) {  // a build without code for particular machines has no other
        __builtin_cpu_init();
        EXPECT_EQ(highest >= DV_VECTOR_AVX2,
                  __builtin_cpu_supports("avx2") && __builtin_cpu_supports("bmi2"));
        EXPECT_EQ(highest == DV_VECTOR_AVX512, __builtin_cpu_supports("avx512vbmi2") != 0);
    }
#endif
    dv_vector_set_level(highest);
}

}  // namespace
