// What the benchmarks of columns of datetimes share: operands and peers.

#ifndef DV_BENCH_DATETIME_BENCH_H
#define DV_BENCH_DATETIME_BENCH_H

#include <cstring>

#include "column_bench.h"
#include "dvtypes/epoch.h"
#include "dvtypes/timestamp_tz.h"

namespace dv::bench {

// Microseconds since 1970 of 1990 to 2049, shuffled.
inline std::vector<int64_t> microseconds(uint64_t seed) {
    constexpr int64_t first = 631'152'000'000'000, range = 1'893'456'000'000'000;
    std::vector<int64_t> counts;
    for (const int64_t random : machine_integers(operands_e::LONG, static_cast<int>(column_rows()), seed)) {
        const uint64_t bits = static_cast<uint64_t>(random) * 0x9E37'79B9'7F4A'7C15;
        counts.push_back(first + static_cast<int64_t>(bits % static_cast<uint64_t>(range)));
    }
    return counts;
}

inline std::vector<dv_timestamp_t> timestamps_of(const std::vector<int64_t> &counts) {
    std::vector<dv_timestamp_t> values(counts.size());
    for (size_t i = 0; i < counts.size(); ++i)
        dv_timestamp_from_epoch(&values[i], counts[i], DV_EPOCH_MICROSECOND);
    return values;
}

// One pass over the memory of input and output and nothing else: what both have is copied, the rest of the
// input read, or the rest of the output written.
inline void pass_over_memory(const void *input, size_t input_size, void *output, size_t output_size) {
    const size_t common = std::min(input_size, output_size);
    std::memcpy(output, input, common);
    std::memset(static_cast<char *>(output) + common, 1, output_size - common);
    uint64_t sum = 0;
    for (size_t i = common; i + sizeof sum <= input_size; i += sizeof sum) {
        uint64_t word;
        std::memcpy(&word, static_cast<const char *>(input) + i, sizeof word);
        sum += word;
    }
    benchmark::DoNotOptimize(sum);
    benchmark::ClobberMemory();
}

template <typename T>
bool same_bytes(const std::vector<T> &x, const std::vector<T> &y) {
    return x.size() == y.size() && std::memcmp(x.data(), y.data(), x.size() * sizeof(T)) == 0;
}

}  // namespace dv::bench

#endif  // DV_BENCH_DATETIME_BENCH_H
