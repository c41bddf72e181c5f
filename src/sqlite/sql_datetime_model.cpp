// Dates, times and timestamps under format models in SQL: to_char, to_date, to_timestamp, to_timestamp_tz,
// and truncation and rounding to a unit.
//
// A model is compiled once per statement: SQLite keeps it with the call's model argument as long as that is a
// constant. What is kept also holds the buffer for the texts written under it, so that a raise leaves nothing
// behind. The models of calls without one are compiled once per connection.

#include <cstring>

#include "sql_datetime.h"

using namespace dv::impl;

namespace {

// ---------------------------------------------------------------------------------------------------------
// Compiled models
// ---------------------------------------------------------------------------------------------------------

struct compiled_model {
    dt_fmt_ctx_t fmt_ctx;
    dv_type_t type;  // what it was compiled for
    char *setting;   // language setting, NUL ended
    char *text;      // buffer for writing
    int text_size;
};

void release_(void *kept) {
    auto *model = static_cast<compiled_model *>(kept);
    dt_fmt_ctx_reset(_system_allocator, &model->fmt_ctx);
    sqlite3_free(model->setting);
    sqlite3_free(model->text);
    sqlite3_free(model);
}

struct compilation {
    compiled_model &model;
    sql_text fmt;
    bool is_for_reading;
};

// Runs under a recovery point of its own. A setting without "=" is the name of a language.
void compile_(void *arg) {
    const auto &[model, fmt, is_for_reading] = *static_cast<compilation *>(arg);
    // A length of 0 would be taken for a text that ends at its NUL, as this one does.
    dt_fmt_ctx_set(_system_allocator, &model.fmt_ctx, fmt.bytes, fmt.length, model.type,
                   is_for_reading ? 1 : 0, DVSTR_CHARSET_UTF8);
    char language[DV_NLS_TEXT_MAX + 1];
    sqlite3_snprintf(sizeof language, language, "%s%s",
                     strchr(model.setting, '=') == nullptr ? "NLS_DATE_LANGUAGE=" : "", model.setting);
    dt_fmt_ctx_set_user_nls(_system_allocator, &model.fmt_ctx, language, static_cast<int>(strlen(language)));
}

// NULL: there is no memory for it.
compiled_model *new_model_(dv_type_t type, const char *setting) {
    auto *model = static_cast<compiled_model *>(sqlite3_malloc(sizeof(compiled_model)));
    if (model == nullptr) return nullptr;
    *model = {};
    model->type = type;
    model->setting = sqlite3_mprintf("%s", setting);
    if (model->setting != nullptr) return model;
    release_(model);
    return nullptr;
}

// The model of a call, in argument 1, for values of a type; a language setting may follow it. NULL: the call
// has failed for want of memory. Raises what compiling raises.
compiled_model *model_of_(const sql_call &call, dv_type_t type, bool is_for_reading) {
    constexpr int position = 1;
    const char *setting = call.argc > position + 1 ? call.args[position + 1].text.bytes : "AMERICAN";
    auto *kept = static_cast<compiled_model *>(sqlite3_get_auxdata(call.context, position));
    if (kept != nullptr && kept->type == type && strcmp(kept->setting, setting) == 0) return kept;

    compiled_model *made = new_model_(type, setting);
    if (made != nullptr) {
        compilation request = {*made, call.args[position].text, is_for_reading};
        dv_error_t error;
        if (dv_protect(compile_, &request, &error) != 0) {
            release_(made);
            dv_rethrow(&error);
        }
        sqlite3_set_auxdata(call.context, position, made, release_);  // may release it at once
        made = static_cast<compiled_model *>(sqlite3_get_auxdata(call.context, position));
    }
    if (made == nullptr) sqlite3_result_error_nomem(call.context);
    return made;
}

// ---------------------------------------------------------------------------------------------------------
// Models of texts that are read without one: what dv_text writes
// ---------------------------------------------------------------------------------------------------------

struct default_model {
    dv_type_t type;
    const char *fmt;
};
constexpr default_model _date_default = {SQL_KIND_DATE, "SYYYY-MM-DD HH24:MI:SS"};
constexpr default_model _timestamp_default = {SQL_KIND_TIMESTAMP, "SYYYY-MM-DD HH24:MI:SS.FF9"};
constexpr default_model _ts_tz_default = {SQL_KIND_TS_TZ, "SYYYY-MM-DD HH24:MI:SS.FF9 TZR TZD"};

void release_default_(void *kept) {
    dt_fmt_ctx_reset(_system_allocator, static_cast<dt_fmt_ctx_t *>(kept));
    sqlite3_free(kept);
}

template <const default_model &Default>
void compile_default_(void *kept) {
    dt_fmt_ctx_set(_system_allocator, static_cast<dt_fmt_ctx_t *>(kept), Default.fmt, /*fmt_len=*/0,
                   Default.type, /*is_from_str=*/1, DVSTR_CHARSET_UTF8);
}

// What it may raise is want of memory.
template <const default_model &Default>
void *make_default_() {
    auto *model = static_cast<dt_fmt_ctx_t *>(sqlite3_malloc(sizeof(dt_fmt_ctx_t)));
    if (model == nullptr) return nullptr;
    *model = {};
    dv_error_t error;
    if (dv_protect(compile_default_<Default>, model, &error) == 0) return model;
    release_default_(model);
    return nullptr;
}

template <const default_model &Default>
constexpr sql_keeper _keeper_of = {make_default_<Default>, release_default_};

const dt_fmt_ctx_t &default_of_(const sql_call &call) {
    return *static_cast<const dt_fmt_ctx_t *>(call.kept);
}

// ---------------------------------------------------------------------------------------------------------
// Writing and reading
// ---------------------------------------------------------------------------------------------------------

// Room for a text, twice what there was. False when there is no memory, or the text is too long for SQLite.
bool grow_text_(const sql_call &call, compiled_model &model, int predicted) {
    constexpr int longest = 1 << 29;
    if (model.text_size > longest) {
        sqlite3_result_error_toobig(call.context);
        return false;
    }
    const int size = model.text_size == 0 ? 64 + predicted % longest : 2 * model.text_size;
    auto *text = static_cast<char *>(sqlite3_realloc(model.text, size));
    if (text == nullptr) {
        sqlite3_result_error_nomem(call.context);
        return false;
    }
    model.text = text;
    model.text_size = size;
    return true;
}

constexpr int _fraction_digits = 9;  // of a TIME or TIMESTAMP in SQL

long write_(const sql_call &call, compiled_model &model) {
    const sql_value &value = call.args[0];
    char *const text = model.text;
    const int size = model.text_size;
    switch (value.kind) {
        case SQL_KIND_TIME:
            return dv_time_to_str(&value.time, text, size, &model.fmt_ctx, _fraction_digits);
        case SQL_KIND_TIMESTAMP:
            return dv_timestamp_to_str(&value.timestamp, text, size, &model.fmt_ctx, _fraction_digits);
        case SQL_KIND_TS_TZ:
            return dv_ts_tz_to_str(&value.ts_tz, text, size, &model.fmt_ctx, _fraction_digits);
        default:
            return dv_date_to_str(&value.date, text, size, &model.fmt_ctx);
    }
}

void to_char_(sql_call &call) {
    compiled_model *model = model_of_(call, call.args[0].kind, /*is_for_reading=*/false);
    if (model == nullptr) return;
    const int predicted = dt_fmt_get_predicted_str_len(&model->fmt_ctx, _fraction_digits);
    if (model->text == nullptr && !grow_text_(call, *model, predicted)) return;
    model->text[model->text_size - 1] = '\0';
    // A text that fills the buffer has no NUL, so such a text is written again too.
    while (write_(call, *model) != CONV_STATUS_WHOLE || model->text[model->text_size - 1] != '\0') {
        if (!grow_text_(call, *model, predicted)) return;
        model->text[model->text_size - 1] = '\0';
    }
    sql_return(call.context, sql_text_value(model->text, static_cast<int>(strlen(model->text))));
}

void to_date_(sql_call &call) {
    const compiled_model *model = model_of_(call, SQL_KIND_DATE, /*is_for_reading=*/true);
    if (model == nullptr) return;
    dv_date_t date;
    const sql_text &text = call.args[0].text;
    dv_date_from_str(&date, text.bytes, text.length, &model->fmt_ctx);
    sql_return_date(call, date);
}

void to_date_by_default_(sql_call &call) {
    dv_date_t date;
    const sql_text &text = call.args[0].text;
    dv_date_from_str(&date, text.bytes, text.length, &default_of_(call));
    sql_return_date(call, date);
}

void to_timestamp_(sql_call &call) {
    const compiled_model *model = model_of_(call, SQL_KIND_TIMESTAMP, /*is_for_reading=*/true);
    if (model == nullptr) return;
    dv_timestamp_t ts;
    const sql_text &text = call.args[0].text;
    dv_timestamp_from_str(&ts, text.bytes, text.length, &model->fmt_ctx, _fraction_digits);
    sql_return_timestamp(call, ts);
}

void to_timestamp_by_default_(sql_call &call) {
    dv_timestamp_t ts;
    const sql_text &text = call.args[0].text;
    dv_timestamp_from_str(&ts, text.bytes, text.length, &default_of_(call), _fraction_digits);
    sql_return_timestamp(call, ts);
}

void to_ts_tz_(sql_call &call) {
    const compiled_model *model = model_of_(call, SQL_KIND_TS_TZ, /*is_for_reading=*/true);
    if (model == nullptr) return;
    dv_ts_tz_t ts_tz;
    const sql_text &text = call.args[0].text;
    dv_ts_tz_from_str(&ts_tz, text.bytes, text.length, &model->fmt_ctx, _fraction_digits, &SQL_UTC);
    sql_return_ts_tz(call, ts_tz);
}

void to_ts_tz_by_default_(sql_call &call) {
    dv_ts_tz_t ts_tz;
    const sql_text &text = call.args[0].text;
    dv_ts_tz_from_str(&ts_tz, text.bytes, text.length, &default_of_(call), _fraction_digits, &SQL_UTC);
    sql_return_ts_tz(call, ts_tz);
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
constexpr sql_kind _time = SQL_KIND_TIME;
constexpr sql_kind _timestamp = SQL_KIND_TIMESTAMP;
constexpr sql_kind _ts_tz = SQL_KIND_TS_TZ;
constexpr sql_kind _text = SQL_KIND_TEXT;

constexpr sql_function _functions[] = {
    {"to_char", {_date, _text}, to_char_},
    {"to_char", {_date, _text, _text}, to_char_},
    {"to_char", {_time, _text}, to_char_},
    {"to_char", {_time, _text, _text}, to_char_},
    {"to_char", {_timestamp, _text}, to_char_},
    {"to_char", {_timestamp, _text, _text}, to_char_},
    {"to_char", {_ts_tz, _text}, to_char_},
    {"to_char", {_ts_tz, _text, _text}, to_char_},
    {"to_timestamp_tz", {_text}, to_ts_tz_by_default_, SQL_ON_ARGUMENTS, &_keeper_of<_ts_tz_default>},
    {"to_timestamp_tz", {_ts_tz}, sql_return_argument},
    {"to_timestamp_tz", {_text, _text}, to_ts_tz_},
    {"to_timestamp_tz", {_text, _text, _text}, to_ts_tz_},
    {"to_timestamp", {_text}, to_timestamp_by_default_, SQL_ON_ARGUMENTS, &_keeper_of<_timestamp_default>},
    {"to_timestamp", {_timestamp}, sql_return_argument},
    {"to_timestamp", {_text, _text}, to_timestamp_},
    {"to_timestamp", {_text, _text, _text}, to_timestamp_},
    {"to_date", {_text}, to_date_by_default_, SQL_ON_ARGUMENTS, &_keeper_of<_date_default>},
    {"to_date", {_date}, sql_return_argument},
    {"to_date", {_text, _text}, to_date_},
    {"to_date", {_text, _text, _text}, to_date_},
    {"dv_trunc", {_date}, to_day_<dv_date_trunc>},
    {"dv_trunc", {_date, _text}, to_unit_<dv_date_trunc>},
    {"dv_round", {_date}, to_day_<dv_date_round>},
    {"dv_round", {_date, _text}, to_unit_<dv_date_round>},
};

}  // namespace

constinit const sql_function_table dv::impl::datetime_model_functions = _functions;
