// Tables of the catalogue as virtual tables: read only, there without being created. Parameters are hidden
// columns behind the others.

#include "sql_overload.h"
#include "sqlite_register.h"
#include "sqlite_value.h"

using namespace dv::impl;

namespace {

struct table_t {
    sqlite3_vtab base;  // SQLite's part comes first
    const sql_table *table;
};

struct cursor_t {
    sqlite3_vtab_cursor base;
    sql_rows walk;
    int row;
};

constexpr int _usual_rows = 1000;

cursor_t &cursor_of_(sqlite3_vtab_cursor *base) { return *reinterpret_cast<cursor_t *>(base); }
const sql_table &table_of_(const sqlite3_vtab *base) {
    return *reinterpret_cast<const table_t *>(base)->table;
}

// A new, zeroed object; NULL: there is no memory.
template <typename Object>
Object *allocate_() {
    auto *object = static_cast<Object *>(sqlite3_malloc(sizeof(Object)));
    if (object != nullptr) *object = {};
    return object;
}

// CREATE TABLE x(name TEXT, ..., zone TEXT HIDDEN); NULL: there is no memory for it.
char *declaration_(const sql_table &table) {
    sqlite3_str *text = sqlite3_str_new(nullptr);
    const char *separator = "CREATE TABLE x(";
    for (const sql_column &column : table.columns) {
        sqlite3_str_appendf(text, "%s%s %s", separator, column.name, sql_kind_name(column.kind));
        separator = ", ";
    }
    for (int i = 0; i < sql_param_count(table.signature); ++i) {
        const std::string_view name = sql_param_name(table.signature, i);
        sqlite3_str_appendf(text, "%s%.*s %s HIDDEN", separator, static_cast<int>(name.size()), name.data(),
                            sql_kind_name(table.signature.params[i]));
    }
    sqlite3_str_appendall(text, ")");
    return sqlite3_str_finish(text);
}

int connect_(sqlite3 *db, void *kept, int, const char *const *, sqlite3_vtab **vtab, char **) {
    const auto *table = static_cast<const sql_table *>(kept);
    sqlite3_vtab_config(db, SQLITE_VTAB_INNOCUOUS);
    char *declaration = declaration_(*table);
    if (declaration == nullptr) return SQLITE_NOMEM;
    const int code = sqlite3_declare_vtab(db, declaration);
    sqlite3_free(declaration);
    if (code != SQLITE_OK) return code;
    auto *made = allocate_<table_t>();
    if (made == nullptr) return SQLITE_NOMEM;
    made->table = table;
    *vtab = &made->base;
    return SQLITE_OK;
}

int disconnect_(sqlite3_vtab *vtab) {
    sqlite3_free(vtab);
    return SQLITE_OK;
}

// The argument of a parameter: the constraint that gives it, -1 when there is none.
int argument_(const sqlite3_index_info &info, int column) {
    for (int i = 0; i < info.nConstraint; ++i) {
        const auto &constraint = info.aConstraint[i];
        const bool is_equal = constraint.op == SQLITE_INDEX_CONSTRAINT_EQ && constraint.usable != 0;
        if (constraint.iColumn == column && is_equal) return i;
    }
    return -1;
}

// Always the whole walk, of the parameters' arguments; SQLite filters.
int best_index_(sqlite3_vtab *vtab, sqlite3_index_info *info) {
    info->estimatedCost = _usual_rows;
    info->estimatedRows = _usual_rows;
    const sql_table &table = table_of_(vtab);
    for (int i = 0; i < sql_param_count(table.signature); ++i) {
        const int constraint = argument_(*info, static_cast<int>(table.columns.size()) + i);
        if (constraint < 0) return SQLITE_CONSTRAINT;  // no walk without it
        info->aConstraintUsage[constraint].argvIndex = i + 1;
        info->aConstraintUsage[constraint].omit = 1;
    }
    return SQLITE_OK;
}

int open_(sqlite3_vtab *, sqlite3_vtab_cursor **cursor) {
    auto *made = allocate_<cursor_t>();
    if (made == nullptr) return SQLITE_NOMEM;
    *cursor = &made->base;
    return SQLITE_OK;
}

int close_(sqlite3_vtab_cursor *cursor) {
    sqlite3_free(cursor);
    return SQLITE_OK;
}

// Moves on to a row that is shown, or to the end.
void skip_hidden_(cursor_t &cursor) {
    const auto is_shown = table_of_(cursor.base.pVtab).is_shown;
    if (is_shown == nullptr) return;
    while (cursor.row < cursor.walk.rows && !is_shown(cursor.walk.subject, cursor.row)) ++cursor.row;
}

struct beginning {
    const sql_table &table;
    sql_call &call;
    sql_rows &walk;
};

void run_begin_(void *arg) {
    const auto &[table, call, walk] = *static_cast<beginning *>(arg);
    sql_convert(call, table.signature);
    table.begin(call, walk);
}

// Begins the walk. Returns an SQLite code; with SQLITE_ERROR the text of what is wrong, in SQLite's memory.
int begin_(const sql_table &table, sql_call &call, sql_rows &walk, char *&fault) {
    const sql_table *const row = &table;
    const char *name = table.signature.name;
    dv_error_t error;
    if (sql_resolve(std::span(&row, 1), call) != nullptr) {
        beginning request = {table, call, walk};
        const int code = dv_protect(run_begin_, &request, &error);
        if (code == DV_ERR_NO_MEMORY) return SQLITE_NOMEM;
        if (code != 0) fault = sqlite3_mprintf("%s: %s (dv%d)", name, error.message, code);
        if (code != 0) return SQLITE_ERROR;
    }
    if (call.outcome == SQL_GIVEN) return SQLITE_OK;
    fault = sqlite3_mprintf("%s: %s", name, call.failure);
    return SQLITE_ERROR;
}

int filter_(sqlite3_vtab_cursor *base, int, const char *, int argc, sqlite3_value **argv) {
    cursor_t &cursor = cursor_of_(base);
    cursor.row = 0;
    cursor.walk = {};
    sql_call call;
    if (!sqlite_take_arguments(call, argc, argv)) return SQLITE_NOMEM;
    char *fault = nullptr;
    const int code = begin_(table_of_(base->pVtab), call, cursor.walk, fault);
    if (call.block != nullptr) sqlite3_free(call.block);
    if (code == SQLITE_OK) {
        skip_hidden_(cursor);
        return SQLITE_OK;
    }
    sqlite3_free(base->pVtab->zErrMsg);
    base->pVtab->zErrMsg = fault;
    return code == SQLITE_ERROR && fault == nullptr ? SQLITE_NOMEM : code;
}

int next_(sqlite3_vtab_cursor *cursor) {
    ++cursor_of_(cursor).row;
    skip_hidden_(cursor_of_(cursor));
    return SQLITE_OK;
}

int eof_(sqlite3_vtab_cursor *cursor) {
    return cursor_of_(cursor).row >= cursor_of_(cursor).walk.rows ? 1 : 0;
}

int rowid_(sqlite3_vtab_cursor *cursor, sqlite3_int64 *rowid) {
    *rowid = cursor_of_(cursor).row;
    return SQLITE_OK;
}

struct field {
    const cursor_t &cursor;
    sql_call &call;
    int column;
};

void run_field_(void *arg) {
    const auto &[cursor, call, column] = *static_cast<field *>(arg);
    table_of_(cursor.base.pVtab).field(call, cursor.walk.subject, cursor.row, column);
}

// A hidden column, a parameter, is SQL NULL.
int column_(sqlite3_vtab_cursor *base, sqlite3_context *context, int column) {
    const sql_table &table = table_of_(base->pVtab);
    if (column >= static_cast<int>(table.columns.size())) return SQLITE_OK;
    sql_call call;
    sql_begin(call, &sqlite_memory);
    field request = {cursor_of_(base), call, column};
    dv_error_t error;
    if (dv_protect(run_field_, &request, &error) != 0) {
        sqlite_fail(context, table.signature.name, call, error.code, error.message);
    } else {
        sqlite_finish(context, table.signature.name, call);
    }
    return SQLITE_OK;
}

// No xCreate: eponymous only. No xUpdate: read only.
constexpr sqlite3_module _module = [] {
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

int dv::impl::sqlite_register_table(sqlite3 *db, const sql_table &table) {
    return sqlite3_create_module(db, table.signature.name, &_module, const_cast<sql_table *>(&table));
}
