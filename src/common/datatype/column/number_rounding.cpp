// The sign of NUMBERs in columns, rounding, precision and scale.

#include "dvtypes/column_number.h"
#include "number_rows.h"

using namespace dv::impl;

namespace {

struct negate_t {
    void operator()(number_t &x) const { mirror_digits(x); }
};
struct abs_t {
    void operator()(number_t &x) const {
        if (number_is_negative(x)) mirror_digits(x);
    }
};
struct round_t {
    int64_t places;
    int rmode;
    void operator()(number_t &x) const { number_round_to_places(&x, places, rmode); }
};
struct force_t {
    int prec, scale;
    void operator()(number_t &x) const { number_force_prec_scale(&x, prec, scale); }
};

}  // namespace

extern "C" void number_column_negate(const dv_column_t *x, dv_column_t *result, dv_column_faults_t *faults) {
    if (DV_ASSERT(are_columns(x, result))) change_numbers(x, result, faults, negate_t{});
}

extern "C" void number_column_abs(const dv_column_t *x, dv_column_t *result, dv_column_faults_t *faults) {
    if (DV_ASSERT(are_columns(x, result))) change_numbers(x, result, faults, abs_t{});
}

extern "C" void number_column_round_to_places(const dv_column_t *x, int64_t places, int rmode,
                                              dv_column_t *result, dv_column_faults_t *faults) {
    if (DV_ASSERT(are_columns(x, result))) change_numbers(x, result, faults, round_t{places, rmode});
}

extern "C" void number_column_force_prec_scale(const dv_column_t *x, int prec, int scale, dv_column_t *result,
                                               dv_column_faults_t *faults) {
    if (DV_ASSERT(are_columns(x, result))) change_numbers(x, result, faults, force_t{prec, scale});
}
