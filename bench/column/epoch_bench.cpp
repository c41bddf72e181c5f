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

// ---- days ----

struct days_t {
    std::vector<int32_t> days;
    std::vector<dv_date_t> dates;

    days_t() {
        for (const int64_t count : operands_().counts) {
            days.push_back(static_cast<int32_t>(count / 86'400'000'000));
            dv_date_from_epoch_day(&dates.emplace_back(), days.back());
        }
    }
};

void to_day_columns_(benchmark::State &state) {
    days_t operands;
    std::vector<int32_t> days(operands.days.size());
    const dv_column_t x = column_of(operands.dates);
    dv_column_t result = column_of(days);
    measure(state, [&] { dv_date_column_to_epoch_day(&x, &result, nullptr); });
    if (!same_bytes(days, operands.days)) report_wrong(state, "wrong days");
}

void to_day_one_by_one_(benchmark::State &state) {
    const days_t operands;
    std::vector<int32_t> days(operands.days.size());
    measure(state, [&] {
        for (size_t i = 0; i < days.size(); ++i) days[i] = dv_date_to_epoch_day(&operands.dates[i]);
    });
}

void from_day_columns_(benchmark::State &state) {
    days_t operands;
    std::vector<dv_date_t> dates(operands.dates.size());
    const dv_column_t days = column_of(operands.days);
    dv_column_t result = column_of(dates);
    measure(state, [&] { dv_date_column_from_epoch_day(&days, &result, nullptr); });
    if (!same_bytes(dates, operands.dates)) report_wrong(state, "wrong dates");
}

void from_day_one_by_one_(benchmark::State &state) {
    const days_t operands;
    std::vector<dv_date_t> dates(operands.dates.size());
    measure(state, [&] {
        for (size_t i = 0; i < dates.size(); ++i) dv_date_from_epoch_day(&dates[i], operands.days[i]);
    });
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
    benchmark::RegisterBenchmark("column_to_epoch/days/dvtypes", to_day_columns_);
    benchmark::RegisterBenchmark("column_to_epoch/days/one_by_one", to_day_one_by_one_);
    benchmark::RegisterBenchmark("column_from_epoch/days/dvtypes", from_day_columns_);
    benchmark::RegisterBenchmark("column_from_epoch/days/one_by_one", from_day_one_by_one_);
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
