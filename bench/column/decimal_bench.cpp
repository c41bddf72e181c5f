// Columns of decimals: sums, comparisons, addition and text, beside the compiler's best loops over the same
// bytes, std::from_chars and std::to_chars of integers, and memcpy.
//
// Amounts have the scale 2, 2 to 8 significant digits, a quarter of them negative.

#include <algorithm>
#include <charconv>

#include "column_bench.h"

namespace dv::bench {
namespace {

__extension__ using int128 = __int128;

constexpr int _scale = 2;

template <typename Int>
dv_decimal_column_t decimals_of_(std::vector<Int> &values) {
    return {column_of(values), sizeof(Int), sizeof(Int) == 8 ? 18 : 38, _scale};
}

std::vector<std::string> amounts_() {
    return decimals(operands_e::SHORT, static_cast<int>(column_rows()), 1);
}

template <typename Int>
std::vector<Int> values_() {
    std::vector<Int> values;
    for (const std::string &amount : amounts_()) {
        const size_t point = amount.find('.');
        const std::string fraction = point == amount.npos ? "" : amount.substr(point + 1);
        values.push_back(
            std::stoll(amount.substr(0, point) + fraction + std::string(2 - fraction.size(), '0')));
    }
    return values;
}

// As the library writes them, so that all that read and write do the same.
texts_t texts_() {
    std::vector<int64_t> values = values_<int64_t>();
    texts_t texts = texts_t::room(values.size(), DV_DECIMAL64_TEXT_MAX);
    dv_column_t column = texts.column();
    const dv_decimal_column_t x = decimals_of_(values);
    dv_decimal_column_to_text(&x, &column, nullptr);
    texts.bytes.resize(static_cast<size_t>(texts.offsets.back()));
    return texts;
}

// ---- sums ----

void measure_sum_(benchmark::State &state, const dv_decimal_column_t &x, int128 wanted) {
    dv_decimal_sum_t sum = {};
    measure(state, [&] {
        sum = {};
        dv_decimal_column_sum(&x, &sum);
        benchmark::DoNotOptimize(sum);
    });
    if (sum.words[0] != static_cast<uint64_t>(wanted)) report_wrong(state, "another sum");
}

template <typename Int>
void sum_(benchmark::State &state) {
    std::vector<Int> values = values_<Int>();
    const dv_decimal_column_t x = decimals_of_(values);
    int128 wanted = 0;
    for (const Int value : values) wanted += value;
    measure_sum_(state, x, wanted);
}

// Every seventh row has no value.
void sum_with_nulls_(benchmark::State &state) {
    std::vector<int64_t> values = values_<int64_t>();
    std::vector<uint8_t> validity(values.size() / 8 + 1);
    int128 wanted = 0;
    for (size_t i = 0; i < values.size(); ++i) {
        if (i % 7 == 0) continue;
        validity[i / 8] = static_cast<uint8_t>(validity[i / 8] | 1 << i % 8);
        wanted += values[i];
    }
    dv_decimal_column_t x = decimals_of_(values);
    x.column.validity = validity.data();
    measure_sum_(state, x, wanted);
}

void sum_that_wraps_(benchmark::State &state) {
    const std::vector<int64_t> values = values_<int64_t>();
    measure(state, [&] {
        uint64_t sum = 0;
        for (const int64_t value : values) sum += static_cast<uint64_t>(value);
        benchmark::DoNotOptimize(sum);
    });
}

// ---- comparisons ----

// Beside a constant, or the column itself in another order.
void compare_(benchmark::State &state, bool with_constant) {
    std::vector<int64_t> values = values_<int64_t>(), others = values;
    std::reverse(others.begin(), others.end());
    int64_t constant = 12345;
    const dv_decimal_column_t x = decimals_of_(values);
    dv_decimal_column_t y = decimals_of_(others);
    if (with_constant) {
        y.column.values = &constant;
        y.column.stride = 0;
    }
    std::vector<uint8_t> rows(values.size() / 8 + 1);
    measure(state, [&] {
        dv_decimal_column_compare(&x, &y, DV_COLUMN_LT, rows.data());
        benchmark::DoNotOptimize(rows.data());
    });
    for (size_t i = 0; i < values.size(); ++i) {
        const bool is_less = values[i] < (with_constant ? constant : others[i]);
        if ((rows[i / 8] >> i % 8 & 1) != (is_less ? 1 : 0)) return report_wrong(state, "another bit");
    }
}

void read_memory_(benchmark::State &state, int columns) {
    const std::vector<int64_t> values = values_<int64_t>(), others = values;
    measure(state, [&] {
        int64_t all = 0;
        for (const int64_t value : values) all |= value;
        if (columns == 2) {
            for (const int64_t value : others) all |= value;
        }
        benchmark::DoNotOptimize(all);
    });
}

// ---- addition ----

void add_(benchmark::State &state) {
    std::vector<int64_t> x = values_<int64_t>(), y(x.rbegin(), x.rend()), z(x.size());
    const dv_decimal_column_t left = decimals_of_(x), right = decimals_of_(y);
    dv_decimal_column_t result = decimals_of_(z);
    measure(state, [&] { dv_decimal_column_add(&left, &right, &result, nullptr); });
    for (size_t i = 0; i < x.size(); ++i) {
        if (z[i] != x[i] + y[i]) return report_wrong(state, "another sum");
    }
}

void add_that_wraps_(benchmark::State &state) {
    const std::vector<int64_t> x = values_<int64_t>(), y(x.rbegin(), x.rend());
    std::vector<int64_t> z(x.size());
    measure(state, [&] {
        for (size_t i = 0; i < x.size(); ++i) z[i] = x[i] + y[i];
        benchmark::DoNotOptimize(z.data());
    });
}

// ---- text ----

void from_text_(benchmark::State &state) {
    texts_t texts = texts_();
    const std::vector<int64_t> wanted = values_<int64_t>();
    std::vector<int64_t> values(wanted.size());
    const dv_column_t column = texts.column();
    dv_decimal_column_t result = decimals_of_(values);
    measure(state, [&] { dv_decimal_column_from_text(&column, &result, nullptr); });
    if (values != wanted) report_wrong(state, "another value");
}

void from_chars_(benchmark::State &state) {
    std::vector<int64_t> values = values_<int64_t>();
    texts_t texts;
    for (const int64_t value : values) texts.append(std::to_string(value));
    measure(state, [&] {
        for (size_t i = 0; i < values.size(); ++i) {
            const std::string_view text = texts[i];
            std::from_chars(text.data(), text.data() + text.size(), values[i]);
        }
    });
}

void from_text_one_by_one_(benchmark::State &state) {
    const texts_t texts = texts_();
    std::vector<number_t> values(texts.rows());
    measure(state, [&] {
        for (size_t i = 0; i < values.size(); ++i) {
            const std::string_view text = texts[i];
            number_from_str(&values[i], static_cast<int>(text.size()), text.data(), nullptr);
        }
    });
}

void to_text_(benchmark::State &state) {
    std::vector<int64_t> values = values_<int64_t>();
    const dv_decimal_column_t x = decimals_of_(values);
    texts_t texts = texts_t::room(values.size(), DV_DECIMAL64_TEXT_MAX);
    dv_column_t column = texts.column();
    measure(state, [&] { dv_decimal_column_to_text(&x, &column, nullptr); });
    std::vector<int64_t> read(values.size());
    dv_decimal_column_t result = decimals_of_(read);
    dv_decimal_column_from_text(&column, &result, nullptr);
    if (read != values) report_wrong(state, "another text");
}

void to_chars_(benchmark::State &state) {
    const std::vector<int64_t> values = values_<int64_t>();
    std::string bytes(values.size() * DV_DECIMAL64_TEXT_MAX, '\0');
    std::vector<int32_t> offsets(values.size() + 1);
    measure(state, [&] {
        char *end = bytes.data();
        for (size_t i = 0; i < values.size(); ++i) {
            end = std::to_chars(end, bytes.data() + bytes.size(), values[i]).ptr;
            offsets[i + 1] = static_cast<int32_t>(end - bytes.data());
        }
    });
}

// The bytes of texts, offsets and values.
void copy_texts_(benchmark::State &state) {
    const texts_t texts = texts_();
    const std::vector<int64_t> values = values_<int64_t>();
    texts_t copy = texts;
    std::vector<int64_t> copied = values;
    measure(state, [&] {
        std::copy(texts.bytes.begin(), texts.bytes.end(), copy.bytes.begin());
        benchmark::DoNotOptimize(copy.bytes.data());
        std::copy(values.begin(), values.end(), copied.begin());
    });
}

// ---- NUMBER ----

void from_number_(benchmark::State &state) {
    std::vector<number_t> numbers = number_records(operands_e::SHORT, 1);
    const std::vector<int64_t> wanted = values_<int64_t>();
    std::vector<int64_t> values(numbers.size());
    const dv_column_t column = column_of(numbers);
    dv_decimal_column_t result = decimals_of_(values);
    measure(state, [&] { dv_decimal_column_from_number(&column, &result, nullptr); });
    if (values != wanted) report_wrong(state, "another value");
}

void to_number_(benchmark::State &state) {
    std::vector<int64_t> values = values_<int64_t>();
    const std::vector<number_t> wanted = number_records(operands_e::SHORT, 1);
    std::vector<number_t> numbers(values.size());
    const dv_decimal_column_t x = decimals_of_(values);
    dv_column_t result = column_of(numbers);
    measure(state, [&] { dv_decimal_column_to_number(&x, &result, nullptr); });
    for (size_t i = 0; i < values.size(); ++i) {
        if (number_cmp(&numbers[i], &wanted[i]) != 0) return report_wrong(state, "another number");
    }
}

void from_int64_one_by_one_(benchmark::State &state) {
    const std::vector<int64_t> values = values_<int64_t>();
    std::vector<number_t> numbers(values.size());
    measure(state, [&] {
        for (size_t i = 0; i < values.size(); ++i) number_from_int64(&numbers[i], values[i]);
    });
}

void to_int64_one_by_one_(benchmark::State &state) {
    const std::vector<number_t> numbers = number_records(operands_e::SHORT, 1);
    std::vector<int64_t> values(numbers.size());
    measure(state, [&] {
        for (size_t i = 0; i < values.size(); ++i) number_to_int64(&numbers[i], &values[i]);
    });
}

BENCHMARK(sum_<int64_t>)->Name("decimal_sum/int64/dvtypes");
BENCHMARK(sum_<int128>)->Name("decimal_sum/int128/dvtypes");
BENCHMARK(sum_with_nulls_)->Name("decimal_sum/int64_with_nulls/dvtypes");
BENCHMARK(sum_that_wraps_)->Name("decimal_sum/int64/wrapping_int64");
BENCHMARK_CAPTURE(compare_, constant, true)->Name("decimal_compare/constant/dvtypes");
BENCHMARK_CAPTURE(read_memory_, one, 1)->Name("decimal_compare/constant/memory_read");
BENCHMARK_CAPTURE(compare_, column, false)->Name("decimal_compare/column/dvtypes");
BENCHMARK_CAPTURE(read_memory_, two, 2)->Name("decimal_compare/column/memory_read");
BENCHMARK(add_)->Name("decimal_add/int64/dvtypes");
BENCHMARK(add_that_wraps_)->Name("decimal_add/int64/wrapping_int64");
BENCHMARK(from_text_)->Name("decimal_from_text/short/dvtypes");
BENCHMARK(from_chars_)->Name("decimal_from_text/short/from_chars_int64");
BENCHMARK(from_text_one_by_one_)->Name("decimal_from_text/short/number_from_str");
BENCHMARK(to_text_)->Name("decimal_to_text/short/dvtypes");
BENCHMARK(to_chars_)->Name("decimal_to_text/short/to_chars_int64");
BENCHMARK(copy_texts_)->Name("decimal_to_text/short/memcpy");
BENCHMARK(from_number_)->Name("decimal_from_number/short/dvtypes");
BENCHMARK(to_int64_one_by_one_)->Name("decimal_from_number/short/number_to_int64");
BENCHMARK(to_number_)->Name("decimal_to_number/short/dvtypes");
BENCHMARK(from_int64_one_by_one_)->Name("decimal_to_number/short/number_from_int64");

}  // namespace
}  // namespace dv::bench

int main(int argc, char **argv) { return dv::bench::run_benchmarks(argc, argv); }
