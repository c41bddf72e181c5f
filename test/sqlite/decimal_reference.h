// Decimal values as big integers, for second opinions: a value is held as an integer number of 10^-400, far
// below anything that a NUMBER or the quotient of two sums needs.

#ifndef DV_TEST_DECIMAL_REFERENCE_H
#define DV_TEST_DECIMAL_REFERENCE_H

#include <boost/multiprecision/cpp_int.hpp>
#include <random>
#include <string>

namespace dv::test {

using big_t = boost::multiprecision::cpp_int;

inline big_t power_of_ten(int exponent) {
    return boost::multiprecision::pow(big_t(10), static_cast<unsigned>(exponent));
}

// Reads "-12.5", ".05", "1E+100".
inline big_t big_from_text(const std::string &text) {
    const size_t e = text.find('E');
    std::string mantissa = text.substr(0, e);
    int exponent = 400 + (e == std::string::npos ? 0 : std::stoi(text.substr(e + 1)));
    const size_t point = mantissa.find('.');
    if (point != std::string::npos) {
        exponent -= static_cast<int>(mantissa.size() - point - 1);
        mantissa.erase(point, 1);
    }
    mantissa.erase(
        0, std::min(mantissa.find_first_not_of("-0"), mantissa.size() - 1));  // a leading 0 would mean octal
    const big_t magnitude = big_t(mantissa) * power_of_ten(exponent);
    return text[0] == '-' ? big_t(-magnitude) : magnitude;
}

// Rounds half up to 38 significant digits.
inline big_t rounded_to_38(const big_t &value) {
    const big_t magnitude = abs(value);
    const big_t unit = power_of_ten(std::max(static_cast<int>(magnitude.str().size()) - 38, 0));
    const big_t rounded = (magnitude + unit / 2) / unit * unit;
    return value < 0 ? big_t(-rounded) : rounded;
}

// A number with 1 to 38 digits, nines and zeros among them, whose first digit has a weight between 10^low and
// 10^high, in scientific form.
inline std::string random_decimal(std::mt19937_64 &random, int low, int high) {
    const auto below = [&](int limit) { return static_cast<int>(random() % static_cast<unsigned>(limit)); };
    std::string text = below(2) != 0 ? "-" : "";
    text += std::to_string(1 + below(9)) + ".";
    const char *const digits = below(2) != 0 ? "0123456789" : "0000099999";
    for (int left = below(38); left > 0; --left) text += digits[below(10)];
    return text + "E" + std::to_string(low + below(high - low + 1));
}

}  // namespace dv::test

#endif  // DV_TEST_DECIMAL_REFERENCE_H
