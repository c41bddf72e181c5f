// Number models. The input is a model, a NUL, a record's bytes, and behind them a text to be read under the
// model. Properties: those of number_model_property.h, for the record as a value where it is one; any record
// writes inside its buffer or raises a documented code; any text is read or refused with one.

#include "../test/number_fmt/number_model_property.h"
#include "fuzz_input.h"

using namespace dv::fuzz;
using namespace dv::test;

namespace {

// Up to size characters from the front of the input.
std::string_view take_(std::string_view &input, size_t size) {
    const std::string_view taken = input.substr(0, size);
    input.remove_prefix(taken.size());
    return taken;
}

void require_code_(int code, std::initializer_list<int> documented, const std::string &model) {
    if (code != 0 && std::find(documented.begin(), documented.end(), code) == documented.end())
        require_none(error_text(code) + " under " + model);
}

// A value of at most 38 digits from any bytes.
number_t value_of_(const number_t &bytes) {
    const int count = bytes.size % 20;
    decimal_t x{0, 2 * (bytes.signexp % 128 - 64 - count)};
    for (int i = 0; i < count; ++i) {
        x.digits = x.digits * 100 + (i == 0 ? 1 + bytes.coef[i] % 99 : bytes.coef[i] % 100);
    }
    if (bytes.signexp >= 128) x.digits = -x.digits;
    return encode(x);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    std::string_view input(reinterpret_cast<const char *>(data), size);
    const std::string model(take_(input, input.find('\0')));
    take_(input, 1);
    number_t record{};
    const std::string_view bytes = take_(input, sizeof record);
    memcpy(&record, bytes.data(), bytes.size());

    require_none(model_fault(model, value_of_(record)));
    const assertion_watch watch;  // such as a size above 22
    const guarded out(NUMBER_FMT_TEXT_SIZE), any(record);
    const auto write = [&](int buf_size) {
        number_to_str_fmt(any.record(), buf_size, out.text(), length(model), model.data());
    };
    require_code_(raise_of([&] { write(NUMBER_FMT_TEXT_SIZE); }), {-3006, -5075}, model);
    require_code_(raise_of([&] { write(record.signexp % 64); }), {-3005, -3006, -5075}, model);
    require_code_(raise_of([&] { number_get_length(model.data(), length(model)); }), {-3005, -3006, -5075},
                  model);
    require_none(out.intact() && any.intact() ? "" : "guard under " + model);
    require_code_(read_under(input, model).code, {-3006, -5068, -5069, -5074, -5075}, model);
    return 0;
}
