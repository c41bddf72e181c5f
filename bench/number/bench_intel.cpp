// Intel's decimal floating-point library, 128-bit format: 34 digits, so long operands lose their last.

extern "C" {
#include <bid_conf.h>
#include <bid_functions.h>
}

#include "number_bench.h"

namespace {

using namespace dv::bench;

constexpr unsigned _to_nearest = 0;
unsigned _flags = 0;

BID_UINT128 read_(const char *text) {
    return bid128_from_string(const_cast<char *>(text), _to_nearest, &_flags);
}

struct intel_t {
    static constexpr const char *name = "intel_bid128";
    static constexpr int digits = 32;
    using value = BID_UINT128;

    static void from_text(value &x, const char *text) { x = read_(text); }
    static void to_text(const value &x, char *text) { bid128_to_string(text, x, &_flags); }
    static void add(value &x, const value &y) { x = bid128_add(x, y, _to_nearest, &_flags); }
    static void sub(value &x, const value &y) { x = bid128_sub(x, y, _to_nearest, &_flags); }
    static void mul(value &x, const value &y) { x = bid128_mul(x, y, _to_nearest, &_flags); }
    static void div(value &x, const value &y) { x = bid128_div(x, y, _to_nearest, &_flags); }
    static void mod(value &x, const value &y) { x = bid128_fmod(x, y, &_flags); }
    static void round(value &x) {
        static const value tenth = read_("0.1");
        x = bid128_quantize(x, tenth, BID_ROUNDING_TIES_AWAY, &_flags);
    }
    static void sqrt(value &x) { x = bid128_sqrt(x, _to_nearest, &_flags); }
    static void pow(value &x, const value &y) { x = bid128_pow(x, y, _to_nearest, &_flags); }
    static bool less(const value &x, const value &y) { return bid128_quiet_less(x, y, &_flags) != 0; }
    static void from_int64(value &x, int64_t v) { x = bid128_from_int64(v); }
    static void to_int64(const value &x, int64_t &n) { n = bid128_to_int64_int(x, &_flags); }
    static void from_double(value &x, double v) { x = binary64_to_bid128(v, _to_nearest, &_flags); }
    static void to_double(const value &x, double &d) { d = bid128_to_binary64(x, _to_nearest, &_flags); }
};

const bool _registered = register_library<intel_t>();

}  // namespace
