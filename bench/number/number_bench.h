// The cases of the NUMBER benchmarks, over any library that is described by a struct of static functions:
//
//   name, digits          its name, and how many decimal digits it keeps
//   value                 its number, copied by assignment
//   from_text(v, text)    to_text(v, buffer of 64 bytes)
//   add sub mul div mod rem pow (x, y)    round (x, to one decimal)    negate sqrt (x)    all in place
//   tie_mode              the mode of its round, where that is not NUMBER_RMODE_HALF_UP
//   less(x, y)    from_int64(x, n)    to_int64(x, n)    from_double(x, d)    to_double(x, d)
//
// A library may lack any of them: its cases are then left out. An operation runs over an array of values; one
// in place first copies the whole array, since a copy per call would measure store forwarding. Before the
// clock starts every answer is compared with the long-hand twin of the tests, within the digits that the
// library keeps.

#ifndef DV_BENCH_NUMBER_BENCH_H
#define DV_BENCH_NUMBER_BENCH_H

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstring>
#include <span>

#include "gauged.h"
#include "operands.h"
#include "reference_number.h"

namespace dv::bench {

using dv::test::decimal_t;
using twin_t = decimal_t(const decimal_t &, const decimal_t &, int);

// Remembers a wrong answer: the case ends with the message, and the program with 1.
void report_wrong(benchmark::State &state, const std::string &message);

// |got - want| is below one unit of the last of `digits` digits of the largest of the three.
bool agrees(const decimal_t &got, const decimal_t &want, const decimal_t &x, const decimal_t &y, int digits);

template <typename L>
std::vector<typename L::value> read_all(const std::vector<std::string> &texts) {
    std::vector<typename L::value> values(texts.size());
    for (size_t i = 0; i < texts.size(); ++i) L::from_text(values[i], texts[i].c_str());
    return values;
}

template <typename L>
decimal_t value_of(const typename L::value &x) {
    char text[64];
    L::to_text(x, text);
    return dv::test::twin_read(text);
}

inline void count_operations(benchmark::State &state, size_t per_pass) {
    state.SetItemsProcessed(state.iterations() * static_cast<int64_t>(per_pass));
    state.counters["per_op"] =
        benchmark::Counter(static_cast<double>(per_pass),
                           benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

using texts_t = std::vector<std::string>;

// Arrays are walked as spans: a vector might be changed by any call, so that its bounds are loaded anew for
// each.

// In place: operation(x[i], y[i]) over a fresh copy of x in each pass; want is the twin's operation, with
// which the results agree to so many digits. A slow twin is asked for every check_step-th of them.
template <typename L, typename F, typename W>
void run_in_place(benchmark::State &state, const texts_t &x_texts, const texts_t &y_texts, int digits,
                  F operation, W want, size_t check_step = 1) {
    const auto x = read_all<L>(x_texts);
    const auto y = read_all<L>(y_texts);
    auto work = x;
    for (size_t i = 0; i < x.size(); ++i) {
        operation(work[i], y[i]);
        if (i % check_step != 0) continue;
        const decimal_t x_value = dv::test::twin_read(x_texts[i]);
        const decimal_t y_value = dv::test::twin_read(y_texts[i]);
        if (!agrees(value_of<L>(work[i]), want(x_value, y_value), x_value, y_value, digits)) {
            return report_wrong(state, x_texts[i] + ", " + y_texts[i]);
        }
    }
    const std::span to(work);
    const std::span from(y);
    for (auto _ : gauged(state)) {
        std::copy(x.begin(), x.end(), to.begin());
        for (size_t i = 0; i < to.size(); ++i) operation(to[i], from[i]);
        benchmark::ClobberMemory();
    }
    count_operations(state, x.size());
}

// From one array into another: convert(in[i], out[i]); right(i, out[i]) judges an answer.
template <typename In, typename Out, typename F, typename R>
void run_convert(benchmark::State &state, const std::vector<In> &in, std::vector<Out> &out, F convert,
                 R right) {
    for (size_t i = 0; i < in.size(); ++i) {
        convert(in[i], out[i]);
        if (!right(i, out[i])) return report_wrong(state, "operand " + std::to_string(i));
    }
    const std::span from(in);
    const std::span to(out);
    for (auto _ : gauged(state)) {
        for (size_t i = 0; i < from.size(); ++i) convert(from[i], to[i]);
        benchmark::ClobberMemory();
    }
    count_operations(state, in.size());
}

template <typename L>
void run_read(benchmark::State &state, const std::vector<std::string> &texts) {
    std::vector<typename L::value> out(texts.size());
    const auto right = [&](size_t i, const typename L::value &v) {
        const decimal_t want = dv::test::twin_read(texts[i]);
        return agrees(value_of<L>(v), want, want, want, L::digits);
    };
    const auto read = [](const std::string &text, typename L::value &v) { L::from_text(v, text.c_str()); };
    run_convert(state, texts, out, read, right);
}

struct text_t {
    char bytes[64];
};

template <typename L>
void run_write(benchmark::State &state, operands_e kind) {
    const auto texts = decimals(kind, operand_count, 1);
    const auto in = read_all<L>(texts);
    std::vector<text_t> out(in.size());
    const auto right = [&](size_t i, const text_t &text) {
        const decimal_t want = dv::test::twin_read(texts[i]);
        return agrees(dv::test::twin_read(text.bytes), want, want, want, L::digits);
    };
    run_convert(
        state, in, out, [](const auto &v, text_t &text) { L::to_text(v, text.bytes); }, right);
}

template <typename L>
void run_compare(benchmark::State &state, operands_e kind) {
    const auto x_texts = decimals(kind, operand_count, 1);
    const auto y_texts = decimals(kind, operand_count, 2);
    const auto x = read_all<L>(x_texts);
    const auto y = read_all<L>(y_texts);
    for (size_t i = 0; i < x.size(); ++i) {
        const int want = compare(dv::test::twin_read(x_texts[i]), dv::test::twin_read(y_texts[i]));
        if (L::less(x[i], y[i]) != (want < 0)) return report_wrong(state, x_texts[i] + ", " + y_texts[i]);
    }
    for (auto _ : gauged(state)) {
        int below = 0;
        for (size_t i = 0; i < x.size(); ++i) below += L::less(x[i], y[i]) ? 1 : 0;
        benchmark::DoNotOptimize(below);
    }
    count_operations(state, x.size());
}

template <typename L>
void run_sort(benchmark::State &state, operands_e kind) {
    const auto in = read_all<L>(decimals(kind, sort_count, 3));
    const auto less = [](const auto &a, const auto &b) { return L::less(a, b); };
    auto work = in;
    std::sort(work.begin(), work.end(), less);
    for (size_t i = 1000; i < work.size(); i += 1000) {
        if (compare(value_of<L>(work[i - 1]), value_of<L>(work[i])) > 0) return report_wrong(state, "order");
    }
    for (auto _ : gauged(state)) {
        std::copy(in.begin(), in.end(), work.begin());
        std::sort(work.begin(), work.end(), less);
        benchmark::ClobberMemory();
    }
    count_operations(state, in.size());
}

template <typename L>
void run_from_int64(benchmark::State &state, operands_e kind) {
    const auto in = machine_integers(kind, operand_count, 4);
    std::vector<typename L::value> out(in.size());
    run_convert(
        state, in, out, [](int64_t n, typename L::value &v) { L::from_int64(v, n); },
        [&](size_t i, const typename L::value &v) {
            return compare(value_of<L>(v), dv::test::twin_read(std::to_string(in[i]))) == 0;
        });
}

template <typename L>
void run_to_int64(benchmark::State &state, operands_e kind) {
    const auto want = machine_integers(kind, operand_count, 4);
    std::vector<std::string> texts(want.size());
    for (size_t i = 0; i < want.size(); ++i) texts[i] = std::to_string(want[i]);
    const auto in = read_all<L>(texts);
    std::vector<int64_t> out(in.size());
    run_convert(
        state, in, out, [](const auto &v, int64_t &n) { L::to_int64(v, n); },
        [&](size_t i, int64_t n) { return n == want[i]; });
}

template <typename L>
void run_from_double(benchmark::State &state, operands_e kind) {
    const auto in = machine_doubles(kind, operand_count, 5);
    std::vector<typename L::value> out(in.size());
    run_convert(
        state, in, out, [](double d, typename L::value &v) { L::from_double(v, d); },
        [&](size_t i, const typename L::value &v) {
            char text[64];
            snprintf(text, sizeof text, "%.15e", in[i]);
            const decimal_t want = dv::test::twin_read(text);
            return agrees(value_of<L>(v), want, want, want, 15);
        });
}

template <typename L>
void run_to_double(benchmark::State &state, operands_e kind) {
    const auto texts = decimals(kind, operand_count, 1);
    const auto in = read_all<L>(texts);
    std::vector<double> out(in.size());
    run_convert(
        state, in, out, [](const auto &v, double &d) { L::to_double(v, d); },
        [&](size_t i, double d) {
            const double want = std::strtod(texts[i].c_str(), nullptr);
            return std::abs(d - want) <= std::abs(want) * 0x1p-51;
        });
}

template <typename F>
void add_case(const std::string &operation, operands_e kind, const char *library, F run) {
    const std::string name = operation + "/" + name_of(kind) + "/" + library;
    benchmark::RegisterBenchmark(name.c_str(), [run, kind](benchmark::State &state) { run(state, kind); });
}

template <typename L, typename F>
void add_in_place(const std::string &operation, operands_e kind, F function, twin_t *twin) {
    add_case(operation, kind, L::name, [=](benchmark::State &state, operands_e operands) {
        run_in_place<L>(state, decimals(operands, operand_count, 1), decimals(operands, operand_count, 2),
                        L::digits, function, [twin](const decimal_t &x, const decimal_t &y) {
                            return twin(x, y, NUMBER_RMODE_HALF_UP);
                        });
    });
}

inline decimal_t root_of(const decimal_t &x, const decimal_t &) {
    return dv::test::twin_sqrt(x, NUMBER_RMODE_HALF_UP);
}
inline decimal_t power_of(const decimal_t &x, const decimal_t &y) {
    return dv::test::twin_pow(x, y, NUMBER_RMODE_HALF_UP);
}

// The twin rounds each of up to 180 steps to 38 digits, which costs its last three; and a base that lost its
// last digits when it was read loses up to 20 times as much in a power.
template <typename L>
void register_roots_and_powers(operands_e kind) {
    using value = typename L::value;
    [[maybe_unused]] constexpr int digits =
        L::digits == NUMBER_PRECISION_MAX ? int{NUMBER_PRECISION_MAX} : L::digits - 4;
    if constexpr (requires(value v) { L::sqrt(v); }) {
        add_case("sqrt", kind, L::name, [](auto &state, auto operands) {
            const texts_t x = magnitudes(operands, operand_count, 6);
            run_in_place<L>(
                state, x, x, L::digits, [](value &v, const value &) { L::sqrt(v); }, root_of);
        });
    }
    if constexpr (requires(value v) { L::pow(v, v); }) {
        const auto pow = [](value &x, const value &y) { L::pow(x, y); };
        add_case("pow_integral", kind, L::name, [pow](auto &state, auto operands) {
            run_in_place<L>(state, magnitudes(operands, operand_count, 7),
                            integral_exponents(operands, operand_count, 8), digits, pow, power_of);
        });
        add_case("pow_fractional", kind, L::name, [pow](auto &state, auto operands) {
            run_in_place<L>(state, magnitudes(operands, operand_count, 9),
                            fractional_exponents(operand_count, 10), digits, pow, power_of,
                            /*check_step=*/16);
        });
    }
}

template <typename L>
decimal_t rounded_to_one_decimal(const decimal_t &x, const decimal_t &, int mode) {
    if constexpr (requires { L::tie_mode; }) mode = L::tie_mode;
    return dv::test::twin_round(x, -1, mode);
}

inline decimal_t negative_of(const decimal_t &x, const decimal_t &, int) { return {-x.digits, x.exponent}; }

template <typename L>
void register_arithmetic(operands_e kind) {
    using value = typename L::value;
    const auto add = [&](const char *operation, auto function, twin_t *twin) {
        add_in_place<L>(operation, kind, function, twin);
    };
    if constexpr (requires(value v) { L::add(v, v); }) {
        add(
            "add", [](value &x, const value &y) { L::add(x, y); }, dv::test::twin_add);
        add(
            "sub", [](value &x, const value &y) { L::sub(x, y); }, dv::test::twin_sub);
        add(
            "mul", [](value &x, const value &y) { L::mul(x, y); }, dv::test::twin_mul);
        add(
            "div", [](value &x, const value &y) { L::div(x, y); }, dv::test::twin_div);
        add(
            "round", [](value &x, const value &) { L::round(x); }, rounded_to_one_decimal<L>);
    }
    if constexpr (requires(value v) { L::mod(v, v); }) {
        add(
            "mod", [](value &x, const value &y) { L::mod(x, y); }, dv::test::twin_mod);
    }
    if constexpr (requires(value v) { L::rem(v, v); }) {
        add(
            "rem", [](value &x, const value &y) { L::rem(x, y); }, dv::test::twin_rem);
    }
    if constexpr (requires(value v) { L::negate(v); }) {
        add(
            "neg", [](value &x, const value &) { L::negate(x); }, negative_of);
    }
    if constexpr (requires(value v) { L::less(v, v); }) {
        add_case("cmp", kind, L::name, run_compare<L>);
        add_case("sort_million", kind, L::name, run_sort<L>);
    }
}

template <typename L>
void register_conversions(operands_e kind) {
    using value = typename L::value;
    add_case("from_str", kind, L::name,
             [](auto &state, auto operands) { run_read<L>(state, decimals(operands, operand_count, 1)); });
    add_case("to_str", kind, L::name, run_write<L>);
    if constexpr (requires(value v) { L::from_int64(v, 1); }) {
        add_case("from_int64", kind, L::name, run_from_int64<L>);
        add_case("to_int64", kind, L::name, run_to_int64<L>);
    }
    if constexpr (requires(value v) { L::from_double(v, 1.0); }) {
        add_case("from_double", kind, L::name, run_from_double<L>);
        add_case("to_double", kind, L::name, run_to_double<L>);
    }
}

// Plain integer texts: L is the library with its reader for such texts.
template <typename L>
void register_integer_text(operands_e kind) {
    add_case("from_str_nt", kind, L::name,
             [](auto &state, auto operands) { run_read<L>(state, integers(operands, operand_count, 1)); });
}

template <typename L>
bool register_library() {
    for (const operands_e kind : {operands_e::SHORT, operands_e::LONG}) {
        register_arithmetic<L>(kind);
        register_roots_and_powers<L>(kind);
        register_conversions<L>(kind);
    }
    return true;
}

}  // namespace dv::bench

#endif  // DV_BENCH_NUMBER_BENCH_H
