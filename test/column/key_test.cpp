#include <gtest/gtest.h>

#include <algorithm>
#include <numeric>

#include "column_support.h"
#include "dvtypes/column_key.h"
#include "key_support.h"

namespace dv::test {
namespace {

// Values of which many share their first bytes, and some are equal.
rows_t rows_(const key_type &type, number_source &source, size_t count) {
    rows_t rows;
    std::string bytes(static_cast<size_t>(type.width), '\x64');
    number_t number = source.with_digits(38, 5);
    for (size_t i = 0; i < count; ++i) {
        if (type.type == DV_KEY_NUMBER) {
            number.coef[source.pick(1, number.size - 3)] = static_cast<uint8_t>(source.pick(0x40, 0xC0));
            rows.push_back(row_of(source.pick(0, 1) != 0 ? number : source.any()));
        } else {
            const int changed = source.pick(0, static_cast<int>(type.width));
            if (changed < type.width) bytes[static_cast<size_t>(changed)] = static_cast<char>(source.bits());
            if (type.type == DV_KEY_DATE || type.type == DV_KEY_TIME)
                bytes[type.type == DV_KEY_DATE ? 7 : 3] = 0;
            rows.push_back(bytes);
        }
        if (source.pick(0, 20) == 0) rows.back() = std::nullopt;
    }
    return rows;
}

std::vector<std::string> keys_(const dv_column_t &column, const key_type &c, dv_key_order_e order,
                               dv_key_nulls_e nulls) {
    const dv_key_part_t part = {&column, c.type, order, nulls};
    const size_t width = dv_key_size(&part), count = static_cast<size_t>(column.count);
    const guarded memory(count * (width + 2));  // a byte of other parts on each side
    dv_column_write_keys(&part, memory.text() + 1, width + 2, nullptr);
    std::vector<std::string> keys;
    for (size_t i = 0; i < count; ++i) keys.emplace_back(memory.text() + i * (width + 2) + 1, width);
    EXPECT_TRUE(memory.intact());
    return keys;
}

}  // namespace

TEST(ColumnKey, OrdersBytesAsValuesInEveryTypeAndDirection) {
    number_source source(20261123);
    const auto count = static_cast<size_t>(scaled(3'000));
    for (const key_type &c : key_types()) {
        const rows_t rows = rows_(c, source, count);
        for (const bool by_offsets : {false, c.type == DV_KEY_NUMBER}) {
            test_column column(rows, {c.type == DV_KEY_NUMBER ? values_t::number : values_t::fixed, c.width},
                               {by_offsets, 5, 3});
            for (const auto order : {DV_KEY_ASCENDING, DV_KEY_DESCENDING}) {
                for (const auto nulls : {DV_KEY_NULLS_FIRST, DV_KEY_NULLS_LAST}) {
                    const auto keys = keys_(*column.get(), c, order, nulls);
                    for (size_t i = 0; i < count; ++i) {
                        const size_t j = source.bits() % count;
                        const int got = std::clamp(keys[i].compare(keys[j]), -1, 1);
                        ASSERT_EQ(got, key_order(c, order, nulls, rows[i], rows[j]))
                            << c.name << " rows " << i << " and " << j << ", order " << order << ", nulls "
                            << nulls << ", by offsets " << by_offsets;
                    }
                }
            }
        }
    }
}

TEST(ColumnKey, OfNumbersOutsideTheirColumnFailsAndCountsAsNoValue) {
    int32_t offsets[] = {0, 2, 9, 4};
    char bytes[] = "\xC1\x81\xC1\x82";
    dv_column_t column{};
    column.count = 3;
    column.values = bytes;
    column.offsets = offsets;
    column.size = 4;
    const dv_key_part_t part = {&column, DV_KEY_NUMBER, DV_KEY_ASCENDING, DV_KEY_NULLS_LAST};
    uint8_t keys[3 * 23];
    int32_t codes[3];
    dv_column_faults_t faults = {codes, nullptr, 0, 0, 0, 0};
    dv_column_write_keys(&part, keys, 23, &faults);
    EXPECT_EQ(std::vector<int32_t>(codes, codes + 3), (std::vector<int32_t>{0, -5120, -5120}));
    EXPECT_EQ(keys[0], 0);
    EXPECT_EQ(keys[1], 0xC1);
    EXPECT_EQ(keys[23], 1);
    EXPECT_EQ(keys[46], 1);
    EXPECT_EQ(faults.first, 1);
}

namespace {

struct sort_case {
    const char *name;
    size_t width;
    int varying;            // bytes in which keys differ, from the end
    int values;             // of such a byte
    bool an_other = false;  // one row in the middle has another first byte
};
constexpr sort_case _sorts[] = {
    {"one byte", 1, 1, 256},
    {"few values", 9, 9, 2},
    {"all equal", 5, 0, 1},
    {"two words", 14, 14, 256},
    {"long runs", 30, 20, 2},
    {"differ late", 40, 2, 256},
    {"digits of a NUMBER", 23, 6, 100},
    {"short runs", 24, 24, 16},
    {"a byte varies in one row", 23, 4, 100, true},
    {"nothing else varies", 9, 0, 1, true},
};

std::vector<uint8_t> sort_keys_(const sort_case &c, size_t count, number_source &source) {
    std::vector<uint8_t> keys(count * c.width + 1, 0x40);
    for (size_t i = 0; i < keys.size(); ++i) {
        const bool varies = i % c.width >= c.width - static_cast<size_t>(c.varying);
        if (varies) keys[i] = static_cast<uint8_t>(source.bits() % static_cast<unsigned>(c.values));
    }
    if (c.an_other && count > 2) keys[(count / 2 + 1) * c.width] = 0x3F;
    return keys;
}

std::vector<int64_t> sorted_by_memcmp_(const std::vector<uint8_t> &keys, size_t width, size_t count) {
    std::vector<int64_t> rows(count);
    std::iota(rows.begin(), rows.end(), 0);
    const auto key = [&](int64_t row) { return keys.data() + static_cast<size_t>(row) * width; };
    std::stable_sort(rows.begin(), rows.end(),
                     [&](int64_t x, int64_t y) { return std::memcmp(key(x), key(y), width) < 0; });
    return rows;
}

}  // namespace

// Stable: equal keys by their rows. The last count is above that from which rows are parted first.
TEST(ColumnSort, GivesTheOrderOfAStableSortByMemcmp) {
    number_source source(7);
    for (const sort_case &c : _sorts) {
        for (const long count : {0L, 1L, 2L, 24L, 25L, scaled(30'000), 70'000L}) {
            const auto keys = sort_keys_(c, static_cast<size_t>(count), source);
            const auto wanted = sorted_by_memcmp_(keys, c.width, static_cast<size_t>(count));
            for (each_level levels; levels.next();) {
                std::vector<int64_t> rows(wanted.size() + 1, -9);
                const size_t size = dv_sort_scratch_size(count, c.width);
                ASSERT_GE(size, static_cast<size_t>(count) * sizeof(int64_t));  // a number a row
                ASSERT_LE(size, static_cast<size_t>(count) * sizeof(int64_t) + (size_t{1} << 20));
                const guarded scratch(size);
                dv_sort_keys(keys.data(), c.width, count, rows.data(), scratch.text());
                EXPECT_EQ(rows.back(), -9);
                rows.pop_back();
                ASSERT_EQ(rows, wanted) << c.name << ", " << count << " rows, level " << dv_vector_level();
                ASSERT_TRUE(scratch.intact()) << c.name;
            }
        }
    }
}

}  // namespace dv::test
