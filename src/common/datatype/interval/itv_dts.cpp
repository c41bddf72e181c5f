// INTERVAL DAY TO SECOND: fields, arithmetic on the total of seconds and on the nanoseconds, products and
// quotients with a NUMBER, order, precision.
//
// A total of seconds becomes days and seconds by division toward zero, which gives both one sign. Nanoseconds
// carry into the seconds alone, and stay there past a whole day. Whatever does not fit wraps around, in
// unsigned arithmetic.

#include <algorithm>
#include <cfloat>
#include <cmath>

#include "../number/number_internal.h"
#include "interval_internal.h"

using namespace dv::impl;

namespace {

bool is_dts_given_(const dv_itv_dts_t *dts) { return DV_ASSERT(dts != NULL); }

bool are_given_(const dv_itv_dts_t *dts1, const dv_itv_dts_t *dts2) {
    return DV_ASSERT(dts1 != NULL) && DV_ASSERT(dts2 != NULL);
}

bool is_factor_given_(const dv_itv_dts_t *dts, const number_t *dd) {
    return is_dts_given_(dts) && DV_ASSERT(number_is_valid_ptr(dd));
}

constexpr int64_t wrapped_sum_(int64_t x, int64_t y) {
    return static_cast<int64_t>(static_cast<uint64_t>(x) + static_cast<uint64_t>(y));
}

void add_seconds_(dv_itv_dts_t &itv, int64_t seconds) {
    itv_set_total_seconds(itv, wrapped_sum_(itv_total_seconds(itv), seconds));
}

// ---- nanoseconds ----

constexpr double _nsec_per_sec = NSEC_PER_SEC;

// Cut toward zero, 32 bits of it kept.
int32_t wrapped_int32_(double value) {
    if (!(std::fabs(value) < 0x1p63)) value = std::fmod(value, 0x1p32);
    return static_cast<int32_t>(static_cast<int64_t>(value));
}

struct carry_t {
    double nsec;
    int64_t seconds;  // of its value 32 bits count
};

// Takes whole seconds out of nanoseconds. What stays has the sign of nsec and is below a second.
//
// Exact, as if second after second were taken: a rest is a multiple of the last place of nsec. From 2^62 on
// that place is no divisor of a second; there the period of the wrapping seconds is taken out first.
carry_t whole_seconds_(double nsec) {
    if (std::fabs(nsec) < _nsec_per_sec) return {nsec, 0};
    if (std::fabs(nsec) >= 0x1p62) nsec = std::fmod(nsec, 0x1p32 * _nsec_per_sec);
    const double rest = std::fmod(nsec, _nsec_per_sec);
    return {rest, static_cast<int64_t>((nsec - rest) / _nsec_per_sec)};
}

// The carry that gives a sum of nanoseconds the sign of the seconds. A sum of the other sign borrows; its
// last step rounds, so that the least sum below a second is a whole one and stays so.
carry_t carry_of_(int32_t seconds, double nsec) {
    if (seconds == 0 && nsec < 0) return {nsec, 0};
    carry_t carry = whole_seconds_(nsec);
    if (seconds > 0 && carry.nsec < 0) return {carry.nsec + _nsec_per_sec, carry.seconds - 1};
    if (seconds < 0 && carry.nsec > 0) return {carry.nsec - _nsec_per_sec, carry.seconds + 1};
    return carry;
}

void add_nanoseconds_(dv_itv_dts_t &itv, double value) {
    if (std::isnan(value)) value = 0;
    const int32_t seconds = itv_seconds(itv);
    const double sum = std::clamp(itv_nanoseconds(itv) + value, -DBL_MAX, DBL_MAX);
    const carry_t carry = carry_of_(seconds, sum);
    itv_set_seconds(itv, wrapped_sum(seconds, static_cast<int32_t>(carry.seconds)));
    itv_set_nanoseconds(itv, wrapped_int32_(carry.nsec));
}

// ---- totals as floating point and NUMBER ----

bool is_valid_dts_val_(double days) { return days >= INT32_MIN && days <= INT32_MAX; }

void set_total_(dv_itv_dts_t &dts, double total_secs) {
    const double days = std::trunc(total_secs / SEC_PER_DAY);
    if (!is_valid_dts_val_(days))
        raise(error_at(DV_ERR_ITV_TOTAL_SECONDS, __FILE__, __LINE__, "dv_itv_dts_set_total_sec"));
    itv_set_days(dts, static_cast<int32_t>(days));
    itv_set_seconds(dts, static_cast<int32_t>(total_secs - days * SEC_PER_DAY));
}

// Seconds with their fraction; exact.
void total_to_number_(const dv_itv_dts_t &dts, number_t &total) {
    number_t fraction;
    number_from_int64(&total, itv_total_seconds(dts));
    number_from_int32(&fraction, itv_nanoseconds(dts));
    number_div(&fraction, n1000000000);
    number_add(&total, &fraction);
}

void set_total_from_number_(dv_itv_dts_t &dts, const number_t &total) {
    number_t whole;
    number_copy(whole, total);
    number_round_at(whole, 0, NUMBER_RMODE_TRUNC);
    double total_secs = 0;
    number_to_double(&whole, &total_secs);
    set_total_(dts, total_secs);

    number_t fraction;
    number_copy(fraction, total);
    number_sub(&fraction, &whole);
    number_mul(&fraction, n1000000000);
    number_round_at(fraction, 0, NUMBER_RMODE_TRUNC);
    int32_t nsec = 0;
    number_to_int32(&fraction, &nsec);
    itv_set_nanoseconds(dts, nsec);
}

}  // namespace

extern "C" {

void dv_itv_dts_set_field(dv_itv_dts_t *itv, dt_fmt_unit_t unit_type, int value) {
    if (!is_itv_given(itv)) return;
    switch (unit_type) {
        case DT_FMT_UNIT_DAY:
            return itv_set_days(*itv, value);
        case DT_FMT_UNIT_SECOND:
            return itv_set_seconds(*itv, value);
        case DT_FMT_UNIT_FSEC:
            return itv_set_nanoseconds(*itv, value);
        default:
            DV_ASSERT(0);
    }
}

int dv_itv_dts_get_field(const dv_itv_dts_t *itv, dt_fmt_unit_t unit_type) {
    if (!is_itv_given(itv)) return 0;
    switch (unit_type) {
        case DT_FMT_UNIT_DAY:
            return itv_days(*itv);
        case DT_FMT_UNIT_SECOND:
            return itv_seconds(*itv);
        case DT_FMT_UNIT_FSEC:
            return itv_nanoseconds(*itv);
        default:
            DV_ASSERT(0);
            return 0;
    }
}

int64_t dv_itv_dts_get_total_sec(const dv_itv_dts_t *dts) {
    return is_dts_given_(dts) ? itv_total_seconds(*dts) : 0;
}

void dv_itv_dts_add_sec(dv_itv_dts_t *itv, int64_t value) {
    if (is_itv_given(itv)) add_seconds_(*itv, value);
}

void dv_itv_dts_add_min(dv_itv_dts_t *itv, int value) {
    if (is_itv_given(itv)) add_seconds_(*itv, wrapped_product(value, SEC_PER_MINUTE));
}

void dv_itv_dts_add_hour(dv_itv_dts_t *itv, int value) {
    if (is_itv_given(itv)) add_seconds_(*itv, wrapped_product(value, SEC_PER_HOUR));
}

void dv_itv_dts_add_day(dv_itv_dts_t *itv, int value) {
    if (is_itv_given(itv)) itv_set_days(*itv, wrapped_sum(itv_days(*itv), value));
}

void dv_itv_dts_add_fsec(dv_itv_dts_t *itv, double value) {
    if (is_itv_given(itv)) add_nanoseconds_(*itv, value);
}

void dv_itv_dts_set_total_sec(dv_itv_dts_t *dts, double total_secs) {
    if (is_dts_given_(dts)) set_total_(*dts, total_secs);
}

void dv_itv_dts_add_itv_dts(dv_itv_dts_t *dts1, const dv_itv_dts_t *dts2) {
    if (!are_given_(dts1, dts2)) return;
    const double nsec = itv_nanoseconds(*dts2);
    add_seconds_(*dts1, itv_total_seconds(*dts2));
    add_nanoseconds_(*dts1, nsec);
}

void dv_itv_dts_sub_itv_dts(dv_itv_dts_t *dts1, const dv_itv_dts_t *dts2) {
    if (!are_given_(dts1, dts2)) return;
    const double nsec = itv_nanoseconds(*dts2);
    add_seconds_(*dts1, -itv_total_seconds(*dts2));
    add_nanoseconds_(*dts1, -nsec);
}

void dv_itv_dts_mul(dv_itv_dts_t *dts, const number_t *dd) {
    if (!is_factor_given_(dts, dd)) return;
    number_t total;
    total_to_number_(*dts, total);
    number_mul(&total, dd);
    set_total_from_number_(*dts, total);
}

void dv_itv_dts_div(dv_itv_dts_t *dts, const number_t *dd) {
    if (!is_factor_given_(dts, dd)) return;
    if (number_is_zero(*dd)) raise(DV_ERR_ITV_DIVISION_BY_ZERO);
    number_t total;
    total_to_number_(*dts, total);
    number_div(&total, dd);
    set_total_from_number_(*dts, total);
}

int dv_itv_dts_compare(const dv_itv_dts_t *itv1, const dv_itv_dts_t *itv2) { return itv_compare(itv1, itv2); }

void dv_itv_dts_check_leading_prec(const dv_itv_dts_t *itv, int prec) {
    if (!is_itv_given(itv)) return;
    if (itv_days(*itv) >= itv_leading_limit(prec)) raise(DV_ERR_ITV_LEADING_PRECISION);
}

void dv_itv_dts_trim_fsec(dv_itv_dts_t *itv, int fprec) {
    if (!is_itv_given(itv)) return;
    if (fprec < 0 || fprec > FRACTION_DIGITS) raise(DV_ERR_ITV_TRIM_PRECISION);
    itv_set_nanoseconds(*itv, trimmed_fraction(itv_nanoseconds(*itv), fprec));
}

}  // extern "C"
