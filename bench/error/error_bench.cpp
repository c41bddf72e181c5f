// What a text that is refused costs beside one that is read: without an exception, by exception, and with the
// message of the error.
//
// Rows are numbers and dates of many shapes; the refused ones are the same with one character, anywhere, that
// does not belong.

#include <benchmark/benchmark.h>

#include <dvtypes/dvtypes.hpp>
#include <random>
#include <string>
#include <vector>

#include "gauged.h"
#include "operand_count.h"

namespace {

enum class rows { read, refused };

std::string number_text_(std::mt19937 &random) {
    std::string text(random() % 4 == 0 ? 1 : 0, '-');
    text += std::to_string(random() >> random() % 32);
    text += '.';
    text += std::to_string(random() % 10'000);
    return text;
}

std::string date_text_(std::mt19937 &random) {
    return (dv::date(1990, 1, 1) + dv::interval_ds(static_cast<int>(random() % 20000)))
        .to_string()
        .substr(0, 10);
}

template <typename Value>
std::vector<std::string> texts_(rows kind) {
    std::mt19937 random(1);
    std::vector<std::string> texts;
    for (int i = 0; i < dv::bench::operand_count; ++i) {
        std::string text = std::same_as<Value, dv::number> ? number_text_(random) : date_text_(random);
        if (kind == rows::refused) text[random() % text.size()] = 'x';
        texts.push_back(text);
    }
    return texts;
}

template <typename Value>
bool code_alone_(const std::string &text, Value &x) {
    const auto parsed = dv::try_parse<Value>(text);
    if (parsed) x = *parsed;
    return parsed.has_value();
}

template <typename Value>
bool exception_(const std::string &text, Value &x) {
    try {
        x = Value(std::string_view(text));
        return true;
    } catch (const dv::error &) {
        return false;
    }
}

template <typename Value>
bool message_(const std::string &text, Value &x) {
    dv_error_t error;
    typename Value::record_type record{};
    const dv::detail::text_argument argument(text);
    const auto read = [&] { Value::raising::read(record, argument); };
    const bool is_read = dv::detail::protect(read, &error) == 0;
    if (is_read) x = Value::of_valid(record);
    return is_read;
}

template <typename Value>
void measure_(benchmark::State &state, rows kind, bool (*read)(const std::string &, Value &)) {
    const std::vector<std::string> texts = texts_<Value>(kind);
    Value x;
    for (const std::string &text : texts) {
        if (read(text, x) != (kind == rows::read)) state.SkipWithError(text.c_str());
    }
    for (auto _ : dv::bench::gauged(state)) {
        for (const std::string &text : texts) {
            bool is_read = read(text, x);
            benchmark::DoNotOptimize(is_read);
            benchmark::DoNotOptimize(x);
        }
    }
    state.SetItemsProcessed(state.iterations() * static_cast<int64_t>(texts.size()));
}

template <typename Value>
void add_(const std::string &name) {
    for (const auto &[kind, kind_name] :
         {std::pair(rows::read, "/read/"), std::pair(rows::refused, "/refused/")}) {
        const std::string prefix = name + kind_name;
        const auto add = [&, kind = kind](const char *way, auto read) {
            benchmark::RegisterBenchmark(
                (prefix + way).c_str(), [=](benchmark::State &state) { measure_<Value>(state, kind, read); });
        };
        add("code", code_alone_<Value>);
        add("exception", exception_<Value>);
        add("message", message_<Value>);
    }
}

}  // namespace

int main(int argc, char **argv) {
    add_<dv::number>("number");
    add_<dv::date>("date");
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}
