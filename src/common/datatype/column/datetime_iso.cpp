// Columns of datetimes to and from ISO texts.

#include "dvtypes/column_datetime_text.h"
#include "dvtypes/iso.h"
#include "each_row.h"
#include "iso_operation.h"

using namespace dv::impl;

namespace {

template <typename Record, void (*from_iso)(Record *, const char *, int), typename Kernel>
void read_(const dv_column_t *text, dv_column_t *result, dv_column_faults_t *faults, Kernel kernel) {
    const auto value = [](row_bytes_t bytes) {
        Record record;
        from_iso(&record, bytes.begin, text_size(bytes.size));
        return record;
    };
    each_row_with<row_bytes_t>(kernel, value, result, faults, text);
}

// to_iso writes a NUL, for which a row need not have room.
template <typename Record, int (*to_iso)(const Record *, char *, int)>
struct to_iso_t {
    void operator()(const Record &record, text_result_t &texts, int64_t row) const {
        char text[DV_ISO_TS_TZ_SIZE];
        texts.store(row, text, to_iso(&record, text, sizeof text));
    }
};

template <typename Record, int (*to_iso)(const Record *, char *, int)>
void write_(const dv_column_t *x, dv_column_t *result, dv_column_faults_t *faults,
            const iso_writing_t *shape) {
    write_texts<Record>(x, result, faults, shape, to_iso_t<Record, to_iso>());
}

}  // namespace

extern "C" {

void dv_date_column_from_iso(const dv_column_t *text, dv_column_t *result, dv_column_faults_t *faults) {
    if (!DV_ASSERT(are_columns(text, result) && lie_by_stride(result))) return;
    const iso_reading_t shape = iso_reading(/*has_fraction=*/false);
    read_<dv_date_t, dv_date_from_iso>(text, result, faults, iso_read_kernel_t{text, result, &shape});
}

void dv_timestamp_column_from_iso(const dv_column_t *text, dv_column_t *result, dv_column_faults_t *faults) {
    if (!DV_ASSERT(are_columns(text, result) && lie_by_stride(result))) return;
    const iso_reading_t shape = iso_reading(/*has_fraction=*/true);
    read_<dv_timestamp_t, dv_timestamp_from_iso>(text, result, faults,
                                                 iso_read_kernel_t{text, result, &shape});
}

void dv_ts_tz_column_from_iso(const dv_column_t *text, dv_column_t *result, dv_column_faults_t *faults) {
    if (DV_ASSERT(are_columns(text, result) && lie_by_stride(result)))
        read_<dv_ts_tz_t, dv_ts_tz_from_iso>(text, result, faults, no_kernel_t());
}

void dv_date_column_to_iso(const dv_column_t *x, dv_column_t *result, dv_column_faults_t *faults) {
    if (!DV_ASSERT(are_columns(x, result) && lie_by_stride(x))) return;
    const iso_writing_t shape = iso_writing(/*has_fraction=*/false);
    write_<dv_date_t, dv_date_to_iso>(x, result, faults, &shape);
}

void dv_timestamp_column_to_iso(const dv_column_t *x, dv_column_t *result, dv_column_faults_t *faults) {
    if (!DV_ASSERT(are_columns(x, result) && lie_by_stride(x))) return;
    const iso_writing_t shape = iso_writing(/*has_fraction=*/true);
    write_<dv_timestamp_t, dv_timestamp_to_iso>(x, result, faults, &shape);
}

void dv_ts_tz_column_to_iso(const dv_column_t *x, dv_column_t *result, dv_column_faults_t *faults) {
    if (DV_ASSERT(are_columns(x, result) && lie_by_stride(x)))
        write_<dv_ts_tz_t, dv_ts_tz_to_iso>(x, result, faults, /*shape=*/nullptr);
}

}  // extern "C"
