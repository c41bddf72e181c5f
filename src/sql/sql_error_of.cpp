// dv_error_of: why a conversion of a text fails.
//
//     SELECT line, dv_error_of('to_date', text, 'DD.MM.YYYY') FROM staging WHERE try_to_date(text,
//     'DD.MM.YYYY') IS NULL

#include <cstdio>
#include <cstring>
#include <iterator>

#include "sql_explain.h"
#include "sql_run.h"
#include "sql_try.h"

using namespace dv::impl;

namespace {

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

    sql_call tried;
    sql_begin(tried, call.memory);
    for (int i = 0; i < texts; ++i) tried.args[tried.argc++] = call.args[i + 1];
    dv_error_t error;
    const int code = sql_run(*row, tried, error);
    if (code == 0 && tried.outcome == SQL_GIVEN) return;
    if (code != 0 && !sql_explain(tried, *row, error))
        call.memory->throw_(call.memory, "sql_error_of.cpp", __LINE__);
    const int length = snprintf(call.room, sizeof call.room, "%s", tried.failure);
    if (code != 0)
        snprintf(call.room + length, sizeof call.room - static_cast<size_t>(length), " (dv%d in %s)", code,
                 error.function);
    sql_return_text(call, call.room);
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
