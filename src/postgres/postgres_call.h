// One call of a row of the catalogue by the server.
//
// A body runs without a recovery point of its own: what it raises becomes the server's error where it is
// raised (postgres_base.cpp), with the text that the catalogue has for the call. The rows of try_ functions
// alone are protected.

#ifndef DV_POSTGRES_CALL_H
#define DV_POSTGRES_CALL_H

#include <initializer_list>

#include "postgres_value.h"

namespace dv::impl {

// A function of the server: a row of the catalogue with the kinds that its parameters have here, which a row
// that takes any value leaves open.
struct postgres_function {
    int table, row;  // of catalogue.functions
    sql_kind params[SQL_PARAMS_MAX];
    sql_kind result;

    const sql_function &function() const {
        return (*catalogue.functions[static_cast<size_t>(table)])[static_cast<size_t>(row)];
    }
};

// The row of the catalogue with this name and these parameters; there is one.
const sql_function *postgres_find(const char *name, std::initializer_list<sql_kind> params);

Datum postgres_call(const postgres_function &of, FunctionCallInfo fcinfo);

// The same of a row whose parameters and result are NUMBERs and which keeps nothing.
Datum postgres_call_numbers(const postgres_function &of, FunctionCallInfo fcinfo);

// The same of a row that is an operation.
Datum postgres_operation(const postgres_function &of, FunctionCallInfo fcinfo);

// Runs a row that keeps nothing, with the arguments of a call; the result is in it. A failure has the
// SQLSTATE.
void postgres_run(const sql_function &row, sql_call &call, int sqlstate = ERRCODE_INVALID_PARAMETER_VALUE);

// Makes the failure of a call the server's error. Never returns.
[[noreturn, gnu::cold]] void postgres_fail(const sql_call &call,
                                           int sqlstate = ERRCODE_INVALID_PARAMETER_VALUE);

// The call that is running, of which an error gets its text.
struct postgres_running {
    const sql_function *row;  // NULL: none
    sql_call *call;
};
extern postgres_running postgres_current;

}  // namespace dv::impl

#endif  // DV_POSTGRES_CALL_H
