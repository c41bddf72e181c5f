// Aggregates, which are window functions too: the steps of SQLite's protocol. What may raise, the conversion
// of arguments and the result, has a recovery point.
//
// SQLite knows one aggregate per name and number of arguments and keeps its overloads with it. The first row
// of a group chooses one of them. Rows of SQL NULL are left out. A window asks for a value after every move
// of its frame.

#include <algorithm>

#include "sql_overload.h"
#include "sqlite_register.h"
#include "sqlite_value.h"

using namespace dv::impl;

namespace {

// SQLite keeps it with the aggregate.
struct aggregate_set {
    sql_overloads<sql_aggregate> overloads;
    int group_size;  // of the largest

    const char *name() const { return overloads.rows[0]->signature.name; }
};

// What SQLite keeps of a group, all 0 at first; the state comes behind.
struct alignas(SQL_STATE_ALIGN_MAX) group {
    const sql_aggregate *aggregate;  // NULL: no row came yet

    void *state() { return this + 1; }
};

const aggregate_set &set_of_(sqlite3_context *context) {
    return *static_cast<const aggregate_set *>(sqlite3_user_data(context));
}

// ---------------------------------------------------------------------------------------------------------
// Rows in and out
// ---------------------------------------------------------------------------------------------------------

using change_t = void (*sql_aggregate::*)(void *state, const sql_value *args);

struct conversion {
    sql_call &call;
    const sql_signature &signature;
};

void run_conversion_(void *arg) {
    const auto &[call, signature] = *static_cast<conversion *>(arg);
    sql_convert(call, signature);
}

// False: the call has failed.
bool convert_(sqlite3_context *context, const char *name, sql_call &call, const sql_signature &signature) {
    if (!sql_must_convert(call, signature)) return true;
    conversion request = {call, signature};
    dv_error_t error;
    if (dv_protect(run_conversion_, &request, &error) == 0) return true;
    sqlite_fail(context, name, call, error.code, error.message);
    return false;
}

// The aggregate for a row: the group's, where it has one. NULL: the row is left out, or the call has failed.
const sql_aggregate *resolve_(const aggregate_set &set, const sql_aggregate *of_group, sql_call &call) {
    return sql_resolve(of_group == nullptr ? set.overloads.all() : std::span(&of_group, 1), call);
}

// A row whose only argument is of the kind that the group's aggregate takes, as most are: nothing is left to
// choose or to convert, nor to check, as it is of texts and REALs. False: nothing is done.
bool change_at_once_(sqlite3_context *context, int argc, sqlite3_value **argv, change_t change) {
    auto *of = static_cast<group *>(sqlite3_aggregate_context(context, 0));
    sql_value value;
    if (of == nullptr || of->aggregate == nullptr || argc != 1 || !sqlite_take_argument(value, argv[0]))
        return false;
    if (value.kind != of->aggregate->signature.params[0] || value.kind == SQL_KIND_TEXT ||
        value.kind == SQL_KIND_REAL)
        return false;
    (of->aggregate->*change)(of->state(), &value);
    return true;
}

// Any row. Not inline: a call is large.
[[gnu::noinline]] void change_any_(sqlite3_context *context, int argc, sqlite3_value **argv,
                                   change_t change) {
    const aggregate_set &set = set_of_(context);
    sql_call call;
    if (!sqlite_begin(context, call, argc, argv)) return;
    auto *of = static_cast<group *>(sqlite3_aggregate_context(context, set.group_size));
    if (of == nullptr) return sqlite3_result_error_nomem(context);
    const sql_aggregate *aggregate = resolve_(set, of->aggregate, call);
    if (aggregate == nullptr) return sqlite_finish(context, set.name(), call);
    of->aggregate = aggregate;
    if (convert_(context, set.name(), call, aggregate->signature))
        (aggregate->*change)(of->state(), call.args);
}

void change_(sqlite3_context *context, int argc, sqlite3_value **argv, change_t change) {
    if (!change_at_once_(context, argc, argv, change)) change_any_(context, argc, argv, change);
}

void step_(sqlite3_context *context, int argc, sqlite3_value **argv) {
    change_(context, argc, argv, &sql_aggregate::step);
}

void inverse_(sqlite3_context *context, int argc, sqlite3_value **argv) {
    change_(context, argc, argv, &sql_aggregate::inverse);
}

// ---------------------------------------------------------------------------------------------------------
// Results
// ---------------------------------------------------------------------------------------------------------

struct result {
    group &of;
    sql_call &call;
};

void run_value_(void *arg) {
    const auto &[of, call] = *static_cast<result *>(arg);
    of.aggregate->value(call, of.state());
}

void value_(sqlite3_context *context) {
    auto *of = static_cast<group *>(sqlite3_aggregate_context(context, 0));
    if (of == nullptr || of->aggregate == nullptr) return;  // no row: SQL NULL
    const char *name = set_of_(context).name();
    sql_call call;
    sql_begin(call, &sqlite_memory);
    result request = {*of, call};
    dv_error_t error;
    if (dv_protect(run_value_, &request, &error) != 0)
        return sqlite_fail(context, name, call, error.code, error.message);
    sqlite_finish(context, name, call);
}

size_t largest_state_(const sql_overloads<sql_aggregate> &overloads) {
    size_t largest = 0;
    for (const sql_aggregate *row : overloads.all()) largest = std::max(largest, row->state_size);
    return largest;
}

}  // namespace

int dv::impl::sqlite_register_aggregate(sqlite3 *db, const sql_aggregate &aggregate,
                                        const sql_catalogue &from) {
    const auto overloads = sql_overloads_of(aggregate, from.aggregates);
    if (overloads.count > SQL_OVERLOADS_MAX) return SQLITE_INTERNAL;
    auto *made = static_cast<aggregate_set *>(sqlite3_malloc(sizeof(aggregate_set)));
    if (made == nullptr) return SQLITE_NOMEM;
    *made = {overloads, static_cast<int>(sizeof(group) + largest_state_(overloads))};
    // SQLite releases the set with the aggregate, and when it refuses the aggregate.
    return sqlite3_create_window_function(db, aggregate.signature.name, sql_param_count(aggregate.signature),
                                          SQLITE_UTF8 | SQLITE_DETERMINISTIC | SQLITE_INNOCUOUS, made, step_,
                                          value_, value_, inverse_, sqlite3_free);
}
