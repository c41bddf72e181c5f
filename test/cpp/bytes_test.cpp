// bytes.hpp: values as bytes and back, and keys of several columns.

#include <gtest/gtest.h>

#include <dvtypes/dvtypes.hpp>
#include <random>
#include <tuple>
#include <vector>

namespace {

using namespace dv::literals;

template <typename Value>
class CppBytes : public testing::Test {};
using values = testing::Types<dv::number, dv::date, dv::time_of_day, dv::timestamp, dv::timestamp_tz,
                              dv::timestamp_ltz, dv::interval_ym, dv::interval_ds, dv::rowid, dv::zone>;
TYPED_TEST_SUITE(CppBytes, values);

template <typename Value>
std::string text_of_(const Value &x) {
    return x.to_string();
}
// A region's offset is taken as it is stored, also where its clocks had another.
std::string text_of_(const dv::timestamp_tz &x) { return x.at(dv::zone()).to_string(); }

// Records of any bytes, near to sound ones: what is taken is a value whose text reads back as it, and has the
// same bytes again.
TYPED_TEST(CppBytes, AreTakenWhenTheyAreAValues) {
    const std::vector<TypeParam> seeds = [] {
        if constexpr (std::same_as<TypeParam, dv::number>)
            return std::vector{-12.34_number, "1E37"_number, 0_number};
        if constexpr (std::same_as<TypeParam, dv::interval_ym>)
            return std::vector{dv::interval_ym(-3, -4), dv::interval_ym("+999999999-11")};
        if constexpr (std::same_as<TypeParam, dv::interval_ds>)
            return std::vector{dv::interval_ds(1, 2, 3, 4, 5),
                               dv::interval_ds("-999999999 23:59:59.999999999")};
        if constexpr (std::same_as<TypeParam, dv::timestamp_tz>)
            return std::vector{dv::timestamp_tz("2026-11-21 09:30 Asia/Seoul"), dv::timestamp_tz()};
        return std::vector{TypeParam()};
    }();
    std::mt19937 random(1);
    int taken = 0, refused = 0;
    for (int round = 0; round < 3000; ++round) {
        const TypeParam seed = seeds[random() % seeds.size()];
        const auto sound = dv::to_bytes(seed);
        std::vector<uint8_t> bytes(sound.begin(), sound.end());
        ASSERT_EQ(*dv::from_bytes<TypeParam>(bytes), seed);
        const size_t place = random() % bytes.size();
        bytes[place] = static_cast<uint8_t>(random() % 2 == 0 ? bytes[place] + random() % 5 : random());
        const auto value = dv::from_bytes<TypeParam>(bytes);
        if (!value) {
            ++refused;
            continue;
        }
        ++taken;
        const auto again = dv::to_bytes(*value);
        EXPECT_TRUE(std::ranges::equal(again, bytes)) << *value;
        EXPECT_EQ(TypeParam(text_of_(*value)), *value) << *value;
        constexpr bool has_zone =
            std::same_as<TypeParam, dv::timestamp_tz> || std::same_as<TypeParam, dv::zone>;
        if (!has_zone && *value == seed) {
            EXPECT_TRUE(std::ranges::equal(bytes, sound)) << *value;
        }
    }
    EXPECT_GT(taken, 50);
    EXPECT_TRUE(refused > 50 || (std::same_as<TypeParam, dv::rowid>));
}

TYPED_TEST(CppBytes, OfAnotherLengthAreRefused) {
    const TypeParam zero;
    const auto sound = dv::to_bytes(zero);
    std::vector<uint8_t> bytes(sound.begin(), sound.end());
    bytes.push_back(0);
    EXPECT_FALSE(dv::from_bytes<TypeParam>(bytes));
    bytes.resize(100);
    EXPECT_FALSE(dv::from_bytes<TypeParam>(bytes));
    for (size_t size = 0; size < sound.size(); ++size) {
        bytes.resize(size);
        EXPECT_FALSE(dv::from_bytes<TypeParam>(bytes)) << size;
    }
}

TEST(CppKeys, OfSeveralColumnsCompareAsTheRows) {
    const std::vector<dv::number> numbers = {"-1E9"_number, "-12.3"_number, "-12"_number, "-.1"_number,  0,
                                             "1"_number,    "1.01"_number,  "100"_number, "1E125"_number};
    const std::vector<dv::date> days = {dv::date(-44, 3, 15), dv::date(2024, 2, 29),
                                        dv::date(2024, 2, 29, 0, 0, 1)};
    using row_t = std::tuple<dv::number, dv::date, dv::number>;
    std::vector<std::pair<row_t, std::string>> rows;
    for (const auto &x : numbers) {
        for (const auto &day : days) {
            for (const auto &y : numbers) {
                std::string key;
                append_key(key, x);
                append_key(key, day, /*is_descending=*/true);
                append_key(key, y, /*is_descending=*/true);
                rows.emplace_back(row_t{x, day, y}, key);
            }
        }
    }
    const auto is_before = [](const row_t &a, const row_t &b) {
        const auto &[x1, day1, y1] = a;
        const auto &[x2, day2, y2] = b;
        return std::tie(x1, day2, y2) < std::tie(x2, day1, y1);
    };
    for (const auto &[row1, key1] : rows) {
        for (const auto &[row2, key2] : rows) {
            ASSERT_EQ(key1 < key2, is_before(row1, row2))
                << std::get<0>(row1) << ", " << std::get<0>(row2) << "; " << std::get<2>(row1) << ", "
                << std::get<2>(row2);
        }
    }
}

}  // namespace
