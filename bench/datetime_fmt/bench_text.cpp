// DATE written, read and truncated beside fmt, the C library and Abseil: operation/case/library.
//
// A library is made for one form of text and has
//
//   name                  value: what it writes and reads
//   make(fields)          fields(value)
//   write(value)          the text, as it gives it (a C string or std::string)
//   read(text, value)     false when the text is refused
//
// Operands are seconds of 1900 to 2049, shuffled, from a fixed seed. Every text is compared with that of
// printf, and every value with the fields it was made of, before the clock starts; the program ends with 1
// when one is wrong. Texts count as equal in any letter case ("%b" writes Feb), and with "T" for the blank
// between date and time, which is the one form of Abseil's civil times.

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <random>
#include <string>
#include <vector>

#include "dvtypes/datetime.h"
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
constexpr int64_t _seconds_per_day = 86400;
constexpr int64_t _first_second = -25567 * _seconds_per_day, _last_second = 29219 * _seconds_per_day - 1;
constexpr const char *_months[] = {"JAN", "FEB", "MAR", "APR", "MAY", "JUN",
                                   "JUL", "AUG", "SEP", "OCT", "NOV", "DEC"};

bool _any_wrong = false;

struct fields_t {
    int year, month, day, hour, minute, second;
    bool operator==(const fields_t &) const = default;
};

struct form_t {
    const char *name, *model, *posix;
    bool has_clock, has_day_first;
};
constexpr form_t _iso = {"iso", "YYYY-MM-DD HH24:MI:SS", "%Y-%m-%d %H:%M:%S", true, false};
constexpr form_t _day_first = {"day_first", "DD/MM/YYYY HH24:MI:SS", "%d/%m/%Y %H:%M:%S", true, true};
constexpr form_t _month_name = {"month_name", "DD-MON-YYYY", "%d-%b-%Y", false, true};

std::string printf_(const fields_t &f, const form_t &form) {
    char text[80];
    if (!form.has_clock) {
        std::snprintf(text, sizeof text, "%02d-%s-%04d", f.day, _months[f.month - 1], f.year);
        return text;
    }
    const char *format =
        form.has_day_first ? "%02d/%02d/%04d %02d:%02d:%02d" : "%04d-%02d-%02d %02d:%02d:%02d";
    const int first = form.has_day_first ? f.day : f.year, third = form.has_day_first ? f.year : f.day;
    std::snprintf(text, sizeof text, format, first, f.month, third, f.hour, f.minute, f.second);
    return text;
}

// ---------------------------------------------------------------------------------------------------------
// Libraries
// ---------------------------------------------------------------------------------------------------------

constexpr int _text_size = 64;

struct dvtypes_t {
    static constexpr const char *name = "dvtypes";
    using value = dv_date_t;
    dt_fmt_ctx_t writing{}, reading{};
    char text[_text_size];

    explicit dvtypes_t(const form_t &form) {
        compile_(writing, form, 0);
        compile_(reading, form, 1);
    }
    ~dvtypes_t() {
        dt_fmt_ctx_reset(_system_allocator, &writing);
        dt_fmt_ctx_reset(_system_allocator, &reading);
    }
    dvtypes_t(const dvtypes_t &) = delete;
    dvtypes_t &operator=(const dvtypes_t &) = delete;

    static value make(const fields_t &f) {
        value v;
        dv_date_from_unit_values(&v, f.year, f.month, f.day, f.hour, f.minute, f.second);
        return v;
    }
    static fields_t fields(const value &v) {
        return {dv_date_get_field(&v, DT_FMT_UNIT_YEAR), v.month, v.day, v.hour, v.minute, v.second};
    }
    const char *write(const value &v) {
        dv_date_to_str(&v, text, _text_size, &writing);
        return text;
    }
    bool read(const std::string &from, value &v) const {
        dv_date_from_str(&v, from.data(), static_cast<int>(from.size()), &reading);
        return true;
    }
    static void to_month(value &v) { dv_date_trunc(&v, "MM", 2); }

  private:
    static void compile_(dt_fmt_ctx_t &model, const form_t &form, uchar is_reading) {
        constexpr const char *language = "NLS_DATE_LANGUAGE = AMERICAN";
        dt_fmt_ctx_set(_system_allocator, &model, form.model, static_cast<int>(std::strlen(form.model)),
                       DV_TYPE_DATE, is_reading, DVSTR_CHARSET_UTF8);
        dt_fmt_ctx_set_user_nls(_system_allocator, &model, language, static_cast<int>(std::strlen(language)));
    }
};

struct libc_t {
    static constexpr const char *name = "libc";  // strftime, strptime
    using value = std::tm;
    const form_t &form;
    char text[_text_size];
    explicit libc_t(const form_t &of) : form(of) {}
    static value make(const fields_t &f) {
        value v{};
        v.tm_year = f.year - 1900;
        v.tm_mon = f.month - 1;
        v.tm_mday = f.day;
        v.tm_hour = f.hour;
        v.tm_min = f.minute;
        v.tm_sec = f.second;
        return v;
    }
    static fields_t fields(const value &v) {
        return {v.tm_year + 1900, v.tm_mon + 1, v.tm_mday, v.tm_hour, v.tm_min, v.tm_sec};
    }
    const char *write(const value &v) {
        std::strftime(text, sizeof text, form.posix, &v);
        return text;
    }
    bool read(const std::string &from, value &v) const {
        v = {};
        const char *end = strptime(from.c_str(), form.posix, &v);
        return end != nullptr && *end == '\0';
    }
};

struct chrono_t {
    static constexpr const char *name = "std_chrono";
    using value = std::chrono::sys_seconds;
    static value make(const fields_t &f) {
        const std::chrono::sys_days days = std::chrono::year{f.year} /
                                           std::chrono::month{static_cast<unsigned>(f.month)} /
                                           std::chrono::day{static_cast<unsigned>(f.day)};
        return days + std::chrono::hours{f.hour} + std::chrono::minutes{f.minute} +
               std::chrono::seconds{f.second};
    }
    static fields_t fields(const value &v) {
        const auto days = std::chrono::floor<std::chrono::days>(v);
        const std::chrono::year_month_day date{days};
        const std::chrono::hh_mm_ss clock{v - days};
        return {int{date.year()},
                static_cast<int>(unsigned{date.month()}),
                static_cast<int>(unsigned{date.day()}),
                static_cast<int>(clock.hours().count()),
                static_cast<int>(clock.minutes().count()),
                static_cast<int>(clock.seconds().count())};
    }
    static void to_month(value &v) {
        const std::chrono::year_month_day date{std::chrono::floor<std::chrono::days>(v)};
        v = std::chrono::sys_days{date.year() / date.month() / 1};
    }
};

#ifdef DV_HAVE_FMT
// From the fields, by formats that are compiled into the program.
struct fmt_t {
    static constexpr const char *name = "fmt";
    using value = fields_t;
    const form_t &form;
    char text[_text_size];
    explicit fmt_t(const form_t &of) : form(of) {}
    static value make(const fields_t &f) { return f; }
    const char *write(const value &v) {
        *write_(v) = '\0';
        return text;
    }

  private:
    char *write_(const value &v) {
        if (!form.has_clock) {
            return fmt::format_to(text, FMT_COMPILE("{:02}-{}-{:04}"), v.day, _months[v.month - 1], v.year);
        }
        if (form.has_day_first) {
            return fmt::format_to(text, FMT_COMPILE("{:02}/{:02}/{:04} {:02}:{:02}:{:02}"), v.day, v.month,
                                  v.year, v.hour, v.minute, v.second);
        }
        return fmt::format_to(text, FMT_COMPILE("{:04}-{:02}-{:02} {:02}:{:02}:{:02}"), v.year, v.month,
                              v.day, v.hour, v.minute, v.second);
    }
};
#endif

#ifdef DV_HAVE_ABSEIL
fields_t fields_of_(const absl::CivilSecond &c) {
    return {static_cast<int>(c.year()), c.month(), c.day(), c.hour(), c.minute(), c.second()};
}

struct abseil_time_t {
    static constexpr const char *name = "abseil_time";
    using value = absl::Time;
    const form_t &form;
    explicit abseil_time_t(const form_t &of) : form(of) {}
    static value make(const fields_t &f) {
        const absl::CivilSecond civil(f.year, f.month, f.day, f.hour, f.minute, f.second);
        return absl::FromCivil(civil, absl::UTCTimeZone());
    }
    static fields_t fields(const value &v) { return fields_of_(absl::UTCTimeZone().At(v).cs); }
    std::string write(const value &v) const { return absl::FormatTime(form.posix, v, absl::UTCTimeZone()); }
    bool read(const std::string &from, value &v) const {
        return absl::ParseTime(form.posix, from, &v, nullptr);
    }
};

struct abseil_civil_t {
    static constexpr const char *name = "abseil_civil";
    using value = absl::CivilSecond;
    explicit abseil_civil_t(const form_t &) {}
    static value make(const fields_t &f) { return value(f.year, f.month, f.day, f.hour, f.minute, f.second); }
    static fields_t fields(const value &v) { return fields_of_(v); }
    static std::string write(const value &v) { return absl::FormatCivilTime(v); }
    static bool read(const std::string &from, value &v) { return absl::ParseCivilTime(from, &v); }
    static void to_month(value &v) { v = absl::CivilSecond(absl::CivilMonth(v)); }
};
#endif

// ---------------------------------------------------------------------------------------------------------
// Runs
// ---------------------------------------------------------------------------------------------------------

std::vector<fields_t> operands_() {
    std::mt19937_64 random(1);
    std::uniform_int_distribution<int64_t> seconds(_first_second, _last_second);
    std::vector<fields_t> operands(_operand_count);
    for (fields_t &f : operands) {
        f = chrono_t::fields(std::chrono::sys_seconds{std::chrono::seconds{seconds(random)}});
    }
    return operands;
}

template <typename L>
std::vector<typename L::value> values_(const std::vector<fields_t> &operands) {
    std::vector<typename L::value> values(operands.size());
    std::transform(operands.begin(), operands.end(), values.begin(), L::make);
    return values;
}

bool is_same_text_(const std::string &got, const std::string &want) {
    const auto upper = [](char c) { return c >= 'a' && c <= 'z' ? c - ('a' - 'A') : c; };
    return std::equal(got.begin(), got.end(), want.begin(), want.end(),
                      [&](char x, char y) { return upper(x) == upper(y) || (x == 'T' && y == ' '); });
}

void report_wrong_(benchmark::State &state, const std::string &operand) {
    _any_wrong = true;
    state.SkipWithError(("wrong answer: " + operand).c_str());
}

void count_operations_(benchmark::State &state) {
    state.counters["per_op"] =
        benchmark::Counter(static_cast<double>(_operand_count),
                           benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

template <typename L>
void run_write_(benchmark::State &state, const form_t &form) {
    L library(form);
    const std::vector<fields_t> operands = operands_();
    const auto values = values_<L>(operands);
    for (size_t i = 0; i < values.size(); ++i) {
        const std::string want = printf_(operands[i], form);
        if (!is_same_text_(library.write(values[i]), want)) return report_wrong_(state, want);
    }
    for (auto _ : dv::bench::gauged(state)) {
        for (const auto &value : values) {
            benchmark::DoNotOptimize(library.write(value));
            benchmark::ClobberMemory();
        }
    }
    count_operations_(state);
}

template <typename L>
void run_read_(benchmark::State &state, const form_t &form, char between) {
    L library(form);
    std::vector<std::string> texts;
    typename L::value value{};
    for (fields_t f : operands_()) {
        texts.push_back(printf_(f, form));
        if (!form.has_clock) f.hour = f.minute = f.second = 0;
        if (form.has_clock) texts.back()[10] = between;
        if (!library.read(texts.back(), value) || L::fields(value) != f) {
            return report_wrong_(state, texts.back());
        }
    }
    for (auto _ : dv::bench::gauged(state)) {
        for (const std::string &text : texts) {
            library.read(text, value);
            benchmark::DoNotOptimize(value);
        }
    }
    count_operations_(state);
}

// In place; the copy of all operands before each round is part of what is measured, for every library.
template <typename L>
void run_to_month_(benchmark::State &state) {
    const std::vector<fields_t> operands = operands_();
    const auto values = values_<L>(operands);
    auto work = values;
    for (size_t i = 0; i < work.size(); ++i) {
        L::to_month(work[i]);
        const fields_t want = {operands[i].year, operands[i].month, 1, 0, 0, 0};
        if (L::fields(work[i]) != want) return report_wrong_(state, printf_(operands[i], _iso));
    }
    for (auto _ : dv::bench::gauged(state)) {
        std::copy(values.begin(), values.end(), work.begin());
        for (auto &value : work) L::to_month(value);
        benchmark::ClobberMemory();
    }
    count_operations_(state);
}

template <typename Run>
void add_(const std::string &operation, const char *library, Run run) {
    benchmark::RegisterBenchmark((operation + '/' + library).c_str(), run);
}

template <typename L>
void add_write_(const form_t &form) {
    add_(std::string("write/") + form.name, L::name, [&](auto &state) { run_write_<L>(state, form); });
}

template <typename L>
void add_read_(const form_t &form, char between = ' ') {
    add_(std::string("read/") + form.name, L::name,
         [&form, between](auto &state) { run_read_<L>(state, form, between); });
}

template <typename L>
void add_to_month_() {
    add_("trunc/month", L::name, run_to_month_<L>);
}

void add_all_() {
    for (const form_t *form : {&_iso, &_day_first, &_month_name}) {
        add_write_<dvtypes_t>(*form);
        add_write_<libc_t>(*form);
        add_read_<dvtypes_t>(*form);
        add_read_<libc_t>(*form);
#ifdef DV_HAVE_FMT
        add_write_<fmt_t>(*form);
#endif
#ifdef DV_HAVE_ABSEIL
        add_write_<abseil_time_t>(*form);
        add_read_<abseil_time_t>(*form);
#endif
    }
    add_to_month_<dvtypes_t>();
    add_to_month_<chrono_t>();
#ifdef DV_HAVE_ABSEIL
    add_write_<abseil_civil_t>(_iso);
    add_read_<abseil_civil_t>(_iso, 'T');
    add_to_month_<abseil_civil_t>();
#endif
}

}  // namespace

int main(int argc, char **argv) {
    add_all_();
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return _any_wrong ? 1 : 0;
}
