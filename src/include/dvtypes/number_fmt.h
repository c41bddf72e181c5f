// dvtypes/number_fmt.h: NUMBER as text under a format model, and back.
//
// A model such as "FM$99,990.00PR" is a text of at most 256 characters in either letter case:
//
//   model  = [prefix] [currency] digits [currency] [sign]          or one of TM, TM9, TME, RN
//   prefix = FM | S, in any order          currency = C | L | U (one in the whole model, "$" included)
//   digits = 9 | 0 | X | , | . | G | D | $, and at the end EEEE    sign = MI | PR | S
//
// docs/number-models.md describes every element and what is written and read under it, with examples that the
// tests run. In short: digits stand at the right, blanks fill 9 positions that no digit needs, zeros begin at
// the first 0 position, the fraction is rounded half up, and a value with too many integer digits is a run of
// "#". National settings are not consulted: the group separator is ",", the decimal point ".", the currency
// "$" or "USD".
//
// Models and texts come with a length and need no NUL. The length 0 is that of an empty one, and no sign to
// look for a NUL, as it is to number_from_str and to datetime models: pass strlen(fmt). A negative length
// counts as 0, a NULL model as the empty one. A NUL inside a model ends it. Nothing is allocated and nothing
// is kept between calls; every function may be called from any thread on records and buffers that no other
// thread is writing. Many values under one model take less time with the model made ready once:
// number_fmt_ctx_t.
//
// Codes raised:  -3005  the text does not fit its buffer
//                -3006  the model has the element B, or roman numerals are to be read
//                -5074  the text is none that the model asks for
//                -5075  no model, or one of more than 256 characters

#ifndef DVTYPES_NUMBER_FMT_H
#define DVTYPES_NUMBER_FMT_H

#include "dvtypes/number.h"

#ifdef __cplusplus
extern "C" {
#endif

enum {
    NUMBER_FMT_MAX = 256,         // characters of a model
    NUMBER_FMT_TEXT_SIZE = 261,   // longest text under a model, with its NUL: a sign, a character for each of
                                  // the model, two more for "USD", one more for "E+100" in place of EEEE
    NUMBER_ROMAN_TEXT_SIZE = 16,  // MMMDCCCLXXXVIII with its NUL
    NUMBER_FMT_CTX_SIZE = 512     // bytes of a model made ready
};

typedef enum number_fmt_sign_e {
    NUMBER_FMT_SIGN_NONE = 0,   // "-" or a blank in front
    NUMBER_FMT_SIGN_MI = 1,     // "-" or a blank behind
    NUMBER_FMT_SIGN_PR = 2,     // <12> or blanks in their place
    NUMBER_FMT_SIGN_LEAD = 3,   // S in front: "-" or "+"
    NUMBER_FMT_SIGN_TRAIL = 4,  // S behind
    NUMBER_FMT_SIGN_MAX = 5
} number_fmt_sign_e;

typedef enum number_fmt_currency_e {
    NUMBER_FMT_CURRENCY_NONE = 0,
    NUMBER_FMT_CURRENCY_DOLLAR = 1,  // "$", in front of the digits wherever it stands in the model
    NUMBER_FMT_CURRENCY_C = 2,       // "USD"
    NUMBER_FMT_CURRENCY_L = 3,       // "$", where the letter stands: in front of or behind the digits
    NUMBER_FMT_CURRENCY_U = 4        // the same
} number_fmt_currency_e;

// A compiled model, for use within a process: its integers have the machine's byte order. Every byte is
// written, those between the fields as 0. Digit elements are 9, 0 and X.
typedef struct number_parse_result_s {
    char fmt_dig[NUMBER_FMT_MAX + 1];  // the elements 9 0 X , . D G C L U in upper case, in the order of the
                                       // model; NUL ended, NUL filled
    uint8_t fm_present;                // 1: FM
    int32_t sign_type;                 // number_fmt_sign_e; NONE for PR under FM
    int32_t currency_type;             // number_fmt_currency_e
    int32_t pos_msd;         // power of ten of the first digit element; -1 when none stands before the point
    int32_t pos_lsd;         // power of ten of the last one: minus the fraction's digit elements
    int32_t power_to_raise;  // 0 in every model: V, which would raise it, is refused
    uint8_t in_hexadecimal;  // 1: X
    uint8_t in_sciform;      // 1: EEEE
} number_parse_result_t;

// Compiles a model.
//
//   fmt  NUL ended; neither TM, TM9, TME nor RN, which stand for themselves
//   pr   written whole, and only on success
//
// Asserts "fmt != NULL && pr != NULL"; then nothing is written.
// Raises  -5075  an element where it may not stand: unknown, twice, a second sign or currency; "." or "D"
//                beside "G" or ","; a separator behind the point; X beside 9 or behind a point, 9 or 0 behind
//                X; EEEE in mixed case or without a 9 or 0; V; more than 256 characters
//         -3006  B in front or behind
DV_EXPORT void number_fmt_parse(const char *fmt, number_parse_result_t *pr);

// Raises what number_fmt_parse raises when fmt is no model; TM, TM9, TME and RN are models.
DV_EXPORT void number_format_check(const char *fmt, int fmt_len);

// Characters of the text that number_to_str_fmt writes under the model without its FM: every pair "FM" is
// taken out, and zero is written. Other values of the model give as many, with these exceptions: TM, TM9 and
// TME, whose length is the value's; and one more where EEEE has an exponent of three digits and the model no
// position to spare.
// Raises  -5075, -3006  no model     -3005  the text has more than 256 characters
DV_EXPORT int number_get_length(const char *fmt, int fmt_len);

// Writes x under a model as NUL-ended text into str of buf_size bytes; never a byte more.
//
//   x    any record; a NULL value is written as zero
//   fmt  a model, or FMRN: roman numerals without the blanks in front
//
// TM and TM9 write as number_to_str does in automatic form into 65 bytes, TME in scientific form. Under all
// other models the markers of number.h (_number_posinf and the like) are runs of "#". Nothing is written on a
// raise.
//   1234.5 under 9,990.00 is " 1,234.50", -0.5 under FM0.99 is "-0.5", 2500 under 99 is "###", 31 under XX is
//   " 1F", 19 under FMRN is "XIX"
//
// Asserts "number_is_nonnull_ptr(x) && number_is_nonnull_ptr(str)"; then nothing is written.
// Raises  -3005  text and NUL need more than buf_size bytes; under RN and FMRN: it is below
//                NUMBER_ROMAN_TEXT_SIZE, however short the numeral
//         -5075, -3006  no model
DV_EXPORT void number_to_str_fmt(const number_t *x, int buf_size, char *str, int fmt_len, const char *fmt);

// Writes x, rounded half up to an integer, in roman numerals: 1 to 3999 at the right of 15 characters, any
// other value as 15 "#". in_upper: 0 writes small letters. Asserts and leaves str as number_to_str_fmt does.
// Raises  -3005  buf_size is below NUMBER_ROMAN_TEXT_SIZE
DV_EXPORT void _number_to_str_fmt_rn(const number_t *x, int buf_size, char *str, int in_upper);

// Reads text under a model into x.
//
//   str, str_len  the text: blanks, an optional "-", digits and punctuation as the model has them, blanks.
//                 Leading 9 positions may be left out, and so may digits and "." at the end: 12 reads under
//                 9,999.99; but not a separator behind a digit, D or a currency. No other sign is read
//
// What stands under a 9 or 0 is taken whatever it is, and number_from_str judges the whole: 1.5 reads under
// 0999. Only a "+" in front is refused. A blank behind stands where the model has "." for a wrong character:
// "12 " reads under 999, not under 999.99.
//
// Under TM, TM9 and TME text is read as number_from_str reads it. Under X the digits 0-9 and A-F up to the
// first blank are read, however many, each step a NUMBER operation in the current rounding mode; what stands
// behind the blank is not looked at, and blanks alone are zero.
//
// Text that number_to_str_fmt wrote under the same model reads back as the value rounded half up at the
// model's last position, where the model has a digit and no EEEE, and the text no "#" and no sign but "-" in
// front (under X: no sign, currency, separator or point at all, and at most 38 decimal digits).
//
// Asserts "number_is_nonnull_ptr(x) && number_is_nonnull_ptr(str)"; then nothing is read.
// Raises  -5074  more integer digits than the model has; "$", "USD", "," or "." missing; what stands in place
//                of digits makes no number; anything left over; no digit     -5075, -3006  no model, or RN
//         -5068, -5069  beyond the range. x is then as number_from_str leaves it
DV_EXPORT void number_from_str_fmt(number_t *x, int str_len, const char *str, int fmt_len, const char *fmt);

// ---------------------------------------------------------------------------------------------------------
// Models made ready for many values
// ---------------------------------------------------------------------------------------------------------

// A model made ready by number_fmt_ctx_set: plain memory that owns nothing, that may be copied, and that any
// number of threads may use at once. Only the library that made it knows its bytes.
typedef struct number_fmt_ctx_s {
    uint64_t made[NUMBER_FMT_CTX_SIZE / 8];
} number_fmt_ctx_t;

// Makes a model ready.
//
//   ctx         written whole, and only on success
//   for_parser  0: for number_to_str_ctx, otherwise for number_from_str_ctx
//
// Asserts "ctx != NULL"; then nothing is written.
// Raises  -5075, -3006  no model, or one that the texts cannot be read under: what number_to_str_fmt and
//                       number_from_str_fmt raise of it
DV_EXPORT void number_fmt_ctx_set(number_fmt_ctx_t *ctx, int fmt_len, const char *fmt, uchar for_parser);

// number_to_str_fmt with the model of ctx; returns the characters in front of the NUL. Raises in its name.
//
// Asserts "number_is_nonnull_ptr(x)", "number_is_nonnull_ptr(str)", "ctx != NULL" and "made.purpose ==
// WRITING", which a model made for reading and memory of zeros are not; then nothing is written and 0
// returned.
DV_EXPORT int number_to_str_ctx(const number_t *x, int buf_size, char *str, const number_fmt_ctx_t *ctx);

// number_from_str_fmt with the model of ctx. Raises in its name.
//
// Asserts "number_is_nonnull_ptr(x)", "number_is_nonnull_ptr(str)", "ctx != NULL" and "made.purpose ==
// READING"; then nothing is read.
DV_EXPORT void number_from_str_ctx(number_t *x, int str_len, const char *str, const number_fmt_ctx_t *ctx);

#ifdef __cplusplus
}  // extern "C"
#endif

#endif  // DVTYPES_NUMBER_FMT_H
