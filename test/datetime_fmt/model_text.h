// Values written and read under models, for tests and fuzzers.

#ifndef DV_TEST_MODEL_TEXT_H
#define DV_TEST_MODEL_TEXT_H

#include "compiled_model.h"
#include "datetime_support.h"

namespace dv::test {

inline compiled_model writing(std::string_view model, int type = DV_TYPE_DATE) {
    return compiled_model(model, /*is_reading=*/false, type);
}
inline compiled_model reading(std::string_view model, int type = DV_TYPE_DATE) {
    return compiled_model(model, /*is_reading=*/true, type);
}

inline void set_language(compiled_model &model, const std::string &language,
                         int charset = DVSTR_CHARSET_UTF8) {
    const std::string setting = "NLS_DATE_LANGUAGE = " + language;
    dt_fmt_ctx_set_user_nls(&model, &model.ctx, setting.data(), static_cast<int>(setting.size()));
    model.ctx.charset = charset;
}

// "code function" of what a call raises, "0 " when it returns.
template <typename Call>
std::string raised_by(Call call) {
    dv_error_t error{};
    const int code = raise_of(call, &error);
    return std::to_string(code) + ' ' + (code == 0 ? "" : error.function);
}

// The text of a value, or "code: message".
template <typename Write>
std::string text_or_error(Write write) {
    char text[2048] = {};
    dv_error_t error;
    if (raise_of([&] { write(text, static_cast<int>(sizeof text)); }, &error) == 0) return text;
    return std::to_string(error.code) + ": " + error.message;
}

inline std::string written(const compiled_model &model, const dv_date_t &date) {
    return text_or_error([&](char *text, int size) { dv_date_to_str(&date, text, size, &model.ctx); });
}

inline std::string written(std::string_view model, const dv_date_t &date) {
    compiled_model compiled = writing(model);
    set_language(compiled, "AMERICAN");
    return written(compiled, date);
}

// Reads from a block that ends where the text ends. The raised code, or 0 and the date.
inline int read(const compiled_model &model, std::string_view text, dv_date_t &date,
                dv_error_t *error = nullptr) {
    const guarded block(text.size(), text.data());
    return raise_of([&] { dv_date_from_str(&date, block.text(), static_cast<int>(text.size()), &model.ctx); },
                    error);
}

// Most texts are right or nearly: some characters replaced, left out or put in.
inline std::string damaged(number_source &source, std::string text) {
    static constexpr char pool[] = "0123456789012345678901234567890-/.:,T+ \t\n\r\0\x80\xFFx";
    for (int changes = source.pick(-2, 3); changes > 0; --changes) {
        const auto at = static_cast<size_t>(source.pick(0, static_cast<int>(text.size())));
        const char c = pool[source.pick(0, static_cast<int>(sizeof pool) - 2)];
        switch (source.pick(0, 5)) {
            case 0:
                text.insert(at, 1, c);
                break;
            case 1:
                text.resize(at);
                break;
            case 2:
                text.erase(at, 1);
                break;
            default:
                if (at < text.size()) text[at] = c;
        }
    }
    return text.empty() ? " " : text;
}

}  // namespace dv::test

#endif  // DV_TEST_MODEL_TEXT_H
