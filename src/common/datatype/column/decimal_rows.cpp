// Results of decimals: rounded, checked and stored.

#include "decimal_rows.h"

#include "../digits.h"
#include "../error.h"

namespace dv::impl {

namespace {

// Raises that a value, an integer in units of 10^-scale, has too many digits.
[[noreturn, gnu::cold, gnu::noinline]] void refuse_decimal(const signed_wide_t &value, int64_t scale,
                                                           const dv_decimal_column_t &result) {
    number_t number;
    cut_to_number(number, value, scale);
    char text[DV_ERROR_TEXT_MAX];
    number_to_str(&number, sizeof text, text, nullptr);
    raise(DV_ERR_NUMBER_PRECISION, static_cast<const char *>(text), result.precision, result.scale);
}

}  // namespace

// By way of a text of digits and an exponent.
void cut_to_number(number_t &x, const signed_wide_t &value, int64_t scale) {
    char digits[1 + wide_t::DIGITS_MAX + 6];
    char *const exponent = digits + 1 + wide_t::DIGITS_MAX;
    char *begin = exponent;
    wide_t rest = value.magnitude;
    do {
        const wide_quotient_t step = divide_wide(rest, 10);
        *--begin = static_cast<char>('0' + step.remainder);
        rest = step.quotient;
    } while (!rest.is_zero());
    if (value.negative) *--begin = '-';
    exponent[0] = 'E';
    exponent[1] = scale > 0 ? '-' : '+';
    store_text<uint32_t>(exponent + 2, eight_digits(static_cast<uint32_t>(scale > 0 ? scale : -scale)) >> 32);
    number_from_str(&x, static_cast<int>(digits + sizeof digits - begin), begin, nullptr);
}

void store_rounded(const dv_decimal_column_t &result, int64_t row, const signed_wide_t &value,
                   int64_t scale) {
    const wide_t limit = {0, ten_to(result.precision)};
    const int64_t more_digits = result.scale - scale;
    signed_wide_t rounded = {value.negative, round_digits(value.magnitude, -more_digits)};
    if (more_digits > 0 && !value.magnitude.is_zero()) {
        if (more_digits >= result.precision || !(value.magnitude < limit))
            refuse_decimal(value, scale, result);
        rounded.magnitude = multiply_wide(value.magnitude.low, ten_to(more_digits));
    }
    if (!(rounded.magnitude < limit)) refuse_decimal(rounded, result.scale, result);
    store_decimal_row(result, row, with_sign(value.negative, rounded.magnitude.low));
}

}  // namespace dv::impl
