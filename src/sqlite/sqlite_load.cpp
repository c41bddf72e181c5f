// Loading: what the connection has is looked at first, then each name is added.
//
// A statement that is running keeps SQLite from replacing or removing a function, but not from adding one. So
// where names are free a load cannot be half done but for want of memory; functions that a running statement
// then keeps from being taken back go on to work, and the next load adds what is missing.

#include "sqlite_load.h"

#include "sqlite_column_function.h"
#include "sqlite_register.h"
#include "sqlite_text_view.h"

using namespace dv::impl;

namespace {

constexpr int _items_max = 320;
constexpr int _no_arity = -2;  // of a table; -1 is SQLite's "any number"

// A name in the connection.
struct item {
    const char *name;
    int arity;
    const sql_function *function;  // one of the four
    const sql_aggregate *aggregate;
    const sql_table *table;
    const sqlite_own_function *own;
    bool is_there;
};

struct load {
    sqlite3 *db;
    const sql_catalogue &of;
    int count;
    item items[_items_max];

    std::span<item> all() { return {items, static_cast<size_t>(count)}; }
};

item *find_(load &l, const char *name, int arity) {
    for (item &i : l.all()) {
        if (i.arity == arity && sqlite3_stricmp(i.name, name) == 0) return &i;
    }
    return nullptr;
}

// False: the name is there twice, or there are too many.
bool append_(load &l, const item &i) {
    if (l.count == _items_max || find_(l, i.name, i.arity) != nullptr) return false;
    l.items[l.count++] = i;
    return true;
}

// Lists a row, but once for all its overloads.
bool list_(load &l, const item &i) {
    const item *listed = find_(l, i.name, i.arity);
    const bool is_overload = listed != nullptr && (listed->function != nullptr) == (i.function != nullptr) &&
                             (listed->aggregate != nullptr) == (i.aggregate != nullptr);
    return is_overload || append_(l, i);
}

bool list_items_(load &l) {
    bool is_listed = true;
    sql_for_each(l.of.functions, [&](const sql_function &row) {
        const sql_signature &s = row.signature;
        is_listed =
            is_listed && list_(l, {s.name, sql_param_count(s), &row, nullptr, nullptr, nullptr, false});
        const char *of_column = sqlite_column_function(s.name);
        if (of_column == nullptr) return;
        is_listed = is_listed &&
                    list_(l, {of_column, sql_param_count(s) + 1, &row, nullptr, nullptr, nullptr, false});
    });
    sql_for_each(l.of.aggregates, [&](const sql_aggregate &row) {
        const sql_signature &s = row.signature;
        is_listed =
            is_listed && list_(l, {s.name, sql_param_count(s), nullptr, &row, nullptr, nullptr, false});
    });
    for (const sql_table *table : l.of.tables)
        is_listed = is_listed &&
                    list_(l, {table->signature.name, _no_arity, nullptr, nullptr, table, nullptr, false});
    for (const sqlite_own_function &own : sqlite_own_functions)
        is_listed = is_listed && append_(l, {own.name, own.arity, nullptr, nullptr, nullptr, &own, false});
    return is_listed;
}

// Marks what the connection has, without a look at its database: a list's rows begin with the name. SQLite's
// own functions may be replaced. An SQLite without these lists says nothing.
int mark_(load &l, const char *list, int arity_column, int builtin_column) {
    sqlite3_stmt *statement = nullptr;
    int code = sqlite3_prepare_v2(l.db, list, -1, &statement, nullptr);
    if (code != SQLITE_OK) return code;
    while ((code = sqlite3_step(statement)) == SQLITE_ROW) {
        const auto *name = reinterpret_cast<const char *>(sqlite3_column_text(statement, 0));
        const int arity = arity_column < 0 ? _no_arity : sqlite3_column_int(statement, arity_column);
        const bool is_builtin = builtin_column >= 0 && sqlite3_column_int(statement, builtin_column) != 0;
        item *found = name == nullptr || is_builtin ? nullptr : find_(l, name, arity);
        if (found != nullptr) found->is_there = true;
    }
    code = sqlite3_finalize(statement);
    return code == SQLITE_OK ? SQLITE_OK : code;
}

int mark_all_(load &l) {
    const int code = mark_(l, "PRAGMA function_list", /*arity_column=*/4, /*builtin_column=*/1);
    return code != SQLITE_OK ? code : mark_(l, "PRAGMA module_list", -1, -1);
}

int add_own_(sqlite3 *db, const sqlite_own_function &own) {
    return sqlite3_create_function(db, own.name, own.arity, SQLITE_UTF8 | SQLITE_DIRECTONLY, nullptr,
                                   own.call, nullptr, nullptr);
}

int add_(load &l, const item &i) {
    if (i.own != nullptr) return add_own_(l.db, *i.own);
    if (i.function != nullptr) {
        const bool is_of_column = i.name != i.function->signature.name;
        return sqlite_register_function(l.db, *i.function, l.of, is_of_column ? i.name : nullptr);
    }
    if (i.aggregate != nullptr) return sqlite_register_aggregate(l.db, *i.aggregate, l.of);
    return sqlite_register_table(l.db, *i.table, l.of);
}

void take_back_(sqlite3 *db, const item &i) {
    if (i.table != nullptr) {
        sqlite3_create_module(db, i.name, nullptr, nullptr);
    } else {
        sqlite3_create_function(db, i.name, i.arity, SQLITE_UTF8, nullptr, nullptr, nullptr, nullptr);
    }
}

int add_all_(load &l) {
    for (int i = 0; i < l.count; ++i) {
        if (l.items[i].is_there) continue;
        const int code = add_(l, l.items[i]);
        if (code == SQLITE_OK) continue;
        while (i-- > 0) {
            if (!l.items[i].is_there) take_back_(l.db, l.items[i]);
        }
        return code;
    }
    return SQLITE_OK;
}

char *in_use_(const item &i) {
    return i.table != nullptr ? sqlite3_mprintf("dvtypes: %s is already in use", i.name)
                              : sqlite3_mprintf("dvtypes: %s/%d is already in use", i.name, i.arity);
}

}  // namespace

int dv::impl::sqlite_load(sqlite3 *db, const sql_catalogue &of, char **message) {
    load l{db, of, 0, {}};
    int code = list_items_(l) ? mark_all_(l) : SQLITE_INTERNAL;
    if (code == SQLITE_OK && !l.items[0].is_there) {
        for (const item &i : l.all()) {
            if (!i.is_there) continue;
            *message = in_use_(i);
            return SQLITE_ERROR;
        }
    }
    if (code == SQLITE_OK) code = add_all_(l);
    if (code != SQLITE_OK) *message = sqlite3_mprintf("dvtypes: %s", sqlite3_errstr(code));
    return code;
}
