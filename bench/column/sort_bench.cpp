// Sorting a million records: by keys, written and radix sorted, beside std::sort of the records with the
// inline comparison. Keys include what writes them; the records come out in order in both.

#include <algorithm>

#include "column_bench.h"
#include "dvtypes/column.hpp"
#include "dvtypes/timestamp.h"

namespace dv::bench {
namespace {

bool is_before_(const number_t &x, const number_t &y) { return number_cmp(&x, &y) < 0; }
bool is_before_(const dv_timestamp_t &x, const dv_timestamp_t &y) { return dv_timestamp_cmp(&x, &y) < 0; }

std::vector<dv_timestamp_t> timestamps_(uint64_t seed) {
    std::vector<dv_timestamp_t> values;
    for (int64_t random : machine_integers(operands_e::LONG, static_cast<int>(column_rows()), seed)) {
        const auto bits = static_cast<uint64_t>(random);
        const auto part = [&](int shift, unsigned range) {
            return static_cast<uint8_t>((bits >> shift & 0xFF) % range);
        };
        values.push_back({120,
                          static_cast<uint8_t>(100 + part(0, 26)),
                          static_cast<uint8_t>(1 + part(8, 12)),
                          static_cast<uint8_t>(1 + part(16, 28)),
                          part(24, 24),
                          part(32, 60),
                          part(40, 60),
                          0,
                          {part(48, 59), part(1, 255), part(9, 255), part(17, 255)}});
    }
    return values;
}

// What a sort by keys works in.
template <typename T>
struct memory_t {
    std::vector<uint8_t> keys, scratch;
    std::vector<int64_t> rows;
    std::vector<T> sorted;
};

template <typename T>
void sort_by_keys_(std::vector<T> &values, dv_key_type_e type, memory_t<T> &memory) {
    const dv_column_t column = column_of(values);
    const dv_key_part_t part = {&column, type, DV_KEY_ASCENDING, DV_KEY_NULLS_LAST};
    const size_t width = dv_key_size(&part), count = values.size();
    memory.keys.resize(width * count);
    memory.scratch.resize(dv_sort_scratch_size(column.count, width));
    memory.rows.resize(count);
    memory.sorted.resize(count);
    dv_column_write_keys(&part, memory.keys.data(), width, nullptr);
    dv_sort_keys(memory.keys.data(), width, column.count, memory.rows.data(), memory.scratch.data());
    dv::take(values, memory.rows, memory.sorted);
}

template <typename T>
void by_keys_(benchmark::State &state, std::vector<T> values, dv_key_type_e type) {
    memory_t<T> memory;
    sort_by_keys_(values, type, memory);  // the memory is there before the clock starts
    for (auto _ : gauged(state)) sort_by_keys_(values, type, memory);
    count_rows(state);
    const auto is_before = [](const T &x, const T &y) { return is_before_(x, y); };
    if (!std::is_sorted(memory.sorted.begin(), memory.sorted.end(), is_before))
        report_wrong(state, "not sorted");
}

template <typename T>
void by_std_sort_(benchmark::State &state, const std::vector<T> &values) {
    std::vector<T> sorted = values;
    for (auto _ : gauged(state)) {
        sorted = values;
        std::sort(sorted.begin(), sorted.end(), [](const T &x, const T &y) { return is_before_(x, y); });
    }
    count_rows(state);
}

void add_numbers_(const char *name, operands_e kind) {
    const std::string place = std::string("column_sort/") + name;
    benchmark::RegisterBenchmark((place + "/dvtypes").c_str(), [kind](benchmark::State &state) {
        by_keys_(state, number_records(kind, 1), DV_KEY_NUMBER);
    })->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark((place + "/std_sort").c_str(), [kind](benchmark::State &state) {
        by_std_sort_(state, number_records(kind, 1));
    })->Unit(benchmark::kMillisecond);
}

void add_timestamps_() {
    benchmark::RegisterBenchmark("column_sort/timestamp/dvtypes", [](benchmark::State &state) {
        by_keys_(state, timestamps_(2), DV_KEY_TIMESTAMP);
    })->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark("column_sort/timestamp/std_sort", [](benchmark::State &state) {
        by_std_sort_(state, timestamps_(2));
    })->Unit(benchmark::kMillisecond);
}

}  // namespace
}  // namespace dv::bench

int main(int argc, char **argv) {
    using namespace dv::bench;
    add_numbers_("short", operands_e::SHORT);
    add_numbers_("long", operands_e::LONG);
    add_timestamps_();
    return run_benchmarks(argc, argv);
}
