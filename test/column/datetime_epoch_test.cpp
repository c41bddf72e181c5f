#include <gtest/gtest.h>

#include <chrono>

#include "datetime_rows.h"
#include "dvtypes/chrono.hpp"
#include "dvtypes/column_epoch.h"

namespace dv::test {
namespace {

using columns_t = dv_column_t *const *;

constexpr int64_t _units_per_day[] = {86'400, 86'400'000, 86'400'000'000, 86'400'000'000'000};

// Counts of all records' range and around its ends, the days of change among them, and of any bits.
int64_t any_count_(number_source &source, int unit) {
    constexpr int days[] = {-2440588, -141428, -141427, -1, 0, 2932896, 2932897, -719163, -135140, -135081};
    const int kind = source.pick(0, 9);
    if (kind == 0) return static_cast<int64_t>(source.bits());
    const int64_t day = kind == 1  ? days[source.pick(0, std::size(days) - 1)]
                        : kind < 5 ? source.pick(-2440588, 2932896)
                                   : source.pick(-30'000, 30'000);
    const int64_t per_day = _units_per_day[unit];
    const auto of_day = static_cast<int64_t>(source.bits() % static_cast<uint64_t>(per_day));
    const int64_t edge = source.pick(0, 7) == 0 ? (source.pick(0, 1) != 0 ? 0 : per_day - 1) : of_day;
    return static_cast<int64_t>(static_cast<uint64_t>(day) * static_cast<uint64_t>(per_day) +
                                static_cast<uint64_t>(edge));
}

// Records about the ends of counts of nanoseconds among them.
template <typename Record>
Record any_counted_(number_source &source) {
    auto record = any_record<Record>(source);
    if (source.pick(0, 30) == 0) {
        const dv_date_t end = source.pick(0, 1) != 0 ? make_date(1677, 9, source.pick(1, 30))
                                                     : make_date(2262, 4, source.pick(1, 30));
        std::memcpy(&record, &end, 4);
    }
    return record;
}

size_t count_() { return static_cast<size_t>(scaled(30'000)); }

template <typename Record, auto ToColumns, auto To, auto FromColumns, auto From>
void expect_same_(int unit) {
    SCOPED_TRACE(unit);
    number_source source(static_cast<uint64_t>(unit) + 1);
    const auto to_run = [&](columns_t x, dv_column_t *result, dv_column_faults_t *faults) {
        ToColumns(x[0], unit, result, faults);
    };
    const rows_t records =
        with_any_byte<Record>(rows_made(count_(), source, [&] { return any_counted_<Record>(source); }));
    EXPECT_EQ(each_row_fault<Record>({records}, to_run, [&](const Record &x) { return To(&x, unit); }), "");

    const auto from_run = [&](columns_t x, dv_column_t *result, dv_column_faults_t *faults) {
        FromColumns(x[0], unit, result, faults);
    };
    const auto from_one = [&](int64_t count) {
        Record record{};
        From(&record, count, unit);
        return record;
    };
    const int known_unit = unit >= 0 && unit < DV_EPOCH_UNITS ? unit : 0;
    const rows_t counts = rows_made(count_(), source, [&] { return any_count_(source, known_unit); });
    EXPECT_EQ(each_row_fault<int64_t>({counts}, from_run, from_one), "");
}

TEST(EpochColumn, CountsAsTheFunctionsForOneValue) {
    for (int unit = DV_EPOCH_SECOND; unit <= DV_EPOCH_UNITS; ++unit) {
        expect_same_<dv_timestamp_t, dv_timestamp_column_to_epoch, dv_timestamp_to_epoch,
                     dv_timestamp_column_from_epoch, dv_timestamp_from_epoch>(unit);
        expect_same_<dv_date_t, dv_date_column_to_epoch, dv_date_to_epoch, dv_date_column_from_epoch,
                     dv_date_from_epoch>(unit);
    }
}

TEST(EpochColumn, CountsDaysAsTheFunctionsForOneValue) {
    number_source source(7);
    const auto to_run = [](columns_t x, dv_column_t *result, dv_column_faults_t *faults) {
        dv_date_column_to_epoch_day(x[0], result, faults);
    };
    const rows_t dates =
        with_any_byte<dv_date_t>(rows_made(count_(), source, [&] { return any_record<dv_date_t>(source); }));
    EXPECT_EQ(each_row_fault<dv_date_t>({dates}, to_run,
                                        [](const dv_date_t &date) { return dv_date_to_epoch_day(&date); }),
              "");
    const auto from_run = [](columns_t x, dv_column_t *result, dv_column_faults_t *faults) {
        dv_date_column_from_epoch_day(x[0], result, faults);
    };
    const auto from_one = [](int32_t days) {
        dv_date_t date{};
        dv_date_from_epoch_day(&date, days);
        return date;
    };
    const rows_t days = rows_made(count_(), source, [&] {
        const int64_t seconds = any_count_(source, DV_EPOCH_SECOND);
        return static_cast<int32_t>(source.pick(0, 9) == 0 ? seconds : seconds / 86'400);
    });
    EXPECT_EQ(each_row_fault<int32_t>({days}, from_run, from_one), "");
}

TEST(EpochColumn, GivesZonedValuesTheOffsetInForce) {
    number_source source(8);
    const auto run = [](columns_t x, dv_column_t *result, dv_column_faults_t *faults) {
        dv_ts_tz_column_from_epoch(x[0], x[1], DV_EPOCH_MILLISECOND, result, faults);
    };
    const auto one = [](int64_t count, const timezone_t &zone) {
        dv_ts_tz_t ts_tz = {{}, zone};
        dv_timestamp_from_epoch(&ts_tz.utc, count, DV_EPOCH_MILLISECOND);
        timezone_adjust(&ts_tz.tz, &date_of(ts_tz.utc));
        return ts_tz;
    };
    const rows_t counts =
        rows_made(count_() / 8, source, [&] { return any_count_(source, DV_EPOCH_MILLISECOND); });
    const rows_t zones = rows_made(count_() / 8, source, [&] { return any_zone(source); });
    EXPECT_EQ((each_row_fault<int64_t, timezone_t>({counts, zones}, run, one)), "");
}

}  // namespace

// The functions for one value, against std::chrono through the C++ interface.
namespace {

template <typename Duration>
void expect_chrono_(int unit) {
    SCOPED_TRACE(unit);
    number_source source(9);
    for (long round = 0; round < scaled(20'000); ++round) {
        const int64_t count = any_count_(source, unit);
        const std::chrono::local_time<Duration> time{Duration(count)};
        dv_timestamp_t ts{}, back{};
        const int code = raise_of([&] { dv_timestamp_from_epoch(&ts, count, unit); });
        const auto wanted = dv::try_chrono_cast<dv::timestamp>(time);
        // A day that day numbers have, and the C++ interface, which checks records, has not.
        if (code == 0 && ts.month == 2 && ts.day == 29 && ts.century <= 100 && ts.year < 100) continue;
        ASSERT_EQ(code == 0, wanted.has_value()) << count;
        if (code != 0) {
            EXPECT_EQ(code, -5114) << count;
            EXPECT_TRUE(same_bytes(ts, back)) << count;
            continue;
        }
        EXPECT_TRUE(same_bytes(ts, wanted->record())) << count;
        EXPECT_EQ(dv_timestamp_to_epoch(&ts, unit), count);
    }
}

TEST(Epoch, AgreesWithChrono) {
    using namespace std::chrono;
    expect_chrono_<seconds>(DV_EPOCH_SECOND);
    expect_chrono_<milliseconds>(DV_EPOCH_MILLISECOND);
    expect_chrono_<microseconds>(DV_EPOCH_MICROSECOND);
    expect_chrono_<nanoseconds>(DV_EPOCH_NANOSECOND);
}

TEST(Epoch, HasAllDaysOnce) {
    dv_date_t last{};
    for (int day = -2440588; day <= 2932896; ++day) {
        dv_date_t date = make_date(1, 1, 1, 23, 59, 59);
        dv_date_from_epoch_day(&date, day);
        ASSERT_EQ(dv_date_to_epoch_day(&date), day);
        ASSERT_GT(std::memcmp(&date, &last, sizeof date), 0) << day;
        last = date;
    }
}

// The first or last second of every day, at every level: quotients that are one off show there.
TEST(EpochColumn, HasAllDaysOnce) {
    constexpr int64_t first = -2440588, last = 2932896, size = 1 << 16;
    std::vector<int64_t> counts(size), back(size);
    std::vector<dv_date_t> dates(size), wanted(size);
    dv_column_t count_column = {size, counts.data(), 8, NULL, 0, NULL, 0};
    dv_column_t date_column = {size, dates.data(), sizeof(dv_date_t), NULL, 0, NULL, 0};
    dv_column_t back_column = {size, back.data(), 8, NULL, 0, NULL, 0};
    for (int64_t day = first; day <= last; day += size) {
        const int64_t rows = std::min(size, last - day + 1);
        count_column.count = date_column.count = back_column.count = rows;
        for (int64_t i = 0; i < rows; ++i) {
            const auto at = static_cast<size_t>(i);
            counts[at] = (day + i) * 86'400 + i % 2 * 86'399;
            dv_date_from_epoch_day(&wanted[at], static_cast<int32_t>(day + i));
            if (i % 2 != 0) wanted[at].hour = 23, wanted[at].minute = wanted[at].second = 59;
        }
        for (each_level levels; levels.next();) {
            dv_date_column_from_epoch(&count_column, DV_EPOCH_SECOND, &date_column, NULL);
            dv_date_column_to_epoch(&date_column, DV_EPOCH_SECOND, &back_column, NULL);
            const auto bytes = static_cast<size_t>(rows) * sizeof(int64_t);
            ASSERT_EQ(std::memcmp(dates.data(), wanted.data(), bytes), 0) << day << " " << dv_vector_level();
            ASSERT_EQ(std::memcmp(back.data(), counts.data(), bytes), 0) << day << " " << dv_vector_level();
        }
    }
}

struct epoch_case {
    const char *name;
    dv_date_t date;
    uint32_t nanoseconds;
    int unit;
    int64_t count;  // where code is 0
    int code;
};
const epoch_case _epoch_cases[] = {
    {"last Julian day", make_date(1582, 10, 4), 0, DV_EPOCH_SECOND, -141428 * 86'400LL, 0},
    {"first Gregorian day", make_date(1582, 10, 15), 0, DV_EPOCH_SECOND, -141427 * 86'400LL, 0},
    {"between them", make_date(1582, 10, 10), 0, DV_EPOCH_SECOND, 0, -5114},
    {"a day of the year 0 by a Gregorian count", make_date(1, 1, 2), 0, DV_EPOCH_SECOND, -719163 * 86'400LL,
     0},
    {"a nanosecond before", make_date(1969, 12, 31, 23, 59, 59), 999'999'999, DV_EPOCH_SECOND, -1, 0},
    {"the same, finer", make_date(1969, 12, 31, 23, 59, 59), 999'999'999, DV_EPOCH_MICROSECOND, -1, 0},
    {"least nanoseconds", make_date(1677, 9, 21, 0, 12, 43), 145'224'192, DV_EPOCH_NANOSECOND, INT64_MIN, 0},
    {"one less", make_date(1677, 9, 21, 0, 12, 43), 145'224'191, DV_EPOCH_NANOSECOND, 0, -5114},
    {"most", make_date(2262, 4, 11, 23, 47, 16), 854'775'807, DV_EPOCH_NANOSECOND, INT64_MAX, 0},
    {"one more", make_date(2262, 4, 11, 23, 47, 16), 854'775'808, DV_EPOCH_NANOSECOND, 0, -5114},
    {"before day number 0", make_date(-4714, 12, 31), 0, DV_EPOCH_SECOND, 0, -5114},
    {"no such day", make_date(2023, 2, 29), 0, DV_EPOCH_SECOND, 0, -5114},
    {"no such hour", make_date(2023, 2, 28, 24), 0, DV_EPOCH_SECOND, 0, -5114},
    {"no such fraction", make_date(2023, 2, 28), 1'000'000'000, DV_EPOCH_SECOND, 0, -5114},
    {"a fraction above 2^31", make_date(2023, 2, 28), 0x80000000, DV_EPOCH_SECOND, 0, -5114},
};

TEST(Epoch, CountsAtTheEdges) {
    for (const epoch_case &c : _epoch_cases) {
        dv_timestamp_t ts{};
        std::memcpy(&ts, &c.date, sizeof c.date);
        for (int i = 0; i < 4; ++i) ts.csec[i] = static_cast<uint8_t>(c.nanoseconds >> (24 - 8 * i));
        int64_t count = 0;
        EXPECT_EQ(raise_of([&] { count = dv_timestamp_to_epoch(&ts, c.unit); }), c.code) << c.name;
        EXPECT_EQ(count, c.count) << c.name;
    }
}

}  // namespace
}  // namespace dv::test
