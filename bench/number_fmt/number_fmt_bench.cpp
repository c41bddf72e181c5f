// What text under a number model costs, over shuffled amounts of 2 to 9 digits with two decimals, a
// quarter of them negative. The library compiles the model in each call.
//
// Peers: ICU's decimal format "#,##0.00", compiled once before the clock starts, over doubles; snprintf
// "%.2f" and strtod as the least that a machine number costs, without separators. What each wrote is
// compared, blanks and separators apart, before the clock starts; a wrong answer fails the case.

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <random>
#include <string>
#include <vector>

#include "dvtypes/number_fmt.h"
#include "gauged.h"
#include "operand_count.h"

#ifdef DV_HAVE_ICU
#include <unicode/unum.h>
#endif

namespace {

constexpr int _count = dv::bench::operand_count;
constexpr int _text_size = 64;

struct amount_t {
    std::string plain;  // "-1234.50"
    number_t number;
    double binary;
};

std::vector<amount_t> amounts_() {
    std::mt19937_64 engine(1);
    std::vector<amount_t> amounts(_count);
    for (amount_t &amount : amounts) {
        const uint64_t bound = static_cast<uint64_t>(std::pow(10.0, static_cast<double>(2 + engine() % 8)));
        const uint64_t cents = engine() % bound;
        char text[_text_size];
        std::snprintf(text, sizeof text, "%s%llu.%02llu", cents != 0 && engine() % 4 == 0 ? "-" : "",
                      static_cast<unsigned long long>(cents / 100),
                      static_cast<unsigned long long>(cents % 100));
        amount.plain = text;
        number_from_str(&amount.number, 0, text, nullptr);
        amount.binary = std::strtod(text, nullptr);
    }
    return amounts;
}

void count_operations_(benchmark::State &state) {
    state.SetItemsProcessed(state.iterations() * _count);
    state.counters["per_op"] = benchmark::Counter(
        _count, benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

std::string without_punctuation_(std::string text) {
    std::erase_if(text, [](char c) { return c == ' ' || c == ','; });
    return text;
}

// write(amount, text of _text_size bytes)
template <typename F>
void run_write_(benchmark::State &state, F write) {
    const std::vector<amount_t> amounts = amounts_();
    char text[_text_size];
    for (const amount_t &amount : amounts) {
        write(amount, text);
        if (without_punctuation_(text) != amount.plain) return state.SkipWithError(amount.plain.c_str());
    }
    for (auto _ : dv::bench::gauged(state)) {
        for (const amount_t &amount : amounts) {
            write(amount, text);
            benchmark::DoNotOptimize(text);
        }
    }
    count_operations_(state);
}

// read(text, value), and right(amount, value); the texts are what the model writes.
template <typename Value, typename F, typename R>
void run_read_(benchmark::State &state, const char *model, F read, R right) {
    const std::vector<amount_t> amounts = amounts_();
    std::vector<std::string> texts;
    for (const amount_t &amount : amounts) {
        char text[_text_size];
        number_to_str_fmt(&amount.number, sizeof text, text, static_cast<int>(strlen(model)), model);
        texts.emplace_back(text);
        Value value{};
        read(texts.back(), value);
        if (!right(amount, value)) return state.SkipWithError(text);
    }
    for (auto _ : dv::bench::gauged(state)) {
        for (const std::string &text : texts) {
            Value value{};
            read(text, value);
            benchmark::DoNotOptimize(value);
        }
    }
    count_operations_(state);
}

void write_ours_(benchmark::State &state, const char *model) {
    const int model_length = static_cast<int>(strlen(model));
    run_write_(state, [=](const amount_t &amount, char *text) {
        number_to_str_fmt(&amount.number, _text_size, text, model_length, model);
    });
}

void read_ours_(benchmark::State &state, const char *model) {
    const int model_length = static_cast<int>(strlen(model));
    run_read_<number_t>(
        state, model,
        [=](const std::string &text, number_t &x) {
            number_from_str_fmt(&x, static_cast<int>(text.size()), text.data(), model_length, model);
        },
        [](const amount_t &amount, const number_t &x) { return number_cmp(&x, &amount.number) == 0; });
}

void parse_ours_(benchmark::State &state, const char *model) {
    number_parse_result_t pr;
    for (auto _ : dv::bench::gauged(state)) {
        benchmark::DoNotOptimize(model);
        number_fmt_parse(model, &pr);
        benchmark::DoNotOptimize(pr);
    }
}

bool is_same_double_(const amount_t &amount, double x) { return x == amount.binary; }

void write_c_(benchmark::State &state) {
    run_write_(state, [](const amount_t &amount, char *text) {
        std::snprintf(text, _text_size, "%.2f", amount.binary);
    });
}

void read_c_(benchmark::State &state) {
    run_read_<double>(
        state, "FM999999990.00",
        [](const std::string &text, double &x) { x = std::strtod(text.c_str(), nullptr); }, is_same_double_);
}

constexpr const char *_plain = "999,999,990.99";
constexpr const char *_unfilled = "FM999,999,990.00";

BENCHMARK_CAPTURE(parse_ours_, plain, _plain)->Name("compile/999,999,990.99/dvtypes");
BENCHMARK_CAPTURE(parse_ours_, currency, "FM$99,990.00PR")->Name("compile/FM$99,990.00PR/dvtypes");
BENCHMARK_CAPTURE(write_ours_, plain, _plain)->Name("write/999,999,990.99/dvtypes");
BENCHMARK_CAPTURE(write_ours_, unfilled, _unfilled)->Name("write/FM999,999,990.00/dvtypes");
BENCHMARK_CAPTURE(read_ours_, plain, _plain)->Name("read/999,999,990.99/dvtypes");
BENCHMARK_CAPTURE(read_ours_, unfilled, _unfilled)->Name("read/FM999,999,990.00/dvtypes");
BENCHMARK(write_c_)->Name("write/%.2f/snprintf");
BENCHMARK(read_c_)->Name("read/plain/strtod");

#ifdef DV_HAVE_ICU

UNumberFormat *open_format_() {
    UErrorCode status = U_ZERO_ERROR;
    UChar pattern[_text_size];
    const char text[] = "#,##0.00";
    std::copy(std::begin(text), std::end(text), pattern);
    return unum_open(UNUM_PATTERN_DECIMAL, pattern, -1, "en_US", nullptr, &status);
}

void write_icu_(benchmark::State &state) {
    UNumberFormat *const format = open_format_();
    run_write_(state, [=](const amount_t &amount, char *text) {
        UErrorCode status = U_ZERO_ERROR;
        UChar wide[_text_size];
        const int32_t length = unum_formatDouble(format, amount.binary, wide, _text_size, nullptr, &status);
        text = std::transform(wide, wide + length, text, [](UChar c) { return static_cast<char>(c); });
        *text = '\0';
    });
    unum_close(format);
}

void read_icu_(benchmark::State &state) {
    UNumberFormat *const format = open_format_();
    run_read_<double>(
        state, _unfilled,
        [=](const std::string &text, double &x) {
            UErrorCode status = U_ZERO_ERROR;
            UChar wide[_text_size];
            std::copy(text.begin(), text.end(), wide);
            x = unum_parseDouble(format, wide, static_cast<int32_t>(text.size()), nullptr, &status);
        },
        is_same_double_);
    unum_close(format);
}

BENCHMARK(write_icu_)->Name("write/#,##0.00/icu");
BENCHMARK(read_icu_)->Name("read/#,##0.00/icu");

#endif

}  // namespace
