// Columns beside DuckDB: sums of decimals, casts from and to text, timestamps under models, time zones. One
// thread each, the same rows in the memory of both.
//
// A peer's case runs a query whose result is one value: a sum of what the operation makes, of texts the sum
// of their lengths, so that every row is made and none is kept. Ours makes a whole column.

#include <unistd.h>

#include <cstring>
#include <fstream>

#include "column_bench.h"
#include "duckdb.h"
#include "dvtypes/datetime_fmt.h"
#include "dvtypes/dv_type.h"
#include "dvtypes/timestamp_tz.h"

namespace dv::bench {
namespace {

constexpr const char *_model = "DD.MM.YYYY HH24:MI:SS";
constexpr const char *_peer_model = "%d.%m.%Y %H:%M:%S";
constexpr const char *_zone = "America/New_York";
constexpr int _scale = 2;

// Texts of one column by offsets.
struct texts_t {
    std::string bytes;
    std::vector<int32_t> offsets{0};

    void add(const std::string &text) {
        bytes += text;
        offsets.push_back(static_cast<int32_t>(bytes.size()));
    }
    std::string row(size_t i) const {
        return bytes.substr(static_cast<size_t>(offsets[i]),
                            static_cast<size_t>(offsets[i + 1] - offsets[i]));
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

// Room for texts of at most `size` bytes.
texts_t room_(int64_t size) {
    texts_t texts;
    texts.bytes.resize(static_cast<size_t>(size * column_rows()));
    texts.offsets.resize(static_cast<size_t>(column_rows()) + 1);
    return texts;
}

dt_fmt_ctx_t compiled_(bool is_for_reading) {
    dt_fmt_ctx_t model{};
    dt_fmt_ctx_set(_system_allocator, &model, _model, 0, DV_TYPE_TIMESTAMP, is_for_reading ? 1 : 0,
                   DVSTR_CHARSET_ASCII);
    return model;
}

// The rows of all cases, here and in the peer.
struct rows_t {
    texts_t amounts, times, dotted_times;
    std::vector<int64_t> cents;
    std::vector<dv_timestamp_t> timestamps;

    static rows_t &get() {
        static rows_t rows;
        return rows;
    }

  private:
    rows_t() {
        const auto count = static_cast<int>(column_rows());
        const auto random = machine_integers(operands_e::LONG, 2 * count, 5);
        for (size_t i = 0; i < static_cast<size_t>(count); ++i) {
            cents.push_back(random[i] % 2'000'000'000);  // up to 19,999,999.99 of either sign
            add_amount_(cents.back());
            add_time_(static_cast<uint64_t>(random[i + static_cast<size_t>(count)]));
        }
        if (duckdb::get() != nullptr) load_();
    }
    void add_amount_(int64_t amount) {
        char text[32];
        const auto magnitude = static_cast<long long>(amount < 0 ? -amount : amount);
        std::snprintf(text, sizeof text, "%s%lld.%02lld", amount < 0 ? "-" : "", magnitude / 100,
                      magnitude % 100);
        amounts.add(text);
    }
    void add_time_(uint64_t random) {
        const auto part = [&](int shift, unsigned range) {
            return static_cast<unsigned>(random >> shift) % range;
        };
        const unsigned year = 1990 + part(0, 50), month = 1 + part(6, 12), day = 1 + part(10, 28);
        const unsigned hour = part(15, 24), minute = part(20, 60), second = part(26, 60);
        const auto byte = [](unsigned v) { return static_cast<uint8_t>(v); };
        timestamps.push_back({byte(100 + year / 100),
                              byte(100 + year % 100),
                              byte(month),
                              byte(day),
                              byte(hour),
                              byte(minute),
                              byte(second),
                              0,
                              {}});
        char text[32];
        std::snprintf(text, sizeof text, "%04u-%02u-%02u %02u:%02u:%02u", year, month, day, hour, minute,
                      second);
        times.add(text);
        std::snprintf(text, sizeof text, "%02u.%02u.%04u %02u:%02u:%02u", day, month, year, hour, minute,
                      second);
        dotted_times.add(text);
    }
    void load_() const {
        const std::string path = "/tmp/dvtypes_duckdb_" + std::to_string(getpid()) + ".csv";
        std::ofstream file(path);
        for (size_t i = 0; i < timestamps.size(); ++i)
            file << amounts.row(i) << ',' << times.row(i) << ',' << dotted_times.row(i) << '\n';
        file.close();
        duckdb::get()->run(
            "CREATE TABLE t AS SELECT a, a::DECIMAL(18,2) AS x, s, s::TIMESTAMP AS ts, g FROM read_csv('" +
            path + "', header = false, columns = {'a': 'VARCHAR', 's': 'VARCHAR', 'g': 'VARCHAR'})");
        std::remove(path.c_str());
    }
};

// ---- the peer ----

void peer_(const char *name, std::string expression) {
    if (duckdb::get() == nullptr) return;
    benchmark::RegisterBenchmark(
        (std::string("column_duckdb/") + name + "/duckdb").c_str(),
        [query = "SELECT " + std::move(expression) + " FROM t"](benchmark::State &state) {
            rows_t::get();
            for (auto _ : gauged(state)) duckdb::get()->run(query);
            count_rows(state);
        })
        ->Unit(benchmark::kMillisecond);
}

// ---- ours: each operation, and what is wrong with its result ----

dv_decimal_column_t decimals_(std::vector<int64_t> &values) { return {column_of(values), 8, 18, _scale}; }

const char *sum_decimals_(benchmark::State &state, rows_t &rows) {
    const dv_decimal_column_t cents = decimals_(rows.cents);
    dv_decimal_sum_t sum{};
    for (auto _ : gauged(state)) {
        sum = {};
        dv_decimal_column_sum(&cents, &sum);
        benchmark::DoNotOptimize(sum);
    }
    int64_t wanted = 0;
    for (const int64_t cent : rows.cents) wanted += cent;
    return sum.words[0] == static_cast<uint64_t>(wanted) ? nullptr : "wrong sum";
}

const char *read_decimals_(benchmark::State &state, rows_t &rows) {
    std::vector<int64_t> read(rows.cents.size());
    const dv_column_t texts = rows.amounts.column();
    dv_decimal_column_t result = decimals_(read);
    for (auto _ : gauged(state)) dv_decimal_column_from_text(&texts, &result, nullptr);
    return read == rows.cents ? nullptr : "wrong decimals";
}

const char *write_decimals_(benchmark::State &state, rows_t &rows) {
    const dv_decimal_column_t cents = decimals_(rows.cents);
    texts_t texts = room_(DV_DECIMAL64_TEXT_MAX);
    dv_column_t result = texts.column();
    for (auto _ : gauged(state)) dv_decimal_column_to_text(&cents, &result, nullptr);
    return texts.row(7) == rows.amounts.row(7) ? nullptr : "wrong text";
}

const char *read_iso_(benchmark::State &state, rows_t &rows) {
    std::vector<dv_timestamp_t> read(rows.timestamps.size());
    const dv_column_t texts = rows.times.column();
    dv_column_t result = column_of(read);
    for (auto _ : gauged(state)) dv_timestamp_column_from_iso(&texts, &result, nullptr);
    return std::memcmp(read.data(), rows.timestamps.data(), read.size() * sizeof read[0]) == 0 ? nullptr
                                                                                               : "wrong";
}

const char *write_iso_(benchmark::State &state, rows_t &rows) {
    const dv_column_t timestamps = column_of(rows.timestamps);
    texts_t texts = room_(32);
    dv_column_t result = texts.column();
    for (auto _ : gauged(state)) dv_timestamp_column_to_iso(&timestamps, &result, nullptr);
    return texts.row(7).starts_with(rows.times.row(7)) ? nullptr : "wrong text";
}

const char *read_model_(benchmark::State &state, rows_t &rows) {
    std::vector<dv_timestamp_t> read(rows.timestamps.size());
    const dv_column_t texts = rows.dotted_times.column();
    dv_column_t result = column_of(read);
    const dt_fmt_ctx_t model = compiled_(/*is_for_reading=*/true);
    for (auto _ : gauged(state))
        dv_timestamp_column_from_str(&texts, &model, 9, /*as_of=*/nullptr, &result, nullptr);
    return std::memcmp(read.data(), rows.timestamps.data(), read.size() * sizeof read[0]) == 0 ? nullptr
                                                                                               : "wrong";
}

const char *write_model_(benchmark::State &state, rows_t &rows) {
    const dv_column_t timestamps = column_of(rows.timestamps);
    texts_t texts = room_(32);
    dv_column_t result = texts.column();
    const dt_fmt_ctx_t model = compiled_(/*is_for_reading=*/false);
    for (auto _ : gauged(state)) dv_timestamp_column_to_str(&timestamps, &model, 9, &result, nullptr);
    return texts.row(7) == rows.dotted_times.row(7) ? nullptr : "wrong text";
}

const char *utc_to_local_(benchmark::State &state, rows_t &rows) {
    std::vector<dv_timestamp_t> local(rows.timestamps.size());
    const dv_column_t instants = column_of(rows.timestamps);
    std::vector<timezone_t> zone(1);
    timezone_parse(zone.data(), _zone, static_cast<int>(std::strlen(_zone)));
    dv_column_t zones = column_of(zone), result = column_of(local);
    zones.count = instants.count;
    zones.stride = 0;
    for (auto _ : gauged(state)) dv_timestamp_column_from_ts_ltz(&instants, &zones, &result, nullptr);
    dv_timestamp_t wanted;
    const dv_ts_ltz_t instant = {rows.timestamps[7]};
    dv_timestamp_from_ts_ltz(&wanted, &instant, zone.data());
    return std::memcmp(&wanted, &local[7], sizeof wanted) == 0 ? nullptr : "wrong local time";
}

void ours_(const char *name, const char *(*run)(benchmark::State &state, rows_t &rows)) {
    benchmark::RegisterBenchmark((std::string("column_duckdb/") + name + "/dvtypes").c_str(),
                                 [run](benchmark::State &state) {
                                     const char *const wrong = run(state, rows_t::get());
                                     count_rows(state);
                                     if (wrong != nullptr) report_wrong(state, wrong);
                                 })
        ->Unit(benchmark::kMillisecond);
}

}  // namespace
}  // namespace dv::bench

int main(int argc, char **argv) {
    using namespace dv::bench;
    ours_("sum_decimals", sum_decimals_);
    peer_("sum_decimals", "sum(x)");
    ours_("decimals_from_text", read_decimals_);
    peer_("decimals_from_text", "sum(a::DECIMAL(18,2))");
    ours_("decimals_to_text", write_decimals_);
    peer_("decimals_to_text", "sum(length(x::VARCHAR))");
    ours_("timestamp_from_iso", read_iso_);
    peer_("timestamp_from_iso", "max(s::TIMESTAMP)");
    ours_("timestamp_to_iso", write_iso_);
    peer_("timestamp_to_iso", "sum(length(ts::VARCHAR))");
    ours_("timestamp_from_model", read_model_);
    peer_("timestamp_from_model", std::string("max(strptime(g, '") + _peer_model + "'))");
    ours_("timestamp_to_model", write_model_);
    peer_("timestamp_to_model", std::string("sum(length(strftime(ts, '") + _peer_model + "')))");
    ours_("utc_to_local", utc_to_local_);
    peer_("utc_to_local", std::string("max(timezone('") + _zone + "', ts::TIMESTAMPTZ))");
    return run_benchmarks(argc, argv);
}
