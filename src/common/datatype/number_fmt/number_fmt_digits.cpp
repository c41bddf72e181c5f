// The digits of a value as a model asks for them.
//
// The base-100 digits of the record become decimal characters, eight to a word; rounding works on those, so
// that a carry out of the range of NUMBER (9.99E+125 with one digit) is no overflow. Hexadecimal digits come
// from a binary integer, built up from eighteen decimal digits at a time.

#include "number_fmt_digits.h"

#include <algorithm>

#include "../ascii.h"
#include "../number/binary_integer.h"
#include "../number/number_internal.h"

using namespace dv::impl;

namespace {

static_assert(model_digits_t::HEX_DIGITS_MAX == 16 * binary_integer_t::WORDS);

void unpack_(const number_t &x, model_digits_t &digits) {
    const long_coef coef = load_coef<3>(x);
    const int pairs = number_digit_count(x);
    for (int i = 0; i < 3; ++i) {
        auto *const word = reinterpret_cast<uint8_t *>(digits.text + 16 * i);
        store_be64(word, characters_of_pairs(static_cast<uint32_t>(coef.word[i] >> 32)));
        store_be64(word + 8, characters_of_pairs(static_cast<uint32_t>(coef.word[i])));
    }
    const int skipped = digits.text[0] == '0' ? 1 : 0;
    digits.first = digits.text + skipped;
    digits.count = std::max(2 * pairs - skipped, 0);
    digits.point = 2 * number_exponent(x) - skipped;
}

// Keeps so many digits, which may be none or fewer; the first one dropped decides.
void round_half_up_(model_digits_t &digits, int keep) {
    if (keep >= digits.count) return;
    char *const text = digits.first;
    const bool carries = keep >= 0 && text[keep] >= '5';
    digits.count = std::max(keep, 0);
    if (!carries) return;
    while (digits.count > 0 && text[digits.count - 1] == '9') --digits.count;
    if (digits.count > 0) {
        ++text[digits.count - 1];
        return;
    }
    text[0] = '1';
    digits.count = 1;
    ++digits.point;
}

void drop_trailing_zeros_(model_digits_t &digits) {
    while (digits.count > 0 && digits.first[digits.count - 1] == '0') --digits.count;
}

void make_zero_(model_digits_t &digits) {
    digits.first = digits.text;
    digits.count = 0;
    digits.point = 0;
    digits.exponent = 0;
    digits.is_negative = false;
}

// The digits of an integer, zeros behind the kept ones included.
binary_integer_t integer_of_(const model_digits_t &digits) {
    constexpr int chunk_digits = 18;
    binary_integer_t integer{};
    for (int i = 0; i < digits.point;) {
        uint64_t factor = 1, chunk = 0;
        for (const int end = std::min(i + chunk_digits, digits.point); i < end; ++i) {
            const char digit = i < digits.count ? digits.first[i] : '0';
            chunk = chunk * 10 + digit_of(digit);
            factor *= 10;
        }
        integer.multiply_add(factor, chunk);
    }
    return integer;
}

void make_hexadecimal_(model_digits_t &digits) {
    const binary_integer_t integer = integer_of_(digits);
    char *out = digits.text;
    for (int i = binary_integer_t::WORDS - 1; i >= 0; --i) {
        for (int shift = 60; shift >= 0; shift -= 4)
            *out++ = "0123456789ABCDEF"[integer.word[i] >> shift & 15];
    }
    char *const first = std::find_if(digits.text, out, [](char c) { return c != '0'; });
    digits.first = first;
    digits.count = digits.point = static_cast<int>(out - first);
}

}  // namespace

void dv::impl::take_digits(const number_t &x, const number_parse_result_t &model, model_digits_t &digits) {
    if (number_is_zero(x)) return make_zero_(digits);
    unpack_(x, digits);
    digits.is_negative = number_is_negative(x);
    const bool is_scientific = model.in_sciform != 0;
    round_half_up_(digits, (is_scientific ? 1 : digits.point) - model.pos_lsd);
    drop_trailing_zeros_(digits);
    if (digits.count == 0) return make_zero_(digits);
    digits.exponent = digits.point - 1;
    if (is_scientific) digits.point = 1;
    if (model.in_hexadecimal != 0) make_hexadecimal_(digits);
}
