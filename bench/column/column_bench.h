// What the benchmarks of columns share: how many rows, columns over vectors, reporting of wrong answers.

#ifndef DV_BENCH_COLUMN_BENCH_H
#define DV_BENCH_COLUMN_BENCH_H

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <string>
#include <vector>

#include "dvtypes/column.h"
#include "dvtypes/number.h"
#include "gauged.h"
#include "operands.h"

namespace dv::bench {

// Rows of a column: far more than the first cache holds. DV_BENCH_ROWS sets another count.
inline int64_t column_rows() {
    static const int64_t rows = [] {
        const char *const wanted = std::getenv("DV_BENCH_ROWS");
        return wanted != nullptr ? std::atoll(wanted) : 1'000'000LL;
    }();
    return rows;
}

// The values of a vector by stride.
template <typename T>
dv_column_t column_of(std::vector<T> &values) {
    dv_column_t column{};
    column.count = static_cast<int64_t>(values.size());
    column.values = values.data();
    column.stride = sizeof(T);
    return column;
}

// Texts one behind the other.
struct texts_t {
    std::vector<char> bytes;
    std::vector<int32_t> offsets{0};

    // Room for a result.
    static texts_t room(size_t rows, size_t bytes_of_row) {
        return {std::vector<char>(rows * bytes_of_row), std::vector<int32_t>(rows + 1)};
    }
    size_t rows() const { return offsets.size() - 1; }
    void append(std::string_view text) {
        bytes.insert(bytes.end(), text.begin(), text.end());
        offsets.push_back(static_cast<int32_t>(bytes.size()));
    }
    std::string_view operator[](size_t i) const {
        return {bytes.data() + offsets[i], static_cast<size_t>(offsets[i + 1] - offsets[i])};
    }
    dv_column_t column() {
        dv_column_t column{};
        column.count = static_cast<int64_t>(rows());
        column.values = bytes.data();
        column.offsets = offsets.data();
        column.size = static_cast<int64_t>(bytes.size());
        return column;
    }
};

inline std::vector<number_t> number_records(operands_e kind, uint64_t seed) {
    std::vector<number_t> records;
    for (const std::string &text : decimals(kind, static_cast<int>(column_rows()), seed)) {
        number_t x{};
        number_from_str(&x, static_cast<int>(text.size()), text.data(), nullptr);
        records.push_back(x);
    }
    return records;
}

inline bool any_wrong = false;

inline void report_wrong(benchmark::State &state, const char *message) {
    any_wrong = true;
    state.SkipWithError(message);
}

// A row's time stands in the table, whatever a pass takes.
inline void count_rows(benchmark::State &state, int64_t rows = column_rows()) {
    state.SetItemsProcessed(state.iterations() * rows);
}

// Passes over the rows of a column.
template <typename Pass>
void measure(benchmark::State &state, Pass pass) {
    for (auto _ : gauged(state)) {
        pass();
        benchmark::ClobberMemory();
    }
    count_rows(state);
}

// Runs the registered cases; 1 when an answer was wrong. DV_BENCH_LEVEL sets another vector level than the
// machine's highest: 0 to 3, as dv_vector_level_e has them.
inline int run_benchmarks(int argc, char **argv) {
    if (const char *const level = std::getenv("DV_BENCH_LEVEL"))
        dv_vector_set_level(static_cast<dv_vector_level_e>(std::atoi(level)));
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return any_wrong ? 1 : 0;
}

}  // namespace dv::bench

#endif  // DV_BENCH_COLUMN_BENCH_H
