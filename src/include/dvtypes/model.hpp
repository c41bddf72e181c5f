// dvtypes/model.hpp: datetimes as text under compiled format models. Header only; C++20.
//
// ```cpp
// const dv::reader<dv::date> read("DD Mon YYYY");
// const dv::writer<dv::date> write("fmDay, DD Month YYYY", "VIETNAMESE");
// std::cout << read("21 Nov 2026") << '\n';                        // 2026-11-21 00:00:00
// std::cout << dv::writer<dv::date>("YYYY-DDD")(read("21 Nov 2026")) << '\n';  // 2026-325
// ```
//
// docs/datetime-models.md describes the models. A reader or writer is made once and then serves any number of
// values and threads. It can be moved; what it was moved from can only be assigned to or destroyed.

#ifndef DVTYPES_MODEL_HPP
#define DVTYPES_MODEL_HPP

#include <utility>

#include "dvtypes/datetime_fmt.h"
#include "dvtypes/nls.h"
#include "dvtypes/type.hpp"
#include "dvtypes/zoned.hpp"

namespace dv {

namespace detail {

// A compiled model.
class model {
  public:
    // Throws what dt_fmt_ctx_set and dt_fmt_ctx_set_user_nls raise.
    model(std::string_view text, std::string_view language, dv_type_t type, bool is_from_str) {
        const text_argument argument(text);
        const auto compile = [&] {
            dt_fmt_ctx_set(_system_allocator, &ctx_, argument.data, argument.length, type,
                           is_from_str ? 1 : 0, DVSTR_CHARSET_UTF8);
            set_language(ctx_, language);
        };
        dv_error_t record;
        if (protect(compile, &record) == 0) return;
        dt_fmt_ctx_reset(_system_allocator, &ctx_);
        throw error(record);
    }
    ~model() { dt_fmt_ctx_reset(_system_allocator, &ctx_); }
    model(model &&other) noexcept : ctx_(std::exchange(other.ctx_, dt_fmt_ctx_t{})) {}
    model &operator=(model &&other) noexcept {
        std::swap(ctx_, other.ctx_);
        return *this;
    }

    const dt_fmt_ctx_t *get() const noexcept { return &ctx_; }

  private:
    // A name, or settings with their names.
    static void set_language(dt_fmt_ctx_t &ctx, std::string_view language) {
        constexpr std::string_view name = "NLS_DATE_LANGUAGE=";
        char setting[DV_NLS_TEXT_MAX];
        if (language.find('=') == language.npos && language.size() <= sizeof setting - name.size()) {
            std::memcpy(setting, name.data(), name.size());
            std::memcpy(setting + name.size(), language.data(), language.size());
            language = {setting, name.size() + language.size()};
        }
        const text_argument argument(language);
        dt_fmt_ctx_set_user_nls(_system_allocator, &ctx, argument.data, argument.length);
    }

    dt_fmt_ctx_t ctx_{};
};

inline constexpr int fsec_digits = 9;

// Per type: its functions.
template <typename Value>
struct text_of;

template <>
struct text_of<date> {
    static void read(dv_date_t &x, const text_argument &text, const dt_fmt_ctx_t *model) {
        dv_date_from_str(&x, text.data, text.length, model);
    }
    static bool write(const dv_date_t &x, std::span<char> text, const dt_fmt_ctx_t *model) {
        return dv_date_to_str(&x, text.data(), static_cast<int>(text.size()), model) == CONV_STATUS_WHOLE;
    }
};

// The others differ in names alone.
template <auto FromStr, auto ToStr>
struct text_with_fraction {
    template <typename Record>
    static void read(Record &x, const text_argument &text, const dt_fmt_ctx_t *model) {
        FromStr(&x, text.data, text.length, model, fsec_digits);
    }
    template <typename Record>
    static bool write(const Record &x, std::span<char> text, const dt_fmt_ctx_t *model) {
        const auto size = static_cast<int>(text.size());
        return ToStr(&x, text.data(), size, model, fsec_digits) == CONV_STATUS_WHOLE;
    }
};

template <>
struct text_of<time_of_day> : text_with_fraction<dv_time_from_str, dv_time_to_str> {};
template <>
struct text_of<timestamp> : text_with_fraction<dv_timestamp_from_str, dv_timestamp_to_str> {};

inline void read_ts_tz(dv_ts_tz_t *x, const char *text, int length, const dt_fmt_ctx_t *model, int fprec) {
    const zone utc;
    dv_ts_tz_from_str(x, text, length, model, fprec, &utc.record());
}
template <>
struct text_of<timestamp_tz> : text_with_fraction<read_ts_tz, dv_ts_tz_to_str> {};

}  // namespace detail

// What has datetime models: date, time_of_day, timestamp, timestamp_tz.
template <typename Value>
concept has_model = requires {
    sizeof(detail::text_of<Value>);
};

// The language of readers and writers that are given none.
inline constexpr std::string_view american = "AMERICAN";

// A model compiled for reading. Texts are UTF-8; language is the name of one (docs/languages.md: AMERICAN,
// KOREAN, JAPANESE, VIETNAMESE, BRAZILIAN PORTUGUESE, TRADITIONAL CHINESE, RUSSIAN), or "NLS_DATE_LANGUAGE =
// ..."; what the model leaves open is of the present month (dvtypes/datetime.h); a timestamp_tz without a
// zone is of +00:00, whatever abbreviation its text has (TZD without TZR).
template <has_model Value>
class reader {
  public:
    // What it reads or writes.
    using value_type = Value;

    // Compiles a model. Throws what dt_fmt_ctx_set raises, and -11035 for what is no language.
    explicit reader(std::string_view model, std::string_view language = american)
        : model_(model, language, type_of<Value>, /*is_from_str=*/true) {}

    // Reads a text. Throws what the C function raises (dv_date_from_str and its like).
    Value operator()(std::string_view text) const {
        typename Value::record_type record{};
        const detail::text_argument argument(text);
        guarded([&] { read(record, argument); });
        return Value::of_valid(record);
    }

    // Raises: for guarded and attempt.
    void read(typename Value::record_type &x, const detail::text_argument &text) const {
        detail::text_of<Value>::read(x, text, model_.get());
    }

    // The compiled model, for functions of C; as long as this lives.
    const dt_fmt_ctx_t *context() const noexcept { return model_.get(); }

  private:
    detail::model model_;
};

// A model compiled for writing.
template <has_model Value>
class writer {
  public:
    // What it reads or writes.
    using value_type = Value;

    // Compiles a model. Throws what dt_fmt_ctx_set raises, and -11035 for what is no language.
    explicit writer(std::string_view model, std::string_view language = american)
        : model_(model, language, type_of<Value>, /*is_from_str=*/false) {}

    // The text of a value. Throws what the C function raises (dv_date_to_str and its like).
    std::string operator()(const Value &x) const {
        const int predicted = dt_fmt_get_predicted_str_len(model_.get(), detail::fsec_digits);
        for (size_t size = static_cast<size_t>(predicted) + 2;; size *= 2) {
            std::string text(size, '\0');
            const bool is_whole =
                guarded([&] { return detail::text_of<Value>::write(x.record(), text, model_.get()); });
            // A text that fills the buffer may be a cut one.
            const size_t length = text.find('\0');
            if (!is_whole || length == text.npos) continue;
            text.resize(length);
            return text;
        }
    }

    // The compiled model, for functions of C; as long as this lives.
    const dt_fmt_ctx_t *context() const noexcept { return model_.get(); }

  private:
    detail::model model_;
};

}  // namespace dv

#endif  // DVTYPES_MODEL_HPP
