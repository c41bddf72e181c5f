// Columns of local times to UTC and back.

#include "dvtypes/column_zone.h"
#include "each_row.h"

using namespace dv::impl;

namespace {

template <typename To, typename From, void (*convert)(To *, const From *)>
void convert_(const dv_column_t *x, dv_column_t *result, dv_column_faults_t *faults) {
    const auto value = [](const From &from) {
        To to;
        convert(&to, &from);
        return to;
    };
    each_row<From>(value, result, faults, x);
}

template <typename To, typename From, void (*convert)(To *, const From *, const timezone_t *)>
void convert_in_zone_(const dv_column_t *x, const dv_column_t *zones, dv_column_t *result,
                      dv_column_faults_t *faults) {
    const auto value = [](const From &from, const timezone_t &zone) {
        To to;
        convert(&to, &from, &zone);
        return to;
    };
    each_row<From, timezone_t>(value, result, faults, x, zones);
}

}  // namespace

extern "C" {

void dv_timestamp_column_from_ts_ltz(const dv_column_t *x, const dv_column_t *zones, dv_column_t *result,
                                     dv_column_faults_t *faults) {
    if (DV_ASSERT(are_columns(x, zones, result)))
        convert_in_zone_<dv_timestamp_t, dv_ts_ltz_t, dv_timestamp_from_ts_ltz>(x, zones, result, faults);
}

void dv_timestamp_column_from_ts_tz(const dv_column_t *x, dv_column_t *result, dv_column_faults_t *faults) {
    if (DV_ASSERT(are_columns(x, result)))
        convert_<dv_timestamp_t, dv_ts_tz_t, dv_timestamp_from_ts_tz>(x, result, faults);
}

void dv_date_column_from_ts_ltz(const dv_column_t *x, const dv_column_t *zones, dv_column_t *result,
                                dv_column_faults_t *faults) {
    if (DV_ASSERT(are_columns(x, zones, result)))
        convert_in_zone_<dv_date_t, dv_ts_ltz_t, dv_date_from_ts_ltz>(x, zones, result, faults);
}

void dv_date_column_from_ts_tz(const dv_column_t *x, dv_column_t *result, dv_column_faults_t *faults) {
    if (DV_ASSERT(are_columns(x, result)))
        convert_<dv_date_t, dv_ts_tz_t, dv_date_from_ts_tz>(x, result, faults);
}

void dv_ts_ltz_column_from_timestamp(const dv_column_t *x, const dv_column_t *zones, dv_column_t *result,
                                     dv_column_faults_t *faults) {
    if (DV_ASSERT(are_columns(x, zones, result)))
        convert_in_zone_<dv_ts_ltz_t, dv_timestamp_t, dv_ts_ltz_from_timestamp>(x, zones, result, faults);
}

void dv_ts_tz_column_from_timestamp(const dv_column_t *x, const dv_column_t *zones, dv_column_t *result,
                                    dv_column_faults_t *faults) {
    if (DV_ASSERT(are_columns(x, zones, result)))
        convert_in_zone_<dv_ts_tz_t, dv_timestamp_t, dv_ts_tz_from_timestamp>(x, zones, result, faults);
}

void dv_ts_ltz_column_from_date(const dv_column_t *x, const dv_column_t *zones, dv_column_t *result,
                                dv_column_faults_t *faults) {
    if (DV_ASSERT(are_columns(x, zones, result)))
        convert_in_zone_<dv_ts_ltz_t, dv_date_t, dv_ts_ltz_from_date>(x, zones, result, faults);
}

void dv_ts_tz_column_from_date(const dv_column_t *x, const dv_column_t *zones, dv_column_t *result,
                               dv_column_faults_t *faults) {
    if (DV_ASSERT(are_columns(x, zones, result)))
        convert_in_zone_<dv_ts_tz_t, dv_date_t, dv_ts_tz_from_date>(x, zones, result, faults);
}

void dv_ts_tz_column_from_ts_ltz(const dv_column_t *x, const dv_column_t *zones, dv_column_t *result,
                                 dv_column_faults_t *faults) {
    if (DV_ASSERT(are_columns(x, zones, result)))
        convert_in_zone_<dv_ts_tz_t, dv_ts_ltz_t, dv_ts_tz_from_ts_ltz>(x, zones, result, faults);
}

void dv_ts_ltz_column_from_ts_tz(const dv_column_t *x, dv_column_t *result, dv_column_faults_t *faults) {
    if (DV_ASSERT(are_columns(x, result)))
        convert_<dv_ts_ltz_t, dv_ts_tz_t, dv_ts_ltz_from_ts_tz>(x, result, faults);
}

}  // extern "C"
