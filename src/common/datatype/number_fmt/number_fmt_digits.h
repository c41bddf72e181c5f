// The digits of a value as a model asks for them: rounded at its last position, in decimal with or without an
// exponent, or in hexadecimal.

#ifndef DV_NUMBER_FMT_DIGITS_H
#define DV_NUMBER_FMT_DIGITS_H

#include "dvtypes/number_fmt.h"

namespace dv::impl {

// 0.dddd x base^point as characters. Zero has no digits, and neither a sign nor a point.
struct model_digits_t {
    static constexpr int HEX_DIGITS_MAX = 112;  // 10^126 has 105; and 3 more for digit bytes above 99

    char text[HEX_DIGITS_MAX];
    char *first;  // in text
    int count;
    int point;
    int exponent;  // under EEEE: of ten, beside digits with the point behind the first
    bool is_negative;
};

// Rounds half up at the model's last position; hexadecimal digits are those of an integer.
void take_digits(const number_t &x, const number_parse_result_t &model, model_digits_t &digits);

}  // namespace dv::impl

#endif  // DV_NUMBER_FMT_DIGITS_H
