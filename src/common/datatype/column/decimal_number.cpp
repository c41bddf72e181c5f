// Decimals from NUMBERs and to NUMBERs, exactly.
//
// A NUMBER of up to eight base-100 digits is brought to the scale by a shift of its digits by whole bytes,
// and by a division by ten where the scale is odd. Any other goes through all its forty decimal digits.

#include "../number/number_digits.h"
#include "column_run.h"
#include "decimal_rows.h"
#include "number_rows.h"

using namespace dv::impl;

namespace {

// False: more digits, digits below the scale, or too many in front of the point.
bool take_short_number_(const number_t &x, const dv_decimal_column_t &result, int128_t &value) {
    const number_head_t head = read_head(x);
    if (number_is_zero(x)) {
        value = 0;
        return true;
    }
    const int pairs_behind_point = (result.scale + 1) >> 1;  // floor: the scale may be negative
    const int kept = head.exponent + pairs_behind_point;
    if (head.count > COEF_WORD_DIGITS || kept <= 0 || kept > COEF_WORD_DIGITS) return false;

    const uint64_t digits = load_coef<1>(x, head).word[0];
    if ((digits & ~leading_digits_mask(kept)) != 0) return false;
    uint64_t magnitude = limb_from_digits(digits >> (8 * (COEF_WORD_DIGITS - kept)));
    if ((result.scale & 1) != 0) {
        if (magnitude % 10 != 0) return false;
        magnitude /= 10;
    }
    if (magnitude >= ten_to(result.precision)) return false;
    value = with_sign(head.sign != 0, magnitude);
    return true;
}

// A magnitude from 10^31 to below 10^38. An odd exponent moves its digits by one, into a 39th.
void store_long_decimal_(number_t &x, bool negative, uint128_t magnitude, int exponent) {
    uint64_t limbs[3] = {static_cast<uint64_t>(magnitude / LIMB_BASE / LIMB_BASE),
                         static_cast<uint64_t>(magnitude / LIMB_BASE % LIMB_BASE),
                         static_cast<uint64_t>(magnitude % LIMB_BASE)};
    if ((exponent & 1) != 0) {
        uint64_t carry = 0;
        for (int i = 2; i >= 0; --i) {
            const uint64_t product = limbs[i] * 10 + carry;
            carry = product / LIMB_BASE;
            limbs[i] = product % LIMB_BASE;
        }
        --exponent;
    }
    long_coef coef = {{digits_from_limb(limbs[0]), digits_from_limb(limbs[1]), digits_from_limb(limbs[2])}};
    const int leading_zeros = coef_normalize(coef);
    store_coef(x, negative, 3 * COEF_WORD_DIGITS - leading_zeros + exponent / 2, coef);
}

constexpr uint128_t _short_end =
    uint128_t{LIMB_BASE} * (LIMB_BASE / 10);  // 10^31, below which store_decimal works

// False: 39 digits that do not end in 0.
bool take_decimal_(int128_t value, int scale, number_t &x) {
    uint128_t magnitude = magnitude_of(value);
    int exponent = -scale;
    if (magnitude < LIMB_BASE / 10) [[likely]] {  // digits pair up at even powers of ten
        const int odd = exponent & 1;
        store_limb(x, value < 0, static_cast<uint64_t>(magnitude) * (odd != 0 ? 10 : 1),
                   (exponent - odd) / 2);
        return true;
    }
    if (magnitude < _short_end) {
        store_decimal(x, value < 0, magnitude, exponent);
        return true;
    }
    if (magnitude >= ten_to(DECIMAL_DIGITS_MAX)) {
        if (magnitude % 10 != 0) return false;
        magnitude /= 10;
        ++exponent;
    }
    store_long_decimal_(x, value < 0, magnitude, exponent);
    return true;
}

struct from_number_t {
    const dv_column_t *operand[1];
    dv_column_t *result;
    const dv_decimal_column_t *z;

    uint64_t block(int64_t begin, int /*count*/, uint64_t &valid) const {
        if (operand[0]->offsets != nullptr) return valid;
        uint64_t none = 0;
        const uint64_t left = try_rows(begin, valid, /*appends=*/false, [&](int64_t row) {
            const auto &x = value_at<const number_t>(*operand[0], row);
            none |= uint64_t{x.size == 0} << (row - begin);
            int128_t value;
            if (!take_short_number_(x, *z, value)) return false;
            store_decimal_row(*z, row, value);
            return true;
        });
        valid &= ~none;
        return left;
    }

    bool row(int64_t row) const {
        number_t buffer;
        const number_t *const x = number_at(*operand[0], row, buffer);
        if (x == nullptr) return false;
        store_number(*z, row, *x);
        return true;
    }

    void no_value(int64_t /*row*/) const {}
};

struct to_number_t {
    const dv_column_t *operand[1];
    dv_column_t *result;
    const dv_decimal_column_t *x;
    number_result_t values{result};

    // By offsets a row may find no room, which only row() may report.
    uint64_t block(int64_t begin, int /*count*/, const uint64_t &valid) const {
        if (result->offsets != nullptr) return valid;
        return try_rows(begin, valid, /*appends=*/false, [&](int64_t row) {
            return take_decimal_(load_decimal(*x, row), x->scale, value_at<number_t>(*result, row));
        });
    }

    bool row(int64_t row) {
        number_t buffer;
        number_t &value = values.place_of(row, buffer);
        if (!take_decimal_(load_decimal(*x, row), x->scale, value)) raise(DV_ERR_NUMBER_TARGET_RANGE);
        values.keep(row, value);
        return true;
    }

    void no_value(int64_t row) const { values.store_none(row); }
};

}  // namespace

void dv::impl::store_number(const dv_decimal_column_t &result, int64_t row, const number_t &x) {
    int128_t value;
    if (take_short_number_(x, result, value)) return store_decimal_row(result, row, value);

    const number_head_t head = read_head(x);
    const record_limbs_t limbs = load_limbs(x, head);  // 40 decimal digits behind the point
    const wide_t digits = multiply_wide(limbs.first, ten_to(24)) + multiply_wide(limbs.second, ten_to(8)) +
                          wide_t{0, limbs.last};
    const bool negative = head.sign != 0;
    const int64_t scale = 2 * (int64_t{NUMBER_DIGITS_MAX} - head.exponent);  // of all digits
    if (scale <= result.scale) return store_rounded(result, row, {negative, digits}, scale);
    const cut_wide_t cut = cut_digits(digits, scale - result.scale);
    if (!cut.is_exact && cut.kept < wide_t{0, ten_to(result.precision)}) raise(DV_ERR_NUMBER_TARGET_RANGE);
    store_rounded(result, row, {negative, cut.kept}, result.scale);
}

extern "C" void dv_decimal_column_from_number(const dv_column_t *x, dv_decimal_column_t *result,
                                              dv_column_faults_t *faults) {
    if (!DV_ASSERT(is_decimal_beside(x, result))) return;
    from_number_t operation = {{x}, &result->column, result};
    column_run(operation, x->count, faults);
}

extern "C" void dv_decimal_column_to_number(const dv_decimal_column_t *x, dv_column_t *result,
                                            dv_column_faults_t *faults) {
    if (!DV_ASSERT(is_decimal_beside(result, x))) return;
    to_number_t operation = {{&x->column}, result, x};
    column_run(operation, result->count, faults);
}
