// _Decimal128: arithmetic of libgcc, text and functions of libdfp. 34 digits, so long operands lose their
// last.

#ifndef __clang__  // has no decimal floating point in C++

#include "number_bench.h"

typedef float decimal128_t __attribute__((mode(TD)));
extern "C" {
decimal128_t strtod128(const char *text, char **end);
int strfromd128(char *text, size_t size, const char *format, decimal128_t x);
decimal128_t sqrtd128(decimal128_t x);
decimal128_t powd128(decimal128_t x, decimal128_t y);
decimal128_t fmodd128(decimal128_t x, decimal128_t y);
decimal128_t quantized128(decimal128_t x, decimal128_t y);
}

namespace {

using namespace dv::bench;

struct decimal128_library_t {
    static constexpr const char *name = "gcc_decimal128";
    static constexpr int digits = 32;
    static constexpr int tie_mode = NUMBER_RMODE_HALF_EVEN;
    using value = decimal128_t;

    static void from_text(value &x, const char *text) { x = strtod128(text, nullptr); }
    static void to_text(const value &x, char *text) { strfromd128(text, 64, "%.33e", x); }
    static void add(value &x, const value &y) { x += y; }
    static void sub(value &x, const value &y) { x -= y; }
    static void mul(value &x, const value &y) { x *= y; }
    static void div(value &x, const value &y) { x /= y; }
    static void mod(value &x, const value &y) { x = fmodd128(x, y); }
    static void round(value &x) {
        static const value tenth = strtod128("0.1", nullptr);
        x = quantized128(x, tenth);
    }
    static void sqrt(value &x) { x = sqrtd128(x); }
    static void pow(value &x, const value &y) { x = powd128(x, y); }
    static bool less(const value &x, const value &y) { return x < y; }
    static void from_int64(value &x, int64_t v) { x = static_cast<value>(v); }
    static void to_int64(const value &x, int64_t &n) { n = static_cast<int64_t>(x); }
    static void from_double(value &x, double v) { x = static_cast<value>(v); }
    static void to_double(const value &x, double &d) { d = static_cast<double>(x); }
};

const bool _registered = register_library<decimal128_library_t>();

}  // namespace

#endif
