// What helps the column bodies of functions (sql_function::column_body).

#ifndef DV_SQL_COLUMN_H
#define DV_SQL_COLUMN_H

#include <cstring>

#include "sql_datetime.h"

namespace dv::impl {

// A row with the body that does many calls.
constexpr sql_function sql_with_columns(sql_function row, decltype(row.column_body) body) {
    row.column_body = body;
    return row;
}

// Of a result, whose bitmap begins with bit 0.
inline bool sql_has_value(const dv_column_t &result, int64_t row) {
    return (result.validity[row / 8] >> row % 8 & 1) != 0;
}

inline void sql_leave_row(const dv_column_t &result, int64_t row) {
    result.validity[row / 8] = static_cast<uint8_t>(result.validity[row / 8] & ~(1 << row % 8));
}

inline void sql_leave_all_rows(const dv_column_t &result) {
    for (int64_t row = 0; row < result.count; ++row) sql_leave_row(result, row);
}

template <typename Record>
Record *sql_record_at(const dv_column_t &column, int64_t row) {
    return reinterpret_cast<Record *>(static_cast<uint8_t *>(column.values) + row * column.stride);
}

// Leaves the rows that sql_return_datetime might refuse.
template <typename Record>
void sql_leave_datetimes_at_ends(const dv_column_t &result) {
    for (int64_t row = 0; row < result.count; ++row) {
        if (!sql_is_inside_calendar(*sql_record_at<Record>(result, row))) sql_leave_row(result, row);
    }
}

}  // namespace dv::impl

#endif  // DV_SQL_COLUMN_H
