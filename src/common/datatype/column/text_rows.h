// Texts of the rows of a result, in either layout.

#ifndef DV_COLUMN_TEXT_ROWS_H
#define DV_COLUMN_TEXT_ROWS_H

#include <algorithm>

#include "column_layout.h"
#include "dvtypes/datetime_unit.h"

namespace dv::impl {

// The bytes that a length below 2^31 names.
inline int text_size(int64_t size) { return static_cast<int>(std::clamp<int64_t>(size, 0, INT32_MAX)); }

struct text_result_t {
    appended_rows_t appended;

    explicit text_result_t(const dv_column_t *column) : appended{column} {}
    const dv_column_t &column() const { return *appended.column; }

    // Where the text of the next row goes, and the bytes there are for it.
    char *begin(int64_t row) const {
        if (column().offsets == nullptr) return static_cast<char *>(value_at(column(), row));
        return static_cast<char *>(column().values) + appended.end;
    }
    int room() const {
        if (column().offsets == nullptr) return text_size(column().size);
        return text_size(std::min<int64_t>(column().size, INT32_MAX) - appended.end);
    }

    // Makes a text that lies there already a row's; raises when there is no room for it.
    void keep(int64_t row, int64_t length) {
        if (column().offsets != nullptr) {
            appended.append(row, length);
        } else if (length > column().size) {
            raise(DV_ERR_TEXT_BUFFER_SIZE);
        }
    }

    void store(int64_t row, const char *text, int64_t length) {
        if (length > room()) raise(DV_ERR_TEXT_BUFFER_SIZE);
        char *const to = begin(row);
        memcpy(to, text, static_cast<size_t>(length));
        if (column().offsets == nullptr && length < column().size) to[length] = '\0';
        keep(row, length);
    }

    // A text that write(buffer, size) writes, with a NUL where one fits; it returns a conv_status_t.
    template <typename Write>
    void write(int64_t row, const Write &write) {
        char no_room[1];
        const int size = std::max(room(), 1);
        char *const to = room() > 0 ? begin(row) : no_room;
        if (write(to, size) != CONV_STATUS_WHOLE) raise(DV_ERR_TEXT_BUFFER_SIZE);
        keep(row, static_cast<int64_t>(strnlen(to, static_cast<size_t>(size))));
    }

    void store_none(int64_t row) const {
        if (column().offsets != nullptr) appended.append_none(row);
    }
};

}  // namespace dv::impl

#endif  // DV_COLUMN_TEXT_ROWS_H
