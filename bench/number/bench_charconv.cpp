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

const bool _registered = [] {
    register_integer_text<charconv_int64_t>(operands_e::SHORT);
    return register_library<charconv_double_t>();
}();

}  // namespace
