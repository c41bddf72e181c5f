// Scalar functions: registration of overload sets, and one call from SQLite to a body and back.
//
// SQLite knows one function per name and number of arguments and keeps its overloads with it. Arguments are
// converted and the body runs under one recovery point per call; what they come to is given to SQLite behind
// it.

#include <algorithm>

#include "sql_overload.h"
#include "sqlite_kept.h"
#include "sqlite_register.h"
#include "sqlite_value.h"

using namespace dv::impl;

namespace {

// The rows of one name and number of parameters, and what they keep for the whole connection; NULL when they
// keep nothing. SQLite keeps it with the function.
struct function_set {
    sql_overloads<sql_function> overloads;
    sqlite_kept *kept;

    const char *name() const { return overloads.rows[0]->signature.name; }
};

// ---------------------------------------------------------------------------------------------------------
// Calls
// ---------------------------------------------------------------------------------------------------------

struct run {
    const sql_function &function;
    sql_call &call;
};

void run_(void *arg) {
    const auto &[function, call] = *static_cast<run *>(arg);
    sql_convert(call, function.signature);
    function.body(call);
}

// What the row keeps for the call, in SQLite's care as long as the argument is constant. NULL: the call is
// done, without memory, or with what making raised or failed with.
sqlite_kept *keep_(sqlite3_context *context, const function_set &set, const sql_keeper &keeper,
                   sql_call &call) {
    auto *kept = static_cast<sqlite_kept *>(sqlite3_get_auxdata(context, keeper.argument));
    if (kept != nullptr && kept->keeper == &keeper && keeper.serves(call, kept->object())) return kept;

    dv_error_t error;
    if (sqlite_keep(keeper, call, &kept, &error) != 0) {
        sqlite_fail(context, set.name(), call, error);
        return nullptr;
    }
    if (kept != nullptr) {
        sqlite3_set_auxdata(context, keeper.argument, kept, sqlite_release);  // may release it at once
        kept = static_cast<sqlite_kept *>(sqlite3_get_auxdata(context, keeper.argument));
    }
    if (kept != nullptr) return kept;
    if (call.outcome == SQL_GIVEN) {
        sqlite3_result_error_nomem(context);
    } else {
        sqlite_finish(context, set.name(), call);
    }
    return nullptr;
}

void call_(sqlite3_context *context, int argc, sqlite3_value **argv) {
    const auto &set = *static_cast<const function_set *>(sqlite3_user_data(context));
    sql_call call;
    if (!sqlite_begin(context, call, argc, argv)) return;
    const sql_function *function = sql_resolve(set.overloads.all(), call);
    if (function == nullptr) return sqlite_finish(context, set.name(), call);
    if (function->keeper != nullptr) {
        const bool is_session = function->keeper->argument < 0;
        sqlite_kept *kept = is_session ? set.kept : keep_(context, set, *function->keeper, call);
        if (kept == nullptr) return;
        call.kept = kept->object();
    }
    run request = {*function, call};
    dv_error_t error;
    if (dv_protect(run_, &request, &error) != 0) return sqlite_fail(context, set.name(), call, error);
    sqlite_finish(context, set.name(), call);
}

// ---------------------------------------------------------------------------------------------------------
// Registration
// ---------------------------------------------------------------------------------------------------------

void release_(void *object) {
    auto *set = static_cast<function_set *>(object);
    if (set->kept != nullptr) sqlite_release(set->kept);
    sqlite3_free(set);
}

// What the set keeps for the whole connection; NULL: nothing.
const sql_keeper *session_keeper_(const sql_overloads<sql_function> &overloads) {
    for (const sql_function *row : overloads.all()) {
        if (row->keeper != nullptr && row->keeper->argument < 0) return row->keeper;
    }
    return nullptr;
}

bool is_immutable_(const sql_overloads<sql_function> &overloads) {
    return std::ranges::all_of(overloads.all(),
                               [](const sql_function *row) { return row->volatility == SQL_IMMUTABLE; });
}

// A set for SQLite, with what its functions keep. NULL: there is no memory for it.
function_set *new_set_(const sql_overloads<sql_function> &overloads) {
    auto *set = static_cast<function_set *>(sqlite3_malloc(sizeof(function_set)));
    if (set == nullptr) return nullptr;
    *set = {overloads, nullptr};
    const sql_keeper *keeper = session_keeper_(overloads);
    if (keeper == nullptr) return set;
    sql_call call;
    sql_begin(call, &sqlite_memory);
    sqlite_keep(*keeper, call, &set->kept, nullptr);
    if (set->kept != nullptr) return set;
    release_(set);
    return nullptr;
}

}  // namespace

int dv::impl::sqlite_register_function(sqlite3 *db, const sql_function &function, const sql_catalogue &from) {
    const auto overloads = sql_overloads_of(function, from.functions);
    if (overloads.count > SQL_OVERLOADS_MAX) return SQLITE_INTERNAL;
    function_set *made = new_set_(overloads);
    if (made == nullptr) return SQLITE_NOMEM;
    const int determinism = is_immutable_(overloads) ? SQLITE_DETERMINISTIC : 0;
    // SQLite releases the set with the function, and when it refuses the function.
    return sqlite3_create_function_v2(db, function.signature.name, sql_param_count(function.signature),
                                      SQLITE_UTF8 | SQLITE_INNOCUOUS | determinism, made, call_, nullptr,
                                      nullptr, release_);
}
