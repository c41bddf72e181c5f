// The order of records: number_cmp, the bytes and the values agree.

#include <gtest/gtest.h>

#include "number_properties.h"

using namespace dv::test;

namespace {

TEST(NumberOrder, OfRecordsIsTheOrderOfValues) {
    number_source source(10);
    for (long round = scaled(2'000'000); round > 0; --round) {
        const number_t x = source.any();
        const number_t y = source.pick(0, 20) == 0 ? source.with_stray_bytes(x) : source.pair_for(x);
        ASSERT_EQ(order_fault(x, y), "");
    }
}

TEST(NumberOrder, PutsTheConstantsAroundTheValues) {
    const number_t least_negative = num("-1E-130");
    const number_t least_positive = num("1E-130");
    const number_t *const ascending[] = {_number_null,    _number_neginf, _number_min,     &least_negative,
                                         _number_negzero, _number_zero,   _number_poszero, &least_positive,
                                         _number_one,     _number_e,      n1000000000,     _number_max,
                                         _number_posinf};
    for (const auto *const &x : ascending) {
        for (const auto *const &y : ascending) {
            const int order = number_cmp(x, y);
            EXPECT_EQ((order > 0) - (order < 0), (&x > &y) - (&x < &y)) << describe(*x) << describe(*y);
        }
    }
}

}  // namespace
