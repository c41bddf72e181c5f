// Arithmetic on columns of datetimes: fields, truncation, adding, differences.
//
// Each operation is written once, as a function of records of a type Record that begins with a DATE; the
// types differ in what else lies in their records, and in how they add intervals.

#include "../datetime_fmt/datetime_fmt_internal.h"
#include "../timezone/date_word.h"
#include "dvtypes/column_datetime.h"
#include "each_row.h"
#include "vector_level.h"

using namespace dv::impl;

namespace {

// ---------------------------------------------------------------------------------------------------------
// Fields, truncation
// ---------------------------------------------------------------------------------------------------------

template <typename Record, int (*get_field)(const Record *, dt_fmt_unit_t)>
void get_field_(const dv_column_t *x, dt_fmt_unit_t unit, dv_column_t *result, dv_column_faults_t *faults) {
    each_row<Record>([unit](const Record &record) -> int32_t { return get_field(&record, unit); }, result,
                     faults, x);
}

// Truncation to a unit that a field of the record has: the fields behind it become those of its beginning.
struct field_truncation_t {
    std::string_view unit;
    size_t fields;  // that are kept, of the first ones in the record
};
constexpr field_truncation_t _field_truncations[] = {
    {"YYYY", offsetof(dv_date_t, month)}, {"MM", offsetof(dv_date_t, day)},
    {"DD", offsetof(dv_date_t, hour)},    {"HH24", offsetof(dv_date_t, minute)},
    {"MI", offsetof(dv_date_t, second)},
};

// Does so to the rows of a block that are certain: of 1600 to 9999, on a day that every such month has.
struct truncation_kernel_t {
    const dv_column_t *from, *to;
    uint64_t keep, begin;  // of the bytes of a record
    bool keeps_clock;

    uint64_t operator()(int64_t row, int /*count*/, uint64_t valid) const {
        if (keep == 0) return valid;
        return rows_left(valid, [this, row](int i) {
            const void *const record = value_at(*from, row + i);
            __builtin_prefetch(static_cast<const char *>(record) + FETCH_AHEAD);
            dv_date_t date;
            memcpy(&date, record, sizeof date);
            uint64_t word;
            memcpy(&word, record, sizeof word);
            if (!is_certain_(date)) return false;
            store_row(*to, row + i, (word & keep) | begin);
            return true;
        });
    }

  private:
    bool is_certain_(const dv_date_t &date) const {
        const auto is_within = [](uint8_t field, int least, int end) {
            return static_cast<uint8_t>(field - least) < end - least;
        };
        const bool is_date = is_within(date.century, DATE_YEAR_EXCESS + 16, DATE_YEAR_EXCESS + 100) &&
                             is_within(date.year, DATE_YEAR_EXCESS, DATE_YEAR_EXCESS + YEARS_PER_CENTURY) &&
                             is_within(date.day, 1, 1 + CERTAIN_DAYS[date.month]);
        const bool is_clock = date.hour < HOURS_PER_DAY && date.minute < MINUTES_PER_HOUR;
        return is_date && (is_clock || !keeps_clock);
    }
};

// That of a rule; keep is 0 for one that has none.
truncation_kernel_t truncation_kernel_(truncation_t *rule, const dv_column_t *from, const dv_column_t *to) {
    truncation_kernel_t kernel = {from, to, 0, 0, false};
    for (const field_truncation_t &row : _field_truncations) {
        if (rule == nullptr || find_truncation(row.unit) != rule) continue;
        constexpr uint8_t first_moment[sizeof(dv_date_t)] = {0, 0, 1, 1, 0, 0, 0, 0};
        uint8_t keep[sizeof(dv_date_t)], begin[sizeof(dv_date_t)];
        for (size_t i = 0; i < sizeof keep; ++i) {
            keep[i] = i < row.fields ? 0xFF : 0;
            begin[i] = i < row.fields ? 0 : first_moment[i];
        }
        memcpy(&kernel.keep, keep, sizeof keep);
        memcpy(&kernel.begin, begin, sizeof begin);
        kernel.keeps_clock = row.fields > offsetof(dv_date_t, hour);
    }
    return kernel;
}

// What is no unit is refused row by row, by the function for one value.
template <void (*truncate)(dv_date_t *, const char *, int), bool Rounds>
void truncate_(const dv_column_t *x, const char *fmt, int fmt_len, dv_column_t *result,
               dv_column_faults_t *faults) {
    truncation_t *const rule = fmt_len < 0 ? nullptr : find_truncation(unit_text(fmt, fmt_len));
    const auto apply = [=](dv_date_t date) {
        rule != nullptr ? rule(date, Rounds) : truncate(&date, fmt, fmt_len);
        return date;
    };
    const truncation_kernel_t kernel = truncation_kernel_(Rounds ? nullptr : rule, x, result);
    each_row_with<dv_date_t>(kernel, apply, result, faults, x);
}

// ---------------------------------------------------------------------------------------------------------
// Adding
// ---------------------------------------------------------------------------------------------------------

template <typename Record>
dv_date_t *date_of_(Record &record) {
    return reinterpret_cast<dv_date_t *>(&record);  // every member is a byte
}

template <typename Record>
void add_months_(const dv_column_t *x, const dv_column_t *y, dv_column_t *result,
                 dv_column_faults_t *faults) {
    const auto add = [](Record record, int32_t n) {
        dv_date_add_month(date_of_(record), n, /*is_from_itv=*/0);
        return record;
    };
    each_row<Record, int32_t>(add, result, faults, x, y);
}

template <typename Record>
void add_field_(const dv_column_t *x, dt_fmt_unit_t unit, const dv_column_t *y, dv_column_t *result,
                dv_column_faults_t *faults) {
    const auto add = [unit](Record record, int64_t n) {
        dv_date_add_field(date_of_(record), unit, n);
        return record;
    };
    each_row<Record, int64_t>(add, result, faults, x, y);
}

template <typename Record, typename Interval>
using interval_function_t = void (*)(Record *, const Interval *);

template <typename Record, typename Interval, interval_function_t<Record, Interval> function>
void add_interval_(const dv_column_t *x, const dv_column_t *y, dv_column_t *result,
                   dv_column_faults_t *faults) {
    const auto add = [](Record record, const Interval &interval) {
        function(&record, &interval);
        return record;
    };
    each_row<Record, Interval>(add, result, faults, x, y);
}

void add_months_to_timestamp_(dv_timestamp_t *ts, const dv_itv_ytm_t *ytm) {
    dv_date_add_itv_ytm(date_of_(*ts), ytm);
}
void sub_months_from_timestamp_(dv_timestamp_t *ts, const dv_itv_ytm_t *ytm) {
    dv_date_sub_itv_ytm(date_of_(*ts), ytm);
}

// ---------------------------------------------------------------------------------------------------------
// Differences
// ---------------------------------------------------------------------------------------------------------

template <double (*difference)(const dv_date_t *, const dv_date_t *)>
void difference_(const dv_column_t *x, const dv_column_t *y, dv_column_t *result,
                 dv_column_faults_t *faults) {
    each_row<dv_date_t, dv_date_t>(
        [](const dv_date_t &one, const dv_date_t &other) { return difference(&one, &other); }, result, faults,
        x, y);
}

template <typename Interval, void (*difference)(Interval *, const dv_timestamp_t *, const dv_timestamp_t *)>
void difference_of_timestamps_(const dv_column_t *x, const dv_column_t *y, dv_column_t *result,
                               dv_column_faults_t *faults) {
    const auto subtract = [](const dv_timestamp_t &one, const dv_timestamp_t &other) {
        Interval interval;
        difference(&interval, &one, &other);
        return interval;
    };
    each_row<dv_timestamp_t, dv_timestamp_t>(subtract, result, faults, x, y);
}

dv_timestamp_t without_fraction_(const dv_date_t &date) {
    dv_timestamp_t ts{};
    memcpy(&ts, &date, sizeof date);
    return ts;
}

}  // namespace

extern "C" {

void dv_date_column_get_field(const dv_column_t *x, dt_fmt_unit_t unit, dv_column_t *result,
                              dv_column_faults_t *faults) {
    if (DV_ASSERT(lie_by_stride(x, result)))
        get_field_<dv_date_t, dv_date_get_field>(x, unit, result, faults);
}

void dv_timestamp_column_get_field(const dv_column_t *x, dt_fmt_unit_t unit, dv_column_t *result,
                                   dv_column_faults_t *faults) {
    if (DV_ASSERT(lie_by_stride(x, result)))
        get_field_<dv_timestamp_t, dv_timestamp_get_field>(x, unit, result, faults);
}

void dv_date_column_trunc(const dv_column_t *x, const char *fmt, int fmt_len, dv_column_t *result,
                          dv_column_faults_t *faults) {
    if (DV_ASSERT(lie_by_stride(x, result)))
        truncate_<dv_date_trunc, /*Rounds=*/false>(x, fmt, fmt_len, result, faults);
}

void dv_date_column_round(const dv_column_t *x, const char *fmt, int fmt_len, dv_column_t *result,
                          dv_column_faults_t *faults) {
    if (DV_ASSERT(lie_by_stride(x, result)))
        truncate_<dv_date_round, /*Rounds=*/true>(x, fmt, fmt_len, result, faults);
}

void dv_date_column_add_month(const dv_column_t *x, const dv_column_t *y, dv_column_t *result,
                              dv_column_faults_t *faults) {
    if (DV_ASSERT(lie_by_stride(x, y, result))) add_months_<dv_date_t>(x, y, result, faults);
}

void dv_timestamp_column_add_month(const dv_column_t *x, const dv_column_t *y, dv_column_t *result,
                                   dv_column_faults_t *faults) {
    if (DV_ASSERT(lie_by_stride(x, y, result))) add_months_<dv_timestamp_t>(x, y, result, faults);
}

void dv_date_column_add_field(const dv_column_t *x, dt_fmt_unit_t unit, const dv_column_t *y,
                              dv_column_t *result, dv_column_faults_t *faults) {
    if (DV_ASSERT(lie_by_stride(x, y, result))) add_field_<dv_date_t>(x, unit, y, result, faults);
}

void dv_timestamp_column_add_field(const dv_column_t *x, dt_fmt_unit_t unit, const dv_column_t *y,
                                   dv_column_t *result, dv_column_faults_t *faults) {
    if (DV_ASSERT(lie_by_stride(x, y, result))) add_field_<dv_timestamp_t>(x, unit, y, result, faults);
}

void dv_date_column_add_day(const dv_column_t *x, const dv_column_t *y, dv_column_t *result,
                            dv_column_faults_t *faults) {
    if (!DV_ASSERT(lie_by_stride(x, y, result))) return;
    const auto add = [](dv_date_t date, double n) {
        dv_date_add_day(&date, n);
        return date;
    };
    each_row<dv_date_t, double>(add, result, faults, x, y);
}

void dv_date_column_add_itv_ytm(const dv_column_t *x, const dv_column_t *y, dv_column_t *result,
                                dv_column_faults_t *faults) {
    if (DV_ASSERT(lie_by_stride(x, y, result)))
        add_interval_<dv_date_t, dv_itv_ytm_t, dv_date_add_itv_ytm>(x, y, result, faults);
}

void dv_date_column_sub_itv_ytm(const dv_column_t *x, const dv_column_t *y, dv_column_t *result,
                                dv_column_faults_t *faults) {
    if (DV_ASSERT(lie_by_stride(x, y, result)))
        add_interval_<dv_date_t, dv_itv_ytm_t, dv_date_sub_itv_ytm>(x, y, result, faults);
}

void dv_date_column_add_itv_dts(const dv_column_t *x, const dv_column_t *y, dv_column_t *result,
                                dv_column_faults_t *faults) {
    if (DV_ASSERT(lie_by_stride(x, y, result)))
        add_interval_<dv_date_t, dv_itv_dts_t, dv_date_add_itv_dts>(x, y, result, faults);
}

void dv_date_column_sub_itv_dts(const dv_column_t *x, const dv_column_t *y, dv_column_t *result,
                                dv_column_faults_t *faults) {
    if (DV_ASSERT(lie_by_stride(x, y, result)))
        add_interval_<dv_date_t, dv_itv_dts_t, dv_date_sub_itv_dts>(x, y, result, faults);
}

void dv_timestamp_column_add_itv_ytm(const dv_column_t *x, const dv_column_t *y, dv_column_t *result,
                                     dv_column_faults_t *faults) {
    if (DV_ASSERT(lie_by_stride(x, y, result)))
        add_interval_<dv_timestamp_t, dv_itv_ytm_t, add_months_to_timestamp_>(x, y, result, faults);
}

void dv_timestamp_column_sub_itv_ytm(const dv_column_t *x, const dv_column_t *y, dv_column_t *result,
                                     dv_column_faults_t *faults) {
    if (DV_ASSERT(lie_by_stride(x, y, result)))
        add_interval_<dv_timestamp_t, dv_itv_ytm_t, sub_months_from_timestamp_>(x, y, result, faults);
}

void dv_timestamp_column_add_itv_dts(const dv_column_t *x, const dv_column_t *y, dv_column_t *result,
                                     dv_column_faults_t *faults) {
    if (DV_ASSERT(lie_by_stride(x, y, result)))
        add_interval_<dv_timestamp_t, dv_itv_dts_t, dv_timestamp_add_itv_dts>(x, y, result, faults);
}

void dv_timestamp_column_sub_itv_dts(const dv_column_t *x, const dv_column_t *y, dv_column_t *result,
                                     dv_column_faults_t *faults) {
    if (DV_ASSERT(lie_by_stride(x, y, result)))
        add_interval_<dv_timestamp_t, dv_itv_dts_t, dv_timestamp_sub_itv_dts>(x, y, result, faults);
}

void dv_ts_tz_column_add_itv_ytm(const dv_column_t *x, const dv_column_t *y, dv_column_t *result,
                                 dv_column_faults_t *faults) {
    if (DV_ASSERT(lie_by_stride(x, y, result)))
        add_interval_<dv_ts_tz_t, dv_itv_ytm_t, dv_ts_tz_add_itv_ytm>(x, y, result, faults);
}

void dv_ts_tz_column_sub_itv_ytm(const dv_column_t *x, const dv_column_t *y, dv_column_t *result,
                                 dv_column_faults_t *faults) {
    if (DV_ASSERT(lie_by_stride(x, y, result)))
        add_interval_<dv_ts_tz_t, dv_itv_ytm_t, dv_ts_tz_sub_itv_ytm>(x, y, result, faults);
}

void dv_ts_tz_column_add_itv_dts(const dv_column_t *x, const dv_column_t *y, dv_column_t *result,
                                 dv_column_faults_t *faults) {
    if (DV_ASSERT(lie_by_stride(x, y, result)))
        add_interval_<dv_ts_tz_t, dv_itv_dts_t, dv_ts_tz_add_itv_dts>(x, y, result, faults);
}

void dv_ts_tz_column_sub_itv_dts(const dv_column_t *x, const dv_column_t *y, dv_column_t *result,
                                 dv_column_faults_t *faults) {
    if (DV_ASSERT(lie_by_stride(x, y, result)))
        add_interval_<dv_ts_tz_t, dv_itv_dts_t, dv_ts_tz_sub_itv_dts>(x, y, result, faults);
}

void dv_date_column_sub_days(const dv_column_t *x, const dv_column_t *y, dv_column_t *result,
                             dv_column_faults_t *faults) {
    if (!DV_ASSERT(lie_by_stride(x, y, result))) return;
    const auto subtract = [](const dv_date_t &one, const dv_date_t &other) -> int32_t {
        return dv_date_to_julian_day(&one) - dv_date_to_julian_day(&other);
    };
    each_row<dv_date_t, dv_date_t>(subtract, result, faults, x, y);
}

void dv_date_column_sub(const dv_column_t *x, const dv_column_t *y, dv_column_t *result,
                        dv_column_faults_t *faults) {
    if (DV_ASSERT(lie_by_stride(x, y, result))) difference_<dv_date_sub>(x, y, result, faults);
}

void dv_date_column_months_between(const dv_column_t *x, const dv_column_t *y, dv_column_t *result,
                                   dv_column_faults_t *faults) {
    if (DV_ASSERT(lie_by_stride(x, y, result))) difference_<dv_date_months_between>(x, y, result, faults);
}

void dv_date_column_sub_into_itv_dts(const dv_column_t *x, const dv_column_t *y, dv_column_t *result,
                                     dv_column_faults_t *faults) {
    if (!DV_ASSERT(lie_by_stride(x, y, result))) return;
    const auto subtract = [](const dv_date_t &one, const dv_date_t &other) {
        const dv_timestamp_t left = without_fraction_(one), right = without_fraction_(other);
        dv_itv_dts_t interval;
        dv_timestamp_sub_timestamp_into_itv_dts(&interval, &left, &right);
        return interval;
    };
    each_row<dv_date_t, dv_date_t>(subtract, result, faults, x, y);
}

void dv_timestamp_column_sub_into_itv_dts(const dv_column_t *x, const dv_column_t *y, dv_column_t *result,
                                          dv_column_faults_t *faults) {
    if (DV_ASSERT(lie_by_stride(x, y, result)))
        difference_of_timestamps_<dv_itv_dts_t, dv_timestamp_sub_timestamp_into_itv_dts>(x, y, result,
                                                                                         faults);
}

void dv_timestamp_column_sub_into_itv_ytm(const dv_column_t *x, const dv_column_t *y, dv_column_t *result,
                                          dv_column_faults_t *faults) {
    if (DV_ASSERT(lie_by_stride(x, y, result)))
        difference_of_timestamps_<dv_itv_ytm_t, dv_timestamp_sub_timestamp_into_itv_ytm>(x, y, result,
                                                                                         faults);
}

}  // extern "C"
