// Columns of datetimes to and from counts since 1970-01-01.

#include "dvtypes/column_epoch.h"
#include "dvtypes/timestamp_tz.h"
#include "each_row.h"

using namespace dv::impl;

namespace {

template <typename Record, int64_t (*to_epoch)(const Record *, dv_epoch_unit_t)>
void to_epoch_(const dv_column_t *x, dv_epoch_unit_t unit, dv_column_t *result, dv_column_faults_t *faults) {
    const auto count = [unit](const Record &record) { return to_epoch(&record, unit); };
    each_row<Record>(count, result, faults, x);
}

template <typename Record, void (*from_epoch)(Record *, int64_t, dv_epoch_unit_t)>
void from_epoch_(const dv_column_t *counts, dv_epoch_unit_t unit, dv_column_t *result,
                 dv_column_faults_t *faults) {
    const auto value = [unit](int64_t count) {
        Record record;
        from_epoch(&record, count, unit);
        return record;
    };
    each_row<int64_t>(value, result, faults, counts);
}

}  // namespace

extern "C" {

void dv_date_column_to_epoch(const dv_column_t *x, dv_epoch_unit_t unit, dv_column_t *result,
                             dv_column_faults_t *faults) {
    if (DV_ASSERT(are_columns(x, result))) to_epoch_<dv_date_t, dv_date_to_epoch>(x, unit, result, faults);
}

void dv_timestamp_column_to_epoch(const dv_column_t *x, dv_epoch_unit_t unit, dv_column_t *result,
                                  dv_column_faults_t *faults) {
    if (DV_ASSERT(are_columns(x, result)))
        to_epoch_<dv_timestamp_t, dv_timestamp_to_epoch>(x, unit, result, faults);
}

void dv_date_column_from_epoch(const dv_column_t *counts, dv_epoch_unit_t unit, dv_column_t *result,
                               dv_column_faults_t *faults) {
    if (DV_ASSERT(are_columns(counts, result)))
        from_epoch_<dv_date_t, dv_date_from_epoch>(counts, unit, result, faults);
}

void dv_timestamp_column_from_epoch(const dv_column_t *counts, dv_epoch_unit_t unit, dv_column_t *result,
                                    dv_column_faults_t *faults) {
    if (DV_ASSERT(are_columns(counts, result)))
        from_epoch_<dv_timestamp_t, dv_timestamp_from_epoch>(counts, unit, result, faults);
}

void dv_ts_tz_column_from_epoch(const dv_column_t *counts, const dv_column_t *zones, dv_epoch_unit_t unit,
                                dv_column_t *result, dv_column_faults_t *faults) {
    if (!DV_ASSERT(are_columns(counts, zones, result))) return;
    const auto value = [unit](int64_t count, const timezone_t &zone) {
        dv_ts_ltz_t instant;
        dv_timestamp_from_epoch(&instant.utc, count, unit);
        dv_ts_tz_t ts_tz;
        dv_ts_tz_from_ts_ltz(&ts_tz, &instant, &zone);
        return ts_tz;
    };
    each_row<int64_t, timezone_t>(value, result, faults, counts, zones);
}

void dv_date_column_to_epoch_day(const dv_column_t *x, dv_column_t *result, dv_column_faults_t *faults) {
    if (!DV_ASSERT(are_columns(x, result))) return;
    each_row<dv_date_t>([](const dv_date_t &date) { return dv_date_to_epoch_day(&date); }, result, faults, x);
}

void dv_date_column_from_epoch_day(const dv_column_t *days, dv_column_t *result, dv_column_faults_t *faults) {
    if (!DV_ASSERT(are_columns(days, result))) return;
    const auto value = [](int32_t day) {
        dv_date_t date;
        dv_date_from_epoch_day(&date, day);
        return date;
    };
    each_row<int32_t>(value, result, faults, days);
}

}  // extern "C"
