#include <gtest/gtest.h>

#include "decimal_support.h"

namespace dv::test {
namespace {

big_t sum_of_(const dv_decimal_sum_t &sum) {
    big_t value = (big_t(sum.words[2]) << 128) + (big_t(sum.words[1]) << 64) + sum.words[0];
    return sum.words[2] >> 63 != 0 ? big_t(value - (big_t(1) << 192)) : value;
}

// Rows with long runs of values; all have one where there is no bitmap.
rows_t rows_(decimal_source &source, const decimal_type_t &type, int count, const shape_t &shape) {
    rows_t rows = source.rows(type, count);
    for (size_t i = 0; i < rows.size(); ++i) {
        const bool needs_value = shape.first_bit < 0 || i % 1000 > 300;
        if (!rows[i] && needs_value) rows[i] = decimal_row(type, -1);
    }
    return rows;
}

struct exact_sum_t {
    big_t value = 0;
    int64_t count = 0;
};

exact_sum_t exact_sum_(const rows_t &rows) {
    exact_sum_t sum;
    for (const row_t &row : rows) {
        if (!row) continue;
        sum.value += big_of(decimal_value(*row));
        ++sum.count;
    }
    return sum;
}

TEST(DecimalColumn, SumsExactly) {
    decimal_source source(16);
    for (const decimal_type_t &type : {decimal_type_t{8, 18, 2}, decimal_type_t{16, 38, 2}}) {
        for (const int count : {0, 1, 2, 3, 63, 64, 129, 1000, 5003}) {
            for (const shape_t &shape : {shape_t{}, shape_t{false, 3, -1}, shape_t{false, 0, 5}}) {
                const rows_t rows = rows_(source, type, count, shape);
                const exact_sum_t wanted = exact_sum_(rows);
                test_column column(rows, kind_of(type), shape);
                const dv_decimal_column_t x = decimals(*column.get(), type);
                for (each_level levels; levels.next();) {
                    dv_decimal_sum_t sum = {}, twice = {};
                    dv_decimal_column_sum(&x, &sum);
                    ASSERT_EQ(sum_of_(sum), wanted.value) << count << " level " << dv_vector_level();
                    ASSERT_EQ(sum.count, wanted.count);
                    dv_decimal_sum_merge(&twice, &sum);
                    dv_decimal_sum_merge(&twice, &twice);
                    ASSERT_EQ(sum_of_(twice), 2 * wanted.value);
                    ASSERT_EQ(twice.count, 2 * wanted.count);
                }
            }
        }
    }
}

// All values at an end of their range: what the kernels add up without a sign is largest there.
TEST(DecimalColumn, SumsTheEndsOfTheRange) {
    for (const int bytes : {8, 16}) {
        for (const int end : {0, 1}) {
            const decimal_type_t type = {bytes, bytes == 8 ? 18 : 38, 0};
            const auto least = static_cast<int128>(static_cast<uint128>(1) << 127);
            const int128 extreme = bytes == 16 ? (end == 0 ? least : ~least)
                                   : end == 0  ? INT64_MIN
                                               : INT64_MAX;
            test_column column(rows_t(10'001, decimal_row(type, extreme)), kind_of(type), {});
            const dv_decimal_column_t x = decimals(*column.get(), type);
            for (each_level levels; levels.next();) {
                dv_decimal_sum_t sum = {};
                dv_decimal_column_sum(&x, &sum);
                EXPECT_EQ(sum_of_(sum), 10'001 * big_of(extreme));
            }
        }
    }
}

TEST(DecimalColumn, SumsBecomeNumbersRoundedOnce) {
    decimal_source source(17);
    for (long round = 0; round < scaled(20'000); ++round) {
        dv_decimal_sum_t sum = {};
        source.numbers().fill(sum.words, static_cast<size_t>(source.numbers().pick(1, 24)));
        const int scale = source.numbers().pick(DV_DECIMAL_SCALE_MIN, DV_DECIMAL_SCALE_MAX);
        const int64_t divisor = source.numbers().pick(0, 1) == 0 ? 1 : source.numbers().pick(1, 1'000'000);
        number_t got = {};
        const int code = raise_of([&] { dv_decimal_sum_quotient(&sum, scale, divisor, &got); });
        const big_t value = sum_of_(sum);
        if (abs(value) >= big_power_of_ten(126 + scale)) {
            EXPECT_EQ(code, -5068);
            continue;
        }
        // Thirty-eight digits of the quotient and all the rest, as one more digit that is not 0.
        const big_t shifted = abs(value) * big_power_of_ten(60), quotient = shifted / divisor;
        const big_t digits = 10 * quotient + (quotient * divisor != shifted ? 1 : 0);
        outcome_t wanted = theirs([&] {
            const decimal_t all = {value < 0 ? big_t(-digits) : digits, -scale - 61};
            return twin_round(all, top_position(all) - 37, NUMBER_RMODE_HALF_UP);
        });
        ASSERT_EQ(code, wanted.code) << value << " " << scale << " " << divisor;
        if (code == 0) {
            ASSERT_EQ(got, wanted.value) << value << " " << scale << " " << divisor;
        }
    }
}

// ---- sums that travel ----

std::string packed_(const dv_decimal_sum_t &sum, int scale) {
    std::string bytes(DV_DECIMAL_SUM_PACKED_MAX, '\0');
    const int64_t size = dv_decimal_sum_pack(&sum, scale, DV_DECIMAL_SUM_PACKED_MAX,
                                             reinterpret_cast<uint8_t *>(bytes.data()));
    bytes.resize(static_cast<size_t>(size));
    return bytes;
}

// In a block of their size.
int unpack_(const std::string &bytes, dv_decimal_sum_t &sum, int &scale) {
    const guarded input(bytes.size(), bytes.data());
    return raise_of([&] {
        dv_decimal_sum_unpack(&sum, &scale, static_cast<int64_t>(bytes.size()),
                              reinterpret_cast<uint8_t *>(input.text()));
    });
}

TEST(DecimalSum, PacksToTheSameBytesOnEveryMachine) {
    const dv_decimal_sum_t sum = {{~uint64_t{0} - 299, ~uint64_t{0}, ~uint64_t{0}}, 258};  // -300
    EXPECT_EQ(packed_(sum, -2), std::string("\1\1\xFE\0\0\0\0\0\0\1\2\xFE\xD4", 13));
    EXPECT_EQ(packed_({{128, 0, 0}, 1}, 127), std::string("\1\1\x7F\0\0\0\0\0\0\0\1\0\x80", 13));
    EXPECT_EQ(packed_({{0, 0, 0}, 5}, 0), std::string("\1\1\0\0\0\0\0\0\0\0\5", 11));
    uint8_t byte = 7;
    EXPECT_EQ(dv_decimal_sum_pack(&sum, 0, 12, &byte), 13);
    EXPECT_EQ(byte, 7);
    const assertion_watch watch;
    EXPECT_EQ(dv_decimal_sum_pack(&sum, 128, 12, &byte), 0);
    EXPECT_EQ(watch.count(), 1u);
}

TEST(DecimalSum, ReadsBackWhatWasPackedAndNothingElse) {
    decimal_source source(18);
    number_source &random = source.numbers();
    long refused = 0, taken = 0;
    for (long round = scaled(50'000); round > 0; --round) {
        const int count = random.pick(0, 4), scale = random.pick(DV_DECIMAL_SCALE_MIN, DV_DECIMAL_SCALE_MAX);
        dv_decimal_sum_t sum = {}, back = {};
        rows_t rows;
        const decimal_type_t type = {16, 38, scale};
        for (int i = 0; i < count; ++i) rows.push_back(decimal_row(type, source.any(type)));
        test_column column(rows, kind_of(type), {});
        const dv_decimal_column_t x = decimals(*column.get(), type);
        dv_decimal_column_sum(&x, &sum);
        for (int doubled = random.pick(0, 60); doubled > 0; --doubled) dv_decimal_sum_merge(&sum, &sum);

        std::string bytes = packed_(sum, scale);
        int scale_back = 0;
        ASSERT_EQ(unpack_(bytes, back, scale_back), 0);
        ASSERT_EQ(sum_of_(back), sum_of_(sum));
        ASSERT_EQ(back.count, sum.count);
        ASSERT_EQ(scale_back, scale);

        const auto place = static_cast<size_t>(random.pick(0, static_cast<int>(bytes.size()) - 1));
        if (random.pick(0, 3) == 0)
            bytes.resize(place);
        else if (random.pick(0, 3) == 0)
            bytes.append(static_cast<size_t>(random.pick(1, 30)), '\1');
        else
            bytes[place] = static_cast<char>(random.bits() >> 8);
        const std::string kept = packed_(back, scale_back);
        const int code = unpack_(bytes, back, scale_back);
        ASSERT_TRUE(code == 0 || code == -5121) << code;
        ASSERT_EQ(packed_(back, scale_back), code == 0 ? bytes : kept);
        // What was taken is a sum of so many values.
        ASSERT_LE(abs(sum_of_(back)), back.count * (big_t(1) << 127));
        ++(code == 0 ? taken : refused);
    }
    EXPECT_GT(refused, scaled(10'000));
    EXPECT_GT(taken, scaled(5'000));
}

struct hostile_bytes_t {
    const char *name;
    std::string bytes;
};
const hostile_bytes_t _hostile_bytes[] = {
    {"no bytes", ""},
    {"a head too short", std::string("\1\1\0\0\0\0\0\0\0\0", 10)},
    {"version 2", std::string("\2\1\0\0\0\0\0\0\0\0\1\1", 12)},
    {"a total of NUMBER", std::string("\1\0\x80\0\0\0\0\0\0\0\0\1\1", 13)},
    {"a scale too low", std::string("\1\1\xAB\0\0\0\0\0\0\0\1\1", 12)},
    {"zero as a byte", std::string("\1\1\0\0\0\0\0\0\0\0\1\0", 12)},
    {"a first byte that the next one implies", std::string("\1\1\0\0\0\0\0\0\0\0\1\0\1", 13)},
    {"the same of a negative sum", std::string("\1\1\0\0\0\0\0\0\0\0\1\xFF\xFF", 13)},
    {"a sum of no values", std::string("\1\1\0\0\0\0\0\0\0\0\0\1", 12)},
    {"a count below 0", std::string("\1\1\0\xFF\0\0\0\0\0\0\1", 11)},
    {"2^127 of one value", std::string("\1\1\0\0\0\0\0\0\0\0\1\0\x80", 13) + std::string(15, '\0')},
    {"-2^127 - 1 of one value", std::string("\1\1\0\0\0\0\0\0\0\0\1\xFF\x7F", 13) + std::string(15, '\xFF')},
    {"too many bytes", std::string("\1\1\0\x7F\0\0\0\0\0\0\1\1", 12) + std::string(24, '\1')},
};

TEST(DecimalSum, RefusesHostileBytes) {
    dv_decimal_sum_t sum = {};
    int scale = 77;
    for (const hostile_bytes_t &c : _hostile_bytes) {
        EXPECT_EQ(unpack_(c.bytes, sum, scale), -5121) << c.name;
    }
    const uint8_t byte = 1;
    EXPECT_EQ(raise_of([&] { dv_decimal_sum_unpack(&sum, &scale, -1, &byte); }), -5121);
    EXPECT_EQ(scale, 77);
    EXPECT_EQ(unpack_(std::string("\1\1\0\0\0\0\0\0\0\0\1\x80", 12) + std::string(15, '\0'), sum, scale), 0);
}

}  // namespace
}  // namespace dv::test
