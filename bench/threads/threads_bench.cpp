// What a second thread brings: reading, writing, arithmetic and zone conversion by one thread and by two, as
// operation/case/dvtypes/real_time/threads:N. Threads share what a host's threads share, which nothing
// writes: operands, the compiled model, the library's tables. Each has its own results. With no shared write
// in the library the time of an operation halves.
//
// An operation is a struct of
//
//   out                  its result
//   start(operand, out)  optional, for what works in place: a pass begins with a copy of all operands
//   run(operand, out)
//   is_right(operand, out)
//
// Operands are amounts of 2 to 8 digits with two decimals, and instants of 1970 to 2037, shuffled, from
// a fixed seed. Each thread compares its answers with integers, printf or glibc's before the clock starts;
// the program ends with 1 when one is wrong.

#include <benchmark/benchmark.h>

#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <random>
#include <string>
#include <vector>

#include "dvtypes/number.h"
#include "dvtypes/timestamp.h"
#include "dvtypes/timezone.h"
#include "gauged.h"
#include "operand_count.h"

namespace {

constexpr size_t _operand_count = dv::bench::operand_count;
constexpr int _text_size = 64;
constexpr const char *_zone = "America/New_York";
constexpr const char *_model = "YYYY-MM-DD HH24:MI:SS.FF9";

std::atomic<bool> _any_wrong = false;

struct operand_t {
    int64_t cents, divisor;
    std::string number_text, timestamp_text;
    number_t number, second;
    dv_timestamp_t timestamp;
    dv_date_t utc, local;
};
struct text_t {
    char bytes[_text_size];
};

dv_date_t date_of_(const struct tm &t) {
    dv_date_t date;
    dv_date_from_unit_values(&date, t.tm_year + 1900, t.tm_mon + 1, t.tm_mday, t.tm_hour, t.tm_min, t.tm_sec);
    return date;
}

bool is_same_(const dv_date_t &x, const dv_date_t &y) { return std::memcmp(&x, &y, sizeof x) == 0; }

number_t number_of_(int64_t integer) {
    number_t number;
    number_from_int64(&number, integer);
    return number;
}

void set_amount_(operand_t &o, std::mt19937_64 &random) {
    int64_t bound = 100;
    for (auto digits = random() % 7; digits != 0; --digits) bound *= 10;
    const auto size = static_cast<int64_t>(random() % static_cast<uint64_t>(bound));
    const int64_t last_digit = 1 + size % 9;  // not 0, which no text of a NUMBER ends with
    o.cents = (size / 10 * 10 + last_digit) * (random() % 4 == 0 ? -1 : 1);
    o.divisor = 2 + static_cast<int64_t>(random() % 998);
    char text[_text_size];
    const long long magnitude = std::abs(o.cents);
    std::snprintf(text, sizeof text, "%s%.0lld.%02lld", o.cents < 0 ? "-" : "", magnitude / 100,
                  magnitude % 100);
    o.number_text = text;
    number_from_str(&o.number, 0, text, nullptr);
    o.second = number_of_(o.divisor);
}

// Sets what hangs on the time, an instant whose local time in the zone has one meaning.
void set_time_(operand_t &o, std::mt19937_64 &random) {
    struct tm utc {
    }, local{};
    for (;;) {
        const auto at = static_cast<time_t>(random() % 0x7fffffff);
        const auto offset = [](time_t instant) {
            struct tm t;
            return localtime_r(&instant, &t)->tm_gmtoff;
        };
        gmtime_r(&at, &utc);
        localtime_r(&at, &local);
        constexpr time_t hours = 3 * 3600;
        if (offset(at - hours) == offset(at) && offset(at + hours) == offset(at)) break;
    }
    o.utc = date_of_(utc);
    o.local = date_of_(local);
    const auto nano = static_cast<int>(random() % 1'000'000'000);
    char text[2 * _text_size];
    std::snprintf(text, sizeof text, "%04d-%02d-%02d %02d:%02d:%02d.%09d", utc.tm_year + 1900, utc.tm_mon + 1,
                  utc.tm_mday, utc.tm_hour, utc.tm_min, utc.tm_sec, nano);
    o.timestamp_text = text;
    dv_timestamp_from_unit_values(&o.timestamp, utc.tm_year + 1900, utc.tm_mon + 1, utc.tm_mday, utc.tm_hour,
                                  utc.tm_min, utc.tm_sec, nano);
}

// Drawn by main, before there are threads.
std::vector<operand_t> drawn_operands_() {
    setenv("TZ", _zone, /*overwrite=*/1);
    tzset();
    std::mt19937_64 random(1);
    std::vector<operand_t> operands(_operand_count);
    for (operand_t &o : operands) {
        set_amount_(o, random);
        set_time_(o, random);
    }
    return operands;
}

dt_fmt_ctx_t compiled_(bool is_for_reading) {
    dt_fmt_ctx_t model{};
    dt_fmt_ctx_set(_system_allocator, &model, _model, 0, DV_TYPE_TIMESTAMP, is_for_reading ? 1 : 0,
                   DVSTR_CHARSET_ASCII);
    return model;
}

struct shared_t {
    std::vector<operand_t> operands = drawn_operands_();
    dt_fmt_ctx_t reading = compiled_(/*is_for_reading=*/true), writing = compiled_(/*is_for_reading=*/false);
};
const shared_t &shared_() {
    static const shared_t shared;
    return shared;
}

// ---- operations ----

struct number_from_str_t {
    using out = number_t;
    static void run(const operand_t &o, out &to) { number_from_str(&to, 0, o.number_text.c_str(), nullptr); }
    static bool is_right(const operand_t &o, const out &got) {
        number_t cents = got;
        const number_t hundred = number_of_(100);
        number_mul(&cents, &hundred);
        int64_t integer = 0;
        number_to_int64(&cents, &integer);
        return integer == o.cents;
    }
};
struct number_to_str_t {
    using out = text_t;
    static void run(const operand_t &o, out &to) { number_to_str(&o.number, _text_size, to.bytes, nullptr); }
    static bool is_right(const operand_t &o, const out &got) { return o.number_text == got.bytes; }
};
struct number_add_t {
    using out = number_t;
    static void start(const operand_t &o, out &to) { to = o.number; }
    static void run(const operand_t &o, out &to) { number_add(&to, &o.second); }
    static bool is_right(const operand_t &o, const out &got) {
        operand_t sum = o;
        sum.cents += 100 * o.divisor;
        return number_from_str_t::is_right(sum, got);
    }
};
struct number_div_t {
    using out = number_t;
    static void start(const operand_t &o, out &to) { to = o.number; }
    static void run(const operand_t &o, out &to) { number_div(&to, &o.second); }
    static bool is_right(const operand_t &o, const out &got) {
        double quotient = 0;
        number_to_double(&got, &quotient);
        const double want = static_cast<double>(o.cents) / 100 / static_cast<double>(o.divisor);
        return std::abs(quotient - want) <= std::abs(want) * 0x1p-50;
    }
};
struct timestamp_to_str_t {
    using out = text_t;
    static void run(const operand_t &o, out &to) {
        dv_timestamp_to_str(&o.timestamp, to.bytes, _text_size, &shared_().writing, 9);
    }
    static bool is_right(const operand_t &o, const out &got) { return o.timestamp_text == got.bytes; }
};
struct timestamp_from_str_t {
    using out = dv_timestamp_t;
    static void run(const operand_t &o, out &to) {
        dv_timestamp_from_str(&to, o.timestamp_text.data(), static_cast<int>(o.timestamp_text.size()),
                              &shared_().reading, 9);
    }
    static bool is_right(const operand_t &o, const out &got) {
        return std::memcmp(&o.timestamp, &got, sizeof got) == 0;
    }
};

timezone_t zone_() {
    timezone_t zone;
    timezone_parse(&zone, _zone, static_cast<int>(std::strlen(_zone)));
    return zone;
}

struct localize_t {
    using out = dv_date_t;
    const timezone_t zone = zone_();
    static void start(const operand_t &o, out &to) { to = o.utc; }
    void run(const operand_t &, out &to) const { timezone_localize(&zone, &to, nullptr); }
    static bool is_right(const operand_t &o, const out &got) { return is_same_(o.local, got); }
};
struct normalize_t {
    using out = dv_date_t;
    timezone_t zone = zone_();
    static void start(const operand_t &o, out &to) { to = o.local; }
    void run(const operand_t &, out &to) { timezone_normalize(&zone, &to, nullptr); }
    static bool is_right(const operand_t &o, const out &got) { return is_same_(o.utc, got); }
};

// ---- runs ----

template <typename Operation>
void run_(benchmark::State &state) {
    const std::vector<operand_t> &operands = shared_().operands;
    Operation operation;
    std::vector<typename Operation::out> results(operands.size());
    const auto pass = [&] {
        if constexpr (requires { &Operation::start; }) {
            for (size_t i = 0; i < operands.size(); ++i) Operation::start(operands[i], results[i]);
        }
        for (size_t i = 0; i < operands.size(); ++i) operation.run(operands[i], results[i]);
        benchmark::ClobberMemory();
    };
    pass();
    for (size_t i = 0; i < operands.size(); ++i) {
        if (Operation::is_right(operands[i], results[i])) continue;
        _any_wrong = true;
        return state.SkipWithError(("wrong answer: operand " + std::to_string(i)).c_str());
    }
    for (auto _ : dv::bench::gauged(state)) pass();
    using counter = benchmark::Counter;
    state.counters["per_op"] =
        counter(_operand_count, counter::kIsIterationInvariantRate | counter::kAvgThreads | counter::kInvert);
}

template <typename Operation>
void add_(const char *name) {
    benchmark::RegisterBenchmark(name, run_<Operation>)->UseRealTime()->ThreadRange(1, 2);
}

}  // namespace

int main(int argc, char **argv) {
    shared_();
    add_<number_from_str_t>("number_from_str/short/dvtypes");
    add_<number_to_str_t>("number_to_str/short/dvtypes");
    add_<number_add_t>("number_add/short/dvtypes");
    add_<number_div_t>("number_div/short/dvtypes");
    add_<timestamp_to_str_t>("timestamp_to_str/FF9/dvtypes");
    add_<timestamp_from_str_t>("timestamp_from_str/FF9/dvtypes");
    add_<localize_t>("localize/New_York/dvtypes");
    add_<normalize_t>("normalize/New_York/dvtypes");
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return _any_wrong ? 1 : 0;
}
