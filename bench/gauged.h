// How much of its core a repetition had, for a machine whose cores other programs or other guests share.
//
//   for (auto _ : dv::bench::gauged(state)) ...
//
// A core of two hardware threads lends its execution units to the other one whenever that has work, be it
// another machine's. Code that waits for its own results loses little by it; code with many instructions at
// once, a third of its speed. So ratios shift. A loop of independent additions wants the whole core: its
// time, the counter "crowding", is least, and then the same to a hundredth, while nobody else is there. What
// the least is depends on the processor.

#ifndef DV_BENCH_GAUGED_H
#define DV_BENCH_GAUGED_H

#include <benchmark/benchmark.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdint>

namespace dv::bench {

// Not inline and aligned, so that the loop is the same wherever it is called.
[[gnu::noinline, gnu::aligned(64)]] inline double seconds_of_additions() {
    constexpr int steps = 100'000;
    uint64_t a = 0, b = 0, c = 0, d = 0, e = 0, f = 0;
    const auto begin = std::chrono::steady_clock::now();
    for (int i = 0; i < steps; ++i) {
        ++a, ++b, ++c, ++d, ++e, ++f;
        asm volatile("" : "+r"(a), "+r"(b), "+r"(c), "+r"(d), "+r"(e), "+r"(f));  // or all steps become one
    }
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
}

// The middle one of three, since an interrupt spoils one.
inline double crowding() {
    std::array<double, 3> found{seconds_of_additions(), seconds_of_additions(), seconds_of_additions()};
    std::sort(found.begin(), found.end());
    return found[1];
}

// The passes of a state, gauged before the first and behind the last: the worse counts.
class gauged {
  public:
    explicit gauged(benchmark::State &state) : _state(state), _before(crowding()) {}
    ~gauged() {
        _state.counters["crowding"] =
            benchmark::Counter(std::max(_before, crowding()), benchmark::Counter::kAvgThreads);
    }
    gauged(const gauged &) = delete;
    gauged &operator=(const gauged &) = delete;

    auto begin() { return _state.begin(); }
    auto end() { return _state.end(); }

  private:
    benchmark::State &_state;
    double _before;
};

}  // namespace dv::bench

#endif  // DV_BENCH_GAUGED_H
