// Exact sums: parts merged, and carries across many changes. That a sum is exact in any order is compared
// with big integers in test/sqlite/number_sum_test.cpp.

#include <gtest/gtest.h>

#include <algorithm>

#include "dvtypes/number_sum.h"
#include "number_support.h"

using namespace dv::test;

namespace {

// Values over the whole range, most of which another one cancels.
std::vector<number_t> values_(std::mt19937_64 &random, size_t count) {
    std::vector<number_t> values;
    while (values.size() < count) {
        std::string text = std::to_string(random() % 1'000'000'007) + "E" +
                           std::to_string(static_cast<int>(random() % 220) - 130);
        values.push_back(num(random() % 2 == 0 ? text : "-" + text));
        if (random() % 4 == 0) continue;
        values.push_back(values.back());
        number_negate(&values.back());
    }
    return values;
}

number_t result_(const number_sum_t &sum) {
    number_t x{};
    number_sum_quotient(&sum, 1, &x);
    return x;
}

TEST(NumberSum, OfOneValueIsTheValueAtEveryPlace) {
    for (int exponent = -130; exponent <= 125; ++exponent) {
        for (const char *digit : {"1", "-9"}) {
            const number_t x = num(digit + ("E" + std::to_string(exponent)));
            number_sum_t sum{};
            number_sum_add(&sum, &x);
            ASSERT_EQ(result_(sum), x);
        }
    }
}

TEST(NumberSum, OfPartsMergedIsTheSumOfTheWhole) {
    std::mt19937_64 random(5);
    for (int round = 0; round < 200; ++round) {
        number_sum_t whole{}, parts[4]{};
        for (const number_t &x : values_(random, 50)) {
            number_sum_add(&whole, &x);
            number_sum_add(&parts[random() % 4], &x);
        }
        for (int i = 0; i < 3; ++i) number_sum_merge(&parts[3], &parts[i]);
        ASSERT_EQ(result_(parts[3]), result_(whole)) << round;
    }
}

TEST(NumberSum, TakesCarriesAcrossMergesAndChanges) {
    const number_t x = num("99999999999999999999999999999999999999E-20");
    number_sum_t sum{};
    number_t want = x;
    number_sum_add(&sum, &x);
    for (int i = 0; i < 60; ++i) {  // 2^60 times x
        number_sum_merge(&sum, &sum);
        number_add(&want, &want);
    }
    for (int i = 0; i < 70'000; ++i) number_sum_sub(&sum, &x);
    for (int i = 0; i < 70'000; ++i) number_sum_add(&sum, &x);
    number_sum_t doubled = sum;
    number_sum_merge(&doubled, &sum);
    // 2^60 has 19 digits: additions that round at each of 60 steps agree in the first 34.
    number_t got = result_(sum), twice = result_(doubled), difference = got;
    number_sub(&difference, &want);
    number_abs(&difference);
    EXPECT_LT(number_cmp(&difference, &*_number_one), 0) << describe(got) << describe(want);
    number_add(&got, &got);
    EXPECT_EQ(twice, got);
}

TEST(NumberSum, QuotientNeedsADivisor) {
    const assertion_watch watch;
    const number_t kept = num("7");
    for (const int64_t divisor : {int64_t{0}, int64_t{-1}}) {
        const number_sum_t empty{};
        number_t x = kept;
        number_sum_quotient(&empty, divisor, &x);
        EXPECT_EQ(x, kept);
    }
    EXPECT_EQ(watch.count(), 2u);
}

// A record is sound when it is what reading its own text gives.
TEST(NumberFault, IsFoundInAllButTheOneRecordOfAValue) {
    std::mt19937_64 random(9);
    int sound = 0;
    for (long i = scaled(200'000); i > 0; --i) {
        number_t x = values_(random, 1)[0];
        for (auto changes = random() % 3; changes > 0; --changes)
            reinterpret_cast<uint8_t *>(&x)[random() % std::min<size_t>(sizeof x, x.size + 2u)] ^=
                static_cast<uint8_t>(1 << random() % 8);
        char text[NUMBER_SCIENTIFIC_TEXT_SIZE];
        number_t again{};
        const bool is_record = number_is_valid_ptr(&x) && x.size > 0;
        const int code = !is_record ? -1 : raise_of([&] {
            number_to_str(&x, sizeof text, text, nullptr);
            number_from_str(&again, 0, text, nullptr);
        });
        ASSERT_EQ(number_get_fault(&x) == nullptr, code == 0 && again == x) << hex(x);
        sound += code == 0 && again == x ? 1 : 0;
    }
    EXPECT_GT(sound, 1000 * scaled(1));
}

// Twenty digits hold 38 decimal ones when the first and the last of them are half empty.
TEST(NumberFault, IsATwentiethDigitTooMany) {
    for (const auto &[first, last, is_sound] :
         {std::tuple(9, 90, true), std::tuple(10, 90, false), std::tuple(9, 91, false)}) {
        number_t x = num("1");
        x.size = 1 + NUMBER_DIGITS_MAX;
        std::fill(std::begin(x.coef), std::end(x.coef), uint8_t{128 + 50});
        x.coef[0] = static_cast<uint8_t>(128 + first);
        x.coef[NUMBER_DIGITS_MAX - 1] = static_cast<uint8_t>(128 + last);
        EXPECT_EQ(number_get_fault(&x) == nullptr, is_sound) << first << " " << last;
    }
}

}  // namespace
