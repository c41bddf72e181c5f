// Aggregates, which are window functions too: the steps of SQLite's protocol, each under a recovery point.
//
// Rows of SQL NULL are not counted. A window asks for a value after every move of its frame.

#include "sql_function.h"

using namespace dv::impl;

namespace {

// A row that goes into or out of the state.
struct row_change {
    const sql_aggregate *aggregate;
    sqlite3_context *context;
    void (*apply)(void *state, const sql_value &value);
    sql_value value;
    void *state;
};

struct result_call {
    const sql_aggregate *aggregate;
    sqlite3_context *context;
    const void *state;
};

const sql_aggregate &aggregate_of_(sqlite3_context *context) {
    return *static_cast<const sql_aggregate *>(sqlite3_user_data(context));
}

void run_change_(void *arg) {
    auto &change = *static_cast<row_change *>(arg);
    const sql_aggregate &aggregate = *change.aggregate;
    if (!sql_convert(change.context, aggregate.name, 0, change.value, aggregate.param)) return;
    change.apply(change.state, change.value);
}

void change_(sqlite3_context *context, sqlite3_value *raw, void (*apply)(void *, const sql_value &)) {
    const sql_aggregate &aggregate = aggregate_of_(context);
    row_change change{&aggregate, context, apply, {}, nullptr};
    if (!sql_decode(raw, change.value)) return sqlite3_result_error_nomem(context);
    if (change.value.kind == SQL_KIND_NULL) return;
    if (!sql_accepts(aggregate.param, change.value.kind)) {
        return sql_fail_with_kind(context, aggregate.name, 0, change.value, {&aggregate.param, 1});
    }
    change.state = sqlite3_aggregate_context(context, aggregate.state_size);
    if (change.state == nullptr) return sqlite3_result_error_nomem(context);
    dv_error_t error;
    if (dv_protect(run_change_, &change, &error) != 0) sql_fail_with_raise(context, aggregate.name, error);
}

void step_(sqlite3_context *context, int, sqlite3_value **argv) {
    change_(context, argv[0], aggregate_of_(context).step);
}

void inverse_(sqlite3_context *context, int, sqlite3_value **argv) {
    change_(context, argv[0], aggregate_of_(context).inverse);
}

void run_value_(void *arg) {
    const auto &result = *static_cast<const result_call *>(arg);
    result.aggregate->value(result.context, result.state);
}

void value_(sqlite3_context *context) {
    const sql_aggregate &aggregate = aggregate_of_(context);
    result_call result{&aggregate, context, sqlite3_aggregate_context(context, 0)};
    if (result.state == nullptr) return;  // no row: SQL NULL
    dv_error_t error;
    if (dv_protect(run_value_, &result, &error) != 0) sql_fail_with_raise(context, aggregate.name, error);
}

}  // namespace

int dv::impl::sql_register_aggregate(sqlite3 *db, const sql_aggregate &aggregate) {
    return sqlite3_create_window_function(
        db, aggregate.name, 1, SQLITE_UTF8 | SQLITE_DETERMINISTIC | SQLITE_INNOCUOUS,
        const_cast<sql_aggregate *>(&aggregate), step_, value_, value_, inverse_, nullptr);
}
