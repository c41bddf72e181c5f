// Operations between datetimes and texts, with the kernels for texts of the ISO shape.

#ifndef DV_COLUMN_ISO_OPERATION_H
#define DV_COLUMN_ISO_OPERATION_H

#include "each_row.h"
#include "iso_rows.h"

namespace dv::impl {

// The kernel of an operation that reads (each_row.h). shape NULL: texts have none.
struct iso_read_kernel_t {
    const dv_column_t *text, *result;
    const iso_reading_t *shape;
    iso_read_t *read = iso_reader();

    uint64_t operator()(int64_t row, int count, uint64_t valid) const {
        return shape != nullptr ? read(*shape, *text, *result, row, count, valid) : valid;
    }
};

// Write(record, texts, row) makes the text of a row, and may raise.
template <typename Record, typename Write>
struct writing_t {
    const dv_column_t *operand[1];
    dv_column_t *result;
    const iso_writing_t *shape;  // NULL: texts have none
    Write write;
    text_result_t texts{result};
    iso_write_t *write_rows = iso_writer();

    uint64_t block(int64_t row, int count, const uint64_t &valid) {
        return shape != nullptr ? write_rows(*shape, *operand[0], texts, row, count, valid) : valid;
    }
    bool row(int64_t row) {
        write(load_row<Record>(*operand[0], row), texts, row);
        return true;
    }
    void no_value(int64_t row) const { texts.store_none(row); }
};

template <typename Record, typename Write>
void write_texts(const dv_column_t *x, dv_column_t *result, dv_column_faults_t *faults,
                 const iso_writing_t *shape, Write write) {
    writing_t<Record, Write> operation = {{x}, result, shape, write};
    column_run(operation, result->count, faults);
}

}  // namespace dv::impl

#endif  // DV_COLUMN_ISO_OPERATION_H
