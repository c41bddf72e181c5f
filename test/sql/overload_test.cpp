// Overloads: the row for a call, of functions as of aggregates, and what is said when there is none.

#include "sql_overload.h"

#include <gtest/gtest.h>

#include <cmath>

using namespace dv::impl;

namespace {

constexpr sql_kind _number = SQL_KIND_NUMBER, _date = SQL_KIND_DATE, _text = SQL_KIND_TEXT,
                   _integer = SQL_KIND_INTEGER;

constexpr sql_function _first[] = {
    {{"f", {_number, _text}, "a, b", _text, "1"}, nullptr},
    {{"f", {_date}, "a", _text, "2"}, nullptr},
    {{"g", {_number, _text}, "a, b", _text, "3"}, nullptr},
    {{"h", {SQL_KIND_ANY}, "a", _text, "4"}, nullptr},
};
constexpr sql_function _second[] = {
    {{"f", {_date, _integer}, "a, b", _text, "5"}, nullptr},
    {{"f", {_text, _text}, "a, b", _text, "6"}, nullptr},
};
constexpr sql_function_table _first_table = _first, _second_table = _second;
constexpr const sql_function_table *_table_list[] = {&_first_table, &_second_table};
constexpr std::span<const sql_function_table *const> _tables = _table_list;

constexpr sql_aggregate _aggregates[] = {
    {{"total", {_number}, "v", _number, "1"}, 8, 8, nullptr, nullptr, nullptr, nullptr},
    {{"total", {SQL_KIND_ITV_DTS}, "v", SQL_KIND_ITV_DTS, "2"}, 8, 8, nullptr, nullptr, nullptr, nullptr},
};
constexpr sql_aggregate_table _aggregate_table = _aggregates;
constexpr const sql_aggregate_table *_aggregate_list[] = {&_aggregate_table};
constexpr std::span<const sql_aggregate_table *const> _aggregate_tables = _aggregate_list;

sql_value value_(sql_kind kind) {
    sql_value value{};
    value.kind = kind;
    if (kind == _text) value = sql_text_value("x", 1);
    return value;
}

// The line of the row that is chosen, "NULL", or the failure.
template <typename Row>
std::string choose_(const sql_overloads<Row> &set, std::initializer_list<sql_value> args) {
    static sql_call call;
    sql_begin(call, nullptr);
    for (const sql_value &arg : args) call.args[call.argc++] = arg;
    const Row *row = sql_resolve(set.all(), call);
    if (row != nullptr) return row->signature.manual;
    return call.outcome == SQL_GIVEN ? "NULL" : call.failure;
}

TEST(SqlOverload, IsChosenByTheKindsOfTheArgumentsWhereverItStands) {
    const auto f2 = sql_overloads_of(_second[0], _tables);
    ASSERT_EQ(f2.count, 3);
    EXPECT_EQ(choose_(f2, {value_(_number), value_(_text)}), "1");
    EXPECT_EQ(choose_(f2, {sql_integer(1), value_(_text)}), "1");
    EXPECT_EQ(choose_(f2, {sql_real(1.5), value_(_text)}), "1");
    EXPECT_EQ(choose_(f2, {value_(_date), sql_integer(1)}), "5");
    EXPECT_EQ(choose_(f2, {value_(_text), value_(_text)}), "6");
    EXPECT_EQ(choose_(f2, {sql_null(), value_(_text)}), "NULL");
    EXPECT_EQ(choose_(f2, {value_(SQL_KIND_ROWID), sql_null()}), "NULL");

    const auto total = sql_overloads_of(_aggregates[1], _aggregate_tables);
    ASSERT_EQ(total.count, 2);
    EXPECT_EQ(choose_(total, {sql_integer(1)}), "1");
    EXPECT_EQ(choose_(total, {value_(SQL_KIND_ITV_DTS)}), "2");

    const auto h = sql_overloads_of(_first[3], _tables);
    EXPECT_EQ(choose_(h, {sql_null()}), "4");
    EXPECT_EQ(choose_(h, {value_(SQL_KIND_BLOB)}), "4");
}

TEST(SqlOverload, MissingOneIsToldByTheFirstBadArgumentOfTheBestFit) {
    const auto f2 = sql_overloads_of(_first[0], _tables);
    EXPECT_EQ(choose_(f2, {value_(SQL_KIND_ROWID), value_(SQL_KIND_ROWID)}),
              "argument 1 is ROWID where NUMBER, DATE or TEXT is expected");
    EXPECT_EQ(choose_(f2, {value_(_date), value_(_text)}),
              "argument 2 is TEXT \"x\" where INTEGER is expected");
    EXPECT_EQ(choose_(f2, {sql_integer(1), sql_real(1)}), "argument 2 is REAL where TEXT is expected");
    EXPECT_EQ(choose_(sql_overloads_of(_first[1], _tables), {value_(_text)}),
              "argument 1 is TEXT \"x\" where DATE is expected; to_date() reads text");
    sql_value blob = value_(SQL_KIND_BLOB);
    blob.blob = {nullptr, 0, "it is empty"};
    EXPECT_EQ(choose_(f2, {blob, value_(_text)}), "argument 1 is a BLOB that holds no value: it is empty");
}

TEST(SqlOverload, TakesNoNulInsideATextAndNoNumberThatIsNone) {
    const auto f2 = sql_overloads_of(_first[0], _tables);
    EXPECT_EQ(choose_(f2, {sql_integer(1), sql_text_value("a\0b", 3)}),
              "argument 2 has a NUL inside its text");
    EXPECT_EQ(choose_(f2, {sql_real(-INFINITY), value_(_text)}),
              "argument 1 is an infinite REAL where NUMBER is finite");
    EXPECT_EQ(choose_(f2, {sql_real(NAN), value_(_text)}), "argument 1 is a REAL that is no number");
}

TEST(SqlOverload, HasItsParametersByName) {
    const sql_signature signature = {"f", {_number, _text, _date}, "first, b, c_d", _text, ""};
    EXPECT_EQ(sql_param_name(signature, 0), "first");
    EXPECT_EQ(sql_param_name(signature, 1), "b");
    EXPECT_EQ(sql_param_name(signature, 2), "c_d");
}

TEST(SqlOverload, ConvertsWhatIsTakenForANumber) {
    sql_call call;
    sql_begin(call, nullptr);
    call.argc = 3;
    call.args[0] = sql_integer(-128);
    call.args[1] = sql_real(0.5);
    call.args[2] = sql_integer(7);
    sql_convert(call, {"f", {_number, _number, _integer}, "a, b, c", _text, ""});
    const uint8_t minus_128[] = {4, 0x3D, 0x7F, 0x64, 0xF0}, half[] = {2, 0xC0, 0xB2};
    EXPECT_TRUE(call.args[0].kind == _number && memcmp(&call.args[0].number, minus_128, 5) == 0);
    EXPECT_TRUE(call.args[1].kind == _number && memcmp(&call.args[1].number, half, 3) == 0);
    EXPECT_TRUE(call.args[2].kind == _integer && call.args[2].integer == 7);
}

}  // namespace
