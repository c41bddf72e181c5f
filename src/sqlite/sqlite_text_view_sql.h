// The statements that make a text view, as texts.

#ifndef DV_SQLITE_TEXT_VIEW_SQL_H
#define DV_SQLITE_TEXT_VIEW_SQL_H

#include "sql_declared_type.h"
#include "sqlite_api.h"

namespace dv::impl {

// Behind the name of each text view: what tells it from a view of somebody else's.
inline constexpr char TEXT_VIEW_MARK[] = "AS /* text view of dvtypes */";

// A column of a table. The texts live as long as the statement that found it.
struct text_view_column {
    const char *table;
    const char *name;
    declared_type type;
    const char *preset;  // the expression behind DEFAULT; NULL: none
    const char *model;   // NULL: none
    const char *option;  // what goes with the model, a language or punctuation; NULL: nothing
    bool is_generated;
    bool is_not_null;
    bool is_key;      // of the primary key
    bool is_integer;  // declared INTEGER
};

// The pieces of the statements, which grow column by column.
struct text_view_pieces {
    sqlite3_str *shown;     // "to_char("day", 'DD.MM.YYYY') AS "day", ..."
    sqlite3_str *names;     // of the columns that can be written
    sqlite3_str *inserted;  // what is inserted into them
    sqlite3_str *changed;   // "day" = ..., ...
    sqlite3_str *key;       // is a row the one that was shown? by the columns of the primary key
    sqlite3_str *all;       // the same by all columns
    int columns;
    int key_columns;
    int typed_columns;   // of a type of the library
    bool is_key_unique;  // no column of the key can be NULL, or has a model
    bool has_key_model;
    bool is_rowid_taken[3];  // by a column: rowid, _rowid_, oid
};

text_view_pieces sqlite_begin_text_view();
void sqlite_append_column(text_view_pieces &pieces, const text_view_column &column);

// "CREATE VIEW ...; CREATE TRIGGER ...; ...", in SQLite's memory; frees the pieces. NULL: there is no memory
// for it.
//
//   has_rowid  false: the table is WITHOUT ROWID
char *sqlite_finish_text_view(text_view_pieces &pieces, const char *schema, const char *table,
                              bool has_rowid);

// The name by which the rowid can be reached; NULL when columns have taken all.
const char *sqlite_rowid_name(const text_view_pieces &pieces);

}  // namespace dv::impl

#endif  // DV_SQLITE_TEXT_VIEW_SQL_H
