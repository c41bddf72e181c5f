// Columns of NUMBER compared with a constant and with a column into a bitmap, and their greatest value,
// beside number_cmp one by one over the same rows.

#include <algorithm>
#include <cstring>

#include "column_bench.h"

namespace dv::bench {
namespace {

using bitmap_t = std::vector<uint8_t>;

// The middle one, so that no branch predictor knows which way a row goes.
number_t median_(std::vector<number_t> records) {
    const auto middle = records.begin() + static_cast<std::ptrdiff_t>(records.size() / 2);
    std::nth_element(records.begin(), middle, records.end(),
                     [](const number_t &x, const number_t &y) { return number_cmp(&x, &y) < 0; });
    return *middle;
}

bitmap_t below_one_by_one_(const std::vector<number_t> &x, const number_t *y, int step) {
    bitmap_t bits(x.size() / 8 + 1);
    for (size_t i = 0; i < x.size(); ++i, y += step) {
        const int below = number_cmp(&x[i], y) < 0 ? 1 : 0;
        bits[i / 8] = static_cast<uint8_t>(bits[i / 8] | below << i % 8);
    }
    return bits;
}

void compare_(benchmark::State &state, operands_e kind, bool with_constant, bool by_column) {
    std::vector<number_t> x = number_records(kind, 1), others = number_records(kind, 2);
    number_t constant = median_(x);
    const dv_column_t x_column = column_of(x);
    dv_column_t y_column = column_of(others);
    if (with_constant) {
        y_column.values = &constant;
        y_column.stride = 0;
    }
    const number_t *const y = with_constant ? &constant : others.data();
    const int step = with_constant ? 0 : 1;
    bitmap_t bits(x.size() / 8 + 1);
    for (auto _ : gauged(state)) {
        if (by_column) {
            number_column_compare(&x_column, &y_column, DV_COLUMN_LT, bits.data(), nullptr);
        } else {
            bits = below_one_by_one_(x, y, step);
        }
        benchmark::DoNotOptimize(bits.data());
        benchmark::ClobberMemory();
    }
    count_rows(state);
    if (bits != below_one_by_one_(x, y, step)) report_wrong(state, "another bit");
}

void greatest_(benchmark::State &state, operands_e kind, bool by_column) {
    std::vector<number_t> x = number_records(kind, 1);
    const dv_column_t x_column = column_of(x);
    const auto below = [](const number_t &a, const number_t &b) { return number_cmp(&a, &b) < 0; };
    int64_t row = 0;
    for (auto _ : gauged(state)) {
        row = by_column ? number_column_max(&x_column, nullptr, nullptr)
                        : std::max_element(x.begin(), x.end(), below) - x.begin();
        benchmark::DoNotOptimize(row);
    }
    count_rows(state);
    if (row != std::max_element(x.begin(), x.end(), below) - x.begin()) report_wrong(state, "another row");
}

void read_memory_(benchmark::State &state) {
    const std::vector<number_t> x = number_records(operands_e::SHORT, 1);
    const auto *const bytes = reinterpret_cast<const char *>(x.data());
    const size_t words = x.size() * sizeof(number_t) / sizeof(uint64_t);
    for (auto _ : gauged(state)) {
        uint64_t all = 0;
        for (size_t i = 0; i < words; ++i) {
            uint64_t word;
            std::memcpy(&word, bytes + i * sizeof word, sizeof word);
            all |= word;
        }
        benchmark::DoNotOptimize(all);
    }
    count_rows(state);
}

void register_cases_() {
    const auto add = [](const std::string &name, auto function, auto... arguments) {
        benchmark::RegisterBenchmark(name.c_str(), [=](benchmark::State &state) {
            function(state, arguments...);
        })->Unit(benchmark::kMillisecond);
    };
    for (const operands_e kind : {operands_e::SHORT, operands_e::LONG}) {
        const std::string name = name_of(kind);
        for (const bool by_column : {true, false}) {
            const std::string library = by_column ? "/dvtypes" : "/one_by_one";
            add("column_compare/constant_" + name + library, compare_, kind, true, by_column);
            add("column_compare/column_" + name + library, compare_, kind, false, by_column);
            add("column_max/" + name + library, greatest_, kind, by_column);
        }
    }
    add("column_compare/constant_short/memory_read", read_memory_);
}

}  // namespace
}  // namespace dv::bench

int main(int argc, char **argv) {
    dv::bench::register_cases_();
    return dv::bench::run_benchmarks(argc, argv);
}
