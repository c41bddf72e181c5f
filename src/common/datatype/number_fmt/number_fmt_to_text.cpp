// NUMBER to text under a model.
//
//   text = fill front ["$"] digits [ "E" ("+" | "-") exponent ] behind
//
// What stands in front of and behind the digits depends on the model's sign element and the value's sign. The
// digits are laid into the positions of the model from its first written one on; everything that a model has
// in front of that position is missing from the text, and blanks at its very beginning make up for it, so
// that all texts of a model are as wide as the model. The text is put together in a buffer that holds the
// longest one and goes to the caller's in one piece.

#include <algorithm>
#include <cstring>
#include <iterator>

#include "../error.h"
#include "../number/number_internal.h"
#include "number_fmt_digits.h"
#include "number_fmt_internal.h"

using namespace dv::impl;

namespace {

constexpr int _text_minimum_size = 65;  // the buffer of TM, TM9 and TME

// By sign element, for values from zero on and for negative ones. NUL: nothing.
struct sign_marks_t {
    char front[2];
    char behind[2];
};
constexpr sign_marks_t _sign_marks[] = {{{' ', '-'}, {'\0', '\0'}},   // NONE
                                        {{'\0', '\0'}, {' ', '-'}},   // MI
                                        {{' ', '<'}, {' ', '>'}},     // PR
                                        {{'+', '-'}, {'\0', '\0'}},   // S in front
                                        {{'\0', '\0'}, {'+', '-'}}};  // S behind
static_assert(std::size(_sign_marks) == NUMBER_FMT_SIGN_MAX);

[[noreturn, gnu::cold]] void refuse_buffer_(int line = __builtin_LINE()) {
    raise(error_at(DV_ERR_TEXT_BUFFER_SIZE, __FILE__, line, "number_to_str_fmt"));
}

char *put_mark_(char *out, char mark) {
    *out = mark;
    return out + (mark != '\0' ? 1 : 0);
}

char *put_text_(char *out, std::string_view text) {
    memcpy(out, text.data(), text.size());
    return out + text.size();
}

struct model_t {
    const number_parse_result_t &pr;
    int elements;  // in fmt_dig

    std::string_view digit_part() const { return {pr.fmt_dig, static_cast<size_t>(elements)}; }
    int integer_positions() const { return pr.pos_msd + 1; }
    int positions() const { return pr.pos_msd + 1 - pr.pos_lsd; }
    const sign_marks_t &sign() const { return _sign_marks[pr.sign_type]; }
};

bool is_currency_(char element) { return element == 'C' || element == 'L' || element == 'U'; }

bool is_digit_element_(char element) { return element == '9' || element == '0' || element == 'X'; }

// Characters of every text of the model without FM, as long as its exponent has two digits.
int width_of_(const model_t &model) {
    const sign_marks_t &sign = model.sign();
    return model.elements + (sign.front[0] != '\0' ? 1 : 0) + (sign.behind[0] != '\0' ? 1 : 0) +
           (model.pr.currency_type == NUMBER_FMT_CURRENCY_DOLLAR ? 1 : 0) +
           (model.pr.currency_type == NUMBER_FMT_CURRENCY_C ? 2 : 0) + (model.pr.in_sciform != 0 ? 4 : 0);
}

// Digit positions are counted from 0, the point is no position: written is [first, end).
struct span_t {
    int first;
    int end;
};

// The outermost "0" elements: the position of the first one, and that behind the last one. Without any, the
// span is empty at the end of the positions and ends at 0.
span_t forced_span_(const model_t &model) {
    span_t forced{model.positions(), 0};
    int position = 0;
    for (const char element : model.digit_part()) {
        if (element == '0') forced = {std::min(forced.first, position), position + 1};
        position += is_digit_element_(element) ? 1 : 0;
    }
    return forced;
}

// FM drops zeros from the end of the fraction; not in front of a currency, whose place they show the reader.
bool drops_zeros_(const model_t &model) {
    return model.pr.fm_present != 0 && (model.elements == 0 || !is_currency_(model.digit_part().back()));
}

span_t written_span_(const model_t &model, const model_digits_t &digits) {
    const int integer_positions = model.integer_positions();
    const span_t forced = forced_span_(model);
    span_t span{std::min(integer_positions - std::max(digits.point, 0), forced.first), model.positions()};
    span.first = std::min(span.first, integer_positions);
    if (model.pr.in_sciform != 0) span.first = std::min(span.first, std::max(integer_positions - 1, 0));
    if (drops_zeros_(model)) {
        const int significant_end = integer_positions - digits.point + digits.count;
        span.end = std::max({integer_positions, significant_end, forced.end});
    }
    // Zero is written all the same: as the last integer digit, else as the first of the fraction.
    if (span.first < span.end || model.positions() == 0) return span;
    return integer_positions > 0 ? span_t{integer_positions - 1, span.end} : span_t{0, 1};
}

// The model's digit part: separators stand between written digits, the point and a currency always.
char *put_digits_(char *out, const model_t &model, const model_digits_t &digits) {
    const span_t span = written_span_(model, digits);
    const int lead = model.integer_positions() - digits.point;  // position of the first significant digit
    int position = 0;
    for (const char element : model.digit_part()) {
        switch (element) {
            case ',':
            case 'G':
                if (position > span.first) *out++ = ',';
                break;
            case '.':
            case 'D':
                *out++ = '.';
                break;
            case 'C':
                out = put_text_(out, "USD");
                break;
            case 'L':
            case 'U':
                *out++ = '$';
                break;
            default:
                if (position >= span.first && position < span.end) {
                    const int i = position - lead;
                    *out++ = i >= 0 && i < digits.count ? digits.first[i] : '0';
                }
                ++position;
        }
    }
    return out;
}

// At least two digits; at most 130.
char *put_exponent_(char *out, int exponent) {
    const int magnitude = exponent < 0 ? -exponent : exponent;
    *out++ = 'E';
    *out++ = exponent < 0 ? '-' : '+';
    if (magnitude >= 100) *out++ = '1';
    *out++ = static_cast<char>('0' + magnitude / 10 % 10);
    *out++ = static_cast<char>('0' + magnitude % 10);
    return out;
}

// The text without its fill.
char *put_value_(char *out, const model_t &model, const model_digits_t &digits) {
    const size_t negative = digits.is_negative ? 1 : 0;
    const char front = model.sign().front[negative];
    const bool is_left_out = front == ' ' && model.pr.fm_present != 0;
    if (!is_left_out) out = put_mark_(out, front);
    if (model.pr.currency_type == NUMBER_FMT_CURRENCY_DOLLAR) *out++ = '$';
    out = put_digits_(out, model, digits);
    if (model.pr.in_sciform != 0) out = put_exponent_(out, digits.exponent);
    return put_mark_(out, model.sign().behind[negative]);
}

bool fits_(const model_t &model, const model_digits_t &digits) {
    if (model.pr.in_hexadecimal != 0 && digits.is_negative) return false;
    return digits.point <= model.integer_positions();
}

void put_filled_(char *str, int fill_count, char fill, std::string_view text) {
    memset(str, fill, static_cast<size_t>(fill_count));
    *put_text_(str + fill_count, text) = '\0';
}

void write_under_model_(const number_t &x, int buf_size, char *str, const model_t &model) {
    model_digits_t digits;
    take_digits(x, model.pr, digits);
    const int width = width_of_(model);
    if (!fits_(model, digits) || marker_text(x) != nullptr) {
        if (width >= buf_size) refuse_buffer_();
        return put_filled_(str, width, '#', "");
    }
    char text[NUMBER_FMT_TEXT_SIZE];
    const auto length = static_cast<int>(put_value_(text, model, digits) - text);
    const int fill = model.pr.fm_present != 0 ? 0 : std::max(width - length, 0);
    if (fill + length >= buf_size) refuse_buffer_();
    put_filled_(str, fill, ' ', {text, static_cast<size_t>(length)});
}

void write_text_minimum_(const number_t &x, int buf_size, char *str, const char *form) {
    char text[_text_minimum_size];
    number_to_str(&x, sizeof text, text, form);
    const size_t size = strlen(text) + 1;
    if (buf_size < 0 || size > static_cast<size_t>(buf_size)) refuse_buffer_();
    memcpy(str, text, size);
}

// FMRN: what was written at the right moves to the front.
void drop_fill_(char *str) {
    const size_t fill = strspn(str, " ");
    memmove(str, str + fill, strlen(str + fill) + 1);
}

}  // namespace

void dv::impl::number_to_text_under(const number_t &x, int buf_size, char *str, const number_model_t &model) {
    switch (model.whole) {
        case whole_model_e::TM:
            return write_text_minimum_(x, buf_size, str, nullptr);
        case whole_model_e::TME:
            return write_text_minimum_(x, buf_size, str, "S");
        case whole_model_e::ROMAN:
            return _number_to_str_fmt_rn(&x, buf_size, str, model.in_upper ? 1 : 0);
        case whole_model_e::ROMAN_UNFILLED:
            _number_to_str_fmt_rn(&x, buf_size, str, model.in_upper ? 1 : 0);
            return drop_fill_(str);
        case whole_model_e::NONE:
            return write_under_model_(x, buf_size, str, {model.pr, model.elements});
    }
}

extern "C" void number_to_str_fmt(const number_t *x, int buf_size, char *str, int fmt_len, const char *fmt) {
    if (!DV_ASSERT(number_is_nonnull_ptr(x) && number_is_nonnull_ptr(str))) return;
    number_model_t model;
    make_number_model(model_of(fmt, fmt_len), model);
    number_to_text_under(*x, buf_size, str, model);
}
