// key.hpp: keys of rows of C++ values.

#include <gtest/gtest.h>

#include <dvtypes/dvtypes.hpp>
#include <random>

namespace {

using namespace dv::literals;
using namespace std::string_literals;

using row_t = std::tuple<std::optional<dv::number>, std::string, std::optional<dv::timestamp_tz>, double,
                         dv::detail::int128, std::optional<std::string>, dv::rowid>;
using table_key = dv::key_of<std::optional<dv::number>, std::string, std::optional<dv::timestamp_tz>, double,
                             dv::detail::int128, std::optional<std::string>, dv::rowid>;

template <typename T>
T any_of_(std::mt19937 &random, std::initializer_list<T> values) {
    return values.begin()[random() % values.size()];
}

row_t any_row_(std::mt19937 &random) {
    return {any_of_<std::optional<dv::number>>(
                random, {std::nullopt, 0_number, -12.5_number, -12_number, "1E99"_number}),
            any_of_<std::string>(random, {"", "\0"s, "\0\0"s, "a", "a\0"s, "\xFF"}),
            any_of_<std::optional<dv::timestamp_tz>>(
                random, {std::nullopt, dv::timestamp_tz(), dv::timestamp_tz("2026-11-21 09:30 +00:00")}),
            any_of_(random, {0.0, -1.5, 1e300, -1e300}),
            any_of_<dv::detail::int128>(random, {0, -1, dv::detail::int128{1} << 100}),
            any_of_<std::optional<std::string>>(random, {std::nullopt, "", "b"}),
            any_of_<dv::rowid>(random, {dv::rowid(), dv::rowid(0, 1, 0, 0), dv::rowid(0, 0, 1, 0)})};
}

std::string key_of_(const table_key &key, const row_t &row) {
    return std::apply([&](const auto &...values) { return key(values...); }, row);
}

constexpr dv::key_column _nulls_first(DV_KEY_ASCENDING, DV_KEY_NULLS_FIRST);  // as std::optional compares

}  // namespace

TEST(CppKeyOf, ComparesAsTuplesAndReadsBack) {
    const table_key key(_nulls_first, {}, _nulls_first, {}, {}, _nulls_first, {});
    std::mt19937 random(1);
    for (int round = 0; round < 3000; ++round) {
        const row_t x = any_row_(random);
        row_t y = any_row_(random);
        if (round % 2 == 0) std::get<0>(y) = std::get<0>(x);
        if (round % 4 == 0) std::get<1>(y) = std::get<1>(x);
        const std::string x_key = key_of_(key, x), y_key = key_of_(key, y);
        ASSERT_EQ(x_key < y_key, x < y) << round;
        ASSERT_EQ(x_key == y_key, x == y) << round;
        ASSERT_EQ(key.read(x_key), x) << round;
        ASSERT_FALSE(key.read(x_key + '\0') || key.read(x_key.substr(0, x_key.size() - 1))) << round;

        const auto &front = std::get<0>(x);
        const bool is_same = front == std::get<0>(y);
        ASSERT_EQ(key.starting_with(front).contains(y_key), is_same) << round;
        const auto above = key.range(DV_COLUMN_GT, std::get<1>(x), front);
        ASSERT_EQ(above.contains(y_key), is_same && std::get<1>(y) > std::get<1>(x)) << round;
        const auto not_above = key.range(DV_COLUMN_LE, std::get<1>(x), front);
        ASSERT_EQ(not_above.contains(y_key), is_same && std::get<1>(y) <= std::get<1>(x)) << round;
        ASSERT_EQ(key.range(DV_COLUMN_NE, std::nullopt).contains(y_key), std::get<0>(y).has_value()) << round;
    }
}

TEST(CppKeyOf, WithoutNullHasTheBytesOfAppendKey) {
    const auto check = [](const auto &x) {
        using value_t = std::remove_cvref_t<decltype(x)>;
        std::string ascending, descending;
        append_key(ascending, x);
        append_key(descending, x, /*is_descending=*/true);
        EXPECT_EQ(dv::key_of<value_t>()(x), ascending) << x;
        EXPECT_EQ(dv::key_of<value_t>(DV_KEY_DESCENDING)(x), descending) << x;
    };
    check(-12.34_number);
    check(dv::date(2024, 2, 29, 13, 5, 0));
    check(dv::time_of_day("13:05:00.5"));
    check(dv::timestamp("2024-02-29 13:05:00.5"));
    check(dv::timestamp_tz("2026-11-21 09:30 Asia/Seoul"));
    check(dv::timestamp_ltz());
    check(dv::interval_ym(-3, -4));
    check(dv::interval_ds(1, 2, 3, 4, 5));
    check(dv::rowid(1, 2, 3, 4));
}

TEST(CppKeyOf, HasOpenAndEmptyRangesAtTheEnds) {
    const dv::key_of<int32_t> key;
    EXPECT_TRUE(key.range(DV_COLUMN_GT, INT32_MAX).is_empty);
    const dv::key_range last = key.range(DV_COLUMN_GE, INT32_MAX);
    EXPECT_FALSE(last.is_empty);
    EXPECT_EQ(last.to, std::nullopt);
    EXPECT_TRUE(last.contains(key(INT32_MAX)));
    EXPECT_FALSE(last.contains(key(INT32_MAX - 1)));
    EXPECT_TRUE(key.starting_with().contains(key(INT32_MIN)));
    EXPECT_EQ(dv::key_of<int32_t>(DV_KEY_DESCENDING).range(DV_COLUMN_LE, INT32_MIN).to, std::nullopt);
}
