#include <gtest/gtest.h>

#include "datetime_rows.h"
#include "dvtypes/column_datetime.h"

namespace dv::test {
namespace {

using columns_t = dv_column_t *const *;

constexpr size_t _rows = 6'200;  // few of these operations have a kernel

template <typename Record>
rows_t records_(number_source &source) {
    return with_any_byte<Record>(
        rows_made(static_cast<size_t>(scaled(_rows)), source, [&] { return any_record<Record>(source); }));
}

template <typename T>
rows_t numbers_(number_source &source, int most) {
    return rows_made(static_cast<size_t>(scaled(_rows)), source, [&] {
        return source.pick(0, 30) == 0 ? static_cast<T>(source.bits())
                                       : static_cast<T>(source.pick(-most, most));
    });
}
rows_t months_(number_source &source) {
    return rows_made(static_cast<size_t>(scaled(_rows)), source, [&] {
        dv_itv_ytm_t ytm{};
        dv_itv_ytm_set_total_month(&ytm, source.pick(-30, 30));
        return source.pick(0, 9) == 0 ? hostile(ytm, source) : ytm;
    });
}
rows_t seconds_(number_source &source) {
    return rows_made(static_cast<size_t>(scaled(_rows)), source, [&] {
        dv_itv_dts_t dts{};
        dv_itv_dts_set_total_sec(&dts, source.pick(-100'000'000, 100'000'000));
        dv_itv_dts_add_fsec(&dts, source.pick(-999'999'999, 999'999'999));
        return source.pick(0, 9) == 0 ? hostile(dts, source) : dts;
    });
}

TEST(DatetimeColumn, ExtractsFields) {
    number_source source(1);
    const assertion_watch quiet;
    for (int unit = 0; unit <= 2 * DT_FMT_UNIT_FSEC; unit = unit == 0 ? 1 : 2 * unit) {
        const auto of_date = [&](columns_t x, dv_column_t *result, dv_column_faults_t *faults) {
            dv_date_column_get_field(x[0], unit, result, faults);
        };
        EXPECT_EQ(each_row_fault<dv_date_t>(
                      {records_<dv_date_t>(source)}, of_date,
                      [&](const dv_date_t &date) -> int32_t { return dv_date_get_field(&date, unit); }),
                  "")
            << unit;
        const auto of_ts = [&](columns_t x, dv_column_t *result, dv_column_faults_t *faults) {
            dv_timestamp_column_get_field(x[0], unit, result, faults);
        };
        EXPECT_EQ(each_row_fault<dv_timestamp_t>(
                      {records_<dv_timestamp_t>(source)}, of_ts,
                      [&](const dv_timestamp_t &ts) -> int32_t { return dv_timestamp_get_field(&ts, unit); }),
                  "")
            << unit;
    }
}

TEST(DatetimeColumn, TruncatesAndRoundsToEveryUnit) {
    struct {
        const char *fmt;
        int fmt_len;
    } static constexpr units[] = {{"CC", 2}, {"yyyy", 0}, {"IYYY", 4}, {"Q", 1},   {"MM", 2},  {"WW", 2},
                                  {"W", 1},  {"IW", 2},   {"DAY", 3},  {"DD", 2},  {"HH", 2},  {"MI", 2},
                                  {"", 0},   {NULL, 5},   {"SS", 2},   {"MM ", 3}, {"DD", -1}, {"MMX", 2}};
    number_source source(2);
    const assertion_watch quiet;
    rows_t dates = records_<dv_date_t>(source);
    dates.emplace_back(std::string("\xC8\x64\1\1\0\0\0\0", 8));      // year 10000
    dates.emplace_back(std::string("\xC7\xC7\x0C\x1F\x17;;\0", 8));  // the last second
    for (const auto &unit : units) {
        const auto trunc = [&](columns_t x, dv_column_t *result, dv_column_faults_t *faults) {
            dv_date_column_trunc(x[0], unit.fmt, unit.fmt_len, result, faults);
        };
        const auto trunc_one = [&](dv_date_t date) {
            dv_date_trunc(&date, unit.fmt, unit.fmt_len);
            return date;
        };
        EXPECT_EQ(each_row_fault<dv_date_t>({dates}, trunc, trunc_one), "") << unit.fmt;
        const auto round = [&](columns_t x, dv_column_t *result, dv_column_faults_t *faults) {
            dv_date_column_round(x[0], unit.fmt, unit.fmt_len, result, faults);
        };
        const auto round_one = [&](dv_date_t date) {
            dv_date_round(&date, unit.fmt, unit.fmt_len);
            return date;
        };
        EXPECT_EQ(each_row_fault<dv_date_t>({dates}, round, round_one), "") << unit.fmt;
    }
}

template <typename Record>
dv_date_t *date_in_(Record &record) {
    return reinterpret_cast<dv_date_t *>(&record);
}

template <typename Record, auto AddMonths, auto AddField>
void expect_adding_(number_source &source) {
    const rows_t records = records_<Record>(source);
    const auto months = [&](columns_t x, dv_column_t *result, dv_column_faults_t *faults) {
        AddMonths(x[0], x[1], result, faults);
    };
    const auto months_one = [](Record record, int32_t n) {
        dv_date_add_month(date_in_(record), n, 0);
        return record;
    };
    EXPECT_EQ(
        (each_row_fault<Record, int32_t>({records, numbers_<int32_t>(source, 500)}, months, months_one)), "");
    for (const int unit :
         {DT_FMT_UNIT_DAY, DT_FMT_UNIT_HOUR, DT_FMT_UNIT_MINUTE, DT_FMT_UNIT_SECOND, DT_FMT_UNIT_MONTH}) {
        const auto field = [&](columns_t x, dv_column_t *result, dv_column_faults_t *faults) {
            AddField(x[0], unit, x[1], result, faults);
        };
        const auto field_one = [&](Record record, int64_t n) {
            dv_date_add_field(date_in_(record), unit, n);
            return record;
        };
        EXPECT_EQ((each_row_fault<Record, int64_t>({records, numbers_<int64_t>(source, 100'000)}, field,
                                                   field_one)),
                  "")
            << unit;
    }
}

TEST(DatetimeColumn, AddsMonthsDaysAndSeconds) {
    number_source source(3);
    const assertion_watch quiet;
    expect_adding_<dv_date_t, dv_date_column_add_month, dv_date_column_add_field>(source);
    expect_adding_<dv_timestamp_t, dv_timestamp_column_add_month, dv_timestamp_column_add_field>(source);
    const auto days = [](columns_t x, dv_column_t *result, dv_column_faults_t *faults) {
        dv_date_column_add_day(x[0], x[1], result, faults);
    };
    const auto days_one = [](dv_date_t date, double n) {
        dv_date_add_day(&date, n);
        return date;
    };
    const rows_t counts = rows_made(static_cast<size_t>(scaled(_rows)), source, [&] {
        return source.pick(0, 9) == 0 ? source.pick(-1, 1) * 1e300
                                      : source.pick(-9'999'999, 9'999'999) / 64.0;
    });
    EXPECT_EQ((each_row_fault<dv_date_t, double>({records_<dv_date_t>(source), counts}, days, days_one)), "");
}

template <typename Record, typename Interval, auto Columns, auto Single>
void expect_intervals_(number_source &source, const rows_t &intervals) {
    const auto run = [](columns_t x, dv_column_t *result, dv_column_faults_t *faults) {
        Columns(x[0], x[1], result, faults);
    };
    const auto one = [](Record record, const Interval &interval) {
        if constexpr (std::is_invocable_v<decltype(Single), Record *, const Interval *>) {
            Single(&record, &interval);
        } else {
            Single(date_in_(record), &interval);
        }
        return record;
    };
    EXPECT_EQ((each_row_fault<Record, Interval>({records_<Record>(source), intervals}, run, one)), "");
}

TEST(DatetimeColumn, AddsAndSubtractsMonthsOfIntervals) {
    number_source source(4);
    const assertion_watch quiet;
    const rows_t ytm = months_(source);
    using itv = dv_itv_ytm_t;
    expect_intervals_<dv_date_t, itv, dv_date_column_add_itv_ytm, dv_date_add_itv_ytm>(source, ytm);
    expect_intervals_<dv_date_t, itv, dv_date_column_sub_itv_ytm, dv_date_sub_itv_ytm>(source, ytm);
    expect_intervals_<dv_timestamp_t, itv, dv_timestamp_column_add_itv_ytm, dv_date_add_itv_ytm>(source, ytm);
    expect_intervals_<dv_timestamp_t, itv, dv_timestamp_column_sub_itv_ytm, dv_date_sub_itv_ytm>(source, ytm);
    expect_intervals_<dv_ts_tz_t, itv, dv_ts_tz_column_add_itv_ytm, dv_ts_tz_add_itv_ytm>(source, ytm);
    expect_intervals_<dv_ts_tz_t, itv, dv_ts_tz_column_sub_itv_ytm, dv_ts_tz_sub_itv_ytm>(source, ytm);
}

TEST(DatetimeColumn, AddsAndSubtractsSecondsOfIntervals) {
    number_source source(5);
    const assertion_watch quiet;
    const rows_t dts = seconds_(source);
    using itv = dv_itv_dts_t;
    expect_intervals_<dv_date_t, itv, dv_date_column_add_itv_dts, dv_date_add_itv_dts>(source, dts);
    expect_intervals_<dv_date_t, itv, dv_date_column_sub_itv_dts, dv_date_sub_itv_dts>(source, dts);
    expect_intervals_<dv_timestamp_t, itv, dv_timestamp_column_add_itv_dts, dv_timestamp_add_itv_dts>(source,
                                                                                                      dts);
    expect_intervals_<dv_timestamp_t, itv, dv_timestamp_column_sub_itv_dts, dv_timestamp_sub_itv_dts>(source,
                                                                                                      dts);
    expect_intervals_<dv_ts_tz_t, itv, dv_ts_tz_column_add_itv_dts, dv_ts_tz_add_itv_dts>(source, dts);
    expect_intervals_<dv_ts_tz_t, itv, dv_ts_tz_column_sub_itv_dts, dv_ts_tz_sub_itv_dts>(source, dts);
}

// run(x, y, result, faults) against single(x, y).
template <typename Record, typename Single>
std::string difference_fault_(number_source &source, decltype(&dv_date_column_sub) columns,
                              const Single &single) {
    const auto run = [columns](columns_t x, dv_column_t *result, dv_column_faults_t *faults) {
        columns(x[0], x[1], result, faults);
    };
    return each_row_fault<Record, Record>({records_<Record>(source), records_<Record>(source)}, run, single);
}

template <typename Interval, auto Single>
Interval interval_between_(const dv_timestamp_t &x, const dv_timestamp_t &y) {
    Interval interval{};
    Single(&interval, &x, &y);
    return interval;
}

TEST(DatetimeColumn, SubtractsDatetimes) {
    number_source source(6);
    const assertion_watch quiet;
    const auto days = [](const dv_date_t &x, const dv_date_t &y) -> int32_t {
        return dv_date_to_julian_day(&x) - dv_date_to_julian_day(&y);
    };
    EXPECT_EQ(difference_fault_<dv_date_t>(source, dv_date_column_sub_days, days), "");
    const auto real_days = [](const dv_date_t &x, const dv_date_t &y) { return dv_date_sub(&x, &y); };
    EXPECT_EQ(difference_fault_<dv_date_t>(source, dv_date_column_sub, real_days), "");
    const auto months = [](const dv_date_t &x, const dv_date_t &y) { return dv_date_months_between(&x, &y); };
    EXPECT_EQ(difference_fault_<dv_date_t>(source, dv_date_column_months_between, months), "");
    const auto of_dates = [](const dv_date_t &x, const dv_date_t &y) {
        dv_timestamp_t left{}, right{};
        std::memcpy(&left, &x, sizeof x);
        std::memcpy(&right, &y, sizeof y);
        return interval_between_<dv_itv_dts_t, dv_timestamp_sub_timestamp_into_itv_dts>(left, right);
    };
    EXPECT_EQ(difference_fault_<dv_date_t>(source, dv_date_column_sub_into_itv_dts, of_dates), "");
    EXPECT_EQ(difference_fault_<dv_timestamp_t>(
                  source, dv_timestamp_column_sub_into_itv_dts,
                  interval_between_<dv_itv_dts_t, dv_timestamp_sub_timestamp_into_itv_dts>),
              "");
    EXPECT_EQ(difference_fault_<dv_timestamp_t>(
                  source, dv_timestamp_column_sub_into_itv_ytm,
                  interval_between_<dv_itv_ytm_t, dv_timestamp_sub_timestamp_into_itv_ytm>),
              "");
}

}  // namespace
}  // namespace dv::test
