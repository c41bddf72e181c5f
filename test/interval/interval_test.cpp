// Both interval types: order, arithmetic against integers of 64 and 128 bits, text against the C library, and
// records of any bytes.

#include <gtest/gtest.h>

#include <bit>
#include <cmath>

#include "dvtypes/interval.h"
#include "number_support.h"

using namespace dv::test;

namespace {

__extension__ typedef __int128 wide_t;
constexpr wide_t _sec = 1'000'000'000, _day = 86400 * _sec;  // in nanoseconds
using fields_t = std::array<int, 3>;                         // days, seconds, nanoseconds

fields_t fields_(const dv_itv_dts_t &itv) {
    return {dv_itv_dts_get_field(&itv, 4), dv_itv_dts_get_field(&itv, 32), dv_itv_dts_get_field(&itv, 64)};
}
wide_t nsec_(const dv_itv_dts_t &itv) { return dv_itv_dts_get_total_sec(&itv) * _sec + fields_(itv)[2]; }
dv_itv_dts_t dts_(const fields_t &fields) {
    dv_itv_dts_t itv;
    for (size_t i = 0; i < 3; ++i) dv_itv_dts_set_field(&itv, std::array{4, 32, 64}[i], fields[i]);
    return itv;
}
dv_itv_dts_t dts_(wide_t t) {
    return dts_({static_cast<int>(t / _day), static_cast<int>(t % _day / _sec), static_cast<int>(t % _sec)});
}
dv_itv_ytm_t ytm_(int64_t months) {
    dv_itv_ytm_t itv;
    dv_itv_ytm_set_total_month(&itv, months);
    return itv;
}
int power_(int digits) { return static_cast<int>(std::pow(10, digits)); }

struct source_t : number_source {
    using number_source::number_source;
    int number(int size) { return static_cast<int>(static_cast<int64_t>(bits()) >> pick(64 - size, 63)); }
    wide_t nsec() { return wide_t{number(31)} * number(32) * number(14); }  // below 10^9 days
};

void rounds_(long count, auto &&test) {  // until it fails
    source_t source(1);
    for (long i = scaled(count); i > 0 && !testing::Test::HasFailure(); --i) test(source);
}

TEST(IntervalYearToMonth, IsOrderAndArithmeticOfMonths) {
    rounds_(200'000, [](source_t &source) {
        const int x = source.number(30), y = source.number(30), n = source.number(20);
        dv_itv_ytm_t itv = ytm_(x), other = ytm_(y);
        EXPECT_TRUE(std::memcmp(&itv, &other, 5) <=> 0 == x <=> y) << x << " " << y;
        EXPECT_EQ(dv_itv_ytm_compare(&itv, &other), (x > y) - (x < y)) << x << " " << y;
        dv_itv_ytm_add_itv_ytm(&itv, &other);
        EXPECT_EQ(dv_itv_ytm_get_field(&itv, 2), (x + y) % 12) << x << " + " << y;
        dv_itv_ytm_sub_itv_ytm(&itv, &other);
        EXPECT_EQ(dv_itv_ytm_get_total_month(&itv), x) << x << " + - " << y;
        dv_itv_ytm_mul(&itv, n / 4.0);
        EXPECT_EQ(dv_itv_ytm_get_total_month(&itv), static_cast<int>(int64_t{x} * n / 4)) << x << " " << n;
        EXPECT_EQ(raise_of([&] { dv_itv_ytm_div(&(itv = ytm_(x)), n); }), n != 0 ? 0 : -5065) << x;
        EXPECT_EQ(dv_itv_ytm_get_total_month(&itv), n != 0 ? x / n : x) << x << " / " << n;
        dv_itv_ytm_add_month(&(itv = ytm_(x)), y);
        EXPECT_EQ(dv_itv_ytm_get_total_month(&itv), x + y) << x << " + " << y;
        dv_itv_ytm_add_year(&(itv = ytm_(x)), y);
        EXPECT_EQ(dv_itv_ytm_get_field(&itv, 1), x / 12 + y) << x << " + " << y;
        EXPECT_EQ(dv_itv_ytm_get_field(&itv, 2), x % 12) << x << " + " << y;
    });
}

// A carry of nanoseconds may stay in the seconds: the sum has the value, not always its normal record.
TEST(IntervalDayToSecond, IsOrderAndArithmeticOfNanoseconds) {
    rounds_(100'000, [](source_t &source) {
        const wide_t x = source.nsec(), y = source.pick(0, 1) != 0 ? x + source.pick(-2, 2) : source.nsec();
        dv_itv_dts_t itv = dts_(x), other = dts_(y);
        EXPECT_TRUE(std::memcmp(&itv, &other, 12) <=> 0 == x <=> y) << fields_(itv)[2];
        EXPECT_EQ(dv_itv_dts_compare(&itv, &other), (x > y) - (x < y)) << fields_(itv)[2];
        EXPECT_EQ(dv_itv_dts_cmp(&itv, &other), (x > y) - (x < y)) << fields_(itv)[2];
        dv_itv_dts_add_itv_dts(&itv, &other);
        EXPECT_TRUE(nsec_(itv) == x + y) << testing::PrintToString(fields_(itv));
        dv_itv_dts_sub_itv_dts(&itv, &other);
        EXPECT_TRUE(nsec_(itv) == x) << testing::PrintToString(fields_(itv));
        const int n = source.number(32);
        const wide_t product = x * n / 1'000'000, days = product / _day;
        const number_t number = num(std::to_string(n)), factor = num(std::to_string(n) + "E-6");
        const int code = raise_of([&] { dv_itv_dts_mul(&(itv = dts_(x)), &factor); });
        EXPECT_EQ(code, days == static_cast<int>(days) ? 0 : -5087) << n;
        EXPECT_EQ(fields_(itv), fields_(dts_(code == 0 ? product : x))) << n << "E-6";
        EXPECT_EQ(raise_of([&] { dv_itv_dts_div(&other, &number); }), n != 0 ? 0 : -5065);
        EXPECT_EQ(fields_(other), fields_(dts_(n != 0 ? y / n : y))) << n;
    });
}

// Days leave the seconds alone; hours and minutes wrap around at 32 bits before they are added.
TEST(IntervalDayToSecond, TakesDaysHoursMinutesAndTotals) {
    rounds_(20'000, [](source_t &source) {
        const int n = source.number(32), days = source.number(20), seconds = source.pick(-86399, 86399);
        const fields_t start = {days, seconds, source.number(30)};
        const auto total = [&](int64_t unit) {
            return days * int64_t{86400} + seconds + static_cast<int32_t>(n * unit);
        };
        dv_itv_dts_t by_day = dts_(start), by_hour = by_day, by_minute = by_day, by_total = by_day;
        dv_itv_dts_add_day(&by_day, n % 1000), dv_itv_dts_add_hour(&by_hour, n);
        dv_itv_dts_add_min(&by_minute, n), dv_itv_dts_set_total_sec(&by_total, n + 0.75);
        EXPECT_EQ(fields_(by_day), (fields_t{days + n % 1000, seconds, start[2]})) << n;
        EXPECT_EQ(dv_itv_dts_get_total_sec(&by_hour), total(3600)) << n;
        EXPECT_EQ(dv_itv_dts_get_total_sec(&by_minute), total(60)) << n;
        EXPECT_EQ(fields_(by_minute)[1], total(60) % 86400) << n;
        const int cut = static_cast<int>(n + 0.75);
        EXPECT_EQ(fields_(by_total), (fields_t{cut / 86400, cut % 86400, start[2]})) << n;
    });
}

// Against the steps as they are stated: one second after the other, and the characters of "%d".
TEST(IntervalDayToSecond, FractionIsCarriedAndTrimmedByItsSteps) {
    rounds_(20'000, [](source_t &source) {
        const int fprec = source.pick(0, 9), u = power_(source.pick(0, 5)), nsec = source.number(32) / u * u;
        const double value = std::ldexp(source.number(32), source.pick(-60, 12));
        int s = source.number(24);
        dv_itv_dts_t itv = dts_({1, s, nsec}), trimmed = itv;
        double f = nsec + value;
        const bool borrows = s > 0 && f < 0, carries = !borrows && s >= 0, is_below = f <= -1e9;
        for (; borrows && f < 0; --s) f += 1e9;
        for (; carries && f >= 1e9; ++s) f -= 1e9;
        for (; !borrows && !carries && is_below && f <= -1e9; --s) f += 1e9;
        for (; !borrows && !carries && !is_below && f > 0; ++s) f -= 1e9;
        dv_itv_dts_add_fsec(&itv, value);
        EXPECT_EQ(fields_(itv), (fields_t{1, s, static_cast<int>(static_cast<int64_t>(f))})) << value;

        char text[10];
        (void)snprintf(text, sizeof text, "%d", nsec);
        auto end = static_cast<int>(std::string_view(text).find_last_not_of('0')) + 1;
        const bool stays = nsec > 999'999'999 || end <= fprec;
        while (end > fprec) text[--end] = '0';
        dv_itv_dts_trim_fsec(&trimmed, fprec);
        EXPECT_EQ(fields_(trimmed)[2], stays ? nsec : std::strtol(text, nullptr, 10)) << nsec << fprec;
    });
}

TEST(Interval, OfAnyBytesPrintsAsByPrintfAndTakesEveryOperation) {
    rounds_(200'000, [](source_t &source) {
        const auto u = [](int value) { return static_cast<unsigned>(std::abs(int64_t{value})); };
        const bool is_ytm = source.pick(0, 1) != 0;
        const int d = source.number(32), s = is_ytm ? source.pick(-11, 244) : source.number(32);
        const int f = is_ytm ? 0 : source.number(32), p = source.pick(0, 9), q = source.pick(1, 9);
        std::string format = _itv_print_fmt[(is_ytm ? 0 : 4) + ((d | s | f) < 0 ? 1 : 0)], want(48, '\0');
        std::replace(format.begin(), format.end(), 'd', 'u');  // the magnitude of INT_MIN is no int
        const int length = snprintf(want.data(), 48, format.c_str(), p, u(d), u(s) / (is_ytm ? 1 : 3600),
                                    u(s) / 60 % 60, u(s) % 60, q, u(f) / u(power_(9 - q)));
        const int size = source.pick(0, length + 3);
        const guarded out(static_cast<size_t>(size));
        dv_itv_dts_t dts = dts_({d, s, f}), sum = dts;
        dv_itv_ytm_t ytm = {{dts.day[0], dts.day[1], dts.day[2], dts.day[3]}, static_cast<uint8_t>(s + 11)};
        const int status = is_ytm ? dv_itv_ytm_to_str(&ytm, out.text(), p, size)
                                  : dv_itv_dts_to_str(&dts, out.text(), p, q, size);
        want.resize(static_cast<size_t>(std::clamp(size - 1, 0, length)));
        EXPECT_TRUE(out.intact() && status == (length >= size) && (size == 0 || want == out.text())) << want;

        const double x = std::bit_cast<double>(source.bits());
        const number_t n = source.any();
        dv_itv_dts_add_fsec(&sum, x), dv_itv_dts_add_sec(&sum, std::bit_cast<int64_t>(x));
        dv_itv_dts_sub_itv_dts(&sum, &dts), dv_itv_ytm_mul(&ytm, x), dv_itv_ytm_sub_itv_ytm(&ytm, &ytm);
        const int code = raise_of([&] { (is_ytm ? dv_itv_dts_mul : dv_itv_dts_div)(&dts, &n); });
        EXPECT_TRUE(code == 0 || code == -5065 || code == -5068 || code == -5069 || code == -5087) << code;
        EXPECT_EQ(raise_of([&] { dv_itv_dts_set_total_sec(&sum, x); }) == 0, std::fabs(x) < 0x1p31 * 86400);
    });
}

// Plain texts have a way of their own, which a blank in front of them bars; at times they are not quite
// plain.
TEST(IntervalText, PlainIsReadAsByTokens) {
    rounds_(200'000, [](source_t &source) {
        char buffer[64];
        const auto below = [&](auto end) {
            return static_cast<decltype(end)>(source.bits() % static_cast<uint64_t>(end));
        };
        const int hours = below(20) == 0 ? 24 : below(24), seconds = below(20) == 0 ? 60 : below(60);
        (void)snprintf(buffer, sizeof buffer, "%s%0*d %02d:%02d:%02d.%09d",
                       std::array{"", "-", "+"}[below(3U)], source.pick(1, 10), source.number(31), hours,
                       below(60), seconds, below(1'000'000'000));
        std::string text = buffer;
        text.resize(text.size() - below(11U));
        const char stray = below(8) == 0 ? static_cast<char>(below(256)) : " :.-059x"[below(8U)];
        if (below(4) == 0) text[below(text.size())] = stray;
        if (below(8) == 0) text += std::array{"0", " ", ".", "123456789"}[below(4U)];
        const int prec = below(10), fprec = source.pick(5, 9);
        const auto read = [&](const std::string &from, int length) {
            const guarded block(from.size() + (length == 0 ? 1 : 0), from.c_str());
            dv_itv_dts_t itv = dts_({1, 2, 3});
            const int code = raise_of(
                [&] { dv_itv_dts_from_str(&itv, block.text(), length, DV_ITV_DAY_TO_SECOND, prec, fprec); });
            return std::pair(code, fields_(itv));
        };
        const auto by_tokens = read(" " + text, static_cast<int>(text.size()) + 1);
        EXPECT_EQ(read(text, static_cast<int>(text.size())), by_tokens)
            << text << " " << prec << " " << fprec;
        if (text.find('\0') != text.npos) return;
        EXPECT_EQ(read(text, 0), by_tokens) << text;
    });
}

// What is wrong with bytes that somebody else wrote: nothing, exactly where the text with nine digits of
// years or days gives the same bytes.
TEST(IntervalFault, IsNoneWhereTheTextGivesTheSameBytes) {
    constexpr int leading_digits = 9;
    constexpr int32_t edges[] = {
        0, 1, 11, 12, 244, 86399, 86400, 43200, 999'999'999, 1'000'000'000, 1'000'000'001, 500'000'000};
    number_source source(19);
    int sound = 0, faulty = 0;
    const auto field = [&] { return edges[source.pick(0, 11)] * (source.pick(0, 2) == 0 ? -1 : 1); };
    const auto check = [&](const char *fault, bool comes_back, const char *text) {
        ASSERT_EQ(fault == nullptr, comes_back) << text << " " << (fault == nullptr ? "sound" : fault);
        ++(fault == nullptr ? sound : faulty);
    };
    for (long round = scaled(100'000); round > 0; --round) {
        char text[DV_ITV_DTS_TEXT_SIZE] = "";
        const dv_itv_dts_t dts = dts_({field(), field(), field()});
        dv_itv_dts_t dts_again{};
        dv_itv_dts_to_str(&dts, text, 1, 9, sizeof text);
        const int code = raise_of(
            [&] { dv_itv_dts_from_str(&dts_again, text, 0, DV_ITV_DAY_TO_SECOND, leading_digits, 9); });
        check(dv_itv_dts_get_fault(&dts), code == 0 && std::memcmp(&dts, &dts_again, sizeof dts) == 0, text);
        dv_itv_ytm_t ytm, ytm_again{};
        dv_itv_ytm_set_field(&ytm, DT_FMT_UNIT_YEAR, field());
        ytm.month = static_cast<uint8_t>(source.pick(0, 30));
        dv_itv_ytm_to_str(&ytm, text, 1, sizeof text);
        const int ytm_code =
            raise_of([&] { dv_itv_ytm_from_str(&ytm_again, text, 0, DV_ITV_YEAR_TO_MONTH, leading_digits); });
        check(dv_itv_ytm_get_fault(&ytm), ytm_code == 0 && std::memcmp(&ytm, &ytm_again, sizeof ytm) == 0,
              text);
    }
    EXPECT_GT(sound, scaled(10'000));
    EXPECT_GT(faulty, scaled(10'000));
}

}  // namespace
