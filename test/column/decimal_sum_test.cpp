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

}  // namespace
}  // namespace dv::test
