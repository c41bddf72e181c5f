// A million DATEs cut to a unit, beside the function for one value: column_trunc/unit/library.

#include "datetime_bench.h"

namespace dv::bench {
namespace {

std::vector<dv_date_t> dates_() {
    std::vector<dv_date_t> dates;
    for (const dv_timestamp_t &ts : timestamps_of(microseconds(1)))
        std::memcpy(&dates.emplace_back(), &ts, sizeof(dv_date_t));
    return dates;
}

void one_by_one_(std::vector<dv_date_t> &values, const std::vector<dv_date_t> &dates,
                 const std::string &unit) {
    for (size_t i = 0; i < dates.size(); ++i) {
        values[i] = dates[i];
        dv_date_trunc(&values[i], unit.data(), static_cast<int>(unit.size()));
    }
}

void add_(const std::string &unit) {
    const std::string place = "column_trunc/" + unit;
    benchmark::RegisterBenchmark((place + "/dvtypes").c_str(), [=](benchmark::State &state) {
        std::vector<dv_date_t> dates = dates_(), values = dates, wanted = dates;
        const dv_column_t x = column_of(dates);
        dv_column_t result = column_of(values);
        measure(state, [&] {
            dv_date_column_trunc(&x, unit.data(), static_cast<int>(unit.size()), &result, nullptr);
        });
        one_by_one_(wanted, dates, unit);
        if (!same_bytes(values, wanted)) report_wrong(state, "other dates");
    })->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark((place + "/one_by_one").c_str(), [=](benchmark::State &state) {
        const std::vector<dv_date_t> dates = dates_();
        std::vector<dv_date_t> values = dates;
        measure(state, [&] { one_by_one_(values, dates, unit); });
    })->Unit(benchmark::kMillisecond);
}

}  // namespace
}  // namespace dv::bench

int main(int argc, char **argv) {
    for (const char *unit : {"MM", "HH24", "IW"}) dv::bench::add_(unit);
    return dv::bench::run_benchmarks(argc, argv);
}
