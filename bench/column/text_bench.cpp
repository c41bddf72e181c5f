// Columns of text to and from NUMBER, beside the functions for one value over the same rows. Texts lie by
// offsets; those of the peer are read where they lie, and written one behind another as in the column.

#include "column_bench.h"
#include "dvtypes/number_fmt.h"

namespace dv::bench {
namespace {

constexpr std::string_view _model = "FM999,999,990.00";

texts_t plain_texts_(operands_e kind) {
    texts_t texts;
    for (const std::string &text : decimals(kind, static_cast<int>(column_rows()), 1)) texts.append(text);
    return texts;
}

texts_t texts_under_model_() {
    texts_t texts;
    for (const number_t &x : number_records(operands_e::SHORT, 1)) {
        char text[NUMBER_FMT_TEXT_SIZE];
        number_to_str_fmt(&x, sizeof text, text, static_cast<int>(_model.size()), _model.data());
        texts.append(text);
    }
    return texts;
}

bool are_equal_(const std::vector<number_t> &x, const std::vector<number_t> &y) {
    for (size_t i = 0; i < x.size(); ++i) {
        if (number_cmp(&x[i], &y[i]) != 0) return false;
    }
    return true;
}

// ---- from text: columns(text, result), single(x, length, text) ----

template <typename Columns, typename Single>
void add_reading_(const std::string &place, texts_t (*make)(), Columns columns, Single single) {
    const auto one_by_one = [=](texts_t &texts, std::vector<number_t> &values) {
        for (size_t i = 0; i < values.size(); ++i) {
            const int32_t begin = texts.offsets[i];
            single(&values[i], texts.offsets[i + 1] - begin, texts.bytes.data() + begin);
        }
    };
    benchmark::RegisterBenchmark((place + "/dvtypes").c_str(), [=](benchmark::State &state) {
        texts_t texts = make();
        std::vector<number_t> values(texts.rows()), wanted = values;
        const dv_column_t text = texts.column();
        dv_column_t result = column_of(values);
        measure(state, [&] { columns(&text, &result); });
        one_by_one(texts, wanted);
        if (!are_equal_(values, wanted)) report_wrong(state, "other values");
    })->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark((place + "/one_by_one").c_str(), [=](benchmark::State &state) {
        texts_t texts = make();
        std::vector<number_t> values(texts.rows());
        measure(state, [&] { one_by_one(texts, values); });
    })->Unit(benchmark::kMillisecond);
}

// ---- to text: columns(x, result), single(x, size, str) ----

constexpr size_t _text_max = 48;  // bytes of any row's text

template <typename Columns, typename Single>
void add_writing_(const std::string &place, operands_e kind, Columns columns, Single single) {
    const auto one_by_one = [=](const std::vector<number_t> &values, texts_t &texts) {
        int32_t end = 0;
        for (size_t i = 0; i < values.size(); ++i) {
            char *const to = texts.bytes.data() + end;
            single(&values[i], static_cast<int>(texts.bytes.size()) - end, to);
            end += static_cast<int32_t>(strlen(to));
            texts.offsets[i + 1] = end;
        }
    };
    benchmark::RegisterBenchmark((place + "/dvtypes").c_str(), [=](benchmark::State &state) {
        std::vector<number_t> values = number_records(kind, 1);
        texts_t texts = texts_t::room(values.size(), _text_max), wanted = texts;
        const dv_column_t x = column_of(values);
        dv_column_t result = texts.column();
        measure(state, [&] { columns(&x, &result); });
        one_by_one(values, wanted);
        const auto end = static_cast<size_t>(wanted.offsets.back());
        if (texts.offsets != wanted.offsets || memcmp(texts.bytes.data(), wanted.bytes.data(), end) != 0)
            report_wrong(state, "other texts");
    })->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark((place + "/one_by_one").c_str(), [=](benchmark::State &state) {
        const std::vector<number_t> values = number_records(kind, 1);
        texts_t texts = texts_t::room(values.size(), _text_max);
        measure(state, [&] { one_by_one(values, texts); });
    })->Unit(benchmark::kMillisecond);
}

void read_(const dv_column_t *text, dv_column_t *result) { number_column_from_text(text, result, nullptr); }
void read_one_(number_t *x, int length, const char *text) { number_from_str(x, length, text, nullptr); }
void write_(const dv_column_t *x, dv_column_t *result) { number_column_to_text(x, result, nullptr); }
void write_one_(const number_t *x, int size, char *str) { number_to_str(x, size, str, nullptr); }

constexpr int _model_length = static_cast<int>(_model.size());
void read_under_model_(const dv_column_t *text, dv_column_t *result) {
    number_column_from_text_fmt(text, _model_length, _model.data(), result, nullptr);
}
void read_one_under_model_(number_t *x, int length, const char *text) {
    number_from_str_fmt(x, length, text, _model_length, _model.data());
}
void write_under_model_(const dv_column_t *x, dv_column_t *result) {
    number_column_to_text_fmt(x, _model_length, _model.data(), result, nullptr);
}
void write_one_under_model_(const number_t *x, int size, char *str) {
    number_to_str_fmt(x, size, str, _model_length, _model.data());
}

}  // namespace
}  // namespace dv::bench

int main(int argc, char **argv) {
    using namespace dv::bench;
    add_reading_(
        "column_from_text/short", [] { return plain_texts_(operands_e::SHORT); }, read_, read_one_);
    add_reading_(
        "column_from_text/long", [] { return plain_texts_(operands_e::LONG); }, read_, read_one_);
    add_reading_("column_from_text/model", texts_under_model_, read_under_model_, read_one_under_model_);
    add_writing_("column_to_text/short", operands_e::SHORT, write_, write_one_);
    add_writing_("column_to_text/long", operands_e::LONG, write_, write_one_);
    add_writing_("column_to_text/model", operands_e::SHORT, write_under_model_, write_one_under_model_);
    return run_benchmarks(argc, argv);
}
