// Boost.Multiprecision: cpp_dec_float of 50 digits.

#include <boost/multiprecision/cpp_dec_float.hpp>

#include "number_bench.h"

namespace {

using namespace dv::bench;

struct boost_t {
    static constexpr const char *name = "boost_cpp_dec_float_50";
    static constexpr int digits = 37;  // it rounds elsewhere
    using value = boost::multiprecision::number<boost::multiprecision::cpp_dec_float<50>,
                                                boost::multiprecision::et_off>;

    static void from_text(value &x, const char *text) { x.assign(text); }
    static void to_text(const value &x, char *text) { std::strcpy(text, x.str(38).c_str()); }
    static void add(value &x, const value &y) { x += y; }
    static void sub(value &x, const value &y) { x -= y; }
    static void mul(value &x, const value &y) { x *= y; }
    static void div(value &x, const value &y) { x /= y; }
    // No mod: fmod goes through an inexact quotient, and gives .34 for 117484.28 and .34, which is 0.
    static void round(value &x) { x = boost::multiprecision::round(x * 10) / 10; }
    static void sqrt(value &x) { x = boost::multiprecision::sqrt(x); }
    static void pow(value &x, const value &y) { x = boost::multiprecision::pow(x, y); }
    static void negate(value &x) { x.backend().negate(); }
    static bool less(const value &x, const value &y) { return x < y; }
    static void from_int64(value &x, int64_t v) { x = v; }
    static void to_int64(const value &x, int64_t &n) { n = x.convert_to<int64_t>(); }
    static void from_double(value &x, double v) { x = v; }
    static void to_double(const value &x, double &d) { d = x.convert_to<double>(); }
};

const bool _registered = register_library<boost_t>();

}  // namespace
