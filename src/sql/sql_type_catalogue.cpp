// The type catalogue in SQL: the type of a value, and the types as a table.
//
//     dv_typeof(v)                                    'INTERVAL YEAR TO MONTH'
//     SELECT name FROM dv_types WHERE size > 0

#include <cstring>
#include <iterator>
#include <string_view>

#include "dvtypes/dv_type.h"
#include "sql_catalogue.h"

using namespace dv::impl;

namespace {

// ---------------------------------------------------------------------------------------------------------
// dv_typeof
// ---------------------------------------------------------------------------------------------------------

void typeof_(sql_call &call) {
    const sql_kind kind = call.args[0].kind;
    sql_return_text(call, sql_type_of(kind) != nullptr ? _dv_type_name[kind] : sql_kind_name(kind));
}

constexpr sql_function _functions[] = {
    {{"dv_typeof", {SQL_KIND_ANY}, "v", SQL_KIND_TEXT, "the name of a value's type"}, typeof_},
};

// ---------------------------------------------------------------------------------------------------------
// dv_types
// ---------------------------------------------------------------------------------------------------------

enum column_e { COLUMN_CODE, COLUMN_ENUMERATOR, COLUMN_NAME, COLUMN_SIZE, COLUMN_INFO, COLUMN_CATEGORIES };
constexpr sql_column _columns[] = {
    {"code", SQL_KIND_INTEGER}, {"enumerator", SQL_KIND_TEXT}, {"name", SQL_KIND_TEXT},
    {"size", SQL_KIND_INTEGER}, {"info", SQL_KIND_INTEGER},    {"categories", SQL_KIND_TEXT},
};
static_assert(std::size(_columns) == COLUMN_CATEGORIES + 1);

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

void begin_(sql_call &, sql_rows &walk) { walk.rows = DV_TYPE_MAX_PSM; }

// "character limited national"
void return_categories_(sql_call &call, int info) {
    static_assert(_categories_size <= SQL_ROOM_SIZE);
    char *end = call.room;
    for (const sql_word &category : _categories) {
        if ((info & category.meaning) == 0) continue;
        if (end != call.room) *end++ = ' ';
        const size_t length = strlen(category.text);
        memcpy(end, category.text, length);
        end += length;
    }
    sql_return_room(call, end);
}

void field_(sql_call &call, const sql_rows &, int64_t code, int column) {
    switch (column) {
        case COLUMN_CODE:
            return sql_return(call, sql_integer(code));
        case COLUMN_ENUMERATOR:
            return sql_return_text(call, _dv_type_str[code]);
        case COLUMN_NAME:
            return sql_return_text(call, _dv_type_name[code]);
        case COLUMN_SIZE:
            return sql_return(call, sql_integer(_dv_type_fixed_size[code]));
        case COLUMN_INFO:
            return sql_return(call, sql_integer(_dv_type_info[code]));
        default:
            return return_categories_(call, _dv_type_info[code]);
    }
}

}  // namespace

constinit const sql_function_table dv::impl::type_functions = _functions;

// The rows are the type codes.
constinit const sql_table dv::impl::types_table = {
    {"dv_types", {}, "", SQL_KIND_NONE, "all SQL and stored-procedure types"},
    _columns,
    begin_,
    field_,
};
