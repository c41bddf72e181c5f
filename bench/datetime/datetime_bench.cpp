// Calendar arithmetic on DATE beside std::chrono and Abseil civil time: operation/case/library.
//
// A library is a struct of static functions over its own calendar value (year, month, day):
//
//   name                          value
//   make(y, m, d)                 ymd(value): {y, m, d}
//   to_day_and_weekday(v, n)      the value's day number, from 1970-01-01, and the weekday of n, 0 for Monday
//   from_day(v, n)                the value of a day number
//   add_days(v, n)                add_months(v, n): the last day of a shorter month
//   less(x, y)
//
// Operands are dates of 1900 to 2049, shuffled, from a fixed seed. An operation in place first copies
// the whole array, since a copy per call would measure store forwarding. Every answer is compared with that
// of std::chrono before the clock starts; the program ends with 1 when one is wrong.

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <random>
#include <string>
#include <vector>

#include "dvtypes/datetime.h"
#include "gauged.h"
#include "operand_count.h"
#if DV_BENCH_ABSEIL
#include "absl/time/civil_time.h"
#endif

namespace {

constexpr size_t _operand_count = dv::bench::operand_count;
constexpr int _day_number_of_1970 = 2440588;
constexpr int _first_day = -25567, _last_day = 29218;  // 1900-01-01, 2049-12-30

bool _any_wrong = false;

struct ymd_t {
    int year, month, day;
    bool operator==(const ymd_t &) const = default;
};

struct dvtypes_t {
    static constexpr const char *name = "dvtypes";
    using value = dv_date_t;
    static ymd_t ymd(const value &v) { return {dv_date_get_field(&v, DT_FMT_UNIT_YEAR), v.month, v.day}; }
    static int to_day(const value &v) { return dv_date_to_julian_day(&v) - _day_number_of_1970; }
    static int weekday(const value &v) { return dv_date_to_julian_day(&v) % 7; }
    static void from_day(value &v, int n) { dv_date_from_julian_day(&v, n + _day_number_of_1970); }
    static void add_days(value &v, int n) { dv_date_add_day(&v, n); }
    static void add_months(value &v, int n) { dv_date_add_month(&v, n, /*is_from_itv=*/0); }
    static bool less(const value &x, const value &y) { return dv_date_compare(&x, &y) < 0; }
    // To the day number, its weekday, and back.
    static int round_trip(value &v) {
        const int number = dv_date_to_julian_day(&v);
        dv_date_from_julian_day(&v, number);
        return number % 7;
    }
};

struct dvtypes_inline_t : dvtypes_t {
    static constexpr const char *name = "dvtypes_inline";
    static bool less(const value &x, const value &y) { return dv_date_cmp(&x, &y) < 0; }
};

struct chrono_t {
    static constexpr const char *name = "std_chrono";
    using value = std::chrono::year_month_day;
    static ymd_t ymd(const value &v) {
        return {int{v.year()}, static_cast<int>(unsigned{v.month()}), static_cast<int>(unsigned{v.day()})};
    }
    static void from_day(value &v, int n) { v = std::chrono::sys_days{std::chrono::days{n}}; }
    static void add_days(value &v, int n) { v = std::chrono::sys_days{v} + std::chrono::days{n}; }
    static void add_months(value &v, int n) {
        const bool was_last = v.day() == (v.year() / v.month() / std::chrono::last).day();
        v += std::chrono::months{n};
        const auto last = v.year() / v.month() / std::chrono::last;
        if (was_last || v.day() > last.day()) v = last;
    }
    static bool less(const value &x, const value &y) { return x < y; }
    static int round_trip(value &v) {
        const std::chrono::sys_days days{v};
        v = days;
        return static_cast<int>(std::chrono::weekday{days}.iso_encoding()) - 1;
    }
};

#if DV_BENCH_ABSEIL
struct abseil_t {
    static constexpr const char *name = "abseil";
    using value = absl::CivilDay;
    static ymd_t ymd(const value &v) { return {static_cast<int>(v.year()), v.month(), v.day()}; }
    static void from_day(value &v, int n) { v = absl::CivilDay(1970, 1, 1) + n; }
    static void add_days(value &v, int n) { v += n; }
    static void add_months(value &v, int n) {
        const auto last_day = [](absl::CivilMonth month) { return absl::CivilDay(month + 1) - 1; };
        const absl::CivilMonth month(v);
        const value last = last_day(month + n);
        const bool was_last = v == last_day(month);
        v = was_last || v.day() > last.day() ? last : value(last.year(), last.month(), v.day());
    }
    static bool less(const value &x, const value &y) { return x < y; }
    static int round_trip(value &v) {
        const int64_t days = v - absl::CivilDay(1970, 1, 1);
        const auto weekday = static_cast<int>(absl::GetWeekday(v));
        v = absl::CivilDay(1970, 1, 1) + days;
        return weekday;
    }
};
#endif

std::vector<int> drawn_(int low, int high, unsigned seed) {
    std::mt19937 random(seed);
    std::vector<int> numbers(_operand_count);
    for (int &n : numbers) n = std::uniform_int_distribution<int>(low, high)(random);
    return numbers;
}

template <typename L>
std::vector<typename L::value> dates_(unsigned seed) {
    std::vector<typename L::value> values(_operand_count);
    const std::vector<int> days = drawn_(_first_day, _last_day, seed);
    for (size_t i = 0; i < days.size(); ++i) L::from_day(values[i], days[i]);
    return values;
}

void report_wrong_(benchmark::State &state, size_t operand) {
    _any_wrong = true;
    state.SkipWithError(("wrong answer: operand " + std::to_string(operand)).c_str());
}

void count_operations_(benchmark::State &state) {
    const auto count = static_cast<double>(_operand_count);
    state.counters["per_op"] = benchmark::Counter(
        count, benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

struct round_trip_t {
    static constexpr const char *name = "day_number_round_trip/with_weekday/";
    static constexpr int low = 0, high = 0;
    template <typename L>
    static int run(typename L::value &v, int) {
        return L::round_trip(v);
    }
};
struct add_days_t {
    static constexpr const char *name = "add_days/up_to_1000/";
    static constexpr int low = -1000, high = 1000;
    template <typename L>
    static int run(typename L::value &v, int n) {
        L::add_days(v, n);
        return 0;
    }
};
struct add_months_t {
    static constexpr const char *name = "add_months/up_to_100/";
    static constexpr int low = -100, high = 100;
    template <typename L>
    static int run(typename L::value &v, int n) {
        L::add_months(v, n);
        return 0;
    }
};

template <typename Operation, typename L>
void run_in_place_(benchmark::State &state) {
    const auto dates = dates_<L>(1);
    const auto steps = drawn_(Operation::low, Operation::high, 2);
    auto work = dates;
    auto reference = dates_<chrono_t>(1);
    for (size_t i = 0; i < work.size(); ++i) {
        const int got = Operation::template run<L>(work[i], steps[i]);
        const int want = Operation::template run<chrono_t>(reference[i], steps[i]);
        if (got != want || L::ymd(work[i]) != chrono_t::ymd(reference[i])) return report_wrong_(state, i);
    }
    for (auto _ : dv::bench::gauged(state)) {
        std::copy(dates.begin(), dates.end(), work.begin());
        int sum = 0;
        for (size_t i = 0; i < work.size(); ++i) sum += Operation::template run<L>(work[i], steps[i]);
        benchmark::DoNotOptimize(sum);
        benchmark::ClobberMemory();
    }
    count_operations_(state);
}

template <typename L>
void run_compare_(benchmark::State &state) {
    const auto x = dates_<L>(1), y = dates_<L>(3);
    const auto x_reference = dates_<chrono_t>(1), y_reference = dates_<chrono_t>(3);
    for (size_t i = 0; i < x.size(); ++i) {
        if (L::less(x[i], y[i]) != (x_reference[i] < y_reference[i])) return report_wrong_(state, i);
    }
    for (auto _ : dv::bench::gauged(state)) {
        int below = 0;
        for (size_t i = 0; i < x.size(); ++i) below += L::less(x[i], y[i]) ? 1 : 0;
        benchmark::DoNotOptimize(below);
    }
    count_operations_(state);
}

template <typename Operation, typename L>
void register_in_place_() {
    benchmark::RegisterBenchmark((std::string(Operation::name) + L::name).c_str(),
                                 run_in_place_<Operation, L>);
}

template <typename L>
void register_compare_() {
    benchmark::RegisterBenchmark((std::string("compare/random/") + L::name).c_str(), run_compare_<L>);
}

template <typename L>
void register_library_() {
    register_in_place_<round_trip_t, L>();
    register_in_place_<add_days_t, L>();
    register_in_place_<add_months_t, L>();
    register_compare_<L>();
}

}  // namespace

int main(int argc, char **argv) {
    register_library_<dvtypes_t>();
    register_compare_<dvtypes_inline_t>();
    register_library_<chrono_t>();
#if DV_BENCH_ABSEIL
    register_library_<abseil_t>();
#endif
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return _any_wrong ? 1 : 0;
}
