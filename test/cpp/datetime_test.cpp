// datetime.hpp: datetimes and intervals as C++ values.

#include <gtest/gtest.h>

#include <algorithm>
#include <ctime>
#include <dvtypes/dvtypes.hpp>
#include <functional>
#include <random>
#include <sstream>

namespace {

using dv::date, dv::interval_ds, dv::interval_ym, dv::timestamp, dv::timestamp_tz, dv::zone;

template <typename Value>
std::string text_of_(const Value &x) {
    std::ostringstream out;
    out << x;
    return out.str();
}

template <typename Call>
int code_of_(const Call &call) {
    try {
        call();
    } catch (const dv::error &error) {
        return error.code();
    }
    return 0;
}

TEST(CppDatetime, ReadsAndWritesUnderCompiledModels) {
    const dv::reader<date> read("DD Mon YYYY");
    const dv::writer<date> write("fmDay, Month DD, YYYY", "NLS_DATE_LANGUAGE = AMERICAN");
    EXPECT_EQ(read("21 Nov 2026"), date(2026, 11, 21));
    EXPECT_EQ(write(read("21 Nov 2026")), "Saturday, November 21, 2026");
    EXPECT_EQ(text_of_(timestamp(2001, 2, 3, 4, 5, 6, 7)), "2001-02-03 04:05:06.000000007");
    EXPECT_EQ(text_of_(dv::time_of_day(23, 59, 59, 999999999)), "23:59:59.999999999");
    EXPECT_EQ(text_of_(interval_ds(0, -36, 0, 0, -1)), "-01 12:00:00.000000001");
    EXPECT_EQ(text_of_(interval_ym(1, -14)), "-00-02");
    const dv::writer<timestamp> spelled("YYYYSP \"of\" MONTH FF1");  // longer than predicted by any width
    EXPECT_EQ(spelled(timestamp(1777, 5, 1)).substr(0, 33), "ONE THOUSAND SEVEN HUNDRED SEVENT");
}

TEST(CppDatetime, BadInputThrowsTheCodeOfTheFunctionBehindIt) {
    const dv::reader<date> read("YYYY-MM-DD");
    const struct {
        int code;
        std::function<void()> call;
    } cases[] = {
        {-5114, [] { date(2023, 2, 29); }},
        {-5114, [&] { read("2023-02-29"); }},
        {-5010, [&] { read("2023-02-28x"); }},
        {-5007, [&] { read(""); }},
        {-5007, [&] { read(std::string_view()); }},
        {-5014, [] { dv::writer<date>("YYYY \"kept\" nonsense"); }},
        {-11035, [] { dv::reader<date>("YYYY \"kept\"", "NLS_DATE_LANGUAGE = MARTIAN"); }},
        {-5056, [] { interval_ym(""); }},
        {-5056, [] { interval_ds("1234567890 0:0:0"); }},
        {-5104, [] { zone("Mars/Base"); }},
        {-5005, [] { date(2001, 1, 31) + interval_ym(0, 1); }},
        {-5114, [] { timestamp(2001, 1, 1) + interval_ym(357'913'942); }},  // 8 months in 32 bits
        {-5110, [] { timestamp_tz(timestamp(2024, 3, 10, 2, 30), zone("America/New_York")); }},
    };
    for (const auto &c : cases) EXPECT_EQ(code_of_(c.call), c.code) << &c - cases;
}

TEST(CppDatetime, SumsAndDifferencesAgreeWithCountsOfNanoseconds) {
    constexpr int64_t billion = 1'000'000'000, day = 86'400;
    std::mt19937_64 random(7);
    const auto any = [&](int limit) {
        return static_cast<int>(random() % (2U * static_cast<unsigned>(limit) + 1)) - limit;
    };
    const auto total = [](const interval_ds &x) {
        EXPECT_FALSE(x.nanoseconds() != 0 && (x.nanoseconds() < 0) != (x.days() < 0 || x.seconds() < 0)) << x;
        return (x.days() * day + x.seconds()) * __int128{billion} + x.nanoseconds();
    };
    const timestamp origin(2001, 2, 3, 4, 5, 6, 700);
    for (int i = 0; i < 20000; ++i) {
        const interval_ds x(any(1000), 0, 0, any(100000), any(999999999)),
            y(any(2), any(30), any(70), any(3), any(3));
        EXPECT_EQ(total(x + y), total(x) + total(y)) << x << " + " << y;
        EXPECT_EQ(total(x - y), total(x) - total(y)) << x << " - " << y;
        EXPECT_EQ(-(-x), x);
        EXPECT_EQ(interval_ds(x.to_string()), x);
        EXPECT_EQ((origin + x) - origin, x) << x;
        EXPECT_EQ(origin + x - x, origin) << x;
        EXPECT_EQ(origin + x < origin + y, total(x) < total(y)) << x << " " << y;
    }
}

TEST(CppInterval, WhatLeavesNineDigitsThrowsAndNothingWraps) {
    const interval_ym years(999'999'999, 11);
    const interval_ds days("999999999 23:59:59.999999999");
    const std::function<void()> over[] = {
        [] { interval_ym(1'000'000'000); },
        [] { interval_ym(INT_MIN, INT_MIN); },
        [] { interval_ym("-999999999-11") - interval_ym(0, 1); },
        [&] { years + interval_ym(0, 1); },
        [&] { -years *= 2; },
        [&] { years *dv::number("1E20"); },
        [&] { years / dv::number("0.9"); },
        [] { interval_ds(1'000'000'000); },
        [] { interval_ds(-999'999'999, -24); },
        [&] { days + interval_ds(0, 0, 0, 0, 1); },
        [&] { days * 10; },
        [&] { -days *dv::number("1E60"); },
        [&] { days / dv::number("1E-60"); },
    };
    for (const auto &call : over) EXPECT_EQ(code_of_(call), -5064) << &call - over;
    EXPECT_EQ(code_of_([&] { days / 0; }), -5065);
    EXPECT_EQ(code_of_([&] { years / 0; }), -5065);
    dv_itv_ytm_t carried = interval_ym(1).record();
    dv_itv_ytm_set_field(&carried, DT_FMT_UNIT_MONTH, -11);
    EXPECT_EQ(interval_ym(carried), interval_ym(0, 1));
    dv_itv_ytm_set_field(&carried, DT_FMT_UNIT_YEAR, 1'000'000'001);
    EXPECT_EQ(code_of_([&] { interval_ym{carried}; }), -5064);
    EXPECT_EQ(years - years, interval_ym());
    EXPECT_EQ(-(-days), days);
}

// Where the C functions do not wrap, they give the same.
TEST(CppInterval, ProductsAndQuotientsAreThoseOfC) {
    std::mt19937_64 random(11);
    for (int i = 0; i < 3000; ++i) {
        const interval_ds x(static_cast<int>(random() % 2'000'000) - 1'000'000, 0, 0,
                            static_cast<int>(random() % 86'400), static_cast<int>(random() % 1'000'000'000));
        const dv::number y = dv::number(static_cast<int32_t>(random())) / (1 + random() % 100'000'000'000);
        if (y == 0) continue;
        for (const auto operation : {dv_itv_dts_mul, dv_itv_dts_div}) {
            dv_itv_dts_t want = x.record();
            const int code = dv::attempt([&] { operation(&want, &y.record()); }).value();
            const auto got = operation == dv_itv_dts_mul ? try_mul(x, y) : try_div(x, y);
            if (code != 0 || !got) {
                EXPECT_TRUE(got.code() == -5064 || got.code() == code) << got.code() << " " << code;
            } else {
                EXPECT_EQ(*got, interval_ds(want)) << x << " " << y;
            }
        }
    }
}

// Each member and operator once, where its neighbours would give something else.
TEST(CppDatetime, EveryOperationGivesTheValueItIsNamedFor) {
    const date day(2001, 2, 3, 4, 5, 6);
    const timestamp moment(2001, 2, 3, 4, 5, 6, 700000008);
    const interval_ym months(1, 2);
    const interval_ds span(1, 2, 3, 4, 5);
    const dv::time_of_day time = moment.time();
    const timestamp_tz seoul(moment, zone("Asia/Seoul"));
    const auto brazilian = DV_NLS_DATE_LANG_BRAZILIAN_PORTUGUESE;
    const auto fields = [](auto... values) { return (... + (std::to_string(values) + " ")); };
    const std::pair<std::string, std::string> cases[] = {
        {text_of_(day), "2001-02-03 04:05:06"},
        {fields(day.year(), day.month(), day.day(), day.hour(), day.minute(), day.second()),
         "2001 2 3 4 5 6 "},
        {text_of_(day + months), "2002-04-03 04:05:06"},
        {text_of_(day - months), "1999-12-03 04:05:06"},
        {text_of_(day + span), "2001-02-04 06:08:10"},
        {text_of_(day - span), "2001-02-02 02:02:02"},
        {text_of_(trunc(day)) + text_of_(round(day)), "2001-02-03 00:00:002001-02-03 00:00:00"},
        {text_of_(round(day, "MM")), "2001-02-01 00:00:00"},
        {text_of_(dv::trunc(moment, "HH24")) + text_of_(dv::round(moment, std::string("MI"))),
         "2001-02-03 04:00:00.0000000002001-02-03 04:05:00.000000000"},
        {text_of_(dv::add_months(moment, -12)) + text_of_(dv::last_day(moment)),
         "2000-02-03 04:05:06.7000000082001-02-28 04:05:06.700000008"},
        {text_of_(dv::next_day(moment, "Sat")) + text_of_(dv::next_day(day, "domingo", brazilian)),
         "2001-02-10 04:05:06.7000000082001-02-04 04:05:06"},
        {fields(dv::months_between(timestamp(2001, 3, 31), date(2001, 2, 28))), "1.000000 "},
        {fields(moment.year(), moment.month(), moment.day(), moment.hour(), moment.minute(), moment.second(),
                moment.nanosecond(), timestamp(2000, 1, 1).julian_day()),
         "2001 2 3 4 5 6 700000008 2451545 "},
        {text_of_(timestamp(day)), "2001-02-03 04:05:06.000000000"},
        {text_of_(moment.date()), "2001-02-03 04:05:06"},
        {text_of_(time), "04:05:06.700000008"},
        {fields(time.hour(), time.minute(), time.second(), time.nanosecond()), "4 5 6 700000008 "},
        {text_of_(dv::reader<dv::time_of_day>("HH24-MI-SS-FF")("23-45-01-5")), "23:45:01.500000000"},
        {text_of_(dv::reader<timestamp>("DD.MM.YYYY MI:FF3")("30.11.1999 59:125")),
         "1999-11-30 00:59:00.125000000"},
        {text_of_(moment + months), "2002-04-03 04:05:06.700000008"},
        {text_of_(moment - months), "1999-12-03 04:05:06.700000008"},
        {text_of_(moment + span), "2001-02-04 06:08:10.700000013"},
        {text_of_(moment - span), "2001-02-02 02:02:02.700000003"},
        {text_of_(seoul - months), "1999-12-03 04:05:06.700000008 Asia/Seoul KST"},
        {text_of_(seoul + span), "2001-02-04 06:08:10.700000013 Asia/Seoul KST"},
        {text_of_(seoul.offset()) + seoul.abbreviation(), "+00 09:00:00.000000000KST"},
        {text_of_(timestamp_tz(moment, zone("-3:30")).offset()) + timestamp_tz().abbreviation(),
         "-00 03:30:00.000000000"},
        {region_tab_[seoul.zone().number()].canon_name, "Asia/Seoul"},
        {text_of_(seoul.utc()), "2001-02-02 19:05:06.700000008"},
        {text_of_(timestamp_tz(moment, zone("-3:30"))), "2001-02-03 04:05:06.700000008 -03:30"},
        {text_of_(months + months) + text_of_(months - interval_ym(2, 1)), "+02-04-00-11"},
        {text_of_(months * -1.5) + text_of_(-months), "-01-09-01-02"},
        {text_of_(3 * months) + text_of_(months / 2) + text_of_(0.5 * months), "+03-06+00-07+00-07"},
        {text_of_(span * 1.5) + text_of_(span / -2), "+01 15:04:36.000000007-00 13:01:32.000000002"},
        {text_of_(dv::abs(-months)) + text_of_(dv::abs(span)), "+01-02+01 02:03:04.000000005"},
        {text_of_(interval_ym("-999999999-11")), "-999999999-11"},
        {fields(interval_ym("-3-07").years(), interval_ym("-3-07").months()), "-3 -7 "},
        {text_of_(interval_ds("999999999 23:59:59.999999999")), "+999999999 23:59:59.999999999"},
        {fields(span.days(), span.seconds(), span.nanoseconds()), "1 7384 5 "},
        {fields((-span).days(), (-span).seconds(), (-span).nanoseconds()), "-1 -7384 -5 "},
        {text_of_(interval_ds(0, 0, 0, 1, -1)) + text_of_(interval_ds(0, 0, 0, -1, 1)),
         "+00 00:00:00.999999999-00 00:00:00.999999999"},
        {text_of_(interval_ds(0, 0, 0, 1, -1000000000)), "+00 00:00:00.000000000"},
    };
    for (const auto &[got, want] : cases) EXPECT_EQ(got, want) << &got - &cases[0].first;
}

TEST(CppDatetime, NowIsTheHostsClockInTheHostsZone) {
    const std::time_t before = std::time(nullptr);
    const timestamp_tz now(timestamp::now(), zone::of_host());
    const double days = days_between(date::now(), now.local().date());
    EXPECT_TRUE(days >= 0 && days < 60.0 / 86400) << days;
    const interval_ds since = now - timestamp_tz(timestamp(1970, 1, 1), zone("+00:00"));
    const int64_t seconds = int64_t{since.days()} * 86400 + since.seconds() - before;
    EXPECT_TRUE(seconds >= 0 && seconds < 60) << seconds;
    const auto clock = dv::time_of_day::now();
    const int later = (clock.hour() * 60 + clock.minute()) - (now.local().hour() * 60 + now.local().minute());
    EXPECT_TRUE((later + 1440) % 1440 <= 1) << later;
}

TEST(CppDatetime, DatesMoveByDaysMonthsAndUnits) {
    EXPECT_EQ(add_days(date(2000, 2, 28), 1.5), date(2000, 2, 29, 12));
    EXPECT_EQ(add_months(date(2001, 1, 31), 1), date(2001, 2, 28));
    EXPECT_EQ(last_day(date(2024, 2, 1)), date(2024, 2, 29));
    EXPECT_EQ(date(2001, 1, 30) - interval_ym(1, 1), date(1999, 12, 30));
    EXPECT_EQ(trunc(date(2001, 8, 9, 10), "Q"), date(2001, 7, 1));
    EXPECT_EQ(round(date(2001, 8, 9, 12)), date(2001, 8, 10));
    EXPECT_EQ(days_between(date(2001, 1, 2), date(2001, 1, 1)), 1);
    EXPECT_EQ(date(2001, 1, 2) - date(1999, 12, 31, 23, 59, 59), interval_ds(367, 0, 0, 1));
    EXPECT_EQ(months_between(date(2001, 3, 31), date(2001, 2, 28)), 1);
    EXPECT_EQ(date(2000, 1, 1).julian_day(), 2451545);
    EXPECT_TRUE(std::ranges::lexicographical_compare(date(-45, 1, 1).key(), date(1, 1, 1).key()));
    EXPECT_LT(date(2000, 1, 1), date(2000, 1, 2));
    EXPECT_GT(date(2000, 1, 2), date(2000, 1, 1));
}

TEST(CppDatetime, ZonedTimestampsAreInstantsShownInTheirZone) {
    const timestamp_tz seoul(timestamp(2026, 11, 21, 9, 30), zone("Asia/Seoul"));
    const timestamp_tz new_york = seoul.at(zone("america/new_york"));
    EXPECT_EQ(seoul, new_york);
    EXPECT_EQ(new_york.local(), timestamp(2026, 11, 20, 19, 30));
    EXPECT_EQ(new_york.zone().name(), "America/New_York");
    EXPECT_EQ(text_of_(new_york), "2026-11-20 19:30:00.000000000 America/New_York EST");
    const timestamp_tz summer = new_york + interval_ym(0, 8);  // an hour later on the clock
    EXPECT_EQ(summer.local(), timestamp(2027, 7, 20, 20, 30));
    EXPECT_EQ(summer - seoul, interval_ds(242, 0));
    const dv::reader<timestamp_tz> read("YYYY-MM-DD HH24:MI TZR");
    EXPECT_EQ(read("2026-11-21 00:30 +00:00"), seoul);
    EXPECT_EQ(dv::reader<timestamp_tz>("YYYY-MM-DD HH24:MI")("2026-11-21 00:30"), seoul);
    timestamp_tz last(timestamp(9999, 12, 31, 20), zone("+00:00"));
    EXPECT_THROW(last.at(zone("+09:00")), dv::error);
    EXPECT_EQ(last.at(zone("+03:59")).local(), timestamp(9999, 12, 31, 23, 59));
    last = last.at(zone("+03:00"));
    EXPECT_THROW(last += interval_ds(0, 1), dv::error);
    EXPECT_EQ(last.local(), timestamp(9999, 12, 31, 23));
}

// 2026: in Paris clocks go from 02:00 to 03:00 on 29 March, and from 03:00 to 02:00 on 25 October. Lord
// Howe's are moved by half an hour.
TEST(CppDatetime, LocalTimesTellGapsAndRepeatedTimes) {
    const zone paris("Europe/Paris"), lord_howe("Australia/Lord_Howe");
    const struct {
        zone where;
        timestamp local;
        int count;
        timestamp begin, end, earlier, later;  // the instants in UTC
        interval_ds before, after;
    } cases[] = {
        {paris, timestamp("2026-03-29 02:20:00.5"), 0, timestamp("2026-03-29 02:00"),
         timestamp("2026-03-29 03:00"), timestamp("2026-03-29 00:20:00.5"),
         timestamp("2026-03-29 01:20:00.5"), interval_ds(0, 1), interval_ds(0, 2)},
        {paris, timestamp("2026-10-25 02:20:00.5"), 2, timestamp("2026-10-25 02:00"),
         timestamp("2026-10-25 03:00"), timestamp("2026-10-25 00:20:00.5"),
         timestamp("2026-10-25 01:20:00.5"), interval_ds(0, 2), interval_ds(0, 1)},
        {paris, timestamp("2026-07-01"), 1, timestamp("2026-07-01"), timestamp("2026-07-01"),
         timestamp("2026-06-30 22:00"), timestamp("2026-06-30 22:00"), interval_ds(0, 2), interval_ds(0, 2)},
        {lord_howe, timestamp("2026-10-04 02:10"), 0, timestamp("2026-10-04 02:00"),
         timestamp("2026-10-04 02:30"), timestamp("2026-10-03 15:10"), timestamp("2026-10-03 15:40"),
         interval_ds(0, 10, 30), interval_ds(0, 11)},
        {zone("-03:30"), timestamp("2026-10-04 02:10"), 1, timestamp("2026-10-04 02:10"),
         timestamp("2026-10-04 02:10"), timestamp("2026-10-04 05:40"), timestamp("2026-10-04 05:40"),
         interval_ds(0, -3, -30), interval_ds(0, -3, -30)},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.local.to_string() + ' ' + c.where.name());
        const dv::local_times times(c.local, c.where);
        EXPECT_EQ(times.count(), c.count);
        EXPECT_EQ(times.is_skipped(), c.count == 0);
        EXPECT_EQ(times.is_repeated(), c.count == 2);
        EXPECT_EQ(times.begin(), c.begin);
        EXPECT_EQ(times.end(), c.end);
        EXPECT_EQ(times.offset_before(), c.before);
        EXPECT_EQ(times.offset_after(), c.after);
        EXPECT_EQ(times.earlier().utc(), c.earlier);
        EXPECT_EQ(times.later().utc(), c.later);
        EXPECT_EQ(times.later().zone(), c.where);
        const timestamp_tz chosen(c.local, c.where.name(), dv::meaning::earlier);
        EXPECT_EQ(text_of_(chosen), text_of_(times.earlier()));
        EXPECT_EQ(text_of_(chosen), text_of_(timestamp_tz(c.earlier, zone()).at(c.where)));
        if (c.count == 0) continue;
        EXPECT_EQ(chosen.local(), c.local);
        EXPECT_EQ(text_of_(timestamp_tz(c.local, c.where.name())), text_of_(times.later()));
    }
    EXPECT_EQ(dv::try_make<timestamp_tz>(timestamp(-4713, 1, 1), zone("+14:00"), dv::meaning::later).code(),
              -5114);
}

}  // namespace
