// Arithmetic on columns of datetimes: fields, truncation, adding, differences.
//
// Each operation is written once, as a function of records of a type Record that begins with a DATE; the
// types differ in what else lies in their records, and in how they add intervals.

#include "../datetime_fmt/datetime_fmt_internal.h"
#include "dvtypes/column_datetime.h"
#include "each_row.h"

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

// What is no unit is refused row by row, by the function for one value.
template <void (*truncate)(dv_date_t *, const char *, int), bool Rounds>
void truncate_(const dv_column_t *x, const char *fmt, int fmt_len, dv_column_t *result,
               dv_column_faults_t *faults) {
    truncation_t *const rule = fmt_len < 0 ? nullptr : find_truncation(unit_text(fmt, fmt_len));
    const auto apply = [=](dv_date_t date) {
        rule != nullptr ? rule(date, Rounds) : truncate(&date, fmt, fmt_len);
        return date;
    };
    each_row<dv_date_t>(apply, result, faults, x);
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
