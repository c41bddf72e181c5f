// Scalar functions: registration of overload sets, and one call from SQLite to a body and back.
//
// SQLite knows one function per name and number of arguments and keeps its overloads with it. Conversions of
// arguments and the body run under one recovery point per call.

#include "sql_function.h"

#include <algorithm>
#include <compare>
#include <cstring>

using namespace dv::impl;

namespace {

constexpr int _overloads_max = 24;

// The rows of one name and number of parameters; SQLite keeps it with the function.
struct overload_set {
    const char *name;
    int count;
    const sql_function *rows[_overloads_max];
    const sql_keeper *keeper;
    void *kept;
};

// ---------------------------------------------------------------------------------------------------------
// Calls
// ---------------------------------------------------------------------------------------------------------

bool takes_(const sql_function &function, const sql_call &call, int position) {
    return sql_accepts(function.params[position], call.args[position].kind);
}

// How many arguments a function takes, wherever they stand, and how many up to the first that it does not.
struct fit {
    int taken;
    int leading;
    auto operator<=>(const fit &) const = default;
};

fit fit_of_(const sql_function &function, const sql_call &call) {
    fit found{};
    for (int i = 0; i < call.argc; ++i) {
        if (!takes_(function, call, i)) continue;
        ++found.taken;
        if (found.leading == i) ++found.leading;
    }
    return found;
}

const sql_function *choose_(const overload_set &set, const sql_call &call) {
    for (int i = 0; i < set.count; ++i) {
        if (fit_of_(*set.rows[i], call).leading == call.argc) return set.rows[i];
    }
    return nullptr;
}

// Names the first bad argument of the overloads that fit best.
void fail_without_overload_(const overload_set &set, const sql_call &call) {
    fit best{};
    for (int i = 0; i < set.count; ++i) best = std::max(best, fit_of_(*set.rows[i], call));
    sql_kind expected[SQL_KINDS_MAX];
    sql_kind *end = expected;
    for (int i = 0; i < set.count; ++i) {
        const sql_kind param = set.rows[i]->params[best.leading];
        const bool is_new = std::find(expected, end, param) == end;
        if (is_new && fit_of_(*set.rows[i], call) == best) *end++ = param;
    }
    sql_fail_with_kind(call.context, set.name, best.leading, call.args[best.leading], {expected, end});
}

void run_(void *arg) {
    auto &call = *static_cast<sql_call *>(arg);
    for (int i = 0; i < call.argc; ++i) {
        if (!sql_convert(call.context, call.function->name, i, call.args[i], call.function->params[i]))
            return;
    }
    call.function->body(call);
}

bool is_null_result_(const overload_set &set, const sql_call &call) {
    for (int i = 0; i < call.argc; ++i) {
        if (call.args[i].kind == SQL_KIND_NULL && set.rows[0]->params[i] != SQL_KIND_ANY) return true;
    }
    return false;
}

void call_(sqlite3_context *context, int argc, sqlite3_value **argv) {
    const auto &set = *static_cast<const overload_set *>(sqlite3_user_data(context));
    sql_call call;
    call.context = context;
    call.argc = argc;
    call.raw = argv;
    call.kept = set.kept;
    for (int i = 0; i < argc; ++i) {
        if (!sql_decode(argv[i], call.args[i])) return sqlite3_result_error_nomem(context);
    }
    if (is_null_result_(set, call)) return;  // the result is SQL NULL until one is set

    call.function = choose_(set, call);
    if (call.function == nullptr) return fail_without_overload_(set, call);
    dv_error_t error;
    if (dv_protect(run_, &call, &error) != 0) sql_fail_with_raise(context, set.name, error);
}

// ---------------------------------------------------------------------------------------------------------
// Registration
// ---------------------------------------------------------------------------------------------------------

bool is_overload_(const sql_function &x, const sql_function &y) {
    return strcmp(x.name, y.name) == 0 && sql_param_count(x) == sql_param_count(y);
}

// The overloads of a function, in the order of the tables. A count above _overloads_max says that there was
// no room for all.
overload_set collect_(const sql_function &function, std::span<const sql_function_table *const> tables) {
    overload_set set{function.name, 0, {}, nullptr, nullptr};
    for (const sql_function_table *table : tables) {
        for (const sql_function &row : *table) {
            if (!is_overload_(row, function)) continue;
            if (set.count < _overloads_max) set.rows[set.count] = &row;
            if (row.keeper != nullptr) set.keeper = row.keeper;
            ++set.count;
        }
    }
    return set;
}

void release_(void *kept) {
    auto *set = static_cast<overload_set *>(kept);
    if (set->kept != nullptr) set->keeper->release(set->kept);
    sqlite3_free(set);
}

// A copy of a set for SQLite, with what its functions keep. NULL: there is no memory for it.
overload_set *new_set_(const overload_set &set) {
    auto *made = static_cast<overload_set *>(sqlite3_malloc(sizeof set));
    if (made == nullptr) return nullptr;
    *made = set;
    if (set.keeper == nullptr) return made;
    made->kept = set.keeper->make();
    if (made->kept != nullptr) return made;
    release_(made);
    return nullptr;
}

}  // namespace

int dv::impl::sql_param_count(const sql_function &function) {
    int count = 0;
    while (count < SQL_PARAMS_MAX && function.params[count] != SQL_KIND_NONE) ++count;
    return count;
}

int dv::impl::sql_register_function(sqlite3 *db, const sql_function &function,
                                    std::span<const sql_function_table *const> tables) {
    const overload_set set = collect_(function, tables);
    if (set.count > _overloads_max) return SQLITE_INTERNAL;
    overload_set *made = new_set_(set);
    if (made == nullptr) return SQLITE_NOMEM;
    // SQLite releases the set with the function, and when it refuses the function.
    return sqlite3_create_function_v2(db, set.name, sql_param_count(function),
                                      SQLITE_UTF8 | SQLITE_INNOCUOUS | function.depends, made, call_, nullptr,
                                      nullptr, release_);
}
