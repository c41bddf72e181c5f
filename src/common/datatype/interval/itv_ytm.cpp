// INTERVAL YEAR TO MONTH: fields, arithmetic on the total of months, order, leading precision.
//
// A total is years * 12 + months; it becomes fields by division toward zero, which gives both one sign.
// Whatever does not fit wraps around, in unsigned arithmetic.

#include <limits>

#include "interval_internal.h"

using namespace dv::impl;

namespace {

bool is_ytm_given_(const dv_itv_ytm_t *ytm) { return DV_ASSERT(ytm != NULL); }

bool are_given_(const dv_itv_ytm_t *ytm1, const dv_itv_ytm_t *ytm2) {
    return DV_ASSERT(ytm1 != NULL && ytm2 != NULL);
}

void add_months_(dv_itv_ytm_t &itv, int32_t months) {
    itv_set_total_months(itv, int64_t{itv_total_months(itv)} + months);
}

// Cut toward zero, to the nearest value of 64 bits; NaN is 0.
int64_t to_int64_(double value) {
    using limits = std::numeric_limits<int64_t>;
    if (value != value) return 0;
    if (value >= 0x1p63) return limits::max();
    if (value < -0x1p63) return limits::min();
    return static_cast<int64_t>(value);
}

// Of a total in double precision, 32 bits are kept.
void set_months_(dv_itv_ytm_t &itv, double months) {
    itv_set_total_months(itv, static_cast<int32_t>(to_int64_(months)));
}

}  // namespace

extern "C" {

void dv_itv_ytm_set_field(dv_itv_ytm_t *itv, dt_fmt_unit_t unit_type, int value) {
    if (!is_itv_given(itv)) return;
    switch (unit_type) {
        case DT_FMT_UNIT_YEAR:
            return itv_set_years(*itv, value);
        case DT_FMT_UNIT_MONTH:
            return itv_set_months(*itv, value);
        default:
            DV_ASSERT(0);
    }
}

int dv_itv_ytm_get_field(const dv_itv_ytm_t *itv, dt_fmt_unit_t unit_type) {
    if (!is_itv_given(itv)) return 0;
    switch (unit_type) {
        case DT_FMT_UNIT_YEAR:
            return itv_years(*itv);
        case DT_FMT_UNIT_MONTH:
            return itv_months(*itv);
        default:
            DV_ASSERT(0);
            return 0;
    }
}

int64_t dv_itv_ytm_get_total_month(const dv_itv_ytm_t *itv) {
    return is_itv_given(itv) ? itv_total_months(*itv) : 0;
}

void dv_itv_ytm_set_total_month(dv_itv_ytm_t *itv, int64_t tm) {
    if (is_itv_given(itv)) itv_set_total_months(*itv, tm);
}

void dv_itv_ytm_add_year(dv_itv_ytm_t *itv, int value) {
    if (is_itv_given(itv)) itv_set_years(*itv, wrapped_sum(itv_years(*itv), value));
}

void dv_itv_ytm_add_month(dv_itv_ytm_t *itv, int value) {
    if (is_itv_given(itv)) add_months_(*itv, value);
}

void dv_itv_ytm_add_itv_ytm(dv_itv_ytm_t *ytm1, const dv_itv_ytm_t *ytm2) {
    if (are_given_(ytm1, ytm2)) add_months_(*ytm1, itv_total_months(*ytm2));
}

void dv_itv_ytm_sub_itv_ytm(dv_itv_ytm_t *ytm1, const dv_itv_ytm_t *ytm2) {
    if (are_given_(ytm1, ytm2)) add_months_(*ytm1, wrapped_product(itv_total_months(*ytm2), -1));
}

void dv_itv_ytm_mul(dv_itv_ytm_t *ytm, double dd) {
    if (is_ytm_given_(ytm)) set_months_(*ytm, itv_total_months(*ytm) * dd);
}

void dv_itv_ytm_div(dv_itv_ytm_t *ytm, double dd) {
    if (!is_ytm_given_(ytm)) return;
    if (dd == 0) raise(DV_ERR_ITV_DIVISION_BY_ZERO);
    set_months_(*ytm, itv_total_months(*ytm) / dd);
}

int dv_itv_ytm_compare(const dv_itv_ytm_t *itv1, const dv_itv_ytm_t *itv2) { return itv_compare(itv1, itv2); }

void dv_itv_ytm_check_leading_prec(const dv_itv_ytm_t *itv, int prec) {
    if (!is_itv_given(itv)) return;
    if (itv_years(*itv) >= itv_leading_limit(prec)) raise(DV_ERR_ITV_LEADING_PRECISION);
}

}  // extern "C"
