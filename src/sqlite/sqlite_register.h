// Rows of the catalogue as SQLite's functions and virtual tables. Each makes one known to a connection and
// returns an SQLite code.

#ifndef DV_SQLITE_REGISTER_H
#define DV_SQLITE_REGISTER_H

#include "sql_catalogue.h"
#include "sqlite_api.h"

namespace dv::impl {

// A function or an aggregate, with all its overloads in the catalogue.
//
//   of_column  the name of the form that names a column (sqlite_column_function.h); NULL: the function itself
int sqlite_register_function(sqlite3 *db, const sql_function &function, const sql_catalogue &from,
                             const char *of_column);
int sqlite_register_aggregate(sqlite3 *db, const sql_aggregate &aggregate, const sql_catalogue &from);

// A virtual table that is there without being created, with all its overloads in the catalogue.
int sqlite_register_table(sqlite3 *db, const sql_table &table, const sql_catalogue &from);

}  // namespace dv::impl

#endif  // DV_SQLITE_REGISTER_H
