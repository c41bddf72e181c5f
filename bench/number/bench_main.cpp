// Runs the registered cases; ends with 1 when a library gave a wrong answer.

#include "number_bench.h"

namespace dv::bench {

namespace {
bool _any_wrong = false;
}

void report_wrong(benchmark::State &state, const std::string &message) {
    _any_wrong = true;
    state.SkipWithError(("wrong answer: " + message).c_str());
}

bool agrees(const decimal_t &got, const decimal_t &want, const decimal_t &x, const decimal_t &y, int digits) {
    int top = -1000;
    for (const decimal_t *v : {&want, &x, &y}) {
        if (v->digits != 0) top = std::max(top, top_position(*v));
    }
    const decimal_t difference = dv::test::twin_sub(got, want, NUMBER_RMODE_UP);
    return difference.digits == 0 || top_position(difference) <= top - digits + 1;
}

static int main_(int argc, char **argv) {
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return _any_wrong ? 1 : 0;
}

}  // namespace dv::bench

int main(int argc, char **argv) { return dv::bench::main_(argc, argv); }
