// The stored form of a value of the library: a BLOB of one tag byte, the type's code in the type catalogue,
// and the value's bytes, whose unsigned order is the order of the values. So SQLite's own comparison, ORDER
// BY, indexes, MIN and MAX order the values of one type.

#ifndef DV_SQLITE_STORED_H
#define DV_SQLITE_STORED_H

#include "sql_value.h"

namespace dv::impl {

inline constexpr int SQLITE_STORED_SIZE_MAX = 1 + SQL_VALUE_SIZE_MAX;

// Writes the stored form of a value, at most SQLITE_STORED_SIZE_MAX bytes; returns how many.
inline int sqlite_store(const sql_value &value, uint8_t *stored) {
    stored[0] = value.kind;
    return 1 + sql_type_of(value.kind)->encode(value, stored + 1);
}

}  // namespace dv::impl

#endif  // DV_SQLITE_STORED_H
