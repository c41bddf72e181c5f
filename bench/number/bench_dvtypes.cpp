// NUMBER of dvtypes.

#include "number_bench.h"

namespace {

using namespace dv::bench;

struct dvtypes_t {
    static constexpr const char *name = "dvtypes";
    static constexpr int digits = 38;
    using value = number_t;

    static void from_text(number_t &x, const char *text) { number_from_str(&x, 0, text, nullptr); }
    static void to_text(const number_t &x, char *text) { number_to_str(&x, 64, text, nullptr); }
    static void add(number_t &x, const number_t &y) { number_add(&x, &y); }
    static void sub(number_t &x, const number_t &y) { number_sub(&x, &y); }
    static void mul(number_t &x, const number_t &y) { number_mul(&x, &y); }
    static void div(number_t &x, const number_t &y) { number_div(&x, &y); }
    static void mod(number_t &x, const number_t &y) { number_mod(&x, &y); }
    static void rem(number_t &x, const number_t &y) { number_rem(&x, &y); }
    static void sqrt(number_t &x) { number_sqrt(&x); }
    static void pow(number_t &x, const number_t &y) { number_pow(&x, &y); }
    static void negate(number_t &x) { number_negate(&x); }
    static void round(number_t &x) { number_round_at_withmode(&x, -1, NUMBER_RMODE_HALF_UP); }
    static bool less(const number_t &x, const number_t &y) { return number_cmp(&x, &y) < 0; }
    static void from_int64(number_t &x, int64_t v) { number_from_int64(&x, v); }
    static void from_double(number_t &x, double v) { number_from_double(&x, v); }
    static void to_int64(const number_t &x, int64_t &n) { number_to_int64(&x, &n); }
    static void to_double(const number_t &x, double &d) { number_to_double(&x, &d); }
};

struct dvtypes_nt_t : dvtypes_t {
    static void from_text(number_t &x, const char *text) { number_from_str_nt(&x, 0, text, nullptr); }
};

const bool _registered = [] {
    register_integer_text<dvtypes_nt_t>(operands_e::SHORT);
    register_integer_text<dvtypes_nt_t>(operands_e::LONG);
    return register_library<dvtypes_t>();
}();

}  // namespace
