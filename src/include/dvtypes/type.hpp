// dvtypes/type.hpp: lookups in the type catalogue. Header only; C++20.
//
// ```cpp
// std::cout << dv::type_name(DV_TYPE_DATE) << ' ' << dv::type_size(DV_TYPE_DATE) << '\n';     // DATE 9
// std::cout << dv::type_converts(DV_TYPE_NUMBER, DV_TYPE_DATE) << '\n';                       // 0
// std::cout << dv::type_name(dv::type_of<dv::interval_ym>) << '\n';           // INTERVAL YEAR TO MONTH
// ```
//
// They take any code: what is no type of the table has no name, no size and no category, and converts to and
// compares with nothing.

#ifndef DVTYPES_TYPE_HPP
#define DVTYPES_TYPE_HPP

#include <cstddef>

#include "dvtypes/dv_type.h"

namespace dv {

class number;
class date;
class time_of_day;
class timestamp;
class timestamp_tz;
class timestamp_ltz;
class interval_ym;
class interval_ds;
class rowid;

// The code of a value class; DV_TYPE_INVALID for any other type.
template <typename T>
inline constexpr dv_type_t type_of = DV_TYPE_INVALID;
template <>
inline constexpr dv_type_t type_of<number> = DV_TYPE_NUMBER;
template <>
inline constexpr dv_type_t type_of<date> = DV_TYPE_DATE;
template <>
inline constexpr dv_type_t type_of<time_of_day> = DV_TYPE_TIME;
template <>
inline constexpr dv_type_t type_of<timestamp> = DV_TYPE_TIMESTAMP;
template <>
inline constexpr dv_type_t type_of<timestamp_tz> = DV_TYPE_TS_TZ;
template <>
inline constexpr dv_type_t type_of<timestamp_ltz> = DV_TYPE_TS_LTZ;
template <>
inline constexpr dv_type_t type_of<interval_ym> = DV_TYPE_ITV_YTM;
template <>
inline constexpr dv_type_t type_of<interval_ds> = DV_TYPE_ITV_DTS;
template <>
inline constexpr dv_type_t type_of<rowid> = DV_TYPE_ROWID;

// Is it the code of a type?
inline bool is_type(dv_type_t type) noexcept { return type >= 0 && type < DV_TYPE_MAX_PSM; }

// The SQL name, such as "TIMESTAMP WITH TIME ZONE"; empty where there is none.
inline const char *type_name(dv_type_t type) noexcept { return is_type(type) ? _dv_type_name[type] : ""; }

// Bytes of a stored value with one byte of length; 0 where the length varies.
inline int type_size(dv_type_t type) noexcept { return is_type(type) ? _dv_type_fixed_size[type] : 0; }

// Is the type of this category?
inline bool type_is(dv_type_t type, dv_type_info_e category) noexcept {
    return is_type(type) && (_dv_type_info[type] & category) != 0;
}

// The cell of a pair of types: type_cell(_dv_type_opd_comb_add, DV_TYPE_DATE, DV_TYPE_ITV_YTM) is '6'.
template <size_t Types>
char type_cell(const char (&table)[Types][Types + 1], dv_type_t first, dv_type_t second) noexcept {
    const auto row = static_cast<size_t>(first);
    const auto column = static_cast<size_t>(second);
    return row < Types && column < Types ? table[row][column] : '-';
}

// Does SQL convert one type to the other?
inline bool type_converts(dv_type_t from, dv_type_t to) noexcept {
    return type_cell(_dv_type_tbl_conv, from, to) != '-';
}

// The type in which values of two types are compared; DV_TYPE_INVALID when they are not.
inline dv_type_t type_to_compare(dv_type_t x, dv_type_t y) noexcept {
    const char digit = type_cell(_dv_type_tbl_cmp_result, x, y);
    if (digit == '-') return DV_TYPE_INVALID;
    return digit <= '9' ? digit - '0' : digit - 'A' + 10;
}

}  // namespace dv

#endif  // DVTYPES_TYPE_HPP
