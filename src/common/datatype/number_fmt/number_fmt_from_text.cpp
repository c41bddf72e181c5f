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
    raise(error_at(DV_ERR_NUMBER_TEXT, __FILE__, line, "number_from_str_fmt"));
}

std::string_view without_leading_blanks_(std::string_view text) {
    text.remove_prefix(std::min(text.find_first_not_of(' '), text.size()));
    return text;
}

// x = 16 x + digit, in 64 bits as long as they hold it, then as NUMBER operations; false: the text is
// refused.
bool read_hexadecimal_(number_t &x, std::string_view text) {
    constexpr uint64_t exact_max = (UINT64_MAX - (_hex_base - 1)) / _hex_base;
    number_t base, digit;
    number_from_uint8(&base, _hex_base);
    uint64_t value = 0;
    bool is_small = true;
    for (const char c : text.substr(0, text.find(' '))) {
        const int digit_value = hex_digit_of(c);  // in upper case, as the writer writes them
        if (digit_value < 0) return false;
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
    return true;
}

// A text being read under a model, and the numeric text that comes of it.
struct gathering_t {
    std::string_view rest;
    int empty_positions = 0;  // leading digit elements that the text leaves out
    bool has_digit = false;
    bool is_refused = false;
    int length = 0;
    char text[NUMBER_FMT_MAX + 2] = {};  // sign, a character for each element, NUL

    void keep(char c) { text[length++] = c; }
};

void expect_(gathering_t &in, std::string_view text) {
    in.is_refused |= !in.rest.starts_with(text);
    if (!in.is_refused) in.rest.remove_prefix(text.size());
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

// Leading digit positions that a text leaves empty; below 0: it has more digits. Every digit in front of the
// first point counts, so that a currency in front of them does not matter.
int empty_positions_(std::string_view text, int pos_msd) {
    const std::string_view integer = text.substr(0, text.find('.'));
    const auto digits = std::count_if(integer.begin(), integer.end(), is_digit);
    return pos_msd + 1 - static_cast<int>(std::min<std::ptrdiff_t>(digits, pos_msd + 2));
}

// False: the text is refused. What is gathered ends in a NUL, so that it may be empty.
bool gather_(gathering_t &in, std::string_view text, const number_model_t &model) {
    in.rest = without_leading_blanks_(text);
    in.empty_positions = empty_positions_(text, model.pr.pos_msd);
    if (in.empty_positions < 0) return false;
    if (in.rest.starts_with('-')) take_character_(in);
    if (model.pr.currency_type == NUMBER_FMT_CURRENCY_DOLLAR) expect_(in, "$");
    for (int i = 0; i < model.elements && !in.is_refused; ++i) take_element_(in, model.pr.fmt_dig[i]);
    if (in.is_refused || !without_leading_blanks_(in.rest).empty()) return false;
    // The plain conversion would take a "+" for the sign.
    return !without_leading_blanks_({in.text, static_cast<size_t>(in.length)}).starts_with('+');
}

// Under any model; `plain` reads plain numeric text, a length of 0 meaning: up to the NUL. False: the text is
// refused under the model.
template <typename Plain>
bool read_under_(number_t &x, std::string_view text, const number_model_t &model, Plain plain) {
    if (model.whole != whole_model_e::NONE) {  // to the plain conversion a length of 0 is none
        if (!text.empty()) plain(x, static_cast<int>(text.size()), text.data());
        return !text.empty();
    }
    if (model.pr.in_hexadecimal != 0) return read_hexadecimal_(x, without_leading_blanks_(text));
    gathering_t in;
    if (!gather_(in, text, model)) return false;
    plain(x, in.length, in.text);
    return true;
}

void read_or_raise_(number_t &x, std::string_view text, const number_model_t &model) {
    const auto plain = [](number_t &to, int length, const char *str) {
        number_from_str(&to, length, str, nullptr);
    };
    if (!read_under_(x, text, model, plain)) refuse_text_();
}

}  // namespace

void dv::impl::make_reading_model(std::string_view text, number_model_t &model) {
    model.whole = whole_model(text);
    if (model.whole == whole_model_e::ROMAN)
        raise(error_at(DV_ERR_NUMBER_MODEL, __FILE__, __LINE__, "number_from_str_fmt"));
    if (model.whole == whole_model_e::TM || model.whole == whole_model_e::TME) return;
    model.whole = whole_model_e::NONE;  // FMRN is none to read under: left to the compiler to refuse
    model.elements = compile_model(text, model.pr);
}

void dv::impl::number_from_text_under(number_t &x, std::string_view text, const number_model_t &model) {
    read_or_raise_(x, text, model);
}

int dv::impl::number_try_from_text_under(number_t &x, std::string_view text, const number_model_t &model) {
    int code = 0;
    const auto plain = [&code](number_t &to, int length, const char *str) {
        code = number_try_from_str(&to, length, str);
    };
    return read_under_(x, text, model, plain) ? code : int{DV_ERR_NUMBER_TEXT};
}

extern "C" void number_from_str_fmt(number_t *x, int str_len, const char *str, int fmt_len, const char *fmt) {
    if (!DV_ASSERT(number_is_nonnull_ptr(x) && number_is_nonnull_ptr(str))) return;
    const std::string_view text(str, static_cast<size_t>(std::max(str_len, 0)));
    const std::string_view model_text = model_of(fmt, fmt_len);
    if (read_under_plain_model(*x, text, plain_model_of(model_text))) return;
    number_model_t model;
    make_reading_model(model_text, model);
    read_or_raise_(*x, text, model);
}
