// The digits of a value as a model asks for them: rounded at its last position, in decimal with or without an
// exponent, or in hexadecimal.

#ifndef DV_NUMBER_FMT_DIGITS_H
#define DV_NUMBER_FMT_DIGITS_H

#include "../bytes.h"
#include "dvtypes/number_fmt.h"

namespace dv::impl {

// Four base-100 digits as eight characters. Each digit goes into a lane of 16 bits: 103/1024 is near enough
// to a tenth up to 178.
constexpr uint64_t characters_of_pairs(uint32_t pairs) {
    constexpr uint64_t low_bytes = 0x00FF00FF00FF00FF;
    uint64_t lanes = (pairs | uint64_t{pairs} << 16) & 0x0000FFFF0000FFFF;
    lanes = (lanes | lanes << 8) & low_bytes;
    const uint64_t tens = lanes * 103 >> 10 & in_each_byte(0x1F) & low_bytes;
    return (tens << 8 | (lanes - tens * 10)) + in_each_byte('0');
}
static_assert(characters_of_pairs(0x0C00630A) == 0x3132303039393130);  // 12 00 99 10

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
