// Overloads: the rows of one name and number of parameters, and the one that takes the arguments of a call.
//
// An engine that knows functions by name and number of arguments alone keeps a set with each, and lets
// sql_resolve choose; one that chooses by types itself gives it the row.

#ifndef DV_SQL_OVERLOAD_H
#define DV_SQL_OVERLOAD_H

#include "sql_catalogue.h"

namespace dv::impl {

inline constexpr int SQL_OVERLOADS_MAX = 24;

template <typename Row>
struct sql_overloads {
    int count;  // above SQL_OVERLOADS_MAX: there was no room for all
    const Row *rows[SQL_OVERLOADS_MAX];

    std::span<const Row *const> all() const { return {rows, static_cast<size_t>(count)}; }
};

bool sql_is_overload(const sql_signature &x, const sql_signature &y);

// The overloads of a row, itself among them, in the order of the tables.
template <typename Row>
sql_overloads<Row> sql_overloads_of(const Row &of, std::span<const std::span<const Row> *const> tables) {
    sql_overloads<Row> set{};
    sql_for_each(tables, [&](const Row &row) {
        if (!sql_is_overload(row.signature, of.signature)) return;
        if (set.count < SQL_OVERLOADS_MAX) set.rows[set.count] = &row;
        ++set.count;
    });
    return set;
}

// Are all arguments of kinds that the parameters take?
inline bool sql_fits(const sql_signature &signature, const sql_call &call) {
    for (int i = 0; i < call.argc; ++i) {
        if (!sql_accepts(signature.params[i], call.args[i].kind)) return false;
    }
    return true;
}

// Is an argument SQL NULL where the parameter takes none?
inline bool sql_has_null(const sql_signature &signature, const sql_call &call) {
    for (int i = 0; i < call.argc; ++i) {
        if (call.args[i].kind == SQL_KIND_NULL && signature.params[i] != SQL_KIND_ANY) return true;
    }
    return false;
}

// Fails a call whose arguments fit none of the rows: names the first bad argument of those that fit best.
[[gnu::cold]] void sql_fail_unresolved(sql_call &call, std::span<const sql_signature *const> rows);

// Will the argument at a position, a TEXT or REAL, do for a parameter that takes its kind? The call has
// failed when it will not.
bool sql_check_value(sql_call &call, int position, sql_kind param);

// Looks at the values of arguments that fit; false when one will not do: the call has failed then.
inline bool sql_check(sql_call &call, const sql_signature &signature) {
    for (int i = 0; i < call.argc; ++i) {
        const sql_kind kind = call.args[i].kind;
        if (kind != SQL_KIND_TEXT && kind != SQL_KIND_REAL) continue;
        if (!sql_check_value(call, i, signature.params[i])) return false;
    }
    return true;
}

// Which of at most SQL_OVERLOADS_MAX overloads takes the arguments of a call, which it then may be run with.
// NULL: the call has its result, SQL NULL or a failure.
template <typename Row>
const Row *sql_resolve(std::span<const Row *const> overloads, sql_call &call) {
    if (sql_has_null(overloads[0]->signature, call)) return nullptr;
    for (const Row *row : overloads) {
        if (sql_fits(row->signature, call)) return sql_check(call, row->signature) ? row : nullptr;
    }
    const sql_signature *signatures[SQL_OVERLOADS_MAX];
    for (size_t i = 0; i < overloads.size(); ++i) signatures[i] = &overloads[i]->signature;
    sql_fail_unresolved(call, {signatures, overloads.size()});
    return nullptr;
}

// Makes a NUMBER of an INTEGER or REAL; of that the shortest decimal that reads back as it, so that a literal
// is what was written.
void sql_to_number(sql_value &value);

// Is an argument of another kind than its parameter?
inline bool sql_must_convert(const sql_call &call, const sql_signature &signature) {
    for (int i = 0; i < call.argc; ++i) {
        if (signature.params[i] == SQL_KIND_NUMBER && call.args[i].kind != SQL_KIND_NUMBER) return true;
    }
    return false;
}

// Makes the arguments that the row takes of the kinds that its parameters name. Raises what
// number_from_double_shortest does. Runs under the engine's recovery point, the body behind it.
inline void sql_convert(sql_call &call, const sql_signature &signature) {
    for (int i = 0; i < call.argc; ++i) {
        const bool is_number = call.args[i].kind == SQL_KIND_NUMBER;
        if (signature.params[i] == SQL_KIND_NUMBER && !is_number) sql_to_number(call.args[i]);
    }
}

}  // namespace dv::impl

#endif  // DV_SQL_OVERLOAD_H
