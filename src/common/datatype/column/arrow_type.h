// Types of Arrow arrays: their format strings, and the names of records.

#ifndef DV_COLUMN_ARROW_TYPE_H
#define DV_COLUMN_ARROW_TYPE_H

#include "dvtypes/column_arrow.h"

namespace dv::impl {

// The type that a schema describes; raises -5123.
void read_arrow_type(const ArrowSchema &schema, dv_arrow_type_t &type);

// Fills in format and metadata, NULL where there is none; raises -5123. A NUMBER that lies by offsets is
// binary.
void write_arrow_type(const dv_arrow_type_t &type, bool is_by_offsets, dv_arrow_export_t &lent,
                      ArrowSchema &schema);

// Bytes of a value by stride; 0: it lies by offsets.
int32_t arrow_value_bytes(const dv_arrow_type_t &type);

}  // namespace dv::impl

#endif  // DV_COLUMN_ARROW_TYPE_H
