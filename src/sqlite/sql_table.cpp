// How SQLite walks the tables of sql_table.h.

#include "sql_table.h"

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

int connect_(sqlite3 *db, void *kept, int, const char *const *, sqlite3_vtab **vtab, char **) {
    const auto *table = static_cast<const sql_table *>(kept);
    sqlite3_vtab_config(db, SQLITE_VTAB_INNOCUOUS);
    const int code = sqlite3_declare_vtab(db, table->declaration);
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

// Always the whole walk, of the parameter's argument where there is one; SQLite filters.
int best_index_(sqlite3_vtab *vtab, sqlite3_index_info *info) {
    constexpr int rows = 1000;
    info->estimatedCost = rows;
    info->estimatedRows = rows;
    const int param = table_of_(vtab).param_column;
    if (param < 0) return SQLITE_OK;
    for (int i = 0; i < info->nConstraint; ++i) {
        const auto &constraint = info->aConstraint[i];
        if (constraint.iColumn != param || constraint.op != SQLITE_INDEX_CONSTRAINT_EQ || !constraint.usable)
            continue;
        info->aConstraintUsage[i].argvIndex = 1;
        info->aConstraintUsage[i].omit = 1;
        return SQLITE_OK;
    }
    return SQLITE_CONSTRAINT;  // no walk without it
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

int filter_(sqlite3_vtab_cursor *base, int, const char *, int argc, sqlite3_value **argv) {
    cursor_t &cursor = cursor_of_(base);
    cursor.row = 0;
    cursor.walk = {};
    char *fault = nullptr;
    const int code = table_of_(base->pVtab).begin(argc > 0 ? argv[0] : nullptr, cursor.walk, fault);
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

// A hidden column, the parameter, is SQL NULL.
int column_(sqlite3_vtab_cursor *base, sqlite3_context *context, int column) {
    const cursor_t &cursor = cursor_of_(base);
    const sql_table &table = table_of_(base->pVtab);
    if (column != table.param_column) table.column(context, cursor.walk.subject, cursor.row, column);
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

int dv::impl::sql_register_table(sqlite3 *db, const sql_table &table) {
    return sqlite3_create_module(db, table.name, &_module, const_cast<sql_table *>(&table));
}
