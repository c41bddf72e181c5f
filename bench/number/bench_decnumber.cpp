// decNumber with 38 digits, rounding half up: the settings of NUMBER.

#define DECNUMDIGITS 38
extern "C" {
#include <decNumber.h>
}

#include "number_bench.h"

namespace {

using namespace dv::bench;

decContext _context = [] {
    decContext context;
    decContextDefault(&context, DEC_INIT_BASE);
    context.traps = 0;
    context.digits = 38;
    context.round = DEC_ROUND_HALF_UP;
    context.emax = 999'999;  // fractional powers ask for these
    context.emin = -999'999;
    return context;
}();

struct decnumber_t {
    static constexpr const char *name = "decNumber";
    static constexpr int digits = 37;
    using value = decNumber;

    static void from_text(value &x, const char *text) { decNumberFromString(&x, text, &_context); }
    static void to_text(const value &x, char *text) { decNumberToString(&x, text); }
    static void add(value &x, const value &y) { decNumberAdd(&x, &x, &y, &_context); }
    static void sub(value &x, const value &y) { decNumberSubtract(&x, &x, &y, &_context); }
    static void mul(value &x, const value &y) { decNumberMultiply(&x, &x, &y, &_context); }
    static void div(value &x, const value &y) { decNumberDivide(&x, &x, &y, &_context); }
    static void mod(value &x, const value &y) { decNumberRemainder(&x, &x, &y, &_context); }
    static void sqrt(value &x) { decNumberSquareRoot(&x, &x, &_context); }
    static void pow(value &x, const value &y) { decNumberPower(&x, &x, &y, &_context); }
    static void negate(value &x) { decNumberCopyNegate(&x, &x); }
    static void round(value &x) {
        static const value tenth = [] {
            value v;
            from_text(v, "0.1");
            return v;
        }();
        decNumberQuantize(&x, &x, &tenth, &_context);
    }
    static bool less(const value &x, const value &y) {
        value order;
        decNumberCompare(&order, &x, &y, &_context);
        return decNumberIsNegative(&order) != 0;
    }
};

const bool _registered = register_library<decnumber_t>();

}  // namespace
