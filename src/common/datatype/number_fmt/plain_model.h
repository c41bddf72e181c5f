// Plain models, compiled and read under: [ "FM" ] and up to 32 of "9", "0", "," and ".", such as
// 999,999,990.99.
//
// What stands where in model and text is a bit for each character, 9s and 0s, commas and points apart. The
// bits of the model are moved to where its point meets that of the text, or its end:
//
//   model   9 9 9 , 9 9 9 , 9 9 0 . 9 9
//   text          _ _ - 1 , 2 3 4 . 5
//
// The text must have digits, commas and the point where the model has them, and every element in front of it
// must be one that may stay empty. Then the commas are taken out of the text, and its digits are stored as
// those of plain numeric text. Neither the model nor the text is walked, and nothing branches on lengths,
// sign and commas (bench/number_fmt). Anything else is left to the compiler of models and to the reader under
// any of them, right or wrong.

#ifndef DV_NUMBER_FMT_PLAIN_MODEL_H
#define DV_NUMBER_FMT_PLAIN_MODEL_H

#include <string_view>

#include "../number/plain_text.h"
#include "number_fmt_internal.h"

namespace dv::impl {

#if DV_HAS_VECTOR_BYTES

inline uint64_t bits_up_to(uint64_t end) { return (uint64_t{1} << end) - 1; }  // below 64

inline uint64_t bits_of(bytes16_t text, char c) {
    return top_bits_of(_mm_cmpeq_epi8(text, _mm_set1_epi8(c)));
}

// The elements of a model, a bit for each; the first is the lowest.
struct model_bits_t {
    uint64_t nines;
    uint64_t zeros;
    uint64_t commas;
    uint64_t points;
};
inline model_bits_t model_bits(bytes16_t model) {
    return {bits_of(model, '9'), bits_of(model, '0'), bits_of(model, ','), bits_of(model, '.')};
}

inline constexpr size_t PLAIN_MODEL_MAX = 2 * VECTOR_SIZE;

// Of 1 to 32 characters; above 16 the two halves overlap.
inline model_bits_t load_model(std::string_view model) {
    if (model.size() < VECTOR_SIZE)
        return model_bits(load_short_text(model.data(), static_cast<unsigned>(model.size())));
    const size_t behind = model.size() - VECTOR_SIZE;
    const model_bits_t first = model_bits(load_vector(model.data()));
    const model_bits_t last = model_bits(load_vector(model.data() + behind));
    return {first.nines | last.nines << behind, first.zeros | last.zeros << behind,
            first.commas | last.commas << behind, first.points | last.points << behind};
}

// Nothing but such elements, one point at most, and no comma behind it?
inline bool is_plain_model(const model_bits_t &elements, size_t size, unsigned point) {
    const uint64_t all = elements.nines | elements.zeros | elements.commas | elements.points;
    return all == bits_up_to(size) && (elements.points & (elements.points - 1)) == 0 &&
           elements.commas >> point == 0;
}

// Where the point of a model is, or its end.
inline unsigned model_point_of(const model_bits_t &elements, size_t size) {
    return static_cast<unsigned>(std::countr_zero(elements.points | uint64_t{1} << size));
}

inline std::string_view without_fm(std::string_view model) {
    if (model.size() > 2 && to_upper(model[0]) == 'F' && to_upper(model[1]) == 'M') model.remove_prefix(2);
    return model;
}

inline constexpr size_t PLAIN_TEXT_MAX = VECTOR_SIZE - 1;

// A text of at most 31 characters without blanks in front of its last 15, which may have more; "" if it is
// none.
inline std::string_view end_of_text(std::string_view text) {
    if (text.size() <= PLAIN_TEXT_MAX) return text;
    const size_t dropped = text.size() - PLAIN_TEXT_MAX;
    if (dropped > VECTOR_SIZE) return {};
    const uint64_t others = ~bits_of(load_vector(text.data()), ' ') & bits_up_to(dropped);
    if (others != 0) return {};
    text.remove_prefix(dropped);
    return text;
}

// Closes the gaps of up to three commas; false for more.
inline bool take_out_commas(bytes16_t &digits, uint64_t commas) {
    for (int i = 0; i < 3; ++i) {
        const auto behind = static_cast<unsigned>(std::countr_zero(commas | uint64_t{1} << 63)) + 1;
        commas &= commas - 1;
        digits = select(in_front_of(behind % 64), _mm_slli_si128(digits, 1), digits);  // none: nothing moves
    }
    return commas == 0;
}

// compile_model of a plain model; 0, and nothing stored, of any other.
inline int compile_plain_model(std::string_view model, number_parse_result_t &pr) {
    const std::string_view elements = without_fm(model);
    const size_t size = elements.size();
    if (size == 0 || size > PLAIN_MODEL_MAX) return 0;
    const model_bits_t bits = load_model(elements);
    const unsigned point = model_point_of(bits, size);
    if (!is_plain_model(bits, size, point)) return 0;

    const uint64_t digits = bits.nines | bits.zeros;
    memset(&pr, 0, sizeof pr);
    memcpy(pr.fmt_dig, elements.data(), size);
    pr.fm_present = size != model.size() ? 1 : 0;
    pr.pos_msd = std::popcount(digits & bits_up_to(point)) - 1;
    pr.pos_lsd = -std::popcount(digits >> point);
    return static_cast<int>(size);
}

// A model to read under.
struct plain_model_t {
    model_bits_t elements;
    unsigned point;
    bool is_plain;
};
[[gnu::always_inline]] inline plain_model_t plain_model_of(std::string_view model) {
    model = without_fm(model);
    if (model.empty() || model.size() > PLAIN_MODEL_MAX) return {};
    const model_bits_t elements = load_model(model);
    const unsigned point = model_point_of(elements, model.size());
    return {elements, point, is_plain_model(elements, model.size(), point)};
}

// False: nothing is stored. Both inline: a model of one call stays in registers.
[[gnu::always_inline]] inline bool read_under_plain_model(number_t &x, std::string_view text,
                                                          const plain_model_t &model) {
    text = end_of_text(text);
    if (!model.is_plain || text.empty()) return false;

    bytes16_t digits = load_short_text(text.data(), static_cast<unsigned>(text.size()));
    const uint64_t blanks = bits_of(digits, ' '), commas = bits_of(digits, ','), minus = bits_of(digits, '-');
    unsigned points;
    const uint64_t are_digits = take_digits(digits, points);
    const auto blank_count = static_cast<unsigned>(std::countr_zero(~blanks));
    const uint64_t negative = minus >> blank_count & 1;
    const uint64_t begin = blank_count + negative;
    const uint64_t shown = bits_up_to(text.size()) & ~bits_up_to(begin);
    const bool begins_with_comma = (commas >> begin & 1) != 0;
    if ((are_digits | commas | points) != shown || are_digits == 0 || begins_with_comma) return false;

    const model_bits_t &elements = model.elements;
    const auto point = static_cast<unsigned>(std::countr_zero(points | uint64_t{1} << text.size()));
    // Bits of the text and of the model at it; the model may begin as far as its length in front.
    const uint64_t shift = PLAIN_MODEL_MAX + point - model.point;
    const auto at_text = [&](uint64_t bits) { return bits << shift >> PLAIN_MODEL_MAX & shown; };
    const uint64_t zeros_in_front = elements.zeros << shift & bits_up_to(PLAIN_MODEL_MAX + begin);
    if (at_text(elements.nines | elements.zeros) != are_digits || at_text(elements.commas) != commas ||
        at_text(elements.points) != points || zeros_in_front != 0)
        return false;
    if (!take_out_commas(digits, commas)) return false;
    const uint64_t pairs = aligned_pairs(digits, point);
    if (pairs == 0) {
        store_zero(x);
    } else {
        store_digits(x, 0 - negative, pairs, static_cast<int>((point + 1) / 2));
    }
    return true;
}

#else

inline int compile_plain_model(std::string_view, number_parse_result_t &) { return 0; }
struct plain_model_t {};
inline plain_model_t plain_model_of(std::string_view) { return {}; }
inline bool read_under_plain_model(number_t &, std::string_view, const plain_model_t &) { return false; }

#endif

}  // namespace dv::impl

#endif  // DV_NUMBER_FMT_PLAIN_MODEL_H
