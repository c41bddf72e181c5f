// INTERVAL DAY TO SECOND beside what a program would use without it: operation/case/library.
//
//   to_text     snprintf and fmt, over the same fields: +01 02:03:04.500000000, 9 and 3 digits of fraction
//   from_text   sscanf, into the same fields
//   add_sec     std::chrono: seconds split into days and the rest
//   compare     std::tuple of the fields
//
// Operands are intervals below 100 days of either sign, from a fixed seed. An operation in place first
// copies the whole array, since a copy per call would measure store forwarding. Every answer is compared with
// the peer's before the clock starts; the program ends with 1 when one is wrong.

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <random>
#include <string>
#include <tuple>
#include <vector>

#include "dvtypes/interval.h"
#include "gauged.h"
#include "operand_count.h"
#if DV_BENCH_FMT
#include <fmt/format.h>
#endif

namespace {

constexpr size_t _operand_count = dv::bench::operand_count;
constexpr int _prec = 2;

bool _any_wrong = false;

struct fields_t {
    int days, seconds, nanoseconds;
    bool operator==(const fields_t &) const = default;
    auto operator<=>(const fields_t &) const = default;
};

struct text_t {
    char bytes[DV_ITV_DTS_TEXT_SIZE];
};

std::vector<fields_t> operands_(unsigned seed) {
    std::mt19937 random(seed);
    const auto below = [&](int end) { return std::uniform_int_distribution<int>(0, end - 1)(random); };
    std::vector<fields_t> operands(_operand_count);
    for (fields_t &f : operands) {
        const int sign = below(2) * 2 - 1;
        f = {sign * below(100), sign * below(86400), sign * below(1'000'000'000)};
    }
    return operands;
}

// ---- libraries ----

struct dvtypes_t {
    static constexpr const char *name = "dvtypes";
    using value = dv_itv_dts_t;
    static value make(const fields_t &f) {
        value v;
        dv_itv_dts_set_field(&v, DT_FMT_UNIT_DAY, f.days);
        dv_itv_dts_set_field(&v, DT_FMT_UNIT_SECOND, f.seconds);
        dv_itv_dts_set_field(&v, DT_FMT_UNIT_FSEC, f.nanoseconds);
        return v;
    }
    static fields_t fields(const value &v) {
        return {dv_itv_dts_get_field(&v, DT_FMT_UNIT_DAY), dv_itv_dts_get_field(&v, DT_FMT_UNIT_SECOND),
                dv_itv_dts_get_field(&v, DT_FMT_UNIT_FSEC)};
    }
    static void to_text(const value &v, text_t &text, int digits) {
        dv_itv_dts_to_str(&v, text.bytes, _prec, digits, sizeof text.bytes);
    }
    static void from_text(value &v, const text_t &text) {
        dv_itv_dts_from_str(&v, text.bytes, 0, DV_ITV_DAY_TO_SECOND, _prec, /*fprec=*/9);
    }
    static void add_sec(value &v, int64_t n) { dv_itv_dts_add_sec(&v, n); }
    static bool less(const value &x, const value &y) { return dv_itv_dts_compare(&x, &y) < 0; }
};

struct dvtypes_inline_t : dvtypes_t {
    static constexpr const char *name = "dvtypes_inline";
    static bool less(const value &x, const value &y) { return dv_itv_dts_cmp(&x, &y) < 0; }
};

// The C library, and standard C++ for what it has not.
struct standard_t {
    using value = fields_t;
    static value make(const fields_t &f) { return f; }
    static fields_t fields(const value &v) { return v; }
    static int fraction(const value &v, int digits) {
        static constexpr int divisors[] = {1'000'000'000, 100'000'000, 10'000'000, 1'000'000, 100'000,
                                           10'000,        1000,        100,        10,        1};
        return std::abs(v.nanoseconds) / divisors[digits];
    }
    static char sign(const value &v) { return v.days < 0 || v.seconds < 0 || v.nanoseconds < 0 ? '-' : '+'; }
    static void to_text(const value &v, text_t &text, int digits) {
        const int seconds = std::abs(v.seconds);
        snprintf(text.bytes, sizeof text.bytes, "%c%.*d %.02d:%.02d:%.02d.%.*d", sign(v), _prec,
                 std::abs(v.days), seconds / 3600, seconds / 60 % 60, seconds % 60, digits,
                 fraction(v, digits));
    }
    static void from_text(value &v, const text_t &text) {
        int days = 0, hours = 0, minutes = 0, seconds = 0, nanoseconds = 0;
        char sign = '+';
        sscanf(text.bytes, "%c%d %d:%d:%d.%9d", &sign, &days, &hours, &minutes, &seconds, &nanoseconds);
        v = {days, hours * 3600 + minutes * 60 + seconds, nanoseconds};
        if (sign == '-') v = {-v.days, -v.seconds, -v.nanoseconds};
    }
    static void add_sec(value &v, int64_t n) {
        using std::chrono::days, std::chrono::seconds;
        const seconds total = days{v.days} + seconds{v.seconds} + seconds{n};
        v.days = static_cast<int>(std::chrono::duration_cast<days>(total).count());
        v.seconds = static_cast<int>((total % days{1}).count());
    }
    static bool less(const value &x, const value &y) {
        return std::tie(x.days, x.seconds, x.nanoseconds) < std::tie(y.days, y.seconds, y.nanoseconds);
    }
};
struct glibc_t : standard_t {
    static constexpr const char *name = "glibc";
};
struct chrono_t : standard_t {
    static constexpr const char *name = "std_chrono";
};
struct tuple_t : standard_t {
    static constexpr const char *name = "std_tuple";
};

#if DV_BENCH_FMT
struct fmt_t : standard_t {
    static constexpr const char *name = "fmt";
    static void to_text(const value &v, text_t &text, int digits) {
        const int seconds = std::abs(v.seconds);
        *fmt::format_to(text.bytes, "{}{:0{}} {:02}:{:02}:{:02}.{:0{}}", sign(v), std::abs(v.days), _prec,
                        seconds / 3600, seconds / 60 % 60, seconds % 60, fraction(v, digits), digits) = '\0';
    }
};
#endif

// ---- runs ----

template <typename L>
std::vector<typename L::value> values_(unsigned seed) {
    std::vector<typename L::value> values;
    for (const fields_t &f : operands_(seed)) values.push_back(L::make(f));
    return values;
}

template <typename L>
std::vector<text_t> texts_(unsigned seed, int digits) {
    std::vector<text_t> texts(_operand_count);
    const auto values = values_<L>(seed);
    for (size_t i = 0; i < texts.size(); ++i) L::to_text(values[i], texts[i], digits);
    return texts;
}

void report_wrong_(benchmark::State &state, size_t operand) {
    _any_wrong = true;
    state.SkipWithError(("wrong answer: operand " + std::to_string(operand)).c_str());
}

void count_operations_(benchmark::State &state) {
    const auto count = static_cast<double>(_operand_count);
    state.counters["per_op"] = benchmark::Counter(
        count, benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

template <typename L, int Digits>
void run_to_text_(benchmark::State &state) {
    const auto values = values_<L>(1);
    auto texts = texts_<L>(1, Digits);
    const auto want = texts_<glibc_t>(1, Digits);
    for (size_t i = 0; i < texts.size(); ++i) {
        if (std::strcmp(texts[i].bytes, want[i].bytes) != 0) return report_wrong_(state, i);
    }
    for (auto _ : dv::bench::gauged(state)) {
        for (size_t i = 0; i < texts.size(); ++i) L::to_text(values[i], texts[i], Digits);
        benchmark::ClobberMemory();
    }
    count_operations_(state);
}

template <typename L, int Digits>
void run_from_text_(benchmark::State &state) {
    const auto texts = texts_<glibc_t>(1, Digits);
    auto values = values_<L>(1);
    const auto pick = [](const fields_t &f) {
        constexpr int unit = Digits == 3 ? 1'000'000 : 1;
        return fields_t{f.days, f.seconds, f.nanoseconds / unit};
    };
    const auto want = operands_(1);
    const bool scales = std::is_same_v<L, dvtypes_t>;
    for (size_t i = 0; i < texts.size(); ++i) {
        L::from_text(values[i], texts[i]);
        const fields_t got = L::fields(values[i]);
        if ((scales ? pick(got) : got) != pick(want[i])) return report_wrong_(state, i);
    }
    for (auto _ : dv::bench::gauged(state)) {
        for (size_t i = 0; i < texts.size(); ++i) L::from_text(values[i], texts[i]);
        benchmark::ClobberMemory();
    }
    count_operations_(state);
}

template <typename L>
void run_add_sec_(benchmark::State &state) {
    const auto values = values_<L>(1);
    auto work = values;
    auto want = values_<chrono_t>(1);
    std::vector<int64_t> steps;
    for (const fields_t &f : operands_(2)) steps.push_back(f.days * 86400LL + f.seconds);
    for (size_t i = 0; i < work.size(); ++i) {
        L::add_sec(work[i], steps[i]);
        chrono_t::add_sec(want[i], steps[i]);
        if (L::fields(work[i]) != want[i]) return report_wrong_(state, i);
    }
    for (auto _ : dv::bench::gauged(state)) {
        std::copy(values.begin(), values.end(), work.begin());
        for (size_t i = 0; i < work.size(); ++i) L::add_sec(work[i], steps[i]);
        benchmark::ClobberMemory();
    }
    count_operations_(state);
}

template <typename L>
void run_compare_(benchmark::State &state) {
    const auto x = values_<L>(1), y = values_<L>(2);
    const auto x_want = operands_(1), y_want = operands_(2);
    for (size_t i = 0; i < x.size(); ++i) {
        if (L::less(x[i], y[i]) != (x_want[i] < y_want[i])) return report_wrong_(state, i);
    }
    for (auto _ : dv::bench::gauged(state)) {
        int below = 0;
        for (size_t i = 0; i < x.size(); ++i) below += L::less(x[i], y[i]) ? 1 : 0;
        benchmark::DoNotOptimize(below);
    }
    count_operations_(state);
}

template <typename L>
void register_(const char *operation, void (*run)(benchmark::State &)) {
    benchmark::RegisterBenchmark((std::string(operation) + L::name).c_str(), run);
}

template <typename L>
void register_to_text_() {
    register_<L>("to_text/9_digits/", run_to_text_<L, 9>);
    register_<L>("to_text/3_digits/", run_to_text_<L, 3>);
}

template <typename L>
void register_from_text_() {
    register_<L>("from_text/9_digits/", run_from_text_<L, 9>);
    register_<L>("from_text/3_digits/", run_from_text_<L, 3>);
}

}  // namespace

int main(int argc, char **argv) {
    register_to_text_<dvtypes_t>();
#if DV_BENCH_FMT
    register_to_text_<fmt_t>();
#endif
    register_to_text_<glibc_t>();
    register_from_text_<dvtypes_t>();
    register_from_text_<glibc_t>();
    register_<dvtypes_t>("add_sec/random/", run_add_sec_<dvtypes_t>);
    register_<chrono_t>("add_sec/random/", run_add_sec_<chrono_t>);
    register_<dvtypes_t>("compare/random/", run_compare_<dvtypes_t>);
    register_<dvtypes_inline_t>("compare/random/", run_compare_<dvtypes_inline_t>);
    register_<tuple_t>("compare/random/", run_compare_<tuple_t>);
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return _any_wrong ? 1 : 0;
}
