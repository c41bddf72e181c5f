// Intervals from text: one reader for both types, driven by the qualifier's row of _itv_fmt and a table with
// a row per token.
//
//   text      = blanks [sign] { token } blanks       blank: tab, newline, carriage return, space, NUL
//   field     = blanks digit{1,9}
//   separator = blanks character                     no blanks before the separator " "
//   the fraction and its point may be missing at the end of the text
//
// Fields add up to a total in the type's smallest unit, months or seconds; a fraction stands beside it as
// nanoseconds. The reader gives the code of a fault together with what it had read until then, and the entry
// point stores that before it raises. Of a negative text every field is negative.

#include <algorithm>
#include <climits>
#include <type_traits>

#include "interval_plain_text.h"

using namespace dv::impl;

namespace {

enum class kind_t : uint8_t { months, seconds, fraction, separator };

struct token_t {
    kind_t kind;
    char character;     // of a separator
    bool is_wrapping;   // value * unit wraps around at 32 bits
    bool is_optional;   // missing at the end of the text
    int32_t value_max;  // of a trailing field
    int32_t unit;       // months or seconds in one
    int error;          // of a value above value_max
};

constexpr int32_t _unbounded = INT32_MAX;
constexpr int _field_digits_max = 9;

// clang-format off
constexpr std::array<token_t, DV_ITV_TOKEN_MAX> _tokens = {{
    // kind             character wrapping optional value_max unit                error
    {kind_t::months,    '\0',     false,   false,   _unbounded, MONTHS_PER_YEAR, 0},               // YYT
    {kind_t::months,    '\0',     false,   false,   _unbounded, 1,                   0},               // MMT
    {kind_t::seconds,   '\0',     false,   false,   _unbounded, SEC_PER_DAY,     0},               // DDT
    {kind_t::seconds,   '\0',     true,    false,   _unbounded, SEC_PER_HOUR,    0},               // HHT
    {kind_t::seconds,   '\0',     true,    false,   _unbounded, SEC_PER_MINUTE,  0},               // MIT
    {kind_t::seconds,   '\0',     false,   false,   _unbounded, 1,                   0},               // SST
    {kind_t::months,    '\0',     false,   false,   11,         1,                   DV_ERR_ITV_MONTH},   // MM
    {kind_t::seconds,   '\0',     false,   false,   23,         SEC_PER_HOUR,    DV_ERR_ITV_HOUR},    // HH
    {kind_t::seconds,   '\0',     false,   false,   59,         SEC_PER_MINUTE,  DV_ERR_ITV_MINUTE},  // MI
    {kind_t::seconds,   '\0',     false,   false,   59,         1,                   DV_ERR_ITV_SECOND},  // SS
    {kind_t::fraction,  '\0',     false,   true,    _unbounded, 0,                   0},               // FF
    {kind_t::separator, ' ',      false,   false,   0,          0,                   0},
    {kind_t::separator, ':',      false,   false,   0,          0,                   0},
    {kind_t::separator, '.',      false,   true,    0,          0,                   0},
    {kind_t::separator, '-',      false,   false,   0,          0,                   0},
}};
// clang-format on

struct reading_t {
    const char *at;
    const char *end;
    int32_t sign;           // 1 or -1
    int32_t nsec;           // without it
    int64_t total;          // within +-10^14
    int64_t leading_limit;  // the least total that has too many leading digits
};
static_assert(std::is_trivially_destructible_v<reading_t>);

void skip_blanks_(reading_t &in) {
    while (in.at != in.end && is_white_space(*in.at)) ++in.at;
}

// ---- digits ----

struct digits_t {
    int32_t value;
    int count;  // 0: the text goes on with something else
};

digits_t take_digits_(reading_t &in) {
    const char *const limit = in.end - in.at > _field_digits_max ? in.at + _field_digits_max : in.end;
    const char *at = in.at;
    int32_t value = 0;
    for (; at != limit; ++at) {
        const uint8_t digit = digit_of(*at);
        if (digit > 9) break;
        value = value * 10 + digit;
    }
    const digits_t digits = {value, static_cast<int>(at - in.at)};
    in.at = at;
    return digits;
}

// Eight characters at once: most fractions have as many (bench/interval, from_text).
digits_t take_fraction_digits_(reading_t &in) {
    const uint64_t word = in.end - in.at >= 8 ? load_eight(in.at) ^ ITV_EIGHT_DIGITS : ~uint64_t{0};
    if (!has_bytes_up_to(word, ITV_EIGHT_DIGITS_MAX)) return take_digits_(in);
    in.at += 8;
    const int32_t value = eight_digit_value(word);
    if (in.at == in.end || !is_digit(*in.at)) return {value, 8};
    return {value * 10 + digit_of(*in.at++), 9};
}

// ---- tokens; each returns an error code, or 0 ----

int read_field_(reading_t &in, const token_t &token) {
    const digits_t digits = take_digits_(in);
    if (digits.count == 0) return DV_ERR_ITV_TEXT;
    if (digits.value > token.value_max) return token.error;
    const int32_t value = digits.value * in.sign;
    in.total += token.is_wrapping ? wrapped_product(value, token.unit) : int64_t{value} * token.unit;
    return in.total >= in.leading_limit ? DV_ERR_ITV_LEADING_PRECISION : 0;
}

int read_fraction_(reading_t &in) {
    const digits_t digits = take_fraction_digits_(in);
    if (digits.count == 0) return DV_ERR_ITV_TEXT;
    const int64_t unit = DECIMAL_POWERS[static_cast<size_t>(FRACTION_DIGITS - digits.count)];
    in.nsec = static_cast<int32_t>(digits.value * unit);
    return 0;
}

int read_separator_(reading_t &in, const token_t &token) {
    return *in.at++ == token.character ? 0 : DV_ERR_ITV_TEXT;
}

int read_token_(reading_t &in, const token_t &token, kind_t field_kind) {
    if (token.character != ' ') skip_blanks_(in);
    if (in.at == in.end) return token.is_optional ? 0 : DV_ERR_ITV_TEXT_ENDED;
    if (token.kind == kind_t::separator) return read_separator_(in, token);
    if (token.kind == field_kind) return read_field_(in, token);
    if (token.kind == kind_t::fraction) return read_fraction_(in);
    return DV_ERR_ITV_QUALIFIER;
}

bool has_row_(int type) { return type >= 0 && type < DV_ITV_QUALIFIER_MAX; }

int read_tokens_(reading_t &in, const dv_itv_fmt_t &row, kind_t field_kind) {
    for (int i = 0; i < row.size; ++i) {
        const int error = read_token_(in, _tokens[static_cast<size_t>(row.token[i])], field_kind);
        if (error != 0) return error;
    }
    skip_blanks_(in);
    return in.at == in.end ? 0 : DV_ERR_TRAILING_TEXT;
}

// ---- whole texts ----

bool are_given_(const void *itv, const char *str) { return is_itv_given(itv) && DV_ASSERT(str != NULL); }

// Goes to the first character that is no blank. A negative length is taken for an empty text.
reading_t start_(const char *str, int str_len, int prec, int leading_unit) {
    const size_t length = str_len != 0 ? static_cast<size_t>(std::max(str_len, 0)) : strlen(str);
    reading_t in = {str, str + length, 1, 0, 0, itv_leading_limit(prec) * leading_unit};
    skip_blanks_(in);
    return in;
}

void take_sign_(reading_t &in) {
    const bool is_minus = *in.at == '-', is_plus = *in.at == '+';
    in.sign = 1 - 2 * int{is_minus};
    in.at += int{is_minus} + int{is_plus};
}

// The names of the steps that find faults, which reports give.
struct step_names_t {
    const char *whole_text, *field, *qualifier, *leading_precision;
};
constexpr step_names_t _ytm_steps = {"dv_itv_ytm_from_str", "_dv_itv_ytm_parse_value",
                                     "_dv_itv_ytm_parse_value", "dv_itv_ytm_check_leading_prec"};
constexpr step_names_t _dts_steps = {"dv_itv_dts_from_str", "_dv_itv_dts_parse_value", "dv_itv_dts_from_str",
                                     "dv_itv_dts_check_leading_prec"};

const char *step_of_(int error, const step_names_t &steps) {
    switch (error) {
        case DV_ERR_TRAILING_TEXT:
            return steps.whole_text;
        case DV_ERR_ITV_LEADING_PRECISION:
            return steps.leading_precision;
        case DV_ERR_ITV_QUALIFIER:
            return steps.qualifier;
        default:
            return steps.field;
    }
}

[[noreturn]] void raise_fault_(int error, const step_names_t &steps, int line = __builtin_LINE()) {
    raise(error_at(error, __builtin_FILE(), line, step_of_(error, steps)));
}

// Half away from zero, at a decimal place.
int32_t rounded_(int32_t nsec, int fprec) {
    if (fprec >= FRACTION_DIGITS) return nsec;
    const int zero_digits = FRACTION_DIGITS - std::max(fprec, 0);
    const auto unit = static_cast<int32_t>(DECIMAL_POWERS[static_cast<size_t>(zero_digits)]);
    return (nsec + unit / 2) / unit * unit;
}

// Adds a fraction of at most a second to a total, as dv_itv_dts_add_fsec does. One that rounds up to a second
// is left in the seconds, also past a whole day; below zero, from 0 seconds on, it stays in the nanoseconds.
// It borrows from the seconds where the text's sign is not theirs: hours and minutes that wrapped around
// change it. Signs are hard to predict, so none of this branches.
void store_(dv_itv_dts_t &itv, int64_t total, int32_t signed_nsec) {
    itv_set_total_seconds(itv, total);
    const bool carries = signed_nsec > 0 || itv_seconds(itv) != 0;
    const int32_t carry = signed_nsec / NSEC_PER_SEC * int{carries};
    const int32_t seconds = itv_seconds(itv) + carry;
    const int32_t rest = signed_nsec - carry * NSEC_PER_SEC;
    const int32_t borrow = int{seconds > 0} * int{rest < 0} - int{seconds < 0} * int{rest > 0};
    itv_set_seconds(itv, seconds - borrow);
    itv_set_nanoseconds(itv, rest + borrow * NSEC_PER_SEC);
}

// Reads any text. Raises in the name of dv_itv_dts_from_str.
[[gnu::noinline]] void read_any_dts_(dv_itv_dts_t *itv, const char *str, int str_len, int type, int prec,
                                     int fprec) {
    const char *const reader = _dts_steps.whole_text;
    if (!are_given_(itv, str)) return;
    store_(*itv, 0, 0);
    reading_t in = start_(str, str_len, prec, SEC_PER_DAY);
    if (in.at == in.end) raise(error_at(DV_ERR_ITV_TEXT, __FILE__, __LINE__, reader));
    if (!has_row_(type)) raise(error_at(DV_ERR_ITV_QUALIFIER, __FILE__, __LINE__, reader));
    take_sign_(in);
    const int error = read_tokens_(in, _itv_fmt[type], kind_t::seconds);
    store_(*itv, in.total, rounded_(in.nsec, fprec) * in.sign);
    if (error != 0) raise_fault_(error, _dts_steps);
}

// Reads any text of a known length.
void read_dts_(dv_itv_dts_t &itv, const char *str, int str_len, int type, int prec, int fprec) {
    plain_dts_t fields;
    if (type != DV_ITV_DAY_TO_SECOND || !read_plain_dts(fields, str, str + str_len, prec))
        return read_any_dts_(&itv, str, str_len, type, prec, fprec);
    const int32_t nsec = rounded_(fields.nsec, fprec);
    if (nsec == NSEC_PER_SEC) return read_any_dts_(&itv, str, str_len, type, prec, fprec);
    // Signs are hard to predict: x ^ -1 is -x - 1.
    const int32_t sign = -int32_t{fields.is_negative};
    itv_set_days(itv, (fields.days ^ sign) - sign);
    itv_set_seconds(itv, (fields.seconds ^ sign) - sign);
    itv_set_nanoseconds(itv, (nsec ^ sign) - sign);
}

}  // namespace

extern "C" {

void dv_itv_ytm_from_str(dv_itv_ytm_t *itv, const char *str, int str_len, int type, int prec) {
    if (!are_given_(itv, str)) return;
    itv_set_total_months(*itv, 0);
    reading_t in = start_(str, str_len, prec, MONTHS_PER_YEAR);
    if (in.at == in.end) raise(DV_ERR_ITV_TEXT);
    if (!has_row_(type)) raise(DV_ERR_ITV_QUALIFIER);
    take_sign_(in);
    const int error = read_tokens_(in, _itv_fmt[type], kind_t::months);
    itv_set_total_months(*itv, in.total);
    if (error != 0) raise_fault_(error, _ytm_steps);
}

void dv_itv_dts_from_str(dv_itv_dts_t *itv, const char *str, int str_len, int type, int prec, int fprec) {
    if (!given(itv, str)) return read_any_dts_(itv, str, str_len, type, prec, fprec);
    const size_t length = str_len == 0 ? strlen(str) : static_cast<size_t>(str_len);
    if (length - 1 >= INT_MAX)  // none, less than none, or more than is counted
        return read_any_dts_(itv, str, str_len, type, prec, fprec);
    read_dts_(*itv, str, static_cast<int>(length), type, prec, fprec);
}

}  // extern "C"
