// NUMBER to text: normal (positional) and scientific form, whole or rounded to fit a buffer.
//
// Plain values are written by plain_text_writer.h; what follows here writes any. A value is first unpacked
// into its significant decimal digits as characters. The lengths of both forms follow from the count of those
// digits and the decimal exponent alone, so a form is chosen before anything is written, and a shortened
// value is a copy rounded half up that is unpacked again.

#include <algorithm>
#include <array>

#include "../error.h"
#include "number_round.h"
#include "plain_text_writer.h"

using namespace dv::impl;

namespace {

struct digit_pair_t {
    char text[2];
};

// The two decimal characters of a digit byte of either sign; "??" for a byte that is no digit.
constexpr auto coef_to_char = [] {
    std::array<digit_pair_t, 256> table{};
    for (digit_pair_t &pair : table) pair = {{'?', '?'}};
    for (uint8_t digit = 0; digit < 100; ++digit) {
        const digit_pair_t pair = {
            {static_cast<char>('0' + digit / 10), static_cast<char>('0' + digit % 10)}};
        table[NUMBER_DIGIT_EXCESS + digit] = pair;
        table[NUMBER_DIGIT_EXCESS - digit] = pair;
    }
    return table;
}();

// A value that is not zero: its significant decimal digits, 0.dddd x 10^point.
struct decimal_t {
    char text[2 * NUMBER_DIGITS_MAX];
    const char *digits;
    int count;     // without trailing zeros, at least 1
    int point;     // decimal exponent + 1
    int negative;  // 0 or 1: the length of the sign
};

void unpack_(const number_t &x, decimal_t &value) {
    const int pairs = std::max(number_digit_count(x), 1);  // bytes that are no digits may leave none
    for (int i = 0; i < pairs; ++i) memcpy(&value.text[2 * i], coef_to_char[x.coef[i]].text, 2);
    const bool skip_first = value.text[0] == '0';
    const bool skip_last = value.text[2 * pairs - 1] == '0';
    value.digits = value.text + (skip_first ? 1 : 0);
    value.count = std::max(2 * pairs - (skip_first ? 1 : 0) - (skip_last ? 1 : 0), 1);
    value.point = 2 * number_exponent(x) - (skip_first ? 1 : 0);
    value.negative = number_is_negative(x) ? 1 : 0;
}

// ---- lengths, the NUL counted ----

int normal_size_(const decimal_t &value) {
    const int integer_digits = std::max(value.point, 0);
    const int fraction_digits = std::max(value.count - value.point, 0);
    return value.negative + integer_digits + (fraction_digits != 0 ? 1 : 0) + fraction_digits + 1;
}

int exponent_digits_(int exponent) { return exponent <= -100 || exponent >= 100 ? 3 : 2; }

int scientific_size_(const decimal_t &value, int digits) {
    return value.negative + digits + (digits > 1 ? 1 : 0) + 2 + exponent_digits_(value.point - 1) + 1;
}

// ---- writers; the buffer is large enough ----

char *put_(char *out, const char *text, int length) {
    memcpy(out, text, static_cast<size_t>(length));
    return out + length;
}

char *put_zeros_(char *out, int count) {
    memset(out, '0', static_cast<size_t>(count));
    return out + count;
}

void write_normal_(const decimal_t &value, char *out) {
    if (value.negative != 0) *out++ = '-';
    if (value.point >= value.count) {
        out = put_(out, value.digits, value.count);
        out = put_zeros_(out, value.point - value.count);
    } else if (value.point > 0) {
        out = put_(out, value.digits, value.point);
        *out++ = '.';
        out = put_(out, value.digits + value.point, value.count - value.point);
    } else {
        *out++ = '.';
        out = put_zeros_(out, -value.point);
        out = put_(out, value.digits, value.count);
    }
    *out = '\0';
}

void write_scientific_(const decimal_t &value, char *out) {
    if (value.negative != 0) *out++ = '-';
    *out++ = value.digits[0];
    if (value.count > 1) {
        *out++ = '.';
        out = put_(out, value.digits + 1, value.count - 1);
    }
    const int exponent = value.point - 1;
    const int magnitude = exponent < 0 ? -exponent : exponent;
    *out++ = 'E';
    *out++ = exponent < 0 ? '-' : '+';
    if (magnitude >= 100) *out++ = '1';  // at most 130
    out = put_(out, coef_to_char[NUMBER_DIGIT_EXCESS + static_cast<size_t>(magnitude % 100)].text, 2);
    *out = '\0';
}

// ---- the four forms, in the order in which they are tried; false: does not fit ----

bool try_normal_(const decimal_t &value, int buf_size, char *str) {
    if (normal_size_(value) > buf_size) return false;
    write_normal_(value, str);
    return true;
}

bool try_scientific_(const decimal_t &value, int buf_size, char *str) {
    if (scientific_size_(value, value.count) > buf_size) return false;
    write_scientific_(value, str);
    return true;
}

// Rounds to as many fraction digits as the buffer holds behind sign, integer digits and point.
bool try_shortened_normal_(const number_t &x, const decimal_t &value, int buf_size, char *str) {
    const int integer_size = value.negative + std::max(value.point, 0) + 1;
    if (value.point > 0 && integer_size > buf_size) return false;
    number_t rounded;
    number_copy(rounded, x);
    number_round_at(rounded, -std::max(buf_size - integer_size - 1, 0), NUMBER_RMODE_HALF_UP);
    if (number_is_zero(rounded)) {
        if (buf_size < 2) return false;
        put_(str, "0", 2);
        return true;
    }
    decimal_t shortened;
    unpack_(rounded, shortened);
    return try_normal_(shortened, buf_size, str);
}

// Rounds to as many digits as the buffer holds beside sign, point and exponent.
bool try_shortened_scientific_(const number_t &x, const decimal_t &value, int buf_size, char *str) {
    const int spare = buf_size - scientific_size_(value, 1);
    if (spare < 0) return false;
    const int digits = std::max(spare, 1);  // one spare byte goes to the point, so one digit needs none
    number_t rounded;
    number_copy(rounded, x);
    number_round_at(rounded, value.point - digits, NUMBER_RMODE_HALF_UP);
    decimal_t shortened;
    unpack_(rounded, shortened);
    return try_scientific_(shortened, buf_size, str);
}

enum class form_t { automatic, normal, scientific, unknown };

form_t form_of_(const char *format) {
    if (format == nullptr) return form_t::automatic;
    switch (format[0]) {
        case 'N':
        case 'n':
            return form_t::normal;
        case 'S':
        case 's':
            return form_t::scientific;
        default:
            return form_t::unknown;
    }
}

[[noreturn]] void fail_(int code, int line = __builtin_LINE()) {
    raise(error_at(code, __FILE__, line, "number_to_str"));
}

void write_whole_(const char *text, int buf_size, char *str) {
    const int size = static_cast<int>(strlen(text)) + 1;
    if (buf_size < size) fail_(DV_ERR_TEXT_BUFFER_SIZE);
    put_(str, text, size);
}

// Writes any value. Raises in the name of number_to_str.
[[gnu::noinline]] void write_any_(const number_t *x, int buf_size, char *str, const char *format) {
    if (!DV_ASSERT(number_is_valid_ptr(x) && number_is_nonnull_ptr(str)) && !given(x, str)) return;
    const form_t form = form_of_(format);
    if (form == form_t::unknown) fail_(DV_ERR_NUMBER_FORMAT);
    if (number_is_zero(*x)) return write_whole_(form == form_t::scientific ? "0E+00" : "0", buf_size, str);
    const char *const marker = marker_text(*x);
    if (marker != nullptr) return write_whole_(marker, buf_size, str);

    decimal_t value;
    unpack_(*x, value);
    buf_size = std::max(buf_size, 0);
    const bool may_be_normal = form != form_t::scientific;
    const bool may_be_scientific = form != form_t::normal;
    if (may_be_normal && try_normal_(value, buf_size, str)) return;
    if (may_be_scientific && try_scientific_(value, buf_size, str)) return;
    if (may_be_normal && try_shortened_normal_(*x, value, buf_size, str)) return;
    if (may_be_scientific && try_shortened_scientific_(*x, value, buf_size, str))
        fail_(DV_ERR_NUMBER_TEXT_SHORTENED);
    fail_(DV_ERR_TEXT_BUFFER_SIZE);
}

}  // namespace

extern "C" void number_to_str(const number_t *x, int buf_size, char *str, const char *format) {
    const bool is_plain = format == nullptr && x != nullptr && str != nullptr && x->size <= sizeof *x;
    if (is_plain && write_plain_text(*x, buf_size, str) != 0) return;
    write_any_(x, buf_size, str, format);
}
