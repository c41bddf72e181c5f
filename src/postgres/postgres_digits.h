// What a NUMBER is made of, by the form of its record (dvtypes/number.h).

#ifndef DV_POSTGRES_DIGITS_H
#define DV_POSTGRES_DIGITS_H

#include <algorithm>

#include "dvtypes/number.h"

namespace dv::impl {

// 0.d1 d2 ... of base 100, times 100^exponent. A value other than zero begins and ends with a digit that is
// not 0.
struct number_digits {
    bool is_negative;
    int exponent;
    int count;
    uint8_t digit[NUMBER_DIGITS_MAX];
};

inline constexpr int NUMBER_DIGIT_EXCESS = 0x80;
inline constexpr int NUMBER_POSITIVE_EXCESS = 0xC0;  // of an exponent
inline constexpr int NUMBER_NEGATIVE_EXCESS = 0x3F;  // from which it is taken away

// Of a value that is not zero.
inline number_digits take_number_apart(const number_t &number) {
    number_digits parts = {};
    parts.is_negative = number.signexp < NUMBER_DIGIT_EXCESS;
    parts.exponent =
        parts.is_negative ? NUMBER_NEGATIVE_EXCESS - number.signexp : number.signexp - NUMBER_POSITIVE_EXCESS;
    parts.count = std::clamp(number.size - (parts.is_negative ? 2 : 1), 0, int{NUMBER_DIGITS_MAX});
    const int sign = parts.is_negative ? -1 : 1;
    for (int i = 0; i < NUMBER_DIGITS_MAX; ++i)
        parts.digit[i] =
            static_cast<uint8_t>(i < parts.count ? sign * (number.coef[i] - NUMBER_DIGIT_EXCESS) : 0);
    return parts;
}

inline void put_number_together(number_t &number, const number_digits &parts) {
    const int sign = parts.is_negative ? -1 : 1;
    number.signexp = static_cast<uint8_t>(parts.is_negative ? NUMBER_NEGATIVE_EXCESS - parts.exponent
                                                            : NUMBER_POSITIVE_EXCESS + parts.exponent);
    for (int i = 0; i < parts.count; ++i)
        number.coef[i] = static_cast<uint8_t>(NUMBER_DIGIT_EXCESS + sign * parts.digit[i]);
    number.coef[parts.count] = NUMBER_TOP;
    number.size = static_cast<uint8_t>(1 + parts.count + (parts.is_negative ? 1 : 0));
}

}  // namespace dv::impl

#endif  // DV_POSTGRES_DIGITS_H
