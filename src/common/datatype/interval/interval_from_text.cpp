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
#include <type_traits>

#include "interval_internal.h"

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
    {kind_t::months,    '\0',     false,   false,   _unbounded, ITV_MONTHS_PER_YEAR, 0},               // YYT
    {kind_t::months,    '\0',     false,   false,   _unbounded, 1,                   0},               // MMT
    {kind_t::seconds,   '\0',     false,   false,   _unbounded, ITV_SEC_PER_DAY,     0},               // DDT
    {kind_t::seconds,   '\0',     true,    false,   _unbounded, ITV_SEC_PER_HOUR,    0},               // HHT
    {kind_t::seconds,   '\0',     true,    false,   _unbounded, ITV_SEC_PER_MINUTE,  0},               // MIT
    {kind_t::seconds,   '\0',     false,   false,   _unbounded, 1,                   0},               // SST
    {kind_t::months,    '\0',     false,   false,   11,         1,                   ERR_ITV_MONTH},   // MM
    {kind_t::seconds,   '\0',     false,   false,   23,         ITV_SEC_PER_HOUR,    ERR_ITV_HOUR},    // HH
    {kind_t::seconds,   '\0',     false,   false,   59,         ITV_SEC_PER_MINUTE,  ERR_ITV_MINUTE},  // MI
    {kind_t::seconds,   '\0',     false,   false,   59,         1,                   ERR_ITV_SECOND},  // SS
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
    bool is_negative;
    int32_t nsec;
    int64_t total;          // within +-10^14
    int64_t leading_limit;  // the least total that has too many leading digits
};
static_assert(std::is_trivially_destructible_v<reading_t>);

constexpr bool is_blank_(char c) {
    constexpr uint64_t blanks = 1ull << '\t' | 1ull << '\n' | 1ull << '\r' | 1ull << ' ' | 1ull << '\0';
    const auto code = static_cast<uint8_t>(c);
    return code <= ' ' && (blanks >> code & 1) != 0;
}

void skip_blanks_(reading_t &in) {
    while (in.at != in.end && is_blank_(*in.at)) ++in.at;
}

struct digits_t {
    int32_t value;
    int count;  // 0: the text goes on with something else
};

digits_t take_digits_(reading_t &in) {
    const char *const limit = in.end - in.at > _field_digits_max ? in.at + _field_digits_max : in.end;
    const char *at = in.at;
    int32_t value = 0;
    for (; at != limit; ++at) {
        const auto digit = static_cast<uint8_t>(*at - '0');
        if (digit > 9) break;
        value = value * 10 + digit;
    }
    const digits_t digits = {value, static_cast<int>(at - in.at)};
    in.at = at;
    return digits;
}

// ---- tokens; each returns an error code, or 0 ----

int read_field_(reading_t &in, const token_t &token) {
    const digits_t digits = take_digits_(in);
    if (digits.count == 0) return ERR_ITV_TEXT;
    if (digits.value > token.value_max) return token.error;
    const int32_t value = in.is_negative ? -digits.value : digits.value;
    in.total += token.is_wrapping ? wrapped_product(value, token.unit) : int64_t{value} * token.unit;
    return in.total >= in.leading_limit ? ERR_ITV_LEADING_PRECISION : 0;
}

int read_fraction_(reading_t &in) {
    const digits_t digits = take_digits_(in);
    if (digits.count == 0) return ERR_ITV_TEXT;
    const int64_t unit = ITV_POWERS_OF_TEN[static_cast<size_t>(ITV_FSEC_DIGITS - digits.count)];
    const auto nsec = static_cast<int32_t>(digits.value * unit);
    in.nsec = in.is_negative ? -nsec : nsec;
    return 0;
}

int read_separator_(reading_t &in, const token_t &token) {
    return *in.at++ == token.character ? 0 : ERR_ITV_TEXT;
}

int read_token_(reading_t &in, const token_t &token, kind_t field_kind) {
    if (token.character != ' ') skip_blanks_(in);
    if (in.at == in.end) return token.is_optional ? 0 : ERR_ITV_TEXT_ENDED;
    if (token.kind == kind_t::separator) return read_separator_(in, token);
    if (token.kind == field_kind) return read_field_(in, token);
    if (token.kind == kind_t::fraction) return read_fraction_(in);
    return ERR_ITV_QUALIFIER;
}

bool has_row_(int type) { return type >= 0 && type < DV_ITV_QUALIFIER_MAX; }

int read_tokens_(reading_t &in, const dv_itv_fmt_t &row, kind_t field_kind) {
    for (int i = 0; i < row.size; ++i) {
        const int error = read_token_(in, _tokens[static_cast<size_t>(row.token[i])], field_kind);
        if (error != 0) return error;
    }
    skip_blanks_(in);
    return in.at == in.end ? 0 : ERR_TRAILING_TEXT;
}

// ---- whole texts ----

// Goes to the first character that is no blank. A negative length is taken for an empty text.
reading_t start_(const char *str, int str_len, int prec, int leading_unit) {
    const bool is_given = str != NULL && str_len >= 0;
    const char *const text = is_given ? str : "";
    const size_t length = is_given && str_len > 0 ? static_cast<size_t>(str_len) : strlen(text);
    reading_t in = {text, text + length, false, 0, 0, itv_leading_limit(prec) * leading_unit};
    skip_blanks_(in);
    return in;
}

void take_sign_(reading_t &in) {
    in.is_negative = *in.at == '-';
    if (*in.at == '-' || *in.at == '+') ++in.at;
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
        case ERR_TRAILING_TEXT:
            return steps.whole_text;
        case ERR_ITV_LEADING_PRECISION:
            return steps.leading_precision;
        case ERR_ITV_QUALIFIER:
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
    const int zero_digits = ITV_FSEC_DIGITS - std::clamp(fprec, 0, ITV_FSEC_DIGITS);
    const auto unit = static_cast<int32_t>(ITV_POWERS_OF_TEN[static_cast<size_t>(zero_digits)]);
    const int32_t rest = nsec % unit;
    const int32_t kept = nsec - rest;
    if (rest > -(unit + 1) / 2 && rest < (unit + 1) / 2) return kept;
    return nsec < 0 ? kept - unit : kept + unit;
}

// A fraction that rounds up to a second is left in the seconds, also past a whole day. It borrows from them
// where the text's sign is not theirs: hours and minutes that wrapped around change it.
void store_(dv_itv_dts_t &itv, int64_t total, int32_t nsec) {
    itv_set_total_seconds(itv, total);
    const int32_t seconds = itv_seconds(itv) + nsec / ITV_NSEC_PER_SEC;
    const int32_t rest = nsec % ITV_NSEC_PER_SEC;
    const int32_t borrow = seconds > 0 && rest < 0 ? 1 : seconds < 0 && rest > 0 ? -1 : 0;
    itv_set_seconds(itv, seconds - borrow);
    itv_set_nanoseconds(itv, rest + borrow * ITV_NSEC_PER_SEC);
}

}  // namespace

extern "C" {

void dv_itv_ytm_from_str(dv_itv_ytm_t *itv, const char *str, int str_len, int type, int prec) {
    if (!is_itv_given(itv)) return;
    itv_set_total_months(*itv, 0);
    reading_t in = start_(str, str_len, prec, ITV_MONTHS_PER_YEAR);
    if (in.at == in.end) raise(ERR_ITV_TEXT);
    if (!has_row_(type)) raise(ERR_ITV_QUALIFIER);
    take_sign_(in);
    const int error = read_tokens_(in, _itv_fmt[type], kind_t::months);
    itv_set_total_months(*itv, in.total);
    if (error != 0) raise_fault_(error, _ytm_steps);
}

void dv_itv_dts_from_str(dv_itv_dts_t *itv, const char *str, int str_len, int type, int prec, int fprec) {
    if (!is_itv_given(itv)) return;
    store_(*itv, 0, 0);
    reading_t in = start_(str, str_len, prec, ITV_SEC_PER_DAY);
    if (in.at == in.end) raise(ERR_ITV_TEXT);
    if (!has_row_(type)) raise(ERR_ITV_QUALIFIER);
    take_sign_(in);
    const int error = read_tokens_(in, _itv_fmt[type], kind_t::seconds);
    store_(*itv, in.total, rounded_(in.nsec, fprec));
    if (error != 0) raise_fault_(error, _dts_steps);
}

}  // extern "C"
