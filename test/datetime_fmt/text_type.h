// The reader and writer of each datetime type under one name, for tests and fuzzers.

#ifndef DV_TEST_TEXT_TYPE_H
#define DV_TEST_TEXT_TYPE_H

#include "dvtypes/timestamp_tz.h"

namespace dv::test {

// What a type's functions take behind the model: they convert it to the parameters that they have.
struct text_options_t {
    int precision = 9;
    timezone_t zone{};  // of the session
    operator int() const { return precision; }
    operator timezone_t *() { return &zone; }
};

template <typename Record, int Type, auto Read, auto Write, auto ReadOnce>
struct text_type {
    using record = Record;
    static constexpr int type = Type;
    static void read(Record *value, const char *text, int size, const dt_fmt_ctx_t *model,
                     const text_options_t &options) {
        [&]<typename... More>(void (*function)(Record *, const char *, int, const dt_fmt_ctx_t *, More...)) {
            [[maybe_unused]] text_options_t own = options;
            function(value, text, size, model, static_cast<More>(own)...);
        }(Read);
    }
    static long write(const Record *value, char *text, int size, const dt_fmt_ctx_t *model,
                      const text_options_t &options) {
        return [&]<typename Status, typename... More>(
                   Status (*function)(const Record *, char *, int, const dt_fmt_ctx_t *, More...)) {
            [[maybe_unused]] text_options_t own = options;
            return function(value, text, size, model, static_cast<More>(own)...);
        }(Write);
    }
    // Under a model compiled for the one call.
    static void read_once(Record *value, const char *text, int size, const char *model, int model_size,
                          const text_options_t &options) {
        [&]<typename... More>(void (*function)(Record *, const char *, int, const char *, int, More...)) {
            [[maybe_unused]] text_options_t own = options;
            function(value, text, size, model, model_size, static_cast<More>(own)...);
        }(ReadOnce);
    }
};

using date_text =
    text_type<dv_date_t, DV_TYPE_DATE, dv_date_from_str, dv_date_to_str, dv_date_from_str_DEPRECATED>;
using time_text =
    text_type<dv_time_t, DV_TYPE_TIME, dv_time_from_str, dv_time_to_str, dv_time_from_str_DEPRECATED>;
using timestamp_text = text_type<dv_timestamp_t, DV_TYPE_TIMESTAMP, dv_timestamp_from_str,
                                 dv_timestamp_to_str, dv_timestamp_from_str_DEPRECATED>;
using zoned_text =
    text_type<dv_ts_tz_t, DV_TYPE_TS_TZ, dv_ts_tz_from_str, dv_ts_tz_to_str, dv_ts_tz_from_str_DEPRECATED>;
using local_text = text_type<dv_ts_ltz_t, DV_TYPE_TS_LTZ, dv_ts_ltz_from_str, dv_ts_ltz_to_str,
                             dv_ts_ltz_from_str_DEPRECATED>;

}  // namespace dv::test

#endif  // DV_TEST_TEXT_TYPE_H
