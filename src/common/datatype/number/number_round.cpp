// Rounding at a decimal position in seven modes, and a column's precision and scale.
//
// Decimal positions are powers of ten: rounding at p keeps the digit of weight 10^p and drops those below.
// Every mode is one decision (rounds_away) from the sign, the last kept digit, the first dropped digit and
// whether anything follows it.

#include "number_round.h"

using namespace dv::impl;

extern "C" {
int _number_roundmode = NUMBER_RMODE_HALF_UP;
}

namespace {

// Rounds where every digit is dropped and the first one does not touch the kept part: to zero, or to the unit
// 10^pos.
void round_far_above_(number_t &x, int64_t pos, int rmode) {
    const bool negative = number_is_negative(x);
    constexpr cut_digits_t all_dropped = {/*last_kept_is_odd=*/false, /*first_dropped=*/0, /*rest=*/true};
    if (!rounds_away(rmode, negative, all_dropped)) return store_zero(x);
    const uint64_t unit = pos % 2 != 0 ? 10 : 1;
    store_coef(x, negative, static_cast<int>(pos >> 1) + 1, short_coef{{unit << 56}});
}

}  // namespace

void dv::impl::report_unknown_rmode() { assert_failed("false"); }

void dv::impl::raise_rounding_overflow() {
    raise(error_at(DV_ERR_NUMBER_OVERFLOW, __FILE__, __LINE__, "number_round_at_withmode"));
}

void dv::impl::number_round_at(number_t &x, int64_t pos, int rmode) {
    if (number_is_zero(x)) return;
    long_coef coef = load_coef<3>(x);
    int exponent = number_exponent(x);
    const decimal_cut_t cut = cut_below(exponent, pos);
    if (cut.place > NUMBER_DIGITS_MAX) return;
    if (pos > decimal_exponent(exponent, coef_digit(coef, 0)) + 1) {
        if (pos / 2 > NUMBER_EXPONENT_MAX - 1) raise_rounding_overflow();
        return round_far_above_(x, pos, rmode);
    }
    round_coef(coef, exponent, number_is_negative(x), cut, /*rest_beyond=*/false, rmode);
    if (coef_is_zero(coef)) return store_zero(x);
    if (exponent > NUMBER_EXPONENT_MAX) raise_rounding_overflow();
    store_coef(x, number_is_negative(x), exponent, coef);
}

extern "C" void number_set_roundmode(int rmode) {
    __atomic_store_n(&_number_roundmode, rmode, __ATOMIC_RELAXED);
}

extern "C" int number_get_roundmode(void) { return current_rmode(); }

extern "C" void number_round_at_withmode(number_t *x, int pos, int rmode) {
    if (!DV_ASSERT(number_is_valid_ptr(x)) && !given(x)) return;
    number_round_at(*x, pos, rmode);
}

extern "C" int number_check_prec_scale(const number_t *x, int prec, int scale) {
    if (!DV_ASSERT(number_is_valid_ptr(x)) && !given(x)) return 0;
    if (number_is_zero(*x)) return 1;
    const long_coef coef = load_coef<3>(*x);
    const int64_t integer_digits = decimal_exponent(number_exponent(*x), coef_digit(coef, 0)) + 1;
    if (prec != NUMBER_NOT_GIVEN && integer_digits + scale > prec) return 0;
    if (scale == NUMBER_NOT_GIVEN) return 1;
    return lowest_decimal_position(number_exponent(*x), coef) >= -static_cast<int64_t>(scale);
}

extern "C" void number_force_prec_scale(number_t *x, int prec, int scale) {
    if (!DV_ASSERT(number_is_valid_ptr(x)) && !given(x)) return;
    if (scale != NUMBER_NOT_GIVEN) number_round_at(*x, -static_cast<int64_t>(scale), NUMBER_RMODE_HALF_UP);
    if (prec == NUMBER_NOT_GIVEN || number_is_zero(*x)) return;

    const long_coef coef = load_coef<3>(*x);
    const int64_t integer_digits = decimal_exponent(number_exponent(*x), coef_digit(coef, 0)) + 1;
    if (scale == NUMBER_NOT_GIVEN) {
        if (prec <= 0) return store_zero(*x);
        return number_round_at(*x, integer_digits - prec, NUMBER_RMODE_HALF_UP);
    }
    if (integer_digits + scale > prec) {
        char text[DV_ERROR_TEXT_MAX];  // what an argument holds; a longer value is in scientific form
        number_to_str(x, sizeof text, text, nullptr);
        raise(DV_ERR_NUMBER_PRECISION, static_cast<const char *>(text), prec, scale);
    }
}
