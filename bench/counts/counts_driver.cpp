// The hottest operations, one at a time, for a tool that counts instructions:
//
//   counts_driver                     lists the operations
//   counts_driver OPERATION PASSES    prepares 4096 operands, then runs it over all of them so many times
//
// What two passes take more than one is what the operation costs 4096 times: preparing the operands and
// binding the functions falls out. The loop and, for an operation in place, the copy of its operand are part
// of it. The answers of the same operations are checked by the benchmarks, whose NUMBER operands these are.

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <random>
#include <string>
#include <vector>

#include "dvtypes/interval.h"
#include "dvtypes/number.h"
#include "dvtypes/number_fmt.h"
#include "dvtypes/timestamp.h"
#include "dvtypes/timezone.h"
#include "operands.h"

namespace {

using namespace dv::bench;

constexpr int _operand_count = 4096;  // scripts/counts divides by it
constexpr int _text_size = 64;
constexpr const char *_model = "YYYY-MM-DD HH24:MI:SS.FF9";

struct text_t {
    char bytes[_text_size];
};

// Keeps the compiler from dropping results.
void use_(const void *results) { asm volatile("" : : "g"(results) : "memory"); }

template <typename In, typename Out>
void convert_(int passes, const std::vector<In> &in, std::vector<Out> out, auto operation) {
    for (int pass = 0; pass < passes; ++pass) {
        for (size_t i = 0; i < in.size(); ++i) operation(in[i], out[i]);
        use_(out.data());
    }
}

template <typename Value, typename Second>
void in_place_(int passes, const std::vector<Value> &values, const std::vector<Second> &seconds,
               auto operation) {
    std::vector<Value> work(values.size());
    for (int pass = 0; pass < passes; ++pass) {
        work = values;
        for (size_t i = 0; i < work.size(); ++i) operation(work[i], seconds[i]);
        use_(work.data());
    }
}

// ---- NUMBER ----

std::vector<number_t> numbers_(const std::vector<std::string> &texts) {
    std::vector<number_t> numbers(texts.size());
    for (size_t i = 0; i < texts.size(); ++i) number_from_str(&numbers[i], 0, texts[i].c_str(), nullptr);
    return numbers;
}
std::vector<number_t> numbers_(operands_e kind, uint64_t seed) {
    return numbers_(decimals(kind, _operand_count, seed));
}

template <auto Operation>
void arithmetic_(operands_e kind, int passes) {
    in_place_(passes, numbers_(kind, 1), numbers_(kind, 2),
              [](number_t &x, const number_t &y) { Operation(&x, &y); });
}

void compare_(operands_e kind, int passes) {
    const auto x = numbers_(kind, 1), y = numbers_(kind, 2);
    for (int pass = 0; pass < passes; ++pass) {
        int below = 0;
        for (size_t i = 0; i < x.size(); ++i) below += number_cmp(&x[i], &y[i]) < 0 ? 1 : 0;
        use_(&below);
    }
}

void number_from_str_(operands_e kind, int passes) {
    convert_(passes, decimals(kind, _operand_count, 1), std::vector<number_t>(_operand_count),
             [](const std::string &text, number_t &x) { number_from_str(&x, 0, text.c_str(), nullptr); });
}

void number_to_str_(operands_e kind, int passes) {
    convert_(passes, numbers_(kind, 1), std::vector<text_t>(_operand_count),
             [](const number_t &x, text_t &text) { number_to_str(&x, _text_size, text.bytes, nullptr); });
}

void number_from_int64_(operands_e kind, int passes) {
    convert_(passes, machine_integers(kind, _operand_count, 4), std::vector<number_t>(_operand_count),
             [](int64_t n, number_t &x) { number_from_int64(&x, n); });
}

void number_to_int64_(operands_e kind, int passes) {
    std::vector<std::string> texts;
    for (const int64_t n : machine_integers(kind, _operand_count, 4)) texts.push_back(std::to_string(n));
    convert_(passes, numbers_(texts), std::vector<int64_t>(_operand_count),
             [](const number_t &x, int64_t &n) { number_to_int64(&x, &n); });
}

void number_from_double_(operands_e kind, int passes) {
    convert_(passes, machine_doubles(kind, _operand_count, 5), std::vector<number_t>(_operand_count),
             [](double d, number_t &x) { number_from_double(&x, d); });
}

void number_to_double_(operands_e kind, int passes) {
    convert_(passes, numbers_(kind, 1), std::vector<double>(_operand_count),
             [](const number_t &x, double &d) { number_to_double(&x, &d); });
}

void number_sqrt_(operands_e kind, int passes) {
    in_place_(passes, numbers_(magnitudes(kind, _operand_count, 6)), std::vector<int>(_operand_count),
              [](number_t &x, int) { number_sqrt(&x); });
}

void number_pow_integral_(operands_e kind, int passes) {
    in_place_(passes, numbers_(magnitudes(kind, _operand_count, 7)),
              numbers_(integral_exponents(kind, _operand_count, 8)),
              [](number_t &x, const number_t &y) { number_pow(&x, &y); });
}

void number_pow_fractional_(operands_e kind, int passes) {
    in_place_(passes, numbers_(magnitudes(kind, _operand_count, 9)),
              numbers_(fractional_exponents(_operand_count, 10)),
              [](number_t &x, const number_t &y) { number_pow(&x, &y); });
}

void number_from_str_fmt_(operands_e kind, int passes) {
    constexpr const char *model = "FM999,999,990.00";
    const auto length = static_cast<int>(std::strlen(model));
    std::vector<std::string> texts;
    for (const number_t &x : numbers_(kind, 1)) {
        char text[_text_size];
        number_to_str_fmt(&x, sizeof text, text, length, model);
        texts.emplace_back(text);
    }
    convert_(passes, texts, std::vector<number_t>(_operand_count), [=](const std::string &text, number_t &x) {
        number_from_str_fmt(&x, static_cast<int>(text.size()), text.data(), length, model);
    });
}

// ---- dates, timestamps, zones: 1900 to 2049 ----

std::vector<dv_timestamp_t> timestamps_() {
    std::mt19937_64 random(1);
    const auto pick = [&](int low, int high) {
        return low + static_cast<int>(random() % static_cast<uint64_t>(high - low + 1));
    };
    std::vector<dv_timestamp_t> values(_operand_count);
    for (dv_timestamp_t &ts : values) {
        const int year = pick(1900, 2049), month = pick(1, 12), day = pick(1, 28);
        const int hour = pick(0, 23), minute = pick(0, 59), second = pick(0, 59);
        dv_timestamp_from_unit_values(&ts, year, month, day, hour, minute, second, pick(0, 999'999'999));
    }
    return values;
}

std::vector<dv_date_t> dates_() {
    std::vector<dv_date_t> dates(_operand_count);
    const auto timestamps = timestamps_();
    for (size_t i = 0; i < dates.size(); ++i) std::memcpy(&dates[i], &timestamps[i], 7), dates[i].dummy = 0;
    return dates;
}

std::vector<int> steps_(int low, int high) {
    std::mt19937 random(2);
    std::vector<int> steps(_operand_count);
    for (int &n : steps) n = low + static_cast<int>(random() % static_cast<unsigned>(high - low + 1));
    return steps;
}

dt_fmt_ctx_t compiled_(bool is_for_reading) {
    dt_fmt_ctx_t model{};
    dt_fmt_ctx_set(_system_allocator, &model, _model, 0, DV_TYPE_TIMESTAMP, is_for_reading ? 1 : 0,
                   DVSTR_CHARSET_ASCII);
    return model;
}

void add_day_(operands_e, int passes) {
    in_place_(passes, dates_(), steps_(-1000, 1000),
              [](dv_date_t &date, int n) { dv_date_add_day(&date, n); });
}

void add_month_(operands_e, int passes) {
    in_place_(passes, dates_(), steps_(-100, 100),
              [](dv_date_t &date, int n) { dv_date_add_month(&date, n, /*is_from_itv=*/0); });
}

void julian_day_(operands_e, int passes) {  // there and back
    in_place_(passes, dates_(), steps_(0, 0),
              [](dv_date_t &date, int) { dv_date_from_julian_day(&date, dv_date_to_julian_day(&date)); });
}

void timestamp_compare_(operands_e, int passes) {
    const auto values = timestamps_();
    for (int pass = 0; pass < passes; ++pass) {
        int below = 0;
        for (size_t i = 1; i < values.size(); ++i) {
            below += dv_timestamp_compare(&values[i - 1], &values[i]) < 0 ? 1 : 0;
        }
        use_(&below);
    }
}

void compile_model_(operands_e, int passes) {
    for (int i = 0; i < passes * _operand_count; ++i) {
        dt_fmt_ctx_t model = compiled_(/*is_for_reading=*/true);
        use_(&model);
        dt_fmt_ctx_reset(_system_allocator, &model);
    }
}

void timestamp_to_str_(operands_e, int passes) {
    const dt_fmt_ctx_t model = compiled_(/*is_for_reading=*/false);
    convert_(passes, timestamps_(), std::vector<text_t>(_operand_count),
             [&](const dv_timestamp_t &ts, text_t &text) {
                 dv_timestamp_to_str(&ts, text.bytes, _text_size, &model, 9);
             });
}

void timestamp_from_str_(operands_e, int passes) {
    const dt_fmt_ctx_t writing = compiled_(/*is_for_reading=*/false),
                       reading = compiled_(/*is_for_reading=*/true);
    std::vector<std::string> texts;
    for (const dv_timestamp_t &ts : timestamps_()) {
        char text[_text_size];
        dv_timestamp_to_str(&ts, text, _text_size, &writing, 9);
        texts.emplace_back(text);
    }
    convert_(passes, texts, std::vector<dv_timestamp_t>(_operand_count),
             [&](const std::string &text, dv_timestamp_t &ts) {
                 dv_timestamp_from_str(&ts, text.data(), static_cast<int>(text.size()), &reading, 9);
             });
}

template <auto Operation>
void zone_(operands_e, int passes) {
    constexpr const char *name = "America/New_York";
    timezone_t zone;
    timezone_parse(&zone, name, static_cast<int>(std::strlen(name)));
    in_place_(passes, dates_(), steps_(0, 0),
              [&](dv_date_t &date, int) { Operation(&zone, &date, nullptr); });
}

void zone_by_name_(operands_e, int passes) {
    const int regions = TZ_ID_MAX;
    std::vector<std::string> names;
    for (int n : steps_(0, regions - 1)) names.emplace_back(region_tab_[n].canon_name);
    convert_(passes, names, std::vector<timezone_t>(_operand_count),
             [](const std::string &name, timezone_t &zone) {
                 timezone_parse(&zone, name.data(), static_cast<int>(name.size()));
             });
}

std::vector<dv_itv_dts_t> intervals_() {
    std::vector<dv_itv_dts_t> intervals(_operand_count);
    const std::vector<int> days = steps_(-99, 99);
    for (size_t i = 0; i < intervals.size(); ++i) {
        const int sign = days[i] < 0 ? -1 : 1;
        dv_itv_dts_set_field(&intervals[i], DT_FMT_UNIT_DAY, days[i]);
        dv_itv_dts_set_field(&intervals[i], DT_FMT_UNIT_SECOND, sign * static_cast<int>(i * 20 % 86400));
        dv_itv_dts_set_field(&intervals[i], DT_FMT_UNIT_FSEC,
                             sign * static_cast<int>(i * 244'140 % 1'000'000'000));
    }
    return intervals;
}

void interval_to_text_(const dv_itv_dts_t &itv, text_t &text) {
    dv_itv_dts_to_str(&itv, text.bytes, 2, 9, _text_size);
}

void interval_to_str_(operands_e, int passes) {
    convert_(passes, intervals_(), std::vector<text_t>(_operand_count), interval_to_text_);
}

void interval_from_str_(operands_e, int passes) {
    std::vector<text_t> texts(_operand_count);
    const auto intervals = intervals_();
    for (size_t i = 0; i < texts.size(); ++i) interval_to_text_(intervals[i], texts[i]);
    convert_(passes, texts, intervals, [](const text_t &text, dv_itv_dts_t &itv) {
        dv_itv_dts_from_str(&itv, text.bytes, 0, DV_ITV_DAY_TO_SECOND, 2, 9);
    });
}

// ---- the table ----

struct operation_t {
    const char *name;
    operands_e kind;  // of NUMBER operands
    void (*run)(operands_e kind, int passes);
};
constexpr operation_t _operations[] = {
    {"number_add/short", operands_e::SHORT, arithmetic_<number_add>},
    {"number_add/long", operands_e::LONG, arithmetic_<number_add>},
    {"number_sub/short", operands_e::SHORT, arithmetic_<number_sub>},
    {"number_sub/long", operands_e::LONG, arithmetic_<number_sub>},
    {"number_mul/short", operands_e::SHORT, arithmetic_<number_mul>},
    {"number_mul/long", operands_e::LONG, arithmetic_<number_mul>},
    {"number_div/short", operands_e::SHORT, arithmetic_<number_div>},
    {"number_div/long", operands_e::LONG, arithmetic_<number_div>},
    {"number_cmp/short", operands_e::SHORT, compare_},
    {"number_cmp/long", operands_e::LONG, compare_},
    {"number_from_str/short", operands_e::SHORT, number_from_str_},
    {"number_from_str/long", operands_e::LONG, number_from_str_},
    {"number_to_str/short", operands_e::SHORT, number_to_str_},
    {"number_to_str/long", operands_e::LONG, number_to_str_},
    {"number_from_int64/short", operands_e::SHORT, number_from_int64_},
    {"number_from_int64/long", operands_e::LONG, number_from_int64_},
    {"number_to_int64/short", operands_e::SHORT, number_to_int64_},
    {"number_to_int64/long", operands_e::LONG, number_to_int64_},
    {"number_from_double/short", operands_e::SHORT, number_from_double_},
    {"number_from_double/long", operands_e::LONG, number_from_double_},
    {"number_to_double/short", operands_e::SHORT, number_to_double_},
    {"number_to_double/long", operands_e::LONG, number_to_double_},
    {"number_sqrt/short", operands_e::SHORT, number_sqrt_},
    {"number_sqrt/long", operands_e::LONG, number_sqrt_},
    {"number_pow/integral_short", operands_e::SHORT, number_pow_integral_},
    {"number_pow/integral_long", operands_e::LONG, number_pow_integral_},
    {"number_pow/fractional", operands_e::SHORT, number_pow_fractional_},
    {"number_from_str_fmt", operands_e::SHORT, number_from_str_fmt_},
    {"dv_date_add_day", operands_e::SHORT, add_day_},
    {"dv_date_add_month", operands_e::SHORT, add_month_},
    {"julian_day_round_trip", operands_e::SHORT, julian_day_},
    {"dt_fmt_ctx_set_and_reset", operands_e::SHORT, compile_model_},
    {"dv_timestamp_compare", operands_e::SHORT, timestamp_compare_},
    {"dv_timestamp_to_str", operands_e::SHORT, timestamp_to_str_},
    {"dv_timestamp_from_str", operands_e::SHORT, timestamp_from_str_},
    {"timezone_localize", operands_e::SHORT, zone_<timezone_localize>},
    {"timezone_normalize", operands_e::SHORT, zone_<timezone_normalize>},
    {"timezone_parse/name", operands_e::SHORT, zone_by_name_},
    {"dv_itv_dts_to_str", operands_e::SHORT, interval_to_str_},
    {"dv_itv_dts_from_str", operands_e::SHORT, interval_from_str_},
};

}  // namespace

int main(int argc, char **argv) {
    if (argc == 1) {
        for (const operation_t &operation : _operations) std::puts(operation.name);
        return 0;
    }
    for (const operation_t &operation : _operations) {
        if (argc != 3 || std::strcmp(operation.name, argv[1]) != 0) continue;
        operation.run(operation.kind, std::atoi(argv[2]));
        return 0;
    }
    std::fputs("counts_driver [OPERATION PASSES]\n", stderr);
    return 2;
}
