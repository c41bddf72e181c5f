// The type catalogue in SQL: the type of a value, and the types as a table.
//
//     dv_typeof(v)                                    'INTERVAL YEAR TO MONTH'
//     SELECT name FROM dv_types WHERE size > 0        dv_types(code, enumerator, name, size, info,
//     categories)

#include <cstring>
#include <string_view>

#include "dvtypes/dv_type.h"
#include "sql_function.h"
#include "sql_table.h"

using namespace dv::impl;

namespace {

// ---------------------------------------------------------------------------------------------------------
// dv_typeof
// ---------------------------------------------------------------------------------------------------------

void typeof_(sql_call &call) {
    const sql_kind kind = call.args[0].kind;
    const char *name = sql_type_of(kind) != nullptr ? _dv_type_name[kind] : sql_kind_name(kind);
    sqlite3_result_text(call.context, name, -1, SQLITE_STATIC);
}

constexpr sql_function _functions[] = {{"dv_typeof", {SQL_KIND_ANY}, typeof_}};

// ---------------------------------------------------------------------------------------------------------
// dv_types
// ---------------------------------------------------------------------------------------------------------

enum column_e { COLUMN_CODE, COLUMN_ENUMERATOR, COLUMN_NAME, COLUMN_SIZE, COLUMN_INFO, COLUMN_CATEGORIES };

// The categories in the order of their bits.
constexpr sql_word _categories[] = {
    {"numeric", DV_TYPE_INFO_NUMERIC},   {"character", DV_TYPE_INFO_CHARACTER},
    {"binary", DV_TYPE_INFO_BINARY},     {"datetime", DV_TYPE_INFO_DATETIME},
    {"interval", DV_TYPE_INFO_INTERVAL}, {"long", DV_TYPE_INFO_LONG},
    {"lob", DV_TYPE_INFO_LOB},           {"varying", DV_TYPE_INFO_VARYING},
    {"limited", DV_TYPE_INFO_LIMITED},   {"large", DV_TYPE_INFO_LARGE},
    {"national", DV_TYPE_INFO_NATIONAL},
};

// Of all of them with a blank behind each.
constexpr size_t _categories_size = [] {
    size_t size = 0;
    for (const sql_word &category : _categories) size += std::string_view(category.text).size() + 1;
    return size;
}();

int begin_(sqlite3_value *, sql_rows &walk, char *&) {
    walk = {nullptr, DV_TYPE_MAX_PSM};
    return SQLITE_OK;
}

// "character limited national"
void return_categories_(sqlite3_context *context, int info) {
    char text[_categories_size];
    char *end = text;
    for (const sql_word &category : _categories) {
        if ((info & category.meaning) == 0) continue;
        if (end != text) *end++ = ' ';
        const size_t length = strlen(category.text);
        memcpy(end, category.text, length);
        end += length;
    }
    sqlite3_result_text(context, text, static_cast<int>(end - text), SQLITE_TRANSIENT);
}

void column_(sqlite3_context *context, const void *, int code, int column) {
    switch (column) {
        case COLUMN_CODE:
            return sqlite3_result_int(context, code);
        case COLUMN_ENUMERATOR:
            return sqlite3_result_text(context, _dv_type_str[code], -1, SQLITE_STATIC);
        case COLUMN_NAME:
            return sqlite3_result_text(context, _dv_type_name[code], -1, SQLITE_STATIC);
        case COLUMN_SIZE:
            return sqlite3_result_int(context, _dv_type_fixed_size[code]);
        case COLUMN_INFO:
            return sqlite3_result_int(context, _dv_type_info[code]);
        default:
            return return_categories_(context, _dv_type_info[code]);
    }
}

}  // namespace

constinit const sql_function_table dv::impl::type_functions = _functions;

// The rows are the type codes.
constinit const sql_table dv::impl::types_table = {
    "dv_types",
    "CREATE TABLE x(code INTEGER, enumerator TEXT, name TEXT, size INTEGER, info INTEGER, categories TEXT)",
    /*param_column=*/-1,
    begin_,
    column_,
};
