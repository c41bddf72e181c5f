// TIMESTAMP: text, literals, order, interval arithmetic, differences, numeric views, records of any bytes.
//
// Independent of the library: 128-bit nanoseconds since day number 0, the differences of months transcribed
// rule by rule, the calendar of std::chrono.

#include "dvtypes/timestamp.h"

#include <gtest/gtest.h>

#include <bit>
#include <chrono>
#include <cmath>
#include <cstring>

#include "zoned_support.h"

using namespace dv::test;

namespace {

__extension__ typedef __int128 nano_t;
constexpr nano_t _second = 1'000'000'000, _day = 86400 * _second;

int year_(const dv_timestamp_t &ts) { return dv_timestamp_get_field(&ts, DT_FMT_UNIT_YEAR); }
int fraction_(const dv_timestamp_t &ts) { return dv_timestamp_get_field(&ts, DT_FMT_UNIT_FSEC); }
nano_t nano_(const dv_timestamp_t &ts) {
    return static_cast<int64_t>(dv_date_to_double(&date_of(ts))) * _second + fraction_(ts);
}
nano_t nano_(const dv_itv_dts_t &itv) {
    return dv_itv_dts_get_total_sec(&itv) * _second + dv_itv_dts_get_field(&itv, DT_FMT_UNIT_FSEC);
}
std::string text_(const dv_timestamp_t &ts) { return testing::PrintToString(date_of(ts)); }

// A 29 February BC that day numbers know and the calendar lacks cannot come back.
TEST(TimestampText, ReadsBackWhatItWrote) {
    constexpr const char *models[] = {"SYYYY-MM-DD HH24:MI:SS.FF", "DD.MON.YYYY B.C./HH12.MI.SS.FF PM",
                                      "YYYY MM DD AD SSSSS.FF", "SYYYY-MONTH-DD HH24 MI SSXFF"};
    number_source source(1);
    for (long round = scaled(20'000); round > 0; --round) {
        dv_timestamp_t ts = random_timestamp(source), back{};
        const int digits = source.pick(1, 9), unit = static_cast<int>(std::pow(10, 9 - digits));
        const char *const fmt = models[source.pick(0, 3)];
        char text[80];
        dv_timestamp_to_str_DEPRECATED(&ts, text, 80, fmt, 0, digits);
        dv_timestamp_set_field(&ts, DT_FMT_UNIT_FSEC, fraction_(ts) / unit * unit, 1, 1);
        const auto read = [&] { dv_timestamp_from_str_DEPRECATED(&back, text, 0, fmt, 0, digits); };
        const bool lacks_day = ts.day > dt_fmt_get_days_of_mon(year_(ts), ts.month);
        ASSERT_EQ(raise_of(read), lacks_day ? -5114 : 0) << fmt << ": " << text;
        ASSERT_TRUE(lacks_day || same_bytes(back, ts)) << fmt << ": " << text << ": " << text_(back);
    }
    const compiled_model zoned = reading("YYYY TZR", DV_TYPE_TS_TZ);
    dv_timestamp_t ts;
    EXPECT_EQ(raise_of([&] { dv_timestamp_from_str(&ts, "1 U", 0, &zoned.ctx, 9); }), -5011);
}

TEST(TimestampOrder, IsThatOfTheBytes) {
    number_source source(8);
    for (long round = scaled(100'000); round > 0; --round) {
        dv_timestamp_t x, y;
        source.fill(&x, sizeof x);
        y = x;
        for (int changes = source.pick(0, 2); changes > 0; --changes) {
            reinterpret_cast<uint8_t *>(&y)[source.pick(0, 11)] = static_cast<uint8_t>(source.bits());
        }
        const int order = std::memcmp(&x, &y, sizeof x), want = (order > 0) - (order < 0);
        ASSERT_EQ(dv_timestamp_compare(&x, &y), want)
            << testing::PrintToString(x) << testing::PrintToString(y);
        ASSERT_EQ(dv_timestamp_cmp(&x, &y), want) << testing::PrintToString(x) << testing::PrintToString(y);
    }
}

// Of any bytes, with any value and checks: what DATE does to the first eight bytes and TIME to the last
// eight.
TEST(TimestampField, IsThatOfTheDateOrTheTime) {
    number_source source(9);
    for (long round = scaled(100'000); round > 0; --round) {
        dv_timestamp_t ts = random_timestamp(source), want;
        if (source.pick(0, 3) == 0) source.fill(&ts, sizeof ts);
        want = ts;
        auto &date = reinterpret_cast<dv_date_t &>(want);
        auto &time = reinterpret_cast<dv_time_t &>(want.hour);
        const dt_fmt_unit_t unit = 1 << source.pick(0, 8);
        const int value = source.pick(-70, 70) * (source.pick(0, 3) == 0 ? 20'000'000 : 1);
        const auto check_input = static_cast<uchar>(source.pick(0, 1)),
                   check = static_cast<uchar>(source.pick(0, 1));
        const bool is_date = unit <= DT_FMT_UNIT_DAY, is_time = !is_date && unit <= DT_FMT_UNIT_FSEC;
        const int code = raise_of([&] { dv_timestamp_set_field(&ts, unit, value, check_input, check); });
        const int want_code =
            is_date   ? raise_of([&] { dv_date_set_field(&date, unit, value, check_input, check); })
            : is_time ? raise_of([&] { dv_time_set_field(&time, unit, value, check_input, check); })
                      : -5006;
        ASSERT_TRUE(code == want_code && same_bytes(ts, want))
            << unit << " = " << value << ": " << code << text_(ts);
        int got = 0, want_got = 0;
        const int get_code = raise_of([&] { got = dv_timestamp_get_field(&ts, unit); });
        if (is_date) want_got = dv_date_get_field(&date, unit);
        if (is_time) want_got = dv_time_get_field(&time, unit);
        ASSERT_TRUE(got == want_got && get_code == (is_date || is_time ? 0 : -5006)) << unit << text_(ts);
    }
}

TEST(TimestampInterval, IsArithmeticOnNanoseconds) {
    number_source source(3);
    for (long round = scaled(200'000); round > 0; --round) {
        dv_timestamp_t ts = random_timestamp(source);
        const dv_timestamp_t old = ts, other = random_timestamp(source);
        const nano_t start = nano_(ts), apart = start - nano_(other);
        ASSERT_EQ(dv_timestamp_compare(&ts, &other), (apart > 0) - (apart < 0)) << text_(ts) << text_(other);
        dv_itv_dts_t itv;
        dv_timestamp_sub_timestamp_into_itv_dts(&itv, &ts, &other);
        ASSERT_TRUE(nano_(itv) == apart) << text_(ts) << " - " << text_(other);
        dv_itv_dts_set_total_sec(&itv, std::ldexp(source.pick(-9999, 9999), source.pick(0, 25)));
        dv_itv_dts_set_field(&itv, DT_FMT_UNIT_FSEC, source.pick(-999'999'999, 999'999'999));
        const nano_t whole = start + dv_itv_dts_get_total_sec(&itv) * _second, end = start + nano_(itv);
        const bool is_inside = std::min(whole, end) >= 0 && std::max(whole, end) / _day <= DV_JULIAN_DAY_MAX;
        ASSERT_EQ(raise_of([&] { dv_timestamp_add_itv_dts(&ts, &itv); }), is_inside ? 0 : -5114);
        ASSERT_TRUE(!is_inside || nano_(ts) == end) << text_(old) << ": " << text_(ts);
        const int code = !is_inside ? 1 : raise_of([&] { dv_timestamp_sub_itv_dts(&ts, &itv); });
        ASSERT_TRUE(code != 0 || same_bytes(ts, old)) << text_(old) << ": " << text_(ts);
    }
}

// As the manual tells it, case by case; the later value first.
std::pair<int, int> months_between_(const dv_timestamp_t &later, const dv_timestamp_t &earlier) {
    const nano_t apart = nano_(later) % _day - nano_(earlier) % _day;  // times of day
    const int total = year_(later) * 12 + later.month - year_(earlier) * 12 - earlier.month;
    const int day = apart < 0 ? later.day + 1 : later.day, floor = earlier.day - 15;
    if (day >= earlier.day) return {total / 12, total % 12 + (day - earlier.day > (apart < 0 ? 15 : 14))};
    const bool is_put_back = floor <= 1 || (apart > 0 && day >= floor) || (apart < 0 && day > floor);
    return {total / 12, total % 12 - 1 + (is_put_back ? 1 : 0)};
}

TEST(TimestampMonthsBetween, FollowTheRules) {
    number_source source(4);
    for (long round = scaled(300'000); round > 0; --round) {
        dv_timestamp_t x = random_timestamp(source), y = random_timestamp(source);
        if (source.pick(0, 1) != 0) std::memcpy(&y.hour, &x.hour, 8);  // equal times of day
        if (source.pick(0, 1) != 0) std::memcpy(&y, &x, 2);            // in one year
        const int sign = nano_(x) < nano_(y) ? -1 : 1;
        const auto [years, months] = sign > 0 ? months_between_(x, y) : months_between_(y, x);
        dv_itv_ytm_t itv;
        dv_timestamp_sub_timestamp_into_itv_ytm(&itv, &x, &y);
        ASSERT_EQ(dv_itv_ytm_get_field(&itv, DT_FMT_UNIT_YEAR), sign * years) << text_(x) << text_(y);
        ASSERT_EQ(itv.month, static_cast<uint8_t>(sign * months + 11)) << text_(x) << text_(y);
    }
}

// Numbers count days in the calendar of DATE; the way back is Gregorian throughout, as std::chrono is.
TEST(TimestampNumber, ComesBackInTheGregorianCalendar) {
    number_source source(5);
    for (long round = scaled(100'000); round > 0; --round) {
        const dv_timestamp_t ts = random_timestamp(source);
        dv_timestamp_t back = {}, near = {}, want = ts;
        number_t number;
        dv_timestamp_to_number(&ts, &number);
        const std::string seconds = std::to_string(static_cast<int64_t>(nano_(ts) / _second));
        const std::string digits = std::to_string(fraction_(ts) + 1'000'000'000).replace(0, 1, ".");
        ASSERT_EQ(number, num(seconds + digits)) << text_(ts);
        const int jd = dv_date_to_julian_day(&date_of(ts));
        const std::chrono::year_month_day day{std::chrono::sys_days{std::chrono::days{jd - 2440588}}};
        const int year{day.year()}, code = year == 0 ? -5114 : 0;
        reinterpret_cast<dv_date_t &>(want) = make_date(
            year, int(unsigned{day.month()}), int(unsigned{day.day()}), ts.hour, ts.minute, ts.second);
        const double real = dv_timestamp_to_double(&ts);
        ASSERT_EQ(raise_of([&] { dv_timestamp_from_number(&number, &back); }), code) << text_(ts);
        ASSERT_EQ(raise_of([&] { dv_timestamp_from_double(real, &near); }), code) << text_(ts);
        ASSERT_TRUE(same_bytes(back, year == 0 ? null_dv_timestamp : want))
            << text_(back) << " for " << text_(ts);
        ASSERT_TRUE(jd < DV_JULIAN_DAY_GREGORIAN || std::fabs(dv_timestamp_to_double(&near) - real) < 1e-4);
    }
    dv_timestamp_t ts;
    for (const double wrong : {double{NAN}, HUGE_VAL, -HUGE_VAL, -0x1p63, 0x1p63, 4.7e11,
                               4294969296 * 365.2425 * 86400, -0.5, -1e10})
        EXPECT_EQ(raise_of([&] { dv_timestamp_from_double(wrong, &ts); }), -5114) << wrong;
}

// Nothing but the documented raises, and nothing beside the records.
TEST(Timestamp, OfAnyBytesIsHandledByEveryOperation) {
    number_source source(6);
    const assertion_watch watch;
    for (long round = scaled(100'000); round > 0; --round) {
        uint64_t noise[3];
        source.fill(noise, sizeof noise);
        const guarded left(12, noise), right(12, noise + 1);
        auto *const ts = reinterpret_cast<dv_timestamp_t *>(left.text());
        auto *const dts = reinterpret_cast<dv_itv_dts_t *>(right.text());
        const int code = raise_of([&] {
            if (round % 4 == 0) return dv_timestamp_set_field(ts, 1 << (noise[2] & 15), 99, noise[2] & 16, 1);
            if (round % 4 == 1) return dv_timestamp_from_double(std::bit_cast<double>(noise[2]), ts);
            dv_timestamp_to_str_DEPRECATED(ts, right.text(), 12, "YYYYSSSSSFF", 0, 9);
            dv_timestamp_sub_timestamp_into_itv_dts(dts, ts, &null_dv_timestamp);
            round % 4 == 2 ? dv_timestamp_add_itv_dts(ts, dts) : dv_timestamp_trim_fsec(ts, noise[2] & 7);
        });
        ASSERT_TRUE(code == 0 || code == -5114 || code == -5006) << code << " " << text_(*ts);
        ASSERT_TRUE(left.intact() && right.intact()) << text_(*ts);
    }
}

}  // namespace
