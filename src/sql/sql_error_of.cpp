// dv_error_of: why a conversion of a text fails.
//
//     SELECT line, dv_error_of('to_date', text, 'DD.MM.YYYY') FROM staging WHERE try_to_date(text,
//     'DD.MM.YYYY') IS NULL

#include <cstdio>
#include <cstring>
#include <iterator>

#include "sql_overload.h"
#include "sql_try.h"

using namespace dv::impl;

namespace {

// A conversion on trial, and what its row keeps.
struct trial {
    const sql_function &row;
    sql_call call;
    void *object;
};

void run_(void *arg) {
    auto &[row, call, object] = *static_cast<trial *>(arg);
    if (row.keeper != nullptr) row.keeper->make(call, object);
    if (call.outcome != SQL_GIVEN) return;
    call.kept = object;
    sql_convert(call, row.signature);
    row.body(call);
}

// Runs the conversion; 0, or the code that it raised.
int try_(trial &of, dv_error_t &error) {
    allocator_t *const memory = of.call.memory;
    const sql_keeper *keeper = of.row.keeper;
    if (keeper != nullptr) {
        of.object = sql_resize(memory, nullptr, keeper->size);
        memset(of.object, 0, keeper->size);
    }
    const int code = dv_protect(run_, &of, &error);
    if (keeper != nullptr) {
        keeper->release(memory, of.object);
        memory->free(memory, of.object, "sql_error_of.cpp", __LINE__);
    }
    if (code == DV_ERR_NO_MEMORY) dv_rethrow(&error);
    return code;
}

// The row of a conversion of texts alone. NULL: it takes another number of them.
const sql_function *row_of_(const char *name, int texts) {
    const sql_function *found = nullptr;
    sql_for_each(catalogue.functions, [&](const sql_function &row) {
        const sql_signature &signature = row.signature;
        bool is_it = strcmp(signature.name, name) == 0 && sql_param_count(signature) == texts;
        for (int i = 0; i < texts; ++i) is_it = is_it && signature.params[i] == SQL_KIND_TEXT;
        if (is_it) found = &row;
    });
    return found;
}

// The name of the conversion, of the catalogue's own; NULL when the first argument is none: the call has
// failed.
const char *name_(sql_call &call) {
    sql_word words[std::size(SQL_TRY_NAMES)];
    for (size_t i = 0; i < std::size(words); ++i) words[i] = {SQL_TRY_NAMES[i][0], static_cast<int>(i) + 1};
    const int number = sql_get_word(call, 0, words);
    return number == 0 ? nullptr : SQL_TRY_NAMES[number - 1][0];
}

void error_of_(sql_call &call) {
    const char *name = name_(call);
    if (name == nullptr) return;
    const int texts = call.argc - 1;
    const sql_function *row = row_of_(name, texts);
    if (row == nullptr) return sql_fail(call, "%s takes no %d texts", name, texts);

    trial of = {*row, {}, nullptr};
    sql_begin(of.call, call.memory);
    for (int i = 0; i < texts; ++i) of.call.args[of.call.argc++] = call.args[i + 1];
    dv_error_t error;
    const int code = try_(of, error);
    if (code != 0) {
        snprintf(call.room, sizeof call.room, "%s (dv%d in %s)", error.message, code, error.function);
        sql_return_text(call, call.room);
    } else if (of.call.outcome == SQL_FAILED) {
        static_assert(SQL_FAILURE_SIZE <= SQL_ROOM_SIZE);
        memcpy(call.room, of.call.failure, strlen(of.call.failure) + 1);
        sql_return_text(call, call.room);
    }
}

constexpr sql_kind _text = SQL_KIND_TEXT;
constexpr char _manual[] =
    "why the conversion of that name fails: message, code, function; SQL NULL where it does not";

constexpr sql_function _functions[] = {
    {{"dv_error_of", {_text, _text}, "function, v", _text, _manual}, error_of_},
    {{"dv_error_of", {_text, _text, _text}, "function, v, model", _text, _manual}, error_of_},
    {{"dv_error_of", {_text, _text, _text, _text}, "function, v, model, language", _text, _manual},
     error_of_},
};

}  // namespace

constinit const sql_function_table dv::impl::error_functions = _functions;
