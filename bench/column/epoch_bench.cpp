// A million timestamps to and from microseconds since 1970, beside the functions for one value and one pass
// over the same memory: operation/unit/library.

#include "datetime_bench.h"

namespace dv::bench {
namespace {

struct operands_t {
    std::vector<int64_t> counts = microseconds(20261122);
    std::vector<dv_timestamp_t> values = timestamps_of(counts);
};
operands_t &operands_() {
    static operands_t operands;
    return operands;
}

void to_epoch_columns_(benchmark::State &state) {
    operands_t &operands = operands_();
    std::vector<int64_t> counts(operands.counts.size());
    const dv_column_t values = column_of(operands.values);
    dv_column_t result = column_of(counts);
    for (auto _ : gauged(state))
        dv_timestamp_column_to_epoch(&values, DV_EPOCH_MICROSECOND, &result, nullptr);
    count_rows(state);
    if (!same_bytes(counts, operands.counts)) report_wrong(state, "wrong counts");
}

void to_epoch_one_by_one_(benchmark::State &state) {
    const operands_t &operands = operands_();
    std::vector<int64_t> counts(operands.counts.size());
    for (auto _ : gauged(state)) {
        for (size_t i = 0; i < counts.size(); ++i)
            counts[i] = dv_timestamp_to_epoch(&operands.values[i], DV_EPOCH_MICROSECOND);
    }
    count_rows(state);
    if (!same_bytes(counts, operands.counts)) report_wrong(state, "wrong counts");
}

void from_epoch_columns_(benchmark::State &state) {
    operands_t &operands = operands_();
    std::vector<dv_timestamp_t> values(operands.values.size());
    const dv_column_t counts = column_of(operands.counts);
    dv_column_t result = column_of(values);
    for (auto _ : gauged(state))
        dv_timestamp_column_from_epoch(&counts, DV_EPOCH_MICROSECOND, &result, nullptr);
    count_rows(state);
    if (!same_bytes(values, operands.values)) report_wrong(state, "wrong timestamps");
}

void from_epoch_one_by_one_(benchmark::State &state) {
    const operands_t &operands = operands_();
    std::vector<dv_timestamp_t> values(operands.values.size());
    for (auto _ : gauged(state)) {
        for (size_t i = 0; i < values.size(); ++i)
            dv_timestamp_from_epoch(&values[i], operands.counts[i], DV_EPOCH_MICROSECOND);
    }
    count_rows(state);
    if (!same_bytes(values, operands.values)) report_wrong(state, "wrong timestamps");
}

template <typename From, typename To>
void pass_(benchmark::State &state) {
    const auto rows = static_cast<size_t>(column_rows());
    std::vector<From> input(rows);
    std::vector<To> output(rows);
    for (auto _ : gauged(state))
        pass_over_memory(input.data(), rows * sizeof(From), output.data(), rows * sizeof(To));
    count_rows(state);
}

void add_all_() {
    benchmark::RegisterBenchmark("column_to_epoch/microseconds/dvtypes", to_epoch_columns_);
    benchmark::RegisterBenchmark("column_to_epoch/microseconds/one_by_one", to_epoch_one_by_one_);
    benchmark::RegisterBenchmark("column_to_epoch/microseconds/memory_pass", pass_<dv_timestamp_t, int64_t>);
    benchmark::RegisterBenchmark("column_from_epoch/microseconds/dvtypes", from_epoch_columns_);
    benchmark::RegisterBenchmark("column_from_epoch/microseconds/one_by_one", from_epoch_one_by_one_);
    benchmark::RegisterBenchmark("column_from_epoch/microseconds/memory_pass",
                                 pass_<int64_t, dv_timestamp_t>);
}

}  // namespace
}  // namespace dv::bench

int main(int argc, char **argv) {
    dv::bench::add_all_();
    return dv::bench::run_benchmarks(argc, argv);
}
