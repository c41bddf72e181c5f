// The statements of a text view.
//
//     CREATE VIEW main."sale_text" AS SELECT to_char("sale"."day", 'DD.MM.YYYY') AS "day", ... FROM "sale";
//     CREATE TRIGGER main."sale_text_insert" INSTEAD OF INSERT ON "sale_text"
//         BEGIN INSERT INTO "sale"("day", ...)
//             VALUES (dv_column_to_date(nullif(NEW."day", ''), 'DD.MM.YYYY', 'day'), ...);
//         END;
//
// and two triggers more. A row to be changed or deleted is found by the primary key where that is unique, and
// else by all that the view shows of it. Of rows that show the same each change takes one, so that as many
// change as were shown.

#include "sqlite_text_view_sql.h"

#include <iterator>

#include "sql_try.h"
#include "sqlite_column_function.h"

using namespace dv::impl;

namespace {

constexpr const char *_rowid_names[] = {"rowid", "_rowid_", "oid"};

bool is_typed_(const text_view_column &column) { return column.type.type != nullptr; }

void append_separator_(sqlite3_str *text, const char *separator) {
    if (sqlite3_str_length(text) > 0) sqlite3_str_appendall(text, separator);
}

// ", 'DD MONTH YYYY', 'RUSSIAN'"
void append_model_(sqlite3_str *text, const text_view_column &column) {
    sqlite3_str_appendf(text, ", %Q", column.model);
    if (column.option != nullptr) sqlite3_str_appendf(text, ", %Q", column.option);
}

// "sale"."day". A name in quotes alone would be a text once the table has no such column.
void append_name_(sqlite3_str *text, const text_view_column &column) {
    sqlite3_str_appendf(text, "\"%w\".\"%w\"", column.table, column.name);
}

// Texts are shown as they are: they are no values of the type.
void append_shown_(sqlite3_str *text, const text_view_column &column) {
    if (!is_typed_(column)) return append_name_(text, column);
    sqlite3_str_appendall(text, "CASE typeof(");
    append_name_(text, column);
    sqlite3_str_appendall(text, ") WHEN 'text' THEN ");
    append_name_(text, column);
    sqlite3_str_appendall(text, column.model == nullptr ? " ELSE dv_text(" : " ELSE to_char(");
    append_name_(text, column);
    if (column.model != nullptr) append_model_(text, column);
    sqlite3_str_appendall(text, ") END");
}

// "dv_column_to_date(", whose errors name the column; what is read follows.
void append_call_begin_(sqlite3_str *text, const char *function) {
    sqlite3_str_appendf(text, "%s(", sqlite_column_function(function));
}

void append_call_end_(sqlite3_str *text, const text_view_column &column) {
    sqlite3_str_appendf(text, ", %Q)", column.name);
}

// The column of the new row, read. An empty text is SQL NULL. A model reads texts, and leaves numbers and
// values alone.
void append_read_(sqlite3_str *text, const text_view_column &column) {
    const char *name = column.name, *reader = column.type.type->reader;
    if (column.model != nullptr) {
        sqlite3_str_appendf(text, "CASE typeof(NEW.\"%w\") WHEN 'text' THEN ", name);
        append_call_begin_(text, reader);
        sqlite3_str_appendf(text, "nullif(NEW.\"%w\", '')", name);
        append_model_(text, column);
        append_call_end_(text, column);
        sqlite3_str_appendall(text, " ELSE ");
    }
    append_call_begin_(text, reader);
    sqlite3_str_appendf(text, "nullif(NEW.\"%w\", '')", name);
    append_call_end_(text, column);
    if (column.model != nullptr) sqlite3_str_appendall(text, " END");
}

void append_cast_begin_(sqlite3_str *text, const declared_type &type) {
    if (type.precision > 0) append_call_begin_(text, "dv_cast_number");
    if (type.leading >= 0) append_call_begin_(text, "dv_cast_leading");
    if (type.fraction >= 0) append_call_begin_(text, "dv_cast_fraction");
}

void append_cast_end_(sqlite3_str *text, const text_view_column &column) {
    const declared_type &type = column.type;
    const auto append_end = [&](int precision) {
        sqlite3_str_appendf(text, ", %d", precision);
        append_call_end_(text, column);
    };
    if (type.precision > 0) {
        sqlite3_str_appendf(text, ", %d", type.precision);
        append_end(type.scale);
    }
    if (type.fraction >= 0) append_end(type.fraction);
    if (type.leading >= 0) append_end(type.leading);
}

// What is inserted: SQL NULL gives the default.
void append_inserted_(sqlite3_str *text, const text_view_column &column) {
    append_cast_begin_(text, column.type);
    if (column.preset != nullptr) sqlite3_str_appendall(text, "coalesce(");
    if (is_typed_(column)) {
        append_read_(text, column);
    } else {
        sqlite3_str_appendf(text, "NEW.\"%w\"", column.name);
    }
    if (column.preset != nullptr) {
        sqlite3_str_appendall(text, ", ");
        if (is_typed_(column)) append_call_begin_(text, column.type.type->reader);
        sqlite3_str_appendf(text, "(%s\n)", column.preset);  // it may end in a comment
        if (is_typed_(column)) append_call_end_(text, column);
        sqlite3_str_appendall(text, ")");
    }
    append_cast_end_(text, column);
}

// A column whose text is the same keeps its value, also what the text does not show of it.
void append_changed_(sqlite3_str *text, const text_view_column &column) {
    sqlite3_str_appendf(text, "\"%w\" = ", column.name);
    if (!is_typed_(column)) return sqlite3_str_appendf(text, "NEW.\"%w\"", column.name);
    sqlite3_str_appendf(text, "CASE WHEN NEW.\"%w\" IS OLD.\"%w\" THEN ", column.name, column.name);
    append_name_(text, column);
    sqlite3_str_appendall(text, " ELSE ");
    append_cast_begin_(text, column.type);
    append_read_(text, column);
    append_cast_end_(text, column);
    sqlite3_str_appendall(text, " END");
}

// By what is shown, byte by byte.
void append_all_(sqlite3_str *text, const text_view_column &column) {
    append_separator_(text, " AND ");
    append_shown_(text, column);
    sqlite3_str_appendf(text, " COLLATE BINARY IS OLD.\"%w\"", column.name);
}

// By its value, so that an index serves: what the text is read as, or where that is none, the text or the
// number that it shows.
void append_key_(sqlite3_str *text, const text_view_column &column) {
    append_separator_(text, " AND ");
    append_name_(text, column);
    if (!is_typed_(column)) return sqlite3_str_appendf(text, " IS OLD.\"%w\"", column.name);
    const char *reader = column.type.type->reader, *try_reader = sql_try_name(reader);
    sqlite3_str_appendf(text, " IN (%s(OLD.\"%w\"), OLD.\"%w\", CAST(OLD.\"%w\" AS NUMERIC))",
                        try_reader != nullptr ? try_reader : reader, column.name, column.name, column.name);
    append_all_(text, column);
}

// "WHERE "id" IS OLD."id"", or by way of the rowid, one row of those that show the same.
void append_where_(sqlite3_str *text, const char *table, const char *rowid, const char *key,
                   const char *all) {
    if (rowid == nullptr) return sqlite3_str_appendf(text, "WHERE %s", key);
    sqlite3_str_appendf(text, "WHERE %s = (SELECT %s FROM \"%w\" WHERE %s LIMIT 1)", rowid, rowid, table,
                        key != nullptr ? key : all);
}

struct statement_names {
    const char *schema;
    const char *table;
};

void append_trigger_(sqlite3_str *text, const statement_names &names, const char *event, const char *suffix) {
    sqlite3_str_appendf(text, "CREATE TRIGGER \"%w\".\"%w_text_%s\" INSTEAD OF %s ON \"%w_text\" BEGIN ",
                        names.schema, names.table, suffix, event, names.table);
}

constexpr char _end_of_trigger[] = "; END;\n";

}  // namespace

text_view_pieces dv::impl::sqlite_begin_text_view() {
    text_view_pieces pieces{};
    sqlite3_str **const texts[] = {&pieces.shown,   &pieces.names, &pieces.inserted,
                                   &pieces.changed, &pieces.key,   &pieces.all};
    for (sqlite3_str **text : texts) *text = sqlite3_str_new(nullptr);
    pieces.is_key_unique = true;
    return pieces;
}

void dv::impl::sqlite_append_column(text_view_pieces &pieces, const text_view_column &column) {
    append_separator_(pieces.shown, ", ");
    append_shown_(pieces.shown, column);
    sqlite3_str_appendf(pieces.shown, " AS \"%w\"", column.name);
    append_all_(pieces.all, column);
    for (size_t i = 0; i < std::size(_rowid_names); ++i) {
        if (sqlite3_stricmp(column.name, _rowid_names[i]) == 0) pieces.is_rowid_taken[i] = true;
    }
    ++pieces.columns;
    if (is_typed_(column)) ++pieces.typed_columns;
    if (column.is_generated) return;

    append_separator_(pieces.names, ", ");
    sqlite3_str_appendf(pieces.names, "\"%w\"", column.name);
    append_separator_(pieces.inserted, ", ");
    append_inserted_(pieces.inserted, column);
    append_separator_(pieces.changed, ", ");
    append_changed_(pieces.changed, column);
    if (!column.is_key) return;
    ++pieces.key_columns;
    append_key_(pieces.key, column);
    pieces.has_key_model = pieces.has_key_model || column.model != nullptr;
    if (column.model != nullptr || (!column.is_not_null && !column.is_integer)) pieces.is_key_unique = false;
}

const char *dv::impl::sqlite_rowid_name(const text_view_pieces &pieces) {
    for (size_t i = 0; i < std::size(_rowid_names); ++i) {
        if (!pieces.is_rowid_taken[i]) return _rowid_names[i];
    }
    return nullptr;
}

char *dv::impl::sqlite_finish_text_view(text_view_pieces &pieces, const char *schema, const char *table,
                                        bool has_rowid) {
    const statement_names names = {schema, table};
    const char *rowid = has_rowid ? sqlite_rowid_name(pieces) : nullptr;
    char *const shown = sqlite3_str_finish(pieces.shown), *const columns = sqlite3_str_finish(pieces.names),
                *const inserted = sqlite3_str_finish(pieces.inserted),
                *const changed = sqlite3_str_finish(pieces.changed),
                *const key = sqlite3_str_finish(pieces.key), *const all = sqlite3_str_finish(pieces.all);
    const bool is_by_key = !has_rowid || (pieces.key_columns > 0 && pieces.is_key_unique);
    const bool has_memory = shown != nullptr && columns != nullptr && inserted != nullptr &&
                            changed != nullptr && all != nullptr && (key != nullptr || !is_by_key);
    char *statements = nullptr;
    if (has_memory) {
        const char *found_by = is_by_key ? key : nullptr;
        sqlite3_str *text = sqlite3_str_new(nullptr);
        sqlite3_str_appendf(text, "CREATE VIEW \"%w\".\"%w_text\" %s SELECT %s FROM \"%w\";\n", schema, table,
                            TEXT_VIEW_MARK, shown, table);
        append_trigger_(text, names, "INSERT", "insert");
        sqlite3_str_appendf(text, "INSERT INTO \"%w\"(%s) VALUES (%s)%s", table, columns, inserted,
                            _end_of_trigger);
        append_trigger_(text, names, "UPDATE", "update");
        sqlite3_str_appendf(text, "UPDATE \"%w\" SET %s ", table, changed);
        append_where_(text, table, rowid, found_by, all);
        sqlite3_str_appendall(text, _end_of_trigger);
        append_trigger_(text, names, "DELETE", "delete");
        sqlite3_str_appendf(text, "DELETE FROM \"%w\" ", table);
        append_where_(text, table, rowid, found_by, all);
        sqlite3_str_appendall(text, _end_of_trigger);
        statements = sqlite3_str_finish(text);
    }
    for (char *piece : {shown, columns, inserted, changed, key, all}) sqlite3_free(piece);
    return statements;
}
