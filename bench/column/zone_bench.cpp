// A million timestamps from UTC to local time and back, beside the functions for one value:
// operation/times/library. Times are those of New York, of 60 years shuffled, or of some days in order; or
// shuffled ones of twelve zones.

#include <algorithm>

#include "datetime_bench.h"

namespace dv::bench {
namespace {

enum class times_e { shuffled, in_order, zones };

struct operands_t {
    std::vector<dv_timestamp_t> utc, local;
    std::vector<timezone_t> zones;

    explicit operands_t(times_e kind) {
        static constexpr const char *names[] = {"America/New_York", "Europe/Paris",  "Asia/Seoul",
                                                "Australia/Sydney", "Asia/Kolkata",  "America/Sao_Paulo",
                                                "Europe/Moscow",    "Africa/Cairo",  "America/Chicago",
                                                "Asia/Tokyo",       "Europe/London", "Pacific/Auckland"};
        std::vector<int64_t> counts = microseconds(20261122);
        for (size_t i = 0; i < counts.size(); ++i) {
            const std::string name = names[kind == times_e::zones ? i % std::size(names) : 0];
            timezone_t zone;
            timezone_parse(&zone, name.data(), static_cast<int>(name.size()));
            zones.push_back(zone);
            if (kind == times_e::in_order)
                counts[i] = 1'790'000'000'000'000 + static_cast<int64_t>(i) * 500'003;
        }
        utc = timestamps_of(counts);
        local.resize(utc.size());
        for (size_t i = 0; i < utc.size(); ++i) {
            const dv_ts_ltz_t instant = {utc[i]};
            dv_timestamp_from_ts_ltz(&local[i], &instant, &zones[i]);
        }
    }
    dv_column_t zone_column(times_e kind) {
        dv_column_t column = column_of(zones);
        if (kind != times_e::zones) column.stride = 0;
        return column;
    }
};
operands_t &operands_(times_e kind) {
    static operands_t shuffled(times_e::shuffled), in_order(times_e::in_order), zones(times_e::zones);
    return kind == times_e::shuffled ? shuffled : kind == times_e::in_order ? in_order : zones;
}

// Rows that do not come back are those that clocks showed twice.
bool are_nearly_same_(const std::vector<dv_timestamp_t> &x, const std::vector<dv_timestamp_t> &y) {
    size_t different = 0;
    for (size_t i = 0; i < x.size(); ++i) different += dv_timestamp_cmp(&x[i], &y[i]) != 0;
    return different * 1000 <= x.size();
}

template <bool to_local>
void columns_(benchmark::State &state, times_e kind) {
    operands_t &operands = operands_(kind);
    std::vector<dv_timestamp_t> &from = to_local ? operands.utc : operands.local;
    std::vector<dv_timestamp_t> values(from.size());
    const dv_column_t x = column_of(from), zones = operands.zone_column(kind);
    dv_column_t result = column_of(values);
    for (auto _ : gauged(state)) {
        to_local ? dv_timestamp_column_from_ts_ltz(&x, &zones, &result, nullptr)
                 : dv_ts_ltz_column_from_timestamp(&x, &zones, &result, nullptr);
    }
    count_rows(state);
    if (!are_nearly_same_(values, to_local ? operands.local : operands.utc))
        report_wrong(state, "wrong times");
}

template <bool to_local>
void one_by_one_(benchmark::State &state, times_e kind) {
    operands_t &operands = operands_(kind);
    std::vector<dv_timestamp_t> values(operands.utc.size());
    const size_t step = kind == times_e::zones ? 1 : 0;
    for (auto _ : gauged(state)) {
        for (size_t i = 0; i < values.size(); ++i) {
            const timezone_t &zone = operands.zones[i * step];
            dv_ts_ltz_t instant;
            if (to_local) {
                instant.utc = operands.utc[i];
                dv_timestamp_from_ts_ltz(&values[i], &instant, &zone);
            } else {
                dv_ts_ltz_from_timestamp(&instant, &operands.local[i], &zone);
                values[i] = instant.utc;
            }
        }
    }
    count_rows(state);
    if (!are_nearly_same_(values, to_local ? operands.local : operands.utc))
        report_wrong(state, "wrong times");
}

void add_all_() {
    constexpr struct {
        const char *name;
        times_e kind;
    } kinds[] = {{"shuffled", times_e::shuffled}, {"in_order", times_e::in_order}, {"zones", times_e::zones}};
    for (const auto &[name, kind] : kinds) {
        const auto add = [kind = kind](const std::string &place, void (*run)(benchmark::State &, times_e)) {
            benchmark::RegisterBenchmark(place.c_str(), [=](benchmark::State &state) { run(state, kind); });
        };
        const std::string times = std::string("/") + name + "/";
        add("column_to_local" + times + "dvtypes", columns_<true>);
        add("column_to_local" + times + "one_by_one", one_by_one_<true>);
        add("column_to_utc" + times + "dvtypes", columns_<false>);
        add("column_to_utc" + times + "one_by_one", one_by_one_<false>);
    }
}

}  // namespace
}  // namespace dv::bench

int main(int argc, char **argv) {
    dv::bench::add_all_();
    return dv::bench::run_benchmarks(argc, argv);
}
