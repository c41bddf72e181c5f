// Columns of datetimes to and from texts under compiled models.

#include "../timezone/timezone_internal.h"
#include "dvtypes/column_datetime_text.h"
#include "each_row.h"
#include "text_rows.h"

using namespace dv::impl;

namespace {

// ---------------------------------------------------------------------------------------------------------
// Reading
// ---------------------------------------------------------------------------------------------------------

// What stands for the present in all rows.
dv_date_t present_(const dv_date_t *as_of) {
    dv_date_t present;
    if (as_of != NULL) return *as_of;
    dv_date_init(&present);
    return present;
}

// Reads by read(record, text, length). To the functions for one value a length of 0 is none: they look for a
// NUL.
template <typename Record, typename Read>
void read_(const dv_column_t *text, dv_column_t *result, dv_column_faults_t *faults, const Read read) {
    const auto value = [read](row_bytes_t bytes) {
        Record record;
        read(record, bytes.size != 0 ? bytes.begin : "", text_size(bytes.size));
        return record;
    };
    each_row<row_bytes_t>(value, result, faults, text);
}

// ---------------------------------------------------------------------------------------------------------
// Writing
// ---------------------------------------------------------------------------------------------------------

template <typename Record, typename Write>
struct writing_t {
    const dv_column_t *operand[1];
    dv_column_t *result;
    Write write;
    text_result_t texts{result};

    uint64_t block(int64_t /*row*/, int /*count*/, const uint64_t &valid) const { return valid; }
    bool row(int64_t row) {
        const auto record = load_row<Record>(*operand[0], row);
        texts.write(row, [this, &record](char *to, int size) { return write(record, to, size); });
        return true;
    }
    void no_value(int64_t row) const { texts.store_none(row); }
};

template <typename Record, typename Write>
void write_(const dv_column_t *x, dv_column_t *result, dv_column_faults_t *faults, Write write) {
    writing_t<Record, Write> operation = {{x}, result, write};
    column_run(operation, result->count, faults);
}

}  // namespace

extern "C" {

void dv_date_column_from_str(const dv_column_t *text, const dt_fmt_ctx_t *fmt_ctx, const dv_date_t *as_of,
                             dv_column_t *result, dv_column_faults_t *faults) {
    if (!DV_ASSERT(are_columns(text, result)) || !DV_ASSERT(fmt_ctx != NULL)) return;
    const dv_date_t present = present_(as_of);
    read_<dv_date_t>(text, result, faults, [=](dv_date_t &date, const char *str, int str_len) {
        dv_date_from_str_as_of(&date, str, str_len, fmt_ctx, &present);
    });
}

void dv_timestamp_column_from_str(const dv_column_t *text, const dt_fmt_ctx_t *fmt_ctx, int fprec,
                                  const dv_date_t *as_of, dv_column_t *result, dv_column_faults_t *faults) {
    if (!DV_ASSERT(are_columns(text, result)) || !DV_ASSERT(fmt_ctx != NULL)) return;
    const dv_date_t present = present_(as_of);
    read_<dv_timestamp_t>(text, result, faults, [=](dv_timestamp_t &ts, const char *str, int str_len) {
        dv_timestamp_from_str_as_of(&ts, str, str_len, fmt_ctx, fprec, &present);
    });
}

void dv_ts_tz_column_from_str(const dv_column_t *text, const dt_fmt_ctx_t *fmt_ctx, int fprec,
                              const timezone_t *sess_tz, const dv_date_t *as_of, dv_column_t *result,
                              dv_column_faults_t *faults) {
    if (!DV_ASSERT(are_columns(text, result)) || !DV_ASSERT(fmt_ctx != NULL) || !DV_ASSERT(sess_tz != NULL))
        return;
    const dv_date_t present = present_(as_of);
    read_<dv_ts_tz_t>(text, result, faults, [=](dv_ts_tz_t &ts_tz, const char *str, int str_len) {
        dv_ts_tz_from_str_as_of(&ts_tz, str, str_len, fmt_ctx, fprec, sess_tz, &present);
    });
}

void dv_ts_ltz_column_from_str(const dv_column_t *text, const dt_fmt_ctx_t *fmt_ctx, int fprec,
                               const timezone_t *sess_tz, const dv_date_t *as_of, dv_column_t *result,
                               dv_column_faults_t *faults) {
    if (!DV_ASSERT(are_columns(text, result)) || !DV_ASSERT(fmt_ctx != NULL) || !DV_ASSERT(sess_tz != NULL))
        return;
    const dv_date_t present = present_(as_of);
    read_<dv_ts_ltz_t>(text, result, faults, [=](dv_ts_ltz_t &ts_ltz, const char *str, int str_len) {
        dv_timestamp_from_str_as_of(&ts_ltz.utc, str, str_len, fmt_ctx, fprec, &present);
        timezone_t zone = *sess_tz;
        timezone_normalize(&zone, &date_part(ts_ltz.utc), NULL);
    });
}

void dv_date_column_to_str(const dv_column_t *x, const dt_fmt_ctx_t *fmt_ctx, dv_column_t *result,
                           dv_column_faults_t *faults) {
    if (!DV_ASSERT(are_columns(x, result)) || !DV_ASSERT(fmt_ctx != NULL)) return;
    write_<dv_date_t>(x, result, faults, [=](const dv_date_t &date, char *str, int str_len) {
        return static_cast<conv_status_t>(dv_date_to_str(&date, str, str_len, fmt_ctx));
    });
}

void dv_timestamp_column_to_str(const dv_column_t *x, const dt_fmt_ctx_t *fmt_ctx, int fprec,
                                dv_column_t *result, dv_column_faults_t *faults) {
    if (!DV_ASSERT(are_columns(x, result)) || !DV_ASSERT(fmt_ctx != NULL)) return;
    write_<dv_timestamp_t>(x, result, faults, [=](const dv_timestamp_t &value, char *str, int str_len) {
        return dv_timestamp_to_str(&value, str, str_len, fmt_ctx, fprec);
    });
}

void dv_ts_tz_column_to_str(const dv_column_t *x, const dt_fmt_ctx_t *fmt_ctx, int fprec, dv_column_t *result,
                            dv_column_faults_t *faults) {
    if (!DV_ASSERT(are_columns(x, result)) || !DV_ASSERT(fmt_ctx != NULL)) return;
    write_<dv_ts_tz_t>(x, result, faults, [=](const dv_ts_tz_t &value, char *str, int str_len) {
        return dv_ts_tz_to_str(&value, str, str_len, fmt_ctx, fprec);
    });
}

void dv_ts_ltz_column_to_str(const dv_column_t *x, const dt_fmt_ctx_t *fmt_ctx, int fprec,
                             const timezone_t *sess_tz, dv_column_t *result, dv_column_faults_t *faults) {
    if (!DV_ASSERT(are_columns(x, result)) || !DV_ASSERT(fmt_ctx != NULL) || !DV_ASSERT(sess_tz != NULL))
        return;
    write_<dv_ts_ltz_t>(x, result, faults, [=](const dv_ts_ltz_t &value, char *str, int str_len) {
        return dv_ts_ltz_to_str(&value, str, str_len, fmt_ctx, fprec, sess_tz);
    });
}

}  // extern "C"
