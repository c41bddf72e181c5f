// A compiled datetime model of a vector's line, given as SETTING "MODEL".
//
// The setting is a language, a character set, and where the model is to be one of another type than the
// operation's, a type code: AMERICAN.UTF8, TRADITIONAL_CHINESE.BIG5, AMERICAN.UTF8.21.

#ifndef DV_TEST_VECTOR_DATETIME_MODEL_H
#define DV_TEST_VECTOR_DATETIME_MODEL_H

#include <algorithm>
#include <string>

#include "dvtypes/datetime_fmt.h"
#include "vector_bind.h"

namespace dv::test {

// The code of a record's type.
template <typename Record>
inline constexpr int type_of = DV_TYPE_TS_LTZ;
template <>
inline constexpr int type_of<dv_date_t> = DV_TYPE_DATE;
template <>
inline constexpr int type_of<dv_time_t> = DV_TYPE_TIME;
template <>
inline constexpr int type_of<dv_timestamp_t> = DV_TYPE_TIMESTAMP;
template <>
inline constexpr int type_of<dv_ts_tz_t> = DV_TYPE_TS_TZ;

class vector_model {
  public:
    vector_model(vector_call &call, int type, bool is_reading) {
        const std::string setting(call.word());
        const vector_text model = call.text();
        const size_t point = setting.find('.'), second_point = setting.find('.', point + 1);
        const dvstr_charset_t charset = charset_of_(setting.substr(point + 1, second_point - point - 1));
        if (second_point != setting.npos) type = std::stoi(setting.substr(second_point + 1));
        std::string language = "NLS_DATE_LANGUAGE=" + setting.substr(0, point);
        std::replace(language.begin() + 18, language.end(), '_', ' ');
        is_good_ = call.run([&] {
            dt_fmt_ctx_set(_system_allocator, &compiled, model.data, model.size, type, is_reading, charset);
            dt_fmt_ctx_set_user_nls(_system_allocator, &compiled, language.data(),
                                    static_cast<int>(language.size()));
        });
    }
    ~vector_model() { dt_fmt_ctx_reset(_system_allocator, &compiled); }
    vector_model(const vector_model &) = delete;
    vector_model &operator=(const vector_model &) = delete;
    explicit operator bool() const { return is_good_; }
    operator const dt_fmt_ctx_t *() const { return &compiled; }

    dt_fmt_ctx_t compiled{};

  private:
    static dvstr_charset_t charset_of_(const std::string &name) {
        const auto has_name = [&](const charset_info_t &info) { return name == info.name; };
        const auto *const end = _charset_info + DVSTR_CHARSET_MAX;
        return static_cast<dvstr_charset_t>(std::find_if(_charset_info, end, has_name) - _charset_info);
    }

    bool is_good_;
};

}  // namespace dv::test

#endif  // DV_TEST_VECTOR_DATETIME_MODEL_H
