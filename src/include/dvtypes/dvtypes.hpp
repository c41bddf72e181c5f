// dvtypes/dvtypes.hpp: the C++ face of the library. Header only; C++20.
//
//   dv::error, dv::guarded                        a raise as an exception (error.hpp)
//   dv::number                                    NUMBER as a value: conversions, operators, comparison, text
//   dv::date, dv::time_of_day, dv::timestamp,     datetimes and intervals as values, and compiled format
//   dv::timestamp_tz, dv::zone, dv::interval_ym,  models (datetime.hpp)
//   dv::interval_ds, dv::reader, dv::writer
//   dv::type_...                                  lookups in the type catalogue that take any code
//
// Values are plain records: copying one copies its bytes. Every operation that can raise throws dv::error.

#ifndef DVTYPES_DVTYPES_HPP
#define DVTYPES_DVTYPES_HPP

#include <compare>
#include <concepts>
#include <ostream>
#include <span>
#include <string>
#include <string_view>

#include "dvtypes/datetime.hpp"
#include "dvtypes/dv_type.h"
#include "dvtypes/error.hpp"
#include "dvtypes/number.h"

namespace dv {

// SQL NUMBER that is not NULL. A plain 23-byte value: copying it copies the record.
class number {
  public:
    number() noexcept { number_assign(&record_, _number_zero); }
    number(std::signed_integral auto v) noexcept { number_from_int64(&record_, v); }
    number(std::unsigned_integral auto v) noexcept { number_from_uint64(&record_, v); }
    explicit number(double v) {
        guarded([&] { number_from_double(&record_, v); });
    }
    // Text as number_from_str reads it; throws -5074, -5068, -5069.
    explicit number(std::string_view text) {
        // An empty view would be taken for a text that ends at its NUL.
        const std::string_view given = text.empty() ? std::string_view(" ") : text;
        guarded([&] { number_from_str(&record_, static_cast<int>(given.size()), given.data(), nullptr); });
    }
    explicit number(const number_t &record) noexcept { number_assign(&record_, &record); }

    number &operator+=(const number &y) { return apply(number_add, y); }
    number &operator-=(const number &y) { return apply(number_sub, y); }
    number &operator*=(const number &y) { return apply(number_mul, y); }
    number &operator/=(const number &y) { return apply(number_div, y); }
    number &operator%=(const number &y) { return apply(number_mod, y); }

    friend number operator+(number x, const number &y) { return x += y; }
    friend number operator-(number x, const number &y) { return x -= y; }
    friend number operator*(number x, const number &y) { return x *= y; }
    friend number operator/(number x, const number &y) { return x /= y; }
    friend number operator%(number x, const number &y) { return x %= y; }
    friend number operator-(number x) noexcept {
        number_negate(&x.record_);
        return x;
    }
    friend number abs(number x) noexcept {
        number_abs(&x.record_);
        return x;
    }
    // The lowest kept digit has the weight 10^pos.
    friend number round(number x, int pos = 0, number_rmode_e mode = NUMBER_RMODE_HALF_UP) {
        guarded([&] { number_round_at_withmode(&x.record_, pos, mode); });
        return x;
    }
    // Throw -5073 outside the domain; pow and exp throw -5068 and -5069 where a step leaves the range.
    friend number sqrt(number x) {
        guarded([&] { number_sqrt(&x.record_); });
        return x;
    }
    friend number pow(number x, const number &y) { return x.apply(number_pow, y); }
    friend number exp(number x) {
        guarded([&] { number_exp(&x.record_); });
        return x;
    }

    friend bool operator==(const number &x, const number &y) noexcept {
        return number_cmp(&x.record_, &y.record_) == 0;
    }
    friend std::strong_ordering operator<=>(const number &x, const number &y) noexcept {
        return number_cmp(&x.record_, &y.record_) <=> 0;
    }

    // Throws -5072 outside the range of the type; the fraction is cut off.
    int64_t to_int64() const {
        int64_t v = 0;
        guarded([&] { number_to_int64(&record_, &v); });
        return v;
    }
    double to_double() const {
        double v = 0;
        guarded([&] { number_to_double(&record_, &v); });
        return v;
    }
    // The normal (positional) form, in full: ".5", "-1200".
    std::string to_string() const {
        char text[NUMBER_NORMAL_TEXT_SIZE];
        guarded([&] { number_to_str(&record_, sizeof text, text, nullptr); });
        return text;
    }
    friend std::ostream &operator<<(std::ostream &out, const number &x) { return out << x.to_string(); }

    const number_t &record() const noexcept { return record_; }
    // The meaningful bytes from signexp on, whose bytewise order is the order of the values.
    std::span<const uint8_t> key() const noexcept { return {&record_.signexp, record_.size}; }

  private:
    number &apply(void (*operation)(number_t *, const number_t *), const number &y) {
        guarded([&] { operation(&record_, &y.record_); });
        return *this;
    }

    number_t record_;
};

// The type catalogue, for any code: what is no type of the table has no name, no size and no category, and
// converts to and compares with nothing.

inline bool is_type(dv_type_t type) noexcept { return type >= 0 && type < DV_TYPE_MAX_PSM; }

inline const char *type_name(dv_type_t type) noexcept { return is_type(type) ? _dv_type_name[type] : ""; }

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

#endif  // DVTYPES_DVTYPES_HPP
