// The sign of NUMBERs in columns, rounding, precision and scale. Most values have no more decimals than they
// are rounded to: that is asked first.

#include "../number/number_round.h"
#include "../number/number_short.h"
#include "dvtypes/column_number.h"
#include "number_rows.h"

namespace dv::impl {
namespace {

// Rounding to the decimal digit of weight 10^pos, half up or toward zero, of values with no more digits in
// front of the point than so many.
struct number_rounding_t {
    int64_t pos;
    bool half_up;
    int64_t integer_digits_max;
};

// Each returns the rows of `valid` that are left. It reads and writes no other rows than those of the block.
struct number_rounding_kernels_t {
    using change_t = uint64_t(records_t from, int count, uint64_t valid, records_t to);
    change_t *negate, *abs;
    uint64_t (*round)(records_t from, int count, uint64_t valid, records_t to,
                      const number_rounding_t &rounding);
};

}  // namespace

namespace plain {
namespace {

uint64_t leave(records_t /*from*/, int /*count*/, uint64_t valid, records_t /*to*/) { return valid; }
uint64_t leave(records_t /*from*/, int /*count*/, uint64_t valid, records_t /*to*/,
               const number_rounding_t & /*rounding*/) {
    return valid;
}

constexpr number_rounding_kernels_t kernels = {leave, leave, leave};

}  // namespace
}  // namespace plain
}  // namespace dv::impl

#define DV_AVX512_KERNELS "number_rounding_kernels.h"
#include "kernels_by_level.h"

using namespace dv::impl;

namespace {

// Positions at which kernels round; beyond them lies no digit of theirs.
constexpr int _position_max = 100;

struct negate_t {
    uint64_t change_block(records_t from, int count, uint64_t valid, records_t to) const {
        return kernels_in_use().negate(from, count, valid, to);
    }
    void operator()(number_t &x) const { mirror_digits(x); }
    bool try_change(number_t &x) const {
        mirror_digits(x);
        return true;
    }
};
struct abs_t {
    uint64_t change_block(records_t from, int count, uint64_t valid, records_t to) const {
        return kernels_in_use().abs(from, count, valid, to);
    }
    void operator()(number_t &x) const {
        if (number_is_negative(x)) mirror_digits(x);
    }
    bool try_change(number_t &x) const {
        (*this)(x);
        return true;
    }
};

// Weight, as a power of ten, of the last decimal digit that is not 0 of a record with sound outer digits.
int lowest_position_(const number_t &x) {
    const number_head_t head = read_head(x);
    const bool is_tens = outer_digits_of(x, head).last % 10 == 0;
    return 2 * (head.exponent - head.count) + (is_tens ? 1 : 0);
}

int64_t integer_digits_(const number_t &x) {
    const number_head_t head = read_head(x);
    return decimal_exponent(head.exponent, outer_digits_of(x, head).first) + 1;
}

// Rounding at a position, and what a carry adds, stay within the range of NUMBER.
bool rounds_within_range_(const number_t &x, int64_t pos) {
    return pos <= _position_max && number_exponent(x) < NUMBER_EXPONENT_MAX;
}

struct round_t {
    int64_t places;
    int rmode;

    uint64_t change_block(records_t from, int count, uint64_t valid, records_t to) const {
        const bool half_up = rmode == NUMBER_RMODE_HALF_UP;
        const bool has_kernel = half_up || rmode == NUMBER_RMODE_TRUNC;
        if (!has_kernel || places < -_position_max || places > _position_max) return valid;
        return kernels_in_use().round(from, count, valid, to, {-places, half_up, INT64_MAX});
    }
    void operator()(number_t &x) const { number_round_to_places(&x, places, rmode); }
    bool try_change(number_t &x) const {
        if (places < NUMBER_PLACES_MIN || places > NUMBER_PLACES_MAX) return false;
        if (number_is_zero(x)) return true;
        if (!has_sound_ends(x, read_head(x))) return false;
        if (lowest_position_(x) >= -places) return true;
        if (!rounds_within_range_(x, -places)) return false;
        number_round_at(x, -places, rmode);
        return true;
    }
};

struct force_t {
    int prec, scale;

    uint64_t change_block(records_t from, int count, uint64_t valid, records_t to) const {
        if (prec == NUMBER_NOT_GIVEN || scale < -_position_max || scale > _position_max) return valid;
        return kernels_in_use().round(from, count, valid, to,
                                      {-int64_t{scale}, /*half_up=*/true, int64_t{prec} - scale});
    }
    void operator()(number_t &x) const { number_force_prec_scale(&x, prec, scale); }
    bool try_change(number_t &x) const {
        if (number_is_zero(x)) return true;
        if (prec == NUMBER_NOT_GIVEN || scale == NUMBER_NOT_GIVEN) return false;
        if (!has_sound_ends(x, read_head(x))) return false;
        const int64_t integer_digits_max = int64_t{prec} - scale;
        if (lowest_position_(x) >= -int64_t{scale}) return integer_digits_(x) <= integer_digits_max;
        if (!rounds_within_range_(x, -int64_t{scale})) return false;
        if (integer_digits_(x) < integer_digits_max) {  // a carry fits, too
            number_round_at(x, -int64_t{scale}, NUMBER_RMODE_HALF_UP);
            return true;
        }
        number_t rounded = x;
        number_round_at(rounded, -int64_t{scale}, NUMBER_RMODE_HALF_UP);
        const bool fits = number_is_zero(rounded) || integer_digits_(rounded) <= integer_digits_max;
        if (fits) x = rounded;
        return fits;
    }
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
