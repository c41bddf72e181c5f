// packed_key.cpp: keys of several columns, their order, ranges and what is read back out of them.

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>

#include "key_support.h"

namespace dv::test {
namespace {

constexpr int _every_value = 7;  // below, equal, above

int sign_(int order) { return std::clamp(order, -1, 1); }

// A key in memory that ends where the key does.
struct exact_bytes {
    explicit exact_bytes(const std::string &key)
        : memory(new uint8_t[key.size() + 1]), rest{memory.get() + 1, key.size()} {
        std::copy(key.begin(), key.end(), memory.get() + 1);
    }
    std::unique_ptr<uint8_t[]> memory;
    dv_key_rest_t rest;
};

// The next part as a row has it, or what is wrong with it.
std::optional<std::string> take_(dv_key_rest_t &rest, const dv_key_part_t &part, row_t &value) {
    int64_t size = 0;
    const dv_key_rest_t before = rest;
    dv_key_rest_t measured = rest;
    const char *fault = dv_key_take(&measured, &part, nullptr, 0, &size);
    const guarded memory(static_cast<size_t>(std::max<int64_t>(size, 0)));
    int64_t taken = 0;
    const char *const same =
        dv_key_take(&rest, &part, memory.text(), static_cast<size_t>(std::max<int64_t>(size, 0)), &taken);
    EXPECT_EQ(fault == nullptr, same == nullptr);
    EXPECT_EQ(size, taken);
    EXPECT_EQ(measured.bytes, rest.bytes);
    EXPECT_TRUE(memory.intact());
    if (fault != nullptr) {
        EXPECT_TRUE(rest.bytes == before.bytes && rest.size == before.size) << fault;
        return fault;
    }
    value = std::nullopt;
    if (size < 0) return std::nullopt;
    value = std::string(memory.text(), static_cast<size_t>(size));
    if (part.type == DV_KEY_NUMBER) value = row_of(*memory.record());
    return std::nullopt;
}

}  // namespace

TEST(PackedKey, OrdersRowsOfAnyTypesOrdersAndNulls) {
    number_source source(20261201);
    for (long round = 0; round < scaled(1'500); ++round) {
        const key_parts parts = any_key_parts(source, static_cast<size_t>(source.pick(1, 4)));
        std::vector<std::pair<rows_t, std::string>> keys;
        for (int i = 0; i < 12; ++i) {
            rows_t row = any_key_row(parts, source);
            // As another one in its first columns, so that the later ones decide.
            if (i > 0)
                std::copy_n(keys[0].first.begin(), source.pick(0, static_cast<int>(row.size()) - 1),
                            row.begin());
            keys.emplace_back(row, packed_key(parts, row));
        }
        for (const auto &[x, x_key] : keys) {
            for (const auto &[y, y_key] : keys) {
                const int order = key_order(parts, x, y);
                ASSERT_EQ(sign_(x_key.compare(y_key)), order) << describe(parts, x) << "\n"
                                                              << describe(parts, y);
                ASSERT_TRUE(order == 0 || !y_key.starts_with(x_key))
                    << describe(parts, x) << describe(parts, y);
            }
        }
    }
}

TEST(PackedKey, GivesItsValuesBack) {
    number_source source(20261202);
    for (long round = 0; round < scaled(20'000); ++round) {
        const key_parts parts = any_key_parts(source, static_cast<size_t>(source.pick(1, 4)));
        const rows_t row = any_key_row(parts, source);
        const std::string key = packed_key(parts, row);
        exact_bytes bytes(key);
        rows_t found(row.size());
        for (size_t i = 0; i < row.size(); ++i) {
            const auto fault = take_(bytes.rest, parts[i], found[i]);
            ASSERT_FALSE(fault) << *fault << ": " << describe(parts, row);
            // Of TIMESTAMP WITH TIME ZONE the instant alone; -0 is 0, and any NaN one of them.
            const bool is_whole = parts[i].type != DV_KEY_TS_TZ && parts[i].type != DV_KEY_DOUBLE;
            ASSERT_TRUE(!is_whole || found[i] == row[i]) << describe(parts, row) << "\n"
                                                         << describe(parts, found);
        }
        ASSERT_EQ(bytes.rest.size, 0u);
        ASSERT_EQ(key_order(parts, found, row), 0) << describe(parts, row) << "\n" << describe(parts, found);
        ASSERT_EQ(packed_key(parts, found), key) << describe(parts, row);
    }
}

namespace {

// A key with up to two bytes changed, and with an end that is not its own.
std::string damaged_key_(std::string key, number_source &source) {
    for (int changes = source.pick(0, 2); changes > 0 && !key.empty(); --changes) {
        const auto place = static_cast<size_t>(source.pick(0, static_cast<int>(key.size()) - 1));
        const auto byte = static_cast<unsigned char>(key[place]);
        key[place] =
            static_cast<char>(source.pick(0, 1) == 0 ? byte + source.pick(-2, 2) : source.pick(0, 1) * 255);
    }
    key.resize(static_cast<size_t>(source.pick(0, static_cast<int>(key.size()) + 2)), '\xFF');
    return key;
}

}  // namespace

// What is taken is what dv_key_append writes; nothing is read behind the last byte (AddressSanitizer).
TEST(PackedKey, TakesNoBytesThatAreNoKey) {
    number_source source(20261203);
    long taken = 0, refused = 0;
    for (long round = 0; round < scaled(60'000); ++round) {
        const key_parts parts = any_key_parts(source, 1);
        const std::string key = damaged_key_(packed_key(parts, any_key_row(parts, source)), source);
        exact_bytes bytes(key);
        rows_t row(1);
        if (take_(bytes.rest, parts[0], row[0])) {
            ++refused;
            continue;
        }
        ++taken;
        ASSERT_EQ(packed_key(parts, row), key.substr(0, key.size() - bytes.rest.size))
            << describe(parts, row);
    }
    EXPECT_GT(taken, scaled(60'000) / 20);
    EXPECT_GT(refused, scaled(60'000) / 20);
}

namespace {

// The ranges of a column behind the values in front of it hold the rows that they should, which are counted.
void check_ranges_(const key_parts &parts, const rows_t &given, size_t place, const std::vector<rows_t> &rows,
                   long &held) {
    const auto end = static_cast<std::ptrdiff_t>(place);
    const key_parts front(parts.begin(), parts.begin() + end);
    const std::string prefix = packed_key(parts, rows_t(given.begin(), given.begin() + end));
    const row_t &value = given[place];
    for (int relation = DV_COLUMN_LT; relation <= _every_value; ++relation) {
        if ((relation == DV_COLUMN_NE) == value.has_value() && relation != DV_COLUMN_EQ) continue;
        const auto range = key_range(parts[place], relation, value, prefix);
        for (const rows_t &row : rows) {
            const bool is_wanted =
                key_order(front, given, row) == 0 && is_related(parts[place], row[place], relation, value);
            ASSERT_EQ(range && range->contain(packed_key(parts, row)), is_wanted)
                << "relation " << relation << " of part " << place << " to that of " << describe(parts, given)
                << "\n"
                << describe(parts, row);
            held += is_wanted;
        }
    }
}

}  // namespace

TEST(PackedKey, RangesHoldTheRowsOfTheirRelationAndNoOther) {
    number_source source(20261204);
    long held = 0;
    for (long round = 0; round < scaled(1'500); ++round) {
        const key_parts parts = any_key_parts(source, 3);
        const rows_t given = any_key_row(parts, source);
        const auto place = static_cast<size_t>(source.pick(0, 2));
        std::vector<rows_t> rows;
        for (int i = 0; i < 40; ++i) {
            rows.push_back(any_key_row(parts, source));
            if (source.pick(0, 3) != 0) std::copy_n(given.begin(), place, rows.back().begin());
            if (source.pick(0, 5) == 0) rows.back()[place] = given[place];
        }
        ASSERT_NO_FATAL_FAILURE(check_ranges_(parts, given, place, rows, held));
    }
    EXPECT_GT(held, scaled(1'500));
}

TEST(PackedKey, HasNoRangeAboveTheLastValueAndAnOpenOneAtTheEnd) {
    const dv_key_part_t part = {nullptr, DV_KEY_INT32, DV_KEY_ASCENDING, DV_KEY_NOT_NULL};
    const int32_t greatest = INT32_MAX;
    const std::string value(reinterpret_cast<const char *>(&greatest), sizeof greatest);
    EXPECT_FALSE(key_range(part, DV_COLUMN_GT, value, ""));
    EXPECT_FALSE(key_range(part, DV_COLUMN_GT, value, "\xFF"));
    const auto range = key_range(part, DV_COLUMN_EQ, value, "");
    ASSERT_TRUE(range);
    EXPECT_EQ(range->from, "\xFF\xFF\xFF\xFF");
    EXPECT_EQ(range->to, "");
    EXPECT_EQ(key_range(part, DV_COLUMN_EQ, value, "a")->to, "b");
}

TEST(PackedKey, WithoutRoomStaysAsItWas) {
    const dv_key_part_t part = {nullptr, DV_KEY_BYTES, DV_KEY_DESCENDING, DV_KEY_NULLS_LAST};
    constexpr size_t needed = 1 + 5 + 2;  // a, 0 and FF, b, c; the end
    for (size_t room = 0; room <= needed + 1; ++room) {
        const guarded memory(room + 2), other(room + 2);
        const std::string before(memory.text(), room + 2);
        dv_key_t key = {reinterpret_cast<uint8_t *>(memory.text()), 2, room + 2};
        dv_key_t to = {reinterpret_cast<uint8_t *>(other.text()), 2, room + 1};
        EXPECT_EQ(raise_of([&] { dv_key_range(&part, DV_COLUMN_EQ, "a\0bc", 4, &key, &to); }),
                  room > needed ? 0 : -3005);
        key.size = 2;
        EXPECT_EQ(raise_of([&] { dv_key_append(&key, &part, "a\0bc", 4); }), room >= needed ? 0 : -3005)
            << room;
        EXPECT_EQ(key.size, room >= needed ? 2 + needed : 2);
        EXPECT_TRUE(room >= needed || std::string(memory.text(), room + 2) == before) << room;
        EXPECT_TRUE(memory.intact() && other.intact());
    }
    // A size beyond the room is no room.
    uint8_t byte = 0;
    dv_key_t key = {&byte, 2, 1};
    EXPECT_EQ(raise_of([&] { dv_key_append(&key, &part, "", 0); }), -3005);
}

TEST(PackedKey, SaysHowLongAValueIsThatHasNoRoom) {
    const key_parts parts = {{nullptr, DV_KEY_BYTES, DV_KEY_ASCENDING, DV_KEY_NOT_NULL}};
    exact_bytes bytes(packed_key(parts, {std::string("Se\0ul", 5)}));
    const dv_key_rest_t before = bytes.rest;
    char text[5] = "....";
    int64_t size = 0;
    EXPECT_STREQ(dv_key_take(&bytes.rest, &parts[0], text, 4, &size), "there is no room for the value");
    EXPECT_EQ(size, 5);
    EXPECT_STREQ(text, "....");
    EXPECT_EQ(bytes.rest.bytes, before.bytes);
    EXPECT_EQ(dv_key_take(&bytes.rest, &parts[0], text, 5, &size), nullptr);
    EXPECT_EQ(std::string(text, 5), std::string("Se\0ul", 5));
}

TEST(PackedKey, RefusesNullWhereThereIsNoneAndRelationsThatAreNoRange) {
    const auto ascending = [](int nulls) {
        return dv_key_part_t{nullptr, DV_KEY_NUMBER, DV_KEY_ASCENDING, nulls};
    };
    number_t none{}, one;
    number_from_int32(&one, 1);
    const struct {
        const char *name;
        int nulls, relation;
        const number_t *value;
    } cases[] = {
        {"NULL", DV_KEY_NOT_NULL, DV_COLUMN_EQ, nullptr},
        {"a NUMBER that is NULL", DV_KEY_NOT_NULL, DV_COLUMN_NE, &none},
        {"below NULL", DV_KEY_NULLS_LAST, DV_COLUMN_LT, nullptr},
        {"not above NULL", DV_KEY_NULLS_FIRST, DV_COLUMN_LE, &none},
        {"every value but one", DV_KEY_NULLS_FIRST, DV_COLUMN_NE, &one},
        {"no relation", DV_KEY_NOT_NULL, 0, &one},
        {"too many", DV_KEY_NOT_NULL, 8, &one},
    };
    uint8_t bytes[64];
    for (const auto &c : cases) {
        const dv_key_part_t part = ascending(c.nulls);
        dv_key_t key = {bytes, 0, sizeof bytes}, to = key;
        const assertion_watch assertions;
        EXPECT_EQ(dv_key_range(&part, c.relation, c.value, 0, &key, &to), 0) << c.name;
        EXPECT_EQ(assertions.count(), 1u) << c.name;
        const bool is_refused = c.nulls == DV_KEY_NOT_NULL && c.value != &one;
        dv_key_append(&key, &part, c.value, 0);
        EXPECT_EQ(assertions.count(), is_refused ? 2u : 1u) << c.name;
        EXPECT_EQ(key.size == 0, is_refused) << c.name;
    }
}

namespace {

struct columns_of_keys {
    std::vector<std::unique_ptr<test_column>> columns{};
    key_parts parts{};
};

// Columns of the rows, in any layout that a part may have.
columns_of_keys columns_(key_parts parts, const std::vector<rows_t> &rows, number_source &source) {
    columns_of_keys made;
    for (size_t i = 0; i < parts.size(); ++i) {
        rows_t values;
        for (const rows_t &row : rows) values.push_back(row[i]);
        const key_type &type = key_types()[static_cast<size_t>(parts[i].type)];
        const bool is_number = type.type == DV_KEY_NUMBER, is_text = type.type == DV_KEY_BYTES;
        const values_t kind = {is_number ? values_t::number
                               : is_text ? values_t::text
                                         : values_t::fixed,
                               type.width};
        const shape_t shape = {is_text || (is_number && source.pick(0, 1) == 0), source.pick(0, 3),
                               source.pick(0, 9)};
        made.columns.push_back(std::make_unique<test_column>(values, kind, shape));
        parts[i].column = made.columns.back()->get();
    }
    made.parts = parts;
    return made;
}

// Keys that do not fit behind the ones before them fail.
void check_less_room_(const key_parts &parts, const rows_t &wanted, int64_t left) {
    const auto count = static_cast<int64_t>(wanted.size());
    test_column result(count, {values_t::text, 0}, {true, 0, 1}, left);
    std::vector<int32_t> codes(wanted.size(), 1);
    dv_column_faults_t faults = {codes.data(), nullptr, 0, 0, 0, 0};
    dv_column_pack_keys(parts.data(), static_cast<int>(parts.size()), result.get(), &faults);
    ASSERT_TRUE(result.intact());
    for (size_t i = 0; i < wanted.size(); ++i) {
        const auto size = static_cast<int64_t>(wanted[i].value_or("").size());
        const bool fits = size <= left;
        ASSERT_EQ(codes[i], fits ? 0 : -3005) << "row " << i;
        ASSERT_EQ(result.row(static_cast<int64_t>(i)), fits ? wanted[i] : std::nullopt) << "row " << i;
        if (fits) left -= size;
    }
    ASSERT_GT(faults.count, 0);
}

}  // namespace

TEST(PackedKey, OfColumnsIsThatOfEachRow) {
    number_source source(20261205);
    for (long round = 0; round < scaled(200); ++round) {
        const key_parts parts = any_key_parts(source, static_cast<size_t>(source.pick(1, 4)));
        std::vector<rows_t> rows;
        rows_t wanted;
        int64_t room = 0;
        for (int i = source.pick(0, 150); i > 0; --i) {
            rows_t row = any_key_row(parts, source);
            // Rows without a value in some column; the key of a row needs one in each that is NOT NULL.
            const auto hole = static_cast<size_t>(source.pick(0, static_cast<int>(row.size()) * 4));
            if (hole < row.size()) row[hole] = std::nullopt;
            const bool has_key = hole >= row.size() || parts[hole].nulls != DV_KEY_NOT_NULL;
            wanted.push_back(has_key ? row_t(packed_key(parts, row)) : std::nullopt);
            room += static_cast<int64_t>(wanted.back().value_or("").size());
            rows.push_back(row);
        }
        const columns_of_keys columns = columns_(parts, rows, source);
        const auto count = static_cast<int64_t>(rows.size());
        test_column result(count, {values_t::text, 0}, {true, 0, 3}, room);
        dv_column_pack_keys(columns.parts.data(), static_cast<int>(parts.size()), result.get(), nullptr);
        ASSERT_TRUE(result.intact());
        for (int64_t i = 0; i < count; ++i)
            ASSERT_EQ(result.row(i), wanted[static_cast<size_t>(i)])
                << describe(parts, rows[static_cast<size_t>(i)]);
        if (room == 0) continue;
        const int64_t left = source.pick(0, 1) == 0 ? room - 1 : source.pick(0, static_cast<int>(room) - 1);
        ASSERT_NO_FATAL_FAILURE(check_less_room_(columns.parts, wanted, left)) << describe(parts, rows[0]);
    }
}

TEST(PackedKey, OfColumnsFailsByRowWhereOffsetsLeaveThem) {
    int32_t offsets[] = {0, 1, 9, 2}, key_offsets[4] = {};
    char bytes[] = "ab", keys[64];
    dv_column_t column{}, result{};
    column.count = result.count = 3;
    column.values = bytes;
    column.offsets = offsets;
    column.size = 2;
    result.values = keys;
    result.offsets = key_offsets;
    result.size = sizeof keys;
    const dv_key_part_t part = {&column, DV_KEY_BYTES, DV_KEY_ASCENDING, DV_KEY_NOT_NULL};
    int32_t codes[3];
    dv_column_faults_t faults = {codes, nullptr, 0, 0, 0, 0};
    dv_column_pack_keys(&part, 1, &result, &faults);
    EXPECT_EQ(std::vector<int32_t>(codes, codes + 3), (std::vector<int32_t>{0, -5120, -5120}));
    EXPECT_EQ(std::vector<int32_t>(key_offsets, key_offsets + 4), (std::vector<int32_t>{0, 3, 3, 3}));
}

}  // namespace dv::test
