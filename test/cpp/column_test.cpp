// column.hpp: columns over spans, members and texts; failures as exceptions and as codes.

#include <gtest/gtest.h>

#include <dvtypes/dvtypes.hpp>
#include <numeric>

namespace {

using dv::column;
using dv::number;

struct order_t {
    int id;
    number price;
    int64_t count;
};

TEST(CppColumn, DescribesSpansMembersAndConstants) {
    std::vector<order_t> orders = {{1, number("12.5"), 2}, {2, number("-3"), 1}, {3, number("0.25"), 4}};
    std::vector<number> doubled(3);
    const column prices(orders, &order_t::price);
    dv::add(prices, prices, doubled);
    EXPECT_EQ(doubled, (std::vector<number>{25, -6, number("0.5")}));
    const number rate("0.1");
    dv::multiply(prices, column<const number>::constant(rate, 3), prices);  // in place
    EXPECT_EQ(orders[1].price, number("-0.3"));
    EXPECT_EQ(prices[2], number("0.025"));
    EXPECT_EQ(orders[1].count, 1);

    uint8_t bits = 0b1010;  // rows 0 and 2, from bit 1 on: row 0 and 2 have a value
    EXPECT_EQ(dv::sum(column<const number>(doubled.data(), 3, sizeof(number), {&bits, 1})), number("25.5"));
}

TEST(CppColumn, MembersOfConstStructsAreOperandsAlone) {
    std::vector<order_t> orders = {{1, number("12.5"), 2}, {2, number("-3"), 1}};
    const std::vector<order_t> &read = orders;
    const column prices(read, &order_t::price);
    static_assert(std::same_as<decltype(prices), const column<const number>>);
    static_assert(std::same_as<decltype(column(orders, &order_t::price)), column<number>>);
    static_assert(!std::constructible_from<column<number>, decltype(read), number order_t::*>);
    static_assert(!std::constructible_from<column<const number>, std::vector<order_t>, number order_t::*>);
    EXPECT_EQ(prices[1], -3);
    EXPECT_EQ(dv::sum({read, &order_t::price}), number("9.5"));
    EXPECT_EQ(column(std::span<const order_t>(), &order_t::price).size(), 0);

    uint8_t given = 0b10;
    EXPECT_EQ(dv::sum(column(read, &order_t::price, {&given})), -3);
    const std::vector<number> numbers = {1, 2};
    EXPECT_EQ(dv::sum(column(numbers, {&given})), 2);
}

template <typename... Arguments>
concept can_run_add = requires(const Arguments &...given) {
    dv::run(number_column_add, given...);
    dv::try_run(number_column_add, given...);
};

TEST(CppColumn, ResultsAreNotConst) {
    using operand_t = column<const number>;
    static_assert(can_run_add<operand_t, operand_t, column<number>>);
    static_assert(can_run_add<column<number>, column<number>, column<number>>);
    static_assert(!can_run_add<operand_t, operand_t, operand_t>);
    static_assert(!can_run_add<operand_t, column<number>>);
    static_assert(!can_run_add<operand_t, operand_t, int>);
}

TEST(CppColumn, ArgumentsMayBeArrays) {
    const number x[] = {1, -2, 3}, zero = 0;
    uint8_t above[1] = {};
    dv::run(number_column_compare, column(x), column<const number>::constant(zero, 3), DV_COLUMN_GT, above);
    EXPECT_EQ(above[0], 0b101);
    dv::date days[] = {dv::date(2024, 2, 29)};
    dv::run(dv_date_column_trunc, column(days), "MM", 0, column(days));
    EXPECT_EQ(days[0], dv::date(2024, 2, 1));
}

TEST(CppColumn, ThrowsTheFirstFailingRowOrTellsAll) {
    std::vector<number> x = {1, 2, 3}, y = {1, 0, 0}, quotients(3);
    try {
        dv::divide(x, y, quotients);
        ADD_FAILURE();
    } catch (const dv::row_error &error) {
        EXPECT_EQ(error.code(), -5070);
        EXPECT_EQ(error.row(), 1);
    }
    const column<const number> dividends{x}, divisors{y};
    dv::row_faults faults = dv::try_run(number_column_div, dividends, divisors, column(quotients));
    const dv::row_faults moved = std::move(faults);
    EXPECT_EQ(moved.count(), 2);
    EXPECT_EQ(moved.first(), 1);
    EXPECT_EQ(moved[0], 0);
    EXPECT_EQ(moved[2], -5070);
    EXPECT_EQ(quotients[0], 1);
}

TEST(CppColumn, RefusesColumnsOfDifferentCounts) {
    std::vector<number> three(3), two(2);
    dv::texts texts{"1", "2"};
    EXPECT_THROW(dv::multiply(three, two, three), std::invalid_argument);
    EXPECT_THROW((void)dv::try_run(number_column_from_text, texts, column(three)), std::invalid_argument);
}

TEST(CppColumn, TextsGoBothWays) {
    dv::texts texts{"1.5", "", "-20"};
    std::vector<number> numbers(3);
    const auto faults = dv::try_run(number_column_from_text, texts, column(numbers));
    EXPECT_EQ(faults.count(), 1);
    EXPECT_EQ(faults[1], -5074);
    dv::texts written = dv::texts::room(3, 100);
    dv::run(number_column_to_text, column(numbers), written);
    EXPECT_EQ(written[0], "1.5");
    EXPECT_EQ(written[1], "");  // what failed has no value
    EXPECT_EQ(written[2], "-20");
    EXPECT_THROW(dv::run(number_column_to_text_fmt, column(numbers), 1, "?", written), dv::error);
}

TEST(CppColumn, TakesReadersAndWritersForTheirModels) {
    dv::texts texts{"29.02.2024", "30.02.2024", "01.03.2024"};
    std::vector<dv::date> days(3);
    const auto faults = dv::try_run(dv_date_column_from_str, texts, dv::reader<dv::date>("DD.MM.YYYY"),
                                    nullptr, column(days));
    EXPECT_EQ(faults.count(), 1);
    EXPECT_EQ(faults[1], -5114);
    EXPECT_EQ(days[2], dv::date("2024-03-01"));
    dv::texts written = dv::texts::room(3, 100);
    dv::run(dv_date_column_to_str, column(days), dv::writer<dv::date>("MONTH", "RUSSIAN"), written);
    EXPECT_EQ(written[0], dv::writer<dv::date>("MONTH", "RUSSIAN")(days[0]));
}

TEST(CppColumn, TotalsGrowMergeAndTravel) {
    std::vector<number> amounts = {number("1E100"), number("1E-90"), number("-1E100"), 5};
    dv::total total;
    total.add(amounts);
    dv::total copy = total, moved = std::move(total);
    copy.merge(moved);
    copy.add(number("-10"));
    EXPECT_EQ(copy.sum(), number("2E-90"));
    EXPECT_EQ(copy.count(), 9);
    EXPECT_EQ(dv::total::unpack(copy.pack()).sum(), copy.sum());
    EXPECT_EQ(moved.average(), (number(5) + number("1E-90")) / 4);
    EXPECT_EQ(total.count(), 0);  // NOLINT(bugprone-use-after-move)
    EXPECT_THROW(dv::total::unpack(std::vector<uint8_t>{9, 9}), dv::error);
    EXPECT_EQ(dv::sum(std::span<const number>()), 0);
    EXPECT_THROW(dv::total().average(), dv::error);
}

TEST(CppColumn, RowsComeInTheOrderOfSeveralKeys) {
    std::vector<order_t> orders = {{1, 5, 2}, {2, 5, 7}, {3, -1, 2}, {4, 5, 7}};
    const column prices(orders, &order_t::price);
    const column counts(orders, &order_t::count);
    const dv_key_part_t by[] = {{&prices.record(), DV_KEY_NUMBER, DV_KEY_DESCENDING, DV_KEY_NULLS_LAST},
                                {&counts.record(), DV_KEY_INT64, DV_KEY_DESCENDING, DV_KEY_NULLS_LAST}};
    EXPECT_EQ(dv::sorted_rows(by), (std::vector<int64_t>{1, 3, 0, 2}));
}

template <typename T>
void expect_order_(const std::vector<T> &values, const std::vector<int64_t> &rows) {
    const column ascending(values);
    EXPECT_EQ(dv::sorted_rows({dv::order_by(ascending)}), rows);
    EXPECT_EQ(dv::sorted_rows({dv::order_by(ascending, DV_KEY_DESCENDING)}),
              std::vector<int64_t>(rows.rbegin(), rows.rend()));
}

TEST(CppColumn, KeysHaveTheTypeOfTheirColumn) {
    const std::vector<int64_t> rows = {2, 0, 1};
    expect_order_<number>({2, 10, -3}, rows);
    expect_order_<dv::date>({dv::date(2000, 1, 2), dv::date(2001, 1, 1), dv::date(-1, 1, 1)}, rows);
    expect_order_<dv::time_of_day>({dv::time_of_day(2), dv::time_of_day(2, 0, 0, 1), dv::time_of_day(1)},
                                   rows);
    expect_order_<dv::timestamp>(
        {dv::timestamp(1, 1, 1), dv::timestamp(1, 1, 1, 0, 0, 0, 1), dv::timestamp(-1, 1, 1)}, rows);
    expect_order_<dv::timestamp_tz>(
        {dv::timestamp_tz("2000-01-01 08:00 +09:00"), dv::timestamp_tz("2000-01-01 00:00Z"),
         dv::timestamp_tz("2000-01-01 04:00 +09:00")},
        rows);
    expect_order_<dv::timestamp_ltz>(
        {dv::timestamp_ltz("2000-01-01 08:00 +09:00"), dv::timestamp_ltz("2000-01-01 00:00Z"),
         dv::timestamp_ltz("1999-01-01")},
        rows);
    expect_order_<dv::interval_ym>({dv::interval_ym(1, 2), dv::interval_ym(2, 1), dv::interval_ym(-9)}, rows);
    expect_order_<dv::interval_ds>({dv::interval_ds(1, 2), dv::interval_ds(2, 1), dv::interval_ds(-9)}, rows);
    expect_order_<dv::rowid>({dv::rowid(1, 2, 3, 4), dv::rowid(1, 2, 4, 0), dv::rowid(1, 1, 9, 9)}, rows);
    expect_order_<int32_t>({2, 300, -1}, rows);
    expect_order_<int64_t>({2, 1LL << 40, -1}, rows);
    expect_order_<double>({2, 1e300, -1e300}, rows);
    expect_order_<dv::detail::int128>({2, dv::detail::int128{1} << 100, -1}, rows);
}

TEST(CppColumn, KeysOfDifferentCountsAreRefused) {
    const std::vector<number> three = {1, 2, 3}, two = {1, 2};
    const column longer(three), shorter(two);
    EXPECT_THROW(dv::sorted_rows({dv::order_by(longer), dv::order_by(shorter)}), std::invalid_argument);
    EXPECT_THROW(dv::sorted_rows({dv::order_by(shorter), dv::order_by(longer)}), std::invalid_argument);
}

TEST(CppColumn, RowsAreLoopedOver) {
    std::vector<order_t> orders = {{1, 5, 2}, {2, 7, 7}};
    number sum;
    const column prices(orders, &order_t::price);
    for (number &price : prices) sum += price++;
    EXPECT_EQ(sum, 12);
    EXPECT_EQ(orders[1].price, 8);
    static_assert(std::forward_iterator<decltype(prices.begin())>);
    const std::vector<std::string> written = {"a", "", "bc"};
    const dv::texts texts(written);
    std::vector<std::string> read;
    for (const std::string_view text : texts) read.emplace_back(text);
    EXPECT_EQ(read, written);
    dv::total total;
    total += 5;
    EXPECT_EQ((total += number(2)).sum(), 7);
}

TEST(CppColumn, NumbersOfFailedRowsAreNull) {
    dv::texts texts{"0", "x"};
    std::vector<number> numbers(2);
    EXPECT_EQ(dv::try_run(number_column_from_text, texts, column(numbers)).count(), 1);
    EXPECT_FALSE(numbers[0].is_null());
    EXPECT_TRUE(numbers[1].is_null());
    EXPECT_NE(numbers[1], 0);
    EXPECT_EQ(to_string(numbers[0]) + to_string(numbers[1]), "0NULL");
}

TEST(CppColumn, ValuesAreTakenInTheOrderOfRows) {
    std::vector<int> values(100), taken(100);
    std::iota(values.begin(), values.end(), 0);
    std::vector<int64_t> rows(values.size());
    for (size_t i = 0; i < rows.size(); ++i) rows[i] = static_cast<int64_t>(i * 37 % rows.size());
    dv::take(values, rows, taken);
    EXPECT_EQ(std::vector<int64_t>(taken.begin(), taken.end()), rows);
    EXPECT_THROW(dv::take(values, rows, std::span(taken).first(99)), std::invalid_argument);
    for (const int64_t row : {-1, 100}) {
        rows[50] = row;
        EXPECT_THROW(dv::take(values, rows, taken), std::invalid_argument) << row;
    }
}

TEST(CppColumn, NothingIsNoTotal) {
    EXPECT_EQ(dv::total().sum(), 0);
    EXPECT_THROW(dv::total().average(), dv::error);
    EXPECT_THROW(dv::total::unpack({}), dv::error);
}

}  // namespace
