// dvtypes/number.h: NUMBER, the SQL decimal: 38 significant digits, -64 <= base-100 exponent <= 63.
//
// A value is a record of at most 23 bytes, the same in memory, on the wire and on disk:
//
//   byte 0   size     how many bytes follow; 0 is SQL NULL
//   byte 1   signexp  0xC0 + E for a positive value, 0x3F - E for a negative one
//   byte 2.. coef     base-100 digits, most significant first: 128 + d (positive) or 128 - d (negative);
//                     behind the digits of a negative value the terminator 0xF0
//
// E is the base-100 exponent for which the value is 0.d1 d2 d3 ... x 100^E. Zero is the record 01 80. Neither
// the first nor the last digit of a record is 0, so every value has one record, and the unsigned bytewise
// order of the records (from signexp on) is the order of the values.
//
//   1        02 C1 81             127      03 C2 81 9B
//   -128     04 3D 7F 64 F0       0.05     02 C0 85
//
// ```c
// number_t price, rate;
// char text[NUMBER_NORMAL_TEXT_SIZE];
// number_from_str(&price, 0, "1234.50", NULL);
// number_from_double(&rate, 1.19);
// number_mul(&price, &rate);
// number_round_to_places(&price, 2, NUMBER_RMODE_HALF_UP);
// number_to_str(&price, sizeof text, text, NULL);
// puts(text);                                                      // 1469.06
// printf("%d\n", number_cmp(&price, _number_zero) > 0);            // 1
// ```
//
// Unless said otherwise, every function
//   - takes valid records (number_is_valid_ptr) that are not NULL values (size 0), and asserts the former;
//     each record is 23 bytes of storage. Bytes past `size` mean nothing: they never change a result, and a
//     function may overwrite them;
//   - asserts, does nothing else and returns 0 when a pointer is NULL;
//   - works in place on its first argument; the two arguments may be the same record;
//   - writes canonical records, allocates nothing, takes no lock, and may be called from any thread on
//     records that no other thread is writing. Only the rounding mode is shared: see number_set_roundmode;
//   - on a raise leaves its first argument with an unspecified valid record, or as it was.
// Records with bytes that are no digits give unspecified values, never a wild access.
//
// Codes raised:  -3005  the text does not fit its buffer        -5067  the text was shortened to fit
//                -5068  overflow: E would exceed 63             -5069  underflow: E would fall below -64
//                -5070  division by zero                        -5072  outside the range of the target type
//                -5073  outside the domain of the function      -5074  the text is no number
//                -5075  unknown format letter                   -5111  too large for the precision

#ifndef DVTYPES_NUMBER_H
#define DVTYPES_NUMBER_H

#include <string.h>

#include "dvtypes/base.h"
#include "dvtypes/word.h"

#ifdef __cplusplus
extern "C" {
#endif

enum {
    NUMBER_COEF_MAX = 21,       // digit bytes of a record, the terminator included
    NUMBER_DIGITS_MAX = 20,     // base-100 digits of a record
    NUMBER_PRECISION_MAX = 38,  // significant decimal digits
    NUMBER_EXPONENT_MAX = 63,   // base-100 exponent E
    NUMBER_EXPONENT_MIN = -64,
    NUMBER_TOP = 0xF0,        // terminator behind the digits of a negative value
    NUMBER_NOT_GIVEN = -128,  // as a precision or scale: none
    NUMBER_DUMP_SIZE = 69     // longest number_sdump text with its NUL: 23 bytes of two digits, 22 colons
};

// A NUMBER, as above.
typedef struct number_s {
    uint8_t size;                   // bytes that follow: 1..22, 0 for NULL
    uint8_t signexp;                // sign and exponent
    uint8_t coef[NUMBER_COEF_MAX];  // digits of base 100
} number_t;

// ---------------------------------------------------------------------------------------------------------
// Constants: pointers into a table of ten 22-byte rows, never written
// ---------------------------------------------------------------------------------------------------------

extern DV_EXPORT_DATA number_t *const _number_posinf;   // 02 FF F0: above every finite value
extern DV_EXPORT_DATA number_t *const _number_max;      // 38 nines, then 88 zeros
extern DV_EXPORT_DATA number_t *const _number_poszero;  // 02 80 10: above zero, below every positive value
extern DV_EXPORT_DATA number_t *const _number_zero;     // 01 80
extern DV_EXPORT_DATA number_t *const _number_negzero;  // 02 7F F0: below zero, above every negative value
extern DV_EXPORT_DATA number_t *const _number_min;      // minus the largest value
extern DV_EXPORT_DATA number_t *const _number_neginf;   // 02 00 10: below every finite value
extern DV_EXPORT_DATA number_t *const _number_null;     // 00: SQL NULL
extern DV_EXPORT_DATA number_t *const _number_one;      // 02 C1 81
extern DV_EXPORT_DATA number_t *const _number_e;        // Euler's number, cut (not rounded) after 38 digits
extern DV_EXPORT_DATA number_t *const n1000000000;      // 10^9

// The bounds of the machine types, read by number_range_check: row 2t is the lowest value of machine type t,
// row 2t + 1 the highest. The floating-point rows hold the type's largest finite value as the number_from_*
// functions give it, and its negative, clamped to the range of NUMBER. They are constants of the build, so
// no thread ever sees them unfilled.
typedef enum number_type_e {
    NUMBER_TYPE_INT8 = 0,
    NUMBER_TYPE_UINT8 = 1,
    NUMBER_TYPE_INT16 = 2,
    NUMBER_TYPE_UINT16 = 3,
    NUMBER_TYPE_INT32 = 4,
    NUMBER_TYPE_UINT32 = 5,
    NUMBER_TYPE_INT64 = 6,
    NUMBER_TYPE_UINT64 = 7,
    NUMBER_TYPE_FLOAT = 8,
    NUMBER_TYPE_DOUBLE = 9,
    NUMBER_TYPE_LONG_DOUBLE = 10,
    NUMBER_TYPE_MAX = 11
} number_type_e;

enum { NUMBER_LIMIT_ROWS = 22, NUMBER_ROW_SIZE = 22 };
typedef struct number_row_s {
    uint8_t byte[NUMBER_ROW_SIZE];  // a record; the rest is zero
} number_row_t;
extern DV_EXPORT_DATA const number_row_t _number_limit[NUMBER_LIMIT_ROWS];  // as said at number_type_e

// 1: the floating type holds every finite NUMBER, so conversions into it check no range.
extern DV_EXPORT_DATA const int _float_covers_number;
extern DV_EXPORT_DATA const int _double_covers_number;
extern DV_EXPORT_DATA const int _long_double_covers_number;

// ---------------------------------------------------------------------------------------------------------
// Records
// ---------------------------------------------------------------------------------------------------------

// 1 for a pointer that is not NULL to a record of size 0 (NULL value), of size 1 with signexp 0x80 (zero), or
// of size 2..23; else 0. This is what every function asserts of its records.
static inline int number_is_valid_ptr(const number_t *x) {
    return x != NULL && (x->size - 2u <= 21u || x->size == 0 || (x->size == 1 && x->signexp == 0x80));
}

// 1 for a pointer that is not NULL.
static inline int number_is_nonnull_ptr(const void *p) { return p != NULL; }

// What number_cmp does where its first eight bytes leave the question open: bytes that both records have,
// then sizes.
static inline int number_cmp_rest(const number_t *x, const number_t *y) {
    const unsigned common = x->size < y->size ? x->size : y->size;  // 0..22
    const int order = memcmp(&x->signexp, &y->signexp, common < 22 ? common : 22);
    return order != 0 ? order : (int)x->size - (int)y->size;
}

// Compares two values: negative, 0 or positive as x is below, equal to or above y. Bytewise over signexp and
// coef; orders the constants for infinities and tiny values as their comments say, and a NULL value below all
// others. Reads inside the 23 bytes of each record only; neither pointer is NULL.
static inline int number_cmp(const number_t *x, const number_t *y) {
    const uint64_t xw = dv_load_word(&x->signexp);
    const uint64_t yw = dv_load_word(&y->signexp);
    if (xw != yw) {  // the first byte that differs decides if it belongs to both records
        const unsigned place = (unsigned)__builtin_clzll(xw ^ yw) / 8;
        if (place < x->size && place < y->size) return xw < yw ? -1 : 1;
    }
    return number_cmp_rest(x, y);
}

// Copies the size + 1 meaningful bytes of y to x; no byte of x beyond them is touched. y may be a NULL value.
DV_EXPORT void number_assign(number_t *x, const number_t *y);

// What is wrong with the bytes of a record that came from elsewhere, as an English clause ("a NUMBER digit is
// out of range"); NULL when nothing is: it is the one record that the library writes for its value. A NULL
// value and the constants that mark infinities and tiny values are faults. Any 23 bytes may be given.
DV_EXPORT const char *number_get_fault(const number_t *x);

// Writes the bytes of a record as text: size and signexp, then each byte behind them, as two lower-case
// hexadecimal digits with colons between ("04:3d:7f:64:f0"; "00:xx" with the stray signexp for a NULL value;
// "NULL" for a NULL pointer), NUL ended and cut at buf_size bytes, the NUL included. NUMBER_DUMP_SIZE bytes
// hold any dump. Nothing is written when buf is NULL or buf_size is 0 or less.
DV_EXPORT void number_sdump(const number_t *x, char *buf, int buf_size);

// The same to standard output; number_dumpln ends with a newline, number_dumpln_from_int dumps an int.
DV_EXPORT void number_dump(const number_t *x);
DV_EXPORT void number_dumpln(const number_t *x);
DV_EXPORT void number_dumpln_from_int(int v);

// Prints a value to standard output as "[text]" and a newline (text: number_to_str, automatic form). The
// second form reads a text of number_sdump (digits of either case) back into a record and prints that.
DV_EXPORT void number_println(const number_t *x);
DV_EXPORT void number_println_from_str(const char *dump);

// Interchange byte format: the same size and signexp; positive digits are d + 1, negative ones 101 - d, the
// terminator is 102. y holds 23 bytes. Bytes that are no digits are asserted and mapped all the same. Of a
// NULL value size and signexp are copied.
//
// The two directions are not inverse for negative values, as in every release of the format's users: the
// writer's length byte counts the terminator; the reader expects one that does not count it, requires the 102
// one byte further, stores 0xF0 there, and copies the length byte as it is.
// A length byte above 22 is taken as 22 (21 for a negative value that is read): neither side leaves 23 bytes.
DV_EXPORT void number_to_oracle_format(const number_t *x, uint8_t *y);
DV_EXPORT void number_from_oracle_format(number_t *x, const uint8_t *y);

// ---------------------------------------------------------------------------------------------------------
// Rounding, precision and scale
// ---------------------------------------------------------------------------------------------------------

typedef enum number_rmode_e {
    NUMBER_RMODE_TRUNC = 0,      // toward zero
    NUMBER_RMODE_UP = 1,         // away from zero, whatever is discarded; an exact value stays
    NUMBER_RMODE_HALF_DOWN = 2,  // to nearest, an exact half toward zero
    NUMBER_RMODE_HALF_UP = 3,    // to nearest, an exact half away from zero (the default)
    NUMBER_RMODE_HALF_EVEN = 4,  // to nearest, an exact half to the even digit
    NUMBER_RMODE_CEIL = 5,       // toward plus infinity
    NUMBER_RMODE_FLOOR = 6       // toward minus infinity
} number_rmode_e;

// The mode in which arithmetic results are cut to 38 digits: one for the whole process, NUMBER_RMODE_HALF_UP
// at first. Setting it is not checked and affects every thread; a mode outside 0..6 rounds as TRUNC and fails
// the assertion "false" each time it decides on a digit; an exact result asks no mode.
extern DV_EXPORT_DATA int _number_roundmode;
DV_EXPORT void number_set_roundmode(int rmode);
DV_EXPORT int number_get_roundmode(void);

// Rounds x so that its lowest kept digit has the weight 10^pos. NULL and zero stay. With every digit
// discarded the result is zero, or the unit 10^pos with the sign of x where the mode rounds away.
//   2.5 at 0: 2 half even, 3 half up.   -0.004 at 0: -1 floor.   6 at 1: 10 half up.
// Raises  -5068  a carry leaves the range; or pos is more than one place above the first digit of x and
//                pos / 2 exceeds 62, whatever the mode
DV_EXPORT void number_round_at_withmode(number_t *x, int pos, int rmode);

// Places that rounding to decimal places looks at: none is above 10^126, and no digit below 10^-168.
enum {
    NUMBER_PLACES_MIN = -2 * NUMBER_EXPONENT_MAX,
    NUMBER_PLACES_MAX = 2 * (NUMBER_DIGITS_MAX - NUMBER_EXPONENT_MIN)
};

// Is the nearest unit of a place left of all digits not 0 for the mode, the unit being too large for a
// NUMBER? x is neither NULL nor zero; is_next: the place is 10^126, of which values from 5E125 on are half.
static inline int number_rounds_beyond(const number_t *x, int is_next, int rmode) {
    const int is_negative = x->signexp < 0x80;
    if (rmode == NUMBER_RMODE_UP) return 1;
    if (rmode == NUMBER_RMODE_CEIL || rmode == NUMBER_RMODE_FLOOR)
        return is_negative == (rmode == NUMBER_RMODE_FLOOR);
    if (rmode == NUMBER_RMODE_TRUNC || !is_next) return 0;
    return is_negative ? x->signexp == 0x00 && x->coef[0] <= 128 - 50
                       : x->signexp == 0xFF && x->coef[0] >= 128 + 50;
}

// Rounds x to decimal places, as SQL's ROUND and TRUNC do: its lowest kept digit has the weight 10^-places,
// whatever their number.
//   1234.567 to 2: 1234.57.   To -2: 1200.   To -200: 0, in a mode that rounds to nearest.
// Raises  -5068  the result leaves the range
static inline void number_round_to_places(number_t *x, int64_t places, int rmode) {
    if (places <= NUMBER_PLACES_MIN && number_is_valid_ptr(x) && x->size > 1 &&
        !number_rounds_beyond(x, places == NUMBER_PLACES_MIN, rmode)) {
        number_assign(x, _number_zero);
        return;
    }
    if (places < NUMBER_PLACES_MIN) places = NUMBER_PLACES_MIN;
    if (places > NUMBER_PLACES_MAX) places = NUMBER_PLACES_MAX;
    number_round_at_withmode(x, -(int)places, rmode);
}

// 1 when x fits NUMBER(prec, scale), else 0: no more than prec - scale integer digits, and none below
// 10^-scale. Either may be NUMBER_NOT_GIVEN; scale may be negative. NULL and zero always fit. Without a scale
// (it is then counted as -128) every value fits any precision from -2 on: number_force_prec_scale would
// round.
DV_EXPORT int number_check_prec_scale(const number_t *x, int prec, int scale);

// Makes x fit NUMBER(prec, scale): rounds half up to the scale, and without a scale to prec significant
// digits (prec <= 0: to zero). 123.456 as NUMBER(5, 2) is 123.46.
// Raises  -5111  more than prec - scale integer digits remain (value as text, in scientific form where the
//                normal one has more than 63 characters, prec, scale)
//         -5068  a carry leaves the range
DV_EXPORT void number_force_prec_scale(number_t *x, int prec, int scale);

// ---------------------------------------------------------------------------------------------------------
// Text
// ---------------------------------------------------------------------------------------------------------

// Reads a number: blanks, sign, digits with an optional point, optional exponent, blanks.
//
//   len     bytes of str; 0 or less: str ends at its first NUL
//   format  not consulted; may be NULL
//
// More than 38 significant digits are cut, not rounded, whatever the rounding mode. "-0", "0000" and "0E999"
// are zero. The exponent may have any number of digits.
// Raises  -5074  no digit, an exponent without digits, or anything but blanks behind the number
//         -5068, -5069  beyond the range
DV_EXPORT void number_from_str(number_t *x, int len, const char *str, const char *format);

// The same without a raise: returns 0, or the code, and *x is then unspecified. A text that is refused costs
// no more than one that is read, over any base library.
DV_EXPORT int number_try_from_str(number_t *x, int len, const char *str);

// As number_from_str, faster for a plain integer ("  -1234"); any other text is handed to number_from_str. A
// text with nothing behind blanks, sign and leading zeros ("", "-") is zero here.
DV_EXPORT void number_from_str_nt(number_t *x, int len, const char *str, const char *format);

// Longest texts with their NUL: normal form "-.", 129 zeros and 39 digits; scientific "-d.", 38 digits,
// "E-130".
enum { NUMBER_NORMAL_TEXT_SIZE = 171, NUMBER_SCIENTIFIC_TEXT_SIZE = 47 };

// Writes x as NUL-ended text into str of buf_size bytes; never a byte more. What a buffer holds behind the
// NUL may change.
//
//   format  NULL: the first form that applies of
//             1. normal (positional): 127, -.05, 1200; no zero before the point, none behind the fraction
//             2. scientific: 1.27E+02, -5E-02, 1E+100; at least two exponent digits
//             3. normal, rounded half up to as many fraction digits as fit
//             4. scientific, rounded half up to as many digits as fit; raises -5067 with the text in place
//           "N..." or "n...": 1 or 3.   "S..." or "s...": 2 or 4.
//
// Zero is "0", in scientific form "0E+00". In every form the constants that mark infinities and values too
// small to represent are "inf", "-inf", "tiny" and "-tiny", which are not read; bytes that are no digits show
// as "??". Raises  -3005  no form fits          -5067  as above
//         -5068  shortening carried past the range       -5075  another format letter
DV_EXPORT void number_to_str(const number_t *x, int buf_size, char *str, const char *format);

// ---------------------------------------------------------------------------------------------------------
// Arithmetic. Results are cut to 38 significant digits in the current rounding mode.
// ---------------------------------------------------------------------------------------------------------

// x = x + y, x = x - y. Operands whose exponents differ by more than 19 base-100 digits give the one with the
// larger exponent unchanged in every mode; otherwise the tail of the smaller one that lies beyond 20 base-100
// digits of the larger is dropped before rounding, and so is the 21st digit after a carry.
// Raises -5068, and -5069 when leading digits cancel at the lower end of the range.
DV_EXPORT void number_add(number_t *x, const number_t *y);
DV_EXPORT void number_sub(number_t *x, const number_t *y);

// number_add when is_add is not 0, else number_sub.
DV_EXPORT void number_add_with_mode(number_t *x, const number_t *y, uchar is_add);

// x = -x, x = |x|.
DV_EXPORT void number_negate(number_t *x);
DV_EXPORT void number_abs(number_t *x);

// x = x * y, x = x * x. The whole product is seen by the rounding; the range is checked before it.
// Raises -5068, -5069.
DV_EXPORT void number_mul(number_t *x, const number_t *y);
DV_EXPORT void number_sqr(number_t *x);

// x = x / y. The quotient of the digits 0.d1 d2 ... is developed to 24 base-100 digits behind the point, and
// that is what is rounded: a remainder beyond is not seen, so modes 1, 2, 4, 5, 6 treat it as exact.
// Raises -5070, -5068, -5069.
DV_EXPORT void number_div(number_t *x, const number_t *y);

// x = x - q * |y|, where q is x / |y| cut to an integer toward zero (mod) or rounded to one by the current
// mode (rem), and each step is a NUMBER operation with its own rounding. The sign of y does not matter:
// 7 mod -3 = 1, -7 mod 3 = -1, 8 rem 3 = -1.
// number_mod by zero leaves x unchanged; number_rem by zero raises -5070. Both raise -5068, -5069.
DV_EXPORT void number_mod(number_t *x, const number_t *y);
DV_EXPORT void number_rem(number_t *x, const number_t *y);

// ---------------------------------------------------------------------------------------------------------
// Roots and powers, in the current rounding mode
// ---------------------------------------------------------------------------------------------------------

// The square root of x. It is developed to 64 decimals of the root of x / 10^(16 k), where k is the smallest
// integer that makes that a fraction: 57 to 64 significant digits. Those are rounded to 38; what lies behind
// them is not seen, so modes 1, 2, 4, 5 and 6 treat it as nothing.
// Raises  -5073  x is negative
DV_EXPORT void number_sqrt(number_t *x);

// x to the power y, by these steps, each a NUMBER operation that rounds to 38 digits:
//   1. the result is 1; for each binary digit of the integer part of |y| from the highest down it is squared
//      (number_sqr) and, where the digit is 1, multiplied by x (number_mul);
//   2. s is x; for each of the first 160 binary digits of the fraction of |y| s becomes its square root
//      (number_sqrt) and, where the digit is 1, the result is multiplied by s;
//   3. where y is negative, the result is 1 divided by it (number_div).
// So an integral power has an error of a few units in the 38th digit for each step, and a fractional one of
// some tens of units; neither is correctly rounded. y = 1 leaves x as it is; 0 to the power 0 is 0, and any
// other value to the power 0 is 1. x is kept on a raise.
// Raises  -5073  x is negative and y has a fraction; x is zero and y negative
//         -5068, -5069  where a step leaves the range: 10^-200 is -5068, since 10^200 comes first
DV_EXPORT void number_pow(number_t *x, const number_t *y);

// e to the power x: number_pow of _number_e. exp(1) is _number_e itself, exp(-300) raises -5068.
DV_EXPORT void number_exp(number_t *x);

// The integer square root with remainder, of any length, over limbs of base 10^8.
//
//   sp  root: (n + 1) / 2 limbs, most significant first, leading zeros included; apart from xp
//   xp  operand: n limbs, most significant first; becomes the remainder, x - root^2 <= 2 * root
//   n   limbs of the operand; 0 or less: nothing is done
//
// Limbs of 10^8 and more are taken modulo 10^8. The time grows with n^2.
// Schoolbook method in base 10^8: each limb is estimated in floating point and corrected by the remainder.
DV_EXPORT void number_ui_sqrt(uint32_t *sp, uint32_t *xp, int n);

// ---------------------------------------------------------------------------------------------------------
// Machine numbers
// ---------------------------------------------------------------------------------------------------------

// Exact.
DV_EXPORT void number_from_int8(number_t *x, int8_t v);
DV_EXPORT void number_from_int16(number_t *x, int16_t v);
DV_EXPORT void number_from_int32(number_t *x, int32_t v);
DV_EXPORT void number_from_int64(number_t *x, int64_t v);
DV_EXPORT void number_from_uint8(number_t *x, uint8_t v);
DV_EXPORT void number_from_uint16(number_t *x, uint16_t v);
DV_EXPORT void number_from_uint32(number_t *x, uint32_t v);
DV_EXPORT void number_from_uint64(number_t *x, uint64_t v);

// The decimal value that printf prints: float as "%1.7le", then rounded half down to 7 significant digits;
// double as "%1.15le" (16 digits); long double as "%1.19Le" (20 digits). 0.1f and 0.1 are 0.1.
// Raises  -5068, -5069  beyond the range of NUMBER
//         -5074  an infinity or a NaN
DV_EXPORT void number_from_float(number_t *x, float v);
DV_EXPORT void number_from_double(number_t *x, double v);
DV_EXPORT void number_from_long_double(number_t *x, long double v);

// The shortest decimal that the C library's strtod reads as v, of up to 17 significant digits; of several the
// nearest to v. So a literal of up to 15 digits is what was written: 85.1 is 85.1, where number_from_double
// gives 85.09999999999999. No two doubles give the same NUMBER, but for 0.0 and -0.0. Raises  as
// number_from_double
DV_EXPORT void number_from_double_shortest(number_t *x, double v);

// Truncates toward zero: 127.9 and -128.9 are int8_t values, 128 is not; nothing below zero is an unsigned
// one, not even -0.5.
// Raises  -5072  outside the range of the type; *y is not written
DV_EXPORT void number_to_int8(const number_t *x, int8_t *y);
DV_EXPORT void number_to_int16(const number_t *x, int16_t *y);
DV_EXPORT void number_to_int32(const number_t *x, int32_t *y);
DV_EXPORT void number_to_int64(const number_t *x, int64_t *y);
DV_EXPORT void number_to_uint8(const number_t *x, uint8_t *y);
DV_EXPORT void number_to_uint16(const number_t *x, uint16_t *y);
DV_EXPORT void number_to_uint32(const number_t *x, uint32_t *y);
DV_EXPORT void number_to_uint64(const number_t *x, uint64_t *y);

// From the first 9 base-100 digits (17 or 18 significant decimal digits), scaled with 64 significant bits and
// then converted: within a few units in the last place, not correctly rounded; a long double has no more than
// these 64 bits. The same value on every machine.
// Raises  -5072  outside the bounds of the type by exponent and first two base-100 digits: a value that
//                agrees with the bound so far passes, and becomes an infinity when it is too large (3.405E38
//                as float). double and long double hold every NUMBER.
DV_EXPORT void number_to_float(const number_t *x, float *y);
DV_EXPORT void number_to_double(const number_t *x, double *y);
DV_EXPORT void number_to_long_double(const number_t *x, long double *y);

// 1 when x lies within the bounds of the machine type, else 0. For the integer types the truncated value
// counts (255.9 is within uint8_t), but nothing below zero is within an unsigned type; the floating types
// compare the whole value with their rows of _number_limit. An unknown type gives 0.
//
//   type  a number_type_e
DV_EXPORT uchar number_range_check(const number_t *x, int type);

#ifdef __cplusplus
}  // extern "C"
#endif

#endif  // DVTYPES_NUMBER_H
