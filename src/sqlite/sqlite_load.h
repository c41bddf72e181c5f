// Loading the extension into a connection: whole, or not at all.

#ifndef DV_SQLITE_LOAD_H
#define DV_SQLITE_LOAD_H

#include "sql_catalogue.h"
#include "sqlite_api.h"

namespace dv::impl {

// Gives a connection what it does not have yet. Refuses it, unchanged, where the application has something of
// its own under one of the names; takes back what it gave when there is no memory for the rest. The first
// function of the catalogue, which has no arguments, says that a connection has been loaded.
//
//   message  set when the result is not SQLITE_OK, to memory of SQLite's
int sqlite_load(sqlite3 *db, const sql_catalogue &of, char **message);

}  // namespace dv::impl

#endif  // DV_SQLITE_LOAD_H
