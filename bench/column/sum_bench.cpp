// Exact sums of columns of NUMBER: of records, of products, and by groups, beside number_sum_add one by one
// over the same rows and a reading of the same memory.

#include <cstring>
#include <random>

#include "column_bench.h"
#include "dvtypes/number_sum.h"

namespace dv::bench {
namespace {

bool is_sum_(const number_total_t &total, const number_sum_t &wanted) {
    number_t x{}, y{};
    number_total_sum(&total, &x);
    number_sum_quotient(&wanted, 1, &y);
    return number_cmp(&x, &y) == 0;
}

number_sum_t sum_one_by_one_(const std::vector<number_t> &records) {
    number_sum_t sum{};
    for (const number_t &x : records) number_sum_add(&sum, &x);
    return sum;
}

// The records less their size bytes, by offsets.
struct by_offsets_t {
    std::vector<uint8_t> bytes;
    std::vector<int32_t> offsets{0};

    explicit by_offsets_t(const std::vector<number_t> &records) {
        for (const number_t &x : records) {
            bytes.insert(bytes.end(), &x.signexp, &x.signexp + x.size);
            offsets.push_back(static_cast<int32_t>(bytes.size()));
        }
    }
    dv_column_t column() {
        dv_column_t column{};
        column.count = static_cast<int64_t>(offsets.size()) - 1;
        column.values = bytes.data();
        column.offsets = offsets.data();
        column.size = static_cast<int64_t>(bytes.size());
        return column;
    }
};

void measure_sum_(benchmark::State &state, const dv_column_t &x, const std::vector<number_t> &records) {
    number_total_t total{};
    for (auto _ : gauged(state)) {
        total = {};
        number_column_sum(&x, nullptr, &total, nullptr);
        benchmark::DoNotOptimize(total);
    }
    count_rows(state);
    if (!is_sum_(total, sum_one_by_one_(records))) report_wrong(state, "another sum");
}

void sum_(benchmark::State &state, operands_e kind) {
    std::vector<number_t> records = number_records(kind, 1);
    measure_sum_(state, column_of(records), records);
}

void sum_by_offsets_(benchmark::State &state, operands_e kind) {
    const std::vector<number_t> records = number_records(kind, 1);
    by_offsets_t bytes(records);
    measure_sum_(state, bytes.column(), records);
}

void one_by_one_(benchmark::State &state, operands_e kind) {
    const std::vector<number_t> records = number_records(kind, 1);
    for (auto _ : gauged(state)) {
        number_sum_t sum = sum_one_by_one_(records);
        benchmark::DoNotOptimize(sum);
    }
    count_rows(state);
}

void read_memory_(benchmark::State &state, operands_e kind) {
    const std::vector<number_t> records = number_records(kind, 1);
    const auto *const bytes = reinterpret_cast<const char *>(records.data());
    const size_t words = records.size() * sizeof(number_t) / sizeof(uint64_t);
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

// Short ones, whose products number_mul gives exactly.
number_sum_t products_one_by_one_(const std::vector<number_t> &x, const std::vector<number_t> &y) {
    number_sum_t sum{};
    for (size_t i = 0; i < x.size(); ++i) {
        number_t product = x[i];
        number_mul(&product, &y[i]);
        number_sum_add(&sum, &product);
    }
    return sum;
}

void products_(benchmark::State &state, bool by_column) {
    std::vector<number_t> x = number_records(operands_e::SHORT, 1), y = number_records(operands_e::SHORT, 2);
    const dv_column_t x_column = column_of(x), y_column = column_of(y);
    number_total_t total{};
    for (auto _ : gauged(state)) {
        if (by_column) {
            total = {};
            number_column_sum_products(&x_column, &y_column, nullptr, &total, nullptr);
            benchmark::DoNotOptimize(total);
        } else {
            number_sum_t sum = products_one_by_one_(x, y);
            benchmark::DoNotOptimize(sum);
        }
    }
    count_rows(state);
    if (by_column && !is_sum_(total, products_one_by_one_(x, y))) report_wrong(state, "another sum");
}

void groups_(benchmark::State &state, int64_t count, bool by_column) {
    std::vector<number_t> records = number_records(operands_e::SHORT, 1);
    const dv_column_t x = column_of(records);
    std::mt19937_64 random(7);
    std::vector<int32_t> groups(records.size());
    for (int32_t &group : groups) group = static_cast<int32_t>(random() % static_cast<uint64_t>(count));
    std::vector<number_total_t> totals(static_cast<size_t>(count));
    std::vector<number_sum_t> sums(by_column ? 0 : static_cast<size_t>(count));
    const number_totals_t all = {count, totals.data(), sizeof(number_total_t)};
    const auto add_all = [&] {
        if (by_column) number_column_sum_by_group(&x, groups.data(), &all, nullptr);
        for (size_t i = 0; !by_column && i < records.size(); ++i) {
            number_sum_add(&sums[static_cast<size_t>(groups[i])], &records[i]);
        }
        benchmark::ClobberMemory();
    };
    add_all();  // so that the memory is there
    for (auto _ : gauged(state)) add_all();
    count_rows(state);
    if (!by_column) return;
    number_total_t whole{};  // as often as the clock ran
    for (const number_total_t &total : totals) number_total_merge(&whole, &total);
    if (whole.count != (state.iterations() + 1) * static_cast<int64_t>(records.size()))
        report_wrong(state, "another count");
}

void register_cases_() {
    const auto add = [](const std::string &name, auto function, auto... arguments) {
        benchmark::RegisterBenchmark(name.c_str(), [=](benchmark::State &state) {
            function(state, arguments...);
        })->Unit(benchmark::kMillisecond);
    };
    for (const operands_e kind : {operands_e::SHORT, operands_e::LONG}) {
        const std::string place = std::string("column_sum/") + name_of(kind);
        add(place + "/dvtypes", sum_, kind);
        add(place + "/one_by_one", one_by_one_, kind);
        add(place + "/memory_read", read_memory_, kind);
        add(place + "_by_offsets/dvtypes", sum_by_offsets_, kind);
    }
    add("column_sum_products/short/dvtypes", products_, true);
    add("column_sum_products/short/one_by_one", products_, false);
    for (const int64_t count : {int64_t{1'000}, int64_t{1'000'000}}) {
        const std::string place = "column_sum_by_group/" + std::to_string(count);
        add(place + "/dvtypes", groups_, count, true);
        add(place + "/one_by_one", groups_, count, false);
    }
}

}  // namespace
}  // namespace dv::bench

int main(int argc, char **argv) {
    dv::bench::register_cases_();
    return dv::bench::run_benchmarks(argc, argv);
}
