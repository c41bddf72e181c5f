// Running a row outside of an engine's own calls: under a recovery point, with what it keeps made and
// released.

#ifndef DV_SQL_RUN_H
#define DV_SQL_RUN_H

#include "sql_catalogue.h"

namespace dv::impl {

// Runs a row with arguments that fit it. Returns 0, with the result or the failure in the call, or the code
// that was raised, with *error filled in. Raises DV_ERR_NO_MEMORY. Frees call.block.
int sql_run(const sql_function &row, sql_call &call, dv_error_t &error);

// The same of what the row keeps alone, which is made and released.
int sql_make(const sql_function &row, sql_call &call, dv_error_t &error);

}  // namespace dv::impl

#endif  // DV_SQL_RUN_H
