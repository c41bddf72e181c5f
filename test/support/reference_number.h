// A slow twin of NUMBER for the tests: every value is sign * digits * 10^exponent over a 512-bit integer,
// every operation is the long-hand rule in decimal positions. It shares no code, table or representation with
// the library. Where the library raises, the twin throws twin_raise with the same code.

#ifndef DV_TEST_REFERENCE_NUMBER_H
#define DV_TEST_REFERENCE_NUMBER_H

#include <boost/multiprecision/cpp_int.hpp>
#include <string>
#include <string_view>

#include "dvtypes/number.h"

namespace dv::test {

using big_t = boost::multiprecision::uint512_t;  // the longest intermediate, in twin_div, has 128 digits

struct decimal_t {
    bool negative = false;
    big_t digits = 0;  // 0: the value is zero
    int exponent = 0;  // decimal; digits may end in zeros
};

struct twin_raise {
    int code;
};

// Records. encode takes at most 38 significant digits, and throws when the value is out of range.
decimal_t decode(const number_t &record);
number_t encode(const decimal_t &x);

const big_t &pow10(int n);            // 0 <= n <= 153
int top_position(const decimal_t &);  // position of the first significant digit; not for zero
int low_position(const decimal_t &);  // of the last one; not for zero
int compare(const decimal_t &x, const decimal_t &y);

// Arithmetic, cut to 38 digits in the given mode.
decimal_t twin_round(const decimal_t &x, int pos, int mode);
decimal_t twin_add(const decimal_t &x, const decimal_t &y, int mode);
decimal_t twin_sub(const decimal_t &x, const decimal_t &y, int mode);
decimal_t twin_mul(const decimal_t &x, const decimal_t &y, int mode);
decimal_t twin_div(const decimal_t &x, const decimal_t &y, int mode);
decimal_t twin_mod(const decimal_t &x, const decimal_t &y, int mode);
decimal_t twin_rem(const decimal_t &x, const decimal_t &y, int mode);

// Precision and scale, NUMBER_NOT_GIVEN included.
bool twin_check(const decimal_t &x, int prec, int scale);
decimal_t twin_force(const decimal_t &x, int prec, int scale);

// Text. written_t::text is what the buffer must hold; with code -5067 too.
struct written_t {
    int code;
    std::string text;
};
decimal_t twin_read(std::string_view text);
decimal_t twin_read_nt(std::string_view text);
std::string normal_text(const decimal_t &x);
std::string scientific_text(const decimal_t &x);
written_t twin_write(const decimal_t &x, int buf_size, const char *format);

// Machine numbers: a number_type_e, integers and float types alike.
bool twin_in_range(const decimal_t &x, int type);

}  // namespace dv::test

#endif  // DV_TEST_REFERENCE_NUMBER_H
