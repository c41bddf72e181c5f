#include <gtest/gtest.h>

#include "column_support.h"
#include "dvtypes/column_number.h"

namespace dv::test {
namespace {

constexpr values_t _numbers = {values_t::number, 0};

rows_t random_numbers_(uint64_t seed) {
    number_source source(seed);
    rows_t rows(static_cast<size_t>(scaled(20'000)));
    for (row_t &row : rows) row = source.pick(0, 20) == 0 ? std::nullopt : row_of(source.any());
    for (const row_t &row : numbers_with_any_byte(source, {1, 8, 20})) rows.push_back(row);
    return rows;
}

// A function of one NUMBER, for columns and alone.
template <typename Columns, typename Single>
std::string fault_(const rows_t &x, Columns columns, Single single) {
    column_case_t c = {{x}, {_numbers}, _numbers};
    c.room = static_cast<int64_t>(x.size()) * 22;
    c.run = [&](dv_column_t *const *operands, dv_column_t *result, dv_column_faults_t *faults) {
        columns(operands[0], result, faults);
    };
    c.single = [&](const std::vector<std::string> &values) {
        return number_outcome(number_of(values[0]), single);
    };
    return column_fault(c);
}

TEST(NumberColumn, ChangesSignsAsTheFunctionsForOneValue) {
    const assertion_watch quiet;
    const rows_t x = random_numbers_(1);
    EXPECT_EQ(fault_(x, number_column_negate, number_negate), "");
    EXPECT_EQ(fault_(x, number_column_abs, number_abs), "");
}

TEST(NumberColumn, RoundsAsTheFunctionForOneValue) {
    const assertion_watch quiet;
    const rows_t x = random_numbers_(2);
    for (const int64_t places : {int64_t{2}, int64_t{0}, int64_t{-3}, int64_t{37}, INT64_MIN, INT64_MAX}) {
        for (const int rmode : {NUMBER_RMODE_TRUNC, NUMBER_RMODE_HALF_UP, NUMBER_RMODE_HALF_EVEN}) {
            const auto columns = [&](const dv_column_t *from, dv_column_t *result,
                                     dv_column_faults_t *faults) {
                number_column_round_to_places(from, places, rmode, result, faults);
            };
            EXPECT_EQ(fault_(x, columns, [&](number_t *to) { number_round_to_places(to, places, rmode); }),
                      "")
                << places << " places, mode " << rmode;
        }
    }
}

struct declaration {
    int prec, scale;
};
constexpr declaration _declarations[] = {
    {12, 2}, {38, 0}, {5, -3}, {9, 127}, {0, -128}, {NUMBER_NOT_GIVEN, 4}, {7, NUMBER_NOT_GIVEN}};

TEST(NumberColumn, FitsDeclarationsAsTheFunctionForOneValue) {
    const assertion_watch quiet;
    const rows_t x = random_numbers_(3);
    for (const auto &[prec, scale] : _declarations) {
        const auto columns = [prec = prec, scale = scale](const dv_column_t *from, dv_column_t *result,
                                                          dv_column_faults_t *faults) {
            number_column_force_prec_scale(from, prec, scale, result, faults);
        };
        const auto single = [prec = prec, scale = scale](number_t *to) {
            number_force_prec_scale(to, prec, scale);
        };
        EXPECT_EQ(fault_(x, columns, single), "") << prec << ", " << scale;
    }
}

TEST(NumberColumn, ChangesInPlace) {
    const assertion_watch quiet;
    const rows_t x = random_numbers_(4);
    for (each_level levels; levels.next();) {
        test_column column(x, _numbers, {false, 5, -1});
        dv_column_faults_t faults{};
        number_column_negate(column.get(), column.get(), &faults);
        number_column_force_prec_scale(column.get(), 20, 4, column.get(), &faults);
        for (size_t i = 0; i < x.size(); ++i) {
            row_t wanted;
            if (x[i]) {
                wanted = number_outcome(number_of(*x[i]), [](number_t *value) {
                             number_negate(value);
                             number_force_prec_scale(value, 20, 4);
                         }).value;
            }
            ASSERT_EQ(column.row(static_cast<int64_t>(i)), wanted) << i;
        }
    }
}

// Offsets of any value: a row has the bytes that they give it, none, or -5120.
TEST(NumberColumn, BelievesNoOffsetsOfNumbers) {
    number_source source(5);
    std::string bytes;
    for (int i = 0; i < 96; ++i) bytes += *row_of(source.with_digits(1, 1));  // three or four bytes a record
    constexpr int rows = 64, size = 96;
    char *const begin_of_column = bytes.data() + size;
    for (long round = 0; round < scaled(200); ++round) {
        std::vector<int32_t> offsets(rows + 1);
        for (int32_t &offset : offsets) offset = source.pick(-2, size + 2);
        for (const int32_t extreme : {INT32_MIN, INT32_MAX, -1})
            offsets[static_cast<size_t>(source.pick(0, rows))] = extreme;
        dv_column_t x = {rows, begin_of_column, 0, offsets.data(), size, nullptr, 0};
        for (each_level levels; levels.next();) {
            std::vector<number_t> values(rows);
            std::vector<int32_t> codes(rows);
            dv_column_t result = {rows, values.data(), sizeof(number_t), nullptr, 0, nullptr, 0};
            dv_column_faults_t faults = {codes.data(), nullptr, 0, 0, 0, 0};
            number_column_negate(&x, &result, &faults);
            for (size_t i = 0; i < rows; ++i) {
                const int32_t begin = offsets[i], end = offsets[i + 1];
                const bool is_row = begin >= 0 && begin <= end && end <= size && end - begin <= 22;
                ASSERT_EQ(codes[i], is_row ? 0 : -5120) << begin << " to " << end;
                if (!is_row || begin == end) {
                    ASSERT_EQ(values[i].size, 0) << begin << " to " << end;
                }
            }
        }
    }
}

}  // namespace
}  // namespace dv::test
