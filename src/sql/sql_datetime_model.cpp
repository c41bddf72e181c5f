// Dates, times and timestamps under format models in SQL: to_char.

#include "sql_datetime.h"
#include "sql_model.h"

using namespace dv::impl;

namespace {

// Room for a text, twice what there was. False when the text is too long for any engine: the call has failed.
bool grow_text_(sql_call &call, compiled_model &model) {
    constexpr int longest = 1 << 29;
    if (model.text_size > longest) {
        call.outcome = SQL_TOO_LONG;
        return false;
    }
    const int first = 64 + dt_fmt_get_predicted_str_len(&model.fmt_ctx, SQL_FRACTION_DIGITS) % longest;
    const int size = model.text_size == 0 ? first : 2 * model.text_size;
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
    if (model.text == nullptr && !grow_text_(call, model)) return;
    model.text[model.text_size - 1] = '\0';
    // A text that fills the buffer has no NUL, so such a text is written again too.
    while (write_(call, model) != CONV_STATUS_WHOLE || model.text[model.text_size - 1] != '\0') {
        if (!grow_text_(call, model)) return;
        model.text[model.text_size - 1] = '\0';
    }
    sql_return_text(call, model.text);
}

// The rows of a type.
template <sql_kind Kind>
constexpr sql_function _rows_of[] = {
    {{"to_char", {Kind, SQL_KIND_TEXT}, "v, model", SQL_KIND_TEXT, "as text under a format model"},
     to_char_,
     SQL_IMMUTABLE,
     &writing_model_keeper},
    {{"to_char",
      {Kind, SQL_KIND_TEXT, SQL_KIND_TEXT},
      "v, model, language",
      SQL_KIND_TEXT,
      "the same in a language"},
     to_char_,
     SQL_IMMUTABLE,
     &writing_model_keeper},
};
constexpr auto _functions = sql_join<_rows_of<SQL_KIND_DATE>, _rows_of<SQL_KIND_TIME>,
                                     _rows_of<SQL_KIND_TIMESTAMP>, _rows_of<SQL_KIND_TS_TZ>>();

}  // namespace

constinit const sql_function_table dv::impl::datetime_model_functions = _functions;
