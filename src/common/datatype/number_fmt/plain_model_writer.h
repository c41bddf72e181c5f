// Writing under plain models, for many values: of 9, 0, separators and a point, with or without FM, and a
// value that needs no rounding. It writes what number_fmt_to_text.cpp does, without a walk over the elements.
//
// The decimal characters of a value lie in a row of places, the point at a fixed one. A model made ready
// knows from which place each element takes its character; separators and point have places of their own:
//
//   places    , . ... 0 0 1 2 3 4 . 5 0 0 ...        1234.5
//   model             9 9 , 9 9 0 . 0 0
//   text              - 1 , 2 3 4 . 5 0

#ifndef DV_NUMBER_FMT_PLAIN_MODEL_WRITER_H
#define DV_NUMBER_FMT_PLAIN_MODEL_WRITER_H

#include <algorithm>

#include "../number/number_layout.h"
#include "number_fmt_digits.h"
#include "number_fmt_internal.h"

namespace dv::impl {

class plain_template {
  public:
    static constexpr int TEXT_SIZE_MAX = 34;  // what write() stores at most: sign, elements

    explicit plain_template(const number_model_t &model);

    // Writes a text without NUL and returns its length; 0, and nothing written: the value or the model is
    // another.
    size_t write(const number_t &x, char *text) const;

  private:
    static constexpr int _elements_max = TEXT_SIZE_MAX - 2;
    static constexpr int _comma = 0, _point = 1;  // places
    static constexpr int _units = 31;             // the place of the last digit in front of the point
    static constexpr int _exponent_max = 10;
    static constexpr int _places = 96;

    int elements_ = 0;  // 0: no plain model
    int integer_positions_ = 0;
    int positions_ = 0;
    int forced_begin_ = 0, forced_end_ = 0;  // the outermost 0s, as positions
    int point_element_ = 0;                  // that of the point, or behind all
    bool is_unfilled_ = false;
    uint8_t from_[_elements_max] = {};
    uint8_t element_of_[_elements_max + 1] = {};  // by position
};

inline plain_template::plain_template(const number_model_t &model) {
    const number_parse_result_t &pr = model.pr;
    if (model.whole != whole_model_e::NONE || model.elements > _elements_max || pr.in_hexadecimal != 0 ||
        pr.in_sciform != 0 || pr.sign_type != NUMBER_FMT_SIGN_NONE ||
        pr.currency_type != NUMBER_FMT_CURRENCY_NONE)
        return;
    integer_positions_ = pr.pos_msd + 1;
    positions_ = pr.pos_msd + 1 - pr.pos_lsd;
    if (positions_ == 0 || integer_positions_ > _units - _point) return;
    elements_ = point_element_ = model.elements;
    forced_begin_ = positions_;
    is_unfilled_ = pr.fm_present != 0;
    int position = 0;
    for (int i = 0; i < elements_; ++i) {
        const char element = pr.fmt_dig[i];
        if (element == '9' || element == '0') {
            if (element == '0') {
                forced_begin_ = std::min(forced_begin_, position);
                forced_end_ = position + 1;
            }
            from_[i] = static_cast<uint8_t>(_units + 1 - integer_positions_ + position);
            element_of_[position++] = static_cast<uint8_t>(i);
        } else if (element == '.' || element == 'D') {
            point_element_ = i;
            from_[i] = _point;
        } else {
            from_[i] = _comma;
        }
    }
}

inline size_t plain_template::write(const number_t &x, char *text) const {
    const bool is_zero = number_is_zero(x);
    const number_head_t head = read_head(x);
    if (elements_ == 0 || x.size == 0 || x.size > sizeof x || (head.count <= 0 && !is_zero)) return 0;
    const int exponent = is_zero ? 0 : head.exponent, count = is_zero ? 0 : head.count;
    if (exponent < 0 || exponent > _exponent_max || count > NUMBER_DIGITS_MAX) return 0;

    // Digits, and what they make of the places. Bytes above 99 are none.
    const long_coef coef = is_zero ? long_coef{} : load_coef<3>(x, head);
    constexpr uint64_t past_digits = in_each_byte(127 - 99);
    const auto &[w0, w1, w2] = coef.word;
    const uint64_t above = (w0 + past_digits) | (w1 + past_digits) | (w2 + past_digits) | w0 | w1 | w2;
    if ((above & in_each_byte(0x80)) != 0) return 0;
    const auto first = static_cast<int>(coef.word[0] >> 56);
    const auto last = count == 0 ? 0 : x.coef[count - 1] - NUMBER_DIGIT_EXCESS;
    const int digits = exponent == 0 ? 0 : 2 * exponent - (first < 10 ? 1 : 0);  // in front of the point
    const int decimals = 2 * (count - exponent) - (last % 10 == 0 ? 1 : 0);
    if (digits > integer_positions_ || decimals > positions_ - integer_positions_ || (first == 0 && !is_zero))
        return 0;
    char places[_places];
    memset(places, '0', sizeof places);
    places[_comma] = ',';
    places[_point] = '.';
    auto *const begin = reinterpret_cast<uint8_t *>(places + _units + 1 - 2 * exponent);
    for (int i = 0; i < 3; ++i) {
        store_be64(begin + 16 * i, characters_of_pairs(static_cast<uint32_t>(coef.word[i] >> 32)));
        store_be64(begin + 16 * i + 8, characters_of_pairs(static_cast<uint32_t>(coef.word[i])));
    }

    // The positions that are written, and their elements.
    int from = std::min({integer_positions_ - digits, forced_begin_, integer_positions_});
    int end = positions_;
    if (is_unfilled_) end = std::max({integer_positions_, integer_positions_ + decimals, forced_end_});
    if (from >= end) {
        from = integer_positions_ > 0 ? integer_positions_ - 1 : 0;
        end = std::max(end, from + 1);
    }
    const int element_begin = from < integer_positions_    ? element_of_[from]
                              : point_element_ < elements_ ? point_element_
                                                           : element_of_[from];
    const int element_end = end > integer_positions_     ? element_of_[end - 1] + 1
                            : point_element_ < elements_ ? point_element_ + 1
                                                         : elements_;
    char *out = text;
    if (!is_unfilled_) {
        memset(out, ' ', TEXT_SIZE_MAX);
        out += element_begin + elements_ - element_end;
    }
    *out = head.sign != 0 ? '-' : ' ';
    out += !is_unfilled_ || *out == '-' ? 1 : 0;
    for (int i = element_begin; i < element_end; ++i) *out++ = places[from_[i]];
    return static_cast<size_t>(out - text);
}

}  // namespace dv::impl

#endif  // DV_NUMBER_FMT_PLAIN_MODEL_WRITER_H
