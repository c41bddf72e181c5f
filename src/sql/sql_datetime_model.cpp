// Dates, times and timestamps under format models in SQL: to_char, and truncation and rounding to a unit.

#include "sql_datetime.h"
#include "sql_model.h"

using namespace dv::impl;

namespace {

// ---------------------------------------------------------------------------------------------------------
// Writing
// ---------------------------------------------------------------------------------------------------------

// Room for a text, twice what there was. False when the text is too long for any engine: the call has failed.
bool grow_text_(sql_call &call, compiled_model &model, int predicted) {
    constexpr int longest = 1 << 29;
    if (model.text_size > longest) {
        call.outcome = SQL_TOO_LONG;
        return false;
    }
    const int size = model.text_size == 0 ? 64 + predicted % longest : 2 * model.text_size;
    model.text = static_cast<char *>(sql_resize(call.memory, model.text, static_cast<size_t>(size)));
    model.text_size = size;
    return true;
}

long write_(const sql_call &call, const compiled_model &model) {
    const sql_value &value = call.args[0];
    char *const text = model.text;
    const int size = model.text_size;
    switch (value.kind) {
        case SQL_KIND_TIME:
            return dv_time_to_str(&value.time, text, size, &model.fmt_ctx, SQL_FRACTION_DIGITS);
        case SQL_KIND_TIMESTAMP:
            return dv_timestamp_to_str(&value.timestamp, text, size, &model.fmt_ctx, SQL_FRACTION_DIGITS);
        case SQL_KIND_TS_TZ:
            return dv_ts_tz_to_str(&value.ts_tz, text, size, &model.fmt_ctx, SQL_FRACTION_DIGITS);
        default:
            return dv_date_to_str(&value.date, text, size, &model.fmt_ctx);
    }
}

void to_char_(sql_call &call) {
    compiled_model &model = sql_model_of(call);
    const int predicted = dt_fmt_get_predicted_str_len(&model.fmt_ctx, SQL_FRACTION_DIGITS);
    if (model.text == nullptr && !grow_text_(call, model, predicted)) return;
    model.text[model.text_size - 1] = '\0';
    // A text that fills the buffer has no NUL, so such a text is written again too.
    while (write_(call, model) != CONV_STATUS_WHOLE || model.text[model.text_size - 1] != '\0') {
        if (!grow_text_(call, model, predicted)) return;
        model.text[model.text_size - 1] = '\0';
    }
    sql_return_text(call, model.text);
}

// ---------------------------------------------------------------------------------------------------------
// Truncation and rounding
// ---------------------------------------------------------------------------------------------------------

template <void (*Operation)(dv_date_t *, const char *, int)>
void to_day_(sql_call &call) {
    Operation(&call.args[0].date, nullptr, 0);
    sql_return_date(call, call.args[0].date);
}

template <void (*Operation)(dv_date_t *, const char *, int)>
void to_unit_(sql_call &call) {
    const sql_text &unit = call.args[1].text;
    Operation(&call.args[0].date, unit.bytes, unit.length);
    sql_return_date(call, call.args[0].date);
}

constexpr sql_kind _date = SQL_KIND_DATE;
constexpr sql_kind _text = SQL_KIND_TEXT;

constexpr sql_function _functions[] = {
    {{"to_char", {SQL_KIND_DATE, _text}, "v, model", _text, "as text under a format model"},
     to_char_,
     SQL_IMMUTABLE,
     &writing_model_keeper},
    {{"to_char", {SQL_KIND_DATE, _text, _text}, "v, model, language", _text, "the same in a language"},
     to_char_,
     SQL_IMMUTABLE,
     &writing_model_keeper},
    {{"to_char", {SQL_KIND_TIME, _text}, "v, model", _text, "as text under a format model"},
     to_char_,
     SQL_IMMUTABLE,
     &writing_model_keeper},
    {{"to_char", {SQL_KIND_TIME, _text, _text}, "v, model, language", _text, "the same in a language"},
     to_char_,
     SQL_IMMUTABLE,
     &writing_model_keeper},
    {{"to_char", {SQL_KIND_TIMESTAMP, _text}, "v, model", _text, "as text under a format model"},
     to_char_,
     SQL_IMMUTABLE,
     &writing_model_keeper},
    {{"to_char", {SQL_KIND_TIMESTAMP, _text, _text}, "v, model, language", _text, "the same in a language"},
     to_char_,
     SQL_IMMUTABLE,
     &writing_model_keeper},
    {{"to_char", {SQL_KIND_TS_TZ, _text}, "v, model", _text, "as text under a format model"},
     to_char_,
     SQL_IMMUTABLE,
     &writing_model_keeper},
    {{"to_char", {SQL_KIND_TS_TZ, _text, _text}, "v, model, language", _text, "the same in a language"},
     to_char_,
     SQL_IMMUTABLE,
     &writing_model_keeper},
    {{"dv_trunc", {_date}, "d", _date, "the beginning of the day"}, to_day_<dv_date_trunc>},
    {{"dv_trunc", {_date, _text}, "d, unit", _date, "the beginning of the unit"}, to_unit_<dv_date_trunc>},
    {{"dv_round", {_date}, "d", _date, "the nearer beginning of a day"}, to_day_<dv_date_round>},
    {{"dv_round", {_date, _text}, "d, unit", _date, "the nearer beginning of a unit"},
     to_unit_<dv_date_round>},
};

}  // namespace

constinit const sql_function_table dv::impl::datetime_model_functions = _functions;
