// Columns of datetimes to and from ISO texts.

#include "dvtypes/column_datetime_text.h"
#include "dvtypes/iso.h"
#include "each_row.h"
#include "text_rows.h"

using namespace dv::impl;

namespace {

template <typename Record, void (*from_iso)(Record *, const char *, int)>
void read_(const dv_column_t *text, dv_column_t *result, dv_column_faults_t *faults) {
    const auto value = [](row_bytes_t bytes) {
        Record record;
        from_iso(&record, bytes.begin, text_size(bytes.size));
        return record;
    };
    each_row<row_bytes_t>(value, result, faults, text);
}

template <typename Record, int (*to_iso)(const Record *, char *, int)>
struct writing_t {
    const dv_column_t *operand[1];
    dv_column_t *result;
    text_result_t texts{result};

    uint64_t block(int64_t /*row*/, int /*count*/, const uint64_t &valid) const { return valid; }
    bool row(int64_t row) {
        const auto record = load_row<Record>(*operand[0], row);
        char text[DV_ISO_TS_TZ_SIZE];
        texts.store(row, text, to_iso(&record, text, sizeof text));
        return true;
    }
    void no_value(int64_t row) const { texts.store_none(row); }
};

template <typename Record, int (*to_iso)(const Record *, char *, int)>
void write_(const dv_column_t *x, dv_column_t *result, dv_column_faults_t *faults) {
    writing_t<Record, to_iso> operation = {{x}, result};
    column_run(operation, result->count, faults);
}

}  // namespace

extern "C" {

void dv_date_column_from_iso(const dv_column_t *text, dv_column_t *result, dv_column_faults_t *faults) {
    if (DV_ASSERT(are_columns(text, result))) read_<dv_date_t, dv_date_from_iso>(text, result, faults);
}

void dv_timestamp_column_from_iso(const dv_column_t *text, dv_column_t *result, dv_column_faults_t *faults) {
    if (DV_ASSERT(are_columns(text, result)))
        read_<dv_timestamp_t, dv_timestamp_from_iso>(text, result, faults);
}

void dv_ts_tz_column_from_iso(const dv_column_t *text, dv_column_t *result, dv_column_faults_t *faults) {
    if (DV_ASSERT(are_columns(text, result))) read_<dv_ts_tz_t, dv_ts_tz_from_iso>(text, result, faults);
}

void dv_date_column_to_iso(const dv_column_t *x, dv_column_t *result, dv_column_faults_t *faults) {
    if (DV_ASSERT(are_columns(x, result))) write_<dv_date_t, dv_date_to_iso>(x, result, faults);
}

void dv_timestamp_column_to_iso(const dv_column_t *x, dv_column_t *result, dv_column_faults_t *faults) {
    if (DV_ASSERT(are_columns(x, result))) write_<dv_timestamp_t, dv_timestamp_to_iso>(x, result, faults);
}

void dv_ts_tz_column_to_iso(const dv_column_t *x, dv_column_t *result, dv_column_faults_t *faults) {
    if (DV_ASSERT(are_columns(x, result))) write_<dv_ts_tz_t, dv_ts_tz_to_iso>(x, result, faults);
}

}  // extern "C"
