// TIMESTAMP written, read, compared and sorted beside fmt, the C library, memcmp and Abseil:
// operation/case/library.
//
// Operands are timestamps of 1900 to 2049 with nine digits of a fraction, shuffled, from a fixed seed.
// Every answer is compared with that of printf, of the fields it was made of, or of nanoseconds in 64 bits,
// before the clock starts; the program ends with 1 when one is wrong. strptime has no fractions: its caller
// reads the nine digits. A million such timestamps are sorted.

#include <benchmark/benchmark.h>

#include <algorithm>
#include <charconv>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <functional>
#include <random>
#include <string>
#include <vector>

#include "dvtypes/timestamp.h"
#include "gauged.h"
#include "operand_count.h"
#ifdef DV_HAVE_FMT
#include <fmt/compile.h>
#endif
#ifdef DV_HAVE_ABSEIL
#include "absl/time/civil_time.h"
#include "absl/time/time.h"
#endif

namespace {

constexpr size_t _operand_count = dv::bench::operand_count;
constexpr int _text_size = 40;
constexpr const char *_model = "YYYY-MM-DD HH24:MI:SS.FF9";
constexpr int64_t _nano_per_day = 86400LL * 1'000'000'000;

bool _any_wrong = false;

struct fields_t {
    int year, month, day, hour, minute, second, fraction;
    bool operator==(const fields_t &) const = default;
};

struct operand_t {
    fields_t fields;
    dv_timestamp_t ts;
    std::string text;  // by printf
    int64_t nano;      // since some day
};

fields_t fields_of_(const dv_timestamp_t &ts) {
    const auto field = [&](dt_fmt_unit_t unit) { return dv_timestamp_get_field(&ts, unit); };
    return {field(DT_FMT_UNIT_YEAR), field(DT_FMT_UNIT_MONTH),  field(DT_FMT_UNIT_DAY),
            field(DT_FMT_UNIT_HOUR), field(DT_FMT_UNIT_MINUTE), field(DT_FMT_UNIT_SECOND),
            field(DT_FMT_UNIT_FSEC)};
}

std::vector<operand_t> drawn_operands_(size_t count) {
    std::mt19937_64 random(1);
    std::vector<operand_t> operands(count);
    for (operand_t &o : operands) {
        const auto pick = [&](int low, int high) {
            return std::uniform_int_distribution<int>(low, high)(random);
        };
        fields_t &f = o.fields;
        f = {pick(1900, 2049), pick(1, 12), pick(1, 28),         pick(0, 23),
             pick(0, 59),      pick(0, 59), pick(0, 999'999'999)};
        dv_timestamp_from_unit_values(&o.ts, f.year, f.month, f.day, f.hour, f.minute, f.second, f.fraction);
        char text[3 * _text_size];
        std::snprintf(text, sizeof text, "%04d-%02d-%02d %02d:%02d:%02d.%09d", f.year, f.month, f.day, f.hour,
                      f.minute, f.second, f.fraction);
        o.text = text;
        const int64_t seconds = f.hour * 3600 + f.minute * 60 + f.second;
        const int64_t days = ((f.year - 1900) * 12 + f.month) * 31 + f.day;
        o.nano = days * _nano_per_day + seconds * 1'000'000'000 + f.fraction;
    }
    return operands;
}

const std::vector<operand_t> &operands_() {
    static const std::vector<operand_t> operands = drawn_operands_(_operand_count);
    return operands;
}

dt_fmt_ctx_t compiled_(bool is_for_reading) {
    dt_fmt_ctx_t model{};
    dt_fmt_ctx_set(_system_allocator, &model, _model, 0, DV_TYPE_TIMESTAMP, is_for_reading ? 1 : 0,
                   DVSTR_CHARSET_ASCII);
    return model;
}

// ---- writing: into a buffer, with a NUL ----

struct dvtypes_writer_t {
    static constexpr const char *name = "dvtypes";
    dt_fmt_ctx_t model = compiled_(/*is_for_reading=*/false);
    void operator()(const operand_t &o, char *text) const {
        dv_timestamp_to_str(&o.ts, text, _text_size, &model, 9);
    }
};
#ifdef DV_HAVE_FMT
struct fmt_writer_t {
    static constexpr const char *name = "fmt_fields";
    void operator()(const operand_t &o, char *text) const {
        const fields_t &f = o.fields;
        *fmt::format_to(text, FMT_COMPILE("{:04}-{:02}-{:02} {:02}:{:02}:{:02}.{:09}"), f.year, f.month,
                        f.day, f.hour, f.minute, f.second, f.fraction) = '\0';
    }
};
#endif

// ---- reading: gives the fields, in the form of the library ----

struct dvtypes_reader_t {
    static constexpr const char *name = "dvtypes";
    using value = dv_timestamp_t;
    dt_fmt_ctx_t model = compiled_(/*is_for_reading=*/true);
    void operator()(const std::string &text, value &v) const {
        dv_timestamp_from_str(&v, text.data(), static_cast<int>(text.size()), &model, 9);
    }
    static fields_t fields(const value &v) { return fields_of_(v); }
};
struct strptime_reader_t {
    static constexpr const char *name = "strptime";
    struct value {
        struct tm tm;
        int fraction;
    };
    void operator()(const std::string &text, value &v) const {
        const char *rest = strptime(text.c_str(), "%Y-%m-%d %H:%M:%S.", &v.tm);
        if (rest != nullptr) std::from_chars(rest, text.data() + text.size(), v.fraction);
    }
    static fields_t fields(const value &v) {
        const struct tm &t = v.tm;
        return {t.tm_year + 1900, t.tm_mon + 1, t.tm_mday, t.tm_hour, t.tm_min, t.tm_sec, v.fraction};
    }
};

// ---- order ----

struct dvtypes_order_t {
    static constexpr const char *name = "dvtypes";
    int operator()(const dv_timestamp_t &x, const dv_timestamp_t &y) const {
        return dv_timestamp_compare(&x, &y);
    }
};
struct dvtypes_inline_order_t {
    static constexpr const char *name = "dvtypes_inline";
    int operator()(const dv_timestamp_t &x, const dv_timestamp_t &y) const {
        return dv_timestamp_cmp(&x, &y);
    }
};
struct memcmp_order_t {
    static constexpr const char *name = "memcmp";
    int operator()(const dv_timestamp_t &x, const dv_timestamp_t &y) const {
        return std::memcmp(&x, &y, sizeof x);
    }
};

void fail_(benchmark::State &state, size_t operand) {
    _any_wrong = true;
    state.SkipWithError(("wrong answer: operand " + std::to_string(operand)).c_str());
}

void count_operations_(benchmark::State &state, size_t count) {
    state.counters["per_op"] =
        benchmark::Counter(static_cast<double>(count),
                           benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

void run_(benchmark::State &state, const std::function<bool(size_t)> &is_right, auto operation) {
    for (size_t i = 0; i < _operand_count; ++i) {
        if (!is_right(i)) return fail_(state, i);
    }
    for (auto _ : dv::bench::gauged(state)) {
        for (size_t i = 0; i < _operand_count; ++i) operation(i);
        benchmark::ClobberMemory();
    }
    count_operations_(state, _operand_count);
}

template <typename Writer>
void write_(benchmark::State &state) {
    const Writer writer;
    char text[_text_size] = {};
    const auto write = [&](size_t i) {
        writer(operands_()[i], text);
        benchmark::DoNotOptimize(text);
    };
    run_(
        state, [&](size_t i) { return write(i), operands_()[i].text == text; }, write);
}

template <typename Reader>
void read_(benchmark::State &state) {
    const Reader reader;
    typename Reader::value value{};
    const auto read = [&](size_t i) {
        reader(operands_()[i].text, value);
        benchmark::DoNotOptimize(value);
    };
    run_(
        state, [&](size_t i) { return read(i), Reader::fields(value) == operands_()[i].fields; }, read);
}

template <typename Order>
void compare_(benchmark::State &state) {
    const Order order;
    std::vector<dv_timestamp_t> values;
    for (const operand_t &o : operands_()) values.push_back(o.ts);
    int below = 0;
    const auto nano = [](size_t i) { return operands_()[i % _operand_count].nano; };
    const auto is_below = [&](size_t i) { return order(values[i], values[(i + 1) % _operand_count]) < 0; };
    run_(
        state, [&](size_t i) { return is_below(i) == (nano(i) < nano(i + 1)); },
        [&](size_t i) { below += is_below(i) ? 1 : 0; });
    benchmark::DoNotOptimize(below);
}

// ---- a million in order ----

// A value of a library for a second of the calendar and a fraction, and its order.
struct dvtypes_sorter_t {
    static constexpr const char *name = "dvtypes";
    using value = dv_timestamp_t;
    static value make(const fields_t &f) {
        value v;
        dv_timestamp_from_unit_values(&v, f.year, f.month, f.day, f.hour, f.minute, f.second, f.fraction);
        return v;
    }
    static bool less(const value &x, const value &y) { return dv_timestamp_cmp(&x, &y) < 0; }
};
struct memcmp_sorter_t : dvtypes_sorter_t {
    static constexpr const char *name = "memcmp";
    static bool less(const value &x, const value &y) { return std::memcmp(&x, &y, sizeof x) < 0; }
};
#ifdef DV_HAVE_ABSEIL
absl::CivilSecond civil_(const fields_t &f) {
    return absl::CivilSecond(f.year, f.month, f.day, f.hour, f.minute, f.second);
}
struct abseil_time_sorter_t {
    static constexpr const char *name = "abseil_time";
    using value = absl::Time;
    static value make(const fields_t &f) {
        return absl::FromCivil(civil_(f), absl::UTCTimeZone()) + absl::Nanoseconds(f.fraction);
    }
    static bool less(const value &x, const value &y) { return x < y; }
};
struct abseil_civil_sorter_t {
    static constexpr const char *name = "abseil_civil";
    using value = std::pair<absl::CivilSecond, int>;
    static value make(const fields_t &f) { return {civil_(f), f.fraction}; }
    static bool less(const value &x, const value &y) { return x < y; }
};
#endif

// Sorted values are compared with those of the operands in the order of their nanoseconds.
template <typename Sorter>
void sort_(benchmark::State &state) {
    constexpr size_t count = 1'000'000;
    const auto less = [](const auto &x, const auto &y) { return Sorter::less(x, y); };
    const std::vector<operand_t> operands = drawn_operands_(count);
    std::vector<typename Sorter::value> values(count);
    for (size_t i = 0; i < count; ++i) values[i] = Sorter::make(operands[i].fields);
    auto work = values;
    std::sort(work.begin(), work.end(), less);
    std::vector<const operand_t *> twin(count);
    for (size_t i = 0; i < count; ++i) twin[i] = &operands[i];
    std::sort(twin.begin(), twin.end(), [](const auto *x, const auto *y) { return x->nano < y->nano; });
    for (size_t i = 0; i < count; ++i) {
        const auto want = Sorter::make(twin[i]->fields);
        if (less(work[i], want) || less(want, work[i])) return fail_(state, i);
    }
    for (auto _ : dv::bench::gauged(state)) {
        std::copy(values.begin(), values.end(), work.begin());
        std::sort(work.begin(), work.end(), less);
        benchmark::ClobberMemory();
    }
    count_operations_(state, count);
}

template <typename Library>
void add_(const char *operation, void (*run)(benchmark::State &)) {
    benchmark::RegisterBenchmark((std::string(operation) + Library::name).c_str(), run);
}

}  // namespace

int main(int argc, char **argv) {
    add_<dvtypes_writer_t>("to_text/nine_digits/", write_<dvtypes_writer_t>);
#ifdef DV_HAVE_FMT
    add_<fmt_writer_t>("to_text/nine_digits/", write_<fmt_writer_t>);
#endif
    add_<dvtypes_reader_t>("from_text/nine_digits/", read_<dvtypes_reader_t>);
    add_<strptime_reader_t>("from_text/nine_digits/", read_<strptime_reader_t>);
    add_<dvtypes_order_t>("compare/random/", compare_<dvtypes_order_t>);
    add_<dvtypes_inline_order_t>("compare/random/", compare_<dvtypes_inline_order_t>);
    add_<memcmp_order_t>("compare/random/", compare_<memcmp_order_t>);
    add_<dvtypes_sorter_t>("sort/million/", sort_<dvtypes_sorter_t>);
    add_<memcmp_sorter_t>("sort/million/", sort_<memcmp_sorter_t>);
#ifdef DV_HAVE_ABSEIL
    add_<abseil_time_sorter_t>("sort/million/", sort_<abseil_time_sorter_t>);
    add_<abseil_civil_sorter_t>("sort/million/", sort_<abseil_civil_sorter_t>);
#endif
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return _any_wrong ? 1 : 0;
}
