// What a program pays before its first value: loading the shared library and letting go of it again, with the
// functions bound at once or when they are called; and the first use of a library just loaded, which binds
// functions and touches their pages, beside the second use. The files are in the page cache.
//
// The program is not linked with the library, and a case that finds it still loaded afterwards is wrong.

#include <benchmark/benchmark.h>
#include <dlfcn.h>

#include <chrono>
#include <cstring>

#include "dvtypes/datetime.h"
#include "dvtypes/number.h"
#include "dvtypes/timezone.h"
#include "gauged.h"

namespace {

constexpr int _loads = 200;  // in a case that only takes the time of a use, and would go on for minutes

bool _any_wrong = false;

void report_wrong_(benchmark::State &state, const char *message) {
    _any_wrong = true;
    state.SkipWithError(message);
}

bool is_loaded_() {
    void *const library = dlopen(DV_LIBRARY, RTLD_LAZY | RTLD_NOLOAD);
    if (library != nullptr) dlclose(library);
    return library != nullptr;
}

void load_(benchmark::State &state, int binding) {
    for (auto _ : dv::bench::gauged(state)) {
        void *const library = dlopen(DV_LIBRARY, binding | RTLD_LOCAL);
        if (library == nullptr) return report_wrong_(state, dlerror());
        dlclose(library);
    }
    if (is_loaded_()) report_wrong_(state, "it stays loaded");
}

template <typename Function>
void find_(void *library, const char *symbol, Function *&function) {
    function = reinterpret_cast<Function *>(dlsym(library, symbol));
}

// Uses of the library: found in it once, then called; the answer is whether the result was right.

struct read_number_t {
    decltype(&number_from_str) from_str;
    explicit read_number_t(void *library) { find_(library, "number_from_str", from_str); }
    bool operator()() const {
        number_t x;
        from_str(&x, 0, "127", nullptr);
        constexpr uint8_t want[] = {3, 0xC2, 0x81, 0x9B};
        return std::memcmp(&x, want, sizeof want) == 0;
    }
};

struct to_local_time_t {
    decltype(&timezone_parse) parse;
    decltype(&timezone_localize) localize;
    explicit to_local_time_t(void *library) {
        find_(library, "timezone_parse", parse);
        find_(library, "timezone_localize", localize);
    }
    bool operator()() const {
        constexpr const char *name = "America/New_York";
        timezone_t zone;
        parse(&zone, name, static_cast<int>(std::strlen(name)));
        dv_date_t date = {120, 100, 7, 1, 0, 0, 0, 0};  // 2000-07-01 00:00:00
        localize(&zone, &date, nullptr);
        return date.month == 6 && date.day == 30 && date.hour == 20;
    }
};

double seconds_(auto work) {
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

template <typename Use>
void use_(benchmark::State &state, bool is_first) {
    for (auto _ : dv::bench::gauged(state)) {
        void *const library = dlopen(DV_LIBRARY, RTLD_LAZY | RTLD_LOCAL);
        if (library == nullptr) return report_wrong_(state, dlerror());
        const Use use(library);
        bool is_right = is_first || use();
        state.SetIterationTime(seconds_([&] { is_right = use() && is_right; }));
        dlclose(library);
        if (!is_right) return report_wrong_(state, "wrong answer");
    }
    if (is_loaded_()) report_wrong_(state, "it stays loaded");
}

template <typename Use>
void add_uses_(const char *first, const char *second) {
    benchmark::RegisterBenchmark(first, use_<Use>, /*is_first=*/true)->UseManualTime()->Iterations(_loads);
    benchmark::RegisterBenchmark(second, use_<Use>, /*is_first=*/false)->UseManualTime()->Iterations(_loads);
}

}  // namespace

int main(int argc, char **argv) {
    benchmark::RegisterBenchmark("load/bound_when_called/dvtypes", load_, RTLD_LAZY);
    benchmark::RegisterBenchmark("load/bound_at_once/dvtypes", load_, RTLD_NOW);
    add_uses_<read_number_t>("number_from_str/first_use/dvtypes", "number_from_str/second_use/dvtypes");
    add_uses_<to_local_time_t>("zone_by_name_and_to_local/first_use/dvtypes",
                               "zone_by_name_and_to_local/second_use/dvtypes");
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return _any_wrong ? 1 : 0;
}
