// Functions for the triggers of text views: those that read and cast, with the name of a column behind their
// arguments, which their errors begin with. They are in no catalogue.

#ifndef DV_SQLITE_COLUMN_FUNCTION_H
#define DV_SQLITE_COLUMN_FUNCTION_H

#include <string_view>

namespace dv::impl {

inline constexpr const char *SQLITE_COLUMN_FUNCTIONS[][2] = {
    {"to_number", "dv_column_to_number"},
    {"to_date", "dv_column_to_date"},
    {"to_time", "dv_column_to_time"},
    {"to_timestamp", "dv_column_to_timestamp"},
    {"to_timestamp_tz", "dv_column_to_timestamp_tz"},
    {"to_yminterval", "dv_column_to_yminterval"},
    {"to_dsinterval", "dv_column_to_dsinterval"},
    {"dv_rowid", "dv_column_rowid"},
    {"dv_cast_number", "dv_column_cast_number"},
    {"dv_cast_fraction", "dv_column_cast_fraction"},
    {"dv_cast_leading", "dv_column_cast_leading"},
};

// The name of that form of a function; NULL: it has none.
constexpr const char *sqlite_column_function(std::string_view name) {
    for (const auto &[plain, of_column] : SQLITE_COLUMN_FUNCTIONS) {
        if (name == plain) return of_column;
    }
    return nullptr;
}

}  // namespace dv::impl

#endif  // DV_SQLITE_COLUMN_FUNCTION_H
