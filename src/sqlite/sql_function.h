// SQL functions as rows of tables: one table per file, listed in dvsqlite.cpp.
//
// A function is a name, the kinds of its parameters and a body. Rows with the same name and number of
// parameters, wherever they stand, are overloads, told apart by the kinds of the arguments. Argument checks,
// implicit conversions, the NULL rule and the way from a raise to an SQL error stand in sql_function.cpp
// once.

#ifndef DV_SQL_FUNCTION_H
#define DV_SQL_FUNCTION_H

#include <span>

#include "sql_value.h"

namespace dv::impl {

inline constexpr int SQL_PARAMS_MAX = 7;

struct sql_function;

// One call of a function. Bodies run under a recovery point: they may raise, and own nothing.
struct sql_call {
    sqlite3_context *context;
    const sql_function *function;
    int argc;
    sqlite3_value **raw;             // the arguments as SQLite passed them
    sql_value args[SQL_PARAMS_MAX];  // each of the kind that its parameter names
    const void *kept;                // what the function's keeper made, NULL without one
};

// What a result depends on, as SQLite's flag. Only functions of their arguments may stand in indexes and
// generated columns.
enum sql_dependence : int { SQL_ON_ARGUMENTS = SQLITE_DETERMINISTIC, SQL_ON_CLOCK = 0 };

// What a function keeps for all its calls. A connection makes it with its functions and releases it with
// them; no other connection sees it, and calls only read it.
struct sql_keeper {
    void *(*make)();  // NULL: there is no memory; may not raise
    void (*release)(void *kept);
};

// Rules for every function: an argument of SQL NULL gives SQL NULL, unless its parameter is SQL_KIND_ANY. A
// NUMBER parameter takes INTEGER and finite REAL too, a TEXT parameter no text with a NUL inside. No function
// has side effects: all are registered as innocuous.
struct sql_function {
    const char *name;
    sql_kind params[SQL_PARAMS_MAX];  // SQL_KIND_NONE behind the last
    void (*body)(sql_call &call);     // gives its result with sql_return, or fails
    sql_dependence depends = SQL_ON_ARGUMENTS;
    const sql_keeper *keeper = nullptr;  // in one overload of a name and number of parameters
};

// An aggregate that is a window function too. step takes a row in and inverse takes it out again; neither
// gets SQL NULL. value gives the result of the rows that are in. All run under a recovery point. The state
// is plain memory, all 0 before the first step, and is dropped without notice.
struct sql_aggregate {
    const char *name;
    sql_kind param;
    int state_size;  // bytes
    void (*step)(void *state, const sql_value &value);
    void (*inverse)(void *state, const sql_value &value);
    void (*value)(sqlite3_context *context, const void *state);
};

using sql_function_table = std::span<const sql_function>;
using sql_aggregate_table = std::span<const sql_aggregate>;

extern const sql_function_table general_functions;
extern const sql_function_table number_functions;
extern const sql_function_table date_functions;
extern const sql_function_table time_functions;
extern const sql_function_table timestamp_functions;
extern const sql_function_table ts_tz_functions;
extern const sql_function_table datetime_model_functions;
extern const sql_function_table datetime_read_functions;
extern const sql_function_table interval_functions;
extern const sql_function_table extract_functions;
extern const sql_function_table number_model_functions;
extern const sql_function_table rowid_functions;
extern const sql_function_table type_functions;
extern const sql_aggregate_table number_aggregates;

int sql_param_count(const sql_function &function);

// Make a function known to a connection, the scalar one with all its overloads in the tables; return an
// SQLite code.
int sql_register_function(sqlite3 *db, const sql_function &function,
                          std::span<const sql_function_table *const> tables);
int sql_register_aggregate(sqlite3 *db, const sql_aggregate &aggregate);

// Fails a call because of the value of an argument.
void sql_fail_with_text(const sql_call &call, const char *text);

// The body of a function that takes a value of its result type as it is.
inline void sql_return_argument(sql_call &call) { sql_return(call.context, call.args[0]); }

// The INTEGER arguments from position `first` on as ints, as many as `ints` has. False when one does not fit;
// the call has failed then.
bool sql_get_ints(const sql_call &call, int first, std::span<int> ints);

// A setting without "=" is the name of a language: what stands before it then.
inline constexpr char SQL_LANGUAGE_SETTING[] = "NLS_DATE_LANGUAGE=";

// False when the TEXT argument at a position is longer than a language setting may be: the call has failed
// then.
bool sql_check_setting(const sql_call &call, int position);

// A word of a fixed list, such as a field of a date, and what it stands for, which is not 0.
struct sql_word {
    const char *text;
    int meaning;
};

// The meaning of the word that a TEXT argument is, in any case; 0 when it is none of them: the call has
// failed then.
int sql_get_word(const sql_call &call, int position, std::span<const sql_word> words);

// For both kinds of functions, between SQLite and the bodies:

// Does a parameter take a value of this kind?
bool sql_accepts(sql_kind param, sql_kind kind);

// Makes a value that a parameter takes one of the parameter's kind. False when its value will not do: the
// call has failed then. May raise.
bool sql_convert(sqlite3_context *context, const char *function, int position, sql_value &value,
                 sql_kind param);

// Fails the call with an error that the library raised.
void sql_fail_with_raise(sqlite3_context *context, const char *function, const dv_error_t &error);

// Fails the call because of the kind of an argument. Positions count from 0; `expected` are the kinds that
// would do, without duplicates.
void sql_fail_with_kind(sqlite3_context *context, const char *function, int position, const sql_value &value,
                        std::span<const sql_kind> expected);

}  // namespace dv::impl

#endif  // DV_SQL_FUNCTION_H
