#include "dvtypes/column_compare.h"

#include <gtest/gtest.h>

#include "column_support.h"

namespace dv::test {
namespace {

constexpr values_t _numbers = {values_t::number, 0};

constexpr struct {
    shape_t x, y;
} _shapes[] = {
    {{false, 0, -1}, {false, 0, -1}}, {{false, 9, 3}, {true, 0, 5}}, {{true, 0, 64}, {false, 1, 0}}};

// Values of few different digits, so that many are equal in their first bytes or as a whole; ends of the
// order; and sizes and bytes that no value has.
number_t value_(number_source &source, bool is_close = false) {
    number_t x{};
    switch (is_close ? 5 : source.pick(0, 5)) {
        case 0:
            return source.any();
        case 1:
            return source.pick(0, 1) != 0 ? *_number_posinf : *_number_negzero;
        case 2:
            return source.with_stray_bytes(num(std::to_string(source.pick(-3, 3))));
        case 3:
            source.fill(&x, sizeof x);
            x.size = static_cast<uint8_t>(source.pick(1, 22));
            return x;
        default: {  // 7 to 10 digits that are mostly the same
            x.size = static_cast<uint8_t>(source.pick(7, 11));
            x.signexp = 0xC5;
            std::fill(std::begin(x.coef), std::end(x.coef), uint8_t{0});
            for (int i = 0; i < x.size - 1; ++i) x.coef[i] = 0x81;
            if (source.pick(0, 2) != 0) x.coef[x.size - 2] = static_cast<uint8_t>(source.pick(0, 1));
            return source.with_stray_bytes(x);
        }
    }
}

rows_t rows_(number_source &source, size_t count, bool are_close = false) {
    rows_t rows;
    while (rows.size() < count) {
        const bool has_value = source.pick(0, 20) != 0;
        rows.push_back(has_value ? row_of(value_(source, are_close)) : std::nullopt);
    }
    return rows;
}

bool holds_(dv_column_relation_e relation, int order) {
    switch (relation) {
        case DV_COLUMN_LT:
            return order < 0;
        case DV_COLUMN_LE:
            return order <= 0;
        case DV_COLUMN_EQ:
            return order == 0;
        case DV_COLUMN_NE:
            return order != 0;
        case DV_COLUMN_GT:
            return order > 0;
        case DV_COLUMN_GE:
            return order >= 0;
    }
    return false;
}

// The first row whose bit is wrong, and the bits behind the last row, which were all set.
std::string bits_fault_(const std::vector<uint8_t> &bits, const rows_t &x, const rows_t &y,
                        dv_column_relation_e relation) {
    for (size_t i = 0; i < bits.size() * 8; ++i) {
        bool wanted = i >= x.size();
        if (i < x.size() && x[i] && y[i]) {
            const number_t a = number_of(*x[i]), b = number_of(*y[i]);
            wanted = holds_(relation, number_cmp(&a, &b));
        }
        if (((bits[i / 8] >> i % 8 & 1) != 0) == wanted) continue;
        std::string text = "level " + std::to_string(dv_vector_level()) + " row " + std::to_string(i);
        if (i < x.size() && x[i] && y[i])
            text += ": " + describe(number_of(*x[i])) + ", " + describe(number_of(*y[i]));
        return text;
    }
    return "";
}

TEST(NumberColumnCompare, IsNumberCmpOfEachRow) {
    number_source source(20261126);
    for (const size_t count : {static_cast<size_t>(scaled(10'000)), size_t{3}, size_t{0}}) {
        const rows_t x = rows_(source, count), y = rows_(source, count);
        for (int relation = DV_COLUMN_LT; relation <= DV_COLUMN_GE; ++relation) {
            const auto asked = static_cast<dv_column_relation_e>(relation);
            for (each_level levels; levels.next();) {
                for (const auto &shape : _shapes) {
                    test_column x_column(x, _numbers, shape.x), y_column(y, _numbers, shape.y);
                    std::vector<uint8_t> bits((count + 7) / 8 + 1, 0xFF);
                    dv_column_faults_t faults{};
                    number_column_compare(x_column.get(), y_column.get(), asked, bits.data(), &faults);
                    ASSERT_EQ(bits_fault_(bits, x, y, asked), "") << relation;
                    ASSERT_EQ(faults.count, 0);
                }
            }
        }
    }
}

TEST(NumberColumnCompare, TakesAConstantOnEitherSide) {
    number_source source(20261127);
    for (int round = 0; round < 60; ++round) {
        rows_t x = rows_(source, 200);
        if (round % 16 == 1) x = no_longer_than_records(numbers_with_any_byte(source, {1, 4, 8, 20}));
        const number_t constant = round == 0 ? *_number_null : value_(source);
        const rows_t constants(x.size(), row_of(constant));
        dv_column_t column = {};
        column.count = static_cast<int64_t>(x.size());
        column.values = const_cast<number_t *>(&constant);
        for (each_level levels; levels.next();) {
            for (const auto &shape : _shapes) {
                test_column x_column(x, _numbers, shape.x);
                std::vector<uint8_t> bits(x.size() / 8), turned(x.size() / 8);  // no row in a last byte alone
                number_column_compare(x_column.get(), &column, DV_COLUMN_LE, bits.data(), nullptr);
                number_column_compare(&column, x_column.get(), DV_COLUMN_GE, turned.data(), nullptr);
                ASSERT_EQ(bits_fault_(bits, x, constants, DV_COLUMN_LE), "");
                ASSERT_EQ(bits, turned);
            }
        }
    }
}

TEST(NumberColumnCompare, TellsRowsThatFailAndAsksForARelation) {
    const number_t one = num("1");
    const int32_t offsets[] = {0, 2, 99, 100};
    dv_column_t x = {}, y = {};
    x.count = y.count = 3;
    x.values = const_cast<uint8_t *>(&one.signexp);
    x.offsets = const_cast<int32_t *>(offsets);
    x.size = 2;
    y.values = const_cast<number_t *>(&one);
    uint8_t bits = 0xFF;
    dv_column_faults_t faults{};
    number_column_compare(&x, &y, DV_COLUMN_EQ, &bits, &faults);
    EXPECT_EQ(bits, 0xF9);
    EXPECT_EQ(faults.count, 2);
    EXPECT_EQ(faults.first, 1);
    EXPECT_EQ(faults.code, -5120);
    EXPECT_EQ(number_column_max(&x, nullptr, &faults), 0);
    EXPECT_EQ(faults.count, 2);

    const assertion_watch watch;
    bits = 0xA5;
    for (const int relation : {0, 7, -1})
        number_column_compare(&y, &y, static_cast<dv_column_relation_e>(relation), &bits, nullptr);
    EXPECT_EQ(watch.count(), 3u);
    EXPECT_EQ(bits, 0xA5);
}

// The first row that no other one of those that are looked at is beyond.
struct extremes_t {
    int64_t least = -1, greatest = -1;  // -1: no value

    bool operator==(const extremes_t &) const = default;
};

std::ostream &operator<<(std::ostream &out, const extremes_t &x) {
    return out << "least " << x.least << " greatest " << x.greatest;
}

extremes_t extremes_(const rows_t &rows, const std::vector<uint8_t> &wanted) {
    extremes_t found;
    number_t low{}, high{};
    for (size_t i = 0; i < rows.size(); ++i) {
        if (!rows[i] || (wanted[i / 8] >> i % 8 & 1) == 0) continue;
        const number_t x = number_of(*rows[i]);
        const auto row = static_cast<int64_t>(i);
        if (found.least < 0 || number_cmp(&x, &low) < 0) found.least = row, low = x;
        if (found.greatest < 0 || number_cmp(&x, &high) > 0) found.greatest = row, high = x;
    }
    return found;
}

extremes_t column_extremes_(const dv_column_t *column, const uint8_t *wanted) {
    return {number_column_min(column, wanted, nullptr), number_column_max(column, wanted, nullptr)};
}

TEST(NumberColumnCompare, FindsTheFirstLeastAndGreatestValue) {
    number_source source(20261128);
    for (long round = scaled(2'000); round > 0; --round) {
        const auto count = static_cast<size_t>(source.pick(0, 300));
        const rows_t rows = rows_(source, count, /*are_close=*/round % 2 == 0);
        std::vector<uint8_t> wanted(count / 8 + 1);
        source.fill(wanted.data(), wanted.size());
        if (round % 8 == 0) std::fill(wanted.begin(), wanted.end(), uint8_t{0});
        const extremes_t some = extremes_(rows, wanted);
        const extremes_t all = extremes_(rows, std::vector<uint8_t>(wanted.size(), 0xFF));
        for (each_level levels; levels.next();) {
            for (const auto &shape : _shapes) {
                test_column column(rows, _numbers, shape.x);
                ASSERT_EQ(column_extremes_(column.get(), wanted.data()), some) << dv_vector_level();
                ASSERT_EQ(column_extremes_(column.get(), nullptr), all) << dv_vector_level();
            }
        }
    }
}

}  // namespace
}  // namespace dv::test
