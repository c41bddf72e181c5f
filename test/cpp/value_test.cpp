// What all values have in common, over every type: text both ways, order, hash, streams.

#include <gtest/gtest.h>

#include <dvtypes/dvtypes.hpp>
#include <sstream>
#include <unordered_set>

namespace {

// Per type: texts of values in ascending order, and what C makes of the order of two records.
template <typename T>
struct samples;

template <>
struct samples<dv::number> {
    static constexpr const char *texts[] = {
        "-1E125", "-128", "-.1",  "0",    "1E-130",
        ".1",     "1",    "1.01", "12.5", "99999999999999999999999999999999999999"};
    static int compare(const number_t &x, const number_t &y) { return number_cmp(&x, &y); }
};
template <>
struct samples<dv::date> {
    static constexpr const char *texts[] = {"-9999-01-01 00:00:00", "-0044-03-15 12:00:00",
                                            "0001-01-01 00:00:00",  "1582-10-04 23:59:59",
                                            "1582-10-15 00:00:00",  "9999-12-31 23:59:59"};
    static constexpr auto compare = [](const auto &x, const auto &y) { return dv_date_compare(&x, &y); };
};
template <>
struct samples<dv::time_of_day> {
    static constexpr const char *texts[] = {"00:00:00.000000000", "00:00:00.000000001", "13:05:00.500000000",
                                            "23:59:59.999999999"};
    static constexpr auto compare = [](const auto &x, const auto &y) { return dv_time_compare(&x, &y); };
};
template <>
struct samples<dv::timestamp> {
    static constexpr const char *texts[] = {"-4713-01-01 00:00:00.000000001", "1969-12-31 23:59:59.999999999",
                                            "1970-01-01 00:00:00.000000000", "2024-02-29 13:05:00.500000000"};
    static constexpr auto compare = [](const auto &x, const auto &y) { return dv_timestamp_compare(&x, &y); };
};
template <>
struct samples<dv::timestamp_tz> {
    static constexpr const char *texts[] = {"-0001-12-31 00:00:00.000000000 -12:59",
                                            "2014-10-26 01:30:00.000000000 Europe/Moscow +04:00",
                                            "2014-10-26 01:30:00.000000000 Europe/Moscow MSK",
                                            "2024-10-27 02:30:00.000000000 Europe/Paris CEST",
                                            "2024-10-27 02:30:00.000000000 Europe/Paris CET",
                                            "2024-10-27 12:00:00.000000000 +09:00"};
    static constexpr auto compare = [](const auto &x, const auto &y) { return dv_ts_tz_compare(&x, &y); };
};
template <>
struct samples<dv::timestamp_ltz> {
    static constexpr const char *texts[] = {"1582-10-04 23:59:59.999999999 +00:00",
                                            "1970-01-01 00:00:00.000000000 +00:00"};
    static constexpr auto compare = [](const auto &x, const auto &y) { return dv_ts_ltz_compare(&x, &y); };
};
template <>
struct samples<dv::interval_ym> {
    static constexpr const char *texts[] = {"-999999999-11", "-01-02", "-00-01", "+00-00", "+999999999-11"};
    static constexpr auto compare = [](const auto &x, const auto &y) { return dv_itv_ytm_compare(&x, &y); };
};
template <>
struct samples<dv::interval_ds> {
    static constexpr const char *texts[] = {"-999999999 23:59:59.999999999", "-00 00:00:00.000000001",
                                            "+00 00:00:00.000000000", "+01 02:03:04.500000000",
                                            "+999999999 23:59:59.999999999"};
    static constexpr auto compare = [](const auto &x, const auto &y) { return dv_itv_dts_compare(&x, &y); };
};
template <>
struct samples<dv::rowid> {
    static constexpr const char *texts[] = {"AAAAAAAAAAAAAAAAAA", "AAAAABAACAAAAADAAE", "AAAAABAACAAAAADAAa",
                                            "AAAAABAACAAAAADAA0", "D/////P//D/////P//"};
    static constexpr auto place = [](const rowid_t &x) { return std::tuple(x.sgmt, x.file, x.block, x.row); };
    static int compare(const rowid_t &x, const rowid_t &y) {
        return rowid_equals(x, y) ? 0 : place(x) < place(y) ? -1 : 1;
    }
};
template <>
struct samples<dv::zone> {  // by name, then from west to east; C has no order,
                            // and applies a zone of +00:30 as -00:30
    static constexpr const char *texts[] = {"Africa/Abidjan", "Asia/Seoul", "Zulu",   "-12:59",
                                            "+00:30",         "+00:00",     "+05:30", "+14:00"};
};

template <typename T>
class CppValue : public testing::Test {};
using value_types = testing::Types<dv::number, dv::date, dv::time_of_day, dv::timestamp, dv::timestamp_tz,
                                   dv::timestamp_ltz, dv::interval_ym, dv::interval_ds, dv::rowid, dv::zone>;
TYPED_TEST_SUITE(CppValue, value_types);

template <typename T>
std::vector<T> values_() {
    std::vector<T> values;
    for (const char *text : samples<T>::texts) values.emplace_back(text);
    return values;
}

TYPED_TEST(CppValue, TextsLoseNothing) {
    static_assert(std::is_trivially_copyable_v<TypeParam> &&
                  std::is_nothrow_default_constructible_v<TypeParam>);
    for (const char *const given : samples<TypeParam>::texts) {
        const std::string text = given;
        const TypeParam x(text);
        std::ostringstream out;
        out << x;
        if constexpr (!std::same_as<TypeParam, dv::number>) {
            EXPECT_EQ(out.str(), text);
        }
        const TypeParam again(out.str());
        EXPECT_EQ(std::memcmp(&again.record(), &x.record(), sizeof x.record()), 0) << text;
        EXPECT_EQ(dv::try_parse<TypeParam>(text).value(), x);
    }
    EXPECT_EQ(TypeParam(TypeParam().to_string()), TypeParam());
    for (const std::string_view none :
         {std::string_view(), std::string_view("?"), std::string_view("\0", 1)}) {
        EXPECT_THROW(TypeParam{none}, dv::error);
        EXPECT_LT(dv::try_parse<TypeParam>(none).code(), 0);
    }
}

TYPED_TEST(CppValue, OrderIsThatOfCAndOfKeysAndHashAgreesWithEquality) {
    const std::vector<TypeParam> values = values_<TypeParam>();
    std::unordered_set<TypeParam> set;
    for (const TypeParam &x : values) {
        for (const TypeParam &y : values) {
            const auto order = &x <=> &y;
            EXPECT_EQ(x <=> y, order) << x << ", " << y;
            EXPECT_EQ(x == y, order == 0);
            if constexpr (requires { samples<TypeParam>::compare; }) {
                EXPECT_EQ(samples<TypeParam>::compare(x.record(), y.record()) <=> 0, order) << x << ", " << y;
            }
            const auto x_key = x.key(), y_key = y.key();
            EXPECT_EQ(std::lexicographical_compare_three_way(x_key.begin(), x_key.end(), y_key.begin(),
                                                             y_key.end()),
                      order);
        }
        EXPECT_TRUE(set.insert(x).second);
        EXPECT_FALSE(set.insert(TypeParam(x.to_string())).second);
    }
}

TEST(CppValue, ValuesOfOtherBytesThatAreEqualHashEqually) {
    const dv::timestamp_tz seoul("2026-11-21 09:30 Asia/Seoul"), utc("2026-11-21T00:30Z");
    EXPECT_EQ(seoul, utc);
    EXPECT_EQ(std::hash<dv::timestamp_tz>()(seoul), std::hash<dv::timestamp_tz>()(utc));
    EXPECT_EQ(seoul.zone(), dv::zone("asia/seoul"));  // one with the offset in force, one without
    EXPECT_EQ(std::hash<dv::zone>()(seoul.zone()), std::hash<dv::zone>()(dv::zone("asia/seoul")));
    number_t stale = dv::number("12345.678").record();
    number_from_int8(&stale, 7);
    EXPECT_EQ(std::hash<dv::number>()(dv::number::of_valid(stale)), std::hash<dv::number>()(7));
    dv_date_t marked = dv::date(2024, 2, 29).record();
    marked.dummy = 1;
    EXPECT_EQ(dv::date(marked), dv::date(2024, 2, 29));
    EXPECT_EQ(std::hash<dv::date>()(dv::date(marked)), std::hash<dv::date>()(dv::date(2024, 2, 29)));
}

#ifdef __cpp_lib_format
TEST(CppValue, FormatsAsItsText) {
    EXPECT_EQ(std::format("{:>8}|{}", dv::number("-1.5"), dv::date(2024, 2, 29)),
              "    -1.5|2024-02-29 00:00:00");
}
#endif

TEST(CppValue, DefaultsAreZeroAndTheEpoch) {
    EXPECT_EQ(dv::number(), 0);
    EXPECT_EQ(dv::timestamp(), dv::timestamp(1970, 1, 1));
    EXPECT_EQ(dv::timestamp(), dv::date());
    EXPECT_EQ(dv::timestamp_tz().to_string(), "1970-01-01 00:00:00.000000000 +00:00");
    EXPECT_EQ(dv::timestamp_ltz(), dv::timestamp_ltz(dv::timestamp_tz()));
    EXPECT_EQ(dv::interval_ds(), dv::interval_ds(0));
    EXPECT_EQ(dv::interval_ym(), dv::interval_ym(0));
    EXPECT_EQ(dv::time_of_day(), dv::time_of_day(0));
}

}  // namespace
