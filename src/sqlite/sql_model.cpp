// Compiling the datetime model of a call, and keeping it.

#include "sql_model.h"

#include <cstring>

using namespace dv::impl;

namespace {

void *malloc_(allocator_t *, size_t size, const char *, int) { return sqlite3_malloc64(size); }

void *calloc_(allocator_t *, size_t count, size_t size, const char *, int) {
    void *block = sqlite3_malloc64(count * size);  // an element of a model takes 40 bytes
    if (block != nullptr) memset(block, 0, count * size);
    return block;
}

void *realloc_(allocator_t *, void *block, size_t size, const char *, int) {
    return sqlite3_realloc64(block, size);
}

void free_(allocator_t *, void *block, const char *, int) { sqlite3_free(block); }

void throw_(allocator_t *, const char *file, int line) {
    dv_err_and_jmp(file, line, "throw_", 0, 0, DV_ERR_NO_MEMORY);
}

void release_(void *kept) {
    auto *model = static_cast<compiled_model *>(kept);
    dt_fmt_ctx_reset(&sql_allocator, &model->fmt_ctx);
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
    dt_fmt_ctx_set(&sql_allocator, &model.fmt_ctx, fmt.bytes, fmt.length, model.type, is_for_reading ? 1 : 0,
                   DVSTR_CHARSET_UTF8);
    char language[DV_NLS_TEXT_MAX + 1];
    sqlite3_snprintf(sizeof language, language, "%s%s",
                     strchr(model.setting, '=') == nullptr ? SQL_LANGUAGE_SETTING : "", model.setting);
    dt_fmt_ctx_set_user_nls(&sql_allocator, &model.fmt_ctx, language, static_cast<int>(strlen(language)));
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

}  // namespace

constinit allocator_t dv::impl::sql_allocator = {malloc_, calloc_, realloc_, free_, throw_};

compiled_model *dv::impl::sql_model_of(const sql_call &call, dv_type_t type, bool is_for_reading) {
    constexpr int position = 1;
    const bool has_setting = call.argc > position + 1 && call.args[position + 1].kind == SQL_KIND_TEXT;
    if (has_setting && !sql_check_setting(call, position + 1)) return nullptr;
    const char *setting = has_setting ? call.args[position + 1].text.bytes : "AMERICAN";
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
