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

    struct shown_t {
        int digits;    // in front of the point
        int decimals;  // below 0: zeros in front of the point
    };
    struct span_t {
        int begin, end;
    };
    static bool is_plain_(const number_model_t &model);
    void place_elements_(const char *elements);
    void place_digit_(int element, int position, bool is_forced);
    bool measure_(const number_t &x, const number_head_t &head, shown_t &shown) const;
    static void lay_out_(const number_t &x, const number_head_t &head, char *places);
    span_t written_(const shown_t &shown) const;

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
    if (!is_plain_(model)) return;
    const number_parse_result_t &pr = model.pr;
    integer_positions_ = pr.pos_msd + 1;
    positions_ = pr.pos_msd + 1 - pr.pos_lsd;
    if (positions_ == 0 || integer_positions_ > _units - _point) return;
    elements_ = point_element_ = model.elements;
    forced_begin_ = positions_;
    is_unfilled_ = pr.fm_present != 0;
    place_elements_(pr.fmt_dig);
}

// Of digits, separators and a point alone, and not too long.
inline bool plain_template::is_plain_(const number_model_t &model) {
    const number_parse_result_t &pr = model.pr;
    return model.whole == whole_model_e::NONE && model.elements <= _elements_max && pr.in_hexadecimal == 0 &&
           pr.in_sciform == 0 && pr.sign_type == NUMBER_FMT_SIGN_NONE &&
           pr.currency_type == NUMBER_FMT_CURRENCY_NONE;
}

inline void plain_template::place_elements_(const char *elements) {
    int position = 0;
    for (int i = 0; i < elements_; ++i) {
        switch (elements[i]) {
            case '9':
            case '0':
                place_digit_(i, position++, /*is_forced=*/elements[i] == '0');
                break;
            case '.':
            case 'D':
                point_element_ = i;
                from_[i] = _point;
                break;
            default:
                from_[i] = _comma;
        }
    }
}

inline void plain_template::place_digit_(int element, int position, bool is_forced) {
    from_[element] = static_cast<uint8_t>(_units + 1 - integer_positions_ + position);
    element_of_[position] = static_cast<uint8_t>(element);
    if (!is_forced) return;
    forced_begin_ = std::min(forced_begin_, position);
    forced_end_ = position + 1;
}

// What a value shows on either side of the point; false: it is one that write() leaves.
inline bool plain_template::measure_(const number_t &x, const number_head_t &head, shown_t &shown) const {
    if (!has_sound_ends(x, head)) return false;
    if (head.exponent < 0 || head.exponent > _exponent_max) return false;
    const outer_digits_t outer = outer_digits_of(x, head);
    shown.digits = 2 * head.exponent - (head.exponent != 0 && outer.first < 10 ? 1 : 0);
    shown.decimals = 2 * (head.count - head.exponent) - (outer.last % 10 == 0 ? 1 : 0);
    return shown.digits <= integer_positions_ && shown.decimals <= positions_ - integer_positions_;
}

inline void plain_template::lay_out_(const number_t &x, const number_head_t &head, char *places) {
    const long_coef coef = load_coef<3>(x, head);
    auto *const begin = reinterpret_cast<uint8_t *>(places + _units + 1 - 2 * head.exponent);
    for (int i = 0; 8 * i < head.count; ++i) {  // the other places have their zeros
        store_be64(begin + 16 * i, characters_of_pairs(static_cast<uint32_t>(coef.word[i] >> 32)));
        store_be64(begin + 16 * i + 8, characters_of_pairs(static_cast<uint32_t>(coef.word[i])));
    }
}

// The elements that are written: their positions first.
inline plain_template::span_t plain_template::written_(const shown_t &shown) const {
    const bool has_point = point_element_ < elements_;
    int begin = std::min({integer_positions_ - shown.digits, forced_begin_, integer_positions_});
    int end = positions_;
    if (is_unfilled_) end = std::max({integer_positions_, integer_positions_ + shown.decimals, forced_end_});
    if (begin >= end) {  // a zero is written all the same
        begin = std::max(integer_positions_ - 1, 0);
        end = std::max(end, begin + 1);
    }
    const bool begins_at_point = begin >= integer_positions_ && has_point;
    const int past_integer = has_point ? point_element_ + 1 : elements_;
    return {begins_at_point ? point_element_ : element_of_[begin],
            end > integer_positions_ ? element_of_[end - 1] + 1 : past_integer};
}

inline size_t plain_template::write(const number_t &x, char *text) const {
    const number_head_t head = read_head(x);
    const bool is_zero = x.size == 1 && head.sign == 0;
    shown_t shown = {};
    if (elements_ == 0 || (!is_zero && !measure_(x, head, shown))) return 0;
    char places[_places];
    memset(places, '0', sizeof places);
    if (!is_zero) lay_out_(x, head, places);
    places[_comma] = ',';
    places[_point] = '.';

    const span_t written = written_(shown);
    char *out = text;
    if (!is_unfilled_) {
        memset(out, ' ', TEXT_SIZE_MAX);
        out += written.begin + elements_ - written.end;
    }
    *out = head.sign != 0 ? '-' : ' ';
    out += !is_unfilled_ || head.sign != 0 ? 1 : 0;
    for (int i = written.begin; i < written.end; ++i) *out++ = places[from_[i]];
    return static_cast<size_t>(out - text);
}

}  // namespace dv::impl

#endif  // DV_NUMBER_FMT_PLAIN_MODEL_WRITER_H
