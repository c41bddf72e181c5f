// dv_create_text_view, dv_drop_text_view: a table is looked up with its columns, the statements are made and
// run, all or none.

#include "sqlite_text_view.h"

#include <cstdarg>
#include <cstring>

#include "sqlite_text_view_sql.h"

using namespace dv::impl;

namespace {

// One call: what is found on the way. Whoever fails says so to SQLite and returns false.
struct task {
    sqlite3_context *context;
    const char *function;
    sqlite3 *db;
    sqlite3_stmt *found;  // of the table; its texts live as long
    const char *schema;
    const char *table;
    bool has_rowid;
};

// ---------------------------------------------------------------------------------------------------------
// Failures and statements
// ---------------------------------------------------------------------------------------------------------

bool fail_(const task &t, const char *format, ...) {
    va_list args;
    va_start(args, format);
    char *const what = sqlite3_vmprintf(format, args);
    va_end(args);
    char *const text = what == nullptr ? nullptr : sqlite3_mprintf("%s: %s", t.function, what);
    if (text == nullptr) {
        sqlite3_result_error_nomem(t.context);
    } else {
        sqlite3_result_error(t.context, text, -1);
    }
    sqlite3_free(what);
    sqlite3_free(text);
    return false;
}

bool fail_without_memory_(const task &t) {
    sqlite3_result_error_nomem(t.context);
    return false;
}

// With what SQLite says of its last error.
bool fail_with_sqlite_(const task &t) {
    if (sqlite3_errcode(t.db) == SQLITE_NOMEM) return fail_without_memory_(t);
    return fail_(t, "%s", sqlite3_errmsg(t.db));
}

// A statement with texts for its parameters, in their order. NULL: the call has failed.
sqlite3_stmt *prepare_(const task &t, const char *sql, std::span<const char *const> texts) {
    sqlite3_stmt *statement = nullptr;
    int code = sqlite3_prepare_v2(t.db, sql, -1, &statement, nullptr);
    for (size_t i = 0; code == SQLITE_OK && i < texts.size(); ++i)
        code = sqlite3_bind_text(statement, static_cast<int>(i) + 1, texts[i], -1, SQLITE_STATIC);
    if (code == SQLITE_OK) return statement;
    fail_with_sqlite_(t);
    sqlite3_finalize(statement);
    return nullptr;
}

const char *text_(sqlite3_stmt *statement, int column) {
    return reinterpret_cast<const char *>(sqlite3_column_text(statement, column));
}

// The end of a statement, after its last step gave `code`.
bool finalize_(const task &t, sqlite3_stmt *statement, int code) {
    const bool is_done = code == SQLITE_DONE || code == SQLITE_ROW;
    if (!is_done) fail_with_sqlite_(t);
    sqlite3_finalize(statement);
    return is_done;
}

// ---------------------------------------------------------------------------------------------------------
// The table
// ---------------------------------------------------------------------------------------------------------

// As SQLite finds a name: temporary tables first, then main and what is attached. A whole name goes before
// one with its schema in front. To drop a view, its own name will do where its table has gone.
constexpr char _find_table[] = R"(
    WITH named AS (
        SELECT schema, name, wr, 0 AS has_gone FROM pragma_table_list WHERE type = 'table'
        UNION ALL
        SELECT schema, substr(name, 1, length(name) - length('_text')), 0, 1 FROM pragma_table_list
        WHERE ?2 = 'view' AND type = 'view' AND name LIKE '%\_text' ESCAPE '\')
    SELECT t.schema, t.name, t.wr FROM named AS t JOIN pragma_database_list AS d ON d.name = t.schema
    WHERE t.name NOT LIKE 'sqlite\_%' ESCAPE '\'
      AND (lower(t.name) = lower(?1) OR lower(t.schema || '.' || t.name) = lower(?1))
    ORDER BY lower(t.name) = lower(?1) DESC, t.has_gone, t.schema = 'temp' DESC, d.seq LIMIT 1)";

// "table", or "view" where that of a table that has gone is meant, too.
bool find_table_(task &t, const char *name, const char *or_view) {
    const char *const texts[] = {name, or_view};
    t.found = prepare_(t, _find_table, texts);
    if (t.found == nullptr) return false;
    const int code = sqlite3_step(t.found);
    if (code == SQLITE_DONE) return fail_(t, "there is no table \"%w\"", name);
    if (code != SQLITE_ROW) return fail_with_sqlite_(t);
    t.schema = text_(t.found, 0);
    t.table = text_(t.found, 1);
    t.has_rowid = sqlite3_column_int(t.found, 2) == 0;
    return (t.schema != nullptr && t.table != nullptr) || fail_without_memory_(t);
}

// ---------------------------------------------------------------------------------------------------------
// Columns and models
// ---------------------------------------------------------------------------------------------------------

// A model is a text, or a list of it and what goes with it.
constexpr char _columns[] = R"(
    SELECT x.name, x.type, x.dflt_value, iif(m.type = 'array', m.value ->> 0, m.value), x.hidden > 1, x."notnull",
           x.pk, iif(m.type = 'array', m.value ->> 1, NULL)
    FROM pragma_table_xinfo(?1, ?2) AS x LEFT JOIN json_each(?3) AS m ON lower(m.key) = lower(x.name)
    WHERE x.hidden <> 1 ORDER BY x.cid)";
constexpr char _odd_models[] = R"(
    SELECT key FROM json_each(?3) WHERE type NOT IN ('text', 'null') AND NOT
        (type = 'array' AND json_array_length(value) = 2 AND json_type(value, '$[0]') = 'text'
         AND json_type(value, '$[1]') = 'text'))";
constexpr char _unknown_columns[] = R"(
    SELECT key FROM json_each(?3) WHERE lower(key) NOT IN (SELECT lower(name) FROM pragma_table_xinfo(?1, ?2)))";

bool takes_model_(sql_kind kind) {
    return kind == SQL_KIND_NUMBER || kind == SQL_KIND_DATE || kind == SQL_KIND_TIMESTAMP ||
           kind == SQL_KIND_TS_TZ;
}

// A model is tried: what is shown under it must be read, too.
bool check_model_(const task &t, const text_view_column &column) {
    if (column.type.type == nullptr || !takes_model_(column.type.type->kind))
        return fail_(t, "the column \"%w\" takes no model", column.name);
    const char *reader = column.type.type->reader;
    const char *sample = column.type.type->kind == SQL_KIND_NUMBER ? "1" : "2001-02-03 04:05:06";
    const char *const texts[] = {column.model, column.option};
    const size_t count = column.option == nullptr ? 1 : 2;
    const char *const model = count == 1 ? "?1" : "?1, ?2";
    char *sql = sqlite3_mprintf("SELECT %s(to_char(%s(%Q), %s), %s)", reader, reader, sample, model, model);
    if (sql == nullptr) return fail_without_memory_(t);
    sqlite3_stmt *statement = prepare_(t, sql, {texts, count});
    sqlite3_free(sql);
    if (statement == nullptr) return false;
    const int code = sqlite3_step(statement);
    if (code == SQLITE_ROW) return finalize_(t, statement, code);
    if (sqlite3_errcode(t.db) == SQLITE_NOMEM) {
        fail_without_memory_(t);
    } else {
        fail_(t, "the column \"%w\" cannot be shown and read under its model: %s", column.name,
              sqlite3_errmsg(t.db));
    }
    sqlite3_finalize(statement);
    return false;
}

bool append_column_(const task &t, sqlite3_stmt *row, text_view_pieces &pieces) {
    const char *name = text_(row, 0), *type = text_(row, 1);
    if (name == nullptr || type == nullptr) return fail_without_memory_(t);
    const text_view_column column = {t.table,
                                     name,
                                     sql_parse_declared_type(type),
                                     text_(row, 2),
                                     text_(row, 3),
                                     text_(row, 7),
                                     sqlite3_column_int(row, 4) != 0,
                                     sqlite3_column_int(row, 5) != 0,
                                     sqlite3_column_int(row, 6) != 0,
                                     sqlite3_stricmp(type, "INTEGER") == 0};
    if (!column.type.is_sound)
        return fail_(t, "the column \"%w\" is declared %s, which is no precision of %s", name, type,
                     column.type.type->name);
    if (column.model != nullptr && !check_model_(t, column)) return false;
    sqlite_append_column(pieces, column);
    return true;
}

bool append_columns_(const task &t, const char *models, text_view_pieces &pieces) {
    const char *const texts[] = {t.table, t.schema, models};
    sqlite3_stmt *row = prepare_(t, _columns, texts);
    if (row == nullptr) return false;
    int code = SQLITE_DONE;
    while ((code = sqlite3_step(row)) == SQLITE_ROW) {
        if (append_column_(t, row, pieces)) continue;
        sqlite3_finalize(row);
        return false;
    }
    return finalize_(t, row, code);
}

// Fails with `fault` for the first column that the statement finds.
bool check_keys_(const task &t, const char *models, const char *sql, const char *fault) {
    const char *const texts[] = {t.table, t.schema, models};
    sqlite3_stmt *key = prepare_(t, sql, texts);
    if (key == nullptr) return false;
    const int code = sqlite3_step(key);
    if (code == SQLITE_ROW) fail_(t, fault, text_(key, 0));
    return finalize_(t, key, code) && code == SQLITE_DONE;
}

bool check_models_(const task &t, const char *models) {
    return check_keys_(t, models, _unknown_columns, "there is no column \"%w\"") &&
           check_keys_(t, models, _odd_models,
                       "the model of the column \"%w\" is neither a text nor a list of a model and a "
                       "language, or punctuation");
}

bool check_table_(const task &t, const text_view_pieces &pieces) {
    if (pieces.typed_columns == 0)
        return fail_(t, "no column of \"%w\" is declared with one of the types", t.table);
    if (t.has_rowid && sqlite_rowid_name(pieces) == nullptr)
        return fail_(t, "columns of \"%w\" have taken the names of the rowid", t.table);
    if (!t.has_rowid && pieces.has_key_model)
        return fail_(t, "a column of the primary key of \"%w\", which is WITHOUT ROWID, takes no model",
                     t.table);
    return true;
}

// The statements; NULL: the call has failed.
char *make_statements_(const task &t, const char *models) {
    text_view_pieces pieces = sqlite_begin_text_view();
    const bool is_made =
        check_models_(t, models) && append_columns_(t, models, pieces) && check_table_(t, pieces);
    char *statements = sqlite_finish_text_view(pieces, t.schema, t.table, t.has_rowid);
    if (is_made && statements == nullptr) fail_without_memory_(t);
    if (is_made) return statements;
    sqlite3_free(statements);
    return nullptr;
}

// ---------------------------------------------------------------------------------------------------------
// Running
// ---------------------------------------------------------------------------------------------------------

enum view_state { VIEW_FREE, VIEW_OURS, VIEW_FOREIGN, VIEW_UNKNOWN };

// What has the name of the view; unknown: the call has failed.
view_state find_view_(const task &t) {
    char *sql = sqlite3_mprintf(
        "SELECT type = 'view' AND substr(sql, 1, length(?2)) = ?2 FROM \"%w\".sqlite_schema WHERE "
        "lower(name) = "
        "lower(?1) AND type IN ('table', 'view', 'index')",
        t.schema);
    char *name = sqlite3_mprintf("%s_text", t.table);
    char *head = sqlite3_mprintf("CREATE VIEW \"%w_text\" %s", t.table, TEXT_VIEW_MARK);
    view_state state = VIEW_UNKNOWN;
    if (sql == nullptr || name == nullptr || head == nullptr) {
        fail_without_memory_(t);
    } else {
        const char *const texts[] = {name, head};
        sqlite3_stmt *row = prepare_(t, sql, texts);
        const int code = row == nullptr ? SQLITE_ERROR : sqlite3_step(row);
        if (code == SQLITE_DONE) state = VIEW_FREE;
        if (code == SQLITE_ROW) state = sqlite3_column_int(row, 0) != 0 ? VIEW_OURS : VIEW_FOREIGN;
        if (row != nullptr) finalize_(t, row, code);
    }
    for (char *text : {sql, name, head}) sqlite3_free(text);
    return state;
}

bool exec_(const task &t, const char *sql) {
    return sqlite3_exec(t.db, sql, nullptr, nullptr, nullptr) == SQLITE_OK || fail_with_sqlite_(t);
}

bool drop_view_(const task &t) {
    char *sql = sqlite3_mprintf("DROP VIEW \"%w\".\"%w_text\"", t.schema, t.table);
    const bool is_dropped = sql == nullptr ? fail_without_memory_(t) : exec_(t, sql);
    sqlite3_free(sql);
    return is_dropped;
}

// An authorizer may have a statement do nothing: is the view there, with its three triggers?
bool is_whole_(const task &t) {
    char *sql =
        sqlite3_mprintf("SELECT count(*) FROM \"%w\".sqlite_schema WHERE lower(tbl_name) = lower('%q_text')",
                        t.schema, t.table);
    if (sql == nullptr) return fail_without_memory_(t);
    sqlite3_stmt *row = prepare_(t, sql, {});
    sqlite3_free(sql);
    if (row == nullptr) return false;
    const int code = sqlite3_step(row);
    const bool is_whole = code == SQLITE_ROW && sqlite3_column_int(row, 0) == 4;
    return finalize_(t, row, code) && (is_whole || fail_(t, "not authorized"));
}

// Removes our view where there is one and runs the statements, NULL for none: all or nothing.
bool run_(const task &t, bool has_view, const char *statements) {
    if (!exec_(t, "SAVEPOINT dv_text_view")) return false;
    const bool is_run =
        (!has_view || drop_view_(t)) && (statements == nullptr || (exec_(t, statements) && is_whole_(t)));
    if (!is_run) sqlite3_exec(t.db, "ROLLBACK TO dv_text_view", nullptr, nullptr, nullptr);
    const int released = sqlite3_exec(t.db, "RELEASE dv_text_view", nullptr, nullptr, nullptr);
    return is_run && (released == SQLITE_OK || fail_with_sqlite_(t));
}

// Runs the statements and gives the name of the view.
void run_and_give_name_(const task &t, bool has_view, const char *statements) {
    char *name = sqlite3_mprintf("%s_text", t.table);
    if (name == nullptr) {
        fail_without_memory_(t);
    } else if (run_(t, has_view, statements)) {
        sqlite3_result_text(t.context, name, -1, sqlite3_free);
    } else {
        sqlite3_free(name);
    }
}

void create_or_replace_(task &t, const char *models) {
    const view_state state = find_view_(t);
    if (state == VIEW_UNKNOWN) return;
    if (state == VIEW_FOREIGN) {
        fail_(t, "there is something else of the name \"%w_text\"", t.table);
        return;
    }
    char *statements = make_statements_(t, models);
    if (statements == nullptr) return;
    run_and_give_name_(t, state == VIEW_OURS, statements);
    sqlite3_free(statements);
}

void drop_(task &t, const char *) {
    const view_state state = find_view_(t);
    if (state == VIEW_UNKNOWN) return;
    if (state != VIEW_OURS) {
        fail_(t, "there is no text view of \"%w\"", t.table);
        return;
    }
    run_and_give_name_(t, /*has_view=*/true, nullptr);
}

// Arguments are texts; SQL NULL gives SQL NULL, but for the models.
template <void (*Work)(task &t, const char *models)>
void call_(sqlite3_context *context, const char *function, const char *finds, int argc,
           sqlite3_value **argv) {
    task t = {context, function, sqlite3_context_db_handle(context), nullptr, nullptr, nullptr, true};
    const char *texts[2] = {nullptr, nullptr};
    for (int i = 0; i < argc; ++i) {
        const int type = sqlite3_value_type(argv[i]);
        if (type == SQLITE_NULL && i == 0) return;
        if (type == SQLITE_NULL) continue;
        if (type != SQLITE_TEXT) {
            fail_(t, "argument %d is no text", i + 1);
            return;
        }
        texts[i] = reinterpret_cast<const char *>(sqlite3_value_text(argv[i]));
        if (texts[i] == nullptr) return sqlite3_result_error_nomem(context);
        if (strlen(texts[i]) != static_cast<size_t>(sqlite3_value_bytes(argv[i]))) {
            fail_(t, "argument %d has a NUL inside its text", i + 1);
            return;
        }
    }
    if (find_table_(t, texts[0], finds)) Work(t, texts[1]);
    sqlite3_finalize(t.found);
}

constexpr char _create_name[] = "dv_create_text_view", _drop_name[] = "dv_drop_text_view";

void create_text_view_(sqlite3_context *context, int argc, sqlite3_value **argv) {
    call_<create_or_replace_>(context, _create_name, "table", argc, argv);
}

void drop_text_view_(sqlite3_context *context, int argc, sqlite3_value **argv) {
    call_<drop_>(context, _drop_name, "view", argc, argv);
}

constexpr sqlite_own_function _functions[] = {
    {_create_name, 1, create_text_view_},
    {_create_name, 2, create_text_view_},
    {_drop_name, 1, drop_text_view_},
};

}  // namespace

constinit const std::span<const sqlite_own_function> dv::impl::sqlite_own_functions = _functions;
