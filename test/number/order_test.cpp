// The order of records: number_cmp, the bytes and the values agree.

#include <gtest/gtest.h>

#include "number_support.h"

using namespace dv::test;

namespace {

int sign_(int n) { return (n > 0) - (n < 0); }

int compare_bytes_(const number_t &x, const number_t &y) {
    const int bytes = std::memcmp(&x.signexp, &y.signexp, std::min(x.size, y.size));
    return bytes != 0 ? bytes : x.size - y.size;
}

TEST(NumberOrder, OfRecordsIsTheOrderOfValues) {
    number_source source(10);
    for (long round = scaled(1'500'000); round > 0; --round) {
        const number_t x = source.any();
        const number_t y = source.pick(0, 20) == 0 ? with_stray_bytes(x, source.bits()) : source.pair_for(x);
        const int want = sign_(compare(decode(x), decode(y)));
        ASSERT_EQ(sign_(number_cmp(&x, &y)), want) << describe(x) << describe(y);
        ASSERT_EQ(sign_(number_cmp(&y, &x)), -want) << describe(x) << describe(y);
        ASSERT_EQ(sign_(compare_bytes_(x, y)), want) << describe(x) << describe(y);
    }
}

// Pairs that differ in one digit byte at each place and in length only: every word of the inline comparison.
TEST(NumberOrder, SeesADifferenceAtEveryByte) {
    number_source source(11);
    for (const char *sign : {"", "-"}) {
        for (int length = 1; length <= 18; ++length) {
            const std::string digits(static_cast<size_t>(2 * length), '7');
            const number_t x = with_stray_bytes(num(sign + ("0." + digits)), source.bits());
            for (int at = 0; at < length; ++at) {
                number_t y = with_stray_bytes(x, source.bits());
                ++y.coef[at];
                EXPECT_LT(number_cmp(&x, &y), 0) << describe(x) << describe(y);
                EXPECT_GT(number_cmp(&y, &x), 0) << describe(x) << describe(y);
            }
            const number_t longer = with_stray_bytes(num(sign + ("0." + digits + "01")), source.bits());
            EXPECT_EQ(sign_(number_cmp(&x, &longer)), *sign == '-' ? 1 : -1)
                << describe(x) << describe(longer);
        }
    }
}

TEST(NumberOrder, PutsTheConstantsAroundTheValues) {
    const number_t least_negative = num("-1E-130");
    const number_t least_positive = num("1E-130");
    const number_t *const ascending[] = {_number_null,    _number_neginf, _number_min,     &least_negative,
                                         _number_negzero, _number_zero,   _number_poszero, &least_positive,
                                         _number_one,     _number_e,      n1000000000,     _number_max,
                                         _number_posinf};
    for (size_t i = 0; i < std::size(ascending); ++i) {
        for (size_t j = 0; j < std::size(ascending); ++j) {
            const int want = sign_(static_cast<int>(i) - static_cast<int>(j));
            EXPECT_EQ(sign_(number_cmp(ascending[i], ascending[j])), want) << i << " " << j;
        }
    }
}

// Bytes behind `size` hold nothing: any operation gives the same over clean and over stray bytes.
TEST(NumberStrayBytes, NeverChangeAResult) {
    using operation_t = void(number_t *, const number_t *);
    constexpr operation_t *operations[] = {
        number_add,
        number_sub,
        number_mul,
        number_div,
        number_mod,
        number_rem,
        [](number_t *x, const number_t *) { number_negate(x); },
        [](number_t *x, const number_t *y) {
            number_round_at_withmode(x, y->signexp % 40 - 20, y->size % 7);
        },
        [](number_t *x, const number_t *y) { number_force_prec_scale(x, 38, y->size); },
    };
    number_source source(12);
    for (long round = scaled(30'000); round > 0; --round) {
        const number_t x = source.any();
        const number_t y = source.pair_for(x);
        const number_t x_clean = with_stray_bytes(x, 0);
        const number_t y_clean = with_stray_bytes(y, 0);
        for (operation_t *operation : operations) {
            ASSERT_EQ(ours(x, [&](number_t *r) { operation(r, &y); }),
                      ours(x_clean, [&](number_t *r) { operation(r, &y_clean); }))
                << describe(x) << describe(y) << "operation " << (&operation - operations);
        }
        char text[2][NUMBER_NORMAL_TEXT_SIZE];
        number_to_str(&x, sizeof text[0], text[0], nullptr);
        number_to_str(&x_clean, sizeof text[1], text[1], nullptr);
        ASSERT_STREQ(text[0], text[1]);
    }
}

}  // namespace
