// NUMBER in SQL: its stored form and its scalar functions.
//
// The stored form is the record without its size byte, which the length of the BLOB gives. A BLOB is taken
// for a NUMBER only when it is the one record that the library would write for a value.

#include <algorithm>

#include "../common/datatype/number/number_internal.h"
#include "sql_function.h"

using namespace dv::impl;

namespace {

// ---------------------------------------------------------------------------------------------------------
// Stored form
// ---------------------------------------------------------------------------------------------------------

// A digit byte as a digit; outside 0..99 when it is none. A digit byte of a negative value is mirrored.
int digit_(uint8_t byte, bool negative) {
    return negative ? NUMBER_DIGIT_EXCESS - byte : byte - NUMBER_DIGIT_EXCESS;
}

// What is wrong with the digits of a record that is not zero; NULL when nothing is.
const char *digits_fault_(const number_t &x) {
    const bool negative = number_is_negative(x);
    const int count = x.size - 1 - (negative ? 1 : 0);
    if (count < 1) return "a NUMBER needs a digit";
    if (count > NUMBER_DIGITS_MAX) return "it is too long for a NUMBER";
    if (negative && x.coef[count] != NUMBER_TOP) return "a negative NUMBER needs its terminator";
    for (int i = 0; i < count; ++i) {
        const int digit = digit_(x.coef[i], negative);
        if (digit < 0 || digit > 99) return "a NUMBER digit is out of range";
    }
    const int first = digit_(x.coef[0], negative);
    const int last = digit_(x.coef[count - 1], negative);
    if (first == 0 || last == 0) return "a NUMBER neither begins nor ends with a zero digit";
    if (count == NUMBER_DIGITS_MAX && (first >= 10 || last % 10 != 0))
        return "a NUMBER has at most 38 digits";
    return nullptr;
}

const char *decode_(sql_value &value, const uint8_t *bytes, int length) {
    if (length < 1) return "a NUMBER needs its exponent";
    if (length > NUMBER_SIZE_MAX) return "it is too long for a NUMBER";
    number_t &x = value.number;
    x.size = static_cast<uint8_t>(length);
    std::copy_n(bytes, length, &x.signexp);
    if (length == 1 && x.signexp == NUMBER_SIGNEXP_ZERO) return nullptr;
    return digits_fault_(x);
}

int encode_(const sql_value &value, uint8_t *bytes) {
    const number_t &x = value.number;
    std::copy_n(&x.signexp, x.size, bytes);
    return x.size;
}
static_assert(NUMBER_SIZE_MAX < SQL_STORED_SIZE_MAX);

// ---------------------------------------------------------------------------------------------------------
// Functions: in place on the first argument, as in the library
// ---------------------------------------------------------------------------------------------------------

template <void (*Operation)(number_t *)>
void unary_(sql_call &call) {
    Operation(&call.args[0].number);
    sql_return(call.context, call.args[0]);
}

template <void (*Operation)(number_t *, const number_t *)>
void binary_(sql_call &call) {
    Operation(&call.args[0].number, &call.args[1].number);
    sql_return(call.context, call.args[0]);
}

void from_text_(sql_call &call) {
    const sql_text text = call.args[0].text;
    call.args[0].kind = SQL_KIND_NUMBER;
    number_from_str(&call.args[0].number, text.length, text.bytes,
                    nullptr);  // length 0: up to the NUL, empty too
    sql_return(call.context, call.args[0]);
}

// The scientific form of any value fits this buffer, so no text is ever shortened.
void to_text_(sql_call &call) {
    char text[NUMBER_SCIENTIFIC_TEXT_SIZE];
    number_to_str(&call.args[0].number, sizeof text, text, nullptr);
    sql_return(call.context, sql_text_value(text, static_cast<int>(strlen(text))));
}

void compare_(sql_call &call) {
    const int order = number_cmp(&call.args[0].number, &call.args[1].number);
    sql_return(call.context, sql_integer(order < 0 ? -1 : order > 0 ? 1 : 0));
}

constexpr int64_t _leftmost_place = -2 * int64_t{NUMBER_EXPONENT_MAX};  // nothing is above 10^126
constexpr int64_t _rightmost_place =
    2 * int64_t{NUMBER_DIGITS_MAX - NUMBER_EXPONENT_MIN};  // nor below 10^-168

// Is |x| less than half of the unit at the leftmost place, 10^126?
bool rounds_to_zero_on_the_left_(number_t x) {
    number_t half;
    number_from_str(&half, 0, "5E125", nullptr);
    number_abs(&x);
    return number_cmp(&x, &half) < 0;
}

void round_at_(sql_value &value, int64_t places, number_rmode_e mode) {
    // The library refuses units beyond its range even where they round to zero.
    if (places < _leftmost_place ||
        (places == _leftmost_place &&
         (mode == NUMBER_RMODE_TRUNC || rounds_to_zero_on_the_left_(value.number)))) {
        return store_zero(value.number);
    }
    const auto pos = static_cast<int>(-std::min(places, _rightmost_place));
    number_round_at_withmode(&value.number, pos, mode);
}

template <number_rmode_e Mode>
void round_(sql_call &call) {
    round_at_(call.args[0], 0, Mode);
    sql_return(call.context, call.args[0]);
}

template <number_rmode_e Mode>
void round_to_places_(sql_call &call) {
    round_at_(call.args[0], call.args[1].integer, Mode);
    sql_return(call.context, call.args[0]);
}

constexpr int _scale_limit = 127;  // of either sign; -128 means none

bool is_precision_(const sql_call &call) {
    const int64_t precision = call.args[1].integer;
    if (precision >= 1 && precision <= NUMBER_PRECISION_MAX) return true;
    sql_fail_with_text(call, "the precision lies in 1..38");
    return false;
}

bool is_scale_(const sql_call &call) {
    const int64_t scale = call.args[2].integer;
    if (scale >= -_scale_limit && scale <= _scale_limit) return true;
    sql_fail_with_text(call, "the scale lies in -127..127");
    return false;
}

void cast_(sql_call &call, int scale) {
    number_force_prec_scale(&call.args[0].number, static_cast<int>(call.args[1].integer), scale);
    sql_return(call.context, call.args[0]);
}

void cast_to_precision_(sql_call &call) {
    if (is_precision_(call)) cast_(call, NUMBER_NOT_GIVEN);
}

void cast_to_precision_and_scale_(sql_call &call) {
    if (is_precision_(call) && is_scale_(call)) cast_(call, static_cast<int>(call.args[2].integer));
}

constexpr sql_kind _number = SQL_KIND_NUMBER;
constexpr sql_kind _integer = SQL_KIND_INTEGER;

constexpr sql_function _functions[] = {
    {"to_number", {SQL_KIND_TEXT}, from_text_},
    {"to_number", {_number}, sql_return_argument},
    {"to_char", {_number}, to_text_},
    {"dv_text", {_number}, to_text_},
    {"dv_add", {_number, _number}, binary_<number_add>},
    {"dv_sub", {_number, _number}, binary_<number_sub>},
    {"dv_mul", {_number, _number}, binary_<number_mul>},
    {"dv_div", {_number, _number}, binary_<number_div>},
    {"dv_mod", {_number, _number}, binary_<number_mod>},
    {"dv_rem", {_number, _number}, binary_<number_rem>},
    {"dv_sqrt", {_number}, unary_<number_sqrt>},
    {"dv_exp", {_number}, unary_<number_exp>},
    {"dv_power", {_number, _number}, binary_<number_pow>},
    {"dv_neg", {_number}, unary_<number_negate>},
    {"dv_abs", {_number}, unary_<number_abs>},
    {"dv_round", {_number}, round_<NUMBER_RMODE_HALF_UP>},
    {"dv_round", {_number, _integer}, round_to_places_<NUMBER_RMODE_HALF_UP>},
    {"dv_trunc", {_number}, round_<NUMBER_RMODE_TRUNC>},
    {"dv_trunc", {_number, _integer}, round_to_places_<NUMBER_RMODE_TRUNC>},
    {"dv_cmp", {_number, _number}, compare_},
    {"dv_cast_number", {_number, _integer}, cast_to_precision_},
    {"dv_cast_number", {_number, _integer, _integer}, cast_to_precision_and_scale_},
};

}  // namespace

constinit const sql_type dv::impl::number_type = {SQL_KIND_NUMBER, "NUMBER", "to_number", decode_, encode_};

constinit const sql_function_table dv::impl::number_functions = _functions;
