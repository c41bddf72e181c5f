// Loading the extension into a connection: whole, or not at all.

#ifndef DV_SQL_LOAD_H
#define DV_SQL_LOAD_H

#include "sql_function.h"
#include "sql_table.h"

namespace dv::impl {

// All that a connection gets. The overloads of a function may stand in different tables.
struct sql_catalogue {
    const char *marker;  // function without arguments whose presence says that a connection has been loaded
    std::span<const sql_function_table *const> functions;
    std::span<const sql_aggregate_table *const> aggregates;
    std::span<const sql_table *const> tables;
};

// Gives a connection what it does not have yet. Refuses it, unchanged, where the application has something of
// its own under one of the names; takes back what it gave when there is no memory for the rest.
//
//   message  set when the result is not SQLITE_OK, to memory of SQLite's
int sql_load(sqlite3 *db, const sql_catalogue &catalogue, char **message);

}  // namespace dv::impl

#endif  // DV_SQL_LOAD_H
