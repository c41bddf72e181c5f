// Columns of decimals for tests: rows from integers, and what a result must hold, by integers of 1024 bits.

#ifndef DV_TEST_DECIMAL_SUPPORT_H
#define DV_TEST_DECIMAL_SUPPORT_H

#include "column_support.h"
#include "dvtypes/column_decimal.h"

namespace dv::test {

__extension__ using int128 = __int128;
__extension__ using uint128 = unsigned __int128;

struct decimal_type_t {
    int bytes, precision, scale;
};

inline dv_decimal_column_t decimals(const dv_column_t &column, const decimal_type_t &type) {
    return {column, type.bytes, type.precision, type.scale};
}

inline values_t kind_of(const decimal_type_t &type) { return {values_t::fixed, type.bytes}; }

inline row_t decimal_row(const decimal_type_t &type, int128 value) {
    std::string bytes(static_cast<size_t>(type.bytes), '\0');
    const auto narrow = static_cast<int64_t>(value);
    std::memcpy(bytes.data(), type.bytes == 8 ? static_cast<const void *>(&narrow) : &value, bytes.size());
    return bytes;
}

inline int128 decimal_value(const std::string &row) {
    int64_t narrow = 0;
    int128 wide = 0;
    std::memcpy(row.size() == 8 ? static_cast<void *>(&narrow) : &wide, row.data(), row.size());
    return row.size() == 8 ? narrow : wide;
}

inline big_t big_of(int128 value) {
    const auto bits = static_cast<uint128>(value), magnitude = value < 0 ? 0 - bits : bits;
    const big_t big =
        (big_t(static_cast<uint64_t>(magnitude >> 64)) << 64) + static_cast<uint64_t>(magnitude);
    return value < 0 ? big_t(-big) : big;
}

inline big_t big_power_of_ten(int exponent) { return pow(big_t(10), static_cast<unsigned>(exponent)); }

// What a result holds of a value in units of 10^-scale: rounded half up, or -5111; beyond NUMBER -5068.
inline row_outcome_t stored_decimal(const decimal_type_t &type, big_t value, int scale) {
    const bool negative = value < 0;
    if (negative) value = -value;
    if (scale > type.scale) {
        const big_t unit = big_power_of_ten(scale - type.scale);
        value = (2 * value + unit) / (2 * unit);
    } else {
        value *= big_power_of_ten(type.scale - scale);
    }
    if (value >= big_power_of_ten(type.precision))
        return {value >= big_power_of_ten(126 + type.scale) ? -5068 : -5111, {}};
    const auto magnitude =
        static_cast<uint128>(static_cast<uint64_t>(value >> 64)) << 64 | static_cast<uint64_t>(value & ~0ull);
    return {0,
            decimal_row(type, negative ? -static_cast<int128>(magnitude) : static_cast<int128>(magnitude))};
}

inline constexpr decimal_type_t decimal_types[] = {{8, 18, 0},    {8, 18, 2},   {8, 10, 3},  {8, 18, 18},
                                                   {8, 5, -3},    {16, 38, 0},  {16, 38, 2}, {16, 38, 37},
                                                   {16, 20, -20}, {16, 38, 127}};

// The NUMBER of the same value as a decimal.
inline row_outcome_t decimal_from_number(const decimal_type_t &type, const number_t &x) {
    const decimal_t value = decode(x);
    const int scale = -value.exponent;
    big_t digits = value.digits;
    if (scale > type.scale) {
        const big_t unit = big_power_of_ten(scale - type.scale), kept = digits / unit;
        if (kept * unit != digits && abs(kept) < big_power_of_ten(type.precision)) return {-5072, {}};
        return stored_decimal(type, kept, type.scale);
    }
    return stored_decimal(type, digits, scale);
}

// Values of any length with a liking for the ends: of the type, of its precision, of powers of ten.
class decimal_source {
  public:
    explicit decimal_source(uint64_t seed) : numbers_(seed) {}

    int128 any(const decimal_type_t &type) {
        const int bits = 8 * type.bytes;
        int128 value = 0;
        switch (numbers_.pick(0, 5)) {
            case 0:
                value = static_cast<int128>((static_cast<uint128>(1) << (bits - 1)) +
                                            static_cast<uint128>(numbers_.pick(-2, 2)));
                break;
            case 1:
                value = power_(numbers_.pick(0, type.precision)) + numbers_.pick(-2, 2);
                break;
            case 2:
                value = 5 * power_(numbers_.pick(0, type.precision - 1)) + numbers_.pick(-1, 1);
                break;
            case 3:
                value = numbers_.pick(-20, 20);
                break;
            default:
                value = static_cast<int128>(static_cast<uint128>(numbers_.bits()) << 64 | numbers_.bits());
                value >>= numbers_.pick(0, 127);
        }
        if (numbers_.pick(0, 1) != 0) value = static_cast<int128>(0 - static_cast<uint128>(value));
        return bits == 64 ? static_cast<int64_t>(value) : value;
    }

    rows_t rows(const decimal_type_t &type, long count) {
        rows_t rows;
        for (long i = 0; i < count; ++i) {
            rows.push_back(numbers_.pick(0, 30) == 0 ? std::nullopt : decimal_row(type, any(type)));
        }
        return rows;
    }

    number_source &numbers() { return numbers_; }

  private:
    static int128 power_(int exponent) {
        int128 power = 1;
        for (; exponent > 0; --exponent) power *= 10;
        return power;
    }

    number_source numbers_;
};

}  // namespace dv::test

#endif  // DV_TEST_DECIMAL_SUPPORT_H
