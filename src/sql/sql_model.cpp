// Compiling the datetime model of a call.

#include "sql_model.h"

#include <algorithm>
#include <cstring>
#include <span>

using namespace dv::impl;

namespace {

constexpr int _model_at = 1;
constexpr int _language_at = 2;  // where a call has one

bool has_language_(const sql_call &call) {
    return call.argc > _language_at && call.args[_language_at].kind == SQL_KIND_TEXT;
}

sql_text language_(const sql_call &call) {
    return has_language_(call) ? call.args[_language_at].text : sql_text{"AMERICAN", 8};
}

void compile_(sql_call &call, void *object, dv_type_t type, bool is_for_reading) {
    if (has_language_(call) && !sql_check_language(call, _language_at)) return;
    auto &model = *static_cast<compiled_model *>(object);
    const sql_text &fmt = call.args[_model_at].text;
    const sql_text language = language_(call);
    model.type = type;
    model.language_length = language.length;
    memcpy(model.language, language.bytes, static_cast<size_t>(language.length));
    // A length of 0 would be taken for a text that ends at its NUL, as an empty one does.
    dt_fmt_ctx_set(call.memory, &model.fmt_ctx, fmt.bytes, fmt.length, type, is_for_reading ? 1 : 0,
                   DVSTR_CHARSET_UTF8);
    sql_language_of(language);  // is it one?
    const sql_setting setting = sql_language_setting(language);
    dt_fmt_ctx_set_user_nls(call.memory, &model.fmt_ctx, setting.text,
                            static_cast<int>(strlen(setting.text)));
}

// The fields that the present would have to give: YEAR, MONTH or both.
dt_fmt_unit_t open_fields_(const dt_fmt_ctx_t &model) {
    dt_fmt_unit_t open = DT_FMT_UNIT_YEAR | DT_FMT_UNIT_MONTH;
    for (int i = 0; i < model.token_cnt; ++i) {
        const int32_t id = model.token_infos[i].id;
        if (id >= DT_FMT_TOKEN_SYYYY && id <= DT_FMT_TOKEN_RRRR && id != DT_FMT_TOKEN_Y)
            open &= ~DT_FMT_UNIT_YEAR;
        if ((id >= DT_FMT_TOKEN_MM && id <= DT_FMT_TOKEN_RM) || id == DT_FMT_TOKEN_DDD)
            open &= ~DT_FMT_UNIT_MONTH;
    }
    return open;
}
static_assert(DT_FMT_TOKEN_SYYYY + 6 == DT_FMT_TOKEN_RRRR);  // SYYYY, YYYY, YYY, YY, Y, RR, RRRR
static_assert(DT_FMT_TOKEN_MM + 3 == DT_FMT_TOKEN_RM);       // MM, MON, MONTH, RM

bool has_token_(const dt_fmt_ctx_t &model, dt_fmt_token_id_e id) {
    const std::span tokens(model.token_infos, static_cast<size_t>(model.token_cnt));
    return std::ranges::any_of(tokens, [id](const dt_fmt_token_info_t &token) { return token.id == id; });
}

bool has_lone_abbreviation_(const dt_fmt_ctx_t &model) {
    return has_token_(model, DT_FMT_TOKEN_TZD) && !has_token_(model, DT_FMT_TOKEN_TZR);
}

void make_for_writing_(sql_call &call, void *object) {
    compile_(call, object, call.args[0].kind, /*is_for_reading=*/false);
}

template <sql_kind Type>
void make_for_reading_(sql_call &call, void *object) {
    compile_(call, object, Type, /*is_for_reading=*/true);
    auto &model = *static_cast<compiled_model *>(object);
    model.open_fields = open_fields_(model.fmt_ctx);
    model.has_lone_abbreviation = has_lone_abbreviation_(model.fmt_ctx);
}

bool serves_language_(const sql_call &call, const void *object) {
    const auto &model = *static_cast<const compiled_model *>(object);
    const sql_text language = language_(call);
    return model.language_length == language.length &&
           memcmp(model.language, language.bytes, static_cast<size_t>(language.length)) == 0;
}

bool serves_writing_(const sql_call &call, const void *object) {
    return static_cast<const compiled_model *>(object)->type == call.args[0].kind &&
           serves_language_(call, object);
}

void release_(allocator_t *memory, void *object) {
    auto *model = static_cast<compiled_model *>(object);
    dt_fmt_ctx_reset(memory, &model->fmt_ctx);
    if (model->text != nullptr) memory->free(memory, model->text, "sql_model.cpp", __LINE__);
}

template <sql_kind Type>
constexpr sql_keeper _reading_keeper = {
    _model_at, sizeof(compiled_model), make_for_reading_<Type>, serves_language_,
    release_,  /*is_of_model=*/true};

}  // namespace

constinit const sql_keeper dv::impl::writing_model_keeper = {
    _model_at,           sizeof(compiled_model), make_for_writing_, serves_writing_, release_,
    /*is_of_model=*/true};
constinit const sql_keeper dv::impl::date_model_keeper = _reading_keeper<SQL_KIND_DATE>;
constinit const sql_keeper dv::impl::timestamp_model_keeper = _reading_keeper<SQL_KIND_TIMESTAMP>;
constinit const sql_keeper dv::impl::ts_tz_model_keeper = _reading_keeper<SQL_KIND_TS_TZ>;
