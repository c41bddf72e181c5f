// A connection of SQLite with the extension, which is linked into the program: what the extension gave it,
// and statements whose results are values that compare.

#ifndef DV_FUZZ_SQL_SESSION_H
#define DV_FUZZ_SQL_SESSION_H

#include <sqlite3.h>
#include <algorithm>

#include <list>
#include <set>
#include <string>
#include <vector>

#include "dvtypes/base.h"
#include "fuzz_input.h"

extern "C" int sqlite3_dvsqlite_init(sqlite3 *db, char **message, const struct sqlite3_api_routines *api);

namespace dv::fuzz {

[[noreturn]] inline void fail(const char *property, const std::string &sql, const std::string &got) {
    std::fprintf(stderr, "%s\n%s\n%s\n", property, sql.c_str(), got.c_str());
    std::abort();
}

struct sql_value_t {
    int type = SQLITE_NULL;
    int64_t integer = 0;
    double real = 0;
    std::string bytes{};
    bool operator==(const sql_value_t &) const = default;
};

inline std::string shown(const sql_value_t &value) {
    if (value.type == SQLITE_NULL) return "NULL";
    if (value.type == SQLITE_INTEGER) return std::to_string(value.integer);
    if (value.type == SQLITE_FLOAT) return std::to_string(value.real);
    std::string text = value.type == SQLITE_TEXT ? "'" + value.bytes + "' " : "";
    for (const char c : value.bytes) {
        char digits[4];
        std::snprintf(digits, sizeof digits, "%02x", static_cast<unsigned>(static_cast<uint8_t>(c)));
        text += digits;
    }
    return text;
}

using sql_row_t = std::vector<sql_value_t>;

// What a statement gave: rows, and how it ended.
struct sql_result_t {
    int code = SQLITE_DONE;
    std::string message{};
    std::vector<sql_row_t> rows{};
    bool operator==(const sql_result_t &) const = default;
    bool is_error() const { return code != SQLITE_DONE; }
};

inline std::string shown(const sql_result_t &result) {
    std::string text = std::to_string(result.code) + " " + result.message;
    for (const sql_row_t &row : result.rows) {
        text += '\n';
        for (const sql_value_t &value : row) text.append(shown(value)).append(", ");
    }
    return text;
}

class sql_statement {
  public:
    sql_statement(sqlite3 *db, const std::string &sql) : db_(db), sql_(sql) {
        if (sqlite3_prepare_v2(db, sql.c_str(), -1, &statement_, nullptr) != SQLITE_OK)
            fail("a statement that is well formed", sql, sqlite3_errmsg(db));
    }
    ~sql_statement() { sqlite3_finalize(statement_); }
    sql_statement(const sql_statement &) = delete;
    sql_statement &operator=(const sql_statement &) = delete;

    const std::string &sql() const { return sql_; }

    // Parameter ?1 and those behind it, as many as there are.
    sql_result_t run(const sql_row_t &parameters) {
        const int count =
            std::min(sqlite3_bind_parameter_count(statement_), static_cast<int>(parameters.size()));
        for (int i = 0; i < count; ++i) bind_(i + 1, parameters[static_cast<size_t>(i)]);
        sql_result_t result;
        while ((result.code = sqlite3_step(statement_)) == SQLITE_ROW) {
            sql_row_t &row = result.rows.emplace_back();
            for (int i = 0; i < sqlite3_column_count(statement_); ++i) row.push_back(column_(i));
        }
        if (result.is_error()) result.message = sqlite3_errmsg(db_);
        sqlite3_reset(statement_);
        sqlite3_clear_bindings(statement_);
        blocks_.clear();
        return result;
    }

  private:
    // A BLOB is read in a block of its own size.
    void bind_(int place, const sql_value_t &value) {
        const int size = static_cast<int>(value.bytes.size());
        switch (value.type) {
            case SQLITE_INTEGER:
                sqlite3_bind_int64(statement_, place, value.integer);
                break;
            case SQLITE_FLOAT:
                sqlite3_bind_double(statement_, place, value.real);
                break;
            case SQLITE_TEXT:
                sqlite3_bind_text(statement_, place, value.bytes.data(), size, SQLITE_TRANSIENT);
                break;
            case SQLITE_BLOB:
                blocks_.emplace_back(value.bytes.begin(), value.bytes.end()).shrink_to_fit();
                sqlite3_bind_blob(statement_, place, size == 0 ? "" : blocks_.back().data(), size,
                                  SQLITE_STATIC);
                break;
            default:
                sqlite3_bind_null(statement_, place);
        }
    }
    sql_value_t column_(int i) {
        sql_value_t value{sqlite3_column_type(statement_, i)};
        if (value.type == SQLITE_INTEGER) value.integer = sqlite3_column_int64(statement_, i);
        if (value.type == SQLITE_FLOAT) value.real = sqlite3_column_double(statement_, i);
        if (value.type != SQLITE_TEXT && value.type != SQLITE_BLOB) return value;
        const auto *bytes = static_cast<const char *>(sqlite3_column_blob(statement_, i));
        value.bytes.assign(bytes, bytes + sqlite3_column_bytes(statement_, i));
        return value;
    }

    sqlite3 *db_;
    sqlite3_stmt *statement_ = nullptr;
    std::string sql_;
    std::list<std::vector<char>> blocks_{};
};

struct sql_name_t {
    std::string name;
    int arity;      // of a table: how many parameters
    bool is_fixed;  // what it gives follows from its arguments alone
};

class sql_session {
  public:
    sql_session() {
        sqlite3_config(SQLITE_CONFIG_LOOKASIDE, 0, 0);  // a block of its own for all that is allocated
        sqlite3_open(":memory:", &db_);
        const std::set<std::string> own_functions = listed_("name || '/' || narg FROM pragma_function_list");
        const std::set<std::string> own_tables = listed_("name FROM pragma_module_list");
        sqlite3_close(db_);
        sqlite3_auto_extension(reinterpret_cast<void (*)()>(sqlite3_dvsqlite_init));
        if (sqlite3_open(":memory:", &db_) != SQLITE_OK) fail("a load", "", sqlite3_errmsg(db_));
        list_functions_(own_functions);
        list_tables_(own_tables);
    }
    ~sql_session() { sqlite3_close(db_); }
    sql_session(const sql_session &) = delete;
    sql_session &operator=(const sql_session &) = delete;

    // In the order of their names; aggregates are window functions, too.
    std::vector<sql_name_t> scalars{}, aggregates{}, tables{};

    sqlite3 *db() { return db_; }

    sql_result_t run(const std::string &sql, const sql_row_t &parameters = {}) {
        sql_statement statement(db_, sql);
        return run(statement, parameters);
    }
    // A statement that ends well, or with the error of a function: its name, a colon, and a code that has a
    // message where the library raised it.
    sql_result_t run(sql_statement &statement, const sql_row_t &parameters) {
        const unsigned long assertions = dv_assert_count();
        const sql_result_t result = statement.run(parameters);
        if (dv_assert_count() != assertions) fail("no assertion", statement.sql(), shown(result));
        if (!result.is_error()) return result;
        const std::string &message = result.message;
        if (result.code != SQLITE_ERROR || !is_of_function_(message))
            fail("an error of a function", statement.sql(), shown(result));
        const size_t code = message.rfind(" (dv-");
        if (message.back() == ')' && code != std::string::npos &&
            dv_error_text(std::atoi(message.c_str() + code + 4)) == nullptr)
            fail("a code that has a message", statement.sql(), message);
        return result;
    }

  private:
    std::set<std::string> listed_(const std::string &list) {
        std::set<std::string> names;
        for (const sql_row_t &row : sql_statement(db_, "SELECT " + list).run({}).rows)
            names.insert(row[0].bytes);
        return names;
    }
    // Errors of a write through a text view have `column "NAME": ` in front.
    bool is_of_function_(const std::string &message) const {
        if (names_.contains(message.substr(0, message.find(": ")))) return true;
        return message.starts_with("column \"") && std::ranges::any_of(names_, [&](const std::string &name) {
                   return message.find("\": " + name + ": ") != message.npos;
               });
    }

    void list_functions_(const std::set<std::string> &own) {
        sql_statement list(
            db_, "SELECT DISTINCT name, narg, flags & 0x800, type FROM pragma_function_list ORDER BY 1, 2");
        for (const sql_row_t &row : list.run({}).rows) {
            if (own.contains(row[0].bytes + "/" + std::to_string(row[1].integer))) continue;
            std::vector<sql_name_t> &kind = row[3].bytes == "s" ? scalars : aggregates;
            kind.push_back({row[0].bytes, static_cast<int>(row[1].integer), row[2].integer != 0});
            names_.insert(row[0].bytes);
        }
    }
    void list_tables_(const std::set<std::string> &own) {
        for (const std::string &name : listed_("name FROM pragma_module_list")) {
            if (own.contains(name)) continue;
            sql_statement hidden(db_, "SELECT count(*) FROM pragma_table_xinfo('" + name + "') WHERE hidden");
            tables.push_back({name, static_cast<int>(hidden.run({}).rows[0][0].integer), /*is_fixed=*/false});
            names_.insert(name);
        }
    }

    sqlite3 *db_ = nullptr;
    std::set<std::string> names_{};
};

}  // namespace dv::fuzz

#endif  // DV_FUZZ_SQL_SESSION_H
