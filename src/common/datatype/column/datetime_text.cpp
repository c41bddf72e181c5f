// Columns of datetimes to and from texts under compiled models.

#include "../timezone/timezone_internal.h"
#include "dvtypes/column_datetime_text.h"
#include "fixed_model.h"
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

// To the functions for one value a length of 0 is none: they look for a NUL.
template <typename Record, typename Read>
void read_text_(const Read &read, Record &record, row_bytes_t bytes) {
    read(record, bytes.size != 0 ? bytes.begin : "", text_size(bytes.size));
}

// Reads by read(record, text, length).
template <typename Record, typename Read>
void read_(const dv_column_t *text, dv_column_t *result, dv_column_faults_t *faults, const Read read) {
    const auto value = [read](row_bytes_t bytes) {
        Record record;
        read_text_(read, record, bytes);
        return record;
    };
    each_row<row_bytes_t>(value, result, faults, text);
}

dv_date_t &date_of_(dv_date_t &date) { return date; }
dv_date_t &date_of_(dv_timestamp_t &ts) { return date_part(ts); }

// The same for types without a zone, whose texts often have everything in the same places.
template <typename Record, typename Read>
void read_local_(const dv_column_t *text, const dt_fmt_ctx_t &model, int fprec, const dv_date_t &present,
                 dv_column_t *result, dv_column_faults_t *faults, const Read read) {
    const reading_shape_t shape(model, /*has_fraction=*/sizeof(Record) > sizeof(dv_date_t), fprec);
    const auto fixed = fixed_model_t::for_reading(model, fprec);
    Record defaults{};
    load_date_defaults(date_of_(defaults), model, &present);
    const auto value = [&fixed, &defaults, read](row_bytes_t bytes) {
        Record record = defaults;
        if (!fixed.read(bytes, date_of_(record))) read_text_(read, record, bytes);
        return record;
    };
    each_row_with<row_bytes_t>(iso_read_kernel_t{text, result, shape.get()}, value, result, faults, text);
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

// Writes by write(record, text, size).
template <typename Record, typename Write>
void write_(const dv_column_t *x, dv_column_t *result, dv_column_faults_t *faults, Write write) {
    const auto write_row = [write](const Record &record, text_result_t &texts, int64_t row) {
        texts.write(row, [&record, &write](char *to, int size) { return write(record, to, size); });
    };
    write_texts<Record>(x, result, faults, /*shape=*/nullptr, write_row);
}

const dv_date_t &date_of_(const dv_date_t &date) { return date; }
const dv_date_t &date_of_(const dv_timestamp_t &ts) { return date_part(ts); }

// The same for types without a zone, whose texts often have everything in the same places.
template <typename Record, typename Write>
void write_local_(const dv_column_t *x, const dt_fmt_ctx_t &model, int fprec, dv_column_t *result,
                  dv_column_faults_t *faults, Write write) {
    const writing_shape_t shape(model, /*has_fraction=*/sizeof(Record) > sizeof(dv_date_t), fprec);
    const auto fixed = fixed_model_t::for_writing(model, fprec);
    const auto write_row = [&fixed, write](const Record &record, text_result_t &texts, int64_t row) {
        char text[fixed_model_t::LENGTH_MAX];
        if (fixed.write(date_of_(record), text)) return texts.store(row, text, fixed.length());
        texts.write(row, [&record, &write](char *to, int size) { return write(record, to, size); });
    };
    write_texts<Record>(x, result, faults, shape.get(), write_row);
}

}  // namespace

extern "C" {

void dv_date_column_from_str(const dv_column_t *text, const dt_fmt_ctx_t *fmt_ctx, const dv_date_t *as_of,
                             dv_column_t *result, dv_column_faults_t *faults) {
    if (!DV_ASSERT(fmt_ctx != NULL) || !DV_ASSERT(are_columns(text, result) && lie_by_stride(result))) return;
    const dv_date_t present = present_(as_of);
    read_local_<dv_date_t>(text, *fmt_ctx, /*fprec=*/0, present, result, faults,
                           [=](dv_date_t &date, const char *str, int str_len) {
                               dv_date_from_str_as_of(&date, str, str_len, fmt_ctx, &present);
                           });
}

void dv_timestamp_column_from_str(const dv_column_t *text, const dt_fmt_ctx_t *fmt_ctx, int fprec,
                                  const dv_date_t *as_of, dv_column_t *result, dv_column_faults_t *faults) {
    if (!DV_ASSERT(fmt_ctx != NULL) || !DV_ASSERT(are_columns(text, result) && lie_by_stride(result))) return;
    const dv_date_t present = present_(as_of);
    read_local_<dv_timestamp_t>(text, *fmt_ctx, fprec, present, result, faults,
                                [=](dv_timestamp_t &ts, const char *str, int str_len) {
                                    dv_timestamp_from_str_as_of(&ts, str, str_len, fmt_ctx, fprec, &present);
                                });
}

void dv_ts_tz_column_from_str(const dv_column_t *text, const dt_fmt_ctx_t *fmt_ctx, int fprec,
                              const timezone_t *sess_tz, const dv_date_t *as_of, dv_column_t *result,
                              dv_column_faults_t *faults) {
    if (!DV_ASSERT(fmt_ctx != NULL) || !DV_ASSERT(sess_tz != NULL) ||
        !DV_ASSERT(are_columns(text, result) && lie_by_stride(result)))
        return;
    const dv_date_t present = present_(as_of);
    read_<dv_ts_tz_t>(text, result, faults, [=](dv_ts_tz_t &ts_tz, const char *str, int str_len) {
        dv_ts_tz_from_str_as_of(&ts_tz, str, str_len, fmt_ctx, fprec, sess_tz, &present);
    });
}

void dv_ts_ltz_column_from_str(const dv_column_t *text, const dt_fmt_ctx_t *fmt_ctx, int fprec,
                               const timezone_t *sess_tz, const dv_date_t *as_of, dv_column_t *result,
                               dv_column_faults_t *faults) {
    if (!DV_ASSERT(fmt_ctx != NULL) || !DV_ASSERT(sess_tz != NULL) ||
        !DV_ASSERT(are_columns(text, result) && lie_by_stride(result)))
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
    if (!DV_ASSERT(fmt_ctx != NULL) || !DV_ASSERT(are_columns(x, result) && lie_by_stride(x))) return;
    write_local_<dv_date_t>(
        x, *fmt_ctx, /*fprec=*/0, result, faults, [=](const dv_date_t &date, char *str, int str_len) {
            return static_cast<conv_status_t>(dv_date_to_str(&date, str, str_len, fmt_ctx));
        });
}

void dv_timestamp_column_to_str(const dv_column_t *x, const dt_fmt_ctx_t *fmt_ctx, int fprec,
                                dv_column_t *result, dv_column_faults_t *faults) {
    if (!DV_ASSERT(fmt_ctx != NULL) || !DV_ASSERT(are_columns(x, result) && lie_by_stride(x))) return;
    write_local_<dv_timestamp_t>(x, *fmt_ctx, fprec, result, faults,
                                 [=](const dv_timestamp_t &value, char *str, int str_len) {
                                     return dv_timestamp_to_str(&value, str, str_len, fmt_ctx, fprec);
                                 });
}

void dv_ts_tz_column_to_str(const dv_column_t *x, const dt_fmt_ctx_t *fmt_ctx, int fprec, dv_column_t *result,
                            dv_column_faults_t *faults) {
    if (!DV_ASSERT(fmt_ctx != NULL) || !DV_ASSERT(are_columns(x, result) && lie_by_stride(x))) return;
    write_<dv_ts_tz_t>(x, result, faults, [=](const dv_ts_tz_t &value, char *str, int str_len) {
        return dv_ts_tz_to_str(&value, str, str_len, fmt_ctx, fprec);
    });
}

void dv_ts_ltz_column_to_str(const dv_column_t *x, const dt_fmt_ctx_t *fmt_ctx, int fprec,
                             const timezone_t *sess_tz, dv_column_t *result, dv_column_faults_t *faults) {
    if (!DV_ASSERT(fmt_ctx != NULL) || !DV_ASSERT(sess_tz != NULL) ||
        !DV_ASSERT(are_columns(x, result) && lie_by_stride(x)))
        return;
    write_<dv_ts_ltz_t>(x, result, faults, [=](const dv_ts_ltz_t &value, char *str, int str_len) {
        return dv_ts_ltz_to_str(&value, str, str_len, fmt_ctx, fprec, sess_tz);
    });
}

}  // extern "C"
