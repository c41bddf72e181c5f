// Columns as arrays of the Arrow C data interface, and such arrays as columns, over the same memory.

#include "arrow_type.h"
#include "column_layout.h"

using namespace dv::impl;

namespace {

// ---- import ----

// What an array of any type of columns is.
void check_array_(const ArrowSchema &schema, const ArrowArray &array, bool is_by_offsets) {
    if (schema.release == nullptr || array.release == nullptr) raise(DV_ERR_ARROW, "it was released");
    if (schema.n_children != 0 || array.n_children != 0) raise(DV_ERR_ARROW, "it has children");
    if (schema.dictionary != nullptr || array.dictionary != nullptr)
        raise(DV_ERR_ARROW, "it has a dictionary");
    if (array.n_buffers != (is_by_offsets ? 3 : 2) || array.buffers == nullptr)
        raise(DV_ERR_ARROW, "it has another count of buffers");
    if (array.length < 0 || array.offset < 0 || array.length > INT64_MAX - array.offset)
        raise(DV_ERR_ARROW, "the length or offset is out of range");
    if (array.null_count < -1 || array.null_count > array.length)
        raise(DV_ERR_ARROW, "the count of nulls is out of range");
    if (array.null_count > 0 && array.buffers[0] == nullptr) raise(DV_ERR_ARROW, "the bitmap is missing");
}

// Operands are read only.
void *bytes_of_(const void *buffer) { return const_cast<void *>(buffer); }

void take_fixed_(const ArrowArray &array, int32_t bytes, dv_column_t &column) {
    column.stride = bytes;
    column.size = bytes;
    if (array.length == 0) return;
    if (array.buffers[1] == nullptr) raise(DV_ERR_ARROW, "the values are missing");
    if (array.offset + array.length > INT64_MAX / bytes)
        raise(DV_ERR_ARROW, "the length or offset is out of range");
    column.values = static_cast<char *>(bytes_of_(array.buffers[1])) + array.offset * bytes;
}

// The last offset tells how many bytes there are, since nothing else does.
void take_by_offsets_(const ArrowArray &array, dv_column_t &column) {
    static constexpr int32_t no_rows[1] = {0};
    if (array.length == 0) {  // may then have no buffers
        column.offsets = const_cast<int32_t *>(no_rows);
        return;
    }
    if (array.buffers[1] == nullptr) raise(DV_ERR_ARROW, "the offsets are missing");
    if (reinterpret_cast<uintptr_t>(array.buffers[1]) % alignof(int32_t) != 0)
        raise(DV_ERR_ARROW, "the offsets are not aligned");
    if (array.offset + array.length >= INT64_MAX / int64_t{sizeof(int32_t)})
        raise(DV_ERR_ARROW, "the length or offset is out of range");
    column.offsets = static_cast<int32_t *>(bytes_of_(array.buffers[1])) + array.offset;
    column.size = column.offsets[array.length];
    if (column.size < 0) raise(DV_ERR_ARROW, "the offsets are out of range");
    if (column.size > 0 && array.buffers[2] == nullptr) raise(DV_ERR_ARROW, "the values are missing");
    column.values = bytes_of_(array.buffers[2]);
}

// ---- export ----

void release_schema_(ArrowSchema *schema) { schema->release = nullptr; }
void release_array_(ArrowArray *array) { array->release = nullptr; }

// Whether Arrow has values of the type in the layout of the column.
void check_layout_(const dv_column_t &column, const dv_arrow_type_t &type) {
    const bool is_by_offsets = column.offsets != nullptr;
    const int32_t bytes = arrow_value_bytes(type);
    const bool may_lie_by_offsets = bytes == 0 || type.kind == DV_ARROW_RECORD;  // of records NUMBER alone
    if (is_by_offsets ? !may_lie_by_offsets : bytes == 0 || column.stride != bytes)
        raise(DV_ERR_ARROW, "the values do not lie side by side");
    if (column.validity != nullptr && column.first_bit % 8 != 0)
        raise(DV_ERR_ARROW, "the bitmap does not begin with a byte");
}

void export_array_(const dv_column_t &column, dv_arrow_export_t &lent, ArrowArray &array) {
    const bool is_by_offsets = column.offsets != nullptr;
    array = {};
    array.length = column.count;
    array.null_count = column.count - dv_column_count_valid(&column);
    array.n_buffers = is_by_offsets ? 3 : 2;
    array.buffers = lent.buffers;
    lent.buffers[0] = column.validity != nullptr ? column.validity + column.first_bit / 8 : nullptr;
    lent.buffers[1] = is_by_offsets ? column.offsets : column.values;
    lent.buffers[2] = is_by_offsets ? column.values : nullptr;
    array.release = lent.release_array != nullptr ? lent.release_array : release_array_;
    array.private_data = lent.private_data;
}

}  // namespace

extern "C" void dv_arrow_import(const ArrowSchema *schema, const ArrowArray *array, dv_arrow_type_t *type,
                                dv_column_t *column) {
    if (!DV_ASSERT(given(schema, array, type, column))) return;
    if (schema->release == nullptr) raise(DV_ERR_ARROW, "it was released");
    dv_arrow_type_t read;
    read_arrow_type(*schema, read);
    check_array_(*schema, *array, read.bytes == 0);
    dv_column_t view = {};
    view.count = array->length;
    if (read.bytes == 0) {
        take_by_offsets_(*array, view);
    } else {
        take_fixed_(*array, read.bytes, view);
    }
    if (array->buffers[0] != nullptr && array->null_count != 0) {
        view.validity = static_cast<uint8_t *>(bytes_of_(array->buffers[0]));
        view.first_bit = array->offset;
    }
    *type = read;
    *column = view;
}

extern "C" void dv_arrow_export(const dv_column_t *column, const dv_arrow_type_t *type,
                                dv_arrow_export_t *lent, ArrowSchema *schema, ArrowArray *array) {
    if (!DV_ASSERT(are_columns(column) && given(type, lent, schema, array))) return;
    check_layout_(*column, *type);
    *schema = {};
    write_arrow_type(*type, column->offsets != nullptr, *lent, *schema);
    schema->name = lent->name != nullptr ? lent->name : "";
    schema->flags = ARROW_FLAG_NULLABLE;
    schema->release = lent->release_schema != nullptr ? lent->release_schema : release_schema_;
    schema->private_data = lent->private_data;
    export_array_(*column, *lent, *array);
}
