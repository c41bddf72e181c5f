// A slow twin of NUMBER for the tests: every value is digits * 10^exponent over a signed 1024-bit integer,
// every operation is the long-hand rule in decimal positions. It shares no code, table or representation with
// the library. Where the library raises, the twin throws twin_raise with the same code.

#ifndef DV_TEST_REFERENCE_NUMBER_H
#define DV_TEST_REFERENCE_NUMBER_H

#include <boost/multiprecision/cpp_int.hpp>
#include <string>
#include <string_view>

#include "dvtypes/number.h"

namespace dv::test {

using big_t = boost::multiprecision::int1024_t;  // the longest: 10^125 in units of 10^-168

struct decimal_t {
    big_t digits = 0;  // with the sign; 0: the value is zero
    int exponent = 0;  // decimal; digits may end in zeros
};

struct twin_raise {
    int code;
};

// Records. decode takes any bytes with size <= 22; encode at most 38 significant digits, and throws when the
// value is out of range.
decimal_t decode(const number_t &record);
number_t encode(const decimal_t &x);

int top_position(const decimal_t &x);  // position of the first significant digit; of zero: its exponent
int compare(const decimal_t &x, const decimal_t &y);

// Arithmetic, cut to 38 digits in the given mode; twin_round raises as number_round_at_withmode does.
decimal_t twin_round(const decimal_t &x, int pos, int mode);
decimal_t twin_add(const decimal_t &x, const decimal_t &y, int mode);
decimal_t twin_sub(const decimal_t &x, const decimal_t &y, int mode);
decimal_t twin_mul(const decimal_t &x, const decimal_t &y, int mode);
decimal_t twin_div(const decimal_t &x, const decimal_t &y, int mode);
decimal_t twin_mod(const decimal_t &x, const decimal_t &y, int mode);
decimal_t twin_rem(const decimal_t &x, const decimal_t &y, int mode);
decimal_t twin_sqrt(const decimal_t &x, int mode);
decimal_t twin_pow(const decimal_t &x, const decimal_t &y, int mode);  // every step, all 160 roots

// Precision and scale, NUMBER_NOT_GIVEN included.
bool twin_check(const decimal_t &x, int prec, int scale);
decimal_t twin_force(const decimal_t &x, int prec, int scale);

// Text. twin_write gives what the buffer must hold and the code beside it, 0 or -5067.
struct written_t {
    int code;
    std::string text;
};
decimal_t twin_read(std::string_view text);
decimal_t twin_read_nt(std::string_view text);
std::string normal_text(const decimal_t &x);
std::string scientific_text(const decimal_t &x);
written_t twin_write(const decimal_t &x, int buf_size, const char *format);

}  // namespace dv::test

#endif  // DV_TEST_REFERENCE_NUMBER_H
