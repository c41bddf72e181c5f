// A million timestamps from and to texts of nine digits of the fraction, by offsets, beside the functions for
// one value: operation/texts/library. "iso" is without a model, "model" under YYYY-MM-DD HH24:MI:SS.FF9.

#include <string_view>

#include "datetime_bench.h"
#include "dvtypes/iso.h"

namespace dv::bench {
namespace {

constexpr int _length = 29;
constexpr std::string_view _model_text = "YYYY-MM-DD HH24:MI:SS.FF9";

struct texts_t {
    std::vector<char> bytes;
    std::vector<int32_t> offsets;

    explicit texts_t(size_t rows) : bytes(rows * _length + 1), offsets(rows + 1) {}  // and a NUL
    const char *text(size_t row) const { return bytes.data() + offsets[row]; }
    dv_column_t column() {
        dv_column_t column{};
        column.count = static_cast<int64_t>(offsets.size()) - 1;
        column.values = bytes.data();
        column.offsets = offsets.data();
        column.size = static_cast<int64_t>(bytes.size()) - 1;
        return column;
    }
};

struct operands_t {
    std::vector<dv_timestamp_t> values = timestamps_of(microseconds(20261122));
    texts_t texts{values.size()};
    dt_fmt_ctx_t reading{}, writing{};

    operands_t() {
        for (size_t i = 0; i < values.size(); ++i) {
            texts.offsets[i + 1] = texts.offsets[i] + _length;
            dv_timestamp_to_iso(&values[i], texts.bytes.data() + texts.offsets[i], _length + 1);
        }
        for (const bool is_reading : {false, true}) {
            dt_fmt_ctx_set(_system_allocator, is_reading ? &reading : &writing, _model_text.data(),
                           static_cast<int>(_model_text.size()), DV_TYPE_TIMESTAMP, is_reading,
                           DVSTR_CHARSET_UTF8);
        }
    }
};
operands_t &operands_() {
    static operands_t operands;
    return operands;
}

void read_columns_(benchmark::State &state, bool has_model) {
    operands_t &operands = operands_();
    std::vector<dv_timestamp_t> values(operands.values.size());
    const dv_column_t texts = operands.texts.column();
    dv_column_t result = column_of(values);
    for (auto _ : gauged(state)) {
        has_model ? dv_timestamp_column_from_str(&texts, &operands.reading, 9, nullptr, &result, nullptr)
                  : dv_timestamp_column_from_iso(&texts, &result, nullptr);
    }
    count_rows(state);
    if (!same_bytes(values, operands.values)) report_wrong(state, "wrong timestamps");
}

void read_one_by_one_(benchmark::State &state, bool has_model) {
    operands_t &operands = operands_();
    std::vector<dv_timestamp_t> values(operands.values.size());
    const texts_t &texts = operands.texts;
    for (auto _ : gauged(state)) {
        for (size_t i = 0; i < values.size(); ++i) {
            has_model ? dv_timestamp_from_str(&values[i], texts.text(i), _length, &operands.reading, 9)
                      : dv_timestamp_from_iso(&values[i], texts.text(i), _length);
        }
    }
    count_rows(state);
    if (!same_bytes(values, operands.values)) report_wrong(state, "wrong timestamps");
}

void write_columns_(benchmark::State &state, bool has_model) {
    operands_t &operands = operands_();
    texts_t texts(operands.values.size());
    const dv_column_t values = column_of(operands.values);
    dv_column_t result = texts.column();
    for (auto _ : gauged(state)) {
        has_model ? dv_timestamp_column_to_str(&values, &operands.writing, 9, &result, nullptr)
                  : dv_timestamp_column_to_iso(&values, &result, nullptr);
    }
    count_rows(state);
    if (!same_bytes(texts.bytes, operands.texts.bytes)) report_wrong(state, "wrong texts");
}

void write_one_by_one_(benchmark::State &state, bool has_model) {
    operands_t &operands = operands_();
    texts_t texts(operands.values.size());
    for (auto _ : gauged(state)) {
        char *to = texts.bytes.data();
        for (const dv_timestamp_t &value : operands.values) {
            has_model ? static_cast<void>(dv_timestamp_to_str(&value, to, _length + 1, &operands.writing, 9))
                      : static_cast<void>(dv_timestamp_to_iso(&value, to, _length + 1));
            to += _length;
        }
    }
    count_rows(state);
    if (!same_bytes(texts.bytes, operands.texts.bytes)) report_wrong(state, "wrong texts");
}

void add_all_() {
    for (const bool has_model : {false, true}) {
        const std::string texts = has_model ? "/model/" : "/iso/";
        const auto add = [&](const std::string &name, void (*run)(benchmark::State &, bool)) {
            benchmark::RegisterBenchmark(name.c_str(),
                                         [=](benchmark::State &state) { run(state, has_model); });
        };
        add("column_from_text" + texts + "dvtypes", read_columns_);
        add("column_from_text" + texts + "one_by_one", read_one_by_one_);
        add("column_to_text" + texts + "dvtypes", write_columns_);
        add("column_to_text" + texts + "one_by_one", write_one_by_one_);
    }
}

}  // namespace
}  // namespace dv::bench

int main(int argc, char **argv) {
    dv::bench::add_all_();
    return dv::bench::run_benchmarks(argc, argv);
}
