// The three TIMESTAMP types from text, by a model compiled for one call and by one that is kept, and the form
// of literals. The input is a type, a precision, a session zone, the length of the model, the model, and the
// text.
//
// Properties: both ways raise the same code and give the same bytes; a value that was read is written under a
// model of all fields and reads back as a value of the same text; a text of a literal's form reads under the
// literals' model, or one of its fields is at fault.

#include "../test/datetime_fmt/model_text.h"
#include "../test/datetime_fmt/text_type.h"
#include "dvtypes/timezone_id.h"
#include "fuzz_input.h"

using namespace dv::fuzz;
using namespace dv::test;

namespace {

constexpr dv_date_t _as_of = {120, 124, 2,  29,
                              12,  30,  15, 0};  // 2024-02-29, for fields that a model leaves open
constexpr int _date_codes[] = {0, -5010, -5042, -5045, -5113, -5114};

struct case_t {
    text_options_t options;
    std::string_view model, text;
    int model_size() const { return static_cast<int>(model.size()); }
    int text_size() const { return static_cast<int>(text.size()); }
};

template <typename Type>
constexpr const char *all_fields_ =
    Type::type == DV_TYPE_TS_TZ ? "SYYYY-MM-DD HH24:MI:SS.FF9 TZR" : "SYYYY-MM-DD HH24:MI:SS.FF9";

// The text of all fields; empty when the local time lies outside the calendar.
template <typename Type>
std::string text_of_(const typename Type::record &value, const case_t &input) {
    static const compiled_model model(all_fields_<Type>, /*is_reading=*/false, Type::type);
    char text[128];
    long status = CONV_STATUS_CUT;
    const int code = raise_of([&] {
        status = Type::write(&value, text, sizeof text, &model.ctx, {9, input.options.zone});
    });
    if (code == -5114) return {};
    require(code == 0 && status == CONV_STATUS_WHOLE, "a whole text", code);
    return {text, strnlen(text, sizeof text)};
}

// The text, not the instant: of two that clocks show alike the later is read.
template <typename Type>
void reads_back_(const typename Type::record &value, const case_t &input) {
    static const compiled_model model(all_fields_<Type>, /*is_reading=*/true, Type::type);
    const std::string text = text_of_<Type>(value, input);
    if (text.empty()) return;
    typename Type::record again{};
    const int code = raise_of([&] {
        Type::read(&again, text.data(), static_cast<int>(text.size()), &model.ctx, {9, input.options.zone});
    });
    require(code == 0, text.c_str(), code);
    require(text_of_<Type>(again, input) == text, text.c_str(), code);
}

template <typename Type>
void read_(const case_t &input) {
    const std::vector<char> text = block(input.text), model = block(input.model);
    typename Type::record once{}, kept{};
    const int code = raise_of([&] {
        Type::read_once(&once, text.data(), input.text_size(), model.data(), input.model_size(),
                        input.options);
    });
    if (input.model.empty() || input.text.empty()) return;
    compiled_model compiled(std::string_view(model.data(), model.size()), /*is_reading=*/true, Type::type);
    compiled.ctx.nls_date_ctx.lang = DV_NLS_DATE_LANG_KOREAN;  // those of models for one call
    compiled.ctx.charset = DVSTR_CHARSET_MSWIN949;
    int kept_code = compiled.error.code;
    if (kept_code == 0)
        kept_code = raise_of(
            [&] { Type::read(&kept, text.data(), input.text_size(), &compiled.ctx, input.options); });
    require(code == kept_code, "the same code both ways", kept_code);
    if (code != 0) return;
    require(std::memcmp(&once, &kept, sizeof once) == 0, "the same bytes both ways", code);
    reads_back_<Type>(kept, input);
}

// Reading takes fields of fewer digits than places, as the literals do.
void literal_reads_(const case_t &input) {
    const std::vector<char> text = block(input.text);
    if (dv_timestamp_check_literal(DVSTR_CHARSET_UTF8, text.data(), input.text_size()) == 0) return;
    static const compiled_model model("YYYY-MM-DD HH24:MI:SS.FF", /*is_reading=*/true, DV_TYPE_TIMESTAMP);
    if (input.text.empty()) return;
    dv_timestamp_t value{};
    const int code = raise_of(
        [&] { dv_timestamp_from_str_as_of(&value, text.data(), input.text_size(), &model.ctx, 9, &_as_of); });
    require_one_of(_date_codes, "a code of a literal's fields", code);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    const assertion_watch quiet;
    input_t input(data, size);
    const uint8_t type = input.byte();
    const int precision = input.byte() % 11;
    timezone_t zone;
    timezone_init(&zone);
    timezone_set_field(&zone, TZ_FLD_ZONE_ID, input.take<uint16_t>() % TZ_ID_MAX);
    const size_t model_size = input.byte();
    const std::string_view model = input.take(model_size);
    const case_t one = {{precision, zone}, model, input.rest()};
    literal_reads_(one);
    switch (type % 3) {
        case 0:
            read_<timestamp_text>(one);
            break;
        case 1:
            read_<zoned_text>(one);
            break;
        default:
            read_<local_text>(one);
    }
    return 0;
}
