#include <gtest/gtest.h>

#include "column_support.h"
#include "twin_total.h"

namespace dv::test {
namespace {

constexpr values_t _numbers = {values_t::number, 0};

// How the rows of a column look.
enum class content_e { AMOUNTS, LONG, ANY, HOSTILE };

number_t value_(number_source &source, content_e content) {
    number_t x{};
    switch (content) {
        case content_e::AMOUNTS:
            return source.with_digits(source.pick(1, 8), source.pick(-2, 5));
        case content_e::LONG:
            return source.with_digits(source.pick(30, 38), source.pick(5, 20));
        case content_e::ANY:
            return source.any();
        case content_e::HOSTILE:
            source.fill(&x, sizeof x);
            x.size = static_cast<uint8_t>(source.pick(1, 21));
            if (x.size == 1) x.signexp = static_cast<uint8_t>(source.pick(0, 1) * 0x80);
    }
    return x;
}

rows_t rows_(number_source &source, content_e content, size_t count) {
    rows_t rows;
    while (rows.size() < count) {
        const bool has_value = source.pick(0, 20) != 0;
        rows.push_back(has_value ? row_of(value_(source, content)) : std::nullopt);
    }
    return rows;
}

struct bitmap_t {
    std::vector<uint8_t> bytes;
    bool has(size_t row) const { return (bytes[row / 8] >> row % 8 & 1) != 0; }
};

bitmap_t bitmap_(number_source &source, size_t rows) {
    bitmap_t bits{std::vector<uint8_t>((rows + 7) / 8)};
    source.fill(bits.bytes.data(), bits.bytes.size());
    return bits;
}

constexpr shape_t _shapes[] = {{false, 0, -1}, {false, 9, 3}, {true, 0, 5}};

struct sum_case_t {
    const char *name;
    content_e content;
    size_t rows;
};
constexpr sum_case_t _sum_cases[] = {
    {"amounts", content_e::AMOUNTS, 20'000}, {"long", content_e::LONG, 20'000},
    {"any", content_e::ANY, 20'000},         {"digits of any bytes", content_e::HOSTILE, 20'000},
    {"few rows", content_e::AMOUNTS, 5},     {"no row", content_e::AMOUNTS, 0},
};

// The sum in a total that gets memory where it asks for some.
std::string packed_sum_(const dv_column_t *column, const uint8_t *wanted, dv_column_faults_t *faults) {
    number_total_t total{};
    std::unique_ptr<uint64_t[]> memory;
    with_memory(total, memory, [&] { return number_column_sum(column, wanted, &total, faults); });
    return packed(total);
}

std::string packed_sum_of_products_(const dv_column_t *x, const dv_column_t *y, const uint8_t *wanted) {
    number_total_t total{};
    std::unique_ptr<uint64_t[]> memory;
    with_memory(total, memory, [&] { return number_column_sum_products(x, y, wanted, &total, nullptr); });
    return packed(total);
}

TEST(NumberColumnSum, IsTheSumInLongHand) {
    number_source source(20261123);
    for (const sum_case_t &c : _sum_cases) {
        const rows_t rows =
            rows_(source, c.content,
                  c.rows < 100 ? c.rows : static_cast<size_t>(scaled(static_cast<long>(c.rows))));
        const bitmap_t wanted = bitmap_(source, rows.size());
        twin_total all, some;
        for (size_t i = 0; i < rows.size(); ++i) {
            if (rows[i]) all.add(number_of(*rows[i]));
            if (rows[i] && wanted.has(i)) some.add(number_of(*rows[i]));
        }
        for (each_level levels; levels.next();) {
            for (const shape_t shape : _shapes) {
                test_column column(rows, _numbers, shape);
                dv_column_faults_t faults{};
                SCOPED_TRACE(std::string(c.name) + (shape.by_offsets ? " by offsets" : " by stride"));
                ASSERT_EQ(packed_sum_(column.get(), wanted.bytes.data(), &faults), some.packed())
                    << "level " << dv_vector_level();
                ASSERT_EQ(packed_sum_(column.get(), nullptr, &faults), all.packed())
                    << "level " << dv_vector_level();
                ASSERT_EQ(faults.count, 0);
                ASSERT_TRUE(column.intact());
            }
        }
    }
}

// What number_total_add makes of each alone.
TEST(NumberColumnSum, OfAnyBytesIsThatOfTheRowsAlone) {
    number_source source(20261202);
    const assertion_watch quiet;
    const rows_t any = numbers_with_any_byte(source);
    for (const shape_t shape : _shapes) {
        const rows_t rows = shape.by_offsets ? no_longer_than_records(any) : any;
        number_total_t total{};
        std::unique_ptr<uint64_t[]> memory;
        for (const row_t &row : rows) {
            if (!row) continue;
            const number_t x = number_of(*row);
            with_memory(total, memory, [&] { return number_total_add(&total, &x); });
        }
        for (each_level levels; levels.next();) {
            test_column column(rows, _numbers, shape);
            ASSERT_EQ(packed_sum_(column.get(), nullptr, nullptr), packed(total))
                << "level " << dv_vector_level() << (shape.by_offsets ? " by offsets" : " by stride");
        }
    }
}

// Up to the last place at either end of the range.
TEST(NumberColumnSum, IsExactWhereverTheDigitsAre) {
    number_source source(20261129);
    for (int top = -130; top <= 125; ++top) {
        rows_t rows;
        twin_total twin;
        for (int i = 0; i < 40; ++i) {
            rows.push_back(row_of(source.with_digits(source.pick(1, 8), top)));
            twin.add(number_of(*rows.back()));
        }
        for (each_level levels; levels.next();) {
            for (const shape_t shape : _shapes) {
                test_column column(rows, _numbers, shape);
                number_total_t total{};
                EXPECT_EQ(number_column_sum(column.get(), nullptr, &total, nullptr), 0);
                ASSERT_EQ(packed(total), twin.packed()) << top << " level " << dv_vector_level();
            }
        }
    }
}

TEST(NumberColumnSum, OfProductsIsTheSumInLongHand) {
    number_source source(20261124);
    for (const sum_case_t &c : _sum_cases) {
        const size_t count =
            c.rows < 100 ? c.rows : static_cast<size_t>(scaled(static_cast<long>(c.rows / 4)));
        const rows_t x = rows_(source, c.content, count), y = rows_(source, c.content, count);
        const bitmap_t wanted = bitmap_(source, count);
        twin_total twin;
        for (size_t i = 0; i < count; ++i) {
            if (x[i] && y[i] && wanted.has(i)) twin.add_product(number_of(*x[i]), number_of(*y[i]));
        }
        for (each_level levels; levels.next();) {
            for (const shape_t shape : _shapes) {
                test_column columns[] = {{x, _numbers, shape}, {y, _numbers, _shapes[0]}};
                ASSERT_EQ(packed_sum_of_products_(columns[0].get(), columns[1].get(), wanted.bytes.data()),
                          twin.packed())
                    << c.name << " level " << dv_vector_level();
            }
        }
    }
}

// Counters are emptied into wider ones after so many rows that none overflows.
TEST(NumberColumnSum, OfManyRowsOfTheLargestDigitsDoesNotOverflow) {
    number_t x{}, y{};
    x.size = y.size = 21;
    x.signexp = 0xC1, y.signexp = 0xC2;
    std::fill(std::begin(x.coef), std::end(x.coef), uint8_t{0});  // -128 in every digit
    std::fill(std::begin(y.coef), std::end(y.coef), uint8_t{255});
    for (const number_t &value : {x, y}) {
        dv_column_t column = {};
        column.count = 400'000;
        column.values = const_cast<number_t *>(&value);
        twin_total twin, squares, one, one_square;
        one.add(value);
        one_square.add_product(value, value);
        for (int64_t bit = 1; bit <= column.count; bit *= 2) {
            if ((column.count & bit) != 0) twin.add(one), squares.add(one_square);
            one.add(twin_total(one));
            one_square.add(twin_total(one_square));
        }
        for (each_level levels; levels.next();) {
            EXPECT_EQ(packed_sum_(&column, nullptr, nullptr), twin.packed());
            EXPECT_EQ(packed_sum_of_products_(&column, &column, nullptr), squares.packed());
        }
    }
}

TEST(NumberColumnSum, ByGroupAddsEachRowToItsTotal) {
    struct record_t {
        int64_t key;
        number_total_t total;
    };
    number_source source(20261125);
    const rows_t rows = rows_(source, content_e::ANY, static_cast<size_t>(scaled(20'000)));
    constexpr int group_count = 37;
    std::vector<int32_t> groups;
    twin_total twins[group_count];
    for (const row_t &row : rows) {
        groups.push_back(source.pick(-2, group_count + 1));
        if (row && groups.back() >= 0 && groups.back() < group_count)
            twins[groups.back()].add(number_of(*row));
    }
    for (const shape_t shape : _shapes) {
        test_column column(rows, _numbers, shape);
        std::vector<record_t> records(group_count);
        std::vector<std::array<uint64_t, DV_TOTAL_MEMORY_MAX / sizeof(uint64_t)>> memory(group_count);
        const number_totals_t totals = {group_count, &records[0].total, sizeof records[0]};
        std::vector<int32_t> codes(rows.size());
        dv_column_faults_t faults = {codes.data(), nullptr, 0, 0, 0, 0};
        number_column_sum_by_group(column.get(), groups.data(), &totals, &faults);
        // What did not fit is added one by one to totals with memory.
        for (size_t i = 0; i < rows.size(); ++i) {
            if (codes[i] == 0) continue;
            ASSERT_EQ(codes[i], -5122);
            const auto group = static_cast<size_t>(groups[i]);
            const number_t x = number_of(*rows[i]);
            if (number_total_add(&records[group].total, &x) == 0) continue;
            number_total_attach(&records[group].total, sizeof memory[group], memory[group].data());
            ASSERT_EQ(number_total_add(&records[group].total, &x), 0);
        }
        EXPECT_GT(faults.count, 0);
        for (size_t i = 0; i < group_count; ++i) ASSERT_EQ(packed(records[i].total), twins[i].packed()) << i;
    }
}

// Offsets that run backwards, leave the bytes or give a record more than 22 of them, among good ones.
std::vector<int32_t> hostile_offsets_(number_source &source, int32_t size) {
    std::vector<int32_t> offsets{source.pick(0, 3)};
    for (int i = source.pick(0, 300); i > 0; --i) {
        const int32_t steps[] = {source.pick(0, 21), source.pick(0, 21), source.pick(23, 30),
                                 -source.pick(1, 40)};
        const int64_t next = int64_t{offsets.back()} + steps[source.pick(0, source.pick(0, 3))];
        const bool is_any = source.pick(0, 40) == 0;
        offsets.push_back(static_cast<int32_t>(is_any        ? static_cast<int64_t>(source.bits())
                                               : next < size ? next
                                                             : 0));
    }
    return offsets;
}

bool are_record_or_none_(int64_t begin, int64_t end, int64_t size) {
    return begin >= 0 && end >= begin && end <= size && end - begin <= 22;
}

TEST(NumberColumnSum, ByHostileOffsetsIsThatOfTheRowsThatAreRecords) {
    number_source source(20261130);
    for (long round = scaled(300); round > 0; --round) {
        std::vector<uint8_t> bytes(static_cast<size_t>(source.pick(1, 3'000)));
        source.fill(bytes.data(), bytes.size());
        const auto size = static_cast<int32_t>(bytes.size());
        std::vector<int32_t> offsets = hostile_offsets_(source, size);
        const guarded values(bytes.size(), bytes.data());
        dv_column_t column = {};
        column.count = static_cast<int64_t>(offsets.size()) - 1;
        column.values = values.text();
        column.offsets = offsets.data();
        column.size = size;
        twin_total twin;
        std::vector<int32_t> wanted;
        for (size_t i = 0; i + 1 < offsets.size(); ++i) {
            const int64_t begin = offsets[i], end = offsets[i + 1];
            wanted.push_back(are_record_or_none_(begin, end, size) ? 0 : -5120);
            if (wanted.back() == 0 && end > begin)
                twin.add(number_of(std::string(bytes.begin() + begin, bytes.begin() + end)));
        }
        for (each_level levels; levels.next();) {
            std::vector<int32_t> codes(wanted.size());
            dv_column_faults_t faults = {codes.data(), nullptr, 0, 0, 0, 0};
            ASSERT_EQ(packed_sum_(&column, nullptr, &faults), twin.packed()) << "level " << dv_vector_level();
            ASSERT_EQ(codes, wanted) << "level " << dv_vector_level();
        }
    }
}

// So that the caller can give memory and go on with the row that raised.
TEST(NumberColumnSum, ByGroupStopsAtTheRowThatRaises) {
    std::vector<number_t> rows(200, num("1"));
    rows[70] = num("1E-120");
    const std::vector<int32_t> groups(rows.size());
    dv_column_t column = {};
    column.count = static_cast<int64_t>(rows.size());
    column.values = rows.data();
    column.stride = sizeof rows[0];
    for (each_level levels; levels.next();) {
        number_total_t total{};
        const number_totals_t totals = {1, &total, sizeof total};
        dv_column_faults_t faults = {nullptr, nullptr, /*raises=*/1, 0, 0, 0};
        EXPECT_EQ(raise_of([&] { number_column_sum_by_group(&column, groups.data(), &totals, &faults); }),
                  -5122);
        EXPECT_EQ(faults.first, 70);
        EXPECT_EQ(total.count, 70);
    }
}

TEST(NumberColumnSum, LeavesOutRowsThatFailAndKeepsTheTotalOnARaise) {
    const number_t values[] = {num("1"), num("20"), num("300")};
    const std::string bytes = *row_of(values[0]) + *row_of(values[1]) + *row_of(values[2]);
    int32_t offsets[] = {0, 2, -1, static_cast<int32_t>(bytes.size())};
    dv_column_t column = {};
    column.count = 3;
    column.values = const_cast<char *>(bytes.data());
    column.offsets = offsets;
    column.size = static_cast<int64_t>(bytes.size());
    number_total_t total{};
    dv_column_faults_t faults{};
    EXPECT_EQ(number_column_sum(&column, nullptr, &total, &faults), 0);
    EXPECT_EQ(faults.count, 2);
    EXPECT_EQ(faults.first, 1);
    EXPECT_EQ(faults.code, -5120);
    EXPECT_EQ(total.count, 1);
    const std::string before = packed(total);
    EXPECT_EQ(raise_of([&] { number_column_sum(&column, nullptr, &total, nullptr); }), -5120);
    EXPECT_EQ(packed(total), before);

    const number_t far[] = {num("1E120"), num("1E-120")};
    column = {};
    column.count = 2;
    column.values = const_cast<number_t *>(far);
    column.stride = sizeof far[0];
    EXPECT_GT(number_column_sum(&column, nullptr, &total, nullptr), 32);
    EXPECT_EQ(packed(total), before);
}

}  // namespace
}  // namespace dv::test
