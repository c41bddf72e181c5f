// Values on their way between SQLite and the catalogue.

#ifndef DV_SQLITE_VALUE_H
#define DV_SQLITE_VALUE_H

#include "sql_call.h"
#include "sqlite_api.h"

namespace dv::impl {

// SQLite's memory, under its limits and in its accounts; throw_ raises DV_ERR_NO_MEMORY.
extern allocator_t sqlite_memory;

// What SQLite passed as one argument. A BLOB that is no value of the library becomes SQL_KIND_BLOB. Texts and
// BLOBs live as long as raw. False: there is no memory for it.
bool sqlite_take_argument(sql_value &value, sqlite3_value *raw);

// Begins a call with what SQLite passed. False: there is no memory for it; sqlite_begin has then ended the
// call in SQLite.
bool sqlite_take_arguments(sql_call &call, int argc, sqlite3_value **argv);
inline bool sqlite_begin(sqlite3_context *context, sql_call &call, int argc, sqlite3_value **argv) {
    const bool is_taken = sqlite_take_arguments(call, argc, argv);
    if (!is_taken) sqlite3_result_error_nomem(context);
    return is_taken;
}

// Gives SQLite what is in a call of a function, its result or why it failed, and frees its block.
void sqlite_finish(sqlite3_context *context, const char *function, sql_call &call);

// Ends a call with an error that was raised, as its message says, and frees its block.
void sqlite_fail(sqlite3_context *context, const char *function, sql_call &call, int code,
                 const char *message);

}  // namespace dv::impl

#endif  // DV_SQLITE_VALUE_H
