// Columns of datetimes to and from counts since 1970-01-01.
//
// Kernels do days after the reform of 1582; the functions for one value what is older, and what is refused.

#include "../datetime/datetime_internal.h"
#include "../timestamp/epoch_layout.h"
#include "dvtypes/column_epoch.h"
#include "dvtypes/timestamp_tz.h"
#include "each_row.h"
#include "reciprocal.h"
#include "vector_level.h"

namespace dv::impl {

// A unit in the numbers that kernels work with.
struct epoch_scale_t {
    uint32_t per_second, nanoseconds;  // units of a second, nanoseconds of a unit
    uint64_t per_day;
    uint32_t per_day_odd;  // the same as a product with 2^per_day_shift
    int per_day_shift;
    double days_per_coarse_unit;  // of so many units as that power of two
    double seconds_per_unit;
    reciprocal_t to_units;  // nanoseconds of a second to units
    uint32_t days_limit;    // either way, of days whose counts fit 64 bits
};

// The rows of a block: the first of them at `from` and `to`.
struct epoch_block_t {
    const char *from;
    int64_t from_stride;
    char *to;
    int64_t to_stride;
    int count;
};

// The rows of `rows` that they do not do are returned.
using epoch_kernel_t = uint64_t(const epoch_block_t &block, const epoch_scale_t &scale, uint64_t rows);
struct epoch_kernels_t {
    epoch_kernel_t *date_to, *date_from, *timestamp_to, *timestamp_from;
};

}  // namespace dv::impl

#include "epoch_plain_kernels.h"

#define DV_AVX512_KERNELS "epoch_avx512_kernels.h"
#include "kernels_by_level.h"

using namespace dv::impl;

namespace {

constexpr auto _scales = [] {
    std::array<epoch_scale_t, DV_EPOCH_UNITS> scales{};
    for (size_t i = 0; i < scales.size(); ++i) {
        const auto per_second = static_cast<uint32_t>(UNITS_PER_SEC[i]);
        const uint32_t nanoseconds = NSEC_PER_SEC / per_second;
        const uint64_t per_day = uint64_t{per_second} * SEC_PER_DAY;
        const int shift = std::countr_zero(per_day);
        const auto odd = static_cast<uint32_t>(per_day >> shift);
        scales[i] = {per_second,
                     nanoseconds,
                     per_day,
                     odd,
                     shift,
                     1.0 / odd,
                     1.0 / per_second,
                     reciprocal_of(nanoseconds, NSEC_PER_SEC - 1),
                     static_cast<uint32_t>(std::min<uint64_t>(INT64_MAX / per_day - 1, INT32_MAX / 2))};
    }
    return scales;
}();

// Days since 1970 of a block of an operation, without a call, after the reform of 1582.
struct to_day_kernel_t {
    const dv_column_t *from, *to;

    uint64_t operator()(int64_t row, int /*count*/, uint64_t valid) const {
        return rows_left(valid, [this, row](int i) {
            const auto &date = value_at<const dv_date_t>(*from, row + i);
            __builtin_prefetch(reinterpret_cast<const char *>(&date) + FETCH_AHEAD);
            if (!plain::is_plain_(date)) return false;
            store_row(*to, row + i,
                      int32_t{gregorian_day_number(date_year(date), date.month, date.day) - JDN_EPOCH});
            return true;
        });
    }
};
struct from_day_kernel_t {
    const dv_column_t *from, *to;

    uint64_t operator()(int64_t row, int /*count*/, uint64_t valid) const {
        return rows_left(valid, [this, row](int i) {
            constexpr int32_t first = DV_JULIAN_DAY_GREGORIAN - JDN_EPOCH,
                              last = DV_JULIAN_DAY_MAX - JDN_EPOCH;
            const auto day = load_row<int32_t>(*from, row + i);
            if (day < first || day > last) return false;
            auto &date = value_at<dv_date_t>(*to, row + i);
            __builtin_prefetch(reinterpret_cast<const char *>(&date) + FETCH_AHEAD);
            date_set_packed_day(date, gregorian_day(static_cast<uint32_t>(day + JDN_EPOCH)));
            date_set_clock(date, 0, 0, 0);
            return true;
        });
    }
};

// What a kernel does to a block of an operation.
struct block_kernel_t {
    const dv_column_t *from, *to;
    epoch_kernel_t *kernel;  // NULL: there is none
    const epoch_scale_t *scale;

    uint64_t operator()(int64_t row, int count, uint64_t valid) const {
        if (kernel == nullptr) return valid;
        const epoch_block_t block = {static_cast<const char *>(value_at(*from, row)), from->stride,
                                     static_cast<char *>(value_at(*to, row)), to->stride, count};
        return kernel(block, *scale, valid);
    }
};

template <epoch_kernel_t *epoch_kernels_t::*Kernel>
block_kernel_t kernel_of_(const dv_column_t *from, const dv_column_t *to, dv_epoch_unit_t unit) {
    if (!is_epoch_unit(unit)) return {from, to, nullptr, nullptr};
    return {from, to, kernels_in_use().*Kernel, &_scales[static_cast<size_t>(unit)]};
}

template <typename Record, int64_t (*to_epoch)(const Record *, dv_epoch_unit_t),
          epoch_kernel_t *epoch_kernels_t::*Kernel>
void to_epoch_(const dv_column_t *x, dv_epoch_unit_t unit, dv_column_t *result, dv_column_faults_t *faults) {
    const auto count = [unit](const Record &record) { return to_epoch(&record, unit); };
    each_row_with<Record>(kernel_of_<Kernel>(x, result, unit), count, result, faults, x);
}

template <typename Record, void (*from_epoch)(Record *, int64_t, dv_epoch_unit_t),
          epoch_kernel_t *epoch_kernels_t::*Kernel>
void from_epoch_(const dv_column_t *counts, dv_epoch_unit_t unit, dv_column_t *result,
                 dv_column_faults_t *faults) {
    const auto value = [unit](int64_t count) {
        Record record;
        from_epoch(&record, count, unit);
        return record;
    };
    each_row_with<int64_t>(kernel_of_<Kernel>(counts, result, unit), value, result, faults, counts);
}

}  // namespace

extern "C" {

void dv_date_column_to_epoch(const dv_column_t *x, dv_epoch_unit_t unit, dv_column_t *result,
                             dv_column_faults_t *faults) {
    if (DV_ASSERT(lie_by_stride(x, result)))
        to_epoch_<dv_date_t, dv_date_to_epoch, &epoch_kernels_t::date_to>(x, unit, result, faults);
}

void dv_timestamp_column_to_epoch(const dv_column_t *x, dv_epoch_unit_t unit, dv_column_t *result,
                                  dv_column_faults_t *faults) {
    if (DV_ASSERT(lie_by_stride(x, result)))
        to_epoch_<dv_timestamp_t, dv_timestamp_to_epoch, &epoch_kernels_t::timestamp_to>(x, unit, result,
                                                                                         faults);
}

void dv_date_column_from_epoch(const dv_column_t *counts, dv_epoch_unit_t unit, dv_column_t *result,
                               dv_column_faults_t *faults) {
    if (DV_ASSERT(lie_by_stride(counts, result)))
        from_epoch_<dv_date_t, dv_date_from_epoch, &epoch_kernels_t::date_from>(counts, unit, result, faults);
}

void dv_timestamp_column_from_epoch(const dv_column_t *counts, dv_epoch_unit_t unit, dv_column_t *result,
                                    dv_column_faults_t *faults) {
    if (DV_ASSERT(lie_by_stride(counts, result)))
        from_epoch_<dv_timestamp_t, dv_timestamp_from_epoch, &epoch_kernels_t::timestamp_from>(
            counts, unit, result, faults);
}

void dv_ts_tz_column_from_epoch(const dv_column_t *counts, const dv_column_t *zones, dv_epoch_unit_t unit,
                                dv_column_t *result, dv_column_faults_t *faults) {
    if (!DV_ASSERT(lie_by_stride(counts, zones, result))) return;
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
    if (!DV_ASSERT(lie_by_stride(x, result))) return;
    each_row_with<dv_date_t>(
        to_day_kernel_t{x, result}, [](const dv_date_t &date) { return dv_date_to_epoch_day(&date); }, result,
        faults, x);
}

void dv_date_column_from_epoch_day(const dv_column_t *days, dv_column_t *result, dv_column_faults_t *faults) {
    if (!DV_ASSERT(lie_by_stride(days, result))) return;
    const auto value = [](int32_t day) {
        dv_date_t date;
        dv_date_from_epoch_day(&date, day);
        return date;
    };
    each_row_with<int32_t>(from_day_kernel_t{days, result}, value, result, faults, days);
}

}  // extern "C"
