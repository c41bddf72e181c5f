// Packed keys in LMDB, a store that compares bytes: its scans find the rows that a sorted vector of rows has,
// in the same order. The vector is sorted by the comparison of values, not of keys.

#include <gtest/gtest.h>
#include <lmdb.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <numeric>

#include "key_support.h"

namespace dv::test {
namespace {

using row_numbers = std::vector<int64_t>;

void check_(int code) { ASSERT_EQ(code, MDB_SUCCESS) << mdb_strerror(code); }

MDB_val value_of_(const std::string &bytes) { return {bytes.size(), const_cast<char *>(bytes.data())}; }

// A database in a folder of its own: keys of rows, each with the row's number.
class store {
  public:
    store() {
        std::string pattern = (std::filesystem::temp_directory_path() / "dvtypes_lmdb_XXXXXX").string();
        folder_ = mkdtemp(pattern.data());
        check_(mdb_env_create(&environment_));
        check_(mdb_env_set_mapsize(environment_, size_t{1} << 28));
        check_(mdb_env_open(environment_, folder_.c_str(), MDB_NOSYNC | MDB_NOLOCK, 0600));
    }
    ~store() {
        mdb_env_close(environment_);
        std::filesystem::remove_all(folder_);
    }
    store(const store &) = delete;
    store &operator=(const store &) = delete;

    void fill(const std::vector<std::string> &keys) {
        MDB_txn *transaction = nullptr;
        check_(mdb_txn_begin(environment_, nullptr, 0, &transaction));
        check_(mdb_dbi_open(transaction, nullptr, 0, &database_));
        for (size_t i = 0; i < keys.size(); ++i) {
            auto row = static_cast<int64_t>(i);
            MDB_val key = value_of_(keys[i]), data = {sizeof row, &row};
            check_(mdb_put(transaction, database_, &key, &data, MDB_NOOVERWRITE));
        }
        check_(mdb_txn_commit(transaction));
    }

    // The rows from a key on and in front of another; an empty `to` is no end.
    row_numbers scan(const key_bounds &range, bool is_backward = false) const {
        MDB_txn *transaction = nullptr;
        MDB_cursor *cursor = nullptr;
        check_(mdb_txn_begin(environment_, nullptr, MDB_RDONLY, &transaction));
        check_(mdb_cursor_open(transaction, database_, &cursor));
        row_numbers rows;
        MDB_val key{}, data{};
        for (int code = is_backward ? last_(cursor, range, key, data) : first_(cursor, range, key, data);
             code == MDB_SUCCESS && range.contain({static_cast<char *>(key.mv_data), key.mv_size});
             code = mdb_cursor_get(cursor, &key, &data, is_backward ? MDB_PREV : MDB_NEXT)) {
            rows.emplace_back();
            std::memcpy(&rows.back(), data.mv_data, sizeof rows.back());
        }
        mdb_cursor_close(cursor);
        mdb_txn_abort(transaction);
        return rows;
    }

  private:
    static int first_(MDB_cursor *cursor, const key_bounds &range, MDB_val &key, MDB_val &data) {
        if (range.from.empty()) return mdb_cursor_get(cursor, &key, &data, MDB_FIRST);
        key = value_of_(range.from);
        return mdb_cursor_get(cursor, &key, &data, MDB_SET_RANGE);
    }
    static int last_(MDB_cursor *cursor, const key_bounds &range, MDB_val &key, MDB_val &data) {
        key = value_of_(range.to);
        if (range.to.empty() || mdb_cursor_get(cursor, &key, &data, MDB_SET_RANGE) != MDB_SUCCESS)
            return mdb_cursor_get(cursor, &key, &data, MDB_LAST);
        return mdb_cursor_get(cursor, &key, &data, MDB_PREV);
    }

    std::string folder_;
    MDB_env *environment_ = nullptr;
    MDB_dbi database_ = 0;
};

// Rows with a number of their own in the last part, the store of their keys, and their order.
struct table {
    key_parts parts;
    std::vector<rows_t> rows{};
    row_numbers sorted{};
    store keys{};

    table(const key_parts &of, long count, number_source &source) : parts(of) {
        parts.push_back({nullptr, DV_KEY_INT64, DV_KEY_DESCENDING, DV_KEY_NOT_NULL});
        std::vector<std::string> packed;
        for (int64_t i = 0; i < count; ++i) {
            rows_t row = any_key_row(of, source);
            row.push_back(std::string(reinterpret_cast<const char *>(&i), sizeof i));
            packed.push_back(packed_key(parts, row));
            rows.push_back(std::move(row));
        }
        keys.fill(packed);
        sorted.resize(rows.size());
        std::iota(sorted.begin(), sorted.end(), 0);
        std::sort(sorted.begin(), sorted.end(),
                  [&](int64_t x, int64_t y) { return key_order(parts, row(x), row(y)) < 0; });
    }
    const rows_t &row(int64_t number) const { return rows[static_cast<size_t>(number)]; }

    // The rows that begin as this one does, in order, by the vector alone.
    row_numbers beginning_as(const rows_t &given, size_t columns) const {
        const key_parts front(parts.begin(), parts.begin() + static_cast<std::ptrdiff_t>(columns));
        const auto from = std::partition_point(
            sorted.begin(), sorted.end(), [&](int64_t x) { return key_order(front, row(x), given) < 0; });
        const auto to = std::partition_point(from, sorted.end(),
                                             [&](int64_t x) { return key_order(front, row(x), given) == 0; });
        return {from, to};
    }
};

// column = ..., NULL, <, >= and so on, behind the first columns of some row.
void check_ranges_(const table &t, const rows_t &given, size_t column) {
    const std::string prefix =
        packed_key(t.parts, rows_t(given.begin(), given.begin() + static_cast<std::ptrdiff_t>(column)));
    const row_numbers beginning = t.beginning_as(given, column);
    const dv_key_part_t &part = t.parts[column];
    const row_t &value = given[column];
    for (const int relation :
         {DV_COLUMN_LT, DV_COLUMN_EQ, DV_COLUMN_LE, DV_COLUMN_GT, DV_COLUMN_NE, DV_COLUMN_GE}) {
        if (value ? relation == DV_COLUMN_NE : relation != DV_COLUMN_EQ && relation != DV_COLUMN_NE) continue;
        row_numbers wanted;
        std::copy_if(beginning.begin(), beginning.end(), std::back_inserter(wanted),
                     [&](int64_t x) { return is_related(part, t.row(x)[column], relation, value); });
        const auto range = key_range(part, relation, value, prefix);
        const row_numbers found = range ? t.keys.scan(*range) : row_numbers();
        ASSERT_EQ(found, wanted) << "relation " << relation << " of part " << column << " of "
                                 << describe(t.parts, given);
        if (!range) continue;
        std::reverse(wanted.begin(), wanted.end());
        ASSERT_EQ(t.keys.scan(*range, /*is_backward=*/true), wanted) << describe(t.parts, given);
    }
}

void check_(const table &t, int scans, number_source &source) {
    ASSERT_EQ(t.keys.scan({"", ""}), t.sorted);
    for (int i = 0; i < scans; ++i) {
        const rows_t &given = t.row(source.pick(0, static_cast<int>(t.rows.size()) - 1));
        for (size_t column = 0; column < t.parts.size(); ++column) check_ranges_(t, given, column);
    }
}

}  // namespace

TEST(LmdbStore, ScansAHundredThousandKeysOfFourColumns) {
    number_source source(20261206);
    const key_parts parts = {{nullptr, DV_KEY_BYTES, DV_KEY_ASCENDING, DV_KEY_NULLS_LAST},
                             {nullptr, DV_KEY_NUMBER, DV_KEY_DESCENDING, DV_KEY_NULLS_FIRST},
                             {nullptr, DV_KEY_TIMESTAMP, DV_KEY_ASCENDING, DV_KEY_NOT_NULL}};
    const table t(parts, scaled(100'000), source);
    check_(t, 5, source);
}

// Each type ascending in one key and descending in another, in front, in the middle and behind.
TEST(LmdbStore, ScansKeysOfEveryType) {
    number_source source(20261207);
    for (int type = 0; type < DV_KEY_TYPES; ++type) {
        const auto part = [&](int of, int order) {
            return dv_key_part_t{nullptr, (type + of) % DV_KEY_TYPES, order, source.pick(0, 2)};
        };
        const table t({part(0, DV_KEY_ASCENDING), part(3, DV_KEY_DESCENDING), part(5, type % 2)},
                      scaled(3'000), source);
        check_(t, 3, source);
    }
}

}  // namespace dv::test
