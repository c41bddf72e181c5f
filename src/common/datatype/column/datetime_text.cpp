// Columns of datetimes to and from texts under compiled models.

#include "../timezone/timezone_internal.h"
#include "dvtypes/column_datetime_text.h"
#include "iso_operation.h"

using namespace dv::impl;

namespace {

// ---------------------------------------------------------------------------------------------------------
// Reading
// ---------------------------------------------------------------------------------------------------------

// The ISO shape of a model, if it has one. A precision above that of the type is refused row by row.
class reading_shape_t {
  public:
    reading_shape_t(const dt_fmt_ctx_t &model, bool has_fraction, int fprec) {
        iso_model_t found;
        is_found_ = fprec <= FRACTION_DIGITS && find_iso_reading(model, has_fraction, found);
        if (is_found_) shape_ = iso_reading(found, has_fraction);
    }
    const iso_reading_t *get() const { return is_found_ ? &shape_ : nullptr; }

  private:
    iso_reading_t shape_;
    bool is_found_;
};

// What stands for the present in all rows.
dv_date_t present_(const dv_date_t *as_of) {
    dv_date_t present;
    if (as_of != NULL) return *as_of;
    dv_date_init(&present);
    return present;
}

// Reads by read(record, text, length). To the functions for one value a length of 0 is none: they look for a
// NUL.
template <typename Record, typename Read, typename Kernel>
void read_(const dv_column_t *text, dv_column_t *result, dv_column_faults_t *faults, const Read read,
           Kernel kernel) {
    const auto value = [read](row_bytes_t bytes) {
        Record record;
        read(record, bytes.size != 0 ? bytes.begin : "", text_size(bytes.size));
        return record;
    };
    each_row_with<row_bytes_t>(kernel, value, result, faults, text);
}

// ---------------------------------------------------------------------------------------------------------
// Writing
// ---------------------------------------------------------------------------------------------------------

class writing_shape_t {
  public:
    writing_shape_t(const dt_fmt_ctx_t &model, bool has_fraction, int fprec) {
        iso_model_t found;
        is_found_ = fprec <= FRACTION_DIGITS && find_iso_writing(model, has_fraction, fprec, found);
        if (is_found_) shape_ = iso_writing(found);
    }
    const iso_writing_t *get() const { return is_found_ ? &shape_ : nullptr; }

  private:
    iso_writing_t shape_;
    bool is_found_;
};

template <typename Record, typename Write>
void write_(const dv_column_t *x, dv_column_t *result, dv_column_faults_t *faults, const iso_writing_t *shape,
            Write write) {
    const auto write_row = [write](const Record &record, text_result_t &texts, int64_t row) {
        texts.write(row, [&record, &write](char *to, int size) { return write(record, to, size); });
    };
    write_texts<Record>(x, result, faults, shape, write_row);
}

}  // namespace

extern "C" {

void dv_date_column_from_str(const dv_column_t *text, const dt_fmt_ctx_t *fmt_ctx, const dv_date_t *as_of,
                             dv_column_t *result, dv_column_faults_t *faults) {
    if (!DV_ASSERT(fmt_ctx != NULL) || !DV_ASSERT(are_columns(text, result) && lie_by_stride(result))) return;
    const dv_date_t present = present_(as_of);
    const reading_shape_t shape(*fmt_ctx, /*has_fraction=*/false, /*fprec=*/0);
    read_<dv_date_t>(
        text, result, faults,
        [=](dv_date_t &date, const char *str, int str_len) {
            dv_date_from_str_as_of(&date, str, str_len, fmt_ctx, &present);
        },
        iso_read_kernel_t{text, result, shape.get()});
}

void dv_timestamp_column_from_str(const dv_column_t *text, const dt_fmt_ctx_t *fmt_ctx, int fprec,
                                  const dv_date_t *as_of, dv_column_t *result, dv_column_faults_t *faults) {
    if (!DV_ASSERT(fmt_ctx != NULL) || !DV_ASSERT(are_columns(text, result) && lie_by_stride(result))) return;
    const dv_date_t present = present_(as_of);
    const reading_shape_t shape(*fmt_ctx, /*has_fraction=*/true, fprec);
    read_<dv_timestamp_t>(
        text, result, faults,
        [=](dv_timestamp_t &ts, const char *str, int str_len) {
            dv_timestamp_from_str_as_of(&ts, str, str_len, fmt_ctx, fprec, &present);
        },
        iso_read_kernel_t{text, result, shape.get()});
}

void dv_ts_tz_column_from_str(const dv_column_t *text, const dt_fmt_ctx_t *fmt_ctx, int fprec,
                              const timezone_t *sess_tz, const dv_date_t *as_of, dv_column_t *result,
                              dv_column_faults_t *faults) {
    if (!DV_ASSERT(fmt_ctx != NULL) || !DV_ASSERT(sess_tz != NULL) ||
        !DV_ASSERT(are_columns(text, result) && lie_by_stride(result)))
        return;
    const dv_date_t present = present_(as_of);
    read_<dv_ts_tz_t>(
        text, result, faults,
        [=](dv_ts_tz_t &ts_tz, const char *str, int str_len) {
            dv_ts_tz_from_str_as_of(&ts_tz, str, str_len, fmt_ctx, fprec, sess_tz, &present);
        },
        no_kernel_t());
}

void dv_ts_ltz_column_from_str(const dv_column_t *text, const dt_fmt_ctx_t *fmt_ctx, int fprec,
                               const timezone_t *sess_tz, const dv_date_t *as_of, dv_column_t *result,
                               dv_column_faults_t *faults) {
    if (!DV_ASSERT(fmt_ctx != NULL) || !DV_ASSERT(sess_tz != NULL) ||
        !DV_ASSERT(are_columns(text, result) && lie_by_stride(result)))
        return;
    const dv_date_t present = present_(as_of);
    read_<dv_ts_ltz_t>(
        text, result, faults,
        [=](dv_ts_ltz_t &ts_ltz, const char *str, int str_len) {
            dv_timestamp_from_str_as_of(&ts_ltz.utc, str, str_len, fmt_ctx, fprec, &present);
            timezone_t zone = *sess_tz;
            timezone_normalize(&zone, &date_part(ts_ltz.utc), NULL);
        },
        no_kernel_t());
}

void dv_date_column_to_str(const dv_column_t *x, const dt_fmt_ctx_t *fmt_ctx, dv_column_t *result,
                           dv_column_faults_t *faults) {
    if (!DV_ASSERT(fmt_ctx != NULL) || !DV_ASSERT(are_columns(x, result) && lie_by_stride(x))) return;
    const writing_shape_t shape(*fmt_ctx, /*has_fraction=*/false, /*fprec=*/0);
    write_<dv_date_t>(x, result, faults, shape.get(), [=](const dv_date_t &date, char *str, int str_len) {
        return static_cast<conv_status_t>(dv_date_to_str(&date, str, str_len, fmt_ctx));
    });
}

void dv_timestamp_column_to_str(const dv_column_t *x, const dt_fmt_ctx_t *fmt_ctx, int fprec,
                                dv_column_t *result, dv_column_faults_t *faults) {
    if (!DV_ASSERT(fmt_ctx != NULL) || !DV_ASSERT(are_columns(x, result) && lie_by_stride(x))) return;
    const writing_shape_t shape(*fmt_ctx, /*has_fraction=*/true, fprec);
    write_<dv_timestamp_t>(x, result, faults, shape.get(),
                           [=](const dv_timestamp_t &value, char *str, int str_len) {
                               return dv_timestamp_to_str(&value, str, str_len, fmt_ctx, fprec);
                           });
}

void dv_ts_tz_column_to_str(const dv_column_t *x, const dt_fmt_ctx_t *fmt_ctx, int fprec, dv_column_t *result,
                            dv_column_faults_t *faults) {
    if (!DV_ASSERT(fmt_ctx != NULL) || !DV_ASSERT(are_columns(x, result) && lie_by_stride(x))) return;
    write_<dv_ts_tz_t>(x, result, faults, /*shape=*/nullptr,
                       [=](const dv_ts_tz_t &value, char *str, int str_len) {
                           return dv_ts_tz_to_str(&value, str, str_len, fmt_ctx, fprec);
                       });
}

void dv_ts_ltz_column_to_str(const dv_column_t *x, const dt_fmt_ctx_t *fmt_ctx, int fprec,
                             const timezone_t *sess_tz, dv_column_t *result, dv_column_faults_t *faults) {
    if (!DV_ASSERT(fmt_ctx != NULL) || !DV_ASSERT(sess_tz != NULL) ||
        !DV_ASSERT(are_columns(x, result) && lie_by_stride(x)))
        return;
    write_<dv_ts_ltz_t>(x, result, faults, /*shape=*/nullptr,
                        [=](const dv_ts_ltz_t &value, char *str, int str_len) {
                            return dv_ts_ltz_to_str(&value, str, str_len, fmt_ctx, fprec, sess_tz);
                        });
}

}  // extern "C"
