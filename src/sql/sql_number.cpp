// NUMBER in SQL: its bytes and its scalar functions.
//
// The bytes are the record without its size, which their length gives. They are taken for a NUMBER only when
// they are the one record that the library would write for a value.

#include <cstring>

#include "dvtypes/column_number.h"
#include "sql_column.h"
#include "sql_try.h"

using namespace dv::impl;

namespace {

// ---------------------------------------------------------------------------------------------------------
// Bytes
// ---------------------------------------------------------------------------------------------------------

constexpr size_t _short_digits = 8;  // bytes of digits that are copied as one word

uint64_t big_endian_(const uint8_t *bytes) {
    return uint64_t{bytes[0]} << 24 | uint64_t{bytes[1]} << 16 | uint64_t{bytes[2]} << 8 | bytes[3];
}

// Copies up to eight digit bytes and writes zeros behind them: one store, since they are read next as a word,
// which would have to wait for several.
void copy_short_digits_(uint8_t *coef, const uint8_t *bytes, size_t count) {
    uint64_t word = 0;
    if (count >= 4) {
        word = big_endian_(bytes) << 32 | big_endian_(bytes + count - 4) << 8 * (_short_digits - count);
    } else if (count != 0) {
        for (const size_t at : {size_t{0}, count / 2, count - 1})
            word |= uint64_t{bytes[at]} << (56 - 8 * at);
    }
    for (size_t i = 0; i < _short_digits; ++i) coef[i] = static_cast<uint8_t>(word >> (56 - 8 * i));
}

const char *decode_(sql_value &value, const uint8_t *bytes, int length) {
    if (length > SQL_VALUE_SIZE_MAX) return "it is too long for a NUMBER";
    number_t &x = value.number;
    x.size = static_cast<uint8_t>(length);
    if (length > 0 && static_cast<size_t>(length) <= 1 + _short_digits) {
        x.signexp = bytes[0];
        copy_short_digits_(x.coef, bytes + 1, static_cast<size_t>(length) - 1);
    } else {
        memcpy(&x.signexp, bytes, static_cast<size_t>(length));
    }
    return number_get_fault(&x);
}

int encode_(const sql_value &value, uint8_t *bytes) {
    const number_t &x = value.number;
    memcpy(bytes, &x.signexp, x.size);
    return x.size;
}
static_assert(SQL_VALUE_SIZE_MAX == sizeof(number_t) - 1);

// ---------------------------------------------------------------------------------------------------------
// Functions: in place on the first argument, as in the library
// ---------------------------------------------------------------------------------------------------------

template <void (*Operation)(number_t *)>
void unary_(sql_call &call) {
    Operation(&call.args[0].number);
    sql_return(call, call.args[0]);
}

template <void (*Operation)(number_t *, const number_t *)>
void binary_(sql_call &call) {
    Operation(&call.args[0].number, &call.args[1].number);
    sql_return(call, call.args[0]);
}

void from_text_(sql_call &call) {
    const sql_text &text = call.args[0].text;
    number_from_str(&call.result.number, text.length, text.bytes, nullptr);  // length 0: up to the NUL
    call.result.kind = SQL_KIND_NUMBER;
}

void from_texts_(sql_call &, const dv_column_t &texts, dv_column_t &result) {
    dv_column_faults_t faults{};
    number_column_from_text(&texts, &result, &faults);
}

// The scientific form of any value fits this buffer, so no text is ever shortened.
void to_text_(sql_call &call) {
    static_assert(NUMBER_SCIENTIFIC_TEXT_SIZE <= SQL_ROOM_SIZE);
    number_to_str(&call.args[0].number, NUMBER_SCIENTIFIC_TEXT_SIZE, call.room, nullptr);
    sql_return_text(call, call.room);
}

void sign_(sql_call &call) {
    const int sign = number_cmp(&call.args[0].number, _number_zero);
    sql_return(call, sql_integer(sign < 0 ? -1 : sign > 0 ? 1 : 0));
}

void compare_(sql_call &call) {
    const int order = number_cmp(&call.args[0].number, &call.args[1].number);
    sql_return(call, sql_integer(order < 0 ? -1 : order > 0 ? 1 : 0));
}

template <number_rmode_e Mode>
void round_(sql_call &call) {
    number_round_to_places(&call.args[0].number, 0, Mode);
    sql_return(call, call.args[0]);
}

template <number_rmode_e Mode>
void round_to_places_(sql_call &call) {
    number_round_to_places(&call.args[0].number, call.args[1].integer, Mode);
    sql_return(call, call.args[0]);
}

// Words mean a mode and one, since 0 is none.
constexpr sql_word _modes[] = {
    {"TRUNC", NUMBER_RMODE_TRUNC + 1},         {"UP", NUMBER_RMODE_UP + 1},
    {"HALF_DOWN", NUMBER_RMODE_HALF_DOWN + 1}, {"HALF_UP", NUMBER_RMODE_HALF_UP + 1},
    {"HALF_EVEN", NUMBER_RMODE_HALF_EVEN + 1}, {"CEIL", NUMBER_RMODE_CEIL + 1},
    {"FLOOR", NUMBER_RMODE_FLOOR + 1},
};

void round_in_mode_(sql_call &call) {
    const int meaning = sql_get_word(call, 2, _modes);
    if (meaning == 0) return;
    number_round_to_places(&call.args[0].number, call.args[1].integer, meaning - 1);
    sql_return(call, call.args[0]);
}

constexpr int _scale_limit = 127;  // of either sign; -128 means none

bool is_precision_(sql_call &call) {
    const int64_t precision = call.args[1].integer;
    if (precision >= 1 && precision <= NUMBER_PRECISION_MAX) return true;
    sql_fail(call, "the precision %lld does not lie in 1..38", static_cast<long long>(precision));
    return false;
}

bool is_scale_(sql_call &call) {
    const int64_t scale = call.args[2].integer;
    if (scale >= -_scale_limit && scale <= _scale_limit) return true;
    sql_fail(call, "the scale %lld does not lie in -127..127", static_cast<long long>(scale));
    return false;
}

void cast_(sql_call &call, int scale) {
    number_force_prec_scale(&call.args[0].number, static_cast<int>(call.args[1].integer), scale);
    sql_return(call, call.args[0]);
}

void cast_to_precision_(sql_call &call) {
    if (is_precision_(call)) cast_(call, NUMBER_NOT_GIVEN);
}

void cast_to_precision_and_scale_(sql_call &call) {
    if (is_precision_(call) && is_scale_(call)) cast_(call, static_cast<int>(call.args[2].integer));
}

void cast_columns_(const sql_call &call, int scale, const dv_column_t &values, dv_column_t &result) {
    dv_column_faults_t faults{};
    number_column_force_prec_scale(&values, static_cast<int>(call.args[1].integer), scale, &result, &faults);
}

void cast_columns_to_precision_(sql_call &call, const dv_column_t &values, dv_column_t &result) {
    if (!is_precision_(call)) return sql_leave_all_rows(result);
    cast_columns_(call, NUMBER_NOT_GIVEN, values, result);
}

void cast_columns_to_precision_and_scale_(sql_call &call, const dv_column_t &values, dv_column_t &result) {
    if (!is_precision_(call) || !is_scale_(call)) return sql_leave_all_rows(result);
    cast_columns_(call, static_cast<int>(call.args[2].integer), values, result);
}

constexpr sql_kind _number = SQL_KIND_NUMBER;
constexpr sql_kind _integer = SQL_KIND_INTEGER;
constexpr sql_kind _text = SQL_KIND_TEXT;

template <void (*Operation)(number_t *, const number_t *)>
constexpr sql_function binary_row_(const char *name, const char *manual) {
    sql_function row = {{name, {_number, _number}, "a, b", _number, manual}, binary_<Operation>};
    row.operation = Operation;
    return row;
}

constexpr sql_function _rows[] = {
    sql_with_columns(
        {{"to_number", {_text}, "v", _number, "reads a number; blanks around it, a point and an exponent"},
         from_text_},
        from_texts_),
    {{"to_number", {_number}, "v", _number, "the number itself"}, sql_return_argument},
    {{"to_char", {_number}, "v", _text, "as text that to_number reads back, never rounded"}, to_text_},
    {{"dv_text", {_number}, "v", _text, "as text that to_number reads back, never rounded"}, to_text_},
    binary_row_<number_add>("dv_add", "a + b"),
    binary_row_<number_sub>("dv_sub", "a - b"),
    binary_row_<number_mul>("dv_mul", "a * b"),
    binary_row_<number_div>("dv_div", "a / b"),
    binary_row_<number_mod>("dv_mod", "remainder of the division cut toward zero"),
    binary_row_<number_rem>("dv_rem", "remainder of the division rounded to nearest"),
    {{"dv_sqrt", {_number}, "v", _number, "the square root"}, unary_<number_sqrt>},
    {{"dv_exp", {_number}, "v", _number, "e to the power v"}, unary_<number_exp>},
    binary_row_<number_pow>("dv_power", "a to the power b"),
    {{"dv_neg", {_number}, "v", _number, "-v"}, unary_<number_negate>},
    {{"dv_abs", {_number}, "v", _number, "the value without its sign"}, unary_<number_abs>},
    {{"dv_round", {_number}, "v", _number, "rounded to an integer, half away from zero"},
     round_<NUMBER_RMODE_HALF_UP>},
    {{"dv_round",
      {_number, _integer},
      "v, places",
      _number,
      "rounded to decimal places, half away from zero"},
     round_to_places_<NUMBER_RMODE_HALF_UP>},
    {{"dv_round",
      {_number, _integer, _text},
      "v, places, mode",
      _number,
      "rounded to decimal places: TRUNC, UP, HALF_DOWN, HALF_UP, HALF_EVEN, CEIL or FLOOR"},
     round_in_mode_},
    {{"dv_trunc", {_number}, "v", _number, "cut to an integer, toward zero"}, round_<NUMBER_RMODE_TRUNC>},
    {{"dv_trunc", {_number, _integer}, "v, places", _number, "cut to decimal places, toward zero"},
     round_to_places_<NUMBER_RMODE_TRUNC>},
    {{"dv_floor", {_number}, "v", _number, "the greatest integer that is not above v"},
     round_<NUMBER_RMODE_FLOOR>},
    {{"dv_ceil", {_number}, "v", _number, "the least integer that is not below v"},
     round_<NUMBER_RMODE_CEIL>},
    {{"dv_sign", {_number}, "v", _integer, "-1, 0 or 1 as v is below, equal to or above 0"}, sign_},
    {{"dv_cmp", {_number, _number}, "a, b", _integer, "-1, 0 or 1 as a is below, equal to or above b"},
     compare_},
    sql_with_columns(
        {{"dv_cast_number", {_number, _integer}, "v, precision", _number, "rounded to so many digits"},
         cast_to_precision_},
        cast_columns_to_precision_),
    sql_with_columns({{"dv_cast_number",
                       {_number, _integer, _integer},
                       "v, precision, scale",
                       _number,
                       "as NUMBER(precision,scale): rounded to the scale, an error when too large"},
                      cast_to_precision_and_scale_},
                     cast_columns_to_precision_and_scale_),
};
constexpr auto _functions = sql_with_tries<_rows>();

}  // namespace

constinit const sql_type dv::impl::number_type = {SQL_KIND_NUMBER, "NUMBER", "to_number", decode_, encode_};

constinit const sql_function_table dv::impl::number_functions = _functions;
