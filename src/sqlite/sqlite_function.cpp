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

// SQLite keeps it with the function.
struct function_set : sql_overloads<sql_function> {
    bool names_column;  // by another argument behind those of the rows
};

// SQLite's JSON functions take a text with this subtype for JSON, any other for a string. A function that
// gives a subtype says so from SQLite 3.45 on; before, the flag is none and left out.
constexpr unsigned _json_subtype = 'J';
constexpr int _result_subtype = 0x0100'0000;

// What SQLite calls.
struct callee {
    sqlite3_context *context;
    const function_set &set;
    sqlite3_value *column;  // NULL: none is named
};

// Who fails: "to_date", or "column "day": to_date", cut where it is long.
struct failing_t {
    char name[640];
};
failing_t failing_(const callee &of) {
    const char *const function = of.set.rows[0]->signature.name;
    failing_t text;
    if (of.column == nullptr) {
        sqlite3_snprintf(sizeof text.name, text.name, "%s", function);
    } else {
        sqlite3_snprintf(sizeof text.name, text.name, "column \"%!.64w\": %s", sqlite3_value_text(of.column),
                         function);
    }
    return text;
}

// ---------------------------------------------------------------------------------------------------------
// Calls
// ---------------------------------------------------------------------------------------------------------

// What is in a call; of a try_ function SQL NULL in place of a failure.
void finish_(const callee &of, sql_call &call) {
    const sql_function &row = *of.set.rows[0];
    if (row.is_try && call.outcome == SQL_FAILED) {
        call.outcome = SQL_GIVEN;
        call.result = sql_null();
    }
    if (call.outcome == SQL_FAILED) return sqlite_finish(of.context, failing_(of).name, call);
    const bool is_json = row.is_json && call.outcome == SQL_GIVEN;
    sqlite_finish(of.context, row.signature.name, call);
    if (is_json) sqlite3_result_subtype(of.context, _json_subtype);
}

// An error that a row raised; of a try_ function SQL NULL, but for want of memory.
void fail_(const callee &of, const sql_function &row, sql_call &call, const dv_error_t &error) {
    int code = error.code;
    if (code != DV_ERR_NO_MEMORY && row.is_try) {
        call.outcome = SQL_FAILED;
        return finish_(of, call);
    }
    if (code != DV_ERR_NO_MEMORY && !sql_explain(call, row, error)) code = DV_ERR_NO_MEMORY;
    sqlite_fail(of.context, failing_(of).name, call, code, call.failure);
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
sqlite_kept *keep_(const callee &of, const sql_function &row, sql_call &call) {
    sqlite3_context *const context = of.context;
    const sql_keeper &keeper = *row.keeper;
    auto *kept = static_cast<sqlite_kept *>(sqlite3_get_auxdata(context, keeper.argument));
    if (kept != nullptr && kept->keeper == &keeper && keeper.serves(call, kept->object())) return kept;

    dv_error_t error;
    if (sqlite_keep(keeper, call, &kept, &error) != 0) {
        fail_(of, row, call, error);
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
        finish_(of, call);
    }
    return nullptr;
}

void call_(sqlite3_context *context, int argc, sqlite3_value **argv) {
    const auto &set = *static_cast<const function_set *>(sqlite3_user_data(context));
    if (set.names_column) --argc;
    const callee of = {context, set, set.names_column ? argv[argc] : nullptr};
    sql_call call;
    if (!sqlite_begin(context, call, argc, argv)) return;
    const sql_function *function = sql_resolve(set.all(), call);
    if (function == nullptr) return finish_(of, call);
    if (function->keeper != nullptr) {
        sqlite_kept *kept = keep_(of, *function, call);
        if (kept == nullptr) return;
        call.kept = kept->object();
    }
    run request = {*function, call};
    dv_error_t error;
    if (dv_protect(run_, &request, &error) != 0) return fail_(of, *function, call, error);
    finish_(of, call);
}

// ---------------------------------------------------------------------------------------------------------
// Registration
// ---------------------------------------------------------------------------------------------------------

bool is_immutable_(const sql_overloads<sql_function> &overloads) {
    return std::ranges::all_of(overloads.all(),
                               [](const sql_function *row) { return row->volatility == SQL_IMMUTABLE; });
}

}  // namespace

int dv::impl::sqlite_register_function(sqlite3 *db, const sql_function &function, const sql_catalogue &from,
                                       const char *of_column) {
    const auto overloads = sql_overloads_of(function, from.functions);
    if (overloads.count > SQL_OVERLOADS_MAX) return SQLITE_INTERNAL;
    auto *made = static_cast<function_set *>(sqlite3_malloc(sizeof(function_set)));
    if (made == nullptr) return SQLITE_NOMEM;
    *made = {overloads, of_column != nullptr};
    const char *const name = of_column != nullptr ? of_column : function.signature.name;
    const int arity = sql_param_count(function.signature) + int{of_column != nullptr};
    const int determinism = is_immutable_(overloads) ? SQLITE_DETERMINISTIC : 0;
    const int subtype = overloads.rows[0]->is_json ? _result_subtype : 0;
    // SQLite releases the set with the function, and when it refuses the function.
    return sqlite3_create_function_v2(db, name, arity, SQLITE_UTF8 | SQLITE_INNOCUOUS | determinism | subtype,
                                      made, call_, nullptr, nullptr, sqlite3_free);
}
