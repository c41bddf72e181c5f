// The try_ forms of conversions, which give SQL NULL where the plain function fails: rows made of its rows.

#ifndef DV_SQL_TRY_H
#define DV_SQL_TRY_H

#include <array>
#include <string_view>

#include "sql_catalogue.h"

namespace dv::impl {

// The functions with such a form, all their overloads, and its name.
inline constexpr const char *SQL_TRY_NAMES[][2] = {
    {"to_number", "try_to_number"},
    {"to_date", "try_to_date"},
    {"to_time", "try_to_time"},
    {"to_timestamp", "try_to_timestamp"},
    {"to_timestamp_tz", "try_to_timestamp_tz"},
    {"to_yminterval", "try_to_yminterval"},
    {"to_dsinterval", "try_to_dsinterval"},
};

// NULL: the function has none.
constexpr const char *sql_try_name(std::string_view name) {
    for (const auto &[plain, with_try] : SQL_TRY_NAMES) {
        if (name == plain) return with_try;
    }
    return nullptr;
}

// The rows of a table, and behind them the try_ form of each that has one.
template <const auto &Rows>
constexpr auto sql_with_tries() {
    constexpr size_t tries = [] {
        size_t count = 0;
        for (const sql_function &row : Rows) count += sql_try_name(row.signature.name) != nullptr ? 1 : 0;
        return count;
    }();
    std::array<sql_function, std::size(Rows) + tries> all{};
    size_t end = 0;
    for (const sql_function &row : Rows) all[end++] = row;
    for (const sql_function &row : Rows) {
        const char *name = sql_try_name(row.signature.name);
        if (name == nullptr) continue;
        all[end] = row;
        all[end].signature.name = name;
        all[end].signature.manual = "the same without try_, or SQL NULL where that fails";
        all[end++].is_try = true;
    }
    return all;
}

}  // namespace dv::impl

#endif  // DV_SQL_TRY_H
