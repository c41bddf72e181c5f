// Scalar functions: registration of overload sets, and one call from SQLite to a body and back.
//
// SQLite knows one function per name and number of arguments and keeps its overloads with it. Arguments are
// converted and the body runs under one recovery point per call; what they come to is given to SQLite behind
// it.

#include <algorithm>

#include "sql_explain.h"
#include "sql_overload.h"
#include "sqlite_kept.h"
#include "sqlite_register.h"
#include "sqlite_value.h"

using namespace dv::impl;

namespace {

using function_set = sql_overloads<sql_function>;  // SQLite keeps it with the function

// SQLite's JSON functions take a text with this subtype for JSON, any other for a string. A function that
// gives a subtype says so from SQLite 3.45 on; before, the flag is none and left out.
constexpr unsigned _json_subtype = 'J';
constexpr int _result_subtype = 0x0100'0000;

const char *name_of_(const function_set &set) { return set.rows[0]->signature.name; }

// ---------------------------------------------------------------------------------------------------------
// Calls
// ---------------------------------------------------------------------------------------------------------

// What is in a call; of a try_ function SQL NULL in place of a failure.
void finish_(sqlite3_context *context, const function_set &set, sql_call &call) {
    if (set.rows[0]->is_try && call.outcome == SQL_FAILED) {
        call.outcome = SQL_GIVEN;
        call.result = sql_null();
    }
    const bool is_json = set.rows[0]->is_json && call.outcome == SQL_GIVEN;
    sqlite_finish(context, name_of_(set), call);
    if (is_json) sqlite3_result_subtype(context, _json_subtype);
}

// An error that a row raised; of a try_ function SQL NULL, but for want of memory.
void fail_(sqlite3_context *context, const function_set &set, const sql_function &row, sql_call &call,
           const dv_error_t &error) {
    int code = error.code;
    if (code != DV_ERR_NO_MEMORY && row.is_try) {
        call.outcome = SQL_FAILED;
        return finish_(context, set, call);
    }
    if (code != DV_ERR_NO_MEMORY && !sql_explain(call, row, error)) code = DV_ERR_NO_MEMORY;
    sqlite_fail(context, name_of_(set), call, code, call.failure);
}

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
sqlite_kept *keep_(sqlite3_context *context, const function_set &set, const sql_function &row,
                   sql_call &call) {
    const sql_keeper &keeper = *row.keeper;
    auto *kept = static_cast<sqlite_kept *>(sqlite3_get_auxdata(context, keeper.argument));
    if (kept != nullptr && kept->keeper == &keeper && keeper.serves(call, kept->object())) return kept;

    dv_error_t error;
    if (sqlite_keep(keeper, call, &kept, &error) != 0) {
        fail_(context, set, row, call, error);
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
        finish_(context, set, call);
    }
    return nullptr;
}

void call_(sqlite3_context *context, int argc, sqlite3_value **argv) {
    const auto &set = *static_cast<const function_set *>(sqlite3_user_data(context));
    sql_call call;
    if (!sqlite_begin(context, call, argc, argv)) return;
    const sql_function *function = sql_resolve(set.all(), call);
    if (function == nullptr) return finish_(context, set, call);
    if (function->keeper != nullptr) {
        sqlite_kept *kept = keep_(context, set, *function, call);
        if (kept == nullptr) return;
        call.kept = kept->object();
    }
    run request = {*function, call};
    dv_error_t error;
    if (dv_protect(run_, &request, &error) != 0) return fail_(context, set, *function, call, error);
    finish_(context, set, call);
}

// ---------------------------------------------------------------------------------------------------------
// Registration
// ---------------------------------------------------------------------------------------------------------

bool is_immutable_(const function_set &overloads) {
    return std::ranges::all_of(overloads.all(),
                               [](const sql_function *row) { return row->volatility == SQL_IMMUTABLE; });
}

}  // namespace

int dv::impl::sqlite_register_function(sqlite3 *db, const sql_function &function, const sql_catalogue &from) {
    const auto overloads = sql_overloads_of(function, from.functions);
    if (overloads.count > SQL_OVERLOADS_MAX) return SQLITE_INTERNAL;
    auto *made = static_cast<function_set *>(sqlite3_malloc(sizeof(function_set)));
    if (made == nullptr) return SQLITE_NOMEM;
    *made = overloads;
    const int determinism = is_immutable_(overloads) ? SQLITE_DETERMINISTIC : 0;
    const int subtype = overloads.rows[0]->is_json ? _result_subtype : 0;
    // SQLite releases the set with the function, and when it refuses the function.
    return sqlite3_create_function_v2(db, function.signature.name, sql_param_count(function.signature),
                                      SQLITE_UTF8 | SQLITE_INNOCUOUS | determinism | subtype, made, call_,
                                      nullptr, nullptr, sqlite3_free);
}
