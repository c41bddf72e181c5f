// What must hold of any model and any value: asked by the tests over generated ones, by the fuzzer over its
// inputs. Models and texts lie in memory of their own, with nothing behind them; a raise is "error -5074".

#ifndef DV_TEST_NUMBER_MODEL_PROPERTY_H
#define DV_TEST_NUMBER_MODEL_PROPERTY_H

#include "dvtypes/number_fmt.h"
#include "number_support.h"

namespace dv::test {

inline int length(std::string_view text) { return static_cast<int>(text.size()); }
inline std::string error_text(int code) { return "error " + std::to_string(code); }

// By a copy of the model made ready, whose text is gone.
inline std::string write_made_ready(const number_t &x, std::string_view model, int size) {
    const guarded out(static_cast<size_t>(size));
    int written = 0;
    const int code = raise_of([&] {
        number_fmt_ctx_t made, copy;
        char text[NUMBER_FMT_MAX + 2] = {};
        memcpy(text, model.data(), std::min(model.size(), sizeof text));
        number_fmt_ctx_set(&made, std::min(length(model), NUMBER_FMT_MAX + 2), text, /*for_parser=*/0);
        memset(text, '9', sizeof text);
        copy = made;
        memset(&made, 0, sizeof made);
        written = number_to_str_ctx(&x, size, out.text(), &copy);
    });
    if (!out.intact()) return "buffer overrun";
    if (code != 0) return error_text(code);
    return std::strlen(out.text()) == static_cast<size_t>(written) ? out.text() : "another length";
}

inline outcome_t read_made_ready(std::string_view text, std::string_view model) {
    const guarded fmt(model.size(), model.data()), in(text.size(), text.data());
    return ours(*_number_zero, [&](number_t *x) {
        number_fmt_ctx_t made;
        number_fmt_ctx_set(&made, length(model), fmt.text(), /*for_parser=*/1);
        number_from_str_ctx(x, length(text), in.text(), &made);
    });
}

// Each way; what they differ in is no text and no number that anything expects.
inline std::string write_under(const number_t &x, std::string_view model, int size = NUMBER_FMT_TEXT_SIZE) {
    const guarded fmt(model.size(), model.data()), out(static_cast<size_t>(size));
    const int code = raise_of([&] { number_to_str_fmt(&x, size, out.text(), length(model), fmt.text()); });
    const std::string text = !out.intact() ? "buffer overrun" : code != 0 ? error_text(code) : out.text();
    const std::string other = write_made_ready(x, model, size);
    return text == other ? text : text + ", made ready " + other;
}

inline outcome_t read_under(std::string_view text, std::string_view model) {
    const guarded fmt(model.size(), model.data()), in(text.size(), text.data());
    const outcome_t read = ours(*_number_zero, [&](number_t *x) {
        number_from_str_fmt(x, length(text), in.text(), length(model), fmt.text());
    });
    return read == read_made_ready(text, model) ? read : outcome_t{BROKEN_RECORD};
}

inline void expect_text(bool holds) {
    if (!holds) throw twin_raise{-5074};
}

// Hexadecimal digits by hand, each step a NUMBER operation.
inline decimal_t twin_read_hexadecimal(std::string_view text) {
    const int mode = number_get_roundmode();
    decimal_t value;
    for (const char c : text.substr(0, text.find(' '))) {
        const size_t digit = std::string_view("0123456789ABCDEF").find(c);
        expect_text(digit != std::string_view::npos);
        value = twin_add(twin_mul(value, {16, 0}, mode), {static_cast<int>(digit), 0}, mode);
    }
    return value;
}

// A text being read by hand, over plain strings, and the number gathered from it.
struct text_by_hand_t {
    std::string text;
    int left_out;
    std::string number{};
    bool has_digit = false;

    void copy() {
        number += text[0];
        text.erase(0, 1);
    }
    void pass(const std::string &wanted) {
        expect_text(text.starts_with(wanted));
        text.erase(0, wanted.size());
    }
    void take_digit(bool may_be_left_out) {
        if (text.empty()) return;
        const bool is_left_out = may_be_left_out && !has_digit && left_out > 0;
        left_out -= int{is_left_out};
        if (is_left_out) return;
        copy();
        has_digit = true;
    }
    void take_point(bool may_be_missing) {
        if (may_be_missing && text.empty()) return;
        expect_text(text.starts_with('.'));
        copy();
    }
    void take(char element) {
        switch (element) {
            case '9':
            case '0':
                return take_digit(element == '9');
            case '.':
            case 'D':
                return take_point(element == '.');
            case ',':
            case 'G':
                return has_digit ? pass(",") : void();
            default:
                return pass(element == 'C' ? "USD" : "$");
        }
    }
};

// Reading by hand, model and text side by side. Throws what the library raises.
inline decimal_t twin_read_under(std::string text, const number_parse_result_t &model) {
    const std::string integer = text.substr(0, text.find('.'));
    const auto integer_digits = std::ranges::count_if(integer, [](char c) { return c >= '0' && c <= '9'; });
    text.erase(0, text.find_first_not_of(' '));
    if (model.in_hexadecimal != 0) return twin_read_hexadecimal(text);
    text_by_hand_t in{text, model.pos_msd + 1 - static_cast<int>(integer_digits)};
    expect_text(in.left_out >= 0);
    if (text.starts_with('-')) in.copy();
    if (model.currency_type == NUMBER_FMT_CURRENCY_DOLLAR) in.pass("$");
    for (const char element : std::string_view(model.fmt_dig)) in.take(element);
    expect_text(in.text.find_first_not_of(' ') == in.text.npos);
    const size_t first = in.number.find_first_not_of(' ');
    expect_text(first == in.number.npos || in.number[first] != '+');
    return twin_read(in.number);
}

// The magnitude that a text shows: sign, currency, separators and fill do not count.
inline decimal_t magnitude_in(std::string text, bool is_hexadecimal) {
    if (const size_t usd = text.find("USD"); usd != text.npos) text.erase(usd, 3);
    text.resize(text.find_last_not_of("-> ") + 1);
    std::erase_if(text, [](char c) { return std::strchr("+< $,", c) != nullptr; });
    if (text.starts_with('-')) text.erase(0, 1);
    return is_hexadecimal ? decimal_t{big_t("0x" + text.substr(0, text.find('.'))), 0} : twin_read(text);
}

// Does the rounded value fit the positions of the model?
inline bool fits(const decimal_t &x, const number_parse_result_t &model) {
    if (model.in_sciform != 0) return x.digits == 0 || model.pos_msd >= 0;
    const int positions = std::min(model.pos_msd + 1, 126);
    if (model.in_hexadecimal == 0) return compare({abs(x.digits), x.exponent}, {1, positions}) < 0;
    return x.digits >= 0 && compare(x, {pow(big_t(16), static_cast<unsigned>(positions)), 0}) < 0;
}

// Is it one of the texts that are promised to read back?
inline bool is_readable(const std::string &text, const number_parse_result_t &model, int top) {
    const bool is_hex = model.in_hexadecimal != 0;
    if (model.in_sciform != 0 || (is_hex && top > 36) || text.ends_with('-')) return false;
    return text.find_first_of(is_hex ? "<>+-$U,." : "<>+") == text.npos;
}

// "" when the buffer's bound is exact, the text as wide as its model, "#" written where nothing else can be,
// and otherwise the rounded value shown, and read back where that is promised. Else inputs and text.
inline std::string model_fault(const std::string &model, const number_t &x) {
    const std::string text = write_under(x, model), at = ": " + describe(x) + "under " + model + ": " + text;
    number_parse_result_t pr;
    const int refused = raise_of([&] { number_fmt_parse(model.c_str(), &pr); });
    if (refused != 0) return text == error_text(refused) || model.size() <= 4 ? "" : "not refused" + at;
    int size = length(text), width = 0;  // 0: more than 256 characters
    if (write_under(x, model, size) != error_text(-3005) || write_under(x, model, size + 1) != text)
        return "another buffer" + at;
    raise_of([&] { width = number_get_length(model.c_str(), length(model)); });
    const decimal_t value = decode(x);
    const int top = top_position(value), least = pr.fm_present != 0 ? 0 : width;
    const bool is_wide = pr.in_sciform != 0 && std::abs(top) > 98;  // three digits of exponent
    if (width > 0 && !is_wide && std::clamp(size, least, width) != size) return "width" + at;
    if (pr.in_sciform != 0 && top == 125) return "";  // may become 1E+126, which is no NUMBER
    const decimal_t rounded = twin_round(value, pr.pos_lsd + pr.in_sciform * top, NUMBER_RMODE_HALF_UP);
    if (text.starts_with('#') == fits(rounded, pr)) return "overflow" + at;
    if (text.starts_with('#') || pr.pos_msd < pr.pos_lsd) return "";  // no digit is shown
    const decimal_t shown = magnitude_in(text, pr.in_hexadecimal != 0);
    if (compare(shown, {abs(rounded.digits), rounded.exponent}) != 0) return "shows another value" + at;
    if (!is_readable(text, pr, top)) return "";
    return read_under(text, model) == outcome_t{0, encode(rounded)} ? "" : "reads otherwise" + at;
}

}  // namespace dv::test

#endif  // DV_TEST_NUMBER_MODEL_PROPERTY_H
