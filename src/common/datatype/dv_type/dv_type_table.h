// What the compiler checks of a table over pairs of types.
//
// The tables are text in the source, so a missing or strange character must not get through: a row that is
// too short would end early, a cell outside the table's alphabet would be taken for an answer.

#ifndef DV_TYPE_TABLE_H
#define DV_TYPE_TABLE_H

#include <algorithm>
#include <string_view>

#include "dvtypes/dv_type.h"

namespace dv::impl {

template <size_t Types>
using type_pairs_t = const char[Types][Types + 1];

// Every row has all its cells, none but of the alphabet, and its NUL behind them.
template <size_t Types>
constexpr bool is_table_of(type_pairs_t<Types> &table, std::string_view alphabet) {
    return std::all_of(table, table + Types, [=](const auto &row) {
        return row[Types] == '\0' &&
               std::string_view(row, Types).find_first_not_of(alphabet) == alphabet.npos;
    });
}

// Who may stand beside whom does not depend on the order.
template <size_t Types>
constexpr bool is_defined_both_ways(type_pairs_t<Types> &table) {
    for (size_t x = 0; x < Types; ++x) {
        for (size_t y = 0; y < x; ++y) {
            if ((table[x][y] == '-') != (table[y][x] == '-')) return false;
        }
    }
    return true;
}

// The cells of the types with themselves.
template <size_t Types>
constexpr bool has_diagonal(type_pairs_t<Types> &table, std::string_view cells) {
    if (cells.size() != Types) return false;
    for (size_t x = 0; x < Types; ++x) {
        if (table[x][x] != cells[x]) return false;
    }
    return true;
}

}  // namespace dv::impl

#endif  // DV_TYPE_TABLE_H
