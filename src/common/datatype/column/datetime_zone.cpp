// Columns of local times to UTC and back.

#include "../timezone/zone_lookup.h"
#include "dvtypes/column_zone.h"
#include "each_row.h"
#include "vector_level.h"

namespace dv::impl {

// A period of one zone that times share: from its first word on, so many of them. It goes from block to
// block, so that most times need one comparison.
struct shared_period_t {
    uint64_t first, size;
    int32_t shift;
};

// The rows of a block: the first of them at `from`, its zone at `zones`.
struct zone_block_t {
    const char *from;
    int64_t from_stride;
    char *to;
    int64_t to_stride;
    const char *zones;
    int64_t zone_stride;
    int count;
    shared_period_t *shared;
};

// Both of twelve bytes, the fraction of the second as it is. The rows of `rows` that they do not do are
// returned.
struct zone_kernels_t {
    using kernel_t = uint64_t(const zone_block_t &block, uint64_t rows);
    kernel_t *to_local, *to_utc;
};

// The period of a time, from where its meaning is certain.
template <bool is_utc>
shared_period_t period_of(uint64_t word, const zone_year_t &row) {
    const size_t period = zone_period_number(row, word_in_year(word));
    const uint64_t year = word >> 48 << 48;
    uint64_t first = period == 2 ? 0 : row.begin[period];
    if (!is_utc) first = std::max(first, row.plain[period]);
    const uint64_t end = period == 0 ? ~uint64_t{0} : row.begin[period - 1];
    const uint64_t size = first < end ? (end >> 16) - (first >> 16) : 0;
    return {year | first >> 16, size, row.periods[period].shift};
}

}  // namespace dv::impl

#include "zone_plain_kernels.h"

#define DV_AVX512_KERNELS "zone_avx512_kernels.h"
#include "kernels_by_level.h"

using namespace dv::impl;

namespace {

// What a kernel does to a block of an operation (each_row.h).
struct block_kernel_t {
    const dv_column_t *from, *zones, *to;
    zone_kernels_t::kernel_t *kernel;
    shared_period_t *shared;

    uint64_t operator()(int64_t row, int count, uint64_t valid) const {
        if (kernel == nullptr) return valid;
        return kernel({static_cast<const char *>(value_at(*from, row)), from->stride,
                       static_cast<char *>(value_at(*to, row)), to->stride,
                       static_cast<const char *>(value_at(*zones, row)), zones->stride, count, shared},
                      valid);
    }
};

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
                      dv_column_faults_t *faults, zone_kernels_t::kernel_t *kernel = nullptr) {
    const auto value = [](const From &from, const timezone_t &zone) {
        To to;
        convert(&to, &from, &zone);
        return to;
    };
    shared_period_t shared = {0, 0, 0};
    each_row_with<From, timezone_t>(block_kernel_t{x, zones, result, kernel, &shared}, value, result, faults,
                                    x, zones);
}

}  // namespace

extern "C" {

void dv_timestamp_column_from_ts_ltz(const dv_column_t *x, const dv_column_t *zones, dv_column_t *result,
                                     dv_column_faults_t *faults) {
    if (DV_ASSERT(lie_by_stride(x, zones, result)))
        convert_in_zone_<dv_timestamp_t, dv_ts_ltz_t, dv_timestamp_from_ts_ltz>(x, zones, result, faults,
                                                                                kernels_in_use().to_local);
}

void dv_timestamp_column_from_ts_tz(const dv_column_t *x, dv_column_t *result, dv_column_faults_t *faults) {
    if (DV_ASSERT(lie_by_stride(x, result)))
        convert_<dv_timestamp_t, dv_ts_tz_t, dv_timestamp_from_ts_tz>(x, result, faults);
}

void dv_date_column_from_ts_ltz(const dv_column_t *x, const dv_column_t *zones, dv_column_t *result,
                                dv_column_faults_t *faults) {
    if (DV_ASSERT(lie_by_stride(x, zones, result)))
        convert_in_zone_<dv_date_t, dv_ts_ltz_t, dv_date_from_ts_ltz>(x, zones, result, faults);
}

void dv_date_column_from_ts_tz(const dv_column_t *x, dv_column_t *result, dv_column_faults_t *faults) {
    if (DV_ASSERT(lie_by_stride(x, result)))
        convert_<dv_date_t, dv_ts_tz_t, dv_date_from_ts_tz>(x, result, faults);
}

void dv_ts_ltz_column_from_timestamp(const dv_column_t *x, const dv_column_t *zones, dv_column_t *result,
                                     dv_column_faults_t *faults) {
    if (DV_ASSERT(lie_by_stride(x, zones, result)))
        convert_in_zone_<dv_ts_ltz_t, dv_timestamp_t, dv_ts_ltz_from_timestamp>(x, zones, result, faults,
                                                                                kernels_in_use().to_utc);
}

void dv_ts_tz_column_from_timestamp(const dv_column_t *x, const dv_column_t *zones, dv_column_t *result,
                                    dv_column_faults_t *faults) {
    if (DV_ASSERT(lie_by_stride(x, zones, result)))
        convert_in_zone_<dv_ts_tz_t, dv_timestamp_t, dv_ts_tz_from_timestamp>(x, zones, result, faults);
}

void dv_ts_ltz_column_from_date(const dv_column_t *x, const dv_column_t *zones, dv_column_t *result,
                                dv_column_faults_t *faults) {
    if (DV_ASSERT(lie_by_stride(x, zones, result)))
        convert_in_zone_<dv_ts_ltz_t, dv_date_t, dv_ts_ltz_from_date>(x, zones, result, faults);
}

void dv_ts_tz_column_from_date(const dv_column_t *x, const dv_column_t *zones, dv_column_t *result,
                               dv_column_faults_t *faults) {
    if (DV_ASSERT(lie_by_stride(x, zones, result)))
        convert_in_zone_<dv_ts_tz_t, dv_date_t, dv_ts_tz_from_date>(x, zones, result, faults);
}

void dv_ts_tz_column_from_ts_ltz(const dv_column_t *x, const dv_column_t *zones, dv_column_t *result,
                                 dv_column_faults_t *faults) {
    if (DV_ASSERT(lie_by_stride(x, zones, result)))
        convert_in_zone_<dv_ts_tz_t, dv_ts_ltz_t, dv_ts_tz_from_ts_ltz>(x, zones, result, faults);
}

void dv_ts_ltz_column_from_ts_tz(const dv_column_t *x, dv_column_t *result, dv_column_faults_t *faults) {
    if (DV_ASSERT(lie_by_stride(x, result)))
        convert_<dv_ts_ltz_t, dv_ts_tz_t, dv_ts_ltz_from_ts_tz>(x, result, faults);
}

}  // extern "C"
