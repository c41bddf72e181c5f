// Arithmetic on columns of NUMBER, beside the functions for one value over the same rows: two operands and a
// result of their own, and in place.

#include "column_bench.h"

namespace dv::bench {
namespace {

using column_function_t = void (*)(const dv_column_t *, const dv_column_t *, dv_column_t *,
                                   dv_column_faults_t *);
using single_t = void (*)(number_t *x, const number_t *y);

bool are_equal_(const std::vector<number_t> &x, const std::vector<number_t> &y) {
    for (size_t i = 0; i < x.size(); ++i) {
        if (number_cmp(&x[i], &y[i]) != 0) return false;
    }
    return true;
}

void one_by_one_(single_t single, const std::vector<number_t> &x, const std::vector<number_t> &y,
                 std::vector<number_t> &result) {
    for (size_t i = 0; i < x.size(); ++i) {
        result[i] = x[i];
        single(&result[i], &y[i]);
    }
}

void run_columns_(benchmark::State &state, operands_e kind, column_function_t columns, single_t single) {
    std::vector<number_t> x = number_records(kind, 1), y = number_records(kind, 2);
    std::vector<number_t> values(x.size()), wanted(x.size());
    const dv_column_t x_column = column_of(x), y_column = column_of(y);
    dv_column_t result = column_of(values);
    measure(state, [&] { columns(&x_column, &y_column, &result, nullptr); });
    one_by_one_(single, x, y, wanted);
    if (!are_equal_(values, wanted)) report_wrong(state, "other values");
}

void run_one_by_one_(benchmark::State &state, operands_e kind, single_t single) {
    const std::vector<number_t> x = number_records(kind, 1), y = number_records(kind, 2);
    std::vector<number_t> values(x.size());
    measure(state, [&] { one_by_one_(single, x, y, values); });
}

void add_(const std::string &operation, column_function_t columns, single_t single) {
    for (const operands_e kind : {operands_e::SHORT, operands_e::LONG}) {
        const std::string place = "column_" + operation + "/" + name_of(kind);
        benchmark::RegisterBenchmark((place + "/dvtypes").c_str(), [=](benchmark::State &state) {
            run_columns_(state, kind, columns, single);
        })->Unit(benchmark::kMillisecond);
        benchmark::RegisterBenchmark((place + "/one_by_one").c_str(), [=](benchmark::State &state) {
            run_one_by_one_(state, kind, single);
        })->Unit(benchmark::kMillisecond);
    }
}

// Operations on one column, over short operands: columns(x, result), single(x).
template <typename Columns, typename Single>
void add_change_(const std::string &operation, Columns columns, Single single) {
    benchmark::RegisterBenchmark((operation + "/dvtypes").c_str(), [=](benchmark::State &state) {
        std::vector<number_t> x = number_records(operands_e::SHORT, 1);
        std::vector<number_t> values(x.size()), wanted = x;
        const dv_column_t operand = column_of(x);
        dv_column_t result = column_of(values);
        measure(state, [&] { columns(&operand, &result); });
        for (number_t &value : wanted) single(&value);
        if (!are_equal_(values, wanted)) report_wrong(state, "other values");
    })->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark((operation + "/one_by_one").c_str(), [=](benchmark::State &state) {
        const std::vector<number_t> x = number_records(operands_e::SHORT, 1);
        std::vector<number_t> values(x.size());
        for (auto _ : gauged(state)) {
            for (size_t i = 0; i < x.size(); ++i) {
                values[i] = x[i];
                single(&values[i]);
            }
            benchmark::ClobberMemory();
        }
        count_rows(state);
    })->Unit(benchmark::kMillisecond);
}

void add_force_(const std::string &operation, int prec, int scale) {
    add_change_(
        operation,
        [=](const dv_column_t *x, dv_column_t *result) {
            number_column_force_prec_scale(x, prec, scale, result, nullptr);
        },
        [=](number_t *x) { number_force_prec_scale(x, prec, scale); });
}

}  // namespace
}  // namespace dv::bench

int main(int argc, char **argv) {
    using namespace dv::bench;
    add_("add", number_column_add, number_add);
    add_("sub", number_column_sub, number_sub);
    add_("mul", number_column_mul, number_mul);
    add_("div", number_column_div, number_div);
    add_change_(
        "column_negate/short",
        [](const dv_column_t *x, dv_column_t *result) { number_column_negate(x, result, nullptr); },
        number_negate);
    add_force_("column_force_prec_scale/fits", 12, 2);
    add_force_("column_force_prec_scale/rounds", 12, 1);
    return run_benchmarks(argc, argv);
}
