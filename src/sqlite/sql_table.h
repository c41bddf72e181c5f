// Read-only tables in SQL: virtual tables that are there without being created. A table is one row
// (sql_table) in the file of what it shows; how SQLite walks it stands in sql_table.cpp once.

#ifndef DV_SQL_TABLE_H
#define DV_SQL_TABLE_H

#include "sqlite_api.h"

namespace dv::impl {

// What a walk goes through: `rows` rows of some subject.
struct sql_rows {
    const void *subject;
    int rows;
};

struct sql_table {
    const char *name;
    const char *declaration;  // CREATE TABLE x(...); a parameter is its last column, HIDDEN
    int param_column;         // index of the parameter's column; -1: none

    // What to walk: argument is the parameter's, NULL without one. Returns an SQLite code; with SQLITE_ERROR
    // it says what is wrong with the argument, in memory of SQLite's.
    int (*begin)(sqlite3_value *argument, sql_rows &walk, char *&fault);

    // Gives one field of row 0 to rows - 1.
    void (*column)(sqlite3_context *context, const void *subject, int row, int column);

    // Is the row shown? NULL: all are.
    bool (*is_shown)(const void *subject, int row) = nullptr;
};

extern const sql_table types_table;
extern const sql_table zones_table;
extern const sql_table zone_transitions_table;

// Makes a table known to a connection; returns an SQLite code.
int sql_register_table(sqlite3 *db, const sql_table &table);

}  // namespace dv::impl

#endif  // DV_SQL_TABLE_H
