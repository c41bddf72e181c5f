// Roman numerals: thousands, hundreds, tens and units in turn.
//
// Every decimal digit has one pattern over three letters, those of its power of ten: one, five, ten. The
// thousands need the first letter alone, since they end with 3.

#include <cstring>

#include "../error.h"
#include "../number/number_internal.h"
#include "number_fmt_internal.h"

using namespace dv::impl;

namespace {

constexpr int _roman_max = 3999;
constexpr int _width = NUMBER_ROMAN_TEXT_SIZE - 1;

constexpr const char *_patterns[] = {"", "a", "aa", "aaa", "ab", "b", "ba", "baa", "baaa", "ac"};

struct power_t {
    int weight;
    char letters[2][4];  // small, large
};
constexpr power_t _powers[] = {
    {1000, {"m", "M"}}, {100, {"cdm", "CDM"}}, {10, {"xlc", "XLC"}}, {1, {"ivx", "IVX"}}};

// Rounded half up to an integer; 0 for what roman numerals cannot write.
int32_t to_roman_range_(const number_t &x) {
    if (number_is_zero(x) || number_is_negative(x) || number_exponent(x) > 2) return 0;  // 10^4 and above
    number_t rounded;
    number_copy(rounded, x);
    number_round_at(rounded, 0, NUMBER_RMODE_HALF_UP);
    int32_t value = 0;
    number_to_int32(&rounded, &value);
    return value > 0 && value <= _roman_max ? value : 0;  // bytes that are no digits may make any number
}

}  // namespace

extern "C" void _number_to_str_fmt_rn(const number_t *x, int buf_size, char *str, int in_upper) {
    if (!DV_ASSERT(number_is_nonnull_ptr(x) && number_is_nonnull_ptr(str))) return;
    if (buf_size < NUMBER_ROMAN_TEXT_SIZE) raise(DV_ERR_TEXT_BUFFER_SIZE);
    const int32_t value = to_roman_range_(*x);
    char text[_width];
    char *out = text;
    for (const power_t &power : _powers) {
        const char *const letters = power.letters[in_upper != 0 ? 1 : 0];
        for (const char *p = _patterns[value / power.weight % 10]; *p != '\0'; ++p)
            *out++ = letters[*p - 'a'];
    }
    const auto length = static_cast<size_t>(out - text);
    memset(str, value == 0 ? '#' : ' ', _width - length);
    memcpy(str + _width - length, text, length);
    str[_width] = '\0';
}
