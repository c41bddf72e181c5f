// Text to NUMBER under a model.
//
// The digit part of the model is walked beside the text. Punctuation and currency must be what the model has;
// sign, point and whatever stands under a digit element are gathered into a plain numeric text, and the plain
// conversion judges that. Leading 9 positions that the text leaves empty are counted beforehand, from the
// digits in front of its first point. Hexadecimal digits have a loop of their own, plain models and texts a
// reader (plain_model.h).

#include <algorithm>

#include "../error.h"
#include "number_fmt_internal.h"
#include "plain_model.h"

using namespace dv::impl;

namespace {

constexpr int _hex_base = 16;
[[noreturn, gnu::cold]] void refuse_text_(int line = __builtin_LINE()) {
    raise(error_at(ERR_NUMBER_TEXT, __FILE__, line, "number_from_str_fmt"));
}

std::string_view without_leading_blanks_(std::string_view text) {
    text.remove_prefix(std::min(text.find_first_not_of(' '), text.size()));
    return text;
}

// x = 16 x + digit, in 64 bits as long as they hold it, then as NUMBER operations.
void read_hexadecimal_(number_t &x, std::string_view text) {
    constexpr uint64_t exact_max = (UINT64_MAX - (_hex_base - 1)) / _hex_base;
    number_t base, digit;
    number_from_uint8(&base, _hex_base);
    uint64_t value = 0;
    bool is_small = true;
    for (const char c : text.substr(0, text.find(' '))) {
        const int digit_value = hex_digit_of(c);  // in upper case, as the writer writes them
        if (digit_value < 0) refuse_text_();
        if (is_small && value <= exact_max) {
            value = value * _hex_base + static_cast<uint64_t>(digit_value);
            continue;
        }
        if (is_small) number_from_uint64(&x, value);
        is_small = false;
        number_mul(&x, &base);
        number_from_int32(&digit, digit_value);
        number_add(&x, &digit);
    }
    if (is_small) number_from_uint64(&x, value);
}

// A text being read under a model, and the numeric text that comes of it.
struct gathering_t {
    std::string_view rest;
    int empty_positions;  // leading digit elements that the text leaves out
    bool has_digit = false;
    int length = 0;
    char text[NUMBER_FMT_MAX + 2] = {};  // sign, a character for each element, NUL

    void keep(char c) { text[length++] = c; }
};

void expect_(gathering_t &in, std::string_view text) {
    if (!in.rest.starts_with(text)) refuse_text_();
    in.rest.remove_prefix(text.size());
}

// Any character: the plain conversion knows what may stand where.
void take_character_(gathering_t &in) {
    in.keep(in.rest[0]);
    in.rest.remove_prefix(1);
}

void take_digit_(gathering_t &in) {
    take_character_(in);
    in.has_digit = true;
}

void take_point_(gathering_t &in) {
    expect_(in, ".");
    in.keep('.');
}

void take_element_(gathering_t &in, char element) {
    switch (element) {
        case '9':
            if (in.rest.empty()) return;
            if (!in.has_digit && in.empty_positions > 0) {
                --in.empty_positions;
                return;
            }
            return take_digit_(in);
        case '0':
            if (!in.rest.empty()) take_digit_(in);
            return;
        case ',':
        case 'G':
            if (in.has_digit) expect_(in, ",");
            return;
        case '.':
            if (!in.rest.empty()) take_point_(in);
            return;
        case 'D':
            return take_point_(in);
        case 'C':
            return expect_(in, "USD");
        case 'L':
        case 'U':
            return expect_(in, "$");
        default:
            DV_ASSERT(false);
    }
}

// Leading digit positions that a text leaves empty. Every digit in front of the first point counts, so that a
// currency in front of them does not matter.
int empty_positions_(std::string_view text, int pos_msd) {
    const std::string_view integer = text.substr(0, text.find('.'));
    const auto digits = std::count_if(integer.begin(), integer.end(), is_digit);
    if (digits > pos_msd + 1) refuse_text_();
    return pos_msd + 1 - static_cast<int>(digits);
}

void read_decimal_(number_t &x, std::string_view text, const number_parse_result_t &pr,
                   std::string_view digit_part) {
    gathering_t in{without_leading_blanks_(text), empty_positions_(text, pr.pos_msd)};
    if (in.rest.starts_with('-')) take_character_(in);
    if (pr.currency_type == NUMBER_FMT_CURRENCY_DOLLAR) expect_(in, "$");
    for (const char element : digit_part) take_element_(in, element);
    if (!without_leading_blanks_(in.rest).empty()) refuse_text_();
    // The plain conversion would take a "+" for the sign.
    if (without_leading_blanks_({in.text, static_cast<size_t>(in.length)}).starts_with('+')) refuse_text_();
    number_from_str(&x, in.length, in.text, nullptr);  // a length of 0: up to the NUL
}

}  // namespace

extern "C" void number_from_str_fmt(number_t *x, int str_len, const char *str, int fmt_len, const char *fmt) {
    if (!DV_ASSERT(number_is_nonnull_ptr(x) && number_is_nonnull_ptr(str))) return;
    const std::string_view text(str, static_cast<size_t>(std::max(str_len, 0)));
    const std::string_view model = model_of(fmt, fmt_len);
    if (read_under_plain_model(*x, text, model)) return;
    switch (whole_model(model)) {
        case whole_model_e::TM:
        case whole_model_e::TME:
            if (text.empty()) raise(ERR_NUMBER_TEXT);  // to number_from_str a length of 0 is none
            return number_from_str(x, str_len, str, nullptr);
        case whole_model_e::ROMAN:
            raise(ERR_NUMBER_MODEL);
        case whole_model_e::ROMAN_UNFILLED:  // no model to read under: left to the compiler to refuse
        case whole_model_e::NONE:
            break;
    }
    number_parse_result_t pr;
    const int elements = compile_model(model, pr);
    if (pr.in_hexadecimal != 0) return read_hexadecimal_(*x, without_leading_blanks_(text));
    read_decimal_(*x, text, pr, {pr.fmt_dig, static_cast<size_t>(elements)});
}
