#include <gtest/gtest.h>

#include "dvtypes/number_sum.h"
#include "twin_total.h"

namespace dv::test {
namespace {

// Digits of any bytes, in a record of a size that a record can have.
number_t any_bytes_(number_source &source) {
    number_t x;
    source.fill(&x, sizeof x);
    x.size = static_cast<uint8_t>(source.pick(2, 21));
    return x;
}

const uint8_t *bytes_of_(const std::string &text) { return reinterpret_cast<const uint8_t *>(text.data()); }

TEST(NumberTotal, IsTheSumInLongHandAfterAnyChanges) {
    number_source source(1);
    for (long round = scaled(1'000); round > 0; --round) {
        number_total_t total{}, part{};
        std::unique_ptr<uint64_t[]> memory, part_memory;
        twin_total twin, part_twin;
        const bool is_ordinary = source.pick(0, 1) != 0;
        for (int i = source.pick(0, 40); i > 0; --i) {
            const number_t x = source.pick(0, 9) == 0 ? any_bytes_(source)
                               : is_ordinary ? source.with_digits(source.pick(1, 20), source.pick(0, 17))
                                             : source.any();
            const int kind = source.pick(0, 9);
            if (kind == 0) {
                with_memory(total, memory, [&] { return number_total_merge(&total, &part); });
                twin.add(part_twin);
            } else if (kind < 3) {
                with_memory(part, part_memory, [&] { return number_total_add(&part, &x); });
                part_twin.add(x);
            } else if (kind < 5) {
                with_memory(total, memory, [&] { return number_total_sub(&total, &x); });
                twin.add(x, -1);
            } else {
                with_memory(total, memory, [&] { return number_total_add(&total, &x); });
                twin.add(x);
            }
            if (i % 8 == 1) {
                ASSERT_EQ(packed(total), twin.packed()) << describe(x);
            }
        }
    }
}

TEST(NumberTotal, GivesSumAndAverageAsTheSumOfRecordsDoes) {
    number_source source(2);
    for (long round = scaled(20'000); round > 0; --round) {
        number_total_t total{};
        std::unique_ptr<uint64_t[]> memory;
        number_sum_t sum{};
        for (int i = source.pick(1, 12); i > 0; --i) {
            const number_t x = source.any();
            with_memory(total, memory, [&] { return number_total_add(&total, &x); });
            number_sum_add(&sum, &x);
        }
        const number_t none{};
        ASSERT_EQ(ours(none, [&](number_t *x) { number_total_sum(&total, x); }),
                  ours(none, [&](number_t *x) { number_sum_quotient(&sum, 1, x); }));
        ASSERT_EQ(ours(none, [&](number_t *x) { number_total_average(&total, x); }),
                  ours(none, [&](number_t *x) { number_sum_quotient(&sum, total.count, x); }));
    }
}

TEST(NumberTotal, OfNoTermsIsNull) {
    number_total_t total{};
    number_t x = num("7");
    number_total_sum(&total, &x);
    EXPECT_EQ(x.size, 0);
    const number_t one = num("1");
    number_total_sub(&total, &one);
    x = one;
    number_total_average(&total, &x);
    EXPECT_EQ(x.size, 0);
    number_total_add(&total, &one);
    number_total_add(&total, &*_number_zero);
    number_total_add(&total, &*_number_null);
    EXPECT_EQ(total.count, 1);
    number_total_sum(&total, &x);
    EXPECT_EQ(x, num("0"));
}

TEST(NumberTotal, AsksForMemoryAndIsAsItWas) {
    const number_t huge = num("1E125"), tiny = num("-1E-129");
    uint64_t memory[2][DV_TOTAL_MEMORY_MAX / sizeof(uint64_t)];
    number_total_t total{};
    ASSERT_EQ(number_total_add(&total, &huge), 0);  // alone it fits, at a weight of its own
    const std::string before = packed(total);
    const int64_t size = number_total_add(&total, &tiny);
    EXPECT_GT(size, 32);
    EXPECT_LE(size, DV_TOTAL_MEMORY_MAX);
    EXPECT_EQ(packed(total), before);
    EXPECT_EQ(number_total_attach(&total, size, memory[0]), nullptr);
    EXPECT_EQ(packed(total), before);
    EXPECT_EQ(number_total_add(&total, &tiny), 0);
    EXPECT_EQ(number_total_attach(&total, sizeof memory[1], memory[1]), memory[0]);

    twin_total twin;
    twin.add(huge);
    twin.add(tiny);
    EXPECT_EQ(packed(total), twin.packed());

    number_total_t copy{};
    const std::string bytes = packed(total);
    EXPECT_GT(number_total_unpack(&copy, static_cast<int64_t>(bytes.size()), bytes_of_(bytes)), 32);
    EXPECT_EQ(packed(copy), packed(number_total_t{}));
    EXPECT_GT(number_total_merge(&copy, &total), 32);
    EXPECT_EQ(packed(copy), packed(number_total_t{}));
    const assertion_watch watch;
    EXPECT_EQ(number_total_attach(&total, sizeof memory[0] - 1, memory[0]), nullptr);
    EXPECT_EQ(watch.count(), 1u);
    EXPECT_EQ(packed(total), bytes);
}

// At both ends of 256 bits, by the least step there is, and by a lower weight.
TEST(NumberTotal, AsksForMemoryWhereItsBitsEnd) {
    const number_t one = num("1"), hundred = num("100"), minus_one = num("-1");
    const std::string head("\1\0\x80\0\0\0\0\0\0\0\0\1", 12),
        head_of_hundreds("\1\0\x80\1\0\0\0\0\0\0\0\1", 12);
    const std::string most = '\x7F' + std::string(31, '\xFF'), least = '\x80' + std::string(31, '\0');
    const struct {
        std::string bytes;
        const number_t *term;
        bool fits;
    } cases[] = {
        {head + most, &one, false},
        {head + most, &minus_one, true},
        {head + least, &minus_one, false},
        {head + least, &one, true},
        {head_of_hundreds + most, &hundred, false},
        {head_of_hundreds + most, &one, false},
        {head_of_hundreds + least, &one, false},
    };
    for (const auto &c : cases) {
        number_total_t total{};
        ASSERT_EQ(number_total_unpack(&total, static_cast<int64_t>(c.bytes.size()), bytes_of_(c.bytes)), 0);
        EXPECT_EQ(number_total_add(&total, c.term) == 0, c.fits);
        EXPECT_EQ(packed(total) == c.bytes, !c.fits);
    }
}

// Doubled until it is full: what any memory holds is told by the code, not by wrong digits.
TEST(NumberTotal, RefusesWhatIsBeyondAnyTotal) {
    uint64_t memory[DV_TOTAL_MEMORY_MAX / sizeof(uint64_t)];
    const number_t largest = *_number_max, tiny = num("1E-130");
    number_total_t total{};
    number_total_attach(&total, sizeof memory, memory);
    number_total_add(&total, &largest);
    number_total_add(&total, &tiny);
    int doublings = 0;
    std::string before;
    do {
        before = packed(total);
        total.count = 1;  // or the count would be the first that is too large
    } while (raise_of([&] { number_total_merge(&total, &total); }) == 0 && ++doublings < 1000);
    total.count = 1;
    EXPECT_GT(doublings, 90);
    EXPECT_LT(doublings, 1000);
    EXPECT_EQ(raise_of([&] { number_total_merge(&total, &total); }), -5068);
    EXPECT_EQ(packed(total).substr(12), before.substr(12));
    number_total_t copy{};
    uint64_t copy_memory[DV_TOTAL_MEMORY_MAX / sizeof(uint64_t)];
    number_total_attach(&copy, sizeof copy_memory, copy_memory);
    EXPECT_EQ(number_total_unpack(&copy, static_cast<int64_t>(before.size()), bytes_of_(before)), 0);

    number_total_t many{};
    many.count = INT64_MAX;
    EXPECT_EQ(raise_of([&] { number_total_add(&many, &tiny); }), -5068);
    EXPECT_EQ(many.count, INT64_MAX);
}

// Near the largest total: what is held does not depend on the weight that the terms on the way had.
TEST(NumberTotal, HoldsWhatItHeldBeforeATermCameAndWent) {
    const std::string bytes("\1\0\x80\x8B\0\0\0\0\0\0\0\1\x7B", 13);  // 123 * 100^139
    for (int exponent = -120; exponent <= 120; ++exponent) {
        uint64_t memory[DV_TOTAL_MEMORY_MAX / sizeof(uint64_t)];
        number_total_t total{};
        number_total_attach(&total, sizeof memory, memory);
        number_total_unpack(&total, static_cast<int64_t>(bytes.size()), bytes_of_(bytes));
        const number_t x = num(("1E" + std::to_string(exponent)).c_str());
        EXPECT_EQ(raise_of([&] { number_total_add(&total, &x); }), 0) << exponent;
        EXPECT_EQ(raise_of([&] { number_total_sub(&total, &x); }), 0) << exponent;
        EXPECT_EQ(packed(total), bytes) << exponent;
    }
}

// 0.01 in each of 300 terms, and -128 in one: by hand.
TEST(NumberTotal, PacksToTheSameBytesOnEveryMachine) {
    number_total_t total{};
    const number_t cent = num("0.01");
    for (int i = 0; i < 300; ++i) number_total_add(&total, &cent);
    EXPECT_EQ(packed(total), std::string("\1\0\x80\0\0\0\0\0\0\0\x01\x2C\x03", 13));  // 3
    const number_t x = num("-4.28");
    number_total_add(&total, &x);
    EXPECT_EQ(packed(total), std::string("\1\0\x7F\xFF\0\0\0\0\0\0\x01\x2D\x80", 13));  // -128 * 0.01
    uint8_t byte = 7;
    EXPECT_EQ(number_total_pack(&total, 12, &byte), 13);
    EXPECT_EQ(byte, 7);
}

TEST(NumberTotal, ReadsBackWhatWasPackedAndNothingElse) {
    number_source source(3);
    uint64_t memory[DV_TOTAL_MEMORY_MAX / sizeof(uint64_t)];
    long refused = 0, taken = 0;
    for (long round = scaled(50'000); round > 0; --round) {
        number_total_t total{}, back{};
        std::unique_ptr<uint64_t[]> total_memory;
        for (int i = source.pick(0, 5); i > 0; --i) {
            const number_t x = source.any();
            with_memory(total, total_memory, [&] { return number_total_add(&total, &x); });
        }
        std::string bytes = packed(total);
        number_total_attach(&back, sizeof memory, memory);
        number_total_unpack(&back, static_cast<int64_t>(bytes.size()), bytes_of_(bytes));
        ASSERT_EQ(packed(back), bytes);
        ASSERT_EQ(back.count, total.count);

        for (int i = source.pick(1, 3); i > 0; --i) {
            const int place = source.pick(0, static_cast<int>(bytes.size()) - 1);
            switch (source.pick(0, 3)) {
                case 0:
                    bytes.resize(static_cast<size_t>(place) + 1);
                    break;
                case 1:
                    bytes.append(static_cast<size_t>(source.pick(1, 300)), static_cast<char>(source.bits()));
                    break;
                default:
                    bytes[static_cast<size_t>(place)] = static_cast<char>(source.bits() >> 8);
            }
        }
        const guarded input(bytes.size(), bytes.data());
        const std::string kept = packed(back);
        const int code = raise_of([&] {
            number_total_unpack(&back, static_cast<int64_t>(bytes.size()),
                                reinterpret_cast<uint8_t *>(input.text()));
        });
        ASSERT_TRUE(code == 0 || code == -5121);
        ASSERT_EQ(packed(back), code == 0 ? bytes : kept);
        ++(code == 0 ? taken : refused);
        // What was taken can be worked with.
        const number_t x = source.any();
        number_t sum{};
        const int work = raise_of([&] {
            number_total_add(&back, &x);
            number_total_merge(&back, &back);
            number_total_average(&back, &sum);
        });
        ASSERT_TRUE(work == 0 || work == -5068 || work == -5069) << work;
    }
    EXPECT_GT(refused, scaled(10'000));
    EXPECT_GT(taken, scaled(10'000));
}

struct hostile_bytes_t {
    const char *name;
    std::string bytes;
};
const hostile_bytes_t _hostile_bytes[] = {
    {"no bytes", ""},
    {"a head too short", std::string("\1\0\x80\0\0\0\0\0\0\0\0", 11)},
    {"version 2", std::string("\2\0\x80\0\0\0\0\0\0\0\0\1\1", 13)},
    {"a byte that must be 0", std::string("\1\1\x80\0\0\0\0\0\0\0\0\1\1", 13)},
    {"a weight for zero", std::string("\1\0\x80\1\0\0\0\0\0\0\0\1", 12)},
    {"zero as a byte", std::string("\1\0\x80\0\0\0\0\0\0\0\0\1\0", 13)},
    {"a first byte that the next one implies", std::string("\1\0\x80\0\0\0\0\0\0\0\0\1\0\1", 14)},
    {"the same of a negative sum", std::string("\1\0\x80\0\0\0\0\0\0\0\0\1\xFF\xFF", 14)},
    {"100 at a weight too low", std::string("\1\0\x80\0\0\0\0\0\0\0\0\1\x64", 13)},
    {"a weight below all products", std::string("\1\0\x7F\x57\0\0\0\0\0\0\0\1\1", 13)},
    {"a weight above all sums", std::string("\1\0\x80\xA0\0\0\0\0\0\0\0\1\1", 13)},
    {"the highest weight", std::string("\1\0\xFF\xFF\0\0\0\0\0\0\0\1\1", 13)},
    {"too many bytes", std::string("\1\0\x80\0\0\0\0\0\0\0\0\1\1", 13) + std::string(256, '\1')},
};

TEST(NumberTotal, RefusesHostileBytes) {
    for (const hostile_bytes_t &c : _hostile_bytes) {
        number_total_t total{};
        EXPECT_EQ(raise_of([&] {
                      number_total_unpack(&total, static_cast<int64_t>(c.bytes.size()), bytes_of_(c.bytes));
                  }),
                  -5121)
            << c.name;
    }
    number_total_t total{};
    EXPECT_EQ(raise_of([&] { number_total_unpack(&total, -1, bytes_of_("")); }), -5121);
}

}  // namespace
}  // namespace dv::test
