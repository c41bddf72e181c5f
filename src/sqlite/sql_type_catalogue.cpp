// The type catalogue in SQL: the type of a value, and the types as a table.
//
//     dv_typeof(v)                                    'INTERVAL YEAR TO MONTH'
//     SELECT name FROM dv_types WHERE size > 0        dv_types(code, enumerator, name, size, info,
//     categories)
//
// dv_types is an eponymous virtual table: there without being created, read only. Its cursor is a type code,
// which is the rowid, too.

#include <cstring>
#include <string_view>

#include "dvtypes/dv_type.h"
#include "sql_function.h"

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

constexpr char _declaration[] =
    "CREATE TABLE x(code INTEGER, enumerator TEXT, name TEXT, size INTEGER, info INTEGER, categories TEXT)";
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

struct cursor_t {
    sqlite3_vtab_cursor base;  // SQLite's part comes first
    int code;
};

cursor_t &cursor_of_(sqlite3_vtab_cursor *base) { return *reinterpret_cast<cursor_t *>(base); }

// A new, zeroed object of which SQLite's part is given out; the rest is released with it.
template <typename Object, typename Base>
int allocate_(Base **base) {
    auto *object = static_cast<Object *>(sqlite3_malloc(sizeof(Object)));
    if (object == nullptr) return SQLITE_NOMEM;
    *object = {};
    *base = reinterpret_cast<Base *>(object);
    return SQLITE_OK;
}

int connect_(sqlite3 *db, void *, int, const char *const *, sqlite3_vtab **table, char **) {
    sqlite3_vtab_config(db, SQLITE_VTAB_INNOCUOUS);
    const int code = sqlite3_declare_vtab(db, _declaration);
    return code != SQLITE_OK ? code : allocate_<sqlite3_vtab>(table);
}

int disconnect_(sqlite3_vtab *table) {
    sqlite3_free(table);
    return SQLITE_OK;
}

// Always the whole table; SQLite filters.
int best_index_(sqlite3_vtab *, sqlite3_index_info *info) {
    info->estimatedCost = DV_TYPE_MAX_PSM;
    info->estimatedRows = DV_TYPE_MAX_PSM;
    return SQLITE_OK;
}

int open_(sqlite3_vtab *, sqlite3_vtab_cursor **cursor) { return allocate_<cursor_t>(cursor); }

int close_(sqlite3_vtab_cursor *cursor) {
    sqlite3_free(cursor);
    return SQLITE_OK;
}

int filter_(sqlite3_vtab_cursor *cursor, int, const char *, int, sqlite3_value **) {
    cursor_of_(cursor).code = 0;
    return SQLITE_OK;
}

int next_(sqlite3_vtab_cursor *cursor) {
    ++cursor_of_(cursor).code;
    return SQLITE_OK;
}

int eof_(sqlite3_vtab_cursor *cursor) { return cursor_of_(cursor).code >= DV_TYPE_MAX_PSM ? 1 : 0; }

int rowid_(sqlite3_vtab_cursor *cursor, sqlite3_int64 *rowid) {
    *rowid = cursor_of_(cursor).code;
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

int column_(sqlite3_vtab_cursor *cursor, sqlite3_context *context, int column) {
    const int code = cursor_of_(cursor).code;
    switch (column) {
        case COLUMN_CODE:
            sqlite3_result_int(context, code);
            break;
        case COLUMN_ENUMERATOR:
            sqlite3_result_text(context, _dv_type_str[code], -1, SQLITE_STATIC);
            break;
        case COLUMN_NAME:
            sqlite3_result_text(context, _dv_type_name[code], -1, SQLITE_STATIC);
            break;
        case COLUMN_SIZE:
            sqlite3_result_int(context, _dv_type_fixed_size[code]);
            break;
        case COLUMN_INFO:
            sqlite3_result_int(context, _dv_type_info[code]);
            break;
        case COLUMN_CATEGORIES:
            return_categories_(context, _dv_type_info[code]);
            break;
        default:
            return SQLITE_ERROR;
    }
    return SQLITE_OK;
}

// No xCreate: eponymous only. No xUpdate: read only.
constexpr sqlite3_module _types_module = [] {
    sqlite3_module module{};
    module.xConnect = connect_;
    module.xDisconnect = disconnect_;
    module.xBestIndex = best_index_;
    module.xOpen = open_;
    module.xClose = close_;
    module.xFilter = filter_;
    module.xNext = next_;
    module.xEof = eof_;
    module.xColumn = column_;
    module.xRowid = rowid_;
    return module;
}();

}  // namespace

constinit const sql_function_table dv::impl::type_functions = _functions;

int dv::impl::sql_register_type_table(sqlite3 *db) {
    return sqlite3_create_module(db, "dv_types", &_types_module, nullptr);
}
