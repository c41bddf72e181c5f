// try.hpp, result.hpp: results and codes without exceptions, the same as those of the operators.

#include <gtest/gtest.h>

#include <dvtypes/dvtypes.hpp>
#include <thread>

namespace {

using namespace dv::literals;
using dv::date, dv::interval_ds, dv::interval_ym, dv::number, dv::timestamp, dv::timestamp_ltz,
    dv::timestamp_tz;

// What an expression that may throw gives, as text; of an error the code.
template <typename Expression>
std::string outcome_(const Expression &expression) {
    try {
        return expression().to_string();
    } catch (const dv::error &error) {
        return std::to_string(error.code());
    }
}

template <typename Value>
std::string outcome_(const dv::result<Value> &result) {
    EXPECT_EQ(result.error() == std::error_code(), result.has_value());
    return result ? result->to_string() : std::to_string(result.code());
}

template <typename X, typename Y>
void expect_agreement_(const X &x, const Y &y) {
    SCOPED_TRACE(x.to_string() + ", " + y.to_string());
    EXPECT_EQ(outcome_(try_add(x, y)), outcome_([&] { return x + y; }));
    EXPECT_EQ(outcome_(try_sub(x, y)), outcome_([&] { return x - y; }));
    if constexpr (requires { x *y; }) {
        EXPECT_EQ(outcome_(try_mul(x, y)), outcome_([&] { return x * y; }));
        EXPECT_EQ(outcome_(try_div(x, y)), outcome_([&] { return x / y; }));
        EXPECT_EQ(outcome_(try_mod(x, y)), outcome_([&] { return x % y; }));
    }
}

TEST(CppTry, ArithmeticAgreesWithTheOperators) {
    for (const number &x : {0_number, -7_number, "9E125"_number, "1E-130"_number}) {
        for (const number &y : {0_number, 3_number, "9E125"_number, "1E-130"_number}) expect_agreement_(x, y);
    }
    for (const auto &month : {interval_ym(0, 1), interval_ym(999'999'999)}) {
        expect_agreement_(date(2024, 1, 31), month);
        expect_agreement_(timestamp(2024, 1, 31), month);
        expect_agreement_(timestamp_tz("2024-01-31 12:00 Asia/Seoul"), month);
        expect_agreement_(month, interval_ym(1));
    }
    for (const auto &span : {interval_ds(1), interval_ds(999'999'999)}) {
        expect_agreement_(date(9999, 12, 31), span);
        expect_agreement_(timestamp(9999, 12, 31), span);
        expect_agreement_(timestamp_ltz("9999-12-31"), span);
        expect_agreement_(timestamp_tz("9999-12-31 12:00 Asia/Seoul"), span);
        expect_agreement_(span, interval_ds(1));
    }
    for (const number &factor : {0_number, "1.5"_number, "-3E9"_number}) {
        const interval_ds x(12345, 1, 2, 3, 4);
        EXPECT_EQ(outcome_(try_mul(x, factor)), outcome_([&] { return x * factor; }));
        EXPECT_EQ(outcome_(try_div(x, factor)), outcome_([&] { return x / factor; }));
    }
}

TEST(CppTry, CodesAreOfTheLibrarysCategory) {
    const auto bad = dv::try_parse<number>("1.2.3");
    EXPECT_FALSE(bad);
    EXPECT_EQ(bad.code(), -5074);
    EXPECT_EQ(bad.value_or(7), 7);
    const std::error_code error = bad.error();
    EXPECT_STREQ(error.category().name(), "dvtypes");
    EXPECT_EQ(error.message(), dv_error_text(-5074));
    EXPECT_EQ(dv::make_error_code(-5114).message(),
              "The value ... of the field \"...\" is out of range: ... to ... is accepted.");
    EXPECT_EQ(dv::make_error_code(DV_ERR_NO_MEMORY), std::errc::not_enough_memory);
    EXPECT_EQ(error, DV_ERR_NUMBER_TEXT);
    EXPECT_EQ(error, std::errc::invalid_argument);
    EXPECT_EQ(dv::try_parse<date>("yesterday").error(), std::errc::invalid_argument);
    EXPECT_EQ(dv::try_parse<dv::zone>("Berlin").error(), std::errc::invalid_argument);
    EXPECT_EQ(dv::try_parse<date>("2023-02-29").error(), std::errc::result_out_of_range);
    EXPECT_EQ(dv::try_mul(interval_ds(1), "1E9"_number).error(), std::errc::result_out_of_range);
    EXPECT_EQ(dv::try_div(7_number, 0).error(), std::errc::argument_out_of_domain);
    EXPECT_NE(dv::try_add(date(2024, 1, 31), interval_ym(0, 1)).error(), std::errc::result_out_of_range);
    EXPECT_EQ(dv::make_error_code(-1234567).message(), "Unknown error");
    try {
        (void)bad.value();
        FAIL();
    } catch (const dv::error &thrown) {
        EXPECT_EQ(thrown.code(), -5074);
        EXPECT_STREQ(thrown.what(), dv_error_text(-5074));
        EXPECT_EQ(dv::make_error_code(thrown), error);
    }
    number_t x = (2_number).record();
    EXPECT_FALSE(dv::attempt([&] { number_sqrt(&x); }));
    number_negate(&x);
    EXPECT_EQ(dv::attempt([&] { number_sqrt(&x); }).value(), -5073);
    EXPECT_EQ(dv::attempt([&] { return dv_date_get_field(&date().record(), DT_FMT_UNIT_YEAR); }).value(),
              1970);
}

TEST(CppTry, MakesWhatTheConstructorsMake) {
    const dv::zone paris("Europe/Paris");
    for (const int hour : {1, 2, 3, 24}) {  // clocks went from 02:00 to 03:00
        EXPECT_EQ(outcome_(dv::try_make<timestamp>(2024, 3, 31, hour)),
                  outcome_([=] { return timestamp(2024, 3, 31, hour); }));
        if (hour == 24) continue;
        const timestamp local(2024, 3, 31, hour);
        EXPECT_EQ(outcome_(dv::try_make<timestamp_tz>(local, paris)),
                  outcome_([&] { return timestamp_tz(local, paris); }));
        EXPECT_EQ(outcome_(dv::try_make<timestamp_ltz>(local, paris)),
                  outcome_([&] { return timestamp_ltz(local, paris); }));
    }
    EXPECT_EQ(dv::try_make<timestamp_tz>(timestamp(2024, 3, 31, 2), paris).code(), -5110);
    EXPECT_EQ(dv::try_make<date>(2023, 2, 29).code(), -5114);
    EXPECT_EQ(*dv::try_make<date>(2024, 2, 29, 13), date(2024, 2, 29, 13));
    EXPECT_EQ(*dv::try_make<dv::time_of_day>(13, 5, 0, 7), dv::time_of_day(13, 5, 0, 7));
}

// A recovery point lies on the stack: one that an exception passed by must not be the next raise's.
TEST(CppTry, WhatLeavesAsAnExceptionLeavesNoPointBehind) {
    const auto raises = [] { dv_err_and_jmp("file.c", 7, "f", 0, 0, -5070); };
    const auto throws = [] { throw 7; };
    const std::error_code code = dv::attempt([&] {
        EXPECT_THROW(dv::guarded([&] { dv::guarded(throws); }), int);
        EXPECT_EQ(dv::attempt([] { return date(2023, 2, 29); }).code(), -5114);
        EXPECT_EQ(dv::attempt([] { (void)(1_number / 0); }).value(), -5070);
        EXPECT_THROW((void)dv::attempt(throws), int);
        raises();
    });
    EXPECT_EQ(code.value(), -5070);
    EXPECT_EQ(outcome_(dv::try_parse<number>("1")), "1");
}

// A point that wants the code alone stands inside and outside of one that wants the message.
TEST(CppTry, NestsWithPointsThatWantTheMessage) {
    dv_error_t error{};
    const auto bad = [](void *) { dv_err_and_jmp("file.c", 7, "f", 0, 0, -5074); };
    const auto around = [](void *arg) {
        number_t x;
        EXPECT_EQ(dv::attempt([&] { number_from_str(&x, 0, "x", nullptr); }).value(), -5074);
        auto &caught = *static_cast<dv_error_t *>(arg);
        EXPECT_EQ(dv_protect([](void *) { dv_err_and_jmp("file.c", 7, "g", 0, 0, -5070); }, nullptr, &caught),
                  -5070);
        dv_rethrow(&caught);
    };
    EXPECT_EQ(dv_protect(bad, nullptr, nullptr), -5074);
    EXPECT_EQ(dv_protect(around, &error, nullptr), -5070);
    EXPECT_STREQ(error.function, "g");
    dv_error_t outer{};
    EXPECT_EQ(dv_protect(around, &error, &outer), -5070);
    EXPECT_STREQ(outer.message, dv_error_text(-5070));
}

TEST(CppModels, MoveAndServeThreads) {
    dv::reader<date> first("DD Month YYYY");
    dv::reader<date> read = std::move(first);
    first = dv::reader<date>("YYYY");
    std::swap(first, read);
    std::swap(first, read);
    const dv::writer<timestamp_tz> write("fmMonth DD, YYYY HH24:MI TZR");
    const auto work = [&] {
        for (int i = 0; i < 500; ++i) {
            EXPECT_EQ(read("29 February 2024"), date(2024, 2, 29));
            EXPECT_EQ(dv::try_parse<date>("29 February 2023", read).code(), -5114);
            EXPECT_EQ(write(timestamp_tz("2024-02-29 09:05 Asia/Seoul")), "February 29, 2024 9:5 Asia/Seoul");
        }
    };
    std::thread other(work);
    work();
    other.join();
    EXPECT_EQ(dv::writer<date>("Month", "VIETNAMESE")(date(2024, 1, 1)),
              dv::writer<date>("Month", "NLS_DATE_LANGUAGE = VIETNAMESE")(date(2024, 1, 1)));
    EXPECT_THROW(dv::writer<date>("Month", "MARTIAN"), dv::error);
    EXPECT_THROW(dv::writer<date>("Month", "AMERICAN" + std::string(300, ' ') + "X"), dv::error);
}

}  // namespace
