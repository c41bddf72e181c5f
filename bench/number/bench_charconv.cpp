// The standard library's text conversions of machine numbers: what text costs without a decimal type.

#include <charconv>

#include "number_bench.h"

namespace {

using namespace dv::bench;

struct charconv_double_t {
    static constexpr const char *name = "std_charconv_double";
    static constexpr int digits = 15;
    using value = double;
    static void from_text(double &x, const char *text) { std::from_chars(text, text + std::strlen(text), x); }
    static void to_text(const double &x, char *text) { *std::to_chars(text, text + 63, x).ptr = '\0'; }
};

struct charconv_int64_t {
    static constexpr const char *name = "std_charconv_int64";
    static constexpr int digits = 19;
    using value = int64_t;
    static void from_text(int64_t &x, const char *text) {
        std::from_chars(text, text + std::strlen(text), x);
    }
    static void to_text(const int64_t &x, char *text) { *std::to_chars(text, text + 63, x).ptr = '\0'; }
};

// A machine number as text: the least work that takes it apart into decimal digits. Called out of line, as
// every other library is.
struct charconv_text_t {
    static constexpr const char *name = "std_to_chars";
    static constexpr int digits = 15;
    struct value {
        char bytes[32];
    };
    static void to_text(const value &x, char *text) { std::strcpy(text, x.bytes); }
    [[gnu::noinline]] static void from_int64(value &x, int64_t v) {
        *std::to_chars(x.bytes, x.bytes + 31, v).ptr = '\0';
    }
    [[gnu::noinline]] static void from_double(value &x, double v) {
        *std::to_chars(x.bytes, x.bytes + 31, v, std::chars_format::scientific).ptr = '\0';
    }
};

const bool _registered = [] {
    register_integer_text<charconv_int64_t>(operands_e::SHORT);
    for (const operands_e kind : {operands_e::SHORT, operands_e::LONG}) {
        add_case("from_int64", kind, charconv_text_t::name, run_from_int64<charconv_text_t>);
        add_case("from_double", kind, charconv_text_t::name, run_from_double<charconv_text_t>);
    }
    return register_library<charconv_double_t>();
}();

}  // namespace
