// Tables of the catalogue as virtual tables: read only, there without being created. Parameters are hidden
// columns behind the others, named so that no column of a table that is joined is ambiguous.

#include "sql_overload.h"
#include "sqlite_register.h"
#include "sqlite_value.h"

using namespace dv::impl;

namespace {

using table_set = sql_overloads<sql_table>;  // SQLite keeps it with the module

struct table_t {
    sqlite3_vtab base;  // SQLite's part comes first
    const table_set *set;
};

struct cursor_t {
    sqlite3_vtab_cursor base;
    const sql_table *table;  // the overload that is walked
    sql_rows walk;
    int64_t row;
};

constexpr int _usual_rows = 1000;

cursor_t &cursor_of_(sqlite3_vtab_cursor *base) { return *reinterpret_cast<cursor_t *>(base); }
const table_set &set_of_(const sqlite3_vtab *base) { return *reinterpret_cast<const table_t *>(base)->set; }
const sql_table &first_of_(const table_set &set) { return *set.rows[0]; }

// A new, zeroed object; NULL: there is no memory.
template <typename Object>
Object *allocate_() {
    auto *object = static_cast<Object *>(sqlite3_malloc(sizeof(Object)));
    if (object != nullptr) *object = {};
    return object;
}

// " TEXT"; nothing where a column or parameter has a kind in each overload.
void append_kind_(sqlite3_str *text, const table_set &set, auto kind_of) {
    const sql_kind kind = kind_of(first_of_(set));
    for (const sql_table *table : set.all()) {
        if (kind_of(*table) != kind) return;
    }
    sqlite3_str_appendf(text, " %s", sql_kind_name(kind));
}

// CREATE TABLE x(name TEXT, ..., dv_zone TEXT HIDDEN); NULL: there is no memory for it.
char *declaration_(const table_set &set) {
    const sql_table &first = first_of_(set);
    sqlite3_str *text = sqlite3_str_new(nullptr);
    for (size_t i = 0; i < first.columns.size(); ++i) {
        sqlite3_str_appendf(text, "%s%s", i == 0 ? "CREATE TABLE x(" : ", ", first.columns[i].name);
        append_kind_(text, set, [i](const sql_table &table) { return table.columns[i].kind; });
    }
    for (int i = 0; i < sql_param_count(first.signature); ++i) {
        const std::string_view name = sql_param_name(first.signature, i);
        sqlite3_str_appendf(text, ", dv_%.*s", static_cast<int>(name.size()), name.data());
        append_kind_(text, set, [i](const sql_table &table) { return table.signature.params[i]; });
        sqlite3_str_appendall(text, " HIDDEN");
    }
    sqlite3_str_appendall(text, ")");
    return sqlite3_str_finish(text);
}

int connect_(sqlite3 *db, void *kept, int, const char *const *, sqlite3_vtab **vtab, char **) {
    const auto *set = static_cast<const table_set *>(kept);
    sqlite3_vtab_config(db, SQLITE_VTAB_INNOCUOUS);
    char *declaration = declaration_(*set);
    if (declaration == nullptr) return SQLITE_NOMEM;
    const int code = sqlite3_declare_vtab(db, declaration);
    sqlite3_free(declaration);
    if (code != SQLITE_OK) return code;
    auto *made = allocate_<table_t>();
    if (made == nullptr) return SQLITE_NOMEM;
    made->set = set;
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
    const sql_table &table = first_of_(set_of_(vtab));
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
    const auto is_shown = cursor.table == nullptr ? nullptr : cursor.table->is_shown;
    if (is_shown == nullptr) return;
    while (cursor.row < cursor.walk.rows && !is_shown(cursor.walk, cursor.row)) ++cursor.row;
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

// Begins the walk, of the overload that takes the arguments; without one it has no rows. Returns an SQLite
// code; with SQLITE_ERROR the text of what is wrong, in SQLite's memory.
int begin_(const table_set &set, sql_call &call, cursor_t &cursor, char *&fault) {
    const char *name = first_of_(set).signature.name;
    dv_error_t error;
    cursor.table = sql_resolve(set.all(), call);
    if (cursor.table != nullptr) {
        beginning request = {*cursor.table, call, cursor.walk};
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
    const int code = begin_(set_of_(base->pVtab), call, cursor, fault);
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
    cursor.table->field(call, cursor.walk, cursor.row, column);
}

// A hidden column, a parameter, is SQL NULL.
int column_(sqlite3_vtab_cursor *base, sqlite3_context *context, int column) {
    const sql_table &table = *cursor_of_(base).table;
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

int dv::impl::sqlite_register_table(sqlite3 *db, const sql_table &table, const sql_catalogue &from) {
    table_set set{};
    for (const sql_table *row : from.tables) {
        if (!sql_is_overload(row->signature, table.signature)) continue;
        if (set.count == SQL_OVERLOADS_MAX) return SQLITE_INTERNAL;
        set.rows[set.count++] = row;
    }
    auto *made = static_cast<table_set *>(sqlite3_malloc(sizeof(table_set)));
    if (made == nullptr) return SQLITE_NOMEM;
    *made = set;
    // SQLite releases the set with the module, and when it refuses the module.
    return sqlite3_create_module_v2(db, table.signature.name, &_module, made, sqlite3_free);
}
