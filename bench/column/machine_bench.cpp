// Columns of machine numbers to and from NUMBER, beside the functions for one value over the same rows.

#include "column_bench.h"

namespace dv::bench {
namespace {

using column_function_t = void (*)(const dv_column_t *, dv_column_t *, dv_column_faults_t *);

// From one value of a row to the other: columns(from, to), single(from, to).
template <typename From, typename To, typename Make, typename Single>
void add_(const std::string &place, Make make, column_function_t columns, Single single) {
    const auto one_by_one = [=](const std::vector<From> &from, std::vector<To> &to) {
        for (size_t i = 0; i < from.size(); ++i) single(from[i], to[i]);
    };
    benchmark::RegisterBenchmark((place + "/dvtypes").c_str(), [=](benchmark::State &state) {
        std::vector<From> from = make();
        std::vector<To> to(from.size()), wanted(from.size());
        const dv_column_t operand = column_of(from);
        dv_column_t result = column_of(to);
        measure(state, [&] { columns(&operand, &result, nullptr); });
        one_by_one(from, wanted);
        for (size_t i = 0; i < to.size(); ++i) {
            size_t size = sizeof(To);
            if constexpr (std::is_same_v<To, number_t>) size = 1 + wanted[i].size;
            if (memcmp(&to[i], &wanted[i], size) != 0) return report_wrong(state, "another value");
        }
    })->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark((place + "/one_by_one").c_str(), [=](benchmark::State &state) {
        const std::vector<From> from = make();
        std::vector<To> to(from.size());
        measure(state, [&] { one_by_one(from, to); });
    })->Unit(benchmark::kMillisecond);
}

std::vector<int64_t> integers_(operands_e kind) {
    return machine_integers(kind, static_cast<int>(column_rows()), 1);
}

std::vector<double> doubles_(operands_e kind) {
    return machine_doubles(kind, static_cast<int>(column_rows()), 1);
}

std::vector<number_t> numbers_(const std::vector<int64_t> &integers) {
    std::vector<number_t> numbers;
    for (const int64_t integer : integers) number_from_int64(&numbers.emplace_back(), integer);
    return numbers;
}

void add_integers_(operands_e kind) {
    const std::string name = name_of(kind);
    add_<int64_t, number_t>(
        "column_from_int64/" + name, [=] { return integers_(kind); }, number_column_from_int64,
        [](int64_t from, number_t &to) { number_from_int64(&to, from); });
    add_<number_t, int64_t>(
        "column_to_int64/" + name, [=] { return numbers_(integers_(kind)); }, number_column_to_int64,
        [](const number_t &from, int64_t &to) { number_to_int64(&from, &to); });
}

void add_small_integers_() {
    const auto make = [] {
        const std::vector<int64_t> integers = integers_(operands_e::SHORT);
        return std::vector<int32_t>(integers.begin(), integers.end());
    };
    add_<int32_t, number_t>("column_from_int32/short", make, number_column_from_int32,
                            [](int32_t from, number_t &to) { number_from_int32(&to, from); });
    add_<number_t, int32_t>(
        "column_to_int32/short", [] { return numbers_(integers_(operands_e::SHORT)); },
        number_column_to_int32, [](const number_t &from, int32_t &to) { number_to_int32(&from, &to); });
}

void add_doubles_(operands_e kind) {
    const std::string name = name_of(kind);
    add_<double, number_t>(
        "column_from_double/" + name, [=] { return doubles_(kind); }, number_column_from_double,
        [](double from, number_t &to) { number_from_double(&to, from); });
    add_<number_t, double>(
        "column_to_double/" + name, [=] { return number_records(kind, 1); }, number_column_to_double,
        [](const number_t &from, double &to) { number_to_double(&from, &to); });
}

}  // namespace
}  // namespace dv::bench

int main(int argc, char **argv) {
    using namespace dv::bench;
    for (const operands_e kind : {operands_e::SHORT, operands_e::LONG}) add_integers_(kind);
    add_small_integers_();
    for (const operands_e kind : {operands_e::SHORT, operands_e::LONG}) add_doubles_(kind);
    return run_benchmarks(argc, argv);
}
